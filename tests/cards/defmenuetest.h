#pragma once
#include <QStringList>
#include <QVariant>

#include "einfuegentest.h"

namespace kolvane {

// A library with folder 000 on the global definition, opened in a browser,
// and ways to look at tblDefMenue and tblOrdner behind the program's back.
class DefMenueTest : public EinfuegenTest {
 protected:
  // A further folder, after 000 by number and by name (000 stays the one
  // the library opens on); defNr null leaves NrTblDefMenue empty.
  void ordnerAnlegen(const QString& nr, const QVariant& defNr);
  // Benennung1..10 and Standardwert1..10 of a row, as stored; empty when gone.
  QStringList zeile(qint64 nr);
  QVariant wert(const QString& sql, const QVariantList& werte = {});
  qint64 verweis(const QString& ordnerNr);
  qint64 zeilen() { return wert("SELECT COUNT(*) FROM tblDefMenue").toLongLong(); }
};

}  // namespace kolvane

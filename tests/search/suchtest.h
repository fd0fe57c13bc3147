#pragma once
#include <QByteArray>
#include <QStringList>
#include <QVariant>

#include "einfuegentest.h"

namespace kolvane {

// A library with several folders of blocks whose data cards can be searched,
// opened in a browser with the insert on the fake host.
class SuchTest : public EinfuegenTest {
 protected:
  // A folder after 000 by number; its directory is made. Returns its Nr. The
  // library opens on the first folder by name: give a name after "Standard-Ordner" to
  // keep it on 000.
  qint64 ordnerAnlegen(const QString& ordnerNr, const QString& name);
  // A block on slot `slot` of a folder (Nr ordnerId) with the drawing of
  // view 0, BlkName0 and card fields M0, M1, ... as given.
  QString blockIn(const QString& ordnerNr, qint64 ordnerId, int slot, const QString& blkName,
                  const QStringList& m = {});
  // A page name of a folder.
  void seiteBenennen(qint64 ordnerId, int seitenNr, const QString& name);
  QVariant wert(const QString& sql, const QVariantList& werte = {});
  // SHA-256 of the library file: a search must not change it.
  QByteArray dateiHash() const;
};

}  // namespace kolvane

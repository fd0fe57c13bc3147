#pragma once
#include <QString>
#include <QStringList>

#include "connection.h"
#include "kolvanetest.h"

namespace kolvane {

// A test with the data files installed (txtPrefix.txt) and helpers to make
// libraries and blocks in the test's own directory.
class StoreTest : public KolvaneTest {
 protected:
  void SetUp() override;

  // A new library in path(rel): its database path.
  QString neueBibliothek(const QString& rel);
  // A block row (and, with dateien, its slide library and view-0 drawing).
  static qint64 blockAnlegen(Connection& conn, const QString& block, int ordnerID,
                              const QString& m0 = QString(), const QString& slideLib = QString());
  static void dateienAnlegen(const QString& bibliothek, const QString& ordnerNr,
                             const QString& block);
  // Folder rows.
  static qint64 ordnerAnlegen(Connection& conn, const QString& ordnerNr, const QString& name);
  // Error reports shown so far (their boxes).
  int fehlerBerichte() const;
  // Whether a box with the message label nr was shown.
  bool gefragt(int nr) const;
  // The questions asked, without the error reports.
  QStringList fragen() const;
};

}  // namespace kolvane

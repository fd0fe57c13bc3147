#pragma once
#include <QStringList>
#include <memory>

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "kolvanetest.h"

namespace kolvane {

// A library in the test's directory, with blocks put on chosen slots of
// folder "000", and a browser standing on it.
class BrowserTest : public KolvaneTest {
 protected:
  void SetUp() override;
  void TearDown() override;

  // A new library below path(rel), made the current one; returns its database.
  QString neueBibliothek(const QString& rel = QStringLiteral("lib"));
  // A block on slot i of the folder with its slide library (a file the
  // browser only looks for); ansichten > 1 sets AX1.. of further views.
  QString blockAnlegen(int slot, const QString& m0 = QString(), int ansichten = 1,
                       const QString& ordnerNr = QStringLiteral("000"));
  void seiteAnlegen(int seitenNr, const QString& name, int ordnerID = 1);
  // Opens the current library in a fresh browser (as the start does).
  void oeffnen();
  QString code(int slot, const QString& ordnerNr = QStringLiteral("000"));

  QString db_;
  std::unique_ptr<Bibliothek> lib_;
  std::unique_ptr<Blockverwaltung> bv_;
  int anzeigen_ = 0;
};

}  // namespace kolvane

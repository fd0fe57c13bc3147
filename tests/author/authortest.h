#pragma once
#include <QByteArray>
#include <QStringList>
#include <QVariant>
#include <array>
#include <memory>

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "cadbridge.h"
#include "fakedesktop.h"
#include "fakehost.h"
#include "kolvanetest.h"
#include "qtprint.h"

namespace kolvane {

// A new library in the test's directory with folder 000, a browser standing
// on one of its slots, and a bridge bound to a fake host and desktop.
class AuthorTest : public KolvaneTest {
 protected:
  void SetUp() override;
  void TearDown() override;

  using Punkt = std::array<double, 3>;
  // A block row on slot `slot` of folder 000 (with its files); its code.
  QString blockAnlegen(int slot, const QString& blkName = QStringLiteral("Vorhanden"));
  // The code of a slot of folder 000.
  static QString code(int slot);
  // Opens the library in a browser standing on the slot.
  void oeffnen(int pos = 0);
  // The host bound through automation, its window on the desktop.
  void automationGebunden();
  // A value of the block's row read on a connection of its own.
  QVariant wert(const QString& code, const QString& spalte) const;
  int anzahl(const QString& sql) const;
  void ausfuehren(const QString& sql, const QVariantList& werte = {});
  // Whether a box showed the text of this message.
  bool gezeigt(int nr) const;
  // A real slide file's bytes (a frame and a disk, `i` varies it).
  static QByteArray slideBytes(int i = 0);

  QString bib_;  // the library directory
  QString db_;
  FakeHost host_;
  FakeDesktop desk_;
  std::unique_ptr<CadBridge> bridge_;
  std::unique_ptr<Bibliothek> lib_;
  std::unique_ptr<Blockverwaltung> bv_;
  QString titel_ = QStringLiteral("AutoCAD 2014 - [Zeichnung1.dwg]");
};

}  // namespace kolvane

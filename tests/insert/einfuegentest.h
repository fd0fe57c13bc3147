#pragma once
#include <QStringList>
#include <QTimer>
#include <array>
#include <memory>

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "cadbridge.h"
#include "einfuegen.h"
#include "fakedesktop.h"
#include "fakehost.h"
#include "kolvanetest.h"
#include "qtprint.h"

namespace kolvane {

// A fake host and desktop that also write the calls an insert makes into one
// shared log, in the order they happen ("sendCommand|...", "sendKeys|...|wait").
class ProtokollHost : public FakeHost {
 public:
  explicit ProtokollHost(QStringList& log) : log_(log) {}
  QVariant getVariable(const QString& n) override;
  bool setVariable(const QString& n, const QVariant& v) override;
  bool sendCommand(const QString& c) override;
  std::optional<double> getReal(const QString& p) override;
  std::optional<HostLayer> layer(const QString& n) override;
  bool addLayer(const QString& n) override;

 private:
  QStringList& log_;
};

class ProtokollDesktop : public FakeDesktop {
 public:
  explicit ProtokollDesktop(QStringList& log) : log_(log) {}
  bool appActivate(const QString& t) override;
  quint64 findWindow(const QString& t) override;
  bool setForegroundWindow(quint64 h) override;
  bool sendKeys(const QString& k, bool wait) override;

 private:
  QStringList& log_;
};

// A library with blocks and their drawings in the test's directory, a
// browser standing on it, a bridge to the fake host, and the insert. Waits
// end after a bound: a test that waits too long fails instead of hanging.
class EinfuegenTest : public KolvaneTest {
 protected:
  void SetUp() override;
  void TearDown() override;

  using Punkt = std::array<double, 3>;
  // A block on slot `slot` of folder 000 with the drawing of view 0 (and of
  // the views named), name BlkName0 and the points of view 0.
  QString blockAnlegen(int slot, const QString& blkName, const QList<Punkt>& punkte = {{0, 0, 0}});
  void spalteSetzen(const QString& code, const QString& spalte, const QVariant& wert);
  void punkteSetzen(const QString& code, int ansicht, const QList<Punkt>& punkte);
  QString zeichnung(const QString& code, int ansicht) const;
  // A marked row as marking writes it.
  void markieren(const QString& code, const QString& dwg, int ansicht, int punkt,
                 const QString& name = QString());
  // Opens the library in a browser on the slot and makes the insert.
  void oeffnen(int pos = 0);
  void automationGebunden();
  void ltGebunden();
  // The label text of a message, and whether a box showed it.
  bool gezeigt(int nr) const;
  // The log without the calls of these kinds.
  QStringList log(const QStringList& nur = {}) const;
  QStringList gesendet() const { return log({QStringLiteral("sendCommand")}); }

  QString bib_;  // library directory
  QString db_;
  QStringList log_;
  ProtokollHost host_{log_};
  ProtokollDesktop desk_{log_};
  std::unique_ptr<CadBridge> bridge_;
  std::unique_ptr<Bibliothek> lib_;
  std::unique_ptr<Blockverwaltung> bv_;
  std::unique_ptr<Einfuegen> ins_;
  QTimer wache_;
  QString titel_ = QStringLiteral("AutoCAD 2014 - [Zeichnung1.dwg]");
};

}  // namespace kolvane

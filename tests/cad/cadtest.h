#pragma once
#include <QCoreApplication>
#include <QElapsedTimer>
#include <memory>

#include "cadbridge.h"
#include "fakedesktop.h"
#include "fakehost.h"
#include "kolvanetest.h"
#include "labels.h"
#include "qtprint.h"

namespace kolvane {

// Serves events until the condition holds or the bound has passed.
template <class F>
bool eventsUntil(F cond, int boundMs = 3000) {
  QElapsedTimer t;
  t.start();
  while (!cond() && t.elapsed() < boundMs)
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
  return cond();
}

// A bridge on a fake host and a fake desktop, with the label files loaded
// and every pause recorded in the desktop's transcript ("pause|200") instead
// of slept. The host answers GetObject while hostLaeuft is true.
class CadTest : public KolvaneTest {
 protected:
  void SetUp() override {
    KolvaneTest::SetUp();
    installData();
    ASSERT_TRUE(labels().fctSpracheAuslesen(0));
    labels().fctBeschriftungsFileZuordnenIni();
    bridge_ = std::make_unique<CadBridge>(&desk_);
    bridge_->hostGetObject = [this](QString* fehler) -> Host* {
      if (hostLaeuft_) return &host_;
      if (fehler) *fehler = QStringLiteral("ActiveX-Komponente kann kein Objekt erstellen");
      return nullptr;
    };
    bridge_->pauseHook = [this](int ms) { desk_.transcript << "pause|" + QString::number(ms); };
  }
  void TearDown() override {
    bridge_.reset();
    KolvaneTest::TearDown();
  }

  // The run bound to the automation route, as after a successful connection.
  void automationGebunden(const QString& titel = QStringLiteral("AutoCAD 2014 ")) {
    bridge_->acadApp = &host_;
    bridge_->typAcadVersionInfo.strACadVersion = QStringLiteral("AutoCAD 2014");
    bridge_->typAcadVersionInfo.strACadTitel = titel;
    desk_.addWindow(10, QStringLiteral("AutoCAD 2014 - [Zeichnung1.dwg]"));
  }
  // The run bound to the keystroke route.
  void ltGebunden() {
    bridge_->acadApp = nullptr;
    bridge_->typAcadVersionInfo.strACadVersion = QStringLiteral("AutoCAD LT");
    bridge_->typAcadVersionInfo.strACadTitel = QStringLiteral("AutoCAD LT");
    desk_.addWindow(20, QStringLiteral("AutoCAD LT 2009 - [Plan.dwg]"));
  }

  FakeHost host_;
  FakeDesktop desk_;
  bool hostLaeuft_ = true;
  std::unique_ptr<CadBridge> bridge_;
};

}  // namespace kolvane

// End to end: a double click on a block of the demo library inserts it into
// the real sandbox CAD (offscreen), which works the strings as a host does;
// what landed is read back from the drawing it writes.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include "acadconnect.h"
#include "commandchannel.h"
#include "connection.h"
#include "dxf.h"
#include "einfuegentest.h"
#include "eventsink.h"
#include "remotedesktop.h"
#include "remotehost.h"
#include "settings.h"

namespace kolvane {
namespace {

constexpr int kBound = 20000;  // no call and no wait of a test goes beyond this

// The window side with a bound: once the time is up, Escape reads as pressed.
class BoundedDesktop : public Desktop {
 public:
  explicit BoundedDesktop(Desktop& d) : d_(d) { timer_.start(); }
  QList<DesktopWindow> topLevelWindows() override { return d_.topLevelWindows(); }
  bool appActivate(const QString& t) override { return d_.appActivate(t); }
  quint64 foregroundWindow() override { return d_.foregroundWindow(); }
  bool setForegroundWindow(quint64 h) override { return d_.setForegroundWindow(h); }
  bool bringWindowToTop(quint64 h) override { return d_.bringWindowToTop(h); }
  quint64 findWindow(const QString& t) override { return d_.findWindow(t); }
  quint64 activeWindow() override { return d_.activeWindow(); }
  bool sendKeys(const QString& k, bool w) override { return d_.sendKeys(k, w); }
  int16_t getAsyncKeyState(int vk) override {
    if (timer_.elapsed() > kBound) return vk == 27 ? 1 : 0;
    return d_.getAsyncKeyState(vk);
  }
  QPoint cursorPos() override { return d_.cursorPos(); }

 private:
  Desktop& d_;
  QElapsedTimer timer_;
};

class EinfuegenE2E : public EinfuegenTest {
 protected:
  void TearDown() override {
    ins_.reset();
    bridge_.reset();
    remoteHost_.reset();
    if (proc_.state() != QProcess::NotRunning) {
      proc_.terminate();
      if (!proc_.waitForFinished(5000)) proc_.kill();
      proc_.waitForFinished(2000);
    }
    EinfuegenTest::TearDown();
  }

  // The sandbox on its own socket with the user's picks, bound as the
  // automation host the way the program binds it at start (before oeffnen:
  // the insert takes this bridge).
  void starten(const QString& picks) {
    const QString socket = path("cad.sock");
    writeFile(path("picks.txt"), picks.toUtf8());
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    proc_.setProcessEnvironment(env);
    proc_.setProcessChannelMode(QProcess::MergedChannels);
    proc_.start(SANDBOX_CAD_EXE, {"--socket", socket, "--picks", path("picks.txt")});
    QElapsedTimer t;
    t.start();
    while (!ausgabe_.contains("listening") && t.elapsed() < kBound && proc_.state() != QProcess::NotRunning) {
      proc_.waitForReadyRead(200);
      ausgabe_ += proc_.readAll();
    }
    ASSERT_TRUE(ausgabe_.contains("listening")) << ausgabe_.toStdString();
    remoteDesktop_ = connectSandboxDesktop(socket);
    ASSERT_TRUE(remoteDesktop_);
    remoteDesktop_->setCallTimeout(kBound);
    bounded_ = std::make_unique<BoundedDesktop>(*remoteDesktop_);
    bridge_ = std::make_unique<CadBridge>(bounded_.get());
    bridge_->hWndHauptfenster = 1;  // the program's window is never the active one here
    bridge_->pauseHook = [](int) {};
    bridge_->hostGetObject = [this, socket](QString* fehler) -> Host* {
      if (!remoteHost_) remoteHost_ = connectSandboxHost(socket, fehler);
      if (remoteHost_) remoteHost_->setCallTimeout(kBound);
      return remoteHost_.get();
    };
    uint8_t only16 = 0;
    ASSERT_EQ(ACAD_Connect(*bridge_, 0, 0, only16), -1);
    ASSERT_FALSE(bridge_->istLT());
    ASSERT_TRUE(fctEventActivXErstellen(*bridge_));
  }

  // The demo library as `kolvane-tool demo-library` makes it, the current
  // library; the page stands on its first block.
  void demoOeffnen() {
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(KOLVANE_TOOL_EXE, {"demo-library", path("demo")});
    ASSERT_TRUE(tool.waitForFinished(kBound));
    ASSERT_EQ(tool.exitCode(), 0) << tool.readAll().toStdString();
    bib_ = path("demo");
    db_ = bib_ + "/dbKolvane.mdb";
    settings_->aryVerzeichnisseDatenbank = QStringList{db_};
    settings_->strAktuelleDatenbank = db_;
    oeffnen(0);
    code_ = bv_->aktivierteBlocknummer;
    Connection c;
    ASSERT_TRUE(c.open(db_));
    auto wert = [&](const QString& spalte) {
      return c.scalar("SELECT " + spalte + " FROM tblBlockInfo WHERE Block = ?", {code_});
    };
    name_ = wert("BlkName0").toString();
    layer_ = wert("Layer").toString();
    farbe_ = wert("LyColor").toInt();
    a_ = {wert("AX0").toDouble(), wert("AY0").toDouble(), wert("AZ0").toDouble()};
    b_ = {wert("BX0").toDouble(), wert("BY0").toDouble(), wert("BZ0").toDouble()};
    ASSERT_FALSE(name_.isEmpty());
  }

  // The page on the block; its double click inserts.
  void doppelklick() {
    bv_->hooks.cmbEinfuegen = [this] { ins_->cmbEinfuegen_Click(); };
    settings_->setup.longDoppelklick = 1;
    bv_->sldBlockverwaltung_DblClick(0);
  }

  // The drawing as the sandbox holds it now.
  sandbox::Drawing zeichnungLesen() {
    sandbox::Drawing d;
    EXPECT_TRUE(SendCommand(*bridge_, "._-wblock " + path("alles.dwg") + "\r*\r"));
    QString fehler;
    EXPECT_TRUE(sandbox::readDxfFile(path("alles.dwg"), d, &fehler)) << fehler.toStdString();
    return d;
  }
  const sandbox::Entity* referenz(const sandbox::Drawing& d) {
    for (const sandbox::Entity& e : d.entities)
      if (e.type == sandbox::EntityType::Insert) return &e;
    ADD_FAILURE() << "no block reference in the drawing";
    return nullptr;
  }

  QProcess proc_;
  QByteArray ausgabe_;
  std::unique_ptr<RemoteDesktop> remoteDesktop_;
  std::unique_ptr<BoundedDesktop> bounded_;
  std::unique_ptr<RemoteHost> remoteHost_;
  QString code_, name_, layer_;
  int farbe_ = 0;
  sandbox::Point a_, b_;
};

TEST_F(EinfuegenE2E, ADoubleClickInsertsTheDemoBlockAtThePickedPoint) {
  settings_->setup.longEinfuegenLayer0 = 0;
  starten("120,80\n");
  demoOeffnen();
  prompt_->dialogResult("frmVariaEinfuegepkte", 1);  // point A
  doppelklick();
  EXPECT_EQ(bridge_->Unterbrechung, 0);
  const sandbox::Entity* r = referenz(zeichnungLesen());
  ASSERT_TRUE(r);
  EXPECT_EQ(r->blockName, name_);
  EXPECT_EQ(r->p1, (sandbox::Point{120 - a_.x, 80 - a_.y, 0 - a_.z}));
  EXPECT_EQ(remoteHost_->getVariable("attreq").toInt(), 1);  // restored
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(EinfuegenE2E, WithPointBChosenPointBLiesAtThePick) {
  settings_->setup.longEinfuegenLayer0 = 0;
  starten("120,80\n");
  demoOeffnen();
  prompt_->dialogResult("frmVariaEinfuegepkte", 1, [this] { ins_->wahl.board.sldVariaEinfuegepkte_MouseDown(1); });
  doppelklick();
  EXPECT_EQ(bridge_->Unterbrechung, 0);
  const sandbox::Entity* r = referenz(zeichnungLesen());
  ASSERT_TRUE(r);
  // The drawing's base is point A; B - A away from it lies the pick.
  EXPECT_EQ(r->p1, (sandbox::Point{120 - (b_.x - a_.x), 80 - (b_.y - a_.y), 0 - (b_.z - a_.z)}));
  EXPECT_NE(b_, a_);
}

TEST_F(EinfuegenE2E, ABlockWithAStoredLayerLandsOnIt) {
  settings_->setup.longEinfuegenLayer0 = 0;
  starten("40,30\n");
  demoOeffnen();
  ASSERT_FALSE(layer_.isEmpty());
  prompt_->dialogResult("frmVariaEinfuegepkte", 1);
  doppelklick();
  const sandbox::Drawing d = zeichnungLesen();
  const sandbox::Entity* r = referenz(d);
  ASSERT_TRUE(r);
  EXPECT_EQ(r->layer, layer_);
  ASSERT_TRUE(d.layer(layer_));
  EXPECT_EQ(d.layer(layer_)->color, farbe_);
}

TEST_F(EinfuegenE2E, WithTheLayer0OptionOnItLandsOnLayer0) {
  settings_->setup.longEinfuegenLayer0 = 1;
  starten("40,30\n");
  demoOeffnen();
  // Another layer is current, and the block has its own: only the option
  // brings it to "0".
  ASSERT_TRUE(SendCommand(*bridge_, "-layer m Rahmen \r"));
  prompt_->dialogResult("frmVariaEinfuegepkte", 1);
  doppelklick();
  const sandbox::Entity* r = referenz(zeichnungLesen());
  ASSERT_TRUE(r);
  EXPECT_EQ(r->layer, "0");
}

}  // namespace
}  // namespace kolvane

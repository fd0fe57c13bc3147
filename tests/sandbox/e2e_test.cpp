// End to end: the real sandbox-cad (offscreen) with a picks file, driven by the
// program's CAD bridge through RemoteHost and RemoteDesktop.
#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>

#include "acadconnect.h"
#include "cadbridge.h"
#include "commandchannel.h"
#include "dxf.h"
#include "eventsink.h"
#include "kolvanetest.h"
#include "ltscript.h"
#include "remotedesktop.h"
#include "remotehost.h"
#include "sandboxbridge.h"
#include "sandboxprocess.h"
#include "slidereader.h"

namespace kolvane {
namespace {

constexpr int kBound = 20000;  // no call and no wait of a test goes beyond this

// Serves events until the condition holds or the bound has passed.
template <typename F>
bool waitFor(F done) {
  QElapsedTimer t;
  t.start();
  while (!done() && t.elapsed() < kBound)
    QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
  return done();
}

class SandboxE2E : public KolvaneTest {
 protected:
  void TearDown() override {
    // Every error line of the host that the test did not name fails it.
    cad_.checkErrorLines();
    cad_.stop();
    KolvaneTest::TearDown();
  }

  // Starts the sandbox on its own socket; true once it listens.
  bool startSandbox(const QString& picks, const QStringList& more = {}) {
    socket_ = path("cad.sock");
    writeFile(path("picks.txt"), picks.toUtf8());
    return cad_.start(socket_, path("picks.txt"), more, kBound);
  }

  QString writeBlock(const QString& name) {
    sandbox::Drawing b;
    for (auto [x1, y1, x2, y2] :
         {std::array{0, 0, 10, 0}, {10, 0, 10, 5}, {10, 5, 0, 5}, {0, 5, 0, 0}}) {
      sandbox::Entity e;
      e.p1 = {double(x1), double(y1), 0};
      e.p2 = {double(x2), double(y2), 0};
      b.add(e);
    }
    QString error;
    EXPECT_TRUE(sandbox::writeDxfFile(path(name), b, &error));
    return path(name);
  }

  // The bridge's waits end at the latest when the test's time is up.
  void guard(CadBridge& b) {
    QTimer::singleShot(kBound, &b, [&b] {
      b.bytAcadArbeitet = 1;
      b.Unterbrechung = 1;
    });
  }

  SandboxProcess cad_{SANDBOX_CAD_EXE};
  QString socket_;
};

TEST_F(SandboxE2E, AutomationRouteInsertsWritesBlocksAndShootsSlides) {
  const QString block = writeBlock("b.dwg");
  ASSERT_TRUE(startSandbox("120,80\nwindow 100,70 150,100\nENTER\nESC\n")) << cad_.output().toStdString();

  auto remote = connectSandboxDesktop(socket_);
  ASSERT_TRUE(remote);
  remote->setCallTimeout(kBound);
  BoundedDesktop desktop(*remote);
  std::unique_ptr<RemoteHost> host;
  CadBridge b(&desktop);
  b.hWndHauptfenster = 1;  // this program's main form is not the active window
  b.pauseHook = [](int) {};
  b.hostGetObject = [&](QString* error) -> Host* {
    if (!host) host = connectSandboxHost(socket_, error);
    if (host) host->setCallTimeout(kBound);
    return host.get();
  };
  guard(b);

  // ACAD_Connect finds the sandbox as the automation host.
  uint8_t only16 = 0;
  ASSERT_EQ(ACAD_Connect(b, 0, 0, only16), -1);
  EXPECT_EQ(b.typAcadVersionInfo.strACadVersion, "AutoCAD 2014");
  EXPECT_EQ(b.typAcadVersionInfo.strACadTitel, "Sandbox CAD ");
  EXPECT_NE(b.typAcadVersionInfo.hWnd, 0u);
  EXPECT_FALSE(b.istLT());
  ASSERT_TRUE(fctEventActivXErstellen(b));

  // A plain insert with a factor and a layer, as the insert sends it.
  fctAcadLayerAnlegen(b, "Moebel", "3", "");
  {
    EinfuegeVariablen v(b);
    v.sichern();
    v.erzwingen();
    ASSERT_TRUE(SendCommandUndWarten(
        b, "(command \"._-insert\" \"" + block + "\" pause \"2\" \"2\" \"0\")\r"));
    EXPECT_EQ(b.Unterbrechung, 0);
    EXPECT_EQ(b.EventActivX->sEndCommand, "-INSERT");
    ASSERT_TRUE(SendCommand(b, "._change (entlast)  _prop _la Moebel\r\r"));
    SendKeys(b, "{ESC}", false);
    v.wiederherstellen();
  }
  EXPECT_EQ(host->getVariable("attreq").toInt(), 1);  // restored
  EXPECT_EQ(host->getVariable("extmax").toList(), (QVariantList{140.0, 90.0, 0.0}));
  ASSERT_TRUE(SendCommand(b, "._-wblock " + path("alles.dwg") + "\r*\r"));
  sandbox::Drawing all;
  QString error;
  ASSERT_TRUE(sandbox::readDxfFile(path("alles.dwg"), all, &error)) << error.toStdString();
  ASSERT_EQ(all.entities.size(), 1u);
  const sandbox::Entity& ref = all.entities[0];
  EXPECT_EQ(ref.type, sandbox::EntityType::Insert);
  EXPECT_EQ(ref.p1, (sandbox::Point{120, 80, 0}));
  EXPECT_EQ(ref.layer, "Moebel");
  EXPECT_EQ(ref.sx, 2);
  EXPECT_EQ(all.layer("Moebel")->color, 3);

  // The new-block flow: mark, the user's selection, the write with "_p", back.
  ASSERT_TRUE(SendCommand(b, "._undo _m "));
  ASSERT_TRUE(host->selectionSetAdd("KOLVANE"));
  EXPECT_EQ(host->selectOnScreen("KOLVANE"), 1);
  ASSERT_TRUE(SendCommand(b, "._-wblock " + path("neu/0000011.dwg") + "\r\r120,80,0\r_p \r"));
  EXPECT_EQ(host->getVariable("extmax").toList(),
            (QVariantList{0.0, 0.0, 0.0}));  // the objects left
  ASSERT_TRUE(SendCommand(b, "._undo _b "));
  EXPECT_EQ(host->getVariable("extmax").toList(), (QVariantList{140.0, 90.0, 0.0}));

  // The slide of the view with the red mark of the insertion point.
  ASSERT_TRUE(SendCommand(b, "._undo _m "));
  ASSERT_TRUE(host->zoomWindow({90, 60, 0}, {170, 110, 0}));
  ASSERT_TRUE(SendCommand(b, "._donut 0 1.5\r120,80,0\r\r"));
  ASSERT_TRUE(SendCommand(b, "._change (entlast)  _prop _col 1  "));
  ASSERT_TRUE(SendCommand(b, "._mslide " + path("dia/0000011A.sld") + "\r"));
  const auto slide = readSlideFile(path("dia/0000011A.sld"));  // there when the send returned
  ASSERT_TRUE(slide.has_value());
  const auto counts = slide->recordCounts();
  EXPECT_GE(counts[int(SlideRecordType::Vector)], 4);  // the block's outline
  bool red = false, redFill = false;
  for (const SlideRecord& r : slide->records) {
    if (r.type == SlideRecordType::Color) red = r.a == 1;
    redFill = redFill || (red && r.type == SlideRecordType::SolidFill);
  }
  EXPECT_TRUE(redFill);
  ASSERT_TRUE(SendCommand(b, "._undo _b "));

  // The written drawing opens again.
  ASSERT_TRUE(fctAcadDokOeffnen(b, path("neu/0000011.dwg"), 1));
  EXPECT_EQ(host->activeDocumentFullName(), path("neu/0000011.dwg"));
  EXPECT_EQ(host->caption(), "Sandbox CAD - [0000011.dwg]");
  EXPECT_EQ(host->getVariable("insbase").toList(), (QVariantList{120.0, 80.0, 0.0}));
  fctAcadDokSchliessen(b, false, "", 1);
  EXPECT_EQ(host->documentCount(), 1);

  // Escape during the pick: the wait ends by the cancelled command's end.
  ASSERT_TRUE(SendCommandUndWarten(
      b, "(command \"._-insert\" \"" + block + "\" pause \"1\" \"1\" \"0\")\r"));
  EXPECT_EQ(b.Unterbrechung, 1);
  EXPECT_EQ(b.EventActivX->sEndCommand, "-INSERT");

  // Bad input at the host: a message there, nothing breaks.
  EXPECT_TRUE(SendCommand(b, "._gibtsnicht\r(unbekannt)\r._-insert " + path("fehlt.dwg") + "\r"));
  cad_.expectError("GIBTSNICHT");
  cad_.expectError("no function definition: UNBEKANNT");
  cad_.expectError("fehlt.dwg");
  EXPECT_EQ(cad_.errorLines().size(), 3);
  EXPECT_FALSE(host->getVariable("keinevariable").isValid());
  EXPECT_TRUE(host->failed());
  host->clearError();
  EXPECT_EQ(host->getVariable("filedia").toInt(), 1);
  EXPECT_FALSE(desktop.sendKeys("{ESC", true));

  // The host quits: the bridge is told, and the sandbox ends.
  bool quit = false;
  QObject::connect(&b, &CadBridge::programmBeenden, [&quit] { quit = true; });
  ASSERT_TRUE(SendCommand(b, "quit\r"));
  EXPECT_TRUE(waitFor([&] { return quit; }));
  EXPECT_TRUE(cad_.waitForFinished(kBound));
}

TEST_F(SandboxE2E, KeystrokeRoutePlacesTheBlockAtThePickedPoint) {
  const QString block = writeBlock("Tisch 1.dwg");
  settings_->subPfadeFestlegen();
  settings_->fctWertAllgInIniSpeichern("LtTitel1", "Sandbox CAD LT");
  ASSERT_TRUE(startSandbox("30,40\n", {"--keystroke"})) << cad_.output().toStdString();

  auto remote = connectSandboxDesktop(socket_);
  ASSERT_TRUE(remote);
  EXPECT_EQ(remote->mode(), "keystroke");
  remote->setCallTimeout(kBound);
  BoundedDesktop desktop(*remote);
  CadBridge b(&desktop);
  b.hWndHauptfenster = 1;
  b.pauseHook = [](int) {};
  QString refused;
  b.hostGetObject = [&](QString* error) -> Host* {
    auto h = connectSandboxHost(socket_, error);
    refused = *error;
    return h.release();
  };

  uint8_t only16 = 0;
  ASSERT_EQ(ACAD_Connect(b, 0, 0, only16), -1);
  EXPECT_THAT(refused.toStdString(), ::testing::HasSubstr("Tastaturmodus"));
  EXPECT_EQ(b.acadApp, nullptr);
  EXPECT_TRUE(b.istLT());
  EXPECT_EQ(b.typAcadVersionInfo.strACadTitel, "Sandbox CAD LT");

  LtEinfuegeDaten d;
  d.byteBlockAusBibliothek = 1;
  d.strBlockName = "Tisch";
  d.SpeicherortDerBlockzeichnung = block;
  ASSERT_TRUE(ACadLtBlockEinfuegenTippen(b, d));
  EXPECT_FALSE(desktop.expired());
  EXPECT_EQ(b.Unterbrechung, 0);

  // What landed, written out by keys.
  ASSERT_TRUE(SendKeys(b, "._-wblock " + sendKeysEscape(path("alles.dwg")) + "~*~", true));
  sandbox::Drawing all;
  QString error;
  ASSERT_TRUE(sandbox::readDxfFile(path("alles.dwg"), all, &error)) << error.toStdString();
  ASSERT_EQ(all.entities.size(), 1u);
  EXPECT_EQ(all.entities[0].blockName, "Tisch");
  EXPECT_EQ(all.entities[0].p1, (sandbox::Point{30, 40, 0}));
  EXPECT_EQ(all.entities[0].sx, 1);

  // The slide by script on the same route.
  EXPECT_EQ(fctSlideMitLTErstellen(b, path("lt.sld")), -1);
  EXPECT_FALSE(desktop.expired());
  const auto slide = readSlideFile(path("lt.sld"));
  ASSERT_TRUE(slide.has_value());
  EXPECT_GT(slide->recordCounts()[int(SlideRecordType::Vector)], 3);
}

TEST_F(SandboxE2E, ADeadSandboxIsAnErrorNotAHang) {
  ASSERT_TRUE(startSandbox(""));
  auto host = connectSandboxHost(socket_);
  ASSERT_TRUE(host);
  EXPECT_EQ(host->version(), "19.1s (Sandbox)");
  // A command that waits for the user, then the host goes away.
  ASSERT_TRUE(host->sendCommand("._line \r"));
  cad_.kill();
  QElapsedTimer t;
  t.start();
  EXPECT_FALSE(host->getPoint(std::nullopt, "Punkt: ").has_value());
  EXPECT_TRUE(host->failed());
  EXPECT_FALSE(host->sendCommand("._circle 0,0 1 \r"));
  EXPECT_LT(t.elapsed(), kBound);
  QString error;
  EXPECT_FALSE(connectSandboxHost(socket_, &error));
  EXPECT_FALSE(error.isEmpty());
}

// UNDO Back with no mark set asks before it undoes everything; the user
// answers. With a mark it goes back to it without a question.
TEST_F(SandboxE2E, UndoBackWithoutAMarkAsksAndTheUserAnswers) {
  ASSERT_TRUE(startSandbox("ENTER\n"));
  auto host = connectSandboxHost(socket_);
  ASSERT_TRUE(host);
  host->setCallTimeout(kBound);
  auto idle = [&] {
    return waitFor([&] { return host->getVariable("CMDACTIVE").toInt() == 0; });
  };
  ASSERT_TRUE(host->sendCommand("._line 0,0 10,0\r\r"));
  ASSERT_TRUE(host->sendCommand("._undo _b "));
  // The question waits for the user; then everything is undone.
  EXPECT_EQ(host->getVariable("CMDACTIVE").toInt(), 1);
  ASSERT_TRUE(idle());
  ASSERT_TRUE(host->sendCommand("._-wblock " + path("a.dwg") + "\r*\r"));
  sandbox::Drawing d;
  QString error;
  ASSERT_TRUE(sandbox::readDxfFile(path("a.dwg"), d, &error)) << error.toStdString();
  EXPECT_TRUE(d.entities.empty());

  ASSERT_TRUE(host->sendCommand("._undo _m ._line 0,0 10,0\r\r._line 0,0 0,5\r\r._undo _b "));
  EXPECT_EQ(host->getVariable("CMDACTIVE").toInt(), 0);
  ASSERT_TRUE(host->sendCommand("._-wblock " + path("b.dwg") + "\r*\r"));
  ASSERT_TRUE(sandbox::readDxfFile(path("b.dwg"), d, &error)) << error.toStdString();
  EXPECT_TRUE(d.entities.empty());
}

}  // namespace
}  // namespace kolvane

// End to end: the program runs against the sandbox CAD with the demo library,
// and a second start `kolvane --start3 NAME` (as the host's block search runs
// it) finds the block by its name and inserts it at once.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <algorithm>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include "connection.h"
#include "dxf.h"
#include "einfuegen.h"
#include "host.h"
#include "kolvanetest.h"
#include "programm.h"
#include "remotedesktop.h"
#include "remotehost.h"
#include "sandboxbridge.h"
#include "sandboxprocess.h"

namespace kolvane {
namespace {

constexpr int kBound = 20000;  // no call and no wait of a test goes beyond this

class Start3E2E : public KolvaneTest {
 protected:
  void SetUp() override {
    KolvaneTest::SetUp();
    installData();
  }
  void TearDown() override {
    programm_.reset();
    host_.reset();
    desktop_.reset();
    // Every error line of the host that the test did not name fails it.
    cad_.checkErrorLines();
    cad_.stop();
    KolvaneTest::TearDown();
  }

  // Serves events until cond holds or the bound has passed.
  template <class F>
  bool bis(F cond, int boundMs = kBound) {
    QElapsedTimer uhr;
    uhr.start();
    while (!cond() && uhr.elapsed() < boundMs) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return cond();
  }

  // The block references in the sandbox's drawing now.
  QStringList referenzen() {
    EXPECT_TRUE(bis([this] { return host_->getVariable("CMDACTIVE").toInt() == 0; }));
    EXPECT_TRUE(host_->sendCommand("._-wblock " + path("alles.dwg") + "\r*\r"));
    EXPECT_TRUE(bis([this] { return host_->getVariable("CMDACTIVE").toInt() == 0; }));
    sandbox::Drawing d;
    QString fehler;
    EXPECT_TRUE(sandbox::readDxfFile(path("alles.dwg"), d, &fehler)) << fehler.toStdString();
    QFile::remove(path("alles.dwg"));
    QStringList r;
    for (const sandbox::Entity& e : d.entities)
      if (e.type == sandbox::EntityType::Insert) r << e.blockName;
    return r;
  }

  SandboxProcess cad_{QStringLiteral(SANDBOX_CAD_EXE)};
  std::unique_ptr<RemoteHost> host_;
  std::unique_ptr<RemoteDesktop> desktop_;
  std::unique_ptr<Programm> programm_;
};

TEST_F(Start3E2E, TheHostsBlockSearchInsertsTheNamedBlock) {
  // The demo library, one of its valves named as a draughtsman may name a block.
  QProcess tool;
  tool.setProcessChannelMode(QProcess::MergedChannels);
  tool.start(KOLVANE_TOOL_EXE, {"demo-library", path("demo")});
  ASSERT_TRUE(tool.waitForFinished(kBound));
  ASSERT_EQ(tool.exitCode(), 0) << tool.readAll().toStdString();
  {
    Connection c;
    ASSERT_TRUE(c.open(path("demo") + "/dbKolvane.mdb"));
    ASSERT_TRUE(c.execute("UPDATE tblBlockInfo SET BlkName0 = 'Ventil DN25' WHERE BlkName0 = 'Ventil_DN25'"));
    ASSERT_EQ(c.changes(), 1);
  }

  // The sandbox with the user's pick of the insertion point.
  const QString socket = path("cad.sock");
  writeFile(path("picks.txt"), "120,80\n");
  ASSERT_TRUE(cad_.start(socket, path("picks.txt"), {"--language", "de"}, kBound))
      << cad_.output().toStdString();
  host_ = connectSandboxHost(socket);
  ASSERT_TRUE(host_);
  host_->setCallTimeout(kBound);

  // The program, bound to that sandbox, its start service where a second
  // start of this user looks for it.
  const QString laufzeit = path("run");
  QDir().mkpath(laufzeit);
  QFile::setPermissions(laufzeit, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
  desktop_ = connectSandboxDesktop(socket);
  ASSERT_TRUE(desktop_);
  desktop_->setCallTimeout(kBound);
  programm_ = std::make_unique<Programm>(env_, [this, socket](const QString&) {
    HostAnbindung a;
    // Every wait of the program ends after the bound, as if Escape was pressed.
    a.desktop = std::make_unique<BoundedDesktop>(*desktop_, kBound);
    auto host = std::make_shared<std::unique_ptr<Host>>();
    a.getObject = [host, socket](QString* f) -> Host* {
      if (!*host) {
        auto h = connectSandboxHost(socket, f);
        if (h) h->setCallTimeout(kBound);
        *host = std::move(h);
      }
      return host->get();
    };
    return a;
  });
  programm_->startServiceName = laufzeit + "/kolvane-start";
  programm_->beenden = [](int) {};
  prompt_->text(path("demo"));  // the first start finds the library there
  ASSERT_EQ(programm_->Main({}), -1);
  ASSERT_NE(programm_->fenster(), nullptr);
  programm_->settings().setup.longEinfuegenLayer0 = 0;
  programm_->einfuegen()->optionen.byteBruchFrage = 0;  // no break of lines after placing
  prompt_->dialogResult("frmVariaEinfuegepkte", 1);  // point A of the valve's three
  const QStringList vorher = referenzen();

  // The host's "bsuche Ventil DN25": a second start hands the name over.
  QProcess zweiter;
  QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
  umgebung.insert("XDG_RUNTIME_DIR", laufzeit);
  umgebung.insert("QT_QPA_PLATFORM", "offscreen");
  zweiter.setProcessEnvironment(umgebung);
  zweiter.setProcessChannelMode(QProcess::MergedChannels);
  zweiter.start(KOLVANE_EXE, {"--start3", "Ventil DN25"});
  ASSERT_TRUE(bis([&] { return zweiter.state() == QProcess::NotRunning; }));
  EXPECT_EQ(zweiter.exitCode(), 0) << zweiter.readAll().toStdString();

  // The running program searched and inserted the single hit.
  ASSERT_TRUE(bis([&] { return programm_->einfuegen()->letzterBlock.vorhanden; }))
      << prompt_->asked.join("\n").toStdString();
  ASSERT_TRUE(bis([&] { return !programm_->einfuegen()->laeuft(); }));
  const QStringList nachher = referenzen();
  EXPECT_EQ(nachher.size(), vorher.size() + 1);
  // The host names a block after its file, with underscores for blanks.
  const auto ventile = [](const QStringList& namen) {
    return std::count_if(namen.begin(), namen.end(),
                         [](QString n) { return n.replace(' ', '_') == QLatin1String("Ventil_DN25"); });
  };
  EXPECT_EQ(ventile(nachher), ventile(vorher) + 1) << nachher.join(", ").toStdString();
  EXPECT_EQ(programm_->einfuegen()->letzterBlock.strBlockName, "Ventil DN25");
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
}

}  // namespace
}  // namespace kolvane

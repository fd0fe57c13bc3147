#include <QCoreApplication>
#include <QDir>
#include <QDateTime>
#include <QEventLoop>
#include <QFileInfo>
#include <QFile>
#include <QProcess>
#include <QTimer>
#include <future>

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "cadbridge.h"
#include "fakedesktop.h"
#include "fakehost.h"
#include "frmblockverwaltung.h"
#include "inifile.h"
#include "kolvanetest.h"
#include "labels.h"
#include "programm.h"
#include "startservice.h"

namespace kolvane {
namespace {

// The program's start and end against a fake host, with everything in the
// test's own directory.
class ProgrammTest : public KolvaneTest {
 protected:
  void SetUp() override {
    KolvaneTest::SetUp();
    installData();
    host_ = std::make_unique<FakeHost>();
  }
  void TearDown() override {
    programm_.reset();
    host_.reset();
    KolvaneTest::TearDown();
  }
  // A new program run; withHost false: no CAD is running.
  Programm& starten(bool withHost = true) {
    programm_.reset();
    programm_ = std::make_unique<Programm>(env_, [this, withHost](const QString&) {
      HostAnbindung a;
      auto d = std::make_unique<FakeDesktop>();
      if (withHost) d->addWindow(7, host_->captionText);
      desktop_ = d.get();
      a.desktop = std::move(d);
      if (withHost) a.getObject = [this](QString*) -> Host* { return host_.get(); };
      return a;
    });
    // Unique per process and run: parallel test processes must not find each other.
    programm_->startServiceName =
        QStringLiteral("kolvane-test-%1-%2").arg(QCoreApplication::applicationPid()).arg(++laeufe_);
    programm_->beenden = [this](int code) { beendet_ = code; };
    return *programm_;
  }
  // Main up to the event loop; the folder chosen at a first start is given.
  int main(const QStringList& args = {}, const QString& ersterOrdner = QString()) {
    if (!ersterOrdner.isEmpty()) prompt_->text(ersterOrdner);
    return programm_->Main(args);
  }

  std::unique_ptr<FakeHost> host_;
  FakeDesktop* desktop_ = nullptr;
  std::unique_ptr<Programm> programm_;
  int beendet_ = -1;
  static inline int laeufe_ = 0;
};

TEST_F(ProgrammTest, FirstStartMakesTheFirstLibrary) {
  starten();
  ASSERT_EQ(main({}, path("bib")), -1) << prompt_->asked.join("\n").toStdString();
  const QString db = path("bib") + "/dbKolvane.mdb";
  EXPECT_TRUE(QFile::exists(db));
  EXPECT_TRUE(QDir(path("bib/000")).exists());
  EXPECT_EQ(IniGetValue(programm_->settings().strIniDateiVerzeichnis, "AllgemeineDaten", "DbVerzeichnis0"), db);
  EXPECT_EQ(programm_->browser()->strAktuellerOrdnerName(), "Standard-Ordner");
  EXPECT_EQ(programm_->cad()->typAcadVersionInfo.strACadVersion, "AutoCAD 2014");
  EXPECT_TRUE(programm_->fenster()->isVisible());
  EXPECT_EQ(programm_->fenster()->focusWidget(), programm_->fenster()->bilder())
      << "the keys go to the pictures first, not to the library box";
}

TEST_F(ProgrammTest, CancelledFirstStartEndsTheProgram) {
  starten();
  prompt_->cancel();
  EXPECT_EQ(main(), 0);
  EXPECT_TRUE(programm_->bytBeenden);
  EXPECT_EQ(programm_->fenster(), nullptr);
}

TEST_F(ProgrammTest, NoHostNoProgram) {
  starten(false);
  EXPECT_EQ(main(), 0);
  EXPECT_TRUE(programm_->bytBeenden);
  const QString text117 = labels().fctBeschriftMsgboxZuordnen(117);
  bool gezeigt = false;
  for (const QString& a : prompt_->asked) gezeigt |= a.contains(text117);
  EXPECT_TRUE(gezeigt);
  EXPECT_FALSE(QFile::exists(programm_->settings().strIniDateiVerzeichnis) &&
               !IniGetValue(programm_->settings().strIniDateiVerzeichnis, "AllgemeineDaten", "DbVerzeichnis0").isEmpty())
      << "nothing of the first start ran";
}

TEST_F(ProgrammTest, CloseAndRestartComeBackToFolderPageAndSlot) {
  starten();
  ASSERT_EQ(main({}, path("bib")), -1);
  programm_->browser()->GeheZuSeite(3, 5, "000");
  prompt_->answer(Answer::Yes);  // "Soll Kolvane beendet werden?"
  ASSERT_TRUE(programm_->Form_Unload());
  EXPECT_EQ(beendet_, -1) << "the end comes through the event loop";
  QCoreApplication::processEvents();
  EXPECT_EQ(beendet_, 0);

  starten();
  ASSERT_EQ(main(), -1);
  EXPECT_EQ(programm_->browser()->s1, 3);
  EXPECT_EQ(programm_->browser()->pos, 5);
  EXPECT_EQ(programm_->browser()->strAktuelleOrdnerNr(), "000");
}

TEST_F(ProgrammTest, ClosingAsksAndNoKeepsTheProgram) {
  starten();
  ASSERT_EQ(main({}, path("bib")), -1);
  prompt_->answer(Answer::No);
  EXPECT_FALSE(programm_->Form_Unload());
  EXPECT_TRUE(programm_->bibliothek()->connDb.isOpen());
}

TEST_F(ProgrammTest, CommandLine) {
  EXPECT_EQ(Kommandozeile::lesen({"/d", "/Data/Lib/dbKolvane.mdb"}).sDbPathUe, "/Data/Lib/dbKolvane.mdb");
  EXPECT_EQ(Kommandozeile::lesen({"/D", "/Data/Lib"}).sDbPathUe, "/Data/Lib");
  EXPECT_EQ(Kommandozeile::lesen({"/d \"/x y/Lib\""}).sDbPathUe, "/x y/Lib");
  EXPECT_TRUE(Kommandozeile::lesen({"LBlock"}).lblock);
  EXPECT_EQ(Kommandozeile::lesen({"--host", "sandbox", "--screenshot", "/tmp/a.png"}).screenshot, "/tmp/a.png");
}

TEST(Aufruf, HelpVersionAndUnknownOptions) {
  using A = Aufruf::Art;
  EXPECT_EQ(Aufruf::pruefen({}).art, A::Starten);
  EXPECT_EQ(Aufruf::pruefen({"/D", "/x/dbKolvane.mdb", "LBlock", "--host", "sandbox"}).art, A::Starten);
  EXPECT_EQ(Aufruf::pruefen({"-platform", "offscreen", "--screenshot", "/tmp/a.png"}).art, A::Starten)
      << "the toolkit's own options pass";
  EXPECT_EQ(Aufruf::pruefen({"--host", "--help"}).art, A::Starten) << "a value, not an option";
  EXPECT_EQ(Aufruf::pruefen({"/d", "x", "--help"}).art, A::Hilfe);
  EXPECT_EQ(Aufruf::pruefen({"-v"}).art, A::Version);
  const Aufruf falsch = Aufruf::pruefen({"lblock", "--hots", "sandbox"});
  EXPECT_EQ(falsch.art, A::Fehler);
  EXPECT_EQ(falsch.option, "--hots");
  EXPECT_EQ(Aufruf::pruefen({"--host"}).art, A::Fehler) << "the value is missing";
}

// The built program with --help, --version or a wrong option: it prints and
// ends without a window, a host or a settings file.
TEST_F(ProgrammTest, HelpAndVersionEndBeforeAnythingStarts) {
  const QString exe = QStringLiteral(KOLVANE_EXE);
  const QString ini = QFileInfo(exe).dir().filePath("Kolvane9.0.ini");
  const bool iniVorher = QFile::exists(ini);
  const QDateTime iniZeit = QFileInfo(ini).lastModified();
  QDir().mkpath(path("home"));
  QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
  umgebung.insert("HOME", path("home"));
  umgebung.insert("XDG_CONFIG_HOME", path("home/.config"));
  umgebung.insert("TMPDIR", path("home/tmp"));
  umgebung.insert("QT_QPA_PLATFORM", "offscreen");
  struct Lauf {
    int code;
    QString aus, fehler;
  };
  auto laufen = [&](const QStringList& args) {
    QProcess p;
    p.setProcessEnvironment(umgebung);
    p.setWorkingDirectory(path("home"));
    p.start(exe, args);
    EXPECT_TRUE(p.waitForFinished(20000)) << args.join(' ').toStdString();
    if (p.state() != QProcess::NotRunning) p.kill();
    return Lauf{p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, QString::fromLocal8Bit(p.readAllStandardOutput()),
                QString::fromLocal8Bit(p.readAllStandardError())};
  };
  const Lauf hilfe = laufen({"--help"});
  EXPECT_EQ(hilfe.code, 0);
  EXPECT_TRUE(hilfe.aus.startsWith("usage: kolvane")) << hilfe.aus.toStdString();
  EXPECT_TRUE(hilfe.aus.contains("--version"));
  const Lauf version = laufen({"--version"});
  EXPECT_EQ(version.code, 0);
  EXPECT_EQ(version.aus, "kolvane " + programmVersion() + "\n");
  EXPECT_EQ(programmVersion(), "9.0");
  const Lauf falsch = laufen({"--hots", "sandbox"});
  EXPECT_EQ(falsch.code, 2);
  EXPECT_TRUE(falsch.aus.isEmpty());
  EXPECT_TRUE(falsch.fehler.contains("--hots"));
  EXPECT_TRUE(falsch.fehler.contains("usage: kolvane"));
  // Nothing was written: no settings, no per-user store, no temp root.
  EXPECT_EQ(QDir(path("home")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden), QStringList());
  EXPECT_EQ(QFile::exists(ini), iniVorher);
  if (iniVorher) {
    EXPECT_EQ(QFileInfo(ini).lastModified(), iniZeit);
  }
}

TEST_F(ProgrammTest, LibraryGivenOnTheCommandLineIsOpened) {
  starten();
  ASSERT_EQ(main({}, path("bib")), -1);
  prompt_->answer(Answer::Yes);
  programm_->Form_Unload();
  // A second library, handed over with /d at the next start.
  QDir().mkpath(path("zwei/000"));
  Bibliothek neu(*settings_);
  ASSERT_TRUE(neu.NeueDatenbankErstellen(path("zwei") + "/dbKolvane.mdb"));
  starten();
  ASSERT_EQ(main({"/D", path("zwei") + "/dbKolvane.mdb"}), -1);
  EXPECT_EQ(programm_->settings().strAktuelleDatenbank, path("zwei") + "/dbKolvane.mdb");
}

TEST_F(ProgrammTest, SecondStartOnlyBringsTheFirstToTheFront) {
  starten();
  ASSERT_EQ(main({}, path("bib")), -1);
  int vorne = 0;
  QObject::connect(programm_->startService(), &StartService::fensterNachVorne, [&] { ++vorne; });
  // A second process's call, from another thread so this one serves it.
  auto zweiter = std::async(std::launch::async, [name = programm_->startServiceName] {
    return fctStartServiceAufrufen({QStringLiteral("StartKolvane")}, name, 5000);
  });
  QEventLoop loop;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    if (zweiter.wait_for(std::chrono::milliseconds(0)) == std::future_status::ready) loop.quit();
  });
  poll.start(10);
  QTimer::singleShot(8000, &loop, &QEventLoop::quit);
  loop.exec();
  poll.stop();
  ASSERT_EQ(zweiter.wait_for(std::chrono::milliseconds(0)), std::future_status::ready);
  EXPECT_TRUE(zweiter.get().has_value()) << "the running program answered";
  // The window comes up a moment later, once the caller has been let go.
  QEventLoop warten;
  QObject::connect(programm_->startService(), &StartService::fensterNachVorne, &warten, &QEventLoop::quit);
  QTimer::singleShot(5000, &warten, &QEventLoop::quit);
  if (vorne == 0) warten.exec();
  EXPECT_EQ(vorne, 1);
  EXPECT_EQ(programm_->settings().strAktuelleDatenbank, path("bib") + "/dbKolvane.mdb") << "nothing else changed";
}

}  // namespace
}  // namespace kolvane

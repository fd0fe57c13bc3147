#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLabel>
#include <QLibraryInfo>
#include <QLockFile>
#include <QMessageBox>
#include <QPushButton>
#include <QTranslator>
#include <QDateTime>
#include <QEventLoop>
#include <QFileInfo>
#include <QFile>
#include <QProcess>
#include <QThread>
#include <QTimer>
#include <future>

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "cadbridge.h"
#include "diagnostics.h"
#include "fakedesktop.h"
#include "fakehost.h"
#include "frmblockverwaltung.h"
#include "inifile.h"
#include "kolvanetest.h"
#include "labels.h"
#include "neuerblock.h"
#include "programm.h"
#include "qtprompt.h"
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

  // A call of a second process, from another thread so this one serves it.
  StartAntwort aufrufen(const QStringList& anfrage) {
    auto zweiter = std::async(std::launch::async, [name = programm_->startServiceName, anfrage] {
      return startServiceAnfrage(anfrage, name, 5000);
    });
    QElapsedTimer uhr;
    uhr.start();
    while (zweiter.wait_for(std::chrono::milliseconds(0)) != std::future_status::ready && uhr.elapsed() < 8000)
      QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    EXPECT_EQ(zweiter.wait_for(std::chrono::milliseconds(0)), std::future_status::ready);
    return zweiter.get();
  }
  // Serves events until cond holds or the bound has passed.
  template <class F>
  bool bis(F cond, int boundMs = 5000) {
    QElapsedTimer uhr;
    uhr.start();
    while (!cond() && uhr.elapsed() < boundMs) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    return cond();
  }
  QString neueBibliothek(const QString& ordner) {
    QDir().mkpath(path(ordner + "/000"));
    Bibliothek neu(*settings_);
    EXPECT_TRUE(neu.NeueDatenbankErstellen(path(ordner) + "/dbKolvane.mdb"));
    return path(ordner) + "/dbKolvane.mdb";
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

// The second main job is on the window: "Neu" on a free slot, off on a block.
TEST_F(ProgrammTest, NewBlockIsOfferedOnAFreeSlot) {
  starten();
  ASSERT_EQ(main({}, path("bib")), -1);
  ASSERT_TRUE(programm_->neuerBlock());
  FrmBlockverwaltung* f = programm_->fenster();
  ASSERT_TRUE(f->button("combutNeu"));
  EXPECT_TRUE(f->button("combutNeu")->isEnabled());
  EXPECT_TRUE(f->action("mnuBBlockNeu")->isEnabled());
}

TEST_F(ProgrammTest, TheHelpMenuNamesTheVersion) {
  starten();
  ASSERT_EQ(main({}, path("bib")), -1);
  QAction* info = programm_->fenster()->action("mnuHInfo");
  ASSERT_TRUE(info);
  ASSERT_TRUE(info->isEnabled());
  info->trigger();
  ASSERT_FALSE(prompt_->asked.isEmpty());
  EXPECT_TRUE(prompt_->asked.last().contains("Kolvane " + programmVersion())) << prompt_->asked.last().toStdString();
}

// A screenshot run can't answer the first start's chooser: it ends at once.
TEST_F(ProgrammTest, AScreenshotWithoutALibraryEndsWithAnError) {
  starten();
  EXPECT_EQ(main({"--screenshot", path("bild.png")}), 1);
  EXPECT_FALSE(QFile::exists(path("bild.png")));
  EXPECT_TRUE(prompt_->asked.isEmpty()) << prompt_->asked.join("\n").toStdString();
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

// A program holds the lock but its start service never comes up: the second
// start waits its bounded time and ends without loading anything.
TEST_F(ProgrammTest, SecondStartNeverRunsBesideALockHolder) {
  QDir().mkpath(env_.configDir);
  QLockFile erster(QDir(env_.configDir).filePath("Kolvane.lock"));
  ASSERT_TRUE(erster.tryLock(0));
  starten();
  programm_->uebergabeWartezeitMs = 300;
  QElapsedTimer uhr;
  uhr.start();
  EXPECT_EQ(main(), 1);
  EXPECT_GE(uhr.elapsed(), 300);
  EXPECT_EQ(programm_->fenster(), nullptr);
  EXPECT_EQ(programm_->startService(), nullptr);
  EXPECT_FALSE(QFile::exists(path("bib") + "/dbKolvane.mdb"));
  EXPECT_TRUE(prompt_->asked.isEmpty()) << prompt_->asked.join("\n").toStdString();
  // Once the first has ended, a start is the program again.
  erster.unlock();
  starten();
  EXPECT_EQ(main({}, path("bib")), -1);
  EXPECT_NE(programm_->startService(), nullptr);
}

// kolvane --change-db from outside: the running program switches, and its
// library box and Datei menu name the new library; a broken library is refused
// to the caller with the reason, and the program keeps its own.
TEST_F(ProgrammTest, ChangeDbFromOutsideShowsTheNewLibraryAndRefusesABrokenOne) {
  starten();
  ASSERT_EQ(main({}, path("bib")), -1);
  const QString erste = path("bib") + "/dbKolvane.mdb";
  const QString zweite = neueBibliothek("zwei");
  auto* box = programm_->fenster()->findChild<QComboBox*>("comboxVerzeichnis");
  ASSERT_NE(box, nullptr);

  const StartAntwort ok = aufrufen({"ChangeDb", path("zwei")});  // the directory is enough
  EXPECT_EQ(ok.art, StartAntwort::Art::Ok) << ok.wert.toStdString();
  ASSERT_TRUE(bis([&] { return programm_->settings().strAktuelleDatenbank == zweite; }));
  EXPECT_EQ(box->currentText(), zweite);
  EXPECT_EQ(box->count(), 2);
  EXPECT_EQ(box->itemText(1), erste);
  if (qEnvironmentVariableIsSet("KOLVANE_SCREENSHOT_DIR"))
    programm_->fenster()->grab().save(qEnvironmentVariable("KOLVANE_SCREENSHOT_DIR") + "/nach-change-db.png");

  writeFile(path("kaputt/dbKolvane.mdb"), "kein SQLite, nur Text");
  const StartAntwort nein = aufrufen({"ChangeDb", path("kaputt") + "/dbKolvane.mdb"});
  EXPECT_EQ(nein.art, StartAntwort::Art::Fehler);
  EXPECT_TRUE(nein.wert.startsWith("Die Bibliothek konnte nicht geöffnet werden: ")) << nein.wert.toStdString();
  EXPECT_GT(nein.wert.size(), QString("Die Bibliothek konnte nicht geöffnet werden: ").size()) << "with the reason";
  // The program says it too, once the caller has been let go.
  ASSERT_TRUE(bis([&] {
    for (const QString& a : prompt_->asked)
      if (a.startsWith("message|Kolvane – Fehler|Die Bibliothek konnte nicht geöffnet werden: ")) return true;
    return false;
  })) << prompt_->asked.join("\n").toStdString();
  EXPECT_EQ(programm_->settings().strAktuelleDatenbank, zweite);
  EXPECT_EQ(box->currentText(), zweite);
  EXPECT_TRUE(programm_->bibliothek()->connDb.isOpen());
  EXPECT_EQ(prompt_->unexpected(), 0);
}

// Qt's own texts follow the language of the label files.
TEST(QtUebersetzung, GermanByDefaultEnglishNeedsNone) {
  const QString qm = QLibraryInfo::path(QLibraryInfo::TranslationsPath) + "/qtbase_de.qm";
  if (!QFile::exists(qm)) GTEST_SKIP() << "no Qt translation on this machine: " << qm.toStdString();
  {
    std::unique_ptr<QTranslator> englisch = qtUebersetzungInstallieren("english");
    EXPECT_EQ(englisch, nullptr);
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Cancel");
  }
  std::unique_ptr<QTranslator> deutsch = qtUebersetzungInstallieren("");
  ASSERT_NE(deutsch, nullptr);
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Abbrechen");
  QDialogButtonBox knoepfe(QDialogButtonBox::Yes | QDialogButtonBox::No | QDialogButtonBox::Cancel);
  EXPECT_EQ(knoepfe.button(QDialogButtonBox::Yes)->text().remove('&'), "Ja");
  EXPECT_EQ(knoepfe.button(QDialogButtonBox::No)->text().remove('&'), "Nein");
  deutsch.reset();
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Cancel") << "the translator leaves with its owner";
}

// The real dialogs of the program in German: a Yes/No box and the first
// start's folder chooser, which names what to choose and starts at home when
// the proposed folder does not exist yet.
TEST_F(ProgrammTest, GermanBoxAndFirstStartChooser) {
  const QString qm = QLibraryInfo::path(QLibraryInfo::TranslationsPath) + "/qtbase_de.qm";
  if (!QFile::exists(qm)) GTEST_SKIP() << "no Qt translation on this machine: " << qm.toStdString();
  ASSERT_TRUE(labels().fctSpracheAuslesen(0));
  labels().fctBeschriftungsFileZuordnenIni();
  std::unique_ptr<QTranslator> deutsch = qtUebersetzungInstallieren("deutsch");
  const QString bilder = qEnvironmentVariable("KOLVANE_SCREENSHOT_DIR", path("bilder"));
  QDir().mkpath(bilder);
  QtPrompt qt;
  QStringList knoepfe;
  QString ueberschrift, startOrdner;
  // Looks at the modal dialog once it is up, then closes it.
  auto ansehen = [&](const QString& datei) {
    QTimer::singleShot(0, [&, datei] {
      bis([] { return QApplication::activeModalWidget() != nullptr; }, 5000);
      QWidget* w = QApplication::activeModalWidget();
      if (!w) return;
      w->resize(w->sizeHint().expandedTo(QSize(360, 120)));
      EXPECT_TRUE(w->grab().save(QDir(bilder).filePath(datei)));
      for (auto* b : w->findChildren<QPushButton*>())
        if (b->isVisible()) knoepfe << b->text().remove('&');
      if (auto* l = w->findChild<QLabel*>("folderChooserHint")) ueberschrift = l->text();
      if (auto* f = qobject_cast<QFileDialog*>(w)) startOrdner = f->directory().absolutePath();
      if (auto* d = qobject_cast<QDialog*>(w)) d->reject();
    });
  };
  MessageRequest frage;
  frage.title = "Frage";
  frage.text = "Soll Kolvane beendet werden?";
  frage.buttons = Buttons::YesNo;
  frage.icon = Icon::Question;
  ansehen("frage-ja-nein.png");
  qt.message(frage);
  EXPECT_EQ(knoepfe, QStringList({"Ja", "Nein"}));

  knoepfe.clear();
  const QString titel = labels().fctBeschriftFrmZuordnen("frmVerzeichnisauswahl.Caption");
  ASSERT_FALSE(titel.isEmpty());
  ansehen("ordnerwahl.png");
  EXPECT_EQ(qt.chooseFolder(titel, path("home") + "/Kolvane/"), "");
  EXPECT_EQ(ueberschrift, titel);
  EXPECT_EQ(startOrdner, QDir(path("home")).absolutePath());
  EXPECT_TRUE(knoepfe.contains("Abbrechen")) << knoepfe.join(", ").toStdString();

  // The error box: what failed, in words.
  knoepfe.clear();
  setPrompt(&qt);
  ansehen("fehler.png");
  subErrorAllgemein(false, "comboxVerzeichnis_Click", "Die Datei /daten/bib/dbKolvane.mdb ist keine Kolvane-Datenbank.");
  setPrompt(prompt_.get());
  EXPECT_EQ(knoepfe, QStringList({"OK"}));
}

// The built program, twice: a second start while the first is still loading
// hands its command line to the first and ends, and a lock left by a killed
// program is taken over. No CAD runs, so the first never gets past its load.
TEST_F(ProgrammTest, OneProgramPerUserAlsoWhileTheFirstLoads) {
  const QString exe = QStringLiteral(KOLVANE_EXE);
  QDir().mkpath(path("home/run"));
  QFile::setPermissions(path("home/run"), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
  QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
  umgebung.insert("HOME", path("home"));
  umgebung.insert("XDG_CONFIG_HOME", path("home/.config"));
  umgebung.insert("XDG_RUNTIME_DIR", path("home/run"));  // the start service's socket
  umgebung.insert("TMPDIR", path("home/tmp"));
  umgebung.insert("QT_QPA_PLATFORM", "offscreen");
  umgebung.insert("KOLVANE_SANDBOX_SOCKET", path("kein-cad.sock"));
  const QString kaputt = path("kaputt/dbKolvane.mdb");
  writeFile(kaputt, "kein SQLite, nur Text");
  const QString meldung = "Die Bibliothek konnte nicht geöffnet werden: ";

  std::vector<std::unique_ptr<QProcess>> laeufe;
  auto starte = [&](const QStringList& args) {
    auto p = std::make_unique<QProcess>();
    p->setProcessEnvironment(umgebung);
    p->setWorkingDirectory(path("home"));
    p->start(exe, args);
    EXPECT_TRUE(p->waitForStarted(5000));
    laeufe.push_back(std::move(p));
    return laeufe.back().get();
  };
  auto laeuft = [](QProcess* p) { return p->state() != QProcess::NotRunning; };
  struct Aufraeumen {
    std::vector<std::unique_ptr<QProcess>>& l;
    ~Aufraeumen() {
      for (auto& p : l)
        if (p->state() != QProcess::NotRunning) {
          p->kill();
          p->waitForFinished(5000);
        }
    }
  } aufraeumen{laeufe};

  QProcess* a = starte({});
  QThread::msleep(50);
  QProcess* b = starte({"/d", kaputt});
  ASSERT_TRUE(bis([&] { return !laeuft(a) || !laeuft(b); }, 30000)) << "one of the two ends";
  QThread::msleep(500);
  ASSERT_NE(laeuft(a), laeuft(b)) << "one program is left";
  QProcess* erster = laeuft(a) ? a : b;
  QProcess* zweiter = laeuft(a) ? b : a;
  ASSERT_EQ(zweiter->exitStatus(), QProcess::NormalExit);
  const QString fehler = QString::fromLocal8Bit(zweiter->readAllStandardError());
  if (zweiter == b) {
    // The first checked the library the second was given.
    EXPECT_EQ(zweiter->exitCode(), 3);
    EXPECT_TRUE(fehler.contains(meldung)) << fehler.toStdString();
  } else {
    EXPECT_EQ(zweiter->exitCode(), 0) << fehler.toStdString();
  }

  // Another start with a library: the first, still loading, answers for it.
  QProcess* c = starte({"/D", kaputt});
  ASSERT_TRUE(c->waitForFinished(30000));
  EXPECT_EQ(c->exitCode(), 3);
  EXPECT_TRUE(QString::fromLocal8Bit(c->readAllStandardError()).contains(meldung));
  EXPECT_TRUE(laeuft(erster));

  // The first dies; its lock is left behind and taken over.
  erster->kill();
  ASSERT_TRUE(erster->waitForFinished(5000));
  QProcess* d = starte({});
  QThread::msleep(1500);
  EXPECT_TRUE(laeuft(d)) << QString::fromLocal8Bit(d->readAllStandardError()).toStdString();
}

}  // namespace
}  // namespace kolvane

#include "programm.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLockFile>
#include <QScreen>
#include <QTextStream>
#include <QThread>
#include <QTimer>
#include <QTranslator>

#include "acadconnect.h"
#include "bibliothek.h"
#include "blockverwaltung.h"
#include "cadbridge.h"
#include "desktop.h"
#include "diagnostics.h"
#include "einfuegen.h"
#include "einfuegenanbindung.h"
#include "neuerblock.h"
#include "neuerblockanbindung.h"
#include "ansichtenanbindung.h"
#include "dbmaskeanbindung.h"
#include "defmenueanbindung.h"
#include "varianten.h"
#include "variantenanbindung.h"
#include "eventsink.h"
#include "suchanbindung.h"
#include "wartunganbindung.h"
#include "setupanbindung.h"
#include "frmblockverwaltung.h"
#include "frmstartfenster.h"
#include "frmvollbild.h"
#include "host.h"
#include "inifile.h"
#include "integration.h"
#include "labels.h"
#include "layout.h"
#include "msgbox.h"
#include "paths.h"
#include "qtprompt.h"
#include "recordhelpers.h"
#include "remotedesktop.h"
#include "remotehost.h"
#include "schema.h"
#include "startservice.h"

namespace kolvane {

namespace {

// A desktop with no windows: what is left when no host can be reached.
class KeinDesktop final : public Desktop {
 public:
  QList<DesktopWindow> topLevelWindows() override { return {}; }
  bool appActivate(const QString&) override { return false; }
  quint64 foregroundWindow() override { return 0; }
  bool setForegroundWindow(quint64) override { return false; }
  bool bringWindowToTop(quint64) override { return false; }
  quint64 findWindow(const QString&) override { return 0; }
  quint64 activeWindow() override { return 0; }
  bool sendKeys(const QString&, bool) override { return false; }
  int16_t getAsyncKeyState(int) override { return 0; }
  QPoint cursorPos() override { return {}; }
};

int pixelsToTwips(int pixels, bool horizontal) {
  const int einZoll = twipsToPixels(1440, horizontal);
  return einZoll > 0 ? pixels * 1440 / einZoll : pixels * 15;
}

// Boxes of the start that carry no number of their own.
constexpr int kDbSchonDa1 = 915, kDbSchonDa2 = 916;
constexpr int kKeineBibliothek1 = 917, kKeineBibliothek2 = 918;
constexpr int kNichtGeoeffnet1 = 913, kNichtGeoeffnet2 = 914;

}  // namespace

Kommandozeile Kommandozeile::lesen(const QStringList& args) {
  Kommandozeile k;
  for (int i = 0; i < args.size(); ++i) {
    const QString a = args[i];
    const QString klein = a.toLower();
    if (klein == QLatin1String("/d") && i + 1 < args.size()) {
      // The path keeps its case where the file system tells case apart.
      k.sDbPathUe = args[++i];
    } else if (klein.startsWith(QLatin1String("/d \""))) {
      k.sDbPathUe = a.mid(4, a.size() - 5);  // the quoted form as it stands
    } else if (klein == QLatin1String("lblock")) {
      k.lblock = true;
    } else if (a == QLatin1String("--host") && i + 1 < args.size()) {
      k.host = args[++i];
    } else if (a == QLatin1String("--screenshot") && i + 1 < args.size()) {
      k.screenshot = args[++i];
    }
  }
  if (k.sDbPathUe.startsWith('"') && k.sDbPathUe.endsWith('"') && k.sDbPathUe.size() >= 2)
    k.sDbPathUe = k.sDbPathUe.mid(1, k.sDbPathUe.size() - 2);
  return k;
}

QString programmVersion() { return QStringLiteral(KOLVANE_VERSION); }

std::unique_ptr<QTranslator> qtUebersetzungInstallieren(const QString& strSprache) {
  // The label files' languages by the names of their files; English is Qt's own.
  static const QHash<QString, QString> kuerzel = {
      {QStringLiteral("deutsch"), QStringLiteral("de")},   {QStringLiteral("francais"), QStringLiteral("fr")},
      {QStringLiteral("français"), QStringLiteral("fr")},  {QStringLiteral("italiano"), QStringLiteral("it")},
      {QStringLiteral("espanol"), QStringLiteral("es")},   {QStringLiteral("español"), QStringLiteral("es")},
      {QStringLiteral("nederlands"), QStringLiteral("nl")}, {QStringLiteral("polski"), QStringLiteral("pl")},
      {QStringLiteral("cesky"), QStringLiteral("cs")}};
  QString sprache = strSprache.trimmed().toLower();
  if (sprache.isEmpty()) sprache = QStringLiteral("deutsch");
  const QString k = kuerzel.value(sprache);
  if (k.isEmpty() || !QCoreApplication::instance()) return nullptr;
  auto t = std::make_unique<QTranslator>();
  if (!t->load(QStringLiteral("qtbase_") + k, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) return nullptr;
  QCoreApplication::installTranslator(t.get());
  return t;
}

Aufruf Aufruf::pruefen(const QStringList& args) {
  // Options of the toolkit itself, which QApplication takes away; those with a
  // value take the next word too.
  static const QStringList mitWert = {"-platform", "-platformpluginpath", "-platformtheme", "-plugin",
                                      "-qwindowgeometry", "-qwindowicon", "-qwindowtitle", "-style",
                                      "-stylesheet", "-session", "-display", "-geometry", "-title", "-name"};
  static const QStringList ohneWert = {"-reverse", "-widgetcount", "-nograb", "-dograb", "-sync"};
  Aufruf a;
  for (int i = 0; i < args.size(); ++i) {
    const QString w = args[i];
    if (w == QLatin1String("--help") || w == QLatin1String("-h") || w == QLatin1String("/?")) {
      a.art = Art::Hilfe;
      return a;
    }
    if (w == QLatin1String("--version") || w == QLatin1String("-v")) {
      a.art = Art::Version;
      return a;
    }
    if (w == QLatin1String("--host") || w == QLatin1String("--screenshot") || mitWert.contains(w) ||
        w.compare(QLatin1String("/d"), Qt::CaseInsensitive) == 0) {
      if (i + 1 >= args.size()) {
        a.art = Art::Fehler;
        a.option = w;
        return a;
      }
      ++i;
      continue;
    }
    if (ohneWert.contains(w) || w.startsWith(QLatin1String("-style=")) ||
        w.startsWith(QLatin1String("-stylesheet=")) || w.startsWith(QLatin1String("-qmljsdebugger=")))
      continue;
    // Other words (a "/d \"path\"" in one, "lblock") are the Windows edition's and
    // are read by the program; an unknown option is a mistake.
    if (w.startsWith(QLatin1Char('-')) && w.size() > 1) {
      a.art = Art::Fehler;
      a.option = w;
      return a;
    }
  }
  return a;
}

QString aufrufHilfe() {
  return QStringLiteral(
      "usage: kolvane [OPTION]...\n"
      "Block library for CAD: shows the blocks of the current library and inserts them\n"
      "into the drawing open in the CAD host.\n"
      "\n"
      "  --host NAME          the CAD host: sandbox (default), x11, com\n"
      "  /d LIBRARY           switch to this library (its dbKolvane.mdb or directory)\n"
      "  lblock               insert the last block again (through the running program)\n"
      "  --screenshot FILE    save a picture of the main window to FILE and end\n"
      "  --start, --start2 FOLDER PAGE, --start3 NAME, --change-db LIBRARY, --lblock\n"
      "                       steer the running program and end\n"
      "  -h, --help           show this help and end\n"
      "  -v, --version        show the version and end\n");
}

HostAnbindung hostAnbinden(const QString& hostArt) {
  HostAnbindung a;
  const QString art = hostArt.isEmpty() ? QStringLiteral("sandbox") : hostArt.toLower();
  if (art == QLatin1String("sandbox")) {
    QString fehler;
    std::unique_ptr<RemoteDesktop> d = connectSandboxDesktop(QString(), &fehler);
    if (d) a.desktop = std::move(d);
    // One automation object for the run, as GetObject hands out the same
    // application every time.
    auto host = std::make_shared<std::unique_ptr<Host>>();
    a.getObject = [host](QString* f) -> Host* {
      if (!*host) *host = connectSandboxHost(QString(), f);
      return host->get();
    };
  }
  if (!a.desktop) a.desktop = std::make_unique<KeinDesktop>();
  return a;
}

Programm::Programm(Environment env, HostAnbinder anbinder)
    : settings_(std::make_unique<Settings>(std::move(env))), anbinder_(std::move(anbinder)) {
  setCurrentSettings(settings_.get());
  startServiceName = StartService::defaultServerName();
  beenden = [](int code) { QCoreApplication::exit(code); };
}

Programm::~Programm() {
  suche_.reset();  // its dialogs are the main window's children
  neuerBlock_.reset();
  einfuegen_.reset();
  frm_.reset();
  bv_.reset();
  lib_.reset();
  cad_.reset();
  if (currentSettings() == settings_.get()) setCurrentSettings(nullptr);
}

int Programm::Main(const QStringList& args) {
  Trace t(QStringLiteral("Main"));
  // 1. The command line.
  kommandozeile = Kommandozeile::lesen(args);
  // One program per user. The first start holds the lock from here on and its
  // start service takes calls at once (their work waits until it is loaded); a
  // later start hands its command line over and ends, also while the first
  // still sits in its first-start dialog or opens its library.
  t.step(QStringLiteral("Sperre"));
  if (!sperreNehmen()) {
    const int ende = anErstenUebergeben();
    if (ende >= 0) return ende;
  }
  startServiceVerbinden();
  if (!start_) {
    // A program without our lock answers under the name: it is the one.
    const int ende = anErstenUebergeben();
    if (ende >= 0) return ende;
  }
  // 2.-7. Settings file, temporary root, error file.
  Settings& s = *settings_;
  s.subPfadeFestlegen();
  // Qt's own dialogs and buttons in the program's language.
  qtUebersetzung_ = qtUebersetzungInstallieren(s.strSprache);
  while (s.sCTempHatLeerzeichen()) {
    // Slide and script commands to the CAD break at blanks.
    subMsgboxInfoEinzeilig(QStringLiteral("Ihr temporärPfad für Kolvane beinhaltet Leerzeichen: ") + s.sCTemp +
                           QStringLiteral("\rBitte wählen Sie eine Pfad ohne Leerzeichen."));
    const QString neu = prompt().chooseFolder(QStringLiteral("sCTemp"), QDir::homePath());
    if (neu.isEmpty()) return 0;
    s.sCTemp = neu.endsWith('/') ? neu : neu + '/';
    s.fctWertAllgInIniSpeichern(QStringLiteral("sCTemp"), s.sCTemp);
    s.strErrorDatei = s.sCTemp + QStringLiteral("txtErrorKolvane9.0.txt");
  }
  // 8. Debug mode.
  if (fctGetCDebug(s.strIniDateiVerzeichnis)) subMsgboxInfoEinzeilig(QStringLiteral("Prgramm startet im Debug-Modus"));
  // 10./11. The labels; without them nothing can be said.
  if (!labels().fctSpracheAuslesen(0)) {
    MessageRequest r;
    r.title = QStringLiteral("Info");
    r.text = QStringLiteral("Es konnte keine Beschriftungsdatei gefunden werden.\rKolvane kann nicht gestartet werden.");
    r.icon = Icon::Information;
    prompt().message(r);
    return 1;
  }
  t.step(QStringLiteral("fctBeschriftungsFileZuordnenIni"));
  labels().fctBeschriftungsFileZuordnenIni();
  // 12. A second instance was handed over at the top.
  // 13. The main form.
  // A picture that could not be taken is a failed run.
  if (!Form_Load() || bytBeenden) return kommandozeile.screenshot.isEmpty() ? 0 : 1;
  if (!kommandozeile.screenshot.isEmpty()) {
    QTimer::singleShot(200, this, [this] { beenden(screenshotSchreiben() ? 0 : 1); });
  }
  // The calls that came while loading, in their order.
  if (start_) start_->setAblaufLaeuft(false);
  return -1;
}

bool Programm::hostVerbinden() {
  QString art = kommandozeile.host;
  if (art.isEmpty()) art = settings_->allg(QStringLiteral("Host"));
  anbindung_ = anbinder_(art);
  cad_ = std::make_unique<CadBridge>(anbindung_.desktop.get());
  cad_->hostGetObject = anbindung_.getObject;
  cad_->strExePfad = QCoreApplication::applicationFilePath();
  uint8_t booOnlyAutoCAD16 = 0;
  return ACAD_Connect(*cad_, 0, 0, booOnlyAutoCAD16) != 0;
}

bool Programm::ersterStart() {
  Trace t(QStringLiteral("ersterStart"));
  Settings& s = *settings_;
  for (;;) {
    // a. The directory of the first library.
    t.step(QStringLiteral("frmVerzeichnisauswahl"));
    const QString dir = prompt().chooseFolder(
        labels().fctBeschriftFrmZuordnen(QStringLiteral("frmVerzeichnisauswahl.Caption")), s.strVerzeichnisVorgabe);
    if (dir.isEmpty()) return false;
    Bibliothek probe(s);
    // b. An existing library there?
    t.step(QStringLiteral("nach vorhandener Db suchen"));
    const uint8_t gefunden = probe.fctNachBestehenderDbSuchen1Neu2Alt0Keine(dir);
    if (gefunden == 1) {
      t.step(QStringLiteral("erste Datenbank wird eingebunden"));
      s.aryVerzeichnisseDatenbank = {s.strAktuelleDatenbank};
    } else if (gefunden == 2) {
      t.step(QStringLiteral("Datenbank von Kolvane7 kann importiert werden"));
      // The old format's import is not part of this edition yet: the user
      // chooses another directory.
      subMsgboxInfoZweizeilig2(Bibliothek::kLabelAltesFormat1, Bibliothek::kLabelAltesFormat2);
      continue;
    } else {
      t.step(QStringLiteral("Db wird neu angelegt"));
      const QString db = QDir(dir).filePath(dbDateiName());
      if (QFileInfo::exists(db)) {
        // Never a new library over an existing file.
        subMsgboxInfoZweizeilig(kKeineBibliothek1, kKeineBibliothek2);
        continue;
      }
      fctMkDirAlle(dir);
      if (!Mk_Datenbank(db)) continue;
      QDir(dir).mkpath(QStringLiteral("000"));
      s.aryVerzeichnisseDatenbank = {db};
      s.strAktuelleDatenbank = db;
    }
    // e. Defaults, ini and store.
    t.step(QStringLiteral("setupeinstellungen zuweisen"));
    s.subSetupStandardZuweisen();
    t.step(QStringLiteral("in Ini-Datei abspeichern"));
    s.subSpeichernKolvaneIniDatei();
    t.step(QStringLiteral("in Registry abspeichern"));
    if (!s.fctKeyKolvaneExist()) s.SetupInRegistrierdatenbankSpeichern();
    s.subVerzeichnisVorgabeAktualisieren(dir, true);
    return true;
  }
}

bool Programm::Form_Load() {
  Trace t(QStringLiteral("Form_Load"));
  Settings& s = *settings_;
  // 1.
  t.step(QStringLiteral("Werte zuordnen"));
  bytLaedtNoch = true;
  s.setup.longAnzahlDerBilder = -1;
  // 2.
  if (diagnostics().bytProgrammStop == 1) return false;
  // 3. The CAD first: no host, no program.
  t.step(QStringLiteral("ACAD_Connect"));
  if (!hostVerbinden()) {
    bytBeenden = true;
    return false;
  }
  // 4./5.
  anbindung_.desktop->sendKeys(QStringLiteral("{ESC}"), true);
  // 6.-8. Settings; the first start makes or finds the first library.
  t.step(QStringLiteral("fctLesenKolvaneIniDatei"));
  if (!s.fctLesenKolvaneIniDatei()) {
    t.step(QStringLiteral("datenbank = dbKolvane.mdb"));
    if (!kommandozeile.screenshot.isEmpty()) {
      // A picture run can't answer the first start's question.
      QTextStream(stderr) << QStringLiteral(
          "Kolvane hat noch keine Bibliothek: bitte einmal ohne --screenshot starten und eine anlegen.\n");
      bytBeenden = true;
      return false;
    }
    if (!ersterStart()) {
      bytBeenden = true;
      return false;
    }
  } else {
    s.subLesenKolvaneIniDatei();
    t.step(QStringLiteral("Daten aus Ini-DAtei lesen"));
    if (s.fctKeyKolvaneExist()) {
      t.step(QStringLiteral("subAktuelleDatenbankAusRegistrierdatenbank"));
      s.EintraegeAusRegistrierdatenbank();
      s.SetupEinstellungenEinlesen();
    } else {
      s.strAktuelleDatenbank = s.aryVerzeichnisseDatenbank.value(0);
      t.step(QStringLiteral("SetupEinstellungenZuweisen"));
      s.subSetupStandardZuweisen();
      s.SetupInRegistrierdatenbankSpeichern();
    }
  }
  if (s.setup.longAnzahlDerBilder < 0) s.setup.longAnzahlDerBilder = 4;
  // 9.
  t.step(QStringLiteral("SlideEndung festlegen"));
  lib_ = std::make_unique<Bibliothek>(s);
  bv_ = std::make_unique<Blockverwaltung>(s, *lib_);
  bv_->strACadVersion = cad_->typAcadVersionInfo.strACadVersion;
  // 10. The CAD menu, on the automation route.
  if (!cad_->istLT()) {
    cad_->strDatenVerzeichnis = s.environment().configDir + QStringLiteral("host");
    if (fctAcadMenueEinrichten(*cad_)) fctAcadMenueLaden(*cad_);
  }
  // 11. The start window, not modal, until the main form shows.
  t.step(QStringLiteral("Startfenster anzeigen"));
  FrmStartfenster startfenster;
  if (QGuiApplication::platformName() != QLatin1String("offscreen")) {
    startfenster.show();
    QCoreApplication::processEvents();
  }
  // 12.-17. The form, labelled, with its grid.
  t.step(QStringLiteral("Blockverwaltung beschriften"));
  frm_ = std::make_unique<FrmBlockverwaltung>(*bv_);
  if (auto* qp = dynamic_cast<QtPrompt*>(&prompt())) qp->setOwner(frm_.get());
  t.step(QStringLiteral("Bilderanzahl festlegen"));
  bv_->subBilderanzahlFestlegen();
  bv_->hooks.anzeigen = [this](const PageModel& m) { frm_->zeigen(m); };
  bv_->hooks.vollbildZeigen = [this] {
    Vollbild v(*bv_);
    FrmVollbild f(v, frm_.get());
    prompt().dialog(QStringLiteral("frmVollbild"), [&f] { return f.exec(); });
  };
  frm_->bibliothekGewaehlt = [this](const QString& pfad) { bibliothekWechseln(pfad); };
  // The insert: double click, button, menu and drop; the start service waits
  // while it runs.
  einfuegen_ = std::make_unique<Einfuegen>(s, *bv_, *cad_);
  einfuegen_->hooks.ablauf = [this](bool laeuft) {
    if (start_) start_->setAblaufLaeuft(laeuft);
  };
  bv_->hooks.cmbEinfuegen = [this] { einfuegen_->cmbEinfuegen_Click(); };
  einfuegenAnbinden(*frm_, *einfuegen_, cad_->istLT());
  // The new block: button and menu; the start service waits while it runs.
  neuerBlock_ = std::make_unique<NeuerBlock>(s, *bv_, *cad_);
  neuerBlock_->hooks.ablauf = [this](bool laeuft) {
    if (start_) start_->setAblaufLaeuft(laeuft);
  };
  neuerBlockAnbinden(*frm_, *neuerBlock_, *cad_);
  // The views: shown, inserted, made on the block's slot, deleted.
  ansichtenAnbinden(*frm_, *bv_, *einfuegen_, *neuerBlock_, *cad_, [this](const QString& code, int ansicht) {
    return fctVariaBloeckeLoeschen(bv_->bibliothek(), code, ansicht);
  });
  // The variants: the green frame, the insert's question, making one.
  variantenAnbinden(*bv_, *einfuegen_, *neuerBlock_, frm_.get());
  variantenBefehlAnbinden(*frm_, *neuerBlock_);
  // The data card of a block: a double click on its name.
  dbMaskeAnbinden(*frm_, *bv_, cad_.get());
  // The card definition of the folder.
  defMenueAnbinden(*frm_, *bv_);
  // The search: its dialog, the results, the page dialog, the host's search.
  suche_ = std::make_unique<SucheAnbindung>(*frm_, *bv_, *einfuegen_);
  suche_->bytLaedtNoch = true;
  // Folders and pages.
  wartungAnbinden(*frm_, *bv_);
  // The Hilfe menu: name and version of the program.
  {
    auto vorher = frm_->befehl;
    frm_->befehl = [vorher](const QString& befehl) {
      if (befehl == QLatin1String("mnuHInfo"))
        subMsgboxInfoEinzeilig(labels().fctBeschriftFrmZuordnen(QStringLiteral("frmBlockverwaltung.InfoText"))
                                   .arg(programmVersion()));
      else if (vorher)
        vorher(befehl);
    };
    frm_->setImplementiert(QStringLiteral("mnuHInfo"), true);
  }
  // The setup dialogs.
  setupAnbinden(*frm_, *bv_, s, [this](const QString& pfad) { return bibliothekWechseln(pfad); });
  frm_->formUnload = [this] { return Form_Unload(); };
  // 18.-28. The library, its folder, page and slot.
  t.step(QStringLiteral("Verbindung zur Datenbank herstellen"));
  if (!bv_->bibliothekOeffnen()) {
    subMsgboxHinweisZweizeilig(kNichtGeoeffnet1, kNichtGeoeffnet2);
    bytBeenden = true;
    return false;
  }
  fensterLagern();
  frm_->option(QStringLiteral("checkBruch"))->setChecked(true);
  bytLaedtNoch = false;
  suche_->bytLaedtNoch = false;
  // 29. The current library heads the Datei menu.
  lib_->fctDbsInAryNeuSortieren(s.strAktuelleDatenbank);
  // 31. A library handed over on the command line.
  if (!kommandozeile.sDbPathUe.isEmpty()) {
    t.step(QStringLiteral("sDbPathUe: ") + kommandozeile.sDbPathUe);
    if (kommandozeile.sDbPathUe == QLatin1String("TestDb"))
      subMsgboxInfoEinzeilig(QStringLiteral("TestDb"));
    else
      bibliothekWechseln(kommandozeile.sDbPathUe);
    kommandozeile.sDbPathUe.clear();
  }
  // 32. The host's events.
  if (!cad_->istLT() && s.bytOhneWithEvent != 1) {
    if (!fctEventActivXErstellen(*cad_))
      subMsgboxInfoEinzeilig(QStringLiteral("Bei der Verbindung zu AutoCAD ist ein Fehler aufgetreten.\r"
                                            "Bitte kontrollieren Sie, ob Ihre installierte Version von Kolvane\r"
                                            "zu Ihrer genutzten AutoCAD-Version passt."));
  }
  connect(cad_.get(), &CadBridge::programmBeenden, this, &Programm::sofortBeenden);
  // 33.
  bv_->Anzeigen();
  frm_->show();
  frm_->raise();
  frm_->bilderFokussieren();
  startfenster.close();
  cad_->hWndHauptfenster = frm_->winId();
  emit geladen();
  return true;
}

void Programm::fensterLagern() {
  // Position and size are kept in twips, as the Windows edition kept them.
  const SetupWerte& w = settings_->setup;
  int x = twipsToPixels(w.longCurrentX, true), y = twipsToPixels(w.longCurrentY, false);
  const QRect screen = QGuiApplication::primaryScreen() ? QGuiApplication::primaryScreen()->availableGeometry()
                                                        : QRect(0, 0, 1920, 1080);
  if (x < 0 || x > screen.width()) x = 0;
  if (y < 0 || y > screen.height()) y = 0;
  // Never smaller than a page of thumbnails can be read in.
  const int wPx = qMax(960, twipsToPixels(w.lonFrmWidth, true));
  const int hPx = qMax(700, twipsToPixels(w.lonFrmHeight, false));
  frm_->setGeometry(x, y, wPx, hPx);
}

void Programm::positionenSpeichern() {
  Settings& s = *settings_;
  s.setup.longCurrentX = pixelsToTwips(frm_->x(), true);
  s.setup.longCurrentY = pixelsToTwips(frm_->y(), false);
  s.setup.lonFrmHeight = pixelsToTwips(frm_->height(), false);
  s.setup.lonFrmWidth = pixelsToTwips(frm_->width(), true);
  s.fctKeyKolvaneExist();
  if (s.setup.longFensterpositionSpeichern == 1) {
    s.fctSetupWertSpeichern(QStringLiteral("longCurrentX"), s.setup.longCurrentX);
    s.fctSetupWertSpeichern(QStringLiteral("longCurrentY"), s.setup.longCurrentY);
  }
  s.fctSetupWertSpeichern(QStringLiteral("lonFrmHeight"), s.setup.lonFrmHeight);
  s.fctSetupWertSpeichern(QStringLiteral("lonFrmWidth"), s.setup.lonFrmWidth);
  s.subSpeichernKolvaneIniDatei();
  bv_->positionSpeichern();
  s.fctSetupWertSpeichern(QStringLiteral("Eintrag1"), s.strAktuelleDatenbank);
  s.fctSetupWertSpeichern(QStringLiteral("strVerzeichnisVorgabe"), s.strVerzeichnisVorgabe);
  s.fctSetupWertSpeichern(QStringLiteral("strAktuelleOrdnerNr"), bv_->strAktuelleOrdnerNr());
  s.fctSetupWertSpeichern(QStringLiteral("longAnzahlDerBilder"), s.setup.longAnzahlDerBilder);
}

bool Programm::Form_Unload() {
  Trace t(QStringLiteral("Form_Unload"));
  if (entladen_) return true;
  // 3. The question, unless the program must end anyway.
  t.step(QStringLiteral("Frage, ob Kolvane geschlossen werden soll"));
  if (!bytBeenden && !fctMsgboxFrageEinzeilig(131)) return false;
  // 4. Marks live only as long as the run.
  t.step(QStringLiteral("Markierte Bloecke aus Db löschen"));
  if (lib_ && lib_->rsMarkierteBloecke.isOpen()) fctAlleEintraegLoeschen(lib_->rsMarkierteBloecke);
  // 5. Positions.
  if (!bytBeenden && bv_) {
    t.step(QStringLiteral("IniDatei speichern"));
    positionenSpeichern();
  }
  // 6. Record sets and connection.
  t.step(QStringLiteral("Rs schließen"));
  if (lib_) lib_->RecordsetsUndVerbindungSchliessen();
  // 7. The run's scratch directory.
  t.step(QStringLiteral("Temp-Verzeichnis löschen"));
  QDir(settings_->strVerzeichnisTempKolvane()).removeRecursively();
  if (start_) start_->close();
  entladen_ = true;
  // 8.
  QTimer::singleShot(0, this, [this] { beenden(0); });
  return true;
}

void Programm::sofortBeenden() {
  // The host went: save and close without a question, then end.
  bytBeenden = false;
  entladen_ = false;
  if (lib_ && lib_->rsMarkierteBloecke.isOpen()) fctAlleEintraegLoeschen(lib_->rsMarkierteBloecke);
  if (bv_ && frm_) positionenSpeichern();
  if (lib_) lib_->RecordsetsUndVerbindungSchliessen();
  QDir(settings_->strVerzeichnisTempKolvane()).removeRecursively();
  entladen_ = true;
  beenden(0);
}

void Programm::startServiceVerbinden() {
  auto start = std::make_unique<StartService>();
  start->strAppPfad = settings_->programDir();
  // Until the main form is up every call waits.
  start->setAblaufLaeuft(true);
  if (!start->listen(startServiceName)) {
    if (startServiceAnfrage({QStringLiteral("fctGetAppPath")}, startServiceName, 1000).art == StartAntwort::Art::Ok)
      return;  // another program serves the name
    // No service (reported): the program runs, unreachable from outside.
  }
  start_ = std::move(start);
  start_->bibliothekPruefen = [](const QString& pfad, QString* grund) {
    QString datei = pfad;
    if (QFileInfo(datei).isDir()) datei = QDir(datei).filePath(dbDateiName());
    return Bibliothek::fctTestDb(datei, grund);
  };
  connect(start_.get(), &StartService::fensterNachVorne, this, [this] {
    if (!frm_) return;
    frm_->show();
    frm_->raise();
    frm_->activateWindow();
  });
  connect(start_.get(), &StartService::aufOrdnerUndSeiteSpringen, this,
          [this](const QString& ordner, const QString& seite) {
            if (!frm_) return;
            frm_->raise();
            bv_->strOrdnerUebergabe = ordner;
            bv_->varSeiteUebergabe = seite;
            bv_->fctAufOrdnerUndSeiteSpringen();
          });
  connect(start_.get(), &StartService::bibliothekWechseln, this,
          [this](const QString& pfad) { bibliothekWechseln(pfad); });
  connect(start_.get(), &StartService::blkSuchenUndDirektEinfuegen, this, [this](const QString& name) {
    if (suche_) suche_->fctBlkSuchenUndDirektEinfuegen(name);
  });
  connect(start_.get(), &StartService::lblockEinfuegen, this, [this] {
    if (einfuegen_) einfuegen_->LBlockEinfuegen();
  });
}

bool Programm::sperreNehmen() {
  // Beside the per-user settings; a lock left by a program that died is taken
  // over (QLockFile asks whether its process still runs). A running program's
  // lock never goes stale, however old.
  const QString dir = settings_->environment().configDir;
  QDir().mkpath(dir);
  sperre_ = std::make_unique<QLockFile>(QDir(dir).filePath(QStringLiteral("Kolvane.lock")));
  sperre_->setStaleLockTime(0);
  if (sperre_->tryLock(0)) return true;
  // A folder that can't hold a lock must not keep the program from starting;
  // the start service still finds a running one.
  return sperre_->error() != QLockFile::LockFailedError;
}

int Programm::anErstenUebergeben() {
  Trace t(QStringLiteral("anErstenUebergeben"));
  // The command line as calls: a library first, then lblock or the plain start.
  QList<QStringList> anfragen;
  if (!kommandozeile.sDbPathUe.isEmpty()) {
    QString pfad = kommandozeile.sDbPathUe;
    if (pfad != QLatin1String("TestDb") && QDir::isRelativePath(pfad)) pfad = QFileInfo(pfad).absoluteFilePath();
    anfragen << QStringList{QStringLiteral("ChangeDb"), pfad};
  }
  if (kommandozeile.lblock)
    anfragen << QStringList{QStringLiteral("LBlockEinfuegen")};
  else if (anfragen.isEmpty())
    anfragen << QStringList{QStringLiteral("StartKolvane")};
  QTextStream err(stderr);
  const QDeadlineTimer frist(qMax(0, uebergabeWartezeitMs));
  qsizetype gesendet = 0;
  for (;;) {
    const int rest = int(qMax<qint64>(1, frist.remainingTime()));
    const StartAntwort r = startServiceAnfrage(anfragen[gesendet], startServiceName, rest);
    switch (r.art) {
      case StartAntwort::Art::Ok:
        if (++gesendet == anfragen.size()) return 0;
        continue;
      case StartAntwort::Art::Fehler:
        err << r.wert << "\n";
        return 3;
      case StartAntwort::Art::KeineAntwort:
        err << QStringLiteral("Kolvane antwortet nicht.") << "\n";
        return 1;
      case StartAntwort::Art::NichtErreicht:
        break;
    }
    // The first went away before it listened: this start is the program.
    if (gesendet == 0 && sperre_ && !sperre_->isLocked() && sperre_->tryLock(0)) return -1;
    if (gesendet > 0 || frist.hasExpired()) {
      err << QStringLiteral("Kolvane wird schon gestartet, ist aber nicht zu erreichen.") << "\n";
      return 1;
    }
    QThread::msleep(100);
  }
}

bool Programm::bibliothekWechseln(const QString& pfad) {
  if (!bv_) return false;
  QString datei = pfad;
  if (QFileInfo(datei).isDir()) datei = QDir(datei).filePath(dbDateiName());
  const bool ok = bv_->comboxVerzeichnis_Click(datei);
  if (ok && suche_) suche_->bibliothekGewechselt();
  // The switch shows the new library's page before it puts the library at the
  // head of the list: shown once more, the library box and the Datei menu name it.
  bv_->Anzeigen();
  return ok;
}

bool Programm::screenshotSchreiben() {
  if (!frm_) return false;
  const bool ok = frm_->grab().save(kommandozeile.screenshot);
  if (!ok) subErrorAllgemein(true, QStringLiteral("screenshotSchreiben"), kommandozeile.screenshot);
  return ok;
}

}  // namespace kolvane

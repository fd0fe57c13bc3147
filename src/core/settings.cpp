#include "settings.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include "codepage.h"
#include "diagnostics.h"
#include "inifile.h"

namespace kolvane {

namespace {

Settings* g_settings = nullptr;

constexpr auto kAllg = "AllgemeineDaten";
constexpr auto kIniName = "Kolvane9.0.ini";
constexpr auto kOldIniName = "KolvaneV8.ini";
constexpr auto kOldRegistryPfad = "Software\\Kolvane\\Version_8";

QString withSeparator(QString p) {
  if (!p.isEmpty() && !p.endsWith('/') && !p.endsWith('\\')) p += '/';
  return p;
}

QString userName() {
  QString u = qEnvironmentVariable("USER");
  if (u.isEmpty()) u = qEnvironmentVariable("USERNAME");
  if (u.isEmpty()) u = QStringLiteral("user");
  return u;
}

}  // namespace

#define N(f) SetupFeld{#f, &SetupWerte::f, nullptr}
#define T(f) SetupFeld{#f, nullptr, &SetupWerte::f}
const QList<SetupFeld>& setupTabelle() {
  static const QList<SetupFeld> tabelle = {
      N(lonOrdnerSortieren), N(longUnbesetzt), N(longEinfuegenLayer0), N(longBlockAusBibliothek),
      N(longUrsprungBeimEinfuegen), N(longXRef), N(longAbfrageXFaktor), N(longAbfrageYFaktor),
      N(longAbfrageZFaktor), N(longAbfrageEinfuegewinkel), N(longAbfrageBlocknameBeimErzeugen),
      N(longAbfrageAttributeBeimEinfuegen), N(longReihe), N(longMehrfacheinfuegen),
      N(longMehrfachAktiv), N(longMehrereEinfuegepkte), N(longVorschaudiaBeimErzeugen),
      N(longMassstabskontrolle), T(strMassstabX), T(strMassstabY), T(strMassstabZ),
      N(longRechteverwaltung), N(longStuecklisteEinfuegen), N(longBlockProgrammfrage),
      N(longVariantenfrage), N(longFensterpositionSpeichern), N(longBruchFrage),
      N(longBruchOption), N(lonPosSeitenWechsel), N(longSlideUeberpruefen), N(longDoppelklick),
      N(longAnzahlDerBilder), N(longUeberschreibenDefMenueGlobal),
      N(longKolvaneAnzeigenNachEinfuegen), N(lonOldView), N(lonLispVarUebergeben),
      T(strAktuellerOrdnerName), T(strAktuelleOrdnerNr), T(strACadVersion),
      T(strVerzeichnisVorgabe), N(longCurrentX), N(longCurrentY), N(lonFrmHeight),
      N(lonFrmWidth)};
  return tabelle;
}
#undef N
#undef T

Environment Environment::fromSystem() {
  Environment e;
  const QString exeDir = QCoreApplication::applicationDirPath();
  e.programDir = exeDir;
  // Installed: the data files lie in <prefix>/share/kolvane, not beside the program.
  if (!QFileInfo::exists(exeDir + "/txtPrefix.txt")) {
    const QString shared = QDir::cleanPath(exeDir + "/../share/kolvane");
    if (QFileInfo::exists(shared + "/txtPrefix.txt")) e.programDir = shared;
  }
  e.configDir = withSeparator(
      QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/Kolvane");
#ifdef Q_OS_WIN
  e.tempRoot = QStringLiteral("c:\\temp\\");
#else
  e.tempRoot = withSeparator(QDir::tempPath() + "/kolvane-" + userName());
#endif
  e.homeDir = QDir::homePath();
  return e;
}

Environment Environment::below(const QString& root) {
  Environment e = fromSystem();
  e.configDir = root + QStringLiteral("/config/");
  e.tempRoot = root + QStringLiteral("/temp/");
  e.homeDir = root;
  e.userStoreFile = root + QStringLiteral("/userstore.ini");
  QDir().mkpath(e.tempRoot);
  return e;
}

Settings::Settings(Environment env) : env_(std::move(env)) {
  store_ = std::make_unique<UserStore>(env_.userStoreFile);
  sCTemp = env_.tempRoot;
  strIniDateiVerzeichnis = QDir(env_.programDir).filePath(kIniName);
  strErrorDatei = sCTemp + "txtErrorKolvane9.0.txt";
}

Settings::~Settings() {
  if (g_settings == this) g_settings = nullptr;
}

Settings* currentSettings() { return g_settings; }
void setCurrentSettings(Settings* s) { g_settings = s; }

QString Settings::labelDir() const { return QDir(env_.programDir).filePath(strBeschriftVerzeichnis); }

void Settings::subPfadeFestlegen() {
  Trace t(QStringLiteral("subPfadeFestlegen"));
  sCTemp = env_.tempRoot;
  strIniDateiVerzeichnis = QDir(env_.programDir).filePath(kIniName);
  if (!QFileInfo::exists(strIniDateiVerzeichnis)) {
    // Not in the program directory: the per-user config folder, which then also
    // holds the temporary root.
    QDir().mkpath(env_.configDir);
    strIniDateiVerzeichnis = env_.configDir + kIniName;
    sCTemp = env_.configDir;
  }
  const QString temp = allg(QStringLiteral("sCTemp"));
  if (!temp.isEmpty()) sCTemp = withSeparator(temp);
  strErrorDatei = sCTemp + "txtErrorKolvane9.0.txt";
  strVersionsDatei = QDir(env_.programDir).filePath("InfoVersion.lis");
  strIconDatei = QDir(env_.programDir).filePath("kolvane.ico");
  strSprache = allg(QStringLiteral("Sprache"));
  bytOhneWithEvent = fctIniByte(strIniDateiVerzeichnis, kAllg, QStringLiteral("bytOhneWithEvent"));
  strVerzeichnisVorgabe = allg(QStringLiteral("VerzeichnisVorgabe"));
  if (strVerzeichnisVorgabe.isEmpty()) strVerzeichnisVorgabe = withSeparator(env_.homeDir + "/Kolvane");
}

QString Settings::allg(const QString& schluessel) const {
  return IniGetValue(strIniDateiVerzeichnis, kAllg, schluessel);
}

bool Settings::fctWertAllgInIniSpeichern(const QString& schluessel, const QString& wert) {
  return IniSetValue(strIniDateiVerzeichnis, kAllg, schluessel, wert);
}

bool Settings::fctLesenKolvaneIniDatei() {
  Trace t(QStringLiteral("fctLesenKolvaneIniDatei"));
  if (!QFileInfo::exists(strIniDateiVerzeichnis)) {
    if (QFileInfo::exists(QDir(env_.programDir).filePath(kOldIniName)))
      subAlteKolvaneIniDateiUmschreiben();
    else
      IniSetValue(strIniDateiVerzeichnis, kAllg, QStringLiteral("DbVerzeichnis0"), QStringLiteral("0"));
  }
  const QString v = allg(QStringLiteral("DbVerzeichnis0"));
  return !v.isEmpty() && v != QLatin1String("0");
}

void Settings::subAlteKolvaneIniDateiUmschreiben() {
  Trace t(QStringLiteral("subAlteKolvaneIniDateiUmschreiben"));
  QFile f(QDir(env_.programDir).filePath(kOldIniName));
  QStringList paths;
  if (f.open(QIODevice::ReadOnly)) {
    const QStringList lines = decodeTextFile(f.readAll()).split('\n');
    bool versions = true;
    for (QString l : lines) {
      l = l.trimmed();
      if (l.isEmpty()) continue;
      // The file starts with its version values (numbers); the paths follow.
      bool isNumber = false;
      l.toDouble(&isNumber);
      if (versions && (isNumber || !l.contains(QRegularExpression("[/\\\\]")))) continue;
      versions = false;
      paths << l;
    }
  }
  if (paths.isEmpty()) paths << QStringLiteral("0");
  for (int i = 0; i < paths.size(); ++i)
    IniSetValue(strIniDateiVerzeichnis, kAllg, "DbVerzeichnis" + QString::number(i), paths[i]);
}

void Settings::subLesenKolvaneIniDatei() {
  Trace t(QStringLiteral("subLesenKolvaneIniDatei"));
  aryVerzeichnisseDatenbank.clear();
  const IniData d = IniData::load(strIniDateiVerzeichnis);
  for (int i = 0;; ++i) {
    const QString v = d.value(kAllg, "DbVerzeichnis" + QString::number(i));
    if (v.isEmpty() || v == QLatin1String("0")) break;
    aryVerzeichnisseDatenbank << v;
  }
  if (aryVerzeichnisseDatenbank.isEmpty()) aryVerzeichnisseDatenbank << QString();
}

void Settings::subSpeichernKolvaneIniDatei() {
  Trace t(QStringLiteral("subSpeichernKolvaneIniDatei"));
  int n = 0;
  for (const QString& p : aryVerzeichnisseDatenbank) {
    if (p.isEmpty()) continue;
    IniSetValue(strIniDateiVerzeichnis, kAllg, "DbVerzeichnis" + QString::number(n++), p);
  }
  if (n == 0) {
    IniSetValue(strIniDateiVerzeichnis, kAllg, QStringLiteral("DbVerzeichnis0"), QStringLiteral("0"));
    n = 1;
  }
  // Keys beyond the list go, so a removed library does not come back.
  for (const QString& key : fctIniSchluessel(strIniDateiVerzeichnis, kAllg)) {
    if (!key.startsWith(QLatin1String("DbVerzeichnis"), Qt::CaseInsensitive)) continue;
    bool ok = false;
    const int i = key.mid(13).toInt(&ok);
    if (ok && i >= n) IniDeleteKey(strIniDateiVerzeichnis, kAllg, key);
  }
}

bool Settings::fctMsgboxNichtMehrAnzeigen(const QString& schluessel) const {
  return IniGetValue(strIniDateiVerzeichnis, QStringLiteral("MsgboxAnzeigen"), schluessel) ==
         QLatin1String("1");
}

void Settings::fctMsgboxNichtMehrAnzeigenSpeichern(const QString& schluessel) {
  IniSetValue(strIniDateiVerzeichnis, QStringLiteral("MsgboxAnzeigen"), schluessel, QStringLiteral("1"));
}

void Settings::subVerzeichnisVorgabeAktualisieren(const QString& pfad, bool bytNurVerzeichnis) {
  QString neu = bytNurVerzeichnis ? withSeparator(pfad) : withSeparator(QFileInfo(pfad).path());
  if (neu == strVerzeichnisVorgabe) return;
  strVerzeichnisVorgabe = neu;
  fctWertAllgInIniSpeichern(QStringLiteral("VerzeichnisVorgabe"), neu);
}

bool Settings::fctKeyKolvaneExist() {
  if (store_->fctRegKeyExist(strRegistryPfad)) return true;
  store_->fctRegKeyAnlegen(strRegistryPfad, QStringLiteral("Anwendungsdaten"));
  store_->fctRegKeyAnlegen(strRegistryPfad + "\\Setup", QStringLiteral("Anwendungsdaten"));
  return false;
}

void Settings::EintraegeAusRegistrierdatenbank() {
  Trace t(QStringLiteral("EintraegeAusRegistrierdatenbank"));
  QVariant v = store_->fctRegLesen(strRegistryPfad, QStringLiteral("Eintrag1"));
  if (!v.isValid()) v = store_->fctRegLesen(kOldRegistryPfad, QStringLiteral("Eintrag1"));
  QString path = v.toString();
  // The store adds no terminator: only trailing NULs are cut.
  while (path.endsWith(QChar(0))) path.chop(1);
  bool known = false;
  for (const QString& p : aryVerzeichnisseDatenbank)
    if (!path.isEmpty() && p.compare(path, Qt::CaseInsensitive) == 0) known = true;
  strAktuelleDatenbank = known ? path : aryVerzeichnisseDatenbank.value(0);
}

void Settings::subSetupStandardZuweisen() {
  const QString vorgabe = setup.strVerzeichnisVorgabe;
  setup = SetupWerte{};
  setup.strVerzeichnisVorgabe =
      vorgabe.isEmpty() ? withSeparator(env_.homeDir + "/Kolvane") : vorgabe;
}

void Settings::SetupEinstellungenEinlesen() {
  Trace t(QStringLiteral("SetupEinstellungenEinlesen"));
  // Every default first; then value by value, a missing or bad one keeps its default.
  subSetupStandardZuweisen();
  const QString key = strRegistryPfad + "\\Setup";
  for (const SetupFeld& f : setupTabelle()) {
    const QVariant v = store_->fctRegLesen(key, QString::fromLatin1(f.name));
    if (!v.isValid()) continue;
    if (f.zahl) {
      bool ok = false;
      const int n = v.toString().trimmed().toInt(&ok);
      if (ok) setup.*f.zahl = n;
    } else {
      setup.*f.text = v.toString();
    }
  }
  if (setup.strVerzeichnisVorgabe.isEmpty())
    setup.strVerzeichnisVorgabe = withSeparator(env_.homeDir + "/Kolvane");
}

void Settings::SetupInRegistrierdatenbankSpeichern() {
  Trace t(QStringLiteral("SetupInRegistrierdatenbankSpeichern"));
  fctKeyKolvaneExist();
  store_->fctRegSchreiben(strRegistryPfad, QStringLiteral("Eintrag1"), strAktuelleDatenbank);
  const QString key = strRegistryPfad + "\\Setup";
  for (const SetupFeld& f : setupTabelle()) {
    if (f.zahl)
      store_->fctRegSchreiben(key, QString::fromLatin1(f.name), QVariant(int(setup.*f.zahl)));
    else
      store_->fctRegSchreiben(key, QString::fromLatin1(f.name), setup.*f.text);
  }
}

bool Settings::fctSetupWertSpeichern(const QString& valueName, const QVariant& value) {
  fctKeyKolvaneExist();
  if (valueName == QLatin1String("Eintrag1"))
    return store_->fctRegSchreiben(strRegistryPfad, valueName, value);
  return store_->fctRegSchreiben(strRegistryPfad + "\\Setup", valueName, value);
}

QString Settings::libraryIni(const QString& libraryDir) {
  return QDir(libraryDir).filePath(QStringLiteral("dbKolvane.ini"));
}

Position Settings::readPosition(const QString& libraryDir) {
  const IniData d = IniData::load(libraryIni(libraryDir));
  Position p;
  p.strAktuelleOrdnerNr = d.value(QStringLiteral("Position"), QStringLiteral("strAktuelleOrdnerNr"));
  p.s1 = d.value(QStringLiteral("Position"), QStringLiteral("s1")).toInt();
  p.pos = d.value(QStringLiteral("Position"), QStringLiteral("Pos")).toInt();
  return p;
}

void Settings::writePosition(const QString& libraryDir, const Position& p) {
  const QString ini = libraryIni(libraryDir);
  IniSetValue(ini, QStringLiteral("Position"), QStringLiteral("strAktuelleOrdnerNr"), p.strAktuelleOrdnerNr);
  IniSetValue(ini, QStringLiteral("Position"), QStringLiteral("s1"), QString::number(p.s1));
  IniSetValue(ini, QStringLiteral("Position"), QStringLiteral("Pos"), QString::number(p.pos));
}

}  // namespace kolvane

#pragma once
#include <QString>
#include <QStringList>
#include <cstdint>
#include <memory>

#include "userstore.h"

namespace kolvane {

// The setup values of the per-user store ("\Setup" below the program's key),
// with their defaults. Truth values are 0 and 1.
struct SetupWerte {
  int32_t lonOrdnerSortieren = 1;
  int32_t longUnbesetzt = 0;
  int32_t longEinfuegenLayer0 = 1;
  int32_t longBlockAusBibliothek = 0;
  int32_t longUrsprungBeimEinfuegen = 0;
  int32_t longXRef = 0;
  int32_t longAbfrageXFaktor = 0;
  int32_t longAbfrageYFaktor = 0;
  int32_t longAbfrageZFaktor = 0;
  int32_t longAbfrageEinfuegewinkel = 0;
  int32_t longAbfrageBlocknameBeimErzeugen = 0;
  int32_t longAbfrageAttributeBeimEinfuegen = 0;
  int32_t longReihe = 0;
  int32_t longMehrfacheinfuegen = 0;
  int32_t longMehrfachAktiv = 0;
  int32_t longMehrereEinfuegepkte = 1;
  int32_t longVorschaudiaBeimErzeugen = 1;
  int32_t longMassstabskontrolle = 0;
  QString strMassstabX = QStringLiteral("1.0");
  QString strMassstabY = QStringLiteral("1.0");
  QString strMassstabZ = QStringLiteral("1.0");
  int32_t longRechteverwaltung = 0;
  int32_t longStuecklisteEinfuegen = 0;
  int32_t longBlockProgrammfrage = 0;
  int32_t longVariantenfrage = 1;
  int32_t longFensterpositionSpeichern = 1;
  int32_t longBruchFrage = 0;
  int32_t longBruchOption = 0;
  int32_t lonPosSeitenWechsel = 0;
  int32_t longSlideUeberpruefen = 0;
  int32_t longDoppelklick = 1;
  int32_t longAnzahlDerBilder = 4;
  int32_t longUeberschreibenDefMenueGlobal = 0;
  int32_t longKolvaneAnzeigenNachEinfuegen = 0;
  int32_t lonOldView = 0;
  int32_t lonLispVarUebergeben = 0;
  QString strAktuellerOrdnerName = QStringLiteral("Standard-Ordner");
  QString strAktuelleOrdnerNr = QStringLiteral("000");
  QString strACadVersion;  // the last CAD version
  QString strVerzeichnisVorgabe;
  int32_t longCurrentX = 500;
  int32_t longCurrentY = 300;
  int32_t lonFrmHeight = 7500;
  int32_t lonFrmWidth = 10470;

  bool operator==(const SetupWerte&) const = default;
};

// One value of the setup table: its name in the store and where it lives.
struct SetupFeld {
  const char* name;
  int32_t SetupWerte::*zahl;   // null for a text value
  QString SetupWerte::*text;   // null for a number
};
// The table in its order; reading and writing walk it.
const QList<SetupFeld>& setupTabelle();

// Where the program finds its files. Tests point every place into a
// temporary directory.
struct Environment {
  QString programDir;    // executable's directory (or the installed data directory)
  QString configDir;     // the "common application data" stand-in: config dir + "/Kolvane/"
  QString tempRoot;      // default sCTemp, with a trailing separator
  QString homeDir;       // for the default directory strVerzeichnisVorgabe
  QString userStoreFile; // "" = the platform's per-user store
  static Environment fromSystem();
  // The program directory as fromSystem finds it, every other place below
  // root: for tools and benchmarks that must not touch the user's settings.
  static Environment below(const QString& root);
};

// The last place of the user in a library (dbKolvane.ini, section "Position").
struct Position {
  QString strAktuelleOrdnerNr;
  int32_t s1 = 0;
  int32_t pos = 0;
};

// The settings of the program: the ini file Kolvane9.0.ini, the per-user store
// and the places derived from them. The rest of the program reads this object.
class Settings {
 public:
  explicit Settings(Environment env);
  ~Settings();

  const Environment& environment() const { return env_; }
  UserStore& store() { return *store_; }

  // --- places (set by subPfadeFestlegen) ---
  QString strIniDateiVerzeichnis;  // full path of Kolvane9.0.ini
  QString sCTemp;                  // temporary root, always with a trailing separator
  QString strErrorDatei;
  QString strBeschriftVerzeichnis = QStringLiteral("txtBeschriftKolvane9.0");
  QString strRegistryPfad = QStringLiteral("Software\\Hesmer Datenwerk\\Kolvane\\9.0");
  QString strVersionsDatei;
  QString strIconDatei;
  QString strSprache;
  QString strExeName = QStringLiteral("kolvane9.0.exe");
  QString strProgrammKurzname = QStringLiteral("kolvane9");
  QStringList aryVersionen = {QStringLiteral("8.5"), QStringLiteral("9.0")};
  uint8_t bytOhneWithEvent = 0;

  // --- libraries ---
  QStringList aryVerzeichnisseDatenbank;
  QString strAktuelleDatenbank;

  // --- setup values ---
  SetupWerte setup;
  QString strVerzeichnisVorgabe;  // default directory of the choosers

  QString programDir() const { return env_.programDir; }
  QString labelDir() const;  // program directory + label folder
  QString strVerzeichnisTempKolvane() const { return sCTemp + QStringLiteral("TempKolvane"); }
  QString version() const { return aryVersionen.last(); }

  // Settings file and temporary root, as the process entry finds them: the ini in
  // the program directory, else in the config folder (sCTemp then moves there
  // too); "sCTemp" of the ini overrides. Also sets the error file and the other
  // fixed places, and reads "Sprache" and "bytOhneWithEvent".
  void subPfadeFestlegen();
  // True when sCTemp holds a blank: slide and script commands to the CAD break
  // at blanks, so such a folder is not accepted.
  bool sCTempHatLeerzeichen() const { return sCTemp.contains(' '); }

  // --- Kolvane9.0.ini ---
  QString allg(const QString& schluessel) const;  // section "AllgemeineDaten"
  bool fctWertAllgInIniSpeichern(const QString& schluessel, const QString& wert);
  bool fctLesenKolvaneIniDatei();
  void subLesenKolvaneIniDatei();
  void subSpeichernKolvaneIniDatei();
  void subAlteKolvaneIniDateiUmschreiben();
  bool fctMsgboxNichtMehrAnzeigen(const QString& schluessel) const;
  void fctMsgboxNichtMehrAnzeigenSpeichern(const QString& schluessel);
  void subVerzeichnisVorgabeAktualisieren(const QString& pfad, bool bytNurVerzeichnis);

  // --- per-user store ---
  // Whether the program's key existed; creates it with "\Setup" when not.
  bool fctKeyKolvaneExist();
  void EintraegeAusRegistrierdatenbank();
  void SetupEinstellungenEinlesen();
  void SetupInRegistrierdatenbankSpeichern();
  void subSetupStandardZuweisen();
  // Writes one setup value (and "Eintrag1" for the current library).
  bool fctSetupWertSpeichern(const QString& valueName, const QVariant& value);

  // --- dbKolvane.ini of a library ---
  static QString libraryIni(const QString& libraryDir);
  static Position readPosition(const QString& libraryDir);
  static void writePosition(const QString& libraryDir, const Position& p);

 private:
  Environment env_;
  std::unique_ptr<UserStore> store_;
};

// The settings in force. Tests install their own.
Settings* currentSettings();
void setCurrentSettings(Settings* s);

}  // namespace kolvane

#pragma once
#include <QList>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>

#include "connection.h"
#include "recordset.h"

namespace kolvane {

class Settings;

// A line of the Datei menu's list of libraries.
struct MenueEintrag {
  QString pfad;     // the full path of dbKolvane.mdb
  QString anzeige;  // what the menu shows (shortened)
};

// What the combo of libraries shows.
struct ComboVerzeichnisse {
  QStringList eintraege;
  int auswahl = -1;  // index of the current library, -1 when it is not listed
};

// The library in use: the list of known libraries (in the settings), the open
// connection connDb and the long-lived record sets of the current library, and
// the routines that open, check, create, add and migrate libraries. The main
// window owns one; what it shows (combo, Datei menu, disabled commands) comes
// back as data.
class Bibliothek {
 public:
  explicit Bibliothek(Settings& settings);
  ~Bibliothek();
  Bibliothek(const Bibliothek&) = delete;
  Bibliothek& operator=(const Bibliothek&) = delete;

  // Work the store hands back to the main window. Unset hooks do nothing.
  struct Hooks {
    // The working window of a long correction, with its two lines; and its end.
    std::function<void(const QString&, const QString&)> arbeitsfensterZeigen;
    std::function<void()> arbeitsfensterSchliessen;
    // Empties lisBlockBenennung.
    std::function<void()> lisBlockBenennungLeeren;
    // "Ordner aktualisieren": the folder combo and page after a new library.
    std::function<void()> ordnerAktualisieren;
    // cmbDatenbankNeu_Click of frmErweitertesSetup, when the last library was
    // removed and the user wants a new one. True when one was made and opened.
    std::function<bool()> cmbDatenbankNeu;
    // The import of an old-format library lying in the directory. True when the
    // library then exists.
    std::function<bool(const QString& verzeichnis)> datenbankImportieren;
  } hooks;

  Settings& settings() { return settings_; }

  // --- state of the open library ---
  Connection connDb;
  Recordset rsOrdner;
  Recordset rsSeiten;
  Recordset rsBlockInfo0;
  Recordset rsDefMenue;
  Recordset rsMarkierteBloecke;
  Recordset rsVariaBloecke;
  QString strAktuelleOrdnerNr;
  QString strAktuellerOrdnerName;
  int32_t lngAktuelleOrdnerID = 0;  // Nr of the current folder's row
  QString VerzeichnisOhneDb;        // the library directory, with trailing separator
  bool booSchreibgeschuetzt = false;
  uint8_t bytRsMarkierteBloeckeOkGleich1 = 0;
  bool bytBeenden = false;  // the process is to end (the user declined a new library)

  // Opens strAktuelleDatenbank with its record sets; a missing file brings the
  // question Search / New / Cancel (and before it the old-format question when
  // "Bver2.dbf" lies there). Migrates older libraries (NrTblOrdnen, default
  // block names). The current folder is the one of dbKolvane.ini ("Position"),
  // else the first. False when no library could be opened.
  bool ConnectionUndRecordsetOeffnen();
  // Closes record sets and connection in the order of the shutdown.
  void RecordsetsUndVerbindungSchliessen();

  // The record sets of the current library, as the queries say.
  bool subRsOrdnerOeffnen();
  bool subRsBlockInfo0Oeffnen(int32_t ordnerID);
  bool subRsSeitenOeffnen(int32_t ordnerID);
  bool subRsTblMarkierteBloeckeOeffnen();
  bool fctRsVariaBloeckeEinlesen(int32_t blockNr);
  // Makes the folder with this OrdnerNr current (rsBlockInfo0, rsSeiten follow).
  bool fctOrdnerWechseln(const QString& ordnerNr);

  // Test open of a library on a private connection; nothing stays open. grund
  // receives what failed.
  static bool fctTestDb(const QString& pfad, QString* grund = nullptr);
  // Every block's slide file and view-0 drawing exist; an empty table is true.
  bool fctDbPruefen();
  // 1: a working library in verzeichnis (it becomes strAktuelleDatenbank);
  // 2: none, but "Bver2.dbf" lies there; 0: neither.
  uint8_t fctNachBestehenderDbSuchen1Neu2Alt0Keine(const QString& verzeichnis);
  // False when the path is already in the list (compared without case).
  bool fctDbVerzeichnisAufEinmaligkeitPruefen(const QString& pfad) const;
  // Makes a new library at pfad (never over an existing file), adds it to the
  // list and opens it.
  bool NeueDatenbankErstellen(const QString& pfad);
  // Adds an existing library and opens it; a failing one leaves the list and
  // the open library as they were.
  bool NeueDatenbankEinfuegen(const QString& pfad);
  ComboVerzeichnisse subComboVerzeichnisseNeuEinlesen() const;
  // Replaces alt by neu in the list; neu empty removes alt.
  void subVerzeichnisAusArrayAendern(const QString& alt, const QString& neu);
  // The Datei menu: pfad first, then the list in order; at most 6.
  QList<MenueEintrag> fctDbsInMenueDateiEintragen(const QString& pfad) const;
  // The list itself: pfad to the top, the others after it, at most 6 (a
  // library beyond that is dropped).
  void fctDbsInAryNeuSortieren(const QString& pfad);
  // Absolute SlideLib entries become relative ("000\name.slb").
  bool fctPfadEintragAendern();
  // Whether the first block row's SlideLib starts with its folder's
  // "OrdnerNr\" (the check before fctPfadEintragAendern).
  bool fctSlideLibPfadeRelativ();

  // --- commands as the main window applies them ---
  static const QStringList& befehleBeiSchreibschutz();
  // The commands to disable now: empty for a writable library.
  QStringList fctSperrenCmdBeiSchreibschutz() const;
  static const QStringList& befehlsflaeche();
  // bytSperren 1 disables, 0 enables the whole command surface; returns it.
  static QStringList subCmdSperrenEntsperren(uint8_t bytSperren);

  // The label numbers of the store's questions.
  static constexpr int kLabelDbFehlt1 = 229, kLabelDbFehlt2 = 230, kLabelDbFehlt3 = 231;
  static constexpr int kLabelDbSchonInListe1 = 197, kLabelDbSchonInListe2 = 198;
  static constexpr int kLabelDbUngueltig1 = 220, kLabelDbUngueltig2 = 221;
  static constexpr int kLabelKeineDbMehr = 222;
  // Boxes that carry no number of their own get numbers from 900 on.
  static constexpr int kLabelAltesFormat1 = 901, kLabelAltesFormat2 = 902;
  static constexpr int kLabelAltesFormatFrage1 = 903, kLabelAltesFormatFrage2 = 904;
  static constexpr int kLabelEinfuegenFehler1 = 905, kLabelEinfuegenFehler2 = 906;
  static constexpr int kLabelEinfuegenHinweis1 = 907, kLabelEinfuegenHinweis2 = 908;

 private:
  enum class Fehlt { Weiter, Abbruch };
  Fehlt subDatenbankFehlt();
  bool fctBlockNamenErgaenzen();
  bool gleicherPfad(const QString& a, const QString& b) const;

  Settings& settings_;
};

}  // namespace kolvane

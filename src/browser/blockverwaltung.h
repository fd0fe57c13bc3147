#pragma once
#include <QColor>
#include <QHash>
#include <QPoint>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <vector>

#include "bibliothek.h"
#include "grid.h"
#include "pagemodel.h"

namespace kolvane {

class Settings;

// One slot of the folder, from slot 0 to the last slot of the current page.
struct TBlock {
  QString Block;      // the slot's code
  QString Benennung;  // M0 of the block, or "*****Frei*****"
  QString BlkName0;
};

// A folder of the combo, in the order of rsOrdner.
struct TOrdner {
  QString OrdnerName;
  QString OrdnerNr;  // three characters
};

// A named page of the current folder.
struct TSeite {
  QString SeitenName;
  int16_t SeitenNr = 0;
};

// The browser: which library, folder, page and picture the main form stands
// on, the slot arrays of the folder, and the routines that move over them. The
// window only draws the page model that Anzeigen computes and forwards the
// user's clicks here.
class Blockverwaltung {
 public:
  static inline const QString kFrei = QStringLiteral("*****Frei*****");

  Blockverwaltung(Settings& settings, Bibliothek& bibliothek);

  // Work the browser hands to the window and to other subsystems. Unset hooks
  // do nothing (or answer "no").
  struct Hooks {
    // Whether the active block has variants (the variant list of its view).
    std::function<bool(const QString& datDatei)> fctVariaEinfuegenKontroll;
    // The insert of the active block (double click with longDoppelklick 1).
    std::function<void()> cmbEinfuegen;
    // The full view, modal (double click with longDoppelklick 3).
    std::function<void()> vollbildZeigen;
    // The context menu mnuBearbeiten at the cursor.
    std::function<void()> kontextmenue;
    // The name dialog frmBlocknameAendern for the page; returns the new name,
    // "" for cancel.
    std::function<QString(const QString& alterName)> seitennameAendern;
    // Saves a page name (the pages subsystem); false shows message 235.
    std::function<bool(int seitenNr, const QString& name)> fctSeiteAendern;
    // The page model changed: redraw.
    std::function<void(const PageModel&)> anzeigen;
  } hooks;

  // --- state (names as the rest of the program knows them) ---
  int16_t s1 = 0;                 // current page, zero-based
  int32_t pos = 0;                // active picture on the page
  int32_t intBilder = 20;         // pictures per page
  int32_t intBilder2 = 0;         // slots of the last slot walk
  QString aktivierteBlocknummer;  // code of the active slot
  int16_t intAktuellerOrdner = 0; // Nr of the current folder's row
  uint8_t byteGeheZuVonSuchergebnis = 0;
  uint8_t bytCboSeiteGesperrt = 0;
  uint8_t byteAnsichtVorhanden = 0;
  bool markierenAn = false;       // marking boxes shown (block marking)
  QString strACadVersion;         // "AutoCAD LT" selects the keystroke route
  QString strLayer, strLinientyp, strLayerFarbe;  // of the active block
  QString strDatDateiBlockvaria;
  std::vector<TOrdner> tordnerOrdner;
  QStringList aryPrefix;
  QStringList aryPrefix2;
  std::vector<TBlock> aryTBloecke;
  std::vector<TSeite> arySeiten;
  QStringList lisBlockBenennung;
  // Search results hand over the page (one-based) and position here.
  int suchergebnisSeite = 1;
  int suchergebnisPos = 0;
  // A start request's target (StartKolvane2).
  QString strOrdnerUebergabe;
  QString varSeiteUebergabe;

  const QString& strAktuelleOrdnerNr() const { return lib_.strAktuelleOrdnerNr; }
  const QString& strAktuellerOrdnerName() const { return lib_.strAktuellerOrdnerName; }
  QString strSlideSpeicherInSlbOderSld() const;
  bool istLT() const { return strACadVersion == QLatin1String("AutoCAD LT"); }
  GridSize grid() const { return grid_; }
  const PageModel& model() const { return model_; }
  Bibliothek& bibliothek() { return lib_; }

  // --- the grid ---
  // Takes longAnzahlDerBilder; an unknown value gives 20 and the setting 4.
  void subBilderanzahlFestlegen();

  // --- slots ---
  bool fctPrefixEinlesen(int32_t obergrenze);
  void BlocknummernEinlesen(int32_t i);
  void ArrayTBloeckeNeuEinlesenBeiOrdnerwechsel(const QString& ordnerNr);
  // The walk all navigation routes share: codes from slot 0, the page's slots
  // read, Anzeigen.
  void subSeitenwechselSequenz();

  // --- folders and pages ---
  void comboxOrdner_Click(const QString& text);
  void OrdnerInArrayEinlesen();
  bool fctCboOrdnerNeuAnzeigen(const QString& ordnerName, bool bytOhneSortierung);
  bool subRsSeitenNeuEinlesen();
  void fctSeiteInCboEinlesen();
  bool fctSeiteNrErmitteln(const QString& name, int16_t& nr);
  QString fctBezeichnungsFeldAuslesen();
  void combutVor_Click();
  void combutZurueck_Click();
  void combutZurueckAnfang_Click();
  void combutEnde_Click();
  void GeheZuSeite(int seite, int32_t position, const QString& ordnerNr);
  bool fctAufOrdnerUndSeiteSpringen();
  void subSeiteNeuAnzeigen();
  void BilderAnzeigenBeiGeaenderterBilderanzahl();
  // The page combos.
  void cboSeite_Click(const QString& text);
  void cboSeite_Return(const QString& text);
  // Return in dcboSeite; returns the text the box shows afterwards.
  QString dcboSeite_Return(const QString& text);
  void seitennameDialog();  // double click on cboSeite, click on labSeitenNummer
  // Names the page nr (one-based) of the current folder: its row gets the
  // name, or a new row is made; a name another page has is asked about.
  bool fctSeiteAendern(int nr, const QString& name);
  // frmBlocknameAendern for a page: the name typed, "" when cancelled. A name
  // with an apostrophe is refused and the text stays for correction.
  QString frmBlocknameAendern(const QString& alterName);

  // --- the library ---
  // The library switch of comboxVerzeichnis; false leaves the old one open.
  bool comboxVerzeichnis_Click(const QString& pfad);
  // Opens the current library and stands on its saved position (start-up).
  bool bibliothekOeffnen();
  void positionSpeichern();

  // --- display ---
  void Anzeigen();
  void lisBlockBenennungAktualisieren(const QString& name);
  void lisBlockBenennung_Click(int index);
  void Command1_Click(int index);

  // --- mouse on a thumbnail ---
  void sldBlockverwaltung_LButtonDown(int index, const QPoint& cursor);
  void sldBlockverwaltung_DblClick(int index);
  void sldBlockverwaltung_RButtonDown(int index);
  // One tick of view cycling while the left button is held: shows the next
  // view's slide in the active picture. False when cycling has ended (the
  // caller stops the timer).
  bool Timer2_Timer(bool linkeTasteGedrueckt, const QPoint& cursor);
  // The address shown in the active picture by cycling ("" when none).
  QString cyclingSlide() const { return cyclingSlide_; }

  // Paths of the library.
  QString bibliotheksVerzeichnis() const { return lib_.VerzeichnisOhneDb; }
  QString frei2() const;
  // The back colour of the slides from the settings (sBkColor).
  QColor slideHintergrund() const;
  QString slideAdresse(const QString& slideLib, const QString& slideName = QStringLiteral("0A")) const;
  // Why the slide at an address can't be shown (missing, or damaged and
  // unreadable), with the address; "" when it can.
  QString slideFehler(const QString& adresse) const;

 private:
  bool istVorDerSeite(int32_t i) const;
  bool slideDateiFehlt(const QString& slideLib) const;
  bool zeileLoeschenAufSicht(const QString& slideLib);
  void seiteninfoSetzen();

  Settings& settings_;
  Bibliothek& lib_;
  GridSize grid_;
  PageModel model_;
  std::vector<QString> slotSlides_;   // per picture of the page
  std::vector<bool> slotMarked_;
  QHash<QString, QString> slideFehlerDerSeite_;  // slideFehler by address, for the page shown
  bool bytBlocknummernEingelesen_ = false;
  mutable QString frei2_;
  QColor slideBack_;
  bool slideBackGelesen_ = false;
  // View cycling (Timer2).
  QPoint timer2Start_;
  int timer2Schritt_ = 0;
  bool timer2ErsterLauf_ = false;
  std::vector<uint8_t> timer2Ansichten_;  // the views of the held block, 0 first
  QString cyclingSlide_;
};

}  // namespace kolvane

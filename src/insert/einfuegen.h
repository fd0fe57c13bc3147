#pragma once
#include <QString>
#include <cstdint>
#include <functional>

#include "einfuegeoptionen.h"
#include "einfuegepunktwahl.h"
#include "einfuegewerte.h"
#include "letzterblock.h"
#include "recordset.h"

namespace kolvane {

class Bibliothek;
class Blockverwaltung;
class CadBridge;
class Settings;

// What the variant chooser of an insert returns.
struct VarianteWahl {
  enum class Ergebnis { Keine, Gewaehlt, Abgebrochen };
  Ergebnis ergebnis = Ergebnis::Keine;
  QString strVariaPfad;     // the variant's drawing
  QString strVariaBlkName;  // its name
};

// The insert command: one routine behind every way a block comes into the
// drawing (button, menu, double click, drop, search result, the host's lblock
// command, the marked list). It settles the drawing, name, view and point,
// then sends the series on the automation route, the typed Lisp call, or the
// keystroke route's script.
class Einfuegen {
 public:
  Einfuegen(Settings& settings, Blockverwaltung& browser, CadBridge& bridge);
  ~Einfuegen();
  Einfuegen(const Einfuegen&) = delete;
  Einfuegen& operator=(const Einfuegen&) = delete;

  struct Hooks {
    // Whether the block's view has a variant list (the variants' check).
    // Unset: no block has variants.
    std::function<bool(const QString& datDatei)> fctVariaEinfuegenKontroll;
    // The variant chooser frmVariaEinfuegen for that list.
    std::function<VarianteWahl(const QString& datDatei)> frmVariaEinfuegen;
    // Shows (true) or hides (false) the main form.
    std::function<void(bool sichtbar)> hauptform;
    // An insert starts (true) and has ended (false): work that arrives
    // meanwhile waits.
    std::function<void(bool laeuft)> ablauf;
  } hooks;

  // --- the options of fraOptionen ---
  EinfuegeOptionen optionen;
  // --- view and point (its board is shown through wahl.boardZeigen) ---
  Einfuegepunktwahl wahl;
  // --- the record of the last insert, for lblock ---
  LetzterBlock letzterBlock;

  // --- the ways in: set before cmbEinfuegen_Click, cleared by it ---
  uint8_t bytLBlockAusfuehren = 0;
  uint8_t bytEinfuegenViaDragAndDrop = 0;
  int16_t NummerEinfuegepktDrop = 0;              // the point a drop carries; 0 none
  uint8_t byteEinfuegenUeberDatenbankSuche = 0;   // the search made its hit current

  // --- the variables of a run ---
  QString aktivierteBlocknummer;
  QString strBlockName;
  QString SpeicherortDerBlockzeichnung;
  uint8_t bytMarkierteAnsicht = 0;
  int16_t NummerEinfuegepkt = 0;
  uint8_t bytVariaBlockEinfuegen = 0;
  uint8_t bytAbbrechen = 0;                 // the host went: the program ends
  QString strLayer, strLinientyp, strLayerFarbe;
  EinfuegeWerte werte;                      // what the last block sent

  // The insert of the active block (or of the marked list).
  void cmbEinfuegen_Click();
  // The host's lblock: the last block again.
  void LBlockEinfuegen();
  // A drop of the active block's drawing on the host, with the point it carries.
  void dropEinfuegen(int16_t nummerEinfuegepkt = 0);
  bool laeuft() const { return laeuft_; }

  // BlkName<view> of the block's row; "" when the row or the name is missing.
  QString fctBlockNameAuslesen(uint8_t bytAnsicht);

 private:
  enum class Weiter { Ja, Ende, MarkierteZuEnde, HostWeg };
  Weiter einBlock(bool& markiert, bool& ersterDurchlauf);
  Weiter markierteZeileLesen(bool& markiert, bool& ersterDurchlauf);
  bool blockZeileLesen();
  void aufAutomationsroute(Weiter& w);
  uint8_t ansichtBestimmen() const;
  void letztenBlockSpeichern(const QString& datei, uint8_t ansicht);
  void schluss();

  Settings& settings_;
  Blockverwaltung& bv_;
  Bibliothek& lib_;
  CadBridge& b_;
  Recordset rsBlockZeile_;   // the row of the block being inserted
  bool laeuft_ = false;
};

}  // namespace kolvane

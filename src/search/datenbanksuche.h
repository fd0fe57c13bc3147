#pragma once
#include <QString>
#include <array>
#include <cstdint>
#include <functional>

#include "recordset.h"
#include "suchkriterium.h"

namespace kolvane {

class Blockverwaltung;
struct SuchdateiInhalt;

// The logic of frmDatenbankSuche: up to eleven search texts become one
// statement over the library's blocks; the hits stay in rsDatenbankSuche for
// the result grid, or a single hit is inserted at once. A set of search texts
// can be stored in a ".str" file.
class DatenbankSuche {
 public:
  explicit DatenbankSuche(Blockverwaltung& bv) : bv_(bv) {}

  struct Hooks {
    // Inserts a hit (its code and the view to preset).
    std::function<void(const QString& block, uint8_t ansicht)> einfuegen;
    // The main form to the front.
    std::function<void()> hauptformNachVorne;
    // Opens the result grid over rsDatenbankSuche.
    std::function<void()> suchergebnisAnzeigen;
    // Hides the dialog (the hits stay).
    std::function<void()> schliessen;
  } hooks;

  Suchkriterien k;
  std::array<QString, Suchkriterien::kFelder> labBenennung;  // captions of the boxes
  Recordset rsDatenbankSuche;
  QString strBlkNameGesucht;  // the block name of the last search with hits

  // The captions of the current folder's card definition.
  void Form_Load();
  // The search. False when it found nothing or couldn't run (reported).
  bool cmbSuchen_Click();
  void cmbLeer_Click() { k.txtBenennung.fill(QString()); }
  // The ".str" file: chooser, then write or read. False when cancelled or refused.
  bool cmbSpeichern_Click();
  bool cmbLaden_Click();
  bool inDateiSpeichern(const QString& datei);
  bool ausDateiLaden(const QString& datei);
  // Another library: the hits of the old one are gone.
  void bibliothekGewechselt();

  // Where ".str" files are proposed.
  QString suchdateiVerzeichnis() const;

 private:
  void dateiMeldung(int nr, const QString& datei, const QString& grund = QString());
  Blockverwaltung& bv_;
};

// The view whose name (BlkName0 to BlkName4, compared without regard to case)
// the current row of a search's hits has; 0 when no view has it.
uint8_t fctBytAktAnsichtUeberBlkName(const Recordset& rs, const QString& name);

}  // namespace kolvane

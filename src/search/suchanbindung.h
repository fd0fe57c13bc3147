#pragma once
#include <QString>
#include <memory>

namespace kolvane {

class Blockverwaltung;
class DatenbankSuche;
class Einfuegen;
class FrmBlockverwaltung;
class FrmDatenbankSuche;
class FrmSuchergebnis;
class Suchergebnis;

// The search as the main form reaches it: mnuESuche opens the search dialog,
// its hits open the result grid, a hit is inserted through the insert command,
// mnuESeiteSuchen opens the page dialog, and the host's block search comes in
// through fctBlkSuchenUndDirektEinfuegen. The dialog keeps its texts for as
// long as the program runs.
class SucheAnbindung {
 public:
  SucheAnbindung(FrmBlockverwaltung& frm, Blockverwaltung& bv, Einfuegen& ins);
  ~SucheAnbindung();
  SucheAnbindung(const SucheAnbindung&) = delete;
  SucheAnbindung& operator=(const SucheAnbindung&) = delete;

  // A search by block name from outside: the name goes into the name box and
  // the search runs (a single hit is inserted at once when the dialog says
  // so). Nothing while the main form loads or for an empty name.
  bool fctBlkSuchenUndDirektEinfuegen(const QString& name);
  // Another library is open: hits and results of the old one go.
  void bibliothekGewechselt();
  bool bytLaedtNoch = false;

  DatenbankSuche& suche() { return *suche_; }
  Suchergebnis* suchergebnis() { return ergebnis_.get(); }

  // mnuESuche: the dialog, with the captions of the current folder.
  void suchdialogZeigen();
  // The result grid over the hits of the last search.
  void subSuchergebnisAnzeigen();
  // Both search forms go.
  void schliessen();
  // mnuESeiteSuchen: frmSeitenSuche over the current folder.
  void seitenSucheZeigen();

 private:
  void ergebnisSchliessen();
  FrmBlockverwaltung& frm_;
  Blockverwaltung& bv_;
  Einfuegen& ins_;
  std::unique_ptr<DatenbankSuche> suche_;
  std::unique_ptr<FrmDatenbankSuche> dialog_;
  std::unique_ptr<Suchergebnis> ergebnis_;
  std::unique_ptr<FrmSuchergebnis> ergebnisFenster_;
};

}  // namespace kolvane

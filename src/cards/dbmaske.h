#pragma once
#include <QString>
#include <array>

namespace kolvane {

class Blockverwaltung;

// The logic of frmDbMaske: the data card of the active block, its changes
// written straight to the block's row, and a walk through the blocks with the
// main form's movement.
class DbMaske {
 public:
  explicit DbMaske(Blockverwaltung& bv) : bv_(bv) {}

  std::array<QString, 10> labBenennung;
  std::array<QString, 10> txtBenennung;
  QString txtLayer, txtLinie, txtFarbe;
  QString labBlockName, labSeitenNummer;
  QString slideAdresse;
  bool zeile = false;             // the active slot holds a block
  bool schreibgeschuetzt = false; // the library can't be written: nothing can be saved
  bool layerFragen = true;        // the host can be asked about layers (not the keystroke route)

  // Captions, values and picture of the active block.
  void Anzeigen();
  // M0 to M9; layer, line type and colour only when a layer is given, so an
  // empty box keeps the stored layer. The main form's list follows M0.
  bool combutSpeichern_Click();
  void cmbLeer_Click() { txtBenennung.fill(QString()); }
  // The defaults of a card definition file into the boxes (saved only with
  // combutSpeichern_Click).
  bool combutDatei_Click();
  // The main form's picture forward and back (across page ends), then the card.
  void combutVor_Click();
  void combutZurueck_Click();

 private:
  Blockverwaltung& bv_;
};

}  // namespace kolvane

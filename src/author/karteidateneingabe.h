#pragma once
#include <QString>
#include <array>

namespace kolvane {

class Bibliothek;
class CadBridge;

// The logic of frmKarteiDateneingabe, the data card of a new block: the
// folder's captions and defaults, the ten values, layer, line type and colour.
class Karteidateneingabe {
 public:
  explicit Karteidateneingabe(Bibliothek& lib) : lib_(lib) {}

  std::array<QString, 10> labBenennung;  // captions
  std::array<QString, 10> txtBenennung;  // values
  QString txtLayer, txtLinie, txtFarbe;
  QString labBlockName;    // the name, or the "neu" text
  QString labAnzeigePfad;  // the preview slide
  QString labSeitenNummer;

  // Captions from the folder's definition (an empty reference means row 1),
  // the defaults as values, the layer boxes from the new block.
  void Form_Load(const QString& blockName, const QString& slidePfad, int seite,
                 const QString& layer, const QString& linie, const QString& farbe);
  // Cancel asks first; true when the user confirmed it.
  bool combutAbbrechen_Click();
  // The layers of the host's drawing to choose from: the chosen one with its
  // line type and colour. False when nothing changed (no host, no layer
  // list, or the user cancelled).
  bool combutLayerListe_Click();
  Bibliothek& bibliothek() { return lib_; }
  // The host to ask about layers; null on the keystroke route, which can't.
  CadBridge* bridge = nullptr;

 private:
  Bibliothek& lib_;
};

}  // namespace kolvane

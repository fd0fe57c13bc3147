#pragma once
#include <QString>
#include <array>

namespace kolvane {

class Bibliothek;

// The data card definition in force for the current folder: its row of
// tblDefMenue (an empty reference means row 1, the global one; a reference
// that finds no row falls back to the first row).
struct KartenDefinition {
  std::array<QString, 10> benennung;    // names of M0 to M9
  std::array<QString, 10> standardwert; // their defaults
};
bool fctKartenDefinitionLesen(Bibliothek& lib, KartenDefinition& d);

// Where card definition files are proposed: the user's settings directory.
QString fctKartenDateiVerzeichnis(Bibliothek& lib);

// The defaults of a card definition file (".dat") as the values of a card:
// the chooser, then the file; a file that can't be read, is empty, damaged or
// too long is refused with a message and the values stay. False then, and
// when the chooser was cancelled.
bool fctKartenwerteAusDateiLaden(Bibliothek& lib, std::array<QString, 10>& werte);

// The caption of field i as the card forms show it: a free or empty first
// field is called by label 164.
QString fctKartenBeschriftung(const KartenDefinition& d, int i);

}  // namespace kolvane

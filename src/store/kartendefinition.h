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

// The caption of field i as the card forms show it: a free or empty first
// field is called by label 164.
QString fctKartenBeschriftung(const KartenDefinition& d, int i);

}  // namespace kolvane

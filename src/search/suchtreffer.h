#pragma once
#include <QString>
#include <cstdint>

namespace kolvane {

class Blockverwaltung;
class Einfuegen;

// Inserts a hit of the search, wherever it lies: for the insert the browser's
// folder and active block become the hit's (its folder is the first three
// characters of the code), `ansicht` is the view preset as if picked in the
// views dialog, and afterwards the browser's own folder and block return and
// its page is shown again. The browser's page doesn't move.
void fctSuchtrefferEinfuegen(Blockverwaltung& bv, Einfuegen& ins, const QString& block, uint8_t ansicht);

}  // namespace kolvane

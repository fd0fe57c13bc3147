#pragma once
#include <cstdint>

namespace kolvane {

class Blockverwaltung;
class CadBridge;

// Opens the drawing of view `ansicht` of the active block in the host, for the
// user to change and save under its name. A missing drawing, or one the host
// has open already, is said instead. False when nothing was opened.
bool EditKolvaneDwgFile(Blockverwaltung& bv, CadBridge& b, uint8_t ansicht);

}  // namespace kolvane

#pragma once
#include <QString>
#include <cstdint>

namespace kolvane {

// The record of the last insert, which the host's lblock command inserts
// again: everything the insert needs without the page.
struct LetzterBlock {
  bool vorhanden = false;
  QString strBlockName;                  // the stored name, before the name rules
  QString aktivierteBlocknummer;         // position code
  QString SpeicherOrtSlideLibFuerBlockEinfuegen;
  QString SpeicherortDerBlockzeichnung;  // the library's drawing, not the temporary copy
  uint8_t ansicht = 0;
  int16_t NummerEinfuegepkt = 0;
  QString strLayer, strLinientyp, strLayerFarbe;
};

}  // namespace kolvane

#pragma once
#include <QString>
#include <cstdint>

namespace kolvane {

class CadBridge;
struct EinfuegeOptionen;

// What the keystroke route gets from the insert.
struct LtEinfuegen {
  bool bytVariaBlockEinfuegen = false;
  int16_t NummerEinfuegepkt = 0;
  QString bibliothek;                    // library directory
  QString ordnerNr;                      // the page's directory
  QString aktivierteBlocknummer;
  QString strBlockName;
  QString SpeicherortDerBlockzeichnung;  // in: a variant's drawing; out: the library's drawing
  QString strVerzeichnisTempKolvane;
  QString strLayer;
  int32_t longXRef = 0;
};

enum class LtErgebnis { Eingefuegt, Fehler, HostWeg };

// ACadLtBlockEinfuegen: the drawing and name, the script, then the keys. The
// view comes from frmAnsichten (byteAktivierteAnsicht, cleared at the end)
// into bytMarkierteAnsicht. HostWeg: the host's window could not be
// activated, the box was shown and the program is ending.
LtErgebnis ACadLtBlockEinfuegen(CadBridge& b, const EinfuegeOptionen& o, LtEinfuegen& e,
                                uint8_t& bytMarkierteAnsicht, uint8_t& byteAktivierteAnsicht);

}  // namespace kolvane

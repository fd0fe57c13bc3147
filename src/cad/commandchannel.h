#pragma once
#include <QString>
#include <array>
#include <cstdint>
#include <optional>

namespace kolvane {

class CadBridge;

// The two carriers to the host (command strings on the automation route,
// keystrokes into its window on both routes), the waits, the cancel and the
// number form of everything sent.

// Head of a series: activate the host's window and take its active document.
// When that fails the host has gone: the box of messages 67, 68 and 3, and the
// program ends (false).
bool ACAD_aktivieren(CadBridge& b);

// The string to the host's command line as typed. False when the host refused
// it (busy in a modal state); the host's text goes to *fehler and is cleared.
bool SendCommand(CadBridge& b, const QString& strBefehl, QString* fehler = nullptr);

// Types into the foreground window with the SendKeys grammar.
bool SendKeys(CadBridge& b, const QString& strTasten, bool wait = true);

// A path or name typed by keys: the characters with a meaning of their own to
// SendKeys (+ ^ % ~ ( ) { } [ ]) go in braces.
QString sendKeysEscape(const QString& text);

// Blocks the whole program (Sleep).
void subPause(CadBridge& b, int intMillisekunden);
// Keeps messages flowing until the interval has passed.
void subPause2(int intMillisekunden);
// One pass of the message loop, for the polling loops.
void DoEvents();

// A command that holds a `pause` for the user: bytAcadArbeitet 2 and the guard
// timer on, send, read Escape to drop its old state, then serve events until
// the end of the command or of the Lisp run is reported; guard off; Escape read
// twice, and Unterbrechung = 1 when either reading is set. False when the send
// failed (nothing is waited for then).
bool SendCommandUndWarten(CadBridge& b, const QString& strBefehl, QString* fehler = nullptr);
// Serves events while bytAcadArbeitet is 2 (and, with bisUnterbrechung, while
// Unterbrechung is not 1).
void subWartenAufAcad(CadBridge& b, bool bisUnterbrechung = false);

// Escape polling around a pick: the first read drops the key's old state.
void subEscapeVerwerfen(CadBridge& b);
// True when Escape was pressed since the last read (two reads); sets
// Unterbrechung then.
bool fctEscapeGedrueckt(CadBridge& b);

// A number asked on the host's command line; nullopt when the user broke off.
std::optional<double> AbfrageGetReal(CadBridge& b, const QString& strPrompt);

// Numbers for the host: C locale, the shortest text that reads back to the
// same value within 15 significant digits, never a comma, never an exponent.
QString fctZahlFuerAcad(double wert);
// The three coordinates of a point as the host gets them.
void KommaPunktErsetzen(const std::array<double, 3>& dbl, std::array<QString, 3>& str);
// A number that already stands as text (a stored scale "1,5"): the comma goes.
QString KommaPunktErsetzen(const QString& text);

// The host variables an insert saves, forces and restores: "filedia",
// "attreq", "orthomode", "CMDECHO". A saved set that was not restored by hand
// is restored when the object goes, so every exit of an insert restores.
class EinfuegeVariablen {
 public:
  explicit EinfuegeVariablen(CadBridge& b) : b_(b) {}
  ~EinfuegeVariablen();
  EinfuegeVariablen(const EinfuegeVariablen&) = delete;
  EinfuegeVariablen& operator=(const EinfuegeVariablen&) = delete;

  void sichern();
  // "attreq" 0, "orthomode" 0 unless the setting OrthoNichtDeaktivieren is "1",
  // "CMDECHO" 1.
  void erzwingen();
  void wiederherstellen();

  int16_t intFiledia = 0;
  int16_t intAttreq = 0;
  int16_t intOrthomode = 0;
  int16_t intCmdecho = 0;

 private:
  CadBridge& b_;
  bool offen_ = false;
};

// The work of the helper window frmReturnAusloesen (frmreturnausloesen.h),
// which makes the user produce a Return at the right moment: drop the key's
// state, serve events until Return reads exactly 1, read once more.
void fctReturnAbwarten(CadBridge& b);

}  // namespace kolvane

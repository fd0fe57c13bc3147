#pragma once
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <exception>
#include <functional>

namespace kolvane {

// The one error report and step trace of the program. Every routine of weight
// reports its failures through subErrorAllgemein and returns false or an empty
// value; the trace says where it happened without a stack.

// Reads "strDebug" and "sErrMsgbox"; with debug on and "sOhneMsgboxDaDll" not
// "1", asks whether to start in debug mode. Returns whether debug mode is on.
bool fctGetCDebug(const QString& inidatei, const QString& sektion = QStringLiteral("AllgemeineDaten"));

// Appends a line to the error file (opened and closed at once).
void subDebug(const QString& text, bool bytMitZeit = false);

// The report: counts, shows a box unless bytOhneBox, appends number,
// description, source and every trace slot to the error file, and stops the
// program when 11 reports came within a minute.
void subErrorAllgemein(bool bytOhneBox, const QString& quelle, const QString& beschreibung,
                       long nummer = 0);

// What the report's box says: the failed action in words (the Frm label
// "Fehler.<quelle>", else "Fehler.Allgemein"), a colon and the description;
// the error number only when there is one. The error file keeps the raw report.
QString fehlerText(const QString& quelle, const QString& beschreibung, long nummer = 0);
// The title of the report's box ("Fehler.Titel").
QString fehlerTitel();

// Catches what a library call threw and reports it under the routine's name.
void subErrorAllgemein(bool bytOhneBox, const QString& quelle, const std::exception& e);

struct DiagnosticsState {
  bool booDebug = false;
  bool booErrMsgbox = false;
  int16_t intFehlerAnzahl = 0;
  QDateTime datErsterFehler;
  uint8_t bytProgrammStop = 0;
};
DiagnosticsState& diagnostics();

// The storm stop ends the process through this hook; tests replace it.
using ExitHook = std::function<void(int exitCode)>;
void setExitHook(ExitHook hook);
void callExitHook(int exitCode);

// Clock of the storm stop; tests replace it.
void setDiagnosticsClock(std::function<QDateTime()> clock);

// A routine's trace slot: set on entry, cleared when it leaves scope. Slots
// stack from outer to inner and the report prints every one that is set.
class Trace {
 public:
  explicit Trace(const QString& routine);
  ~Trace();
  Trace(const Trace&) = delete;
  Trace& operator=(const Trace&) = delete;
  // The current step; written to the error file when debug mode is on.
  void step(const QString& text);
  const QString& routine() const { return routine_; }

 private:
  QString routine_;
  int depth_;
};

// The slots as the report prints them ("routine: step"), outer first.
QStringList traceSlots();

// The error file: sCTemp + "txtErrorKolvane9.0.txt", or before the settings are
// known the fallback in the temporary root.
QString errorFilePath();

// A named step of a flow that writes several files and rows. When the
// environment variable KOLVANE_HALTEPUNKT names it, the process is killed
// there without any clean-up, as a crash or a power cut would end it: the
// tests of crash safety start the program so.
void fctHaltepunkt(const char* schritt);

}  // namespace kolvane

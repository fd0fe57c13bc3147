#pragma once
#include <QString>
#include <QStringList>
#include <cstdint>

namespace kolvane {

class CadBridge;

// The keystroke route: a small script file, the host's window activated, the
// command that runs the script typed, then a wait for a click or a file.

// What the insert script needs of the insert in progress.
struct LtEinfuegeDaten {
  QString strLayer;
  int32_t longXRef = 0;
  uint8_t byteBlockAusBibliothek = 0;
  QString strBlockName;
  QString SpeicherortDerBlockzeichnung;
  QString aktivierteBlocknummer;
  uint8_t bytMarkierteAnsicht = 0;
  uint8_t byteAbfrageEinfuegewinkel = 0;
  uint8_t byteAbfrageXFaktor = 0;
};

// sCTemp + "bv8LT.scr", written anew by each writer.
QString strSkriptDatei();

// The insert script. It stops on purpose inside the insert, at a transparent
// "'setvar" for filedia, and leaves the insertion point to the user.
bool subScriptSchreibenFuerLT(const LtEinfuegeDaten& d);

// Slide by script: true (-1) once the slide file exists; false when the host
// can't be activated or Escape is pressed first. There is no time-out.
int16_t fctSlideMitLTErstellen(CadBridge& b, const QString& strSlide);
// Opening a drawing by script: true (-1) when the keystrokes went out.
int16_t fctOpenFileMitLT(CadBridge& b, const QString& strDatei);

// The script path as typed: every backslash replaced by the setting
// "sReplaceBackslash" ("" leaves the path as it is).
QString fctReplaceBackslash(const QString& pfad);

// The typing part of ACadLtBlockEinfuegen, from the script on: write it,
// activate the host (on failure the program ends), cancel, "expert 2" for a
// block from the library, run the script, wait for the user's click (Escape
// sets Unterbrechung and returns), answer the remaining prompts. False when
// nothing could be typed.
bool ACadLtBlockEinfuegenTippen(CadBridge& b, const LtEinfuegeDaten& d);

}  // namespace kolvane

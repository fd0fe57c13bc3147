#pragma once
#include <QString>
#include <QStringList>

#include "prompt.h"

namespace kolvane {

// The message box family. Each takes label numbers of the Msgbox file, one per
// line; title and icon follow from the name. A label that can't be found gives
// an empty line, never an error.

// Titles of the family (captions of the Frm file, section "Allg").
constexpr int kTitelInfo = 1;
constexpr int kTitelHinweis = 2;
constexpr int kTitelKolvane = 3;
constexpr int kTitelFrage = 4;

void subMsgboxInfoEinzeilig(int nr);
void subMsgboxInfoEinzeilig(const QString& text);  // a text composed by the caller
void subMsgboxInfoZweizeilig(int nr1, int nr2);
void subMsgboxInfoZweizeilig2(int nr1, int nr2);   // with an empty line between
void subMsgboxInfoDreizeilig(int nr1, int nr2, int nr3);
void subMsgboxInfoDreizeilig21(int nr1, int nr2, int nr3);        // two lines, gap, one
void subMsgboxInfoVierZeilig121(int nr1, int nr2, int nr3, int nr4);  // one, gap, two, gap, one
void subMsgboxHinweisZweizeilig(int nr1, int nr2);
void subMsgboxHinweisDreizeilig(int nr1, int nr2, int nr3);
bool fctMsgboxFrageEinzeilig(int nr);
bool fctMsgboxFrageZweizeilig(int nr1, int nr2);
bool fctMsgboxFrageZweizeilig2(int nr1, int nr2);  // with an empty line between
// Three lines and three buttons (Yes, No, Cancel); the answer as given.
Answer fctMsgboxFrageDreizeilig12(int nr1, int nr2, int nr3);

// A box with a title label number and free lines (message text numbers).
Answer fctMsgboxAnzeigen(const QList<int>& zeilen, int titel, Buttons buttons, Icon icon);

// A file refused or not written: message nr, the file, the reason when there
// is one, and (bleibt > 0) the line that says what stays as it was.
void fctDateiMeldung(int nr, const QString& datei, const QString& grund = QString(), int bleibt = 0);

// The box with "don't show again": nothing is shown when its key in section
// "MsgboxAnzeigen" is "1"; a ticked box writes that key. Returns the answer
// (Ok when the box stays silent).
Answer fctmsgboxMitChkAnzeigen(const QString& schluessel, const QString& text,
                               const QString& titel, Buttons buttons = Buttons::Ok);

// The input box; nullopt when cancelled.
std::optional<QString> fctInputBoxAnzeigen(const QString& text, const QString& titel,
                                           const QString& vorgabe = QString());

// The pick list frmAuswahlLisAllgemein; index -1 and "" when cancelled.
PickResult fctAuswahlen(const QStringList& ary, const QString& text, const QString& titel,
                        int breiteTwips = 0);

}  // namespace kolvane

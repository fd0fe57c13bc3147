#pragma once
#include <QString>
#include <QStringList>
#include <cstdint>

class QWidget;

namespace kolvane {

class CadBridge;
struct DesktopWindow;

// Finding the host and choosing the route of the run. True is -1, as the
// callers compare it.

// The host versions that bind the automation route, tested in order against
// the first five characters of the host's version text.
struct AcadVersionZeile {
  const char* praefix;
  const char* name;
};
const QList<AcadVersionZeile>& acadVersionTabelle();

// The title table of the keystroke route, in the order it is tried: "AutoCAD LT",
// five further titles of look-alike products (settings "LtTitel1" to "LtTitel5"
// in section "AllgemeineDaten" replace the built-in ones), "Bricscad Pro",
// "ZWCAD". An empty row is skipped.
QStringList fctLtTitelTabelle();

// Binds the host once at start-up: automation first, then the title table, then
// a search by part of the title, then (setting "AutoCadTitel" = "1" in section
// "MsgboxAnzeigen") the list of all windows. -1 when a host was bound.
int16_t ACAD_Connect(CadBridge& b, uint8_t bytNurVersuch, uint8_t bytOhneMeldung,
                     uint8_t& booOnlyAutoCAD16);

// Attaches to a running host and, unless bytNurVerbinden is 1, starts one when
// none runs. The caller tests b.acadApp.
int16_t ACAD_Start(CadBridge& b, uint8_t bytNurVerbinden);

// The test of one window: visible and bordered (style mask 0x10800000) with a
// text. The text is taken one character short of its length; it matches when
// it begins with strTitel or holds it, compared in upper case. "" when not.
QString fctFensterTitelPruefen(const DesktopWindow& w, const QString& strTitel);
// Title of the first top-level window that matches, in z-order; "" when none.
QString fctFensterSucheGenauerTitel(CadBridge& b, const QString& strTitel);
// Every qualifying top-level window's title; -1 when at least one was found.
int16_t fctFensterAlleTitel(CadBridge& b, QStringList& aryTitel);
// Foreground and top for the window, then show and raise the form when given.
void fctFensterInDenVordergrund(CadBridge& b, quint64 hWnd, QWidget* frm);

// Layers of the active document.
bool fctAcadLayerEigenschaften(CadBridge& b, const QString& strLayer, QString& strFarbe,
                               QString& strLinie);
void fctAcadLayerAnlegen(CadBridge& b, const QString& strLayer, const QString& strFarbe,
                         const QString& strLinie);
void fctAcadLayerListe(CadBridge& b, QStringList& aryLayer, uint8_t bytNurEingeschaltete);
// The layer list of the card forms: the drawing's layers to pick from, the
// chosen one with its colour and line type. False when nothing was chosen (no
// host, no layer list, cancelled).
bool fctLayerWaehlen(CadBridge& b, QString& strLayer, QString& strFarbe, QString& strLinie);

// Opening and closing drawings in the host. With bytMerken the opened drawing is
// kept for fctAcadDokSchliessen with bytAktivesDok = 1; otherwise the active
// document is closed.
bool fctAcadDokOeffnen(CadBridge& b, const QString& strDatei, uint8_t bytMerken);
void fctAcadDokSchliessen(CadBridge& b, bool SaveChanges, const QString& strDatei,
                          uint8_t bytAktivesDok);

// First existing place of a file: the drawing's directory, the host's own
// directory, then the support path in its order. "" when none, when no host
// runs, or when no drawing is open.
QString fctDateiImAcadSuchpfad(CadBridge& b, const QString& strDatei);

// The file test used throughout; the path is left-trimmed first.
bool fctDateiExistiert(const QString& strDatei);

}  // namespace kolvane

#include "bildausschnitt.h"

#include <QFile>

#include "cadbridge.h"
#include "commandchannel.h"
#include "desktop.h"
#include "diagnostics.h"
#include "host.h"
#include "msgbox.h"
#include "neuanlage.h"
#include "slideaufnahme.h"

namespace kolvane {

namespace {
constexpr int kEscape = 27, kReturn = 13, kLinks = 1;
}

Bildausschnitt::Bildausschnitt(CadBridge& b, Neuanlage& n, QString temp)
    : b_(b), n_(n), temp_(std::move(temp)) {}

QString Bildausschnitt::slideDatei() const { return fctTempSlide(temp_, n_.ErstesSlidebild); }

bool Bildausschnitt::bytBlockImportManuell() const { return n_.bytBlockImportManuell == 1; }

void Bildausschnitt::neuSchiessen() {
  SendCommand(b_, fctMslideErsetzenBefehl(slideDatei()));
  SendKeys(b_, QStringLiteral("{ESC}"), true);
}

bool Bildausschnitt::SlidesErstellenVonBildausschnittAnpassen() {
  Trace t(QStringLiteral("SlidesErstellenVonBildausschnittAnpassen"));
  Host* h = b_.acadApp;
  if (!h) return false;
  b_.bytEventBeruecksichtigen = 0;
  vorn(false);
  ACAD_aktivieren(b_);
  SendCommand(b_, QStringLiteral("._undo _b "));
  SendCommand(b_, QStringLiteral("._undo _m "));
  subEscapeVerwerfen(b_);
  const auto p1 = h->getPoint(std::nullopt, QStringLiteral("Erste Ecke für das Dia angeben: "));
  h->clearError();
  std::optional<HostPoint> p2;
  if (p1 && !fctEscapeGedrueckt(b_)) {
    p2 = h->getCorner(*p1, QStringLiteral("Zweite Ecke für das Dia picken: "));
    h->clearError();
  }
  bool ok = p1 && p2 && !fctEscapeGedrueckt(b_);
  if (ok) {
    n_.pZ1 = *p1;
    n_.pZ2 = *p2;
    n_.RingAussenDurchmesserPunkt = GroesseRoterKreisFuerEinfuegepktBestimmen(n_.pZ1, n_.pZ2);
    h->zoomWindow(n_.pZ1, n_.pZ2);
    h->clearError();
  }
  // The first point's mark again, in the old frame when the picks failed.
  QFile::remove(slideDatei());
  SlidesErstellen(b_, temp_, n_.Einfuegepunkte[0], n_.ErstesSlidebild, n_.RingAussenDurchmesserPunkt);
  SendKeys(b_, QStringLiteral("{ESC}"), true);
  b_.bytEventBeruecksichtigen = 1;
  vorn(true);
  return ok;
}

void Bildausschnitt::cmbNein_Click() { SlidesErstellenVonBildausschnittAnpassen(); }

void Bildausschnitt::cmbZoomGross_Click() {
  if (b_.acadApp) b_.acadApp->zoomScaled(1.5, 1);
  neuSchiessen();
}

void Bildausschnitt::cmbZoomKlein_Click() {
  if (b_.acadApp) b_.acadApp->zoomScaled(0.5, 1);
  neuSchiessen();
}

void Bildausschnitt::cmbPan_Click() {
  Trace t(QStringLiteral("cmbPan"));
  b_.bytEventBeruecksichtigen = 0;
  vorn(false);
  ACAD_aktivieren(b_);
  SendCommand(b_, QStringLiteral("._pan "));
  if (b_.desktop) {
    for (int i = 0; i < 3; ++i) b_.desktop->getAsyncKeyState(kEscape);
    // Until the user ends the pan: Escape, Return or a click.
    for (;;) {
      DoEvents();
      if (b_.desktop->getAsyncKeyState(kEscape) || b_.desktop->getAsyncKeyState(kReturn) ||
          b_.desktop->getAsyncKeyState(kLinks))
        break;
      subPause2(20);
    }
  }
  neuSchiessen();
  b_.bytEventBeruecksichtigen = 1;
  vorn(true);
}

void Bildausschnitt::cmbVerdeckt_Click() {
  SendCommand(b_, QStringLiteral("._hide "));
  bestaetigt = true;
}

void Bildausschnitt::cmbElementeAusblenden_Click() {
  Trace t(QStringLiteral("cmbElementeAusblenden"));
  Host* h = b_.acadApp;
  if (!h) return;
  b_.bytEventBeruecksichtigen = 0;
  vorn(false);
  ACAD_aktivieren(b_);
  const QString ss = QStringLiteral("SS1");
  h->selectionSetDelete(ss);
  h->clearError();
  bool ok = h->selectionSetAdd(ss);
  ok = ok && h->selectOnScreen(ss) > 0;
  ok = ok && h->selectionSetErase(ss);
  h->selectionSetDelete(ss);
  if (!ok || h->failed()) {
    h->clearError();
    SendKeys(b_, QStringLiteral("{ESC}"), true);
    b_.bytEventBeruecksichtigen = 1;
    vorn(true);
    b_.bytBlockv0Anpassen1Datenbank2BlockName3 = 4;
    fctMsgboxAnzeigen({329, 330, 331, 332}, 3, Buttons::Ok, Icon::Information);
  }
  // The erasures stand until the undo at the end of the command.
  neuSchiessen();
  b_.bytEventBeruecksichtigen = 1;
  vorn(true);
}

}  // namespace kolvane

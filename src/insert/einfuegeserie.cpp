#include "einfuegeserie.h"

#include <QVariant>

#include "acadconnect.h"
#include "cadbridge.h"
#include "commandchannel.h"
#include "desktop.h"
#include "diagnostics.h"
#include "einfuegebefehle.h"
#include "einfuegeoptionen.h"
#include "einfuegepunktwahl.h"
#include "einfuegewerte.h"
#include "host.h"
#include "integration.h"

namespace kolvane {

namespace {

constexpr int kLinkeMaustaste = 1;
constexpr int kRechteMaustaste = 2;
constexpr int kEscape = 27;

int16_t taste(CadBridge& b, int code) { return b.desktop ? b.desktop->getAsyncKeyState(code) : 0; }

}  // namespace

Einfuegeserie::Einfuegeserie(CadBridge& b, const EinfuegeOptionen& o, int32_t longEinfuegenLayer0,
                             const QString& programmVerzeichnis)
    : b_(b), o_(o), longEinfuegenLayer0_(longEinfuegenLayer0), programmVerzeichnis_(programmVerzeichnis) {}

bool Einfuegeserie::senden(const QString& befehl) {
  QString fehler;
  if (SendCommand(b_, befehl, &fehler)) return true;
  subErrorAllgemein(false, QStringLiteral("cmbEinfuegen_Click"), fehler);
  return false;
}

bool Einfuegeserie::sendenUndWarten(const QString& befehl) {
  // A host refuses every other string while one of its commands waits for the
  // user, so a command that ends in the user's hands is waited for like the
  // insert itself: until the host reports its end (also a cancelled one).
  QString fehler;
  if (SendCommandUndWarten(b_, befehl, &fehler)) return true;
  subErrorAllgemein(false, QStringLiteral("cmbEinfuegen_Click"), fehler);
  return false;
}

bool Einfuegeserie::serieSenden(EinfuegeWerte& w) {
  return w.NummerEinfuegepkt > 1 ? serieAndererPunkt(w) : serieEinPunkt(w);
}

bool Einfuegeserie::serieEinPunkt(EinfuegeWerte& w) {
  Trace t(QStringLiteral("Einfuegeserie Punkt A"));
  if (o_.byteBlockAusBibliothek == 1) {
    // The factors are asked before the command starts; nothing is waited for:
    // Escape is read right after the send.
    if (!AbfrageXYWinkel(b_, o_, w.strMassstabXEinfuegen, w.strMassstabYEinfuegen)) {
      t.step(QStringLiteral("VK_EsCAPE - es wird wohl abgebrochen"));
      b_.Unterbrechung = 1;
      return true;
    }
    if (!senden(fctInsertMitPause(o_, w))) return false;
    fctEscapeGedrueckt(b_);
    return true;
  }
  // The host stops at `pause` for the user; the end of the command or of the
  // Lisp run ends the wait.
  QString fehler;
  if (!SendCommandUndWarten(b_, fctInsertMitPause(o_, w), &fehler)) {
    subErrorAllgemein(false, QStringLiteral("cmbEinfuegen_Click"), fehler);
    return false;
  }
  return true;
}

bool Einfuegeserie::serieAndererPunkt(EinfuegeWerte& w) {
  Trace t(QStringLiteral("Einfuegeserie weiterer Punkt"));
  if (!AbfrageXYWinkel(b_, o_, w.strMassstabXEinfuegen, w.strMassstabYEinfuegen)) {
    t.step(QStringLiteral("VK_EsCAPE - es wird wohl abgebrochen"));
    b_.Unterbrechung = 1;
    return true;
  }
  // 1. At the origin, without a question.
  if (!senden(fctInsertAmUrsprung(o_, w))) return false;
  // 2. The keys' old states go.
  taste(b_, kLinkeMaustaste);
  taste(b_, kRechteMaustaste);
  taste(b_, kEscape);
  // 3. The move: the user's pick is its second point. The pick is waited
  //    for, so that "lastpoint" below is that pick.
  if (!sendenUndWarten(fctMoveBefehl(w.strDistanz))) return false;
  // 4.
  const int16_t rechts = taste(b_, kRechteMaustaste);
  const int16_t escape = taste(b_, kEscape);
  if (rechts != 0 || escape != 0 || b_.Unterbrechung == 1) {
    t.step(QStringLiteral("VK_EsCAPE - es wird wohl abgebrochen"));
    b_.Unterbrechung = 1;
    // The block placed at the origin goes again: a cancelled insert leaves
    // nothing in the drawing.
    senden(fctEraseBefehl());
    return true;
  }
  // 5. The rotation about the pick.
  if (o_.byteAbfrageEinfuegewinkel == 1 && b_.Unterbrechung == 0) {
    std::array<double, 3> p{0, 0, 0};
    if (b_.acadApp) {
      const QVariantList l = b_.acadApp->getVariable(QStringLiteral("lastpoint")).toList();
      b_.acadApp->clearError();
      for (int i = 0; i < 3 && i < l.size(); ++i) p[size_t(i)] = l[i].toDouble();
    }
    std::array<QString, 3> s;
    KommaPunktErsetzen(p, s);
    if (!sendenUndWarten(fctRotateBefehl(s))) return false;
  }
  return true;
}

bool Einfuegeserie::folgebefehleSenden(const EinfuegeWerte& w) {
  Trace t(QStringLiteral("Folgebefehle"));
  // 1. Break: the supplied Lisp file, waited for like a command.
  if (o_.byteBruchFrage == 1 && b_.Unterbrechung != 1) {
    t.step(QStringLiteral("break"));
    b_.bytAcadArbeitet = 2;
    b_.Timer4Starten();
    if (!senden(fctBruchBefehl(programmVerzeichnis_))) {
      b_.Timer4Stoppen();
      b_.bytAcadArbeitet = 1;
      return false;
    }
    subWartenAufAcad(b_, true);
    b_.Timer4Stoppen();
  }
  // 2. The block's layer, made when the drawing lacks it.
  if (!w.strLayer.isEmpty() && b_.Unterbrechung != 1) {
    t.step(QStringLiteral("Layer ") + w.strLayer);
    QString farbe, linie;
    if (!fctAcadLayerEigenschaften(b_, w.strLayer, farbe, linie))
      fctAcadLayerAnlegen(b_, w.strLayer, w.strLayerFarbe, w.strLinientyp);
    if (!senden(fctLayerBefehl(w.strLayer))) return false;
    SendKeys(b_, QStringLiteral("{ESC}"), false);
  }
  // 3. Layer "0".
  if (longEinfuegenLayer0_ == 1 && b_.Unterbrechung != 1) {
    if (!senden(fctLayer0Befehl())) return false;
    SendKeys(b_, QStringLiteral("{ESC}"), true);
  }
  // 4.-6.
  // The attribute dialog and the array's questions are the user's: their
  // commands are waited for before anything else is sent.
  if (o_.byteAbfrageAttributeBeimEinfuegen == 1 && b_.Unterbrechung != 1 &&
      !sendenUndWarten(fctAtteditBefehl()))
    return false;
  if (o_.byteUrsprungBeimEinfuegen == 1 && b_.Unterbrechung != 1 && !senden(fctExplodeBefehl()))
    return false;
  if (o_.byteReihe == 1 && b_.Unterbrechung != 1 && !sendenUndWarten(fctArrayBefehl())) return false;
  // 7. The data card as Lisp variables (when the setup asks for them).
  if (b_.Unterbrechung != 1) {
    int intFehler = 0;
    fctLispVariablenZuordnen(b_, w.werteM0bisM9, w.strBlockName, intFehler);
    if (intFehler > 0) t.step(QStringLiteral("Lisp-Variablen nicht gesendet: ") + QString::number(intFehler));
  }
  // 8. The block's own command.
  if (!w.strLispBefehl.isEmpty() && b_.Unterbrechung != 1) {
    if (!senden(w.strLispBefehl + "\r")) return false;
  }
  return true;
}

}  // namespace kolvane

#include "commandchannel.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <charconv>
#include <cmath>
#include <cstring>

#include "cadbridge.h"
#include "desktop.h"
#include "diagnostics.h"
#include "host.h"
#include "settings.h"

namespace kolvane {

namespace {

constexpr int kEscape = 27;
constexpr int kReturn = 13;

int16_t taste(CadBridge& b, int code) { return b.desktop ? b.desktop->getAsyncKeyState(code) : 0; }

}  // namespace

bool ACAD_aktivieren(CadBridge& b) {
  Trace t(QStringLiteral("ACAD_aktivieren"));
  bool ok = b.desktop && b.desktop->appActivate(b.typAcadVersionInfo.strACadTitel);
  if (!b.istLT()) {
    t.step(QStringLiteral("acadDoc = acadApp.ActiveDocument"));
    if (!b.acadApp) {
      ok = false;
    } else {
      b.acadApp->clearError();
      if (!b.acadApp->hasActiveDocument() || b.acadApp->failed()) ok = false;
      b.acadApp->clearError();
    }
  }
  if (!ok) b.subAcadNichtErreichbar();
  return ok;
}

bool SendCommand(CadBridge& b, const QString& strBefehl, QString* fehler) {
  if (!b.acadApp) {
    if (fehler) *fehler = QStringLiteral("keine Verbindung zum CAD-Programm");
    return false;
  }
  const bool ok = b.acadApp->sendCommand(strBefehl) && !b.acadApp->failed();
  if (!ok && fehler) *fehler = b.acadApp->lastError();
  b.acadApp->clearError();
  return ok;
}

bool SendKeys(CadBridge& b, const QString& strTasten, bool wait) {
  return b.desktop && b.desktop->sendKeys(strTasten, wait);
}

QString sendKeysEscape(const QString& text) {
  static const QString besondere = QStringLiteral("+^%~(){}[]");
  QString out;
  out.reserve(text.size() + 8);
  for (const QChar c : text) {
    if (besondere.contains(c)) {
      out += '{';
      out += c;
      out += '}';
    } else {
      out += c;
    }
  }
  return out;
}

void subPause(CadBridge& b, int intMillisekunden) {
  if (b.pauseHook) {
    b.pauseHook(intMillisekunden);
    return;
  }
  QThread::msleep(std::max(0, intMillisekunden));
}

void subPause2(int intMillisekunden) {
  QEventLoop loop;
  QTimer::singleShot(std::max(0, intMillisekunden), &loop, &QEventLoop::quit);
  loop.exec();
}

void DoEvents() {
  QCoreApplication::processEvents(QEventLoop::AllEvents);
  // The polls read "pressed since the last question", so a short rest between
  // passes loses no key and leaves the machine to the host.
  QThread::msleep(2);
}

void subWartenAufAcad(CadBridge& b, bool bisUnterbrechung) {
  while (b.bytAcadArbeitet == 2 && !(bisUnterbrechung && b.Unterbrechung == 1))
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

bool SendCommandUndWarten(CadBridge& b, const QString& strBefehl, QString* fehler) {
  Trace t(QStringLiteral("SendCommandUndWarten"));
  // 1. Waiting state and the guard.
  b.bytAcadArbeitet = 2;
  b.Timer4Starten();
  // 2. Send.
  t.step(QStringLiteral("SendCommand"));
  if (!SendCommand(b, strBefehl, fehler)) {
    b.Timer4Stoppen();
    b.bytAcadArbeitet = 1;
    return false;
  }
  // 3./4. The old Escape state goes, then the host's events are served until
  //       the end of the command is reported.
  taste(b, kEscape);
  t.step(QStringLiteral("warten auf EndCommand"));
  subWartenAufAcad(b);
  // 5. Guard off.
  b.Timer4Stoppen();
  // 6. Escape pressed during the pick is seen after the fact.
  fctEscapeGedrueckt(b);
  return true;
}

void subEscapeVerwerfen(CadBridge& b) { taste(b, kEscape); }

bool fctEscapeGedrueckt(CadBridge& b) {
  const int16_t erste = taste(b, kEscape);
  const int16_t zweite = taste(b, kEscape);
  if (erste != 0 || zweite != 0) {
    Trace t(QStringLiteral("fctEscapeGedrueckt"));
    t.step(QStringLiteral("VK_EsCAPE - es wird wohl abgebrochen"));
    b.Unterbrechung = 1;
    return true;
  }
  return false;
}

std::optional<double> AbfrageGetReal(CadBridge& b, const QString& strPrompt) {
  Trace t(QStringLiteral("AbfrageGetReal"));
  if (!b.acadApp) return std::nullopt;
  const std::optional<double> v = b.acadApp->getReal(strPrompt);
  if (b.acadApp->failed()) {
    t.step(QStringLiteral("Fehler: ") + b.acadApp->lastError());
    b.acadApp->clearError();
    return std::nullopt;
  }
  return v;
}

QString fctZahlFuerAcad(double wert) {
  if (!std::isfinite(wert) || wert == 0.0) return QStringLiteral("0");
  // Shortest scientific form that reads back, at most 15 significant digits.
  char buf[64];
  int len = 0;
  for (int p = 1; p <= 15; ++p) {
    const auto r = std::to_chars(buf, buf + sizeof buf, wert, std::chars_format::scientific, p - 1);
    len = int(r.ptr - buf);
    double zurueck = 0;
    std::from_chars(buf, buf + len, zurueck, std::chars_format::scientific);
    if (zurueck == wert) break;
  }
  // Digits and exponent, then written out without an exponent.
  const std::string s(buf, size_t(len));
  const bool negativ = s[0] == '-';
  const size_t e = s.find('e');
  std::string ziffern;
  for (size_t i = negativ ? 1 : 0; i < e; ++i)
    if (s[i] != '.') ziffern += s[i];
  const int exponent = std::stoi(s.substr(e + 1));
  while (ziffern.size() > 1 && ziffern.back() == '0') ziffern.pop_back();
  const int n = int(ziffern.size());
  std::string out;
  if (exponent >= n - 1) {
    out = ziffern + std::string(size_t(exponent - (n - 1)), '0');
  } else if (exponent >= 0) {
    out = ziffern.substr(0, size_t(exponent + 1)) + "." + ziffern.substr(size_t(exponent + 1));
  } else {
    out = "0." + std::string(size_t(-exponent - 1), '0') + ziffern;
  }
  if (negativ) out.insert(out.begin(), '-');
  return QString::fromLatin1(out.c_str());
}

void KommaPunktErsetzen(const std::array<double, 3>& dbl, std::array<QString, 3>& str) {
  for (size_t i = 0; i < 3; ++i) str[i] = fctZahlFuerAcad(dbl[i]);
}

QString KommaPunktErsetzen(const QString& text) {
  QString t = text;
  t.replace(',', '.');
  return t;
}

EinfuegeVariablen::~EinfuegeVariablen() {
  if (offen_) wiederherstellen();
}

void EinfuegeVariablen::sichern() {
  Trace t(QStringLiteral("EinfuegeVariablen sichern"));
  Host* h = b_.acadApp;
  if (!h) return;
  intFiledia = int16_t(h->getVariable(QStringLiteral("filedia")).toInt());
  intAttreq = int16_t(h->getVariable(QStringLiteral("attreq")).toInt());
  intOrthomode = int16_t(h->getVariable(QStringLiteral("orthomode")).toInt());
  intCmdecho = int16_t(h->getVariable(QStringLiteral("CMDECHO")).toInt());
  h->clearError();
  offen_ = true;
}

void EinfuegeVariablen::erzwingen() {
  Host* h = b_.acadApp;
  if (!h) return;
  const Settings* s = currentSettings();
  const bool orthoLassen = s && s->allg(QStringLiteral("OrthoNichtDeaktivieren")) == QLatin1String("1");
  h->setVariable(QStringLiteral("attreq"), 0);
  if (!orthoLassen) h->setVariable(QStringLiteral("orthomode"), 0);
  h->setVariable(QStringLiteral("CMDECHO"), 1);
  h->clearError();
}

void EinfuegeVariablen::wiederherstellen() {
  offen_ = false;
  Host* h = b_.acadApp;
  if (!h) return;
  h->setVariable(QStringLiteral("attreq"), intAttreq);
  h->setVariable(QStringLiteral("orthomode"), intOrthomode);
  h->setVariable(QStringLiteral("CMDECHO"), intCmdecho);
  h->clearError();
}

void fctReturnAbwarten(CadBridge& b) {
  taste(b, kReturn);
  while (taste(b, kReturn) != 1) DoEvents();
  taste(b, kReturn);
}

}  // namespace kolvane

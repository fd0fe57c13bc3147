#include "diagnostics.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>
#include <csignal>
#include <cstdlib>

#include "inifile.h"
#include "labels.h"
#include "msgbox.h"
#include "prompt.h"
#include "settings.h"

namespace kolvane {

namespace {

struct Slot {
  QString routine;
  QString step;
};

DiagnosticsState g_state;
QList<Slot> g_slots;
ExitHook g_exitHook;
std::function<QDateTime()> g_clock;
bool g_inReport = false;

QDateTime now() { return g_clock ? g_clock() : QDateTime::currentDateTime(); }

bool truth(const QString& v) {
  const QString t = v.trimmed().toLower();
  return t == "1" || t == "-1" || t == "true" || t == "wahr" || t == "ja" || t == "yes" || t == "on";
}

QString allg(const QString& key) {
  const Settings* s = currentSettings();
  if (!s) return {};
  return IniGetValue(s->strIniDateiVerzeichnis, QStringLiteral("AllgemeineDaten"), key);
}

QString stamp() { return now().toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")); }

// Appends lines to the error file; up to three tries, the file closed at once
// so a crash loses nothing.
bool appendLines(const QStringList& lines) {
  const QString file = errorFilePath();
  QDir().mkpath(QFileInfo(file).absolutePath());
  for (int attempt = 0; attempt < 3; ++attempt) {
    QFile f(file);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text)) continue;
    QTextStream out(&f);
    out.setEncoding(QStringConverter::Utf8);
    for (const QString& l : lines) out << l << '\n';
    return true;
  }
  return false;
}

void box(const QString& text, const QString& title, Icon icon) {
  MessageRequest r;
  r.text = text;
  r.title = title;
  r.icon = icon;
  r.buttons = Buttons::Ok;
  prompt().message(r);
}

// A label of the Frm file, or the German text when no label file is loaded yet.
QString label(const QString& key, const char* deutsch) {
  const QString t = labels().fctBeschriftFrmZuordnen(key);
  return t.isEmpty() ? QString::fromUtf8(deutsch) : t;
}

}  // namespace

QString fehlerTitel() { return label(QStringLiteral("Fehler.Titel"), "Kolvane – Fehler"); }

QString fehlerText(const QString& quelle, const QString& beschreibung, long nummer) {
  QString handlung = quelle.isEmpty() ? QString() : labels().fctBeschriftFrmZuordnen(QStringLiteral("Fehler.") + quelle);
  if (handlung.isEmpty()) handlung = label(QStringLiteral("Fehler.Allgemein"), "Es ist ein Fehler aufgetreten");
  QString text = handlung;
  const QString details = beschreibung.trimmed();
  if (!details.isEmpty()) text += QStringLiteral(": ") + details;
  if (nummer != 0) text += QStringLiteral(" (") + QString::number(nummer) + u')';
  return text;
}

DiagnosticsState& diagnostics() { return g_state; }

void setExitHook(ExitHook hook) { g_exitHook = std::move(hook); }

void callExitHook(int exitCode) {
  if (g_exitHook) {
    g_exitHook(exitCode);
    return;
  }
  std::exit(exitCode);
}

void setDiagnosticsClock(std::function<QDateTime()> clock) { g_clock = std::move(clock); }

QString errorFilePath() {
  const Settings* s = currentSettings();
  if (s && !s->strErrorDatei.isEmpty()) return s->strErrorDatei;
  // Before the settings are known: the fallback in the temporary root.
  return Environment::fromSystem().tempRoot + QStringLiteral("txtErrorKvn9.0.txt");
}

bool fctGetCDebug(const QString& inidatei, const QString& sektion) {
  const QString sek = sektion.isEmpty() ? QStringLiteral("AllgemeineDaten") : sektion;
  g_state.booDebug = truth(IniGetValue(inidatei, sek, QStringLiteral("strDebug")));
  g_state.booErrMsgbox = truth(IniGetValue(inidatei, sek, QStringLiteral("sErrMsgbox")));
  if (!g_state.booDebug) return false;
  if (IniGetValue(inidatei, sek, QStringLiteral("sOhneMsgboxDaDll")) == QLatin1String("1"))
    return true;
  const Settings* s = currentSettings();
  const QString version = s ? s->version() + QStringLiteral(".0") : QStringLiteral("9.0.0");
  MessageRequest r;
  r.title = QStringLiteral("Frage");
  r.text = QStringLiteral("Soll im Debug-Modus gestartet werden?\rAbbrechen= Debug-Modus deaktivieren\rVersion: ") +
           version;
  r.buttons = Buttons::YesNoCancel;
  r.icon = Icon::Question;
  const Answer a = prompt().message(r);
  if (a == Answer::Cancel) {
    IniSetValue(inidatei, sek, QStringLiteral("strDebug"), QStringLiteral("0"));
    g_state.booDebug = false;
  } else if (a == Answer::No) {
    g_state.booDebug = false;
  }
  g_state.booErrMsgbox = false;
  return g_state.booDebug;
}

void subDebug(const QString& text, bool bytMitZeit) {
  if (bytMitZeit)
    appendLines({stamp() + " " + text, QString(), QStringLiteral("------------------------"), QString()});
  else
    appendLines({text});
  if (g_inReport) return;
  if (allg(QStringLiteral("sShowAllErrorMsgbox")) == QLatin1String("1"))
    box(fehlerText(QString(), text), fehlerTitel(), Icon::Exclamation);
  if (g_state.booErrMsgbox) box(text, QStringLiteral("Debug-Info"), Icon::Information);
}

void subErrorAllgemein(bool bytOhneBox, const QString& quelle, const QString& beschreibung,
                       long nummer) {
  if (g_inReport) return;  // a failure inside the report is swallowed
  g_inReport = true;
  // 1. Count, and keep the time of the first report.
  if (g_state.intFehlerAnzahl < 1) {
    g_state.intFehlerAnzahl = 1;
    g_state.datErsterFehler = now();
  } else if (g_state.intFehlerAnzahl < INT16_MAX) {
    ++g_state.intFehlerAnzahl;
  }
  // 3. The box, unless told not to (or every box is wanted).
  if (!bytOhneBox || allg(QStringLiteral("sShowAllErrorMsgbox")) == QLatin1String("1"))
    box(fehlerText(quelle, beschreibung, nummer), fehlerTitel(), Icon::Exclamation);
  // 4./5. The error file.
  QStringList lines;
  lines << stamp() << QString::number(nummer) + " " + beschreibung << quelle;
  for (const QString& s : traceSlots()) lines << s;
  lines << QString() << QStringLiteral("------------------------") << QString();
  appendLines(lines);
  // 7. Storm stop: eleven reports within a minute of the first end the program.
  if (g_state.intFehlerAnzahl >= 11 && g_state.bytProgrammStop != 1) {
    if (g_state.datErsterFehler.secsTo(now()) < 60) {
      subMsgboxHinweisDreizeilig(77, 78, 79);
      g_inReport = false;
      callExitHook(1);
      return;
    }
    g_state.intFehlerAnzahl = 0;
  }
  g_inReport = false;
}

void subErrorAllgemein(bool bytOhneBox, const QString& quelle, const std::exception& e) {
  subErrorAllgemein(bytOhneBox, quelle, QString::fromLocal8Bit(e.what()), 0);
}

Trace::Trace(const QString& routine) : routine_(routine), depth_(int(g_slots.size())) {
  g_slots.append({routine, QString()});
}

Trace::~Trace() {
  // Slots left by inner routines that did not clear theirs go with this one.
  while (g_slots.size() > depth_) g_slots.removeLast();
}

void Trace::step(const QString& text) {
  if (depth_ < g_slots.size()) g_slots[depth_].step = text;
  if (g_state.booDebug) subDebug(routine_ + ": " + text);
}

QStringList traceSlots() {
  QStringList out;
  for (const Slot& s : g_slots) {
    if (s.routine.isEmpty() && s.step.isEmpty()) continue;
    out << (s.step.isEmpty() ? s.routine : s.routine + ": " + s.step);
  }
  return out;
}

void fctHaltepunkt(const char* schritt) {
  static const QByteArray ziel = qgetenv("KOLVANE_HALTEPUNKT");
  if (ziel.isEmpty() || ziel != schritt) return;
  std::raise(SIGKILL);
}

}  // namespace kolvane

#include "ltscript.h"

#include <QDir>
#include <QFileInfo>

#include "acadconnect.h"
#include "cadbridge.h"
#include "commandchannel.h"
#include "desktop.h"
#include "diagnostics.h"
#include "hostfile.h"
#include "settings.h"

namespace kolvane {

namespace {

constexpr QChar q = QLatin1Char('"');
constexpr int kLinkeMaustaste = 1;
constexpr int kEscape = 27;

// The fixed script folder of the route is the temporary root of this system;
// the file itself goes where sCTemp says.
void skriptVerzeichnisAnlegen() {
  const Settings* s = currentSettings();
  if (!s) return;
  QDir().mkpath(s->environment().tempRoot);
  QDir().mkpath(s->sCTemp);
}

QString settingAllg(const QString& key) {
  const Settings* s = currentSettings();
  return s ? s->allg(key) : QString();
}

}  // namespace

QString strSkriptDatei() {
  const Settings* s = currentSettings();
  return (s ? s->sCTemp : QString()) + QStringLiteral("bv8LT.scr");
}

QString fctReplaceBackslash(const QString& pfad) {
  const QString ersatz = settingAllg(QStringLiteral("sReplaceBackslash"));
  if (ersatz.isEmpty()) return pfad;
  QString p = pfad;
  p.replace('\\', ersatz);
  return p;
}

bool subScriptSchreibenFuerLT(const LtEinfuegeDaten& d) {
  Trace t(QStringLiteral("subScriptSchreibenFuerLT"));
  skriptVerzeichnisAnlegen();
  QStringList z;
  if (!d.strLayer.isEmpty() && settingAllg(QStringLiteral("sOhneLayersteuerung")) != QLatin1String("1"))
    z << QStringLiteral("-layer") << QStringLiteral("se") << d.strLayer << QString();
  if (d.longXRef != 0)
    z << QStringLiteral("._-xref") << QStringLiteral("z") << QString();
  else
    z << QStringLiteral("._-insert");
  if (d.byteBlockAusBibliothek == 0)
    z << q + d.SpeicherortDerBlockzeichnung + q;
  else if (!d.strBlockName.isEmpty())
    z << q + d.strBlockName + "=" + d.SpeicherortDerBlockzeichnung + q;
  else
    z << q + d.aktivierteBlocknummer + QString::number(d.bytMarkierteAnsicht) + "=" +
             d.SpeicherortDerBlockzeichnung + q;
  z << QStringLiteral("'setvar") << QStringLiteral("filedia") << QStringLiteral("1");
  t.step(QStringLiteral("Script schreiben"));
  if (!fctHostTextSchreiben(strSkriptDatei(), z, true)) {
    subErrorAllgemein(false, QStringLiteral("subScriptSchreibenFuerLT"),
                      QStringLiteral("Die Datei kann nicht geschrieben werden: ") + strSkriptDatei(), 75);
    return false;
  }
  return true;
}

int16_t fctSlideMitLTErstellen(CadBridge& b, const QString& strSlide) {
  Trace t(QStringLiteral("fctSlideMitLTErstellen"));
  // 1. Script.
  skriptVerzeichnisAnlegen();
  const QStringList z{QStringLiteral("._mslide"), q + strSlide + q, QStringLiteral("._filedia"),
                      QStringLiteral("1")};
  if (!fctHostTextSchreiben(strSkriptDatei(), z, true)) {
    subErrorAllgemein(false, QStringLiteral("fctSlideMitLTErstellen"),
                      QStringLiteral("Die Datei kann nicht geschrieben werden: ") + strSkriptDatei(), 75);
    return 0;
  }
  // 2. Host window.
  if (!b.desktop->appActivate(b.typAcadVersionInfo.strACadTitel)) return 0;
  // 3. Cancel.
  SendKeys(b, QStringLiteral("{ESC}{ESC}"), true);
  const QString pfad = sendKeysEscape(fctReplaceBackslash(strSkriptDatei()));
  // 4. Mark, run the script, wait for the slide or for Escape.
  t.step(QStringLiteral("script"));
  SendKeys(b, QStringLiteral("_undo\r_m\rfiledia 0\rscript\r") + pfad + "\r", true);
  for (;;) {
    if (fctDateiExistiert(strSlide)) {
      subPause(b, 1000);
      return -1;
    }
    if (b.desktop->getAsyncKeyState(kEscape) != 0) return 0;
    DoEvents();
  }
}

int16_t fctOpenFileMitLT(CadBridge& b, const QString& strDatei) {
  Trace t(QStringLiteral("fctOpenFileMitLT"));
  skriptVerzeichnisAnlegen();
  const QStringList z{QStringLiteral("._open"), q + strDatei + q, QStringLiteral("._filedia"),
                      QStringLiteral("1")};
  if (!fctHostTextSchreiben(strSkriptDatei(), z, true)) {
    subErrorAllgemein(false, QStringLiteral("fctOpenFileMitLT"),
                      QStringLiteral("Die Datei kann nicht geschrieben werden: ") + strSkriptDatei(), 75);
    return 0;
  }
  if (!b.desktop->appActivate(b.typAcadVersionInfo.strACadTitel)) return 0;
  SendKeys(b, QStringLiteral("{ESC}{ESC}"), true);
  const QString pfad = sendKeysEscape(fctReplaceBackslash(strSkriptDatei()));
  SendKeys(b, QStringLiteral("filedia 0\rscript\r") + pfad + "\r", true);
  return -1;
}

bool ACadLtBlockEinfuegenTippen(CadBridge& b, const LtEinfuegeDaten& d) {
  Trace t(QStringLiteral("ACadLtBlockEinfuegen"));
  // 3. The script.
  if (!subScriptSchreibenFuerLT(d)) return false;
  // 4. Without the host's window the run is over.
  t.step(QStringLiteral("AppActivate"));
  if (!b.desktop->appActivate(b.typAcadVersionInfo.strACadTitel)) {
    b.subAcadNichtErreichbar();
    return false;
  }
  // 5. Cancel what runs.
  SendKeys(b, QStringLiteral("{ESC}{ESC}"), true);
  subPause(b, 200);
  // 6. No question whether to redefine: the script runs through. It stays so.
  if (d.byteBlockAusBibliothek == 1) {
    SendKeys(b, QStringLiteral("expert 2\r"), true);
    subPause(b, 200);
  }
  // 7./8. Run the script.
  const QString pfad = sendKeysEscape(fctReplaceBackslash(strSkriptDatei()));
  t.step(QStringLiteral("script"));
  SendKeys(b, QStringLiteral("filedia 0\rscript\r") + q + pfad + q + "\r", true);
  // 9. The user's click is the insertion point; Escape breaks off. The old
  //    states go first: the "{ESC}" typed above counts as a press of the key.
  b.desktop->getAsyncKeyState(kLinkeMaustaste);
  b.desktop->getAsyncKeyState(kEscape);
  for (;;) {
    DoEvents();
    if (b.desktop->getAsyncKeyState(kLinkeMaustaste) != 0) break;
    if (b.desktop->getAsyncKeyState(kEscape) != 0) {
      t.step(QStringLiteral("VK_EsCAPE - es wird wohl abgebrochen"));
      b.Unterbrechung = 1;
      return true;
    }
  }
  // 10./11. The remaining prompts: scale defaults, and the angle unless asked.
  subPause(b, 500);
  if (d.byteAbfrageEinfuegewinkel == 1)
    SendKeys(b, QStringLiteral("\r\r"), true);
  else if (d.byteAbfrageXFaktor == 0)
    SendKeys(b, QStringLiteral("\r\r\r"), true);
  // 12.
  subPause(b, 500);
  return true;
}

}  // namespace kolvane

// The new block command on the keystroke route: a host without automation
// gets a script that shoots the slide and starts writing the drawing; the user
// gives the base point and the objects at the host's own prompts. Slide and
// drawing are written into the temporary directory and reach the library as
// on the automation route, after the row.
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include "bibliothek.h"
#include "blockdaten.h"
#include "blockverwaltung.h"
#include "cadbridge.h"
#include "commandchannel.h"
#include "desktop.h"
#include "diagnostics.h"
#include "labels.h"
#include "layout.h"
#include "ltscript.h"
#include "msgbox.h"
#include "neuerblock.h"
#include "prompt.h"
#include "settings.h"
#include "slideaufnahme.h"

namespace kolvane {

namespace {
constexpr int kEscape = 27, kRechts = 2;
constexpr int kWarteSekunden = 40;
const QString q = QStringLiteral("\"");
}  // namespace

NeuerBlock::Ende NeuerBlock::ACadLtBlockNeu() {
  Trace t(QStringLiteral("ACadLtBlockNeu"));
  const bool variante = n.bytVarianteAnlegen == 1;
  // 1.
  if ((variante || settings_.setup.longAbfrageBlocknameBeimErzeugen == 1) && !blocknameDialog(variante)) {
    QDir(temp()).removeRecursively();
    return Ende::Abbruch;
  }
  // 2./3. Places in the library, and the files in the temporary directory.
  QDir(temp()).removeRecursively();
  if (!QDir().mkpath(temp())) {
    subMsgboxInfoEinzeilig(labels().fctBeschriftMsgboxZuordnen(937) + u'\r' + QDir::toNativeSeparators(temp()));
    return Ende::Abbruch;
  }
  const QString code = blockCode();
  const QString v = n.byteZuErstellendeAnsicht == 0 ? QString() : n.ansichtZiffer();
  n.strSlideLibDateiName = code + v + QStringLiteral(".sld");
  n.strSpeicherOrtSlideFuerLT = QDir(ordnerVerzeichnis()).filePath(n.strSlideLibDateiName);
  n.SpeicherOrtSlideLib = n.strSpeicherOrtSlideFuerLT;
  n.strTempSpeicherOrtSlideLib = QDir(temp()).filePath(n.strSlideLibDateiName);
  if (variante) {
    n.TempBlockzeichnung = QDir(temp()).filePath(fctVariaBlockName());
  } else {
    const QString dwg = bv_.aktivierteBlocknummer + n.ansichtZiffer() + QStringLiteral(".dwg");
    n.SpeicherortDerBlockzeichnung = QDir(ordnerVerzeichnis()).filePath(QStringLiteral("Block/") + dwg);
    n.TempBlockzeichnung = QDir(temp()).filePath(dwg);
  }
  // 4./5. The script: it stops at the base point of the write.
  QStringList zeilen;
  if (variante) {
    t.step(QStringLiteral("Script schreiben 1"));
    zeilen << QStringLiteral("._-wblock") << q + n.TempBlockzeichnung + q;
  } else {
    t.step(QStringLiteral("Script schreiben 0"));
    zeilen << QStringLiteral("._mslide") << q + n.strTempSpeicherOrtSlideLib + q
           << QStringLiteral("._-wblock ") << q + n.TempBlockzeichnung + q;
  }
  zeilen << QString();
  const QString skript = strSkriptDatei();
  QDir().mkpath(QFileInfo(skript).path());
  if (!WriteIntorTxtFile(skript, zeilen.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"), false)) {
    QDir(temp()).removeRecursively();
    return Ende::Abbruch;
  }
  // 6. The host's window.
  Desktop* d = b_.desktop;
  const QString titel = b_.typAcadVersionInfo.strACadTitel;
  if (!d || !d->appActivate(titel)) {
    b_.subAcadNichtErreichbar();
    return Ende::Still;
  }
  if (hooks.hauptform) hooks.hauptform(false);
  subPause(b_, 1000);
  d->appActivate(titel);
  SendKeys(b_, QStringLiteral("{ESC}{ESC}"), true);
  // 7./8. Mark, file dialogs off, the script.
  const QString pfad = sendKeysEscape(fctReplaceBackslash(skript));
  SendKeys(b_, QStringLiteral("_undo\r_m\rfiledia 0\rscript\r") + q + pfad + q + u'\r', true);
  // 9. The user's work at the host, until the drawing is there.
  n.bytAbbrechen = 0;
  d->getAsyncKeyState(kEscape);
  d->getAsyncKeyState(kRechts);
  QElapsedTimer uhr;
  uhr.start();
  while (!QFileInfo::exists(n.TempBlockzeichnung)) {
    DoEvents();
    if (uhr.elapsed() > kWarteSekunden * 1000) break;
    if (d->getAsyncKeyState(kEscape) != 0) {
      n.bytAbbrechen = 1;
      break;
    }
    if (d->getAsyncKeyState(kRechts) != 0) subPause(b_, 1000);
    subPause2(20);
  }
  // 10.
  for (int i = 0; i < 2 && !QFileInfo::exists(n.TempBlockzeichnung); ++i) subPause2(1000);
  if (!QFileInfo::exists(n.TempBlockzeichnung)) SendKeys(b_, QStringLiteral("{ESC}{ESC}"), true);
  // 11. The written objects back.
  SendKeys(b_, QStringLiteral("_undo\r_b\r"), true);
  auto aufraeumen = [&] {
    // 14.
    n.bytAbbrechen = 0;
    QDir(temp()).removeRecursively();
    if (hooks.hauptform) hooks.hauptform(true);
    d->appActivate(titel);
    return Ende::Abbruch;
  };
  // 12./13.
  const bool da = fctAufDateiWarten(n.TempBlockzeichnung, 2) &&
                  (variante || fctAufDateiWarten(n.strTempSpeicherOrtSlideLib, 2));
  if (!da) {
    if (hooks.hauptform) hooks.hauptform(true);
    subMsgboxInfoZweizeilig(97, 96);
    return aufraeumen();
  }
  if (n.bytAbbrechen == 1 && !fctMsgboxFrageZweizeilig(99, 98)) return aufraeumen();
  n.bytAbbrechen = 0;
  // 15. Storing.
  bool ok = false;
  if (variante) {
    ok = dateienInDieBibliothek([this] {
      return subBlockdatenInDatenbankAbspeichernVariante(bv_, n, [this]() -> QString {
        return blocknameDialog(true) ? n.strBlockName : QString();
      });
    });
  } else if (n.byteZuErstellendeAnsicht > 0) {
    ok = dateienInDieBibliothek([this] { return BlockdatenInDatenbankAbspeichernAnsichten(bv_, n, true); });
  } else {
    kartei_->Form_Load(n.strBlockName, n.strTempSpeicherOrtSlideLib, bv_.s1 + 1, n.strLayer, n.strLinie,
                       n.strFarbe);
    if (hooks.hauptform) hooks.hauptform(true);
    const int karte = prompt().dialog(QStringLiteral("frmKarteiDateneingabe"), [this] {
      return hooks.frmKarteiDateneingabe ? hooks.frmKarteiDateneingabe(*kartei_) : 0;
    });
    if (karte != 1) return aufraeumen();
    n.aryDatenbankEintrag = kartei_->txtBenennung;
    n.strLayer = kartei_->txtLayer;
    n.strLinie = kartei_->txtLinie;
    n.strFarbe = kartei_->txtFarbe;
    ok = dateienInDieBibliothek([this] { return BlockdatenInDatenbankAbspeichern(bv_, n, true); });
  }
  if (!ok) return aufraeumen();
  zeigen();
  d->appActivate(titel);
  return Ende::Fertig;
}

}  // namespace kolvane

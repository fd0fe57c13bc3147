#include "integration.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "acadconnect.h"
#include "cadbridge.h"
#include "commandchannel.h"
#include "diagnostics.h"
#include "eventsink.h"
#include "host.h"
#include "hostfile.h"
#include "labels.h"
#include "settings.h"

namespace kolvane {

namespace {

constexpr QChar q = QLatin1Char('"');

QString lispPfadVerdoppelt(QString exe) {
  exe.replace(QStringLiteral("\\"), QStringLiteral("\\\\"));
  return exe;
}

QStringList mnlZeilen(const QString& name, const QString& exe) {
  return {QStringLiteral("(defun c:") + name + QStringLiteral("()"),
          QStringLiteral("  (princ ") + q + QStringLiteral("start kolvane\\n") + q + ")",
          QStringLiteral("  (startapp ") + q + lispPfadVerdoppelt(exe) + q + ")",
          QStringLiteral(")")};
}

QString kurzname() {
  const Settings* s = currentSettings();
  return s ? s->strProgrammKurzname : QStringLiteral("kolvane9");
}

bool dateiErsetzen(const QString& ziel, const QByteArray& inhalt) {
  QSaveFile f(ziel);
  if (!f.open(QIODevice::WriteOnly)) return false;
  f.write(inhalt);
  return f.commit();
}

}  // namespace

bool fctMnlSchreiben(const QString& datei, const QString& name, const QString& exe) {
  return fctHostTextSchreiben(datei, mnlZeilen(name, exe), false);
}

bool fctAcadMenueEinrichten(CadBridge& b) {
  Trace t(QStringLiteral("fctAcadMenueEinrichten"));
  const Settings* s = currentSettings();
  if (!s) return false;
  const QDir prog(s->programDir());
  QDir().mkpath(b.strDatenVerzeichnis);
  // The start command, written anew at each start: the program may have moved.
  const QString startbefehl = b.hostDatei(QStringLiteral("ikolvane.mnl"));
  if (!QFileInfo::exists(prog.filePath(QStringLiteral("kolvane.mnu")))) {
    t.step(QStringLiteral("ikolvane.mnl schreiben"));
    if (!fctMnlSchreiben(startbefehl, kurzname(), b.strExePfad)) {
      subErrorAllgemein(false, QStringLiteral("fctAcadMenueEinrichten"),
                        QStringLiteral("Die Datei kann nicht geschrieben werden: ") + startbefehl, 75);
      return false;
    }
  }
  // The masters.
  t.step(QStringLiteral("Menüdateien kopieren"));
  QFile mnu(prog.filePath(QStringLiteral("ikolvane.mnu")));
  QFile mnl(prog.filePath(QStringLiteral("ikolvane.mnl")));
  if (!mnu.open(QIODevice::ReadOnly) || !mnl.open(QIODevice::ReadOnly)) {
    subErrorAllgemein(false, QStringLiteral("fctAcadMenueEinrichten"),
                      QStringLiteral("Die Menüdatei fehlt: ") +
                          (mnu.isOpen() ? mnl.fileName() : mnu.fileName()),
                      53);
    return false;
  }
  QByteArray kopf;
  QFile kopfDatei(startbefehl);
  if (kopfDatei.open(QIODevice::ReadOnly)) kopf = kopfDatei.readAll();
  QByteArray lisp = mnl.readAll();
  lisp.replace("%KOLVANE%", lispPfadVerdoppelt(b.strExePfad).toUtf8());
  const QString zielMnu = b.hostDatei(QStringLiteral("kolvane.mnu"));
  const QString zielMnl = b.hostDatei(QStringLiteral("kolvane.mnl"));
  if (!dateiErsetzen(zielMnu, mnu.readAll()) || !dateiErsetzen(zielMnl, kopf + lisp)) {
    subErrorAllgemein(false, QStringLiteral("fctAcadMenueEinrichten"),
                      QStringLiteral("Die Menüdateien können nicht kopiert werden: ") +
                          b.strDatenVerzeichnis,
                      75);
    return false;
  }
  return true;
}

bool fctAcadMenueLaden(CadBridge& b) {
  Trace t(QStringLiteral("fctAcadMenueLaden"));
  Host* h = b.acadApp;
  if (!h) return false;
  const int anzahl = h->menuGroupCount();
  t.step(QStringLiteral("intAnzahlMenuegruppen :") + QString::number(anzahl));
  const bool geladen = h->menuGroupLoaded(QStringLiteral("kolvane"));
  h->clearError();
  if (!geladen) {
    t.step(QStringLiteral("acadApp.ActiveDocument.Application.MenuGroups.Load"));
    h->loadMenuGroup(b.hostDatei(QStringLiteral("kolvane.mnu")));
    h->clearError();
  }
  return SendCommand(b, QStringLiteral("(load ") + q + fctLispPfad(b.strDatenVerzeichnis) +
                            QStringLiteral("/kolvane.mnl") + q + QStringLiteral(") "));
}

bool WriteInsertLsp(const QString& strDatei) {
  Trace t(QStringLiteral("WriteInsertLsp"));
  if (QFileInfo::exists(strDatei)) return true;
  const QStringList z{
      QStringLiteral("(defun kolvane_einfuege(pfad x y winkel lay0 atted expl ary)"),
      QString(),
      QStringLiteral("  (setvar") + q + "cmdecho" + q + " 1)",
      QString(),
      QStringLiteral("  (command") + q + "._insert" + q + " pfad pause)",
      QString(),
      QStringLiteral("  (if x"),
      QStringLiteral("    (command x)"),
      QStringLiteral("    (command pause)"),
      QStringLiteral("  );Ende if"),
      QString(),
      QStringLiteral("  (if y"),
      QStringLiteral("    (command y)"),
      QStringLiteral("    (command pause)"),
      QStringLiteral("  );Ende if"),
      QString(),
      QStringLiteral("  (if winkel"),
      QStringLiteral("    (command Winkel)"),
      QStringLiteral("    (command pause)"),
      QStringLiteral("  );Ende if"),
      QStringLiteral("           "),
      QStringLiteral("  (if lay0"),
      QStringLiteral("    (command ") + q + "._change" + q + " (entlast) " + q + " " + q + " " + q +
          "_prop" + q + " " + q + "_la" + q + " " + q + "0" + q + " " + q + " " + q + ")",
      QStringLiteral("  );Ende if"),
      QString(),
      QStringLiteral("  (if atted"),
      QStringLiteral("    (command ") + q + "._attedit" + q + " (entlast))",
      QStringLiteral("  );Ende if"),
      QString(),
      QStringLiteral("  (if expl"),
      QStringLiteral("    (command ") + q + "._explode" + q + " (entlast))",
      QStringLiteral("  );Ende if"),
      QString(),
      QStringLiteral("  (if ary"),
      QStringLiteral("    (command ") + q + "._array" + q + " (entlast))",
      QStringLiteral("  );Ende if"),
      QString(),
      QStringLiteral(");Ende defun")};
  if (!fctHostTextSchreiben(strDatei, z, false)) {
    subErrorAllgemein(false, QStringLiteral("WriteInsertLsp"),
                      QStringLiteral("Die Datei kann nicht geschrieben werden: ") + strDatei, 75);
    return false;
  }
  return true;
}

bool fctLispVariablenZuordnen(CadBridge& b, const std::optional<QStringList>& werteM0bisM9,
                              const QString& strBlockName, int& intFehler) {
  Trace t(QStringLiteral("fctLispVariablenZuordnen"));
  intFehler = 0;
  const Settings* s = currentSettings();
  if (!s || s->setup.lonLispVarUebergeben != 1 || !werteM0bisM9) return false;
  for (int i = 0; i < 10; ++i) {
    QString wert = werteM0bisM9->value(i);
    // Lisp reads a backslash as an escape; only the quotes are guarded.
    wert.replace(QString(q), QStringLiteral("\\") + q);
    t.step(QStringLiteral("bver_dat") + QString::number(i + 1));
    if (!SendCommand(b, QStringLiteral("(setq bver_dat") + QString::number(i + 1) + " " + q + wert +
                            q + ")" + "\r"))
      ++intFehler;
  }
  if (!SendCommand(b, QStringLiteral("(setq blkname ") + q + strBlockName + q + ")" + "\r"))
    ++intFehler;
  return intFehler == 0;
}

bool fctLmanStartbefehlEintragen(CadBridge& b) {
  Trace t(QStringLiteral("fctLmanStartbefehlEintragen"));
  if (labels().fctBeschriftFrmZuordnen(QStringLiteral("InAcadLspEintragen")) != QLatin1String("1"))
    return false;
  const QStringList aryEintrgaAcadLsp{
      QStringLiteral("(defun c:lman( / )"),
      QStringLiteral("  (startapp ") + q + lispPfadVerdoppelt(b.strExePfad) + q + ")",
      QStringLiteral(")")};
  const QString datei = fctDateiImAcadSuchpfad(b, QStringLiteral("lman.lsp"));
  if (!datei.isEmpty()) {
    const QFileInfo fi(datei);
    const QString sLmanLspOld = fi.dir().filePath(fi.completeBaseName() + QStringLiteral("old.lsp"));
    t.step(QStringLiteral("sLmanLspOld: ") + sLmanLspOld);
    if (!QFileInfo::exists(sLmanLspOld)) QFile::rename(datei, sLmanLspOld);
    if (!fctHostTextSchreiben(datei,
                              QStringList{QString(), QStringLiteral(";;Hesmer Datenwerk")} +
                                  aryEintrgaAcadLsp,
                              false)) {
      subErrorAllgemein(false, QStringLiteral("fctLmanStartbefehlEintragen"),
                        QStringLiteral("Die Datei kann nicht geschrieben werden: ") + datei, 75);
      return false;
    }
  }
  SendCommand(b, QStringLiteral("(load ") + q + QStringLiteral("lman.lsp") + q + QStringLiteral(") "));
  if (b.EventActivX) b.EventActivX->ActiveDocumentWithEventSetzen();
  return true;
}

}  // namespace kolvane

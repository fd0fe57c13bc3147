#include "slideaufnahme.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>

#include "cadbridge.h"
#include "commandchannel.h"
#include "diagnostics.h"
#include "layout.h"
#include "paths.h"

namespace kolvane {

namespace {

double abstand(double p, double q, double pZ1x) {
  if (p > 0 && q > 0) return p > q ? p - q : (q > p ? q - p : 0.0);
  // The first corner's X on purpose on both axes: a frame whose second corner
  // lies on an axis takes its size from there.
  if (p > 0 && q == 0) return pZ1x - q;
  if (p == 0 && q > 0) return q - p;
  return p > q ? p - q : (q > p ? q - p : 0.0);
}

}  // namespace

QString GroesseRoterKreisFuerEinfuegepktBestimmen(const HostPoint& pZ1, const HostPoint& pZ2) {
  Trace t(QStringLiteral("Kreisdurchmesser berechnen"));
  const double x = abstand(pZ1[0], pZ2[0], pZ1[0]);
  const double y = abstand(pZ1[1], pZ2[1], pZ1[0]);
  double durchmesser = 0;
  if (x * 0.6 > y)
    durchmesser = x * 0.1;
  else if (x * 0.6 < y)
    durchmesser = y * 0.16;
  return fctZahlFuerAcad(durchmesser);
}

QString fctDonutBefehl(const QString& durchmesser, const HostPoint& punkt) {
  std::array<QString, 3> s;
  KommaPunktErsetzen(punkt, s);
  return QStringLiteral("._donut 0 ") + durchmesser + "\r" + s[0] + "," + s[1] + "," + s[2] +
         "\r\r";
}

QString fctRotFaerbenBefehl() { return QStringLiteral("._change (entlast)  _prop _col 1  "); }

QString fctLetztesLoeschenBefehl() { return QStringLiteral("._erase (entlast)  "); }

QString fctMslideBefehl(const QString& slideDatei) {
  return QStringLiteral("._mslide ") + slideDatei + "\r";
}

QString fctMslideErsetzenBefehl(const QString& slideDatei) {
  return fctMslideBefehl(slideDatei) + QStringLiteral("_y\r");
}

QString fctShellBefehl(const QString& skript) {
  return QStringLiteral("._shell \"") + skript + QStringLiteral("\"\r");
}

QString fctTempSlide(const QString& temp, const QString& slideName) {
  return QDir(temp).filePath(slideName + QStringLiteral(".sld"));
}

bool DialisteSchreiben(const QString& temp, const QStringList& slideNamen) {
  Trace t(QStringLiteral("DialisteSchreiben"));
  if (!fctFolderExistAnlegen(temp)) return false;
  QString text;
  for (const QString& name : slideNamen) text += fctTempSlide(temp, name) + u'\n';
  return WriteIntorTxtFile(QDir(temp).filePath(QStringLiteral("dialist.txt")), text, false);
}

QString fctSlidelibProgramm(const QString& programmVerzeichnis) {
  const QString name = QStringLiteral("slidelib");
  for (const QString& dir : {programmVerzeichnis, QCoreApplication::applicationDirPath()}) {
    const QString p = QDir(dir).filePath(name);
    if (QFileInfo(p).isExecutable()) return p;
  }
  const QString imPfad = QStandardPaths::findExecutable(name);
  return imPfad.isEmpty() ? QDir(programmVerzeichnis).filePath(name) : imPfad;
}

QString fctSlidelibSkriptSchreiben(const QString& temp, const QString& programmVerzeichnis,
                                   const QString& slideLibDateiName) {
  Trace t(QStringLiteral("SlideLib erstellen"));
  const QString skript = QDir(temp).filePath(QStringLiteral("Slidelib.sh"));
  // The tool's path is quoted; the library's and the list's are not, so the
  // temporary directory holds no blank.
  const QString zeile = u'"' + fctSlidelibProgramm(programmVerzeichnis) +
                        QStringLiteral("\" ") + QDir(temp).filePath(slideLibDateiName) +
                        QStringLiteral(" <") + QDir(temp).filePath(QStringLiteral("dialist.txt")) +
                        u'\n';
  if (!WriteIntorTxtFile(skript, zeile, false)) return {};
  QFile f(skript);
  if (!f.setPermissions(f.permissions() | QFileDevice::ExeOwner | QFileDevice::ExeUser)) {
    subErrorAllgemein(false, QStringLiteral("fctSlidelibSkriptSchreiben"),
                      QStringLiteral("Slidelib.sh kann nicht ausführbar gemacht werden: ") + skript);
    return {};
  }
  return skript;
}

bool SlidesErstellen(CadBridge& b, const QString& temp, const HostPoint& einfuegepunkt,
                     const QString& slideName, const QString& ringAussenDurchmesser) {
  Trace t(QStringLiteral("SlidesErstellen"));
  if (!SendCommand(b, fctDonutBefehl(ringAussenDurchmesser, einfuegepunkt))) return false;
  if (!SendCommand(b, fctRotFaerbenBefehl())) return false;
  if (!fctFolderExistAnlegen(temp)) return false;
  return SendCommand(b, fctMslideBefehl(fctTempSlide(temp, slideName)));
}

bool fctAufDateiWarten(const QString& datei, int sekunden) {
  QElapsedTimer uhr;
  uhr.start();
  for (;;) {
    const QFileInfo fi(datei);
    if (fi.exists() && fi.size() > 0) return true;
    if (uhr.elapsed() >= qint64(sekunden) * 1000) return false;
    DoEvents();
    QThread::msleep(20);
  }
}

}  // namespace kolvane

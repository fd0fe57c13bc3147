#include "blockname.h"

#include <QDir>

#include "diagnostics.h"
#include "layout.h"

namespace kolvane {

namespace {

QString ohneBlanksAmEnde(QString s) {
  while (s.endsWith(' ')) s.chop(1);
  return s;
}

QString ersetzen(QString s, const QString& zeichen) {
  for (QChar c : zeichen) s.replace(c, QLatin1Char('_'));
  return s;
}

}  // namespace

QString fctBlockNameRegeln(const QString& strBlockName) {
  return ersetzen(ohneBlanksAmEnde(strBlockName), QStringLiteral(",/\": ="));
}

QString fctBlockNameRegelnLT(const QString& strBlockName) {
  return ersetzen(ohneBlanksAmEnde(strBlockName), QStringLiteral(", ="));
}

QString fctBlockzeichnungKopieren(const QString& strDatei, const QString& verzeichnis,
                                  const QString& name) {
  Trace t(QStringLiteral("fctBlockzeichnungKopieren"));
  const QString ziel = QDir(verzeichnis).filePath(name + QStringLiteral(".dwg"));
  t.step(ziel);
  if (!CopyAFile(strDatei, ziel)) return {};
  return ziel;
}

}  // namespace kolvane

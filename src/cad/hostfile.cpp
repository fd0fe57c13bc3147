#include "hostfile.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include "codepage.h"

namespace kolvane {

bool fctHostTextSchreiben(const QString& datei, const QStringList& zeilen, bool crlf) {
#ifdef Q_OS_WIN
  Q_UNUSED(crlf);
  const QString ende = QStringLiteral("\r\n");
#else
  const QString ende = crlf ? QStringLiteral("\r\n") : QStringLiteral("\n");
#endif
  QString text;
  for (const QString& z : zeilen) text += z + ende;
#ifdef Q_OS_WIN
  const QByteArray bytes = toWindows1252(text);
#else
  const QByteArray bytes = text.toUtf8();
#endif
  QDir().mkpath(QFileInfo(datei).absolutePath());
  QSaveFile f(datei);
  if (!f.open(QIODevice::WriteOnly)) return false;
  f.write(bytes);
  return f.commit();
}

QString fctLispPfad(const QString& pfad) {
  QString p = pfad;
  p.replace('\\', '/');
  return p;
}

}  // namespace kolvane

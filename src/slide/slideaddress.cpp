#include "slideaddress.h"

#include <QDir>
#include <QFileInfo>

namespace kolvane {

SlideAddress parseSlideAddress(const QString& text) {
  if (text.endsWith(QLatin1Char(')'))) {
    const qsizetype open = text.lastIndexOf(QLatin1Char('('));
    if (open > 0) return {text.left(open), text.mid(open + 1, text.size() - open - 2)};
  }
  return {text, {}};
}

QString nativeSlidePath(const QString& path) {
#ifdef Q_OS_WIN
  return path;
#else
  QString p = path;
  return p.replace(QLatin1Char('\\'), QLatin1Char('/'));
#endif
}

namespace {

QString findIgnoringCase(const QString& path, int depth) {
  if (QFileInfo::exists(path)) return path;
  const QFileInfo fi(path);
  const QString name = fi.fileName();
  const QString parent = fi.path();
  if (name.isEmpty() || parent == path || depth > 32) return {};
  const QString realParent = findIgnoringCase(parent, depth + 1);
  if (realParent.isEmpty()) return {};
  const QDir dir(realParent);
  const QStringList entries =
      dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
  for (const QString& entry : entries)
    if (entry.compare(name, Qt::CaseInsensitive) == 0) return dir.filePath(entry);
  return {};
}

}  // namespace

QString findFileIgnoringCase(const QString& path) {
  if (path.isEmpty()) return {};
  const QString found = findIgnoringCase(nativeSlidePath(path), 0);
  return !found.isEmpty() && QFileInfo(found).isFile() ? found : QString();
}

}  // namespace kolvane

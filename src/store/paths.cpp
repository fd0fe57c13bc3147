#include "paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "diagnostics.h"

namespace kolvane {

namespace {

bool istTrenner(QChar c) { return c == u'/' || c == u'\\'; }

qsizetype letzterTrenner(const QString& s) {
  for (qsizetype i = s.size() - 1; i >= 0; --i)
    if (istTrenner(s[i])) return i;
  return -1;
}

// Whether the permission bits let this process write (the read-only
// attribute of the Windows edition); root is not exempt from it here.
bool modusErlaubtSchreiben(const QString& pfad) {
#ifdef Q_OS_UNIX
  struct stat st;
  if (::stat(QFile::encodeName(pfad).constData(), &st) != 0) return true;
  const uid_t uid = ::geteuid();
  if (uid == 0) return (st.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0;
  if (uid == st.st_uid) return (st.st_mode & S_IWUSR) != 0;
  gid_t groups[256];
  const int n = ::getgroups(256, groups);
  bool inGroup = ::getegid() == st.st_gid;
  for (int i = 0; i < n && !inGroup; ++i) inGroup = groups[i] == st.st_gid;
  if (inGroup) return (st.st_mode & S_IWGRP) != 0;
  return (st.st_mode & S_IWOTH) != 0;
#else
  return QFileInfo(pfad).isWritable();
#endif
}

}  // namespace

QChar nativerTrenner() { return QDir::separator(); }

QString fctNativerPfad(const QString& pfad) {
  QString s = pfad;
#ifdef Q_OS_WIN
  s.replace(u'/', u'\\');
#else
  s.replace(u'\\', u'/');
#endif
  return s;
}

QString fctGespeicherterPfad(const QString& pfad) {
  QString s = pfad;
  s.replace(u'/', u'\\');
  return s;
}

bool fctIstAbsoluterPfad(const QString& pfad) {
  const QString s = pfad.trimmed();
  if (s.isEmpty()) return false;
  if (istTrenner(s[0])) return true;
  return s.size() >= 3 && s[0].isLetter() && s[0].unicode() < 128 && s[1] == u':' &&
         istTrenner(s[2]);
}

bool fctPfadVollAufteilen(const QString& pfad, QString& laufwerk, QString& verzeichnis,
                          QString& name, QString& endung) {
  laufwerk.clear();
  verzeichnis.clear();
  name.clear();
  endung.clear();
  const QString s = fctNativerPfad(pfad.trimmed());
  const QChar sep = nativerTrenner();
  qsizetype rest = 0;
  if (s.size() >= 2 && istTrenner(pfad.trimmed()[0]) && istTrenner(pfad.trimmed()[1])) {
    // A share: \\server\share\ is the drive.
    const qsizetype server = s.indexOf(sep, 2);
    if (server <= 2) return false;
    const qsizetype share = s.indexOf(sep, server + 1);
    if (share == server + 1) return false;
    rest = share < 0 ? s.size() : share + 1;
    laufwerk = s.left(rest);
    if (share < 0) laufwerk += sep;
  } else if (s.size() >= 3 && s[0].isLetter() && s[0].unicode() < 128 && s[1] == u':' &&
             istTrenner(s[2])) {
    laufwerk = s.left(3);
    rest = 3;
  } else if (!s.isEmpty() && istTrenner(s[0])) {
    laufwerk = QString(sep);
    rest = 1;
  } else {
    return false;
  }
  const qsizetype last = letzterTrenner(s);
  if (last >= rest) verzeichnis = s.mid(rest, last - rest + 1);
  const QString datei = s.mid(qMax(last + 1, rest));
  if (datei.contains(u':')) return false;
  const qsizetype punkt = datei.lastIndexOf(u'.');
  if (punkt > 0) {
    name = datei.left(punkt);
    endung = datei.mid(punkt);
  } else {
    name = datei;
  }
  return true;
}

void fctPfadAufteilen(const QString& pfad, QString& laufwerk, QString& verzeichnis, QString& name,
                      QString& endung) {
  const QString s = fctNativerPfad(pfad);
  const qsizetype last = letzterTrenner(s);
  laufwerk = s.left(3);
  verzeichnis = last >= 3 ? s.mid(3, last - 3 + 1) : QString();
  endung = s.right(4);
  const qsizetype nameStart = qMax<qsizetype>(last + 1, 3);
  name = s.mid(nameStart, qMax<qsizetype>(0, s.size() - 4 - nameStart));
}

QString fctPfadOhneDatei(const QString& pfad) {
  const QString s = fctNativerPfad(pfad);
  return s.left(letzterTrenner(s) + 1);
}

bool fctReadOnlyMitVerzeichnis(const QString& verzeichnis) {
  Trace t(QStringLiteral("fctReadOnlyMitVerzeichnis"));
  const QString dir = fctNativerPfad(verzeichnis);
  const QString test = fctPfadZusammenfuegen(dir, QStringLiteral("Test.txt"));
  bool geschrieben = false;
  if (QFileInfo::exists(test)) {
    // A file of that name belongs to someone: test with a file of our own.
    QTemporaryFile f(fctPfadZusammenfuegen(dir, QStringLiteral("Test-XXXXXX.txt")));
    geschrieben = f.open() && f.write("TEst") == 4 && f.flush();
  } else {
    {
      QFile f(test);
      if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        geschrieben = f.write("TEst") == 4 && f.flush();
    }
    QFile::remove(test);
  }
  if (!geschrieben || !modusErlaubtSchreiben(dir)) return true;
  const QString db = fctDateiFinden(fctPfadZusammenfuegen(dir, QStringLiteral("dbKolvane.mdb")));
  return QFileInfo::exists(db) && !modusErlaubtSchreiben(db);
}

QString fctPfadAuf34ZeichenKuerzen(const QString& pfad) {
  if (pfad.size() < 35) return pfad;
  QString rechts = pfad.right(32);
  for (qsizetype i = 0; i < rechts.size(); ++i) {
    if (istTrenner(rechts[i])) {
      rechts = rechts.mid(i);
      break;
    }
  }
  return pfad.left(3) + QStringLiteral("...") + rechts;
}

QString fctBackslashAmEndeAnfuegen(const QString& pfad) {
  const QString s = fctNativerPfad(pfad);
  if (!s.isEmpty() && istTrenner(s.back())) return s;
  return s + nativerTrenner();
}

bool fctMkDirAlle(const QString& pfad) {
  const QString s = fctNativerPfad(pfad);
  QDir().mkpath(s);
  return QFileInfo(s).isDir();
}

QString fctPfadZusammenfuegen(const QString& a, const QString& b) {
  QString links = fctNativerPfad(a);
  QString rechts = fctNativerPfad(b);
  while (links.size() > 1 && istTrenner(links.back())) links.chop(1);
  while (!rechts.isEmpty() && istTrenner(rechts.front())) rechts.remove(0, 1);
  if (links.isEmpty()) return rechts;
  if (istTrenner(links.back())) return links + rechts;  // the root itself
  return links + nativerTrenner() + rechts;
}

QString fctGetAbsolutPath(const QString& pfad) {
  return fctNativerPfad(QFileInfo(fctNativerPfad(pfad)).absoluteFilePath());
}

bool UNCPathFromNetworkDrive(const QString& laufwerk, QString& unc) {
  Q_UNUSED(laufwerk);
  unc.clear();
  return false;
}

int fctNetzlaufwerkeAuslesen(QStringList& laufwerke, QStringList& uncs) {
  laufwerke = QStringList{QStringLiteral("0")};
  uncs = QStringList{QStringLiteral("0")};
  return 0;
}

QString fctDateiFinden(const QString& pfad) {
  QString s = fctNativerPfad(pfad);
  while (!s.isEmpty() && s.front().isSpace()) s.remove(0, 1);
  if (s.isEmpty() || QFileInfo::exists(s)) return s;
  // Walk down from the deepest part that exists, matching each missing part
  // without regard to case; listings are sorted by name.
  const QChar sep = nativerTrenner();
  const QStringList teile = s.split(sep);
  QString bisher;
  int i = 0;
  if (s.startsWith(sep)) {
    bisher = QString(sep);
    i = 1;
  } else if (teile.size() > 1) {
    bisher = teile[0] + sep;
    i = 1;
  }
  for (; i < teile.size(); ++i) {
    const QString& teil = teile[i];
    if (teil.isEmpty()) continue;
    QString naechster = bisher.isEmpty() ? teil
                                         : (bisher.endsWith(sep) ? bisher + teil : bisher + sep + teil);
    if (!QFileInfo::exists(naechster)) {
      const QStringList eintraege =
          QDir(bisher.isEmpty() ? QStringLiteral(".") : bisher)
              .entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                         QDir::Name);
      bool gefunden = false;
      for (const QString& e : eintraege) {
        if (e.compare(teil, Qt::CaseInsensitive) == 0) {
          naechster = bisher.isEmpty() ? e : (bisher.endsWith(sep) ? bisher + e : bisher + sep + e);
          gefunden = true;
          break;
        }
      }
      if (!gefunden) return s;
    }
    bisher = naechster;
  }
  return bisher;
}

bool fctDateiExist(const QString& pfad) {
  const QString s = fctDateiFinden(pfad);
  return !s.isEmpty() && QFileInfo::exists(s);
}

}  // namespace kolvane

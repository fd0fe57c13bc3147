#include "layout.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include "connection.h"
#include "diagnostics.h"
#include "paths.h"
#include "prefix.h"

namespace kolvane {

namespace {

bool sameFile(const QString& a, const QString& b) {
  const QFileInfo fa(a), fb(b);
  if (fa.exists() && fb.exists()) return fa.canonicalFilePath() == fb.canonicalFilePath();
  return QDir::cleanPath(fa.absoluteFilePath()) == QDir::cleanPath(fb.absoluteFilePath());
}

bool copyTree(const QString& von, const QString& nach) {
  if (!QDir().mkpath(nach)) return false;
  QDir quelle(von);
  for (const QFileInfo& e :
       quelle.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name)) {
    const QString ziel = QDir(nach).filePath(e.fileName());
    if (e.isDir()) {
      if (!copyTree(e.filePath(), ziel)) return false;
    } else {
      QFile::remove(ziel);
      if (!QFile::copy(e.filePath(), ziel)) return false;
    }
  }
  return true;
}

}  // namespace

bool DeleteAFile(const QString& pfad) {
  Trace t(QStringLiteral("DeleteAFile"));
  const QString datei = fctDateiFinden(pfad);
  t.step(QStringLiteral("DeleteFile ") + datei);
  const QFileInfo fi(datei);
  if (!fi.exists() && !fi.isSymLink()) return true;
  if (QFile::remove(datei)) return true;
  t.step(QStringLiteral("DeleteFile fehlgeschlagen: ") + datei);
  return false;
}

bool MoveAFile(const QString& von, const QString& nach) {
  Trace t(QStringLiteral("MoveAFile"));
  const QString quelle = fctDateiFinden(von);
  const QString ziel = fctNativerPfad(nach);
  t.step(quelle + QStringLiteral(" -> ") + ziel);
  if (sameFile(quelle, ziel)) return true;
  if (!QFileInfo(quelle).isFile()) {
    subErrorAllgemein(false, QStringLiteral("MoveAFile"),
                      QStringLiteral("Die Datei %1 ist nicht vorhanden.").arg(quelle));
    return false;
  }
  if (QFileInfo::exists(ziel) && !QFile::remove(ziel)) {
    subErrorAllgemein(false, QStringLiteral("MoveAFile"),
                      QStringLiteral("Die Datei %1 kann nicht überschrieben werden.").arg(ziel));
    return false;
  }
  if (QFile::rename(quelle, ziel)) return true;
  // Another file system: copy, then delete the source.
  if (QFile::copy(quelle, ziel) && QFile::remove(quelle)) return true;
  subErrorAllgemein(false, QStringLiteral("MoveAFile"),
                    QStringLiteral("Die Datei %1 kann nicht nach %2 verschoben werden.")
                        .arg(quelle, ziel));
  return false;
}

bool CopyAFile(const QString& von, const QString& nach) {
  Trace t(QStringLiteral("CopyAFile"));
  const QString quelle = fctDateiFinden(von);
  const QString ziel = fctNativerPfad(nach);
  t.step(quelle + QStringLiteral(" -> ") + ziel);
  if (sameFile(quelle, ziel)) return false;
  if (!QFileInfo(quelle).isFile()) return false;
  if (QFileInfo::exists(ziel) && !QFile::remove(ziel)) return false;
  return QFile::copy(quelle, ziel);
}

bool CopyAFolder(const QString& von, const QString& nach) {
  Trace t(QStringLiteral("CopyAFolder"));
  const QString quelle = fctDateiFinden(von);
  t.step(quelle);
  return QFileInfo(quelle).isDir() && copyTree(quelle, fctNativerPfad(nach));
}

bool DeleteAFolder(const QString& pfad) {
  Trace t(QStringLiteral("DeleteAFolder"));
  const QString dir = fctDateiFinden(pfad);
  t.step(dir);
  if (!QFileInfo(dir).isDir()) return false;
  return QDir(dir).removeRecursively();
}

bool MoveAFolder(const QString& von, const QString& nach) {
  Trace t(QStringLiteral("MoveAFolder"));
  const QString quelle = fctDateiFinden(von);
  const QString ziel = fctNativerPfad(nach);
  t.step(quelle + QStringLiteral(" -> ") + ziel);
  if (!QFileInfo(quelle).isDir() || QFileInfo::exists(ziel)) return false;
  if (QDir().rename(quelle, ziel)) return true;
  return copyTree(quelle, ziel) && QDir(quelle).removeRecursively();
}

QStringList fctSearchFilesAry(const QString& verzeichnis, const QString& endung,
                              bool unterverzeichnisse) {
  Trace t(QStringLiteral("fctSearchFilesAry"));
  const QString dir = fctDateiFinden(verzeichnis);
  QStringList out;
  QDirIterator it(dir, QDir::Files | QDir::Hidden,
                  unterverzeichnisse ? QDirIterator::Subdirectories : QDirIterator::NoIteratorFlags);
  const bool alle = endung.isEmpty() || endung == QLatin1String("*") || endung == QLatin1String("*.*");
  const QString ext = endung.startsWith(u'.') ? endung : u'.' + endung;
  while (it.hasNext()) {
    const QString f = it.next();
    if (!alle && !f.endsWith(ext, Qt::CaseInsensitive)) continue;
    out << QDir(dir).relativeFilePath(f);
  }
  out.sort(Qt::CaseInsensitive);
  return out;
}

QStringList SearchDWGFiles(const QString& verzeichnis, const QString& liste) {
  Trace t(QStringLiteral("SearchDWGFiles"));
  const QStringList dateien = fctSearchFilesAry(verzeichnis, QStringLiteral(".dwg"), false);
  QString text;
  for (const QString& d : dateien) {
    t.step(QStringLiteral("For Eech fsoFile"));
    text += d + u'\n';
  }
  if (!liste.isEmpty()) WriteIntorTxtFile(liste, text, false);
  return dateien;
}

bool fctFolderExist(const QString& pfad) { return QFileInfo(fctDateiFinden(pfad)).isDir(); }

bool fctFolderExistAnlegen(const QString& pfad) {
  return fctFolderExist(pfad) || fctMkDirAlle(pfad);
}

bool fctFolderExistMitDatei(const QString& pfad) {
  const QString s = fctNativerPfad(pfad);
  const QString letzter = s.section(nativerTrenner(), -1);
  return fctFolderExist(letzter.contains(u'.') ? fctPfadOhneDatei(s) : s);
}

QString fctFolderExistRueckgabe(const QString& pfad) {
  const QString s = fctNativerPfad(pfad);
  const QString letzter = s.section(nativerTrenner(), -1);
  const QString dir = letzter.contains(u'.') ? fctPfadOhneDatei(s) : s;
  return fctFolderExist(dir) ? fctBackslashAmEndeAnfuegen(dir) : QString();
}

QStringList fctDateiNameAuslesen(const QString& verzeichnis) {
  return QDir(fctDateiFinden(verzeichnis)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

QString fctDateiEndungUmbenennen(const QString& pfad, const QString& endung) {
  return pfad.left(qMax<qsizetype>(0, pfad.size() - 4)) + endung;
}

bool WriteIntorTxtFile(const QString& pfad, const QString& text, bool anhaengen) {
  Trace t(QStringLiteral("WriteIntorTxtFile"));
  QFile f(fctNativerPfad(pfad));
  if (!f.open(QIODevice::WriteOnly | (anhaengen ? QIODevice::Append : QIODevice::Truncate)))
    return false;
  return f.write(text.toUtf8()) >= 0;
}

// --- paths of a library's files ------------------------------------------------------

QString fctBibliotheksVerzeichnis(const QString& datenbank) { return fctPfadOhneDatei(datenbank); }

QString fctSlideLibEintrag(const QString& ordnerNr, const QString& block,
                           const QString& slideEndung) {
  return ordnerNr + u'\\' + block + slideEndung;
}

QString fctSlideLibPfad(const QString& bibliothek, const QString& slideLib) {
  if (fctIstAbsoluterPfad(slideLib)) return fctDateiFinden(slideLib);
  return fctDateiFinden(fctPfadZusammenfuegen(bibliothek, slideLib));
}

QString fctSlidePfad(const QString& bibliothek, const QString& ordnerNr, const QString& block,
                     int ansicht, const QString& slideEndung) {
  const QString name = block + (ansicht > 0 ? QString::number(ansicht) : QString()) + slideEndung;
  return fctDateiFinden(fctPfadZusammenfuegen(fctPfadZusammenfuegen(bibliothek, ordnerNr), name));
}

QString fctBlockDwgPfad(const QString& bibliothek, const QString& ordnerNr, const QString& block,
                        int ansicht) {
  return fctDateiFinden(fctPfadZusammenfuegen(
      bibliothek, ordnerNr + u'/' + QStringLiteral("Block/") + block + QString::number(ansicht) +
                      QStringLiteral(".dwg")));
}

QString fctVariantenListePfad(const QString& bibliothek, const QString& ordnerNr,
                              const QString& block, int ansicht) {
  return fctDateiFinden(fctPfadZusammenfuegen(
      bibliothek, ordnerNr + u'/' + block + QString::number(ansicht) + QStringLiteral(".dat")));
}

QString fctVariaVerzeichnis(const QString& bibliothek, const QString& ordnerNr) {
  return fctBackslashAmEndeAnfuegen(
      fctDateiFinden(fctPfadZusammenfuegen(bibliothek, ordnerNr + QStringLiteral("/Block/Varia"))));
}

QString fctSlideAdresse(const QString& datei, const QString& slideName) {
  return slideName.isEmpty() ? datei : datei + u'(' + slideName + u')';
}

QString fctVariaBlockName(const QString& bibliothek, const QString& ordnerNr,
                          const QString& block, int ansicht) {
  Trace t(QStringLiteral("fctVariaBlockName"));
  QStringList prefixe;
  if (!fctPrefixEinlesen(kPrefixMindestAnzahl - 1, prefixe)) return {};
  const QString varia = fctVariaVerzeichnis(bibliothek, ordnerNr);
  const QString rest = block.right(4) + QString::number(ansicht) + QStringLiteral(".dwg");
  for (const QString& p : prefixe) {
    const QString name = p + rest;
    if (!fctDateiExist(varia + name)) return name;
  }
  subErrorAllgemein(false, QStringLiteral("fctVariaBlockName"),
                    QStringLiteral("Kein freier Name für eine Variante von %1.").arg(block));
  return {};
}

namespace {

// Step 4 of the deletion for one view: every variant drawing from suffix index
// 0 on while its file is there, each with its row.
bool variantenLoeschen(Connection& conn, const QString& varia, const QString& block, int ansicht,
                       const QStringList& prefixe) {
  bool ok = true;
  const QString rest = block.right(4) + QString::number(ansicht) + QStringLiteral(".dwg");
  for (const QString& p : prefixe) {
    const QString name = p + rest;
    if (!fctDateiExist(varia + name)) break;
    ok = DeleteAFile(varia + name) && ok;
    if (conn.isOpen() &&
        !conn.execute(QStringLiteral("DELETE FROM tblVariationBloecke WHERE BlockDateiName LIKE '") +
                      name + u'\'')) {
      subErrorAllgemein(false, QStringLiteral("DateienBlockLoeschen"), conn.error());
      ok = false;
    }
  }
  return ok;
}

}  // namespace

bool DateienBlockLoeschen(Connection& conn, const QString& bibliothek, const QString& slideLib,
                          const QString& block) {
  Trace t(QStringLiteral("DateienBlockLoeschen"));
  const QString slide = fctSlideLibPfad(bibliothek, slideLib);
  const QString s = slide.left(slide.size() - 4);
  const QString endung = slide.right(4);
  const QString ordner = fctPfadOhneDatei(s);
  bool ok = true;
  // 1. The slide files of every view.
  t.step(QStringLiteral("Slides"));
  ok = DeleteAFile(slide) && ok;
  for (int v = 1; v <= 4; ++v) ok = DeleteAFile(s + QString::number(v) + endung) && ok;
  // 2. The variant lists.
  t.step(QStringLiteral("Variantenlisten"));
  for (int v = 0; v <= 4; ++v) ok = DeleteAFile(s + QString::number(v) + QStringLiteral(".dat")) && ok;
  // 3. The drawings.
  t.step(QStringLiteral("Zeichnungen"));
  const QString blockDir = fctPfadZusammenfuegen(ordner, QStringLiteral("Block"));
  for (int v = 0; v <= 4; ++v)
    ok = DeleteAFile(fctPfadZusammenfuegen(blockDir, block + QString::number(v) + ".dwg")) && ok;
  // 4. Variant drawings with their rows.
  t.step(QStringLiteral("Varianten"));
  const QString varia =
      fctBackslashAmEndeAnfuegen(fctDateiFinden(fctPfadZusammenfuegen(blockDir, QStringLiteral("Varia"))));
  if (!QFileInfo(varia).isDir()) return ok;
  QStringList prefixe;
  if (!fctPrefixEinlesen(kPrefixMindestAnzahl - 1, prefixe)) return false;
  for (int v = 0; v <= 4; ++v) ok = variantenLoeschen(conn, varia, block, v, prefixe) && ok;
  return ok;
}

bool DateienBlockLoeschenEinzelenAnsicht(Connection& conn, const QString& bibliothek,
                                         const QString& slideLib, const QString& block,
                                         int ansicht) {
  Trace t(QStringLiteral("DateienBlockLoeschenEinzelenAnsicht"));
  const QString slide = fctSlideLibPfad(bibliothek, slideLib);
  const QString s = slide.left(slide.size() - 4);
  const QString ordner = fctPfadOhneDatei(s);
  const QString v = QString::number(ansicht);
  const QString stamm = ansicht == 0 ? s : s + v;
  bool ok = true;
  ok = DeleteAFile(stamm + QStringLiteral(".slb")) && ok;
  ok = DeleteAFile(stamm + QStringLiteral(".sld")) && ok;
  ok = DeleteAFile(s + v + QStringLiteral(".dat")) && ok;
  const QString blockDir = fctPfadZusammenfuegen(ordner, QStringLiteral("Block"));
  ok = DeleteAFile(fctPfadZusammenfuegen(blockDir, block + v + QStringLiteral(".dwg"))) && ok;
  const QString varia =
      fctBackslashAmEndeAnfuegen(fctDateiFinden(fctPfadZusammenfuegen(blockDir, QStringLiteral("Varia"))));
  if (!QFileInfo(varia).isDir()) return ok;
  QStringList prefixe;
  if (!fctPrefixEinlesen(kPrefixMindestAnzahl - 1, prefixe)) return false;
  return variantenLoeschen(conn, varia, block, ansicht, prefixe) && ok;
}

}  // namespace kolvane

#include "neuanlagejournal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "connection.h"
#include "diagnostics.h"
#include "layout.h"

namespace kolvane {

namespace {

const QString kRoutine = QStringLiteral("fctNeuanlageAufraeumen");

bool zeileSteht(Connection& c, const NeuanlageJournal& j) {
  if (j.variante)
    return c.scalar(QStringLiteral("SELECT COUNT(*) FROM tblVariationBloecke WHERE BlockDateiName = ?"),
                    {j.variaName})
               .toInt() > 0;
  const QString ax = QStringLiteral("AX") + QString::number(j.ansicht);
  if (j.ansicht == 0)
    return c.scalar(QStringLiteral("SELECT COUNT(*) FROM tblBlockInfo WHERE Block = ?"), {j.block})
               .toInt() > 0;
  return c.scalar(QStringLiteral("SELECT COUNT(*) FROM tblBlockInfo WHERE Block = ? AND ") + ax +
                      QStringLiteral(" IS NOT NULL"),
                  {j.block})
             .toInt() > 0;
}

bool zeileEntfernen(Connection& c, const NeuanlageJournal& j) {
  if (j.variante)
    return c.execute(QStringLiteral("DELETE FROM tblVariationBloecke WHERE BlockDateiName = ?"),
                     {j.variaName});
  if (j.ansicht == 0)
    return c.execute(QStringLiteral("DELETE FROM tblBlockInfo WHERE Block = ?"), {j.block});
  // A further view goes as a deleted view does: its columns become null.
  QStringList sets;
  sets << QStringLiteral("BlkName") + QString::number(j.ansicht) + QStringLiteral(" = NULL");
  for (char p = 'A'; p <= 'F'; ++p)
    for (char a : {'X', 'Y', 'Z'})
      sets << QStringLiteral("%1%2%3 = NULL").arg(QChar(p)).arg(QChar(a)).arg(j.ansicht);
  return c.execute(QStringLiteral("UPDATE tblBlockInfo SET ") + sets.join(QStringLiteral(", ")) +
                       QStringLiteral(" WHERE Block = ?"),
                   {j.block});
}

}  // namespace

QString fctJournalPfad(const QString& bibliothek) {
  return QDir(bibliothek).filePath(QStringLiteral("Neuanlage.journal"));
}

bool fctJournalSchreiben(const QString& bibliothek, const NeuanlageJournal& j) {
  QSaveFile f(fctJournalPfad(bibliothek));
  QString text = QStringLiteral("Block=") + j.block + u'\n' + QStringLiteral("Ansicht=") +
                 QString::number(j.ansicht) + u'\n' + QStringLiteral("Variante=") +
                 (j.variante ? u'1' : u'0') + u'\n' + QStringLiteral("VariaName=") + j.variaName +
                 u'\n';
  for (const auto& d : j.dateien) text += QStringLiteral("Datei=") + d.first + u'\t' + d.second + u'\n';
  if (!f.open(QIODevice::WriteOnly) || f.write(text.toUtf8()) < 0 || !f.commit()) {
    subErrorAllgemein(false, QStringLiteral("fctJournalSchreiben"),
                      QStringLiteral("Das Journal der Neuanlage kann nicht geschrieben werden: ") +
                          f.fileName() + QStringLiteral(" (") + f.errorString() + u')');
    return false;
  }
  return true;
}

bool fctJournalLesen(const QString& bibliothek, NeuanlageJournal& j) {
  QFile f(fctJournalPfad(bibliothek));
  if (!f.open(QIODevice::ReadOnly)) return false;
  j = NeuanlageJournal{};
  bool block = false;
  for (const QString& zeile : QString::fromUtf8(f.readAll()).split(u'\n')) {
    const qsizetype gleich = zeile.indexOf(u'=');
    if (gleich < 0) continue;
    const QString k = zeile.left(gleich);
    const QString v = zeile.mid(gleich + 1);
    if (k == QLatin1String("Block")) {
      j.block = v;
      block = !v.isEmpty();
    } else if (k == QLatin1String("Ansicht")) {
      j.ansicht = v.toInt();
    } else if (k == QLatin1String("Variante")) {
      j.variante = v == QLatin1String("1");
    } else if (k == QLatin1String("VariaName")) {
      j.variaName = v;
    } else if (k == QLatin1String("Datei")) {
      const QStringList teile = v.split(u'\t');
      if (teile.size() != 2 || teile[0].isEmpty() || teile[1].isEmpty()) return false;
      j.dateien << qMakePair(teile[0], teile[1]);
    }
  }
  return block && j.ansicht >= 0 && j.ansicht <= 4 && !j.dateien.isEmpty();
}

bool fctJournalLoeschen(const QString& bibliothek) {
  const QString p = fctJournalPfad(bibliothek);
  return !QFileInfo::exists(p) || QFile::remove(p);
}

Aufraeumen fctNeuanlageAufraeumen(Connection& conn, const QString& bibliothek) {
  if (!QFileInfo::exists(fctJournalPfad(bibliothek))) return Aufraeumen::Nichts;
  Trace t(kRoutine);
  NeuanlageJournal j;
  if (!fctJournalLesen(bibliothek, j)) {
    t.step(QStringLiteral("Journal unlesbar"));
    fctJournalLoeschen(bibliothek);
    return Aufraeumen::Verworfen;
  }
  t.step(QStringLiteral("Block ") + j.block + QStringLiteral(" Ansicht ") + QString::number(j.ansicht));
  if (!zeileSteht(conn, j)) {
    // Killed before the row: the files never left the temporary directory.
    fctJournalLoeschen(bibliothek);
    return Aufraeumen::Verworfen;
  }
  // The row stands: the files it needs are moved if they are still at hand.
  bool alle = true;
  for (const auto& d : j.dateien) {
    if (QFileInfo::exists(d.second) && !QFileInfo::exists(d.first)) continue;
    if (QFileInfo::exists(d.first)) {
      fctFolderExistMitDatei(d.second) || QDir().mkpath(QFileInfo(d.second).path());
      if (MoveAFile(d.first, d.second)) continue;
    }
    alle = false;
  }
  if (alle) {
    fctJournalLoeschen(bibliothek);
    return Aufraeumen::Fertiggestellt;
  }
  // Not to be finished: the row goes, and the files this run brought.
  t.step(QStringLiteral("zurücknehmen"));
  return fctNeuanlageZuruecknehmen(conn, bibliothek, j) ? Aufraeumen::Zurueckgenommen
                                                         : Aufraeumen::Fehler;
}

bool fctNeuanlageZuruecknehmen(Connection& conn, const QString& bibliothek,
                               const NeuanlageJournal& j) {
  if (!zeileEntfernen(conn, j)) {
    subErrorAllgemein(false, kRoutine, conn.error());
    return false;
  }
  if (j.ansicht == 0 || j.variante)
    for (const auto& d : j.dateien)
      if (QFileInfo::exists(d.second)) QFile::remove(d.second);
  return fctJournalLoeschen(bibliothek);
}

}  // namespace kolvane

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
  // A line break or TAB in a name would end its field: such a journal could
  // not be read back, so it is not written.
  QStringList felder{j.block, j.variaName};
  for (const auto& d : j.dateien) felder << d.first << d.second;
  for (const QString& feld : felder)
    if (feld.contains(u'\n') || feld.contains(u'\r') || feld.contains(u'\t')) {
      subErrorAllgemein(false, QStringLiteral("fctJournalSchreiben"),
                        QStringLiteral("Ein Pfad enthält einen Zeilenumbruch oder Tabulator: ") + feld);
      return false;
    }
  QSaveFile f(fctJournalPfad(bibliothek));
  if (!f.open(QIODevice::WriteOnly) || f.write(fctJournalAlsText(j)) < 0 || !f.commit()) {
    subErrorAllgemein(false, QStringLiteral("fctJournalSchreiben"),
                      QStringLiteral("Das Journal der Neuanlage kann nicht geschrieben werden: ") +
                          f.fileName() + QStringLiteral(" (") + f.errorString() + u')');
    return false;
  }
  return true;
}

bool fctJournalLesen(const QString& bibliothek, NeuanlageJournal& j) {
  QFile f(fctJournalPfad(bibliothek));
  // A journal is a few lines; anything far larger is no journal of ours.
  if (!f.open(QIODevice::ReadOnly) || f.size() > 64 * 1024) return false;
  return fctJournalAusText(f.readAll(), j);
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
  if (j.ersetzen) {
    // New files of a block that stays: what is at hand is moved, and the user
    // needs no word, since the block stands either way.
    for (const auto& d : j.dateien)
      if (QFileInfo::exists(d.first)) MoveAFile(d.first, d.second);
    fctJournalLoeschen(bibliothek);
    return Aufraeumen::Verworfen;
  }
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

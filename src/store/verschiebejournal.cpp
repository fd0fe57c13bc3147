#include "verschiebejournal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStringList>

#include "connection.h"
#include "diagnostics.h"
#include "labels.h"
#include "layout.h"
#include "paths.h"
#include "recordset.h"

namespace kolvane {

namespace {

const QString kRoutine = QStringLiteral("fctVerschiebungAufraeumen");

// Paths in one form: "/" between parts (stored paths may carry "\\").
QString sauber(const QString& pfad) {
  QString p = pfad;
  return QDir::cleanPath(p.replace(u'\\', u'/'));
}

// A journal path (relative to the library, or absolute for a file outside it)
// as a full path.
QString vollerPfad(const QString& bibliothek, const QString& pfad) {
  if (QDir::isAbsolutePath(pfad)) return sauber(pfad);
  return sauber(bibliothek + u'/' + pfad);
}

QString vergleichsform(const QString& pfad) { return sauber(pfad).toLower(); }

// The path a mark keeps after the move: a file the journal moves gets its new
// place; otherwise a file named by the old code (a view or file that is not
// there) gets the new code in its name.
QString markenPfad(const QString& bibliothek, const VerschiebeJournal& j,
                   const QHash<QString, QString>& neuVonAlt, const QString& pfad) {
  if (pfad.isEmpty()) return pfad;
  const auto it = neuVonAlt.constFind(vergleichsform(pfad));
  if (it != neuVonAlt.constEnd()) return QDir::toNativeSeparators(*it);
  QString normal = pfad;
  normal.replace(u'\\', u'/');
  const qsizetype schnitt = normal.lastIndexOf(u'/') + 1;
  const QString name = pfad.mid(schnitt);
  if (name.startsWith(j.codeAlt, Qt::CaseInsensitive))
    return pfad.left(schnitt) + j.codeNeu + name.mid(j.codeAlt.size());
  (void)bibliothek;
  return pfad;
}

bool feldOk(const QString& feld) {
  return !feld.contains(u'\n') && !feld.contains(u'\r') && !feld.contains(u'\t');
}

}  // namespace

QByteArray fctVerschiebeJournalAlsText(const VerschiebeJournal& j) {
  QString text;
  text += QStringLiteral("Nr=") + QString::number(j.nr) + u'\n';
  text += QStringLiteral("CodeAlt=") + j.codeAlt + u'\n';
  text += QStringLiteral("CodeNeu=") + j.codeNeu + u'\n';
  text += QStringLiteral("BlockNeu=") + j.blockNeu + u'\n';
  text += QStringLiteral("SlideLibNeu=") + j.slideLibNeu + u'\n';
  for (const auto& d : j.dateien) text += QStringLiteral("Datei=") + d.first + u'\t' + d.second + u'\n';
  for (const auto& v : j.varianten)
    text += QStringLiteral("Variante=") + QString::number(v.nr) + u'\t' + v.alt + u'\t' + v.neu + u'\n';
  text += QStringLiteral("Ende=1\n");
  return text.toUtf8();
}

bool fctVerschiebeJournalAusText(const QByteArray& daten, VerschiebeJournal& j) {
  j = VerschiebeJournal{};
  bool nr = false, ende = false;
  for (const QString& zeile : QString::fromUtf8(daten).split(u'\n')) {
    const qsizetype gleich = zeile.indexOf(u'=');
    if (gleich < 0) continue;
    const QString k = zeile.left(gleich);
    const QString v = zeile.mid(gleich + 1);
    if (k == QLatin1String("Nr")) {
      j.nr = v.toLongLong(&nr);
    } else if (k == QLatin1String("CodeAlt")) {
      j.codeAlt = v;
    } else if (k == QLatin1String("CodeNeu")) {
      j.codeNeu = v;
    } else if (k == QLatin1String("BlockNeu")) {
      j.blockNeu = v;
    } else if (k == QLatin1String("SlideLibNeu")) {
      j.slideLibNeu = v;
    } else if (k == QLatin1String("Datei")) {
      const QStringList teile = v.split(u'\t');
      if (teile.size() != 2 || teile[0].isEmpty() || teile[1].isEmpty()) return false;
      j.dateien << qMakePair(teile[0], teile[1]);
    } else if (k == QLatin1String("Variante")) {
      const QStringList teile = v.split(u'\t');
      bool ok = false;
      if (teile.size() != 3) return false;
      VerschiebeJournal::Variante var{teile[0].toLongLong(&ok), teile[1], teile[2]};
      if (!ok || var.alt.isEmpty() || var.neu.isEmpty()) return false;
      j.varianten << var;
    } else if (k == QLatin1String("Ende")) {
      ende = true;
    }
  }
  return nr && ende && j.nr > 0 && !j.codeAlt.isEmpty() && !j.codeNeu.isEmpty() &&
         !j.blockNeu.isEmpty() && !j.slideLibNeu.isEmpty();
}

QString fctVerschiebeJournalPfad(const QString& bibliothek) {
  return QDir(bibliothek).filePath(QStringLiteral("Verschiebung.journal"));
}

bool fctVerschiebeJournalSchreiben(const QString& bibliothek, const VerschiebeJournal& j) {
  QStringList felder{j.codeAlt, j.codeNeu, j.blockNeu, j.slideLibNeu};
  for (const auto& d : j.dateien) felder << d.first << d.second;
  for (const auto& v : j.varianten) felder << v.alt << v.neu;
  for (const QString& feld : felder)
    if (!feldOk(feld)) {
      subErrorAllgemein(false, QStringLiteral("fctVerschiebeJournalSchreiben"),
                        QStringLiteral("Ein Name enthält einen Zeilenumbruch oder Tabulator: ") + feld);
      return false;
    }
  // Written beside and renamed into place: a program killed while writing
  // leaves no journal, or the whole one. It guards against a killed program,
  // not a lost disk, so it is not synced to the disk (a block is only a few
  // milliseconds of work; a sync per block would double a long shift).
  const QString pfad = fctVerschiebeJournalPfad(bibliothek);
  QFile f(pfad + QStringLiteral(".neu"));
  const QByteArray text = fctVerschiebeJournalAlsText(j);
  bool ok = f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(text) == text.size();
  f.close();
  ok = ok && f.error() == QFileDevice::NoError;
  if (ok) {
    QFile::remove(pfad);
    ok = QFile::rename(f.fileName(), pfad);
  }
  if (!ok) {
    subErrorAllgemein(false, QStringLiteral("fctVerschiebeJournalSchreiben"),
                      QStringLiteral("Das Journal der Verschiebung kann nicht geschrieben werden: ") + pfad +
                          QStringLiteral(" (") + f.errorString() + u')');
    QFile::remove(f.fileName());
    return false;
  }
  return true;
}

bool fctVerschiebeJournalLesen(const QString& bibliothek, VerschiebeJournal& j) {
  QFile f(fctVerschiebeJournalPfad(bibliothek));
  if (!f.open(QIODevice::ReadOnly) || f.size() > 256 * 1024) return false;
  return fctVerschiebeJournalAusText(f.readAll(), j);
}

bool fctVerschiebeJournalLoeschen(const QString& bibliothek) {
  const QString p = fctVerschiebeJournalPfad(bibliothek);
  return !QFileInfo::exists(p) || QFile::remove(p);
}

bool fctVerschiebungZeilenSchreiben(Connection& conn, const QString& bibliothek,
                                    const VerschiebeJournal& j) {
  Trace t(QStringLiteral("fctVerschiebungZeilenSchreiben"));
  t.step(j.codeAlt + QStringLiteral(" -> ") + j.codeNeu);
  QHash<QString, QString> neuVonAlt;
  for (const auto& d : j.dateien)
    neuVonAlt.insert(vergleichsform(vollerPfad(bibliothek, d.first)), vollerPfad(bibliothek, d.second));

  // The marks of the block, read before the transaction.
  struct Marke {
    int64_t nr;
    QString slide, dwg;
  };
  QList<Marke> marken;
  const bool mitMarken = conn.tableExists(QStringLiteral("tblMarkierteBloecke"));
  if (mitMarken) {
    Recordset rm;
    if (!rm.Open(QStringLiteral("SELECT Nr, SpeicherOrtSlide, SpeicherOrtDWG FROM tblMarkierteBloecke "
                                "WHERE BlockNr = ?"),
                 conn, {j.codeAlt})) {
      subErrorAllgemein(false, t.routine(), rm.lastError());
      return false;
    }
    for (; !rm.isEOF(); rm.MoveNext())
      marken << Marke{rm.value(QStringLiteral("Nr")).toLongLong(),
                      markenPfad(bibliothek, j, neuVonAlt, rm.text(QStringLiteral("SpeicherOrtSlide"))),
                      markenPfad(bibliothek, j, neuVonAlt, rm.text(QStringLiteral("SpeicherOrtDWG")))};
    rm.Close();
  }

  if (!conn.begin()) {
    subErrorAllgemein(false, t.routine(), conn.error());
    return false;
  }
  bool ok = true;
  for (const auto& v : j.varianten)
    ok = ok && conn.execute(QStringLiteral("UPDATE tblVariationBloecke SET BlockDateiName = ? WHERE Nr = ?"),
                            {v.neu, qlonglong(v.nr)});
  ok = ok && conn.execute(QStringLiteral("UPDATE tblBlockInfo SET Block = ?, SlideLib = ? WHERE Nr = ?"),
                          {j.blockNeu, j.slideLibNeu, qlonglong(j.nr)});
  for (const Marke& m : marken)
    ok = ok && conn.execute(QStringLiteral("UPDATE tblMarkierteBloecke SET BlockNr = ?, SpeicherOrtSlide = ?, "
                                           "SpeicherOrtDWG = ? WHERE Nr = ?"),
                            {j.codeNeu, m.slide, m.dwg, qlonglong(m.nr)});
  if (!ok) {
    const QString grund = conn.error();
    conn.rollback();
    subErrorAllgemein(false, t.routine(), grund);
    return false;
  }
  if (!conn.commit()) {
    const QString grund = conn.error();
    conn.rollback();
    subErrorAllgemein(false, t.routine(), grund);
    return false;
  }
  return true;
}

VerschiebungAufgeraeumt fctVerschiebungAufraeumen(Connection& conn, const QString& bibliothek) {
  VerschiebungAufgeraeumt r;
  if (!QFileInfo::exists(fctVerschiebeJournalPfad(bibliothek))) return r;
  Trace t(kRoutine);
  auto text = [](int nr) { return labels().fctBeschriftMsgboxZuordnen(nr); };
  VerschiebeJournal j;
  if (!fctVerschiebeJournalLesen(bibliothek, j)) {
    // The journal is written whole or not at all: what can't be read is none
    // of ours, and no move began under it.
    t.step(QStringLiteral("Journal unlesbar"));
    fctVerschiebeJournalLoeschen(bibliothek);
    r.ergebnis = VerschiebungAufgeraeumt::Ergebnis::Verworfen;
    return r;
  }
  r.codeAlt = j.codeAlt;
  r.codeNeu = j.codeNeu;
  t.step(QStringLiteral("Block ") + j.codeAlt + QStringLiteral(" -> ") + j.codeNeu);
  const QString blockZeile = text(kMsgVerschiebungBlock) + u' ' + j.codeAlt + QStringLiteral(" → ") + j.codeNeu;

  bool ok = true;
  for (const auto& d : j.dateien) {
    const QString von = vollerPfad(bibliothek, d.first);
    const QString nach = vollerPfad(bibliothek, d.second);
    if (!QFileInfo::exists(von)) continue;  // moved already (or never there)
    if (!fctMkDirAlle(QFileInfo(nach).absolutePath()) || !MoveAFile(von, nach)) ok = false;
  }
  const bool zeileDa =
      conn.scalar(QStringLiteral("SELECT COUNT(*) FROM tblBlockInfo WHERE Nr = ?"), {qlonglong(j.nr)}).toInt() > 0;
  if (ok && zeileDa) ok = fctVerschiebungZeilenSchreiben(conn, bibliothek, j);
  if (!ok) {
    r.ergebnis = VerschiebungAufgeraeumt::Ergebnis::Fehler;
    r.meldung = text(kMsgVerschiebungFehler) + u'\n' + blockZeile;
    return r;
  }
  fctVerschiebeJournalLoeschen(bibliothek);
  r.ergebnis = VerschiebungAufgeraeumt::Ergebnis::Abgeschlossen;
  r.meldung = text(kMsgVerschiebungAbgeschlossen) + u'\n' + blockZeile;
  return r;
}

}  // namespace kolvane

#include "recordhelpers.h"

#include "connection.h"
#include "diagnostics.h"
#include "recordset.h"

namespace kolvane {

namespace {

QString rightTrimmed(const QString& s) {
  qsizetype n = s.size();
  while (n > 0 && s[n - 1].isSpace()) --n;
  return s.left(n);
}

// Finds from the first row; an unreadable criterion is reported.
bool findFromFirst(const QString& routine, Recordset& rs, const QString& criteria) {
  Trace t(routine);
  if (!rs.isOpen()) {
    t.step(QStringLiteral("State <> adStateOpen"));
    return false;
  }
  if (rs.RecordCount() < 1) {
    t.step(QStringLiteral("RecordCount < 1"));
    return false;
  }
  rs.MoveFirst();
  if (rs.Find(criteria, 0, Recordset::Direction::Forward)) return true;
  if (!rs.lastError().isEmpty()) subErrorAllgemein(false, routine, rs.lastError());
  return false;
}

bool openReported(const QString& routine, Recordset& rs, Connection& conn, const QString& sql) {
  rs.Close();
  if (rs.Open(sql, conn)) return true;
  subErrorAllgemein(false, routine, rs.lastError() + QStringLiteral(" (") + sql + u')');
  return false;
}

}  // namespace

bool fctRsFind(Recordset& rs, const QString& spalte, const QString& wert) {
  return findFromFirst(QStringLiteral("fctRsFind"), rs,
                       spalte + QStringLiteral(" LIKE '") + rightTrimmed(wert) + u'\'');
}

bool fctRsFindStringEnthalten(Recordset& rs, const QString& spalte, const QString& wert) {
  return findFromFirst(QStringLiteral("fctRsFindStringEnthalten"), rs,
                       spalte + QStringLiteral(" LIKE '%") + rightTrimmed(wert) + "%'");
}

bool fctRsFindMitZuruecksetzen(Recordset& rs, const QString& spalte, const QString& wert) {
  const int position = rs.AbsolutePosition();
  if (fctRsFind(rs, spalte, wert)) return true;
  if (rs.isOpen() && rs.RecordCount() > 0) {
    rs.MoveFirst();
    if (position > 0) rs.Move(position - 1);
  }
  return false;
}

bool fctRsEinlesenAllgemein(Recordset& rs, Connection& conn, const QString& tabelle,
                            const QString& ordnung) {
  Trace t(QStringLiteral("fctRsEinlesenAllgemein"));
  const QString sql = ordnung.isEmpty()
                          ? tabelle
                          : QStringLiteral("SELECT * FROM [") + tabelle + "] ORDER BY " + ordnung;
  t.step(sql);
  if (!openReported(QStringLiteral("fctRsEinlesenAllgemein"), rs, conn, sql)) return false;
  return rs.RecordCount() > 0;
}

bool fctRsEinlesenMitEinemKriterium(Recordset& rs, Connection& conn, const QString& tabelle,
                                    const QString& spalte, const QString& wert,
                                    uint8_t bytZahl) {
  Trace t(QStringLiteral("fctRsEinlesenMitEinemKriterium"));
  if (!conn.isOpen()) return false;
  const QString sql = bytZahl == 0 ? QStringLiteral("SELECT * FROM [") + tabelle + "] WHERE [" +
                                         spalte + "] LIKE '" + wert + u'\''
                                   : QStringLiteral("SELECT * FROM [") + tabelle + "] WHERE [" +
                                         spalte + "] = " + wert;
  t.step(QStringLiteral("Einlesestring:") + sql);
  return openReported(QStringLiteral("fctRsEinlesenMitEinemKriterium"), rs, conn, sql);
}

bool fctRsEinlesenMitKriterium(Recordset& rs, Connection& conn, const QString& sql) {
  Trace t(QStringLiteral("fctRsEinlesenMitKriterium"));
  return openReported(QStringLiteral("fctRsEinlesenMitKriterium"), rs, conn, sql);
}

bool fctRsEinlesenMitKriterium(Recordset& rs, Connection& conn, const QString& sql,
                               const QString& trace) {
  Trace t(QStringLiteral("fctRsEinlesenMitKriterium"));
  t.step(trace + sql);
  return openReported(QStringLiteral("fctRsEinlesenMitKriterium"), rs, conn, sql);
}

bool fctSpalteVorhanden(const Recordset& rs, const QString& spalte) {
  return rs.isOpen() && rs.hasField(spalte);
}

bool fctSpalteAnlegenFallsNichtVorhanden(Connection& conn, Recordset& rs, const QString& tabelle,
                                         const QString& spalte, const QString& typ,
                                         const QString& vorgabe) {
  Trace t(QStringLiteral("fctSpalteAnlegenFallsNichtVorhanden"));
  const QString routine = QStringLiteral("fctSpalteAnlegenFallsNichtVorhanden");
  if (fctSpalteVorhanden(rs, spalte) || conn.columnExists(tabelle, spalte)) return true;
  t.step(QStringLiteral("ALTER TABLE ") + tabelle);
  if (!conn.execute(QStringLiteral("ALTER TABLE ") + tabelle + " ADD COLUMN " + spalte + u' ' +
                    typ)) {
    subErrorAllgemein(false, routine, conn.error());
    return false;
  }
  if (!vorgabe.isEmpty() &&
      !conn.execute(QStringLiteral("UPDATE ") + tabelle + " SET " + spalte + " = " + vorgabe)) {
    subErrorAllgemein(false, routine, conn.error());
    return false;
  }
  return true;
}

bool fctSpalteNichtVorhandenOhneEintrag0(const QString& spalte, const QString& tabelle,
                                         const QString& pfad) {
  Trace t(QStringLiteral("fctSpalteNichtVorhandenOhneEintrag0"));
  t.step(QStringLiteral("TestVerbindung"));
  Connection test;
  t.step(QStringLiteral("conSpaltenTest öffnen"));
  if (!test.open(pfad, Connection::Mode::ReadOnly)) {
    subErrorAllgemein(false, QStringLiteral("fctSpalteNichtVorhandenOhneEintrag0"), test.error());
    return false;
  }
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT * FROM ") + tabelle + " WHERE " + spalte + " IS NOT NULL",
               test))
    return true;  // the column is not there
  if (rs.RecordCount() == 0) {
    t.step(QStringLiteral("rsSpaltenTest.RecordCount = 0"));
    return true;
  }
  return false;
}

bool fctWerteVonSpalteUebertragen(Connection& conn, const QString& tabelle, const QString& ziel,
                                  const QString& quelle) {
  Trace t(QStringLiteral("fctWerteVonSpalteUebertragen"));
  if (conn.execute(QStringLiteral("UPDATE ") + tabelle + " SET " + ziel + " = " + quelle))
    return true;
  subErrorAllgemein(false, QStringLiteral("fctWerteVonSpalteUebertragen"), conn.error());
  return false;
}

QString fctWertInSpalteAuslesen(Connection& conn, const QString& tabelle, const QString& spalte,
                                const QString& suchspalte, const QString& wert) {
  Trace t(QStringLiteral("fctWertInSpalteAuslesen"));
  Recordset rs;
  if (!openReported(QStringLiteral("fctWertInSpalteAuslesen"), rs, conn,
                    QStringLiteral("SELECT * FROM ") + tabelle + " WHERE " + suchspalte +
                        " LIKE '" + wert + u'\''))
    return {};
  if (rs.RecordCount() < 1) return {};
  return rs.text(spalte);
}

bool fctWertInSpalteSpeichern(Connection& conn, const QString& tabelle, const QString& spalte,
                              const QString& suchspalte, const QString& wert,
                              const QString& neu) {
  Trace t(QStringLiteral("fctWertInSpalteSpeichern"));
  const QString routine = QStringLiteral("fctWertInSpalteSpeichern");
  const QString sql = QStringLiteral("SELECT * FROM ") + tabelle + " WHERE " + suchspalte +
                      " LIKE '" + wert + u'\'';
  Recordset rs;
  if (!openReported(routine, rs, conn, sql)) return false;
  if (rs.RecordCount() < 1) {
    subErrorAllgemein(false, routine,
                      QStringLiteral("Kein Datensatz mit %1 = %2 in %3.").arg(suchspalte, wert, tabelle));
    return false;
  }
  if (!rs.hasField(spalte)) {
    t.step(QStringLiteral("Spalte anlegen: ") + spalte);
    if (!fctSpalteAnlegenFallsNichtVorhanden(conn, rs, tabelle, spalte,
                                             QStringLiteral("TEXT (100)"), QString()))
      return false;
    if (!openReported(routine, rs, conn, sql) || rs.RecordCount() < 1) return false;
  }
  return rs.setValue(spalte, neu) && rs.Update();
}

bool fctPruefenWertVorhandenTrue(Connection& conn, const QString& tabelle, const QString& spalte,
                                 const QString& wert) {
  Trace t(QStringLiteral("fctPruefenWertVorhandenTrue"));
  Recordset rs;
  return openReported(QStringLiteral("fctPruefenWertVorhandenTrue"), rs, conn,
                      QStringLiteral("SELECT ") + spalte + " FROM " + tabelle + " WHERE " +
                          spalte + " LIKE '" + wert + u'\'') &&
         rs.RecordCount() >= 1;
}

bool fctPruefenWertVorhandenGroesser1True(Connection& conn, const QString& tabelle,
                                          const QString& spalte, const QString& wert) {
  Trace t(QStringLiteral("fctPruefenWertVorhandenGroesser1True"));
  Recordset rs;
  return openReported(QStringLiteral("fctPruefenWertVorhandenGroesser1True"), rs, conn,
                      QStringLiteral("SELECT ") + spalte + " FROM " + tabelle + " WHERE " +
                          spalte + " LIKE '" + wert + u'\'') &&
         rs.RecordCount() > 1;
}

QString fctPruefenWertVorhandenMitRueckgabeWert(Connection& conn, const QString& tabelle,
                                                const QString& spalte, const QString& wert,
                                                const QString& rueckgabeSpalte) {
  Trace t(QStringLiteral("fctPruefenWertVorhandenMitRueckgabeWert"));
  Recordset rs;
  if (!openReported(QStringLiteral("fctPruefenWertVorhandenMitRueckgabeWert"), rs, conn,
                    QStringLiteral("SELECT * FROM ") + tabelle + " WHERE " + spalte + " LIKE '" +
                        wert + u'\''))
    return QStringLiteral("Fehler");
  if (rs.RecordCount() < 1) return QStringLiteral("0");
  if (!rs.hasField(rueckgabeSpalte)) {
    subErrorAllgemein(false, QStringLiteral("fctPruefenWertVorhandenMitRueckgabeWert"),
                      QStringLiteral("Die Spalte %1 fehlt in %2.").arg(rueckgabeSpalte, tabelle));
    return QStringLiteral("Fehler");
  }
  return rs.text(rueckgabeSpalte);
}

int32_t fctLetzterWertInSpalte(Connection& conn, const QString& tabelle, const QString& spalte) {
  Trace t(QStringLiteral("fctLetzterWertInSpalte"));
  Recordset rs;
  if (!openReported(QStringLiteral("fctLetzterWertInSpalte"), rs, conn,
                    QStringLiteral("SELECT ") + spalte + " FROM " + tabelle + " ORDER BY " +
                        spalte))
    return 0;
  if (rs.RecordCount() < 1) return 0;
  rs.MoveLast();
  return int32_t(rs.value(0).toLongLong());
}

bool fctAlleEintraegLoeschen(Recordset& rs) {
  Trace t(QStringLiteral("fctAlleEintraegLoeschen"));
  if (!rs.isOpen()) {
    t.step(QStringLiteral("State <> adStateOpen"));
    return false;
  }
  rs.MoveFirst();
  while (rs.RecordCount() > 0) {
    if (!rs.Delete()) {
      subErrorAllgemein(false, QStringLiteral("fctAlleEintraegLoeschen"), rs.lastError());
      return false;
    }
    rs.Update();
    rs.MoveFirst();
  }
  return true;
}

bool fctWertVersetzen(uint8_t bytNachOben, Recordset& rs, int position, const QString& spalte) {
  Trace t(QStringLiteral("fctWertVersetzen"));
  if (!rs.isOpen() || !rs.hasField(spalte) || !rs.setAbsolutePosition(position)) return false;
  const QVariant eigener = rs.value(spalte);
  if (bytNachOben == 1)
    rs.MoveNext();
  else
    rs.MovePrevious();
  if (rs.isBOF() || rs.isEOF()) {
    rs.setAbsolutePosition(position);
    return false;
  }
  const QVariant nachbar = rs.value(spalte);
  if (!rs.Update(spalte, eigener)) return false;
  rs.setAbsolutePosition(position);
  if (!rs.Update(spalte, nachbar)) return false;
  return true;
}

QString fctNaechsterFreierName(Connection& conn, const QString& tabelle, const QString& spalte,
                               const QString& stamm) {
  Trace t(QStringLiteral("fctNaechsterFreierName"));
  if (!conn.isOpen()) {
    subErrorAllgemein(false, QStringLiteral("fctNaechsterFreierName"),
                      QStringLiteral("es gibt keine Verbindung zur Datenbank"));
    return {};
  }
  Recordset rs;
  if (!openReported(QStringLiteral("fctNaechsterFreierName"), rs, conn,
                    QStringLiteral("SELECT ") + spalte + " FROM " + tabelle + " WHERE " + spalte +
                        " LIKE '" + stamm + "%' ORDER BY " + spalte))
    return {};
  // The number in use comes from the newest row (highest key), not from the
  // text order, where "Block0-9" sorts after "Block0-10".
  qint64 nummer = 0;
  int64_t neueste = -1;
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext()) {
    if (rs.rowid() <= neueste) continue;
    neueste = rs.rowid();
    const QString name = rs.text(spalte);
    qsizetype s = name.size();
    while (s > 0 && name[s - 1].isDigit()) --s;
    nummer = name.mid(s).toLongLong();  // leading zeros fall away
  }
  for (;;) {
    const QString kandidat = stamm + QString::number(++nummer);
    if (!fctRsFindMitZuruecksetzen(rs, spalte, kandidat)) {
      if (!rs.lastError().isEmpty()) return {};
      return kandidat;
    }
  }
}

bool fctConnectionOeffnen(Connection& conn, const QString& pfadOderDb, const QString& server,
                          const QString& benutzer, const QString& kennwort,
                          uint8_t bytSqlServer) {
  Trace t(QStringLiteral("fctConnectionOeffnen"));
  Q_UNUSED(kennwort);
  if (bytSqlServer != 0) {
    t.step(QStringLiteral("Vor conDbOpen : ") + server + u';' + pfadOderDb + u';' + benutzer);
    subErrorAllgemein(false, QStringLiteral("fctConnectionOeffnen"),
                      QStringLiteral("Eine Datenbank auf einem SQL-Server ist in dieser Ausgabe "
                                     "nicht verfügbar."));
    return false;
  }
  t.step(QStringLiteral("Data Source: ") + pfadOderDb);
  if (conn.open(pfadOderDb)) return true;
  subErrorAllgemein(false, QStringLiteral("fctConnectionOeffnen"), conn.error());
  return false;
}

// --- views of a block ---

bool fctAnsichtWertVorhanden(const QVariant& ax) {
  if (!ax.isValid() || ax.isNull()) return false;
  return !ax.toString().trimmed().isEmpty();
}

bool byteAnsichtVorhanden(const Recordset& rs, int k) {
  if (k == 0) return true;
  if (k < 0 || k > 4 || !rs.isOpen() || rs.isEOF() || rs.isBOF()) return false;
  return fctAnsichtWertVorhanden(rs.value(QStringLiteral("AX") + QString::number(k)));
}

std::vector<uint8_t> fctVorhandeneAnsichten(const Recordset& rs) {
  std::vector<uint8_t> ansichten{0};
  for (int k = 1; k <= 4; ++k)
    if (byteAnsichtVorhanden(rs, k)) ansichten.push_back(uint8_t(k));
  return ansichten;
}

QString fctAnsichtVorhandenSql(int k) {
  return QStringLiteral("(AX%1 IS NOT NULL AND TRIM(AX%1) <> '')").arg(k);
}

}  // namespace kolvane

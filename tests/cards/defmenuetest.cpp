#include "defmenuetest.h"

#include "connection.h"

namespace kolvane {

void DefMenueTest::ordnerAnlegen(const QString& nr, const QVariant& defNr) {
  Connection conn;
  ASSERT_TRUE(conn.open(db_));
  // A reference to a row that is gone is what a damaged library holds.
  ASSERT_TRUE(conn.execute("PRAGMA foreign_keys = OFF"));
  ASSERT_TRUE(conn.execute(
      "INSERT INTO tblOrdner (OrdnerNr, Ordnername, OrdnerRechte, NrTblDefMenue) VALUES (?, ?, 'Alle', ?)",
      {nr, "Zusatz " + nr, defNr}));
}

QVariant DefMenueTest::wert(const QString& sql, const QVariantList& werte) {
  Connection conn;
  EXPECT_TRUE(conn.open(db_));
  return conn.scalar(sql, werte);
}

QStringList DefMenueTest::zeile(qint64 nr) {
  QStringList z;
  if (!wert("SELECT Nr FROM tblDefMenue WHERE Nr = ?", {nr}).isValid()) return z;
  for (int i = 1; i <= 10; ++i) z << wert(QStringLiteral("SELECT Benennung%1 FROM tblDefMenue WHERE Nr = ?").arg(i), {nr}).toString();
  for (int i = 1; i <= 10; ++i) z << wert(QStringLiteral("SELECT Standardwert%1 FROM tblDefMenue WHERE Nr = ?").arg(i), {nr}).toString();
  return z;
}

qint64 DefMenueTest::verweis(const QString& ordnerNr) {
  return wert("SELECT NrTblDefMenue FROM tblOrdner WHERE OrdnerNr = ?", {ordnerNr}).toLongLong();
}

}  // namespace kolvane

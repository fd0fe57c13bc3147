#include "suchtest.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>

#include "connection.h"
#include "prefix.h"

namespace kolvane {

qint64 SuchTest::ordnerAnlegen(const QString& ordnerNr, const QString& name) {
  Connection conn;
  EXPECT_TRUE(conn.open(db_));
  EXPECT_TRUE(conn.execute("INSERT INTO tblOrdner (OrdnerNr, Ordnername, OrdnerRechte) VALUES (?, ?, 'Alle')",
                           {ordnerNr, name}));
  QDir().mkpath(bib_ + "/" + ordnerNr + "/Block");
  return conn.lastInsertId();
}

QString SuchTest::blockIn(const QString& ordnerNr, qint64 ordnerId, int slot, const QString& blkName,
                          const QStringList& m) {
  QStringList prefix;
  EXPECT_TRUE(fctPrefixEinlesen(slot, prefix));
  const QString code = fctBlockCode(ordnerNr, slot, prefix);
  Connection conn;
  EXPECT_TRUE(conn.open(db_));
  QString spalten = QStringLiteral("Block, SlideLib, OrdnerID, BlkName0");
  QString fragen = QStringLiteral("?, ?, ?, ?");
  QVariantList werte{code, ordnerNr + "\\" + code + ".slb", ordnerId, blkName};
  for (int i = 0; i < m.size() && i < 10; ++i) {
    spalten += QStringLiteral(", M%1").arg(i);
    fragen += QStringLiteral(", ?");
    werte << m[i];
  }
  EXPECT_TRUE(conn.execute("INSERT INTO tblBlockInfo (" + spalten + ") VALUES (" + fragen + ")", werte))
      << conn.error().toStdString();
  conn.close();
  writeFile(bib_ + "/" + ordnerNr + "/" + code + ".slb", "slide library");
  writeFile(bib_ + "/" + ordnerNr + "/Block/" + code + "0.dwg", "drawing " + code.toUtf8());
  return code;
}

void SuchTest::seiteBenennen(qint64 ordnerId, int seitenNr, const QString& name) {
  Connection conn;
  ASSERT_TRUE(conn.open(db_));
  ASSERT_TRUE(conn.execute("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (?, ?, ?)",
                           {seitenNr, name, ordnerId}));
}

QVariant SuchTest::wert(const QString& sql, const QVariantList& werte) {
  Connection conn;
  EXPECT_TRUE(conn.open(db_));
  return conn.scalar(sql, werte);
}

QByteArray SuchTest::dateiHash() const {
  QFile f(db_);
  if (!f.open(QIODevice::ReadOnly)) return {};
  return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256).toHex();
}

}  // namespace kolvane

#include "storetest.h"

#include <QDir>
#include <QRegularExpression>

#include "diagnostics.h"
#include "labels.h"

#include "schema.h"

namespace kolvane {

void StoreTest::SetUp() {
  KolvaneTest::SetUp();
  installData();
  // Labels whose text names their number, so a test sees which box came.
  QByteArray msgbox = "[Speziell]\n";
  for (int nr = 50; nr < 1000; ++nr) msgbox += QByteArray::number(nr) + "=L" + QByteArray::number(nr) + "\n";
  writeFile(QDir(settings_->labelDir()).filePath("Msgbox_deutsch.txt"), msgbox);
  writeFile(QDir(settings_->labelDir()).filePath("Frm_deutsch.txt"),
            "[Allg]\n1=Info\n2=Hinweis\n3=Kolvane\n4=Frage\n");
  labels().fctSpracheAuslesen();
  labels().fctBeschriftungsFileZuordnenIni();
}

bool StoreTest::gefragt(int nr) const {
  const QString l = QStringLiteral("L%1").arg(nr);
  for (const QString& a : prompt_->asked) {
    if (a.startsWith(QLatin1String("UNEXPECTED"))) continue;
    for (const QString& teil : a.split(QRegularExpression(QStringLiteral("[|\\r]"))))
      if (teil == l) return true;
  }
  return false;
}

QString StoreTest::neueBibliothek(const QString& rel) {
  QDir().mkpath(path(rel));
  const QString db = QDir(path(rel)).filePath(QStringLiteral("dbKolvane.mdb"));
  EXPECT_TRUE(Mk_Datenbank(db));
  QDir().mkpath(QDir(path(rel)).filePath(QStringLiteral("000")));
  return db;
}

qint64 StoreTest::blockAnlegen(Connection& conn, const QString& block, int ordnerID,
                                const QString& m0, const QString& slideLib) {
  const QString lib = slideLib.isEmpty() ? block.left(3) + u'\\' + block + ".slb" : slideLib;
  EXPECT_TRUE(conn.execute(
      QStringLiteral("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0, M0) VALUES "
                     "(?, ?, ?, ?, ?)"),
      {block, lib, ordnerID, QStringLiteral("Name") + block, m0}))
      << conn.error().toStdString();
  return conn.lastInsertId();
}

void StoreTest::dateienAnlegen(const QString& bibliothek, const QString& ordnerNr,
                               const QString& block) {
  writeFile(QDir(bibliothek).filePath(ordnerNr + "/" + block + ".slb"), "slb");
  writeFile(QDir(bibliothek).filePath(ordnerNr + "/Block/" + block + "0.dwg"), "dwg");
}

qint64 StoreTest::ordnerAnlegen(Connection& conn, const QString& ordnerNr, const QString& name) {
  EXPECT_TRUE(conn.execute(QStringLiteral("INSERT INTO tblOrdner (OrdnerNr, Ordnername, "
                                          "OrdnerRechte, NrTblDefMenue) VALUES (?, ?, 'Alle', 1)"),
                           {ordnerNr, name}))
      << conn.error().toStdString();
  return conn.lastInsertId();
}

int StoreTest::fehlerBerichte() const {
  int n = 0;
  for (const QString& a : prompt_->asked)
    if (a.startsWith(QLatin1String("message|") + fehlerTitel() + QLatin1Char('|'))) ++n;
  return n;
}

QStringList StoreTest::fragen() const {
  QStringList out;
  for (const QString& a : prompt_->asked)
    if (!a.startsWith(QLatin1String("message|") + fehlerTitel() + QLatin1Char('|')) &&
        !a.startsWith(QLatin1String("UNEXPECTED")))
      out << a;
  return out;
}

}  // namespace kolvane

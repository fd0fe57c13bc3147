#include "browsertest.h"

#include <QDir>
#include <QFile>

#include "connection.h"
#include "layout.h"
#include "prefix.h"
#include "schema.h"

namespace kolvane {

void BrowserTest::SetUp() {
  KolvaneTest::SetUp();
  installData();
  settings_->subPfadeFestlegen();
}

void BrowserTest::TearDown() {
  bv_.reset();
  lib_.reset();
  KolvaneTest::TearDown();
}

QString BrowserTest::neueBibliothek(const QString& rel) {
  QDir().mkpath(path(rel + "/000"));
  db_ = path(rel + "/dbKolvane.mdb");
  EXPECT_TRUE(Mk_Datenbank(db_));
  settings_->aryVerzeichnisseDatenbank << db_;
  settings_->strAktuelleDatenbank = db_;
  return db_;
}

QString BrowserTest::code(int slot, const QString& ordnerNr) {
  QStringList prefix;
  EXPECT_TRUE(fctPrefixEinlesen(slot, prefix));
  return fctBlockCode(ordnerNr, slot, prefix);
}

QString BrowserTest::blockAnlegen(int slot, const QString& m0, int ansichten,
                                  const QString& ordnerNr) {
  const QString c = code(slot, ordnerNr);
  const QString dir = QFileInfo(db_).absolutePath();
  Connection conn;
  EXPECT_TRUE(conn.open(db_));
  const int ordnerID = conn.scalar("SELECT Nr FROM tblOrdner WHERE OrdnerNr = ?", {ordnerNr}).toInt();
  const QString slideLib = ordnerNr + "\\" + c + ".slb";
  EXPECT_TRUE(conn.execute(
      "INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0, M0, AX0, AY0, AZ0) VALUES (?, ?, ?, ?, ?, 0, 0, 0)",
      {c, slideLib, ordnerID, "0000" + c, m0}));
  for (int v = 1; v < ansichten; ++v)
    EXPECT_TRUE(conn.execute(QString("UPDATE tblBlockInfo SET AX%1 = 1, BlkName%1 = ? WHERE Block = ?").arg(v),
                             {"0000" + c + QString::number(v), c}));
  writeFile(dir + "/" + ordnerNr + "/" + c + ".slb", "slide library");
  for (int v = 1; v < ansichten; ++v)
    writeFile(dir + "/" + ordnerNr + "/" + c + QString::number(v) + ".slb", "slide library");
  return c;
}

void BrowserTest::seiteAnlegen(int seitenNr, const QString& name, int ordnerID) {
  Connection conn;
  ASSERT_TRUE(conn.open(db_));
  ASSERT_TRUE(conn.execute("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (?, ?, ?)",
                           {seitenNr, name, ordnerID}));
}

void BrowserTest::oeffnen() {
  bv_.reset();
  lib_ = std::make_unique<Bibliothek>(*settings_);
  bv_ = std::make_unique<Blockverwaltung>(*settings_, *lib_);
  bv_->hooks.anzeigen = [this](const PageModel&) { ++anzeigen_; };
  bv_->subBilderanzahlFestlegen();
  ASSERT_TRUE(bv_->bibliothekOeffnen());
}

}  // namespace kolvane

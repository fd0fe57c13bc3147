#include "authortest.h"

#include <QDir>

#include "connection.h"
#include "labels.h"
#include "prefix.h"
#include "schema.h"
#include "slide.h"
#include "slidewriter.h"

namespace kolvane {

void AuthorTest::SetUp() {
  KolvaneTest::SetUp();
  installData();
  settings_->subPfadeFestlegen();
  ASSERT_TRUE(labels().fctSpracheAuslesen(0));
  labels().fctBeschriftungsFileZuordnenIni();
  bib_ = path("lib");
  QDir().mkpath(bib_ + "/000/Block");
  db_ = bib_ + "/dbKolvane.mdb";
  ASSERT_TRUE(Mk_Datenbank(db_));
  settings_->aryVerzeichnisseDatenbank = {db_};
  settings_->strAktuelleDatenbank = db_;
  bridge_ = std::make_unique<CadBridge>(&desk_);
  bridge_->strDatenVerzeichnis = path("daten");
  bridge_->hostGetObject = [this](QString*) -> Host* { return &host_; };
  bridge_->pauseHook = [](int) {};
}

void AuthorTest::TearDown() {
  bv_.reset();
  lib_.reset();
  bridge_.reset();
  KolvaneTest::TearDown();
}

QString AuthorTest::code(int slot) {
  QStringList prefix;
  EXPECT_TRUE(fctPrefixEinlesen(slot, prefix));
  return fctBlockCode(QStringLiteral("000"), slot, prefix);
}

QString AuthorTest::blockAnlegen(int slot, const QString& blkName) {
  const QString c = code(slot);
  ausfuehren(QStringLiteral("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0, M0, "
                            "AX0, AY0, AZ0) VALUES (?, ?, 1, ?, ?, 1, 2, 3)"),
             {c, "000\\" + c + ".slb", blkName, "Block " + c});
  writeFile(bib_ + "/000/" + c + ".slb", "slide library");
  writeFile(bib_ + "/000/Block/" + c + "0.dwg", "drawing");
  return c;
}

void AuthorTest::oeffnen(int pos) {
  bv_.reset();
  lib_ = std::make_unique<Bibliothek>(*settings_);
  bv_ = std::make_unique<Blockverwaltung>(*settings_, *lib_);
  bv_->strACadVersion = bridge_->typAcadVersionInfo.strACadVersion;
  bv_->subBilderanzahlFestlegen();
  ASSERT_TRUE(bv_->bibliothekOeffnen());
  bv_->lisBlockBenennung_Click(pos);
}

void AuthorTest::automationGebunden() {
  bridge_->acadApp = &host_;
  bridge_->typAcadVersionInfo.strACadVersion = QStringLiteral("AutoCAD 2014");
  bridge_->typAcadVersionInfo.strACadTitel = titel_;
  desk_.addWindow(10, titel_);
}

QVariant AuthorTest::wert(const QString& c, const QString& spalte) const {
  Connection conn;
  EXPECT_TRUE(conn.open(db_));
  return conn.scalar(QStringLiteral("SELECT ") + spalte + QStringLiteral(" FROM tblBlockInfo WHERE Block = ?"),
                     {c});
}

int AuthorTest::anzahl(const QString& sql) const {
  Connection conn;
  EXPECT_TRUE(conn.open(db_));
  return conn.scalar(sql).toInt();
}

void AuthorTest::ausfuehren(const QString& sql, const QVariantList& werte) {
  Connection conn;
  ASSERT_TRUE(conn.open(db_));
  ASSERT_TRUE(conn.execute(sql, werte)) << conn.error().toStdString();
}

bool AuthorTest::gezeigt(int nr) const {
  const QString text = labels().fctBeschriftMsgboxZuordnen(nr);
  if (text.isEmpty()) return false;
  for (const QString& a : prompt_->asked)
    if (a.contains(text)) return true;
  return false;
}

QByteArray AuthorTest::slideBytes(int i) {
  Slide s;
  s.highX = 639;
  s.highY = 479;
  s.aspectRatio = 640.0 / 480.0;
  s.records.push_back(SlideRecord::color(7));
  s.records.push_back(SlideRecord::vector(0, 0, 639, 0));
  s.records.push_back(SlideRecord::vector(639, 0, 639, 479));
  s.records.push_back(SlideRecord::vector(639, 479, 0, 479));
  s.records.push_back(SlideRecord::vector(0, 479, 0, 0));
  s.records.push_back(SlideRecord::color(1 + i % 6));
  s.records.push_back(SlideRecord::vector(100 + 10 * i, 100, 540, 380));
  s.records.push_back(SlideRecord::vector(100, 380, 540, 100 + 10 * i));
  return writeSlide(s);
}

}  // namespace kolvane

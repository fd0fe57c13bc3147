#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "bibliothek.h"
#include "neuanlagejournal.h"
#include "storetest.h"

namespace kolvane {
namespace {

class NeuanlageJournalTest : public StoreTest {
 protected:
  void SetUp() override {
    StoreTest::SetUp();
    db_ = neueBibliothek("lib");
    bib_ = path("lib");
    temp_ = path("temp/TempKolvane");
    ASSERT_TRUE(conn_.open(db_));
    j_.block = "00001";
    j_.dateien << qMakePair(temp_ + "/00001.slb", bib_ + "/000/00001.slb")
               << qMakePair(temp_ + "/000010.dwg", bib_ + "/000/Block/000010.dwg");
  }
  void TearDown() override {
    conn_.close();
    StoreTest::TearDown();
  }
  void tempDateien() {
    writeFile(j_.dateien[0].first, "slb");
    writeFile(j_.dateien[1].first, "dwg");
  }
  int zeilen() { return conn_.scalar("SELECT COUNT(*) FROM tblBlockInfo WHERE Block = '00001'").toInt(); }
  bool da(const QString& f) { return QFileInfo::exists(f); }

  QString db_, bib_, temp_;
  Connection conn_;
  NeuanlageJournal j_;
};

TEST_F(NeuanlageJournalTest, WrittenAndReadBack) {
  j_.ansicht = 3;
  j_.variante = true;
  j_.variaName = "a00013.dwg";
  ASSERT_TRUE(fctJournalSchreiben(bib_, j_));
  EXPECT_EQ(fctJournalPfad(bib_), bib_ + "/Neuanlage.journal");
  NeuanlageJournal g;
  ASSERT_TRUE(fctJournalLesen(bib_, g));
  EXPECT_EQ(g.block, "00001");
  EXPECT_EQ(g.ansicht, 3);
  EXPECT_TRUE(g.variante);
  EXPECT_EQ(g.variaName, "a00013.dwg");
  EXPECT_EQ(g.dateien, j_.dateien);
  EXPECT_TRUE(fctJournalLoeschen(bib_));
  EXPECT_FALSE(da(fctJournalPfad(bib_)));
  EXPECT_TRUE(fctJournalLoeschen(bib_));
}

TEST_F(NeuanlageJournalTest, NoJournalNothingToDo) {
  blockAnlegen(conn_, "00001", 1);
  EXPECT_EQ(fctNeuanlageAufraeumen(conn_, bib_), Aufraeumen::Nichts);
  EXPECT_EQ(zeilen(), 1);
}

TEST_F(NeuanlageJournalTest, KilledBeforeTheRowTheJournalGoes) {
  tempDateien();
  ASSERT_TRUE(fctJournalSchreiben(bib_, j_));
  EXPECT_EQ(fctNeuanlageAufraeumen(conn_, bib_), Aufraeumen::Verworfen);
  EXPECT_FALSE(da(fctJournalPfad(bib_)));
  EXPECT_TRUE(da(j_.dateien[0].first));
  EXPECT_TRUE(da(j_.dateien[1].first));
  EXPECT_FALSE(da(j_.dateien[0].second));
  EXPECT_FALSE(da(j_.dateien[1].second));
  EXPECT_EQ(zeilen(), 0);
  EXPECT_EQ(fehlerBerichte(), 0);
}

TEST_F(NeuanlageJournalTest, TheRowStandsAndTheFilesAreMoved) {
  blockAnlegen(conn_, "00001", 1);
  tempDateien();
  ASSERT_TRUE(fctJournalSchreiben(bib_, j_));
  EXPECT_EQ(fctNeuanlageAufraeumen(conn_, bib_), Aufraeumen::Fertiggestellt);
  EXPECT_EQ(readFile(j_.dateien[0].second), "slb");
  EXPECT_EQ(readFile(j_.dateien[1].second), "dwg");
  EXPECT_FALSE(da(j_.dateien[0].first));
  EXPECT_FALSE(da(j_.dateien[1].first));
  EXPECT_FALSE(da(fctJournalPfad(bib_)));
  EXPECT_EQ(zeilen(), 1);
}

TEST_F(NeuanlageJournalTest, KilledBetweenTheFilesTheRestIsMoved) {
  blockAnlegen(conn_, "00001", 1);
  writeFile(j_.dateien[0].second, "slb");  // moved already
  writeFile(j_.dateien[1].first, "dwg");   // still in the temporary directory
  ASSERT_TRUE(fctJournalSchreiben(bib_, j_));
  EXPECT_EQ(fctNeuanlageAufraeumen(conn_, bib_), Aufraeumen::Fertiggestellt);
  EXPECT_EQ(readFile(j_.dateien[0].second), "slb");
  EXPECT_EQ(readFile(j_.dateien[1].second), "dwg");
  EXPECT_FALSE(da(fctJournalPfad(bib_)));
  EXPECT_EQ(zeilen(), 1);
}

TEST_F(NeuanlageJournalTest, FilesLostTheBlockIsTakenBack) {
  blockAnlegen(conn_, "00001", 1);
  blockAnlegen(conn_, "00002", 1);
  writeFile(j_.dateien[0].second, "slb");  // moved; the drawing is lost
  ASSERT_TRUE(fctJournalSchreiben(bib_, j_));
  EXPECT_EQ(fctNeuanlageAufraeumen(conn_, bib_), Aufraeumen::Zurueckgenommen);
  EXPECT_EQ(zeilen(), 0);
  EXPECT_EQ(conn_.scalar("SELECT COUNT(*) FROM tblBlockInfo").toInt(), 1);
  EXPECT_FALSE(da(j_.dateien[0].second));
  EXPECT_FALSE(da(j_.dateien[1].second));
  EXPECT_FALSE(da(fctJournalPfad(bib_)));
}

// New slides of a block that stays: moved when the file is at hand, else
// dropped; the block and its old slides are never taken back.
TEST_F(NeuanlageJournalTest, NewSlidesOfAStayingBlockAreFinishedOrDroppedNeverTakenBack) {
  blockAnlegen(conn_, "00001", 1);
  j_.ersetzen = true;
  j_.dateien.removeLast();
  writeFile(j_.dateien[0].second, "old slides");
  ASSERT_TRUE(fctJournalSchreiben(bib_, j_));
  EXPECT_EQ(fctNeuanlageAufraeumen(conn_, bib_), Aufraeumen::Verworfen);
  EXPECT_EQ(zeilen(), 1);
  EXPECT_EQ(readFile(j_.dateien[0].second), "old slides");

  writeFile(j_.dateien[0].first, "new slides");
  ASSERT_TRUE(fctJournalSchreiben(bib_, j_));
  EXPECT_EQ(fctNeuanlageAufraeumen(conn_, bib_), Aufraeumen::Verworfen);
  EXPECT_EQ(readFile(j_.dateien[0].second), "new slides");
  EXPECT_EQ(zeilen(), 1);
}

TEST_F(NeuanlageJournalTest, AFurtherViewTakenBackClearsItsColumnsOnly) {
  blockAnlegen(conn_, "00001", 1);
  ASSERT_TRUE(conn_.execute("UPDATE tblBlockInfo SET AX0 = 1, AX2 = 5, BY2 = 6, BlkName2 = 'S' "
                            "WHERE Block = '00001'"));
  j_.ansicht = 2;
  j_.dateien = {qMakePair(temp_ + "/000012.slb", bib_ + "/000/000012.slb")};
  ASSERT_TRUE(fctJournalSchreiben(bib_, j_));
  EXPECT_EQ(fctNeuanlageAufraeumen(conn_, bib_), Aufraeumen::Zurueckgenommen);
  EXPECT_EQ(zeilen(), 1);
  EXPECT_TRUE(conn_.scalar("SELECT AX2 FROM tblBlockInfo WHERE Block = '00001'").isNull());
  EXPECT_TRUE(conn_.scalar("SELECT BY2 FROM tblBlockInfo WHERE Block = '00001'").isNull());
  EXPECT_TRUE(conn_.scalar("SELECT BlkName2 FROM tblBlockInfo WHERE Block = '00001'").isNull());
  EXPECT_EQ(conn_.scalar("SELECT AX0 FROM tblBlockInfo WHERE Block = '00001'").toInt(), 1);
}

TEST_F(NeuanlageJournalTest, AVariantsRowIsFoundByItsFileName) {
  const qint64 nr = blockAnlegen(conn_, "00001", 1);
  ASSERT_TRUE(conn_.execute("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) "
                            "VALUES ('V', ?, 'a00010.dwg')",
                            {nr}));
  j_.variante = true;
  j_.variaName = "a00010.dwg";
  j_.dateien = {qMakePair(temp_ + "/a00010.dwg", bib_ + "/000/Block/Varia/a00010.dwg")};
  ASSERT_TRUE(fctJournalSchreiben(bib_, j_));
  EXPECT_EQ(fctNeuanlageAufraeumen(conn_, bib_), Aufraeumen::Zurueckgenommen);
  EXPECT_EQ(conn_.scalar("SELECT COUNT(*) FROM tblVariationBloecke").toInt(), 0);
  EXPECT_EQ(zeilen(), 1);  // the block itself stays
}

TEST_F(NeuanlageJournalTest, AnUnreadableJournalIsDropped) {
  blockAnlegen(conn_, "00001", 1);
  for (const QByteArray& inhalt : {QByteArray("Unsinn\n"), QByteArray("Block=\nDatei=a\tb\n"),
                                   QByteArray("Block=00001\nAnsicht=0\n"),
                                   QByteArray("Block=00001\nAnsicht=9\nDatei=a\tb\n"),
                                   QByteArray("Block=00001\nDatei=nur-eins\n")}) {
    writeFile(fctJournalPfad(bib_), inhalt);
    EXPECT_EQ(fctNeuanlageAufraeumen(conn_, bib_), Aufraeumen::Verworfen) << inhalt.toStdString();
    EXPECT_FALSE(da(fctJournalPfad(bib_)));
  }
  EXPECT_EQ(zeilen(), 1);
}

TEST_F(NeuanlageJournalTest, OpeningTheLibraryFinishesTheBlock) {
  blockAnlegen(conn_, "00001", 1);
  tempDateien();
  ASSERT_TRUE(fctJournalSchreiben(bib_, j_));
  conn_.close();
  settings_->aryVerzeichnisseDatenbank = {db_};
  settings_->strAktuelleDatenbank = db_;
  Bibliothek b(*settings_);
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  EXPECT_TRUE(gefragt(930));
  EXPECT_TRUE(gefragt(931));
  EXPECT_FALSE(gefragt(932));
  EXPECT_EQ(readFile(j_.dateien[0].second), "slb");
  EXPECT_EQ(readFile(j_.dateien[1].second), "dwg");
  EXPECT_FALSE(da(fctJournalPfad(bib_)));
  EXPECT_EQ(b.rsBlockInfo0.RecordCount(), 1);
}

TEST_F(NeuanlageJournalTest, OpeningTheLibraryTakesBackAHalfBlock) {
  blockAnlegen(conn_, "00001", 1);
  ASSERT_TRUE(fctJournalSchreiben(bib_, j_));
  conn_.close();
  settings_->aryVerzeichnisseDatenbank = {db_};
  settings_->strAktuelleDatenbank = db_;
  Bibliothek b(*settings_);
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  EXPECT_TRUE(gefragt(930));
  EXPECT_TRUE(gefragt(932));
  EXPECT_EQ(b.rsBlockInfo0.RecordCount(), 0);
  EXPECT_FALSE(da(fctJournalPfad(bib_)));
}

}  // namespace
}  // namespace kolvane

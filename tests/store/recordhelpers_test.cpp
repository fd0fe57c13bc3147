#include "connection.h"
#include "recordhelpers.h"
#include "recordset.h"
#include "storetest.h"

namespace kolvane {
namespace {

class RecordHelpersTest : public StoreTest {
 protected:
  void SetUp() override {
    StoreTest::SetUp();
    db_ = neueBibliothek("lib");
    ASSERT_TRUE(conn_.open(db_));
  }
  QString db_;
  Connection conn_;
};

TEST_F(RecordHelpersTest, FindersStandOnTheFoundRowOrGoBack) {
  ordnerAnlegen(conn_, "001", "Schrauben");
  ordnerAnlegen(conn_, "002", "Muttern");
  Recordset rs;
  ASSERT_TRUE(fctRsEinlesenAllgemein(rs, conn_, "tblOrdner", "Nr"));
  EXPECT_TRUE(fctRsFind(rs, "Ordnername", "muttern   "));  // right-trimmed
  EXPECT_EQ(rs.text("OrdnerNr"), "002");
  EXPECT_TRUE(fctRsFindStringEnthalten(rs, "Ordnername", "RAUB"));
  EXPECT_EQ(rs.text("OrdnerNr"), "001");
  ASSERT_TRUE(rs.setAbsolutePosition(3));
  EXPECT_FALSE(fctRsFindMitZuruecksetzen(rs, "Ordnername", "Nägel"));
  EXPECT_EQ(rs.AbsolutePosition(), 3);
  EXPECT_FALSE(fctRsFind(rs, "Ordnername", "Nägel"));
  EXPECT_TRUE(rs.isEOF());
  EXPECT_EQ(fehlerBerichte(), 0);
}

TEST_F(RecordHelpersTest, AnApostropheInAFilterFailsAndChangesNothing) {
  Recordset rs;
  ASSERT_TRUE(fctRsEinlesenAllgemein(rs, conn_, "tblOrdner", ""));
  EXPECT_FALSE(fctRsFind(rs, "Ordnername", "Peter's"));
  EXPECT_EQ(fehlerBerichte(), 1);
  EXPECT_FALSE(fctPruefenWertVorhandenTrue(conn_, "tblOrdner", "Ordnername", "Peter's"));
  EXPECT_EQ(fctPruefenWertVorhandenMitRueckgabeWert(conn_, "tblOrdner", "Ordnername", "Peter's", "Nr"),
            "Fehler");
  EXPECT_FALSE(fctWertInSpalteSpeichern(conn_, "tblOrdner", "Ordnername", "OrdnerNr", "0'0", "neu"));
  EXPECT_EQ(conn_.scalar("SELECT Ordnername FROM tblOrdner").toString(), "Standard-Ordner");
  EXPECT_FALSE(fctRsEinlesenMitEinemKriterium(rs, conn_, "tblOrdner", "Ordnername", "a'b", 0));
  EXPECT_FALSE(rs.isOpen());
}

TEST_F(RecordHelpersTest, ReadersBuildTheirStatements) {
  ordnerAnlegen(conn_, "001", "Zwei");
  Recordset rs;
  ASSERT_TRUE(fctRsEinlesenAllgemein(rs, conn_, "tblOrdner", "Ordnername DESC"));
  EXPECT_EQ(rs.text("Ordnername"), "Zwei");
  ASSERT_TRUE(fctRsEinlesenMitEinemKriterium(rs, conn_, "tblOrdner", "OrdnerNr", "00%", 0));
  EXPECT_EQ(rs.RecordCount(), 2);
  ASSERT_TRUE(fctRsEinlesenMitEinemKriterium(rs, conn_, "tblOrdner", "Nr", "2", 1));
  EXPECT_EQ(rs.text("Ordnername"), "Zwei");
  EXPECT_FALSE(fctRsEinlesenAllgemein(rs, conn_, "tblBlockInfo", ""));  // no rows
  EXPECT_TRUE(rs.isOpen());
  Connection zu;
  EXPECT_FALSE(fctRsEinlesenMitEinemKriterium(rs, zu, "tblOrdner", "Nr", "1", 1));
}

TEST_F(RecordHelpersTest, ValuesAreReadCheckedAndStored) {
  EXPECT_EQ(fctWertInSpalteAuslesen(conn_, "tblOrdner", "Ordnername", "OrdnerNr", "000"),
            "Standard-Ordner");
  EXPECT_EQ(fctWertInSpalteAuslesen(conn_, "tblOrdner", "Ordnername", "OrdnerNr", "999"), "");
  EXPECT_EQ(fctPruefenWertVorhandenMitRueckgabeWert(conn_, "tblOrdner", "OrdnerNr", "000", "Nr"), "1");
  EXPECT_EQ(fctPruefenWertVorhandenMitRueckgabeWert(conn_, "tblOrdner", "OrdnerNr", "999", "Nr"), "0");
  EXPECT_EQ(fctPruefenWertVorhandenMitRueckgabeWert(conn_, "tblOrdner", "OrdnerNr", "000", "NrTblRechte"), "");
  EXPECT_TRUE(fctPruefenWertVorhandenTrue(conn_, "tblOrdner", "OrdnerNr", "000"));
  EXPECT_FALSE(fctPruefenWertVorhandenGroesser1True(conn_, "tblOrdner", "OrdnerNr", "000"));
  ordnerAnlegen(conn_, "000", "Doppelt");
  EXPECT_TRUE(fctPruefenWertVorhandenGroesser1True(conn_, "tblOrdner", "OrdnerNr", "000"));
  EXPECT_EQ(fctLetzterWertInSpalte(conn_, "tblOrdner", "Nr"), 2);
  EXPECT_EQ(fctLetzterWertInSpalte(conn_, "tblBlockInfo", "Nr"), 0);
}

TEST_F(RecordHelpersTest, AColumnIsAddedWhenFirstWritten) {
  blockAnlegen(conn_, "0000000", 1);
  EXPECT_EQ(fctWertInSpalteAuslesen(conn_, "tblBlockInfo", "Lisp2", "Block", "0000000"), "");
  EXPECT_TRUE(fctSpalteNichtVorhandenOhneEintrag0("Lisp2", "tblBlockInfo", db_));
  ASSERT_TRUE(fctWertInSpalteSpeichern(conn_, "tblBlockInfo", "Lisp2", "Block", "0000000", "(command \"_line\")"));
  EXPECT_EQ(fctWertInSpalteAuslesen(conn_, "tblBlockInfo", "Lisp2", "Block", "0000000"),
            "(command \"_line\")");
  EXPECT_FALSE(fctSpalteNichtVorhandenOhneEintrag0("Lisp2", "tblBlockInfo", db_));
  Recordset rs;
  ASSERT_TRUE(rs.Open("tblBlockInfo", conn_));
  EXPECT_EQ(rs.fieldWidth("Lisp2"), 100);
  // A column that is there stays as it is, and keeps its values.
  ASSERT_TRUE(fctSpalteAnlegenFallsNichtVorhanden(conn_, rs, "tblBlockInfo", "Lisp2", "TEXT (100)", "'x'"));
  EXPECT_EQ(fctWertInSpalteAuslesen(conn_, "tblBlockInfo", "Lisp2", "Block", "0000000"),
            "(command \"_line\")");
  // A new one with a default.
  ASSERT_TRUE(fctSpalteAnlegenFallsNichtVorhanden(conn_, rs, "tblOrdner", "NrTblOrdnen", "SHORT", "5"));
  EXPECT_EQ(conn_.scalar("SELECT NrTblOrdnen FROM tblOrdner").toInt(), 5);
  ASSERT_TRUE(fctWerteVonSpalteUebertragen(conn_, "tblOrdner", "NrTblOrdnen", "Nr"));
  EXPECT_EQ(conn_.scalar("SELECT NrTblOrdnen FROM tblOrdner").toInt(), 1);
}

TEST_F(RecordHelpersTest, WertVersetzenSwapsWithTheNeighbourButNotPastTheEnds) {
  ordnerAnlegen(conn_, "001", "B");
  ordnerAnlegen(conn_, "002", "C");
  Recordset rs;
  ASSERT_TRUE(fctRsEinlesenAllgemein(rs, conn_, "tblOrdner", "Nr"));
  EXPECT_FALSE(fctWertVersetzen(1, rs, 3, "OrdnerNr"));  // last row, next
  EXPECT_FALSE(fctWertVersetzen(0, rs, 1, "OrdnerNr"));  // first row, previous
  EXPECT_EQ(rs.AbsolutePosition(), 1);
  ASSERT_TRUE(fctWertVersetzen(1, rs, 1, "OrdnerNr"));
  ASSERT_TRUE(fctWertVersetzen(0, rs, 3, "OrdnerNr"));
  Recordset check;
  ASSERT_TRUE(check.Open("SELECT OrdnerNr FROM tblOrdner ORDER BY Nr", conn_));
  QStringList order;
  for (; !check.isEOF(); check.MoveNext()) order << check.text("OrdnerNr");
  EXPECT_EQ(order, QStringList({"001", "002", "000"}));
}

TEST_F(RecordHelpersTest, NaechsterFreierNameCountsOnFromTheNewestName) {
  const qint64 b = blockAnlegen(conn_, "0000000", 1);
  Q_UNUSED(b);
  EXPECT_EQ(fctNaechsterFreierName(conn_, "tblBlockInfo", "BlkName0", "Block0-"), "Block0-1");
  QStringList names;
  for (int i = 0; i < 11; ++i) {
    const QString n = fctNaechsterFreierName(conn_, "tblBlockInfo", "BlkName0", "Block0-");
    names << n;
    blockAnlegen(conn_, QString("00000%1").arg(i + 10), 1);
    ASSERT_TRUE(conn_.execute("UPDATE tblBlockInfo SET BlkName0 = ? WHERE Nr = ?", {n, qint64(conn_.lastInsertId())}));
  }
  EXPECT_EQ(names.first(), "Block0-1");
  EXPECT_EQ(names[1], "Block0-2");
  EXPECT_EQ(names.last(), "Block0-11");  // past the text order of "Block0-9" and "Block0-10"
  // Leading zeros of the number fall away; a taken name is skipped.
  const qint64 aelter = blockAnlegen(conn_, "0000099", 1);
  const qint64 neuer = blockAnlegen(conn_, "0000098", 1);
  ASSERT_TRUE(conn_.execute("UPDATE tblBlockInfo SET BlkName1 = 'Block1-8' WHERE Nr = ?", {aelter}));
  ASSERT_TRUE(conn_.execute("UPDATE tblBlockInfo SET BlkName1 = 'Block1-007' WHERE Nr = ?", {neuer}));
  EXPECT_EQ(fctNaechsterFreierName(conn_, "tblBlockInfo", "BlkName1", "Block1-"), "Block1-9");
  Connection zu;
  EXPECT_EQ(fctNaechsterFreierName(zu, "tblBlockInfo", "BlkName0", "Block0-"), "");
  EXPECT_EQ(fehlerBerichte(), 1);
}

TEST_F(RecordHelpersTest, AlleEintraegLoeschenStopsAtTheFirstFailure) {
  ordnerAnlegen(conn_, "001", "leer");
  ordnerAnlegen(conn_, "002", "auch leer");
  Recordset rs;
  ASSERT_TRUE(rs.Open("SELECT * FROM tblOrdner ORDER BY Nr DESC", conn_));
  // The two empty folders go; folder 1 has its page and stops the run.
  EXPECT_FALSE(fctAlleEintraegLoeschen(rs));
  EXPECT_EQ(fehlerBerichte(), 1);
  EXPECT_EQ(conn_.scalar("SELECT count(*) FROM tblOrdner").toInt(), 1);
  ASSERT_TRUE(rs.Open("tblSeiten", conn_));
  EXPECT_TRUE(fctAlleEintraegLoeschen(rs));
  EXPECT_EQ(rs.RecordCount(), 0);
  EXPECT_EQ(conn_.scalar("SELECT count(*) FROM tblSeiten").toInt(), 0);
}

TEST_F(RecordHelpersTest, ConnectionOeffnen) {
  Connection c;
  EXPECT_TRUE(fctConnectionOeffnen(c, db_, "", "", "", 0));
  EXPECT_TRUE(c.isOpen());
  Connection server;
  EXPECT_FALSE(fctConnectionOeffnen(server, "kolvane", "srv", "u", "p", 1));
  EXPECT_FALSE(server.isOpen());
  EXPECT_EQ(fehlerBerichte(), 1);
  EXPECT_TRUE(prompt_->asked.join('\n').contains("nicht verfügbar"));
}

}  // namespace
}  // namespace kolvane

namespace kolvane {
namespace {

TEST_F(RecordHelpersTest, AViewExistsWhileItsPointAHasAnX) {
  blockAnlegen(conn_, "0000000", 1);
  // View 1 at the origin, 2 never made, 3 from the keystroke route, 4 blank text.
  ASSERT_TRUE(conn_.execute("UPDATE tblBlockInfo SET AX1 = 0, AX3 = '0.1', AX4 = ' '"));
  Recordset rs;
  ASSERT_TRUE(rs.Open("SELECT AX1, AX2, AX3, AX4 FROM tblBlockInfo", conn_));
  rs.MoveFirst();
  EXPECT_TRUE(byteAnsichtVorhanden(rs, 0));
  EXPECT_TRUE(byteAnsichtVorhanden(rs, 1)) << "a point at x 0 is a point";
  EXPECT_FALSE(byteAnsichtVorhanden(rs, 2));
  EXPECT_TRUE(byteAnsichtVorhanden(rs, 3));
  EXPECT_FALSE(byteAnsichtVorhanden(rs, 4));
  EXPECT_EQ(fctVorhandeneAnsichten(rs), (std::vector<uint8_t>{0, 1, 3}));
  // The SQL form picks the same views.
  for (int k = 1; k <= 4; ++k)
    EXPECT_EQ(conn_.scalar("SELECT COUNT(*) FROM tblBlockInfo WHERE " + fctAnsichtVorhandenSql(k)).toInt(),
              byteAnsichtVorhanden(rs, k) ? 1 : 0)
        << "view " << k;
  // Deleting a view nulls its columns: gone. Past the last row nothing exists.
  ASSERT_TRUE(conn_.execute("UPDATE tblBlockInfo SET AX1 = NULL"));
  ASSERT_TRUE(rs.Requery());
  rs.MoveFirst();
  EXPECT_FALSE(byteAnsichtVorhanden(rs, 1));
  rs.MoveNext();
  EXPECT_EQ(fctVorhandeneAnsichten(rs), std::vector<uint8_t>{0});
}

}  // namespace
}  // namespace kolvane

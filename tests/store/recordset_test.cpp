#include "connection.h"
#include "jetsql.h"
#include "recordset.h"
#include "storetest.h"
#include "textcompare.h"

namespace kolvane {
namespace {

class RecordsetTest : public StoreTest {
 protected:
  void SetUp() override {
    StoreTest::SetUp();
    db_ = neueBibliothek("lib");
    ASSERT_TRUE(conn_.open(db_));
    for (const char* name : {"Zange", "Äxte", "schraube_M8", "Schraube M10", "Mutter 50%", "Öse"})
      ordnerAnlegen(conn_, "00" + QString::number(++n_), QString::fromUtf8(name));
  }
  QString db_;
  Connection conn_;
  int n_ = 0;
};

TEST_F(RecordsetTest, FindFollowsTheLikeRulesOfTheOldCursor) {
  Recordset rs;
  ASSERT_TRUE(rs.Open("SELECT * FROM tblOrdner ORDER BY Nr", conn_));
  auto find = [&](const QString& criteria) {
    rs.MoveFirst();
    return rs.Find(criteria) ? rs.text("Ordnername") : QString("-");
  };
  EXPECT_EQ(find("Ordnername LIKE 'zange'"), "Zange");              // case
  EXPECT_EQ(find("Ordnername LIKE 'äXTE'"), QString::fromUtf8("Äxte"));  // beyond ASCII
  EXPECT_EQ(find("Ordnername LIKE 'Schraube%'"), "schraube_M8");
  EXPECT_EQ(find("Ordnername LIKE 'Schraube*10'"), "Schraube M10");  // * as %
  EXPECT_EQ(find("Ordnername LIKE 'Schraube_M10'"), "Schraube M10"); // _ one character
  EXPECT_EQ(find("Ordnername LIKE 'Schraube'"), "-");                // the whole text
  EXPECT_EQ(find("Ordnername LIKE '%50%'"), "Mutter 50%");
  EXPECT_EQ(find("[Ordnername] = 'öse'"), QString::fromUtf8("Öse"));  // = ignores case too
  EXPECT_EQ(find("Nr = 3"), QString::fromUtf8("Äxte"));
  EXPECT_EQ(find("OrdnerNr LIKE '00_'"), "Standard-Ordner");

  // Forward from the current row, with skip; not found leaves it at EOF.
  rs.MoveFirst();
  ASSERT_TRUE(rs.Find("Ordnername LIKE 'Schr%'"));
  EXPECT_EQ(rs.text("Ordnername"), "schraube_M8");
  ASSERT_TRUE(rs.Find("Ordnername LIKE 'Schr%'", 1));
  EXPECT_EQ(rs.text("Ordnername"), "Schraube M10");
  EXPECT_FALSE(rs.Find("Ordnername LIKE 'Schr%'", 1));
  EXPECT_TRUE(rs.isEOF());
  EXPECT_TRUE(rs.lastError().isEmpty());
  // Backward from the last row.
  rs.MoveLast();
  ASSERT_TRUE(rs.Find("Ordnername LIKE 'Schr%'", 0, Recordset::Direction::Backward));
  EXPECT_EQ(rs.text("Ordnername"), "Schraube M10");
}

// After a Delete the deleted row stays current: a Find from there goes on from
// its place, backward to the row before it, forward to the one after it.
TEST_F(RecordsetTest, AFindAfterADeleteGoesOnFromTheDeletedRowsPlace) {
  Recordset rs;
  ASSERT_TRUE(rs.Open("SELECT * FROM tblOrdner ORDER BY Nr", conn_));
  // Rows: the standard folder, Zange, Äxte, schraube_M8, Schraube M10, Mutter 50%, Öse.
  ASSERT_TRUE(rs.Find("Ordnername LIKE 'Schraube M10'"));
  ASSERT_TRUE(rs.Delete());
  ASSERT_TRUE(rs.Find("Ordnername LIKE '%e%'", 0, Recordset::Direction::Backward));
  EXPECT_EQ(rs.text("Ordnername"), "schraube_M8");
  ASSERT_TRUE(rs.Find("Ordnername LIKE 'schraube_M8'"));
  ASSERT_TRUE(rs.Delete());
  ASSERT_TRUE(rs.Find("Ordnername LIKE '%e%'"));
  EXPECT_EQ(rs.text("Ordnername"), "Mutter 50%");
  // Deleted rows are found no more, either way.
  rs.MoveLast();
  EXPECT_FALSE(rs.Find("Ordnername LIKE 'schraube%'", 0, Recordset::Direction::Backward));
  EXPECT_TRUE(rs.isBOF());
}

TEST_F(RecordsetTest, FindOnEmptyOrClosedSetIsFalseWithoutError) {
  Recordset rs;
  EXPECT_FALSE(rs.Find("Block LIKE 'x'"));
  EXPECT_TRUE(rs.lastError().isEmpty());
  ASSERT_TRUE(rs.Open("SELECT * FROM tblBlockInfo", conn_));
  EXPECT_EQ(rs.RecordCount(), 0);
  EXPECT_TRUE(rs.isBOF() && rs.isEOF());
  EXPECT_FALSE(rs.Find("Block LIKE 'x'"));
  EXPECT_TRUE(rs.lastError().isEmpty());
  EXPECT_EQ(fehlerBerichte(), 0);
}

TEST_F(RecordsetTest, BadCriteriaFailWithAReason) {
  Recordset rs;
  ASSERT_TRUE(rs.Open("tblOrdner", conn_));
  for (const char* bad : {"Ordnername LIKE 'O'Brien'", "Ordnername LIKE 'offen", "Gibtsnicht = 1",
                          "Ordnername", "Nr = abc"}) {
    rs.MoveFirst();
    EXPECT_FALSE(rs.Find(bad)) << bad;
    EXPECT_FALSE(rs.lastError().isEmpty()) << bad;
  }
  // A doubled quote is one quote in the value.
  ASSERT_TRUE(conn_.execute("UPDATE tblOrdner SET Ordnername = 'O''Brien' WHERE Nr = 2"));
  ASSERT_TRUE(rs.Requery());
  EXPECT_TRUE(rs.Find("Ordnername LIKE 'o''brien'"));
}

TEST_F(RecordsetTest, FilterShowsMatchingRowsAndCountsThem) {
  Recordset rs;
  ASSERT_TRUE(rs.Open("SELECT * FROM tblOrdner ORDER BY Nr", conn_));
  EXPECT_EQ(rs.RecordCount(), 7);
  ASSERT_TRUE(rs.setFilter("Ordnername LIKE 's%'"));
  EXPECT_EQ(rs.RecordCount(), 3);  // Standard-Ordner and the two screws
  EXPECT_EQ(rs.AbsolutePosition(), 1);
  ASSERT_TRUE(rs.setFilter("Ordnername LIKE 's%' AND OrdnerNr <> '000' OR Nr = 7"));
  EXPECT_EQ(rs.RecordCount(), 3);
  ASSERT_TRUE(rs.setFilter(""));
  EXPECT_EQ(rs.RecordCount(), 7);
  EXPECT_FALSE(rs.setFilter("Ordnername LIKE 'x' XOR Nr = 1"));
}

TEST_F(RecordsetTest, PositionsFollowTheOldCursor) {
  Recordset rs;
  ASSERT_TRUE(rs.Open("SELECT * FROM tblOrdner ORDER BY Nr", conn_));
  EXPECT_EQ(rs.AbsolutePosition(), 1);
  EXPECT_FALSE(rs.isBOF());
  rs.MovePrevious();
  EXPECT_TRUE(rs.isBOF());
  EXPECT_EQ(rs.AbsolutePosition(), Recordset::adPosBOF);
  rs.MoveLast();
  EXPECT_EQ(rs.AbsolutePosition(), 7);
  rs.MoveNext();
  EXPECT_TRUE(rs.isEOF());
  EXPECT_EQ(rs.AbsolutePosition(), Recordset::adPosEOF);
  EXPECT_FALSE(rs.value("Nr").isValid());
  ASSERT_TRUE(rs.setAbsolutePosition(3));
  EXPECT_EQ(rs.value("Nr").toInt(), 3);
  rs.Move(2);
  EXPECT_EQ(rs.value("nr").toInt(), 5);  // fields without regard to case
  rs.Move(10);
  EXPECT_TRUE(rs.isEOF());
  EXPECT_FALSE(rs.setAbsolutePosition(8));
}

TEST_F(RecordsetTest, RowsOfASelectWithoutNrCanBeChangedAndDeleted) {
  blockAnlegen(conn_, "0000000", 1, "eins");
  blockAnlegen(conn_, "0000001", 1, "zwei");
  Recordset rs;
  ASSERT_TRUE(rs.Open("SELECT Block, M0 FROM tblBlockInfo WHERE OrdnerID = 1", conn_));
  ASSERT_TRUE(rs.Find("Block LIKE '0000001'"));
  ASSERT_TRUE(rs.Update("M0", "neu"));
  EXPECT_EQ(conn_.scalar("SELECT M0 FROM tblBlockInfo WHERE Block = '0000001'").toString(), "neu");
  EXPECT_EQ(conn_.scalar("SELECT M0 FROM tblBlockInfo WHERE Block = '0000000'").toString(), "eins");
  rs.MoveFirst();
  ASSERT_TRUE(rs.Delete());
  EXPECT_FALSE(rs.value("Block").isValid());  // deleted, until the cursor moves
  EXPECT_EQ(rs.RecordCount(), 1);
  rs.MoveNext();
  EXPECT_EQ(rs.text("Block"), "0000001");
  EXPECT_EQ(conn_.scalar("SELECT count(*) FROM tblBlockInfo").toInt(), 1);
}

TEST_F(RecordsetTest, AddNewGetsTheNextKeyAndNumbersAreConverted) {
  Recordset rs;
  ASSERT_TRUE(rs.Open("SELECT Nr, Block, OrdnerID, AX1, BlkName1 FROM tblBlockInfo", conn_));
  ASSERT_TRUE(rs.AddNew());
  rs.setValue("Block", "0000005");
  rs.setValue("OrdnerID", "1");
  rs.setValue("AX1", "0.1");
  ASSERT_TRUE(rs.Update());
  EXPECT_EQ(rs.RecordCount(), 1);
  EXPECT_GT(rs.value("Nr").toInt(), 0);
  EXPECT_EQ(rs.value("OrdnerID").typeId(), QMetaType::LongLong);
  EXPECT_DOUBLE_EQ(rs.value("AX1").toDouble(), 0.1);
  EXPECT_TRUE(rs.value("BlkName1").isNull());
  EXPECT_EQ(rs.text("BlkName1"), "");
  // An empty text in a number column is no value; a word is refused.
  ASSERT_TRUE(rs.Update("AX1", ""));
  EXPECT_TRUE(rs.value("AX1").isNull());
  EXPECT_FALSE(rs.setValue("AX1", "abc"));
}

TEST_F(RecordsetTest, TextLongerThanItsColumnIsRefused) {
  Recordset rs;
  ASSERT_TRUE(rs.Open("tblOrdner", conn_));
  EXPECT_EQ(rs.fieldWidth("OrdnerNr"), 3);
  EXPECT_TRUE(rs.Update("OrdnerNr", "abc"));
  EXPECT_FALSE(rs.Update("OrdnerNr", "abcd"));
  EXPECT_EQ(fehlerBerichte(), 1);
  EXPECT_EQ(conn_.scalar("SELECT OrdnerNr FROM tblOrdner WHERE Nr = 1").toString(), "abc");
  EXPECT_EQ(rs.text("OrdnerNr"), "abc");
  ASSERT_TRUE(rs.AddNew());
  rs.setValue("Ordnername", QString(101, 'x'));
  EXPECT_FALSE(rs.Update());
  EXPECT_EQ(conn_.scalar("SELECT count(*) FROM tblOrdner").toInt(), 7);
}

TEST_F(RecordsetTest, AChangeByAnotherUserIsNotOverwritten) {
  Recordset mine;
  ASSERT_TRUE(mine.Open("tblOrdner", conn_));
  Connection other;
  ASSERT_TRUE(other.open(db_));
  ASSERT_TRUE(other.execute("UPDATE tblOrdner SET Ordnername = 'von Anna' WHERE Nr = 1"));
  EXPECT_FALSE(mine.Update("Ordnername", "von Bernd"));
  EXPECT_EQ(fehlerBerichte(), 1);
  EXPECT_EQ(mine.text("Ordnername"), "von Anna");  // the row was read again
  EXPECT_TRUE(mine.Update("Ordnername", "von Bernd"));
  // A row another user deleted.
  ASSERT_TRUE(mine.setAbsolutePosition(2));
  ASSERT_TRUE(other.execute("DELETE FROM tblOrdner WHERE Nr = 2"));
  EXPECT_FALSE(mine.Update("Ordnername", "x"));
  EXPECT_EQ(conn_.scalar("SELECT Ordnername FROM tblOrdner WHERE Nr = 1").toString(), "von Bernd");
}

TEST_F(RecordsetTest, ColumnsALibraryMayLackReadAsEmpty) {
  Recordset rs;
  ASSERT_TRUE(rs.Open("SELECT * FROM tblMarkierteBloecke", conn_));
  ASSERT_TRUE(rs.AddNew());
  rs.setValue("BlockNr", "0000000");
  ASSERT_TRUE(rs.Update());
  EXPECT_EQ(rs.text("Layer"), "");
  EXPECT_EQ(rs.text("LYCOLOR"), "");
  ASSERT_TRUE(rs.Open("SELECT * FROM tblBlockInfo", conn_));
  EXPECT_EQ(rs.text("Lisp3"), "");
  EXPECT_EQ(fehlerBerichte(), 0);
}

TEST_F(RecordsetTest, SqlLikeAndOrderIgnoreCaseForEveryLetter) {
  EXPECT_EQ(conn_.scalar("SELECT count(*) FROM tblOrdner WHERE Ordnername LIKE 'ÄX%'").toInt(), 1);
  EXPECT_EQ(conn_.scalar("SELECT count(*) FROM tblOrdner WHERE Ordnername LIKE 'schraube_m%'").toInt(), 2);
  EXPECT_EQ(conn_.scalar("SELECT count(*) FROM tblOrdner WHERE Ordnername LIKE '%!%' ESCAPE '!'").toInt(), 1);
  EXPECT_EQ(conn_.scalar("SELECT count(*) FROM tblOrdner WHERE Ordnername = 'ÖSE'").toInt(), 1);
  EXPECT_EQ(conn_.scalar("SELECT count(*) FROM tblOrdner WHERE Ordnername LIKE NULL").toInt(), 0);
  Recordset rs;
  ASSERT_TRUE(rs.Open("SELECT Ordnername FROM tblOrdner WHERE Ordnername LIKE 's%' ORDER BY Ordnername", conn_));
  QStringList order;
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext()) order << rs.text("Ordnername");
  EXPECT_EQ(order, QStringList({"Schraube M10", "schraube_M8", "Standard-Ordner"}));
}

TEST_F(RecordsetTest, OldEngineTypesAreTranslated) {
  EXPECT_EQ(translateJetSql("ALTER TABLE t ADD COLUMN c TEXT (100)"),
            "ALTER TABLE t ADD COLUMN c TEXT(100) COLLATE NOCASE");
  EXPECT_EQ(translateJetSql("ALTER TABLE tblOrdner ADD COLUMN NrTblOrdnen SHORT"),
            "ALTER TABLE tblOrdner ADD COLUMN NrTblOrdnen SMALLINT");
  EXPECT_EQ(translateJetSql("CREATE TABLE x (Nr COUNTER, n LONG, s TEXT(5) COLLATE NOCASE)"),
            "CREATE TABLE x (Nr INTEGER PRIMARY KEY AUTOINCREMENT, n INTEGER, s TEXT(5) COLLATE NOCASE)");
  EXPECT_EQ(translateJetSql("UPDATE t SET a = 'SHORT TEXT (3)' WHERE [Long] = 1"),
            "UPDATE t SET a = 'SHORT TEXT (3)' WHERE [Long] = 1");
}

TEST(TextCompare, LikeMatchEdges) {
  EXPECT_TRUE(likeMatch(u"", u"%", LikeWildcards::Sql));
  EXPECT_FALSE(likeMatch(u"", u"_", LikeWildcards::Sql));
  EXPECT_TRUE(likeMatch(u"abcabc", u"%a_c", LikeWildcards::Sql));
  EXPECT_FALSE(likeMatch(u"abcabc", u"%b_c", LikeWildcards::Sql));
  EXPECT_TRUE(likeMatch(u"a*c", u"a*c", LikeWildcards::Sql));  // * is plain in SQL
  EXPECT_FALSE(likeMatch(u"abc", u"a*c", LikeWildcards::Sql));
  EXPECT_TRUE(likeMatch(u"abc", u"a*c", LikeWildcards::Ado));
  EXPECT_TRUE(likeMatch(u"STRASSE", u"straSSe", LikeWildcards::Ado));
  EXPECT_TRUE(likeMatch(u"a%b", u"a\\%b", LikeWildcards::Sql, u'\\'));
  EXPECT_FALSE(likeMatch(u"axb", u"a\\%b", LikeWildcards::Sql, u'\\'));
  EXPECT_TRUE(equalNoCase(u"Ärger", u"äRGER"));
  EXPECT_LT(compareNoCase(u"abc", u"ABD"), 0);
}

// The matcher over a library's UTF-8 text agrees with the one over UTF-16 for
// every pair, wildcards, umlauts and escape included.
TEST(TextCompare, Utf8LikeAgreesWithUtf16Like) {
  const QStringList texte{"", "a", "Müller", "MÜLLER & Söhne", "Straße", "Ø 25 – Ω", "a%b", "a_b",
                          "Ventil DN25", "ventil dn250", "ÄÖÜäöüß", "x'y\\z", "🔩 M8"};
  const QStringList muster{"%", "_", "%müll%", "M_LLER%", "%ß%", "straße", "%Ø%", "a\\%b", "%\\_%",
                           "ventil dn2_", "%dn25", "ä%ü_", "%_%_%", "%🔩%", "x'%z"};
  for (const QString& t : texte)
    for (const QString& m : muster)
      for (QChar esc : {QChar(), QChar(u'\\')}) {
        const QByteArray t8 = t.toUtf8(), m8 = m.toUtf8();
        EXPECT_EQ(likeMatchUtf8(reinterpret_cast<const unsigned char*>(t8.constData()), int(t8.size()),
                                reinterpret_cast<const unsigned char*>(m8.constData()), int(m8.size()),
                                esc.unicode()),
                  likeMatch(t, m, LikeWildcards::Sql, esc))
            << t.toStdString() << " LIKE " << m.toStdString() << " escape " << !esc.isNull();
      }
  // Ill-formed bytes are one character each, and never read past the end.
  const unsigned char kaputt[] = {'a', 0xC3, 'b', 0xE2, 0x82};
  const unsigned char drei[] = {'a', '_', 'b', '%'};
  EXPECT_TRUE(likeMatchUtf8(kaputt, 5, drei, 4));
}

}  // namespace
}  // namespace kolvane

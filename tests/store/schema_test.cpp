#include <QFile>

#include "connection.h"
#include "recordset.h"
#include "schema.h"
#include "storetest.h"

namespace kolvane {
namespace {

class SchemaTest : public StoreTest {};

struct ColumnInfo {
  QString name, type;
  bool notNull;
  bool pk;
};

QList<ColumnInfo> tableInfo(Connection& c, const QString& table) {
  QList<ColumnInfo> out;
  Recordset rs;
  EXPECT_TRUE(rs.Open("SELECT name, type, \"notnull\", pk FROM pragma_table_info('" + table + "')", c));
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext())
    out << ColumnInfo{rs.text("name"), rs.text("type"), rs.value("notnull").toInt() != 0,
                      rs.value("pk").toInt() != 0};
  return out;
}

TEST_F(SchemaTest, NewLibraryHoldsOneFolderOnePageOneDefinitionAndNoBlocks) {
  const QString db = neueBibliothek("lib");
  Connection c;
  ASSERT_TRUE(c.open(db));
  Recordset rs;
  ASSERT_TRUE(rs.Open("tblOrdner", c));
  ASSERT_EQ(rs.RecordCount(), 1);
  EXPECT_EQ(rs.value("Nr").toInt(), 1);
  EXPECT_EQ(rs.text("OrdnerNr"), "000");
  EXPECT_EQ(rs.text("Ordnername"), "Standard-Ordner");
  EXPECT_EQ(rs.text("OrdnerRechte"), "Alle");
  EXPECT_EQ(rs.value("NrTblDefMenue").toInt(), 1);
  EXPECT_TRUE(rs.value("NrTblRechte").isNull());
  EXPECT_FALSE(rs.hasField("NrTblOrdnen"));  // added by the first opening

  ASSERT_TRUE(rs.Open("tblSeiten", c));
  ASSERT_EQ(rs.RecordCount(), 1);
  EXPECT_EQ(rs.value("SeitenNr").toInt(), 1);
  EXPECT_EQ(rs.text("SeitenName"), "1");
  EXPECT_EQ(rs.value("NrTblOrdner").toInt(), 1);

  ASSERT_TRUE(rs.Open("tblDefMenue", c));
  ASSERT_EQ(rs.RecordCount(), 1);
  EXPECT_EQ(rs.value("global").toInt(), 1);
  for (int i = 1; i <= 10; ++i) {
    EXPECT_EQ(rs.text(QString("Benennung%1").arg(i)), "*****Frei*****");
    EXPECT_FALSE(rs.value(QString("Standardwert%1").arg(i)).isNull());
    EXPECT_EQ(rs.text(QString("Standardwert%1").arg(i)), "");
  }
  for (const char* t : {"tblBlockInfo", "tblMarkierteBloecke", "tblVariationBloecke"})
    EXPECT_EQ(c.scalar(QString("SELECT count(*) FROM ") + t).toInt(), 0) << t;
}

TEST_F(SchemaTest, TablesColumnsTypesAndKeysAreAsDeclared) {
  const QString db = neueBibliothek("lib");
  Connection c;
  ASSERT_TRUE(c.open(db));
  Recordset rs;
  ASSERT_TRUE(rs.Open("SELECT name FROM sqlite_master WHERE type = 'table' AND name LIKE 'tbl%' "
                      "ORDER BY rowid", c));
  QStringList tables;
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext()) tables << rs.text("name");
  EXPECT_EQ(tables, QStringList({"tblBlockInfo", "tblDefMenue", "tblOrdner", "tblSeiten",
                                 "tblMarkierteBloecke", "tblVariationBloecke"}));

  const auto block = tableInfo(c, "tblBlockInfo");
  ASSERT_EQ(block.size(), 1 + 3 + 5 + 10 + 90 + 5 + 4);
  EXPECT_EQ(block[0].name, "Nr");
  EXPECT_EQ(block[0].type, "INTEGER");
  EXPECT_TRUE(block[0].pk);
  EXPECT_EQ(block[1].name, "Block");
  EXPECT_EQ(block[1].type, "TEXT(144)");
  EXPECT_EQ(block[3].name, "OrdnerID");
  EXPECT_EQ(block[3].type, "INTEGER");
  EXPECT_EQ(block[4].name, "BlkName0");
  EXPECT_EQ(block[4].type, "TEXT(32)");
  EXPECT_EQ(block[19].name, "AX0");
  EXPECT_EQ(block[19].type, "DOUBLE");
  EXPECT_EQ(block[20].name, "AY0");
  EXPECT_EQ(block[22].name, "BX0");
  EXPECT_EQ(block[37].name, "AX1");
  EXPECT_EQ(block[108].name, "FZ4");
  EXPECT_EQ(block[109].name, "FktRuf0");
  EXPECT_EQ(block[114].name, "Prg");
  EXPECT_EQ(block[114].type, "TEXT(3)");
  EXPECT_EQ(block[115].name, "Layer");
  EXPECT_EQ(block[115].type, "TEXT(35)");
  EXPECT_EQ(block[116].type, "TEXT(20)");
  EXPECT_EQ(block[117].name, "LyColor");
  EXPECT_EQ(block[117].type, "TEXT(4)");
  for (const ColumnInfo& col : block) EXPECT_FALSE(col.notNull) << col.name.toStdString();

  const auto def = tableInfo(c, "tblDefMenue");
  ASSERT_EQ(def.size(), 22);
  EXPECT_EQ(def[1].name, "global");
  EXPECT_EQ(def[2].name, "Benennung1");
  EXPECT_EQ(def[3].name, "Standardwert1");
  EXPECT_EQ(def[21].name, "Standardwert10");

  const auto marks = tableInfo(c, "tblMarkierteBloecke");
  ASSERT_EQ(marks.size(), 7);  // the narrow form
  EXPECT_EQ(marks.last().name, "NummerEinfuegepkt");

  // Keys: one per child column, with their names.
  const QString sql = c.scalar("SELECT sql FROM sqlite_master WHERE name = 'tblBlockInfo'").toString();
  EXPECT_TRUE(sql.contains("CONSTRAINT PrimaryKey PRIMARY KEY AUTOINCREMENT"));
  EXPECT_TRUE(sql.contains("CONSTRAINT tblOrdner_tblBlockInfo FOREIGN KEY (OrdnerID)"));
  EXPECT_TRUE(c.scalar("SELECT sql FROM sqlite_master WHERE name = 'tblOrdner'")
                  .toString()
                  .contains("tblDefMenue_tblOrdner"));
  EXPECT_EQ(c.scalar("SELECT count(*) FROM pragma_foreign_key_list('tblSeiten')").toInt(), 1);
  EXPECT_EQ(c.scalar("SELECT count(*) FROM pragma_foreign_key_list('tblVariationBloecke')").toInt(), 1);
  EXPECT_EQ(c.scalar("SELECT sql FROM sqlite_master WHERE type = 'index' AND name = 'OrdnerID'")
                .toString(),
            "CREATE INDEX OrdnerID ON tblBlockInfo(OrdnerID DESC)");
}

TEST_F(SchemaTest, ParentRowsWithChildrenCantBeDeleted) {
  const QString db = neueBibliothek("lib");
  Connection c;
  ASSERT_TRUE(c.open(db));
  // The folder has its page: refused.
  EXPECT_FALSE(c.execute("DELETE FROM tblOrdner WHERE Nr = 1"));
  EXPECT_TRUE(c.error().contains("FOREIGN KEY"));
  // With a block as well, deleting the page is not enough.
  const qint64 block = blockAnlegen(c, "0000000", 1, "Schraube");
  ASSERT_TRUE(c.execute("INSERT INTO tblVariationBloecke (BlockName, BlockID) VALUES ('v', ?)", {block}));
  ASSERT_TRUE(c.execute("DELETE FROM tblSeiten"));
  EXPECT_FALSE(c.execute("DELETE FROM tblOrdner WHERE Nr = 1"));
  EXPECT_FALSE(c.execute("DELETE FROM tblBlockInfo"));  // the variant still points at it
  // The definition row is a parent of the folder.
  EXPECT_FALSE(c.execute("DELETE FROM tblDefMenue"));
  // Children first, then the parent.
  ASSERT_TRUE(c.execute("DELETE FROM tblVariationBloecke"));
  ASSERT_TRUE(c.execute("DELETE FROM tblBlockInfo"));
  EXPECT_TRUE(c.execute("DELETE FROM tblOrdner WHERE Nr = 1"));
  // A row can't point at a folder that is not there.
  EXPECT_FALSE(c.execute("INSERT INTO tblSeiten (SeitenNr, NrTblOrdner) VALUES (1, 77)"));
}

TEST_F(SchemaTest, KeysAreNeverUsedTwice) {
  const QString db = neueBibliothek("lib");
  Connection c;
  ASSERT_TRUE(c.open(db));
  const qint64 a = ordnerAnlegen(c, "001", "A");
  ASSERT_TRUE(c.execute("DELETE FROM tblOrdner WHERE Nr = ?", {a}));
  EXPECT_EQ(ordnerAnlegen(c, "002", "B"), a + 1);
}

TEST_F(SchemaTest, WideMarksTableHasTheLayerColumns) {
  const QString db = neueBibliothek("lib");
  Connection c;
  ASSERT_TRUE(c.open(db));
  ASSERT_TRUE(c.execute("DROP TABLE tblMarkierteBloecke"));
  c.close();
  ASSERT_TRUE(subMk_TblMarkierteBloecke(db));
  ASSERT_TRUE(c.open(db));
  EXPECT_EQ(c.columns("tblMarkierteBloecke"),
            QStringList({"Nr", "BlockName", "BlockNr", "SpeicherOrtSlide", "SpeicherOrtDWG",
                         "MarkierteAnsicht", "NummerEinfuegepkt", "Layer", "LyLine", "LyColor"}));
}

TEST_F(SchemaTest, NeverCreatedOverAnExistingFile) {
  writeFile(path("lib/dbKolvane.mdb"), "the user's data");
  EXPECT_FALSE(Mk_Datenbank(path("lib/dbKolvane.mdb")));
  EXPECT_EQ(readFile(path("lib/dbKolvane.mdb")), "the user's data");
  EXPECT_EQ(fehlerBerichte(), 1);
}

}  // namespace
}  // namespace kolvane

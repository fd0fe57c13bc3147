#include <QDir>
#include <QFileInfo>
#include <algorithm>

#include "bibliothekspruefung.h"
#include "connection.h"
#include "einfuegentest.h"
#include "prefix.h"

namespace kolvane {

namespace {

// The findings in a form that compares whole: kind, code, file.
struct Kurz {
  Befund::Art art;
  QString block;
  QString datei;
  bool operator==(const Kurz&) const = default;
};

void PrintTo(const Kurz& k, std::ostream* os) {
  *os << "{" << fctBefundArtText(k.art).toStdString() << ", " << k.block.toStdString() << ", "
      << k.datei.toStdString() << "}";
}

std::vector<Kurz> kurz(const std::vector<Befund>& befunde) {
  std::vector<Kurz> out;
  for (const Befund& b : befunde) out.push_back({b.art, b.block, b.datei});
  return out;
}

}  // namespace

// A consistent library: blocks on slots 0 to 4 of folder 000, block 1 with a
// further view, block 2 with a variant and its list, a mark on block 0, a cut
// block waiting as "ZwischenA" (old code of slot 7) and a block of a cut page
// ("3§" + code of slot 8), both with their files under their old codes and a
// mark on the cut block.
class BibliothekspruefungTest : public EinfuegenTest {
 protected:
  void SetUp() override {
    EinfuegenTest::SetUp();
    ASSERT_TRUE(fctPrefixEinlesen(40, prefix_));
    for (int slot = 0; slot < 5; ++slot) code_ << blockAnlegen(slot, "B" + QString::number(slot));
    punkteSetzen(code_[1], 1, {{1, 2, 3}});
    writeFile(zeichnung(code_[1], 1), "view 1");
    writeFile(bib_ + "/000/" + code_[1] + "1.slb", "slides of view 1");
    ausfuehren("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) "
               "SELECT 'Var', Nr, ? FROM tblBlockInfo WHERE Block = ?",
               {varia_ = prefix_[0] + code_[2].right(4) + "0.dwg", code_[2]});
    writeFile(bib_ + "/000/Block/Varia/" + varia_, "variant");
    writeFile(bib_ + "/000/" + code_[2] + "0.dat", "list");
    markieren(code_[0], zeichnung(code_[0], 0), 0, 1);

    alterCode_ = fctBlockCode("000", 7, prefix_);
    ausfuehren("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0) VALUES "
               "('ZwischenA', ?, 1, 'Cut')",
               {"000\\" + alterCode_ + ".slb"});
    writeFile(bib_ + "/000/" + alterCode_ + ".slb", "cut");
    writeFile(zeichnung(alterCode_, 0), "cut");
    markieren(alterCode_, zeichnung(alterCode_, 0), 0, 1);
    seitenCode_ = fctBlockCode("000", 8, prefix_);
    ausfuehren("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0) VALUES (?, ?, 1, 'Page')",
               {"3§" + seitenCode_, "000\\" + seitenCode_ + ".slb"});
    writeFile(bib_ + "/000/" + seitenCode_ + ".slb", "page");
    writeFile(zeichnung(seitenCode_, 0), "page");
  }

  // A statement on a connection without the key checks: damage as an old
  // library or a crashed program leaves it.
  void ausfuehren(const QString& sql, const QVariantList& werte = {}) {
    Connection conn;
    ASSERT_TRUE(conn.open(db_));
    ASSERT_TRUE(conn.execute("PRAGMA foreign_keys=OFF"));
    ASSERT_TRUE(conn.execute(sql, werte)) << conn.error().toStdString();
  }
  int64_t anzahl(const QString& sql) {
    Connection conn;
    EXPECT_TRUE(conn.open(db_));
    return conn.scalar(sql).toLongLong();
  }
  std::vector<Befund> pruefen() {
    QString fehler;
    auto b = fctBibliothekPruefen(bib_, &fehler);
    EXPECT_EQ(fehler, QString());
    return b;
  }

  QStringList prefix_;
  QStringList code_;
  QString varia_, alterCode_, seitenCode_;
};

TEST_F(BibliothekspruefungTest, ConsistentLibraryWithClipboardRowsHasNoFindings) {
  EXPECT_EQ(kurz(pruefen()), std::vector<Kurz>{});
  // Through the path with backslashes and a trailing separator too.
  QString fehler;
  EXPECT_TRUE(fctBibliothekPruefen(bib_ + "/", &fehler).empty());
  EXPECT_TRUE(fehler.isEmpty());
}

TEST_F(BibliothekspruefungTest, EachDamageIsFoundOnceWithItsCodeAndFile) {
  using A = Befund::Art;
  // Rows without files: view-0 drawing, slide, the drawing of a view with point A.
  QFile::remove(zeichnung(code_[0], 0));
  QFile::remove(bib_ + "/000/" + code_[3] + ".slb");
  punkteSetzen(code_[4], 2, {{5, 5, 0}});
  // The cut block's files are checked by its SlideLib.
  QFile::remove(bib_ + "/000/" + alterCode_ + ".slb");
  // Files without rows: a slide on a free slot, a variant drawing nobody names.
  const QString frei = fctBlockCode("000", 20, prefix_);
  writeFile(bib_ + "/000/" + frei + ".slb", "stray");
  writeFile(bib_ + "/000/Block/Varia/ZZZ" + frei.right(4) + "0.dwg", "stray");
  // A second row on block 2's code; a variant and a mark whose block is gone;
  // a variant whose drawing is gone.
  ausfuehren("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID) VALUES (?, ?, 1)",
             {code_[2].toLower(), "000\\" + code_[2] + ".slb"});
  ausfuehren("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) VALUES ('X', 999, 'X')");
  markieren(frei, zeichnung(frei, 0), 0, 1);
  ausfuehren("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) "
             "SELECT 'Y', Nr, 'YYY' || substr(Block, 4) || '1.dwg' FROM tblBlockInfo WHERE Block = ?",
             {code_[1]});
  // A block in a folder that is gone, a folder without directory, a code on
  // no slot of its folder, a SlideLib that names another file.
  const QString fremd = fctBlockCode("000", 30, prefix_);
  ausfuehren("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID) VALUES (?, ?, 77)",
             {fremd, "000\\" + fremd + ".slb"});
  writeFile(bib_ + "/000/" + fremd + ".slb", "x");
  writeFile(zeichnung(fremd, 0), "x");
  ausfuehren("INSERT INTO tblOrdner (OrdnerNr, Ordnername, OrdnerRechte, NrTblDefMenue) "
             "VALUES ('001', 'Zwei', 'Alle', 1)");
  const QString falsch = "005" + code_[0].mid(3);
  ausfuehren("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID) VALUES (?, ?, 1)",
             {falsch, "000\\" + falsch + ".slb"});
  writeFile(bib_ + "/000/" + falsch + ".slb", "x");
  writeFile(zeichnung(falsch, 0), "x");
  spalteSetzen(code_[1], "SlideLib", "000\\anders.slb");
  writeFile(bib_ + "/000/anders.slb", "x");

  const std::vector<Kurz> erwartet = {
      {A::OrdnerOhneVerzeichnis, "", "001"},
      {A::ZeileOhneDatei, code_[0], "000/Block/" + code_[0] + "0.dwg"},
      {A::SlideLibAbweichend, code_[1], ""},
      {A::ZeileOhneDatei, code_[3], "000/" + code_[3] + ".slb"},
      {A::ZeileOhneDatei, code_[4], "000/Block/" + code_[4] + "2.dwg"},
      {A::ZeileOhneDatei, "ZwischenA", "000/" + alterCode_ + ".slb"},
      {A::DoppelterCode, code_[2].toLower(), ""},
      {A::BlockOhneOrdner, fremd, ""},
      {A::CodeOhnePlatz, falsch, ""},
      {A::VarianteOhneBlock, "", ""},
      {A::VarianteOhneDatei, code_[1], "000/Block/Varia/YYY" + code_[1].mid(3) + "1.dwg"},
      {A::MarkeOhneBlock, frei, ""},
      {A::DateiOhneZeile, "", "000/" + frei + ".slb"},
      {A::DateiOhneZeile, "", "000/Block/Varia/ZZZ" + frei.right(4) + "0.dwg"},
  };
  const auto befunde = pruefen();
  EXPECT_EQ(kurz(befunde), erwartet);
  // Only what needs no guess is offered for repair; the lines read as the tool prints them.
  for (const Befund& b : befunde) {
    const bool reparierbar = b.art == A::OrdnerOhneVerzeichnis || b.art == A::DateiOhneZeile ||
                             b.art == A::VarianteOhneBlock || b.art == A::MarkeOhneBlock;
    EXPECT_EQ(b.reparierbar, reparierbar) << b.text.toStdString();
    EXPECT_TRUE(b.text.startsWith(fctBefundArtText(b.art) + ": ")) << b.text.toStdString();
  }
  EXPECT_EQ(befunde[1].text, "Zeile ohne Datei: " + code_[0] + ": " +
                                 QDir::toNativeSeparators("000/Block/" + code_[0] + "0.dwg") + " fehlt");
}

TEST_F(BibliothekspruefungTest, FilesOfAnotherCaseAndOldAbsoluteSlideLibAreOwned) {
  // A library from the Windows edition: names in other case, an absolute SlideLib.
  QFile::rename(zeichnung(code_[2], 0), bib_ + "/000/Block/" + code_[2].toLower() + "0.DWG");
  spalteSetzen(code_[3], "SlideLib", QDir::toNativeSeparators(bib_ + "/000/" + code_[3] + ".slb"));
  EXPECT_EQ(kurz(pruefen()), std::vector<Kurz>{});
}

TEST_F(BibliothekspruefungTest, RepairFixesWhatNeedsNoGuessAndLeavesTheRest) {
  QFile::remove(zeichnung(code_[0], 0));
  const QString frei = fctBlockCode("000", 20, prefix_);
  writeFile(bib_ + "/000/" + frei + ".slb", "stray");
  // A file of the same name already set aside earlier is kept.
  writeFile(bib_ + "/Verwaist/000/" + frei + ".slb", "older");
  ausfuehren("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) VALUES ('X', 999, 'X')");
  markieren(frei, zeichnung(frei, 0), 0, 1);
  ausfuehren("INSERT INTO tblOrdner (OrdnerNr, Ordnername, OrdnerRechte, NrTblDefMenue) "
             "VALUES ('001', 'Zwei', 'Alle', 1)");
  const auto vorher = pruefen();
  ASSERT_EQ(vorher.size(), 5u);

  QStringList bericht;
  EXPECT_TRUE(fctBibliothekReparieren(bib_, vorher, &bericht));
  EXPECT_EQ(anzahl("SELECT count(*) FROM tblVariationBloecke WHERE BlockID = 999"), 0);
  EXPECT_EQ(anzahl("SELECT count(*) FROM tblVariationBloecke"), 1);
  EXPECT_EQ(anzahl("SELECT count(*) FROM tblMarkierteBloecke"), 2);
  EXPECT_TRUE(QFileInfo(bib_ + "/001").isDir());
  EXPECT_FALSE(QFileInfo::exists(bib_ + "/000/" + frei + ".slb"));
  EXPECT_EQ(readFile(bib_ + "/Verwaist/000/" + frei + " (2).slb"), "stray");
  EXPECT_EQ(readFile(bib_ + "/Verwaist/000/" + frei + ".slb"), "older");
  EXPECT_TRUE(bericht.filter("Nicht repariert").join('\n').contains(code_[0] + "0.dwg"))
      << bericht.join('\n').toStdString();
  EXPECT_EQ(bericht.size(), 5) << bericht.join('\n').toStdString();

  // What is left needs a person; a second repair changes nothing.
  const auto nachher = pruefen();
  EXPECT_EQ(kurz(nachher), (std::vector<Kurz>{{Befund::Art::ZeileOhneDatei, code_[0],
                                               "000/Block/" + code_[0] + "0.dwg"}}));
  bericht.clear();
  EXPECT_TRUE(fctBibliothekReparieren(bib_, nachher, &bericht));
  EXPECT_EQ(kurz(pruefen()), kurz(nachher));
}

TEST_F(BibliothekspruefungTest, RepairLeavesAVariantWhoseBlockCameBack) {
  ausfuehren("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) VALUES ('X', 999, 'X')");
  const auto befunde = pruefen();
  ASSERT_EQ(befunde.size(), 1u);
  // Between check and repair a block row with that Nr appears.
  ausfuehren("INSERT INTO tblBlockInfo (Nr, Block, SlideLib, OrdnerID) VALUES (999, 'neu', 'x', 1)");
  QStringList bericht;
  EXPECT_TRUE(fctBibliothekReparieren(bib_, befunde, &bericht));
  EXPECT_EQ(anzahl("SELECT count(*) FROM tblVariationBloecke WHERE BlockID = 999"), 1);
}

TEST_F(BibliothekspruefungTest, UnreadableLibraryIsAnErrorNotAFinding) {
  QString fehler;
  EXPECT_TRUE(fctBibliothekPruefen(path("fehlt"), &fehler).empty());
  EXPECT_FALSE(fehler.isEmpty());
  QDir().mkpath(path("leer"));
  writeFile(path("leer/dbKolvane.mdb"), "Standard Jet DB");
  fehler.clear();
  EXPECT_TRUE(fctBibliothekPruefen(path("leer"), &fehler).empty());
  EXPECT_FALSE(fehler.isEmpty());
}

}  // namespace kolvane

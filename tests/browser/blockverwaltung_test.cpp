#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "browsertest.h"
#include "connection.h"
#include "inifile.h"
#include "labels.h"
#include "vollbild.h"
#include "frmstartfenster.h"
#include <QLabel>

namespace kolvane {
namespace {

class BlockverwaltungTest : public BrowserTest {
 protected:
  void SetUp() override {
    BrowserTest::SetUp();
    ASSERT_TRUE(labels().fctSpracheAuslesen(0));
    labels().fctBeschriftungsFileZuordnenIni();
    neueBibliothek();
  }
  const PageModel& m() { return bv_->model(); }
  bool gefragt(int nr) const {
    const QString text = labels().fctBeschriftMsgboxZuordnen(nr);
    for (const QString& a : prompt_->asked)
      if (a.contains(text)) return true;
    return false;
  }
  // A folder row; returns its Nr.
  int ordnerAnlegen(const QString& ordnerNr, const QString& name) {
    Connection c;
    EXPECT_TRUE(c.open(db_));
    EXPECT_TRUE(c.execute("INSERT INTO tblOrdner (OrdnerNr, Ordnername, OrdnerRechte, NrTblDefMenue) "
                          "VALUES (?, ?, 'Alle', 1)", {ordnerNr, name}));
    QDir().mkpath(path("lib/" + ordnerNr));
    return int(c.lastInsertId());
  }
  void seitenLoeschen() {
    Connection c;
    ASSERT_TRUE(c.open(db_));
    ASSERT_TRUE(c.execute("DELETE FROM tblSeiten"));
  }
};

TEST_F(BlockverwaltungTest, NewLibraryShowsFreeSlotsOfTheFirstFolder) {
  oeffnen();
  EXPECT_EQ(bv_->s1, 0);
  EXPECT_EQ(m().bilder.size(), 20);
  EXPECT_EQ(m().listEntries.size(), 20);
  EXPECT_EQ(m().listEntries.value(0), Blockverwaltung::kFrei);
  EXPECT_EQ(m().folderName, "Standard-Ordner");
  EXPECT_EQ(m().activeFrame, FrameColor::Red);
  EXPECT_TRUE(m().enabled.value("combutNeu"));
  EXPECT_FALSE(m().enabled.value("cmbEinfuegen"));
  EXPECT_FALSE(m().enabled.value("combutZurueck"));
  EXPECT_TRUE(m().statusText.endsWith(" 0"));
  EXPECT_TRUE(m().bilder[0].slidePath.endsWith("frei2.sld"));
}

TEST_F(BlockverwaltungTest, OccupiedSlotTurnsTheCommandsAround) {
  const QString c = blockAnlegen(1, "Schraube M8");
  oeffnen();
  bv_->lisBlockBenennung_Click(1);
  EXPECT_EQ(bv_->aktivierteBlocknummer, c);
  EXPECT_EQ(m().listEntries.value(1), "Schraube M8");
  EXPECT_TRUE(m().enabled.value("cmbEinfuegen"));
  EXPECT_FALSE(m().enabled.value("combutNeu"));
  EXPECT_TRUE(m().enabled.value("mnuZSeiteAusschneiden")) << "page commands stay on";
  EXPECT_EQ(m().labNameDaten, "0000" + c);
  EXPECT_TRUE(m().bilder[1].slidePath.endsWith(c + ".slb(0A)"));
  EXPECT_TRUE(m().txtVerzeichnisBlock.endsWith("/000/Block/" + c + "0.dwg"));
  EXPECT_TRUE(m().statusText.endsWith(" 1"));
}

TEST_F(BlockverwaltungTest, FolderWithoutPageRowsShowsNumbers) {
  seitenLoeschen();
  oeffnen();
  EXPECT_EQ(m().pageText, "1");
  bv_->combutVor_Click();
  EXPECT_EQ(m().pageText, "2");
  EXPECT_EQ(m().labSeitenNummer, "2");
  EXPECT_TRUE(bv_->arySeiten.empty());
}

TEST_F(BlockverwaltungTest, BackToStartGoesToTheNearestEarlierPageWithABlock) {
  blockAnlegen(20 + 3);  // page 2
  oeffnen();
  bv_->GeheZuSeite(4, 0, "000");  // page 5
  bv_->combutZurueckAnfang_Click();
  EXPECT_EQ(bv_->s1, 1);
}

TEST_F(BlockverwaltungTest, BackToStartOntoABlockOnThePagesFirstSlot) {
  blockAnlegen(20);      // first slot of page 2
  blockAnlegen(60 + 19); // last slot of page 4
  oeffnen();
  bv_->GeheZuSeite(2, 0, "000");
  bv_->combutZurueckAnfang_Click();
  EXPECT_EQ(bv_->s1, 1);
  EXPECT_NE(m().listEntries.value(0), Blockverwaltung::kFrei) << "the block is on the page shown";
  bv_->GeheZuSeite(5, 0, "000");
  bv_->combutZurueckAnfang_Click();
  EXPECT_EQ(bv_->s1, 3) << "the nearest earlier page with a block";
  bv_->combutZurueckAnfang_Click();
  EXPECT_EQ(bv_->s1, 1);
  bv_->combutZurueckAnfang_Click();
  EXPECT_EQ(bv_->s1, 0);
}

TEST_F(BlockverwaltungTest, BackToStartWithoutBlocksGoesToPageOne) {
  oeffnen();
  bv_->GeheZuSeite(4, 0, "000");
  bv_->combutZurueckAnfang_Click();
  EXPECT_EQ(bv_->s1, 0);
}

TEST_F(BlockverwaltungTest, ForwardSearchLooksAtMostFortyNinePagesAhead) {
  blockAnlegen(20 * 60 + 2);  // page 61
  oeffnen();
  bv_->combutEnde_Click();
  EXPECT_EQ(bv_->s1, 0) << "60 pages away: the message, and the page stays";
  EXPECT_TRUE(prompt_->asked.value(0).contains(
      labels().fctBeschriftMsgboxZuordnen(QStringLiteral("KeinBlockIn49Seiten"))));
  bv_->GeheZuSeite(11, 0, "000");  // page 12: the block is 49 pages on
  bv_->combutEnde_Click();
  EXPECT_EQ(bv_->s1, 60);
  EXPECT_EQ(prompt_->asked.size(), 1);
}

TEST_F(BlockverwaltungTest, TypedPageNumbers) {
  oeffnen();
  EXPECT_EQ(bv_->dcboSeite_Return("501"), "500");
  EXPECT_EQ(bv_->s1, 499);
  EXPECT_TRUE(gefragt(236));
  prompt_->asked.clear();
  EXPECT_EQ(bv_->dcboSeite_Return("abc"), "1");
  EXPECT_EQ(bv_->s1, 499) << "no jump";
  EXPECT_TRUE(gefragt(237));
  EXPECT_EQ(bv_->dcboSeite_Return("0"), "1");
  EXPECT_EQ(bv_->s1, 499);
  EXPECT_EQ(bv_->dcboSeite_Return("7"), "7");
  EXPECT_EQ(bv_->s1, 6);
}

TEST_F(BlockverwaltungTest, PageNameWithTrailingBlanksIsFoundAfterTheRepair) {
  seitenLoeschen();
  seiteAnlegen(3, "Armaturen   ");
  seiteAnlegen(4, "Pumpen  ");
  oeffnen();
  bv_->cboSeite_Click("Armaturen   x");  // no such page: stays
  EXPECT_EQ(bv_->s1, 0);
  int16_t nr = 0;
  EXPECT_TRUE(bv_->fctSeiteNrErmitteln("Pumpen", nr));
  EXPECT_EQ(nr, 4);
  Connection c;
  ASSERT_TRUE(c.open(db_));
  EXPECT_EQ(c.scalar("SELECT COUNT(*) FROM tblSeiten WHERE SeitenName LIKE '% '").toInt(), 0)
      << "the repair rewrote every row";
  bv_->cboSeite_Click("Armaturen");
  EXPECT_EQ(bv_->s1, 2);
  EXPECT_EQ(m().pageText, "Armaturen");
  EXPECT_EQ(m().labSeitenNummer, "3");
}

TEST_F(BlockverwaltungTest, PositionOverPageAndGridChanges) {
  oeffnen();
  bv_->lisBlockBenennung_Click(3);
  bv_->combutVor_Click();
  EXPECT_EQ(bv_->pos, 0) << "by default a page change goes to the first picture";
  settings_->setup.lonPosSeitenWechsel = 1;
  bv_->lisBlockBenennung_Click(3);
  bv_->combutVor_Click();
  EXPECT_EQ(bv_->pos, 3);
  bv_->combutZurueck_Click();
  EXPECT_EQ(bv_->pos, 3);
  settings_->setup.longAnzahlDerBilder = 5;
  bv_->BilderAnzeigenBeiGeaenderterBilderanzahl();
  EXPECT_EQ(bv_->pos, 0);
  EXPECT_EQ(bv_->s1, 0);
}

TEST_F(BlockverwaltungTest, GridChangeMovesBlocksBetweenPagesNotSlots) {
  const QString c = blockAnlegen(25, "Ventil");
  oeffnen();
  bv_->GeheZuSeite(1, 5, "000");
  EXPECT_EQ(m().listEntries.value(5), "Ventil");
  settings_->setup.longAnzahlDerBilder = 5;  // 36
  bv_->BilderAnzeigenBeiGeaenderterBilderanzahl();
  EXPECT_EQ(bv_->s1, 0);
  EXPECT_EQ(m().bilder.size(), 36);
  EXPECT_EQ(m().listEntries.value(25), "Ventil");
  EXPECT_EQ(m().bilder[25].code, c);
}

TEST_F(BlockverwaltungTest, UnknownGridGivesTwentyAndIsSavedAsFour) {
  settings_->setup.longAnzahlDerBilder = 12;
  oeffnen();
  EXPECT_EQ(bv_->intBilder, 20);
  EXPECT_EQ(settings_->setup.longAnzahlDerBilder, 4);
  for (int code : {0, 1, 2, 3, 4, 5, 6, 7}) {
    const GridSize g = gridForSetting(code);
    EXPECT_EQ(g.rows * g.columns, g.intBilder) << code;
  }
  EXPECT_EQ(gridForSetting(7).rows, 8);
  EXPECT_EQ(gridForSetting(7).columns, 9);
}

TEST_F(BlockverwaltungTest, MissingSlideDeletesTheRowOnSight) {
  const QString c = blockAnlegen(2, "weg");
  QFile::remove(path("lib/000/" + c + ".slb"));
  oeffnen();
  EXPECT_EQ(m().listEntries.value(2), Blockverwaltung::kFrei);
  Connection conn;
  ASSERT_TRUE(conn.open(db_));
  EXPECT_EQ(conn.scalar("SELECT COUNT(*) FROM tblBlockInfo").toInt(), 0);
}

TEST_F(BlockverwaltungTest, SlideFoundWithOtherCaseIsKept) {
  const QString c = blockAnlegen(2, "bleibt");
  QFile::rename(path("lib/000/" + c + ".slb"), path("lib/000/" + c.toLower() + ".SLB"));
  oeffnen();
  EXPECT_EQ(m().listEntries.value(2), "bleibt");
}

TEST_F(BlockverwaltungTest, OldFormatCharactersAreRepaired) {
  blockAnlegen(0, QString("T") + QChar(179) + "r " + QChar(245) + QChar(247) + QChar(175));
  oeffnen();
  EXPECT_EQ(m().listEntries.value(0), QString::fromUtf8("Tür äöß"));
}

TEST_F(BlockverwaltungTest, ViewsCycleWhileTheButtonIsHeld) {
  const QString c = blockAnlegen(0, "drei Ansichten", 3);
  blockAnlegen(1, "eine Ansicht", 1);
  oeffnen();
  const QPoint at(100, 100);
  bv_->sldBlockverwaltung_LButtonDown(0, at);
  QStringList shown;
  for (int i = 0; i < 4; ++i) {
    ASSERT_TRUE(bv_->Timer2_Timer(true, at + QPoint(2, -3)));
    shown << bv_->cyclingSlide().section('(', 1);
  }
  EXPECT_EQ(shown, QStringList({"1A)", "2A)", "0A)", "1A)"}));
  EXPECT_TRUE(bv_->cyclingSlide().contains(c + "1.slb("));
  EXPECT_FALSE(bv_->Timer2_Timer(true, at + QPoint(5, 0))) << "moving 5 pixels stops";
  bv_->sldBlockverwaltung_LButtonDown(0, at);
  bv_->Timer2_Timer(true, at);
  EXPECT_FALSE(bv_->Timer2_Timer(false, at));
  EXPECT_TRUE(m().bilder[0].slidePath.endsWith(c + ".slb(0A)")) << "released: the first view again";
  bv_->sldBlockverwaltung_LButtonDown(1, at);
  EXPECT_FALSE(bv_->Timer2_Timer(true, at)) << "a single view doesn't cycle";
}

TEST_F(BlockverwaltungTest, AViewWithPointAAtTheOriginCyclesAndADeletedOneIsPassedOver) {
  // View 1 deleted (its columns null), view 2 with point A at 0,0,0.
  const QString c = blockAnlegen(0, "Schieber", 3);
  const QString nurNull = blockAnlegen(1, "Nur Ursprung");
  {
    Connection conn;
    ASSERT_TRUE(conn.open(db_));
    ASSERT_TRUE(conn.execute("UPDATE tblBlockInfo SET AX1 = NULL, BlkName1 = NULL, AX2 = 0, AY2 = 0, AZ2 = 0 "
                             "WHERE Block = ?", {c}));
    ASSERT_TRUE(conn.execute("UPDATE tblBlockInfo SET AX3 = 0 WHERE Block = ?", {nurNull}));
  }
  oeffnen();
  EXPECT_TRUE(m().enabled.value("combutAnsicht"));
  EXPECT_TRUE(m().enabled.value("mnuBAnsichten"));
  const QPoint at(50, 50);
  bv_->sldBlockverwaltung_LButtonDown(0, at);
  QStringList shown;
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(bv_->Timer2_Timer(true, at));
    shown << QFileInfo(bv_->cyclingSlide()).fileName();
  }
  EXPECT_EQ(shown, QStringList({c + "2.slb(2A)", c + ".slb(0A)", c + "2.slb(2A)"}));
  // A block whose only further view has no slide library of its own shows the
  // block's slide of that view.
  bv_->sldBlockverwaltung_LButtonDown(1, at);
  EXPECT_TRUE(m().enabled.value("combutAnsicht"));
  ASSERT_TRUE(bv_->Timer2_Timer(true, at));
  EXPECT_EQ(QFileInfo(bv_->cyclingSlide()).fileName(), nurNull + ".slb(3A)");
  // Without any further view the command is off.
  {
    Connection conn;
    ASSERT_TRUE(conn.open(db_));
    ASSERT_TRUE(conn.execute("UPDATE tblBlockInfo SET AX3 = NULL WHERE Block = ?", {nurNull}));
  }
  oeffnen();
  bv_->lisBlockBenennung_Click(1);
  EXPECT_FALSE(m().enabled.value("combutAnsicht"));
  bv_->sldBlockverwaltung_LButtonDown(1, at);
  EXPECT_FALSE(bv_->Timer2_Timer(true, at));
}

TEST_F(BlockverwaltungTest, DoubleClickFollowsTheSetting) {
  blockAnlegen(0, "x");
  oeffnen();
  int einfuegen = 0, vollbild = 0;
  bv_->hooks.cmbEinfuegen = [&] { ++einfuegen; };
  bv_->hooks.vollbildZeigen = [&] { ++vollbild; };
  bv_->sldBlockverwaltung_DblClick(0);
  settings_->setup.longDoppelklick = 3;
  bv_->sldBlockverwaltung_DblClick(0);
  settings_->setup.longDoppelklick = 0;
  bv_->sldBlockverwaltung_DblClick(0);
  EXPECT_EQ(einfuegen, 1);
  EXPECT_EQ(vollbild, 1);
}

TEST_F(BlockverwaltungTest, PictureButtons) {
  oeffnen();
  bv_->Command1_Click(2);
  EXPECT_EQ(bv_->pos, 19);
  bv_->Command1_Click(0);  // past the last picture: next page
  EXPECT_EQ(bv_->s1, 1);
  EXPECT_EQ(bv_->pos, 0);
  bv_->Command1_Click(1);
  EXPECT_EQ(bv_->s1, 1) << "never to the page before";
  EXPECT_EQ(bv_->pos, 0);
}

TEST_F(BlockverwaltungTest, SwitchingLibrarySavesTheOldPositionAndOpensTheNewAtItsOwn) {
  const QString erste = db_;
  blockAnlegen(45, "in der ersten");
  const QString zweite = neueBibliothek("lib2");
  Settings::writePosition(path("lib2"), {"000", 3, 7});
  settings_->strAktuelleDatenbank = erste;
  oeffnen();
  bv_->GeheZuSeite(2, 4, "000");
  ASSERT_TRUE(bv_->comboxVerzeichnis_Click(zweite));
  EXPECT_EQ(bv_->s1, 3);
  EXPECT_EQ(bv_->pos, 7);
  const Position alt = Settings::readPosition(path("lib"));
  EXPECT_EQ(alt.s1, 2);
  EXPECT_EQ(alt.pos, 4);
  EXPECT_EQ(alt.strAktuelleOrdnerNr, "000");
  ASSERT_TRUE(bv_->comboxVerzeichnis_Click(erste));
  EXPECT_EQ(bv_->s1, 2);
  EXPECT_EQ(m().listEntries.value(5), "in der ersten");
}

TEST_F(BlockverwaltungTest, FailingLibraryLeavesTheOldOneOpen) {
  oeffnen();
  writeFile(path("kaputt/dbKolvane.mdb"), "kein SQLite");
  EXPECT_FALSE(bv_->comboxVerzeichnis_Click(path("kaputt/dbKolvane.mdb")));
  EXPECT_EQ(settings_->strAktuelleDatenbank, db_);
  EXPECT_TRUE(bv_->bibliothek().connDb.isOpen());
}

TEST_F(BlockverwaltungTest, TheRememberedFolderOpensEvenWhenItDoesNotSortFirst) {
  ordnerAnlegen("001", "Alpha");
  ordnerAnlegen("002", "Zeta");
  blockAnlegen(20 + 5, "in Zeta", 1, "002");
  blockAnlegen(0, "in Alpha", 1, "001");
  Settings::writePosition(path("lib"), {"002", 1, 5});
  for (int sortierung : {1, 0}) {  // by name, by order: Zeta is last either way
    settings_->setup.lonOrdnerSortieren = sortierung;
    oeffnen();
    EXPECT_EQ(bv_->strAktuelleOrdnerNr(), "002") << sortierung;
    EXPECT_EQ(m().folderName, "Zeta");
    EXPECT_EQ(bv_->s1, 1);
    EXPECT_EQ(bv_->pos, 5);
    EXPECT_EQ(bv_->aktivierteBlocknummer, code(25, "002"));
    EXPECT_EQ(m().listEntries.value(5), "in Zeta");
    EXPECT_EQ(m().labNameDaten, "0000" + code(25, "002"));
    // The folder combo lists Zeta where the library's order puts it.
    EXPECT_EQ(m().folderNames.indexOf("Zeta"), 2);
  }
}

TEST_F(BlockverwaltungTest, JumpToFolderAndPageByNumberAndByName) {
  const int zeta = ordnerAnlegen("001", "Zeta Armaturen");
  seiteAnlegen(3, "Ventile", zeta);
  seiteAnlegen(4, "Flansche", zeta);
  blockAnlegen(40 + 2, "Ventil", 1, "001");
  oeffnen();
  ASSERT_EQ(bv_->strAktuelleOrdnerNr(), "000");
  // By number: page "3" is s1 2.
  bv_->strOrdnerUebergabe = "Zeta";
  bv_->varSeiteUebergabe = "3";
  EXPECT_TRUE(bv_->fctAufOrdnerUndSeiteSpringen());
  EXPECT_EQ(bv_->strAktuelleOrdnerNr(), "001");
  EXPECT_EQ(bv_->s1, 2);
  EXPECT_EQ(m().pageText, "Ventile");
  EXPECT_EQ(m().listEntries.value(2), "Ventil");
  EXPECT_EQ(bv_->strOrdnerUebergabe, "");
  EXPECT_EQ(bv_->varSeiteUebergabe, "1");
  // By name, from another folder.
  bv_->GeheZuSeite(0, 0, "000");
  ASSERT_TRUE(bv_->fctCboOrdnerNeuAnzeigen("Standard-Ordner", true));
  bv_->strOrdnerUebergabe = "Zeta Armaturen";
  bv_->varSeiteUebergabe = "Flansche";
  EXPECT_TRUE(bv_->fctAufOrdnerUndSeiteSpringen());
  EXPECT_EQ(bv_->strAktuelleOrdnerNr(), "001");
  EXPECT_EQ(bv_->s1, 3);
  EXPECT_EQ(m().labSeitenNummer, "4");
  // An unknown page name stays in the folder on its first page; an unknown
  // folder goes nowhere.
  bv_->strOrdnerUebergabe = "Zeta";
  bv_->varSeiteUebergabe = "Gibt es nicht";
  EXPECT_FALSE(bv_->fctAufOrdnerUndSeiteSpringen());
  bv_->strOrdnerUebergabe = "Omega";
  bv_->varSeiteUebergabe = "2";
  EXPECT_FALSE(bv_->fctAufOrdnerUndSeiteSpringen());
  EXPECT_EQ(bv_->strAktuelleOrdnerNr(), "001");
}

TEST_F(BlockverwaltungTest, StoredPositionBeyondTheGridOpensSlotZero) {
  Settings::writePosition(path("lib"), {"000", 0, 25});
  oeffnen();
  EXPECT_EQ(bv_->pos, 0);
}

}  // namespace
}  // namespace kolvane

namespace kolvane {
namespace {

TEST_F(BlockverwaltungTest, FullViewStepsWithCrossedButtons) {
  const QString a = blockAnlegen(0, "erster");
  const QString b = blockAnlegen(1, "zweiter");
  oeffnen();
  bv_->lisBlockBenennung_Click(1);
  Vollbild v(*bv_);
  EXPECT_TRUE(v.slide().endsWith(b + ".slb(0a)"));
  EXPECT_TRUE(v.cmbZurueckAktiv());
  v.cmbVor_Click();  // the first button goes back
  EXPECT_EQ(bv_->pos, 0);
  EXPECT_TRUE(v.slide().endsWith(a + ".slb(0a)"));
  v.cmbZurueck_Click();
  EXPECT_EQ(bv_->pos, 1);
  bv_->lisBlockBenennung_Click(0);
  Vollbild erster(*bv_);
  EXPECT_FALSE(erster.cmbZurueckAktiv()) << "the folder's first slot";
  Vollbild ansicht(*bv_, 2);
  EXPECT_TRUE(ansicht.slide().endsWith(a + ".slb(2A)"));
  EXPECT_FALSE(ansicht.cmbVorAktiv());
  Vollbild gegeben(*bv_, "/x/y.slb", 3);
  EXPECT_EQ(gegeben.slide(), "/x/y.slb(3A)");
  bv_->lisBlockBenennung_Click(5);
  Vollbild frei(*bv_);
  EXPECT_TRUE(frei.slide().endsWith("frei2.sld"));
}

}  // namespace
}  // namespace kolvane

namespace kolvane {
namespace {

TEST_F(BlockverwaltungTest, PageNameDialogNamesThePage) {
  oeffnen();
  bv_->GeheZuSeite(2, 0, "000");
  prompt_->text("Arma'turen").text("Armaturen");  // the apostrophe is refused, the name kept for correction
  bv_->seitennameDialog();
  EXPECT_EQ(bv_->model().pageText, "Armaturen");
  EXPECT_EQ(bv_->model().labSeitenNummer, "3");
  EXPECT_TRUE(prompt_->asked.filter("input|").value(1).endsWith(labels().fctBeschriftFrmZuordnen(93)));
  // Another page with the same name: asked; No leaves it.
  bv_->GeheZuSeite(3, 0, "000");
  prompt_->text("Armaturen").answer(Answer::No);
  bv_->seitennameDialog();
  EXPECT_EQ(bv_->model().pageText, "4");
  EXPECT_EQ(prompt_->unexpected(), 0);
  int16_t nr = 0;
  EXPECT_TRUE(bv_->fctSeiteNrErmitteln("Armaturen", nr));
  EXPECT_EQ(nr, 3);
}

}  // namespace
}  // namespace kolvane

namespace kolvane {
namespace {

TEST_F(BlockverwaltungTest, StartWindowNamesTheProgramAndItsVersion) {
  FrmStartfenster f;
  QStringList texte;
  for (QLabel* l : f.findChildren<QLabel*>()) texte << l->text();
  EXPECT_TRUE(texte.contains("Kolvane 9.0")) << texte.join('|').toStdString();
  const QImage bild = f.grab().toImage();
  EXPECT_FALSE(bild.isNull());
  if (!qEnvironmentVariableIsEmpty("KOLVANE_SHOTS")) bild.save(qEnvironmentVariable("KOLVANE_SHOTS") + "/startfenster.png");
}

}  // namespace
}  // namespace kolvane

// View and point choice, the offset of a point, the board's logic, the
// options and the name rules.
#include <QDir>
#include <QFile>

#include "blockname.h"
#include "connection.h"
#include "diagnostics.h"
#include "einfuegentest.h"
#include "platzierung.h"
#include "settings.h"

namespace kolvane {
namespace {

class EinfuegepunktwahlTest : public EinfuegenTest {
 protected:
  // The choice for the block, as an insert makes it; the board answers with
  // `board` (-1: no board expected).
  Einfuegepunktwahl& waehlen(const QString& code, int ansichtFrmAnsichten = 0, int markiert = 0) {
    Connection& conn = lib_->connDb;
    wahl_.aktivierteBlocknummer = code;
    wahl_.byteAktivierteAnsicht = uint8_t(ansichtFrmAnsichten);
    wahl_.bytMarkierteAnsicht = uint8_t(markiert);
    EXPECT_TRUE(wahl_.EinzufuegendeAnsichtBestimmenUndRsEinlesen(conn));
    uint8_t markieren = 0;
    Einfuegepunktwahl::Ort ort{bib_, "000", "000\\" + code + ".slb", path("prog/frei2.sld")};
    wahl_.VariaEinfuegepktBestimmen(markieren, ort);
    return wahl_;
  }
  Einfuegepunktwahl wahl_;
};

TEST_F(EinfuegepunktwahlTest, TheStatementOfTheViewsPointsKeepsItsTwoBlanks) {
  EXPECT_EQ(Einfuegepunktwahl::sqlEinfuegepunkte(0, "0000021"),
            "SELECT  AX0, AY0, AZ0, BX0, BY0, BZ0, CX0, CY0, CZ0, DX0, DY0, DZ0, EX0, EY0, EZ0, "
            "FX0, FY0, FZ0  FROM tblBlockInfo WHERE Block like '0000021'");
  EXPECT_TRUE(Einfuegepunktwahl::sqlEinfuegepunkte(3, "x").endsWith("FZ3  From tblBlockInfo WHERE Block like 'x'"));
}

TEST_F(EinfuegepunktwahlTest, NumberOfPointsAndTheBoard) {
  const QString eins = blockAnlegen(0, "Eins");
  const QString nullB = blockAnlegen(1, "NullB", {{0, 0, 0}, {0, 7, 0}});
  const QString sechs = blockAnlegen(2, "Sechs", {{1, 1, 0}, {2, 2, 0}, {0, 0, 0}, {4, 4, 0}, {5, 5, 0}, {6, 6, 0}});
  spalteSetzen(sechs, "CX0", QVariant());
  oeffnen();

  // One point: no board, point A.
  EXPECT_EQ(waehlen(eins).AnzahlEinfuegepunkte, 1);
  EXPECT_EQ(wahl_.NummerEinfuegepkt, 1);
  // BX0 "0" and nothing later: one point.
  EXPECT_EQ(waehlen(nullB).AnzahlEinfuegepunkte, 1);
  EXPECT_TRUE(prompt_->asked.isEmpty());

  // FX0 set, CX0 empty: six points; the board shows them and its choice counts.
  prompt_->dialogResult("frmVariaEinfuegepkte", 1, [this] {
    EXPECT_EQ(wahl_.strAufrufer, "frmBockverwaltung");
    EXPECT_TRUE(wahl_.board.sldVariaEinfuegepkte_MouseDown(4));
  });
  EXPECT_EQ(waehlen(sechs).AnzahlEinfuegepunkte, 6);
  EXPECT_EQ(wahl_.NummerEinfuegepkt, 5);
  EXPECT_EQ(wahl_.FormularAbbrechen, 0);
  EXPECT_TRUE(wahl_.strAufrufer.isEmpty());
  EXPECT_EQ(wahl_.board.adressen()[5], bib_ + "/000/" + sechs + ".slb(0F)");

  // Cancelled: the insert stops.
  prompt_->dialogResult("frmVariaEinfuegepkte", 0);
  waehlen(sechs);
  EXPECT_EQ(wahl_.FormularAbbrechen, 1);
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(EinfuegepunktwahlTest, ViewChoiceAndItsPictures) {
  const QString code = blockAnlegen(0, "Ansichten");
  punkteSetzen(code, 2, {{0, 0, 0}, {3, 0, 0}});
  punkteSetzen(code, 3, {{0, 0, 0}, {3, 0, 0}});
  writeFile(bib_ + "/000/" + code + "3.slb", "view 3");
  oeffnen();

  // The marked view 3 against frmAnsichten on 2: view 2; its slide library is
  // missing, so the block's own is shown.
  prompt_->dialogResult("frmVariaEinfuegepkte", 1);
  waehlen(code, 2, 3);
  EXPECT_EQ(wahl_.byteBestimmenWelcheAnsichtEingefuegtWird, 2);
  EXPECT_EQ(wahl_.SpeicherOrtSlideLibFuerBlockEinfuegen, bib_ + "/000/" + code + ".slb");
  EXPECT_EQ(wahl_.board.namen()[0], "2A");
  // View 3 has its own.
  prompt_->dialogResult("frmVariaEinfuegepkte", 1);
  waehlen(code, 0, 3);
  EXPECT_EQ(wahl_.SpeicherOrtSlideLibFuerBlockEinfuegen, bib_ + "/000/" + code + "3.slb");
  // Neither source: view 0.
  waehlen(code);
  EXPECT_EQ(wahl_.byteBestimmenWelcheAnsichtEingefuegtWird, 0);
}

TEST_F(EinfuegepunktwahlTest, TheChoiceOffersAViewWhosePointAIsTheOrigin) {
  const QString code = blockAnlegen(0, "Schieber");
  punkteSetzen(code, 2, {{0, 0, 0}, {20, 0, 0}});
  punkteSetzen(code, 4, {{5, 0, 0}});
  spalteSetzen(code, "AX4", QVariant());  // view 4 deleted
  oeffnen();
  EXPECT_EQ(Einfuegepunktwahl::AnsichtenZurWahl(lib_->connDb, code), (std::vector<uint8_t>{0, 2}));
  EXPECT_TRUE(Einfuegepunktwahl::AnsichtenZurWahl(lib_->connDb, "fehlt").empty());
  // Taken, the view's two points show on the board.
  prompt_->dialogResult("frmVariaEinfuegepkte", 1);
  waehlen(code, 2);
  EXPECT_EQ(wahl_.byteBestimmenWelcheAnsichtEingefuegtWird, 2);
  EXPECT_EQ(wahl_.AnzahlEinfuegepunkte, 2);
  EXPECT_EQ(wahl_.board.namen()[0], "2A");
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(EinfuegepunktwahlTest, BoardWithTwoPointsAndTheMarkingBoard) {
  VariaEinfuegepkte b;
  b.Form_Load(1, 2, "/l/000/x1.slb", "/p/frei2.sld");
  EXPECT_EQ(b.adressen()[1], "/l/000/x1.slb(1B)");
  for (int i = 2; i < 6; ++i) {
    EXPECT_EQ(b.adressen()[size_t(i)], "/p/frei2.sld");
    EXPECT_FALSE(b.sldVariaEinfuegepkte_MouseDown(i));
  }
  EXPECT_EQ(b.gewaehlt(), 0);
  EXPECT_TRUE(b.sldVariaEinfuegepkte_DblClick(1));
  EXPECT_EQ(b.NummerEinfuegepkt(), 2);
  b.cmbAbbrechen_Click();
  EXPECT_EQ(b.NummerEinfuegepkt(), 0);

  // Marking: a cancel keeps point A and says so in bytAbbrechen.
  const QString code = blockAnlegen(0, "M", {{0, 0, 0}, {1, 1, 0}});
  oeffnen();
  wahl_.aktivierteBlocknummer = code;
  ASSERT_TRUE(wahl_.EinzufuegendeAnsichtBestimmenUndRsEinlesen(lib_->connDb));
  prompt_->dialogResult("frmVariaEinfuegepkteMarkieren", 0);
  uint8_t markieren = 1;
  wahl_.VariaEinfuegepktBestimmen(markieren, {bib_, "000", "000\\" + code + ".slb", "f"});
  EXPECT_EQ(wahl_.NummerEinfuegepkt, 1);
  EXPECT_EQ(wahl_.bytAbbrechen, 1);
  EXPECT_EQ(wahl_.FormularAbbrechen, 0);
  EXPECT_EQ(markieren, 0);
}

TEST_F(EinfuegepunktwahlTest, OffsetFromPointAToTheChosenPoint) {
  const QString code = blockAnlegen(0, "V", {{5, 5, 0}, {10, 20, 0}, {15, 25, 1.5}});
  oeffnen();
  waehlen(code);
  std::array<double, 3> d{};
  ASSERT_TRUE(DistanzZumErstenEinfuegepkt(wahl_.rsBlockInfo0Einfuegepkt, 0, 2, d));
  EXPECT_EQ(d, (std::array<double, 3>{5, 15, 0}));
  ASSERT_TRUE(DistanzZumErstenEinfuegepkt(wahl_.rsBlockInfo0Einfuegepkt, 0, 3, d));
  EXPECT_EQ(d, (std::array<double, 3>{10, 20, 1.5}));
  // Out of range: the point counts as zero.
  ASSERT_TRUE(DistanzZumErstenEinfuegepkt(wahl_.rsBlockInfo0Einfuegepkt, 0, 7, d));
  EXPECT_EQ(d, (std::array<double, 3>{-5, -5, 0}));
  // An empty coordinate of the chosen point is an error.
  spalteSetzen(code, "CY0", QVariant());
  waehlen(code);
  prompt_->answer(Answer::Ok);
  EXPECT_FALSE(DistanzZumErstenEinfuegepkt(wahl_.rsBlockInfo0Einfuegepkt, 0, 3, d));
  EXPECT_EQ(diagnostics().intFehlerAnzahl, 1);
}

TEST(EinfuegeOptionen, DefaultsFromTheSetupAndTheKeystrokeLock) {
  SetupWerte s;
  s.longAbfrageXFaktor = 1;
  s.longBruchFrage = 1;
  s.longAbfrageZFaktor = 1;
  EinfuegeOptionen o = EinfuegeOptionen::ausEinstellungen(s);
  EXPECT_EQ(o.byteAbfrageXFaktor, 1);
  EXPECT_EQ(o.byteBruchFrage, 1);
  EXPECT_EQ(o.byteAbfrageZFaktor, 1);
  EXPECT_EQ(o.byteAbfrageEinfuegewinkel, 0);
  EXPECT_EQ(EinfuegeOptionen::checkBoxen().size(), 10);
  EXPECT_TRUE(o.setzen("checkMehr", true));
  EXPECT_EQ(o.byteMehrfacheinfuegen, 1);
  EXPECT_FALSE(o.setzen("checkGibtsNicht", true));

  // Automation route: nothing is locked.
  o.byteAbfrageEinfuegewinkel = 1;
  EXPECT_TRUE(fctOptionenSperre(o, false, "checkWinkel").checkXFrage);
  // Keystroke route: one of the two on locks the other.
  o.byteAbfrageXFaktor = 0;
  OptionenSperre l = fctOptionenSperre(o, true, "checkWinkel");
  EXPECT_TRUE(l.checkWinkel);
  EXPECT_FALSE(l.checkXFrage);
  o.byteAbfrageEinfuegewinkel = 0;
  o.byteAbfrageXFaktor = 1;
  l = fctOptionenSperre(o, true, "checkXFrage");
  EXPECT_FALSE(l.checkWinkel);
  EXPECT_TRUE(l.checkXFrage);
  // Both on from the defaults: the clicked box stays usable.
  o.byteAbfrageEinfuegewinkel = 1;
  EXPECT_TRUE(fctOptionenSperre(o, true, "").checkWinkel);
  EXPECT_FALSE(fctOptionenSperre(o, true, "").checkXFrage);
}

TEST(Blockname, NameRulesOfBothRoutes) {
  EXPECT_EQ(fctBlockNameRegeln("Tisch, rund/\"Eiche\":1=2   "), "Tisch__rund__Eiche__1_2");
  EXPECT_EQ(fctBlockNameRegelnLT("Tisch, rund/Eiche=2 "), "Tisch__rund/Eiche_2");
  EXPECT_EQ(fctBlockNameRegeln("   "), "");
}

}  // namespace
}  // namespace kolvane

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "connection.h"
#include "frmsuchergebnis.h"
#include "layout.h"
#include "recordset.h"
#include "suchergebnis.h"
#include "suchtest.h"

namespace kolvane {

namespace {

const QString kStart = QStringLiteral(
    "SELECT Nr, Block, OrdnerID, SlideLib, BlkName0, BlkName1, BlkName2, BlkName3, BlkName4, M0, AX1, "
    "AX2, AX3, AX4 From tblBlockInfo WHERE ");

}  // namespace

class SuchergebnisTest : public SuchTest {
 protected:
  void TearDown() override {
    se_.reset();
    rs_.Close();
    SuchTest::TearDown();
  }

  // The search's record set over the open library.
  void suchen(const QString& bedingung) {
    rs_.Close();
    ASSERT_TRUE(rs_.Open(kStart + bedingung, lib_->connDb)) << rs_.lastError().toStdString();
  }

  // The results of the search, with hooks that write what they are asked into calls_.
  Suchergebnis& ergebnis(const QString& gesucht = QString()) {
    se_ = std::make_unique<Suchergebnis>(*bv_, rs_, gesucht);
    se_->einfuegen = [this](const QString& block, uint8_t ansicht) {
      calls_ << QStringLiteral("einfuegen|%1|%2").arg(block).arg(ansicht);
    };
    se_->schliessen = [this] { calls_ << QStringLiteral("schliessen"); };
    se_->hauptformNachVorne = [this] { calls_ << QStringLiteral("hauptformNachVorne"); };
    EXPECT_TRUE(se_->Form_Load());
    return *se_;
  }

  // n blocks "Name <i>" with card "Teil <i>" on slots 0 to n-1 of folder 000.
  QStringList teile(int n) {
    QStringList codes;
    for (int i = 0; i < n; ++i)
      codes << blockIn(QStringLiteral("000"), 1, i, QStringLiteral("Name %1").arg(i), {QStringLiteral("Teil %1").arg(i)});
    return codes;
  }

  // A new folder without a place in the folder order comes first: the
  // browser is put back on folder 000.
  void standardOrdner() {
    bv_->comboxOrdner_Click(QStringLiteral("Standard-Ordner"));
    ASSERT_EQ(bv_->strAktuelleOrdnerNr(), QStringLiteral("000"));
  }

  QString slb(const QString& ordnerNr, const QString& code) const {
    return bib_ + "/" + ordnerNr + "/" + code + ".slb";
  }

  Recordset rs_;
  std::unique_ptr<Suchergebnis> se_;
  QStringList calls_;
};

TEST_F(SuchergebnisTest, TwentyHitsFillOnePageAndTheTwentyFirstOpensASecond) {
  const QStringList codes = teile(21);
  oeffnen();

  suchen(QStringLiteral("M0 LIKE 'Teil%' AND Block <> '") + codes[20] + "' ORDER BY Nr");
  Suchergebnis& zwanzig = ergebnis();
  EXPECT_EQ(zwanzig.intAnzahlDerGefundenenBloecke, 20);
  EXPECT_FALSE(zwanzig.cmbVorEnabled);
  EXPECT_FALSE(zwanzig.cmbZurueckEnabled);
  EXPECT_FALSE(zwanzig.cmbVor_Click());
  EXPECT_EQ(zwanzig.intErgebnisSeite, 0);

  suchen(QStringLiteral("M0 LIKE 'Teil%' ORDER BY Nr"));
  Suchergebnis& se = ergebnis();
  EXPECT_EQ(se.intAnzahlDerGefundenenBloecke, 21);
  EXPECT_TRUE(se.cmbVorEnabled);
  EXPECT_FALSE(se.cmbZurueckEnabled);
  // The slide of a library is its view 0, named in lower case.
  EXPECT_EQ(se.sldSuchergebnis[0], slb(QStringLiteral("000"), codes[0]) + "(0a)");
  EXPECT_EQ(se.sldSuchergebnis[19], slb(QStringLiteral("000"), codes[19]) + "(0a)");
  EXPECT_EQ(se.lisBlockBenennung.size(), 20);
  EXPECT_EQ(se.lisBlockBenennung[7], QStringLiteral("Teil 7"));
  // The record set stands on its first row again after the hits were read.
  EXPECT_EQ(rs_.AbsolutePosition(), 1);

  se.sldSuchergebnis_LButtonDown(3);
  ASSERT_TRUE(se.cmbVor_Click());
  EXPECT_EQ(se.intErgebnisSeite, 1);
  EXPECT_FALSE(se.cmbVorEnabled);
  EXPECT_TRUE(se.cmbZurueckEnabled);
  EXPECT_EQ(se.sldSuchergebnis[0], slb(QStringLiteral("000"), codes[20]) + "(0a)");
  EXPECT_EQ(se.lisBlockBenennung[0], QStringLiteral("Teil 20"));
  for (int i = 1; i < 20; ++i) {
    EXPECT_EQ(se.sldSuchergebnis[size_t(i)], bv_->frei2()) << i;
    EXPECT_EQ(se.lisBlockBenennung[i], QStringLiteral("*****Frei*****")) << i;
  }
  EXPECT_FALSE(bv_->frei2().isEmpty());
  // The active picture index stays; here it is a free one.
  EXPECT_EQ(se.bytErgebnisPosition, 3);
  EXPECT_EQ(se.labBlockName, QStringLiteral("frei"));

  ASSERT_TRUE(se.cmbZurueck_Click());
  EXPECT_EQ(se.intErgebnisSeite, 0);
  EXPECT_FALSE(se.cmbZurueckEnabled);
  EXPECT_EQ(se.lisBlockBenennung[3], QStringLiteral("Teil 3"));
  EXPECT_EQ(se.strAktivierteBlocknummer, codes[3]);
}

TEST_F(SuchergebnisTest, AFreePictureShowsFreiAndCanBeNeitherInsertedNorGoneTo) {
  teile(3);
  oeffnen();
  suchen(QStringLiteral("M0 LIKE 'Teil%'"));
  Suchergebnis& se = ergebnis(QStringLiteral("Teil"));
  const int16_t seite = bv_->s1;
  const int32_t pos = bv_->pos;

  se.sldSuchergebnis_LButtonDown(5);
  EXPECT_EQ(se.labOrdnername, QStringLiteral("frei"));
  EXPECT_EQ(se.labSeitenNummer, QStringLiteral("frei"));
  EXPECT_EQ(se.labBlockName, QStringLiteral("frei"));
  EXPECT_TRUE(se.strAktivierteBlocknummer.isEmpty());
  EXPECT_EQ(se.lisBlockBenennungIndex, 5);
  EXPECT_FALSE(se.cmbEinfuegenEnabled);
  EXPECT_FALSE(se.cmbEinfuegen_Click());
  EXPECT_FALSE(se.cmbGeheZu_Click());
  EXPECT_TRUE(calls_.isEmpty()) << calls_.join('\n').toStdString();
  EXPECT_EQ(bv_->s1, seite);
  EXPECT_EQ(bv_->pos, pos);
  EXPECT_EQ(bv_->byteGeheZuVonSuchergebnis, 0);
}

TEST_F(SuchergebnisTest, ThePageComesFromTheSlotAndTheBrowsersPageSize) {
  const qint64 fenster = ordnerAnlegen(QStringLiteral("001"), QStringLiteral("Fenster"));
  const QString code = blockIn(QStringLiteral("001"), fenster, 30, QStringLiteral("F30"), {QStringLiteral("Flügel")});
  const QString benannt = blockIn(QStringLiteral("001"), fenster, 45, QStringLiteral("F45"), {QStringLiteral("Oberlicht")});
  seiteBenennen(fenster, 3, QStringLiteral("Oberlichter"));

  oeffnen();  // 20 pictures a page
  suchen(QStringLiteral("OrdnerID LIKE '") + QString::number(fenster) + "' ORDER BY Nr");
  Suchergebnis& se = ergebnis();
  EXPECT_EQ(se.labOrdnername, QStringLiteral("Fenster"));
  EXPECT_EQ(se.strAktivierteBlocknummer, code);
  EXPECT_EQ(se.intSeite, 1);
  EXPECT_EQ(se.intFuerNummerPositionsSuche, 10);
  EXPECT_EQ(se.labSeitenNummer, QStringLiteral("2"));
  // A named page shows its name.
  se.sldSuchergebnis_LButtonDown(1);
  EXPECT_EQ(se.strAktivierteBlocknummer, benannt);
  EXPECT_EQ(se.intSeite, 2);
  EXPECT_EQ(se.intFuerNummerPositionsSuche, 5);
  EXPECT_EQ(se.labSeitenNummer, QStringLiteral("Oberlichter"));

  settings_->setup.longAnzahlDerBilder = 7;  // 72 pictures a page
  oeffnen();
  ASSERT_EQ(bv_->intBilder, 72);
  suchen(QStringLiteral("OrdnerID LIKE '") + QString::number(fenster) + "' ORDER BY Nr");
  Suchergebnis& gross = ergebnis();
  EXPECT_EQ(gross.intSeite, 0);
  EXPECT_EQ(gross.intFuerNummerPositionsSuche, 30);
  EXPECT_EQ(gross.labSeitenNummer, QStringLiteral("1"));
  gross.sldSuchergebnis_LButtonDown(1);
  EXPECT_EQ(gross.intFuerNummerPositionsSuche, 45);
  EXPECT_EQ(gross.labSeitenNummer, QStringLiteral("1"));
}

TEST_F(SuchergebnisTest, GoingToAHitMovesTheBrowserOntoItsFolderPageAndPicture) {
  teile(2);
  const qint64 fenster = ordnerAnlegen(QStringLiteral("001"), QStringLiteral("Fenster"));
  const QString fremd = blockIn(QStringLiteral("001"), fenster, 45, QStringLiteral("F45"), {QStringLiteral("Flügel")});
  const QString eigen = blockIn(QStringLiteral("000"), 1, 27, QStringLiteral("T27"), {QStringLiteral("Flügeltür")});
  oeffnen();
  standardOrdner();

  suchen(QStringLiteral("M0 LIKE '%Flügel%' ORDER BY Nr"));
  Suchergebnis& se = ergebnis();
  ASSERT_EQ(se.strAktivierteBlocknummer, fremd);
  // Looking the folder up leaves the library's folder list where it stood.
  Recordset& ro = lib_->rsOrdner;
  const int zeile = ro.AbsolutePosition();
  se.Anzeigen();
  EXPECT_EQ(ro.AbsolutePosition(), zeile);

  ASSERT_TRUE(se.cmbGeheZu_Click());
  EXPECT_EQ(bv_->strAktuelleOrdnerNr(), QStringLiteral("001"));
  EXPECT_EQ(bv_->strAktuellerOrdnerName(), QStringLiteral("Fenster"));
  EXPECT_EQ(bv_->s1, 2);
  EXPECT_EQ(bv_->pos, 5);
  EXPECT_EQ(bv_->aktivierteBlocknummer, fremd);
  EXPECT_EQ(bv_->byteGeheZuVonSuchergebnis, 0);
  EXPECT_EQ(calls_, (QStringList{QStringLiteral("schliessen"), QStringLiteral("hauptformNachVorne")}));

  // A hit of the folder the browser stands on: the folder is not reloaded,
  // the page still changes.
  oeffnen();
  standardOrdner();
  suchen(QStringLiteral("M0 LIKE '%Flügel%' ORDER BY Nr"));
  Suchergebnis& zurueck = ergebnis();
  zurueck.sldSuchergebnis_LButtonDown(1);
  ASSERT_EQ(zurueck.strAktivierteBlocknummer, eigen);
  ASSERT_TRUE(zurueck.cmbGeheZu_Click());
  EXPECT_EQ(bv_->strAktuelleOrdnerNr(), QStringLiteral("000"));
  EXPECT_EQ(bv_->s1, 1);
  EXPECT_EQ(bv_->pos, 7);
  EXPECT_EQ(bv_->aktivierteBlocknummer, eigen);
}

TEST_F(SuchergebnisTest, AHitWithoutFolderOrSlotShowsFreiAndStaysWhereItIs) {
  const qint64 weg = ordnerAnlegen(QStringLiteral("002"), QStringLiteral("Alt"));
  const QString verwaist = blockIn(QStringLiteral("002"), weg, 4, QStringLiteral("A4"), {QStringLiteral("Stütze alt")});
  {
    Connection conn;
    ASSERT_TRUE(conn.open(db_));
    ASSERT_TRUE(conn.execute(QStringLiteral("PRAGMA foreign_keys=OFF")));
    ASSERT_TRUE(conn.execute(QStringLiteral("DELETE FROM tblOrdner WHERE Nr = ?"), {weg}));
    // A cut block waiting to be pasted lies on no slot.
    ASSERT_TRUE(conn.execute(QStringLiteral("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, M0) "
                                            "VALUES ('ZwischenA', '000\\0000021.slb', 1, 'Stütze neu')")));
  }
  oeffnen();
  const int16_t seite = bv_->s1;
  suchen(QStringLiteral("M0 LIKE 'Stütze%' ORDER BY Nr"));
  Suchergebnis& se = ergebnis();
  ASSERT_EQ(se.intAnzahlDerGefundenenBloecke, 2);

  EXPECT_EQ(se.strAktivierteBlocknummer, verwaist);
  EXPECT_EQ(se.labBlockName, QStringLiteral("Stütze alt"));
  EXPECT_EQ(se.labOrdnername, QStringLiteral("frei"));
  EXPECT_EQ(se.labSeitenNummer, QStringLiteral("frei"));
  EXPECT_FALSE(se.cmbGeheZuEnabled);
  EXPECT_FALSE(se.cmbGeheZu_Click());

  se.sldSuchergebnis_LButtonDown(1);
  EXPECT_EQ(se.strAktivierteBlocknummer, QStringLiteral("ZwischenA"));
  EXPECT_EQ(se.labOrdnername, QStringLiteral("Standard-Ordner"));
  EXPECT_EQ(se.labSeitenNummer, QStringLiteral("frei"));
  EXPECT_EQ(se.intSeite, -1);
  EXPECT_FALSE(se.cmbGeheZu_Click());

  EXPECT_TRUE(calls_.isEmpty()) << calls_.join('\n').toStdString();
  EXPECT_EQ(bv_->strAktuelleOrdnerNr(), QStringLiteral("000"));
  EXPECT_EQ(bv_->s1, seite);
  EXPECT_EQ(bv_->byteGeheZuVonSuchergebnis, 0);
}

TEST_F(SuchergebnisTest, TheInsertGetsTheViewWhoseNameWasSearched) {
  const QString code = blockIn(QStringLiteral("000"), 1, 2, QStringLiteral("Tür"), {QStringLiteral("Innentür")});
  spalteSetzen(code, QStringLiteral("BlkName2"), QStringLiteral("Tür links"));
  spalteSetzen(code, QStringLiteral("BlkName3"), QStringLiteral("Tür rechts"));
  oeffnen();
  suchen(QStringLiteral("(tblBlockInfo.Nr IN(SELECT tblBlockInfo.Nr FROM tblBlockInfo WHERE BlkName0 LIKE '%tür%' "
                        "OR BlkName2 LIKE '%tür%'))"));

  Suchergebnis& se = ergebnis(QStringLiteral("TÜR LINKS"));
  EXPECT_EQ(se.fctBytAktAnsichtUeberBlkName(code, QStringLiteral("tür rechts")), 3);
  EXPECT_EQ(se.fctBytAktAnsichtUeberBlkName(code, QStringLiteral("Tür")), 0);
  EXPECT_EQ(se.fctBytAktAnsichtUeberBlkName(code, QStringLiteral("Tür oben")), 0);
  EXPECT_EQ(se.fctBytAktAnsichtUeberBlkName(QStringLiteral("0000999"), QStringLiteral("Tür links")), 0);
  ASSERT_TRUE(se.cmbEinfuegen_Click());
  EXPECT_EQ(calls_, (QStringList{"einfuegen|" + code + "|2", QStringLiteral("schliessen")}));

  // A name that no view carries, or a search without a name: view 0.
  calls_.clear();
  ASSERT_TRUE(ergebnis(QStringLiteral("Tü")).cmbEinfuegen_Click());
  ASSERT_TRUE(ergebnis().cmbEinfuegen_Click());
  EXPECT_EQ(calls_, (QStringList{"einfuegen|" + code + "|0", QStringLiteral("schliessen"),
                                 "einfuegen|" + code + "|0", QStringLiteral("schliessen")}));
}

TEST_F(SuchergebnisTest, NameViewsAndFrameOfTheActiveHit) {
  const qint64 fenster = ordnerAnlegen(QStringLiteral("001"), QStringLiteral("Fenster"));
  const QString hier = blockIn(QStringLiteral("000"), 1, 0, QStringLiteral("Hausteil"), {QStringLiteral("Gaube")});
  const QString dort = blockIn(QStringLiteral("001"), fenster, 0, QStringLiteral("Dachfenster"), {QStringLiteral("Gaubenfenster")});
  const QString dritt = blockIn(QStringLiteral("001"), fenster, 1, QStringLiteral("Fensterband"), {QStringLiteral("Gaubenband")});
  spalteSetzen(hier, QStringLiteral("AX1"), 0.0);  // point A of view 1 at the origin is a point
  writeFile(bib_ + "/001/Block/" + dritt + "2.dwg", "drawing of view 2");
  QStringList gefragt;
  const QString mitVarianten = fctVariantenListePfad(bib_ + "/", QStringLiteral("001"), dort, 0);
  oeffnen();
  standardOrdner();
  bv_->hooks.fctVariaEinfuegenKontroll = [&](const QString& dat) {
    gefragt << dat;
    return QDir::cleanPath(dat) == QDir::cleanPath(mitVarianten);
  };
  const QString aktiv = bv_->aktivierteBlocknummer;
  suchen(QStringLiteral("M0 LIKE 'Gaube%' ORDER BY Nr"));
  Suchergebnis& se = ergebnis();

  // A hit of the browser's folder is named by its block name, others by their card.
  EXPECT_EQ(se.labBlockName, QStringLiteral("Hausteil"));
  EXPECT_EQ(se.byteAnsichtVorhanden, 1);
  EXPECT_EQ(se.rahmenAktiv, FrameColor::Red);

  se.sldSuchergebnis_LButtonDown(1);
  EXPECT_EQ(se.labBlockName, QStringLiteral("Gaubenfenster"));
  EXPECT_EQ(se.byteAnsichtVorhanden, 0);
  EXPECT_EQ(se.rahmenAktiv, FrameColor::Green);

  se.sldSuchergebnis_LButtonDown(2);
  EXPECT_EQ(se.byteAnsichtVorhanden, 1);  // by its drawing alone
  EXPECT_EQ(se.rahmenAktiv, FrameColor::Red);

  se.sldSuchergebnis_LButtonDown(3);  // free
  EXPECT_EQ(se.byteAnsichtVorhanden, 0);
  EXPECT_NE(se.rahmenAktiv, FrameColor::Green);

  ASSERT_GE(gefragt.size(), 2);
  EXPECT_TRUE(gefragt.contains(QDir::toNativeSeparators(mitVarianten)) || gefragt.contains(mitVarianten))
      << gefragt.join('\n').toStdString();
  // The browser's active block is not changed to ask.
  EXPECT_EQ(bv_->aktivierteBlocknummer, aktiv);
}

TEST_F(SuchergebnisTest, TheWindowShowsTheLogicsStateAndForwardsClicks) {
  teile(21);
  oeffnen();
  suchen(QStringLiteral("M0 LIKE 'Teil%' ORDER BY Nr"));
  Suchergebnis& se = ergebnis();
  FrmSuchergebnis frm(se);
  frm.resize(900, 560);
  frm.show();
  QApplication::processEvents();
  auto* vor = frm.findChild<QPushButton*>(QStringLiteral("cmbVor"));
  auto* zurueck = frm.findChild<QPushButton*>(QStringLiteral("cmbZurueck"));
  auto* liste = frm.findChild<QListWidget*>(QStringLiteral("lisBlockBenennung"));
  auto* name = frm.findChild<QLabel*>(QStringLiteral("labBlockName"));
  ASSERT_TRUE(vor && zurueck && liste && name);
  EXPECT_TRUE(vor->isEnabled());
  EXPECT_FALSE(zurueck->isEnabled());
  EXPECT_EQ(liste->count(), 20);
  EXPECT_EQ(name->text(), QStringLiteral("Name 0"));

  liste->setCurrentRow(4);
  EXPECT_EQ(se.bytErgebnisPosition, 4);
  EXPECT_EQ(name->text(), QStringLiteral("Name 4"));
  vor->click();
  EXPECT_EQ(se.intErgebnisSeite, 1);
  EXPECT_FALSE(vor->isEnabled());
  EXPECT_TRUE(zurueck->isEnabled());
  EXPECT_EQ(liste->item(0)->text(), QStringLiteral("Teil 20"));
  EXPECT_EQ(liste->currentRow(), 4);
  EXPECT_EQ(name->text(), QStringLiteral("frei"));
  EXPECT_FALSE(frm.findChild<QPushButton*>(QStringLiteral("cmbEinfuegen"))->isEnabled());
  liste->setCurrentRow(0);
  EXPECT_EQ(name->text(), QStringLiteral("Name 20"));
  EXPECT_TRUE(frm.grab().save(path(QStringLiteral("suchergebnis.png"))));
}

}  // namespace kolvane

// The search dialog's logic: the statement over the data cards and names, its
// answers to bad input, the stored search files, and the hit inserted at once.
#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QRegularExpression>
#include <set>

#include "connection.h"
#include "datenbanksuche.h"
#include "frmdatenbanksuche.h"
#include "labels.h"
#include "prefix.h"
#include "suchdatei.h"
#include "suchtest.h"
#include "suchtreffer.h"

namespace kolvane {
namespace {

const QStringList kHersteller{"Müller", "Schmidt & Co", "O'Brien", "Meier_2"};

class DatenbankSucheTest : public SuchTest {
 protected:
  void SetUp() override {
    SuchTest::SetUp();
    automationGebunden();
    settings_->setup.longEinfuegenLayer0 = 0;
  }

  // 300 blocks over folders 000 (the first 200) and 001, written in one go:
  // M0 "Ventil DN<n mod 50>", M1 a maker, M2 "x" on every tenth.
  void bestand() {
    ordner1_ = ordnerAnlegen("001", "Zubehör");
    QStringList prefix;
    ASSERT_TRUE(fctPrefixEinlesen(200, prefix));
    Connection c;
    ASSERT_TRUE(c.open(db_));
    ASSERT_TRUE(c.begin());
    for (int n = 0; n < 300; ++n) {
      const bool erster = n < 200;
      const QString code = fctBlockCode(erster ? "000" : "001", erster ? n : n - 200, prefix);
      ASSERT_TRUE(c.execute("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0, M0, M1, M2) "
                            "VALUES (?, ?, ?, ?, ?, ?, ?)",
                            {code, code.left(3) + "\\" + code + ".slb", erster ? 1 : ordner1_,
                             QString("V%1").arg(n), QString("Ventil DN%1").arg(n % 50),
                             kHersteller[n % 4], n % 10 == 0 ? QVariant("x") : QVariant()}));
      codes_ << code;
      writeFile(bib_ + "/" + code.left(3) + "/" + code + ".slb", "slide library");
    }
    ASSERT_TRUE(c.commit());
  }
  // The codes of the blocks n for which pred holds.
  std::set<QString> erwartet(const std::function<bool(int)>& pred) const {
    std::set<QString> s;
    for (int n = 0; n < codes_.size(); ++n)
      if (pred(n)) s.insert(codes_[n]);
    return s;
  }
  std::set<QString> treffer(DatenbankSuche& s) {
    std::set<QString> t;
    Recordset& rs = s.rsDatenbankSuche;
    if (!rs.isOpen()) return t;
    for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext()) t.insert(rs.text("Block"));
    return t;
  }
  // A search with the hooks recorded; the boxes as given.
  std::unique_ptr<DatenbankSuche> suche() {
    auto s = std::make_unique<DatenbankSuche>(*bv_);
    s->hooks.suchergebnisAnzeigen = [this] { ++ergebnisse_; };
    s->hooks.einfuegen = [this](const QString& b, uint8_t a) {
      eingefuegt_ << b + "/" + QString::number(a);
    };
    s->Form_Load();
    return s;
  }
  bool meldung(int nr) const {
    const QString text = labels().fctBeschriftMsgboxZuordnen(nr);
    for (const QString& a : prompt_->asked)
      if (a.contains(text)) return true;
    return false;
  }

  qint64 ordner1_ = 0;
  QStringList codes_;
  int ergebnisse_ = 0;
  QStringList eingefuegt_;
};

TEST_F(DatenbankSucheTest, TwoFieldsWithWildcardsFindExactlyTheirRows) {
  bestand();
  oeffnen();
  auto s = suche();
  // "_" is one character, "%" any run; every term must hold.
  s->k.txtBenennung[0] = "ventil dn1_";
  s->k.txtBenennung[1] = "schm%co";
  EXPECT_TRUE(s->cmbSuchen_Click());
  EXPECT_EQ(treffer(*s), erwartet([](int n) { return n % 50 >= 10 && n % 50 <= 19 && n % 4 == 1; }));
  EXPECT_EQ(ergebnisse_, 1) << "the results open";

  // The whole field: "dn2_" no longer matches inside "DN2" alone or "DN123".
  s->k.checkGanzeWoerter = true;
  s->k.txtBenennung[0] = "VENTIL DN2_";
  s->k.txtBenennung[1].clear();
  EXPECT_TRUE(s->cmbSuchen_Click());
  EXPECT_EQ(treffer(*s), erwartet([](int n) { return n % 50 >= 20 && n % 50 <= 29; }));

  // "%" over the whole field finds every row in which the field has a value.
  s->k.txtBenennung[0].clear();
  s->k.txtBenennung[2] = "%";
  EXPECT_TRUE(s->cmbSuchen_Click());
  EXPECT_EQ(treffer(*s), erwartet([](int n) { return n % 10 == 0; }));

  // The comparison of a row is kept with the search, but changes nothing.
  const auto vorher = treffer(*s);
  s->k.comboxSuchkriterienVerknuepfen[2] = "<";
  EXPECT_TRUE(s->cmbSuchen_Click());
  EXPECT_EQ(treffer(*s), vorher);

  // The current folder only.
  s->k.checkAktuellerOrdner = true;
  EXPECT_TRUE(s->cmbSuchen_Click());
  EXPECT_EQ(treffer(*s), erwartet([](int n) { return n % 10 == 0 && n < 200; }));
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(DatenbankSucheTest, BadInputGivesAResultOrAMessageAndNeverChangesTheLibrary) {
  bestand();
  oeffnen();
  const QByteArray hash = dateiHash();
  auto s = suche();

  // Nothing to look for, also with the folder limit set.
  s->k.checkAktuellerOrdner = true;
  EXPECT_FALSE(s->cmbSuchen_Click());
  EXPECT_TRUE(meldung(55));
  s->k.checkAktuellerOrdner = false;

  // A quote is plain text and finds its maker.
  s->k.txtBenennung[1] = "O'Brien";
  EXPECT_TRUE(s->cmbSuchen_Click());
  EXPECT_EQ(treffer(*s), erwartet([](int n) { return n % 4 == 2; }));
  s->k.txtBenennung[1] = "'";
  EXPECT_TRUE(s->cmbSuchen_Click());
  EXPECT_EQ(treffer(*s).size(), 75u);
  // "_" stands for one character, so "meier_2" also finds itself.
  s->k.txtBenennung[1] = "meier_2";
  EXPECT_TRUE(s->cmbSuchen_Click());
  EXPECT_EQ(treffer(*s), erwartet([](int n) { return n % 4 == 3; }));

  // Texts that match nothing: message 56 each time, the dialog stays.
  const QStringList nichts{"[Sch]",  "Schm[i]dt",  "Ventil*", "Ventil DN?", "x' OR '1'='1", "--",
                           "; DROP TABLE tblBlockInfo; --", "\")", QString(300, 'A'),
                           "%' --", "\\"};
  for (const QString& t : nichts) {
    for (int feld = 0; feld < Suchkriterien::kFelder; ++feld) {
      prompt_->asked.clear();
      s->k.txtBenennung.fill(QString());
      s->k.txtBenennung[size_t(feld)] = t;
      EXPECT_FALSE(s->cmbSuchen_Click()) << t.toStdString() << " in box " << feld;
      EXPECT_TRUE(meldung(56)) << t.toStdString() << " in box " << feld;
      EXPECT_FALSE(s->rsDatenbankSuche.isOpen());
    }
  }
  // A text in a box of a number is a text like any other: it finds nothing.
  s->k.txtBenennung.fill(QString());
  s->k.txtBenennung[0] = "12.5e3";
  EXPECT_FALSE(s->cmbSuchen_Click());
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
  EXPECT_EQ(dateiHash(), hash) << "a search never writes the library";
  EXPECT_EQ(wert("SELECT COUNT(*) FROM tblBlockInfo").toInt(), 300);
}

TEST_F(DatenbankSucheTest, TheBlockNameIsSearchedInViewsAndVariantsWhenAsked) {
  ordner1_ = ordnerAnlegen("001", "Zubehör");
  const QString a = blockIn("000", 1, 0, "Pumpe");
  const QString b = blockIn("000", 1, 1, "Kessel");
  const QString c = blockIn("001", ordner1_, 0, "Rohr");
  spalteSetzen(b, "BlkName3", "Pumpe von der Seite");
  const qint64 nrC = wert("SELECT Nr FROM tblBlockInfo WHERE Block = ?", {c}).toLongLong();
  {
    Connection conn;
    ASSERT_TRUE(conn.open(db_));
    ASSERT_TRUE(conn.execute("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) VALUES (?, ?, ?)",
                             {"Pumpe klein", nrC, "Rohr_v1.dwg"}));
  }
  oeffnen();
  auto s = suche();
  s->k.checkDirektEinfuegen = false;
  s->k.txtBenennung[10] = "PUMPE";
  EXPECT_TRUE(s->cmbSuchen_Click());
  EXPECT_EQ(treffer(*s), (std::set<QString>{a, b, c}));
  EXPECT_EQ(s->strBlkNameGesucht, "PUMPE");
  // The view whose name was searched is the one offered.
  s->rsDatenbankSuche.MoveFirst();
  ASSERT_TRUE(s->rsDatenbankSuche.Find("Block = '" + b + "'"));
  EXPECT_EQ(fctBytAktAnsichtUeberBlkName(s->rsDatenbankSuche, "pumpe von der seite"), 3);
  EXPECT_EQ(fctBytAktAnsichtUeberBlkName(s->rsDatenbankSuche, "Kessel"), 0);

  s->k.chkAnsichtenVarianten = false;
  EXPECT_TRUE(s->cmbSuchen_Click());
  EXPECT_EQ(treffer(*s), (std::set<QString>{a}));
}

TEST_F(DatenbankSucheTest, OneHitWithTheOptionIsInsertedAtOnceFromAnyFolder) {
  ordner1_ = ordnerAnlegen("001", "Zubehör");
  blockIn("000", 1, 0, "Tisch", {"Tisch rund"});
  const QString ventil = blockIn("001", ordner1_, 3, "Ventil_DN25", {"Ventil DN25", "Müller"});
  oeffnen();
  ASSERT_EQ(bv_->strAktuelleOrdnerNr(), "000");
  const QString aktiv = bv_->aktivierteBlocknummer;
  bv_->hooks.cmbEinfuegen = [this] { ins_->cmbEinfuegen_Click(); };
  DatenbankSuche s(*bv_);
  int geschlossen = 0;
  s.hooks.einfuegen = [this](const QString& block, uint8_t ansicht) {
    fctSuchtrefferEinfuegen(*bv_, *ins_, block, ansicht);
  };
  s.hooks.schliessen = [&] { ++geschlossen; };
  s.hooks.suchergebnisAnzeigen = [this] { ++ergebnisse_; };
  s.Form_Load();
  s.k.txtBenennung[10] = "ventil_dn25";
  ASSERT_TRUE(s.k.checkDirektEinfuegen) << "the host's block search relies on it";
  EXPECT_TRUE(s.cmbSuchen_Click());

  const QString dwg = bib_ + "/001/Block/" + ventil + "0.dwg";
  const QStringList gesendet = this->gesendet();
  ASSERT_EQ(gesendet.size(), 1) << log().join("\n").toStdString();
  EXPECT_THAT(gesendet[0].toStdString(), ::testing::HasSubstr("._-insert"));
  EXPECT_THAT(gesendet[0].toStdString(), ::testing::HasSubstr("/Ventil_DN25.dwg"));
  EXPECT_EQ(ins_->letzterBlock.aktivierteBlocknummer, ventil);
  EXPECT_EQ(ins_->letzterBlock.SpeicherortDerBlockzeichnung, dwg);
  EXPECT_EQ(geschlossen, 1);
  EXPECT_EQ(ergebnisse_, 0);
  // The browser stands where it stood.
  EXPECT_EQ(bv_->strAktuelleOrdnerNr(), "000");
  EXPECT_EQ(bv_->aktivierteBlocknummer, aktiv);
  EXPECT_EQ(bv_->s1, 0);

  // Two hits: the results open and nothing goes to the host.
  blockIn("000", 1, 1, "Ventil_DN250");
  log_.clear();
  EXPECT_TRUE(s.cmbSuchen_Click());
  EXPECT_EQ(ergebnisse_, 1);
  EXPECT_TRUE(this->gesendet().isEmpty());
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
}

// ---------------------------------------------------------------- files

TEST_F(DatenbankSucheTest, AStoredSearchReadsBackWithUmlautsAndWithoutTheName) {
  oeffnen();
  auto s = suche();
  s->k.txtBenennung[0] = "Ventil DN25";
  s->k.txtBenennung[1] = "Müller & Söhne";
  s->k.txtBenennung[9] = "Maß 'ß'";
  s->k.txtBenennung[10] = "Ventil_DN25";
  s->k.comboxSuchkriterienVerknuepfen[1] = ">=";
  const QString datei = path("such/DatenbankSuche1.str");
  QDir().mkpath(path("such"));
  ASSERT_TRUE(s->inDateiSpeichern(datei));
  const QByteArray bytes = readFile(datei);
  EXPECT_TRUE(bytes.contains("M\xFCller & S\xF6hne\r\n>=\r\n")) << "Windows-1252, CR LF";
  EXPECT_EQ(bytes.count("\r\n"), 21);

  auto t = suche();
  t->k.txtBenennung[10] = "bleibt";
  t->k.txtBenennung[5] = "wird leer";
  ASSERT_TRUE(t->ausDateiLaden(datei));
  for (size_t i = 0; i < 10; ++i) {
    EXPECT_EQ(t->k.txtBenennung[i], s->k.txtBenennung[i]) << i;
    EXPECT_EQ(t->k.comboxSuchkriterienVerknuepfen[i], s->k.comboxSuchkriterienVerknuepfen[i]) << i;
  }
  EXPECT_EQ(t->k.txtBenennung[10], "bleibt") << "the name box is not stored";

  // A text only Unicode holds is written as UTF-8 and read back the same.
  s->k.txtBenennung[2] = "Ø 25 – Ω";
  ASSERT_TRUE(s->inDateiSpeichern(datei));
  ASSERT_TRUE(t->ausDateiLaden(datei));
  EXPECT_EQ(t->k.txtBenennung[2], "Ø 25 – Ω");
  EXPECT_EQ(t->k.txtBenennung[1], "Müller & Söhne");

  // A short file blanks what it lacks; a missing comparison is "$".
  writeFile(path("kurz.str"), "23.11.2026 10:00\nPumpe\n=\nGrundfos\n");
  ASSERT_TRUE(t->ausDateiLaden(path("kurz.str")));
  EXPECT_EQ(t->k.txtBenennung[0], "Pumpe");
  EXPECT_EQ(t->k.comboxSuchkriterienVerknuepfen[0], "=");
  EXPECT_EQ(t->k.txtBenennung[1], "Grundfos");
  EXPECT_EQ(t->k.comboxSuchkriterienVerknuepfen[1], "$");
  EXPECT_EQ(t->k.txtBenennung[9], "");
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(DatenbankSucheTest, ABadSearchFileIsRefusedWithAMessageAndChangesNothing) {
  oeffnen();
  auto s = suche();
  s->k.txtBenennung[0] = "vorher";
  s->k.comboxSuchkriterienVerknuepfen[0] = "=";
  QByteArray zuViele;
  for (int i = 0; i < 22; ++i) zuViele += "Zeile\r\n";
  const QList<std::pair<QByteArray, int>> faelle{
      {QByteArray(), 969},
      {"nur das Datum\r\n", 969},
      {"Datum\r\nText\r\nungefähr\r\n", 970},
      {QByteArray("Datum\r\nText\0mit Null\r\n$\r\n", 24), 970},
      {"Datum\r\nText\x01\r\n$\r\n", 970},
      {zuViele, 971},
      {"Datum\r\n" + QByteArray(300, 'a') + "\r\n$\r\n", 971},
      {QByteArray(70000, 'a'), 971},
  };
  for (const auto& [inhalt, nr] : faelle) {
    prompt_->asked.clear();
    writeFile(path("kaputt.str"), inhalt);
    EXPECT_FALSE(s->ausDateiLaden(path("kaputt.str"))) << inhalt.left(40).toStdString();
    EXPECT_TRUE(meldung(nr)) << nr << ": " << prompt_->asked.join("\n").toStdString();
    EXPECT_TRUE(meldung(972));
    EXPECT_EQ(s->k.txtBenennung[0], "vorher");
    EXPECT_EQ(s->k.comboxSuchkriterienVerknuepfen[0], "=");
  }
  // Missing, a directory, or a place that can't be written.
  prompt_->asked.clear();
  EXPECT_FALSE(s->ausDateiLaden(path("fehlt.str")));
  EXPECT_TRUE(meldung(964));
  EXPECT_FALSE(s->ausDateiLaden(path("")));
  EXPECT_FALSE(s->inDateiSpeichern(path("gibt/es/nicht/a.str")));
  EXPECT_TRUE(meldung(965));
  // A cancelled chooser does nothing.
  prompt_->cancel();
  EXPECT_FALSE(s->cmbLaden_Click());
  prompt_->cancel();
  EXPECT_FALSE(s->cmbSpeichern_Click());
  EXPECT_EQ(s->k.txtBenennung[0], "vorher");
  EXPECT_EQ(prompt_->unexpected(), 0);
}

// The dialog over the logic: captions of the folder, the boxes into the
// search, the hits in its table.
TEST_F(DatenbankSucheTest, TheDialogSearchesWhatItsBoxesSay) {
  bestand();
  {
    Connection c;
    ASSERT_TRUE(c.open(db_));
    ASSERT_TRUE(c.execute("UPDATE tblDefMenue SET Benennung1 = 'Benennung', Benennung2 = 'Hersteller' WHERE Nr = 1"));
  }
  oeffnen();
  auto s = suche();
  FrmDatenbankSuche f(*s);
  EXPECT_EQ(f.findChild<QLabel*>("labBenennung_1")->text(), "Hersteller");
  EXPECT_EQ(f.findChild<QLabel*>("labBenennung_10")->text(), labels().fctBeschriftFrmZuordnen("frmDatenbankSuche.labBenennung10"));
  EXPECT_TRUE(f.findChild<QCheckBox*>("chkAnsichtenVarianten")->isChecked());
  f.findChild<QLineEdit*>("txtBenennung_1")->setText("O'Brien");
  f.findChild<QLineEdit*>("txtBenennung_0")->setText("DN4_");
  f.findChild<QCheckBox*>("checkAktuellerOrdner")->setChecked(true);
  f.findChild<QComboBox*>("comboxSuchkriterienVerknuepfen_1")->setCurrentText("<>");
  f.findChild<QPushButton*>("cmbSuchen")->click();
  EXPECT_EQ(treffer(*s), erwartet([](int n) { return n % 4 == 2 && n % 50 >= 40 && n < 200; }));
  EXPECT_EQ(s->k.comboxSuchkriterienVerknuepfen[1], "<>");
  EXPECT_EQ(f.findChild<QTableWidget*>("DataGrid1")->rowCount(), int(treffer(*s).size()));
  if (qEnvironmentVariableIsSet("KOLVANE_SCREENSHOT_DIR"))
    f.grab().save(qEnvironmentVariable("KOLVANE_SCREENSHOT_DIR") + "/frmDatenbankSuche.png");
  f.findChild<QPushButton*>("cmbLeer")->click();
  EXPECT_TRUE(s->k.leer());
  EXPECT_TRUE(f.findChild<QLineEdit*>("txtBenennung_1")->text().isEmpty());
}

}  // namespace
}  // namespace kolvane

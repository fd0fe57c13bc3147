#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "authortest.h"
#include "bildausschnitt.h"
#include "blocknameeingeben.h"
#include "frmneuerblock.h"
#include "karteidateneingabe.h"
#include "labels.h"
#include "neuanlage.h"

namespace kolvane {
namespace {

class DialogeTest : public AuthorTest {
 protected:
  void variante(const QString& name) {
    if (anzahl("SELECT COUNT(*) FROM tblBlockInfo") == 0) blockAnlegen(0);
    ausfuehren("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) VALUES "
               "(?, (SELECT MIN(Nr) FROM tblBlockInfo), ?)",
               {name, "a00010.dwg"});
  }
  // The logic's answer to a name, and the messages it showed.
  bool pruefe(BlocknameEingeben& l, const QString& name) {
    prompt_->asked.clear();
    l.txtBlocknameEingeben = name;
    return l.cmbOk_Click();
  }
  void defMenue(int nr, const QString& stamm) {
    QStringList spalten{"Nr"};
    QVariantList werte{nr};
    for (int i = 1; i <= 10; ++i) {
      spalten << QStringLiteral("Benennung%1").arg(i) << QStringLiteral("Standardwert%1").arg(i);
      werte << QStringLiteral("%1 Feld %2").arg(stamm).arg(i) << QStringLiteral("%1 Wert %2").arg(stamm).arg(i);
    }
    ausfuehren("INSERT INTO tblDefMenue (" + spalten.join(", ") + ") VALUES (?" +
                   QString(", ?").repeated(spalten.size() - 1) + ")",
               werte);
  }
  void bildSpeichern(QWidget& w, const QString& name) {
    const QImage bild = w.grab().toImage();
    ASSERT_FALSE(bild.isNull());
    ASSERT_TRUE(bild.save(path(name)));
    QDir().mkpath("/tmp/author-shots");
    bild.save("/tmp/author-shots/" + name);
  }
};

TEST_F(DialogeTest, ABlockNameHasAtMost32Characters) {
  oeffnen(0);
  BlocknameEingeben l(lib_->connDb);
  EXPECT_FALSE(pruefe(l, QString(33, 'x')));
  EXPECT_TRUE(gezeigt(304));
  EXPECT_TRUE(pruefe(l, QString(32, u'ä')));
  EXPECT_TRUE(prompt_->asked.isEmpty());
  EXPECT_TRUE(pruefe(l, QString()));
  EXPECT_TRUE(pruefe(l, "Flansch \"DN 50\" O'Brien"));
  EXPECT_TRUE(prompt_->asked.isEmpty());
}

TEST_F(DialogeTest, AVariantNeedsANameNoVariantHas) {
  variante("Kurz");
  variante("O'Neil \"A\"");
  variante("Ärmel");
  oeffnen(0);
  BlocknameEingeben l(lib_->connDb);
  l.variante = true;
  EXPECT_FALSE(pruefe(l, ""));
  EXPECT_TRUE(gezeigt(136));
  EXPECT_FALSE(pruefe(l, "   "));
  EXPECT_TRUE(gezeigt(136));
  EXPECT_FALSE(pruefe(l, "kURZ"));
  EXPECT_TRUE(gezeigt(57));
  EXPECT_FALSE(pruefe(l, "o'neil \"a\""));
  EXPECT_TRUE(gezeigt(57));
  EXPECT_FALSE(pruefe(l, "ärmel"));
  EXPECT_TRUE(gezeigt(57));
  EXPECT_FALSE(pruefe(l, QString(33, 'v')));
  EXPECT_TRUE(gezeigt(304));
  EXPECT_TRUE(pruefe(l, "Lang"));
  EXPECT_TRUE(pruefe(l, "O'Neil"));
  // Wildcards of a pattern are plain characters of a name.
  EXPECT_TRUE(pruefe(l, "K_rz")) << prompt_->asked.join('\n').toStdString();
  EXPECT_TRUE(pruefe(l, "%"));
  EXPECT_TRUE(pruefe(l, "Ku\\rz"));
  variante("50% K_rz\\2");
  EXPECT_FALSE(pruefe(l, "50% k_RZ\\2"));
  EXPECT_TRUE(pruefe(l, "50% kurz\\2"));
}

TEST_F(DialogeTest, TheDataCardTakesTheFoldersDefinition) {
  defMenue(2, "Zwei");
  ausfuehren("UPDATE tblOrdner SET NrTblDefMenue = 2 WHERE OrdnerNr = '000'");
  oeffnen(0);
  Karteidateneingabe k(*lib_);
  k.Form_Load("Flansch", "/t/0A.sld", 3, "L", "Strich", "5");
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(k.labBenennung[size_t(i)], QStringLiteral("Zwei Feld %1").arg(i + 1));
    EXPECT_EQ(k.txtBenennung[size_t(i)], QStringLiteral("Zwei Wert %1").arg(i + 1));
  }
  EXPECT_EQ(k.labBlockName, "Flansch");
  EXPECT_EQ(k.labAnzeigePfad, "/t/0A.sld");
  EXPECT_EQ(k.labSeitenNummer, "3");
  EXPECT_EQ(k.txtLayer, "L");
  EXPECT_EQ(k.txtLinie, "Strich");
  EXPECT_EQ(k.txtFarbe, "5");
}

TEST_F(DialogeTest, AFolderWithoutDefinitionTakesTheFirst) {
  defMenue(2, "Zwei");
  ausfuehren("UPDATE tblDefMenue SET Benennung3 = 'Eins drei', Standardwert3 = 'vor' WHERE Nr = 1");
  ausfuehren("UPDATE tblOrdner SET NrTblDefMenue = NULL");
  oeffnen(0);
  Karteidateneingabe k(*lib_);
  k.Form_Load("", "", 1, "", "", "");
  EXPECT_EQ(k.labBenennung[2], "Eins drei");
  EXPECT_EQ(k.txtBenennung[2], "vor");
  // A free first caption shows the word for a caption.
  EXPECT_EQ(k.labBenennung[0], labels().fctBeschriftFrmZuordnen(164));
  EXPECT_EQ(k.labBenennung[0], "Benennung");
  EXPECT_EQ(k.labBlockName, labels().fctBeschriftFrmZuordnen(QStringLiteral("frmKarteiDateneingabe.labBlockNameNeu")));
}

TEST_F(DialogeTest, CancellingTheDataCardAsks) {
  oeffnen(0);
  Karteidateneingabe k(*lib_);
  prompt_->answer(Answer::No);
  EXPECT_FALSE(k.combutAbbrechen_Click());
  prompt_->answer(Answer::Yes);
  EXPECT_TRUE(k.combutAbbrechen_Click());
  EXPECT_TRUE(gezeigt(938));
  EXPECT_EQ(prompt_->unexpected(), 0);
}

// The layer list asks the host's drawing: the chosen layer brings its colour
// and line type; without a host or when cancelled nothing changes.
TEST_F(DialogeTest, TheDataCardTakesALayerOfTheDrawing) {
  oeffnen(0);
  Karteidateneingabe k(*lib_);
  k.txtLayer = "Alt";
  EXPECT_FALSE(k.combutLayerListe_Click()) << "no host";
  automationGebunden();
  HostLayer achsen;
  achsen.name = "Achsen";
  achsen.color = 3;
  achsen.linetype = "Strich";
  HostLayer null;
  null.name = "0";
  host_.layerList = {null, achsen};
  k.bridge = bridge_.get();
  prompt_->cancel();
  EXPECT_FALSE(k.combutLayerListe_Click());
  EXPECT_EQ(k.txtLayer, "Alt");
  prompt_->pickIndex(1);
  ASSERT_TRUE(k.combutLayerListe_Click());
  EXPECT_EQ(k.txtLayer, "Achsen");
  EXPECT_EQ(k.txtFarbe, "3");
  EXPECT_EQ(k.txtLinie, "Strich");
}

TEST_F(DialogeTest, TheWindows) {
  defMenue(2, "Zwei");
  ausfuehren("UPDATE tblOrdner SET NrTblDefMenue = 2 WHERE OrdnerNr = '000'");
  oeffnen(0);
  const QString temp = path("temp/TempKolvane");
  writeFile(temp + "/0A.sld", slideBytes(2));

  // The data card shows the folder's captions and defaults.
  Karteidateneingabe k(*lib_);
  k.Form_Load("Flansch DN 50", temp + "/0A.sld", 1, "Schrauben", "Strich", "3");
  {
    FrmKarteiDateneingabe f(k);
    f.show();
    ASSERT_EQ(f.txtBenennung().size(), 10);
    for (int i = 0; i < 10; ++i) {
      auto* lab = f.findChild<QLabel*>(QStringLiteral("labBenennung_%1").arg(i));
      ASSERT_NE(lab, nullptr);
      EXPECT_EQ(lab->text(), QStringLiteral("Zwei Feld %1").arg(i + 1));
      EXPECT_EQ(f.txtBenennung()[i]->text(), QStringLiteral("Zwei Wert %1").arg(i + 1));
    }
    f.txtBenennung()[4]->setText("geändert");
    f.findChild<QLineEdit*>("txtLayer")->setText("Achsen");
    bildSpeichern(f, "frmKarteiDateneingabe.png");
    auto* speichern = f.findChild<QPushButton*>("combutSpeichern");
    ASSERT_NE(speichern, nullptr);
    speichern->click();
    EXPECT_EQ(f.result(), QDialog::Accepted);
    EXPECT_EQ(k.txtBenennung[4], "geändert");
    EXPECT_EQ(k.txtLayer, "Achsen");
  }

  // The name dialog takes a valid name and stays on a refused one.
  {
    BlocknameEingeben l(lib_->connDb);
    l.txtBlocknameEingeben = "alt";
    FrmBlocknameEingeben f(l);
    f.show();
    EXPECT_EQ(f.txtBlocknameEingeben()->text(), "alt");
    auto* ok = f.findChild<QPushButton*>("cmbOk");
    ASSERT_NE(ok, nullptr);
    f.txtBlocknameEingeben()->setText(QString(33, 'n'));
    ok->click();
    EXPECT_TRUE(f.isVisible());
    EXPECT_NE(f.result(), QDialog::Accepted);
    EXPECT_TRUE(gezeigt(304));
    f.txtBlocknameEingeben()->setText("Flansch 'A'");
    ok->click();
    EXPECT_FALSE(f.isVisible());
    EXPECT_EQ(f.result(), QDialog::Accepted);
    EXPECT_EQ(l.txtBlocknameEingeben, "Flansch 'A'");
  }

  // The picture frame shows the first slide.
  {
    Neuanlage n;
    n.ErstesSlidebild = "0A";
    Bildausschnitt b(*bridge_, n, temp);
    FrmBildausschnittAnpassen f(b);
    f.show();
    EXPECT_EQ(b.slideDatei(), temp + "/0A.sld");
    bildSpeichern(f, "frmBildausschnittAnpassen.png");
    auto* ja = f.findChild<QPushButton*>("cmbJa");
    ASSERT_NE(ja, nullptr);
    ja->click();
    EXPECT_TRUE(b.bestaetigt);
    EXPECT_EQ(f.result(), QDialog::Accepted);
  }
}

}  // namespace
}  // namespace kolvane

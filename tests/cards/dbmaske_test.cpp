// The data card of a stored block: captions of the folder, values of the row,
// saving, walking, and a library that can't be written.
#include <gmock/gmock.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "connection.h"
#include "dbmaske.h"
#include "defmenuedatei.h"
#include "labels.h"
#include "einfuegentest.h"
#include "frmdbmaske.h"

namespace kolvane {
namespace {

class DbMaskeTest : public EinfuegenTest {
 protected:
  QVariant wert(const QString& code, const QString& spalte) {
    Connection c;
    EXPECT_TRUE(c.open(db_, Connection::Mode::ReadOnly));
    return c.scalar("SELECT " + spalte + " FROM tblBlockInfo WHERE Block = ?", {code});
  }
  void definition() {
    Connection c;
    ASSERT_TRUE(c.open(db_));
    ASSERT_TRUE(c.execute("UPDATE tblDefMenue SET Benennung1 = 'Hersteller', Benennung2 = 'Größe' WHERE Nr = 1"));
  }
};

TEST_F(DbMaskeTest, ShowsTheCardSavesItAndTheListFollows) {
  definition();
  const QString a = blockAnlegen(0, "Ventil");
  spalteSetzen(a, "M1", "DN 25");
  spalteSetzen(a, "Layer", "Achsen");
  spalteSetzen(a, "LYCOLOR", "3");
  oeffnen(0);
  DbMaske m(*bv_);
  m.Anzeigen();
  ASSERT_TRUE(m.zeile);
  EXPECT_EQ(m.labBenennung[0], "Hersteller");
  EXPECT_EQ(m.labBenennung[1], QString::fromUtf8("Größe"));
  EXPECT_EQ(m.txtBenennung[0], "Block " + a);
  EXPECT_EQ(m.txtBenennung[1], "DN 25");
  EXPECT_EQ(m.txtLayer, "Achsen");

  // A changed M0 is in the row and in the main form's list at once; an empty
  // layer box keeps the stored layer.
  m.txtBenennung[0] = QString::fromUtf8("Ventil \"groß\" 50%");
  m.txtLayer.clear();
  ASSERT_TRUE(m.combutSpeichern_Click());
  EXPECT_EQ(wert(a, "M0").toString(), QString::fromUtf8("Ventil \"groß\" 50%"));
  EXPECT_EQ(wert(a, "Layer").toString(), "Achsen");
  EXPECT_EQ(bv_->model().listEntries.value(0), QString::fromUtf8("Ventil \"groß\" 50%"));

  // A new layer brings its line type and colour along.
  m.txtLayer = "Rohre";
  m.txtLinie = "Strich";
  m.txtFarbe = "5";
  ASSERT_TRUE(m.combutSpeichern_Click());
  EXPECT_EQ(wert(a, "Layer").toString(), "Rohre");
  EXPECT_EQ(wert(a, "LYLINE").toString(), "Strich");
  EXPECT_EQ(wert(a, "LYCOLOR").toString(), "5");
}

TEST_F(DbMaskeTest, WalksThroughTheBlocksAcrossThePageEnd) {
  settings_->setup.longAnzahlDerBilder = 0;  // few pictures a page
  blockAnlegen(0, "A");
  blockAnlegen(1, "B");
  oeffnen(0);
  const int bilder = bv_->intBilder;
  blockAnlegen(bilder, "Nächste Seite");
  oeffnen(0);
  DbMaske m(*bv_);
  m.Anzeigen();
  EXPECT_EQ(m.labBlockName, "A");
  m.combutVor_Click();
  EXPECT_EQ(m.labBlockName, "B");
  m.combutZurueck_Click();
  EXPECT_EQ(m.labBlockName, "A");
  // From the last picture of the page forward: the first of the next page.
  bv_->lisBlockBenennung_Click(bilder - 1);
  m.Anzeigen();
  EXPECT_FALSE(m.zeile) << "a free slot has no card";
  m.combutVor_Click();
  EXPECT_EQ(bv_->s1, 1);
  EXPECT_TRUE(m.zeile);
  EXPECT_EQ(m.labBlockName, QString::fromUtf8("Nächste Seite"));
}

TEST_F(DbMaskeTest, AReadOnlyLibraryShowsTheCardButCantSave) {
  const QString a = blockAnlegen(0, "Ventil");
  oeffnen(0);
  lib_->booSchreibgeschuetzt = true;
  DbMaske m(*bv_);
  m.Anzeigen();
  EXPECT_TRUE(m.schreibgeschuetzt);
  m.txtBenennung[0] = "geändert";
  EXPECT_FALSE(m.combutSpeichern_Click());
  EXPECT_EQ(wert(a, "M0").toString(), "Block " + a);

  m.Anzeigen();
  FrmDbMaske f(m, nullptr);
  EXPECT_TRUE(gezeigt(945));
  EXPECT_FALSE(f.findChild<QPushButton*>("combutSpeichern")->isEnabled());
  EXPECT_TRUE(f.findChild<QLineEdit*>("txtBenennung_0")->isReadOnly());
  EXPECT_EQ(f.findChild<QLineEdit*>("txtBenennung_0")->text(), "Block " + a);
}

// The mask's buttons reach the main form's insert and full view, and the
// folder's definition, after which the captions are shown anew.
TEST_F(DbMaskeTest, InsertPictureAndDefinitionFromTheCard) {
  blockAnlegen(0, "Ventil");
  oeffnen(0);
  DbMaske m(*bv_);
  m.Anzeigen();
  FrmDbMaske f(m, nullptr);
  int eingefuegt = 0, bild = 0;
  f.einfuegen = [&] { ++eingefuegt; };
  f.bild = [&] { ++bild; };
  // As the definition dialog saves: through the library's record set.
  f.definition = [this] {
    definition();
    return lib_->rsDefMenue.Requery();
  };
  f.findChild<QPushButton*>("combutEinfuegen")->click();
  f.findChild<QPushButton*>("combutBild")->click();
  f.findChild<QPushButton*>("combutDef")->click();
  EXPECT_EQ(eingefuegt, 1);
  EXPECT_EQ(bild, 1);
  EXPECT_EQ(f.findChild<QLabel*>("labBenennung_0")->text(), "Hersteller");
}

// The values of a card from a definition file's defaults: only the boxes
// change until the card is saved; a damaged file changes nothing.
TEST_F(DbMaskeTest, ValuesFromADefinitionFile) {
  const QString a = blockAnlegen(0, "Ventil");
  oeffnen(0);
  DefMenueDateiInhalt inhalt;
  inhalt.benennung[0] = "Hersteller";
  inhalt.standardwert[0] = QString::fromUtf8("Müller & Söhne");
  inhalt.standardwert[9] = "PN 16";
  const QString datei = path("datKartei1.dat");
  ASSERT_TRUE(fctDefMenueDateiSchreiben(datei, inhalt));
  DbMaske m(*bv_);
  m.Anzeigen();
  prompt_->text(datei);
  ASSERT_TRUE(m.combutDatei_Click());
  EXPECT_EQ(m.txtBenennung[0], QString::fromUtf8("Müller & Söhne"));
  EXPECT_EQ(m.txtBenennung[9], "PN 16");
  EXPECT_EQ(m.labBenennung[0], labels().fctBeschriftFrmZuordnen(164)) << "the captions stay";
  EXPECT_EQ(wert(a, "M0").toString(), "Block " + a) << "nothing saved yet";
  ASSERT_TRUE(m.combutSpeichern_Click());
  EXPECT_EQ(wert(a, "M0").toString(), QString::fromUtf8("Müller & Söhne"));

  writeFile(path("kaputt.dat"), QByteArray(130, 'x'));
  prompt_->text(path("kaputt.dat"));
  EXPECT_FALSE(m.combutDatei_Click());
  EXPECT_TRUE(prompt_->asked.last().contains(labels().fctBeschriftMsgboxZuordnen(961)));
  EXPECT_TRUE(prompt_->asked.last().contains(labels().fctBeschriftMsgboxZuordnen(973)));
  EXPECT_EQ(m.txtBenennung[9], "PN 16");
  prompt_->cancel();
  EXPECT_FALSE(m.combutDatei_Click());
  EXPECT_EQ(prompt_->unexpected(), 0);
}

}  // namespace
}  // namespace kolvane

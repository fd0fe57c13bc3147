#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "frmseitensuche.h"
#include "seitensuche.h"
#include "suchtest.h"

namespace kolvane {

class SeitenSucheTest : public SuchTest {
 protected:
  // Folder 000 with blocks on pages 1 and 3 and its pages named ("1" is the
  // name a new library gives page 1).
  void SetUp() override {
    SuchTest::SetUp();
    blockIn(QStringLiteral("000"), 1, 0, QStringLiteral("B0"), {QStringLiteral("Erster")});
    blockIn(QStringLiteral("000"), 1, 45, QStringLiteral("B45"), {QStringLiteral("Dritte Seite")});
    seiteBenennen(1, 3, QStringLiteral("Türen"));
    seiteBenennen(1, 2, QStringLiteral("fenster"));
    oeffnen(4);
  }
};

TEST_F(SeitenSucheTest, NamesInNameOrderAndTheSelectionFollowsTheNumber) {
  SeitenSuche s(*bv_);
  s.Form_Load();
  EXPECT_EQ(s.lisSeitenNamen, (QStringList{QStringLiteral("1"), QStringLiteral("fenster"), QStringLiteral("Türen")}));
  EXPECT_EQ(s.lisSeitenNamenIndex, -1);

  s.lisSeitenNamen_Click(2);
  EXPECT_EQ(s.txtSeitenNr, QStringLiteral("3"));
  s.txtSeitenNr_Change(QStringLiteral(" 3"));
  EXPECT_EQ(s.lisSeitenNamenIndex, 2);
  s.txtSeitenNr_Change(QStringLiteral("31"));
  EXPECT_EQ(s.lisSeitenNamenIndex, -1);
  s.lisSeitenNamen_Click(7);  // no such line
  EXPECT_EQ(s.lisSeitenNamenIndex, -1);
  EXPECT_EQ(s.txtSeitenNr, QStringLiteral("31"));
}

TEST_F(SeitenSucheTest, OkAndADoubleClickGoToThePageInTheCurrentFolder) {
  ASSERT_EQ(bv_->s1, 0);
  ASSERT_EQ(bv_->pos, 4);
  SeitenSuche s(*bv_);
  s.Form_Load();
  s.txtSeitenNr_Change(QStringLiteral("3"));
  ASSERT_TRUE(s.cmdOK_Click());
  EXPECT_EQ(bv_->s1, 2);
  EXPECT_EQ(bv_->pos, 4);
  EXPECT_EQ(bv_->strAktuelleOrdnerNr(), QStringLiteral("000"));

  ASSERT_TRUE(s.lisSeitenNamen_DblClick(1));  // "fenster", page 2
  EXPECT_EQ(bv_->s1, 1);
  EXPECT_EQ(prompt_->asked, QStringList());

  // The window: a typed number and OK close the dialog on that page.
  SeitenSuche logik(*bv_);
  FrmSeitenSuche frm(logik);
  auto* txt = frm.findChild<QLineEdit*>(QStringLiteral("txtSeitenNr"));
  auto* liste = frm.findChild<QListWidget*>(QStringLiteral("lisSeitenNamen"));
  ASSERT_TRUE(txt && liste);
  EXPECT_EQ(liste->count(), 3);
  liste->setCurrentRow(2);
  EXPECT_EQ(txt->text(), QStringLiteral("3"));
  txt->setText(QStringLiteral("1"));
  frm.findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
  EXPECT_EQ(frm.result(), QDialog::Accepted);
  EXPECT_EQ(bv_->s1, 0);
}

TEST_F(SeitenSucheTest, ANumberThatIsNoPageIsRefusedAndNothingMoves) {
  SeitenSuche s(*bv_);
  s.Form_Load();
  s.txtSeitenNr_Change(QStringLiteral("2"));
  ASSERT_TRUE(s.cmdOK_Click());
  ASSERT_EQ(bv_->s1, 1);
  for (const QString& text : {QStringLiteral("abc"), QStringLiteral("0"), QString(), QStringLiteral("-2"),
                              QStringLiteral("1.5"), QStringLiteral("99999999999")}) {
    prompt_->asked.clear();
    s.txtSeitenNr_Change(text);
    EXPECT_FALSE(s.cmdOK_Click()) << text.toStdString();
    ASSERT_EQ(prompt_->asked.size(), 1) << text.toStdString();
    EXPECT_TRUE(prompt_->asked[0].startsWith(QStringLiteral("message|"))) << prompt_->asked[0].toStdString();
    EXPECT_TRUE(gezeigt(968)) << prompt_->asked[0].toStdString();
    EXPECT_EQ(bv_->s1, 1) << text.toStdString();
    EXPECT_EQ(bv_->pos, 4);
  }
}

}  // namespace kolvane

// The view dialogs' pictures and their window.
#include <gmock/gmock.h>

#include <QFile>
#include <QFileInfo>
#include <QFrame>
#include <QPushButton>

#include "ansichten.h"
#include "ansichtenmarkieren.h"
#include "ansichtenzeigen.h"
#include "einfuegentest.h"
#include "frmansichten.h"
#include "slide.h"
#include "slidelibrary.h"
#include "slideview.h"
#include "slidewriter.h"

namespace kolvane {
namespace {

class AnsichtenTest : public EinfuegenTest {
 protected:
  // A real slide library of view k with the slide "<k>A".
  void slidesSchreiben(const QString& code, int k) {
    Slide s;
    s.highX = 199;
    s.highY = 149;
    s.records.push_back(SlideRecord::color(3));
    s.records.push_back(SlideRecord::vector(10 + 20 * k, 10, 190, 140));
    QString fehler;
    const QByteArray lib =
        writeSlideLibrary({{QString::number(k) + "A", writeSlide(s)}}, &fehler);
    writeFile(bib_ + "/000/" + code + (k ? QString::number(k) : QString()) + ".slb", lib);
  }
};

TEST_F(AnsichtenTest, ViewsByPointAPicturesOnlyWhereTheirFileIs) {
  const QString c = blockAnlegen(0, "Ventil");
  slidesSchreiben(c, 0);
  punkteSetzen(c, 3, {{5, 5, 0}});
  slidesSchreiben(c, 3);
  // View 2: its point at x = 0 counts; its slide library is missing.
  punkteSetzen(c, 2, {{0, 7, 0}});
  // View 4 of the keystroke route: "0.1", a plain slide.
  spalteSetzen(c, "AX4", "0.1");
  writeFile(bib_ + "/000/" + c + "4.sld", readFile(sourceDataDir() + "/frei2.sld"));
  oeffnen(0);
  const AnsichtenBilder b = fctAnsichtenLesen(*lib_, c, bv_->frei2());
  std::vector<bool> da;
  for (const AnsichtBild& a : b) da.push_back(a.vorhanden);
  EXPECT_EQ(da, (std::vector<bool>{true, false, true, true, true}));
  EXPECT_TRUE(b[0].adresse.endsWith(c + ".slb(0A)"));
  EXPECT_EQ(b[1].adresse, bv_->frei2());
  EXPECT_EQ(b[2].adresse, bv_->frei2()) << "no file: the blank picture";
  EXPECT_TRUE(b[3].adresse.endsWith(c + "3.slb(3A)"));
  EXPECT_TRUE(b[4].adresse.endsWith(c + "4.sld"));
  EXPECT_EQ(b[0].name, "Ventil");
}

TEST_F(AnsichtenTest, TheWindowFramesTheChosenViewAndADoubleClickInserts) {
  const QString c = blockAnlegen(0, "Ventil");
  slidesSchreiben(c, 0);
  punkteSetzen(c, 3, {{5, 5, 0}});
  slidesSchreiben(c, 3);
  oeffnen(0);
  AnsichtenZeigen logik;
  logik.bilder = fctAnsichtenLesen(*lib_, c, bv_->frei2());
  int eingefuegt = -1;
  logik.einfuegen = [&](int k) { eingefuegt = k; };
  FrmAnsichten f("frmAnsichten", logik,
                 {{"cmbEinfuegen", [&] { return logik.cmbEinfuegen_Click(); }},
                  {"mnuBBlock", [&] { return logik.mnuBBlock_Click(); }}});
  f.resize(720, 220);
  f.show();
  auto* s3 = f.findChild<SlideView*>("sldAnsichten_3");
  ASSERT_TRUE(s3);
  EXPECT_TRUE(s3->path().endsWith("3.slb(3A)"));
  emit s3->leftButtonDown(3);
  EXPECT_EQ(logik.gewaehlt, 3);
  const QColor rahmen = f.findChild<QFrame*>("pctRahmen_3")->palette().color(QPalette::Window);
  EXPECT_EQ(rahmen, QColor(255, 0, 0));
  f.grab().save(path("frmAnsichten.png"));
  // A view that does not exist is not inserted: a message, the dialog stays.
  emit f.findChild<SlideView*>("sldAnsichten_1")->doubleClicked(1);
  EXPECT_EQ(eingefuegt, -1);
  EXPECT_TRUE(f.isVisible());
  emit s3->doubleClicked(3);
  EXPECT_EQ(eingefuegt, 3);
  EXPECT_EQ(f.result(), QDialog::Accepted);
}

// The view a mark takes: only one that exists.
TEST_F(AnsichtenTest, OnlyAViewThatExistsCanBeMarked) {
  const QString c = blockAnlegen(0, "Ventil");
  punkteSetzen(c, 2, {{5, 5, 0}});
  oeffnen(0);
  AnsichtenMarkieren m;
  m.bilder = fctAnsichtenLesen(*lib_, c, bv_->frei2());
  ASSERT_TRUE(m.sldAnsichten_MouseDown(1));
  EXPECT_FALSE(m.cmbMarkieren_Click());
  EXPECT_TRUE(gezeigt(941));
  ASSERT_TRUE(m.sldAnsichten_MouseDown(2));
  EXPECT_TRUE(m.cmbMarkieren_Click());
  EXPECT_EQ(m.bytMarkierteAnsicht, 2);
}

// A damaged slide library of a view: its picture is crossed, nothing else
// changes and nothing is deleted.
TEST_F(AnsichtenTest, ADamagedSlideLibraryOfAViewIsShownCrossedAndKept) {
  const QString c = blockAnlegen(0, "Ventil");
  slidesSchreiben(c, 0);
  punkteSetzen(c, 3, {{5, 5, 0}});
  writeFile(bib_ + "/000/" + c + "3.slb", "AutoCAD Slide Library 1.0\r\n\x1a" + QByteArray(40, '\xff'));
  oeffnen(0);
  AnsichtenZeigen logik;
  logik.bilder = fctAnsichtenLesen(*lib_, c, bv_->frei2());
  EXPECT_TRUE(logik.bilder[3].vorhanden);
  FrmAnsichten f("frmAnsichten", logik, {{"cmbEinfuegen", [&] { return logik.cmbEinfuegen_Click(); }}});
  f.resize(720, 220);
  f.show();
  const QImage bild = f.grab().toImage();
  EXPECT_FALSE(bild.isNull());
  EXPECT_FALSE(f.findChild<SlideView*>("sldAnsichten_3")->slide());
  EXPECT_TRUE(QFileInfo::exists(bib_ + "/000/" + c + "3.slb"));
}

}  // namespace
}  // namespace kolvane

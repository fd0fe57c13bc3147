// The variants of a view: which there are, what the insert makes of a chosen
// one, the green frame, and their deletion and renaming.
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include "codepage.h"
#include "connection.h"
#include "einfuegentest.h"
#include "frmvarianten.h"
#include "labels.h"
#include "neuanlage.h"
#include "neuerblock.h"
#include "pagemodel.h"
#include "variaeinfuegen.h"
#include "varialiste.h"
#include "varianeu.h"
#include "varianten.h"
#include "variantenanbindung.h"

namespace kolvane {
namespace {

class VariantenTest : public EinfuegenTest {
 protected:
  void SetUp() override {
    EinfuegenTest::SetUp();
    settings_->setup.longEinfuegenLayer0 = 0;
  }
  void TearDown() override {
    neu_.reset();
    EinfuegenTest::TearDown();
  }
  // The browser and insert on slot 0, with the variants wired in.
  void anbinden() {
    oeffnen();
    neu_ = std::make_unique<NeuerBlock>(*settings_, *bv_, *bridge_);
    variantenAnbinden(*bv_, *ins_, *neu_, nullptr);
  }
  QString dat(const QString& code, int k) const { return bib_ + "/000/" + code + QString::number(k) + ".dat"; }
  QString varia(const QString& datei) const { return bib_ + "/000/Block/Varia/" + datei; }
  // A row of view k with suffix p, with its drawing unless told otherwise.
  QString zeile(const QString& code, int k, const QString& name, const QString& p, bool mitDatei = true) {
    const QString datei = p + code.right(4) + QString::number(k) + ".dwg";
    Connection c;
    EXPECT_TRUE(c.open(db_));
    EXPECT_TRUE(c.execute("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) "
                          "VALUES (?, (SELECT Nr FROM tblBlockInfo WHERE Block = ?), ?)",
                          {name, code, datei}));
    if (mitDatei) writeFile(varia(datei), "variant " + name.toUtf8());
    return datei;
  }
  void liste(const QString& code, int k, const QList<QPair<QString, QString>>& eintraege) {
    QByteArray d;
    for (const auto& [n, p] : eintraege) {
      QByteArray a = toWindows1252(n), b = toWindows1252(p);
      d += a + QByteArray(kVariaNameBreite - a.size(), ' ') + b + QByteArray(kVariaPfadBreite - b.size(), ' ');
    }
    writeFile(dat(code, k), d);
  }
  QStringList namen(const QString& code, int k) {
    QStringList n;
    for (const VariantenEintrag& e : fctVariantenEintraege(*lib_, dat(code, k))) n << e.name;
    return n;
  }
  QStringList zeilenNamen() {
    Connection c;
    EXPECT_TRUE(c.open(db_));
    QStringList n;
    for (int i = 0;; ++i) {
      const QVariant v = c.scalar("SELECT BlockName FROM tblVariationBloecke ORDER BY Nr LIMIT 1 OFFSET ?", {i});
      if (!v.isValid()) return n;
      n << v.toString();
    }
  }
  QString kopie(const QString& name) const {
    return QDir(settings_->strVerzeichnisTempKolvane()).filePath(name + ".dwg");
  }
  void waehlen(int index, int ergebnis = 1) {
    prompt_->dialogResult("frmVariaEinfuegen", ergebnis, [index] {
      ASSERT_TRUE(VariaEinfuegen::offen());
      VariaEinfuegen::offen()->gewaehlt = index;
    });
  }
  std::unique_ptr<NeuerBlock> neu_;
};

TEST_F(VariantenTest, WithoutListAndRowsOnlyTheViewItselfAndNoVariants) {
  const QString c = blockAnlegen(0, "Ventil");
  anbinden();
  EXPECT_EQ(namen(c, 0), QStringList{"Ventil"});
  EXPECT_FALSE(fctVariaEinfuegenKontroll(*lib_, dat(c, 0)));
  // A view without a name of its own is listed by code and view.
  EXPECT_EQ(namen(c, 2), QStringList{c + "2"});
  // A block without a row has nothing at all; a name that is no list file neither.
  EXPECT_TRUE(fctVariantenEintraege(*lib_, dat("0009999", 0)).isEmpty());
  EXPECT_FALSE(fctVariaEinfuegenKontroll(*lib_, bib_ + "/000/" + c + ".slb"));
  EXPECT_FALSE(fctVariaEinfuegenKontroll(*lib_, bib_ + "/000/" + c + "7.dat"));
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(VariantenTest, RowsCountForTheirOwnViewOnlyAndComeAfterTheList) {
  const QString c = blockAnlegen(0, "Ventil");
  spalteSetzen(c, "BLKName1", "Ventil seitlich");
  zeile(c, 1, "Ventil DN80", "000");
  zeile(c, 1, "Ventil DN100", "001");
  anbinden();
  EXPECT_FALSE(fctVariaEinfuegenKontroll(*lib_, dat(c, 0))) << "rows of view 1 don't count for view 0";
  EXPECT_EQ(namen(c, 0), QStringList{"Ventil"});
  EXPECT_TRUE(fctVariaEinfuegenKontroll(*lib_, dat(c, 1)));

  liste(c, 1, {{"Ventil alt", "C:\\alt\\v.dwg"}});
  EXPECT_EQ(namen(c, 1), (QStringList{"Ventil seitlich", "Ventil alt", "Ventil DN80", "Ventil DN100"}));
  // A list file alone is enough.
  liste(c, 3, {{QString::fromUtf8("Größe 3"), "g3.dwg"}});
  EXPECT_TRUE(fctVariaEinfuegenKontroll(*lib_, dat(c, 3)));
  EXPECT_EQ(namen(c, 3), (QStringList{c + "3", QString::fromUtf8("Größe 3")}));
}

TEST_F(VariantenTest, AListEntryIsFoundByItsWindowsPathInAnyCase) {
  const QString c = blockAnlegen(0, "Ventil");
  writeFile(bib_ + "/000/Block/Varia/ALT.DWG", "alt");
  writeFile(path("ablage/Weit weg.dwg"), "weit");
  QString absolut = path("ablage/weit weg");  // no extension, other case
  absolut.replace('/', '\\');
  liste(c, 0, {{"Relativ", "Block\\Varia\\alt.dwg"}, {"Absolut", absolut}, {"Fehlt", "C:\\nirgends\\x.dwg"}});
  anbinden();
  const auto e = fctVariantenEintraege(*lib_, dat(c, 0));
  ASSERT_EQ(e.size(), 4);
  EXPECT_EQ(fctVariantenZeichnung(dat(c, 0), e[0]), QString()) << "the view itself is no variant";
  EXPECT_EQ(fctVariantenZeichnung(dat(c, 0), e[1]), bib_ + "/000/Block/Varia/ALT.DWG");
  EXPECT_EQ(fctVariantenZeichnung(dat(c, 0), e[2]), path("ablage/Weit weg.dwg"));
  EXPECT_EQ(fctVariantenZeichnung(dat(c, 0), e[3]), QString());
  EXPECT_TRUE(prompt_->asked.isEmpty());
  EXPECT_EQ(fctVariantenZeichnungMitMeldung(dat(c, 0), e[3]), QString());
  ASSERT_EQ(prompt_->asked.size(), 1);
  EXPECT_TRUE(prompt_->asked[0].contains("nirgends")) << prompt_->asked[0].toStdString();
}

TEST_F(VariantenTest, TheInsertSendsTheChosenVariantsDrawing) {
  automationGebunden();
  const QString c = blockAnlegen(0, "Tisch");
  const QString d = zeile(c, 0, "Tisch-DN50", "000");
  anbinden();

  waehlen(1);
  ins_->cmbEinfuegen_Click();
  ASSERT_EQ(gesendet().size(), 1);
  EXPECT_EQ(gesendet()[0],
            "sendCommand|(command \"._-insert\" \"" + kopie("Tisch-DN50") + "\" pause \"1\" \"1\" \"0\")\r");
  EXPECT_EQ(ins_->letzterBlock.SpeicherortDerBlockzeichnung, varia(d));
  EXPECT_EQ(ins_->bytVariaBlockEinfuegen, 1);

  // The first entry: the block itself.
  log_.clear();
  waehlen(0);
  ins_->cmbEinfuegen_Click();
  ASSERT_EQ(gesendet().size(), 1);
  EXPECT_TRUE(gesendet()[0].contains(kopie("Tisch"))) << gesendet()[0].toStdString();
  EXPECT_EQ(ins_->letzterBlock.SpeicherortDerBlockzeichnung, zeichnung(c, 0));

  // Cancelled: nothing goes to the host.
  log_.clear();
  waehlen(1, 0);
  ins_->cmbEinfuegen_Click();
  EXPECT_TRUE(gesendet().isEmpty());
  EXPECT_EQ(prompt_->unexpected(), 0);
  EXPECT_TRUE(prompt_->exhausted());
}

TEST_F(VariantenTest, AVariantWithoutItsDrawingIsToldAndNothingIsSent) {
  automationGebunden();
  const QString c = blockAnlegen(0, "Tisch");
  const QString d = zeile(c, 0, "Tisch DN50", "000", false);
  anbinden();
  waehlen(1);
  ins_->cmbEinfuegen_Click();
  EXPECT_TRUE(gesendet().isEmpty());
  EXPECT_TRUE(gezeigt(kVariaZeichnungFehlt1));
  EXPECT_TRUE(prompt_->asked.join("\n").contains(d));
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(VariantenTest, TheActiveFrameIsGreenWhenTheBlockHasVariants) {
  const QString c = blockAnlegen(0, "Tisch");
  zeile(c, 2, "Tisch hoch", "000");
  const QString c2 = blockAnlegen(1, "Stuhl");
  anbinden();
  bv_->lisBlockBenennung_Click(0);
  EXPECT_EQ(bv_->model().activeFrame, FrameColor::Red) << "the frame tells of view 0";
  EXPECT_FALSE(bv_->model().enabled.value("mnuBVariantenAuswahl"));

  zeile(c, 0, "Tisch DN50", "000");
  bv_->lisBlockBenennung_Click(0);
  EXPECT_EQ(bv_->model().activeFrame, FrameColor::Green);
  EXPECT_TRUE(bv_->model().enabled.value("mnuBVariantenAuswahl"));

  // The old list file alone does it too.
  bv_->lisBlockBenennung_Click(1);
  EXPECT_EQ(bv_->model().activeFrame, FrameColor::Red);
  liste(c2, 0, {{"Stuhl alt", "stuhl.dwg"}});
  bv_->lisBlockBenennung_Click(1);
  EXPECT_EQ(bv_->aktivierteBlocknummer, c2);
  EXPECT_EQ(bv_->model().activeFrame, FrameColor::Green);
}

TEST_F(VariantenTest, DeletingTheVariantsOfAViewKeepsThoseOfTheOthers) {
  const QString c = blockAnlegen(0, "Tisch");
  const QString d0 = zeile(c, 0, "Tisch DN50", "000");
  const QString d1a = zeile(c, 1, "Tisch seitlich 50", "000");
  const QString d1b = zeile(c, 1, "Tisch seitlich 80", "001");
  liste(c, 1, {{"Tisch alt", "alt.dwg"}});
  anbinden();

  // Cancel, keep, and no to the second question: nothing goes.
  for (const QList<Answer>& antworten :
       {QList<Answer>{Answer::Cancel}, QList<Answer>{Answer::No}, QList<Answer>{Answer::Yes, Answer::No}}) {
    for (Answer a : antworten) prompt_->answer(a);
    EXPECT_FALSE(fctVariaBloeckeLoeschen(*lib_, c, 1));
    EXPECT_EQ(zeilenNamen().size(), 3);
    EXPECT_TRUE(QFile::exists(varia(d1a)));
    EXPECT_TRUE(QFile::exists(dat(c, 1)));
  }

  prompt_->answer(Answer::Yes).answer(Answer::Yes);
  EXPECT_TRUE(fctVariaBloeckeLoeschen(*lib_, c, 1));
  EXPECT_EQ(zeilenNamen(), QStringList{"Tisch DN50"});
  EXPECT_FALSE(QFile::exists(varia(d1a)));
  EXPECT_FALSE(QFile::exists(varia(d1b)));
  EXPECT_FALSE(QFile::exists(dat(c, 1)));
  EXPECT_TRUE(QFile::exists(varia(d0)));
  EXPECT_TRUE(fctVariaEinfuegenKontroll(*lib_, dat(c, 0)));

  // Nothing left to delete: no question.
  prompt_->asked.clear();
  EXPECT_TRUE(fctVariaBloeckeLoeschen(*lib_, c, 1));
  EXPECT_TRUE(prompt_->asked.isEmpty());

  // All views: the further question is the one for all.
  prompt_->answer(Answer::Yes).answer(Answer::Yes);
  EXPECT_TRUE(fctVariaBloeckeLoeschen(*lib_, c, -1));
  EXPECT_TRUE(zeilenNamen().isEmpty());
  EXPECT_FALSE(QFile::exists(varia(d0)));
  EXPECT_TRUE(gezeigt(kVariaAlleFrage1));
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(VariantenTest, TheNewVariantDialogRenamesAndDeletesRowsOnly) {
  const QString c = blockAnlegen(0, "Tisch");
  zeile(c, 0, "Tisch DN50", "000");
  const QString d = zeile(c, 0, "Tisch DN80", "001");
  zeile(c, 3, "Tisch oben", "000");
  liste(c, 0, {{"Tisch alt", "alt.dwg"}});
  anbinden();
  VariaNeu logik(*lib_, dat(c, 0));
  EXPECT_EQ(logik.namen(), (QStringList{"Tisch", "Tisch alt", "Tisch DN50", "Tisch DN80"}));

  // The view itself and the list file's entry stay as they are.
  for (int i : {0, 1}) {
    logik.gewaehlt = i;
    EXPECT_FALSE(logik.cmdVariatenNeu_Click());
  }
  EXPECT_TRUE(gezeigt(kVariaErsterEintrag));
  EXPECT_TRUE(gezeigt(kVariaListenEintrag));

  // A name another variant has (of any view, in any case) is refused and
  // asked again.
  logik.gewaehlt = 2;
  prompt_->text("tisch oben").text("Tisch DN65");
  EXPECT_TRUE(logik.cmdVariatenNeu_Click());
  EXPECT_TRUE(gezeigt(57));
  EXPECT_EQ(logik.namen()[2], "Tisch DN65");
  EXPECT_EQ(zeilenNamen(), (QStringList{"Tisch DN65", "Tisch DN80", "Tisch oben"}));

  // Deleted with its drawing after the question; a no keeps it.
  logik.modus = VariaNeu::Modus::Loeschen;
  logik.gewaehlt = 3;
  prompt_->answer(Answer::No);
  EXPECT_FALSE(logik.cmdVariatenNeu_Click());
  EXPECT_TRUE(QFile::exists(varia(d)));
  prompt_->answer(Answer::Yes);
  EXPECT_TRUE(logik.cmdVariatenNeu_Click());
  EXPECT_FALSE(QFile::exists(varia(d)));
  EXPECT_EQ(logik.namen(), (QStringList{"Tisch", "Tisch alt", "Tisch DN65"}));
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(VariantenTest, TheChooserStaysOpenWhenTheChosenDrawingIsMissing) {
  const QString c = blockAnlegen(0, "Tisch");
  zeile(c, 0, "Tisch DN50", "000", false);
  const QString d = zeile(c, 0, "Tisch DN80", "001");
  anbinden();
  VariaEinfuegen logik(*lib_, dat(c, 0));
  FrmVariaEinfuegen f(logik);
  f.show();
  QListWidget* lis = f.lisAuswahl();
  ASSERT_EQ(lis->count(), 3);
  EXPECT_EQ(lis->currentRow(), 0) << "the plain block is offered first";
  auto* ok = f.findChild<QPushButton*>("cmbOk");
  ASSERT_TRUE(ok);

  lis->setCurrentRow(1);
  ok->click();
  EXPECT_TRUE(f.isVisible()) << "another variant can be chosen";
  EXPECT_TRUE(gezeigt(kVariaZeichnungFehlt1));

  lis->setCurrentRow(2);
  ok->click();
  EXPECT_FALSE(f.isVisible());
  EXPECT_EQ(f.result(), QDialog::Accepted);
  EXPECT_EQ(logik.ergebnis.ergebnis, VarianteWahl::Ergebnis::Gewaehlt);
  EXPECT_EQ(logik.ergebnis.strVariaPfad, varia(d));
  EXPECT_EQ(logik.ergebnis.strVariaBlkName, "Tisch DN80");
}

TEST_F(VariantenTest, TheNewBlockCommandGoesOnOrEndsByTheVariantDialog) {
  const QString c = blockAnlegen(0, "Tisch");
  spalteSetzen(c, "BLKName1", "Tisch seitlich");
  zeile(c, 1, "Tisch seitlich 50", "000");
  anbinden();
  ASSERT_TRUE(neu_->hooks.frmVariaNeu);
  for (const char* knopf : {"cmbNeu", "cmbAbbrechen"}) {
    SCOPED_TRACE(knopf);
    Neuanlage n;
    n.byteZuErstellendeAnsicht = 1;
    n.bytVarianteAnlegen = 1;
    QStringList gezeigt;
    QTimer::singleShot(0, [&] {
      FrmVariaNeu* f = nullptr;
      for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* d = qobject_cast<FrmVariaNeu*>(w); d && d->isVisible()) f = d;
      ASSERT_TRUE(f);
      for (int i = 0; i < f->lisAuswahl()->count(); ++i) gezeigt << f->lisAuswahl()->item(i)->text();
      f->findChild<QPushButton*>(knopf)->click();
    });
    const int r = neu_->hooks.frmVariaNeu(n);
    EXPECT_EQ(gezeigt, (QStringList{"Tisch seitlich", "Tisch seitlich 50"})) << "the variants of the view made";
    EXPECT_EQ(r, QByteArray(knopf) == "cmbNeu" ? 1 : 0);
    EXPECT_EQ(n.bytAbbrechen, QByteArray(knopf) == "cmbNeu" ? 0 : 1);
  }
}

}  // namespace
}  // namespace kolvane

// End to end: the views of a block on the strict sandbox CAD. A block is made
// by the new block command, gets a further view on its slot, shows it while
// the picture is held, inserts it by a chosen point, and loses views again.
// The dialogs act through their logic, as a click on them does.
#include <gmock/gmock.h>

#include "ansichten.h"
#include "ansichtenloeschen.h"
#include "ansichtenneu.h"
#include "ansichtenzeigen.h"
#include "bearbeiten.h"
#include "frmblockverwaltung.h"
#include "variaeinfuegen.h"
#include "variantenanbindung.h"
#include "commandchannel.h"
#include "neuanlagejournal.h"
#include "remotehost.h"
#include "layout.h"
#include "neuerblocke2e.h"

namespace kolvane {
namespace {

class AnsichtenE2E : public NeuerBlockE2E {
 protected:
  // The user's part of a block (one point) and of a view of two points.
  static QString block() { return kPunktA + "ENTER\n" + kAuswahl + kRahmen; }
  static QString ansicht(const QString& a, const QString& b) {
    return a + "\n" + b + "\nENTER\n" + kAuswahl + kRahmen;
  }

  void blockMachen() {
    rahmenBestaetigen();
    karteSpeichern();
    neu_->combutNeu_Click();
    ASSERT_TRUE(QFileInfo::exists(dwg()));
  }

  // "Neu" on the block's slot, view k chosen in the chooser (with the answer
  // to its question when the view exists); the frame is kept unless the run
  // is to end before it.
  void ansichtMachen(int k, std::optional<Answer> frage = std::nullopt, bool rahmen = true) {
    prompt_->dialogResult("frmAnsichtenNeu", 1, [this, k] {
      AnsichtenNeu wahl(neu_->n, bib_ + "/000/" + code_);
      wahl.bilder = fctAnsichtenLesen(*lib_, code_, bv_->frei2());
      ASSERT_TRUE(wahl.sldAnsichten_MouseDown(k));
      ASSERT_TRUE(wahl.cmbNeu_Click());
    });
    if (frage) prompt_->answer(*frage);
    if (rahmen) rahmenBestaetigen();
    neu_->combutNeu_Click();
  }

  AnsichtenBilder bilder() { return fctAnsichtenLesen(*lib_, code_, bv_->frei2()); }
  static std::vector<int> vorhanden(const AnsichtenBilder& b) {
    std::vector<int> v;
    for (int k = 0; k < 5; ++k)
      if (b[size_t(k)].vorhanden) v.push_back(k);
    return v;
  }
  void SetUp() override {
    NeuerBlockE2E::SetUp();
    neu_hook_ = [](Neuanlage&) { return 0; };  // the chooser's window, never shown here
  }
  void hookSetzen() { neu_->hooks.frmAnsichtenNeu = neu_hook_; }

  std::function<int(Neuanlage&)> neu_hook_;
};

TEST_F(AnsichtenE2E, ViewTwoByTheNewBlockCommandCyclesAndInsertsAtB) {
  starten(block() + ansicht("20,20", "50,20") + "120,80\n");
  blockMachen();
  hookSetzen();
  ansichtMachen(2);
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
  EXPECT_EQ(vorhanden(bilder()), (std::vector<int>{0, 2}));
  EXPECT_TRUE(bilder()[2].adresse.endsWith(code_ + "2.slb(2A)")) << bilder()[2].adresse.toStdString();
  EXPECT_EQ(wert("BX2").toDouble(), 50);

  // Held, the picture shows view 0, view 2, view 0.
  const QPoint bei(40, 40);
  bv_->sldBlockverwaltung_LButtonDown(bv_->pos, bei);
  QStringList gezeigt;
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(bv_->Timer2_Timer(true, bei));
    gezeigt << bv_->cyclingSlide().section('(', 1);
  }
  EXPECT_EQ(gezeigt, (QStringList{"2A)", "0A)", "2A)"}));
  bv_->Timer2_Timer(false, bei);

  // frmAnsichten: view 2 by its point B lands with B at the pick.
  AnsichtenZeigen zeigen;
  zeigen.bilder = bilder();
  zeigen.einfuegen = [this](int k) {
    ins_->wahl.byteAktivierteAnsicht = uint8_t(k);
    ins_->cmbEinfuegen_Click();
    ins_->wahl.byteAktivierteAnsicht = 0;
  };
  prompt_->dialogResult("frmVariaEinfuegepkte", 1, [this] { ins_->wahl.board.sldVariaEinfuegepkte_MouseDown(1); });
  settings_->setup.longEinfuegenLayer0 = 0;
  ASSERT_TRUE(zeigen.sldAnsichten_MouseDown(2));
  ASSERT_TRUE(zeigen.cmbEinfuegen_Click());
  const sandbox::Drawing d = zeichnungLesen();
  const sandbox::Entity* r = letzteReferenz(d);
  ASSERT_TRUE(r);
  // The drawing of view 2 has point A (20,20) as its base; B lies 30 to the right.
  EXPECT_EQ(r->p1, (sandbox::Point{120 - 30, 80, 0}));
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
}

TEST_F(AnsichtenE2E, DeletingViewTwoKeepsTheNumberOfViewThreeAndViewZeroTakesEverything) {
  starten(block() + ansicht("20,20", "50,20") + ansicht("30,30", "40,30"));
  blockMachen();
  hookSetzen();
  ansichtMachen(2);
  ansichtMachen(3);
  ASSERT_EQ(vorhanden(bilder()), (std::vector<int>{0, 2, 3}));
  const QString slb3 = bib_ + "/000/" + code_ + "3.slb";
  const QString dwg3 = bib_ + "/000/Block/" + code_ + "3.dwg";
  const QByteArray ansicht3 = readFile(slb3);

  AnsichtenLoeschen loeschen(*bv_);
  loeschen.bilder = bilder();
  ASSERT_TRUE(loeschen.sldAnsichten_MouseDown(2));
  prompt_->answer(Answer::Yes);  // "Soll die gewählte Ansicht ... gelöscht werden?"
  ASSERT_TRUE(loeschen.cmbLoeschen_Click());
  EXPECT_EQ(vorhanden(bilder()), (std::vector<int>{0, 3}));
  EXPECT_FALSE(QFileInfo::exists(bib_ + "/000/" + code_ + "2.slb"));
  EXPECT_FALSE(QFileInfo::exists(bib_ + "/000/Block/" + code_ + "2.dwg"));
  EXPECT_EQ(readFile(slb3), ansicht3);
  EXPECT_TRUE(QFileInfo::exists(dwg3));
  EXPECT_EQ(wert("AX3").toDouble(), 30);

  // A view the user keeps: "No" deletes nothing.
  const QStringList vorher = bestand();
  loeschen.bilder = bilder();
  ASSERT_TRUE(loeschen.sldAnsichten_MouseDown(3));
  prompt_->answer(Answer::No);
  EXPECT_FALSE(loeschen.cmbLoeschen_Click());
  EXPECT_EQ(bestand(), vorher);

  // View 0: the row and every file of every view go.
  ASSERT_TRUE(loeschen.sldAnsichten_MouseDown(0));
  prompt_->answer(Answer::Yes);
  ASSERT_TRUE(loeschen.cmbLoeschen_Click());
  EXPECT_FALSE(wert("Nr").isValid());
  QStringList reste;
  for (const QString& z : bestand())
    if (z.contains(code_)) reste << z;
  EXPECT_TRUE(reste.isEmpty()) << reste.join("\n").toStdString();
  EXPECT_FALSE(bv_->model().bilder[bv_->pos].occupied);
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
}

TEST_F(AnsichtenE2E, ViewZeroIsNeverReplacedAndAnExistingViewIsReplacedWhole) {
  starten(block() + ansicht("20,20", "50,20") + "25,25\nENTER\n" + kAuswahl + kRahmen);
  blockMachen();
  hookSetzen();
  ansichtMachen(2);
  // View 0 chosen, "replace": the chooser stays open.
  {
    AnsichtenNeu wahl(neu_->n, bib_ + "/000/" + code_);
    wahl.bilder = bilder();
    prompt_->answer(Answer::Yes);
    EXPECT_FALSE(wahl.cmbNeu_Click());
  }
  // View 2 replaced by a view of one point: its old point B goes too.
  ansichtMachen(2, Answer::Yes);
  EXPECT_EQ(wert("AX2").toDouble(), 25);
  EXPECT_EQ(wert("BX2").toDouble(), 0);
  const auto verzeichnis = readSlideLibraryDirectory(readFile(bib_ + "/000/" + code_ + "2.slb"));
  ASSERT_TRUE(verzeichnis);
  EXPECT_EQ(verzeichnis->size(), 1u);
}

// Editing: the block's drawing opened in the host, changed and saved gives new
// slides; new insertion points of view 0 move B, and a later insert by B
// lands with the new B at the pick.
TEST_F(AnsichtenE2E, AnEditedDrawingGivesNewSlidesAndNewPointsMovePointB) {
  starten(block() + kRahmen + "0,0\n40,0\nENTER\n" + kRahmen + "120,80\n");
  const QString anderes = path("anderes.dwg");
  blockMachen();
  ASSERT_TRUE(SendCommand(*bridge_, "._-wblock " + anderes + "\r*\r"));
  const QByteArray altesDia = readFile(slb());

  // The drawing in the host, a circle more, saved.
  ASSERT_TRUE(EditKolvaneDwgFile(*bv_, *bridge_, 0));
  EXPECT_EQ(QFileInfo(sb_->host()->activeDocumentFullName()), QFileInfo(dwg()));
  ASSERT_TRUE(SendCommand(*bridge_, "._circle 30,20 3\r"));
  ASSERT_TRUE(SendCommand(*bridge_, "._qsave\r"));
  // Only the slides: at the stored point, in a new frame.
  rahmenBestaetigen();
  neu_->NewInsertPointsAnSlide(0, true);
  EXPECT_NE(readFile(slb()), altesDia);
  EXPECT_EQ(wert("AX0").toDouble(), 10);
  EXPECT_TRUE(roterPunkt(slb(), "0A"));

  // New points A (0,0) and B (40,0): the base point follows A; the user saves.
  rahmenBestaetigen();
  neu_->NewInsertPointsAnSlide(0, false);
  EXPECT_EQ(wert("AX0").toDouble(), 0);
  EXPECT_EQ(wert("BX0").toDouble(), 40);
  const auto verzeichnis = readSlideLibraryDirectory(readFile(slb()));
  ASSERT_TRUE(verzeichnis);
  EXPECT_EQ(verzeichnis->size(), 2u);
  ASSERT_TRUE(SendCommand(*bridge_, "._qsave\r"));
  sandbox::Drawing block;
  QString fehler;
  ASSERT_TRUE(sandbox::readDxfFile(dwg(), block, &fehler)) << fehler.toStdString();
  EXPECT_EQ(block.insbase, (sandbox::Point{0, 0, 0}));
  EXPECT_EQ(block.entities.size(), 4u);
  EXPECT_FALSE(QFileInfo::exists(temp()));
  EXPECT_FALSE(QFileInfo::exists(fctJournalPfad(bib_)));

  // Back in another drawing, the block by its point B.
  ASSERT_TRUE(sb_->host()->openDocument(anderes));
  prompt_->dialogResult("frmVariaEinfuegepkte", 1, [this] { ins_->wahl.board.sldVariaEinfuegepkte_MouseDown(1); });
  settings_->setup.longEinfuegenLayer0 = 0;
  ins_->cmbEinfuegen_Click();
  const sandbox::Drawing d = zeichnungLesen();
  const sandbox::Entity* r = letzteReferenz(d);
  ASSERT_TRUE(r);
  EXPECT_EQ(r->p1, (sandbox::Point{120 - 40, 80, 0}));
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
}

TEST_F(AnsichtenE2E, EscapeAndCancelWhileRenewingPointsOrSlidesLeaveTheLibraryAsItWas) {
  starten(block() + "ESC\nESC\n" + "5,5\nESC\n" + "ESC\n" + "-10,-10\nESC\n" + kRahmen);
  blockMachen();
  ASSERT_TRUE(EditKolvaneDwgFile(*bv_, *bridge_, 0));
  const QStringList vorher = bestand();
  neu_->NewInsertPointsAnSlide(0, false);  // Escape twice at point A
  EXPECT_EQ(bestand(), vorher);
  neu_->NewInsertPointsAnSlide(0, false);  // Escape at point B
  EXPECT_EQ(bestand(), vorher);
  neu_->NewInsertPointsAnSlide(0, true);   // Escape at the first corner
  EXPECT_EQ(bestand(), vorher);
  neu_->NewInsertPointsAnSlide(0, true);   // Escape at the second corner
  EXPECT_EQ(bestand(), vorher);
  prompt_->dialogResult("frmBildausschnittAnpassen", 0);
  neu_->NewInsertPointsAnSlide(0, true);   // the frame not kept
  EXPECT_EQ(bestand(), vorher);
  EXPECT_FALSE(QFileInfo::exists(temp()));
  EXPECT_EQ(sb_->host()->getVariable("filedia").toInt(), 1);
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
}

// A variant made from the block's variants (mnuBVarianten): the page frame
// turns green, and the insert asks which drawing and places the variant's.
TEST_F(AnsichtenE2E, AVariantTurnsTheFrameGreenAndTheInsertPlacesItsDrawing) {
  starten(block() + "30,30\n" + kAuswahl + "120,80\n");
  blockMachen();
  FrmBlockverwaltung frm(*bv_);
  variantenAnbinden(*bv_, *ins_, *neu_, &frm);
  variantenBefehlAnbinden(frm, *neu_);
  EXPECT_EQ(bv_->model().activeFrame, FrameColor::Red);

  prompt_->dialogResult("frmVariaNeu", 1);
  prompt_->dialogResult("frmBlocknameEingeben", 1, [this] {
    neu_->blockname()->txtBlocknameEingeben = "Flansch lang";
    EXPECT_TRUE(neu_->blockname()->cmbOk_Click());
  });
  frm.befehl("mnuBVarianten");
  EXPECT_EQ(bv_->model().activeFrame, FrameColor::Green);
  zeichnungWieVorher();

  prompt_->dialogResult("frmVariaEinfuegen", 1, [] {
    ASSERT_TRUE(VariaEinfuegen::offen());
    ASSERT_EQ(VariaEinfuegen::offen()->namen().value(1), "Flansch lang");
    VariaEinfuegen::offen()->gewaehlt = 1;
  });
  settings_->setup.longEinfuegenLayer0 = 0;
  settings_->setup.longVariantenfrage = 1;
  ins_->cmbEinfuegen_Click();
  const sandbox::Drawing d = zeichnungLesen();
  const sandbox::Entity* r = letzteReferenz(d);
  ASSERT_TRUE(r);
  EXPECT_EQ(r->blockName, "Flansch_lang");
  EXPECT_EQ(r->p1, (sandbox::Point{120, 80, 0}));
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
}

// Cancel in the variants' list, Escape at the variant's point, cancel of its
// name: the library as it was.
TEST_F(AnsichtenE2E, CancelAndEscapeWhileMakingAVariantLeaveTheLibraryAsItWas) {
  starten(block() + "ESC\nESC\n" + "30,30\n" + kAuswahl);
  blockMachen();
  FrmBlockverwaltung frm(*bv_);
  variantenAnbinden(*bv_, *ins_, *neu_, &frm);
  variantenBefehlAnbinden(frm, *neu_);
  const QStringList vorher = bestand();
  prompt_->dialogResult("frmVariaNeu", 0);
  frm.befehl("mnuBVarianten");
  EXPECT_EQ(bestand(), vorher);
  prompt_->dialogResult("frmVariaNeu", 1);
  frm.befehl("mnuBVarianten");  // Escape twice at its point
  EXPECT_EQ(bestand(), vorher);
  prompt_->dialogResult("frmVariaNeu", 1);
  prompt_->dialogResult("frmBlocknameEingeben", 0);
  frm.befehl("mnuBVarianten");  // its name cancelled
  EXPECT_EQ(bestand(), vorher);
  EXPECT_FALSE(QFileInfo::exists(temp()));
  zeichnungWieVorher();
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
}

// A library of the older layout: the variants of a view in its list file of
// fixed records (Windows-1252), the drawing's path relative to the folder.
TEST_F(AnsichtenE2E, AnOldVariantListFileIsShownAndItsDrawingInserted) {
  starten(block() + "150,60\n");
  blockMachen();
  FrmBlockverwaltung frm(*bv_);
  variantenAnbinden(*bv_, *ins_, *neu_, &frm);
  QDir().mkpath(bib_ + "/000/Alte Teile");
  ASSERT_TRUE(QFile::copy(dwg(), bib_ + QString::fromUtf8("/000/Alte Teile/größer.dwg")));
  auto feld = [](const QString& text, int breite) {
    QByteArray b = text.toLatin1();  // Windows-1252 for these letters
    b.append(QByteArray(breite - b.size(), ' '));
    return b;
  };
  writeFile(bib_ + "/000/" + code_ + "0.dat",
            feld(QString::fromUtf8("Flansch größer"), 50) + feld(QString::fromUtf8("Alte Teile\\größer.dwg"), 198));
  bv_->subSeiteNeuAnzeigen();
  EXPECT_EQ(bv_->model().activeFrame, FrameColor::Green);

  prompt_->dialogResult("frmVariaEinfuegen", 1, [] {
    ASSERT_TRUE(VariaEinfuegen::offen());
    ASSERT_EQ(VariaEinfuegen::offen()->namen().value(1), QString::fromUtf8("Flansch größer"));
    VariaEinfuegen::offen()->gewaehlt = 1;
  });
  settings_->setup.longEinfuegenLayer0 = 0;
  settings_->setup.longVariantenfrage = 1;
  ins_->cmbEinfuegen_Click();
  const sandbox::Drawing d = zeichnungLesen();
  const sandbox::Entity* r = letzteReferenz(d);
  ASSERT_TRUE(r);
  EXPECT_EQ(r->p1, (sandbox::Point{150, 60, 0}));
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
}

// Cancel in the chooser, and Escape in the view's picks: nothing changes.
TEST_F(AnsichtenE2E, CancelAndEscapeWhileMakingAViewLeaveTheLibraryAsItWas) {
  starten(block() + "ESC\nESC\n" + "20,20\nESC\n");
  blockMachen();
  hookSetzen();
  const QStringList vorher = bestand();
  prompt_->dialogResult("frmAnsichtenNeu", 0);
  neu_->combutNeu_Click();
  EXPECT_EQ(bestand(), vorher);
  ansichtMachen(2, std::nullopt, false);  // Escape twice at point A
  EXPECT_EQ(bestand(), vorher);
  ansichtMachen(2, std::nullopt, false);  // Escape at point B
  EXPECT_EQ(bestand(), vorher);
  EXPECT_FALSE(QFileInfo::exists(temp()));
  zeichnungWieVorher();
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
  EXPECT_TRUE(prompt_->exhausted());
}

}  // namespace
}  // namespace kolvane

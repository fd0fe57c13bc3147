// End to end: the new block command against the real sandbox CAD (offscreen).
// The user's picks come from the sandbox's picks file; the program's dialogs
// are answered by the scripted prompt. What landed is read back from the
// library (files, slides, rows) and from the drawing the sandbox holds.
#include <gmock/gmock.h>

#include <QProcess>

#include "neuerblocke2e.h"

namespace kolvane {
namespace {

using ::testing::HasSubstr;

// The red disk of each slide stands on its point: the disks of the slides lie
// to each other as the points do, at one scale.
void punkteStimmen(NeuerBlockE2E* t, const QString& slb, const std::vector<QPointF>& punkte,
                   const std::function<std::optional<QPointF>(const QString&, const QString&)>& rot) {
  const auto a = rot(slb, "0A");
  ASSERT_TRUE(a) << "no red disk in 0A";
  double massstab = 0;
  for (size_t k = 1; k < punkte.size(); ++k) {
    const QString name = QString("0") + QChar('A' + int(k));
    const auto p = rot(slb, name);
    ASSERT_TRUE(p) << "no red disk in " << name.toStdString();
    const QPointF soll = punkte[k] - punkte[0];
    const QPointF ist = *p - *a;
    const double m = std::hypot(ist.x(), ist.y()) / std::hypot(soll.x(), soll.y());
    if (massstab == 0) massstab = m;
    EXPECT_NEAR(m, massstab, massstab * 0.05) << name.toStdString();
    EXPECT_NEAR(ist.x(), soll.x() * massstab, 3) << name.toStdString();
    EXPECT_NEAR(ist.y(), soll.y() * massstab, 3) << name.toStdString();
  }
  Q_UNUSED(t);
}

TEST_F(NeuerBlockE2E, AWindowSelectionWithOnePointLandsOnTheFreeSlot) {
  starten(kPunktA + "ENTER\n" + kAuswahl + kRahmen);
  rahmenBestaetigen();
  karteSpeichern();
  neu_->combutNeu_Click();
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();

  // The row: point A, no further point, a made name.
  EXPECT_EQ(wert("AX0").toDouble(), 10);
  EXPECT_EQ(wert("AY0").toDouble(), 10);
  EXPECT_EQ(wert("BX0").toDouble(), 0);
  EXPECT_EQ(wert("BlkName0").toString(), "Block0-1");
  EXPECT_EQ(wert("M0").toString(), "Flansch");
  EXPECT_EQ(wert("SlideLib").toString(), "000\\" + code_ + ".slb");
  // The files: the drawing of the selected objects with A as its base, the
  // slide library with one slide.
  sandbox::Drawing block;
  QString fehler;
  ASSERT_TRUE(sandbox::readDxfFile(dwg(), block, &fehler)) << fehler.toStdString();
  EXPECT_EQ(block.entities.size(), 3u);
  EXPECT_EQ(block.insbase, (sandbox::Point{10, 10, 0}));
  const auto verzeichnis = readSlideLibraryDirectory(readFile(slb()));
  ASSERT_TRUE(verzeichnis);
  ASSERT_EQ(verzeichnis->size(), 1u);
  EXPECT_EQ((*verzeichnis)[0].name, "0A");
  EXPECT_TRUE(roterPunkt(slb(), "0A"));
  // The objects are back in the drawing and the marks gone; the host as before.
  zeichnungWieVorher();
  EXPECT_EQ(sb_->host()->getVariable("filedia").toInt(), 1);
  EXPECT_FALSE(QFileInfo::exists(temp()));
  EXPECT_FALSE(QFileInfo::exists(fctJournalPfad(bib_)));
  // The user read the program's questions at the host's command line.
  const QString zeilen = QString::fromUtf8(readFile(path("verlauf.txt")));
  EXPECT_THAT(zeilen.toStdString(), HasSubstr("Einfügepunkt A des Blocks angeben: "));
  EXPECT_THAT(zeilen.toStdString(), HasSubstr("Einfügepunkt B angeben <Return = keine weiteren Punkte>: "));
  EXPECT_THAT(zeilen.toStdString(), HasSubstr("Erste Ecke des Bildausschnitts für das Dia angeben: "));
  EXPECT_THAT(zeilen.toStdString(), HasSubstr("Gegenüberliegende Ecke des Bildausschnitts angeben: "));
  // The page shows the new block.
  const SlotModel& s = bv_->model().bilder[bv_->pos];
  EXPECT_TRUE(s.occupied);
  EXPECT_EQ(s.text, "Flansch");
  EXPECT_THAT(s.slidePath.toStdString(), HasSubstr("(0A)"));
  EXPECT_TRUE(s.slideFehler.isEmpty()) << s.slideFehler.toStdString();
}

TEST_F(NeuerBlockE2E, SixPointsGiveSixSlidesEachWithItsRedDiskAndTheBlockInsertsAtC) {
  const std::vector<QPointF> punkte{{10, 10}, {50, 10}, {50, 30}, {10, 30}, {30, 20}, {0, 0}};
  QString picks;
  for (const QPointF& p : punkte) picks += QString("%1,%2\n").arg(p.x()).arg(p.y());
  // The insert afterwards: its pick for point C.
  starten(picks + kAuswahl + kRahmen + "120,80\n");
  rahmenBestaetigen();
  karteSpeichern();
  neu_->combutNeu_Click();
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();

  for (int k = 0; k < 6; ++k) {
    const QString l(QChar('A' + k));
    EXPECT_EQ(wert(l + "X0").toDouble(), punkte[size_t(k)].x()) << k;
    EXPECT_EQ(wert(l + "Y0").toDouble(), punkte[size_t(k)].y()) << k;
  }
  const auto verzeichnis = readSlideLibraryDirectory(readFile(slb()));
  ASSERT_TRUE(verzeichnis);
  QStringList namen;
  for (const auto& e : *verzeichnis) namen << e.name;
  EXPECT_EQ(namen, (QStringList{"0A", "0B", "0C", "0D", "0E", "0F"}));
  punkteStimmen(this, slb(), punkte,
                [this](const QString& s, const QString& n) { return roterPunkt(s, n); });
  zeichnungWieVorher();

  // Inserted by point C, the block's point C lies at the pick.
  prompt_->dialogResult("frmVariaEinfuegepkte", 1, [this] { ins_->wahl.board.sldVariaEinfuegepkte_MouseDown(2); });
  bv_->hooks.cmbEinfuegen = [this] { ins_->cmbEinfuegen_Click(); };
  settings_->setup.longDoppelklick = 1;
  settings_->setup.longEinfuegenLayer0 = 0;
  bv_->sldBlockverwaltung_DblClick(bv_->pos);
  const sandbox::Drawing d = zeichnungLesen();
  const sandbox::Entity* r = letzteReferenz(d);
  ASSERT_TRUE(r);
  EXPECT_EQ(r->p1, (sandbox::Point{120 - (50 - 10), 80 - (30 - 10), 0}));
}

TEST_F(NeuerBlockE2E, TheKeystrokeRouteWritesOneSlideAndTheDrawing) {
  // At the host's own prompts: the base point, the objects.
  starten("10,10\n" + kAuswahl, true);
  karteSpeichern("Ventil");
  neu_->combutNeu_Click();
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();

  const QString sld = bib_ + "/000/" + code_ + ".sld";
  EXPECT_TRUE(readSlideFile(sld));
  sandbox::Drawing block;
  QString fehler;
  ASSERT_TRUE(sandbox::readDxfFile(dwg(), block, &fehler)) << fehler.toStdString();
  EXPECT_EQ(block.entities.size(), 3u);
  EXPECT_EQ(block.insbase, (sandbox::Point{10, 10, 0}));
  EXPECT_EQ(wert("SlideLib").toString(), "000\\" + code_ + ".sld");
  EXPECT_EQ(wert("M0").toString(), "Ventil");
  EXPECT_FALSE(QFileInfo::exists(temp()));
  zeichnungWieVorher(true);
  const SlotModel& s = bv_->model().bilder[bv_->pos];
  EXPECT_TRUE(s.occupied);
  EXPECT_TRUE(s.slideFehler.isEmpty()) << s.slideFehler.toStdString();
}

TEST_F(NeuerBlockE2E, EscapeAtTheKeystrokeRoutesBasePointLeavesTheLibraryAsItWas) {
  starten("ESC\n", true);
  const QStringList vorher = bestand();
  neu_->combutNeu_Click();
  EXPECT_TRUE(gezeigt(97));
  EXPECT_EQ(bestand(), vorher);
  EXPECT_FALSE(QFileInfo::exists(temp()));
  zeichnungWieVorher(true);
}

// Escape or cancel at each step: the library byte for byte as it was, the
// temporary directory gone, the drawing and the host as before.
struct Abbruch {
  const char* schritt;
  QString picks;
  // Dialog answers in the order they come (form, result).
  std::vector<std::pair<const char*, int>> dialoge;
  bool nameFragen = false;
};

class NeuerBlockAbbruch : public NeuerBlockE2E, public ::testing::WithParamInterface<Abbruch> {};

TEST_P(NeuerBlockAbbruch, LeavesTheLibraryAsItWas) {
  const Abbruch& a = GetParam();
  settings_->setup.longAbfrageBlocknameBeimErzeugen = a.nameFragen ? 1 : 0;
  starten(a.picks);
  // A block the library had before.
  const QStringList vorher = bestand();
  for (const auto& [form, ergebnis] : a.dialoge) prompt_->dialogResult(form, ergebnis);
  neu_->combutNeu_Click();
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
  EXPECT_EQ(bestand(), vorher);
  EXPECT_FALSE(QFileInfo::exists(temp()));
  zeichnungWieVorher();
  EXPECT_EQ(sb_->host()->getVariable("filedia").toInt(), 1);
}

const std::vector<Abbruch> kAbbrueche = {
    {"PunktA", "ESC\nESC\n", {}},
    {"PunktB", kPunktA + "ESC\n", {}},
    {"PunktD", kPunktA + "50,10\n50,30\nESC\n", {}},
    {"Auswahl", kPunktA + "ENTER\nESC\n", {}},
    {"Ecke1", kPunktA + "ENTER\n" + kAuswahl + "ESC\n", {}},
    {"Ecke2", kPunktA + "ENTER\n" + kAuswahl + "-10,-10\nESC\n", {}},
    {"Blockname", kPunktA + "ENTER\n" + kAuswahl + kRahmen, {{"frmBlocknameEingeben", 0}}, true},
    {"Bildausschnitt", kPunktA + "ENTER\n" + kAuswahl + kRahmen, {{"frmBildausschnittAnpassen", 0}}},
    {"Karte",
     kPunktA + "ENTER\n" + kAuswahl + kRahmen,
     {{"frmBildausschnittAnpassen", 1}, {"frmKarteiDateneingabe", 0}}},
};

INSTANTIATE_TEST_SUITE_P(JederSchritt, NeuerBlockAbbruch, ::testing::ValuesIn(kAbbrueche),
                         [](const auto& info) { return std::string(info.param.schritt); });

TEST_F(NeuerBlockE2E, ANameWithBlanksSlashesQuotesAndUmlautsIsStoredAsTyped) {
  settings_->setup.longAbfrageBlocknameBeimErzeugen = 1;
  const QString name = QString::fromUtf8("Flansch \"DN 50\" / Ø 3' größer");
  starten(kPunktA + "ENTER\n" + kAuswahl + kRahmen);
  prompt_->dialogResult("frmBlocknameEingeben", 1, [this, name] {
    neu_->blockname()->txtBlocknameEingeben = name;
    EXPECT_TRUE(neu_->blockname()->cmbOk_Click());
  });
  rahmenBestaetigen();
  karteSpeichern();
  neu_->combutNeu_Click();
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
  EXPECT_EQ(wert("BlkName0").toString(), name);
  EXPECT_TRUE(QFileInfo::exists(dwg()));
  EXPECT_EQ(bv_->model().labNameDaten, name);
}

TEST_F(NeuerBlockE2E, NothingSelectedAsksAgainAndNoLeavesTheLibraryAsItWas) {
  // First nothing, "j" to try again, nothing again, then "N".
  starten(kPunktA + "ENTER\nwindow 500,500 600,600\nENTER\nstring j\nwindow 500,500 600,600\nENTER\nstring N\n");
  const QStringList vorher = bestand();
  neu_->combutNeu_Click();
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
  EXPECT_EQ(bestand(), vorher);
  EXPECT_FALSE(QFileInfo::exists(temp()));
  zeichnungWieVorher();
}

TEST_F(NeuerBlockE2E, AFrameOfNoAreaIsRefusedAndAskedAgain) {
  starten(kPunktA + "ENTER\n" + kAuswahl + "0,0\n0,40\n" + kRahmen);
  rahmenBestaetigen();
  karteSpeichern();
  neu_->combutNeu_Click();
  EXPECT_TRUE(gezeigt(939));
  EXPECT_TRUE(QFileInfo::exists(slb()));
  EXPECT_TRUE(QFileInfo::exists(dwg()));
}

// On an occupied slot the chooser decides: a further view gets its own
// drawing, slide library and point columns; a variant its drawing in Varia
// and a row of its own, with one point and no slide.
TEST_F(NeuerBlockE2E, AFurtherViewAndAVariantOfTheBlock) {
  const QString ansicht1 = "20,20\n50,20\nENTER\n" + kAuswahl + kRahmen;
  const QString variante = "30,30\n" + kAuswahl;
  starten(kPunktA + "ENTER\n" + kAuswahl + kRahmen + ansicht1 + variante);
  rahmenBestaetigen();
  karteSpeichern();
  neu_->combutNeu_Click();
  ASSERT_TRUE(QFileInfo::exists(dwg()));

  // The chooser, answered as the user answers it.
  neu_->hooks.frmAnsichtenNeu = [](Neuanlage&) { return 0; };
  prompt_->dialogResult("frmAnsichtenNeu", 1, [this] { neu_->n.byteZuErstellendeAnsicht = 1; });
  rahmenBestaetigen();
  neu_->combutNeu_Click();
  EXPECT_TRUE(QFileInfo::exists(bib_ + "/000/" + code_ + "1.slb"));
  EXPECT_TRUE(QFileInfo::exists(bib_ + "/000/Block/" + code_ + "1.dwg"));
  EXPECT_EQ(wert("AX1").toDouble(), 20);
  EXPECT_EQ(wert("BX1").toDouble(), 50);
  EXPECT_EQ(wert("AX0").toDouble(), 10);  // view 0 as it was
  const auto verzeichnis = readSlideLibraryDirectory(readFile(bib_ + "/000/" + code_ + "1.slb"));
  ASSERT_TRUE(verzeichnis);
  ASSERT_EQ(verzeichnis->size(), 2u);
  EXPECT_EQ((*verzeichnis)[0].name, "1A");

  prompt_->dialogResult("frmAnsichtenNeu", 1, [this] { neu_->n.bytVarianteAnlegen = 1; });
  prompt_->dialogResult("frmBlocknameEingeben", 1, [this] {
    neu_->blockname()->txtBlocknameEingeben = "Flansch lang";
    EXPECT_TRUE(neu_->blockname()->cmbOk_Click());
  });
  neu_->combutNeu_Click();
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
  Connection c;
  ASSERT_TRUE(c.open(db_, Connection::Mode::ReadOnly));
  const QString datei = c.scalar("SELECT BlockDateiName FROM tblVariationBloecke WHERE BlockName = ?",
                                 {"Flansch lang"}).toString();
  ASSERT_FALSE(datei.isEmpty());
  EXPECT_TRUE(datei.endsWith(code_.right(4) + "0.dwg")) << datei.toStdString();
  sandbox::Drawing v;
  QString fehler;
  ASSERT_TRUE(sandbox::readDxfFile(bib_ + "/000/Block/Varia/" + datei, v, &fehler)) << fehler.toStdString();
  EXPECT_EQ(v.insbase, (sandbox::Point{30, 30, 0}));
  zeichnungWieVorher();
}

// The import of one drawing: no points and no selection; the drawing is
// copied as it is, its base point comes from the host's "insbase".
TEST_F(NeuerBlockE2E, TheImportOfADrawingTakesItsBasePointAndCopiesIt) {
  starten(kRahmen);
  const QString quelle = path("Pumpe.dwg");
  ASSERT_TRUE(SendCommand(*bridge_, "._base 5,5,0 "));
  ASSERT_TRUE(SendCommand(*bridge_, "._-wblock " + quelle + "\r*\r"));
  ASSERT_TRUE(QFileInfo::exists(quelle));
  rahmenBestaetigen();
  karteSpeichern("Pumpe");
  neu_->n.bytBlockImportManuell = 1;
  neu_->n.strZuImportierenderBlock = quelle;
  neu_->combutNeu_Click();
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
  EXPECT_EQ(readFile(dwg()), readFile(quelle));
  EXPECT_EQ(wert("AX0").toDouble(), 5);
  EXPECT_EQ(wert("AY0").toDouble(), 5);
  EXPECT_TRUE(roterPunkt(slb(), "0A"));
  EXPECT_EQ(neu_->n.bytBlockImportManuell, 0);  // one-shot
}

// A library that can't be written: said before any pick, nothing touched.
TEST_F(NeuerBlockE2E, AReadOnlyLibraryIsRefusedBeforeAnyPick) {
  if (geteuid() != 0) GTEST_SKIP() << "a read-only bind mount needs root here";
  starten(kPunktA + "ENTER\n" + kAuswahl + kRahmen);
  const QStringList vorher = bestand();
  const QString ordner = bib_ + "/000";
  ASSERT_EQ(mount(ordner.toLocal8Bit().constData(), ordner.toLocal8Bit().constData(), nullptr, MS_BIND,
                  nullptr),
            0);
  const int ro = mount(nullptr, ordner.toLocal8Bit().constData(), nullptr,
                       MS_REMOUNT | MS_BIND | MS_RDONLY, nullptr);
  neu_->combutNeu_Click();
  umount(ordner.toLocal8Bit().constData());
  ASSERT_EQ(ro, 0);
  EXPECT_TRUE(gezeigt(934)) << prompt_->asked.join("\n").toStdString();
  EXPECT_EQ(bestand(), vorher);
  // The user was never asked for a point: the picks stand unused.
  EXPECT_EQ(sb_->host()->getVariable("filedia").toInt(), 1);
  zeichnungWieVorher();
}

// The program killed at each named step between the files in the temporary
// directory and the end: the next opening of the library finds the block
// whole (its row and its files) or not at all.
class NeuerBlockAbsturz : public NeuerBlockE2E, public ::testing::WithParamInterface<const char*> {};

TEST_P(NeuerBlockAbsturz, TheNextOpeningFindsTheBlockWholeOrNotAtAll) {
  const QString schritt = GetParam();
  const QString socket = path("cad.sock");
  writeFile(path("picks.txt"), (kPunktA + "ENTER\n" + kAuswahl + kRahmen).toUtf8());
  ASSERT_TRUE(cad_.start(socket, path("picks.txt"),
                         {"--language", qgetenv("KOLVANE_HOST_LANGUAGE") == "en" ? "en" : "de"}))
      << cad_.output().toStdString();
  oeffnen(3);  // a library opened once, as the program had it before the crash
  const QStringList vorher = bestand();
  QProcess kind;
  QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
  env.insert("KOLVANE_HALTEPUNKT", schritt);
  env.insert("QT_QPA_PLATFORM", "offscreen");
  kind.setProcessEnvironment(env);
  kind.setProcessChannelMode(QProcess::MergedChannels);
  kind.start(NEUANLAGE_KIND_EXE, {tmp_.path(), socket, "3"});
  ASSERT_TRUE(kind.waitForFinished(kSandboxBound * 2));
  ASSERT_EQ(kind.exitStatus(), QProcess::CrashExit) << kind.readAll().toStdString();

  oeffnen(3);
  code_ = bv_->aktivierteBlocknummer;
  const bool zeile = wert("Nr").isValid();
  EXPECT_FALSE(QFileInfo::exists(fctJournalPfad(bib_)));
  if (schritt == "dateien-fertig") {
    // Killed before anything reached the library: nothing did.
    EXPECT_FALSE(zeile);
    EXPECT_EQ(bestand(), vorher);
    EXPECT_FALSE(gezeigt(930));
  } else {
    // The row stood: the block is finished from the temporary directory.
    EXPECT_TRUE(zeile);
    EXPECT_TRUE(QFileInfo::exists(slb()));
    EXPECT_TRUE(QFileInfo::exists(dwg()));
    EXPECT_EQ(wert("M0").toString(), "Kind");
    EXPECT_TRUE(gezeigt(930));
    EXPECT_TRUE(gezeigt(931));
    EXPECT_TRUE(bv_->model().bilder[bv_->pos].occupied);
  }
}

INSTANTIATE_TEST_SUITE_P(JederHaltepunkt, NeuerBlockAbsturz,
                         ::testing::Values("dateien-fertig", "zeile-geschrieben", "zwischen-dateien",
                                           "dateien-verschoben"),
                         [](const auto& info) {
                           QString n = info.param;
                           return n.remove('-').toStdString();
                         });

}  // namespace
}  // namespace kolvane

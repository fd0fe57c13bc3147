// The insert on the automation route, checked as the transcript of what goes
// to the host.
#include <QDir>
#include <QFile>
#include <QLocale>

#include "connection.h"
#include "diagnostics.h"
#include "eventsink.h"
#include "einfuegentest.h"
#include "labels.h"
#include "settings.h"

namespace kolvane {
namespace {

constexpr QChar q = QLatin1Char('"');

class EinfuegenAutomation : public EinfuegenTest {
 protected:
  void SetUp() override {
    EinfuegenTest::SetUp();
    automationGebunden();
    settings_->setup.longEinfuegenLayer0 = 0;
  }
  // The copy the insert makes under the block's name.
  QString kopie(const QString& name) const {
    return QDir(settings_->strVerzeichnisTempKolvane()).filePath(name + ".dwg");
  }
  // The active block with two points, A (5,5,0) and B (10,20,0), and point B
  // chosen on the board.
  QString zweiPunkte(const QString& name = "Tisch") {
    const QString c = blockAnlegen(0, name, {{5, 5, 0}, {10, 20, 0}});
    oeffnen();
    return c;
  }
  void punktWaehlen(int index) {
    prompt_->dialogResult("frmVariaEinfuegepkte", 1,
                          [this, index] { ins_->wahl.board.sldVariaEinfuegepkte_MouseDown(index); });
  }
  int markierteZeilen() {
    Connection c;
    EXPECT_TRUE(c.open(db_));
    return c.scalar("SELECT COUNT(*) FROM tblMarkierteBloecke").toInt();
  }
};

TEST_F(EinfuegenAutomation, TheCompleteSequenceOfAPlainInsert) {
  // Drawing c:/tmp/b.dwg, no name, point A, default options.
  const QString alt = QDir::currentPath();
  QDir::setCurrent(path(""));
  writeFile(path("c:/tmp/b.dwg"), "drawing");
  const QString code = blockAnlegen(0, "");
  markieren(code, "c:/tmp/b.dwg", 0, 1);
  oeffnen();
  spalteSetzen(code, "BlkName0", "");  // the library names a block at its opening
  ins_->cmbEinfuegen_Click();
  QDir::setCurrent(alt);

  EXPECT_EQ(log(), (QStringList{
                       "appActivate|" + titel_,
                       "findWindow|" + titel_,
                       "setForegroundWindow|10",
                       "sendKeys|{ESC}{ESC}|wait",
                       "getVariable|filedia",
                       "getVariable|attreq",
                       "getVariable|orthomode",
                       "getVariable|CMDECHO",
                       "setVariable|attreq|0",
                       "setVariable|orthomode|0",
                       "setVariable|CMDECHO|1",
                       "sendCommand|(command \"._-insert\" \"c:/tmp/b.dwg\" pause \"1\" \"1\" \"0\")\r",
                       "setVariable|attreq|1",
                       "setVariable|orthomode|1",
                       "setVariable|CMDECHO|0",
                       "appActivate|" + titel_,
                   }));
  // The wait ended by the host's end of the command, through the insert's own sink.
  ASSERT_TRUE(bridge_->EventActivX);
  EXPECT_EQ(bridge_->EventActivX->sEndCommand, "-INSERT");
  EXPECT_EQ(bridge_->bytAcadArbeitet, 1);
  EXPECT_EQ(markierteZeilen(), 0);
  EXPECT_FALSE(QDir(settings_->strVerzeichnisTempKolvane()).exists());
  EXPECT_TRUE(prompt_->asked.isEmpty());
}

TEST_F(EinfuegenAutomation, SeriesOfPointAInEveryCase) {
  blockAnlegen(0, "Tisch");
  oeffnen();
  const QString p = kopie("Tisch");
  struct Fall {
    int bibliothek, x, y;
    QString erwartet;
  };
  const QList<Fall> faelle = {
      {1, 1, 1, "(command \"._-insert\" \"Tisch=" + p + "\" pause \"2\" \"3\" \"0\")\r"},
      {0, 0, 0, "(command \"._-insert\" \"" + p + "\" pause \"1\" \"1\" \"0\")\r"},
      {0, 1, 0, "(command \"._-insert\" \"" + p + "\" pause pause \"1\" \"0\")\r"},
      {0, 0, 1, "(command \"._-insert\" \"" + p + "\" pause \"1\" pause \"0\")\r"},
      {0, 1, 1, "(command \"._-insert\" \"" + p + "\" pause pause pause \"0\")\r"},
  };
  for (const Fall& f : faelle) {
    SCOPED_TRACE(f.erwartet.toStdString());
    log_.clear();
    ins_->optionen.byteBlockAusBibliothek = uint8_t(f.bibliothek);
    ins_->optionen.byteAbfrageXFaktor = uint8_t(f.x);
    ins_->optionen.byteAbfrageYFaktor = uint8_t(f.y);
    ins_->optionen.byteAbfrageEinfuegewinkel = 1;  // not honoured for point A
    // From the library the factors are asked first and nothing is waited
    // for: an insert that waited would only end by the bound.
    host_.endCommandOnPause = f.bibliothek == 1 ? QString() : QStringLiteral("-INSERT");
    if (f.bibliothek == 1) host_.reals = {2.0, 3.0};
    ins_->cmbEinfuegen_Click();
    EXPECT_EQ(gesendet(), QStringList{"sendCommand|" + f.erwartet});
    EXPECT_EQ(log({"getReal"}),
              f.bibliothek == 1 ? (QStringList{"getReal|\r\nX-Faktor: ", "getReal|\r\nY-Faktor: "}) : QStringList{});
  }
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(EinfuegenAutomation, SeriesOfAnotherPoint) {
  zweiPunkte();
  const QString p = kopie("Tisch");
  host_.variables.insert("LASTPOINT", QVariantList{30.0, 40.5, 0.0});

  // Plain, no rotation: at the origin, then the move with B's offset as base.
  punktWaehlen(1);
  ins_->cmbEinfuegen_Click();
  EXPECT_EQ(gesendet(), (QStringList{"sendCommand|._-insert " + p + "\r0,0,0 1\r1\r0\r",
                                     "sendCommand|._move (entlast)  5,15,0 "}));

  // From the library with X asked and the rotation about the pick.
  log_.clear();
  ins_->optionen.byteBlockAusBibliothek = 1;
  ins_->optionen.byteAbfrageXFaktor = 1;
  ins_->optionen.byteAbfrageEinfuegewinkel = 1;
  host_.reals = {2.5};
  punktWaehlen(1);
  ins_->cmbEinfuegen_Click();
  EXPECT_EQ(log({"sendCommand", "getReal", "getVariable"}).mid(4),  // after the saved variables
            (QStringList{"getReal|\r\nX-Faktor: ",
                         "sendCommand|._-insert Tisch=" + p + "\rj 0,0,0 2.5\r1\r0\r",
                         "sendCommand|._move (entlast)  5,15,0 ",
                         "getVariable|lastpoint",
                         "sendCommand|._rotate (entlast)\r\r30,40.5,0\r"}));
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(EinfuegenAutomation, FollowUpsAloneAndTogetherInTheirOrder) {
  blockAnlegen(0, "Plain");
  const QString mitLayer = blockAnlegen(1, "Moebel");
  spalteSetzen(mitLayer, "Layer", "Moebel");
  spalteSetzen(mitLayer, "LyColor", "3");
  const QString alles = blockAnlegen(2, "Alles");
  spalteSetzen(alles, "Layer", "Moebel");
  spalteSetzen(alles, "M0", "a\"b");
  {
    Connection c;
    ASSERT_TRUE(c.open(db_));
    ASSERT_TRUE(c.execute("ALTER TABLE tblBlockInfo ADD COLUMN Lisp0 TEXT(100)"));
  }
  spalteSetzen(alles, "Lisp0", "(eigen)");
  oeffnen();
  // "break" ends like a Lisp run.
  host_.onSendCommand = [this](const QString& c) {
    if (c.startsWith("(load")) QTimer::singleShot(5, &host_, [this] { host_.raiseEndLisp(); });
  };
  const QString brk = "(load \"" + settings_->programDir() + "/break\")\r";
  auto folgen = [this](int pos) {
    log_.clear();
    bv_->lisBlockBenennung_Click(pos);
    ins_->cmbEinfuegen_Click();
    // What follows the insert, up to the restored variables.
    QStringList l = log();
    int i = 0;
    while (i < l.size() && !l[i].startsWith("sendCommand|(command")) ++i;
    l = l.mid(i + 1);
    return l.mid(0, l.indexOf("setVariable|attreq|1"));
  };
  struct Allein {
    uint8_t EinfuegeOptionen::*option;
    QStringList erwartet;
  };
  const QList<Allein> allein = {
      {&EinfuegeOptionen::byteBruchFrage, {"sendCommand|" + brk}},
      {&EinfuegeOptionen::byteAbfrageAttributeBeimEinfuegen, {"sendCommand|._attedit (entlast) "}},
      {&EinfuegeOptionen::byteUrsprungBeimEinfuegen, {"sendCommand|._explode (entlast) \r"}},
      {&EinfuegeOptionen::byteReihe, {"sendCommand|._array (entlast) \r"}},
  };
  for (const Allein& a : allein) {
    ins_->optionen = EinfuegeOptionen{};
    ins_->optionen.*a.option = 1;
    EXPECT_EQ(folgen(0), a.erwartet);
  }
  ins_->optionen = EinfuegeOptionen{};
  EXPECT_EQ(folgen(0), QStringList{});
  settings_->setup.longEinfuegenLayer0 = 1;
  EXPECT_EQ(folgen(0), (QStringList{"sendCommand|._change (entlast)  _prop _la 0\r\r", "sendKeys|{ESC}|wait"}));
  settings_->setup.longEinfuegenLayer0 = 0;
  // The block's layer, made in the drawing with its colour when missing.
  EXPECT_EQ(folgen(1), (QStringList{"layer|Moebel", "addLayer|Moebel",
                                    "sendCommand|._change (entlast)  _prop _la Moebel\r\r",
                                    "sendKeys|{ESC}|nowait"}));
  EXPECT_EQ(host_.layerList.value(0).color, 3);

  // All of them, in their order.
  ins_->optionen.byteBruchFrage = 1;
  ins_->optionen.byteAbfrageAttributeBeimEinfuegen = 1;
  ins_->optionen.byteUrsprungBeimEinfuegen = 1;
  ins_->optionen.byteReihe = 1;
  settings_->setup.longEinfuegenLayer0 = 1;
  settings_->setup.lonLispVarUebergeben = 1;
  QStringList erwartet{"sendCommand|" + brk,
                       "layer|Moebel",
                       "sendCommand|._change (entlast)  _prop _la Moebel\r\r",
                       "sendKeys|{ESC}|nowait",
                       "sendCommand|._change (entlast)  _prop _la 0\r\r",
                       "sendKeys|{ESC}|wait",
                       "sendCommand|._attedit (entlast) ",
                       "sendCommand|._explode (entlast) \r",
                       "sendCommand|._array (entlast) \r",
                       "sendCommand|(setq bver_dat1 \"a\\\"b\")\r"};
  for (int i = 2; i <= 10; ++i) erwartet << QString("sendCommand|(setq bver_dat%1 \"\")\r").arg(i);
  erwartet << "sendCommand|(setq blkname \"Alles\")\r"
           << "sendCommand|(eigen)\r";
  EXPECT_EQ(folgen(2), erwartet);
}

TEST_F(EinfuegenAutomation, EscapeOrTheRightButtonAtThePickStopsTheSeries) {
  zweiPunkte();
  settings_->setup.longEinfuegenLayer0 = 1;
  ins_->optionen.byteReihe = 1;
  ins_->optionen.byteAbfrageEinfuegewinkel = 1;
  const QStringList wiederhergestellt{"setVariable|attreq|1", "setVariable|orthomode|1", "setVariable|CMDECHO|0"};

  // Point A: Escape during the wait is read after it (the first read only
  // drops the key's old state).
  prompt_->dialogResult("frmVariaEinfuegepkte", 1);
  desk_.keys[27] = {0, 1};
  ins_->cmbEinfuegen_Click();
  EXPECT_EQ(gesendet().size(), 1);
  EXPECT_EQ(bridge_->Unterbrechung, 1);
  EXPECT_EQ(log().mid(log().size() - 4, 3), wiederhergestellt);

  // Another point: the right button at the move; no rotation, no follow-up,
  // and the block placed at the origin goes again.
  log_.clear();
  punktWaehlen(1);
  desk_.keys[2] = {0, 1};
  ins_->cmbEinfuegen_Click();
  ASSERT_EQ(gesendet().size(), 3);
  EXPECT_TRUE(gesendet()[1].contains("._move"));
  EXPECT_EQ(gesendet()[2], "sendCommand|._erase (entlast)  ");
  EXPECT_EQ(log().mid(log().size() - 4, 3), wiederhergestellt);

  // Escape at the move: the same, seen after the move's end was waited for.
  log_.clear();
  punktWaehlen(1);
  desk_.keys[27] = {0, 0, 1};
  ins_->cmbEinfuegen_Click();
  ASSERT_EQ(gesendet().size(), 3);
  EXPECT_EQ(gesendet()[2], "sendCommand|._erase (entlast)  ");
  EXPECT_EQ(bridge_->Unterbrechung, 1);
  EXPECT_EQ(log().mid(log().size() - 4, 3), wiederhergestellt);
}

TEST_F(EinfuegenAutomation, RepeatUntilTheUserBreaksOff) {
  blockAnlegen(0, "Tisch");
  oeffnen();
  ins_->optionen.byteMehrfacheinfuegen = 1;
  // Escape at the first pick: one pass.
  desk_.keys[27] = {0, 1};
  ins_->cmbEinfuegen_Click();
  EXPECT_EQ(gesendet().size(), 1);
  EXPECT_EQ(log({"setVariable"}).size(), 6);

  // Two picks, Escape at the second; the variables go back after each pass.
  log_.clear();
  settings_->setup.longEinfuegenLayer0 = 1;
  desk_.keys[27] = {0, 0, 0, 0, 1};
  ins_->cmbEinfuegen_Click();
  const QStringList s = gesendet();
  ASSERT_EQ(s.size(), 3);
  EXPECT_TRUE(s[0].startsWith("sendCommand|(command"));
  EXPECT_TRUE(s[1].contains("_la 0"));
  EXPECT_EQ(s[2], s[0]);
  EXPECT_EQ(log({"setVariable"}).filter("attreq|1").size(), 2);
}

TEST_F(EinfuegenAutomation, AMarkedListOfThreeWithEscapeAtTheSecond) {
  QStringList codes;
  for (int i = 0; i < 3; ++i) {
    codes << blockAnlegen(i, QString("B%1").arg(i), {{0, 0, 0}, {1, 2, 0}});
    markieren(codes.last(), zeichnung(codes.last(), 0), 0, i == 0 ? 2 : 1);
  }
  oeffnen();
  // B of the first: one read before the move, one to drop the old state and
  // two after its wait, one more for the series' own check; A of the second:
  // one before the wait, Escape after it.
  desk_.keys[27] = {0, 0, 0, 0, 0, 0, 1};
  ins_->cmbEinfuegen_Click();
  const QStringList s = gesendet();
  ASSERT_EQ(s.size(), 3);
  EXPECT_EQ(s[0], "sendCommand|._-insert " + kopie("B0") + "\r0,0,0 1\r1\r0\r");
  EXPECT_EQ(s[1], "sendCommand|._move (entlast)  1,2,0 ");
  EXPECT_TRUE(s[2].contains(kopie("B1")));
  EXPECT_EQ(markierteZeilen(), 0);
  EXPECT_EQ(lib_->rsMarkierteBloecke.RecordCount(), 0);
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(EinfuegenAutomation, TheNameGoesToTheHostAsTheFileName) {
  const QString code = blockAnlegen(0, "Tisch, rund/\"Eiche\":1");
  const QString ohne = blockAnlegen(1, "");
  oeffnen();
  spalteSetzen(ohne, "BlkName0", "");  // the library names a block at its opening
  ins_->optionen.byteBlockAusBibliothek = 1;
  host_.endCommandOnPause.clear();
  const QString name = "Tisch__rund__Eiche__1";
  bool kopiert = false;
  host_.onSendCommand = [&](const QString&) { kopiert = QFile::exists(kopie(name)); };
  ins_->cmbEinfuegen_Click();
  EXPECT_TRUE(kopiert);
  EXPECT_EQ(gesendet(), QStringList{"sendCommand|(command \"._-insert\" \"" + name + "=" + kopie(name) +
                                    "\" pause \"1\" \"1\" \"0\")\r"});
  // No name: code and view, the library's own drawing.
  log_.clear();
  bv_->lisBlockBenennung_Click(1);
  ins_->cmbEinfuegen_Click();
  EXPECT_EQ(gesendet(), QStringList{"sendCommand|(command \"._-insert\" \"" + ohne + "0=" + zeichnung(ohne, 0) +
                                    "\" pause \"1\" \"1\" \"0\")\r"});
  Q_UNUSED(code);
}

TEST_F(EinfuegenAutomation, PointCMovesByItsOffsetUnscaledInEveryLocale) {
  blockAnlegen(0, "Tisch", {{0.5, 0.25, 0}, {3, 3, 0}, {10.75, 20.5, 1.125}});
  oeffnen();
  settings_->setup.longMassstabskontrolle = 1;
  settings_->setup.strMassstabX = "1,5";
  settings_->setup.strMassstabY = "2";
  ins_->optionen.byteAbfrageEinfuegewinkel = 1;
  host_.variables.insert("LASTPOINT", QVariantList{3.5, 4.25, 0.0});
  const QStringList erwartet{"sendCommand|._-insert " + kopie("Tisch") + "\r0,0,0 1.5\r2\r0\r",
                             "sendCommand|._move (entlast)  10.25,20.25,1.125 ",
                             "sendCommand|._rotate (entlast)\r\r3.5,4.25,0\r"};
  for (const QLocale& l : {QLocale(QLocale::German, QLocale::Germany), QLocale::c()}) {
    SCOPED_TRACE(l.name().toStdString());
    QLocale::setDefault(l);
    log_.clear();
    punktWaehlen(2);
    ins_->cmbEinfuegen_Click();
    EXPECT_EQ(gesendet(), erwartet);
  }
  QLocale::setDefault(QLocale::system());
}

TEST_F(EinfuegenAutomation, TheZFactorChangesNothing) {
  zweiPunkte();
  QStringList ohne;
  for (uint8_t z : {uint8_t(0), uint8_t(1)}) {
    log_.clear();
    ins_->optionen.byteAbfrageZFaktor = z;
    punktWaehlen(1);
    ins_->cmbEinfuegen_Click();
    if (z == 0) ohne = log();
  }
  EXPECT_FALSE(ohne.isEmpty());
  EXPECT_EQ(log(), ohne);
}

TEST_F(EinfuegenAutomation, NothingGoesOutWithoutRowDrawingPointOrHost) {
  const QString code = blockAnlegen(1, "Tisch", {{0, 0, 0}, {1, 1, 0}});
  oeffnen();
  // A free slot: message 95.
  ins_->cmbEinfuegen_Click();
  EXPECT_TRUE(gezeigt(95));
  // The board cancelled.
  bv_->lisBlockBenennung_Click(1);
  prompt_->dialogResult("frmVariaEinfuegepkte", 0);
  ins_->cmbEinfuegen_Click();
  // The drawing missing: 288 and 289.
  QFile::remove(zeichnung(code, 0));
  punktWaehlen(0);
  ins_->cmbEinfuegen_Click();
  EXPECT_TRUE(gezeigt(288));
  EXPECT_TRUE(gezeigt(289));
  EXPECT_TRUE(log().isEmpty());
  EXPECT_EQ(prompt_->unexpected(), 0);
  EXPECT_FALSE(ins_->laeuft());
}

TEST_F(EinfuegenAutomation, AHostGoneAtTheHeadOfTheSeriesEndsTheProgram) {
  blockAnlegen(0, "Tisch");
  oeffnen();
  desk_.refuse << titel_;
  ins_->cmbEinfuegen_Click();
  EXPECT_EQ(exitCalls_, 1);
  EXPECT_EQ(ins_->bytAbbrechen, 1);
  const QString box = labels().fctBeschriftMsgboxZuordnen(67) + "\r\r" + labels().fctBeschriftMsgboxZuordnen(68) +
                      "\rAutoCAD 2014 " + labels().fctBeschriftMsgboxZuordnen(3);
  ASSERT_EQ(prompt_->asked.size(), 1);
  EXPECT_TRUE(prompt_->asked[0].contains(box));
  EXPECT_TRUE(gesendet().isEmpty());
  EXPECT_TRUE(log({"setVariable", "sendKeys"}).isEmpty());
  EXPECT_FALSE(ins_->laeuft());
}

TEST_F(EinfuegenAutomation, AHostThatRefusesTheSeriesIsReportedAndTheVariablesGoBack) {
  blockAnlegen(0, "Tisch");
  oeffnen();
  host_.failing << "sendCommand";
  ins_->cmbEinfuegen_Click();
  EXPECT_EQ(diagnostics().intFehlerAnzahl, 1);
  EXPECT_TRUE(prompt_->asked.value(0).contains("sendCommand failed"));
  // Reported, restored, and the run ends without bringing the host forward.
  EXPECT_EQ(log().mid(log().size() - 4),
            (QStringList{"sendCommand|(command \"._-insert\" \"" + kopie("Tisch") + "\" pause \"1\" \"1\" \"0\")\r",
                         "setVariable|attreq|1", "setVariable|orthomode|1", "setVariable|CMDECHO|0"}));
  EXPECT_FALSE(ins_->laeuft());
}

TEST_F(EinfuegenAutomation, TheSearchHitIsInsertedAsItStands) {
  const QString code = blockAnlegen(0, "Tisch");
  oeffnen(1);  // the page stands on a free slot; the search made the hit current
  bv_->aktivierteBlocknummer = code;
  ASSERT_TRUE(lib_->rsBlockInfo0.Find("Block = '" + code + "'"));
  ins_->byteEinfuegenUeberDatenbankSuche = 1;
  ins_->cmbEinfuegen_Click();
  EXPECT_EQ(gesendet().size(), 1);
  EXPECT_FALSE(gezeigt(95));
  // The search's own form stays in front: the host is not activated at the end.
  EXPECT_EQ(log().last(), "setVariable|CMDECHO|0");
  EXPECT_EQ(ins_->byteEinfuegenUeberDatenbankSuche, 0);
}

TEST_F(EinfuegenAutomation, TheLastBlockAgain) {
  // Nothing on record yet: 327 and 328.
  zweiPunkte();
  ins_->LBlockEinfuegen();
  EXPECT_TRUE(gezeigt(327));
  EXPECT_TRUE(gezeigt(328));
  EXPECT_TRUE(log().isEmpty());

  punktWaehlen(1);
  ins_->cmbEinfuegen_Click();
  const QStringList erstes = gesendet();
  ASSERT_EQ(erstes.size(), 2);
  // Another slot is active and free: lblock takes the record, not the page.
  log_.clear();
  bv_->lisBlockBenennung_Click(3);
  ins_->LBlockEinfuegen();
  EXPECT_EQ(gesendet(), erstes);
  EXPECT_EQ(prompt_->unexpected(), 0);
  EXPECT_EQ(ins_->bytLBlockAusfuehren, 0);
}

TEST_F(EinfuegenAutomation, DropAndVariantQuestion) {
  const QString code = blockAnlegen(0, "Tisch", {{5, 5, 0}, {10, 20, 0}});
  markieren(code, zeichnung(code, 0), 0, 2);
  oeffnen();
  QStringList gefragt;
  ins_->hooks.fctVariaEinfuegenKontroll = [&gefragt](const QString& dat) {
    gefragt << dat;
    return false;
  };
  // A drop takes its point (none: A) without board or variant question, and
  // leaves the marked list alone.
  ins_->dropEinfuegen();
  EXPECT_EQ(gesendet().size(), 1);
  EXPECT_TRUE(gefragt.isEmpty());
  log_.clear();
  ins_->dropEinfuegen(2);
  EXPECT_EQ(gesendet().value(1), "sendCommand|._move (entlast)  5,15,0 ");
  EXPECT_EQ(ins_->bytEinfuegenViaDragAndDrop, 0);
  EXPECT_EQ(markierteZeilen(), 1);
  // The button asks the variants of the view's list file first.
  log_.clear();
  settings_->setup.longVariantenfrage = 1;
  ins_->cmbEinfuegen_Click();
  EXPECT_EQ(gefragt, QStringList{bib_ + "/000/" + code + "0.dat"});
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join("\n").toStdString();
}

}  // namespace
}  // namespace kolvane

#include <QDir>

#include "cadtest.h"
#include "ltscript.h"

namespace kolvane {
namespace {

class LtScriptTest : public CadTest {
 protected:
  void SetUp() override {
    CadTest::SetUp();
    ltGebunden();
    d_.SpeicherortDerBlockzeichnung = "C:\\Bib\\000\\Block\\0001AAA0.dwg";
    d_.aktivierteBlocknummer = "0001AAA";
    d_.bytMarkierteAnsicht = 2;
  }
  QByteArray skript() const { return readFile(strSkriptDatei()); }
  LtEinfuegeDaten d_;
};

TEST_F(LtScriptTest, InsertScriptLineEightInAllThreeForms) {
  ASSERT_TRUE(subScriptSchreibenFuerLT(d_));
  EXPECT_EQ(strSkriptDatei(), env_.tempRoot + "bv8LT.scr");
  EXPECT_EQ(skript(),
            "._-insert\r\n\"C:\\Bib\\000\\Block\\0001AAA0.dwg\"\r\n'setvar\r\nfiledia\r\n1\r\n");

  d_.byteBlockAusBibliothek = 1;
  d_.strBlockName = "Ventil DN50";
  ASSERT_TRUE(subScriptSchreibenFuerLT(d_));
  EXPECT_EQ(skript(),
            "._-insert\r\n\"Ventil DN50=C:\\Bib\\000\\Block\\0001AAA0.dwg\"\r\n'setvar\r\nfiledia\r\n1\r\n");

  d_.strBlockName.clear();
  ASSERT_TRUE(subScriptSchreibenFuerLT(d_));
  EXPECT_EQ(skript(),
            "._-insert\r\n\"0001AAA2=C:\\Bib\\000\\Block\\0001AAA0.dwg\"\r\n'setvar\r\nfiledia\r\n1\r\n");
}

TEST_F(LtScriptTest, InsertScriptWithLayerAndXref) {
  d_.strLayer = "Sanitär";
  d_.longXRef = 1;
  ASSERT_TRUE(subScriptSchreibenFuerLT(d_));
  EXPECT_EQ(skript(), QStringLiteral("-layer\r\nse\r\nSanitär\r\n\r\n._-xref\r\nz\r\n\r\n"
                                     "\"C:\\Bib\\000\\Block\\0001AAA0.dwg\"\r\n'setvar\r\nfiledia\r\n1\r\n")
                          .toUtf8());

  // Without layer control no layer lines, whatever the block says.
  settings_->fctWertAllgInIniSpeichern("sOhneLayersteuerung", "1");
  d_.longXRef = 0;
  ASSERT_TRUE(subScriptSchreibenFuerLT(d_));
  EXPECT_EQ(skript(),
            "._-insert\r\n\"C:\\Bib\\000\\Block\\0001AAA0.dwg\"\r\n'setvar\r\nfiledia\r\n1\r\n");
}

TEST_F(LtScriptTest, ScriptFolderIsMadeWhenMissing) {
  QDir(env_.tempRoot).removeRecursively();
  ASSERT_TRUE(subScriptSchreibenFuerLT(d_));
  EXPECT_FALSE(skript().isEmpty());
}

TEST_F(LtScriptTest, InsertTypesTheScriptAndWaitsForTheClick) {
  d_.byteBlockAusBibliothek = 1;
  desk_.keys[1] = {1, 0, 0, 1};  // an old click is dropped; the third poll is the user's
  EXPECT_TRUE(ACadLtBlockEinfuegenTippen(*bridge_, d_));
  EXPECT_EQ(bridge_->Unterbrechung, 0);
  EXPECT_EQ(desk_.transcript,
            QStringList({"appActivate|AutoCAD LT", "sendKeys|{ESC}{ESC}|wait", "pause|200",
                         "sendKeys|expert 2\r|wait", "pause|200",
                         "sendKeys|filedia 0\rscript\r\"" + strSkriptDatei() + "\"\r|wait",
                         "pause|500", "sendKeys|\r\r\r|wait", "pause|500"}));
}

TEST_F(LtScriptTest, InsertAnswersThePromptsAsTheQuestionsSay) {
  desk_.keys[1] = {0, 1};
  d_.byteAbfrageEinfuegewinkel = 1;
  EXPECT_TRUE(ACadLtBlockEinfuegenTippen(*bridge_, d_));
  EXPECT_EQ(desk_.transcript.mid(desk_.transcript.size() - 3),
            QStringList({"pause|500", "sendKeys|\r\r|wait", "pause|500"}));
  // No "expert 2" for a drawing that is not inserted under a block name.
  EXPECT_FALSE(desk_.transcript.contains("sendKeys|expert 2\r|wait"));

  desk_.transcript.clear();
  desk_.keys[1] = {0, 1};
  d_.byteAbfrageEinfuegewinkel = 0;
  d_.byteAbfrageXFaktor = 1;
  EXPECT_TRUE(ACadLtBlockEinfuegenTippen(*bridge_, d_));
  EXPECT_EQ(desk_.transcript.mid(desk_.transcript.size() - 2),
            QStringList({"pause|500", "pause|500"}));
}

TEST_F(LtScriptTest, EscapeInTheClickWaitBreaksOff) {
  desk_.onKeyRead = [this](int vk, int n) {
    if (vk == 27 && n == 3) desk_.press(27);
  };
  EXPECT_TRUE(ACadLtBlockEinfuegenTippen(*bridge_, d_));
  EXPECT_EQ(bridge_->Unterbrechung, 1);
  EXPECT_EQ(desk_.transcript.last(), "sendKeys|filedia 0\rscript\r\"" + strSkriptDatei() + "\"\r|wait");
}

TEST_F(LtScriptTest, HostGoneAtTheInsertEndsTheProgram) {
  desk_.refuse << "AutoCAD LT";
  prompt_->answer(Answer::Ok);
  EXPECT_FALSE(ACadLtBlockEinfuegenTippen(*bridge_, d_));
  EXPECT_EQ(exitCalls_, 1);
  ASSERT_EQ(prompt_->asked.size(), 1);
  EXPECT_TRUE(prompt_->asked[0].contains("\rAutoCAD LT " + labels().fctBeschriftMsgboxZuordnen(3)));
  EXPECT_EQ(desk_.transcript, QStringList("appActivate|AutoCAD LT"));
}

TEST_F(LtScriptTest, ReplacedBackslashesAndBracesOnlyInTheTypedPath) {
  // A temporary root whose name holds a backslash and a bracket.
  settings_->sCTemp = path("lt\\(1)") + "/";
  settings_->fctWertAllgInIniSpeichern("sReplaceBackslash", "/");
  desk_.keys[1] = {0, 1};
  EXPECT_TRUE(ACadLtBlockEinfuegenTippen(*bridge_, d_));
  EXPECT_TRUE(desk_.transcript.contains("sendKeys|filedia 0\rscript\r\"" + path("lt/{(}1{)}") +
                                        "/bv8LT.scr\"\r|wait"));
  // The paths within the script keep their backslashes.
  EXPECT_TRUE(skript().contains("\"C:\\Bib\\000\\Block\\0001AAA0.dwg\""));
}

TEST_F(LtScriptTest, SlideByScriptWaitsForTheFile) {
  const QString slide = path("dia/0001AAA.sld");
  desk_.onKeyRead = [&](int vk, int n) {
    if (vk == 27 && n == 4) writeFile(slide, "AutoCAD Slide");
  };
  EXPECT_EQ(fctSlideMitLTErstellen(*bridge_, slide), -1);
  EXPECT_EQ(skript(), ("._mslide\r\n\"" + slide + "\"\r\n._filedia\r\n1\r\n").toUtf8());
  EXPECT_EQ(desk_.transcript,
            QStringList({"appActivate|AutoCAD LT", "sendKeys|{ESC}{ESC}|wait",
                         "sendKeys|_undo\r_m\rfiledia 0\rscript\r" + strSkriptDatei() + "\r|wait",
                         "pause|1000"}));
}

TEST_F(LtScriptTest, SlideByScriptEndsWithEscapeOrWithoutTheHost) {
  desk_.onKeyRead = [this](int vk, int n) {
    if (vk == 27 && n == 6) desk_.press(27);
  };
  EXPECT_EQ(fctSlideMitLTErstellen(*bridge_, path("nie.sld")), 0);
  EXPECT_FALSE(desk_.transcript.contains("pause|1000"));

  desk_.transcript.clear();
  desk_.refuse << "AutoCAD LT";
  EXPECT_EQ(fctSlideMitLTErstellen(*bridge_, path("nie.sld")), 0);
  EXPECT_EQ(desk_.transcript, QStringList("appActivate|AutoCAD LT"));
  EXPECT_TRUE(prompt_->asked.isEmpty());
  EXPECT_EQ(exitCalls_, 0);
}

TEST_F(LtScriptTest, OpenByScript) {
  EXPECT_EQ(fctOpenFileMitLT(*bridge_, "C:\\Bib\\000\\Block\\0001AAA0.dwg"), -1);
  EXPECT_EQ(skript(), "._open\r\n\"C:\\Bib\\000\\Block\\0001AAA0.dwg\"\r\n._filedia\r\n1\r\n");
  EXPECT_EQ(desk_.transcript,
            QStringList({"appActivate|AutoCAD LT", "sendKeys|{ESC}{ESC}|wait",
                         "sendKeys|filedia 0\rscript\r" + strSkriptDatei() + "\r|wait"}));
  desk_.refuse << "AutoCAD LT";
  EXPECT_EQ(fctOpenFileMitLT(*bridge_, "x.dwg"), 0);
}

}  // namespace
}  // namespace kolvane

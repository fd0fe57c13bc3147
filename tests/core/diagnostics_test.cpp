#include "diagnostics.h"
#include "inifile.h"
#include "kolvanetest.h"

namespace kolvane {
namespace {

class DiagnosticsTest : public KolvaneTest {
 protected:
  void SetUp() override {
    KolvaneTest::SetUp();
    settings_->subPfadeFestlegen();
    setDiagnosticsClock([this] { return clock_; });
  }
  QString errorText() { return QString::fromUtf8(readFile(settings_->strErrorDatei)); }
  QDateTime clock_ = QDateTime(QDate(2026, 1, 5), QTime(8, 0, 0));
};

TEST_F(DiagnosticsTest, ReportNamesRoutineStepsAndSourceOuterFirst) {
  {
    Trace outer("frmBlockverwaltung.Form_Load");
    outer.step("Verbindung zur Datenbank herstellen");
    Trace inner("ConnectionUndRecordsetOeffnen");
    inner.step("connDb:");
    subErrorAllgemein(true, "ConnectionUndRecordsetOeffnen", "Datei nicht gefunden", 53);
  }
  const QString text = errorText();
  const int outerAt = text.indexOf("frmBlockverwaltung.Form_Load: Verbindung zur Datenbank herstellen");
  const int innerAt = text.indexOf("ConnectionUndRecordsetOeffnen: connDb:");
  EXPECT_GE(outerAt, 0);
  EXPECT_GT(innerAt, outerAt);
  EXPECT_TRUE(text.contains("53 Datei nicht gefunden"));
  EXPECT_TRUE(text.contains("------------------------"));
  EXPECT_TRUE(traceSlots().isEmpty()) << "slots are cleared when routines leave";
  EXPECT_EQ(diagnostics().intFehlerAnzahl, 1);
}

TEST_F(DiagnosticsTest, BoxUnlessSilencedOrAllBoxesWanted) {
  subErrorAllgemein(false, "x", "sichtbar");
  ASSERT_EQ(prompt_->asked.size(), 1);
  EXPECT_TRUE(prompt_->asked[0].startsWith("message|subErrorAllgemein|Fehler: 0 sichtbar|0|48"));
  prompt_->asked.clear();
  subErrorAllgemein(true, "x", "still");
  EXPECT_TRUE(prompt_->asked.isEmpty());
  settings_->fctWertAllgInIniSpeichern("sShowAllErrorMsgbox", "1");
  subErrorAllgemein(true, "x", "doch sichtbar");
  EXPECT_FALSE(prompt_->asked.isEmpty());
}

TEST_F(DiagnosticsTest, StormStopEndsAtElevenReportsWithinAMinute) {
  for (int i = 0; i < 10; ++i) {
    clock_ = clock_.addSecs(5);
    subErrorAllgemein(true, "x", "Fehler");
  }
  EXPECT_EQ(exitCalls_, 0) << "ten reports are no storm";
  clock_ = clock_.addSecs(5);
  subErrorAllgemein(true, "x", "Fehler");
  EXPECT_EQ(exitCalls_, 1);
}

TEST_F(DiagnosticsTest, SlowReportsRestartTheCount) {
  for (int i = 0; i < 11; ++i) {
    clock_ = clock_.addSecs(7);  // the eleventh comes 77 s after the first
    subErrorAllgemein(true, "x", "Fehler");
  }
  EXPECT_EQ(exitCalls_, 0);
  EXPECT_EQ(diagnostics().intFehlerAnzahl, 0);
}

TEST_F(DiagnosticsTest, ProgramStopGuardSuppressesTheStormStop) {
  diagnostics().bytProgrammStop = 1;
  for (int i = 0; i < 12; ++i) subErrorAllgemein(true, "x", "Fehler");
  EXPECT_EQ(exitCalls_, 0);
}

TEST_F(DiagnosticsTest, ErrorBeforeTheSettingsAreReadStillReachesTheErrorFile) {
  Settings early(env_);  // constructed, settings file not yet looked at
  setCurrentSettings(&early);
  subErrorAllgemein(true, "Main", "zu früh");
  const QString file = env_.tempRoot + "txtErrorKolvane9.0.txt";
  EXPECT_TRUE(QString::fromUtf8(readFile(file)).contains("zu früh"));
  setCurrentSettings(nullptr);
  EXPECT_TRUE(errorFilePath().endsWith("txtErrorKvn9.0.txt"));
  setCurrentSettings(settings_.get());
}

TEST_F(DiagnosticsTest, DebugQuestionAndItsAnswers) {
  const QString ini = settings_->strIniDateiVerzeichnis;
  IniSetValue(ini, "AllgemeineDaten", "strDebug", "1");
  IniSetValue(ini, "AllgemeineDaten", "sErrMsgbox", "1");

  prompt_->answer(Answer::Yes);
  EXPECT_TRUE(fctGetCDebug(ini));
  EXPECT_TRUE(prompt_->asked.value(0).startsWith("message|Frage|Soll im Debug-Modus gestartet werden?"));
  EXPECT_FALSE(diagnostics().booErrMsgbox);

  prompt_->answer(Answer::No);
  EXPECT_FALSE(fctGetCDebug(ini));
  EXPECT_EQ(IniGetValue(ini, "AllgemeineDaten", "strDebug"), "1") << "No is for this run only";

  prompt_->answer(Answer::Cancel);
  EXPECT_FALSE(fctGetCDebug(ini));
  EXPECT_EQ(IniGetValue(ini, "AllgemeineDaten", "strDebug"), "0");
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(DiagnosticsTest, DebugFromTheCadAsksNothing) {
  const QString ini = settings_->strIniDateiVerzeichnis;
  IniSetValue(ini, "AllgemeineDaten", "strDebug", "1");
  IniSetValue(ini, "AllgemeineDaten", "sOhneMsgboxDaDll", "1");
  EXPECT_TRUE(fctGetCDebug(ini));
  EXPECT_TRUE(prompt_->asked.isEmpty());
  Trace t("Form_Load");
  t.step("ACAD_Connect");
  EXPECT_TRUE(errorText().contains("Form_Load: ACAD_Connect"));
}

TEST_F(DiagnosticsTest, DebugOffWritesNoTrace) {
  EXPECT_FALSE(fctGetCDebug(settings_->strIniDateiVerzeichnis));
  Trace t("Form_Load");
  t.step("ACAD_Connect");
  EXPECT_TRUE(errorText().isEmpty());
}

}  // namespace
}  // namespace kolvane

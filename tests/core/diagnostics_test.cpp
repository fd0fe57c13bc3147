#include "diagnostics.h"
#include "inifile.h"
#include "kolvanetest.h"
#include "labels.h"

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
  EXPECT_TRUE(prompt_->asked[0].startsWith("message|Kolvane – Fehler|")) << prompt_->asked[0].toStdString();
  EXPECT_TRUE(prompt_->asked[0].endsWith(": sichtbar|0|48")) << prompt_->asked[0].toStdString();
  prompt_->asked.clear();
  subErrorAllgemein(true, "x", "still");
  EXPECT_TRUE(prompt_->asked.isEmpty());
  settings_->fctWertAllgInIniSpeichern("sShowAllErrorMsgbox", "1");
  subErrorAllgemein(true, "x", "doch sichtbar");
  EXPECT_FALSE(prompt_->asked.isEmpty());
}

// The box names the failed action in words, in the labels' language; the
// error file keeps the raw report for support.
TEST_F(DiagnosticsTest, BoxSaysWhatFailedInWordsTheFileKeepsTheReport) {
  installData();
  auto laden = [&](const QString& sprache) {
    settings_->strSprache = sprache;
    ASSERT_TRUE(labels().fctSpracheAuslesen(0));
    labels().fctBeschriftungsFileZuordnenIni();
  };
  laden("deutsch");
  subErrorAllgemein(false, "comboxVerzeichnis_Click", "Datei nicht gefunden", 53);
  subErrorAllgemein(false, "irgendeineRoutine", "Platte voll");
  ASSERT_EQ(prompt_->asked.size(), 2);
  EXPECT_EQ(prompt_->asked[0],
            "message|Kolvane – Fehler|Die Bibliothek konnte nicht geöffnet werden: Datei nicht gefunden (53)|0|48");
  EXPECT_EQ(prompt_->asked[1], "message|Kolvane – Fehler|Es ist ein Fehler aufgetreten: Platte voll|0|48");
  const QString datei = errorText();
  EXPECT_TRUE(datei.contains("53 Datei nicht gefunden\ncomboxVerzeichnis_Click\n")) << datei.toStdString();
  EXPECT_TRUE(datei.contains("0 Platte voll\nirgendeineRoutine\n"));

  laden("english");
  prompt_->asked.clear();
  subErrorAllgemein(false, "ChangeDb", "not a database");
  ASSERT_EQ(prompt_->asked.size(), 1);
  EXPECT_EQ(prompt_->asked[0], "message|Kolvane - Error|The library could not be opened: not a database|0|48");

  // Every action the German file names, the English one names too.
  const IniData de = IniData::load(settings_->labelDir() + "/Frm_deutsch.txt");
  const IniData en = IniData::load(settings_->labelDir() + "/Frm_english.txt");
  int fehler = 0;
  for (const QString& k : de.keys("Speziell")) {
    if (!k.startsWith("Fehler.", Qt::CaseInsensitive)) continue;
    ++fehler;
    EXPECT_FALSE(en.value("Speziell", k).isEmpty()) << k.toStdString();
  }
  EXPECT_GE(fehler, 3);
  laden("deutsch");
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

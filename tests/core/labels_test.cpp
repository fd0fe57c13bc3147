#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include "inifile.h"
#include "kolvanetest.h"
#include "labels.h"
#include "msgbox.h"

namespace kolvane {
namespace {

class LabelsTest : public KolvaneTest {
 protected:
  void SetUp() override {
    KolvaneTest::SetUp();
    settings_->subPfadeFestlegen();
  }
  QString labelDir() const { return settings_->labelDir(); }
  void writeLabels(const QString& lang, const QByteArray& frm, const QByteArray& msg) {
    if (!frm.isNull()) writeFile(labelDir() + "/Frm_" + lang + ".txt", frm);
    if (!msg.isNull()) writeFile(labelDir() + "/Msgbox_" + lang + ".txt", msg);
  }
  Labels labels_;
};

TEST_F(LabelsTest, DefaultLanguageIsDeutsch) {
  writeLabels("deutsch", "[Allg]\n1=Info\n", "[Allg]\n3=drei\n");
  ASSERT_TRUE(labels_.fctSpracheAuslesen(0));
  EXPECT_EQ(labels_.language(), "deutsch");
  EXPECT_TRUE(labels_.strMsgboxDatei.endsWith("txtBeschriftKolvane9.0/Msgbox_deutsch.txt"));
}

TEST_F(LabelsTest, LanguageWhoseFilesWereDeletedFallsBackToDeutsch) {
  writeLabels("deutsch", "[Allg]\n", "[Allg]\n");
  settings_->strSprache = "english";
  ASSERT_TRUE(labels_.fctSpracheAuslesen(0));
  EXPECT_EQ(labels_.language(), "deutsch");
  writeLabels("english", "[Allg]\n", QByteArray());  // Frm only
  EXPECT_TRUE(labels_.fctSpracheAuslesen(1));
  EXPECT_EQ(labels_.language(), "english");
  EXPECT_TRUE(labels_.fctSpracheAuslesen(0));
  EXPECT_EQ(labels_.language(), "deutsch");
}

TEST_F(LabelsTest, MissingLabelFolderIsNoStart) {
  EXPECT_FALSE(labels_.fctSpracheAuslesen(0));
  settings_->strSprache = "english";
  EXPECT_FALSE(labels_.fctSpracheAuslesen(0));
}

TEST_F(LabelsTest, OnlyLanguagesWithBothFilesAreOffered) {
  writeLabels("deutsch", "[Allg]\n", "[Allg]\n");
  writeLabels("english", "[Allg]\n", "[Allg]\n");
  writeLabels("francais", "[Allg]\n", QByteArray());
  QStringList all;
  EXPECT_EQ(Labels::fctAnzahlSprachen(all, labelDir()), 3);
  EXPECT_EQ(Labels::subCboSprachenEinlesen(labelDir()), QStringList({"deutsch", "english"}));
}

TEST_F(LabelsTest, KeyRuleNumbersBelowFiftyLiveInAllg) {
  writeLabels("deutsch",
              "[Allg]\n3=Titel drei\n60=falsch\n[Gruppe]\n60=Gruppe sechzig\n[Speziell]\n3=falsch\n"
              "60=Speziell sechzig\nProgName=Kolvane $\n",
              "[Allg]\n");
  ASSERT_TRUE(labels_.fctSpracheAuslesen(0));
  labels_.fctBeschriftungsFileZuordnenIni();
  EXPECT_EQ(labels_.fctBeschriftFrmZuordnen(3), "Titel drei");
  EXPECT_EQ(labels_.fctBeschriftFrmZuordnen(3, LabelSektion::Speziell), "Titel drei");
  EXPECT_EQ(labels_.fctBeschriftFrmZuordnen(60), "Speziell sechzig");
  EXPECT_EQ(labels_.fctBeschriftFrmZuordnen(60, LabelSektion::Gruppe), "Gruppe sechzig");
  EXPECT_EQ(labels_.fctBeschriftFrmZuordnen("ProgName"), "Kolvane $");
  EXPECT_EQ(labels_.fctBeschriftFrmZuordnen(999), "") << "a missing label is empty, no error";
}

TEST_F(LabelsTest, CacheServesLookupsAndRawReadsTheFile) {
  writeLabels("deutsch", "[Speziell]\n93=Seitenname\n", "[Allg]\n");
  ASSERT_TRUE(labels_.fctSpracheAuslesen(0));
  labels_.fctBeschriftungsFileZuordnenIni();
  writeLabels("deutsch", "[Speziell]\n93=geändert\n", QByteArray());
  EXPECT_EQ(labels_.fctBeschriftFrmZuordnen(93), "Seitenname");
  EXPECT_EQ(labels_.fctBeschriftFrmZuordnen(93, LabelSektion::Speziell, true), "geändert");
}

// The boxes of the program's own label files.
class MessageBoxTest : public KolvaneTest {
 protected:
  void SetUp() override {
    KolvaneTest::SetUp();
    installData();
    settings_->subPfadeFestlegen();
    ASSERT_TRUE(labels().fctSpracheAuslesen(0));
    labels().fctBeschriftungsFileZuordnenIni();
  }
  static QString msg(int nr) { return labels().fctBeschriftMsgboxZuordnen(nr); }
  static QString frm(int nr) { return labels().fctBeschriftFrmZuordnen(nr, LabelSektion::Allg); }
};

TEST_F(MessageBoxTest, FamilyBuildsLinesTitlesAndIcons) {
  subMsgboxInfoZweizeilig2(117, 118);
  EXPECT_EQ(prompt_->asked.value(0),
            "message|" + frm(1) + "|" + msg(117) + "\r\r" + msg(118) + "|0|64");
  prompt_->asked.clear();
  subMsgboxHinweisDreizeilig(77, 78, 79);
  EXPECT_EQ(prompt_->asked.value(0),
            "message|" + frm(2) + "|" + msg(77) + "\r" + msg(78) + "\r" + msg(79) + "|0|48");
  prompt_->asked.clear();
  prompt_->answer(Answer::Yes);
  EXPECT_TRUE(fctMsgboxFrageEinzeilig(131));
  EXPECT_EQ(prompt_->asked.value(0), "message|" + frm(4) + "|" + msg(131) + "|4|36");
  prompt_->answer(Answer::Cancel);
  EXPECT_EQ(fctMsgboxFrageDreizeilig12(229, 230, 231), Answer::Cancel);
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(MessageBoxTest, SilencedBoxStaysSilentAfterARestart) {
  prompt_->answerWithCheck(Answer::Ok, true);
  fctmsgboxMitChkAnzeigen("TestBox", "Text", "Titel");
  EXPECT_EQ(prompt_->asked.size(), 1);
  Settings restarted(env_);
  restarted.subPfadeFestlegen();
  setCurrentSettings(&restarted);
  EXPECT_EQ(fctmsgboxMitChkAnzeigen("TestBox", "Text", "Titel"), Answer::Ok);
  EXPECT_EQ(prompt_->asked.size(), 1) << "nothing shown";
  setCurrentSettings(settings_.get());
}

// Every message and label number the program uses has a German text, and the
// English set has the same keys.
TEST_F(MessageBoxTest, EveryNamedNumberHasAGermanText) {
  QFile list(sourceDir() + "/tests/core/data/label_numbers.txt");
  ASSERT_TRUE(list.open(QIODevice::ReadOnly)) << list.fileName().toStdString();
  int checked = 0;
  QStringList missing;
  for (QString line : QString::fromUtf8(list.readAll()).split('\n')) {
    line = line.section('#', 0, 0).trimmed();
    if (line.isEmpty()) continue;
    const QString kind = line.section(' ', 0, 0);
    const QString key = line.section(' ', 1).trimmed();
    QString text;
    if (kind == "msgbox" || kind == "msgbox-key") text = labels().fctBeschriftMsgboxZuordnen(key);
    else if (kind == "frm" || kind == "frm-key") text = labels().fctBeschriftFrmZuordnen(key);
    else if (kind == "tooltip" || kind == "tooltip-key") text = labels().tooltip(key);
    else missing << "bad line: " + line;
    if (text.trimmed().isEmpty()) missing << line;
    ++checked;
  }
  EXPECT_GT(checked, 100);
  EXPECT_TRUE(missing.isEmpty()) << missing.join(", ").toStdString();
}

TEST_F(MessageBoxTest, EnglishHasEveryGermanKey) {
  for (const char* kind : {"Frm", "Msgbox", "Tooltip"}) {
    const QString de = settings_->labelDir() + "/" + kind + "_deutsch.txt";
    const QString en = settings_->labelDir() + "/" + kind + "_english.txt";
    const IniData d = IniData::load(de), e = IniData::load(en);
    ASSERT_TRUE(d.exists() && e.exists()) << kind;
    for (const char* sec : {"Allg", "Gruppe", "Speziell"})
      for (const QString& k : d.keys(sec))
        EXPECT_FALSE(e.value(sec, k).isEmpty()) << kind << " " << sec << " " << k.toStdString();
  }
}

}  // namespace
}  // namespace kolvane

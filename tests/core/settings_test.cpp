#include <QDir>
#include <QFile>

#include "inifile.h"
#include "kolvanetest.h"
#include "settings.h"

namespace kolvane {
namespace {

class SettingsTest : public KolvaneTest {
 protected:
  void SetUp() override {
    KolvaneTest::SetUp();
    settings_->subPfadeFestlegen();
  }
  QString ini() const { return settings_->strIniDateiVerzeichnis; }
  std::unique_ptr<Settings> fresh() {
    auto s = std::make_unique<Settings>(env_);
    s->subPfadeFestlegen();
    return s;
  }
};

TEST_F(SettingsTest, IniFileAndTempRootFollowWhereTheIniLies) {
  // No ini beside the program: the config folder holds it, and the temporary root moves there.
  EXPECT_EQ(ini(), env_.configDir + "Kolvane9.0.ini");
  EXPECT_EQ(settings_->sCTemp, env_.configDir);
  EXPECT_EQ(settings_->strErrorDatei, env_.configDir + "txtErrorKolvane9.0.txt");

  writeFile(env_.programDir + "/Kolvane9.0.ini", "[AllgemeineDaten]\nsCTemp=" + path("t2").toUtf8() + "\n");
  settings_->subPfadeFestlegen();
  EXPECT_EQ(ini(), env_.programDir + "/Kolvane9.0.ini");
  EXPECT_EQ(settings_->sCTemp, path("t2") + "/");
}

TEST_F(SettingsTest, FirstStartIsAMissingFileAZeroOrAnEmptyFirstEntry) {
  EXPECT_FALSE(settings_->fctLesenKolvaneIniDatei());
  EXPECT_EQ(IniGetValue(ini(), "AllgemeineDaten", "DbVerzeichnis0"), "0");
  EXPECT_FALSE(settings_->fctLesenKolvaneIniDatei());
  IniSetValue(ini(), "AllgemeineDaten", "DbVerzeichnis0", "");
  EXPECT_FALSE(settings_->fctLesenKolvaneIniDatei());
  IniSetValue(ini(), "AllgemeineDaten", "DbVerzeichnis0", "/lib/dbKolvane.mdb");
  EXPECT_TRUE(settings_->fctLesenKolvaneIniDatei());
}

TEST_F(SettingsTest, OldIniIsConvertedAtFirstRead) {
  writeFile(env_.programDir + "/KolvaneV8.ini", "8.0\r\n8.5\r\n/data/a/dbKolvane.mdb\r\n/data/b/dbKolvane.mdb\r\n");
  EXPECT_TRUE(settings_->fctLesenKolvaneIniDatei());
  settings_->subLesenKolvaneIniDatei();
  EXPECT_EQ(settings_->aryVerzeichnisseDatenbank,
            QStringList({"/data/a/dbKolvane.mdb", "/data/b/dbKolvane.mdb"}));
}

TEST_F(SettingsTest, LibraryListEndsAtTheFirstGap) {
  writeFile(ini(), "[AllgemeineDaten]\nDbVerzeichnis0=/a\nDbVerzeichnis1=/b\nDbVerzeichnis2=\nDbVerzeichnis3=/d\n");
  settings_->subLesenKolvaneIniDatei();
  EXPECT_EQ(settings_->aryVerzeichnisseDatenbank, QStringList({"/a", "/b"}));
  writeFile(ini(), "[AllgemeineDaten]\nDbVerzeichnis0=\n");
  settings_->subLesenKolvaneIniDatei();
  EXPECT_EQ(settings_->aryVerzeichnisseDatenbank.size(), 1);
}

TEST_F(SettingsTest, SavingTheListDropsRemovedLibraries) {
  settings_->aryVerzeichnisseDatenbank = {"/a", "/b", "/c"};
  settings_->subSpeichernKolvaneIniDatei();
  settings_->aryVerzeichnisseDatenbank = {"/c"};
  settings_->subSpeichernKolvaneIniDatei();
  auto s = fresh();
  s->subLesenKolvaneIniDatei();
  EXPECT_EQ(s->aryVerzeichnisseDatenbank, QStringList({"/c"}));
  EXPECT_EQ(IniGetValue(ini(), "AllgemeineDaten", "DbVerzeichnis1"), "");
}

TEST_F(SettingsTest, EmptyStoreGivesEveryDefault) {
  EXPECT_FALSE(settings_->fctKeyKolvaneExist());
  EXPECT_TRUE(settings_->fctKeyKolvaneExist());  // created by the first question
  settings_->setup.longDoppelklick = 3;
  settings_->SetupEinstellungenEinlesen();
  SetupWerte expected;
  expected.strVerzeichnisVorgabe = env_.homeDir + "/Kolvane/";
  EXPECT_EQ(settings_->setup, expected);
  EXPECT_EQ(settings_->setup.lonFrmWidth, 10470);
  EXPECT_EQ(settings_->setup.strMassstabX, "1.0");
}

TEST_F(SettingsTest, EverySetupValueSurvivesSaveAndFreshRead) {
  SetupWerte w;
  int n = 7;
  for (const SetupFeld& f : setupTabelle()) {
    if (f.zahl) w.*f.zahl = n++;
    else w.*f.text = QString("Text %1 mit Ä").arg(n++);
  }
  settings_->setup = w;
  settings_->strAktuelleDatenbank = "/lib/dbKolvane.mdb";
  settings_->SetupInRegistrierdatenbankSpeichern();
  auto s = fresh();
  s->SetupEinstellungenEinlesen();
  EXPECT_EQ(s->setup, w);
}

TEST_F(SettingsTest, ABadValueKeepsItsDefaultAndTheRestIsRead) {
  settings_->fctKeyKolvaneExist();
  settings_->fctSetupWertSpeichern("longAnzahlDerBilder", "kaputt");
  settings_->fctSetupWertSpeichern("longDoppelklick", 3);
  settings_->SetupEinstellungenEinlesen();
  EXPECT_EQ(settings_->setup.longAnzahlDerBilder, 4);
  EXPECT_EQ(settings_->setup.longDoppelklick, 3);
  // The bad value was not rewritten behind the user's back.
  EXPECT_EQ(settings_->store().fctRegLesen(settings_->strRegistryPfad + "\\Setup", "longAnzahlDerBilder").toString(),
            "kaputt");
}

TEST_F(SettingsTest, CurrentLibraryMustBeInTheList) {
  settings_->aryVerzeichnisseDatenbank = {"/a/dbKolvane.mdb", "/b/dbKolvane.mdb"};
  settings_->fctKeyKolvaneExist();
  settings_->fctSetupWertSpeichern("Eintrag1", QString("/b/dbKolvane.mdb") + QChar(0));
  settings_->EintraegeAusRegistrierdatenbank();
  EXPECT_EQ(settings_->strAktuelleDatenbank, "/b/dbKolvane.mdb");
  settings_->fctSetupWertSpeichern("Eintrag1", "/gone/dbKolvane.mdb");
  settings_->EintraegeAusRegistrierdatenbank();
  EXPECT_EQ(settings_->strAktuelleDatenbank, "/a/dbKolvane.mdb");
}

TEST_F(SettingsTest, UnwritableStoreLeavesDefaults) {
  // The store's file is a directory: nothing can be written, nothing breaks.
  QDir().mkpath(path("blocked.ini"));
  env_.userStoreFile = path("blocked.ini");
  Settings s(env_);
  s.subPfadeFestlegen();
  s.SetupInRegistrierdatenbankSpeichern();
  s.SetupEinstellungenEinlesen();
  EXPECT_EQ(s.setup.longAnzahlDerBilder, 4);
  EXPECT_EQ(s.setup.longDoppelklick, 1);
}

TEST_F(SettingsTest, SilencedBoxStaysSilentAfterRestart) {
  EXPECT_FALSE(settings_->fctMsgboxNichtMehrAnzeigen("Box1"));
  settings_->fctMsgboxNichtMehrAnzeigenSpeichern("Box1");
  auto s = fresh();
  EXPECT_TRUE(s->fctMsgboxNichtMehrAnzeigen("box1"));
  EXPECT_FALSE(s->fctMsgboxNichtMehrAnzeigen("Box2"));
}

TEST_F(SettingsTest, PositionOfALibrary) {
  const QString lib = path("lib");
  EXPECT_EQ(Settings::readPosition(lib).s1, 0);
  Settings::writePosition(lib, {"004", 7, 3});
  const Position p = Settings::readPosition(lib);
  EXPECT_EQ(p.strAktuelleOrdnerNr, "004");
  EXPECT_EQ(p.s1, 7);
  EXPECT_EQ(p.pos, 3);
  EXPECT_EQ(IniGetValue(lib + "/dbKolvane.ini", "Position", "Pos"), "3");
}

TEST_F(SettingsTest, DefaultDirectoryIsUpdatedOnlyWhenItChanges) {
  settings_->subVerzeichnisVorgabeAktualisieren(path("x/file.dwg"), false);
  EXPECT_EQ(settings_->strVerzeichnisVorgabe, path("x") + "/");
  EXPECT_EQ(settings_->allg("VerzeichnisVorgabe"), path("x") + "/");
  settings_->subVerzeichnisVorgabeAktualisieren(path("y"), true);
  EXPECT_EQ(settings_->strVerzeichnisVorgabe, path("y") + "/");
}

}  // namespace
}  // namespace kolvane

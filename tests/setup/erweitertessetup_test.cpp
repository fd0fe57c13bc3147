// frmErweitertesSetup: the list of libraries, pictures per page, back colour
// and language survive a restart; Cancel leaves the files alone; the label
// files of both languages have the same keys.
#include <QComboBox>
#include <QCryptographicHash>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <tuple>

#include "erweitertessetup.h"
#include "frmerweitertessetup.h"
#include "inifile.h"
#include "kolvanetest.h"
#include "labels.h"
#include "schema.h"

namespace kolvane {
namespace {

class ErweitertesSetupTest : public KolvaneTest {
 protected:
  void SetUp() override {
    KolvaneTest::SetUp();
    installData();
    Settings& s = *settings_;
    s.subPfadeFestlegen();
    s.fctLesenKolvaneIniDatei();
    db1_ = bibliothek("lib1");
    s.aryVerzeichnisseDatenbank = {db1_};
    s.strAktuelleDatenbank = db1_;
    s.subSpeichernKolvaneIniDatei();
    s.fctKeyKolvaneExist();
    s.subSetupStandardZuweisen();
    s.SetupInRegistrierdatenbankSpeichern();
    s.strSprache.clear();
    ASSERT_TRUE(labels().fctSpracheAuslesen());
    labels().fctBeschriftungsFileZuordnenIni();
  }

  // A working library in a directory below the test's own.
  QString bibliothek(const QString& dir) {
    QDir().mkpath(path(dir));
    const QString db = path(dir + "/dbKolvane.mdb");
    EXPECT_TRUE(Mk_Datenbank(db));
    return db;
  }

  std::unique_ptr<Settings> neustart() const {
    auto s = std::make_unique<Settings>(env_);
    s->subPfadeFestlegen();
    s->fctLesenKolvaneIniDatei();
    s->subLesenKolvaneIniDatei();
    s->fctKeyKolvaneExist();
    s->EintraegeAusRegistrierdatenbank();
    s->SetupEinstellungenEinlesen();
    return s;
  }

  QByteArray dateienHash() const {
    QCryptographicHash h(QCryptographicHash::Sha256);
    h.addData(readFile(settings_->strIniDateiVerzeichnis));
    h.addData("\n--\n");
    h.addData(readFile(env_.userStoreFile));
    return h.result();
  }

  QString db1_;
};

TEST_F(ErweitertesSetupTest, LibrariesAreAddedCheckedRemovedAndReorderedAcrossARestart) {
  const QString db2 = bibliothek("lib2");
  const QString db3 = bibliothek("Lib3");
  QDir().mkpath(path("leer"));
  writeFile(path("kaputt/dbKolvane.mdb"), "kein SQLite");

  ErweitertesSetup logik(*settings_);
  int geaendert = 0;
  logik.hooks.bibliothekenGeaendert = [&] { ++geaendert; };
  EXPECT_EQ(logik.datenbanken(), QStringList{db1_});
  EXPECT_TRUE(logik.istAktuell(0));

  // Through the folder chooser; a directory without a library is refused with
  // a message that names it and says why.
  prompt_->text(path("lib2"));
  EXPECT_TRUE(logik.cmbDatenbankHinzufuegen_Click());
  for (const QString& schlecht : {path("leer"), path("kaputt"), path("gibtsnicht")}) {
    prompt_->asked.clear();
    EXPECT_FALSE(logik.hinzufuegen(schlecht)) << schlecht.toStdString();
    ASSERT_EQ(prompt_->asked.size(), 1);
    const QString m = prompt_->asked[0];
    EXPECT_TRUE(m.startsWith("message|")) << m.toStdString();
    EXPECT_TRUE(m.contains(QDir::toNativeSeparators(schlecht))) << m.toStdString();
    EXPECT_TRUE(m.contains(labels().fctBeschriftMsgboxZuordnen(ErweitertesSetup::kMeldungKeineBibliothek)));
    EXPECT_GE(m.count('\r'), 2) << "the reason and what stays: " << m.toStdString();
  }
  // Already listed, also by its file or in other case: refused.
  prompt_->asked.clear();
  EXPECT_FALSE(logik.hinzufuegen(db2));
  EXPECT_FALSE(logik.hinzufuegen(path("LIB1")));
  EXPECT_EQ(prompt_->asked.size(), 2);
  EXPECT_TRUE(logik.hinzufuegen(db3));  // the file itself is fine too
  ASSERT_EQ(logik.datenbanken(), (QStringList{db1_, db2, db3}));
  EXPECT_EQ(logik.auswahl, 2);

  // The library in use stays.
  prompt_->asked.clear();
  logik.auswahl = 0;
  EXPECT_FALSE(logik.cmdLoeschen_Click());
  EXPECT_EQ(prompt_->asked.size(), 1);
  EXPECT_FALSE(logik.nachOben());
  // db3 to the top, db2 removed.
  logik.auswahl = 2;
  EXPECT_TRUE(logik.nachOben());
  EXPECT_TRUE(logik.nachOben());
  EXPECT_FALSE(logik.nachOben());
  EXPECT_EQ(logik.auswahl, 0);
  logik.auswahl = 2;
  EXPECT_FALSE(logik.nachUnten());
  EXPECT_TRUE(logik.cmdLoeschen_Click());
  EXPECT_EQ(logik.auswahl, 1);
  ASSERT_EQ(logik.datenbanken(), (QStringList{db3, db1_}));
  EXPECT_TRUE(QFileInfo::exists(db2)) << "removed from the list, not from the disk";

  ASSERT_TRUE(logik.cmbOk_Click());
  EXPECT_EQ(geaendert, 1);
  auto neu = neustart();
  EXPECT_EQ(neu->aryVerzeichnisseDatenbank, (QStringList{db3, db1_}));
  EXPECT_EQ(neu->strAktuelleDatenbank, db1_);
  EXPECT_EQ(neu->allg("DbVerzeichnis2"), "") << "a removed library does not come back";
}

TEST_F(ErweitertesSetupTest, ANewLibraryIsMadeThroughTheStoreAndNeverOverAnExistingOne) {
  ErweitertesSetup ohne(*settings_);
  EXPECT_FALSE(ohne.cmbDatenbankNeu_Click()) << "not offered without the store's routine";

  ErweitertesSetup logik(*settings_);
  QStringList gemacht;
  logik.hooks.datenbankNeu = [&](const QString& pfad) {
    gemacht << pfad;
    QDir().mkpath(QFileInfo(pfad).absolutePath());
    return Mk_Datenbank(pfad);
  };
  // The chooser's file name doesn't matter: a library's file has its own.
  prompt_->text(path("neu/irgendwas.mdb"));
  EXPECT_TRUE(logik.cmbDatenbankNeu_Click());
  ASSERT_EQ(gemacht, QStringList{QDir::toNativeSeparators(path("neu/dbKolvane.mdb"))});
  EXPECT_EQ(logik.datenbanken().size(), 2);
  EXPECT_EQ(logik.auswahl, 1);

  bibliothek("alt");
  prompt_->asked.clear();
  prompt_->text(path("alt/dbKolvane.mdb"));
  EXPECT_FALSE(logik.cmbDatenbankNeu_Click());
  EXPECT_EQ(gemacht.size(), 1);
  EXPECT_TRUE(prompt_->asked.last().startsWith("message|"));
  prompt_->cancel();
  EXPECT_FALSE(logik.cmbDatenbankNeu_Click());
}

TEST_F(ErweitertesSetupTest, PicturesPerPageAndBackColourRedrawAtOnceAndSurviveARestart) {
  ErweitertesSetup logik(*settings_);
  int anzeige = 0;
  logik.hooks.anzeigeGeaendert = [&] { ++anzeige; };
  EXPECT_EQ(logik.comboxBilderanzahl, 4);
  EXPECT_FALSE(logik.hintergrund().isValid());
  EXPECT_EQ(ErweitertesSetup::bilderanzahlEintraege().size(), 8);

  logik.comboxBilderanzahl = 7;
  logik.setHintergrund(QColor(10, 20, 200));
  ASSERT_TRUE(logik.cmbOk_Click());
  EXPECT_EQ(anzeige, 1);
  EXPECT_EQ(settings_->setup.longAnzahlDerBilder, 7);
  auto neu = neustart();
  EXPECT_EQ(neu->setup.longAnzahlDerBilder, 7);
  // Kept as the Windows edition kept it: blue in the high byte.
  EXPECT_EQ(neu->allg("sBkColor"), QString::number(200L << 16 | 20L << 8 | 10L));

  // Read back into the dialog; the default again removes the key.
  ErweitertesSetup wieder(*neu);
  EXPECT_EQ(wieder.comboxBilderanzahl, 7);
  EXPECT_EQ(wieder.hintergrund(), QColor(10, 20, 200));
  wieder.setHintergrund(QColor());
  ASSERT_TRUE(wieder.cmbOk_Click());
  EXPECT_FALSE(fctIniSchluessel(neu->strIniDateiVerzeichnis, "AllgemeineDaten").contains("sBkColor"));

  // A stored value out of range shows as the default entry.
  settings_->setup.longAnzahlDerBilder = 12;
  EXPECT_EQ(ErweitertesSetup(*settings_).comboxBilderanzahl, 4);
}

TEST_F(ErweitertesSetupTest, TheLanguagesAreThoseWithBothFilesAndAChoiceHoldsAtTheNextStart) {
  // Captions alone are not a language.
  writeFile(settings_->labelDir() + "/Frm_francais.txt", "[Allg]\n1=Info\n");
  ErweitertesSetup logik(*settings_);
  EXPECT_EQ(logik.sprachen(), (QStringList{"deutsch", "english"}));
  EXPECT_EQ(logik.sprache, "deutsch");

  logik.sprache = "english";
  ASSERT_TRUE(logik.cmbOk_Click());
  ASSERT_EQ(prompt_->asked.size(), 1);
  EXPECT_TRUE(prompt_->asked[0].startsWith("message|"));
  EXPECT_TRUE(prompt_->asked[0].contains(labels().fctBeschriftMsgboxZuordnen(ErweitertesSetup::kMeldungSpracheNeustart2)));

  auto neu = neustart();
  EXPECT_EQ(neu->strSprache, "english");
  setCurrentSettings(neu.get());
  ASSERT_TRUE(labels().fctSpracheAuslesen());
  EXPECT_EQ(labels().language(), "english");
  setCurrentSettings(settings_.get());
}

TEST_F(ErweitertesSetupTest, CancelLeavesTheFilesAsTheyWere) {
  const QByteArray hash = dateienHash();
  const QString db2 = bibliothek("lib2");
  ErweitertesSetup logik(*settings_);
  ASSERT_TRUE(logik.hinzufuegen(path("lib2")));
  logik.comboxBilderanzahl = 1;
  logik.setHintergrund(Qt::black);
  logik.sprache = "english";
  prompt_->dialogResult("frmErweitertesSetup", 0);
  EXPECT_EQ(zeigeErweitertesSetup(logik, nullptr), 0);
  EXPECT_EQ(dateienHash(), hash);
  EXPECT_EQ(settings_->aryVerzeichnisseDatenbank, QStringList{db1_});
  EXPECT_EQ(settings_->setup.longAnzahlDerBilder, 4);

  // OK on an unchanged dialog writes nothing either.
  ErweitertesSetup gleich(*settings_);
  prompt_->dialogResult("frmErweitertesSetup", 1);
  EXPECT_EQ(zeigeErweitertesSetup(gleich, nullptr), 1);
  EXPECT_EQ(dateienHash(), hash);
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(ErweitertesSetupTest, TheDialogShowsTheListAndItsButtonsFollowTheSelection) {
  const QString db2 = bibliothek("lib2");
  settings_->aryVerzeichnisseDatenbank = {db1_, db2};
  settings_->setup.longAnzahlDerBilder = 5;
  ErweitertesSetup logik(*settings_);
  FrmErweitertesSetup f(logik);
  f.show();
  auto* liste = f.findChild<QListWidget*>("cboDatenbanken");
  ASSERT_TRUE(liste);
  ASSERT_EQ(liste->count(), 2);
  EXPECT_TRUE(liste->item(0)->font().bold());
  EXPECT_FALSE(f.findChild<QPushButton*>("cmdLoeschen")->isEnabled()) << "the library in use";
  auto* import = f.findChild<QPushButton*>("cmbDatenbankImport");
  EXPECT_FALSE(import->isEnabled());
  EXPECT_FALSE(import->toolTip().isEmpty());
  EXPECT_FALSE(f.findChild<QPushButton*>("cmbDatenbankNeu")->isEnabled());
  EXPECT_EQ(f.findChild<QComboBox*>("comboxBilderanzahl")->currentIndex(), 5);
  EXPECT_EQ(f.findChild<QComboBox*>("cboSprachen")->currentText(), "deutsch");

  liste->setCurrentRow(1);
  EXPECT_TRUE(f.findChild<QPushButton*>("cmdLoeschen")->isEnabled());
  f.findChild<QPushButton*>("cmdNachOben")->click();
  EXPECT_EQ(liste->item(0)->text(), QDir::toNativeSeparators(db2));
  EXPECT_EQ(liste->currentRow(), 0);

  const QImage bild = f.grab().toImage();
  EXPECT_GT(bild.width(), 400);
  const QString ziel = qEnvironmentVariable("KOLVANE_BILDER", path("."));
  EXPECT_TRUE(bild.save(QDir(ziel).filePath("frmErweitertesSetup.png")));

  f.findChild<QPushButton*>("cmbOk")->click();
  EXPECT_EQ(neustart()->aryVerzeichnisseDatenbank, (QStringList{db2, db1_}));
}

TEST_F(ErweitertesSetupTest, EveryCaptionOfTheDialogIsInBothLanguages) {
  static const QRegularExpression steuerName(
      QStringLiteral("^(lab|chk|check|opt|fra|cmd|cmb|combut|txt|Caption|Titel|Hintergrund|Datenbank)([A-Z]|$)"));
  for (const QString lang : {"deutsch", "english"}) {
    settings_->strSprache = lang;
    ASSERT_TRUE(labels().fctSpracheAuslesen());
    labels().fctBeschriftungsFileZuordnenIni();
    ErweitertesSetup logik(*settings_);
    FrmErweitertesSetup f(logik);
    QStringList fehlt;
    if (steuerName.match(f.windowTitle()).hasMatch()) fehlt << f.windowTitle();
    for (QWidget* w : f.findChildren<QWidget*>()) {
      for (const char* p : {"text", "title", "toolTip"}) {
        const QVariant t = w->property(p);
        if (t.isValid() && steuerName.match(t.toString()).hasMatch()) fehlt << t.toString();
      }
    }
    EXPECT_TRUE(fehlt.isEmpty()) << lang.toStdString() << ": " << fehlt.join(", ").toStdString();
  }
}

// Every key of a German label file has a text in the English one and back:
// a box or caption may not fall silent in one language.
TEST(LabelDateien, BothLanguagesHaveTheSameKeys) {
  const QString dir = sourceDataDir() + "/txtBeschriftKolvane9.0";
  for (const char* art : {"Frm_", "Msgbox_", "Tooltip_"}) {
    const QString de = dir + "/" + art + "deutsch.txt", en = dir + "/" + art + "english.txt";
    ASSERT_TRUE(QFileInfo::exists(de) && QFileInfo::exists(en)) << art;
    const IniData d = IniData::load(de), e = IniData::load(en);
    QStringList fehlen;
    for (const char* sek : {"Allg", "Gruppe", "Speziell"}) {
      for (const auto& [von, nach, name] : {std::tuple{&d, &e, "english"}, std::tuple{&e, &d, "deutsch"}}) {
        for (const QString& k : von->keys(sek))
          if (nach->value(sek, k).isEmpty()) fehlen << QStringLiteral("%1%2 [%3] %4").arg(art, name, sek, k);
      }
    }
    EXPECT_TRUE(fehlen.isEmpty()) << "missing:\n" << fehlen.join('\n').toStdString();
  }
}

}  // namespace
}  // namespace kolvane

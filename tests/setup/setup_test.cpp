// frmSetup: every option reaches the per-user store and survives a restart;
// Cancel leaves the files alone; the keystroke route's restrictions.
#include <QCheckBox>
#include <QCryptographicHash>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSet>

#include "frmsetup.h"
#include "kolvanetest.h"
#include "labels.h"
#include "schema.h"
#include "setup.h"

namespace kolvane {
namespace {

class SetupTest : public KolvaneTest {
 protected:
  void SetUp() override {
    KolvaneTest::SetUp();
    installData();
    Settings& s = *settings_;
    s.subPfadeFestlegen();
    s.fctLesenKolvaneIniDatei();
    QDir().mkpath(path("lib1"));
    db1_ = path("lib1/dbKolvane.mdb");
    ASSERT_TRUE(Mk_Datenbank(db1_));
    s.aryVerzeichnisseDatenbank = {db1_};
    s.strAktuelleDatenbank = db1_;
    s.subSpeichernKolvaneIniDatei();
    s.fctKeyKolvaneExist();
    s.subSetupStandardZuweisen();
    s.SetupInRegistrierdatenbankSpeichern();
    sprache(QString());
  }

  void sprache(const QString& lang) {
    settings_->strSprache = lang;
    ASSERT_TRUE(labels().fctSpracheAuslesen());
    labels().fctBeschriftungsFileZuordnenIni();
  }

  // A new settings object over the same places, read as the start reads them.
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

  // What lies on disk: the program's ini file and the per-user store.
  QByteArray dateienHash() const {
    QCryptographicHash h(QCryptographicHash::Sha256);
    h.addData(readFile(settings_->strIniDateiVerzeichnis));
    h.addData("\n--\n");
    h.addData(readFile(env_.userStoreFile));
    return h.result();
  }

  static int32_t zahl(const SetupWerte& w, const char* name) {
    for (const SetupFeld& f : setupTabelle())
      if (qstrcmp(f.name, name) == 0) return w.*f.zahl;
    ADD_FAILURE() << name;
    return -1;
  }
  static QString text(const SetupWerte& w, const char* name) {
    for (const SetupFeld& f : setupTabelle())
      if (qstrcmp(f.name, name) == 0) return w.*f.text;
    ADD_FAILURE() << name;
    return {};
  }

  QString db1_;
};

TEST_F(SetupTest, EveryOptionChangedAndConfirmedIsReadBackAfterARestart) {
  const SetupWerte vorher = settings_->setup;
  kolvane::Setup logik(*settings_);
  int optionen = 0, ordner = 0, anzeige = 0;
  logik.hooks.optionenAnzeigen = [&] { ++optionen; };
  logik.hooks.ordnerNeuAnzeigen = [&] { ++ordner; };
  logik.hooks.anzeigeGeaendert = [&] { ++anzeige; };

  // Every box the other way round, every scale its own number.
  QStringList texte = {"2.5", "3,25", "0.5"};
  for (const SetupSchalter& s : kolvane::Setup::schalter()) {
    const QString c = QString::fromLatin1(s.control);
    if (s.art == SetupSchalter::Art::Check)
      logik.anhaken(c, !logik.angehakt(c));
    else
      logik.setText(c, texte.takeFirst());
  }
  ASSERT_EQ(logik.text("txtMassstabY"), "3,25");
  logik.setDoppelklick(3);
  logik.setBruchOption(1);
  ASSERT_TRUE(logik.combutOk_Click());

  // Written in the order of the table, and nothing the dialog doesn't show.
  QStringList erwartet;
  QSet<QString> gezeigt = {"longDoppelklick", "longBruchOption"};
  for (const SetupSchalter& s : kolvane::Setup::schalter()) gezeigt << QString::fromLatin1(s.wert);
  for (const SetupFeld& f : setupTabelle())
    if (gezeigt.contains(QString::fromLatin1(f.name))) erwartet << QString::fromLatin1(f.name);
  EXPECT_EQ(logik.geschrieben(), erwartet);
  EXPECT_EQ(optionen, 1);
  EXPECT_EQ(ordner, 1);
  EXPECT_EQ(anzeige, 1);

  // The program in force has them, and so has the next start.
  auto neu = neustart();
  for (const Settings* s : std::initializer_list<const Settings*>{settings_.get(), neu.get()}) {
    for (const SetupSchalter& sch : kolvane::Setup::schalter()) {
      if (sch.art == SetupSchalter::Art::Check) {
        EXPECT_EQ(zahl(s->setup, sch.wert), 1 - zahl(vorher, sch.wert)) << sch.wert;
      }
    }
    EXPECT_EQ(s->setup.strMassstabX, "2.5");
    EXPECT_EQ(s->setup.strMassstabY, "3,25");
    EXPECT_EQ(s->setup.strMassstabZ, "0.5");
    EXPECT_EQ(s->setup.longDoppelklick, 3);
    EXPECT_EQ(s->setup.longBruchOption, 1);
    // Values the dialog doesn't offer stay.
    EXPECT_EQ(s->setup.longAnzahlDerBilder, vorher.longAnzahlDerBilder);
    EXPECT_EQ(s->setup.lonFrmWidth, vorher.lonFrmWidth);
    EXPECT_EQ(s->strAktuelleDatenbank, db1_);
  }
}

TEST_F(SetupTest, CancelAndAnUnchangedOkLeaveTheFilesAsTheyWere) {
  const QByteArray hash = dateienHash();
  const SetupWerte vorher = settings_->setup;
  {
    // Everything changed, then cancelled in the dialog.
    kolvane::Setup logik(*settings_);
    for (const SetupSchalter& s : kolvane::Setup::schalter()) {
      if (s.art == SetupSchalter::Art::Check)
        logik.anhaken(QString::fromLatin1(s.control), !logik.angehakt(QString::fromLatin1(s.control)));
    }
    logik.setDoppelklick(4);
    prompt_->dialogResult("frmSetup", 0);
    EXPECT_EQ(zeigeSetup(logik, nullptr), 0);
  }
  EXPECT_EQ(dateienHash(), hash);
  EXPECT_EQ(settings_->setup, vorher);

  // OK with nothing changed writes nothing, but the main form's options still
  // take the setup values again; the folder list is left alone.
  kolvane::Setup logik(*settings_);
  int optionen = 0, ordner = 0;
  logik.hooks.optionenAnzeigen = [&] { ++optionen; };
  logik.hooks.ordnerNeuAnzeigen = [&] { ++ordner; };
  prompt_->dialogResult("frmSetup", 1);
  EXPECT_EQ(zeigeSetup(logik, nullptr), 1);
  EXPECT_TRUE(logik.geschrieben().isEmpty());
  EXPECT_EQ(optionen, 1);
  EXPECT_EQ(ordner, 0);
  EXPECT_EQ(dateienHash(), hash);
  EXPECT_EQ(prompt_->unexpected(), 0);
}

// A value added to the store must be offered by a dialog or named here as one
// the user doesn't set; a forgotten one fails.
TEST_F(SetupTest, EverySetupValueIsOfferedOrKnownAsInternal) {
  QSet<QString> gezeigt = {"longDoppelklick", "longBruchOption",
                           "longAnzahlDerBilder"};  // the last in the advanced dialog
  for (const SetupSchalter& s : kolvane::Setup::schalter()) gezeigt << QString::fromLatin1(s.wert);
  const QSet<QString> intern = {
      "longUnbesetzt", "longMehrfachAktiv", "longRechteverwaltung", "longBlockProgrammfrage",
      "longSlideUeberpruefen", "longUeberschreibenDefMenueGlobal", "strAktuellerOrdnerName",
      "strAktuelleOrdnerNr", "strACadVersion", "strVerzeichnisVorgabe", "longCurrentX",
      "longCurrentY", "lonFrmHeight", "lonFrmWidth"};
  for (const SetupFeld& f : setupTabelle()) {
    const QString n = QString::fromLatin1(f.name);
    EXPECT_NE(gezeigt.contains(n), intern.contains(n)) << n.toStdString();
  }
  // Every control names a value of the table, of its kind.
  for (const SetupSchalter& s : kolvane::Setup::schalter()) {
    bool gefunden = false;
    for (const SetupFeld& f : setupTabelle())
      if (qstrcmp(f.name, s.wert) == 0)
        gefunden = (s.art == SetupSchalter::Art::Check) == (f.zahl != nullptr);
    EXPECT_TRUE(gefunden) << s.control;
  }
}

TEST_F(SetupTest, AScaleThatIsNoNumberKeepsTheDialogOpenAndWritesNothing) {
  for (const char* gut : {"1.0", "2", "0,5", ".75", " 3. "}) EXPECT_TRUE(fctMassstabGueltig(gut)) << gut;
  for (const char* schlecht : {"", "abc", "0", "0.0", "-1", "1.2.3", "1e3", "1 5"})
    EXPECT_FALSE(fctMassstabGueltig(schlecht)) << schlecht;

  const QByteArray hash = dateienHash();
  kolvane::Setup logik(*settings_);
  logik.anhaken("checkMassstabskontrolle", true);
  logik.anhaken("checkReihe", true);
  logik.setText("txtMassstabY", "zwei");
  EXPECT_FALSE(logik.combutOk_Click());
  ASSERT_EQ(prompt_->asked.size(), 1);
  EXPECT_TRUE(prompt_->asked[0].startsWith("message|")) << prompt_->asked[0].toStdString();
  EXPECT_TRUE(prompt_->asked[0].contains("zwei"));
  EXPECT_EQ(dateienHash(), hash);
  EXPECT_EQ(settings_->setup.longReihe, 0);

  // Corrected, it goes through. With the check off, the fields are not asked.
  logik.setText("txtMassstabY", "2");
  EXPECT_TRUE(logik.combutOk_Click());
  EXPECT_EQ(neustart()->setup.strMassstabY, "2");
  kolvane::Setup aus(*settings_);
  aus.anhaken("checkMassstabskontrolle", false);
  aus.setText("txtMassstabX", "");
  EXPECT_FALSE(aus.aktiviert("txtMassstabX"));
  EXPECT_TRUE(aus.combutOk_Click());
}

TEST_F(SetupTest, TheKeystrokeRouteOffersOnlyWhatItCanDo) {
  kolvane::Setup voll(*settings_);
  for (const SetupSchalter& s : kolvane::Setup::schalter()) {
    if (s.art == SetupSchalter::Art::Check) {
      EXPECT_TRUE(voll.aktiviert(s.control)) << s.control;
    }
  }
  // The break option group is never offered; the scale fields follow their box.
  EXPECT_FALSE(voll.aktiviert("fraBruchOption"));
  EXPECT_FALSE(voll.aktiviert("optManuell"));
  EXPECT_TRUE(voll.aktiviert("fraDoppelklick"));
  EXPECT_FALSE(voll.aktiviert("txtMassstabX"));
  voll.anhaken("checkMassstabskontrolle", true);
  EXPECT_TRUE(voll.aktiviert("txtMassstabZ"));
  EXPECT_TRUE(voll.aktiviert("labMassstabZ"));
  // The angle and the X factor are free together on the automation route.
  voll.anhaken("checkAbfrageXFaktor", true);
  EXPECT_TRUE(voll.aktiviert("checkAbfrageEinfuegewinkel"));

  kolvane::Setup lt(*settings_, "AutoCAD LT");
  for (const char* aus : {"checkVorschaudiaBeimErzeugen", "checkUrsprungBeimEinfuegen", "checkAbfrageYFaktor",
                          "checkAbfrageZFaktor", "checkAbfrageAttribute", "checkReihe",
                          "checkMehrfacheinfuegen", "checkMehrereEinfuegepkte", "checkMassstabskontrolle"})
    EXPECT_FALSE(lt.aktiviert(aus)) << aus;
  for (const char* an : {"checkBlockAusBibliothek", "checkXRef", "checkAbfrageXFaktor",
                         "checkAbfrageEinfuegewinkel", "checkAbfrageBlocknameBeimErzeugen",
                         "checkVariantenfrage", "checkFensterpositionSpeichern"})
    EXPECT_TRUE(lt.aktiviert(an)) << an;
  // A ticked X factor locks the angle, and back.
  lt.anhaken("checkAbfrageXFaktor", true);
  EXPECT_FALSE(lt.aktiviert("checkAbfrageEinfuegewinkel"));
  lt.anhaken("checkAbfrageXFaktor", false);
  EXPECT_TRUE(lt.aktiviert("checkAbfrageEinfuegewinkel"));
  lt.anhaken("checkAbfrageEinfuegewinkel", true);
  EXPECT_FALSE(lt.aktiviert("checkAbfrageXFaktor"));

  // Stored with the X factor on: the dialog opens with the angle locked.
  settings_->setup.longAbfrageXFaktor = 1;
  kolvane::Setup geladen(*settings_, "AutoCAD LT");
  EXPECT_FALSE(geladen.aktiviert("checkAbfrageEinfuegewinkel"));
  EXPECT_TRUE(geladen.aktiviert("checkAbfrageXFaktor"));
  // Both on (an old store): both stay usable so the user can get out.
  settings_->setup.longAbfrageEinfuegewinkel = 1;
  kolvane::Setup beide(*settings_, "AutoCAD LT");
  EXPECT_TRUE(beide.aktiviert("checkAbfrageEinfuegewinkel"));
  EXPECT_TRUE(beide.aktiviert("checkAbfrageXFaktor"));
}

TEST_F(SetupTest, TheDialogShowsTheValuesAndItsOkButtonWrites) {
  settings_->setup.longDoppelklick = 2;
  settings_->setup.longXRef = 1;
  kolvane::Setup logik(*settings_, "AutoCAD LT");
  int erweitert = 0;
  // The advanced dialog, opened from here, changes a value of its own.
  logik.hooks.erweitertesSetup = [&] {
    ++erweitert;
    settings_->setup.longAnzahlDerBilder = 7;
    settings_->SetupInRegistrierdatenbankSpeichern();
  };
  FrmSetup f(logik);
  f.show();
  auto* xref = qobject_cast<QCheckBox*>(f.control("checkXRef"));
  ASSERT_TRUE(xref);
  EXPECT_TRUE(xref->isChecked());
  EXPECT_TRUE(qobject_cast<QRadioButton*>(f.control("optMarkieren"))->isChecked());
  EXPECT_FALSE(f.control("checkReihe")->isEnabled());
  EXPECT_FALSE(f.control("fraBruchOption")->isEnabled());
  EXPECT_EQ(f.findChild<QLineEdit*>("txtPfad")->text(), QDir::toNativeSeparators(db1_));
  EXPECT_FALSE(f.findChild<QPushButton*>("combutRechte")->isVisible());

  // Clicks reach the logic, and the LT tie shows at once.
  qobject_cast<QCheckBox*>(f.control("checkAbfrageXFaktor"))->click();
  EXPECT_FALSE(f.control("checkAbfrageEinfuegewinkel")->isEnabled());
  xref->click();
  qobject_cast<QRadioButton*>(f.control("optAnsicht"))->click();
  f.findChild<QPushButton*>("combutErweitertesSetup")->click();
  EXPECT_EQ(erweitert, 1);
  f.findChild<QPushButton*>("combutOk")->click();
  EXPECT_EQ(f.result(), QDialog::Accepted);
  auto neu = neustart();
  EXPECT_EQ(neu->setup.longXRef, 0);
  EXPECT_EQ(neu->setup.longAbfrageXFaktor, 1);
  EXPECT_EQ(neu->setup.longDoppelklick, 3);
  EXPECT_EQ(neu->setup.longAnzahlDerBilder, 7) << "not written back from the dialog's copy";

  // A picture to look at (KOLVANE_BILDER names a directory to keep it).
  const QImage bild = f.grab().toImage();
  EXPECT_GT(bild.width(), 400);
  const QString ziel = qEnvironmentVariable("KOLVANE_BILDER", path("."));
  EXPECT_TRUE(bild.save(QDir(ziel).filePath("frmSetup.png")));
}

// A caption the label file lacks shows the control's name; none may.
TEST_F(SetupTest, EveryCaptionOfTheDialogIsInBothLanguages) {
  static const QRegularExpression steuerName(
      QStringLiteral("^(lab|chk|check|opt|fra|cmd|cmb|combut|txt|Caption)([A-Z]|$)"));
  for (const QString lang : {"deutsch", "english"}) {
    sprache(lang);
    ASSERT_EQ(labels().language(), lang);
    kolvane::Setup logik(*settings_);
    FrmSetup f(logik);
    QStringList fehlt;
    if (steuerName.match(f.windowTitle()).hasMatch()) fehlt << f.windowTitle();
    for (QWidget* w : f.findChildren<QWidget*>()) {
      const QVariant t = w->property("text").isValid() ? w->property("text") : w->property("title");
      if (qobject_cast<QLineEdit*>(w) || !t.isValid()) continue;
      if (steuerName.match(t.toString()).hasMatch()) fehlt << t.toString();
    }
    EXPECT_TRUE(fehlt.isEmpty()) << lang.toStdString() << ": " << fehlt.join(", ").toStdString();
  }
}

}  // namespace
}  // namespace kolvane

// The keystroke route and the typed Lisp call.
#include <QDir>
#include <QFile>

#include "commandchannel.h"
#include "einfuegentest.h"
#include "labels.h"
#include "ltscript.h"
#include "settings.h"

namespace kolvane {
namespace {

class EinfuegenRouten : public EinfuegenTest {
 protected:
  QString kopie(const QString& name) const {
    return QDir(settings_->strVerzeichnisTempKolvane()).filePath(name + ".dwg");
  }
  QString skriptTippen() const {
    return "sendKeys|filedia 0\rscript\r\"" + sendKeysEscape(strSkriptDatei()) + "\"\r|wait";
  }
  QStringList skript() const {
    return QString::fromUtf8(readFile(strSkriptDatei())).split("\r\n", Qt::SkipEmptyParts);
  }
};

TEST_F(EinfuegenRouten, KeystrokeRouteTypesTheScriptAndAnswersThePrompts) {
  ltGebunden();
  const QString code = blockAnlegen(0, "Tisch");
  writeFile(zeichnung(code, 2), "view 2");
  oeffnen();

  // The user's click is the insertion point.
  desk_.keys[1] = {0, 1};
  ins_->cmbEinfuegen_Click();
  EXPECT_EQ(log(), (QStringList{"appActivate|AutoCAD LT", "sendKeys|{ESC}{ESC}|wait", "pause|200", skriptTippen(),
                                "pause|500", "sendKeys|\r\r\r|wait", "pause|500", "appActivate|AutoCAD LT"}));
  EXPECT_EQ(skript(), (QStringList{"._-insert", "\"" + kopie("Tisch") + "\"", "'setvar", "filedia", "1"}));
  EXPECT_EQ(ins_->letzterBlock.SpeicherortDerBlockzeichnung, zeichnung(code, 0));

  // The view of frmAnsichten, the block from the library, the angle asked.
  log_.clear();
  ins_->wahl.byteAktivierteAnsicht = 2;
  ins_->optionen.byteBlockAusBibliothek = 1;
  ins_->optionen.byteAbfrageEinfuegewinkel = 1;
  desk_.keys[1] = {0, 1};
  ins_->cmbEinfuegen_Click();
  EXPECT_EQ(log().mid(2, 5), (QStringList{"pause|200", "sendKeys|expert 2\r|wait", "pause|200", skriptTippen(),
                                          "pause|500"}));
  EXPECT_EQ(log().value(7), "sendKeys|\r\r|wait");
  EXPECT_EQ(skript().value(1), "\"Tisch=" + kopie("Tisch") + "\"");
  EXPECT_TRUE(readFile(kopie("Tisch")).isEmpty());  // the run's copies are gone
  EXPECT_EQ(ins_->letzterBlock.SpeicherortDerBlockzeichnung, zeichnung(code, 2));
  EXPECT_EQ(ins_->wahl.byteAktivierteAnsicht, 0);

  // Escape instead of a click: nothing more is typed. (The first read of the
  // key drops the press of the typed "{ESC}".)
  log_.clear();
  desk_.keys[27] = {1, 1};
  ins_->cmbEinfuegen_Click();
  EXPECT_EQ(bridge_->Unterbrechung, 1);
  EXPECT_EQ(log().filter("sendKeys").size(), 3);
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(EinfuegenRouten, KeystrokeRouteWithoutTheHostsWindowEndsTheProgram) {
  ltGebunden();
  blockAnlegen(0, "Tisch");
  oeffnen();
  desk_.refuse << "AutoCAD LT";
  ins_->cmbEinfuegen_Click();
  EXPECT_EQ(exitCalls_, 1);
  ASSERT_EQ(prompt_->asked.size(), 1);
  EXPECT_TRUE(prompt_->asked[0].contains(labels().fctBeschriftMsgboxZuordnen(68) + "\rAutoCAD LT " +
                                         labels().fctBeschriftMsgboxZuordnen(3)));
  EXPECT_TRUE(log().filter("sendKeys").isEmpty());
  EXPECT_FALSE(ins_->laeuft());
}

TEST_F(EinfuegenRouten, TheLispRouteTypesLoadAndCall) {
  automationGebunden();
  settings_->fctWertAllgInIniSpeichern("NewInsertRoutine", "1");
  settings_->setup.longEinfuegenLayer0 = 1;
  blockAnlegen(0, "Tisch (rund)");
  oeffnen();
  QStringList form;
  ins_->hooks.hauptform = [&form](bool sichtbar) { form << (sichtbar ? "zeigen" : "verstecken"); };
  ins_->optionen.byteAbfrageXFaktor = 1;
  ins_->optionen.byteReihe = 1;
  ins_->cmbEinfuegen_Click();

  const QString lsp = path("daten/insert.lsp");
  EXPECT_EQ(log(), (QStringList{
                       "appActivate|" + titel_,
                       "pause|50",
                       "sendKeys|{(}load \"" + sendKeysEscape(path("daten")) + "/insert.lsp\"{)}\r|wait",
                       "pause|500",
                       "sendKeys|{(}kolvane_einfuege \"" + sendKeysEscape(kopie("Tisch_(rund)")) +
                           "\" nil \"1\" \"0\" \"1\" nil nil \"1\"{)}\r|wait",
                       "pause|500",
                       "appActivate|" + titel_,
                       "appActivate|" + titel_,
                   }));
  EXPECT_TRUE(log().value(4).contains("Tisch_{(}rund{)}.dwg"));
  EXPECT_TRUE(readFile(lsp).startsWith("(defun kolvane_einfuege(pfad x y winkel lay0 atted expl ary)"));
  EXPECT_EQ(form, (QStringList{"verstecken", "zeigen"}));
  EXPECT_EQ(bridge_->Unterbrechung, 1);

  // A file the user changed stays.
  writeFile(lsp, "(defun kolvane_einfuege (pfad x y winkel lay0 atted expl ary) (princ))");
  ins_->cmbEinfuegen_Click();
  EXPECT_TRUE(readFile(lsp).endsWith("(princ))"));
}

}  // namespace
}  // namespace kolvane

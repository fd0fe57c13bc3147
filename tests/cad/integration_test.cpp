#include <QDir>
#include <QFile>

#include "cadtest.h"
#include "integration.h"

namespace kolvane {
namespace {

class IntegrationTest : public CadTest {
 protected:
  void SetUp() override {
    CadTest::SetUp();
    automationGebunden();
    bridge_->strExePfad = "/opt/kolvane/bin/kolvane";
  }
};

TEST_F(IntegrationTest, StartCommandFileHasItsFourLines) {
  const QString f = path("x/ikolvane.mnl");
  ASSERT_TRUE(fctMnlSchreiben(f, "kolvane9", "C:\\Programme\\Kolvane\\kolvane9.0.exe"));
  EXPECT_EQ(readFile(f),
            "(defun c:kolvane9()\n"
            "  (princ \"start kolvane\\n\")\n"
            "  (startapp \"C:\\\\Programme\\\\Kolvane\\\\kolvane9.0.exe\")\n"
            ")\n");
}

TEST_F(IntegrationTest, MenuGoesToTheUsersDataDirectoryWithTheProgramsPath) {
  EXPECT_TRUE(bridge_->strDatenVerzeichnis.startsWith(env_.configDir));
  ASSERT_TRUE(fctAcadMenueEinrichten(*bridge_));

  const QByteArray startbefehl =
      "(defun c:kolvane9()\n  (princ \"start kolvane\\n\")\n"
      "  (startapp \"/opt/kolvane/bin/kolvane\")\n)\n";
  EXPECT_EQ(readFile(bridge_->hostDatei("ikolvane.mnl")), startbefehl);
  EXPECT_EQ(readFile(bridge_->hostDatei("kolvane.mnu")), readFile(sourceDataDir() + "/ikolvane.mnu"));
  const QByteArray mnl = readFile(bridge_->hostDatei("kolvane.mnl"));
  EXPECT_TRUE(mnl.startsWith(startbefehl));
  EXPECT_TRUE(mnl.contains("(startapp \"/opt/kolvane/bin/kolvane\" argumente)"));
  EXPECT_TRUE(mnl.contains("(defun c:bsuche"));
  EXPECT_TRUE(mnl.contains("(defun c:lblock"));
  EXPECT_FALSE(mnl.contains("%KOLVANE%"));
  // The master in the program directory stays as shipped.
  EXPECT_EQ(readFile(env_.programDir + "/ikolvane.mnl"), readFile(sourceDataDir() + "/ikolvane.mnl"));
  // The menu offers every command of the host side.
  const QByteArray mnu = readFile(bridge_->hostDatei("kolvane.mnu"));
  for (const char* befehl : {"^C^Ckolvane9", "^C^Cbsuche", "^C^Clblock", "^C^Clman"})
    EXPECT_TRUE(mnu.contains(befehl)) << befehl;
}

TEST_F(IntegrationTest, MissingMasterIsReportedAndTheProgramGoesOn) {
  QFile::remove(env_.programDir + "/ikolvane.mnu");
  prompt_->answer(Answer::Ok);
  EXPECT_FALSE(fctAcadMenueEinrichten(*bridge_));
  ASSERT_EQ(prompt_->asked.size(), 1);
  EXPECT_TRUE(prompt_->asked[0].contains("ikolvane.mnu"));
  EXPECT_FALSE(QFile::exists(bridge_->hostDatei("kolvane.mnu")));
}

TEST_F(IntegrationTest, MenuLoadingTranscript) {
  ASSERT_TRUE(fctAcadMenueLaden(*bridge_));
  const QString dir = bridge_->strDatenVerzeichnis;
  EXPECT_EQ(host_.transcript,
            QStringList({"menuGroupCount", "menuGroupLoaded|kolvane",
                         "loadMenuGroup|" + dir + "/kolvane.mnu",
                         "sendCommand|(load \"" + dir + "/kolvane.mnl\") "}));
  // Loaded once: only the Lisp is loaded again.
  host_.transcript.clear();
  ASSERT_TRUE(fctAcadMenueLaden(*bridge_));
  EXPECT_EQ(host_.transcript,
            QStringList({"menuGroupCount", "menuGroupLoaded|kolvane",
                         "sendCommand|(load \"" + dir + "/kolvane.mnl\") "}));
}

TEST_F(IntegrationTest, InsertLspHasItsLinesAndIsWrittenOnlyWhenAbsent) {
  const QString f = bridge_->hostDatei("insert.lsp");
  ASSERT_TRUE(WriteInsertLsp(f));
  const QByteArray erwartet =
      "(defun kolvane_einfuege(pfad x y winkel lay0 atted expl ary)\n"
      "\n"
      "  (setvar\"cmdecho\" 1)\n"
      "\n"
      "  (command\"._insert\" pfad pause)\n"
      "\n"
      "  (if x\n"
      "    (command x)\n"
      "    (command pause)\n"
      "  );Ende if\n"
      "\n"
      "  (if y\n"
      "    (command y)\n"
      "    (command pause)\n"
      "  );Ende if\n"
      "\n"
      "  (if winkel\n"
      "    (command Winkel)\n"
      "    (command pause)\n"
      "  );Ende if\n"
      "           \n"
      "  (if lay0\n"
      "    (command \"._change\" (entlast) \" \" \"_prop\" \"_la\" \"0\" \" \")\n"
      "  );Ende if\n"
      "\n"
      "  (if atted\n"
      "    (command \"._attedit\" (entlast))\n"
      "  );Ende if\n"
      "\n"
      "  (if expl\n"
      "    (command \"._explode\" (entlast))\n"
      "  );Ende if\n"
      "\n"
      "  (if ary\n"
      "    (command \"._array\" (entlast))\n"
      "  );Ende if\n"
      "\n"
      ");Ende defun\n";
  EXPECT_EQ(readFile(f), erwartet);
  EXPECT_EQ(erwartet.count('\n'), 38);

  writeFile(f, ";; vom Anwender geändert\n");
  ASSERT_TRUE(WriteInsertLsp(f));
  EXPECT_EQ(readFile(f), ";; vom Anwender geändert\n");
}

TEST_F(IntegrationTest, LispVariablesOfTheDataCard) {
  settings_->setup.lonLispVarUebergeben = 1;
  QStringList m = {"a\"b", "c:\\x", ""};
  for (int i = 3; i < 10; ++i) m << "M" + QString::number(i);
  int fehler = -1;
  EXPECT_TRUE(fctLispVariablenZuordnen(*bridge_, m, "Ventil", fehler));
  EXPECT_EQ(fehler, 0);
  QStringList erwartet = {"sendCommand|(setq bver_dat1 \"a\\\"b\")\r",
                          "sendCommand|(setq bver_dat2 \"c:\\x\")\r",
                          "sendCommand|(setq bver_dat3 \"\")\r"};
  for (int i = 3; i < 10; ++i)
    erwartet << QString("sendCommand|(setq bver_dat%1 \"M%2\")\r").arg(i + 1).arg(i);
  erwartet << "sendCommand|(setq blkname \"Ventil\")\r";
  EXPECT_EQ(host_.transcript, erwartet);

  // No row, or the option off: nothing goes out.
  host_.transcript.clear();
  EXPECT_FALSE(fctLispVariablenZuordnen(*bridge_, std::nullopt, "Ventil", fehler));
  settings_->setup.lonLispVarUebergeben = 0;
  EXPECT_FALSE(fctLispVariablenZuordnen(*bridge_, m, "Ventil", fehler));
  EXPECT_TRUE(host_.transcript.isEmpty());
}

TEST_F(IntegrationTest, LmanStartCommandKeepsTheOldFileOnce) {
  QDir().mkpath(path("support"));
  host_.variables["DWGPREFIX"] = path("dwg") + "/";
  host_.supportPathText = path("support");
  const QString lman = path("support/lman.lsp");
  const QString alt = path("support/lmanold.lsp");
  writeFile(lman, "(defun c:lman () (alert \"alt\"))\n");
  const QByteArray neu =
      "\n;;Hesmer Datenwerk\n(defun c:lman( / )\n  (startapp \"/opt/kolvane/bin/kolvane\")\n)\n";

  ASSERT_TRUE(fctLmanStartbefehlEintragen(*bridge_));
  EXPECT_EQ(readFile(alt), "(defun c:lman () (alert \"alt\"))\n");
  EXPECT_EQ(readFile(lman), neu);
  EXPECT_EQ(host_.only({"sendCommand"}), QStringList("sendCommand|(load \"lman.lsp\") "));

  // An old copy that exists stays as it is.
  writeFile(lman, "(defun c:lman () (alert \"zweite\"))\n");
  ASSERT_TRUE(fctLmanStartbefehlEintragen(*bridge_));
  EXPECT_EQ(readFile(alt), "(defun c:lman () (alert \"alt\"))\n");
  EXPECT_EQ(readFile(lman), neu);
}

TEST_F(IntegrationTest, LmanNotOnTheSearchPathWritesNothing) {
  host_.supportPathText = path("leer");
  ASSERT_TRUE(fctLmanStartbefehlEintragen(*bridge_));
  EXPECT_FALSE(QFile::exists(path("leer/lman.lsp")));
  EXPECT_EQ(host_.only({"sendCommand"}), QStringList("sendCommand|(load \"lman.lsp\") "));
}

}  // namespace
}  // namespace kolvane

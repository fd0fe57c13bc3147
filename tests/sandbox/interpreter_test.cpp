// The command line: prefixes, blanks and Returns, scripts, transparent setvar,
// Lisp with pause, and what comes of bad input.
#include <QFile>

#include "integration.h"
#include "sandboxtest.h"

namespace sandbox {

using ::testing::HasSubstr;

TEST_F(SandboxTest, PrefixesBlanksAndReturnsEndArguments) {
  run(QStringLiteral("._line 0,0 10,0 \r_.line\r0,0\r0,7\r\rline 1,1 2,2\r\r"));
  ASSERT_EQ(drawing().entities.size(), 3u);
  EXPECT_EQ(drawing().entities[0].p2, (Point{10, 0, 0}));
  EXPECT_EQ(drawing().entities[1].p2, (Point{0, 7, 0}));
  EXPECT_EQ(events_, (QStringList{"begin LINE", "end LINE", "begin LINE", "end LINE", "begin LINE",
                                  "end LINE"}));
  // "@" takes the last point as origin.
  run(QStringLiteral("._line 5,5 @2,3 \r"));
  EXPECT_EQ(last().p2, (Point{7, 8, 0}));
  // What is drawn lands on the current layer.
  run(QStringLiteral(
      "-layer m Wand \r._circle 0,0 1 \r._pline 0,0 1,1 \r._text 0,0 1 0 T\r._donut 0 1 0,0 \r"));
  for (size_t i = 4; i < drawing().entities.size(); ++i)
    EXPECT_EQ(drawing().entities[i].layer, QStringLiteral("Wand"));
  EXPECT_EQ(drawing().entities.size(), 8u);
}

TEST_F(SandboxTest, UnknownCommandsAndBadAnswersAreReportedAndTheLineGoesOn) {
  // A word where a point is asked is refused and the question comes again.
  run(QStringLiteral("._frobnicate\r._circle nirgends 5,5 2\r(undefiniert 1)\r(setq a \r"));
  EXPECT_EQ(in_->errorLines(),
            (QStringList{"Unbekannter Befehl \"FROBNICATE\".  Drücken Sie F1 für Hilfe.",
                         "Punkt oder Option-Schlüsselwort erforderlich.",
                         "; Fehler: no function definition: UNDEFINIERT"}));
  ASSERT_EQ(drawing().entities.size(), 1u);
  EXPECT_EQ(last().type, EntityType::Circle);
  EXPECT_EQ(last().radius, 2);
  // The open expression waits for its end; Escape drops it and the next line works.
  in_->cancel();
  run(QStringLiteral("._circle 0,0 1\r"));
  EXPECT_EQ(drawing().entities.size(), 2u);
}

TEST_F(SandboxTest, ReturnAtTheCommandPromptRepeatsTheLastCommand) {
  in_->setUserMode(Interpreter::UserMode::Interactive);
  run(QStringLiteral("._circle 0,0 1\r\r5,5 2\r "));
  ASSERT_EQ(drawing().entities.size(), 2u);
  EXPECT_EQ(last().p1, (Point{5, 5, 0}));
  // The blank repeated it a third time: it waits for its centre.
  EXPECT_TRUE(in_->commandActive());
  in_->cancel();
  settle();
  // The same through Lisp: "" at the command prompt is a Return too.
  run(QStringLiteral("(command \"._circle\" \"1,1\" \"1\" \"\" \"2,2\" \"1\")\r"));
  EXPECT_EQ(drawing().entities.size(), 4u);
  EXPECT_TRUE(in_->errorLines().isEmpty());
}

TEST_F(SandboxTest, KeywordsFollowTheHostsLanguage) {
  // German host: local words without "_", the global ones with it; any
  // beginning as long as the capitals.
  run(QStringLiteral("._line 0,0 10,0\r\r._undo _m ._line 0,0 0,5\r\r._undo z\r"));
  EXPECT_EQ(drawing().entities.size(), 1u);
  EXPECT_TRUE(in_->errorLines().isEmpty());
  // "_z" is no global keyword: refused, asked again, Return takes the default (1).
  run(QStringLiteral("._undo _z\r\r"));
  EXPECT_EQ(in_->errorLines(), QStringList{"Ungültiges Option-Schlüsselwort."});
  EXPECT_TRUE(drawing().entities.empty());
  // English host: "b" is Back, "z" nothing.
  in_->setLanguage(Language::English);
  run(QStringLiteral("._line 0,0 10,0\r\r._undo m ._line 0,0 0,5\r\r._undo b "));
  EXPECT_EQ(drawing().entities.size(), 1u);
  run(QStringLiteral("._undo z\r\r"));
  EXPECT_EQ(in_->errorLines().last(), QStringLiteral("Invalid option keyword."));
  EXPECT_EQ(in_->currentPrompt(), QStringLiteral("Command: "));
}

TEST_F(SandboxTest, KeywordMatchingByCapitals) {
  const QList<Keyword> change = parseKeywords(
      "Farbe|Color Erhebung|Elev LAyer|LAyer LTyp|LType ltFaktor|ltScale Eigenschaften|Properties");
  EXPECT_EQ(matchKeyword("_la", change, Language::German), 2);
  EXPECT_EQ(matchKeyword("_prop", change, Language::German), 5);
  EXPECT_EQ(matchKeyword("_col", change, Language::German), 0);
  EXPECT_EQ(matchKeyword("f", change, Language::German), 0);
  EXPECT_EQ(matchKeyword("l", change, Language::German), -1);  // LA or LT?
  EXPECT_EQ(matchKeyword("s", change, Language::English), 4);   // ltScale by its capital
  EXPECT_EQ(matchKeyword("_f", change, Language::German), -1);  // German word with "_"
  EXPECT_EQ(matchKeyword("c", change, Language::English), 0);
  EXPECT_EQ(matchKeyword("c", change, Language::German), -1);
}

TEST_F(SandboxTest, LispCommandWithPauseTakesThePickAndReportsItsEnd) {
  const QString block = writeBlock("b.dwg");
  picks("120.5,80,0\n");
  run(QStringLiteral("(command \"._-insert\" \"%1\" pause \"2\" \"3\" \"0\")\r").arg(block));
  ASSERT_EQ(drawing().entities.size(), 1u);
  const Entity& ref = last();
  EXPECT_EQ(ref.type, EntityType::Insert);
  EXPECT_EQ(ref.blockName, QStringLiteral("b"));
  EXPECT_EQ(ref.p1, (Point{120.5, 80, 0}));
  EXPECT_EQ(ref.sx, 2);
  EXPECT_EQ(ref.sy, 3);
  EXPECT_EQ(events_, (QStringList{"begin -INSERT", "end -INSERT", "endLisp"}));
  const Extents x = drawing().extents();
  EXPECT_DOUBLE_EQ(x.max.x, 140.5);
  EXPECT_DOUBLE_EQ(x.max.y, 95);
}

TEST_F(SandboxTest, EscapeAtAPauseCancelsCommandAndLisp) {
  const QString block = writeBlock("b.dwg");
  picks("ESC\n");
  run(QStringLiteral("(command \"._-insert\" \"%1\" pause \"1\" \"1\" \"0\")\r").arg(block));
  EXPECT_TRUE(drawing().entities.empty());
  EXPECT_EQ(events_, (QStringList{"begin -INSERT", "end -INSERT", "endLisp"}));
  EXPECT_THAT(history().toStdString(), HasSubstr("Funktion abgebrochen"));
  EXPECT_EQ(in_->keys().question(27), 1);
  EXPECT_FALSE(in_->commandActive());
}

TEST_F(SandboxTest, ScriptStopsInsideTheInsertAndTheUserGoesOn) {
  // bv8LT.scr as the keystroke route writes it: the transparent setvar at the
  // insertion point prompt, CR LF line ends.
  const QString block = writeBlock("Block 1.dwg");
  KolvaneTest::writeFile(
      path("bv8LT.scr"),
      QStringLiteral(
          "-layer\r\nse\r\nMoebel\r\n\r\n._-insert\r\n\"Ab1=%1\"\r\n'setvar\r\nfiledia\r\n1\r\n")
          .arg(block)
          .toUtf8());
  in_->setUserMode(Interpreter::UserMode::Interactive);
  run(QStringLiteral("-layer m Moebel se 0 \rfiledia 0\rscript\r\"%1\"\r").arg(path("bv8LT.scr")));
  EXPECT_EQ(in_->variable("filedia").toInt(), 1);
  ASSERT_TRUE(in_->waitingForUser());
  EXPECT_THAT(in_->currentPrompt().toStdString(), HasSubstr("Einfügepunkt"));
  in_->userPoint({30, 40, 0});
  settle();
  run(QStringLiteral("\r\r\r"));
  ASSERT_EQ(drawing().entities.size(), 1u);
  EXPECT_EQ(last().blockName, QStringLiteral("Ab1"));
  EXPECT_EQ(last().p1, (Point{30, 40, 0}));
  EXPECT_EQ(last().layer, QStringLiteral("Moebel"));
  EXPECT_FALSE(in_->commandActive());
}

TEST_F(SandboxTest, SentStringsWaitBehindTheUser) {
  in_->setUserMode(Interpreter::UserMode::Interactive);
  in_->send(QStringLiteral("._circle 0,0 1\r._move (entlast)  1,1,0 "));
  in_->send(QStringLiteral("._circle 50,50 2\r"));
  settle();
  // The move waits for its second point; the next string does not answer it.
  ASSERT_TRUE(in_->waitingForUser());
  EXPECT_EQ(drawing().entities.size(), 1u);
  in_->userPoint({11, 21, 0});
  settle();
  ASSERT_EQ(drawing().entities.size(), 2u);
  EXPECT_EQ(drawing().entities[0].p1, (Point{10, 20, 0}));
  EXPECT_EQ(drawing().entities[1].radius, 2);
  // Told to, the sandbox feeds a string to the open prompt instead.
  in_->setFeedPending(true);
  in_->send(QStringLiteral("._move (entlast)  0,0,0 "));
  settle();
  ASSERT_TRUE(in_->waitingForUser());
  in_->send(QStringLiteral("5,5,0 "));
  settle();
  EXPECT_FALSE(in_->commandActive());
  EXPECT_EQ(drawing().entities[1].p1, (Point{55, 55, 0}));
}

TEST_F(SandboxTest, InsertLspDefinesTheFunctionTheLispRouteCalls) {
  const QString block = writeBlock("b.dwg");
  // insert.lsp as the program writes it: each argument of its (command ...)
  // calls is one whole answer.
  ASSERT_TRUE(kolvane::WriteInsertLsp(path("insert.lsp")));
  picks("5,6\nENTER\n");
  run(QStringLiteral("-layer m Elektro \r(load \"%1\")\r(kolvane_einfuege \"%2\" \"1.5\" nil \"0\" "
                     "\"1\" nil nil nil)\r")
          .arg(path("insert.lsp"), block));
  ASSERT_EQ(drawing().entities.size(), 1u);
  EXPECT_EQ(last().p1, (Point{5, 6, 0}));
  EXPECT_EQ(last().sx, 1.5);
  EXPECT_EQ(last().sy, 1.5);  // Return at the Y factor takes X
  EXPECT_EQ(last().layer, QStringLiteral("0"));
  EXPECT_FALSE(in_->commandActive());
}

TEST_F(SandboxTest, TransparentSetvarAndVariables) {
  run(QStringLiteral("._circle 'setvar orthomode 1\r3,4 2 \r"));
  EXPECT_EQ(in_->variable("ORTHOMODE").toInt(), 1);
  EXPECT_EQ(last().p1, (Point{3, 4, 0}));
  run(QStringLiteral("attreq 0\rexpert 2\r(setvar \"CMDECHO\" 0)\r"));
  EXPECT_EQ(in_->variable("attreq").toInt(), 0);
  EXPECT_EQ(in_->variable("Expert").toInt(), 2);
  EXPECT_EQ(in_->variable("CMDECHO").toInt(), 0);
  QString error;
  EXPECT_FALSE(in_->setVariable("filedia", 7, &error));
  EXPECT_FALSE(in_->setVariable("extmax", 1, &error));
  EXPECT_FALSE(in_->variable("nosuchvar", &error).isValid());
  EXPECT_EQ(in_->variable("lastpoint").toList().value(0).toDouble(), 3);
  run(QStringLiteral("._base 1,2,3 "));
  EXPECT_EQ(in_->variable("insbase").toList(), (QVariantList{1.0, 2.0, 3.0}));
}

}  // namespace sandbox

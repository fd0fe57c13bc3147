// The user without a user: picks file, key states, keystrokes, and the
// automation questions answered at the command line.
#include "picks.h"
#include "sandboxprotocol.h"
#include "sandboxtest.h"
#include "sendkeys.h"

namespace sandbox {

TEST(PicksFile, EveryKindOfAnswerAndBadLines) {
  PicksSource p;
  QString error;
  ASSERT_TRUE(
      p.parse("# comment\n10,20\n1.5,-2,3\n\nwindow 0,0 10,10\nall\nstring zwei Worte\nreal "
              "2.5\nESC\nenter\n",
              &error))
      << error.toStdString();
  EXPECT_EQ(p.remaining(), 8);
  EXPECT_EQ(p.next()->p1, (Point{10, 20, 0}));
  EXPECT_EQ(p.next()->p1, (Point{1.5, -2, 3}));
  const auto w = p.next();
  EXPECT_EQ(w->kind, PickAnswer::Window);
  EXPECT_EQ(w->p2, (Point{10, 10, 0}));
  EXPECT_EQ(p.next()->kind, PickAnswer::All);
  EXPECT_EQ(p.next()->text, "zwei Worte");
  EXPECT_EQ(p.next()->text, "2.5");
  EXPECT_EQ(p.next()->kind, PickAnswer::Escape);
  EXPECT_EQ(p.next()->kind, PickAnswer::Enter);
  EXPECT_FALSE(p.next().has_value());

  for (const char* bad : {"10;20\n", "window 1,1\n", "real zehn\n", "klick\n", "1,2,3,4\n"}) {
    PicksSource q;
    EXPECT_FALSE(q.parse(QString::fromUtf8(bad), &error)) << bad;
    EXPECT_TRUE(error.contains("Zeile 1")) << error.toStdString();
  }
}

TEST(KeyStates, DownNowAndPressedSinceTheLastQuestion) {
  KeyStates k;
  EXPECT_EQ(k.question(1), 0);
  k.press(1);
  EXPECT_EQ(k.question(1), int16_t(0x8001));
  EXPECT_EQ(k.question(1), int16_t(0x8000));
  k.release(1);
  EXPECT_EQ(k.question(1), 0);
  k.click(27);
  EXPECT_EQ(k.question(27), 1);
  EXPECT_EQ(k.question(27), 0);
  k.click(65);  // only 1, 2, 13 and 27 are kept
  EXPECT_EQ(k.question(65), 0);
}

TEST(SendKeys, TheEscapeGrammar) {
  QString error;
  const auto keys = parseSendKeys("{ESC}{esc}a~{(}load{)}{{}{}}{+}{TAB}{ENTER}x{~ 2}+a", &error);
  ASSERT_TRUE(keys.has_value()) << error.toStdString();
  QString text;
  for (const KeyStroke& k : *keys) {
    if (k.kind == KeyStroke::Char)
      text += k.ch;
    else if (k.kind == KeyStroke::Escape)
      text += "<esc>";
    else if (k.kind == KeyStroke::Enter)
      text += "<cr>";
    else if (k.kind == KeyStroke::Tab)
      text += "<tab>";
  }
  EXPECT_EQ(text, "<esc><esc>a<cr>(load){}+<tab><cr>x~~A");
  for (const char* bad : {"{ESC", "a}b", "{NOSUCHKEY}", "{}", "{x y}"})
    EXPECT_FALSE(parseSendKeys(bad, &error)) << bad;
}

TEST(Protocol, FieldsAndValuesSurviveTheLine) {
  namespace proto = kolvane::sandboxproto;
  const QStringList fields = {"7", "sendCommand", "(command \"._-insert\"\t\"c:\\\\b.dwg\")\r\n",
                              ""};
  QByteArray line = proto::encodeLine(fields);
  EXPECT_EQ(line.count('\n'), 1);
  EXPECT_EQ(proto::decodeLine(line), fields);
  for (const QVariant& v : {QVariant(3), QVariant(0.1), QVariant(QString("a:b")),
                            QVariant(QVariantList{1.0, 2.5, -3.0})})
    EXPECT_EQ(proto::decodeValue(proto::encodeValue(v)), v) << proto::encodeValue(v).toStdString();
  EXPECT_EQ(proto::formatNumber(0.1), "0.1");
  EXPECT_EQ(proto::formatNumber(1e21), "1e+21");
  double d = 0;
  EXPECT_FALSE(proto::parseNumber("1,5", &d));
  EXPECT_TRUE(proto::parseNumber(" +2.5 ", &d));
  EXPECT_EQ(d, 2.5);
}

TEST_F(SandboxTest, AutomationQuestionsAreAnsweredAtTheCommandLine) {
  picks("4,5\nESC\nreal 2.5\nstring mit Blank\nwindow -1,-1 3,3\nENTER\n");
  run("._line 0,0 2,2 \r._circle 50,50 1\r");
  QStringList answers;
  auto keep = [&](const QStringList& v) { answers << (v.isEmpty() ? QString("-") : v.join('|')); };
  in_->requestPoint(Point{1, 1, 0}, "Punkt: ", keep);
  in_->requestPoint(std::nullopt, "Punkt: ", keep);
  in_->requestReal("Zahl: ", keep);
  in_->requestString(true, "Text: ", keep);
  in_->doc().selectionSets.insert("SS1", {});
  in_->requestSelection("SS1", keep);
  settle();
  EXPECT_EQ(answers, (QStringList{"4,5,0", "-", "2.5", "mit Blank", "1"}));
  EXPECT_EQ(in_->doc().selectionSets.value("SS1").size(), 1u);
  EXPECT_EQ(in_->doc().previousSelection.size(), 1u);
  // No command events for questions of the automation side.
  EXPECT_EQ(events_.count("begin LINE"), 1);
  EXPECT_EQ(events_.size(), 4);
}

TEST_F(SandboxTest, ScriptedUserActsRightAfterTheProgramPolledAKey) {
  in_->setUserMode(Interpreter::UserMode::Scripted);
  in_->setUserOnPoll(true);
  in_->setUserDelay(60000);  // only the question makes the user act here
  picks("7,8\n");
  run("._circle ");
  ASSERT_TRUE(in_->waitingForUser());
  // The first question drops the old state and the click comes after it.
  EXPECT_EQ(in_->keyQuestion(1), 0);
  EXPECT_EQ(in_->keyQuestion(1), 1);
  settle();
  run("3\r");
  ASSERT_EQ(drawing().entities.size(), 1u);
  EXPECT_EQ(last().p1, (Point{7, 8, 0}));
  // Not waiting: a question leaves the picks alone.
  picks("1,1\n");
  EXPECT_EQ(in_->keyQuestion(27), 0);
  EXPECT_TRUE(in_->picks().hasNext());
}

}  // namespace sandbox

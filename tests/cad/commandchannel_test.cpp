#include <QLocale>
#include <QTimer>
#include <clocale>

#include "cadtest.h"
#include "commandchannel.h"
#include "eventsink.h"

namespace kolvane {
namespace {

class CommandChannelTest : public CadTest {
 protected:
  void SetUp() override {
    CadTest::SetUp();
    automationGebunden();
    // The sink of the run ends the waits.
    ASSERT_TRUE(fctEventActivXErstellen(*bridge_));
    host_.transcript.clear();
  }
  int keyReads(int vk) const { return int(desk_.polls.count("key|" + QString::number(vk))); }
};

constexpr auto kInsert = "(command \"._-insert\" \"c:/tmp/b.dwg\" pause \"1\" \"1\" \"0\")\r";

TEST_F(CommandChannelTest, WaitEndsWithTheHostsEndOfCommand) {
  host_.endCommandOnPause = "INSERT";
  EXPECT_TRUE(SendCommandUndWarten(*bridge_, kInsert));
  EXPECT_EQ(bridge_->bytAcadArbeitet, 1);
  EXPECT_EQ(bridge_->Unterbrechung, 0);
  EXPECT_FALSE(bridge_->Timer4.isActive());
  EXPECT_EQ(host_.transcript, QStringList(QString("sendCommand|") + kInsert));
  // One read drops the old state before the wait, two after it.
  EXPECT_EQ(keyReads(27), 3);
}

TEST_F(CommandChannelTest, EscapeDuringTheWaitSetsUnterbrechung) {
  host_.endCommandOnPause = "INSERT";
  host_.onSendCommand = [this](const QString&) {
    // The user presses Escape during the pick; the host then ends the command.
    QTimer::singleShot(5, [this]() { desk_.press(27); });
  };
  EXPECT_TRUE(SendCommandUndWarten(*bridge_, kInsert));
  EXPECT_EQ(bridge_->Unterbrechung, 1);
  EXPECT_EQ(bridge_->bytAcadArbeitet, 1);
}

TEST_F(CommandChannelTest, EscapeFromBeforeTheSendIsDropped) {
  host_.endCommandOnPause = "INSERT";
  desk_.press(27);  // pressed before the command went out
  EXPECT_TRUE(SendCommandUndWarten(*bridge_, kInsert));
  EXPECT_EQ(bridge_->Unterbrechung, 0);
}

TEST_F(CommandChannelTest, RefusedSendWaitsForNothing) {
  host_.failing << "sendCommand";
  QString fehler;
  EXPECT_FALSE(SendCommandUndWarten(*bridge_, kInsert, &fehler));
  EXPECT_EQ(fehler, "sendCommand failed");
  EXPECT_FALSE(host_.failed());
  EXPECT_FALSE(bridge_->Timer4.isActive());
  EXPECT_NE(bridge_->bytAcadArbeitet, 2);
}

TEST_F(CommandChannelTest, GuardTimerReactivatesTheHostWhileTheMainFormIsActive) {
  bridge_->hWndHauptfenster = 77;
  bridge_->bytAcadArbeitet = 2;
  desk_.active = 77;
  bridge_->Timer4Starten();
  EXPECT_EQ(bridge_->Timer4.interval(), 50);
  EXPECT_TRUE(eventsUntil([this] { return desk_.transcript.contains("appActivate|AutoCAD 2014 "); },
                          2000));
  bridge_->Timer4Stoppen();
}

TEST_F(CommandChannelTest, GuardTimerLeavesTheHostAloneOtherwise) {
  bridge_->hWndHauptfenster = 77;
  bridge_->Timer4Starten();
  // Another window of the desktop is active.
  bridge_->bytAcadArbeitet = 2;
  desk_.active = 12;
  eventsUntil([] { return false; }, 200);
  // The host's command has ended.
  bridge_->bytAcadArbeitet = 1;
  desk_.active = 77;
  eventsUntil([] { return false; }, 200);
  bridge_->Timer4Stoppen();
  EXPECT_FALSE(desk_.transcript.contains("appActivate|AutoCAD 2014 "));
  EXPECT_GT(desk_.polls.count("activeWindow"), 0);
}

TEST_F(CommandChannelTest, HostGoneAtTheHeadOfASeriesEndsTheProgram) {
  prompt_->answer(Answer::Ok).answer(Answer::Ok);
  host_.documents = 0;
  EXPECT_FALSE(ACAD_aktivieren(*bridge_));
  EXPECT_EQ(prompt_->asked.first(),
            QString("message|Info|" + labels().fctBeschriftMsgboxZuordnen(67) + "\r\r" +
                        labels().fctBeschriftMsgboxZuordnen(68) + "\rAutoCAD 2014 " +
                        labels().fctBeschriftMsgboxZuordnen(3) + "|0|64"));
  EXPECT_EQ(exitCalls_, 1);

  // With the main form listening it ends the program itself (saving first).
  int beenden = 0;
  QObject::connect(bridge_.get(), &CadBridge::programmBeenden, [&beenden] { ++beenden; });
  desk_.refuse << "AutoCAD 2014 ";
  host_.documents = 1;
  EXPECT_FALSE(ACAD_aktivieren(*bridge_));
  EXPECT_EQ(beenden, 1);
  EXPECT_EQ(exitCalls_, 1);
}

TEST_F(CommandChannelTest, ActivationAtTheHeadOfASeries) {
  EXPECT_TRUE(ACAD_aktivieren(*bridge_));
  EXPECT_EQ(desk_.transcript, QStringList("appActivate|AutoCAD 2014 "));
  EXPECT_EQ(host_.transcript, QStringList("hasActiveDocument"));
  EXPECT_TRUE(prompt_->asked.isEmpty());
}

TEST_F(CommandChannelTest, SavedAndForcedVariablesAreRestoredOnEveryExit) {
  host_.variables["ATTREQ"] = 1;
  host_.variables["ORTHOMODE"] = 1;
  host_.variables["CMDECHO"] = 0;
  {
    EinfuegeVariablen v(*bridge_);
    v.sichern();
    v.erzwingen();
    // leaving the scope without restoring by hand: an early exit of the insert
  }
  EXPECT_EQ(host_.transcript,
            QStringList({"getVariable|filedia", "getVariable|attreq", "getVariable|orthomode",
                         "getVariable|CMDECHO", "setVariable|attreq|0", "setVariable|orthomode|0",
                         "setVariable|CMDECHO|1", "setVariable|attreq|1", "setVariable|orthomode|1",
                         "setVariable|CMDECHO|0"}));

  host_.transcript.clear();
  settings_->fctWertAllgInIniSpeichern("OrthoNichtDeaktivieren", "1");
  {
    EinfuegeVariablen v(*bridge_);
    v.sichern();
    v.erzwingen();
    v.wiederherstellen();
  }
  EXPECT_EQ(host_.only({"setVariable"}),
            QStringList({"setVariable|attreq|0", "setVariable|CMDECHO|1", "setVariable|attreq|1",
                         "setVariable|orthomode|1", "setVariable|CMDECHO|0"}));
}

TEST_F(CommandChannelTest, GetRealAnswersOrBreaksOff) {
  host_.reals = {2.5, std::nullopt};
  EXPECT_EQ(AbfrageGetReal(*bridge_, "\r\nX-Faktor: "), 2.5);
  EXPECT_EQ(AbfrageGetReal(*bridge_, "\r\nY-Faktor: "), std::nullopt);
  host_.failing << "getReal";
  EXPECT_EQ(AbfrageGetReal(*bridge_, "\r\nX-Faktor: "), std::nullopt);
  EXPECT_FALSE(host_.failed());
  EXPECT_EQ(host_.only({"getReal"}).first(), "getReal|\r\nX-Faktor: ");
}

TEST_F(CommandChannelTest, ReturnWindowWaitsForExactlyOne) {
  // An old press is dropped; a key held down (0x8001) is not yet the release.
  desk_.keys[13] = {1, 0, int16_t(0x8001), 1, 0};
  fctReturnAbwarten(*bridge_);
  EXPECT_EQ(keyReads(13), 5);
}

TEST_F(CommandChannelTest, PauseTwoKeepsEventsFlowing) {
  bool bedient = false;
  QTimer::singleShot(10, [&bedient] { bedient = true; });
  subPause2(200);
  EXPECT_TRUE(bedient);
}

// ---------------------------------------------------------------------------

TEST(ZahlFuerAcad, ShortestRoundTripFormWithAPoint) {
  EXPECT_EQ(fctZahlFuerAcad(0), "0");
  EXPECT_EQ(fctZahlFuerAcad(-0.0), "0");
  EXPECT_EQ(fctZahlFuerAcad(1), "1");
  EXPECT_EQ(fctZahlFuerAcad(-2.5), "-2.5");
  EXPECT_EQ(fctZahlFuerAcad(0.1), "0.1");
  EXPECT_EQ(fctZahlFuerAcad(1234.5678), "1234.5678");
  EXPECT_EQ(fctZahlFuerAcad(1.0 / 3.0), "0.333333333333333");
  EXPECT_EQ(fctZahlFuerAcad(0.1 + 0.2), "0.3");  // 15 digits at most
  EXPECT_EQ(fctZahlFuerAcad(1e20), "100000000000000000000");
  EXPECT_EQ(fctZahlFuerAcad(2.5e-8), "0.000000025");
  EXPECT_EQ(fctZahlFuerAcad(-1500), "-1500");
  EXPECT_EQ(fctZahlFuerAcad(123456789012.25), "123456789012.25");
}

TEST(ZahlFuerAcad, DecimalCommaLocaleStillSendsPoints) {
  const QLocale vorher;
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  std::string cVorher = std::setlocale(LC_NUMERIC, nullptr);
  for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "German"})
    if (std::setlocale(LC_NUMERIC, name)) break;
  ASSERT_EQ(QLocale().toString(1.5), "1,5");

  std::array<QString, 3> s;
  KommaPunktErsetzen({10.5, -0.25, 1234567.125}, s);
  EXPECT_EQ(s[0], "10.5");
  EXPECT_EQ(s[1], "-0.25");
  EXPECT_EQ(s[2], "1234567.125");
  EXPECT_EQ(KommaPunktErsetzen(QLocale().toString(2.75)), "2.75");
  EXPECT_EQ(KommaPunktErsetzen(QStringLiteral("1,5")), "1.5");

  std::setlocale(LC_NUMERIC, cVorher.c_str());
  QLocale::setDefault(vorher);
}

TEST(SendKeysEscape, SpecialCharactersGoInBraces) {
  EXPECT_EQ(sendKeysEscape("/tmp/a+b(1)~x{y}[z]^%.scr"),
            "/tmp/a{+}b{(}1{)}{~}x{{}y{}}{[}z{]}{^}{%}.scr");
  EXPECT_EQ(sendKeysEscape("c:\\temp\\bv8LT.scr"), "c:\\temp\\bv8LT.scr");
}

}  // namespace
}  // namespace kolvane

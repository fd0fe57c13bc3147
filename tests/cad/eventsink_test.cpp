#include <QTimer>
#include <QWidget>

#include "cadtest.h"
#include "commandchannel.h"
#include "eventsink.h"

namespace kolvane {
namespace {

class EventSinkTest : public CadTest {
 protected:
  void SetUp() override {
    CadTest::SetUp();
    automationGebunden();
    ASSERT_TRUE(fctEventActivXErstellen(*bridge_));
  }
  EventClassModule& sink() { return *bridge_->EventActivX; }
};

TEST_F(EventSinkTest, CommandAndLispEventsEndTheHostsWork) {
  bridge_->bytAcadArbeitet = 2;
  host_.raiseBeginCommand("INSERT");
  EXPECT_EQ(sink().sBeginCommand, "INSERT");
  EXPECT_EQ(bridge_->bytAcadArbeitet, 2);
  host_.raiseEndCommand("INSERT");
  EXPECT_EQ(sink().sEndCommand, "INSERT");
  EXPECT_EQ(bridge_->bytAcadArbeitet, 1);

  bridge_->bytAcadArbeitet = 2;
  host_.raiseEndLisp();
  EXPECT_EQ(bridge_->bytAcadArbeitet, 1);

  // An end while no insert runs only sets the flag.
  bridge_->bytAcadArbeitet = 0;
  host_.raiseEndCommand("LINE");
  EXPECT_EQ(bridge_->bytAcadArbeitet, 1);
}

TEST_F(EventSinkTest, TheWaitOfAnInsertEndsWithTheLispRun) {
  host_.onSendCommand = [this](const QString&) {
    QTimer::singleShot(10, &host_, [this]() { host_.raiseEndLisp(); });
  };
  EXPECT_TRUE(SendCommandUndWarten(*bridge_, "(load \"/prog/break\")\r"));
  EXPECT_EQ(bridge_->bytAcadArbeitet, 1);
}

TEST_F(EventSinkTest, ANewSinkReplacesTheOldOneAndHooksTheDocumentOnce) {
  ASSERT_TRUE(fctEventActivXErstellen(*bridge_));
  sink().ActiveDocumentWithEventSetzen();
  sink().ActiveDocumentWithEventSetzen();
  int ende = 0;
  QObject::connect(&host_, &Host::endCommand, [&] { ++ende; });
  bridge_->bytAcadArbeitet = 2;
  host_.raiseEndCommand("INSERT");
  EXPECT_EQ(ende, 1);
  EXPECT_EQ(bridge_->bytAcadArbeitet, 1);
  EXPECT_EQ(host_.endCommandReceivers(), 2);
}

TEST_F(EventSinkTest, NoHostOrNoDocumentGivesNoSink) {
  host_.documents = 0;
  EXPECT_FALSE(fctEventActivXErstellen(*bridge_));
  EXPECT_EQ(bridge_->EventActivX, nullptr);
  bridge_->acadApp = nullptr;
  hostLaeuft_ = false;
  EXPECT_FALSE(fctEventActivXErstellen(*bridge_));

  prompt_->answer(Answer::Ok);
  EventClassModule::subVerbindungsfehlerAnzeigen();
  EXPECT_EQ(prompt_->asked,
            QStringList("message|Info|Bei der Verbindung zu AutoCAD ist ein Fehler aufgetreten.\r"
                        "Bitte kontrollieren Sie, ob Ihre installierte Version von Kolvane\r"
                        "zu Ihrer genutzten AutoCAD-Version passt.|0|64"));
}

TEST_F(EventSinkTest, QuitEndsTheProgramAtOnce) {
  host_.raiseBeginQuit();
  EXPECT_EQ(exitCalls_, 1);
  EXPECT_EQ(lastExitCode_, 0);
  EXPECT_TRUE(prompt_->asked.isEmpty());

  int beenden = 0;
  QObject::connect(bridge_.get(), &CadBridge::programmBeenden, [&] { ++beenden; });
  host_.raiseBeginQuit();
  EXPECT_EQ(beenden, 1);
  EXPECT_EQ(exitCalls_, 1);
}

TEST_F(EventSinkTest, ActivationBringsTheFormOfTheFlowToTheFront) {
  QWidget hauptform, datenkarte, layermanager;
  bridge_->formulare[0] = &hauptform;
  bridge_->formulare[2] = &datenkarte;
  sink().frmToAcivate = &layermanager;
  datenkarte.showMinimized();
  const QString karte = QString::number(datenkarte.winId());

  // Not while the flag is off.
  bridge_->bytBlockv0Anpassen1Datenbank2BlockName3 = 2;
  host_.raiseAppActivate();
  EXPECT_TRUE(desk_.transcript.filter("Foreground").isEmpty());

  bridge_->bytEventBeruecksichtigen = 1;
  host_.raiseAppActivate();
  EXPECT_EQ(desk_.transcript,
            QStringList({"setForegroundWindow|" + karte, "bringWindowToTop|" + karte}));
  EXPECT_FALSE(datenkarte.isMinimized());

  desk_.transcript.clear();
  bridge_->bytBlockv0Anpassen1Datenbank2BlockName3 = 5;
  host_.raiseAppActivate();
  const QString lm = QString::number(layermanager.winId());
  EXPECT_EQ(desk_.transcript,
            QStringList({"setForegroundWindow|" + lm, "bringWindowToTop|" + lm}));

  // A value without a form does nothing.
  desk_.transcript.clear();
  bridge_->bytBlockv0Anpassen1Datenbank2BlockName3 = 3;
  host_.raiseAppActivate();
  EXPECT_TRUE(desk_.transcript.isEmpty());
}

}  // namespace
}  // namespace kolvane

// The automation server in this process, spoken to line by line: the greeting,
// the host and window requests, replies after the work, events before them.
#include <QElapsedTimer>
#include <QLocalSocket>

#include "automationserver.h"
#include "sandboxprotocol.h"
#include "sandboxtest.h"

namespace sandbox {
using ::testing::HasSubstr;

namespace proto = kolvane::sandboxproto;

class ServerTest : public SandboxTest {
 protected:
  void SetUp() override {
    SandboxTest::SetUp();
    in_->setUserMode(Interpreter::UserMode::Scripted);
    in_->setUserDelay(60000);
  }
  void TearDown() override {
    for (QLocalSocket* s : sockets_) delete s;
    server_.reset();
    SandboxTest::TearDown();
  }

  void serve(bool keystroke = false) {
    server_ = std::make_unique<AutomationServer>(*in_, keystroke);
    QString error;
    ASSERT_TRUE(server_->listen(path("s.sock"), &error)) << error.toStdString();
  }

  QLocalSocket* client(const QString& role, QStringList* reply = nullptr) {
    auto* s = new QLocalSocket;
    sockets_ << s;
    s->connectToServer(path("s.sock"));
    EXPECT_TRUE(waitUntil([s] { return s->state() == QLocalSocket::ConnectedState; }));
    const QStringList r = call(s, {"hello", role, "1"});
    if (reply) *reply = r;
    return s;
  }

  template <typename F>
  bool waitUntil(F done) {
    QElapsedTimer t;
    t.start();
    while (!done() && t.elapsed() < 10000)
      QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return done();
  }

  QString send(QLocalSocket* s, const QStringList& request) {
    const QString id = QString::number(++id_);
    s->write(proto::encodeLine(QStringList{id} + request));
    s->flush();
    return id;
  }

  // The reply's fields from "ok"/"error" on. Events before it are kept in
  // order, replies to other requests too.
  QStringList await(QLocalSocket* s, const QString& id) {
    if (replies_.contains(id)) return replies_.take(id);
    QStringList reply;
    waitUntil([&] {
      buffer_[s] += s->readAll();
      qsizetype end;
      while (reply.isEmpty() && (end = buffer_[s].indexOf('\n')) >= 0) {
        const QStringList f = proto::decodeLine(buffer_[s].left(end));
        buffer_[s].remove(0, end + 1);
        if (f.value(0) == "!")
          wire_ << "! " + f.mid(1).join(' ');
        else if (f.value(0) == "=" && f.value(1) == id)
          reply = f.mid(2);
        else if (f.value(0) == "=")
          replies_.insert(f.value(1), f.mid(2));
      }
      return !reply.isEmpty();
    });
    return reply;
  }

  QStringList call(QLocalSocket* s, const QStringList& request) {
    return await(s, send(s, request));
  }

  std::unique_ptr<AutomationServer> server_;
  QList<QLocalSocket*> sockets_;
  QHash<QLocalSocket*, QByteArray> buffer_;
  QHash<QString, QStringList> replies_;
  QStringList wire_;
  int id_ = 0;
};

TEST_F(ServerTest, GreetingDecidesWhatAClientMayAsk) {
  serve();
  QStringList reply;
  QLocalSocket* host = client("host", &reply);
  EXPECT_EQ(reply, (QStringList{"ok", "full"}));
  EXPECT_EQ(call(host, {"version"}), (QStringList{"ok", "19.1s (Sandbox)"}));
  EXPECT_EQ(call(host, {"caption"}), (QStringList{"ok", "Sandbox CAD - [Zeichnung1.dwg]"}));
  EXPECT_EQ(call(host, {"gibtsnicht"}).value(0), "error");

  QLocalSocket* desktop = client("desktop");
  EXPECT_EQ(call(desktop, {"version"}).value(0), "error");  // the window side has no automation
  EXPECT_EQ(call(desktop, {"windows"}),
            (QStringList{"ok", QString::number(AutomationServer::kWindowHandle),
                         "Sandbox CAD - [Zeichnung1.dwg]", QString::number(0x10800000)}));

  AutomationServer second(*in_, false);
  QString error;
  EXPECT_FALSE(second.listen(path("s.sock"), &error));  // the name is taken

  auto* stranger = new QLocalSocket;
  sockets_ << stranger;
  stranger->connectToServer(path("s.sock"));
  ASSERT_TRUE(waitUntil([stranger] { return stranger->state() == QLocalSocket::ConnectedState; }));
  EXPECT_EQ(call(stranger, {"version"}).value(0), "error");  // no greeting yet
  EXPECT_EQ(call(stranger, {"hello", "admin", "1"}).value(0), "error");
}

TEST_F(ServerTest, KeystrokeModeRefusesTheAutomationSide) {
  in_->titleBase = "Sandbox CAD LT";
  serve(true);
  QStringList reply;
  client("host", &reply);
  EXPECT_EQ(reply.value(0), "error");
  QLocalSocket* desktop = client("desktop", &reply);
  EXPECT_EQ(reply, (QStringList{"ok", "keystroke"}));
  EXPECT_EQ(call(desktop, {"windows"}).value(2), "Sandbox CAD LT - [Zeichnung1.dwg]");
  EXPECT_EQ(call(desktop, {"activate", "99"}).value(0), "error");
  EXPECT_EQ(call(desktop, {"activate", QString::number(AutomationServer::kWindowHandle)}).value(0),
            "ok");
  EXPECT_EQ(call(desktop, {"sendKeys", "{BOGUS}", "1"}).value(0), "error");
  EXPECT_EQ(call(desktop, {"sendKeys", "._circle 1,2 3~", "1"}).value(0), "ok");
  EXPECT_EQ(last().radius, 3);
}

TEST_F(ServerTest, SendCommandReturnsWhenTheUserIsNeededAndEventsComeFirst) {
  serve();
  QLocalSocket* host = client("host");
  EXPECT_EQ(call(host, {"sendCommand", "._circle 0,0 1\r"}), QStringList{"ok"});
  EXPECT_EQ(wire_, (QStringList{"! beginCommand CIRCLE", "! endCommand CIRCLE"}));
  wire_.clear();
  // Stopped at the user's pick: the call is answered all the same. (A Lisp
  // pause would wait in a nested event loop, which a test in the sandbox's own
  // thread can't serve; the end-to-end test covers it.)
  EXPECT_EQ(call(host, {"sendCommand", "._line 5,5 "}), QStringList{"ok"});
  EXPECT_EQ(wire_, QStringList{"! beginCommand LINE"});
  EXPECT_TRUE(in_->waitingForUser());
  // A busy host refuses what comes while the user is asked; nothing of it is
  // kept for later.
  const QStringList refused = call(host, {"sendCommand", "._mslide " + path("a.sld") + "\r"});
  EXPECT_EQ(refused.value(0), "error");
  EXPECT_THAT(refused.value(1).toStdString(), HasSubstr("beschäftigt"));
  QLocalSocket* desktop = client("desktop");
  in_->setUserOnPoll(true);
  picks("9,9\nENTER\n");
  EXPECT_EQ(call(desktop, {"keyState", "27"}), (QStringList{"ok", "0"}));  // the user clicks now
  ASSERT_TRUE(waitUntil([this] { return drawing().entities.size() == 2; }));
  EXPECT_EQ(call(desktop, {"keyState", "1"}), (QStringList{"ok", "1"}));  // and presses Return
  ASSERT_TRUE(waitUntil([this] { return !in_->commandActive(); }));
  EXPECT_FALSE(QFile::exists(path("a.sld")));
  EXPECT_EQ(call(host, {"sendCommand", "._mslide " + path("a.sld") + "\r"}), QStringList{"ok"});
  EXPECT_TRUE(QFile::exists(path("a.sld")));
  call(host, {"version"});
  EXPECT_EQ(wire_, (QStringList{"! beginCommand LINE", "! endCommand LINE", "! beginCommand MSLIDE",
                                "! endCommand MSLIDE"}));
  EXPECT_EQ(drawing().entities[1].p2, (Point{9, 9, 0}));
}

TEST_F(ServerTest, VariablesLayersDocumentsAndSelectionSets) {
  serve();
  QLocalSocket* host = client("host");
  EXPECT_EQ(call(host, {"getVariable", "filedia"}), (QStringList{"ok", "i:1"}));
  EXPECT_EQ(call(host, {"setVariable", "filedia", "i:0"}), QStringList{"ok"});
  EXPECT_EQ(in_->variable("filedia").toInt(), 0);
  EXPECT_EQ(call(host, {"setVariable", "lastpoint", "p:1,2.5,3"}), QStringList{"ok"});
  EXPECT_EQ(call(host, {"getVariable", "lastpoint"}), (QStringList{"ok", "p:1,2.5,3"}));
  EXPECT_EQ(call(host, {"getVariable", "viewsize"}).value(1), "r:100");
  EXPECT_EQ(call(host, {"getVariable", "gibtsnicht"}).value(0), "error");
  EXPECT_EQ(call(host, {"setVariable", "extmin", "p:0,0,0"}).value(0), "error");

  EXPECT_EQ(call(host, {"addLayer", "Moebel"}), QStringList{"ok"});
  EXPECT_EQ(call(host, {"setLayerColor", "Moebel", "3"}), QStringList{"ok"});
  EXPECT_EQ(call(host, {"setLayerColor", "Moebel", "300"}).value(0), "error");
  EXPECT_EQ(call(host, {"setLayerLinetype", "Moebel", "DASHED"}).value(0), "error");  // not loaded
  EXPECT_EQ(call(host, {"setLayerOn", "Moebel", "0"}), QStringList{"ok"});
  EXPECT_EQ(call(host, {"setLayerTrueColor", "Moebel", "10", "20", "30"}), QStringList{"ok"});
  EXPECT_EQ(call(host, {"layer", "moebel"}),
            (QStringList{"ok", "Moebel", "3", "10,20,30", "", "CONTINUOUS", "0", "0"}));
  EXPECT_EQ(call(host, {"layer", "fehlt"}).value(0), "error");
  EXPECT_EQ(call(host, {"layers"}).size(), 1 + 2 * 7);

  const QString file = writeBlock("teil.dwg");
  EXPECT_EQ(call(host, {"documentCount"}), (QStringList{"ok", "1"}));
  EXPECT_EQ(call(host, {"openDocument", path("fehlt.dwg")}).value(0), "error");
  EXPECT_EQ(call(host, {"openDocument", file}), QStringList{"ok"});
  EXPECT_EQ(call(host, {"documentCount"}),
            (QStringList{"ok", "2"}));  // the first drawing was changed
  EXPECT_EQ(call(host, {"activeDocumentFullName"}), (QStringList{"ok", file}));
  EXPECT_EQ(call(host, {"getVariable", "dwgprefix"}).value(1),
            "s:" + QFileInfo(file).absolutePath() + "/");
  EXPECT_EQ(call(host, {"closeDocument", "1", path("kopie.dwg")}), QStringList{"ok"});
  EXPECT_TRUE(QFile::exists(path("kopie.dwg")));
  EXPECT_EQ(call(host, {"documentCount"}), (QStringList{"ok", "1"}));

  EXPECT_EQ(call(host, {"selectionSetAdd", "SS"}), QStringList{"ok"});
  EXPECT_EQ(call(host, {"selectionSetAdd", "ss"}).value(0), "error");
  call(host, {"sendCommand", "._circle 0,0 1\r._circle 10,10 1\r"});
  const QString asked = send(host, {"selectOnScreen", "SS"});
  ASSERT_TRUE(waitUntil([this] { return in_->waitingForUser(); }));
  in_->userWindow({-2, -2, 0}, {2, 2, 0});
  in_->typeLine("");
  EXPECT_EQ(await(host, asked), (QStringList{"ok", "1"}));
  EXPECT_EQ(call(host, {"selectionSetErase", "SS"}), QStringList{"ok"});
  EXPECT_EQ(drawing().entities.size(), 1u);
  EXPECT_EQ(call(host, {"selectionSetDelete", "SS"}), QStringList{"ok"});
  EXPECT_EQ(call(host, {"selectionSetDelete", "SS"}).value(0), "error");

  EXPECT_EQ(call(host, {"zoomWindow", "0,0,0", "10,20,0"}), QStringList{"ok"});
  EXPECT_EQ(call(host, {"getVariable", "viewsize"}), (QStringList{"ok", "r:20"}));
  EXPECT_EQ(call(host, {"zoomScaled", "0", "1"}).value(0), "error");
}

TEST_F(ServerTest, UtilityQuestionsWaitForTheUserAndAClosedClientIsForgotten) {
  serve();
  QLocalSocket* host = client("host");
  picks("3,4\nreal 1.5\nESC\n");
  // Nobody polls keys: the user answers after the delay.
  in_->setUserDelay(10);
  const QString point = send(host, {"getPoint", "", "Punkt: "});
  EXPECT_EQ(call(host, {"getReal", "Faktor: "}), (QStringList{"ok", "1.5"}));
  EXPECT_EQ(await(host, point), (QStringList{"ok", "3,4,0"}));
  EXPECT_EQ(call(host, {"getString", "1", "Name: "}), QStringList{"ok"});  // Escape: no value
  // A client that leaves while its question waits does not break the sandbox.
  QLocalSocket* gone = client("host");
  send(gone, {"getPoint", "", "Punkt: "});
  waitUntil([this] { return in_->waitingForUser(); });
  gone->abort();
  in_->userPoint({1, 1, 0});
  QCoreApplication::processEvents();
  EXPECT_EQ(call(host, {"version"}).value(0), "ok");
}

}  // namespace sandbox

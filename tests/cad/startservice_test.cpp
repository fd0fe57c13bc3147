#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <cstring>
#include <future>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include "cadtest.h"
#include "startservice.h"

namespace kolvane {
namespace {

class StartServiceTest : public KolvaneTest {
 protected:
  void SetUp() override {
    KolvaneTest::SetUp();
    installData();
    ASSERT_TRUE(labels().fctSpracheAuslesen(0));
    labels().fctBeschriftungsFileZuordnenIni();
    socket_ = path("run/kolvane-start");
    QDir().mkpath(path("run"));
  }

  // Runs the program's client in a second process and serves events meanwhile,
  // so the running program can answer.
  struct Lauf {
    int exitCode = -1;
    QString err;
  };
  Lauf client(const QStringList& args, const QString& sock = {}) {
    QProcess p;
    p.start(QStringLiteral(CAD_START_CLIENT), QStringList(sock.isEmpty() ? socket_ : sock) + args);
    EXPECT_TRUE(p.waitForStarted(5000));
    eventsUntil([&p] { return p.state() == QProcess::NotRunning; }, 15000);
    return {p.exitCode(), QString::fromLocal8Bit(p.readAllStandardError())};
  }

  QString socket_;
};

TEST_F(StartServiceTest, SecondProcessStart3ReachesTheRunningProgram) {
  StartService s;
  ASSERT_TRUE(s.listen(socket_));
  QSignalSpy suchen(&s, &StartService::blkSuchenUndDirektEinfuegen);

  const Lauf l = client({"--start3", "Ventil DN 50"});
  EXPECT_EQ(l.exitCode, 0) << l.err.toStdString();
  // The call returns at once; the search follows by Timer5.
  EXPECT_EQ(s.strBlkNameUebergeben, "Ventil DN 50");
  EXPECT_TRUE(s.Timer5.isActive());
  ASSERT_TRUE(suchen.wait(3000));
  EXPECT_EQ(suchen.first().first().toString(), "Ventil DN 50");
  EXPECT_EQ(s.strBlkNameUebergeben, "");
}

TEST_F(StartServiceTest, LblockWithoutARunningProgramPrintsAndExitsOne) {
  const Lauf l = client({"--lblock"});
  EXPECT_EQ(l.exitCode, 1);
  EXPECT_EQ(l.err.trimmed(), "Kolvane muss gestartet sein, um diese Funktion auszuführen.");

  const Lauf s = client({"--start"});
  EXPECT_EQ(s.exitCode, 1);
  EXPECT_EQ(s.err.trimmed(), "Kolvane läuft nicht.");

  EXPECT_EQ(client({"--start2", "nur Ordner"}).exitCode, 2);
}

TEST_F(StartServiceTest, LblockHandsOverThroughTimer7) {
  StartService s;
  ASSERT_TRUE(s.listen(socket_));
  QSignalSpy lblock(&s, &StartService::lblockEinfuegen);
  EXPECT_EQ(client({"--lblock"}).exitCode, 0);
  EXPECT_TRUE(s.Timer7.isActive());
  EXPECT_EQ(s.Timer7.interval(), 500);
  EXPECT_TRUE(lblock.wait(3000));
}

TEST_F(StartServiceTest, SocketBelongsToTheUserAlone) {
  // A folder anyone may enter, so the socket's own rights decide.
  ASSERT_EQ(::chmod(QFile::encodeName(tmp_.path()).constData(), 0755), 0);
  ASSERT_EQ(::chmod(QFile::encodeName(path("run")).constData(), 0777), 0);
  StartService s;
  ASSERT_TRUE(s.listen(socket_));
  const QString datei = s.fullServerName();
  EXPECT_EQ(datei, socket_);
  struct stat st {};
  ASSERT_EQ(::stat(QFile::encodeName(datei).constData(), &st), 0);
  EXPECT_TRUE(S_ISSOCK(st.st_mode));
  EXPECT_EQ(st.st_uid, ::getuid());
  EXPECT_EQ(st.st_mode & (S_IRWXG | S_IRWXO), 0u) << std::oct << st.st_mode;

  if (::getuid() != 0) return;  // only root can take another user's identity
  // Another user tries to connect.
  const pid_t pid = ::fork();
  ASSERT_GE(pid, 0);
  if (pid == 0) {
    if (::setgid(65534) != 0 || ::setuid(65534) != 0) ::_exit(3);
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un a{};
    a.sun_family = AF_UNIX;
    const QByteArray p = QFile::encodeName(datei);
    std::memcpy(a.sun_path, p.constData(), std::min<size_t>(size_t(p.size()), sizeof a.sun_path - 1));
    const int r = ::connect(fd, reinterpret_cast<sockaddr*>(&a), sizeof a);
    ::_exit(r == 0 ? 1 : 0);
  }
  int status = 0;
  ::waitpid(pid, &status, 0);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0) << "another user reached the socket";
}

TEST_F(StartServiceTest, OnlyOneProgramListensAndALeftSocketIsTakenOver) {
  // A socket file that nobody serves, as a crashed run leaves it.
  {
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un a{};
    a.sun_family = AF_UNIX;
    const QByteArray p = QFile::encodeName(socket_);
    std::memcpy(a.sun_path, p.constData(), size_t(p.size()));
    ASSERT_EQ(::bind(fd, reinterpret_cast<sockaddr*>(&a), sizeof a), 0);
    ::close(fd);
  }
  StartService erster;
  EXPECT_TRUE(erster.listen(socket_));
  StartService zweiter;
  EXPECT_FALSE(zweiter.listen(socket_));
  // The first still answers: the call runs beside the event loop that serves it.
  auto antwort = std::async(std::launch::async,
                            [this] { return fctStartServiceAufrufen({"fctGetAppPath"}, socket_); });
  ASSERT_TRUE(eventsUntil([&] {
    return antwort.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
  }));
  EXPECT_EQ(antwort.get(), erster.fctGetAppPath());
}

TEST_F(StartServiceTest, LaterEntryWhileLoadingOnlyRaisesTheWindow) {
  StartService s;
  QSignalSpy vorne(&s, &StartService::fensterNachVorne);
  QSignalSpy springen(&s, &StartService::aufOrdnerUndSeiteSpringen);
  s.bytLaedtNoch = true;
  s.StartKolvane2("Armaturen", "12");
  s.StartKolvane3("Ventil");
  EXPECT_EQ(vorne.count(), 2);
  EXPECT_EQ(springen.count(), 0);
  EXPECT_FALSE(s.Timer5.isActive());
  // The values wait for the load to take them.
  EXPECT_EQ(s.strOrdnerUebergabe, "Armaturen");
  EXPECT_EQ(s.varSeiteUebergabe, "12");
  EXPECT_EQ(s.strBlkNameUebergeben, "Ventil");
}

TEST_F(StartServiceTest, LaterEntryJumpsSwitchesAndArmsTimer5) {
  StartService s;
  QSignalSpy vorne(&s, &StartService::fensterNachVorne);
  QSignalSpy springen(&s, &StartService::aufOrdnerUndSeiteSpringen);
  QSignalSpy wechseln(&s, &StartService::bibliothekWechseln);

  s.StartKolvane2("Armaturen", "12a");
  ASSERT_EQ(springen.count(), 1);
  EXPECT_EQ(springen[0], QVariantList({"Armaturen", "12a"}));
  EXPECT_EQ(vorne.count(), 1);
  EXPECT_EQ(s.strOrdnerUebergabe, "");
  EXPECT_TRUE(s.Timer5.isActive());
  EXPECT_EQ(s.Timer5.interval(), 1000);

  s.ChangeDb("c:\\lib\\db/dbKolvane.mdb");
  ASSERT_EQ(wechseln.count(), 1);
#ifdef Q_OS_WIN
  EXPECT_EQ(wechseln[0][0].toString(), "c:\\lib\\db\\dbKolvane.mdb");
#else
  EXPECT_EQ(wechseln[0][0].toString(), "c:/lib/db/dbKolvane.mdb");
#endif
  EXPECT_EQ(s.sDbPathUe, "");

  // The test marker switches nothing; Timer5 shows the hint.
  prompt_->answer(Answer::Ok);
  s.ChangeDb("TestDb");
  EXPECT_EQ(wechseln.count(), 1);
  QSignalSpy suchen(&s, &StartService::blkSuchenUndDirektEinfuegen);
  ASSERT_TRUE(eventsUntil([&] { return !s.Timer5.isActive(); }));
  EXPECT_EQ(suchen.count(), 0);
  EXPECT_EQ(vorne.count(), 2);  // no name pending: the main form comes up
  ASSERT_EQ(prompt_->asked.size(), 1);
  EXPECT_TRUE(prompt_->asked[0].startsWith("message|Info|Mit diesem Start können Sie die Bibliothek"));
  EXPECT_EQ(s.sDbPathUe, "");
}

TEST_F(StartServiceTest, CallsWaitWhileAFlowRuns) {
  StartService s;
  ASSERT_TRUE(s.listen(socket_));
  QSignalSpy suchen(&s, &StartService::blkSuchenUndDirektEinfuegen);
  QSignalSpy lblock(&s, &StartService::lblockEinfuegen);
  s.setAblaufLaeuft(true);

  EXPECT_EQ(client({"--start3", "Pumpe"}).exitCode, 0);
  EXPECT_EQ(client({"--lblock"}).exitCode, 0);
  eventsUntil([] { return false; }, 1500);
  EXPECT_EQ(s.strBlkNameUebergeben, "");  // not even handed over yet
  EXPECT_EQ(suchen.count(), 0);
  EXPECT_EQ(lblock.count(), 0);

  s.setAblaufLaeuft(false);
  EXPECT_EQ(lblock.count(), 1);
  EXPECT_EQ(s.strBlkNameUebergeben, "Pumpe");
  ASSERT_TRUE(suchen.wait(3000));
  EXPECT_EQ(suchen[0][0].toString(), "Pumpe");
}

// --change-db: a library the program can't open is refused to the caller with
// the reason in words (printed, exit 3); nothing is switched, and the program
// reports it itself once the caller has been let go and no flow runs.
TEST_F(StartServiceTest, ChangeDbToABrokenLibraryAnswersTheCallerWithTheError) {
  StartService s;
  ASSERT_TRUE(s.listen(socket_));
  QStringList geprueft;
  s.bibliothekPruefen = [&](const QString& pfad, QString* grund) {
    geprueft << pfad;
    if (!pfad.contains("kaputt")) return true;
    *grund = "Die Datei ist keine SQLite-Datenbank.";
    return false;
  };
  QSignalSpy wechseln(&s, &StartService::bibliothekWechseln);
  s.setAblaufLaeuft(true);  // an insert runs: the refusal can't wait for it

  const Lauf nein = client({"--change-db", path("kaputt") + "/dbKolvane.mdb"});
  EXPECT_EQ(nein.exitCode, 3);
  EXPECT_EQ(nein.err.trimmed(),
            "Die Bibliothek konnte nicht geöffnet werden: Die Datei ist keine SQLite-Datenbank.");
  eventsUntil([] { return false; }, 300);
  EXPECT_TRUE(prompt_->asked.isEmpty()) << "no box while the flow runs";
  s.setAblaufLaeuft(false);
  ASSERT_EQ(prompt_->asked.size(), 1);
  EXPECT_EQ(prompt_->asked[0],
            "message|Kolvane – Fehler|Die Bibliothek konnte nicht geöffnet werden: "
            "Die Datei ist keine SQLite-Datenbank.|0|48");

  // A sound library is switched to.
  const Lauf ja = client({"--change-db", path("gut")});
  EXPECT_EQ(ja.exitCode, 0) << ja.err.toStdString();
  ASSERT_EQ(wechseln.count(), 1);
  EXPECT_EQ(wechseln[0][0].toString(), path("gut"));
  EXPECT_EQ(geprueft, QStringList({path("kaputt") + "/dbKolvane.mdb", path("gut")}));
  // Nothing listens: still "not running", not an error of the program.
  s.close();
  const Lauf weg = client({"--change-db", path("gut")});
  EXPECT_EQ(weg.exitCode, 1);
  EXPECT_EQ(weg.err.trimmed(), "Kolvane läuft nicht.");
}

}  // namespace
}  // namespace kolvane

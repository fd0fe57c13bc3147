#pragma once
// The sandbox CAD as a child process for end-to-end tests: started offscreen
// on a socket of the test's own, with a picks file for the user. Every error
// line it prints ("[error] ...": unknown command, point expected, invalid
// option keyword, file not found ...) is collected; a test states the ones it
// expects, and any other fails it.
#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace kolvane {

class SandboxProcess {
 public:
  explicit SandboxProcess(QString executable) : exe_(std::move(executable)) {}
  ~SandboxProcess() { stop(); }

  // Starts the sandbox on `socket` with the picks file `picks`; true once it
  // listens. `more` are further options ("--language", "en", "--keystroke").
  bool start(const QString& socket, const QString& picks, const QStringList& more = {},
             int boundMs = 20000);
  void stop();
  void kill() {
    proc_.kill();
    proc_.waitForFinished(5000);
  }
  bool waitForFinished(int ms) { return proc_.waitForFinished(ms); }
  bool running() const { return proc_.state() != QProcess::NotRunning; }

  // All the sandbox printed so far.
  QByteArray output();
  // Its error lines so far, without the "[error] " mark.
  QStringList errorLines();
  // An error line that contains this text is expected (once or more).
  void expectError(const QString& part) { expected_ << part; }
  // Fails the running test for every error line that no expectation covers.
  void checkErrorLines();

 private:
  QString exe_;
  QProcess proc_;
  QByteArray output_;
  QStringList expected_;
};

}  // namespace kolvane

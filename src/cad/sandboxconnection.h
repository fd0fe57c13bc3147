#pragma once
#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>
#include <optional>

class QLocalSocket;

namespace kolvane {

// One connection to a running sandbox CAD: blocking calls, as a CAD's
// automation calls block, and events that arrive on the UI thread. A dead
// connection or a call beyond its time limit is an error, never a hang.
class SandboxConnection : public QObject {
  Q_OBJECT
 public:
  explicit SandboxConnection(QObject* parent = nullptr);
  ~SandboxConnection() override;

  // Connects and greets as "host" or "desktop"; false with the reason in
  // lastError(). The reply of the greeting ("full" or "keystroke") is kept.
  bool open(const QString& socketName, const QString& role);
  bool isOpen() const;
  QString mode() const { return mode_; }

  // The reply's values, or nothing with the reason in lastError(). timeoutMs
  // below 0 waits as long as the connection lives (a user at the host may take
  // his time); callTimeout(), when set, bounds every call all the same.
  std::optional<QStringList> call(const QString& op, const QStringList& args = {},
                                  int timeoutMs = 30000);
  QString lastError() const { return error_; }

  void setCallTimeout(int ms) { callTimeout_ = ms; }
  int callTimeout() const { return callTimeout_; }

 signals:
  // An event line of the sandbox: its name and arguments. Events raised while
  // a call was worked on come before that call returns; others from the event
  // loop.
  void event(const QString& name, const QStringList& args);
  void disconnected();

 private:
  void readAvailable();
  bool takeLine(QStringList* fields);

  QLocalSocket* socket_;
  QByteArray buffer_;
  QString error_;
  QString mode_;
  int nextId_ = 1;
  int callTimeout_ = -1;
  bool inCall_ = false;
};

}  // namespace kolvane

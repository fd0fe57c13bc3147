#pragma once
// The automation server: the program's RemoteHost and RemoteDesktop talk to
// the sandbox over a local socket that only the same user can open. The line
// protocol is in src/cad/sandboxprotocol.h.
#include <QHash>
#include <QObject>
#include <QPoint>
#include <QSet>
#include <QString>
#include <functional>

class QLocalServer;
class QLocalSocket;

namespace sandbox {

class Interpreter;

// What the server needs of the window; the batch mode has none.
struct WindowHooks {
  std::function<void()> activate;
  std::function<int()> windowState;
  std::function<void(int)> setWindowState;
  std::function<QPoint()> cursorPos;
  std::function<bool(const QString&)> screenshot;
};

class AutomationServer : public QObject {
  Q_OBJECT
 public:
  AutomationServer(Interpreter& in, bool keystrokeMode, QObject* parent = nullptr);
  ~AutomationServer() override;

  // Listens on the name; refuses when another sandbox answers there.
  bool listen(const QString& name, QString* error);
  QString serverName() const;
  void setWindowHooks(WindowHooks hooks) { hooks_ = std::move(hooks); }

  static constexpr quint64 kWindowHandle = 0x5A0001;

  // The window came to the front (by a click or by an activation request).
  void windowActivated();
  void windowDeactivated();
  // Tells the host clients that the sandbox is closing.
  void announceQuit();

 private:
  struct Client {
    QLocalSocket* socket = nullptr;
    QString role;
    QByteArray buffer;
  };

  void accept();
  void read(QLocalSocket* s);
  void handle(Client& c, const QStringList& fields);
  bool hostOp(Client& c, const QString& id, const QString& op, const QStringList& args);
  bool windowOp(Client& c, const QString& id, const QString& op, const QStringList& args);
  void reply(QLocalSocket* s, const QString& id, const QStringList& values);
  void error(QLocalSocket* s, const QString& id, const QString& text);
  void event(const QString& name, const QStringList& args = {});
  void settled();

  Interpreter& in_;
  bool keystroke_;
  QLocalServer* server_;
  QHash<QLocalSocket*, Client> clients_;
  // Sends and waiting keystrokes are answered when the sandbox has worked them
  // as far as it goes without the user.
  QList<QPair<QLocalSocket*, QString>> waiting_;
  QSet<QString> menuGroups_;
  bool active_ = false;
  WindowHooks hooks_;
};

}  // namespace sandbox

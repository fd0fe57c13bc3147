#include "sandboxconnection.h"

#include <QDeadlineTimer>
#include <QLocalSocket>

#include "sandboxprotocol.h"

namespace kolvane {

namespace proto = sandboxproto;

SandboxConnection::SandboxConnection(QObject* parent)
    : QObject(parent), socket_(new QLocalSocket(this)) {
  connect(socket_, &QLocalSocket::readyRead, this, [this] {
    if (!inCall_) readAvailable();
  });
  connect(socket_, &QLocalSocket::disconnected, this, &SandboxConnection::disconnected,
          Qt::QueuedConnection);
  bool ok = false;
  const int bound = qEnvironmentVariableIntValue(proto::kTimeoutEnv, &ok);
  if (ok && bound > 0) callTimeout_ = bound;
}

SandboxConnection::~SandboxConnection() = default;

bool SandboxConnection::open(const QString& socketName, const QString& role) {
  socket_->connectToServer(socketName);
  if (!socket_->waitForConnected(3000)) {
    error_ = QStringLiteral("Kein Sandbox-CAD am Socket \"%1\": %2")
                 .arg(socketName, socket_->errorString());
    socket_->abort();
    return false;
  }
  const auto reply = call(QStringLiteral("hello"), {role, QString::number(proto::kVersion)}, 10000);
  if (!reply) {
    socket_->abort();
    return false;
  }
  mode_ = reply->value(0);
  return true;
}

bool SandboxConnection::isOpen() const {
  return socket_->state() == QLocalSocket::ConnectedState;
}

bool SandboxConnection::takeLine(QStringList* fields) {
  const qsizetype end = buffer_.indexOf('\n');
  if (end < 0) return false;
  *fields = proto::decodeLine(buffer_.left(end));
  buffer_.remove(0, end + 1);
  return true;
}

void SandboxConnection::readAvailable() {
  if (socket_->bytesAvailable() > 0) buffer_ += socket_->readAll();
  QStringList fields;
  while (takeLine(&fields)) {
    if (fields.value(0) != QLatin1String("!")) continue;  // a late reply of a call that gave up
    emit event(fields.value(1), fields.mid(2));
  }
}

std::optional<QStringList> SandboxConnection::call(const QString& op, const QStringList& args,
                                                   int timeoutMs) {
  if (!isOpen()) {
    error_ = QStringLiteral("Die Verbindung zum Sandbox-CAD ist getrennt.");
    return std::nullopt;
  }
  const int id = nextId_++;
  QStringList request{QString::number(id), op};
  request += args;
  socket_->write(proto::encodeLine(request));
  socket_->flush();

  int limit = timeoutMs;
  if (callTimeout_ >= 0 && (limit < 0 || callTimeout_ < limit)) limit = callTimeout_;
  const QDeadlineTimer deadline =
      limit < 0 ? QDeadlineTimer(QDeadlineTimer::Forever) : QDeadlineTimer(limit);

  inCall_ = true;
  std::optional<QStringList> result;
  QString error;
  QList<QStringList> events;
  bool answered = false;
  while (!answered) {
    if (socket_->bytesAvailable() > 0) buffer_ += socket_->readAll();
    QStringList fields;
    while (!answered && takeLine(&fields)) {
      if (fields.value(0) == QLatin1String("!")) {
        events << fields.mid(1);
        continue;
      }
      if (fields.value(0) != QLatin1String("=") || fields.value(1).toInt() != id) continue;
      answered = true;
      if (fields.value(2) == QLatin1String("ok"))
        result = fields.mid(3);
      else
        error = fields.value(3);
    }
    if (answered) break;
    if (!isOpen() && socket_->bytesAvailable() == 0) {
      error = QStringLiteral("Die Verbindung zum Sandbox-CAD ist abgebrochen (%1).").arg(op);
      break;
    }
    if (deadline.hasExpired()) {
      error = QStringLiteral("Das Sandbox-CAD antwortet nicht (%1).").arg(op);
      break;
    }
    const qint64 left = deadline.remainingTime();
    socket_->waitForReadyRead(left < 0 ? 100 : int(qMin<qint64>(left, 100)));
  }
  inCall_ = false;
  // Events that the host raised while it worked on the call reach the program
  // before the call returns, as a CAD's events do during its automation calls.
  for (const QStringList& e : events) emit event(e.value(0), e.mid(1));
  error_ = error;
  // Lines that came behind the reply are handed on from the event loop.
  if (!buffer_.isEmpty() || socket_->bytesAvailable())
    QMetaObject::invokeMethod(
        this,
        [this] {
          if (!inCall_) readAvailable();
        },
        Qt::QueuedConnection);
  return result;
}

}  // namespace kolvane

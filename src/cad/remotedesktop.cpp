#include "remotedesktop.h"

#include <QApplication>
#include <QWidget>

#include "sandboxconnection.h"
#include "sandboxprotocol.h"

namespace kolvane {

namespace proto = sandboxproto;

namespace {

constexpr uint32_t kVisibleBordered = 0x10800000;

// AppActivate: an exact title first, then one that begins with the text; case
// is not told apart.
template <typename List>
qsizetype matchTitle(const List& windows, const QString& title) {
  for (qsizetype i = 0; i < windows.size(); ++i)
    if (windows[i].title.compare(title, Qt::CaseInsensitive) == 0) return i;
  for (qsizetype i = 0; i < windows.size(); ++i)
    if (!title.isEmpty() && windows[i].title.startsWith(title, Qt::CaseInsensitive)) return i;
  return -1;
}

}  // namespace

RemoteDesktop::RemoteDesktop() : conn_(std::make_unique<SandboxConnection>()) {}
RemoteDesktop::~RemoteDesktop() = default;

bool RemoteDesktop::open(const QString& socketName) {
  if (conn_->open(socketName, QStringLiteral("desktop"))) return true;
  error_ = conn_->lastError();
  return false;
}

QString RemoteDesktop::mode() const {
  return conn_->mode();
}
void RemoteDesktop::setCallTimeout(int ms) {
  conn_->setCallTimeout(ms);
}

QList<DesktopWindow> RemoteDesktop::remoteWindows() {
  QList<DesktopWindow> out;
  const auto r = conn_->call(QStringLiteral("windows"));
  if (!r) {
    error_ = conn_->lastError();
    return out;
  }
  for (qsizetype i = 0; i + 3 <= r->size(); i += 3)
    out << DesktopWindow{r->at(i).toULongLong(), r->at(i + 1), r->at(i + 2).toUInt()};
  return out;
}

QList<DesktopWindow> RemoteDesktop::localWindows() const {
  QList<DesktopWindow> out;
  if (!qApp) return out;
  for (QWidget* w : QApplication::topLevelWidgets()) {
    if (!w->isVisible() || w->windowTitle().isEmpty()) continue;
    out << DesktopWindow{quint64(w->winId()), w->windowTitle(), kVisibleBordered};
  }
  return out;
}

QList<DesktopWindow> RemoteDesktop::topLevelWindows() {
  const QList<DesktopWindow> remote = remoteWindows();
  const QList<DesktopWindow> local = localWindows();
  bool remoteFront = false;
  for (const DesktopWindow& w : remote) remoteFront = remoteFront || w.handle == foreground_;
  return remoteFront || foreground_ == 0 ? remote + local : local + remote;
}

bool RemoteDesktop::activateRemote(quint64 handle) {
  if (!conn_->call(QStringLiteral("activate"), {QString::number(handle)})) {
    error_ = conn_->lastError();
    return false;
  }
  foreground_ = handle;
  return true;
}

bool RemoteDesktop::activateLocal(quint64 handle) {
  if (!qApp) return false;
  for (QWidget* w : QApplication::topLevelWidgets()) {
    if (quint64(w->winId()) != handle) continue;
    w->raise();
    w->activateWindow();
    foreground_ = handle;
    return true;
  }
  return false;
}

bool RemoteDesktop::appActivate(const QString& title) {
  const QList<DesktopWindow> remote = remoteWindows();
  if (const qsizetype i = matchTitle(remote, title); i >= 0)
    return activateRemote(remote[i].handle);
  const QList<DesktopWindow> local = localWindows();
  if (const qsizetype i = matchTitle(local, title); i >= 0) return activateLocal(local[i].handle);
  error_ = QStringLiteral("Kein Fenster mit dem Titel \"%1\".").arg(title);
  return false;
}

quint64 RemoteDesktop::foregroundWindow() {
  return foreground_;
}

bool RemoteDesktop::setForegroundWindow(quint64 handle) {
  for (const DesktopWindow& w : remoteWindows())
    if (w.handle == handle) return activateRemote(handle);
  return activateLocal(handle);
}

bool RemoteDesktop::bringWindowToTop(quint64 handle) {
  return setForegroundWindow(handle);
}

quint64 RemoteDesktop::findWindow(const QString& title) {
  for (const DesktopWindow& w : remoteWindows() + localWindows())
    if (w.title == title) return w.handle;
  return 0;
}

quint64 RemoteDesktop::activeWindow() {
  if (!qApp || !QApplication::activeWindow()) return 0;
  return quint64(QApplication::activeWindow()->winId());
}

// Keys go to the foreground window; only the sandbox's takes them here.
bool RemoteDesktop::sendKeys(const QString& keys, bool wait) {
  bool remoteFront = false;
  for (const DesktopWindow& w : remoteWindows())
    remoteFront = remoteFront || w.handle == foreground_;
  if (!remoteFront) {
    error_ = QStringLiteral("Das Sandbox-CAD ist nicht das Fenster im Vordergrund.");
    return false;
  }
  if (!conn_->call(QStringLiteral("sendKeys"),
                   {keys, wait ? QStringLiteral("1") : QStringLiteral("0")}, -1)) {
    error_ = conn_->lastError();
    return false;
  }
  return true;
}

int16_t RemoteDesktop::getAsyncKeyState(int virtualKey) {
  const auto r = conn_->call(QStringLiteral("keyState"), {QString::number(virtualKey)});
  if (!r) {
    error_ = conn_->lastError();
    return 0;
  }
  return static_cast<int16_t>(r->value(0).toInt());
}

QPoint RemoteDesktop::cursorPos() {
  const auto r = conn_->call(QStringLiteral("cursorPos"));
  if (!r) return {};
  return {r->value(0).toInt(), r->value(1).toInt()};
}

std::unique_ptr<RemoteDesktop> connectSandboxDesktop(const QString& socketName, QString* error) {
  auto desktop = std::make_unique<RemoteDesktop>();
  if (!desktop->open(socketName.isEmpty() ? proto::defaultSocketName() : socketName)) {
    if (error) *error = desktop->lastError();
    return nullptr;
  }
  return desktop;
}

}  // namespace kolvane

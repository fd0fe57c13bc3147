#pragma once
#include <QString>
#include <memory>

#include "desktop.h"

namespace kolvane {

class SandboxConnection;

// The window side of the sandbox CAD over its local socket: the sandbox's
// window among the top-level windows, activation by its title, keystrokes
// into its command line and the key states it answers. This program's own
// visible top-level windows are listed too, behind the sandbox's when the
// sandbox is in front, so the window walks of the program find both.
class RemoteDesktop : public Desktop {
 public:
  RemoteDesktop();
  ~RemoteDesktop() override;

  // Connects to the sandbox at the socket name; false with lastError().
  bool open(const QString& socketName);
  QString lastError() const { return error_; }
  // "full", or "keystroke" when the sandbox serves only the window side.
  QString mode() const;
  void setCallTimeout(int ms);

  QList<DesktopWindow> topLevelWindows() override;
  bool appActivate(const QString& title) override;
  quint64 foregroundWindow() override;
  bool setForegroundWindow(quint64 handle) override;
  bool bringWindowToTop(quint64 handle) override;
  quint64 findWindow(const QString& title) override;
  quint64 activeWindow() override;
  bool sendKeys(const QString& keys, bool wait) override;
  int16_t getAsyncKeyState(int virtualKey) override;
  QPoint cursorPos() override;

 private:
  QList<DesktopWindow> remoteWindows();
  QList<DesktopWindow> localWindows() const;
  bool activateRemote(quint64 handle);
  bool activateLocal(quint64 handle);

  std::unique_ptr<SandboxConnection> conn_;
  QString error_;
  quint64 foreground_ = 0;
};

// Connects the window side to a running sandbox ("" = the default socket
// name). Null when none answers; the reason goes to *error.
std::unique_ptr<RemoteDesktop> connectSandboxDesktop(const QString& socketName = {},
                                                     QString* error = nullptr);

}  // namespace kolvane

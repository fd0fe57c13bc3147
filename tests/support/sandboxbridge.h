#pragma once
// The program's side of an end-to-end test: a bridge bound to a running
// sandbox CAD the way the program binds a host at start, with every call and
// wait bounded so a test that waits too long fails instead of hanging.
#include <QElapsedTimer>
#include <QString>
#include <memory>

#include "cadbridge.h"
#include "desktop.h"
#include "host.h"

namespace kolvane {

class RemoteDesktop;
class RemoteHost;

inline constexpr int kSandboxBound = 20000;  // no call and no wait of a test goes beyond this

// The window side with a bound: once the time is up, Escape reads as pressed.
class BoundedDesktop : public Desktop {
 public:
  explicit BoundedDesktop(Desktop& d, int boundMs = kSandboxBound) : d_(d), bound_(boundMs) {
    timer_.start();
  }
  QList<DesktopWindow> topLevelWindows() override { return d_.topLevelWindows(); }
  bool appActivate(const QString& t) override { return d_.appActivate(t); }
  quint64 foregroundWindow() override { return d_.foregroundWindow(); }
  bool setForegroundWindow(quint64 h) override { return d_.setForegroundWindow(h); }
  bool bringWindowToTop(quint64 h) override { return d_.bringWindowToTop(h); }
  quint64 findWindow(const QString& t) override { return d_.findWindow(t); }
  quint64 activeWindow() override { return d_.activeWindow(); }
  bool sendKeys(const QString& k, bool w) override { return d_.sendKeys(k, w); }
  int16_t getAsyncKeyState(int vk) override {
    if (expired()) return vk == 27 ? 1 : 0;
    return d_.getAsyncKeyState(vk);
  }
  QPoint cursorPos() override { return d_.cursorPos(); }
  bool expired() const { return timer_.elapsed() > bound_; }

 private:
  Desktop& d_;
  int bound_;
  QElapsedTimer timer_;
};

// A sandbox listening on `socket`, bound: on the automation route (host and
// desktop), or on the keystroke route (a sandbox started with --keystroke;
// the title "Sandbox CAD LT" must be among the settings' look-alike titles).
class SandboxBridge {
 public:
  SandboxBridge();
  ~SandboxBridge();
  // A bridge bound by ACAD_Connect as at start (with its event sink on the
  // automation route); null when the route is not the one asked for. The
  // caller owns it and lets it go before this object.
  std::unique_ptr<CadBridge> binden(const QString& socket, const QString& datenVerzeichnis,
                                    bool keystroke = false);
  RemoteHost* host() { return host_.get(); }
  Desktop& desktop() { return *bounded_; }
  // Waits until the host has nothing running (CMDACTIVE 0).
  bool frei();

 private:
  std::unique_ptr<RemoteDesktop> desktop_;
  std::unique_ptr<BoundedDesktop> bounded_;
  std::unique_ptr<RemoteHost> host_;
};

}  // namespace kolvane

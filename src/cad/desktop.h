#pragma once
#include <QList>
#include <QPoint>
#include <QString>
#include <cstdint>

namespace kolvane {

// A top-level window of the desktop.
struct DesktopWindow {
  quint64 handle = 0;
  QString title;
  uint32_t style = 0;  // WS_VISIBLE 0x10000000, WS_BORDER 0x00800000, ...
};

// The window side of the desktop: what the program does to the host's window
// on both routes (the only side on the keystroke route).
class Desktop {
 public:
  virtual ~Desktop() = default;

  // Top-level windows in z-order, front first.
  virtual QList<DesktopWindow> topLevelWindows() = 0;
  // Activation by title as AppActivate does it: an exact title first, then a
  // title that begins with the text. False is the error of a failed activation.
  virtual bool appActivate(const QString& title) = 0;
  virtual quint64 foregroundWindow() = 0;
  virtual bool setForegroundWindow(quint64 handle) = 0;
  virtual bool bringWindowToTop(quint64 handle) = 0;
  // FindWindow by exact title; 0 when none.
  virtual quint64 findWindow(const QString& title) = 0;
  // The active window of this program's own process (GetActiveWindow).
  virtual quint64 activeWindow() = 0;
  // Types into the foreground window with the SendKeys grammar: "{ESC}",
  // "{TAB}", "{ENTER}", "{(}", "{)}", "{{}", "{}}", "~" (Enter), "+" "^" "%"
  // as shift, control, alt. With wait, returns when the keys were processed.
  virtual bool sendKeys(const QString& keys, bool wait) = 0;
  // GetAsyncKeyState: bit 0x8000 down now, bit 1 pressed since the last question;
  // codes 1 (left button), 2 (right button), 13 (Return), 27 (Escape).
  virtual int16_t getAsyncKeyState(int virtualKey) = 0;
  virtual QPoint cursorPos() = 0;
};

}  // namespace kolvane

#pragma once
#include <QHash>
#include <QSet>
#include <QStringList>
#include <deque>
#include <functional>

#include "desktop.h"

namespace kolvane {

// A desktop for tests. Every call but the polled ones goes into `transcript`
// ("appActivate|AutoCAD LT", "sendKeys|{ESC}{ESC}|wait", "foregroundWindow",
// ...). Key states and the active window are polled in loops, so their reads
// go into `polls` instead ("key|27"). Windows, keys and the active window come
// from the members below.
class FakeDesktop : public Desktop {
 public:
  QStringList transcript;
  QStringList polls;

  // Top-level windows, front first. appActivate finds an exact title first,
  // then one that begins with the text, and makes that window the foreground.
  QList<DesktopWindow> windows;
  // A visible, bordered window (the kind the title search accepts).
  DesktopWindow& addWindow(quint64 handle, const QString& title,
                           uint32_t style = 0x10C00000);
  // Titles whose activation fails even when such a window exists.
  QSet<QString> refuse;
  quint64 foreground = 0;
  quint64 active = 0;  // what activeWindow() answers

  // Key states per virtual key: answers in order; an empty queue answers 0.
  QHash<int, std::deque<int16_t>> keys;
  // A press since the last question (bit 1), for the next read of the key.
  void press(int vk) { keys[vk].push_back(1); }
  // Runs before each key read; may queue states (e.g. press Escape on the
  // 5th poll).
  std::function<void(int vk, int readsOfThisKey)> onKeyRead;
  // A loop that never sees the key it waits for would hang the test: after
  // this many reads of one key with nothing queued, the test fails and Escape
  // and the left button read as pressed.
  int pollLimit = 3000;

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
  QHash<int, int> reads_;
  QHash<int, int> idleReads_;
};

}  // namespace kolvane

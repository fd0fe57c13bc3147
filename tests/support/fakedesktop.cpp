#include "fakedesktop.h"

#include <gtest/gtest.h>

namespace kolvane {

DesktopWindow& FakeDesktop::addWindow(quint64 handle, const QString& title, uint32_t style) {
  DesktopWindow w;
  w.handle = handle;
  w.title = title;
  w.style = style;
  windows << w;
  return windows.last();
}

QList<DesktopWindow> FakeDesktop::topLevelWindows() {
  transcript << QStringLiteral("topLevelWindows");
  return windows;
}

bool FakeDesktop::appActivate(const QString& title) {
  transcript << QStringLiteral("appActivate|") + title;
  if (title.isEmpty() || refuse.contains(title)) return false;
  for (const DesktopWindow& w : windows)
    if (w.title == title) {
      foreground = w.handle;
      return true;
    }
  for (const DesktopWindow& w : windows)
    if (w.title.startsWith(title, Qt::CaseInsensitive)) {
      foreground = w.handle;
      return true;
    }
  return false;
}

quint64 FakeDesktop::foregroundWindow() {
  transcript << QStringLiteral("foregroundWindow");
  return foreground;
}

bool FakeDesktop::setForegroundWindow(quint64 handle) {
  transcript << QStringLiteral("setForegroundWindow|") + QString::number(handle);
  foreground = handle;
  return true;
}

bool FakeDesktop::bringWindowToTop(quint64 handle) {
  transcript << QStringLiteral("bringWindowToTop|") + QString::number(handle);
  return true;
}

quint64 FakeDesktop::findWindow(const QString& title) {
  transcript << QStringLiteral("findWindow|") + title;
  for (const DesktopWindow& w : windows)
    if (w.title == title) return w.handle;
  return 0;
}

quint64 FakeDesktop::activeWindow() {
  polls << QStringLiteral("activeWindow");
  return active;
}

bool FakeDesktop::sendKeys(const QString& k, bool wait) {
  transcript << QStringLiteral("sendKeys|") + k + (wait ? "|wait" : "|nowait");
  return true;
}

int16_t FakeDesktop::getAsyncKeyState(int vk) {
  polls << QStringLiteral("key|") + QString::number(vk);
  const int n = ++reads_[vk];
  if (onKeyRead) onKeyRead(vk, n);
  std::deque<int16_t>& q = keys[vk];
  if (!q.empty()) {
    idleReads_[vk] = 0;
    const int16_t v = q.front();
    q.pop_front();
    return v;
  }
  if (++idleReads_[vk] > pollLimit) {
    ADD_FAILURE() << "key " << vk << " polled " << pollLimit << " times with nothing scripted";
    idleReads_[vk] = 0;
    return (vk == 27 || vk == 1 || vk == 13) ? 1 : 0;
  }
  return 0;
}

QPoint FakeDesktop::cursorPos() {
  transcript << QStringLiteral("cursorPos");
  return {};
}

}  // namespace kolvane

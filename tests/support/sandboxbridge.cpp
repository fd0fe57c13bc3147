#include "sandboxbridge.h"

#include <QCoreApplication>

#include "acadconnect.h"
#include "eventsink.h"
#include "remotedesktop.h"
#include "remotehost.h"

namespace kolvane {

SandboxBridge::SandboxBridge() = default;

SandboxBridge::~SandboxBridge() = default;

std::unique_ptr<CadBridge> SandboxBridge::binden(const QString& socket, const QString& datenVerzeichnis,
                                                 bool keystroke) {
  desktop_ = connectSandboxDesktop(socket);
  if (!desktop_) return nullptr;
  desktop_->setCallTimeout(kSandboxBound);
  bounded_ = std::make_unique<BoundedDesktop>(*desktop_);
  auto bridge = std::make_unique<CadBridge>(bounded_.get());
  bridge->hWndHauptfenster = 1;  // the program's window is never the active one here
  bridge->strDatenVerzeichnis = datenVerzeichnis;
  bridge->pauseHook = [](int) {};
  bridge->hostGetObject = [this, socket](QString* fehler) -> Host* {
    if (!host_) host_ = connectSandboxHost(socket, fehler);
    if (host_) host_->setCallTimeout(kSandboxBound);
    return host_.get();
  };
  uint8_t only16 = 0;
  if (ACAD_Connect(*bridge, 0, 0, only16) != -1) return nullptr;
  if (bridge->istLT() != keystroke) return nullptr;
  if (!keystroke && !fctEventActivXErstellen(*bridge)) return nullptr;
  return bridge;
}

bool SandboxBridge::frei() {
  if (!host_) return true;
  QElapsedTimer t;
  t.start();
  while (t.elapsed() < kSandboxBound) {
    if (host_->getVariable(QStringLiteral("CMDACTIVE")).toInt() == 0) return true;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 100);
  }
  return false;
}

}  // namespace kolvane

#include "cadbridge.h"

#include <QCoreApplication>
#include <QDir>
#include <QMetaMethod>

#include "desktop.h"
#include "diagnostics.h"
#include "eventsink.h"
#include "labels.h"
#include "msgbox.h"
#include "settings.h"

namespace kolvane {

CadBridge::CadBridge(Desktop* d, QObject* parent) : QObject(parent), desktop(d) {
  Timer4.setInterval(50);
  connect(&Timer4, &QTimer::timeout, this, &CadBridge::timer4Tick);
  if (const Settings* s = currentSettings())
    strDatenVerzeichnis = QDir(s->environment().configDir).filePath(QStringLiteral("cad"));
  strExePfad = QCoreApplication::applicationFilePath();
}

CadBridge::~CadBridge() = default;

QString CadBridge::hostDatei(const QString& name) const {
  return QDir(strDatenVerzeichnis).filePath(name);
}

bool CadBridge::istLT() const {
  return typAcadVersionInfo.strACadVersion == QLatin1String("AutoCAD LT");
}

void CadBridge::Timer4Starten() {
  Timer4.setInterval(50);
  Timer4.start();
}

void CadBridge::Timer4Stoppen() { Timer4.stop(); }

void CadBridge::timer4Tick() {
  // A click on the library window during a pick must not strand the user.
  if (!desktop || bytAcadArbeitet != 2) return;
  if (hWndHauptfenster != 0 && desktop->activeWindow() == hWndHauptfenster)
    desktop->appActivate(typAcadVersionInfo.strACadTitel);
}

void CadBridge::subAcadNichtErreichbar() {
  Trace t(QStringLiteral("subAcadNichtErreichbar"));
  const Labels& l = labels();
  subMsgboxInfoEinzeilig(l.fctBeschriftMsgboxZuordnen(67) + "\r\r" + l.fctBeschriftMsgboxZuordnen(68) +
                         "\r" + typAcadVersionInfo.strACadVersion + " " +
                         l.fctBeschriftMsgboxZuordnen(3));
  subSofortBeenden();
}

void CadBridge::subSofortBeenden() {
  if (isSignalConnected(QMetaMethod::fromSignal(&CadBridge::programmBeenden)))
    emit programmBeenden();
  else
    callExitHook(0);
}

}  // namespace kolvane

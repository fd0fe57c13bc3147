#include <QApplication>

#include "programm.h"
#include "qtprompt.h"
#include "startservice.h"

using namespace kolvane;

// The process entry. `kolvane --start3 NAME` and its kin only steer the running
// program and end; every other start is Main.
int main(int argc, char** argv) {
  if (argc > 1 && istStartKommando(QString::fromLocal8Bit(argv[1]))) {
    QCoreApplication core(argc, argv);
    return runStartClient(core.arguments().mid(1));
  }
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Kolvane"));
  QApplication::setApplicationVersion(QStringLiteral("9.0"));
  QApplication::setQuitOnLastWindowClosed(false);  // Form_Unload decides

  QtPrompt qtPrompt;
  setPrompt(&qtPrompt);
  Programm programm(Environment::fromSystem());
  const int ende = programm.Main(app.arguments().mid(1));
  if (ende >= 0) return ende;
  return app.exec();
}

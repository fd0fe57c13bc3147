#include <QApplication>
#include <cstdio>

#include "programm.h"
#include "qtprompt.h"
#include "startservice.h"

using namespace kolvane;

// The process entry. `kolvane --start3 NAME` and its kin only steer the running
// program and end; --help and --version only print; every other start is Main.
int main(int argc, char** argv) {
  if (argc > 1 && istStartKommando(QString::fromLocal8Bit(argv[1]))) {
    QCoreApplication core(argc, argv);
    return runStartClient(core.arguments().mid(1));
  }
  // Before any window, setting or host: these need none.
  QStringList args;
  for (int i = 1; i < argc; ++i) args << QString::fromLocal8Bit(argv[i]);
  const Aufruf aufruf = Aufruf::pruefen(args);
  switch (aufruf.art) {
    case Aufruf::Art::Hilfe:
      std::fputs(aufrufHilfe().toLocal8Bit().constData(), stdout);
      return 0;
    case Aufruf::Art::Version:
      std::fputs(QStringLiteral("kolvane %1\n").arg(programmVersion()).toLocal8Bit().constData(), stdout);
      return 0;
    case Aufruf::Art::Fehler:
      std::fputs(QStringLiteral("kolvane: unknown option or missing value: %1\n\n").arg(aufruf.option).toLocal8Bit().constData(),
                 stderr);
      std::fputs(aufrufHilfe().toLocal8Bit().constData(), stderr);
      return 2;
    case Aufruf::Art::Starten:
      break;
  }
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Kolvane"));
  QApplication::setApplicationVersion(programmVersion());
  QApplication::setQuitOnLastWindowClosed(false);  // Form_Unload decides

  QtPrompt qtPrompt;
  setPrompt(&qtPrompt);
  Programm programm(Environment::fromSystem());
  const int ende = programm.Main(app.arguments().mid(1));
  if (ende >= 0) return ende;
  return app.exec();
}

#include "batch.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTextStream>

#include "interpreter.h"

namespace sandbox {

int runBatch(const BatchOptions& o, QTextStream& out) {
  Interpreter in;
  in.setLanguage(o.language);
  in.setUserMode(Interpreter::UserMode::Immediate);
  in.doc().view.screenWidth = o.screenWidth;
  in.doc().view.screenHeight = o.screenHeight;
  auto finish = [&](int status, const QString& problem) {
    if (!problem.isEmpty()) in.message(problem);
    for (int i = 0; i < in.history().size(); ++i)
      out << (in.isErrorLine(i) ? QStringLiteral("[error] ") : QString()) << in.history()[i] << '\n';
    out.flush();
    return status;
  };
  QString error;
  if (!o.picks.isEmpty() && !in.picks().load(o.picks, &error)) return finish(1, error);
  if (!o.open.isEmpty() && !in.openDocument(in.resolvePath(o.open), &error))
    return finish(1, error);
  if (!in.runScript(in.resolvePath(o.script), &error)) return finish(1, error);

  // Everything runs at once: the picks file answers as soon as it is asked.
  // What is left waiting (an expression never closed) is broken off.
  QElapsedTimer clock;
  clock.start();
  for (int round = 0; round < 3 && !in.quitting(); ++round) {
    in.pump();
    QCoreApplication::processEvents();
    in.pump();
    if (in.idle()) break;
    in.cancel();
  }
  if (!o.save.isEmpty()) {
    if (!in.doc().save(in.resolvePath(o.save), &error)) return finish(1, error);
    in.message(QStringLiteral("Gespeichert: %1").arg(in.doc().fileName));
  }
  return finish(0, {});
}

}  // namespace sandbox

// Files and the world outside: OPEN, QSAVE, MSLIDE, SHELL, SCRIPT, QUIT.
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>

#include "commands.h"
#include "slideshot.h"
#include "slidewriter.h"

namespace sandbox {

namespace {

// The drawing's name without its extension: what file questions offer.
QString drawingName(Interpreter& in) {
  return QFileInfo(in.doc().displayName).completeBaseName();
}

}  // namespace

Task<void> cmdOpen(Interpreter& in) {
  const QString name = co_await askFile(in, in.prompt("OPEN", "file"));
  QString path = in.resolvePath(name);
  if (!QFileInfo(path).isFile())
    for (const char* ext : {".dwg", ".dxf"})
      if (QFileInfo(in.resolvePath(name, QString::fromLatin1(ext))).isFile())
        path = in.resolvePath(name, QString::fromLatin1(ext));
  QString error;
  if (!in.openDocument(path, &error)) in.error(error);
}

Task<void> cmdSave(Interpreter& in) {
  QString target = in.doc().fileName;
  if (target.isEmpty()) {
    const Ask a = in.prompt("QSAVE", "file", {drawingName(in)});
    const QString name = co_await askFile(in, a, drawingName(in));
    target = in.resolvePath(name, QStringLiteral(".dwg"));
  }
  QString error;
  if (!in.doc().save(target, &error))
    in.error(error);
  else
    in.message(in.text("QSAVE", "saved", {target}));
  in.documentsChanged();
}

// MSLIDE writes the current view as a slide; an existing file is replaced
// only after a yes.
Task<void> cmdMslide(Interpreter& in) {
  const Ask a = in.prompt("MSLIDE", "file", {drawingName(in)});
  const QString name = co_await askFile(in, a, drawingName(in));
  const QString path = in.resolvePath(name, QStringLiteral(".sld"));
  if (QFileInfo::exists(path)) {
    const Ask replaceAsk = in.prompt("MSLIDE", "replace", {path});
    const bool replace = co_await askYesNo(in, replaceAsk, false);
    if (!replace) co_return;
  }
  const QByteArray bytes = kolvane::writeSlide(shootSlide(in.doc().drawing, in.doc().view));
  QSaveFile f(path);
  if (bytes.isEmpty() || !QDir().mkpath(QFileInfo(path).absolutePath()) ||
      !f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size() || !f.commit()) {
    in.error(in.text("MSLIDE", "cannotWrite", {path}));
    co_return;
  }
  in.message(in.text("MSLIDE", "written", {path}));
}

// SHELL runs the line through the system shell and returns when it has ended.
Task<void> cmdShell(Interpreter& in) {
  Ask a = in.prompt("SHELL", "command");
  a.text = true;
  const Answer x = co_await in.ask(a);
  const QString line = x.text.trimmed();
  if (line.isEmpty()) {
    in.error(in.text("SHELL", "noShell"));
    co_return;
  }
  QProcess p;
  p.setProcessChannelMode(QProcess::MergedChannels);
#ifdef Q_OS_WIN
  p.start(QStringLiteral("cmd.exe"), {QStringLiteral("/c"), line});
#else
  p.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), line});
#endif
  if (!p.waitForStarted(10000)) {
    in.error(in.text("SHELL", "notStarted", {p.errorString()}));
    co_return;
  }
  if (!p.waitForFinished(in.shellTimeoutMs)) {
    p.kill();
    p.waitForFinished(2000);
    in.error(in.text("SHELL", "timeout"));
  }
  const QString output = QString::fromLocal8Bit(p.readAll()).trimmed();
  if (!output.isEmpty()) in.message(output);
  if (p.exitStatus() == QProcess::NormalExit && p.exitCode() != 0)
    in.message(in.text("SHELL", "status", {QString::number(p.exitCode())}));
}

Task<void> cmdScript(Interpreter& in) {
  const Ask a = in.prompt("SCRIPT", "file", {drawingName(in)});
  const QString name = co_await askFile(in, a, drawingName(in));
  QString error;
  if (!in.runScript(in.resolvePath(name, QStringLiteral(".scr")), &error)) in.error(error);
}

Task<void> cmdQuit(Interpreter& in) {
  in.requestQuit();
  co_return;
}

}  // namespace sandbox

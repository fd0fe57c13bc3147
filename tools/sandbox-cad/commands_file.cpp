// Files and the world outside: OPEN, QSAVE, MSLIDE, SHELL, SCRIPT, QUIT.
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>

#include "commands.h"
#include "slideshot.h"
#include "slidewriter.h"

namespace sandbox {

Task<void> cmdOpen(Interpreter& in) {
  const QString name = co_await askFile(in, QStringLiteral("Zeichnungsname eingeben: "));
  QString path = in.resolvePath(name);
  if (!QFileInfo(path).isFile())
    for (const char* ext : {".dwg", ".dxf"})
      if (QFileInfo(in.resolvePath(name, QString::fromLatin1(ext))).isFile())
        path = in.resolvePath(name, QString::fromLatin1(ext));
  QString error;
  if (!in.openDocument(path, &error)) in.message(error);
}

Task<void> cmdSave(Interpreter& in) {
  QString target = in.doc().fileName;
  if (target.isEmpty()) {
    const QString name = co_await askFile(in, QStringLiteral("Zeichnung speichern unter: "));
    target = in.resolvePath(name, QStringLiteral(".dwg"));
  }
  QString error;
  if (!in.doc().save(target, &error))
    in.message(error);
  else
    in.message(QStringLiteral("Gespeichert: %1").arg(target));
  in.documentsChanged();
}

// MSLIDE writes the current view as a slide; an existing file is replaced
// only after a yes.
Task<void> cmdMslide(Interpreter& in) {
  const QString name = co_await askFile(in, QStringLiteral("Name der Diadatei eingeben: "));
  const QString path = in.resolvePath(name, QStringLiteral(".sld"));
  if (QFileInfo::exists(path)) {
    const bool replace = co_await askYesNo(
        in,
        QStringLiteral("Das Dia \"%1\" existiert bereits. Ersetzen? [Ja/Nein] <Nein>: ").arg(path),
        false);
    if (!replace) co_return;
  }
  const QByteArray bytes = kolvane::writeSlide(shootSlide(in.doc().drawing, in.doc().view));
  QSaveFile f(path);
  if (bytes.isEmpty() || !QDir().mkpath(QFileInfo(path).absolutePath()) ||
      !f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size() || !f.commit()) {
    in.message(QStringLiteral("Das Dia kann nicht geschrieben werden: %1").arg(path));
    co_return;
  }
  in.message(QStringLiteral("Dia geschrieben: %1").arg(path));
}

// SHELL runs the line through the system shell and returns when it has ended.
Task<void> cmdShell(Interpreter& in) {
  Ask a;
  a.prompt = QStringLiteral("BS-Befehl: ");
  a.text = true;
  const Answer x = co_await in.ask(a);
  const QString line = x.text.trimmed();
  if (line.isEmpty()) {
    in.message(QStringLiteral("Eine Shell ohne Befehl gibt es in der Sandbox nicht."));
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
    in.message(QStringLiteral("Die Shell startet nicht: %1").arg(p.errorString()));
    co_return;
  }
  if (!p.waitForFinished(in.shellTimeoutMs)) {
    p.kill();
    p.waitForFinished(2000);
    in.message(QStringLiteral("Der Befehl lief zu lange und wurde beendet."));
  }
  const QString output = QString::fromLocal8Bit(p.readAll()).trimmed();
  if (!output.isEmpty()) in.message(output);
  if (p.exitStatus() == QProcess::NormalExit && p.exitCode() != 0)
    in.message(QStringLiteral("Der Befehl endete mit Status %1.").arg(p.exitCode()));
}

Task<void> cmdScript(Interpreter& in) {
  const QString name = co_await askFile(in, QStringLiteral("Skriptdatei eingeben: "));
  QString error;
  if (!in.runScript(in.resolvePath(name, QStringLiteral(".scr")), &error)) in.message(error);
}

Task<void> cmdQuit(Interpreter& in) {
  in.requestQuit();
  co_return;
}

}  // namespace sandbox

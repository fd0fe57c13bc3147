#include "sandboxprocess.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QProcessEnvironment>

namespace kolvane {

bool SandboxProcess::start(const QString& socket, const QString& picks, const QStringList& more,
                           int boundMs) {
  QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
  env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
  proc_.setProcessEnvironment(env);
  proc_.setProcessChannelMode(QProcess::MergedChannels);
  output_.clear();
  proc_.start(exe_, QStringList{QStringLiteral("--socket"), socket, QStringLiteral("--picks"), picks} +
                        more);
  QElapsedTimer t;
  t.start();
  while (!output_.contains("listening") && t.elapsed() < boundMs) {
    proc_.waitForReadyRead(200);
    output_ += proc_.readAll();
    if (proc_.state() == QProcess::NotRunning) break;
  }
  return output_.contains("listening");
}

void SandboxProcess::stop() {
  if (proc_.state() == QProcess::NotRunning) return;
  output();
  proc_.terminate();
  if (!proc_.waitForFinished(5000)) proc_.kill();
  proc_.waitForFinished(2000);
  output_ += proc_.readAll();
}

QByteArray SandboxProcess::output() {
  if (proc_.state() != QProcess::NotRunning) proc_.waitForReadyRead(50);
  output_ += proc_.readAll();
  return output_;
}

QStringList SandboxProcess::errorLines() {
  QStringList lines;
  for (const QByteArray& l : output().split('\n'))
    if (l.startsWith("[error] ")) lines << QString::fromUtf8(l.mid(8)).trimmed();
  return lines;
}

void SandboxProcess::checkErrorLines() {
  // A sanitized build of the sandbox reports its own faults on the same stream.
  const QByteArray all = output();
  for (const char* fault : {"ERROR: AddressSanitizer", "runtime error:"})
    if (all.contains(fault))
      ADD_FAILURE() << "the sandbox reported a fault:\n" << all.toStdString();
  for (const QString& line : errorLines()) {
    bool known = false;
    for (const QString& part : expected_)
      if (line.contains(part)) known = true;
    if (!known) ADD_FAILURE() << "the sandbox printed an error line: " << line.toStdString();
  }
}

}  // namespace kolvane

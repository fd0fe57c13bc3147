#include "kolvanetest.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include "diagnostics.h"
#include "labels.h"

namespace kolvane {

QString sourceDir() {
  const QByteArray src = qgetenv("KOLVANE_SOURCE_DIR");
  if (!src.isEmpty()) return QString::fromLocal8Bit(src);
  return QStringLiteral(KOLVANE_SOURCE_DIR_DEFAULT);
}

QString sourceDataDir() { return sourceDir() + "/data"; }

void KolvaneTest::SetUp() {
  ASSERT_TRUE(tmp_.isValid());
  QDir root(tmp_.path());
  root.mkpath("prog");
  root.mkpath("config/Kolvane");
  root.mkpath("temp");
  root.mkpath("home");
  env_.programDir = path("prog");
  env_.configDir = path("config/Kolvane") + "/";
  env_.tempRoot = path("temp") + "/";
  env_.homeDir = path("home");
  env_.userStoreFile = path("userstore.ini");
  settings_ = std::make_unique<Settings>(env_);
  setCurrentSettings(settings_.get());
  prompt_ = std::make_unique<ScriptedPrompt>();
  exitCalls_ = 0;
  setExitHook([this](int code) {
    ++exitCalls_;
    lastExitCode_ = code;
  });
  diagnostics() = DiagnosticsState{};
}

void KolvaneTest::TearDown() {
  setExitHook({});
  setDiagnosticsClock({});
  prompt_.reset();
  setCurrentSettings(nullptr);
  settings_.reset();
  diagnostics() = DiagnosticsState{};
}

void KolvaneTest::installData() {
  const QString from = sourceDataDir();
  QDirIterator it(from, QDir::Files, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QString f = it.next();
    const QString rel = QDir(from).relativeFilePath(f);
    const QString to = QDir(env_.programDir).filePath(rel);
    QDir().mkpath(QFileInfo(to).absolutePath());
    QFile::remove(to);
    QFile::copy(f, to);
  }
}

void KolvaneTest::writeFile(const QString& file, const QByteArray& content) {
  QDir().mkpath(QFileInfo(file).absolutePath());
  QFile f(file);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly)) << file.toStdString();
  f.write(content);
}

QByteArray KolvaneTest::readFile(const QString& file) {
  QFile f(file);
  if (!f.open(QIODevice::ReadOnly)) return {};
  return f.readAll();
}

}  // namespace kolvane

#pragma once
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <memory>

#include "settings.h"

namespace kolvane::tool {

// The tool runs without the user's settings: every place lies in a temporary
// directory, the program directory is the executable's (txtPrefix.txt), and
// error reports are collected for the one line on stderr.
class Umgebung {
 public:
  Umgebung() {
    Environment env;
    env.programDir = QCoreApplication::applicationDirPath();
    if (!QFileInfo::exists(QDir(env.programDir).filePath(QStringLiteral("txtPrefix.txt")))) {
      const QString installiert =
          QDir(env.programDir).absoluteFilePath(QStringLiteral("../share/kolvane"));
      if (QFileInfo::exists(QDir(installiert).filePath(QStringLiteral("txtPrefix.txt"))))
        env.programDir = QDir::cleanPath(installiert);
    }
    env.configDir = tmp_.path() + QStringLiteral("/config/");
    env.tempRoot = tmp_.path() + u'/';
    env.homeDir = tmp_.path();
    env.userStoreFile = tmp_.path() + QStringLiteral("/userstore.ini");
    settings_ = std::make_unique<Settings>(env);
    setCurrentSettings(settings_.get());
  }
  ~Umgebung() { setCurrentSettings(nullptr); }
  Settings& settings() { return *settings_; }

 private:
  QTemporaryDir tmp_;
  std::unique_ptr<Settings> settings_;
};

}  // namespace kolvane::tool

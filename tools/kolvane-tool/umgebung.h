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
    settings_ = std::make_unique<Settings>(Environment::below(tmp_.path()));
    setCurrentSettings(settings_.get());
  }
  ~Umgebung() { setCurrentSettings(nullptr); }
  Settings& settings() { return *settings_; }

 private:
  QTemporaryDir tmp_;
  std::unique_ptr<Settings> settings_;
};

}  // namespace kolvane::tool

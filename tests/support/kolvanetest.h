#pragma once
#include <QDir>
#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>

#include "scriptedprompt.h"
#include "settings.h"

namespace kolvane {

// The source tree, and its data/ (label files, txtPrefix.txt, frei2.sld).
QString sourceDir();
QString sourceDataDir();

// The base fixture: a temporary directory of its own, with a program
// directory (holding a copy of the data files when asked), a config folder, a
// temporary root and a per-user store file in it; a Settings object pointing
// there installed as the settings in force; a scripted prompt; and an exit hook
// that records instead of ending the process.
class KolvaneTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Copies data/ into the program directory (label files, suffix table, ...).
  void installData();
  // A path below the test's own directory.
  QString path(const QString& rel) const { return QDir(tmp_.path()).filePath(rel); }
  // Writes a text file (UTF-8), creating folders.
  static void writeFile(const QString& file, const QByteArray& content);
  static QByteArray readFile(const QString& file);

  QTemporaryDir tmp_;
  Environment env_;
  std::unique_ptr<Settings> settings_;
  std::unique_ptr<ScriptedPrompt> prompt_;
  int exitCalls_ = 0;
  int lastExitCode_ = -1;
};

}  // namespace kolvane

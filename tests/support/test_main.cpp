#include <QApplication>
#include <QStandardPaths>
#include <gtest/gtest.h>

// Every test program runs with a QApplication on the offscreen platform and
// with the user's own config and data places moved aside, so no test can touch
// real settings.
int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QStandardPaths::setTestModeEnabled(true);
  QApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

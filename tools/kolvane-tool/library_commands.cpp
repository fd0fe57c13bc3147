#include <QTextStream>

#include "commands.h"

namespace kolvane::tool {

int runNewLibrary(const QStringList&) {
  QTextStream(stderr) << "not available yet\n";
  return 2;
}

int runInfo(const QStringList&) {
  QTextStream(stderr) << "not available yet\n";
  return 2;
}

int runCodes(const QStringList&) {
  QTextStream(stderr) << "not available yet\n";
  return 2;
}

}  // namespace kolvane::tool

#include <QTextStream>

#include "commands.h"

namespace kolvane::tool {

int runRender(const QStringList&) {
  QTextStream(stderr) << "not available yet\n";
  return 2;
}

int runSlideInfo(const QStringList&) {
  QTextStream(stderr) << "not available yet\n";
  return 2;
}

}  // namespace kolvane::tool

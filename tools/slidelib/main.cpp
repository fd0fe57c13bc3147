// slidelib LIBRARY < LIST
//
// Packs the slides listed on standard input, one path a line, into the slide
// library LIBRARY; each slide is named after its file name without folder and
// extension. The CAD's shell command runs it. When a listed file is missing or
// is no slide, nothing is written, the file is named on stderr and the status
// is 1.
#include <QString>
#include <QStringList>
#include <cstdio>
#include <iostream>
#include <string>

#include "slidelibrary.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: slidelib LIBRARY < LIST\n", stderr);
    return 2;
  }
  QStringList slides;
  std::string line;
  while (std::getline(std::cin, line)) {
    // Lists written on Windows end their lines with CR LF.
    const QString path = QString::fromLocal8Bit(line).trimmed();
    if (!path.isEmpty()) slides << path;
  }
  QString error;
  if (!kolvane::packSlideLibrary(slides, QString::fromLocal8Bit(argv[1]), &error)) {
    std::fprintf(stderr, "slidelib: %s\n", error.toLocal8Bit().constData());
    return 1;
  }
  return 0;
}

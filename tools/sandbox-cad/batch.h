#pragma once
// The batch mode: a script run as typed, the picks file answering at once,
// the drawing saved, the command line history printed.
#include <QString>

#include "prompttable.h"

class QTextStream;

namespace sandbox {

struct BatchOptions {
  QString open, picks, script, save;
  int screenWidth = 1024, screenHeight = 700;
  Language language = Language::German;
};

// 0 when the script ran; 1 when it, the drawing or the picks file could not be
// read or the drawing not be saved. The history goes to `out`, each error line
// marked "[error] ".
int runBatch(const BatchOptions& o, QTextStream& out);

}  // namespace sandbox

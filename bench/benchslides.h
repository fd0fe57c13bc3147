#pragma once
// Slide libraries for the benchmarks: one slide "0A" of `vektoren` vectors in
// a colour, different for every `saat`.
#include <QByteArray>
#include <QString>

#include "slide.h"
#include "slidelibrary.h"
#include "slidewriter.h"

namespace kolvane::bench {

inline QByteArray slideBibliothek(int saat, int vektoren) {
  Slide s;
  s.highX = 799;
  s.highY = 599;
  s.aspectRatio = 800.0 / 600.0;
  s.records.push_back(SlideRecord::color(1 + saat % 7));
  for (int i = 0; i < vektoren; ++i) {
    const int x = (i * 37 + saat) % 780 + 10, y = (i * 53 + saat * 7) % 580 + 10;
    s.records.push_back(SlideRecord::vector(x, y, (x + 90) % 790, (y + 45) % 590));
  }
  QString err;
  return writeSlideLibrary({{QStringLiteral("0A"), writeSlide(s)}}, &err);
}

}  // namespace kolvane::bench

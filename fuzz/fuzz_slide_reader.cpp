// Feeds arbitrary bytes to the slide reader, the library directory reader and
// the renderer. Beyond "no crash, no hang", it checks what must hold for any
// input: a library entry never reaches past the file, and a slide that was read
// is written and read back to the same records.
#include <QImage>
#include <QPainter>
#include <cstdint>
#include <cstdlib>

#include "slidelibrary.h"
#include "slidereader.h"
#include "sliderenderer.h"
#include "slidewriter.h"

namespace {

using namespace kolvane;

void draw(const Slide& s, size_t seed) {
  static QImage image(64, 48, QImage::Format_RGB32);
  QPainter p(&image);
  // Now and then a turned painter, which takes the path without pixel snapping.
  if (seed % 7 == 3) p.rotate(30);
  drawSlide(p, s, QRectF(2, 3, 60, 40), seed % 2 ? Qt::white : Qt::black);
}

void checkRoundTrip(const Slide& s) {
  const QByteArray written = writeSlide(s);
  if (written.isEmpty()) std::abort();  // whatever was read can be written
  const auto again = readSlide(written);
  if (!again || again->records != s.records || again->highX != s.highX || again->highY != s.highY)
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  qsizetype used = 0;
  if (const auto s = readSlide(bytes, &used)) {
    if (used < 0 || used > bytes.size()) std::abort();
    checkRoundTrip(*s);
    draw(*s, size);
  }
  if (const auto directory = readSlideLibraryDirectory(bytes)) {
    for (const SlideLibraryEntry& e : *directory) {
      if (e.size == 0) continue;
      if (qint64(e.address) + e.size > bytes.size()) std::abort();
      if (const auto s = readSlide(bytes.sliced(e.address, e.size))) draw(*s, e.address);
      findSlideLibraryEntry(*directory, e.name.toLower());
    }
  }
  return 0;
}

#include "slidewriter.h"

#include <cmath>

namespace kolvane {

namespace {

void put8(QByteArray& out, int v) { out.append(static_cast<char>(v & 0xFF)); }
void put16(QByteArray& out, int v) {
  put8(out, v);
  put8(out, v >> 8);
}
void put32(QByteArray& out, uint32_t v) {
  put16(out, static_cast<int>(v & 0xFFFF));
  put16(out, static_cast<int>(v >> 16));
}
bool signedByte(int v) { return v >= -128 && v <= 127; }

// A record's first word: the type in the high byte, a value in the low byte.
void putWord(QByteArray& out, int type, int low) { put16(out, type << 8 | (low & 0xFF)); }

}  // namespace

QByteArray writeSlide(const Slide& slide) {
  QByteArray out;
  out.reserve(31 + 8 * qsizetype(slide.records.size()) + 2);
  out.append("AutoCAD Slide\r\n\x1a", 17);  // the 17 bytes include the closing NUL
  put8(out, 56);
  put8(out, 2);
  put16(out, slide.highX);
  put16(out, slide.highY);
  const double aspect = std::round(slide.displayAspect() * 1e7);
  put32(out, aspect >= 4294967295.0 ? 0xFFFFFFFFu : static_cast<uint32_t>(aspect));
  put16(out, slide.hardwareFill == 2 ? 2 : 0);
  put16(out, 0x1234);

  for (const SlideRecord& r : slide.records) {
    switch (r.type) {
      case SlideRecordType::Vector:
        if (r.a < 0) return {};
        put16(out, r.a);
        put16(out, r.b);
        put16(out, r.c);
        put16(out, r.d);
        break;
      case SlideRecordType::OffsetVector:
        if (!signedByte(r.a) || !signedByte(r.b) || !signedByte(r.c) || !signedByte(r.d)) return {};
        putWord(out, 0xFB, r.a);
        put8(out, r.b);
        put8(out, r.c);
        put8(out, r.d);
        break;
      case SlideRecordType::SolidFill:
        putWord(out, 0xFD, 0);
        put16(out, r.a);
        put16(out, r.b);
        break;
      case SlideRecordType::CommonEndpoint:
        if (!signedByte(r.a) || !signedByte(r.b)) return {};
        putWord(out, 0xFE, r.a);
        put8(out, r.b);
        break;
      case SlideRecordType::Color:
        if (r.a < 0 || r.a > 255) return {};
        putWord(out, 0xFF, r.a);
        break;
    }
  }
  putWord(out, 0xFC, 0);
  return out;
}

}  // namespace kolvane

#include "slidefixtures.h"

#include <cmath>
#include <cstring>

namespace kolvane::test {

SlideBytes SlideBytes::current(int highX, int highY, double aspect, Order order) {
  SlideBytes s;
  s.order_ = order;
  s.b_.append("AutoCAD Slide\r\n\x1a\0", 17);
  s.put8(56);
  s.put8(2);
  s.put16(highX);
  s.put16(highY);
  const auto ratio = static_cast<uint32_t>(std::lround(aspect * 1e7));
  for (int k = 0; k < 4; ++k) s.put8(int(ratio >> (8 * k)));  // always low byte first
  s.put16(0);
  s.put16(0x1234);
  return s;
}

SlideBytes SlideBytes::old(int highX, int highY, double aspect) {
  SlideBytes s;
  s.b_.append("AutoCAD Slide\r\n\x1a\0", 17);
  s.put8(56);
  s.put8(1);
  s.put16(highX);
  s.put16(highY);
  uint64_t bits;
  std::memcpy(&bits, &aspect, 8);
  for (int k = 0; k < 8; ++k) s.put8(int(bits >> (8 * k)));
  s.put16(2);
  s.put8(0);  // filler
  return s;
}

void SlideBytes::put16(int v) {
  if (order_ == Order::HighFirst) {
    put8(v >> 8);
    put8(v);
  } else {
    put8(v);
    put8(v >> 8);
  }
}

void SlideBytes::word(int type, int low) { put16(type << 8 | (low & 0xFF)); }

SlideBytes& SlideBytes::vector(int x1, int y1, int x2, int y2) {
  put16(x1), put16(y1), put16(x2), put16(y2);
  return *this;
}
SlideBytes& SlideBytes::offsetVector(int dx1, int dy1, int dx2, int dy2) {
  word(0xFB, dx1), put8(dy1), put8(dx2), put8(dy2);
  return *this;
}
SlideBytes& SlideBytes::commonEndpoint(int dx, int dy) {
  word(0xFE, dx), put8(dy);
  return *this;
}
SlideBytes& SlideBytes::fill(int x, int y) {
  word(0xFD, 0), put16(x), put16(y);
  return *this;
}
SlideBytes& SlideBytes::color(int index) {
  word(0xFF, index);
  return *this;
}
SlideBytes& SlideBytes::end() {
  word(0xFC, 0);
  return *this;
}
SlideBytes& SlideBytes::raw(const QByteArray& bytes) {
  b_ += bytes;
  return *this;
}

QByteArray libraryBytes(const QList<QPair<QByteArray, QByteArray>>& slides) {
  QByteArray out("AutoCAD Slide Library 1.0\r\n\x1a\0\0\0\0", 32);
  quint32 address = 32 + 36 * (slides.size() + 1);
  for (const auto& [name, slide] : slides) {
    QByteArray entry = name.left(32);
    entry.resize(32, '\0');
    for (int k = 0; k < 4; ++k) entry.append(char(address >> (8 * k)));
    out += entry;
    address += slide.size();
  }
  out += QByteArray(36, '\0');
  for (const auto& s : slides) out += s.second;
  return out;
}

namespace {

// A circle as one vector and common-endpoint steps (each step below 128 dots).
void circle(Slide& s, int cx, int cy, int r) {
  const int n = std::max(12, r / 6);
  int px = cx + r, py = cy;
  s.records.push_back(SlideRecord::vector(px, py, px, py));
  for (int k = 1; k <= n; ++k) {
    const double t = 2 * M_PI * k / n;
    const int x = cx + int(std::lround(r * std::cos(t))), y = cy + int(std::lround(r * std::sin(t)));
    s.records.push_back(SlideRecord::commonEndpoint(x - px, y - py));
    px = x, py = y;
  }
}

}  // namespace

Slide sampleSlide(int i) {
  Slide s;
  const bool wide = i % 3 == 2;
  s.highX = wide ? 1279 : 799;
  s.highY = wide ? 719 : 599;
  s.aspectRatio = wide ? 16.0 / 9.0 : 4.0 / 3.0;
  const int w = s.highX, h = s.highY, cx = w / 2, cy = h / 2;
  auto& r = s.records;

  r.push_back(SlideRecord::color(7));
  r.push_back(SlideRecord::vector(0, 0, w, 0));
  r.push_back(SlideRecord::vector(w, 0, w, h));
  r.push_back(SlideRecord::vector(w, h, 0, h));
  r.push_back(SlideRecord::vector(0, h, 0, 0));

  r.push_back(SlideRecord::color(1 + i % 6));
  const int outer = h * 2 / 5, inner = h / 6;
  circle(s, cx, cy, outer);
  circle(s, cx, cy, inner);
  const int holes = 3 + i % 6;
  for (int k = 0; k < holes; ++k) {
    const double t = 2 * M_PI * k / holes + i * 0.1;
    circle(s, cx + int((outer + inner) / 2 * std::cos(t)), cy + int((outer + inner) / 2 * std::sin(t)),
           h / 30);
  }

  r.push_back(SlideRecord::color(5));  // centre lines, dashed
  for (int x = cx - outer - 30; x < cx + outer + 30; x += 40)
    r.push_back(SlideRecord::vector(x, cy, x + 25, cy));
  for (int y = cy - outer - 30; y < cy + outer + 30; y += 40)
    r.push_back(SlideRecord::vector(cx, y, cx, y + 25));

  r.push_back(SlideRecord::color(8 + (i % 2) * 42));  // hatching between the circles
  r.push_back(SlideRecord::vector(cx + inner, cy, cx + inner, cy));
  for (int k = 0; k < 12; ++k) r.push_back(SlideRecord::offsetVector(10, 0, 40, 40));

  // The insertion point's red disk: a filled polygon.
  const int px = (i * 97) % (w - 80) + 40, py = (i * 53) % (h - 80) + 40, pr = h / 25;
  r.push_back(SlideRecord::color(1));
  r.push_back(SlideRecord::fill(16, -1));
  for (int k = 0; k < 16; ++k) {
    const double t = 2 * M_PI * k / 16;
    r.push_back(SlideRecord::fill(px + int(std::lround(pr * std::cos(t))),
                                  py + int(std::lround(pr * std::sin(t)))));
  }
  r.push_back(SlideRecord::fill(0, -1));
  return s;
}

}  // namespace kolvane::test

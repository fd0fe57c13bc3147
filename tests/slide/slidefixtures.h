#pragma once
#include <QByteArray>
#include <QList>
#include <QPair>

#include "slide.h"

namespace kolvane::test {

// Slide bytes put together by hand from the format's description, apart from
// the writer, so that the reader is checked against the format and not against
// our own writing of it.
class SlideBytes {
 public:
  enum class Order { LowFirst, HighFirst };
  static SlideBytes current(int highX, int highY, double aspect, Order order = Order::LowFirst);
  static SlideBytes old(int highX, int highY, double aspect);

  SlideBytes& vector(int x1, int y1, int x2, int y2);
  SlideBytes& offsetVector(int dx1, int dy1, int dx2, int dy2);
  SlideBytes& commonEndpoint(int dx, int dy);
  SlideBytes& fill(int x, int y);
  SlideBytes& color(int index);
  SlideBytes& end();
  SlideBytes& raw(const QByteArray& bytes);

  QByteArray bytes() const { return b_; }
  operator QByteArray() const { return b_; }

 private:
  void put16(int v);
  void put8(int v) { b_.append(char(v & 0xFF)); }
  void word(int type, int low);
  QByteArray b_;
  Order order_ = Order::LowFirst;
};

// A slide library put together by hand: header, directory with the given
// addresses (computed when empty), terminator, slides.
QByteArray libraryBytes(const QList<QPair<QByteArray, QByteArray>>& slides);

// A drawing-like picture for the screenshots and the view tests: a frame round
// the whole screen area in colour 7, a flange in colour `1 + i % 6` with bolt
// holes, centre lines, hatching, and a filled red disk on an insertion point.
// Every third slide comes from a wide screen (16:9), the others from 4:3.
Slide sampleSlide(int i);

}  // namespace kolvane::test

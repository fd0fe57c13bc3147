#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include "slidecolors.h"
#include "sliderenderer.h"

namespace kolvane {
namespace {

using T = SlideRecordType;

Slide square(int highX, int highY, double aspect, std::vector<SlideRecord> records) {
  Slide s;
  s.highX = uint16_t(highX);
  s.highY = uint16_t(highY);
  s.aspectRatio = aspect;
  s.records = std::move(records);
  return s;
}

// Lines reach an image by two paths: written straight into its pixels, or,
// when the painter is clipped (as on a widget), through Qt's own stroker.
enum class Path { Direct, Painter };

QImage render(const Slide& s, QSize size, QColor back = Qt::black, QRectF target = {},
              Path path = Path::Direct) {
  QImage img(size, QImage::Format_RGB32);
  img.fill(Qt::darkCyan);
  QPainter p(&img);
  if (path == Path::Painter) p.setClipRect(img.rect());
  drawSlide(p, s, target.isNull() ? QRectF(QPointF(), QSizeF(size)) : target, back);
  return img;
}

// The rows in which a colour appears in column x.
QList<int> rowsWith(const QImage& img, int x, QRgb color) {
  QList<int> rows;
  for (int y = 0; y < img.height(); ++y)
    if (img.pixel(x, y) == color) rows << y;
  return rows;
}

// The columns in which a colour appears in row y.
QList<int> columnsWith(const QImage& img, int y, QRgb color) {
  QList<int> columns;
  for (int x = 0; x < img.width(); ++x)
    if (img.pixel(x, y) == color) columns << x;
  return columns;
}

TEST(SlideColors, FollowTheStandardTable) {
  const std::vector<std::pair<int, QRgb>> known = {
      {1, qRgb(255, 0, 0)},      {2, qRgb(255, 255, 0)},    {5, qRgb(0, 0, 255)},
      {8, qRgb(128, 128, 128)},  {9, qRgb(192, 192, 192)},  {10, qRgb(255, 0, 0)},
      {11, qRgb(255, 127, 127)}, {12, qRgb(204, 0, 0)},     {13, qRgb(204, 102, 102)},
      {15, qRgb(153, 76, 76)},   {16, qRgb(127, 0, 0)},     {17, qRgb(127, 63, 63)},
      {19, qRgb(76, 38, 38)},    {21, qRgb(255, 159, 127)}, {22, qRgb(204, 51, 0)},
      {25, qRgb(153, 95, 76)},   {29, qRgb(76, 47, 38)},    {43, qRgb(204, 178, 102)},
      {45, qRgb(153, 133, 76)},  {49, qRgb(76, 66, 38)},    {61, qRgb(223, 255, 127)},
      {63, qRgb(178, 204, 102)}, {64, qRgb(114, 153, 0)},   {140, qRgb(0, 191, 255)},
      {250, qRgb(51, 51, 51)},   {252, qRgb(105, 105, 105)}, {254, qRgb(190, 190, 190)},
      {255, qRgb(255, 255, 255)}};
  for (const auto& [index, rgb] : known) EXPECT_EQ(aciRgb(index), rgb) << "colour " << index;
}

TEST(SlideColors, SevenContrastsWithTheBackAndStoredColoursAreBgr) {
  for (int index : {0, 7}) {
    EXPECT_EQ(slideColor(index, Qt::black), QColor(Qt::white));
    EXPECT_EQ(slideColor(index, QColor(30, 30, 90)), QColor(Qt::white));
    EXPECT_EQ(slideColor(index, Qt::white), QColor(Qt::black));
    EXPECT_EQ(slideColor(index, QColor(250, 240, 200)), QColor(Qt::black));
  }
  EXPECT_EQ(slideColor(1, Qt::white), QColor(Qt::red));
  EXPECT_EQ(colorFromBgr(255), QColor(255, 0, 0));
  EXPECT_EQ(colorFromBgr(32768), QColor(0, 128, 0));
  EXPECT_EQ(colorFromBgr(0xFF0000), QColor(0, 0, 255));
  EXPECT_EQ(colorFromBgr(0x123456), QColor(0x56, 0x34, 0x12));
  EXPECT_TRUE(colorFromBgr(long(int32_t(0x8000000F))).isValid());  // a system colour
}

TEST(SlideRenderer, KeepsTheSlidesProportionCentred) {
  // A 4:3 screen of square dots with a frame round it, into a wide target.
  const Slide s = square(399, 299, 4.0 / 3, {{T::Color, 1}, SlideRecord::vector(0, 0, 399, 0),
                                              SlideRecord::vector(399, 0, 399, 299),
                                              SlideRecord::vector(399, 299, 0, 299),
                                              SlideRecord::vector(0, 299, 0, 0)});
  EXPECT_EQ(slidePictureRect(s, QRectF(0, 0, 400, 150)), QRectF(100, 0, 200, 150));
  const QImage img = render(s, {400, 150});
  const QRgb red = qRgb(255, 0, 0), black = qRgb(0, 0, 0);
  EXPECT_EQ(img.pixel(100, 75), red);
  EXPECT_EQ(img.pixel(299, 75), red);
  EXPECT_EQ(img.pixel(99, 75), black);
  EXPECT_EQ(img.pixel(300, 75), black);
  EXPECT_EQ(rowsWith(img, 200, red), QList<int>({0, 149}));

  // Dots that aren't square: 640 x 200 dots of a 4:3 screen are shown 4:3.
  const Slide cga = square(639, 199, 4.0 / 3, {});
  EXPECT_EQ(slidePictureRect(cga, QRectF(0, 0, 400, 400)), QRectF(0, 50, 400, 300));
}

TEST(SlideRenderer, LinesAlongAnAxisStayOnePixelAtEverySize) {
  const Slide s = square(99, 99, 1, {{T::Color, 1}, SlideRecord::vector(10, 50, 90, 50),
                                     SlideRecord::vector(33, 10, 33, 90)});
  for (const Path path : {Path::Direct, Path::Painter}) {
    for (int size : {100, 77, 250, 1000}) {
      const QImage img = render(s, {size, size}, Qt::black, {}, path);
      EXPECT_EQ(rowsWith(img, size * 7 / 10, qRgb(255, 0, 0)).size(), 1) << size;
      EXPECT_EQ(columnsWith(img, size * 3 / 10, qRgb(255, 0, 0)).size(), 1) << size;
    }
    // At the slide's own size, dot y = 50 is row 99 - 50.
    EXPECT_EQ(rowsWith(render(s, {100, 100}, Qt::black, {}, path), 50, qRgb(255, 0, 0)),
              QList<int>({49}));
  }
}

TEST(SlideRenderer, FollowsRelativeRecordsAndFillsPolygons) {
  // Relative records start from the last point; the fill's count is ignored,
  // whatever it says.
  for (const auto& [count, path] : {std::pair{4, Path::Direct}, std::pair{-5, Path::Direct},
                                     std::pair{32767, Path::Direct}, std::pair{4, Path::Painter}}) {
    const Slide s = square(99, 99, 1,
                           {{T::Color, 3},
                            SlideRecord::vector(10, 90, 20, 90),       // last point (10, 90)
                            SlideRecord::commonEndpoint(80, 0),        // to (90, 90)
                            SlideRecord::offsetVector(0, -5, -80, -5), // (90,85)-(10,85)
                            {T::Color, 5},
                            SlideRecord::fill(count, -1), SlideRecord::fill(20, 20),
                            SlideRecord::fill(60, 20), SlideRecord::fill(60, 60),
                            SlideRecord::fill(20, 60), SlideRecord::fill(0, -1)});
    const QImage img = render(s, {100, 100}, Qt::black, {}, path);
    EXPECT_EQ(img.pixel(80, 99 - 90), qRgb(0, 255, 0)) << count;
    EXPECT_EQ(img.pixel(50, 99 - 85), qRgb(0, 255, 0)) << count;
    EXPECT_EQ(img.pixel(40, 99 - 40), qRgb(0, 0, 255)) << count;
    EXPECT_EQ(img.pixel(70, 99 - 40), qRgb(0, 0, 0)) << count;
  }
  // A polygon never closed is closed at the end; vertices outside a polygon
  // are ignored; a single point is drawn as a dot.
  const Slide open = square(99, 99, 1, {{T::Color, 2}, SlideRecord::fill(7, 50),
                                        SlideRecord::vector(5, 5, 5, 5), SlideRecord::fill(3, -9),
                                        SlideRecord::fill(20, 20), SlideRecord::fill(60, 20),
                                        SlideRecord::fill(40, 60)});
  for (const Path path : {Path::Direct, Path::Painter}) {
    const QImage img = render(open, {100, 100}, Qt::black, {}, path);
    EXPECT_EQ(img.pixel(40, 99 - 30), qRgb(255, 255, 0));
    EXPECT_EQ(img.pixel(7, 99 - 50), qRgb(0, 0, 0));
    EXPECT_EQ(img.pixel(5, 99 - 5), qRgb(255, 255, 0));
  }
}

TEST(SlideRenderer, StaysInsideItsTarget) {
  // Coordinates far off the screen, and the far corners of the 16-bit range.
  const Slide s = square(99, 99, 1, {{T::Color, 1}, SlideRecord::vector(0, -32768, 32767, 32767),
                                     SlideRecord::vector(32767, 0, -32768, 0),
                                     SlideRecord::fill(0, -1), SlideRecord::fill(-32768, -30000),
                                     SlideRecord::fill(32767, 32767), SlideRecord::fill(0, 32767),
                                     SlideRecord::fill(0, -1)});
  for (const Path path : {Path::Direct, Path::Painter}) {
    const QImage img = render(s, {300, 300}, Qt::white, QRectF(100, 100, 100, 100), path);
    for (int y = 0; y < 300; ++y)
      for (int x = 0; x < 300; ++x)
        if (!QRect(100, 100, 100, 100).contains(x, y)) {
          ASSERT_EQ(img.pixel(x, y), QColor(Qt::darkCyan).rgb()) << x << "," << y;
        }
    EXPECT_EQ(img.pixel(150, 199), qRgb(255, 0, 0));  // the line along dot row 0
  }
}

}  // namespace
}  // namespace kolvane

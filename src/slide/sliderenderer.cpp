#include "sliderenderer.h"

#include <QImage>
#include <QPainter>
#include <cmath>
#include <optional>
#include <vector>

#include "slidecolors.h"

namespace kolvane {

namespace {

// Slide dots to painter coordinates: x' = ax * x + bx, y' = ay * y + by.
struct Mapping {
  double ax, bx, ay, by;
  bool snap;  // the coordinates are device pixels
  QPointF map(int64_t x, int64_t y) const { return {ax * double(x) + bx, ay * double(y) + by}; }
};

// Inline floor: without SSE 4.1 std::floor is a library call, and it runs for
// every line of a page. Far-off coordinates are held inside the range of int.
inline int floorToInt(double v) {
  if (!(v > -1e9 && v < 1e9)) return v > 0 ? 1000000000 : -1000000000;
  const int t = int(v);
  return t > v ? t - 1 : t;
}
inline int roundToInt(double v) { return floorToInt(v + 0.5); }

double pixelCentre(double v) { return floorToInt(v) + 0.5; }

// Antialiased lines one pixel wide written straight into an image: a page of
// thumbnails has some 150,000 short lines, and Qt's general stroker spends more
// on each line's set-up and on blending pixel by pixel than on the pixels.
// Coverage is split between the two pixels next to the line in each step along
// its longer axis (Wu's method).
class Raster {
 public:
  Raster(QImage& image, const QRect& clip)
      : bits_(image.bits()),
        stride_(image.bytesPerLine()),
        stridePixels_(stride_ / qsizetype(sizeof(QRgb))),
        clip_(clip & image.rect()),
        left_(clip_.left()),
        top_(clip_.top()),
        width_(unsigned(std::max(clip_.width(), 0))),
        height_(unsigned(std::max(clip_.height(), 0))) {}

  // A dot fills the pixel it lies in.
  void dot(QPointF p, QRgb c) {
    plot(floorToInt(p.x()), floorToInt(p.y()), spread(c), 256);
  }

  void line(QPointF a, QPointF b, QRgb c) {
    // Pixel centres on whole numbers from here on.
    double ax = a.x() - 0.5, ay = a.y() - 0.5, bx = b.x() - 0.5, by = b.y() - 0.5;
    // Most lines lie well inside: then no pixel needs its own test. The margin
    // of a pixel covers the rounding of the fixed-point steps below.
    const bool inside = std::min(ax, bx) >= left_ + 1 && std::max(ax, bx) <= left_ + int(width_) - 2 &&
                        std::min(ay, by) >= top_ + 1 && std::max(ay, by) <= top_ + int(height_) - 2;
    if (!inside && !clipToBounds(ax, ay, bx, by)) return;
    const bool steep = std::abs(by - ay) > std::abs(bx - ax);
    if (steep) std::swap(ax, ay), std::swap(bx, by);
    if (ax > bx) std::swap(ax, bx), std::swap(ay, by);
    if (inside)
      steep ? wu<false, true>(ax, ay, bx, by, c) : wu<false, false>(ax, ay, bx, by, c);
    else
      steep ? wu<true, true>(ax, ay, bx, by, c) : wu<true, false>(ax, ay, bx, by, c);
  }

 private:
  // One step along the longer axis lights two pixels across it; `steep` says
  // the longer axis is y (the coordinates come swapped).
  template <bool checked, bool steep>
  void wu(double ax, double ay, double bx, double by, QRgb c) {
    const double gradient = bx - ax > 1e-9 ? (by - ay) / (bx - ax) : 0.0;
    const int first = roundToInt(ax), last = roundToInt(bx);
    // The minor coordinate in 16.16 fixed point.
    int64_t y = int64_t((ay + gradient * (first - ax)) * 65536.0 + 0.5);
    const int64_t step = int64_t(gradient * 65536.0 + (gradient < 0 ? -0.5 : 0.5));
    const uint64_t color = spread(c);
    for (int x = first; x <= last; ++x, y += step) {
      const int whole = int(y >> 16);
      const uint32_t part = uint32_t(y >> 8) & 0xFF;
      const int px = steep ? whole : x, py = steep ? x : whole;
      if (checked) {
        plot(px, py, color, 256 - part);
        plot(steep ? px + 1 : px, steep ? py : py + 1, color, part);
      } else {
        QRgb* p = pixel(px, py);
        blend(p, color, 256 - part);
        blend(steep ? p + 1 : p + stridePixels_, color, part);
      }
    }
  }

  // Cuts the segment to the clip rectangle and a pixel round it (Liang and
  // Barsky), so that no line costs more than the picture is wide.
  bool clipToBounds(double& ax, double& ay, double& bx, double& by) const {
    const double left = clip_.left() - 1, right = clip_.right() + 1;
    const double top = clip_.top() - 1, bottom = clip_.bottom() + 1;
    const double dx = bx - ax, dy = by - ay;
    double t0 = 0, t1 = 1;
    const auto edge = [&](double p, double q) {
      if (p == 0) return q >= 0;
      const double t = q / p;
      if (p < 0) {
        if (t > t1) return false;
        t0 = std::max(t0, t);
      } else {
        if (t < t0) return false;
        t1 = std::min(t1, t);
      }
      return true;
    };
    if (!edge(-dx, ax - left) || !edge(dx, right - ax) || !edge(-dy, ay - top) || !edge(dy, bottom - ay))
      return false;
    bx = ax + t1 * dx, by = ay + t1 * dy;
    ax = ax + t0 * dx, ay = ay + t0 * dy;
    return true;
  }

  QRgb* pixel(int x, int y) const { return reinterpret_cast<QRgb*>(bits_ + y * stride_) + x; }

  void plot(int x, int y, uint64_t color, uint32_t coverage) {
    if (unsigned(x - left_) < width_ && unsigned(y - top_) < height_) blend(pixel(x, y), color, coverage);
  }

  // The four channels of a pixel spread over a 64-bit word, 16 bits apiece, so
  // that one multiplication weighs them all.
  static uint64_t spread(QRgb c) { return (uint64_t(c) | uint64_t(c) << 24) & 0x00FF00FF00FF00FFull; }

  // An opaque colour (spread) over the pixel with a coverage of 0 to 256. The
  // same sum serves an opaque and a premultiplied image, and needs no branch
  // for full or no coverage.
  static void blend(QRgb* p, uint64_t c, uint32_t coverage) {
    const uint64_t mixed = ((c * coverage + spread(*p) * (256 - coverage)) >> 8) & 0x00FF00FF00FF00FFull;
    *p = QRgb(mixed | mixed >> 24);
  }

  uchar* bits_;
  qsizetype stride_;
  qsizetype stridePixels_;
  QRect clip_;
  int left_, top_;
  unsigned width_, height_;
};

class Drawer {
 public:
  Drawer(QPainter& painter, const Mapping& m, const QColor& back, Raster* raster)
      : p_(painter), m_(m), back_(back), raster_(raster) {
    lines_.clear();
    points_.clear();
    polygon_.clear();
    setColor(7);
  }

  void line(int64_t x1, int64_t y1, int64_t x2, int64_t y2) {
    QPointF a = m_.map(x1, y1), b = m_.map(x2, y2);
    if (m_.snap) {
      if (x1 == x2) a.rx() = b.rx() = pixelCentre(a.x());
      if (y1 == y2) a.ry() = b.ry() = pixelCentre(a.y());
    }
    const bool dot = x1 == x2 && y1 == y2;
    if (raster_) {
      if (dot)
        raster_->dot(a, rgb_);
      else
        raster_->line(a, b, rgb_);
    } else if (dot) {  // Qt fills the pixel whose corner the point names
      points_.push_back(m_.snap ? QPointF(floorToInt(a.x()), floorToInt(a.y())) : a);
    } else {
      lines_.emplace_back(a, b);
    }
  }

  void color(int index) {
    if (index == colorIndex_) return;
    flush();
    setColor(index);
  }

  void fillRecord(int16_t x, int16_t y) {
    if (y < 0) {  // opens or closes a polygon; its x (a vertex count) is not to be trusted
      if (inFill_) closeFill();
      else inFill_ = true;
      return;
    }
    if (inFill_) polygon_.push_back(m_.map(x, y));
  }

  void finish() {
    if (inFill_) closeFill();
    flush();
  }

 private:
  void setColor(int index) {
    colorIndex_ = index;
    QPen pen(slideColor(index, back_), 1.0);
    pen.setCosmetic(true);
    p_.setPen(pen);
    p_.setBrush(pen.color());
    rgb_ = pen.color().rgb();
  }

  // Lines wait for a change of colour, so that the painter gets them in one call.
  void flush() {
    if (!lines_.empty()) p_.drawLines(lines_.data(), int(lines_.size()));
    if (!points_.empty()) p_.drawPoints(points_.data(), int(points_.size()));
    lines_.clear();
    points_.clear();
  }

  void closeFill() {
    inFill_ = false;
    flush();
    if (polygon_.size() >= 2) p_.drawPolygon(polygon_.data(), int(polygon_.size()));
    polygon_.clear();
  }

  QPainter& p_;
  const Mapping& m_;
  QColor back_;
  Raster* raster_;
  QRgb rgb_ = 0;
  int colorIndex_ = -1;
  bool inFill_ = false;
  // Kept between calls: a page draws many slides, and these only grow.
  static thread_local std::vector<QLineF> lines_;
  static thread_local std::vector<QPointF> points_;
  static thread_local std::vector<QPointF> polygon_;
};

thread_local std::vector<QLineF> Drawer::lines_;
thread_local std::vector<QPointF> Drawer::points_;
thread_local std::vector<QPointF> Drawer::polygon_;

}  // namespace

QRectF slidePictureRect(const Slide& slide, const QRectF& target) {
  if (target.width() <= 0 || target.height() <= 0) return {};
  const double aspect = slide.displayAspect();
  double w = target.width(), h = target.height();
  if (w / h > aspect)
    w = h * aspect;
  else
    h = w / aspect;
  return {target.left() + (target.width() - w) / 2, target.top() + (target.height() - h) / 2, w, h};
}

void drawSlide(QPainter& painter, const Slide& slide, const QRectF& target, const QColor& back) {
  painter.save();
  painter.fillRect(target, back);
  const QRectF box = slidePictureRect(slide, target);
  if (box.isEmpty() || slide.records.empty()) {
    painter.restore();
    return;
  }
  // Dot centres: dot x lies at box.left + (x + 0.5) * sx; y counts upwards.
  const double sx = box.width() / (slide.highX + 1.0);
  const double sy = box.height() / (slide.highY + 1.0);
  Mapping m{sx, box.left() + 0.5 * sx, -sy, box.top() + (slide.highY + 0.5) * sy, false};
  QRectF clip = target;

  // Unless the painter turns or shears, draw in device pixels, so that lines
  // along an axis can be put on pixel centres.
  const QTransform device = painter.deviceTransform();
  std::optional<Raster> raster;
  if (device.type() <= QTransform::TxScale) {
    m = {device.m11() * m.ax, device.m11() * m.bx + device.dx(), device.m22() * m.ay,
         device.m22() * m.by + device.dy(), true};
    clip = device.mapRect(target);
    // Lines go straight into an image when nothing else shapes the painting.
    QPaintDevice* dev = painter.device();
    if (dev && dev->devType() == QInternal::Image && !painter.hasClipping() &&
        painter.opacity() == 1.0 && painter.compositionMode() == QPainter::CompositionMode_SourceOver) {
      auto* image = static_cast<QImage*>(dev);
      if (image->format() == QImage::Format_RGB32 ||
          image->format() == QImage::Format_ARGB32_Premultiplied)
        raster.emplace(*image, clip.toAlignedRect());
    }
    painter.resetTransform();
    painter.setWorldTransform(painter.deviceTransform().inverted());
  }
  painter.setClipRect(clip, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing, true);

  Drawer d(painter, m, back, raster ? &*raster : nullptr);
  int64_t lastX = 0, lastY = 0;
  for (const SlideRecord& r : slide.records) {
    switch (r.type) {
      case SlideRecordType::Vector:
        d.line(r.a, r.b, r.c, r.d);
        lastX = r.a, lastY = r.b;
        break;
      case SlideRecordType::OffsetVector: {
        const int64_t x1 = lastX + r.a, y1 = lastY + r.b;
        d.line(x1, y1, lastX + r.c, lastY + r.d);
        lastX = x1, lastY = y1;
        break;
      }
      case SlideRecordType::CommonEndpoint: {
        const int64_t x2 = lastX + r.a, y2 = lastY + r.b;
        d.line(lastX, lastY, x2, y2);
        lastX = x2, lastY = y2;
        break;
      }
      case SlideRecordType::SolidFill:
        d.fillRecord(r.a, r.b);
        break;
      case SlideRecordType::Color:
        d.color(r.a);
        break;
    }
  }
  d.finish();
  painter.restore();
}

}  // namespace kolvane

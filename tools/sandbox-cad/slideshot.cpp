#include "slideshot.h"

#include <algorithm>
#include <cmath>

#include "scene.h"

namespace sandbox {

namespace {

using kolvane::SlideRecord;

struct Screen {
  double left, bottom, upd, maxX, maxY;
  QPointF dot(const QPointF& p) const { return {(p.x() - left) / upd, (p.y() - bottom) / upd}; }
};

// Liang-Barsky against the screen's dots; false when nothing is left.
bool clipLine(QPointF& a, QPointF& b, double maxX, double maxY) {
  double t0 = 0, t1 = 1;
  const double dx = b.x() - a.x(), dy = b.y() - a.y();
  const double p[4] = {-dx, dx, -dy, dy};
  const double q[4] = {a.x(), maxX - a.x(), a.y(), maxY - a.y()};
  for (int i = 0; i < 4; ++i) {
    if (p[i] == 0) {
      if (q[i] < 0) return false;
      continue;
    }
    const double r = q[i] / p[i];
    if (p[i] < 0)
      t0 = std::max(t0, r);
    else
      t1 = std::min(t1, r);
    if (t0 > t1) return false;
  }
  const QPointF a0 = a;
  a = a0 + QPointF(dx, dy) * t0;
  b = a0 + QPointF(dx, dy) * t1;
  return true;
}

// Sutherland-Hodgman against the four edges of the screen.
std::vector<QPointF> clipPolygon(std::vector<QPointF> poly, double maxX, double maxY) {
  auto edge = [&](auto inside, auto cross) {
    std::vector<QPointF> out;
    for (size_t i = 0; i < poly.size(); ++i) {
      const QPointF& p = poly[i];
      const QPointF& q = poly[(i + 1) % poly.size()];
      if (inside(p)) out.push_back(p);
      if (inside(p) != inside(q)) out.push_back(cross(p, q));
    }
    poly = std::move(out);
  };
  auto atX = [](double x) {
    return [x](const QPointF& p, const QPointF& q) {
      const double t = (x - p.x()) / (q.x() - p.x());
      return QPointF(x, p.y() + t * (q.y() - p.y()));
    };
  };
  auto atY = [](double y) {
    return [y](const QPointF& p, const QPointF& q) {
      const double t = (y - p.y()) / (q.y() - p.y());
      return QPointF(p.x() + t * (q.x() - p.x()), y);
    };
  };
  edge([](const QPointF& p) { return p.x() >= 0; }, atX(0));
  if (!poly.empty()) edge([&](const QPointF& p) { return p.x() <= maxX; }, atX(maxX));
  if (!poly.empty()) edge([](const QPointF& p) { return p.y() >= 0; }, atY(0));
  if (!poly.empty()) edge([&](const QPointF& p) { return p.y() <= maxY; }, atY(maxY));
  return poly;
}

int dotOf(double v) {
  return int(std::lround(v));
}

}  // namespace

kolvane::Slide shootSlide(const Drawing& d, const View& v) {
  kolvane::Slide slide;
  const int w = std::max(2, v.screenWidth), h = std::max(2, v.screenHeight);
  slide.highX = uint16_t(std::min(w, 0x7FFF) - 1);
  slide.highY = uint16_t(std::min(h, 0x7FFF) - 1);
  slide.aspectRatio = double(w) / h;
  const double upd = v.height / h;
  const Screen s{v.center.x - v.width() / 2, v.center.y - v.height / 2, upd, double(slide.highX),
                 double(slide.highY)};

  int color = -1;
  auto useColor = [&](int c) {
    if (c == color) return;
    color = c;
    slide.records.push_back(SlideRecord::color(std::clamp(c, 0, 255)));
  };
  for (const Primitive& p : flatten(d, upd)) {
    if (p.fill) {
      std::vector<QPointF> dots;
      for (const QPointF& q : p.points) dots.push_back(s.dot(q));
      dots = clipPolygon(std::move(dots), s.maxX, s.maxY);
      if (dots.size() < 3) continue;
      useColor(p.color);
      slide.records.push_back(SlideRecord::fill(int(dots.size()), -1));
      for (const QPointF& q : dots)
        slide.records.push_back(SlideRecord::fill(dotOf(q.x()), dotOf(q.y())));
      slide.records.push_back(SlideRecord::fill(0, -1));
      continue;
    }
    const size_t n = p.points.size();
    const size_t segs = p.closed ? n : n - 1;
    for (size_t i = 0; n >= 2 && i < segs; ++i) {
      QPointF a = s.dot(p.points[i]), b = s.dot(p.points[(i + 1) % n]);
      if (!clipLine(a, b, s.maxX, s.maxY)) continue;
      useColor(p.color);
      slide.records.push_back(
          SlideRecord::vector(dotOf(a.x()), dotOf(a.y()), dotOf(b.x()), dotOf(b.y())));
    }
  }
  return slide;
}

}  // namespace sandbox

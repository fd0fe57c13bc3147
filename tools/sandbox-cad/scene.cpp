#include "scene.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainterPath>
#include <QTransform>
#include <algorithm>
#include <cmath>

namespace sandbox {

namespace {

QPointF at(const Point& p) {
  return {p.x, p.y};
}

struct Arc {
  QPointF center;
  double r = 0, start = 0, sweep = 0;  // radians, sweep signed
  QPointF point(double t) const {
    const double a = start + t * sweep;
    return {center.x() + r * std::cos(a), center.y() + r * std::sin(a)};
  }
};

Arc bulgeArc(const Vertex& a, const Vertex& b) {
  const double d = std::hypot(b.x - a.x, b.y - a.y);
  const double theta = 4 * std::atan(a.bulge);
  const double r = d / (2 * std::sin(std::abs(theta) / 2));
  const double phi = std::atan2(b.y - a.y, b.x - a.x);
  const double dir = phi + (theta > 0 ? kPi / 2 : -kPi / 2) - theta / 2;
  Arc arc;
  arc.center = {a.x + r * std::cos(dir), a.y + r * std::sin(dir)};
  arc.r = r;
  arc.start = std::atan2(a.y - arc.center.y(), a.x - arc.center.x());
  arc.sweep = theta;
  return arc;
}

int pieces(double r, double sweep, double unitsPerDot) {
  const double len = std::abs(sweep) * r / std::max(unitsPerDot, 1e-9);
  return std::clamp(int(len / 3), 8, 256);
}

class Flattener {
 public:
  Flattener(const Drawing& d, double unitsPerDot) : d_(d), upd_(unitsPerDot) {}
  std::vector<Primitive> out;

  void entity(const Entity& e, const QString& layerName, int depth) {
    const Layer* layer = d_.layer(layerName);
    if (layer && !layer->visible()) return;
    const int color = colorOf(e, layerName);
    switch (e.type) {
      case EntityType::Line: line({at(e.p1), at(e.p2)}, color, false); break;
      case EntityType::Circle: arc(Arc{at(e.p1), e.radius, 0, 2 * kPi}, color, true); break;
      case EntityType::Arc: {
        double sweep = e.endAngle - e.startAngle;
        while (sweep <= 0) sweep += 360;
        arc(Arc{at(e.p1), e.radius, toRad(e.startAngle), toRad(sweep)}, color, false);
        break;
      }
      case EntityType::Polyline: polyline(e, color); break;
      case EntityType::Text: text(e.text, e.p1, e.height, e.rotation, color); break;
      case EntityType::AttDef: text(e.tag, e.p1, e.height, e.rotation, color); break;
      case EntityType::Solid:
        // The corners run 1, 2, 4, 3 around the outline.
        out.push_back({true, true, color, {at(e.p1), at(e.p2), at(e.p4), at(e.p3)}});
        break;
      case EntityType::Insert:
        if (depth > 16 || (layer && layer->frozen)) return;
        for (const Entity& part : d_.explode(e))
          entity(part, part.layer == QLatin1String("0") ? e.layer : part.layer, depth + 1);
        break;
    }
  }

 private:
  int colorOf(const Entity& e, const QString& layerName) const {
    if (e.color != kByLayer) return e.color == kByBlock ? 7 : e.color;
    const Layer* l = d_.layer(layerName);
    return l ? std::abs(l->color) : 7;
  }

  void line(std::vector<QPointF> pts, int color, bool closed) {
    out.push_back({false, closed, color, std::move(pts)});
  }

  void arc(const Arc& a, int color, bool closed) {
    const int n = pieces(a.r, a.sweep, upd_);
    std::vector<QPointF> pts;
    for (int i = 0; i <= n; ++i) pts.push_back(a.point(double(i) / n));
    line(std::move(pts), color, closed);
  }

  // A wide segment is a band of filled quads; a thin one a line.
  void polyline(const Entity& e, int color) {
    const auto& v = e.vertices;
    if (v.empty()) return;
    const size_t segs = e.closed ? v.size() : v.size() - 1;
    std::vector<QPointF> thin{QPointF(v[0].x, v[0].y)};
    for (size_t i = 0; i < segs; ++i) {
      const Vertex& a = v[i];
      const Vertex& b = v[(i + 1) % v.size()];
      std::vector<QPointF> centre;
      Arc arcOf;
      const bool curved = a.bulge != 0 && (a.x != b.x || a.y != b.y);
      int n = 1;
      if (curved) {
        arcOf = bulgeArc(a, b);
        n = pieces(arcOf.r, arcOf.sweep, upd_);
        for (int k = 0; k <= n; ++k) centre.push_back(arcOf.point(double(k) / n));
      } else {
        centre = {QPointF(a.x, a.y), QPointF(b.x, b.y)};
      }
      if (e.width <= 0) {
        thin.insert(thin.end(), centre.begin() + 1, centre.end());
        continue;
      }
      const double h = e.width / 2;
      for (int k = 0; k < n; ++k) {
        QPointF p = centre[k], q = centre[k + 1];
        QPointF np, nq;
        if (curved) {
          np = (p - arcOf.center) / arcOf.r;
          nq = (q - arcOf.center) / arcOf.r;
        } else {
          const double len = std::hypot(q.x() - p.x(), q.y() - p.y());
          if (len == 0) continue;
          np = nq = QPointF(-(q.y() - p.y()) / len, (q.x() - p.x()) / len);
        }
        out.push_back({true, true, color, {p + np * h, q + nq * h, q - nq * h, p - np * h}});
      }
    }
    if (e.width <= 0) line(std::move(thin), color, false);
  }

  void text(const QString& s, const Point& p, double height, double rotation, int color) {
    if (s.isEmpty() || height <= 0) return;
    QFont font(QStringLiteral("Sans"));
    font.setPixelSize(100);
    const double cap = QFontMetricsF(font).capHeight();
    const double f = height / (cap > 0 ? cap : 70);
    QPainterPath path;
    path.addText(0, 0, font, s);
    QTransform t;
    t.translate(p.x, p.y);
    t.rotate(rotation);
    t.scale(f, -f);
    for (const QPolygonF& poly : path.toSubpathPolygons(t))
      line(std::vector<QPointF>(poly.begin(), poly.end()), color, true);
  }

  const Drawing& d_;
  double upd_;
};

}  // namespace

std::vector<Primitive> flatten(const Drawing& d, double unitsPerDot) {
  Flattener f(d, unitsPerDot);
  for (const Entity& e : d.entities) f.entity(e, e.layer, 0);
  return std::move(f.out);
}

}  // namespace sandbox

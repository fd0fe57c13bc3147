#include "drawing.h"

#include <algorithm>

namespace sandbox {

Point Transform::apply(const Point& p) const {
  const double x = (p.x - base.x) * sx, y = (p.y - base.y) * sy, z = (p.z - base.z) * sz;
  const double c = std::cos(toRad(rotation)), s = std::sin(toRad(rotation));
  return {at.x + x * c - y * s, at.y + x * s + y * c, at.z + z};
}

void Extents::add(const Point& p) {
  min.x = std::min(min.x, p.x);
  min.y = std::min(min.y, p.y);
  max.x = std::max(max.x, p.x);
  max.y = std::max(max.y, p.y);
}

void Extents::add(const Extents& e) {
  if (!e.valid()) return;
  add(e.min);
  add(e.max);
}

Drawing::Drawing() {
  layers.push_back(Layer{QStringLiteral("0")});
}

Layer* Drawing::layer(const QString& name) {
  for (Layer& l : layers)
    if (sameName(l.name, name)) return &l;
  return nullptr;
}

const Layer* Drawing::layer(const QString& name) const {
  return const_cast<Drawing*>(this)->layer(name);
}

Layer& Drawing::ensureLayer(const QString& name) {
  if (Layer* l = layer(name)) return *l;
  layers.push_back(Layer{name});
  return layers.back();
}

BlockDef* Drawing::block(const QString& name) {
  for (BlockDef& b : blocks)
    if (sameName(b.name, name)) return &b;
  return nullptr;
}

const BlockDef* Drawing::block(const QString& name) const {
  return const_cast<Drawing*>(this)->block(name);
}

Entity* Drawing::entity(int handle) {
  for (Entity& e : entities)
    if (e.handle == handle) return &e;
  return nullptr;
}

Entity& Drawing::add(Entity e) {
  e.handle = nextHandle++;
  if (e.layer.isEmpty()) e.layer = currentLayer;
  ensureLayer(e.layer);
  entities.push_back(std::move(e));
  return entities.back();
}

bool Drawing::erase(int handle) {
  const auto it = std::find_if(entities.begin(), entities.end(),
                               [handle](const Entity& e) { return e.handle == handle; });
  if (it == entities.end()) return false;
  entities.erase(it);
  return true;
}

int Drawing::resolvedColor(const Entity& e, int byBlock) const {
  if (e.color == kByBlock) return byBlock;
  if (e.color != kByLayer) return e.color;
  const Layer* l = layer(e.layer);
  return l ? std::abs(l->color) : 7;
}

void transformEntity(Entity& e, const Transform& t) {
  const double f = std::abs(t.sx);
  const bool mirrored = t.sx * t.sy < 0;
  e.p1 = t.apply(e.p1);
  switch (e.type) {
    case EntityType::Line: e.p2 = t.apply(e.p2); break;
    case EntityType::Circle: e.radius *= f; break;
    case EntityType::Arc:
      e.radius *= f;
      e.startAngle += t.rotation;
      e.endAngle += t.rotation;
      break;
    case EntityType::Polyline:
      for (Vertex& v : e.vertices) {
        const Point p = t.apply({v.x, v.y, 0});
        v.x = p.x;
        v.y = p.y;
        if (mirrored) v.bulge = -v.bulge;
      }
      e.width *= f;
      break;
    case EntityType::Text:
    case EntityType::AttDef:
      e.height *= std::abs(t.sy);
      e.rotation += t.rotation;
      break;
    case EntityType::Solid:
      e.p2 = t.apply(e.p2);
      e.p3 = t.apply(e.p3);
      e.p4 = t.apply(e.p4);
      break;
    case EntityType::Insert:
      e.sx *= t.sx;
      e.sy *= t.sy;
      e.sz *= t.sz;
      e.rotation += t.rotation;
      for (Attribute& a : e.attributes) {
        a.position = t.apply(a.position);
        a.height *= std::abs(t.sy);
        a.rotation += t.rotation;
      }
      break;
  }
}

std::vector<Entity> Drawing::explode(const Entity& insert) const {
  std::vector<Entity> out;
  const BlockDef* b = block(insert.blockName);
  if (insert.type != EntityType::Insert || !b) return out;
  const Transform t{b->base, insert.p1, insert.sx, insert.sy, insert.sz, insert.rotation};
  for (const Entity& src : b->entities) {
    if (src.type == EntityType::AttDef) continue;  // the reference's attributes stand for them
    Entity e = src;
    transformEntity(e, t);
    if (e.color == kByBlock) e.color = insert.color;
    out.push_back(std::move(e));
  }
  for (const Attribute& a : insert.attributes) {
    Entity e;
    e.type = EntityType::Text;
    e.layer = insert.layer;
    e.color = insert.color;
    e.p1 = a.position;
    e.height = a.height;
    e.rotation = a.rotation;
    e.text = a.value;
    out.push_back(std::move(e));
  }
  return out;
}

namespace {

void addArc(Extents& x, const Point& c, double r, double a0, double a1) {
  // Counter-clockwise from a0, at most one turn, however large the angles are.
  double sweep = std::fmod(a1 - a0, 360.0);
  if (sweep <= 0) sweep += 360;
  if (!std::isfinite(sweep)) sweep = 360;
  for (double s = 0; s < sweep; s += 5)
    x.add(Point{c.x + r * std::cos(toRad(a0 + s)), c.y + r * std::sin(toRad(a0 + s)), 0});
  x.add(Point{c.x + r * std::cos(toRad(a0 + sweep)), c.y + r * std::sin(toRad(a0 + sweep)), 0});
}

Extents extentsOf(const Drawing& d, const Entity& e, int depth) {
  Extents x;
  switch (e.type) {
    case EntityType::Line:
      x.add(e.p1);
      x.add(e.p2);
      break;
    case EntityType::Circle:
      x.add(Point{e.p1.x - e.radius, e.p1.y - e.radius, 0});
      x.add(Point{e.p1.x + e.radius, e.p1.y + e.radius, 0});
      break;
    case EntityType::Arc: addArc(x, e.p1, e.radius, e.startAngle, e.endAngle); break;
    case EntityType::Polyline:
      for (const Vertex& v : e.vertices) {
        x.add(Point{v.x - e.width / 2, v.y - e.width / 2, 0});
        x.add(Point{v.x + e.width / 2, v.y + e.width / 2, 0});
      }
      // A bulged segment reaches beyond its vertices: a donut is two arcs.
      for (size_t i = 0; i < e.vertices.size(); ++i) {
        const Vertex& a = e.vertices[i];
        const Vertex& b = e.vertices[(i + 1) % e.vertices.size()];
        if (a.bulge == 0 || (i + 1 == e.vertices.size() && !e.closed)) continue;
        const double chord = std::hypot(b.x - a.x, b.y - a.y);
        const double r = chord * (1 + a.bulge * a.bulge) / (4 * std::abs(a.bulge)) + e.width / 2;
        const Point mid{(a.x + b.x) / 2, (a.y + b.y) / 2, 0};
        x.add(Point{mid.x - r, mid.y - r, 0});
        x.add(Point{mid.x + r, mid.y + r, 0});
      }
      break;
    case EntityType::Text:
    case EntityType::AttDef: {
      const QString& s = e.type == EntityType::Text ? e.text : e.tag;
      const double w = std::max<qsizetype>(1, s.size()) * e.height * 0.8;
      const Transform t{{}, e.p1, 1, 1, 1, e.rotation};
      x.add(e.p1);
      x.add(t.apply({w, 0, 0}));
      x.add(t.apply({0, e.height, 0}));
      x.add(t.apply({w, e.height, 0}));
      break;
    }
    case EntityType::Solid:
      x.add(e.p1);
      x.add(e.p2);
      x.add(e.p3);
      x.add(e.p4);
      break;
    case EntityType::Insert:
      if (depth > 16) break;  // a block that holds itself
      for (const Entity& part : d.explode(e)) x.add(extentsOf(d, part, depth + 1));
      if (!x.valid()) x.add(e.p1);
      break;
  }
  return x;
}

}  // namespace

Extents Drawing::extentsOf(const Entity& e) const {
  return sandbox::extentsOf(*this, e, 0);
}

Extents Drawing::extents() const {
  Extents x;
  for (const Entity& e : entities) x.add(extentsOf(e));
  return x;
}

}  // namespace sandbox

#pragma once
// The drawing model of the sandbox CAD: layers, block definitions, entities and
// the drawing's own variables. Plain values: a copy is a snapshot (undo).
#include <QString>
#include <cmath>
#include <optional>
#include <vector>

namespace sandbox {

struct Point {
  double x = 0, y = 0, z = 0;
  Point operator+(const Point& o) const { return {x + o.x, y + o.y, z + o.z}; }
  Point operator-(const Point& o) const { return {x - o.x, y - o.y, z - o.z}; }
  Point operator*(double f) const { return {x * f, y * f, z * f}; }
  bool operator==(const Point&) const = default;
};

inline double distance(const Point& a, const Point& b) {
  return std::hypot(b.x - a.x, b.y - a.y);
}
inline constexpr double kPi = 3.14159265358979323846;
inline double toRad(double deg) {
  return deg * kPi / 180.0;
}
inline double toDeg(double rad) {
  return rad * 180.0 / kPi;
}

// Placement of a block's content: scale about the base, rotate, move.
struct Transform {
  Point base, at;
  double sx = 1, sy = 1, sz = 1, rotation = 0;  // rotation in degrees
  Point apply(const Point& p) const;
  double scaleLength() const { return std::sqrt(std::abs(sx * sy)); }
};

enum class EntityType { Line, Circle, Arc, Polyline, Text, Solid, Insert, AttDef };

struct Vertex {
  double x = 0, y = 0, bulge = 0;
  bool operator==(const Vertex&) const = default;
};

struct Attribute {
  QString tag, value;
  Point position;
  double height = 2.5, rotation = 0;
  bool operator==(const Attribute&) const = default;
};

inline constexpr int kByBlock = 0;
inline constexpr int kByLayer = 256;

// One entity. Which fields count depends on the type:
//   Line p1-p2; Circle p1 + radius; Arc p1 + radius + start/end angle (degrees,
//   counter-clockwise); Polyline vertices (+closed, width); Text p1 + height +
//   rotation + text; Solid p1..p4; Insert p1 + blockName + sx/sy/sz + rotation +
//   attributes; AttDef p1 + height + tag + prompt + text (the default value).
struct Entity {
  int handle = 0;
  EntityType type = EntityType::Line;
  QString layer = QStringLiteral("0");
  int color = kByLayer;
  QString linetype = QStringLiteral("BYLAYER");
  Point p1, p2, p3, p4;
  double radius = 0, startAngle = 0, endAngle = 360;
  std::vector<Vertex> vertices;
  bool closed = false;
  double width = 0;
  QString text, tag, prompt;
  double height = 2.5, rotation = 0;
  QString blockName;
  double sx = 1, sy = 1, sz = 1;
  std::vector<Attribute> attributes;
  bool operator==(const Entity&) const = default;
};

struct Layer {
  Layer() = default;
  explicit Layer(QString n) : name(std::move(n)) {}
  QString name;
  int color = 7;
  QString linetype = QStringLiteral("CONTINUOUS");
  bool on = true;
  bool frozen = false;
  QString trueColor;  // "R,G,B" when set by automation; not kept in the file
  bool visible() const { return on && !frozen; }
  bool operator==(const Layer&) const = default;
};

struct BlockDef {
  QString name;
  Point base;
  std::vector<Entity> entities;
  QString xrefPath;  // an attached drawing: its file
  bool operator==(const BlockDef&) const = default;
};

struct Extents {
  Point min{1e300, 1e300, 0}, max{-1e300, -1e300, 0};
  bool valid() const { return min.x <= max.x && min.y <= max.y; }
  void add(const Point& p);
  void add(const Extents& e);
};

class Drawing {
 public:
  Drawing();

  std::vector<Layer> layers;  // in their order; "0" first
  std::vector<BlockDef> blocks;
  std::vector<Entity> entities;  // drawing order; the last one is (entlast)
  QString currentLayer = QStringLiteral("0");
  Point insbase;
  int pdmode = 0;
  int nextHandle = 1;
  bool operator==(const Drawing&) const = default;

  Layer* layer(const QString& name);
  const Layer* layer(const QString& name) const;
  Layer& ensureLayer(const QString& name);
  BlockDef* block(const QString& name);
  const BlockDef* block(const QString& name) const;
  Entity* entity(int handle);
  // Adds with a new handle on the current layer unless the entity names one.
  Entity& add(Entity e);
  bool erase(int handle);
  // The layer's colour where the entity says BYLAYER; BYBLOCK takes `byBlock`.
  int resolvedColor(const Entity& e, int byBlock = 7) const;

  Extents extents() const;
  Extents extentsOf(const Entity& e) const;
  // The entities of a block reference in drawing coordinates (one level).
  std::vector<Entity> explode(const Entity& insert) const;
};

// Moves, turns and scales an entity in place.
void transformEntity(Entity& e, const Transform& t);

// Case-insensitive name comparison of layers and blocks.
inline bool sameName(const QString& a, const QString& b) {
  return a.compare(b, Qt::CaseInsensitive) == 0;
}

}  // namespace sandbox

// Changing what is drawn: MOVE, ROTATE, ERASE, CHANGE, EXPLODE, ARRAY, BREAK,
// ATTEDIT and -ATTEDIT.
#include <algorithm>
#include <cmath>

#include "commands.h"

namespace sandbox {

namespace {

void transformAll(Interpreter& in, const std::vector<int>& sel, const Transform& t) {
  Drawing& d = in.doc().drawing;
  for (int h : sel)
    if (Entity* e = d.entity(h)) transformEntity(*e, t);
  in.changed();
}

bool anyObject(const Entity&) {
  return true;
}

bool isReference(const Entity& e) {
  return e.type == EntityType::Insert;
}

// A count of rows or columns: a whole number of at least one.
Task<int> askCount(Interpreter& in, const char* key) {
  for (;;) {
    const double n = co_await askNumber(in, in.prompt("ARRAY", key), 1);
    if (n >= 1) co_return int(n);
    in.error(in.text("*", "positive"));
  }
}

// A distance with no default: Return asks again.
Task<double> askDistance(Interpreter& in, const char* key) {
  for (;;) {
    const double v = co_await askNumber(in, in.prompt("ARRAY", key), std::nan(""));
    if (!std::isnan(v)) co_return v;
    in.error(in.text("*", "distanceExpected"));
  }
}

// --- BREAK ---

bool breakable(const Entity& e) {
  switch (e.type) {
    case EntityType::Line:
    case EntityType::Circle:
    case EntityType::Arc: return true;
    case EntityType::Polyline:
      return std::none_of(e.vertices.begin(), e.vertices.end(),
                          [](const Vertex& v) { return v.bulge != 0; });
    default: return false;
  }
}

double normDeg(double a) {
  return std::fmod(std::fmod(a, 360) + 360, 360);
}

double angleOf(const Point& c, const Point& p) {
  return normDeg(toDeg(std::atan2(p.y - c.y, p.x - c.x)));
}

// Where a point falls on the segment a-b, 0 to 1.
double along(const Point& a, const Point& b, const Point& p) {
  const double dx = b.x - a.x, dy = b.y - a.y, len2 = dx * dx + dy * dy;
  if (len2 == 0) return 0;
  return std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / len2, 0.0, 1.0);
}

Point lerp(const Point& a, const Point& b, double t) {
  return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t, a.z + (b.z - a.z) * t};
}

// Where a point falls on an arc's sweep, 0 to 1; beside the sweep, its nearer end.
double alongArc(const Entity& e, const Point& p) {
  const double sweep = normDeg(e.endAngle - e.startAngle);
  if (sweep == 0) return 0;
  const double at = normDeg(angleOf(e.p1, p) - e.startAngle);
  if (at <= sweep) return at / sweep;
  return at - sweep < 360 - at ? 1 : 0;
}

// The pieces of an entity broken between two parameters of its length (0 to
// 1): what lies before `a` and after `b`, each kept when it has a length.
std::vector<Entity> keepOutside(const Entity& e, double a, double b) {
  constexpr double eps = 1e-9;
  if (a > b) std::swap(a, b);
  std::vector<Entity> out;
  if (e.type == EntityType::Line) {
    const Point pa = lerp(e.p1, e.p2, a), pb = lerp(e.p1, e.p2, b);
    if (a > eps) {
      Entity first = e;
      first.p2 = pa;
      out.push_back(first);
    }
    if (b < 1 - eps) {
      Entity second = e;
      second.p1 = pb;
      out.push_back(second);
    }
  } else {  // an arc
    const double sweep = normDeg(e.endAngle - e.startAngle);
    if (a > eps) {
      Entity first = e;
      first.endAngle = normDeg(e.startAngle + a * sweep);
      out.push_back(first);
    }
    if (b < 1 - eps) {
      Entity second = e;
      second.startAngle = normDeg(e.startAngle + b * sweep);
      out.push_back(second);
    }
  }
  return out;
}

// Polylines of straight segments: a place on them is segment index plus the
// part of that segment.
struct PolylinePath {
  const Entity& e;
  size_t n() const { return e.vertices.size(); }
  size_t segments() const { return e.closed ? n() : n() - 1; }
  Point vertex(size_t i) const {
    const Vertex& v = e.vertices[i % n()];
    return {v.x, v.y, 0};
  }
  double place(const Point& p) const {
    double best = 1e300, at = 0;
    for (size_t i = 0; i < segments(); ++i) {
      const double t = along(vertex(i), vertex(i + 1), p);
      const double dist = distance(p, lerp(vertex(i), vertex(i + 1), t));
      if (dist < best) {
        best = dist;
        at = double(i) + t;
      }
    }
    return at;
  }
  Point at(double s) const {
    if (e.closed && s >= double(segments())) s -= double(segments());
    const size_t i = std::min(size_t(std::max(0.0, std::floor(s))), segments() - 1);
    return lerp(vertex(i), vertex(i + 1), s - double(i));
  }
  // The open polyline from place s0 to s1 along the vertices.
  Entity piece(double s0, double s1) const {
    Entity out = e;
    out.closed = false;
    out.vertices.clear();
    auto push = [&](const Point& p) { out.vertices.push_back({p.x, p.y, 0}); };
    push(at(s0));
    for (double k = std::floor(s0) + 1; k < s1 - 1e-9; k += 1) push(vertex(size_t(k)));
    push(at(s1));
    return out;
  }
};

std::vector<Entity> breakPolyline(const Entity& e, const Point& first, const Point& second) {
  constexpr double eps = 1e-9;
  const PolylinePath path{e};
  if (path.n() < 2) return {e};
  const double total = double(path.segments());
  double a = path.place(first), b = path.place(second);
  std::vector<Entity> out;
  if (e.closed) {
    // What runs from the first point to the second, along the vertices, goes.
    if (b <= a) b += total;
    if (b - a >= total - eps) return {};
    out.push_back(path.piece(b, a + total));
    return out;
  }
  if (a > b) std::swap(a, b);
  if (a > eps) out.push_back(path.piece(0, a));
  if (b < total - eps) out.push_back(path.piece(b, total));
  return out;
}

// The entity `h` broken between two points; the pieces take its place.
void breakEntity(Drawing& d, int h, const Point& first, const Point& second) {
  const Entity* found = d.entity(h);
  if (!found) return;
  const Entity e = *found;
  std::vector<Entity> pieces;
  switch (e.type) {
    case EntityType::Line:
      pieces = keepOutside(e, along(e.p1, e.p2, first), along(e.p1, e.p2, second));
      break;
    case EntityType::Circle: {
      // The part from the first point counter-clockwise to the second goes.
      const double a = angleOf(e.p1, first), b = angleOf(e.p1, second);
      if (std::abs(a - b) < 1e-9) return;
      Entity arc = e;
      arc.type = EntityType::Arc;
      arc.startAngle = b;
      arc.endAngle = a;
      pieces.push_back(arc);
      break;
    }
    case EntityType::Arc: pieces = keepOutside(e, alongArc(e, first), alongArc(e, second)); break;
    case EntityType::Polyline: pieces = breakPolyline(e, first, second); break;
    default: return;
  }
  // The first piece keeps the handle; the others are new.
  Entity* target = d.entity(h);
  if (pieces.empty()) {
    d.erase(h);
    return;
  }
  *target = pieces.front();
  target->handle = h;
  for (size_t i = 1; i < pieces.size(); ++i) {
    Entity extra = pieces[i];
    extra.handle = 0;
    d.add(std::move(extra));
  }
}

// The block reference with attributes the user picks; 0 for Return or a
// reference without attributes (said so).
Task<int> pickReferenceWithAttributes(Interpreter& in, const char* command) {
  for (;;) {
    const int h = co_await pickObject(in, in.prompt(command, "select"), isReference);
    if (!h) co_return 0;
    const Entity* e = in.doc().drawing.entity(h);
    if (!e || e->type != EntityType::Insert) {
      in.error(in.text(command, "notABlock"));
      continue;
    }
    if (e->attributes.empty()) {
      in.error(in.text(command, "noAttributes"));
      co_return 0;
    }
    co_return h;
  }
}

}  // namespace

Task<void> cmdMove(Interpreter& in) {
  const std::vector<int> sel = co_await in.selectObjects();
  if (sel.empty()) co_return;
  QString option;
  const auto base = co_await askPoint(in, in.prompt("MOVE", "base"), std::nullopt, &option);
  Point shift;
  if (base) {
    const auto second = co_await askPoint(in, in.prompt("MOVE", "second"), *base);
    shift = second ? *second - *base : *base;
  } else {
    // Return or Displacement: the displacement as one point.
    const Ask displacement = in.prompt("MOVE", "displacement", {pointText(Point{})});
    const auto by = co_await askPoint(in, displacement);
    if (by) shift = *by;
  }
  transformAll(in, sel, Transform{{}, shift});
}

Task<void> cmdRotate(Interpreter& in) {
  const std::vector<int> sel = co_await in.selectObjects();
  if (sel.empty()) co_return;
  const auto base = co_await askPoint(in, in.prompt("ROTATE", "base"));
  if (!base) co_return;
  const double angle = co_await askNumber(in, in.prompt("ROTATE", "angle"), 0, *base, true);
  transformAll(in, sel, Transform{*base, *base, 1, 1, 1, angle});
}

Task<void> cmdErase(Interpreter& in) {
  const std::vector<int> sel = co_await in.selectObjects();
  if (sel.empty()) co_return;
  for (int h : sel) in.doc().drawing.erase(h);
  in.changed();
}

// CHANGE: a change point moves the nearer end of lines; the properties are
// asked one after the other until Return.
Task<void> cmdChange(Interpreter& in) {
  const std::vector<int> sel = co_await in.selectObjects();
  if (sel.empty()) co_return;
  QString option;
  const auto p = co_await askPoint(in, in.prompt("CHANGE", "point"), std::nullopt, &option);
  if (p) {
    Drawing& d = in.doc().drawing;
    for (int h : sel) {
      Entity* e = d.entity(h);
      if (!e || e->type != EntityType::Line) continue;
      (distance(e->p1, *p) < distance(e->p2, *p) ? e->p1 : e->p2) = *p;
    }
    in.changed();
    co_return;
  }
  if (option.isEmpty()) co_return;  // Return; otherwise Properties
  for (;;) {
    const QString property = co_await askKeyword(in, in.prompt("CHANGE", "property"));
    if (property.isEmpty()) co_return;
    Drawing& d = in.doc().drawing;
    if (property == QLatin1String("Color")) {
      Ask a = in.prompt("CHANGE", "color");
      a.number = true;
      a.word = false;
      std::optional<int> color;
      while (!color) {
        const Answer x = co_await in.ask(a);
        color = x.kind == Answer::Enter ? std::optional<int>(kByLayer) : colorOf(x);
        if (color) break;
        if (x.kind == Answer::Word)
          in.error(in.text("*", "optionNotInSandbox", {x.keyword}));  // true colour, colour book
        else
          in.error(in.text("CHANGE", "badColor"));
      }
      for (int h : sel)
        if (Entity* e = in.doc().drawing.entity(h)) e->color = *color;
      in.changed();
    } else if (property == QLatin1String("LAyer")) {
      const Entity* first = d.entity(sel.front());
      const QString now = first ? first->layer : d.currentLayer;
      const Ask layerAsk = in.prompt("CHANGE", "layer", {now});
      const QString layer = co_await askWord(in, layerAsk);
      if (layer.isEmpty()) continue;
      Drawing& target = in.doc().drawing;
      if (!target.layer(layer)) in.message(in.text("CHANGE", "layerMade", {layer}));
      const QString name = target.ensureLayer(layer).name;
      for (int h : sel)
        if (Entity* e = target.entity(h)) e->layer = name;
      in.changed();
    } else if (property == QLatin1String("LType")) {
      const QString lt = co_await askWord(in, in.prompt("CHANGE", "linetype"));
      for (int h : sel)
        if (Entity* e = in.doc().drawing.entity(h))
          e->linetype = lt.isEmpty() ? QStringLiteral("BYLAYER") : lt;
      in.changed();
    } else {
      in.error(in.text("CHANGE", "propertyNotInSandbox", {property}));
    }
  }
}

// EXPLODE. Called from Lisp's (command ...) it takes one object and ends
// without waiting for Return, as the host does for scripts and Lisp.
Task<void> cmdExplode(Interpreter& in) {
  std::vector<int> sel;
  if (in.inLispCommand()) {
    if (const int h = co_await pickObject(in, in.prompt("*", "selectObjects"), anyObject))
      sel.push_back(h);
  } else {
    sel = co_await in.selectObjects();
  }
  Drawing& d = in.doc().drawing;
  int done = 0;
  for (int h : sel) {
    const Entity* e = d.entity(h);
    if (!e || e->type != EntityType::Insert || !d.block(e->blockName)) {
      in.error(in.text("EXPLODE", "notABlock"));
      continue;
    }
    const std::vector<Entity> parts = d.explode(*e);
    d.erase(h);
    for (Entity part : parts) d.add(std::move(part));
    ++done;
  }
  if (done) in.changed();
}

// ARRAY in its command-line form, rectangular: rows and columns, then their
// distances. The polar array is not in the sandbox.
Task<void> cmdArray(Interpreter& in) {
  const std::vector<int> sel = co_await in.selectObjects();
  if (sel.empty()) co_return;
  const QString type = co_await askKeyword(in, in.prompt("ARRAY", "type"));
  if (type == QLatin1String("Polar")) {
    in.error(in.text("ARRAY", "polarNotInSandbox"));
    co_return;
  }
  const int rows = co_await askCount(in, "rows");
  const int cols = co_await askCount(in, "columns");
  double dy = 0, dx = 0;
  if (rows > 1) dy = co_await askDistance(in, "rowDistance");
  if (cols > 1) dx = co_await askDistance(in, "columnDistance");
  Drawing& d = in.doc().drawing;
  std::vector<Entity> originals;
  for (int h : sel)
    if (const Entity* e = d.entity(h)) originals.push_back(*e);
  for (int r = 0; r < rows; ++r)
    for (int c = 0; c < cols; ++c) {
      if (r == 0 && c == 0) continue;
      for (Entity e : originals) {
        transformEntity(e, Transform{{}, {c * dx, r * dy, 0}});
        d.add(std::move(e));
      }
    }
  in.changed();
}

// BREAK: the point that picks the object is the first break point unless
// First is asked for. An object given by its name has no picked point: a
// second point alone breaks it there.
Task<void> cmdBreak(Interpreter& in) {
  std::optional<Point> picked;
  const int h = co_await pickObject(in, in.prompt("BREAK", "select"), breakable, &picked);
  if (!h) co_return;
  const Entity* e = in.doc().drawing.entity(h);
  if (!e || !breakable(*e)) {
    in.error(in.text("BREAK", "cannotBreak"));
    co_return;
  }
  QString option;
  auto second = co_await askPoint(in, in.prompt("BREAK", "second"), picked, &option);
  std::optional<Point> first = picked ? picked : second;
  if (option == QLatin1String("First")) {
    first = co_await askPoint(in, in.prompt("BREAK", "first"));
    if (!first) co_return;
    second = co_await askPoint(in, in.prompt("BREAK", "secondOnly"), *first);
  }
  if (!first || !second) co_return;
  breakEntity(in.doc().drawing, h, *first, *second);
  in.changed();
}

// ATTEDIT, the dialog form: one block reference, then the modal dialog with
// its values. OK keeps what the dialog shows.
Task<void> cmdAttedit(Interpreter& in) {
  const int h = co_await pickReferenceWithAttributes(in, "ATTEDIT");
  if (!h) co_return;
  co_await in.modalDialog(in.text("ATTEDIT", "dialog"));
}

// -ATTEDIT, the sandbox's short form: one reference, each value asked in turn.
Task<void> cmdAtteditLine(Interpreter& in) {
  const int h = co_await pickReferenceWithAttributes(in, "-ATTEDIT");
  if (!h) co_return;
  const size_t count = in.doc().drawing.entity(h)->attributes.size();
  for (size_t i = 0; i < count; ++i) {
    const Entity* now = in.doc().drawing.entity(h);
    if (!now || i >= now->attributes.size()) break;
    Ask a = in.prompt("-ATTEDIT", "value", {now->attributes[i].tag, now->attributes[i].value});
    a.text = true;
    const Answer v = co_await in.ask(a);
    Entity* target = in.doc().drawing.entity(h);
    if (target && i < target->attributes.size() && v.kind == Answer::Word && !v.text.isEmpty()) {
      target->attributes[i].value = v.text;
      in.changed();
    }
  }
}

}  // namespace sandbox

#include <QFileInfo>
#include <algorithm>
#include <cmath>

#include "commands.h"
#include "dxf.h"

namespace sandbox {

namespace {

QString star(Interpreter& in, const char* key, const QStringList& args = {}) {
  return in.text("*", key, args);
}

// A keyword the command does not take up: a limit of the sandbox.
void optionMissing(Interpreter& in, const Answer& x) {
  in.error(star(in, "optionNotInSandbox", {x.keyword.isEmpty() ? x.text : x.keyword}));
}

double segmentDistance(const Point& p, const Point& a, const Point& b) {
  const double dx = b.x - a.x, dy = b.y - a.y, len2 = dx * dx + dy * dy;
  if (len2 == 0) return distance(p, a);
  const double t = std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / len2, 0.0, 1.0);
  return distance(p, Point{a.x + t * dx, a.y + t * dy, 0});
}

// Whether `angle` lies on the counter-clockwise sweep from `start` to `end`.
bool onSweep(double angle, double start, double end) {
  auto norm = [](double a) { return std::fmod(std::fmod(a, 360) + 360, 360); };
  const double sweep = norm(end - start), at = norm(angle - start);
  return sweep == 0 || at <= sweep;
}

}  // namespace

Task<std::optional<Point>> askPoint(Interpreter& in, Ask a, std::optional<Point> base,
                                    QString* keyword) {
  a.point = true;
  a.word = false;
  a.base = base;
  if (keyword) keyword->clear();
  for (;;) {
    const Answer x = co_await in.ask(a);
    if (x.kind == Answer::Point) co_return x.p;
    if (x.kind == Answer::Enter) co_return std::nullopt;
    if (x.kind == Answer::Word && keyword && !x.keyword.isEmpty()) {
      *keyword = x.keyword;
      co_return std::nullopt;
    }
    if (x.kind == Answer::Word) optionMissing(in, x);
  }
}

Task<double> askNumber(Interpreter& in, Ask a, double fallback, std::optional<Point> from,
                       bool angle) {
  a.number = true;
  a.word = false;
  a.point = from.has_value();
  a.base = from;
  for (;;) {
    const Answer x = co_await in.ask(a);
    if (x.kind == Answer::Number) co_return x.number;
    if (x.kind == Answer::Point && from) {
      if (angle) co_return toDeg(std::atan2(x.p.y - from->y, x.p.x - from->x));
      co_return distance(*from, x.p);
    }
    if (x.kind == Answer::Enter) co_return fallback;
    if (x.kind == Answer::Word) optionMissing(in, x);
  }
}

Task<QString> askWord(Interpreter& in, Ask a) {
  a.word = true;
  const Answer x = co_await in.ask(a);
  co_return x.kind == Answer::Enter ? QString() : x.text;
}

Task<QString> askKeyword(Interpreter& in, Ask a) {
  a.word = false;
  for (;;) {
    const Answer x = co_await in.ask(a);
    if (x.kind == Answer::Enter) co_return QString();
    if (x.kind == Answer::Word && !x.keyword.isEmpty()) co_return x.keyword;
  }
}

Task<QString> askFile(Interpreter& in, Ask a, const QString& fallback) {
  a.file = fallback.isEmpty();
  a.word = true;
  const Answer x = co_await in.ask(a);
  co_return x.kind == Answer::Enter ? fallback : x.text;
}

Task<bool> askYesNo(Interpreter& in, Ask a, bool fallback) {
  if (a.keywords.isEmpty()) a.keywords = parseKeywords(QStringLiteral("Ja|Yes Nein|No"));
  a.word = false;
  for (;;) {
    const Answer x = co_await in.ask(a);
    if (x.kind == Answer::Enter) co_return fallback;
    if (x.keyword == QLatin1String("Yes")) co_return true;
    if (x.keyword == QLatin1String("No")) co_return false;
    in.error(star(in, "yesNo"));
  }
}

bool hits(const Drawing& d, const Entity& e, const Point& p, double tolerance) {
  switch (e.type) {
    case EntityType::Line: return segmentDistance(p, e.p1, e.p2) <= tolerance;
    case EntityType::Circle: return std::abs(distance(p, e.p1) - e.radius) <= tolerance;
    case EntityType::Arc:
      return std::abs(distance(p, e.p1) - e.radius) <= tolerance &&
             onSweep(toDeg(std::atan2(p.y - e.p1.y, p.x - e.p1.x)), e.startAngle, e.endAngle);
    case EntityType::Polyline: {
      const size_t n = e.vertices.size();
      for (size_t i = 0; i + 1 < n || (e.closed && i < n && n > 2); ++i) {
        const Vertex &a = e.vertices[i], &b = e.vertices[(i + 1) % n];
        if (segmentDistance(p, {a.x, a.y, 0}, {b.x, b.y, 0}) <= tolerance + e.width / 2)
          return true;
      }
      return false;
    }
    default: {
      const Extents x = d.extentsOf(e);
      return x.valid() && p.x >= x.min.x - tolerance && p.x <= x.max.x + tolerance &&
             p.y >= x.min.y - tolerance && p.y <= x.max.y + tolerance;
    }
  }
}

Task<int> pickObject(Interpreter& in, Ask a, bool (*accepts)(const Entity&),
                     std::optional<Point>* at) {
  a.select = true;
  a.point = true;
  a.word = false;
  for (;;) {
    const Answer x = co_await in.ask(a);
    const Drawing& d = in.doc().drawing;
    if (x.kind == Answer::Enter) co_return 0;
    if (x.kind == Answer::Entity && in.doc().drawing.entity(x.entity)) co_return x.entity;
    if (x.kind == Answer::Point) {
      const double tolerance = in.doc().view.height / 100;
      for (auto it = d.entities.rbegin(); it != d.entities.rend(); ++it)
        if (accepts(*it) && hits(d, *it, x.p, tolerance)) {
          if (at) *at = x.p;
          co_return it->handle;
        }
      continue;  // nothing there: the question comes again
    }
    in.error(star(in, "invalidSelection"));
  }
}

std::optional<int> colorOf(const Answer& x) {
  if (x.kind == Answer::Number && x.number >= 0 && x.number <= 256 &&
      x.number == std::floor(x.number))
    return int(x.number);
  if (x.kind != Answer::Word || x.keyword.isEmpty()) return std::nullopt;
  if (x.keyword.compare(QLatin1String("BYLAYER"), Qt::CaseInsensitive) == 0) return kByLayer;
  if (x.keyword.compare(QLatin1String("BYBLOCK"), Qt::CaseInsensitive) == 0) return kByBlock;
  static const char* const names[] = {"red", "yellow", "green", "cyan", "blue", "magenta", "white"};
  for (int i = 0; i < 7; ++i)
    if (x.keyword.compare(QLatin1String(names[i]), Qt::CaseInsensitive) == 0) return i + 1;
  return std::nullopt;
}

bool loadDrawingFile(Interpreter& in, const QString& name, Drawing* out, QString* path) {
  QString file = in.resolvePath(name, QStringLiteral(".dwg"));
  if (!QFileInfo(file).isFile()) {
    const QString dxf = in.resolvePath(name, QStringLiteral(".dxf"));
    if (QFileInfo(dxf).isFile()) file = dxf;
  }
  if (!QFileInfo(file).isFile()) {
    in.error(star(in, "fileNotFound", {name}));
    return false;
  }
  QString error;
  if (!readDxfFile(file, *out, &error)) {
    in.error(error);
    return false;
  }
  *path = file;
  return true;
}

void defineBlock(Drawing& d, const QString& name, const Drawing& from, const QString& xrefPath) {
  for (const Layer& l : from.layers)
    if (!d.layer(l.name)) d.layers.push_back(l);
  for (const BlockDef& b : from.blocks)
    if (!d.block(b.name)) d.blocks.push_back(b);
  BlockDef def{name, from.insbase, from.entities, xrefPath};
  if (BlockDef* old = d.block(name))
    *old = def;
  else
    d.blocks.push_back(def);
}

namespace {

void collectBlocks(const Drawing& d, const Entity& e, Drawing& out, int depth) {
  if (e.type != EntityType::Insert || depth > 16 || out.block(e.blockName)) return;
  const BlockDef* b = d.block(e.blockName);
  if (!b) return;
  out.blocks.push_back(*b);
  for (const Entity& inner : b->entities) {
    if (!out.layer(inner.layer) && d.layer(inner.layer))
      out.layers.push_back(*d.layer(inner.layer));
    collectBlocks(d, inner, out, depth + 1);
  }
}

}  // namespace

Drawing extractDrawing(const Drawing& d, const std::vector<Entity>& entities, const Point& base) {
  Drawing out;
  out.insbase = base;
  for (const Entity& e : entities) {
    if (!out.layer(e.layer))
      out.layers.push_back(d.layer(e.layer) ? *d.layer(e.layer) : Layer{e.layer});
    collectBlocks(d, e, out, 0);
    Entity copy = e;
    copy.handle = out.nextHandle++;
    out.entities.push_back(copy);
  }
  return out;
}

Task<bool> placeReference(Interpreter& in, QString command, QString blockName) {
  std::optional<Point> at;
  while (!at) {
    at = co_await askPoint(in, in.prompt(command, "point"));
    if (!at) in.error(star(in, "pointOrKeyword"));  // a reference needs its point
  }
  const double sx = co_await askNumber(in, in.prompt(command, "xscale"), 1);
  const double sy = co_await askNumber(in, in.prompt(command, "yscale"), sx);
  const double angle = co_await askNumber(in, in.prompt(command, "rotation"), 0, *at, true);

  Entity ref;
  ref.type = EntityType::Insert;
  ref.blockName = blockName;
  ref.layer = in.doc().drawing.currentLayer;
  ref.p1 = *at;
  ref.sx = sx == 0 ? 1 : sx;
  ref.sy = sy == 0 ? ref.sx : sy;
  ref.sz = ref.sx;
  ref.rotation = angle;

  std::vector<Entity> attdefs;
  Point base;
  if (const BlockDef* b = in.doc().drawing.block(blockName)) {
    base = b->base;
    for (const Entity& e : b->entities)
      if (e.type == EntityType::AttDef) attdefs.push_back(e);
  }
  const Transform t{base, ref.p1, ref.sx, ref.sy, ref.sz, ref.rotation};
  const bool asked = command == QLatin1String("-INSERT") &&
                     in.variable(QStringLiteral("ATTREQ")).toInt() == 1 && !attdefs.empty();
  if (asked) in.message(in.text(command, "attributeValues"));
  for (const Entity& def : attdefs) {
    Attribute a{def.tag, def.text, t.apply(def.p1), def.height * std::abs(ref.sy),
                def.rotation + ref.rotation};
    if (asked) {
      Ask q =
          in.prompt(command, "attribute", {def.prompt.isEmpty() ? def.tag : def.prompt, def.text});
      q.text = true;
      const Answer x = co_await in.ask(q);
      if (x.kind == Answer::Word && !x.text.isEmpty()) a.value = x.text;
    }
    ref.attributes.push_back(a);
  }
  Drawing& d = in.doc().drawing;
  in.doc().lastInserted = d.add(ref).handle;
  in.changed();
  co_return true;
}

const std::vector<CommandDef>& commandTable() {
  auto names = [](const char* list) { return QString::fromUtf8(list).split(QLatin1Char(',')); };
  static const std::vector<CommandDef> table = {
      {QStringLiteral("LINE"), names("line,l,linie"), cmdLine},
      {QStringLiteral("CIRCLE"), names("circle,c,kreis,k"), cmdCircle},
      {QStringLiteral("PLINE"), names("pline,pl,plinie"), cmdPline},
      {QStringLiteral("TEXT"), names("text,dtext,dt"), cmdText},
      {QStringLiteral("DONUT"), names("donut,doughnut,do,ring"), cmdDonut},
      {QStringLiteral("MOVE"), names("move,m,schieben"), cmdMove},
      {QStringLiteral("ROTATE"), names("rotate,ro,drehen"), cmdRotate},
      {QStringLiteral("ERASE"), names("erase,e,löschen,loeschen"), cmdErase},
      {QStringLiteral("CHANGE"), names("change,-ch,ändern,aendern"), cmdChange},
      {QStringLiteral("EXPLODE"), names("explode,x,ursprung"), cmdExplode},
      {QStringLiteral("ARRAY"), names("array,-array,ar,reihe"), cmdArray},
      {QStringLiteral("BREAK"), names("break,br,bruch"), cmdBreak},
      {QStringLiteral("ATTEDIT"), names("attedit,ate,atteditieren"), cmdAttedit},
      {QStringLiteral("-ATTEDIT"), names("-attedit"), cmdAtteditLine},
      {QStringLiteral("-INSERT"), names("-insert,insert,-i,i,einfüge,-einfüge"), cmdInsert},
      {QStringLiteral("-XREF"), names("-xref,xref,-xr,xr"), cmdXref},
      {QStringLiteral("-WBLOCK"), names("-wblock,wblock,-w,w,wblocks"), cmdWblock},
      {QStringLiteral("BASE"), names("base,basis"), cmdBase},
      {QStringLiteral("OPEN"), names("open,öffnen,oeffnen"), cmdOpen, false},
      {QStringLiteral("QSAVE"), names("qsave,save,saveas,sichern,ksich"), cmdSave, false},
      {QStringLiteral("MSLIDE"), names("mslide,machdia"), cmdMslide, false},
      {QStringLiteral("SHELL"), names("shell,sh"), cmdShell, false},
      {QStringLiteral("SCRIPT"), names("script,scr,skript"), cmdScript, false},
      {QStringLiteral("QUIT"), names("quit,exit,quit,beenden"), cmdQuit, false},
      {QStringLiteral("UNDO"), names("undo,zurück"), cmdUndo, false},
      {QStringLiteral("U"), names("u"), cmdU, false},
      {QStringLiteral("SETVAR"), names("setvar,set,modivar"), cmdSetvar},
      {QStringLiteral("PAN"), names("pan,-pan,p"), cmdPan, false},
      {QStringLiteral("ZOOM"), names("zoom,zo"), cmdZoom, false},
      {QStringLiteral("HIDE"), names("hide,hi,verdeckt"), cmdHide, false},
      {QStringLiteral("REGEN"), names("regen,re"), cmdRegen, false},
      {QStringLiteral("-LAYER"), names("-layer,-la,-layer"), cmdLayerLine},
      {QStringLiteral("LAYER"), names("layer,la,ddlmodes"), cmdLayerDialog},
  };
  return table;
}

}  // namespace sandbox

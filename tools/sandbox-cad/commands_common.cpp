#include <QFileInfo>
#include <cmath>

#include "commands.h"
#include "dxf.h"

namespace sandbox {

Task<std::optional<Point>> askPoint(Interpreter& in, QString prompt, std::optional<Point> base,
                                    QString* word) {
  Ask a;
  a.prompt = prompt;
  a.point = true;
  a.word = word != nullptr;
  a.base = base;
  for (;;) {
    const Answer x = co_await in.ask(a);
    if (x.kind == Answer::Point) co_return x.p;
    if (x.kind == Answer::Word && word) {
      *word = x.text;
      co_return std::nullopt;
    }
    if (x.kind == Answer::Enter) co_return std::nullopt;
    in.message(QStringLiteral("Punkt erwartet."));
  }
}

Task<double> askNumber(Interpreter& in, QString prompt, double fallback, std::optional<Point> from,
                       bool angle) {
  Ask a;
  a.prompt = prompt;
  a.number = true;
  a.word = false;
  a.point = from.has_value();
  a.base = from;
  const Answer x = co_await in.ask(a);
  if (x.kind == Answer::Number) co_return x.number;
  if (x.kind == Answer::Point && from) {
    if (angle) co_return toDeg(std::atan2(x.p.y - from->y, x.p.x - from->x));
    co_return distance(*from, x.p);
  }
  co_return fallback;
}

Task<QString> askWord(Interpreter& in, QString prompt) {
  Ask a;
  a.prompt = prompt;
  const Answer x = co_await in.ask(a);
  co_return x.kind == Answer::Enter ? QString() : x.text;
}

Task<QString> askFile(Interpreter& in, QString prompt) {
  Ask a;
  a.prompt = prompt;
  a.file = true;
  const Answer x = co_await in.ask(a);
  co_return x.text;
}

Task<bool> askYesNo(Interpreter& in, QString prompt, bool fallback) {
  for (;;) {
    Ask a;
    a.prompt = prompt;
    const Answer x = co_await in.ask(a);
    if (x.kind == Answer::Enter) co_return fallback;
    if (x.is("j,ja,y,yes")) co_return true;
    if (x.is("n,nein,no")) co_return false;
    in.message(QStringLiteral("Ja oder Nein erwartet."));
  }
}

bool loadDrawingFile(Interpreter& in, const QString& name, Drawing* out, QString* path) {
  QString file = in.resolvePath(name, QStringLiteral(".dwg"));
  if (!QFileInfo(file).isFile()) {
    const QString dxf = in.resolvePath(name, QStringLiteral(".dxf"));
    if (QFileInfo(dxf).isFile()) file = dxf;
  }
  if (!QFileInfo(file).isFile()) {
    in.message(QStringLiteral("Datei \"%1\" nicht gefunden.").arg(name));
    return false;
  }
  QString error;
  if (!readDxfFile(file, *out, &error)) {
    in.message(error);
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

Task<bool> placeReference(Interpreter& in, QString blockName) {
  const auto at = co_await askPoint(in, QStringLiteral("Einfügepunkt angeben: "));
  if (!at) {
    in.message(QStringLiteral("Kein Einfügepunkt."));
    co_return false;
  }
  const double sx = co_await askNumber(in, QStringLiteral("X-Skalierfaktor eingeben <1>: "), 1);
  const double sy = co_await askNumber(
      in, QStringLiteral("Y-Skalierfaktor eingeben <X-Skalierfaktor verwenden>: "), sx);
  const double angle =
      co_await askNumber(in, QStringLiteral("Drehwinkel angeben <0>: "), 0, *at, true);

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
  const bool asked = in.variable(QStringLiteral("ATTREQ")).toInt() == 1;
  for (const Entity& def : attdefs) {
    Attribute a{def.tag, def.text, t.apply(def.p1), def.height * std::abs(ref.sy),
                def.rotation + ref.rotation};
    if (asked) {
      Ask q;
      q.prompt =
          QStringLiteral("%1 <%2>: ").arg(def.prompt.isEmpty() ? def.tag : def.prompt, def.text);
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
      {QStringLiteral("ATTEDIT"), names("attedit,-attedit,ate,atteditieren"), cmdAttedit},
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

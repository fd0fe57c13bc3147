// Drawing by hand or by script: LINE, CIRCLE, PLINE, TEXT, DONUT.
#include "commands.h"

namespace sandbox {

Task<void> cmdLine(Interpreter& in) {
  auto first = co_await askPoint(in, in.prompt("LINE", "first"));
  if (!first) co_return;
  Point start = *first, last = *first;
  std::vector<int> made;
  for (;;) {
    // Close is offered once two segments are there.
    QString option;
    const Ask next = in.prompt("LINE", made.size() >= 2 ? "nextClose" : "next");
    const auto p = co_await askPoint(in, next, last, &option);
    Drawing& d = in.doc().drawing;
    if (p) {
      Entity e;
      e.type = EntityType::Line;
      e.layer = d.currentLayer;
      e.p1 = last;
      e.p2 = *p;
      made.push_back(d.add(e).handle);
      in.changed();
      last = *p;
    } else if (option == QLatin1String("Close")) {
      Entity e;
      e.type = EntityType::Line;
      e.layer = d.currentLayer;
      e.p1 = last;
      e.p2 = start;
      d.add(e);
      in.changed();
      co_return;
    } else if (option == QLatin1String("Undo")) {
      if (made.empty()) {
        in.message(in.text("LINE", "allUndone"));
        continue;
      }
      const Entity* e = d.entity(made.back());
      last = e ? e->p1 : start;
      d.erase(made.back());
      made.pop_back();
      in.changed();
    } else {
      co_return;  // Return
    }
  }
}

Task<void> cmdCircle(Interpreter& in) {
  const auto c = co_await askPoint(in, in.prompt("CIRCLE", "center"));
  if (!c) co_return;
  const double last = in.defaults.value(QStringLiteral("radius"), 1);
  Ask a = in.prompt("CIRCLE", "radius", {num(last)});
  a.number = true;
  a.point = true;
  a.word = false;
  a.base = *c;
  double r = last;
  for (;;) {
    const Answer x = co_await in.ask(a);
    r = last;
    if (x.kind == Answer::Number)
      r = x.number;
    else if (x.kind == Answer::Point)
      r = distance(*c, x.p);
    else if (x.is("diameter")) {
      const Ask diameter = in.prompt("CIRCLE", "diameter", {num(2 * last)});
      r = co_await askNumber(in, diameter, 2 * last, *c) / 2;
    }
    if (r > 0) break;
    in.error(in.text("*", "positive"));
  }
  in.defaults[QStringLiteral("radius")] = r;
  Entity e;
  e.type = EntityType::Circle;
  e.layer = in.doc().drawing.currentLayer;
  e.p1 = *c;
  e.radius = r;
  in.doc().drawing.add(e);
  in.changed();
}

// PLINE with straight segments of one width; arcs, half widths and lengths
// are options the sandbox lacks.
Task<void> cmdPline(Interpreter& in) {
  const auto first = co_await askPoint(in, in.prompt("PLINE", "start"));
  if (!first) co_return;
  Entity e;
  e.type = EntityType::Polyline;
  e.layer = in.doc().drawing.currentLayer;
  e.width = in.defaults.value(QStringLiteral("plwidth"), 0);
  e.vertices.push_back({first->x, first->y, 0});
  Point last = *first;
  for (;;) {
    QString option;
    const Ask next = in.prompt("PLINE", e.vertices.size() >= 2 ? "nextClose" : "next");
    const auto p = co_await askPoint(in, next, last, &option);
    if (p) {
      e.vertices.push_back({p->x, p->y, 0});
      last = *p;
    } else if (option == QLatin1String("Close")) {
      e.closed = true;
      break;
    } else if (option == QLatin1String("Width")) {
      const Ask startWidth = in.prompt("PLINE", "startWidth", {num(e.width)});
      const double start = co_await askNumber(in, startWidth, e.width);
      // One width for the whole polyline: the ending width is asked, and taken.
      const Ask endWidth = in.prompt("PLINE", "endWidth", {num(start)});
      e.width = co_await askNumber(in, endWidth, start);
      in.defaults[QStringLiteral("plwidth")] = e.width;
    } else if (option == QLatin1String("Undo")) {
      if (e.vertices.size() > 1) e.vertices.pop_back();
      last = {e.vertices.back().x, e.vertices.back().y, 0};
    } else if (option.isEmpty()) {
      break;  // Return
    } else {
      in.error(in.text("*", "optionNotInSandbox", {option}));
    }
  }
  if (e.vertices.size() < 2) co_return;
  in.doc().drawing.add(e);
  in.changed();
}

Task<void> cmdText(Interpreter& in) {
  const auto at = co_await askPoint(in, in.prompt("TEXT", "start"));
  if (!at) co_return;
  const double fallback = in.defaults.value(QStringLiteral("textsize"), 2.5);
  const Ask height = in.prompt("TEXT", "height", {num(fallback)});
  const double h = co_await askNumber(in, height, fallback, *at);
  const double angle = co_await askNumber(in, in.prompt("TEXT", "rotation"), 0, *at, true);
  Ask a = in.prompt("TEXT", "text");
  a.text = true;
  const Answer x = co_await in.ask(a);
  if (x.text.isEmpty()) co_return;
  in.defaults[QStringLiteral("textsize")] = h;
  Entity e;
  e.type = EntityType::Text;
  e.layer = in.doc().drawing.currentLayer;
  e.p1 = *at;
  e.height = h;
  e.rotation = angle;
  e.text = x.text;
  in.doc().drawing.add(e);
  in.changed();
}

// A donut is a closed polyline of two half circles with the ring's width.
Task<void> cmdDonut(Interpreter& in) {
  const double inner0 = in.defaults.value(QStringLiteral("donutinner"), 0.5);
  const double outer0 = in.defaults.value(QStringLiteral("donutouter"), 1.0);
  double inner = 0, outer = 0;
  for (;;) {
    const Ask innerAsk = in.prompt("DONUT", "inner", {num(inner0)});
    inner = co_await askNumber(in, innerAsk, inner0);
    const Ask outerAsk = in.prompt("DONUT", "outer", {num(outer0)});
    outer = co_await askNumber(in, outerAsk, outer0);
    if (inner >= 0 && outer > inner) break;
    in.error(in.text("DONUT", "outerTooSmall"));
  }
  in.defaults[QStringLiteral("donutinner")] = inner;
  in.defaults[QStringLiteral("donutouter")] = outer;
  for (;;) {
    const auto c = co_await askPoint(in, in.prompt("DONUT", "center"));
    if (!c) co_return;
    const double r = (inner + outer) / 4;
    Entity e;
    e.type = EntityType::Polyline;
    e.layer = in.doc().drawing.currentLayer;
    e.closed = true;
    e.width = (outer - inner) / 2;
    e.vertices = {{c->x - r, c->y, 1}, {c->x + r, c->y, 1}};
    in.doc().drawing.add(e);
    in.changed();
  }
}

}  // namespace sandbox

// Drawing by hand or by script: LINE, CIRCLE, PLINE, TEXT, DONUT.
#include "commands.h"

namespace sandbox {

Task<void> cmdLine(Interpreter& in) {
  auto first = co_await askPoint(in, QStringLiteral("Ersten Punkt angeben: "));
  if (!first) co_return;
  Point start = *first, last = *first;
  std::vector<int> made;
  for (;;) {
    QString word;
    const auto p = co_await askPoint(
        in, QStringLiteral("Nächsten Punkt angeben oder [Zurück/Schließen]: "), last, &word);
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
      continue;
    }
    if (word.isEmpty()) co_return;
    Answer w{Answer::Word, word};
    if (w.is("s,schließen,c,close") && made.size() >= 2) {
      Entity e;
      e.type = EntityType::Line;
      e.layer = d.currentLayer;
      e.p1 = last;
      e.p2 = start;
      d.add(e);
      in.changed();
      co_return;
    }
    if (w.is("z,zurück,u,undo") && !made.empty()) {
      const Entity* e = d.entity(made.back());
      last = e ? e->p1 : start;
      d.erase(made.back());
      made.pop_back();
      in.changed();
      continue;
    }
    in.message(QStringLiteral("Punkt oder Option erwartet."));
  }
}

Task<void> cmdCircle(Interpreter& in) {
  const auto c = co_await askPoint(in, QStringLiteral("Mittelpunkt für Kreis angeben: "));
  if (!c) co_return;
  Ask a;
  a.prompt = QStringLiteral("Radius angeben oder [Durchmesser] <%1>: ")
                 .arg(num(in.defaults.value(QStringLiteral("radius"), 1)));
  a.number = true;
  a.point = true;
  a.base = *c;
  const Answer x = co_await in.ask(a);
  double r = in.defaults.value(QStringLiteral("radius"), 1);
  if (x.kind == Answer::Number)
    r = x.number;
  else if (x.kind == Answer::Point)
    r = distance(*c, x.p);
  else if (x.is("d,durchmesser,diameter")) {
    const double diameter =
        co_await askNumber(in, QStringLiteral("Durchmesser angeben: "), 2 * r, *c);
    r = diameter / 2;
  }
  if (r <= 0) {
    in.message(QStringLiteral("Der Radius muss größer als null sein."));
    co_return;
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

Task<void> cmdPline(Interpreter& in) {
  const auto first = co_await askPoint(in, QStringLiteral("Startpunkt angeben: "));
  if (!first) co_return;
  Entity e;
  e.type = EntityType::Polyline;
  e.layer = in.doc().drawing.currentLayer;
  e.width = in.defaults.value(QStringLiteral("plwidth"), 0);
  e.vertices.push_back({first->x, first->y, 0});
  Point last = *first;
  for (;;) {
    QString word;
    const auto p = co_await askPoint(
        in, QStringLiteral("Nächsten Punkt angeben oder [Schließen/Breite]: "), last, &word);
    if (p) {
      e.vertices.push_back({p->x, p->y, 0});
      last = *p;
      continue;
    }
    const Answer w{Answer::Word, word};
    if (w.is("s,schließen,c,close")) {
      e.closed = true;
      break;
    }
    if (w.is("b,breite,w,width")) {
      e.width = co_await askNumber(in, QStringLiteral("Breite angeben <%1>: ").arg(num(e.width)),
                                   e.width);
      in.defaults[QStringLiteral("plwidth")] = e.width;
      continue;
    }
    if (word.isEmpty()) break;
    in.message(QStringLiteral("Punkt oder Option erwartet."));
  }
  if (e.vertices.size() < 2) co_return;
  in.doc().drawing.add(e);
  in.changed();
}

Task<void> cmdText(Interpreter& in) {
  const auto at = co_await askPoint(in, QStringLiteral("Startpunkt des Textes angeben: "));
  if (!at) co_return;
  const double fallback = in.defaults.value(QStringLiteral("textsize"), 2.5);
  const double h = co_await askNumber(in, QStringLiteral("Höhe angeben <%1>: ").arg(num(fallback)),
                                      fallback, *at);
  const double angle =
      co_await askNumber(in, QStringLiteral("Drehwinkel des Textes angeben <0>: "), 0, *at, true);
  Ask a;
  a.prompt = QStringLiteral("Text eingeben: ");
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
  const double inner = co_await askNumber(
      in, QStringLiteral("Innendurchmesser angeben <%1>: ").arg(num(inner0)), inner0);
  const double outer = co_await askNumber(
      in, QStringLiteral("Außendurchmesser angeben <%1>: ").arg(num(outer0)), outer0);
  if (inner < 0 || outer <= inner) {
    in.message(QStringLiteral("Der Außendurchmesser muss größer als der Innendurchmesser sein."));
    co_return;
  }
  in.defaults[QStringLiteral("donutinner")] = inner;
  in.defaults[QStringLiteral("donutouter")] = outer;
  for (;;) {
    const auto c = co_await askPoint(in, QStringLiteral("Mittelpunkt angeben oder <Beenden>: "));
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

// Changing what is drawn: MOVE, ROTATE, ERASE, CHANGE, EXPLODE, ARRAY, ATTEDIT.
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

bool none(Interpreter& in, const std::vector<int>& sel) {
  if (!sel.empty()) return false;
  in.message(QStringLiteral("Keine Objekte gewählt."));
  return true;
}

// Colour answers: a number 0 to 256, or the names of the two logical colours.
std::optional<int> colorOf(const Answer& x) {
  if (x.kind == Answer::Number && x.number >= 0 && x.number <= 256 &&
      x.number == std::floor(x.number))
    return int(x.number);
  if (x.is("vonlayer,bylayer")) return kByLayer;
  if (x.is("vonblock,byblock")) return kByBlock;
  static const char* const names[] = {"rot,red",   "gelb,yellow", "grün,gruen,green", "cyan",
                                      "blau,blue", "magenta",     "weiß,weiss,white"};
  for (int i = 0; i < 7; ++i)
    if (x.is(names[i])) return i + 1;
  return std::nullopt;
}

}  // namespace

Task<void> cmdMove(Interpreter& in) {
  const std::vector<int> sel = co_await in.selectObjects();
  if (none(in, sel)) co_return;
  const auto base = co_await askPoint(in, QStringLiteral("Basispunkt oder Verschiebung angeben: "));
  if (!base) co_return;
  const auto second = co_await askPoint(
      in, QStringLiteral("Zweiten Punkt angeben oder <ersten Punkt als Verschiebung verwenden>: "),
      *base);
  const Point shift = second ? *second - *base : *base;
  transformAll(in, sel, Transform{{}, shift});
}

Task<void> cmdRotate(Interpreter& in) {
  const std::vector<int> sel = co_await in.selectObjects();
  if (none(in, sel)) co_return;
  const auto base = co_await askPoint(in, QStringLiteral("Basispunkt angeben: "));
  if (!base) co_return;
  const double angle =
      co_await askNumber(in, QStringLiteral("Drehwinkel angeben <0>: "), 0, *base, true);
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
  if (none(in, sel)) co_return;
  QString word;
  const auto p = co_await askPoint(
      in, QStringLiteral("Änderungspunkt angeben oder [Eigenschaften]: "), {}, &word);
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
  const Answer w{Answer::Word, word};
  if (!word.isEmpty() && !w.is("e,eig,eigenschaften,p,prop,properties")) {
    in.message(QStringLiteral("Ungültige Option: %1").arg(word));
    co_return;
  }
  for (;;) {
    const QString property = co_await askWord(
        in, QStringLiteral("Zu ändernde Eigenschaft eingeben [Farbe/LAyer/LTyp]: "));
    if (property.isEmpty()) co_return;
    const Answer prop{Answer::Word, property};
    if (prop.is("f,fa,farbe,c,col,color")) {
      Ask a;
      a.prompt = QStringLiteral("Neue Farbe [VONLAYER/VONBLOCK] <VONLAYER>: ");
      a.number = true;
      const Answer x = co_await in.ask(a);
      const auto color = x.kind == Answer::Enter ? std::optional<int>(kByLayer) : colorOf(x);
      if (!color) {
        in.message(QStringLiteral("Ungültige Farbe."));
        continue;
      }
      for (int h : sel)
        if (Entity* e = in.doc().drawing.entity(h)) e->color = *color;
      in.changed();
    } else if (prop.is("la,layer")) {
      const QString layer = co_await askWord(
          in,
          QStringLiteral("Neuen Layernamen eingeben <%1>: ").arg(in.doc().drawing.currentLayer));
      if (layer.isEmpty()) continue;
      Drawing& d = in.doc().drawing;
      if (!d.layer(layer)) in.message(QStringLiteral("Layer \"%1\" wird erstellt.").arg(layer));
      const QString name = d.ensureLayer(layer).name;
      for (int h : sel)
        if (Entity* e = d.entity(h)) e->layer = name;
      in.changed();
    } else if (prop.is("lt,ltyp,ltype")) {
      const QString lt =
          co_await askWord(in, QStringLiteral("Neuen Linientyp eingeben <VONLAYER>: "));
      for (int h : sel)
        if (Entity* e = in.doc().drawing.entity(h))
          e->linetype = lt.isEmpty() ? QStringLiteral("BYLAYER") : lt;
      in.changed();
    } else if (!prop.is("e,eig,eigenschaften,p,prop,properties")) {
      in.message(QStringLiteral("Ungültige Option: %1").arg(property));
    }
  }
}

Task<void> cmdExplode(Interpreter& in) {
  const std::vector<int> sel = co_await in.selectObjects();
  Drawing& d = in.doc().drawing;
  int done = 0;
  for (int h : sel) {
    const Entity* e = d.entity(h);
    if (!e || e->type != EntityType::Insert || !d.block(e->blockName)) {
      in.message(
          QStringLiteral("1 Objekt ist keine Blockreferenz und kann nicht aufgelöst werden."));
      continue;
    }
    const std::vector<Entity> parts = d.explode(*e);
    d.erase(h);
    for (Entity part : parts) d.add(std::move(part));
    ++done;
  }
  if (done) in.changed();
}

// ARRAY, rectangular: rows and columns asked, then their distances.
Task<void> cmdArray(Interpreter& in) {
  const std::vector<int> sel = co_await in.selectObjects();
  if (none(in, sel)) co_return;
  const QString type =
      co_await askWord(in, QStringLiteral("Anordnungstyp eingeben [Rechteckig/Polar] <R>: "));
  const Answer t{Answer::Word, type};
  if (!type.isEmpty() && !t.is("r,rechteckig,rectangular")) {
    in.message(QStringLiteral("Nur die rechteckige Anordnung ist verfügbar."));
    co_return;
  }
  const double rowCount =
      co_await askNumber(in, QStringLiteral("Anzahl der Zeilen (---) eingeben <1>: "), 1);
  const double colCount =
      co_await askNumber(in, QStringLiteral("Anzahl der Spalten (|||) eingeben <1>: "), 1);
  const int rows = std::max(1, int(rowCount)), cols = std::max(1, int(colCount));
  double dy = 0, dx = 0;
  if (rows > 1)
    dy = co_await askNumber(in, QStringLiteral("Abstand zwischen den Zeilen eingeben: "), 1);
  if (cols > 1)
    dx = co_await askNumber(in, QStringLiteral("Abstand zwischen den Spalten eingeben: "), 1);
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

// ATTEDIT takes one block reference, as a dialog would, and asks its values.
Task<void> cmdAttedit(Interpreter& in) {
  Ask pick;
  pick.prompt = QStringLiteral("Blockreferenz wählen: ");
  pick.select = true;
  pick.point = true;
  pick.word = false;
  const Answer x = co_await in.ask(pick);
  int h = x.kind == Answer::Entity ? x.entity : 0;
  if (x.kind == Answer::Point) {
    const Drawing& d = in.doc().drawing;
    for (auto it = d.entities.rbegin(); it != d.entities.rend() && !h; ++it) {
      const Extents e = d.extentsOf(*it);
      if (it->type == EntityType::Insert && e.valid() && x.p.x >= e.min.x && x.p.x <= e.max.x &&
          x.p.y >= e.min.y && x.p.y <= e.max.y)
        h = it->handle;
    }
  }
  const Entity* e = in.doc().drawing.entity(h);
  if (!e || e->type != EntityType::Insert || e->attributes.empty()) {
    in.message(QStringLiteral("Keine Blockreferenz mit Attributen gewählt."));
    co_return;
  }
  const size_t count = e->attributes.size();
  for (size_t i = 0; i < count; ++i) {
    const Entity* now = in.doc().drawing.entity(h);
    if (!now || i >= now->attributes.size()) break;
    Ask a;
    a.prompt = QStringLiteral("Wert für %1 eingeben <%2>: ")
                   .arg(now->attributes[i].tag, now->attributes[i].value);
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

// The session: UNDO, U, SETVAR, PAN, ZOOM, HIDE, REGEN.
#include <cmath>
#include <utility>

#include "commands.h"

namespace sandbox {

namespace {

void undoSteps(Interpreter& in, int count) {
  Document& d = in.doc();
  for (int i = 0; i < count; ++i) {
    QString command;
    if (!d.undoOne(&command)) {
      if (i == 0) in.message(in.text("UNDO", "nothing"));
      break;
    }
    in.message(in.text("UNDO", "undone", {command}));
  }
  in.changed();
}

}  // namespace

// UNDO: a count, Mark, or Back to the newest mark; Back without a mark asks
// before it takes back everything. Auto, Control, BEgin and End are taken
// and change nothing here.
Task<void> cmdUndo(Interpreter& in) {
  Ask a = in.prompt("UNDO", "option");
  a.number = true;
  a.word = false;
  const Answer x = co_await in.ask(a);
  Document& d = in.doc();
  if (x.kind == Answer::Number) {
    undoSteps(in, int(x.number));
  } else if (x.kind == Answer::Enter) {
    undoSteps(in, 1);
  } else if (x.keyword == QLatin1String("Mark")) {
    d.mark();
  } else if (x.keyword == QLatin1String("Back")) {
    // Try it on a copy first: is there a mark to go back to?
    Document trial = d;
    bool hadMark = false;
    if (!trial.undoBack(&hadMark)) {
      in.message(in.text("UNDO", "nothing"));
      co_return;
    }
    if (!hadMark) {
      const bool all = co_await askYesNo(in, in.prompt("UNDO", "backAll"), true);
      if (!all) co_return;
    }
    in.doc().undoBack(&hadMark);
    in.message(in.text("UNDO", hadMark ? "markEncountered" : "everything"));
    in.changed();
  }
}

Task<void> cmdU(Interpreter& in) {
  undoSteps(in, 1);
  co_return;
}

Task<void> cmdSetvar(Interpreter& in) {
  QString name = std::exchange(in.pendingVariable, QString());
  while (name.isEmpty()) {
    Ask a = in.prompt("SETVAR", "name");
    a.word = true;
    const Answer x = co_await in.ask(a);
    if (x.kind == Answer::Enter) co_return;
    if (x.keyword == QLatin1String("?")) {
      in.error(in.text("*", "optionNotInSandbox", {x.text}));
      continue;
    }
    name = x.text;
  }
  QString error;
  const QVariant current = in.variable(name, &error);
  if (!current.isValid()) {
    in.error(error);
    co_return;
  }
  QString shown = current.toString();
  if (current.typeId() == QMetaType::QVariantList) {
    const QVariantList l = current.toList();
    shown = pointText({l[0].toDouble(), l[1].toDouble(), l[2].toDouble()});
  } else if (current.typeId() == QMetaType::Double) {
    shown = num(current.toDouble());
  }
  Ask a = in.prompt("SETVAR", "value", {name.toUpper(), shown});
  a.point = current.typeId() == QMetaType::QVariantList;
  a.number = true;
  const Answer x = co_await in.ask(a);
  if (x.kind == Answer::Enter) co_return;
  QVariant value;
  if (x.kind == Answer::Point)
    value = QVariantList{x.p.x, x.p.y, x.p.z};
  else if (x.kind == Answer::Number)
    value = x.number;
  else
    value = x.text;
  if (!in.setVariable(name, value, &error)) in.error(error);
}

Task<void> cmdPan(Interpreter& in) {
  const auto from = co_await askPoint(in, in.prompt("PAN", "base"));
  if (!from) co_return;
  const auto to = co_await askPoint(in, in.prompt("PAN", "second"), *from);
  if (!to) co_return;
  View& v = in.doc().view;
  v.center = v.center - (*to - *from);
  in.viewChanged();
}

// ZOOM: a factor, All or Extents, a window by its corners; Return (real
// time) changes nothing. The other options are not in the sandbox.
Task<void> cmdZoom(Interpreter& in) {
  Ask a = in.prompt("ZOOM", "option");
  a.point = true;
  a.number = true;
  a.word = false;
  const Answer x = co_await in.ask(a);
  View& v = in.doc().view;
  if (x.kind == Answer::Enter) co_return;
  if (x.keyword == QLatin1String("All") || x.keyword == QLatin1String("Extents")) {
    v.zoomTo(in.doc().drawing.extents());
  } else if (x.kind == Answer::Number) {
    if (x.number <= 0) {
      in.error(in.text("*", "positive"));
      co_return;
    }
    v.height /= x.number;
  } else if (x.kind == Answer::Point || x.keyword == QLatin1String("Window")) {
    std::optional<Point> first = x.kind == Answer::Point ? std::optional<Point>(x.p) : std::nullopt;
    if (!first) first = co_await askPoint(in, in.prompt("ZOOM", "first"));
    if (!first) co_return;
    const auto second = co_await askPoint(in, in.prompt("ZOOM", "opposite"), *first);
    if (!second) co_return;
    Extents e;
    e.add(*first);
    e.add(*second);
    in.doc().view.zoomTo(e, 1.0);
  } else {
    in.error(in.text("*", "optionNotInSandbox", {x.keyword}));
    co_return;
  }
  in.viewChanged();
}

Task<void> cmdHide(Interpreter& in) {
  in.message(in.text("HIDE", "regenerating"));
  in.viewChanged();
  co_return;
}

Task<void> cmdRegen(Interpreter& in) {
  in.message(in.text("REGEN", "regenerating"));
  in.viewChanged();
  co_return;
}

}  // namespace sandbox

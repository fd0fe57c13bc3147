// The session: UNDO, U, SETVAR, PAN, ZOOM, HIDE, REGEN.
#include <cmath>

#include "commands.h"

namespace sandbox {

Task<void> cmdUndo(Interpreter& in) {
  Ask a;
  a.prompt = QStringLiteral("Anzahl der zurückzunehmenden Vorgänge oder [Markierung/Zurück] <1>: ");
  a.number = true;
  const Answer x = co_await in.ask(a);
  Document& d = in.doc();
  if (x.is("m,markierung,mark")) {
    d.mark();
    co_return;
  }
  if (x.is("z,zurück,zurueck,b,back")) {
    bool hadMark = false;
    if (!d.undoBack(&hadMark))
      in.message(QStringLiteral("Nichts zurückzunehmen."));
    else if (!hadMark)
      in.message(QStringLiteral("Alles zurückgenommen."));
    in.changed();
    co_return;
  }
  if (x.kind == Answer::Word) {
    in.message(QStringLiteral("Ungültige Option: %1").arg(x.text));
    co_return;
  }
  const int n = x.kind == Answer::Number ? int(x.number) : 1;
  for (int i = 0; i < n; ++i) {
    QString command;
    if (!d.undoOne(&command)) break;
    in.message(QStringLiteral("%1 zurückgenommen").arg(command));
  }
  in.changed();
}

Task<void> cmdU(Interpreter& in) {
  QString command;
  if (in.doc().undoOne(&command))
    in.message(QStringLiteral("%1 zurückgenommen").arg(command));
  else
    in.message(QStringLiteral("Nichts zurückzunehmen."));
  in.changed();
  co_return;
}

Task<void> cmdSetvar(Interpreter& in) {
  QString name = std::exchange(in.pendingVariable, QString());
  if (name.isEmpty()) name = co_await askWord(in, QStringLiteral("Variablenname eingeben: "));
  if (name.isEmpty()) co_return;
  QString error;
  const QVariant current = in.variable(name, &error);
  if (!current.isValid()) {
    in.message(error);
    co_return;
  }
  QString shown = current.toString();
  if (current.typeId() == QMetaType::QVariantList) {
    const QVariantList l = current.toList();
    shown = pointText({l[0].toDouble(), l[1].toDouble(), l[2].toDouble()});
  } else if (current.typeId() == QMetaType::Double) {
    shown = num(current.toDouble());
  }
  Ask a;
  a.prompt = QStringLiteral("Neuen Wert für %1 eingeben <%2>: ").arg(name.toUpper(), shown);
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
  if (!in.setVariable(name, value, &error)) in.message(error);
}

Task<void> cmdPan(Interpreter& in) {
  const auto from = co_await askPoint(in, QStringLiteral("Basispunkt oder Verschiebung angeben: "));
  if (!from) co_return;
  const auto to = co_await askPoint(in, QStringLiteral("Zweiten Punkt angeben: "), *from);
  if (!to) co_return;
  View& v = in.doc().view;
  v.center = v.center - (*to - *from);
  in.viewChanged();
}

Task<void> cmdZoom(Interpreter& in) {
  Ask a;
  a.prompt = QStringLiteral("Fensterecke angeben, Faktor eingeben oder [Alles/Grenzen/Fenster]: ");
  a.point = true;
  a.number = true;
  const Answer x = co_await in.ask(a);
  View& v = in.doc().view;
  if (x.is("a,alles,all,g,grenzen,e,extents")) {
    v.zoomTo(in.doc().drawing.extents());
  } else if (x.kind == Answer::Number && x.number > 0) {
    v.height /= x.number;
  } else if (x.kind == Answer::Point || x.is("f,fenster,w,window")) {
    std::optional<Point> first = x.kind == Answer::Point ? std::optional<Point>(x.p) : std::nullopt;
    if (!first) first = co_await askPoint(in, QStringLiteral("Erste Ecke angeben: "));
    if (!first) co_return;
    const auto second =
        co_await askPoint(in, QStringLiteral("Gegenüberliegende Ecke angeben: "), *first);
    if (!second) co_return;
    Extents e;
    e.add(*first);
    e.add(*second);
    in.doc().view.zoomTo(e, 1.0);
  } else {
    co_return;
  }
  in.viewChanged();
}

Task<void> cmdHide(Interpreter& in) {
  in.message(QStringLiteral("Verdeckte Linien werden entfernt: fertig."));
  in.viewChanged();
  co_return;
}

Task<void> cmdRegen(Interpreter& in) {
  in.message(QStringLiteral("Zeichnung wird regeneriert."));
  in.viewChanged();
  co_return;
}

}  // namespace sandbox

// Layers at the command line: -LAYER and the layer overview LAYER.
#include <utility>

#include "commands.h"

namespace sandbox {

namespace {

// "a,b,c" or "*" into the layers of the drawing; unknown names are reported.
std::vector<Layer*> namedLayers(Interpreter& in, const QString& list, bool create) {
  std::vector<Layer*> out;
  Drawing& d = in.doc().drawing;
  for (const QString& raw : list.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
    const QString name = raw.trimmed();
    if (name == QLatin1String("*")) {
      for (Layer& l : d.layers) out.push_back(&l);
      continue;
    }
    if (Layer* l = d.layer(name))
      out.push_back(l);
    else if (create)
      out.push_back(&d.ensureLayer(name));
    else
      in.error(in.text("-LAYER", "notFound", {name}));
  }
  return out;
}

enum class Switch { On, Off, Freeze, Thaw };

// Switches the listed layers. The current layer is not frozen, and switched
// off only after a yes.
Task<void> apply(Interpreter& in, QString list, Switch s) {
  QStringList names;
  for (const Layer* l : namedLayers(in, list, false)) names << l->name;
  const QString current = in.doc().drawing.currentLayer;
  bool offCurrent = false;
  if (s == Switch::Off && names.contains(current, Qt::CaseInsensitive)) {
    const Ask really = in.prompt("-LAYER", "offCurrent", {current});
    offCurrent = co_await askYesNo(in, really, false);
  }
  Drawing& d = in.doc().drawing;
  for (const QString& name : names) {
    Layer* l = d.layer(name);
    if (!l) continue;
    const bool isCurrent = sameName(name, current);
    if (s == Switch::Freeze && isCurrent) {
      in.error(in.text("-LAYER", "freezeCurrent", {l->name}));
      continue;
    }
    if (s == Switch::On)
      l->on = true;
    else if (s == Switch::Off)
      l->on = l->on && isCurrent && !offCurrent;
    else if (s == Switch::Freeze)
      l->frozen = true;
    else
      l->frozen = false;
  }
  in.changed();
}

// A layer colour: a number 1 to 255 or a colour name; Return keeps them.
Task<std::optional<int>> askLayerColor(Interpreter& in) {
  Ask a = in.prompt("-LAYER", "color");
  a.number = true;
  a.word = false;
  for (;;) {
    const Answer x = co_await in.ask(a);
    if (x.kind == Answer::Enter) co_return std::nullopt;
    const auto c = colorOf(x);
    if (c && *c >= 1 && *c <= 255) co_return c;
    if (x.kind == Answer::Word && !c)
      in.error(in.text("*", "optionNotInSandbox", {x.keyword}));  // true colour, colour book
    else
      in.error(in.text("-LAYER", "badColor"));
  }
}

// One line of the layer lists: name, colour, linetype, state.
QString layerLine(Interpreter& in, const Layer& l, bool markCurrent) {
  const QString state = !l.on      ? in.text("LAYER", "off")
                        : l.frozen ? in.text("LAYER", "frozen")
                                   : in.text("LAYER", "on");
  const QString name = markCurrent && sameName(l.name, in.doc().drawing.currentLayer)
                           ? in.text("LAYER", "current", {l.name})
                           : l.name;
  return in.text("LAYER", "line", {name, QString::number(l.color), l.linetype, state});
}

}  // namespace

// -LAYER. Besides the usual options, "FA" takes a list of layers, each ended by
// Return, and switches them on ("FA f": freezes, "FA t": thaws them); the list
// ends with Return or with Make or Set of the main question, which then work
// as there.
Task<void> cmdLayerLine(Interpreter& in) {
  const Ask main = in.prompt("-LAYER", "option");
  QString carried;
  for (;;) {
    QString option = std::exchange(carried, QString());
    if (option.isEmpty()) option = co_await askKeyword(in, main);
    if (option.isEmpty()) co_return;
    Drawing& d = in.doc().drawing;
    if (option == QLatin1String("?")) {
      for (const Layer& l : d.layers) in.message(layerLine(in, l, false));
    } else if (option == QLatin1String("Make")) {
      const Ask make = in.prompt("-LAYER", "make", {d.currentLayer});
      const QString name = co_await askWord(in, make);
      if (name.isEmpty()) continue;
      Layer& l = in.doc().drawing.ensureLayer(name);
      l.on = true;
      l.frozen = false;
      in.doc().drawing.currentLayer = l.name;
      in.changed();
    } else if (option == QLatin1String("Set")) {
      const QString name = co_await askWord(in, in.prompt("-LAYER", "set"));
      if (name.isEmpty()) continue;
      Layer* l = in.doc().drawing.layer(name);
      if (!l) {
        in.error(in.text("-LAYER", "notFound", {name}));
      } else if (l->frozen) {
        in.error(in.text("-LAYER", "setFrozen", {l->name}));
      } else {
        in.doc().drawing.currentLayer = l->name;
        in.changed();
      }
    } else if (option == QLatin1String("New")) {
      const QString list = co_await askWord(in, in.prompt("-LAYER", "new"));
      namedLayers(in, list, true);
      in.changed();
    } else if (option == QLatin1String("ON")) {
      const QString list = co_await askWord(in, in.prompt("-LAYER", "on"));
      co_await apply(in, list, Switch::On);
    } else if (option == QLatin1String("OFF")) {
      const QString list = co_await askWord(in, in.prompt("-LAYER", "off"));
      co_await apply(in, list, Switch::Off);
    } else if (option == QLatin1String("Freeze")) {
      const QString list = co_await askWord(in, in.prompt("-LAYER", "freeze"));
      co_await apply(in, list, Switch::Freeze);
    } else if (option == QLatin1String("Thaw")) {
      const QString list = co_await askWord(in, in.prompt("-LAYER", "thaw"));
      co_await apply(in, list, Switch::Thaw);
    } else if (option == QLatin1String("FA")) {
      Switch mode = Switch::On;
      bool first = true;
      for (;;) {
        const Answer n = co_await in.ask(in.prompt("-LAYER", "fa"));
        const QString name = n.kind == Answer::Enter ? QString() : n.text;
        const int k = matchKeyword(name, main.keywords, in.language());
        const QString mainOption = k >= 0 ? main.keywords[k].global : QString();
        if (first && n.is("f")) {
          mode = Switch::Freeze;
        } else if (first && n.is("t")) {
          mode = Switch::Thaw;
        } else if (name.isEmpty()) {
          break;
        } else if (mainOption == QLatin1String("Make") || mainOption == QLatin1String("Set")) {
          carried = mainOption;
          break;
        } else {
          co_await apply(in, name, mode);
        }
        first = false;
      }
    } else if (option == QLatin1String("Color")) {
      const auto color = co_await askLayerColor(in);
      if (!color) continue;
      const QString current = in.doc().drawing.currentLayer;
      const Ask layers = in.prompt("-LAYER", "colorLayers", {QString::number(*color), current});
      const QString list = co_await askWord(in, layers);
      for (Layer* l : namedLayers(in, list.isEmpty() ? current : list, false)) l->color = *color;
      in.changed();
    } else if (option == QLatin1String("Ltype")) {
      const QString lt = co_await askWord(in, in.prompt("-LAYER", "linetype"));
      const QString current = in.doc().drawing.currentLayer;
      const Ask layers = in.prompt("-LAYER", "linetypeLayers", {current});
      const QString list = co_await askWord(in, layers);
      for (Layer* l : namedLayers(in, list.isEmpty() ? current : list, false))
        l->linetype = lt.isEmpty() ? QStringLiteral("CONTINUOUS") : lt;
      in.changed();
    }
  }
}

// The layer overview. The window has no dialog of its own: it lists the layers
// and ends, so the command's end reaches whoever waits for it.
Task<void> cmdLayerDialog(Interpreter& in) {
  for (const Layer& l : in.doc().drawing.layers) in.message(layerLine(in, l, true));
  co_return;
}

}  // namespace sandbox

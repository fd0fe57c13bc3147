// Layers at the command line: -LAYER and the layer overview LAYER.
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
      in.message(QStringLiteral("Layer \"%1\" nicht gefunden.").arg(name));
  }
  return out;
}

enum class Switch { On, Off, Freeze, Thaw };

void apply(Interpreter& in, const QString& list, Switch s) {
  const QString current = in.doc().drawing.currentLayer;
  // Pointers stay valid: no layer is added while they are used.
  for (Layer* l : namedLayers(in, list, false)) {
    if (s == Switch::Freeze && sameName(l->name, current)) {
      in.message(
          QStringLiteral("Der aktuelle Layer \"%1\" kann nicht gefroren werden.").arg(l->name));
      continue;
    }
    if (s == Switch::Off && sameName(l->name, current))
      in.message(QStringLiteral("Der aktuelle Layer \"%1\" wird ausgeschaltet.").arg(l->name));
    if (s == Switch::On)
      l->on = true;
    else if (s == Switch::Off)
      l->on = false;
    else if (s == Switch::Freeze)
      l->frozen = true;
    else
      l->frozen = false;
  }
  in.changed();
}

bool isMainOption(const Answer& a) {
  return a.is("m,machen,make,s,se,setzen,set");
}

}  // namespace

// -LAYER. Besides the usual options, "FA" takes a list of layers, each ended by
// Return, and switches them on ("FA f": freezes, "FA t": thaws them); the list
// ends with Return or with an option of the main prompt ("se", "m").
Task<void> cmdLayerLine(Interpreter& in) {
  std::optional<QString> carried;
  for (;;) {
    QString option;
    if (carried)
      option = *carried;
    else
      option = co_await askWord(
          in, QStringLiteral(
                  "Option eingeben [?/Machen/Setzen/Neu/EIn/AUs/Farbe/LTyp/FRieren/TAuen/FA]: "));
    carried.reset();
    if (option.isEmpty()) co_return;
    const Answer o{Answer::Word, option};
    Drawing& d = in.doc().drawing;
    if (option == QLatin1String("?")) {
      for (const Layer& l : d.layers)
        in.message(QStringLiteral("  %1  Farbe %2  %3  %4%5")
                       .arg(l.name)
                       .arg(l.color)
                       .arg(l.linetype, l.on ? QStringLiteral("ein") : QStringLiteral("aus"),
                            l.frozen ? QStringLiteral(", gefroren") : QString()));
    } else if (o.is("m,machen,make")) {
      const QString name =
          co_await askWord(in, QStringLiteral("Name für neuen aktuellen Layer eingeben <%1>: ")
                                   .arg(in.doc().drawing.currentLayer));
      if (name.isEmpty()) continue;
      Layer& l = in.doc().drawing.ensureLayer(name);
      l.on = true;
      l.frozen = false;
      in.doc().drawing.currentLayer = l.name;
      in.changed();
    } else if (o.is("s,se,setzen,set")) {
      const QString name = co_await askWord(
          in, QStringLiteral("Layername eingeben, der aktuell gesetzt werden soll <%1>: ")
                  .arg(in.doc().drawing.currentLayer));
      if (name.isEmpty()) continue;
      Layer* l = in.doc().drawing.layer(name);
      if (!l) {
        in.message(QStringLiteral("Layer \"%1\" nicht gefunden.").arg(name));
      } else if (l->frozen) {
        in.message(QStringLiteral("Ein gefrorener Layer kann nicht aktuell gesetzt werden."));
      } else {
        in.doc().drawing.currentLayer = l->name;
        in.changed();
      }
    } else if (o.is("n,neu,new")) {
      const QString list = co_await askWord(in, QStringLiteral("Namen für neue Layer eingeben: "));
      namedLayers(in, list, true);
      in.changed();
    } else if (o.is("ei,ein,on")) {
      const QString list =
          co_await askWord(in, QStringLiteral("Liste der einzuschaltenden Layer eingeben: "));
      apply(in, list, Switch::On);
    } else if (o.is("a,au,aus,off")) {
      const QString list =
          co_await askWord(in, QStringLiteral("Liste der auszuschaltenden Layer eingeben: "));
      apply(in, list, Switch::Off);
    } else if (o.is("f,fr,frieren,freeze")) {
      const QString list =
          co_await askWord(in, QStringLiteral("Liste der zu frierenden Layer eingeben: "));
      apply(in, list, Switch::Freeze);
    } else if (o.is("t,ta,tauen,thaw")) {
      const QString list =
          co_await askWord(in, QStringLiteral("Liste der zu tauenden Layer eingeben: "));
      apply(in, list, Switch::Thaw);
    } else if (o.is("fa")) {
      Switch mode = Switch::On;
      bool first = true;
      for (;;) {
        const QString name = co_await askWord(in, QStringLiteral("Layername: "));
        const Answer n{Answer::Word, name};
        if (first && n.is("f")) {
          mode = Switch::Freeze;
        } else if (first && n.is("t")) {
          mode = Switch::Thaw;
        } else if (name.isEmpty()) {
          break;
        } else if (isMainOption(n)) {
          carried = name;
          break;
        } else {
          apply(in, name, mode);
        }
        first = false;
      }
    } else if (o.is("fb,farbe,c,color,col")) {
      const double color = co_await askNumber(in, QStringLiteral("Farbe eingeben (1-255): "), 7);
      const QString list = co_await askWord(in, QStringLiteral("Layer für Farbe %1 eingeben <%2>: ")
                                                    .arg(int(color))
                                                    .arg(in.doc().drawing.currentLayer));
      for (Layer* l : namedLayers(in, list.isEmpty() ? in.doc().drawing.currentLayer : list, false))
        if (color >= 1 && color <= 255) l->color = int(color);
      in.changed();
    } else if (o.is("lt,ltyp,ltype")) {
      const QString lt = co_await askWord(in, QStringLiteral("Linientyp eingeben <CONTINUOUS>: "));
      const QString list = co_await askWord(
          in,
          QStringLiteral("Layer für Linientyp eingeben <%1>: ").arg(in.doc().drawing.currentLayer));
      for (Layer* l : namedLayers(in, list.isEmpty() ? in.doc().drawing.currentLayer : list, false))
        l->linetype = lt.isEmpty() ? QStringLiteral("CONTINUOUS") : lt;
      in.changed();
    } else {
      in.message(QStringLiteral("Ungültige Option: %1").arg(option));
    }
  }
}

// The layer overview. The window has no dialog of its own: it lists the layers
// and ends, so the command's end reaches whoever waits for it.
Task<void> cmdLayerDialog(Interpreter& in) {
  for (const Layer& l : in.doc().drawing.layers)
    in.message(
        QStringLiteral("  %1%2  Farbe %3  %4  %5")
            .arg(l.name, sameName(l.name, in.doc().drawing.currentLayer)
                             ? QStringLiteral(" (aktuell)")
                             : QString())
            .arg(l.color)
            .arg(l.linetype, l.on ? (l.frozen ? QStringLiteral("gefroren") : QStringLiteral("ein"))
                                  : QStringLiteral("aus")));
  co_return;
}

}  // namespace sandbox

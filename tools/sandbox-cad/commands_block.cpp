// Blocks and drawings as blocks: -INSERT, -XREF, -WBLOCK, BASE.
#include <QDir>
#include <QFileInfo>

#include "commands.h"
#include "dxf.h"

namespace sandbox {

// -INSERT: "name", "file" or "name=file"; a file's drawing becomes the block
// (asking before it replaces a block of that name, unless EXPERT is 2 or more).
Task<void> cmdInsert(Interpreter& in) {
  QString named;
  for (;;) {
    named = co_await askWord(in, QStringLiteral("Blocknamen eingeben oder [?]: "));
    if (named == QLatin1String("?")) {
      for (const BlockDef& b : in.doc().drawing.blocks) in.message(QStringLiteral("  ") + b.name);
      continue;
    }
    if (!named.isEmpty()) break;
  }
  QString name = named, file;
  const qsizetype eq = named.indexOf(QLatin1Char('='));
  if (eq >= 0) {
    name = named.left(eq);
    file = named.mid(eq + 1);
    if (file.isEmpty()) file = name;
  } else if (!in.doc().drawing.block(named)) {
    file = named;
    name = QFileInfo(QString(named).replace(QLatin1Char('\\'), QLatin1Char('/'))).completeBaseName();
  }
  if (!file.isEmpty()) {
    Drawing source;
    QString path;
    if (!loadDrawingFile(in, file, &source, &path)) co_return;
    bool define = true;
    if (in.doc().drawing.block(name) && in.variable(QStringLiteral("EXPERT")).toInt() < 2) {
      define = co_await askYesNo(
          in, QStringLiteral("Block \"%1\" neu definieren? [Ja/Nein] <Nein>: ").arg(name), false);
      if (!define) in.message(QStringLiteral("Block \"%1\" nicht neu definiert.").arg(name));
    }
    if (define) {
      defineBlock(in.doc().drawing, name, source);
      in.changed();
    }
  }
  if (!in.doc().drawing.block(name)) {
    in.message(QStringLiteral("Block \"%1\" nicht gefunden.").arg(name));
    co_return;
  }
  co_await placeReference(in, in.doc().drawing.block(name)->name);
}

// -XREF, attach: the drawing stays in its file; its content is shown.
Task<void> cmdXref(Interpreter& in) {
  const QString option = co_await askWord(
      in, QStringLiteral("Option eingeben [?/Binden/Lösen/Pfad/Neu laden/Zuordnen] <Zuordnen>: "));
  const Answer o{Answer::Word, option};
  if (!option.isEmpty() && !o.is("z,zuordnen,a,attach")) {
    in.message(QStringLiteral("Diese Option ist nicht verfügbar: %1").arg(option));
    co_return;
  }
  const QString file =
      co_await askFile(in, QStringLiteral("Name der zuzuordnenden Datei eingeben: "));
  Drawing source;
  QString path;
  if (!loadDrawingFile(in, file, &source, &path)) co_return;
  const QString name = QFileInfo(path).completeBaseName();
  defineBlock(in.doc().drawing, name, source, path);
  in.changed();
  co_await placeReference(in, name);
}

// -WBLOCK: file, then an existing block, "=" (the block named as the file),
// "*" (the whole drawing) or Return for new: base point and objects, which
// leave the drawing.
Task<void> cmdWblock(Interpreter& in) {
  const QString file = co_await askFile(in, QStringLiteral("Dateiname: "));
  const QString path = in.resolvePath(file, QStringLiteral(".dwg"));
  if (QFileInfo::exists(path) && in.variable(QStringLiteral("EXPERT")).toInt() < 2) {
    const bool replace = co_await askYesNo(
        in,
        QStringLiteral("Die Zeichnung \"%1\" existiert bereits. Ersetzen? [Ja/Nein] <Nein>: ")
            .arg(path),
        false);
    if (!replace) co_return;
  }
  const QString blockName = co_await askWord(
      in,
      QStringLiteral(
          "Name des vorhandenen Blocks eingeben oder [= (Block=Ausgabedatei)/* (ganze Zeichnung)] "
          "<neue Zeichnung definieren>: "));
  Drawing out;
  std::vector<int> taken;
  if (blockName == QLatin1String("*")) {
    out = in.doc().drawing;
  } else if (!blockName.isEmpty()) {
    const QString wanted =
        blockName == QLatin1String("=") ? QFileInfo(path).completeBaseName() : blockName;
    const BlockDef* b = in.doc().drawing.block(wanted);
    if (!b) {
      in.message(QStringLiteral("Block \"%1\" nicht gefunden.").arg(wanted));
      co_return;
    }
    out = extractDrawing(in.doc().drawing, b->entities, b->base);
  } else {
    const auto base = co_await askPoint(in, QStringLiteral("Basispunkt angeben: "));
    if (!base) co_return;
    taken = co_await in.selectObjects();
    if (taken.empty()) {
      in.message(QStringLiteral("Keine Objekte gewählt."));
      co_return;
    }
    std::vector<Entity> entities;
    for (int h : taken)
      if (const Entity* e = in.doc().drawing.entity(h)) entities.push_back(*e);
    out = extractDrawing(in.doc().drawing, entities, *base);
  }
  QDir().mkpath(QFileInfo(path).absolutePath());
  QString error;
  if (!writeDxfFile(path, out, &error)) {
    in.message(error);
    co_return;
  }
  for (int h : taken) in.doc().drawing.erase(h);
  if (!taken.empty()) in.changed();
  in.message(QStringLiteral("%1 Objekte in %2 geschrieben.").arg(out.entities.size()).arg(path));
}

Task<void> cmdBase(Interpreter& in) {
  const auto p = co_await askPoint(
      in, QStringLiteral("Basispunkt eingeben <%1>: ").arg(pointText(in.doc().drawing.insbase)));
  if (!p) co_return;
  in.doc().drawing.insbase = *p;
  in.changed();
}

}  // namespace sandbox

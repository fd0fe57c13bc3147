// Blocks and drawings as blocks: -INSERT, -XREF, -WBLOCK, BASE.
#include <QDir>
#include <QFileInfo>

#include "commands.h"
#include "dxf.h"

namespace sandbox {

// -INSERT: "name", "file" or "name=file". A name or a file whose block is
// defined uses that definition as it is; only "name=file" puts the file's
// drawing in again, asking before it replaces the block unless EXPERT is 2
// or more.
Task<void> cmdInsert(Interpreter& in) {
  QString named;
  for (;;) {
    const Entity* last = in.doc().drawing.entity(in.doc().lastInserted);
    const QString offered = last && last->type == EntityType::Insert ? last->blockName : QString();
    Ask a = offered.isEmpty() ? in.prompt("-INSERT", "name")
                              : in.prompt("-INSERT", "nameLast", {offered});
    named = co_await askWord(in, a);
    if (named.isEmpty()) named = offered;
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
    name =
        QFileInfo(QString(named).replace(QLatin1Char('\\'), QLatin1Char('/'))).completeBaseName();
    if (!in.doc().drawing.block(name)) file = named;
  }
  if (!file.isEmpty()) {
    Drawing source;
    QString path;
    if (!loadDrawingFile(in, file, &source, &path)) co_return;
    bool define = true;
    if (eq >= 0 && in.doc().drawing.block(name) &&
        in.variable(QStringLiteral("EXPERT")).toInt() < 2) {
      const Ask redefine = in.prompt("-INSERT", "redefine", {name});
      define = co_await askYesNo(in, redefine, false);
      if (!define) in.message(in.text("-INSERT", "notRedefined", {name}));
    }
    if (define) {
      defineBlock(in.doc().drawing, name, source);
      in.changed();
    }
  }
  const BlockDef* b = in.doc().drawing.block(name);
  if (!b) {
    in.error(in.text("-INSERT", "blockNotFound", {name}));
    co_return;
  }
  co_await placeReference(in, QStringLiteral("-INSERT"), b->name);
}

// -XREF, attach: the drawing stays in its file; its content is shown. The
// other options are not in the sandbox.
Task<void> cmdXref(Interpreter& in) {
  const QString option = co_await askKeyword(in, in.prompt("-XREF", "option"));
  if (!option.isEmpty() && option != QLatin1String("Attach")) {
    in.error(in.text("-XREF", "optionNotInSandbox", {option}));
    co_return;
  }
  const QString file = co_await askFile(in, in.prompt("-XREF", "file"));
  Drawing source;
  QString path;
  if (!loadDrawingFile(in, file, &source, &path)) co_return;
  const QString name = QFileInfo(path).completeBaseName();
  defineBlock(in.doc().drawing, name, source, path);
  in.changed();
  co_await placeReference(in, QStringLiteral("-XREF"), name);
}

// -WBLOCK: file, then an existing block, "=" (the block named as the file),
// "*" (the whole drawing) or Return for new: base point and objects, which
// leave the drawing.
Task<void> cmdWblock(Interpreter& in) {
  const QString file = co_await askFile(in, in.prompt("-WBLOCK", "file"));
  const QString path = in.resolvePath(file, QStringLiteral(".dwg"));
  if (QFileInfo::exists(path) && in.variable(QStringLiteral("EXPERT")).toInt() < 2) {
    const bool replace = co_await askYesNo(in, in.prompt("-WBLOCK", "replace"), false);
    if (!replace) co_return;
  }
  const QString blockName = co_await askWord(in, in.prompt("-WBLOCK", "block"));
  Drawing out;
  std::vector<int> taken;
  if (blockName == QLatin1String("*")) {
    out = in.doc().drawing;
  } else if (!blockName.isEmpty()) {
    const QString wanted =
        blockName == QLatin1String("=") ? QFileInfo(path).completeBaseName() : blockName;
    const BlockDef* b = in.doc().drawing.block(wanted);
    if (!b) {
      in.error(in.text("-WBLOCK", "blockNotFound", {wanted}));
      co_return;
    }
    out = extractDrawing(in.doc().drawing, b->entities, b->base);
  } else {
    const auto base = co_await askPoint(in, in.prompt("-WBLOCK", "base"));
    if (!base) co_return;
    taken = co_await in.selectObjects();
    if (taken.empty()) {
      in.error(in.text("*", "nothingSelected"));
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
    in.error(error);
    co_return;
  }
  for (int h : taken) in.doc().drawing.erase(h);
  if (!taken.empty()) in.changed();
  in.message(in.text("-WBLOCK", "written", {QString::number(out.entities.size()), path}));
}

Task<void> cmdBase(Interpreter& in) {
  const Ask a = in.prompt("BASE", "point", {pointText(in.doc().drawing.insbase)});
  const auto p = co_await askPoint(in, a);
  if (!p) co_return;
  in.doc().drawing.insbase = *p;
  in.changed();
}

}  // namespace sandbox

#pragma once
// Helpers the command files share.
#include <optional>

#include "interpreter.h"
#include "sandboxprotocol.h"

namespace sandbox {

inline QString num(double v) {
  return kolvane::sandboxproto::formatNumber(v);
}
inline QString pointText(const Point& p) {
  return kolvane::sandboxproto::formatPoint(p.x, p.y, p.z);
}

// A point; nothing for Return (when `orEnter`) or for an option word, which
// lands in *word.
Task<std::optional<Point>> askPoint(Interpreter& in, QString prompt, std::optional<Point> base = {},
                                    QString* word = nullptr);
// A number, or `fallback` for Return. A point answer gives its distance from
// `base` (or its angle when `angleFrom` is set).
Task<double> askNumber(Interpreter& in, QString prompt, double fallback,
                       std::optional<Point> distanceFrom = {}, bool angle = false);
// A word; "" for Return.
Task<QString> askWord(Interpreter& in, QString prompt);
// A file name: "" is never given (the prompt asks again).
Task<QString> askFile(Interpreter& in, QString prompt);
// Yes or no, with the default for Return.
Task<bool> askYesNo(Interpreter& in, QString prompt, bool fallback);

// Reads a drawing file named at a prompt (".dwg" assumed, ".dxf" tried too).
bool loadDrawingFile(Interpreter& in, const QString& name, Drawing* out, QString* path);
// Puts the file's drawing in as block `name`: its layers and nested blocks come
// along when missing.
void defineBlock(Drawing& d, const QString& name, const Drawing& from,
                 const QString& xrefPath = {});
// The drawing a -WBLOCK writes: the entities with the layers and blocks they use.
Drawing extractDrawing(const Drawing& d, const std::vector<Entity>& entities, const Point& base);
// Reference of block `name`: point, scales and angle asked; attributes filled.
Task<bool> placeReference(Interpreter& in, QString blockName);

// The commands.
Task<void> cmdLine(Interpreter&);
Task<void> cmdCircle(Interpreter&);
Task<void> cmdPline(Interpreter&);
Task<void> cmdText(Interpreter&);
Task<void> cmdDonut(Interpreter&);
Task<void> cmdMove(Interpreter&);
Task<void> cmdRotate(Interpreter&);
Task<void> cmdErase(Interpreter&);
Task<void> cmdChange(Interpreter&);
Task<void> cmdExplode(Interpreter&);
Task<void> cmdArray(Interpreter&);
Task<void> cmdAttedit(Interpreter&);
Task<void> cmdInsert(Interpreter&);
Task<void> cmdXref(Interpreter&);
Task<void> cmdWblock(Interpreter&);
Task<void> cmdBase(Interpreter&);
Task<void> cmdOpen(Interpreter&);
Task<void> cmdSave(Interpreter&);
Task<void> cmdMslide(Interpreter&);
Task<void> cmdShell(Interpreter&);
Task<void> cmdScript(Interpreter&);
Task<void> cmdQuit(Interpreter&);
Task<void> cmdUndo(Interpreter&);
Task<void> cmdU(Interpreter&);
Task<void> cmdSetvar(Interpreter&);
Task<void> cmdPan(Interpreter&);
Task<void> cmdZoom(Interpreter&);
Task<void> cmdHide(Interpreter&);
Task<void> cmdRegen(Interpreter&);
Task<void> cmdLayerLine(Interpreter&);
Task<void> cmdLayerDialog(Interpreter&);

}  // namespace sandbox

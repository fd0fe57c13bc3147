#pragma once
// Helpers the command files share. Every question and message comes from the
// prompt table: `in.prompt(command, key)` gives the question with its keywords.
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

// A point; nothing for Return, or for one of the question's keywords, whose
// global name then lands in *keyword. Without `keyword` the question's
// keywords are options the sandbox lacks: said so, and asked again.
Task<std::optional<Point>> askPoint(Interpreter& in, Ask a, std::optional<Point> base = {},
                                    QString* keyword = nullptr);
// A number, or `fallback` for Return. A point answer gives its distance from
// `from` (or its angle when `angle` is set).
Task<double> askNumber(Interpreter& in, Ask a, double fallback, std::optional<Point> from = {},
                       bool angle = false);
// A name or a list of names as typed; "" for Return.
Task<QString> askWord(Interpreter& in, Ask a);
// One of the question's keywords, its global name; "" for Return. The command
// line refuses and asks again on any other word.
Task<QString> askKeyword(Interpreter& in, Ask a);
// A file name. Without `fallback` an empty answer asks again; with it, Return
// takes the fallback.
Task<QString> askFile(Interpreter& in, Ask a, const QString& fallback = {});
// Yes or no by the keywords of the row ("Ja|Yes Nein|No"), the default for
// Return; any other answer is refused and asked again.
Task<bool> askYesNo(Interpreter& in, Ask a, bool fallback);
// One object at a "select object" question: its handle, or 0 for Return. A
// point takes the topmost object there that `accepts`; a point beside every
// such object asks again. `at` gets the point picked, if any.
Task<int> pickObject(Interpreter& in, Ask a, bool (*accepts)(const Entity&),
                     std::optional<Point>* at = nullptr);
// The object a point picks: near its outline (lines, circles, polylines) or
// inside its extents (the rest), within `tolerance`.
bool hits(const Drawing& d, const Entity& e, const Point& p, double tolerance);

// Colour answers: a number 0 to 256, or a colour keyword (BYLAYER, BYBLOCK,
// the seven named colours) of the question.
std::optional<int> colorOf(const Answer& x);

// Reads a drawing file named at a prompt (".dwg" assumed, ".dxf" tried too).
bool loadDrawingFile(Interpreter& in, const QString& name, Drawing* out, QString* path);
// Puts the file's drawing in as block `name`: its layers and nested blocks come
// along when missing.
void defineBlock(Drawing& d, const QString& name, const Drawing& from,
                 const QString& xrefPath = {});
// The drawing a -WBLOCK writes: the entities with the layers and blocks they use.
Drawing extractDrawing(const Drawing& d, const std::vector<Entity>& entities, const Point& base);
// Reference of block `name`: point, scales and angle asked with the rows of
// `command` (-INSERT, -XREF); attribute values asked when the command is
// -INSERT and ATTREQ is 1, else the defaults.
Task<bool> placeReference(Interpreter& in, QString command, QString blockName);

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
Task<void> cmdBreak(Interpreter&);
Task<void> cmdAttedit(Interpreter&);
Task<void> cmdAtteditLine(Interpreter&);
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

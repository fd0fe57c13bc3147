#pragma once
#include <QString>
#include <array>
#include <cstdint>

namespace kolvane {

struct EinfuegeOptionen;
struct EinfuegeWerte;

// The strings of an insert, exactly as the host gets them. Numbers are
// already in the host's form (decimal point).

// Point A: one Lisp expression in which the host stops with `pause` for the
// user's point (and for each factor asked, unless the block comes from the
// library, whose factors were asked before). File with "/". Ends with "\r".
QString fctInsertMitPause(const EinfuegeOptionen& o, const EinfuegeWerte& w);
// Another point: the block goes to the origin without a question; the file
// keeps its native form. Ends with "\r".
QString fctInsertAmUrsprung(const EinfuegeOptionen& o, const EinfuegeWerte& w);
// The move whose base is the chosen point's offset; the user's pick is the target.
QString fctMoveBefehl(const std::array<QString, 3>& strDistanz);
// The rotation about the host's last point; the user gives the angle.
QString fctRotateBefehl(const std::array<QString, 3>& lastpoint);

// The follow-ups, in the order they go out.
QString fctBruchBefehl(const QString& programmVerzeichnis);
QString fctLayerBefehl(const QString& strLayer);
QString fctLayer0Befehl();
// Removes the block of a cancelled series (the last entity).
QString fctEraseBefehl();
QString fctAtteditBefehl();
QString fctExplodeBefehl();
QString fctArrayBefehl();

// The typed call of kolvane_einfuege (insert.lsp) with its eight arguments,
// each quoted or nil; the path is escaped for SendKeys.
QString fctKolvaneEinfuegeAufruf(const EinfuegeOptionen& o, const EinfuegeWerte& w,
                                 int32_t longEinfuegenLayer0);
// The typed load of insert.lsp from a directory.
QString fctInsertLspLaden(const QString& verzeichnis);

}  // namespace kolvane

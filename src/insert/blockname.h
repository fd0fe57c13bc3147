#pragma once
#include <QString>

namespace kolvane {

// A file name is how the host names a block, so the name of a block is given
// to the host by copying its drawing under that name.

// The name rules of the automation route: trailing blanks go; ",", "/", '"',
// ":", blanks and "=" become "_" (the unquoted "._-insert" strings would split
// the name at a blank or an "=").
QString fctBlockNameRegeln(const QString& strBlockName);
// The keystroke route quotes the name in its script; "," and, for the same
// reason as above, blanks and "=" become "_".
QString fctBlockNameRegelnLT(const QString& strBlockName);

// Copies the drawing to <verzeichnis>/<name>.dwg; the copy's path, or "" when
// the copy failed (the caller then keeps the library's file).
QString fctBlockzeichnungKopieren(const QString& strDatei, const QString& verzeichnis,
                                  const QString& name);

}  // namespace kolvane

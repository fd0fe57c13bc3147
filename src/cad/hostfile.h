#pragma once
#include <QString>
#include <QStringList>

namespace kolvane {

// Writes a text file for the host, line by line: scripts with CR LF always,
// other files with the system's line end; Windows-1252 on Windows, UTF-8
// elsewhere. The file replaces an old one only when it was written whole.
bool fctHostTextSchreiben(const QString& datei, const QStringList& zeilen, bool crlf);

// A path as a Lisp string holds it: "/" in place of "\".
QString fctLispPfad(const QString& pfad);

}  // namespace kolvane

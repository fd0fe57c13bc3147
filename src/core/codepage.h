#pragma once
#include <QByteArray>
#include <QString>

namespace kolvane {

// Windows-1252, the code page of files from the Windows edition (fixed-record
// files, dBase import, old ini and label files).
QString fromWindows1252(const QByteArray& bytes);
QByteArray toWindows1252(const QString& text);

// Ini and label files are UTF-8; a file that is not valid UTF-8 came from the
// Windows edition and is read as Windows-1252.
QString decodeTextFile(const QByteArray& bytes);

}  // namespace kolvane

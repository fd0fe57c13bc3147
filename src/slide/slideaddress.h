#pragma once
#include <QString>

namespace kolvane {

// What a slide display is told to show: a slide file, or a named slide of a
// library written as "library.slb(NAME)".
struct SlideAddress {
  QString file;
  QString name;  // empty for a plain slide file
};

// "C:\lib\000\0000021.slb(0A)" gives that file and "0A"; a text without a
// trailing "(...)" is a plain slide file.
SlideAddress parseSlideAddress(const QString& text);

// A stored path as this system opens it: libraries written by the Windows
// edition keep "\" as separator, which means nothing elsewhere.
QString nativeSlidePath(const QString& path);

// The existing file a path names: the path itself, or, when that is missing,
// the entry of its directory whose name equals the last part without regard to
// case (and so on up for a folder that is missing). "" when there is none.
QString findFileIgnoringCase(const QString& path);

}  // namespace kolvane

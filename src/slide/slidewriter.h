#pragma once
#include <QByteArray>

#include "slide.h"

namespace kolvane {

// Writes a slide in the current form, low byte first, closed by an end-of-file
// record. The header is taken from the slide; an old-form slide is written in
// the current form. Empty when a record can't be written: a vector whose from x
// is negative (its first word would read as another record type), a relative
// step or a colour beyond its byte.
QByteArray writeSlide(const Slide& slide);

}  // namespace kolvane

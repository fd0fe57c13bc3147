#pragma once
#include <QColor>
#include <QRectF>

#include "slide.h"

class QPainter;

namespace kolvane {

// The part of `target` the picture takes: the slide's own proportion (its
// dots times its aspect ratio), as large as fits, centred.
QRectF slidePictureRect(const Slide& slide, const QRectF& target);

// Fills `target` with the back colour and draws the slide into it: standard
// colours (index 7 in the colour that contrasts with the back colour), solid
// fills, antialiased lines one device pixel wide. Lines along an axis sit on
// whole device pixels so that they stay crisp at every size.
void drawSlide(QPainter& painter, const Slide& slide, const QRectF& target, const QColor& back);

}  // namespace kolvane

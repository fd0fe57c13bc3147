#pragma once
#include <QColor>
#include <QRgb>

namespace kolvane {

// The standard 256-entry colour table of slides (colour index to RGB). Index 7
// is white here and index 0 black; a picture draws both in contrastColor().
QRgb aciRgb(int index);

// Black on a light back colour, white on a dark one.
QColor contrastColor(const QColor& back);

// The colour a slide's index is drawn in on that back colour.
QColor slideColor(int index, const QColor& back);

// A colour stored by the Windows edition as a number (sBkColor, the marking
// colour): blue in the high byte, red in the low one. A number with the top bit
// set names a system colour and gives the matching colour of the palette.
QColor colorFromBgr(long value);

}  // namespace kolvane

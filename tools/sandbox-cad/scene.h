#pragma once
// The drawing flattened to what a screen shows: lines and filled polygons in
// drawing coordinates, each with its resolved colour index. The window paints
// it; the slide shot turns it into slide records.
#include <QPointF>
#include <vector>

#include "drawing.h"

namespace sandbox {

struct Primitive {
  bool fill = false;    // a filled polygon; else a line string
  bool closed = false;  // a closed line string
  int color = 7;
  std::vector<QPointF> points;
};

// Everything visible: layers off or frozen are left out, block references are
// resolved (their layer-0 content takes the reference's layer). `unitsPerDot`
// sets how finely arcs are divided.
std::vector<Primitive> flatten(const Drawing& d, double unitsPerDot);

}  // namespace sandbox

#pragma once
#include <array>
#include <cstdint>

namespace kolvane {

class Recordset;

// A block drawing has its base at point A of the view. To place it by another
// point the insert puts it at the origin and moves it with that point's
// offset from A as the base; the user's pick is the target.

// dblDistanz := point P - point A of view `ansicht`, P the letter of
// NummerEinfuegepkt (2 = B ... 6 = F; any other number leaves P at zero), read
// from the row of rsBlockInfo0Einfuegepkt. Neither scale nor angle enter it.
// False, reported, when a coordinate needed is empty.
bool DistanzZumErstenEinfuegepkt(const Recordset& rsBlockInfo0Einfuegepkt, int ansicht,
                                 int16_t NummerEinfuegepkt, std::array<double, 3>& dblDistanz);

}  // namespace kolvane

#pragma once
// MSLIDE: the current view of a drawing as a slide.
#include "document.h"
#include "slide.h"

namespace sandbox {

// The view's screen in dots, (0,0) at the lower left; what lies outside is cut
// away. Colours come as a colour record before the first thing of a colour.
kolvane::Slide shootSlide(const Drawing& d, const View& v);

}  // namespace sandbox

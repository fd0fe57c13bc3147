#include "slide.h"

#include <cmath>

namespace kolvane {

namespace {

int16_t clampTo(int v, int lo, int hi) { return static_cast<int16_t>(v < lo ? lo : v > hi ? hi : v); }

}  // namespace

SlideRecord SlideRecord::vector(int x1, int y1, int x2, int y2) {
  return {SlideRecordType::Vector, clampTo(x1, 0, 0x7FFF), clampTo(y1, -0x8000, 0x7FFF),
          clampTo(x2, -0x8000, 0x7FFF), clampTo(y2, -0x8000, 0x7FFF)};
}

SlideRecord SlideRecord::offsetVector(int dx1, int dy1, int dx2, int dy2) {
  return {SlideRecordType::OffsetVector, clampTo(dx1, -128, 127), clampTo(dy1, -128, 127),
          clampTo(dx2, -128, 127), clampTo(dy2, -128, 127)};
}

SlideRecord SlideRecord::commonEndpoint(int dx, int dy) {
  return {SlideRecordType::CommonEndpoint, clampTo(dx, -128, 127), clampTo(dy, -128, 127), 0, 0};
}

SlideRecord SlideRecord::fill(int x, int y) {
  return {SlideRecordType::SolidFill, clampTo(x, -0x8000, 0x7FFF), clampTo(y, -0x8000, 0x7FFF), 0,
          0};
}

SlideRecord SlideRecord::color(int index) {
  return {SlideRecordType::Color, clampTo(index, 0, 255), 0, 0, 0};
}

double Slide::displayAspect() const {
  const double dots = (highX + 1.0) / (highY + 1.0);
  // A screen is never a hundred times wider than high: such a value is damage.
  if (std::isfinite(aspectRatio) && aspectRatio > 0.01 && aspectRatio < 100) return aspectRatio;
  return dots;
}

std::array<int, kSlideRecordTypes> Slide::recordCounts() const {
  std::array<int, kSlideRecordTypes> counts{};
  for (const SlideRecord& r : records) ++counts[static_cast<int>(r.type)];
  return counts;
}

}  // namespace kolvane

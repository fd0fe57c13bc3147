#pragma once
#include <array>
#include <cstdint>
#include <vector>

namespace kolvane {

// One record of a slide as it stands in the file. Coordinates are screen dots
// with (0,0) at the lower left. The end-of-file record is not kept: it only
// closes the list.
enum class SlideRecordType : uint8_t {
  Vector,          // a, b = from x, y; c, d = to x, y
  OffsetVector,    // a, b = from, c, d = to, each as dx, dy from the last point (-128..127)
  CommonEndpoint,  // a, b = dx, dy from the last point to the new point (-128..127)
  SolidFill,       // a, b = x, y; y < 0 opens or closes a polygon (then a = a vertex count)
  Color,           // a = colour index (0..255)
};
inline constexpr int kSlideRecordTypes = 5;

struct SlideRecord {
  SlideRecordType type = SlideRecordType::Vector;
  int16_t a = 0, b = 0, c = 0, d = 0;

  bool operator==(const SlideRecord&) const = default;

  static SlideRecord vector(int x1, int y1, int x2, int y2);
  static SlideRecord offsetVector(int dx1, int dy1, int dx2, int dy2);
  static SlideRecord commonEndpoint(int dx, int dy);
  static SlideRecord fill(int x, int y);
  static SlideRecord color(int index);
};

// A slide: the screen it was taken from, and its records in file order.
struct Slide {
  uint8_t level = 2;        // 2: the current header; 1: the old one
  uint8_t typeIndicator = 56;
  uint16_t highX = 0;       // width - 1, in dots
  uint16_t highY = 0;       // height - 1
  double aspectRatio = 0;   // width / height of the screen area; 0 when unknown
  uint16_t hardwareFill = 0;
  bool bigEndian = false;   // 2-byte values were written high byte first
  bool endRecord = true;    // the file closed its records with an end-of-file record
  std::vector<SlideRecord> records;

  // The proportion the picture is shown in: the stored aspect ratio when it is
  // plausible, otherwise the ratio of the dots.
  double displayAspect() const;
  // How many records of each type (indexed by SlideRecordType).
  std::array<int, kSlideRecordTypes> recordCounts() const;
};

}  // namespace kolvane

#include <QFile>
#include <gtest/gtest.h>

#include "kolvanetest.h"
#include "slidereader.h"
#include "slidewriter.h"

namespace kolvane {
namespace {

// The picture of a free slot (data/frei2.sld): corner marks of a frame and a
// small cross in the middle, in middle grey, which is faint on a dark back
// and on a light one alike.
Slide freeSlotPicture() {
  Slide s;
  s.highX = 639;
  s.highY = 479;
  s.aspectRatio = 4.0 / 3.0;
  auto& r = s.records;
  r.push_back(SlideRecord::color(8));
  const int left = 60, right = 579, bottom = 45, top = 434, arm = 50;
  for (const auto& [x, y, dx, dy] : {std::array{left, bottom, 1, 1}, std::array{right, bottom, -1, 1},
                                     std::array{right, top, -1, -1}, std::array{left, top, 1, -1}}) {
    r.push_back(SlideRecord::vector(x, y, x + dx * arm, y));  // its from point, the corner, is the last point
    r.push_back(SlideRecord::commonEndpoint(0, dy * arm));
  }
  const int cx = 319, cy = 239, half = 12;
  r.push_back(SlideRecord::vector(cx - half, cy, cx + half, cy));
  r.push_back(SlideRecord::vector(cx, cy - half, cx, cy + half));
  return s;
}

TEST(FreeSlot, DataFileIsOurFaintPicture) {
  const QString file = sourceDataDir() + "/frei2.sld";
  const QByteArray want = writeSlide(freeSlotPicture());
  // KOLVANE_WRITE_FREE_SLOT=1 writes the file anew after a change above.
  if (qEnvironmentVariableIntValue("KOLVANE_WRITE_FREE_SLOT") == 1) {
    QFile f(file);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(want);
  }
  QFile f(file);
  ASSERT_TRUE(f.open(QIODevice::ReadOnly));
  EXPECT_EQ(f.readAll(), want);
  const auto s = readSlideFile(file);
  ASSERT_TRUE(s);
  for (const SlideRecord& rec : s->records) {
    if (rec.type == SlideRecordType::Color) {
      EXPECT_EQ(rec.a, 8);
    }
  }
}

}  // namespace
}  // namespace kolvane

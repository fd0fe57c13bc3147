#include <gtest/gtest.h>

#include "slidefixtures.h"
#include "slidereader.h"
#include "slidewriter.h"

namespace kolvane {
namespace {

using test::SlideBytes;
using Order = SlideBytes::Order;
using T = SlideRecordType;

// Every record type once, with values that tell the bytes apart: coordinates
// above 255, negative steps, the extremes of each field.
SlideBytes everyRecord(SlideBytes s) {
  return s.color(255)
      .vector(0x7FFF, 1000, 300, -2)
      .offsetVector(-5, 6, -128, 127)
      .commonEndpoint(-1, 127)
      .fill(4, -1)
      .fill(1, 2)
      .fill(513, 770)
      .fill(5, 6)
      .fill(0, -1)
      .color(3)
      .end();
}

const std::vector<SlideRecord> kEveryRecord = {
    {T::Color, 255}, {T::Vector, 0x7FFF, 1000, 300, -2}, {T::OffsetVector, -5, 6, -128, 127},
    {T::CommonEndpoint, -1, 127}, {T::SolidFill, 4, -1}, {T::SolidFill, 1, 2},
    {T::SolidFill, 513, 770}, {T::SolidFill, 5, 6}, {T::SolidFill, 0, -1}, {T::Color, 3}};

TEST(SlideReader, ReadsEveryRecordTypeInBothByteOrders) {
  for (const Order order : {Order::LowFirst, Order::HighFirst}) {
    SCOPED_TRACE(order == Order::LowFirst ? "low byte first" : "high byte first");
    const QByteArray bytes = everyRecord(SlideBytes::current(1023, 767, 1.3333333, order));
    qsizetype used = 0;
    const auto s = readSlide(bytes, &used);
    ASSERT_TRUE(s);
    EXPECT_EQ(s->level, 2);
    EXPECT_EQ(s->bigEndian, order == Order::HighFirst);
    EXPECT_EQ(s->highX, 1023);
    EXPECT_EQ(s->highY, 767);
    EXPECT_DOUBLE_EQ(s->aspectRatio, 1.3333333);
    EXPECT_TRUE(s->endRecord);
    EXPECT_EQ(s->records, kEveryRecord);
    EXPECT_EQ(used, bytes.size());
  }
}

TEST(SlideReader, ReadsTheOldHeader) {
  const QByteArray bytes = everyRecord(SlideBytes::old(639, 349, 1.8285714285714));
  const auto s = readSlide(bytes);
  ASSERT_TRUE(s);
  EXPECT_EQ(s->level, 1);
  EXPECT_EQ(s->highX, 639);
  EXPECT_EQ(s->highY, 349);
  EXPECT_DOUBLE_EQ(s->aspectRatio, 1.8285714285714);
  EXPECT_EQ(s->hardwareFill, 2);
  EXPECT_EQ(s->records, kEveryRecord);
}

TEST(SlideReader, StopsAtTheEndRecordAndToleratesItsAbsence) {
  // Inside a library the next slide follows the end record.
  const QByteArray one = SlideBytes::current(99, 99, 1).color(1).vector(1, 2, 3, 4).end();
  const QByteArray two = SlideBytes::current(99, 99, 1).color(2).end();
  qsizetype used = 0;
  const auto s = readSlide(one + two, &used);
  ASSERT_TRUE(s);
  EXPECT_EQ(used, one.size());
  EXPECT_EQ(s->records.size(), 2u);

  // A file that simply stops at a record boundary is read as it stands.
  const auto open = readSlide(SlideBytes::current(99, 99, 1).color(1).vector(1, 2, 3, 4).bytes());
  ASSERT_TRUE(open);
  EXPECT_FALSE(open->endRecord);
  EXPECT_EQ(open->records.size(), 2u);

  const auto empty = readSlide(SlideBytes::current(99, 99, 1).end().bytes());
  ASSERT_TRUE(empty);
  EXPECT_TRUE(empty->records.empty());
}

TEST(SlideReader, DamagedInputGivesNothing) {
  const QByteArray good = everyRecord(SlideBytes::current(99, 99, 1));
  const QByteArray header = good.left(31);
  // Every cut inside the records but at a record boundary damages the slide:
  // the cut record is lost, and so is the picture.
  const QList<qsizetype> boundaries = {31, 33, 41, 46, 49, 55, 61, 67, 73, 79, 81, 83};
  for (qsizetype n = 0; n < good.size(); ++n) {
    if (boundaries.contains(n)) continue;
    EXPECT_FALSE(readSlide(good.left(n))) << "cut after " << n << " bytes";
  }
  EXPECT_FALSE(readSlide(QByteArray()));
  EXPECT_FALSE(readSlide(QByteArray("AutoCAD Slide Library 1.0\r\n\x1a\0\0\0\0", 32)));
  QByteArray level3 = good;
  level3[18] = 3;
  EXPECT_FALSE(readSlide(level3));
  EXPECT_FALSE(readSlide(SlideBytes::old(99, 99, 1).bytes().left(33)));
  // 0x80 to 0xFA name no record; its length is unknown, so nothing after it.
  for (int type : {0x80, 0xC3, 0xFA})
    EXPECT_FALSE(readSlide(QByteArray(header).append(char(0)).append(char(type)).append(4, '\0')))
        << type;
}

TEST(SlideReader, ToleratesAnUnknownTestNumberAndImplausibleAspect) {
  QByteArray bytes = SlideBytes::current(399, 99, 0).color(1).end();
  bytes[29] = 0x77;  // neither order: taken as low byte first
  const auto s = readSlide(bytes);
  ASSERT_TRUE(s);
  EXPECT_FALSE(s->bigEndian);
  EXPECT_DOUBLE_EQ(s->displayAspect(), 4.0);  // the dots' own proportion stands in
}

TEST(SlideWriter, WritesTheCurrentFormExactly) {
  Slide s;
  s.highX = 1023;
  s.highY = 767;
  s.aspectRatio = 1.3333333;
  s.records = kEveryRecord;
  EXPECT_EQ(writeSlide(s), everyRecord(SlideBytes::current(1023, 767, 1.3333333)).bytes());
}

TEST(SlideWriter, RoundTripsFromEveryForm) {
  const QList<QByteArray> inputs = {
      everyRecord(SlideBytes::current(1023, 767, 1.3333333)),
      everyRecord(SlideBytes::current(1023, 767, 1.3333333, Order::HighFirst)),
      everyRecord(SlideBytes::old(639, 349, 1.8285714)),
  };
  for (const QByteArray& in : inputs) {
    const auto first = readSlide(in);
    ASSERT_TRUE(first);
    const auto again = readSlide(writeSlide(*first));
    ASSERT_TRUE(again);
    EXPECT_EQ(again->level, 2);
    EXPECT_FALSE(again->bigEndian);
    EXPECT_EQ(again->highX, first->highX);
    EXPECT_EQ(again->highY, first->highY);
    EXPECT_NEAR(again->aspectRatio, first->aspectRatio, 1e-7);
    EXPECT_EQ(again->records, first->records);
  }
}

TEST(SlideWriter, RefusesRecordsItCannotWrite) {
  Slide s;
  s.records = {{T::Vector, -1, 0, 5, 5}};
  EXPECT_TRUE(writeSlide(s).isEmpty());
  s.records = {{T::OffsetVector, 0, 0, 200, 0}};
  EXPECT_TRUE(writeSlide(s).isEmpty());
  s.records = {{T::Color, 256}};
  EXPECT_TRUE(writeSlide(s).isEmpty());
  // The factories keep values inside their fields.
  EXPECT_EQ(SlideRecord::commonEndpoint(500, -500), (SlideRecord{T::CommonEndpoint, 127, -128}));
}

}  // namespace
}  // namespace kolvane

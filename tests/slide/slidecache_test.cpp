#include <QFile>
#include <QThread>
#include <gtest/gtest.h>

#include "kolvanetest.h"
#include "slideaddress.h"
#include "slidecache.h"
#include "slidefixtures.h"
#include "slidelibrary.h"
#include "slideview.h"
#include "slidewriter.h"

namespace kolvane {
namespace {

using test::SlideBytes;

QByteArray slideOfColor(int color) {
  return SlideBytes::current(99, 99, 1).color(color).vector(10, 10, 90, 90).end();
}

TEST(SlideAddress, SplitsALibraryAddressFromAPlainFile) {
  const SlideAddress lib = parseSlideAddress(R"(C:\lib\000\0000021.slb(0A))");
  EXPECT_EQ(lib.file, R"(C:\lib\000\0000021.slb)");
  EXPECT_EQ(lib.name, "0A");
  EXPECT_EQ(parseSlideAddress("/l/001/0010021.slb(0a)").name, "0a");
  const SlideAddress plain = parseSlideAddress(R"(C:\lib\000\0000021.sld)");
  EXPECT_EQ(plain.file, R"(C:\lib\000\0000021.sld)");
  EXPECT_TRUE(plain.name.isEmpty());
  EXPECT_EQ(parseSlideAddress("/a (2)/b.sld").file, "/a (2)/b.sld");
}

class SlideFiles : public KolvaneTest {};

TEST_F(SlideFiles, FindsAFileWithoutRegardToCaseAndBackslashes) {
  writeFile(path("lib/001/0010021.slb"), "x");
  const QString want = path("lib/001/0010021.slb");
  EXPECT_EQ(findFileIgnoringCase(want), want);
  EXPECT_EQ(findFileIgnoringCase(path("lib/001/0010021.SLB")), want);
  EXPECT_EQ(findFileIgnoringCase(path("LIB/001/0010021.Slb")), want);
#ifndef Q_OS_WIN
  EXPECT_EQ(findFileIgnoringCase(path("lib\\001\\0010021.slb")), want);
#endif
  EXPECT_EQ(findFileIgnoringCase(path("lib/001/0010022.slb")), "");
  EXPECT_EQ(findFileIgnoringCase(path("lib/001")), "");  // a folder is no slide file
  EXPECT_EQ(findFileIgnoringCase(""), "");
}

TEST_F(SlideFiles, CacheReadsEachFileOnceUntilItChanges) {
  SlideCache cache;
  writeFile(path("a.sld"), slideOfColor(1));
  writeFile(path("l.slb"), test::libraryBytes({{"0A", slideOfColor(2)}, {"0B", slideOfColor(3)}}));

  const auto a = cache.slide(path("a.sld"));
  ASSERT_TRUE(a);
  EXPECT_EQ(cache.slide(path("A.SLD")), a);
  EXPECT_EQ(cache.fileReads(), 1);

  // The library is read once for its directory and the first member; another
  // member is one more read of its own bytes; then nothing.
  ASSERT_TRUE(cache.slide(path("l.slb(0a)")));
  EXPECT_EQ(cache.fileReads(), 2);
  const auto b = cache.slide(path("l.slb(0B)"));
  ASSERT_TRUE(b);
  EXPECT_EQ(b->records.front(), SlideRecord::color(3));
  EXPECT_EQ(cache.fileReads(), 3);
  EXPECT_EQ(cache.slide(path("l.slb(0b)")), b);
  EXPECT_EQ(cache.slide(path("l.slb(0A)")), cache.slide(path("l.slb(0a)")));
  EXPECT_EQ(cache.fileReads(), 3);

  // A damaged or missing file is no slide, and a damaged one isn't read again.
  writeFile(path("bad.sld"), QByteArray(slideOfColor(1)).chopped(1));
  EXPECT_FALSE(cache.slide(path("bad.sld")));
  EXPECT_FALSE(cache.slide(path("bad.sld")));
  EXPECT_FALSE(cache.slide(path("none.sld")));
  EXPECT_FALSE(cache.slide(path("l.slb(0C)")));
  EXPECT_FALSE(cache.slide(path("a.sld(0A)")));
  EXPECT_EQ(cache.fileReads(), 5);

  // A library written anew is read anew.
  QThread::msleep(20);
  writeFile(path("l.slb"), test::libraryBytes({{"0A", slideOfColor(4)}}));
  EXPECT_EQ(cache.slide(path("l.slb(0A)"))->records.front(), SlideRecord::color(4));
  EXPECT_FALSE(cache.slide(path("l.slb(0B)")));
}

TEST_F(SlideFiles, ShowingAPageAgainReadsNoFile) {
  SlideCache cache;
  std::vector<std::unique_ptr<SlideView>> views;
  for (int i = 0; i < 20; ++i) {
    const QString lib = path(QStringLiteral("000/000%1.slb").arg(i, 4, 10, QChar('0')));
    writeFile(lib, test::libraryBytes({{"0A", writeSlide(test::sampleSlide(i))}}));
    views.push_back(std::make_unique<SlideView>(i));
    views.back()->setCache(&cache);
    views.back()->resize(80, 60);
  }
  for (int pass = 0; pass < 2; ++pass) {
    for (int i = 0; i < 20; ++i) {
      views[i]->setPath(path(QStringLiteral("000/000%1.slb(0A)").arg(i, 4, 10, QChar('0'))));
      views[i]->grab();
      ASSERT_TRUE(views[i]->slide());
    }
    EXPECT_EQ(cache.fileReads(), 20) << "pass " << pass;
  }
}

}  // namespace
}  // namespace kolvane

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include "kolvanetest.h"
#include "slidefixtures.h"
#include "slidelibrary.h"
#include "slidereader.h"
#include "slidewriter.h"

namespace kolvane {
namespace {

using test::SlideBytes;

QByteArray slideOfColor(int color) {
  return SlideBytes::current(99, 99, 1).color(color).vector(10, 10, 90, 90).end();
}

std::optional<Slide> member(const QByteArray& library, const QString& name) {
  const auto dir = readSlideLibraryDirectory(library);
  if (!dir) return std::nullopt;
  const SlideLibraryEntry* e = findSlideLibraryEntry(*dir, name);
  if (!e || e->size == 0) return std::nullopt;
  return readSlide(QByteArrayView(library).sliced(e->address, e->size));
}

TEST(SlideLibrary, ReadsTheDirectoryAndEveryMemberByNameInAnyCase) {
  const QByteArray a = slideOfColor(1), b = slideOfColor(2), c = slideOfColor(3);
  const QByteArray lib = test::libraryBytes({{"0A", a}, {"0B", b}, {"0C", c}});
  const auto dir = readSlideLibraryDirectory(lib);
  ASSERT_TRUE(dir);
  ASSERT_EQ(dir->size(), 3u);
  const quint32 first = 32 + 4 * 36;
  EXPECT_EQ((*dir)[0].name, "0A");
  EXPECT_EQ((*dir)[0].address, first);
  EXPECT_EQ((*dir)[0].size, quint32(a.size()));
  EXPECT_EQ((*dir)[2].address, first + a.size() + b.size());
  EXPECT_EQ((*dir)[2].size, quint32(c.size()));
  for (const char* name : {"0b", "0B"}) {
    const auto s = member(lib, name);
    ASSERT_TRUE(s) << name;
    EXPECT_EQ(s->records.front(), SlideRecord::color(2));
  }
  EXPECT_FALSE(member(lib, "0D"));
  EXPECT_FALSE(readSlideLibraryDirectory(a));  // a slide is no library
}

TEST(SlideLibrary, DamagedDirectoriesStayInsideTheFile) {
  const QByteArray a = slideOfColor(1);
  QByteArray lib = test::libraryBytes({{"0A", a}, {"0B", a}});

  // An address past the end: that slide is empty, the other still reads.
  QByteArray past = lib;
  past[32 + 36 + 32] = char(0xF0);
  past[32 + 36 + 35] = char(0x7F);
  auto dir = readSlideLibraryDirectory(past);
  ASSERT_TRUE(dir);
  EXPECT_EQ((*dir)[1].size, 0u);
  EXPECT_FALSE(member(past, "0B"));
  EXPECT_TRUE(member(past, "0A"));

  // A directory that never ends: entries up to the end of the file, no slides.
  QByteArray endless("AutoCAD Slide Library 1.0\r\n\x1a\0\0\0\0", 32);
  for (int k = 0; k < 50; ++k) {
    QByteArray entry = QByteArray("S") + QByteArray::number(k);
    entry.resize(32, '\0');
    endless += entry + QByteArray("\x10\x00\x00\x00", 4);
  }
  endless += "AutoCAD";  // a cut entry at the end
  dir = readSlideLibraryDirectory(endless);
  ASSERT_TRUE(dir);
  EXPECT_EQ(dir->size(), 50u);
  EXPECT_FALSE(member(endless, "S7"));

  // Without its terminating entry the directory ends where the first slide begins.
  QByteArray unterminated = lib;
  unterminated.remove(32 + 2 * 36, 36);
  for (int k = 0; k < 2; ++k) unterminated[32 + k * 36 + 32] = char(unterminated[32 + k * 36 + 32] - 36);
  dir = readSlideLibraryDirectory(unterminated);
  ASSERT_TRUE(dir);
  EXPECT_EQ(dir->size(), 2u);
  EXPECT_TRUE(member(unterminated, "0B"));

  // A name of 32 characters without NUL is taken whole; the next entry follows.
  const QByteArray longName(32, 'N');
  const QByteArray named = test::libraryBytes({{longName, a}, {"0B", a}});
  dir = readSlideLibraryDirectory(named);
  ASSERT_TRUE(dir);
  ASSERT_EQ(dir->size(), 2u);
  EXPECT_EQ((*dir)[0].name, QString(longName));
  EXPECT_TRUE(member(named, QString(longName).toLower()));
  EXPECT_TRUE(member(named, "0B"));

  // Only a header, and less than one.
  EXPECT_TRUE(readSlideLibraryDirectory(lib.left(32))->empty());
  EXPECT_FALSE(readSlideLibraryDirectory(lib.left(31)));
}

TEST(SlideLibrary, WrittenLibraryGivesBackEverySlide) {
  std::vector<SlideLibraryMember> members;
  for (int k = 0; k < 6; ++k) members.push_back({QStringLiteral("0%1").arg(QChar('A' + k)), slideOfColor(k + 1)});
  QString error;
  const QByteArray lib = writeSlideLibrary(members, &error);
  ASSERT_FALSE(lib.isEmpty()) << error.toStdString();
  EXPECT_EQ(lib, test::libraryBytes({{"0A", members[0].slide}, {"0B", members[1].slide},
                                     {"0C", members[2].slide}, {"0D", members[3].slide},
                                     {"0E", members[4].slide}, {"0F", members[5].slide}}));

  for (const QString& bad : {QString(), QString(32, QChar('x')), QStringLiteral("Ω")}) {
    error.clear();
    EXPECT_TRUE(writeSlideLibrary({{bad, members[0].slide}}, &error).isEmpty());
    EXPECT_FALSE(error.isEmpty());
  }
  EXPECT_TRUE(writeSlideLibrary({{"0A", members[0].slide}, {"0a", members[1].slide}}, &error).isEmpty());
  EXPECT_TRUE(error.contains("0a"));
}

class PackSlideLibrary : public KolvaneTest {};

TEST_F(PackSlideLibrary, NamesSlidesAfterTheirFilesAndFindsThemWithoutCase) {
  writeFile(path("T/0A.sld"), slideOfColor(1));
  writeFile(path("T/0B.SLD"), slideOfColor(2));
  writeFile(path("T/Sub/0c.sld"), slideOfColor(3));
  // The list as the Windows edition writes it: backslashes, another case.
  const QStringList list = {path("T/0A.sld"), path("T/0b.sld"), path("t/SUB/0c.Sld").replace('/', '\\')};
  QString error;
  ASSERT_TRUE(packSlideLibrary(list, path("T/0010021.slb"), &error)) << error.toStdString();
  const QByteArray lib = readFile(path("T/0010021.slb"));
  const auto dir = readSlideLibraryDirectory(lib);
  ASSERT_TRUE(dir);
  ASSERT_EQ(dir->size(), 3u);
  EXPECT_EQ((*dir)[1].name, "0b");
  EXPECT_EQ((*dir)[2].name, "0c");
  EXPECT_EQ(member(lib, "0C")->records.front(), SlideRecord::color(3));
}

}  // namespace
}  // namespace kolvane

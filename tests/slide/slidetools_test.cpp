#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <gtest/gtest.h>

#include "kolvanetest.h"
#include "slidefixtures.h"
#include "slidelibrary.h"
#include "slidereader.h"
#include "slidewriter.h"

namespace kolvane {
namespace {

struct Outcome {
  int status = -1;
  QString out, err;
};

class SlideTools : public KolvaneTest {
 protected:
  static QString program(const QString& name) {
    return QCoreApplication::applicationDirPath() + "/" + name;
  }
  Outcome runProgram(const QString& name, const QStringList& args, const QByteArray& input = {}) {
    const QString exe = program(name);
    if (!QFileInfo(exe).isExecutable()) return {};
    QProcess p;
    p.setWorkingDirectory(path(""));
    p.start(exe, args);
    p.write(input);
    p.closeWriteChannel();
    p.waitForFinished(60000);
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1,
            QString::fromLocal8Bit(p.readAllStandardOutput()),
            QString::fromLocal8Bit(p.readAllStandardError())};
  }
  static bool built(const QString& name) { return QFileInfo(program(name)).isExecutable(); }
  // Whether the tool is part of this build (a partial build may leave it out).
  static bool inBuild(const QString& name) {
#ifdef KOLVANE_BUILT_slidelib
    if (name == QLatin1String("slidelib")) return true;
#endif
#ifdef KOLVANE_BUILT_kolvane_tool
    if (name == QLatin1String("kolvane-tool")) return true;
#endif
    Q_UNUSED(name);
    return false;
  }
};

// Skips when the build leaves the tool out; fails when it should be there and isn't.
#define REQUIRE_TOOL(name)                                                        \
  if (!inBuild(name)) GTEST_SKIP() << name << " is not part of this build";      \
  ASSERT_TRUE(built(name)) << name << " is part of this build but missing beside the tests"

TEST_F(SlideTools, SlidelibPacksTheListedSlides) {
  REQUIRE_TOOL("slidelib");
  QByteArray list;
  for (int k = 0; k < 6; ++k) {
    const QString file = path(QStringLiteral("T/0%1.sld").arg(QChar('A' + k)));
    writeFile(file, writeSlide(test::sampleSlide(k)));
    list += file.toLocal8Bit() + (k % 2 ? "\r\n" : "\n");
  }
  const Outcome r = runProgram("slidelib", {path("T/0010021.slb")}, list + "\n");
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  const QByteArray lib = readFile(path("T/0010021.slb"));
  const auto dir = readSlideLibraryDirectory(lib);
  ASSERT_TRUE(dir);
  ASSERT_EQ(dir->size(), 6u);
  for (int k = 0; k < 6; ++k) {
    const auto* e = findSlideLibraryEntry(*dir, QStringLiteral("0%1").arg(QChar('a' + k)));
    ASSERT_TRUE(e);
    const auto s = readSlide(QByteArrayView(lib).sliced(e->address, e->size));
    ASSERT_TRUE(s);
    EXPECT_EQ(s->records, test::sampleSlide(k).records);
  }
}

TEST_F(SlideTools, SlidelibWritesNoHalfFile) {
  REQUIRE_TOOL("slidelib");
  writeFile(path("T/0A.sld"), writeSlide(test::sampleSlide(0)));
  writeFile(path("T/0B.sld"), "no slide");
  writeFile(path("T/lib.slb"), "before");
  const QByteArray listed = path("T/0A.sld").toLocal8Bit() + "\n";

  Outcome r = runProgram("slidelib", {path("T/lib.slb")}, listed + path("T/0C.sld").toLocal8Bit() + "\n");
  EXPECT_EQ(r.status, 1);
  EXPECT_TRUE(r.err.contains(path("T/0C.sld"))) << r.err.toStdString();
  r = runProgram("slidelib", {path("T/new.slb")}, listed + path("T/0B.sld").toLocal8Bit() + "\n");
  EXPECT_EQ(r.status, 1);
  EXPECT_TRUE(r.err.contains(path("T/0B.sld") + ": not a slide")) << r.err.toStdString();
  EXPECT_EQ(runProgram("slidelib", {path("T/new.slb")}, "\n").status, 1);  // an empty list
  EXPECT_EQ(readFile(path("T/lib.slb")), "before");
  EXPECT_EQ(QDir(path("T")).entryList(QDir::Files), QStringList({"0A.sld", "0B.sld", "lib.slb"}));
  EXPECT_EQ(runProgram("slidelib", {}).status, 2);
}

TEST_F(SlideTools, RenderDrawsASlideOrALibraryMember) {
  REQUIRE_TOOL("kolvane-tool");
  writeFile(path("a.sld"), writeSlide(test::sampleSlide(0)));  // 800 x 600 dots
  writeFile(path("l.slb"), test::libraryBytes({{"0A", writeSlide(test::sampleSlide(2))}}));

  ASSERT_EQ(runProgram("kolvane-tool", {"render", path("a.sld"), "--png", path("a.png")}).status, 0);
  QImage img(path("a.png"));
  EXPECT_EQ(img.size(), QSize(800, 600));
  EXPECT_EQ(img.pixel(400, 300), qRgb(0, 0, 0));  // black by default
  EXPECT_EQ(img.pixel(0, 300), qRgb(255, 255, 255));  // colour 7 on black

  ASSERT_EQ(runProgram("kolvane-tool", {"render", path("l.slb(0a)"), "--png", path("b.png"), "--size",
                                 "320x320", "--background", "#ffffff"})
                .status,
            0);
  img = QImage(path("b.png"));
  EXPECT_EQ(img.size(), QSize(320, 320));
  EXPECT_EQ(img.pixel(160, 2), qRgb(255, 255, 255));  // a 16:9 slide leaves bands
  EXPECT_EQ(img.pixel(160, 70), qRgb(0, 0, 0));       // its frame, drawn black on white

  Outcome r = runProgram("kolvane-tool", {"render", path("none.sld"), "--png", path("c.png")});
  EXPECT_EQ(r.status, 1);
  EXPECT_TRUE(r.err.trimmed().split('\n').last().contains(path("none.sld"))) << r.err.toStdString();
  EXPECT_EQ(runProgram("kolvane-tool", {"render", path("l.slb(0B)"), "--png", path("c.png")}).status, 1);
  EXPECT_FALSE(QFile::exists(path("c.png")));
  EXPECT_EQ(runProgram("kolvane-tool", {"render", path("a.sld"), "--png", path("c.png"), "--size", "0x5"}).status, 2);
  EXPECT_EQ(runProgram("kolvane-tool", {"render", path("a.sld"), "--background", "red", "--png", path("c.png")}).status, 2);
  EXPECT_EQ(runProgram("kolvane-tool", {"render", path("a.sld")}).status, 2);
}

TEST_F(SlideTools, SlideInfoDescribesSlidesAndLibraries) {
  REQUIRE_TOOL("kolvane-tool");
  const QByteArray a = test::SlideBytes::current(1023, 767, 1.3333333, test::SlideBytes::Order::HighFirst)
                           .color(1).vector(1, 2, 3, 4).commonEndpoint(1, 1).commonEndpoint(2, 2).end();
  writeFile(path("a.sld"), a);
  writeFile(path("l.slb"), test::libraryBytes({{"0A", a}, {"0B", a}}));

  Outcome r = runProgram("kolvane-tool", {"slide-info", path("a.sld")});
  ASSERT_EQ(r.status, 0) << r.err.toStdString();
  for (const char* line : {"form: current (level 2)", "byte order: high byte first", "high x dot: 1023",
                           "high y dot: 767", "aspect ratio: 1.3333333", "vector: 1", "offset vector: 0",
                           "common endpoint: 2", "solid fill: 0", "new colour: 1", "end of file: 1"})
    EXPECT_TRUE(r.out.split('\n').contains(line)) << line << "\n" << r.out.toStdString();

  r = runProgram("kolvane-tool", {"slide-info", path("l.slb")});
  ASSERT_EQ(r.status, 0);
  const quint32 first = 32 + 3 * 36;
  EXPECT_EQ(r.out, QStringLiteral("0A\t%1\t%2\n0B\t%3\t%2\n").arg(first).arg(a.size()).arg(first + a.size()));
  EXPECT_EQ(runProgram("kolvane-tool", {"slide-info", path("l.slb(0b)")}).status, 0);

  writeFile(path("bad.sld"), a.left(40));
  EXPECT_EQ(runProgram("kolvane-tool", {"slide-info", path("bad.sld")}).status, 1);
  EXPECT_EQ(runProgram("kolvane-tool", {"slide-info", path("none.sld")}).status, 1);
  EXPECT_EQ(runProgram("kolvane-tool", {"slide-info"}).status, 2);
}

}  // namespace
}  // namespace kolvane

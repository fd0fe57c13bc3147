#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QProcess>
#include <locale>

#include "authortest.h"
#include "slideaufnahme.h"
#include "slidelibrary.h"
#include "slidereader.h"

namespace kolvane {
namespace {

HostPoint P(double x, double y, double z = 0) { return HostPoint{x, y, z}; }

// The mark's size follows the frame's proportion: a tenth of the width of a
// frame wider than 5:3, 0.16 of the height of a taller one, none at 5:3.
TEST(Kreisdurchmesser, FollowsTheFrameProportion) {
  EXPECT_EQ(GroesseRoterKreisFuerEinfuegepktBestimmen(P(0, 0), P(100, 50)), "10");
  EXPECT_EQ(GroesseRoterKreisFuerEinfuegepktBestimmen(P(100, 50), P(1, 1)), "9.9");
  EXPECT_EQ(GroesseRoterKreisFuerEinfuegepktBestimmen(P(0, 0), P(100, 80)), "12.8");
  EXPECT_EQ(GroesseRoterKreisFuerEinfuegepktBestimmen(P(0, 0), P(100, 60)), "0");
  EXPECT_EQ(GroesseRoterKreisFuerEinfuegepktBestimmen(P(10, 10), P(110, 70)), "0");
}

TEST(Kreisdurchmesser, SecondCornerOnTheXAxisTakesTheFirstCornersX) {
  // Height 70 - 0 (the first corner's X), not 20: width 60 * 0.6 < 70, so
  // 70 * 0.16.
  EXPECT_EQ(GroesseRoterKreisFuerEinfuegepktBestimmen(P(70, 20), P(10, 0)), "11.2");
  // The same from the upper right corner to the origin: height 100, not 50.
  EXPECT_EQ(GroesseRoterKreisFuerEinfuegepktBestimmen(P(100, 50), P(0, 0)), "16");
  // Width 130 * 0.6 = 78 > 70: a tenth of the width.
  EXPECT_EQ(GroesseRoterKreisFuerEinfuegepktBestimmen(P(70, 20), P(200, 0)), "13");
}

TEST(Kreisdurchmesser, NegativeCoordinates) {
  EXPECT_EQ(GroesseRoterKreisFuerEinfuegepktBestimmen(P(-50, -20), P(50, 30)), "10");
  EXPECT_EQ(GroesseRoterKreisFuerEinfuegepktBestimmen(P(50, 30), P(-50, -20)), "10");
  EXPECT_EQ(GroesseRoterKreisFuerEinfuegepktBestimmen(P(-100, -100), P(-50, 0)), "16");
  EXPECT_EQ(GroesseRoterKreisFuerEinfuegepktBestimmen(P(-0.5, 0), P(0.5, -0.25)), "0.1");
}

// The strings reach the host with "." as decimal point whatever the locale.
TEST(Befehle, DonutUnderAGermanLocaleKeepsThePoint) {
  const std::locale vorher = std::locale::global(std::locale::classic());
  const QLocale qVorher;
  try {
    std::locale::global(std::locale("de_DE.UTF-8"));
  } catch (const std::runtime_error&) {
  }
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  const QString d = fctDonutBefehl(QStringLiteral("1.5"), P(12.25, -3.5, 0.125));
  const QString r = GroesseRoterKreisFuerEinfuegepktBestimmen(P(0, 0), P(100, 80));
  QLocale::setDefault(qVorher);
  std::locale::global(vorher);
  EXPECT_EQ(d, "._donut 0 1.5\r12.25,-3.5,0.125\r\r");
  EXPECT_EQ(r, "12.8");
}

TEST(Befehle, Strings) {
  EXPECT_EQ(fctMslideBefehl("/t/0A.sld"), "._mslide /t/0A.sld\r");
  EXPECT_EQ(fctMslideErsetzenBefehl("/t/0A.sld"), "._mslide /t/0A.sld\r_y\r");
  EXPECT_EQ(fctShellBefehl("/t/Slidelib.sh"), "._shell \"/t/Slidelib.sh\"\r");
  EXPECT_EQ(fctTempSlide("/t", "1B"), "/t/1B.sld");
}

class SlideaufnahmeTest : public AuthorTest {};

TEST_F(SlideaufnahmeTest, DialisteHoldsTheFullPathsInOrder) {
  const QString t = path("temp/TempKolvane");
  ASSERT_TRUE(DialisteSchreiben(t, {"0C", "0A", "0B"}));
  const QStringList zeilen =
      QString::fromUtf8(readFile(t + "/dialist.txt")).split('\n', Qt::SkipEmptyParts);
  EXPECT_EQ(zeilen, QStringList({t + "/0C.sld", t + "/0A.sld", t + "/0B.sld"}));
  // Written anew, not appended.
  ASSERT_TRUE(DialisteSchreiben(t, {"1A"}));
  EXPECT_EQ(QString::fromUtf8(readFile(t + "/dialist.txt")), t + "/1A.sld\n");
}

TEST_F(SlideaufnahmeTest, TheScriptBuildsARealLibrary) {
  const QString t = path("temp/TempKolvane");
  const QString tool = fctSlidelibProgramm(settings_->programDir());
  ASSERT_TRUE(QFileInfo(tool).isExecutable()) << "slidelib not built beside the tests: " << tool.toStdString();
  writeFile(t + "/0A.sld", slideBytes(0));
  writeFile(t + "/0B.sld", slideBytes(1));
  ASSERT_TRUE(DialisteSchreiben(t, {"0A", "0B"}));
  const QString skript = fctSlidelibSkriptSchreiben(t, settings_->programDir(), "X0001.slb");
  ASSERT_EQ(skript, t + "/Slidelib.sh");
  EXPECT_TRUE(QFileInfo(skript).isExecutable());
  const QString text = QString::fromUtf8(readFile(skript));
  EXPECT_EQ(text, '"' + tool + "\" " + t + "/X0001.slb <" + t + "/dialist.txt\n");
  EXPECT_EQ(text.count('\n'), 1);

  QProcess sh;
  sh.start("/bin/sh", {skript});
  ASSERT_TRUE(sh.waitForFinished(30000));
  EXPECT_EQ(sh.exitCode(), 0) << sh.readAllStandardError().toStdString();
  const QByteArray lib = readFile(t + "/X0001.slb");
  ASSERT_TRUE(isSlideLibrary(lib));
  const auto dir = readSlideLibraryDirectory(lib);
  ASSERT_TRUE(dir.has_value());
  ASSERT_EQ(dir->size(), 2u);
  EXPECT_EQ((*dir)[0].name, "0A");
  EXPECT_EQ((*dir)[1].name, "0B");
  for (const auto& e : *dir) {
    ASSERT_GT(e.size, 0u) << e.name.toStdString();
    const auto s = readSlide(QByteArrayView(lib).sliced(e.address, e.size));
    ASSERT_TRUE(s.has_value()) << e.name.toStdString();
    EXPECT_EQ(s->highX, 639);
  }
}

TEST_F(SlideaufnahmeTest, AMissingSlideWritesNoLibrary) {
  const QString t = path("temp/TempKolvane");
  writeFile(t + "/0A.sld", slideBytes(0));
  ASSERT_TRUE(DialisteSchreiben(t, {"0A", "0B"}));
  const QString skript = fctSlidelibSkriptSchreiben(t, settings_->programDir(), "X0001.slb");
  ASSERT_FALSE(skript.isEmpty());
  QProcess sh;
  sh.start("/bin/sh", {skript});
  ASSERT_TRUE(sh.waitForFinished(30000));
  EXPECT_NE(sh.exitCode(), 0);
  EXPECT_FALSE(QFileInfo::exists(t + "/X0001.slb"));
  // The wait for it ends with false.
  EXPECT_FALSE(fctAufDateiWarten(t + "/X0001.slb", 0));
}

}  // namespace
}  // namespace kolvane

#include <QApplication>
#include <QDir>
#include <QGridLayout>
#include <QImage>
#include <QMouseEvent>
#include <gtest/gtest.h>

#include "kolvanetest.h"
#include "slidecache.h"
#include "slidecolors.h"
#include "slidefixtures.h"
#include "slidelibrary.h"
#include "slideview.h"
#include "slidewriter.h"

namespace kolvane {
namespace {

class SlideViewTest : public KolvaneTest {
 protected:
  void SetUp() override {
    KolvaneTest::SetUp();
    SlideCache::instance().clear();
  }

  // A view's library as the page display addresses it: folder 000, one
  // library per block, slides 0A and 0B.
  QString library(int i) {
    const QString file = path(QStringLiteral("lib/000/000%1.slb").arg(i, 4, 10, QChar('0')));
    if (!QFile::exists(file)) {
      const QByteArray a = writeSlide(test::sampleSlide(i));
      const QByteArray b = writeSlide(test::sampleSlide(i + 1));
      writeFile(file, test::libraryBytes({{"0A", a}, {"0B", b}}));
    }
    return file;
  }

  static bool allOf(const QImage& img, QRgb color) {
    for (int y = 0; y < img.height(); ++y)
      for (int x = 0; x < img.width(); ++x)
        if (img.pixel(x, y) != color) return false;
    return true;
  }
};

void send(QWidget& w, QEvent::Type type, Qt::MouseButton button) {
  QMouseEvent e(type, QPointF(5, 5), QPointF(5, 5), button, button, Qt::NoModifier);
  QApplication::sendEvent(&w, &e);
}

TEST_F(SlideViewTest, ReportsTheButtonsWithItsIndex) {
  SlideView v(17);
  v.resize(40, 30);
  QStringList got;
  QObject::connect(&v, &SlideView::leftButtonDown, [&](int i) { got << QStringLiteral("left %1").arg(i); });
  QObject::connect(&v, &SlideView::rightButtonDown, [&](int i) { got << QStringLiteral("right %1").arg(i); });
  QObject::connect(&v, &SlideView::doubleClicked, [&](int i) { got << QStringLiteral("double %1").arg(i); });
  send(v, QEvent::MouseButtonPress, Qt::LeftButton);
  send(v, QEvent::MouseButtonRelease, Qt::LeftButton);
  send(v, QEvent::MouseButtonDblClick, Qt::LeftButton);
  send(v, QEvent::MouseButtonPress, Qt::RightButton);
  send(v, QEvent::MouseButtonPress, Qt::MiddleButton);
  EXPECT_EQ(got, QStringList({"left 17", "double 17", "right 17"}));
}

TEST_F(SlideViewTest, ShowsTheAddressedSlideOrAnEmptyPicture) {
  const QString lib = library(1);
  writeFile(path("plain.sld"), writeSlide(test::sampleSlide(4)));
  writeFile(path("bad.sld"), QByteArray(writeSlide(test::sampleSlide(4))).chopped(3));
  writeFile(path("empty.sld"), "");
  SlideView v(0);
  v.resize(160, 120);
  v.setBackColor(QColor(0, 0, 128));

  // As the page display and the views build addresses: "(0A)", "(0a)", a plain
  // file, the Windows edition's separators and case.
  for (const QString& address :
       {lib + "(0A)", lib + "(0a)", path("plain.sld"), QString(lib).replace('/', '\\').toUpper() + "(0b)"}) {
    v.setPath(address);
    EXPECT_EQ(v.path(), address);
    EXPECT_TRUE(v.slide()) << address.toStdString();
    EXPECT_FALSE(allOf(v.grab().toImage(), qRgb(0, 0, 128))) << address.toStdString();
  }
  for (const QString& address : {path("none.sld"), path("bad.sld"), path("empty.sld"), lib + "(0C)",
                                 lib, path("lib/000"), QString()}) {
    v.setPath(address);
    EXPECT_FALSE(v.slide()) << address.toStdString();
    EXPECT_TRUE(allOf(v.grab().toImage(), qRgb(0, 0, 128))) << address.toStdString();
  }
  v.setBackColor(colorFromBgr(0xFFFFFF));
  EXPECT_TRUE(allOf(v.grab().toImage(), qRgb(255, 255, 255)));
}

// A page as the browser lays it out: `rows` x `columns` views on a grey form.
// Returns the page's picture and checks every view in it: a slide keeps its
// proportion (its frame, drawn in colour 7, has the slide's aspect and lies
// centred), carries its red disk, and a missing or damaged slide is all back
// colour.
struct Grid {
  int rows, columns;
  QSize size;
  QColor back;
};

QImage checkGrid(const Grid& g, const std::function<QString(int)>& address, const QString& shotFile) {
  QWidget page;
  page.setAutoFillBackground(true);
  QPalette pal = page.palette();
  pal.setColor(QPalette::Window, QColor(212, 208, 200));
  page.setPalette(pal);
  auto* layout = new QGridLayout(&page);
  layout->setSpacing(4);
  layout->setContentsMargins(4, 4, 4, 4);
  std::vector<SlideView*> views;
  for (int i = 0; i < g.rows * g.columns; ++i) {
    auto* v = new SlideView(i, &page);
    v->setBackColor(g.back);
    v->setPath(address(i));
    layout->addWidget(v, i / g.columns, i % g.columns);
    views.push_back(v);
  }
  page.resize(g.size);
  page.show();
  const QImage shot = page.grab().toImage().convertToFormat(QImage::Format_RGB32);
  shot.save(shotFile);

  const QRgb ink = contrastColor(g.back).rgb();
  for (SlideView* v : views) {
    SCOPED_TRACE("view " + std::to_string(v->index()));
    const QRect cell = v->geometry();
    QRect frame;
    bool red = false, foreign = false;
    for (int y = cell.top(); y <= cell.bottom(); ++y)
      for (int x = cell.left(); x <= cell.right(); ++x) {
        const QRgb c = shot.pixel(x, y);
        if (c == ink) frame |= QRect(x, y, 1, 1);
        red = red || c == qRgb(255, 0, 0);
        foreign = foreign || c != g.back.rgb();
      }
    if (!v->slide()) {
      EXPECT_FALSE(foreign);
      continue;
    }
    if (v->path().endsWith("frei2.sld")) {  // the free slot's own faint picture
      EXPECT_TRUE(foreign);
      continue;
    }
    const double aspect = v->slide()->displayAspect();
    const double w = std::min<double>(cell.width(), cell.height() * aspect);
    // Lines along an axis sit on whole pixels: a frame may count up to two
    // pixels more than the picture's exact extent.
    EXPECT_NEAR(frame.width(), w, 2.0);
    EXPECT_NEAR(frame.height(), w / aspect, 2.0);
    EXPECT_NEAR(frame.center().x(), cell.center().x(), 1.5);
    EXPECT_NEAR(frame.center().y(), cell.center().y(), 1.5);
    EXPECT_TRUE(red);
  }
  return shot;
}

TEST_F(SlideViewTest, PagesOf4And20And72Pictures) {
  // Screenshots also go where KOLVANE_SLIDE_SHOTS names, to be looked at.
  QString shots = qEnvironmentVariable("KOLVANE_SLIDE_SHOTS");
  if (shots.isEmpty()) shots = path("shots");
  QDir().mkpath(shots);
  writeFile(path("bad.sld"), "AutoCAD Slide\r\n\x1a");
  const QString free = sourceDataDir() + "/frei2.sld";

  const auto mixed = [&](int i) -> QString {
    switch (i % 10) {
      case 3: return free;
      case 7: return path(i % 20 == 7 ? "none.sld" : "bad.sld");
      case 5: return library(i) + "(0a)";
      default: return library(i) + "(0A)";
    }
  };
  checkGrid({2, 2, {800, 600}, Qt::black}, [&](int i) { return library(i) + "(0A)"; },
            shots + "/grid-4.png");
  checkGrid({4, 5, {1000, 640}, Qt::white}, mixed, shots + "/grid-20.png");
  checkGrid({8, 9, {1600, 1200}, colorFromBgr(0x402010)}, mixed, shots + "/grid-72.png");
}

}  // namespace
}  // namespace kolvane

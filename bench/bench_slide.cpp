// The slide budgets: a page of 72 thumbnails from slide libraries of 2,000
// vectors each drawn in 16 ms warm (files read before), and 6 slides packed
// into a library in 5 ms.
#include <QApplication>
#include <QDir>
#include <QGridLayout>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cmath>
#include <random>

#include "slidecache.h"
#include "slidelibrary.h"
#include "sliderenderer.h"
#include "slideview.h"
#include "slidewriter.h"

namespace {

using namespace kolvane;

constexpr int kRows = 8, kColumns = 9, kPage = kRows * kColumns;
constexpr int kVectors = 2000;

// A busy drawing of 1024 x 768 dots: polylines of common-endpoint steps,
// offset vectors, plain vectors, colour changes and one filled disk, with
// kVectors lines in all.
Slide busySlide(unsigned seed) {
  std::mt19937 rnd(seed);
  const auto in = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rnd); };
  Slide s;
  s.highX = 1023;
  s.highY = 767;
  s.aspectRatio = 4.0 / 3.0;
  auto& r = s.records;
  int lines = 0;
  while (lines < kVectors) {
    r.push_back(SlideRecord::color(in(1, 9)));
    int x = in(50, 970), y = in(50, 710);
    r.push_back(SlideRecord::vector(x, y, x + in(-40, 40), y + in(-40, 40)));
    ++lines;
    for (int k = in(10, 60); k > 0 && lines < kVectors; --k, ++lines) {
      switch (in(0, 2)) {
        case 0: {
          const int dx = std::clamp(in(-25, 25), -x, 1023 - x), dy = std::clamp(in(-25, 25), -y, 767 - y);
          r.push_back(SlideRecord::commonEndpoint(dx, dy));
          x += dx, y += dy;
          break;
        }
        case 1: {
          const int dx = std::clamp(in(-8, 8), -x, 1023 - x), dy = std::clamp(in(-8, 8), -y, 767 - y);
          r.push_back(SlideRecord::offsetVector(dx, dy, in(-30, 30), in(-30, 30)));
          x += dx, y += dy;
          break;
        }
        default:
          r.push_back(SlideRecord::vector(x, y, std::clamp(x + in(-120, 120), 0, 1023),
                                          std::clamp(y + in(-120, 120), 0, 767)));
          break;
      }
    }
  }
  r.push_back(SlideRecord::color(1));
  r.push_back(SlideRecord::fill(12, -1));
  for (int k = 0; k < 12; ++k)
    r.push_back(SlideRecord::fill(512 + int(30 * std::cos(k * M_PI / 6)), 384 + int(30 * std::sin(k * M_PI / 6))));
  r.push_back(SlideRecord::fill(0, -1));
  return s;
}

// 72 libraries of six slides each, as a folder of a block library holds them.
struct Folder {
  QTemporaryDir dir;
  QStringList addresses, otherPage;
  QStringList loose;  // six slide files, the slide library tool's input

  Folder() {
    QDir(dir.path()).mkpath("000");
    for (int i = 0; i < 2 * kPage; ++i) {
      std::vector<SlideLibraryMember> members;
      for (int k = 0; k < 6; ++k)
        members.push_back({QStringLiteral("0%1").arg(QChar('A' + k)), writeSlide(busySlide(i * 6 + k))});
      const QString file = dir.filePath(QStringLiteral("000/000%1.slb").arg(i, 4, 10, QChar('0')));
      QFile f(file);
      f.open(QIODevice::WriteOnly);
      f.write(writeSlideLibrary(members, nullptr));
      (i < kPage ? addresses : otherPage) << file + "(0A)";
    }
    for (int k = 0; k < 6; ++k) {
      loose << dir.filePath(QStringLiteral("0%1.sld").arg(QChar('A' + k)));
      QFile f(loose.back());
      f.open(QIODevice::WriteOnly);
      f.write(writeSlide(busySlide(1000 + k)));
    }
  }
};

Folder& folder() {
  static Folder f;
  return f;
}

void drawPage(SlideCache& cache, const QStringList& addresses, QImage& page) {
  QPainter p(&page);
  const double w = double(page.width()) / kColumns, h = double(page.height()) / kRows;
  for (int i = 0; i < kPage; ++i) {
    const QRectF cell((i % kColumns) * w, (i / kColumns) * h, w, h);
    if (const auto s = cache.slide(addresses[i])) drawSlide(p, *s, cell.adjusted(1, 1, -1, -1), Qt::black);
  }
}

// Files not yet in the cache: every library is read and parsed, then drawn.
void BM_PageCold(benchmark::State& state) {
  QImage page(1600, 1200, QImage::Format_RGB32);
  for (auto _ : state) {
    SlideCache cache;
    drawPage(cache, folder().addresses, page);
  }
}
BENCHMARK(BM_PageCold)->Unit(benchmark::kMillisecond);

// The page drawn again: the cache only checks each file's time and size.
void BM_PageWarm(benchmark::State& state) {
  QImage page(1600, 1200, QImage::Format_RGB32);
  SlideCache cache;
  drawPage(cache, folder().addresses, page);
  for (auto _ : state) drawPage(cache, folder().addresses, page);
}
BENCHMARK(BM_PageWarm)->Unit(benchmark::kMillisecond);

// The browser's way: 72 views in a grid, switched between two pages whose
// slides were read before; every view draws its new slide.
void BM_PageViewsWarm(benchmark::State& state) {
  QWidget window;
  auto* grid = new QGridLayout(&window);
  grid->setSpacing(2);
  std::vector<SlideView*> views;
  for (int i = 0; i < kPage; ++i) {
    views.push_back(new SlideView(i, &window));
    grid->addWidget(views.back(), i / kColumns, i % kColumns);
  }
  window.resize(1600, 1200);
  window.show();
  QImage shot(window.size(), QImage::Format_RGB32);
  bool other = false;
  for (int pass = 0; pass < 2; ++pass) {  // both pages into the cache
    for (int i = 0; i < kPage; ++i) views[i]->setPath((other ? folder().otherPage : folder().addresses)[i]);
    window.render(&shot);
    other = !other;
  }
  for (auto _ : state) {
    for (int i = 0; i < kPage; ++i) views[i]->setPath((other ? folder().otherPage : folder().addresses)[i]);
    window.render(&shot);
    other = !other;
  }
}
BENCHMARK(BM_PageViewsWarm)->Unit(benchmark::kMillisecond);

// The slide library tool's work in the process: six slides read, checked and
// packed into a library written under a temporary name and renamed.
void BM_PackSixSlides(benchmark::State& state) {
  const QString out = folder().dir.filePath("packed.slb");
  for (auto _ : state) {
    if (!packSlideLibrary(folder().loose, out, nullptr)) state.SkipWithError("packing failed");
  }
}
BENCHMARK(BM_PackSixSlides)->Unit(benchmark::kMillisecond);

// The same through the program, as the CAD's shell command runs it.
void BM_SlidelibProgram(benchmark::State& state) {
  const QString program = QCoreApplication::applicationDirPath() + "/slidelib";
  const QByteArray list = folder().loose.join('\n').toLocal8Bit() + "\n";
  const QString out = folder().dir.filePath("program.slb");
  for (auto _ : state) {
    QProcess p;
    p.start(program, {out});
    p.write(list);
    p.closeWriteChannel();
    if (!p.waitForFinished() || p.exitCode() != 0) state.SkipWithError("slidelib failed");
  }
}
BENCHMARK(BM_SlidelibProgram)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

// A page change in the 72 grid of a library of 100,000 blocks in 50 folders,
// from the click to the drawn page: codes, finds, slides and the window's
// picture. Cold: no slide read yet; warm: the slides of both pages cached.
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "connection.h"
#include "frmblockverwaltung.h"
#include "prefix.h"
#include "schema.h"
#include "settings.h"
#include "slide.h"
#include "slidecache.h"
#include "slidelibrary.h"
#include "slidewriter.h"

using namespace kolvane;

namespace {

constexpr int kOrdner = 50;
constexpr int kBloeckeJeOrdner = 2000;
constexpr int kVektoren = 2000;
constexpr int kSeiten = 2;  // pages of folder 0 with slide files

QByteArray slideBibliothek(int saat) {
  Slide s;
  s.highX = 799;
  s.highY = 599;
  s.aspectRatio = 800.0 / 600.0;
  s.records.push_back(SlideRecord::color(1 + saat % 7));
  for (int i = 0; i < kVektoren; ++i) {
    const int x = (i * 37 + saat) % 780 + 10, y = (i * 53 + saat * 7) % 580 + 10;
    s.records.push_back(SlideRecord::vector(x, y, (x + 90) % 790, (y + 45) % 590));
  }
  QString err;
  return writeSlideLibrary({{QStringLiteral("0A"), writeSlide(s)}}, &err);
}

struct Welt {
  QTemporaryDir tmp;
  std::unique_ptr<Settings> settings;
  std::unique_ptr<Bibliothek> lib;
  std::unique_ptr<Blockverwaltung> bv;
  std::unique_ptr<FrmBlockverwaltung> frm;

  Welt() {
    const Environment env = Environment::below(tmp.path());
    settings = std::make_unique<Settings>(env);
    setCurrentSettings(settings.get());
    const QString dir = tmp.path() + "/lib";
    QDir().mkpath(dir + "/000");
    const QString db = dir + "/dbKolvane.mdb";
    if (!Mk_Datenbank(db)) qFatal("Mk_Datenbank failed");
    QStringList prefix;
    if (!fctPrefixEinlesen(kBloeckeJeOrdner, prefix)) qFatal("txtPrefix.txt missing beside the benchmark");
    Connection c;
    if (!c.open(db)) qFatal("open failed");
    c.begin();
    for (int o = 0; o < kOrdner; ++o) {
      const QString nr = prefix[o];
      if (o > 0)
        c.execute("INSERT INTO tblOrdner (OrdnerNr, Ordnername, OrdnerRechte, NrTblDefMenue) VALUES (?, ?, 'Alle', 1)",
                  {nr, QString("Ordner %1").arg(o)});
      const qlonglong id = o == 0 ? 1 : c.lastInsertId();
      for (int i = 0; i < kBloeckeJeOrdner; ++i) {
        const QString code = fctBlockCode(nr, i, prefix);
        c.execute("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0, M0, AX0, AY0, AZ0) "
                  "VALUES (?, ?, ?, ?, ?, 0, 0, 0)",
                  {code, nr + "\\" + code + ".slb", id, "B" + code, QString("Benennung %1").arg(i)});
        if (o == 0 && i < 72 * kSeiten) {
          QFile f(dir + "/000/" + code + ".slb");
          if (!f.open(QIODevice::WriteOnly)) qFatal("slide file");
          f.write(slideBibliothek(i));
        }
      }
    }
    if (!c.commit()) qFatal("commit failed");
    c.close();
    settings->aryVerzeichnisseDatenbank = {db};
    settings->strAktuelleDatenbank = db;
    settings->setup.longAnzahlDerBilder = 7;  // 72: 8 x 9
    settings->setup.lonOrdnerSortieren = 0;
    lib = std::make_unique<Bibliothek>(*settings);
    bv = std::make_unique<Blockverwaltung>(*settings, *lib);
    frm = std::make_unique<FrmBlockverwaltung>(*bv);
    bv->hooks.anzeigen = [this](const PageModel& m) { frm->zeigen(m); };
    frm->resize(1600, 1200);
    frm->show();
    bv->subBilderanzahlFestlegen();
    if (!bv->bibliothekOeffnen()) qFatal("opening failed");
  }

  // One page change and its drawn picture.
  void seitenwechsel() {
    if (bv->s1 == 0)
      bv->combutVor_Click();
    else
      bv->combutZurueck_Click();
    QPixmap bild = frm->grab();
    benchmark::DoNotOptimize(bild);
  }
};

Welt& welt() {
  static Welt w;
  return w;
}

void BM_SeitenwechselKalt(benchmark::State& state) {
  Welt& w = welt();
  for (auto _ : state) {
    state.PauseTiming();
    SlideCache::instance().clear();
    state.ResumeTiming();
    w.seitenwechsel();
  }
}
BENCHMARK(BM_SeitenwechselKalt)->Unit(benchmark::kMillisecond);

void BM_SeitenwechselWarm(benchmark::State& state) {
  Welt& w = welt();
  w.seitenwechsel();
  w.seitenwechsel();
  for (auto _ : state) w.seitenwechsel();
}
BENCHMARK(BM_SeitenwechselWarm)->Unit(benchmark::kMillisecond);

// The browser's part alone: codes, finds, the page model; no window.
void BM_SeitenwechselOhneFenster(benchmark::State& state) {
  Welt& w = welt();
  auto zeigen = w.bv->hooks.anzeigen;
  w.bv->hooks.anzeigen = nullptr;
  for (auto _ : state) {
    if (w.bv->s1 == 0) w.bv->combutVor_Click();
    else w.bv->combutZurueck_Click();
  }
  w.bv->hooks.anzeigen = zeigen;
}
BENCHMARK(BM_SeitenwechselOhneFenster)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

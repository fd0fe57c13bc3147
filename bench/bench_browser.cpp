// A page change in the 72 grid of a library of 100,000 blocks in 50 folders,
// from the click to the drawn page: codes, finds, slides and the window's
// picture. Cold: no slide read yet; warm: the slides of both pages cached.
#include <QFile>
#include <QPixmap>
#include <memory>

#include "benchbibliothek.h"
#include "benchslides.h"
#include "bibliothek.h"
#include "blockverwaltung.h"
#include "frmblockverwaltung.h"
#include "slidecache.h"

using namespace kolvane;

namespace {

constexpr int kOrdner = 50;
constexpr int kBloeckeJeOrdner = 2000;
constexpr int kVektoren = 2000;
constexpr int kSeiten = 2;  // pages of folder 0 with slide files

struct Welt {
  bench::Bibliothek100k daten{
      kOrdner, kBloeckeJeOrdner, [](int o) { return QString("Ordner %1").arg(o); },
      [this](Connection& c, const bench::Ordner& o, int i, const QString& code) {
        c.execute("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0, M0, AX0, AY0, AZ0) "
                  "VALUES (?, ?, ?, ?, ?, 0, 0, 0)",
                  {code, o.nr + "\\" + code + ".slb", o.id, "B" + code, QString("Benennung %1").arg(i)});
        if (o.index == 0 && i < 72 * kSeiten) {
          QFile f(daten.bib + "/000/" + code + ".slb");
          if (!f.open(QIODevice::WriteOnly)) qFatal("slide file");
          f.write(bench::slideBibliothek(i, kVektoren));
        }
      }};
  std::unique_ptr<Bibliothek> lib;
  std::unique_ptr<Blockverwaltung> bv;
  std::unique_ptr<FrmBlockverwaltung> frm;

  Welt() {
    Settings* settings = daten.settings.get();
    settings->setup.longAnzahlDerBilder = 7;  // 72: 8 x 9
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

int main(int argc, char** argv) { return kolvane::bench::benchMain(argc, argv); }

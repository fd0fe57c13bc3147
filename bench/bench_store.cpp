// Speed of the library store against the budgets: a library of 100,000 blocks
// in 50 folders opened in 300 ms, a folder change in 50 ms.
#include "benchbibliothek.h"
#include "bibliothek.h"
#include "recordhelpers.h"

using namespace kolvane;

namespace {

constexpr int kOrdner = 50;
constexpr int kBloeckeJeOrdner = 2000;

struct Welt {
  bench::Bibliothek100k lib{
      kOrdner, kBloeckeJeOrdner, [](int o) { return QString("Ordner %1").arg(o); },
      [](Connection& c, const bench::Ordner& o, int i, const QString& code) {
        // Named pages: every page of a folder but the library's very first.
        if (i == 0)
          for (int s = 1; s <= kBloeckeJeOrdner / 72 + 1; ++s)
            if (o.index > 0 || s > 1)
              c.execute("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (?, ?, ?)",
                        {s, QString::number(s), o.id});
        c.execute("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0, M0, M1, M2, "
                  "AX0, AY0, AZ0) VALUES (?, ?, ?, ?, ?, ?, ?, 0, 0, 0)",
                  {code, o.nr + "\\" + code + ".slb", o.id, "Block0-" + QString::number(o.index * 10000 + i),
                   QString("Benennung %1").arg(i), "DIN 933", "M8x20"});
      }};
  Settings* settings = lib.settings.get();

  Welt() {
    // The first opening migrates; the benchmarks measure the ones after it.
    Bibliothek b(*settings);
    if (!b.ConnectionUndRecordsetOeffnen()) qFatal("first opening failed");
  }
  QString ordnerNr(int o) const { return lib.ordner[size_t(o)].nr; }
  int ordnerID(int o) const { return int(lib.ordner[size_t(o)].id); }
};

Welt& welt() {
  static Welt w;
  return w;
}

void BM_Oeffnen(benchmark::State& state) {
  Welt& w = welt();
  for (auto _ : state) {
    Bibliothek b(*w.settings);
    if (!b.ConnectionUndRecordsetOeffnen()) state.SkipWithError("open failed");
    benchmark::DoNotOptimize(b.rsBlockInfo0.RecordCount());
  }
}
BENCHMARK(BM_Oeffnen)->Unit(benchmark::kMillisecond);

void BM_Ordnerwechsel(benchmark::State& state) {
  Welt& w = welt();
  Bibliothek b(*w.settings);
  if (!b.ConnectionUndRecordsetOeffnen()) state.SkipWithError("open failed");
  int o = 0;
  for (auto _ : state) {
    o = (o + 7) % kOrdner;
    if (!b.subRsBlockInfo0Oeffnen(w.ordnerID(o))) state.SkipWithError("folder change failed");
    benchmark::DoNotOptimize(b.rsBlockInfo0.RecordCount());
  }
}
BENCHMARK(BM_Ordnerwechsel)->Unit(benchmark::kMillisecond);

void BM_SeiteMit72Finds(benchmark::State& state) {
  Welt& w = welt();
  Bibliothek b(*w.settings);
  if (!b.ConnectionUndRecordsetOeffnen()) state.SkipWithError("open failed");
  b.subRsBlockInfo0Oeffnen(w.ordnerID(25));
  QStringList prefix;
  const int seite = 20;  // slots 1440 to 1511: found late in the folder's rows
  fctPrefixEinlesen((seite + 1) * 72 - 1, prefix);
  QStringList codes;
  for (int i = seite * 72; i < (seite + 1) * 72; ++i) codes << fctBlockCode(w.ordnerNr(25), i, prefix);
  for (auto _ : state) {
    int gefunden = 0;
    for (const QString& code : codes) gefunden += fctRsFind(b.rsBlockInfo0, "Block", code) ? 1 : 0;
    if (gefunden != 72) state.SkipWithError("a block was not found");
  }
}
BENCHMARK(BM_SeiteMit72Finds)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return kolvane::bench::benchMain(argc, argv); }

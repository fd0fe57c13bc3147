// Speed of the library store against the budgets: a library of 100,000 blocks
// in 50 folders opened in 300 ms, a folder change in 50 ms.
#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>

#include "bibliothek.h"
#include "connection.h"
#include "prefix.h"
#include "recordhelpers.h"
#include "schema.h"
#include "settings.h"

using namespace kolvane;

namespace {

constexpr int kOrdner = 50;
constexpr int kBloeckeJeOrdner = 2000;

struct Welt {
  QTemporaryDir tmp;
  std::unique_ptr<Settings> settings;
  QString db;
  QStringList ordnerNr;
  QList<int> ordnerID;

  Welt() {
    const Environment env = Environment::below(tmp.path());
    settings = std::make_unique<Settings>(env);
    setCurrentSettings(settings.get());
    QDir().mkpath(tmp.path() + "/lib");
    db = tmp.path() + "/lib/dbKolvane.mdb";
    if (!Mk_Datenbank(db)) qFatal("Mk_Datenbank failed");
    QStringList prefix;
    if (!fctPrefixEinlesen(kBloeckeJeOrdner, prefix)) qFatal("txtPrefix.txt missing beside the benchmark");
    Connection c;
    if (!c.open(db)) qFatal("open failed");
    c.begin();
    for (int o = 0; o < kOrdner; ++o) {
      const QString nr = prefix[o];
      if (o > 0)
        c.execute("INSERT INTO tblOrdner (OrdnerNr, Ordnername, OrdnerRechte, NrTblDefMenue) "
                  "VALUES (?, ?, 'Alle', 1)",
                  {nr, QString("Ordner %1").arg(o)});
      const qlonglong id = o == 0 ? 1 : c.lastInsertId();
      ordnerNr << nr;
      ordnerID << int(id);
      for (int s = 1; s <= kBloeckeJeOrdner / 72 + 1; ++s)
        if (o > 0 || s > 1)
          c.execute("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (?, ?, ?)",
                    {s, QString::number(s), id});
      for (int i = 0; i < kBloeckeJeOrdner; ++i) {
        const QString code = fctBlockCode(nr, i, prefix);
        c.execute("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0, M0, M1, M2, "
                  "AX0, AY0, AZ0) VALUES (?, ?, ?, ?, ?, ?, ?, 0, 0, 0)",
                  {code, nr + "\\" + code + ".slb", id, "Block0-" + QString::number(o * 10000 + i),
                   QString("Benennung %1").arg(i), "DIN 933", "M8x20"});
      }
    }
    if (!c.commit()) qFatal("commit failed");
    c.close();
    settings->aryVerzeichnisseDatenbank = {db};
    settings->strAktuelleDatenbank = db;
    settings->setup.lonOrdnerSortieren = 0;
    // The first opening migrates; the benchmarks measure the ones after it.
    Bibliothek b(*settings);
    if (!b.ConnectionUndRecordsetOeffnen()) qFatal("first opening failed");
  }
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
    if (!b.subRsBlockInfo0Oeffnen(w.ordnerID[o])) state.SkipWithError("folder change failed");
    benchmark::DoNotOptimize(b.rsBlockInfo0.RecordCount());
  }
}
BENCHMARK(BM_Ordnerwechsel)->Unit(benchmark::kMillisecond);

void BM_SeiteMit72Finds(benchmark::State& state) {
  Welt& w = welt();
  Bibliothek b(*w.settings);
  if (!b.ConnectionUndRecordsetOeffnen()) state.SkipWithError("open failed");
  b.subRsBlockInfo0Oeffnen(w.ordnerID[25]);
  QStringList prefix;
  const int seite = 20;  // slots 1440 to 1511: found late in the folder's rows
  fctPrefixEinlesen((seite + 1) * 72 - 1, prefix);
  QStringList codes;
  for (int i = seite * 72; i < (seite + 1) * 72; ++i) codes << fctBlockCode(w.ordnerNr[25], i, prefix);
  for (auto _ : state) {
    int gefunden = 0;
    for (const QString& code : codes) gefunden += fctRsFind(b.rsBlockInfo0, "Block", code) ? 1 : 0;
    if (gefunden != 72) state.SkipWithError("a block was not found");
  }
}
BENCHMARK(BM_SeiteMit72Finds)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

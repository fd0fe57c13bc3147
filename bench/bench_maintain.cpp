// Speed of block shifting: in a library of 100,000 blocks in 50 folders, the
// blocks of one folder from slot 1000 on (1,000 blocks, each with its slide
// library and drawing) move one slot on, through the journal, with the
// browser's page read again at the end.
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "connection.h"
#include "prefix.h"
#include "schema.h"
#include "settings.h"
#include "verschieben.h"

using namespace kolvane;

namespace {

constexpr int kOrdner = 50;
constexpr int kBloeckeJeOrdner = 2000;
constexpr int kOrdnerImTest = 25;
constexpr int kErsterVerschobener = 1000;

void schreiben(const QString& datei, const QByteArray& inhalt) {
  QFile f(datei);
  if (!f.open(QIODevice::WriteOnly)) qFatal("can't write %s", qPrintable(datei));
  f.write(inhalt);
}

struct Welt {
  QTemporaryDir tmp;
  std::unique_ptr<Settings> settings;
  QString db;
  QString bib;
  QStringList ordnerNr;

  Welt() {
    const Environment env = Environment::below(tmp.path());
    settings = std::make_unique<Settings>(env);
    setCurrentSettings(settings.get());
    bib = tmp.path() + "/lib";
    QDir().mkpath(bib);
    db = bib + "/dbKolvane.mdb";
    if (!Mk_Datenbank(db)) qFatal("Mk_Datenbank failed");
    QStringList prefix;
    if (!fctPrefixEinlesen(kBloeckeJeOrdner + 1000, prefix)) qFatal("txtPrefix.txt missing beside the benchmark");
    Connection c;
    if (!c.open(db)) qFatal("open failed");
    c.begin();
    for (int o = 0; o < kOrdner; ++o) {
      const QString nr = prefix[o];
      if (o > 0)
        c.execute("INSERT INTO tblOrdner (OrdnerNr, Ordnername, OrdnerRechte, NrTblDefMenue) "
                  "VALUES (?, ?, 'Alle', 1)",
                  {nr, QString("Ordner %1").arg(o, 2, 10, QChar('0'))});
      const qlonglong id = o == 0 ? 1 : c.lastInsertId();
      ordnerNr << nr;
      QDir().mkpath(bib + "/" + nr + "/Block");
      for (int i = 0; i < kBloeckeJeOrdner; ++i) {
        const QString code = fctBlockCode(nr, i, prefix);
        c.execute("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0, M0, AX0, AY0, AZ0) "
                  "VALUES (?, ?, ?, ?, ?, 0, 0, 0)",
                  {code, nr + "\\" + code + ".slb", id, "Block0-" + QString::number(o * 10000 + i),
                   QString("Benennung %1").arg(i)});
        if (o == kOrdnerImTest) {
          schreiben(bib + "/" + nr + "/" + code + ".slb", "slide library " + code.toUtf8());
          schreiben(bib + "/" + nr + "/Block/" + code + "0.dwg", "drawing " + code.toUtf8());
        }
      }
    }
    if (!c.commit()) qFatal("commit failed");
    c.close();
    settings->aryVerzeichnisseDatenbank = {db};
    settings->strAktuelleDatenbank = db;
    settings->setup.lonOrdnerSortieren = 0;
    Bibliothek b(*settings);
    if (!b.ConnectionUndRecordsetOeffnen()) qFatal("first opening failed");
  }
};

Welt& welt() {
  static Welt w;
  return w;
}

void BM_TausendBloeckeUmEinsVerschieben(benchmark::State& state) {
  Welt& w = welt();
  Bibliothek lib(*w.settings);
  Blockverwaltung bv(*w.settings, lib);
  bv.subBilderanzahlFestlegen();
  if (!bv.bibliothekOeffnen() || !lib.fctOrdnerWechseln(w.ordnerNr[kOrdnerImTest]))
    state.SkipWithError("open failed");
  static int aktiv = kErsterVerschobener;  // each run leaves it free and shifts from the next slot
  for (auto _ : state) {
    state.PauseTiming();
    bv.GeheZuSeite(aktiv / bv.intBilder, aktiv % bv.intBilder, w.ordnerNr[kOrdnerImTest]);
    if (bv.strAktuelleOrdnerNr() != w.ordnerNr[kOrdnerImTest]) state.SkipWithError("folder not reached");
    BlockVerschieben v(bv);
    state.ResumeTiming();
    const auto e = v.subBloeckeUmEinsVerschieben();
    if (e != BlockVerschieben::Ergebnis::Fertig || v.verschoben() != 1000) {
      qWarning("result %d, %d blocks moved, folder %s page %d pos %d", int(e), v.verschoben(),
               qPrintable(bv.strAktuelleOrdnerNr()), int(bv.s1), int(bv.pos));
      state.SkipWithError("the shift did not move 1000 blocks");
    }
    ++aktiv;
  }
}
BENCHMARK(BM_TausendBloeckeUmEinsVerschieben)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(5);

}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

// Speed of block shifting: in a library of 100,000 blocks in 50 folders, the
// blocks of one folder from slot 1000 on (1,000 blocks, each with its slide
// library and drawing) move one slot on, through the journal, with the
// browser's page read again at the end.
#include <QFile>

#include "benchbibliothek.h"
#include "bibliothek.h"
#include "blockverwaltung.h"
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

// The folder in the test has every block's slide library and drawing.
struct Welt {
  bench::Bibliothek100k daten{
      kOrdner, kBloeckeJeOrdner, [](int o) { return QString("Ordner %1").arg(o, 2, 10, QChar('0')); },
      [this](Connection& c, const bench::Ordner& o, int i, const QString& code) {
        c.execute("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0, M0, AX0, AY0, AZ0) "
                  "VALUES (?, ?, ?, ?, ?, 0, 0, 0)",
                  {code, o.nr + "\\" + code + ".slb", o.id, "Block0-" + QString::number(o.index * 10000 + i),
                   QString("Benennung %1").arg(i)});
        if (o.index == kOrdnerImTest) {
          schreiben(daten.bib + "/" + o.nr + "/" + code + ".slb", "slide library " + code.toUtf8());
          schreiben(daten.bib + "/" + o.nr + "/Block/" + code + "0.dwg", "drawing " + code.toUtf8());
        }
      }};
  Settings* settings = daten.settings.get();

  Welt() {
    Bibliothek b(*settings);
    if (!b.ConnectionUndRecordsetOeffnen()) qFatal("first opening failed");
  }
  QString ordnerNr(int o) const { return daten.ordner[size_t(o)].nr; }
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
  if (!bv.bibliothekOeffnen() || !lib.fctOrdnerWechseln(w.ordnerNr(kOrdnerImTest)))
    state.SkipWithError("open failed");
  static int aktiv = kErsterVerschobener;  // each run leaves it free and shifts from the next slot
  for (auto _ : state) {
    state.PauseTiming();
    bv.GeheZuSeite(aktiv / bv.intBilder, aktiv % bv.intBilder, w.ordnerNr(kOrdnerImTest));
    if (bv.strAktuelleOrdnerNr() != w.ordnerNr(kOrdnerImTest)) state.SkipWithError("folder not reached");
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

int main(int argc, char** argv) { return kolvane::bench::benchMain(argc, argv); }

// Speed of the search against its budget: on a library of 100,000 blocks in
// 50 folders, a search over all ten card fields and the block name takes 30 ms
// from the button to the filled list of hits; and the first page of results
// drawn.
#include <QFile>
#include <QPixmap>
#include <algorithm>
#include <memory>

#include "benchbibliothek.h"
#include "benchslides.h"
#include "bibliothek.h"
#include "blockverwaltung.h"
#include "datenbanksuche.h"
#include "frmsuchergebnis.h"
#include "suchergebnis.h"

using namespace kolvane;

namespace {

constexpr int kOrdner = 50;
constexpr int kBloeckeJeOrdner = 2000;
const QStringList kNormen{"DIN 933", "DIN 912", "ISO 4762", "DIN 934", "ISO 7089"};
const QStringList kWerkstoffe{"Stahl 8.8", "A2-70", "A4-80", "Messing", "Stahl 10.9", "PA 6.6", "Kupfer"};
const QStringList kHersteller{"Müller", "Schmidt & Co", "O'Brien", "Bossard", "Würth", "Fabory",
                              "Reyher", "Böllhoff", "Kipp", "Ganter", "Norelem"};

// Ten card fields per block, filled as a parts catalogue would be: a text
// per block, norms, sizes, materials and makers that repeat.
struct Welt {
  bench::Bibliothek100k daten{
      kOrdner, kBloeckeJeOrdner, [](int o) { return QString("Ordner %1").arg(o); },
      [this](Connection& c, const bench::Ordner& o, int i, const QString& code) {
        const int n = o.index * kBloeckeJeOrdner + i;
        c.execute("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0, BlkName1, M0, M1, M2, M3, M4, "
                  "M5, M6, M7, M8, M9, AX0, AY0, AZ0) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, 0, 0)",
                  {code, o.nr + "\\" + code + ".slb", o.id, QString("Schraube_%1").arg(n), QString("Seite_%1").arg(n),
                   QString("Sechskantschraube M%1x%2").arg(4 + n % 17).arg(10 + 5 * (n % 23)), kNormen[n % 5],
                   QString("M%1").arg(4 + n % 17), kWerkstoffe[n % 7], kHersteller[n % 11],
                   QString("Länge %1 mm").arg(10 + 5 * (n % 23)), QString("Art.-Nr. %1").arg(100000 + n),
                   n % 3 ? "verzinkt" : "blank", QString("Gewicht %1 g").arg(n % 97),
                   QString("Lager %1").arg(n % 13)});
        if (n % 100 == 0)
          c.execute("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) VALUES (?, ?, ?)",
                    {QString("Schraube_%1_kurz").arg(n), qlonglong(c.lastInsertId()), "v.dwg"});
        // Slides of the blocks the result grid shows first.
        if (o.index == 0 && i < 40) {
          QFile f(daten.bib + "/" + o.nr + "/" + code + ".slb");
          if (!f.open(QIODevice::WriteOnly)) qFatal("slide file");
          f.write(bench::slideBibliothek(i, 40));
        }
      }};
  std::unique_ptr<Bibliothek> lib;
  std::unique_ptr<Blockverwaltung> bv;

  Welt() {
    lib = std::make_unique<Bibliothek>(*daten.settings);
    bv = std::make_unique<Blockverwaltung>(*daten.settings, *lib);
    bv->subBilderanzahlFestlegen();
    if (!bv->bibliothekOeffnen()) qFatal("opening failed");
  }
};

Welt& welt() {
  static Welt w;
  return w;
}

// All eleven boxes: every term must hold, and 46 blocks of 100,000 do.
void alleFelder(Suchkriterien& k) {
  k.txtBenennung = {"sechskant", "DIN 9", "M1", "stahl", "ü", "mm", "Art.-Nr.", "verzinkt", "g", "Lager",
                    "Schraube_"};
  k.txtBenennung[2] = "M12";
  k.txtBenennung[6] = "Art.-Nr. 10";
}

void BM_SucheAlleFelder(benchmark::State& state) {
  Welt& w = welt();
  DatenbankSuche s(*w.bv);
  s.Form_Load();
  alleFelder(s.k);
  s.k.checkDirektEinfuegen = false;
  int treffer = 0;
  for (auto _ : state) {
    if (!s.cmbSuchen_Click()) state.SkipWithError("nothing found");
    treffer = s.rsDatenbankSuche.RecordCount();
  }
  state.counters["Treffer"] = treffer;
}
BENCHMARK(BM_SucheAlleFelder)->Unit(benchmark::kMillisecond)->ComputeStatistics("median", [](const std::vector<double>& v) {
  std::vector<double> s = v;
  std::sort(s.begin(), s.end());
  return s[s.size() / 2];
})->Repetitions(5)->ReportAggregatesOnly(true);

// One box, a text in the middle of the field, many hits.
void BM_SucheEinFeldVieleTreffer(benchmark::State& state) {
  Welt& w = welt();
  DatenbankSuche s(*w.bv);
  s.Form_Load();
  s.k.checkDirektEinfuegen = false;
  s.k.txtBenennung[3] = "A4";
  int treffer = 0;
  for (auto _ : state) {
    if (!s.cmbSuchen_Click()) state.SkipWithError("nothing found");
    treffer = s.rsDatenbankSuche.RecordCount();
  }
  state.counters["Treffer"] = treffer;
}
BENCHMARK(BM_SucheEinFeldVieleTreffer)->Unit(benchmark::kMillisecond);

// The block name alone, in all views and variants.
void BM_SucheBlockname(benchmark::State& state) {
  Welt& w = welt();
  DatenbankSuche s(*w.bv);
  s.Form_Load();
  s.k.checkDirektEinfuegen = false;
  s.k.txtBenennung[10] = "schraube_4711";
  for (auto _ : state)
    if (!s.cmbSuchen_Click()) state.SkipWithError("nothing found");
}
BENCHMARK(BM_SucheBlockname)->Unit(benchmark::kMillisecond);

// The first page of results drawn: the hits read, the 20 pictures set and
// the window painted with their slides.
void BM_ErsteErgebnisseite(benchmark::State& state) {
  Welt& w = welt();
  DatenbankSuche s(*w.bv);
  s.Form_Load();
  s.k.checkDirektEinfuegen = false;
  s.k.txtBenennung[1] = "DIN 933";
  s.k.checkAktuellerOrdner = true;
  if (!s.cmbSuchen_Click()) state.SkipWithError("nothing found");
  for (auto _ : state) {
    Suchergebnis e(*w.bv, s.rsDatenbankSuche, s.strBlkNameGesucht);
    if (!e.Form_Load()) state.SkipWithError("results failed");
    FrmSuchergebnis f(e);
    f.resize(1000, 800);
    QPixmap bild = f.grab();
    benchmark::DoNotOptimize(bild);
  }
  state.counters["Treffer"] = s.rsDatenbankSuche.RecordCount();
}
BENCHMARK(BM_ErsteErgebnisseite)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return kolvane::bench::benchMain(argc, argv); }

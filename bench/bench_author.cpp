// A new block with six insertion points made in the sandbox CAD: points,
// selection, frame, six slides, the slide library through the host's shell,
// the drawing, the row and the move into the library. The user's picks are
// answered the moment they are asked (no user delay), so the time is the
// program's and the host's work from the first pick to the stored block, an
// upper bound of the time from the last pick.
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "commandchannel.h"
#include "labels.h"
#include "neuerblock.h"
#include "sandboxbridge.h"
#include "sandboxprocess.h"
#include "schema.h"
#include "scriptedprompt.h"
#include "settings.h"

using namespace kolvane;

namespace {

constexpr int kLaeufe = 40;

struct Welt {
  QTemporaryDir tmp;
  std::unique_ptr<Settings> settings;
  ScriptedPrompt prompt;
  SandboxProcess cad{SANDBOX_CAD_EXE};
  SandboxBridge sb;
  std::unique_ptr<CadBridge> bridge;
  std::unique_ptr<Bibliothek> lib;
  std::unique_ptr<Blockverwaltung> bv;
  std::unique_ptr<NeuerBlock> neu;
  int slot = 0;

  Welt() {
    Environment env = Environment::below(tmp.path());
    settings = std::make_unique<Settings>(env);
    setCurrentSettings(settings.get());
    settings->subPfadeFestlegen();
    if (!labels().fctSpracheAuslesen(0)) qFatal("label files missing beside the benchmark");
    labels().fctBeschriftungsFileZuordnenIni();
    setPrompt(&prompt);
    const QString dir = tmp.path() + "/lib";
    QDir().mkpath(dir + "/000/Block");
    const QString db = dir + "/dbKolvane.mdb";
    if (!Mk_Datenbank(db)) qFatal("Mk_Datenbank failed");
    settings->aryVerzeichnisseDatenbank = {db};
    settings->strAktuelleDatenbank = db;
    settings->setup.longMehrereEinfuegepkte = 1;
    settings->setup.longVorschaudiaBeimErzeugen = 0;
    settings->setup.longAbfrageBlocknameBeimErzeugen = 0;

    // The user of every run: six points, a window round the objects, a frame.
    QByteArray picks;
    for (int i = 0; i < kLaeufe + 10; ++i)
      picks += "10,10\n50,10\n50,30\n10,30\n30,20\n0,0\nwindow -5,-5 65,45\nENTER\n-10,-10\n70,50\n";
    QFile f(tmp.path() + "/picks.txt");
    if (!f.open(QIODevice::WriteOnly)) qFatal("picks file");
    f.write(picks);
    f.close();
    const QString socket = tmp.path() + "/cad.sock";
    if (!cad.start(socket, f.fileName(), {"--user-delay", "0"})) qFatal("sandbox did not start");
    bridge = sb.binden(socket, tmp.path() + "/daten");
    if (!bridge) qFatal("sandbox not bound");
    bridge->pauseHook = nullptr;  // the program's own pauses count
    SendCommand(*bridge, "._line 0,0 60,0 60,40 \r");
    SendCommand(*bridge, "._circle 30,20 10\r");

    lib = std::make_unique<Bibliothek>(*settings);
    bv = std::make_unique<Blockverwaltung>(*settings, *lib);
    bv->strACadVersion = bridge->typAcadVersionInfo.strACadVersion;
    bv->subBilderanzahlFestlegen();
    if (!bv->bibliothekOeffnen()) qFatal("opening failed");
    neu = std::make_unique<NeuerBlock>(*settings, *bv, *bridge);
  }

  // One block on the next free slot of the page.
  void neuerBlock() {
    bv->lisBlockBenennung_Click(slot++ % bv->intBilder);
    if (slot % bv->intBilder == 0) bv->combutVor_Click();
    prompt.dialogResult("frmKarteiDateneingabe", 1);
    neu->combutNeu_Click();
  }
};

Welt& welt() {
  static Welt w;
  return w;
}

void BM_NeuerBlockSechsPunkte(benchmark::State& state) {
  Welt& w = welt();
  for (auto _ : state) w.neuerBlock();
  const QString code = w.bv->aktivierteBlocknummer;
  if (!QFile::exists(w.lib->VerzeichnisOhneDb + "000/" + code + ".slb")) state.SkipWithError("no slide library");
}
BENCHMARK(BM_NeuerBlockSechsPunkte)->Unit(benchmark::kMillisecond)->Iterations(kLaeufe / 4)->Repetitions(4)
    ->ReportAggregatesOnly(true)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QStandardPaths::setTestModeEnabled(true);
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  setPrompt(nullptr);
  return 0;
}

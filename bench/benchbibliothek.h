#pragma once
// The large library the benchmarks measure on: folders of blocks made in one
// transaction in a temporary directory, with settings of their own, so a
// benchmark never touches the user's settings.
#include <QApplication>
#include <QDir>
#include <QStringList>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <functional>
#include <memory>
#include <vector>

#include "connection.h"
#include "prefix.h"
#include "schema.h"
#include "settings.h"

namespace kolvane::bench {

// A folder of the library: its number (three characters), its row's Nr, and
// its place (0 is the library's first folder "000").
struct Ordner {
  QString nr;
  qlonglong id = 0;
  int index = 0;
};

struct Bibliothek100k {
  QTemporaryDir tmp;
  std::unique_ptr<Settings> settings;
  QString bib;  // the library directory
  QString db;   // its dbKolvane.mdb
  std::vector<Ordner> ordner;

  // anzahlOrdner folders of bloecke blocks each; `name` names folder o (the
  // first keeps its own), `zeile` writes the rows (and files) of the block on
  // slot i of a folder. Every folder gets its directory.
  Bibliothek100k(int anzahlOrdner, int bloecke, const std::function<QString(int o)>& name,
                 const std::function<void(Connection& c, const Ordner& o, int i, const QString& code)>& zeile) {
    settings = std::make_unique<Settings>(Environment::below(tmp.path()));
    setCurrentSettings(settings.get());
    bib = tmp.path() + "/lib";
    db = bib + "/dbKolvane.mdb";
    QDir().mkpath(bib);
    if (!Mk_Datenbank(db)) qFatal("Mk_Datenbank failed");
    QStringList prefix;
    if (!fctPrefixEinlesen(qMax(bloecke, anzahlOrdner), prefix))
      qFatal("txtPrefix.txt missing beside the benchmark");
    Connection c;
    if (!c.open(db)) qFatal("open failed");
    c.begin();
    for (int o = 0; o < anzahlOrdner; ++o) {
      Ordner f{prefix[o], 1, o};
      if (o > 0) {
        c.execute("INSERT INTO tblOrdner (OrdnerNr, Ordnername, OrdnerRechte, NrTblDefMenue) VALUES (?, ?, 'Alle', 1)",
                  {f.nr, name(o)});
        f.id = c.lastInsertId();
      }
      QDir().mkpath(bib + "/" + f.nr + "/Block");
      ordner.push_back(f);
      for (int i = 0; i < bloecke; ++i) zeile(c, f, i, fctBlockCode(f.nr, i, prefix));
    }
    if (!c.commit()) qFatal("commit failed");
    c.close();
    settings->aryVerzeichnisseDatenbank = {db};
    settings->strAktuelleDatenbank = db;
    settings->setup.lonOrdnerSortieren = 0;
  }
};

// The benchmarks' main: Qt's application for the widgets and slides (drawn
// offscreen unless a platform is named), then the benchmarks named on the
// command line.
inline int benchMain(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}

}  // namespace kolvane::bench

#include <QFileInfo>
#include <QTextStream>

#include "bibliothekspruefung.h"
#include "commands.h"
#include "layout.h"
#include "paths.h"
#include "umgebung.h"

namespace kolvane::tool {

namespace {

int falscherAufruf(const QString& text = QString()) {
  QTextStream err(stderr);
  if (!text.isEmpty()) err << text << "\n";
  err << "usage: kolvane-tool check LIBRARY [--repair]\n";
  return 2;
}

QString befundZahl(size_t n) {
  return n == 1 ? QStringLiteral("1 Befund") : QStringLiteral("%1 Befunde").arg(n);
}

}  // namespace

// check LIBRARY [--repair]: compares the rows of a library with its files and
// prints one line per finding. Exit 0 when the library is consistent, 1 when
// something was found (after --repair: when something is left), 2 for a bad
// call or a library that can't be opened.
int runCheck(const QStringList& args) {
  QString argument;
  bool reparieren = false;
  for (const QString& a : args) {
    if (a == QLatin1String("--repair")) {
      if (reparieren) return falscherAufruf();
      reparieren = true;
    } else if (a.startsWith(QLatin1String("--")) || !argument.isEmpty()) {
      return falscherAufruf();
    } else {
      argument = a;
    }
  }
  if (argument.isEmpty()) return falscherAufruf();
  Umgebung umgebung;
  // LIBRARY as its directory or as the path of its dbKolvane.mdb.
  const QFileInfo fi(fctDateiFinden(fctNativerPfad(argument)));
  if (!fi.exists())
    return falscherAufruf(QStringLiteral("%1 gibt es nicht.").arg(argument));
  const QString bibliothek =
      fi.isDir() ? fi.absoluteFilePath() : fctBibliotheksVerzeichnis(fi.absoluteFilePath());

  QTextStream out(stdout);
  QString fehler;
  std::vector<Befund> befunde = fctBibliothekPruefen(bibliothek, &fehler);
  if (!fehler.isEmpty()) {
    QTextStream(stderr) << fehler << "\n";
    return 2;
  }
  size_t reparierbar = 0;
  for (const Befund& b : befunde) {
    out << b.text << "\n";
    if (b.reparierbar) ++reparierbar;
  }
  if (befunde.empty()) {
    out << "Keine Befunde: die Bibliothek " << QDir::toNativeSeparators(bibliothek)
        << " ist in Ordnung.\n";
    return 0;
  }
  out << befundZahl(befunde.size()) << ", davon " << reparierbar << " ohne Rückfrage reparierbar.\n";
  if (!reparieren) return 1;

  QStringList bericht;
  const bool ok = fctBibliothekReparieren(bibliothek, befunde, &bericht);
  for (const QString& zeile : bericht) out << zeile << "\n";
  // What is left is told by a second check, not by the report.
  befunde = fctBibliothekPruefen(bibliothek, &fehler);
  if (!fehler.isEmpty()) {
    QTextStream(stderr) << fehler << "\n";
    return 1;
  }
  if (befunde.empty() && ok) {
    out << "Nach der Reparatur: keine Befunde.\n";
    return 0;
  }
  out << "Nach der Reparatur: " << befundZahl(befunde.size())
      << (befunde.size() == 1 ? " bleibt" : " bleiben")
      << (ok ? "" : ", eine Reparatur ist fehlgeschlagen") << ".\n";
  return 1;
}

}  // namespace kolvane::tool

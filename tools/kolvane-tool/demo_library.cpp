// kolvane-tool demo-library DIR: a library to look at and to try the program
// with: three folders with named pages and simple line drawings as blocks,
// each with its drawing (DXF text under the .dwg name, as the sandbox CAD
// reads it), its slide library with one slide per insertion point, further
// views and a layer on some.
#include <QDir>
#include <QFileInfo>
#include <QTextStream>
#include <cmath>
#include <functional>

#include "bibliothek.h"
#include "commands.h"
#include "connection.h"
#include "document.h"
#include "drawing.h"
#include "dxf.h"
#include "layout.h"
#include "prefix.h"
#include "schema.h"
#include "settings.h"
#include "slidelibrary.h"
#include "slideshot.h"
#include "slidewriter.h"
#include "umgebung.h"

namespace kolvane::tool {

namespace {

using sandbox::Drawing;
using sandbox::Entity;
using sandbox::EntityType;
using sandbox::Point;

// A drawing being made: lines, circles, arcs, texts on layer "0".
struct Zeichner {
  Drawing d;
  void linie(double x1, double y1, double x2, double y2, int farbe = sandbox::kByLayer) {
    Entity e;
    e.type = EntityType::Line;
    e.p1 = {x1, y1, 0};
    e.p2 = {x2, y2, 0};
    e.color = farbe;
    d.add(e);
  }
  void rechteck(double x, double y, double w, double h, int farbe = sandbox::kByLayer) {
    linie(x, y, x + w, y, farbe);
    linie(x + w, y, x + w, y + h, farbe);
    linie(x + w, y + h, x, y + h, farbe);
    linie(x, y + h, x, y, farbe);
  }
  void kreis(double x, double y, double r, int farbe = sandbox::kByLayer) {
    Entity e;
    e.type = EntityType::Circle;
    e.p1 = {x, y, 0};
    e.radius = r;
    e.color = farbe;
    d.add(e);
  }
  void bogen(double x, double y, double r, double von, double bis, int farbe = sandbox::kByLayer) {
    Entity e;
    e.type = EntityType::Arc;
    e.p1 = {x, y, 0};
    e.radius = r;
    e.startAngle = von;
    e.endAngle = bis;
    e.color = farbe;
    d.add(e);
  }
  void text(double x, double y, double h, const QString& t, int farbe = sandbox::kByLayer) {
    Entity e;
    e.type = EntityType::Text;
    e.p1 = {x, y, 0};
    e.height = h;
    e.text = t;
    e.color = farbe;
    d.add(e);
  }
  void vieleck(const std::vector<std::pair<double, double>>& p, bool zu, int farbe = sandbox::kByLayer) {
    for (size_t i = 0; i + 1 < p.size(); ++i) linie(p[i].first, p[i].second, p[i + 1].first, p[i + 1].second, farbe);
    if (zu && p.size() > 2) linie(p.back().first, p.back().second, p.front().first, p.front().second, farbe);
  }
};

// One block of the demo: its text, name, drawing and insertion points per view.
struct DemoBlock {
  QString m0;
  QString name;
  std::vector<std::function<void(Zeichner&)>> ansichten;  // view 0 first; empty: no such view
  std::vector<std::vector<Point>> punkte;                 // per view: A, B, ...
  QString layer, lyColor, lyLine;
  QStringList karte;  // M1..M3
};

void ventil(Zeichner& z, double s) {
  z.vieleck({{0, 0}, {0, 10 * s}, {20 * s, 0}, {20 * s, 10 * s}}, true, 5);
  z.linie(10 * s, 5 * s, 10 * s, 14 * s, 5);
  z.linie(6 * s, 14 * s, 14 * s, 14 * s, 5);
}
void pumpe(Zeichner& z, double s) {
  z.kreis(10 * s, 10 * s, 10 * s, 3);
  z.vieleck({{10 * s, 20 * s}, {20 * s, 10 * s}, {10 * s, 0}}, false, 3);
  z.linie(0, 0, 20 * s, 0, 3);
}
void steckdose(Zeichner& z, double s) {
  z.bogen(10 * s, 0, 10 * s, 0, 180, 1);
  z.linie(0, 0, 20 * s, 0, 1);
  z.linie(10 * s, 10 * s, 10 * s, 16 * s, 1);
}
void lampe(Zeichner& z, double s) {
  z.kreis(8 * s, 8 * s, 8 * s, 2);
  z.linie(8 * s - 5.66 * s, 8 * s - 5.66 * s, 8 * s + 5.66 * s, 8 * s + 5.66 * s, 2);
  z.linie(8 * s - 5.66 * s, 8 * s + 5.66 * s, 8 * s + 5.66 * s, 8 * s - 5.66 * s, 2);
}
void tuer(Zeichner& z, double s) {
  z.linie(0, 0, 0, 90 * s, 7);
  z.linie(0, 0, 90 * s, 0, 7);
  z.bogen(0, 0, 90 * s, 0, 90, 8);
}
void fenster(Zeichner& z, double s) {
  z.rechteck(0, 0, 120 * s, 12 * s, 7);
  z.linie(0, 6 * s, 120 * s, 6 * s, 4);
}
void schraube(Zeichner& z, double s) {
  z.vieleck({{0, 0}, {16 * s, 0}, {16 * s, 8 * s}, {0, 8 * s}}, true, 7);
  z.rechteck(16 * s, 2 * s, 40 * s, 4 * s, 7);
  for (int i = 0; i < 8; ++i) z.linie((20 + 4 * i) * s, 2 * s, (22 + 4 * i) * s, 6 * s, 8);
}
void flansch(Zeichner& z, double s) {
  z.kreis(0, 0, 30 * s, 7);
  z.kreis(0, 0, 15 * s, 7);
  for (int i = 0; i < 4; ++i) {
    const double a = sandbox::toRad(45 + 90 * i);
    z.kreis(22 * s * std::cos(a), 22 * s * std::sin(a), 3 * s, 1);
  }
}
void baum(Zeichner& z, double s) {
  z.kreis(0, 0, 25 * s, 3);
  for (int i = 0; i < 6; ++i) {
    const double a = sandbox::toRad(60 * i);
    z.linie(0, 0, 25 * s * std::cos(a), 25 * s * std::sin(a), 3);
  }
}
void pfeil(Zeichner& z, double s) {
  z.vieleck({{0, 0}, {30 * s, 0}, {30 * s, -5 * s}, {45 * s, 3 * s}, {30 * s, 11 * s}, {30 * s, 6 * s}, {0, 6 * s}}, true, 6);
}
void tisch(Zeichner& z, double s) {
  z.rechteck(0, 0, 160 * s, 80 * s, 7);
  for (int i = 0; i < 3; ++i) z.rechteck((10 + 50 * i) * s, -25 * s, 40 * s, 20 * s, 8);
  for (int i = 0; i < 3; ++i) z.rechteck((10 + 50 * i) * s, 85 * s, 40 * s, 20 * s, 8);
}
void schalter(Zeichner& z, double s) {
  z.kreis(4 * s, 4 * s, 4 * s, 1);
  z.linie(7 * s, 7 * s, 16 * s, 16 * s, 1);
  z.linie(16 * s, 16 * s, 19 * s, 13 * s, 1);
}
void schieber(Zeichner& z, double s) {
  z.vieleck({{0, 0}, {0, 10 * s}, {20 * s, 0}, {20 * s, 10 * s}}, true, 5);
  z.linie(10 * s, 0, 10 * s, 10 * s, 5);
  z.rechteck(7 * s, 12 * s, 6 * s, 4 * s, 5);
}
// A side view of a fitting: a plain box with a stem.
void seite(Zeichner& z, double s) {
  z.rechteck(0, 0, 20 * s, 10 * s, 4);
  z.linie(10 * s, 10 * s, 10 * s, 18 * s, 4);
  z.kreis(10 * s, 20 * s, 2 * s, 4);
}

std::vector<std::vector<DemoBlock>> demoOrdner() {
  std::vector<std::vector<DemoBlock>> ordner(3);
  // Folder 000: fittings, several points and views.
  const double dn[] = {0.5, 0.65, 0.8, 1.0, 1.25, 1.5, 2.0};
  for (double s : dn) {
    const int nenn = int(s * 50);
    ordner[0].push_back({QString("Ventil DN%1").arg(nenn), QString("Ventil_DN%1").arg(nenn),
                         {[s](Zeichner& z) { ventil(z, s); }, [s](Zeichner& z) { seite(z, s); }},
                         {{{0, 0, 0}, {20 * s, 0, 0}, {10 * s, 14 * s, 0}}, {{0, 0, 0}, {20 * s, 0, 0}}},
                         QStringLiteral("Armaturen"), QStringLiteral("5"), QStringLiteral("Continuous"),
                         {QString("DN%1").arg(nenn), "PN16", "Grauguss"}});
    ordner[0].push_back({QString("Pumpe DN%1").arg(nenn), QString("Pumpe_DN%1").arg(nenn),
                         {[s](Zeichner& z) { pumpe(z, s); }},
                         {{{0, 0, 0}, {20 * s, 0, 0}}},
                         QStringLiteral("Armaturen"), QStringLiteral("3"), QStringLiteral("Continuous"),
                         {QString("DN%1").arg(nenn), "Kreiselpumpe", ""}});
    ordner[0].push_back({QString("Flansch DN%1").arg(nenn), QString("Flansch_DN%1").arg(nenn),
                         {[s](Zeichner& z) { flansch(z, s); }},
                         {{{0, 0, 0}, {30 * s, 0, 0}, {0, 30 * s, 0}, {-30 * s, 0, 0}}},
                         {}, {}, {}, {QString("DN%1").arg(nenn), "PN16", "Stahl"}});
  }
  // A gate valve with a side view as view 2 and no view 1: view 2's point A is
  // the origin of its drawing.
  ordner[0].push_back({QStringLiteral("Schieber DN50"), QStringLiteral("Schieber_DN50"),
                       {[](Zeichner& z) { schieber(z, 1); }, {}, [](Zeichner& z) { seite(z, 1); }},
                       {{{0, 0, 0}, {20, 0, 0}}, {}, {{0, 0, 0}, {20, 0, 0}}},
                       QStringLiteral("Armaturen"), QStringLiteral("5"), QStringLiteral("Continuous"),
                       {"DN50", "PN16", "Grauguss"}});
  // Folder 001: electrics.
  for (int i = 1; i <= 6; ++i) {
    const double s = 0.6 + 0.2 * i;
    ordner[1].push_back({QString("Steckdose %1fach").arg(i), QString("Steckdose_%1").arg(i),
                         {[s](Zeichner& z) { steckdose(z, s); }}, {{{10 * s, 0, 0}}},
                         QStringLiteral("Elektro"), QStringLiteral("1"), QStringLiteral("Continuous"),
                         {"230 V", QString("%1fach").arg(i), ""}});
    ordner[1].push_back({QString("Leuchte %1 W").arg(20 * i), QString("Leuchte_%1W").arg(20 * i),
                         {[s](Zeichner& z) { lampe(z, s); }}, {{{8 * s, 8 * s, 0}}},
                         QStringLiteral("Elektro"), QStringLiteral("2"), QStringLiteral("Continuous"),
                         {"230 V", QString("%1 W").arg(20 * i), ""}});
    ordner[1].push_back({QString("Schalter %1").arg(i), QString("Schalter_%1").arg(i),
                         {[s](Zeichner& z) { schalter(z, s); }}, {{{4 * s, 4 * s, 0}, {16 * s, 16 * s, 0}}},
                         {}, {}, {}, {"230 V", "", ""}});
  }
  // Folder 002: building.
  for (int i = 0; i < 4; ++i) {
    const double s = 0.8 + 0.2 * i;
    ordner[2].push_back({QString("Tür %1").arg(int(88.5 * s)), QString("Tuer_%1").arg(int(88.5 * s)),
                         {[s](Zeichner& z) { tuer(z, s); }}, {{{0, 0, 0}, {90 * s, 0, 0}}},
                         {}, {}, {}, {QString("Breite %1").arg(int(885 * s)), "", ""}});
    ordner[2].push_back({QString("Fenster %1").arg(int(120 * s)), QString("Fenster_%1").arg(int(120 * s)),
                         {[s](Zeichner& z) { fenster(z, s); }}, {{{0, 0, 0}, {120 * s, 0, 0}}},
                         {}, {}, {}, {QString("Breite %1").arg(int(1200 * s)), "", ""}});
    ordner[2].push_back({QString("Tisch %1").arg(i + 1), QString("Tisch_%1").arg(i + 1),
                         {[s](Zeichner& z) { tisch(z, s); }}, {{{0, 0, 0}}},
                         {}, {}, {}, {"", "", ""}});
  }
  ordner[2].push_back({QStringLiteral("Baum"), QStringLiteral("Baum"), {[](Zeichner& z) { baum(z, 1); }},
                       {{{0, 0, 0}}}, {}, {}, {}, {}});
  ordner[2].push_back({QStringLiteral("Nordpfeil"), QStringLiteral("Nordpfeil"),
                       {[](Zeichner& z) { pfeil(z, 1); }}, {{{0, 0, 0}}}, {}, {}, {}, {}});
  ordner[2].push_back({QStringLiteral("Schraube M8"), QStringLiteral("Schraube_M8"),
                       {[](Zeichner& z) { schraube(z, 1); }}, {{{0, 4, 0}, {56, 4, 0}}}, {}, {}, {}, {}});
  return ordner;
}

// The slide of one insertion point: the drawing at its extents with a red mark.
QByteArray punktSlide(const Drawing& d, const Point& p) {
  Drawing mit = d;
  const sandbox::Extents x = d.extents();
  const double r = std::max(x.max.x - x.min.x, x.max.y - x.min.y) / 40.0;
  Entity mark;
  mark.type = EntityType::Circle;
  mark.p1 = p;
  mark.radius = std::max(r, 0.3);
  mark.color = 1;
  mit.add(mark);
  sandbox::View v;
  v.screenWidth = 400;
  v.screenHeight = 300;
  v.zoomTo(mit.extents(), 1.15);
  return writeSlide(sandbox::shootSlide(mit, v));
}

QString fehlerZeile;
bool fehler(const QString& text) {
  fehlerZeile = text;
  return false;
}

bool blockSchreiben(Connection& conn, const QString& lib, const QString& ordnerNr, int ordnerID,
                    const QString& code, const DemoBlock& b) {
  const QString blockDir = QDir(lib).filePath(ordnerNr + "/Block");
  QDir().mkpath(blockDir);
  QVariantList werte;
  QStringList spalten = {"Block", "SlideLib", "OrdnerID", "M0", "M1", "M2", "M3", "Layer", "LyColor", "LyLine"};
  werte << code << ordnerNr + "\\" + code + ".slb" << ordnerID << b.m0 << b.karte.value(0) << b.karte.value(1)
        << b.karte.value(2) << b.layer << b.lyColor << b.lyLine;
  for (size_t v = 0; v < b.ansichten.size(); ++v) {
    if (!b.ansichten[v]) continue;
    Zeichner z;
    b.ansichten[v](z);
    const QString ziffer = QString::number(v);
    QString err;
    if (!sandbox::writeDxfFile(QDir(blockDir).filePath(code + ziffer + ".dwg"), z.d, &err)) return fehler(err);
    std::vector<SlideLibraryMember> slides;
    const auto& pkt = b.punkte[v];
    const char* buchstaben = "ABCDEF";
    for (size_t k = 0; k < pkt.size() && k < 6; ++k) {
      slides.push_back({ziffer + buchstaben[k], punktSlide(z.d, pkt[k])});
      for (int achse = 0; achse < 3; ++achse) {
        spalten << QString("%1%2%3").arg(buchstaben[k]).arg(QChar("XYZ"[achse])).arg(v);
        werte << (achse == 0 ? pkt[k].x : achse == 1 ? pkt[k].y : pkt[k].z);
      }
    }
    spalten << "BlkName" + ziffer;
    werte << (v == 0 ? b.name : b.name + "_" + ziffer);
    const QByteArray bytes = writeSlideLibrary(slides, &err);
    const QString slb = QDir(lib).filePath(ordnerNr + "/" + code + (v == 0 ? QString() : ziffer) + ".slb");
    QFile f(slb);
    if (bytes.isEmpty() || !f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
      return fehler("Die Slide-Bibliothek " + slb + " konnte nicht geschrieben werden. " + err);
  }
  QStringList fragen;
  for (int i = 0; i < spalten.size(); ++i) fragen << "?";
  if (!conn.execute("INSERT INTO tblBlockInfo (" + spalten.join(", ") + ") VALUES (" + fragen.join(", ") + ")", werte))
    return fehler(conn.error());
  return true;
}

}  // namespace

int runDemoLibrary(const QStringList& args) {
  QTextStream out(stdout), err(stderr);
  if (args.size() != 1) {
    err << "usage: kolvane-tool demo-library DIR\n";
    return 2;
  }
  Umgebung umgebung;
  const QString lib = QFileInfo(args[0]).absoluteFilePath();
  const QString db = QDir(lib).filePath(dbDateiName());
  if (QFileInfo::exists(db)) {
    err << "A library exists already: " << db << "\n";
    return 1;
  }
  QDir().mkpath(lib);
  if (!Mk_Datenbank(db)) {
    err << "The library could not be made in " << lib << "\n";
    return 1;
  }
  QStringList prefix;
  if (!fctPrefixEinlesen(200, prefix)) {
    err << "The suffix table txtPrefix.txt is missing or damaged.\n";
    return 1;
  }
  Connection conn;
  if (!conn.open(db)) {
    err << conn.error() << "\n";
    return 1;
  }
  conn.begin();
  const QStringList namen = {"Armaturen", "Elektro", "Bauwesen"};
  const QStringList seiten[3] = {{"Ventile und Pumpen", "Flansche"}, {"Steckdosen", "Leuchten"}, {"Türen und Fenster", "Außenanlagen"}};
  const auto bloecke = demoOrdner();
  int anzahl = 0;
  for (int o = 0; o < 3; ++o) {
    const QString ordnerNr = QString("%1").arg(o, 3, 10, QChar('0'));
    int ordnerID = 1;
    if (o == 0) {
      conn.execute("UPDATE tblOrdner SET Ordnername = ? WHERE Nr = 1", {namen[o]});
      conn.execute("DELETE FROM tblSeiten");
    } else {
      conn.execute("INSERT INTO tblOrdner (OrdnerNr, Ordnername, OrdnerRechte, NrTblDefMenue) VALUES (?, ?, 'Alle', 1)",
                   {ordnerNr, namen[o]});
      ordnerID = int(conn.lastInsertId());
    }
    QDir(lib).mkpath(ordnerNr);
    for (int s = 0; s < seiten[o].size(); ++s)
      conn.execute("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (?, ?, ?)",
                   {s + 1, seiten[o][s], ordnerID});
    int slot = 0;
    for (const DemoBlock& b : bloecke[o]) {
      if (!blockSchreiben(conn, lib, ordnerNr, ordnerID, fctBlockCode(ordnerNr, slot, prefix), b)) {
        conn.rollback();
        err << "The demo block " << b.m0 << " could not be written: " << fehlerZeile << "\n";
        return 1;
      }
      ++slot;
      ++anzahl;
    }
  }
  // The data card: three named fields.
  conn.execute("UPDATE tblDefMenue SET Benennung1 = 'Benennung', Benennung2 = 'Größe', Benennung3 = 'Art', "
               "Benennung4 = 'Werkstoff' WHERE Nr = 1");
  if (!conn.commit()) {
    err << conn.error() << "\n";
    return 1;
  }
  out << db << "\n" << anzahl << " blocks in 3 folders\n";
  return 0;
}

}  // namespace kolvane::tool

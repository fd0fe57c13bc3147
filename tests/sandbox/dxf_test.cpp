// Drawings as DXF text: what is written reads back the same; drawings of other
// programs and every release from R12 to 2018 are read; damaged files are
// refused with a reason.
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <algorithm>
#include <cmath>

#include "dxf.h"
#include "sandboxtest.h"

namespace sandbox {

namespace {

Drawing sample() {
  Drawing d;
  Layer& l = d.ensureLayer("Möbel");
  l.color = 3;
  l.on = false;
  d.ensureLayer("Eis").frozen = true;
  d.currentLayer = "Möbel";
  d.insbase = {1.5, -2, 0};
  d.pdmode = 3;

  BlockDef b{"Tisch", {0.1, 0.2, 0}, {}, {}};
  Entity att;
  att.type = EntityType::AttDef;
  att.tag = "NR";
  att.prompt = "Nummer";
  att.text = "1";
  att.p1 = {0, 1, 0};
  b.entities.push_back(att);
  Entity bl;
  bl.p2 = {1, 1, 0};
  bl.color = kByBlock;
  b.entities.push_back(bl);
  d.blocks.push_back(b);

  Entity e;
  e.p1 = {0.1, 0.2, 0.3};
  e.p2 = {1e-7, 123456.789, 0};
  e.layer = "Möbel";
  e.linetype = "DASHED";
  d.add(e);
  e = Entity{};
  e.type = EntityType::Circle;
  e.p1 = {5, 5, 0};
  e.radius = 2.25;
  e.color = 1;
  d.add(e);
  e = Entity{};
  e.type = EntityType::Arc;
  e.p1 = {1, 1, 0};
  e.radius = 3;
  e.startAngle = 30;
  e.endAngle = 300;
  d.add(e);
  e = Entity{};
  e.type = EntityType::Polyline;
  e.vertices = {{0, 0, 1}, {2, 0, 1}};
  e.closed = true;
  e.width = 0.5;
  d.add(e);
  e = Entity{};
  e.type = EntityType::Text;
  e.p1 = {3, 4, 0};
  e.height = 1.75;
  e.rotation = 45;
  e.text = "Ärger mit Umlauten";
  d.add(e);
  e = Entity{};
  e.type = EntityType::Solid;
  e.p1 = {0, 0, 0};
  e.p2 = {1, 0, 0};
  e.p3 = {0, 1, 0};
  e.p4 = {1, 1, 0};
  d.add(e);
  e = Entity{};
  e.type = EntityType::Insert;
  e.blockName = "Tisch";
  e.p1 = {10, 20, 0};
  e.sx = 2;
  e.sy = -3;
  e.sz = 1;
  e.rotation = 90;
  e.attributes = {{"NR", "A 17", {10, 22, 0}, 2.5, 90}};
  d.add(e);
  return d;
}

// A Python that has ezdxf, the DXF library other programs' drawings are made
// with here; "" when there is none.
QString ezdxfPython() {
  static const QString found = [] {
    for (const QString& p : {QStringLiteral("python3"), QStringLiteral("/usr/bin/python3")}) {
      QProcess py;
      py.start(p, {"-c", "import ezdxf"});
      if (py.waitForFinished(30000) && py.exitStatus() == QProcess::NormalExit && py.exitCode() == 0)
        return p;
    }
    return QString();
  }();
  return found;
}

// Runs Python with ezdxf; its standard output, or "" with a failure noted.
QString python(const QStringList& args) {
  QProcess py;
  QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
  env.insert("PYTHONIOENCODING", "utf-8");
  py.setProcessEnvironment(env);
  py.start(ezdxfPython(), args);
  const bool done = py.waitForFinished(60000);
  const QString out = QString::fromUtf8(py.readAllStandardOutput());
  EXPECT_TRUE(done && py.exitCode() == 0)
      << args.join(' ').toStdString() << "\n" << py.readAllStandardError().toStdString();
  return out;
}

#define REQUIRE_EZDXF() \
  if (ezdxfPython().isEmpty()) GTEST_SKIP() << "python3 with ezdxf is not installed"

int count(const std::vector<Entity>& es, EntityType t) {
  return int(std::count_if(es.begin(), es.end(), [t](const Entity& e) { return e.type == t; }));
}

const Entity* firstOf(const std::vector<Entity>& es, EntityType t, int skip = 0) {
  for (const Entity& e : es)
    if (e.type == t && skip-- == 0) return &e;
  return nullptr;
}

}  // namespace

TEST_F(SandboxTest, DxfRoundTripKeepsEveryKindOfEntityLayersAndBlocks) {
  const Drawing d = sample();
  Drawing back;
  QString error;
  ASSERT_TRUE(readDxf(writeDxf(d), back, &error)) << error.toStdString();
  EXPECT_EQ(back.layers, d.layers);
  EXPECT_EQ(back.blocks.size(), 1u);
  EXPECT_EQ(back.blocks[0].name, "Tisch");
  EXPECT_EQ(back.blocks[0].base, d.blocks[0].base);
  EXPECT_EQ(back.currentLayer, "Möbel");
  EXPECT_EQ(back.insbase, d.insbase);
  EXPECT_EQ(back.pdmode, 3);
  ASSERT_EQ(back.entities.size(), d.entities.size());
  for (size_t i = 0; i < d.entities.size(); ++i) {
    Entity a = d.entities[i], b = back.entities[i];
    a.handle = b.handle = 0;
    EXPECT_EQ(a, b) << "entity " << i;
  }
  // Written again, the text is the same: nothing drifts.
  EXPECT_EQ(writeDxf(back), writeDxf(d));
}

TEST_F(SandboxTest, DxfOfLaterReleasesAndForeignPiecesIsRead) {
  const QByteArray lw =
      "999\ncomment\n  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n  0\nENDSEC\n"
      "  0\nSECTION\n  2\nBLOCKS\n  0\nBLOCK\n  2\n*Model_Space\n 10\n0\n 20\n0\n  0\nENDBLK\n  "
      "0\nENDSEC\n"
      "  0\nSECTION\n  2\nOBJECTS\n  0\nDICTIONARY\n  0\nENDSEC\n"
      "  0\nSECTION\n  2\nENTITIES\n  0\nLWPOLYLINE\n  8\nW\n 90\n3\n 70\n1\n 43\n0.5\n"
      " 10\n0\n 20\n0\n 10\n4\n 20\n0\n 42\n1\n 10\n4\n 20\n3\n  0\nHATCH\n  8\n0\n  0\nENDSEC\n  "
      "0\nEOF\n";
  Drawing d;
  QString error;
  ASSERT_TRUE(readDxf(lw, d, &error)) << error.toStdString();
  EXPECT_TRUE(d.blocks.empty());
  ASSERT_EQ(d.entities.size(), 1u);
  const Entity& p = d.entities[0];
  EXPECT_EQ(p.type, EntityType::Polyline);
  ASSERT_EQ(p.vertices.size(), 3u);
  EXPECT_EQ(p.vertices[1].bulge, 1);
  EXPECT_TRUE(p.closed);
  EXPECT_EQ(p.width, 0.5);
  ASSERT_NE(d.layer("W"), nullptr);
}

TEST_F(SandboxTest, DamagedDxfIsRefusedWithAReason) {
  const QByteArray good = writeDxf(sample());
  struct Case {
    const char* what;
    QByteArray data;
  } cases[] = {
      {"empty", ""},
      {"no dxf", "Hallo Welt\nnoch eine Zeile\n"},
      {"cut in the middle", good.left(good.size() / 2)},
      {"value missing", good.left(good.lastIndexOf("EOF") - 1).append("  0")},
      {"bad number", QByteArray(good).replace(" 40\n2.25", " 40\nzwei")},
      {"binary", QByteArray("AutoCAD Binary DXF\r\n\x1a\0", 22)},
  };
  for (const Case& c : cases) {
    Drawing d;
    d.ensureLayer("bleibt");
    QString error;
    EXPECT_FALSE(readDxf(c.data, d, &error)) << c.what;
    EXPECT_FALSE(error.isEmpty()) << c.what;
    EXPECT_NE(d.layer("bleibt"), nullptr) << c.what;  // the target stays untouched
  }
}

TEST_F(SandboxTest, ExtentsFollowBlockReferencesAndWideArcs) {
  Drawing d = sample();
  const Extents x = d.extents();
  // The donut polyline reaches one width-half beyond its radius.
  EXPECT_LE(x.min.y, -1.25);
  // The reference at 10,20 turned by 90 degrees with X factor 2 and Y factor -3.
  const auto parts = d.explode(d.entities.back());
  ASSERT_EQ(parts.size(), 2u);          // the line and the attribute's text
  EXPECT_EQ(parts[0].color, kByLayer);  // BYBLOCK takes the reference's colour
  EXPECT_NEAR(parts[0].p1.x, 10 - 0.6, 1e-9);
  EXPECT_NEAR(parts[0].p1.y, 20 - 0.2, 1e-9);
  EXPECT_GE(x.max.y, parts[0].p2.y);
}

}  // namespace sandbox

namespace sandbox {

// The drawing of tests/sandbox/data/ezdxf_drawing.py, as ezdxf writes it for
// each release: R12 has no LWPOLYLINE, SPLINE, ELLIPSE, MTEXT or HATCH.
TEST_F(SandboxTest, DxfOfEveryReleaseFromAnotherProgramIsRead) {
  REQUIRE_EZDXF();
  const QString script = kolvane::sourceDir() + "/tests/sandbox/data/ezdxf_drawing.py";
  for (const char* release : {"R12", "R2000", "R2007", "R2013", "R2018"}) {
    SCOPED_TRACE(release);
    const QString file = path(QString::fromLatin1(release) + ".dxf");
    python({script, release, file});
    Drawing d;
    QString error;
    ASSERT_TRUE(readDxfFile(file, d, &error)) << error.toStdString();
    const bool r12 = QByteArray(release) == "R12";

    // Layers with colour, line type, off and frozen; the header.
    ASSERT_NE(d.layer("Wände"), nullptr);
    EXPECT_EQ(d.layer("Wände")->color, 1);
    ASSERT_NE(d.layer("Möbel"), nullptr);
    EXPECT_EQ(d.layer("Möbel")->color, 3);
    EXPECT_EQ(d.layer("Möbel")->linetype, "DASHED");
    ASSERT_NE(d.layer("Aus"), nullptr);
    EXPECT_FALSE(d.layer("Aus")->on);
    EXPECT_EQ(d.layer("Aus")->color, 5);
    ASSERT_NE(d.layer("Eis"), nullptr);
    EXPECT_TRUE(d.layer("Eis")->frozen);
    EXPECT_TRUE(d.layer("Wände")->visible());
    EXPECT_EQ(d.currentLayer, "Wände");
    EXPECT_EQ(d.insbase, (Point{5, 6, 0}));

    const auto& es = d.entities;
    EXPECT_EQ(count(es, EntityType::Line), 2);
    EXPECT_EQ(count(es, EntityType::Arc), 1);
    EXPECT_EQ(count(es, EntityType::Circle), 1);
    EXPECT_EQ(count(es, EntityType::Solid), 1);
    EXPECT_EQ(count(es, EntityType::Insert), 1);
    // TEXT, and MTEXT as text; the polyline, and from 2000 on the spline, the
    // ellipse and the hatch's two boundaries as polylines.
    EXPECT_EQ(count(es, EntityType::Text), r12 ? 1 : 2);
    EXPECT_EQ(count(es, EntityType::Polyline), r12 ? 1 : 5);
    EXPECT_EQ(count(es, EntityType::AttDef), 0);

    const Entity* line = firstOf(es, EntityType::Line, 1);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->p1, (Point{10, 0, 0}));
    EXPECT_EQ(line->p2, (Point{10, 5, 0}));
    EXPECT_EQ(line->layer, "Wände");
    EXPECT_EQ(line->color, 2);
    const Entity* arc = firstOf(es, EntityType::Arc);
    EXPECT_EQ(arc->p1, (Point{5, 5, 0}));
    EXPECT_EQ(arc->radius, 2);
    EXPECT_EQ(arc->startAngle, 30);
    EXPECT_EQ(arc->endAngle, 120);
    EXPECT_EQ(arc->layer, "Möbel");
    EXPECT_EQ(firstOf(es, EntityType::Circle)->radius, 3.5);
    EXPECT_EQ(firstOf(es, EntityType::Circle)->layer, "Aus");
    const Entity* text = firstOf(es, EntityType::Text);
    EXPECT_EQ(text->text, "Grüße");
    EXPECT_EQ(text->height, 1.5);
    EXPECT_EQ(text->rotation, 30);
    EXPECT_EQ(text->p1, (Point{1, 2, 0}));
    EXPECT_EQ(firstOf(es, EntityType::Solid)->p4, (Point{1, 1, 0}));
    EXPECT_EQ(firstOf(es, EntityType::Solid)->layer, "Eis");

    // The block with its attribute definition, and its reference with the value.
    const BlockDef* b = d.block("Tisch");
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(b->base, (Point{1, 1, 0}));
    ASSERT_EQ(b->entities.size(), 3u);
    EXPECT_EQ(count(b->entities, EntityType::Line), 1);
    EXPECT_EQ(count(b->entities, EntityType::Circle), 1);
    const Entity* att = firstOf(b->entities, EntityType::AttDef);
    ASSERT_NE(att, nullptr);
    EXPECT_EQ(att->tag, "NR");
    EXPECT_EQ(att->prompt, "Nummer");
    EXPECT_EQ(att->text, "1");
    EXPECT_EQ(att->height, 0.5);
    EXPECT_EQ(att->p1, (Point{0, 3, 0}));
    const Entity* ref = firstOf(es, EntityType::Insert);
    EXPECT_EQ(ref->blockName, "Tisch");
    EXPECT_EQ(ref->p1, (Point{30, 40, 0}));
    EXPECT_EQ(ref->sx, 2);
    EXPECT_EQ(ref->rotation, 90);
    ASSERT_EQ(ref->attributes.size(), 1u);
    EXPECT_EQ(ref->attributes[0].tag, "NR");
    EXPECT_EQ(ref->attributes[0].value, "A 17");
    EXPECT_EQ(ref->attributes[0].position, (Point{30, 43, 0}));

    // The polyline keeps its arc as a bulge.
    const Entity* pl = firstOf(es, EntityType::Polyline);
    ASSERT_EQ(pl->vertices.size(), 3u);
    EXPECT_EQ(pl->vertices[0], (Vertex{0, 0, 1}));
    EXPECT_EQ(pl->vertices[2], (Vertex{4, 3, 0}));
    EXPECT_TRUE(pl->closed);
    EXPECT_EQ(pl->layer, "Möbel");
    if (r12) continue;

    EXPECT_EQ(firstOf(es, EntityType::Text, 1)->text, "Erste Zeile Zweite fett");
    EXPECT_EQ(firstOf(es, EntityType::Text, 1)->height, 2);
    // The spline runs from its first to its last control point.
    const Entity* spline = firstOf(es, EntityType::Polyline, 1);
    ASSERT_GT(spline->vertices.size(), 4u);
    EXPECT_NEAR(spline->vertices.front().x, 0, 1e-9);
    EXPECT_NEAR(spline->vertices.back().x, 8, 1e-9);
    EXPECT_NEAR(spline->vertices.back().y, 4, 1e-9);
    EXPECT_FALSE(spline->closed);
    // The ellipse: closed, every point on it.
    const Entity* ellipse = firstOf(es, EntityType::Polyline, 2);
    EXPECT_TRUE(ellipse->closed);
    EXPECT_GE(ellipse->vertices.size(), 32u);
    for (const Vertex& v : ellipse->vertices)
      EXPECT_NEAR(std::pow((v.x - 50) / 4, 2) + std::pow(v.y / 2, 2), 1, 1e-9);
    // The hatch: a polyline boundary and one of a line and a half circle.
    const Entity* square = firstOf(es, EntityType::Polyline, 3);
    ASSERT_EQ(square->vertices.size(), 4u);
    EXPECT_EQ(square->vertices[2], (Vertex{10, 10, 0}));
    EXPECT_TRUE(square->closed);
    EXPECT_EQ(square->color, 4);
    const Entity* dome = firstOf(es, EntityType::Polyline, 4);
    ASSERT_EQ(dome->vertices.size(), 2u);
    EXPECT_NEAR(dome->vertices[0].x, 20, 1e-9);
    EXPECT_NEAR(dome->vertices[1].x, 30, 1e-9);
    EXPECT_NEAR(dome->vertices[1].bulge, 1, 1e-9);  // a half circle counter-clockwise
  }
}

// What the sandbox writes, ezdxf reads and audits without an error; taken over
// by ezdxf into a 2018 drawing, it reads back here with the same content,
// umlauts and the euro sign of the release 12 code page, and a character
// outside it, included.
TEST_F(SandboxTest, OurDxfIsReadByEzdxfAndComesBackThroughIt) {
  REQUIRE_EZDXF();
  Drawing d = sample();
  for (Entity& e : d.entities)
    if (e.type == EntityType::Text) e.text = "Ärger für 5 € – Ω";
  QString error;
  ASSERT_TRUE(writeDxfFile(path("ours.dxf"), d, &error)) << error.toStdString();
  const QString out = python({"-c",
                              "import sys, ezdxf\n"
                              "from ezdxf.addons import Importer\n"
                              "doc = ezdxf.readfile(sys.argv[1])\n"
                              "for e in doc.audit().errors: print('error', e.message)\n"
                              "print('entities', len(doc.modelspace()))\n"
                              "print('block', len(doc.blocks.get('Tisch')))\n"
                              "print('layers', ' '.join(sorted(l.dxf.name for l in doc.layers)))\n"
                              "doc = ezdxf.readfile(sys.argv[1])\n"
                              "new = ezdxf.new('R2018')\n"
                              "imp = Importer(doc, new)\n"
                              "imp.import_tables('*')\n"
                              "imp.import_blocks(['Tisch'])\n"
                              "imp.import_modelspace()\n"
                              "imp.finalize()\n"
                              "new.header['$CLAYER'] = doc.header['$CLAYER']\n"
                              "new.header['$INSBASE'] = doc.header['$INSBASE']\n"
                              "new.saveas(sys.argv[2])\n",
                              path("ours.dxf"), path("2018.dxf")});
  EXPECT_FALSE(out.contains("error")) << out.toStdString();
  EXPECT_TRUE(out.contains(QString("entities %1").arg(d.entities.size()))) << out.toStdString();
  EXPECT_TRUE(out.contains("block 2")) << out.toStdString();
  EXPECT_TRUE(out.contains("Möbel")) << out.toStdString();

  Drawing back;
  ASSERT_TRUE(readDxfFile(path("2018.dxf"), back, &error)) << error.toStdString();
  EXPECT_TRUE(readFile(path("2018.dxf")).contains("AC1032"));
  ASSERT_EQ(back.entities.size(), d.entities.size());
  for (size_t i = 0; i < d.entities.size(); ++i) {
    Entity a = d.entities[i], b = back.entities[i];
    a.handle = b.handle = 0;
    EXPECT_EQ(a, b) << "entity " << i;
  }
  ASSERT_NE(back.block("Tisch"), nullptr);
  ASSERT_EQ(back.block("Tisch")->entities.size(), 2u);
  EXPECT_EQ(back.block("Tisch")->entities[0].prompt, "Nummer");
  EXPECT_EQ(back.block("Tisch")->base, d.blocks[0].base);
  EXPECT_EQ(back.currentLayer, "Möbel");
  EXPECT_EQ(back.insbase, d.insbase);
  EXPECT_FALSE(back.layer("Möbel")->on);
  EXPECT_TRUE(back.layer("Eis")->frozen);
}

TEST_F(SandboxTest, DxfThatNoDrawingIsNamesWhatItIs) {
  const QByteArray good = writeDxf(sample());
  QByteArray noise(4096, 0);
  QRandomGenerator random(7);
  for (char& c : noise) c = char(random.bounded(256));
  QByteArray dwg("AC1032\0\0\0\0\0\x1f\x01\x03", 14);
  struct Case {
    const char* what;
    QByteArray data;
    const char* says;
  } cases[] = {
      {"random bytes", noise, "Gruppencode"},
      {"a DWG", dwg, "DWG"},
      {"no EOF", good.left(good.lastIndexOf("  0\nEOF")), "EOF"},
      {"unknown release", QByteArray(good).replace("AC1009", "AC1099"), "AC1099"},
      {"no ENTITIES", "  0\nSECTION\n  2\nHEADER\n  0\nENDSEC\n  0\nEOF\n", "ENTITIES"},
      {"section not ended",
       "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n  0\nSECTION\n  2\nBLOCKS\n  0\nENDSEC\n  0\nEOF\n",
       "ENDSEC"},
      {"block not ended",
       QByteArray(good).replace("  0\nENDBLK\n  8\n0\n", ""), "ENDBLK"},
      {"binary", QByteArray("AutoCAD Binary DXF\r\n\x1a\0", 22), "binär"},
  };
  for (const Case& c : cases) {
    Drawing d;
    d.ensureLayer("bleibt");
    QString error;
    EXPECT_FALSE(readDxf(c.data, d, &error)) << c.what;
    EXPECT_TRUE(error.startsWith("Die Datei ist keine lesbare DXF-Zeichnung")) << c.what;
    EXPECT_TRUE(error.contains(c.says)) << c.what << ": " << error.toStdString();
    EXPECT_NE(d.layer("bleibt"), nullptr) << c.what;
  }
  // From a file, the message names the file.
  writeFile(path("kaputt.dwg"), dwg);
  Drawing d;
  QString error;
  EXPECT_FALSE(readDxfFile(path("kaputt.dwg"), d, &error));
  EXPECT_TRUE(error.contains("kaputt.dwg")) << error.toStdString();
  EXPECT_TRUE(error.contains("DWG")) << error.toStdString();
}

// Records whose counts and order would send the DXF library past its arrays,
// into a huge allocation or into an endless loop are read as far as they make
// sense.
TEST_F(SandboxTest, DxfThatMisleadsTheLibraryIsReadSafely) {
  auto wrap = [](const QByteArray& entities) {
    return "  0\nSECTION\n  2\nENTITIES\n" + entities + "  0\nENDSEC\n  0\nEOF\n";
  };
  Drawing d;
  QString error;
  // A bulge before the first vertex, and a count far beyond the vertices.
  ASSERT_TRUE(readDxf(wrap("  0\nLWPOLYLINE\n 90\n2000000000\n 42\n0.5\n 10\n1\n 20\n2\n 42\n1\n"
                           " 10\n3\n 20\n4\n"),
                      d, &error))
      << error.toStdString();
  ASSERT_EQ(d.entities.size(), 1u);
  EXPECT_EQ(d.entities[0].vertices, (std::vector<Vertex>{{1, 2, 1}, {3, 4, 0}}));
  // A spline announcing more knots and points than it has.
  ASSERT_TRUE(readDxf(wrap("  0\nSPLINE\n 71\n1\n 72\n2147483647\n 73\n-5\n 74\n900000000\n"
                           " 10\n0\n 20\n0\n 10\n5\n 20\n5\n"),
                      d, &error))
      << error.toStdString();
  ASSERT_EQ(d.entities.size(), 1u);
  EXPECT_EQ(d.entities[0].vertices.back(), (Vertex{5, 5, 0}));
  // A text longer than a line the library reads at once.
  const QByteArray longText(5000, 'x');
  ASSERT_TRUE(readDxf(wrap("  0\nTEXT\n 10\n0\n 20\n0\n 40\n1\n  1\n" + longText + "\n  0\nLINE\n"), d,
                      &error))
      << error.toStdString();
  ASSERT_EQ(d.entities.size(), 2u);
  EXPECT_GT(d.entities[0].text.size(), 500);
  EXPECT_EQ(d.entities[1].type, EntityType::Line);
  // A full turn given by huge angles, and a comment naming the library.
  ASSERT_TRUE(readDxf(wrap("999\ndxflib\n  0\nELLIPSE\n 10\n0\n 20\n0\n 11\n2\n 21\n0\n 40\n0.5\n"
                           " 41\n1e300\n 42\n-1e300\n"),
                      d, &error))
      << error.toStdString();
  EXPECT_EQ(d.entities.size(), 1u);
  // Angles of countless turns (found by fuzzing: the extents walked the arc
  // in steps of five degrees).
  ASSERT_TRUE(readDxf(wrap("  0\nARC\n 10\n0\n 20\n0\n 40\n3\n 50\n30\n 51\n3006666666666666666666666666666.0\n"
                           "  0\nINSERT\n  2\nB\n 10\n0\n 20\n0\n 50\n-1e300\n"),
                      d, &error))
      << error.toStdString();
  ASSERT_EQ(d.entities.size(), 2u);
  EXPECT_EQ(d.entities[0].startAngle, 30);
  EXPECT_GE(d.entities[0].endAngle, 0);
  EXPECT_LT(d.entities[0].endAngle, 360);
  EXPECT_LE(std::abs(d.entities[1].rotation), 360);
  EXPECT_TRUE(d.extents().valid());
}

}  // namespace sandbox

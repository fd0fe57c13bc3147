// Drawings as DXF text: what is written reads back the same; damaged files are
// refused with a reason.
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

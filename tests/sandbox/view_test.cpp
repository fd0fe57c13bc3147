// What the screen shows and what a slide of it holds; the view commands; the
// documents; the batch mode.
#include <QTextStream>

#include "batch.h"
#include "sandboxtest.h"
#include "scene.h"
#include "slideshot.h"

namespace sandbox {

using kolvane::SlideRecordType;

namespace {

// A screen of 100 x 100 dots showing 0..100 in both directions: dots are units.
View unitView() {
  View v;
  v.center = {50, 50, 0};
  v.height = 100;
  v.screenWidth = v.screenHeight = 100;
  return v;
}

Entity line(Point a, Point b, QString layer = "0", int color = kByLayer) {
  Entity e;
  e.p1 = a;
  e.p2 = b;
  e.layer = layer;
  e.color = color;
  return e;
}

struct Shot {
  std::vector<std::pair<int, kolvane::SlideRecord>> vectors;  // colour and record
  std::vector<kolvane::SlideRecord> fills;
  int colorRecords = 0;
};

Shot shoot(const Drawing& d, const View& v) {
  Shot s;
  int color = -1;
  for (const auto& r : shootSlide(d, v).records) {
    if (r.type == SlideRecordType::Color) {
      color = r.a;
      ++s.colorRecords;
    } else if (r.type == SlideRecordType::Vector) {
      s.vectors.emplace_back(color, r);
    } else if (r.type == SlideRecordType::SolidFill) {
      s.fills.push_back(r);
    }
  }
  return s;
}

}  // namespace

TEST_F(SandboxTest, SlideCutsAtTheScreenAndTellsColours) {
  Drawing d;
  d.ensureLayer("Rot").color = 1;
  d.add(line({-50, 50, 0}, {150, 50, 0}));    // runs across the screen
  d.add(line({200, 200, 0}, {300, 300, 0}));  // off screen
  d.add(line({10, 10, 0}, {20, 10, 0}));      // same colour: no new colour record
  d.add(line({10, 20, 0}, {20, 20, 0}, "Rot"));
  const kolvane::Slide slide = shootSlide(d, unitView());
  EXPECT_EQ(slide.highX, 99);
  EXPECT_EQ(slide.highY, 99);
  EXPECT_DOUBLE_EQ(slide.aspectRatio, 1.0);
  ASSERT_FALSE(slide.records.empty());
  EXPECT_EQ(slide.records.front().type, SlideRecordType::Color);

  const Shot s = shoot(d, unitView());
  ASSERT_EQ(s.vectors.size(), 3u);
  EXPECT_EQ(s.colorRecords, 2);
  EXPECT_EQ(s.vectors[0].second, kolvane::SlideRecord::vector(0, 50, 99, 50));
  EXPECT_EQ(s.vectors[1].first, 7);
  EXPECT_EQ(s.vectors[2].first, 1);
  EXPECT_EQ(s.vectors[2].second, kolvane::SlideRecord::vector(10, 20, 20, 20));
}

TEST_F(SandboxTest, SlideLeavesOutHiddenLayersAndResolvesBlocks) {
  Drawing d;
  d.ensureLayer("Aus").on = false;
  d.ensureLayer("Eis").frozen = true;
  d.ensureLayer("Blau").color = 5;
  d.add(line({1, 1, 0}, {2, 2, 0}, "Aus"));
  d.add(line({1, 1, 0}, {2, 2, 0}, "Eis"));
  BlockDef b{"B",
             {0, 0, 0},
             {line({0, 0, 0}, {10, 0, 0}), line({0, 5, 0}, {10, 5, 0}, "0", kByBlock)},
             {}};
  d.blocks.push_back(b);
  Entity ref;
  ref.type = EntityType::Insert;
  ref.blockName = "B";
  ref.layer = "Blau";
  ref.color = 3;
  ref.p1 = {20, 30, 0};
  ref.sx = ref.sy = 2;
  d.add(ref);
  ref.layer = "Eis";  // a reference on a frozen layer shows nothing
  d.add(ref);
  const Shot s = shoot(d, unitView());
  ASSERT_EQ(s.vectors.size(), 2u);
  // Layer-0 content takes the reference's layer; BYBLOCK its colour.
  EXPECT_EQ(s.vectors[0].first, 5);
  EXPECT_EQ(s.vectors[0].second, kolvane::SlideRecord::vector(20, 30, 40, 30));
  EXPECT_EQ(s.vectors[1].first, 3);
  EXPECT_EQ(s.vectors[1].second, kolvane::SlideRecord::vector(20, 40, 40, 40));
}

TEST_F(SandboxTest, FilledAreasAreCutPolygonsAndTextIsOutlined) {
  Drawing d;
  Entity solid;
  solid.type = EntityType::Solid;
  solid.p1 = {80, 80, 0};
  solid.p2 = {120, 80, 0};
  solid.p3 = {80, 120, 0};
  solid.p4 = {120, 120, 0};
  d.add(solid);
  const Shot s = shoot(d, unitView());
  // Opening record, the cut square's four corners, closing record.
  ASSERT_EQ(s.fills.size(), 6u);
  EXPECT_LT(s.fills.front().b, 0);
  EXPECT_LT(s.fills.back().b, 0);
  for (size_t i = 1; i + 1 < s.fills.size(); ++i) {
    EXPECT_GE(s.fills[i].a, 80);
    EXPECT_LE(s.fills[i].a, 99);
    EXPECT_LE(s.fills[i].b, 99);
  }
  Drawing t;
  Entity text;
  text.type = EntityType::Text;
  text.p1 = {10, 10, 0};
  text.height = 10;
  text.text = "AB";
  t.add(text);
  const Shot ts = shoot(t, unitView());
  EXPECT_GT(ts.vectors.size(), 8u);
  for (const auto& [color, r] : ts.vectors) {
    EXPECT_GE(r.b, 8);  // the letters stand on their base line
    EXPECT_LE(r.b, 22);
  }
}

TEST_F(SandboxTest, ZoomPanAndTheViewSize) {
  in_->doc().view.screenWidth = 200;
  in_->doc().view.screenHeight = 100;
  run("._line 0,0 100,20 \r._zoom _e\r");
  EXPECT_NEAR(in_->variable("viewsize").toDouble(), 50 * 1.05, 1e-9);  // the width decides
  run("._zoom 2\r");
  EXPECT_NEAR(in_->variable("viewsize").toDouble(), 25 * 1.05, 1e-9);
  run("._pan 0,0 10,5 ");
  EXPECT_EQ(in_->variable("viewctr").toList().value(0).toDouble(), 40);
  EXPECT_EQ(in_->variable("viewctr").toList().value(1).toDouble(), 5);
  run("._zoom _w 0,0 10,10 ");
  EXPECT_EQ(in_->variable("viewsize").toDouble(), 10);
  // The view is no part of the drawing's undo.
  run("._undo 1 ");
  EXPECT_TRUE(drawing().entities.empty());
  EXPECT_EQ(in_->variable("viewsize").toDouble(), 10);
}

TEST_F(SandboxTest, UndoStepsAreCommandsThatChangedTheDrawing) {
  run("._circle 0,0 1\r._circle 5,5 1\r._zoom _e\r._circle 9,9 1\r._undo _m ._circle 7,7 1\r");
  run("._undo 2 ");  // the mark is passed over
  ASSERT_EQ(drawing().entities.size(), 2u);
  run("u\r");
  EXPECT_EQ(drawing().entities.size(), 1u);
  EXPECT_EQ(in_->doc().undoDepth(), 1);
  run("u\ru\r");
  EXPECT_TRUE(drawing().entities.empty());
  EXPECT_TRUE(history().contains("Nichts zurückzunehmen."));
}

TEST_F(SandboxTest, DocumentsOpenBesideOrInsteadAndCloseWithSaving) {
  const QString a = writeBlock("a.dwg"), b = writeBlock("b.dwg");
  QString error;
  ASSERT_TRUE(in_->openDocument(a, &error));
  EXPECT_EQ(in_->documentCount(), 1);  // the untouched new drawing made way
  EXPECT_EQ(in_->variable("dwgname").toString(), "a.dwg");
  run("._circle 0,0 1\r");
  ASSERT_TRUE(in_->openDocument(b, &error));
  EXPECT_EQ(in_->documentCount(), 2);
  ASSERT_TRUE(in_->openDocument(a, &error));  // already open: made active
  EXPECT_EQ(in_->documentCount(), 2);
  EXPECT_EQ(drawing().entities.size(), 5u);
  run("sdi 1\r");
  ASSERT_TRUE(in_->openDocument(b, &error));
  EXPECT_EQ(in_->documentCount(), 2);
  ASSERT_TRUE(in_->closeDocument(true, "", &error));  // saved under its own name
  EXPECT_EQ(in_->documentCount(), 1);
  ASSERT_TRUE(in_->closeDocument(false, "", &error));
  EXPECT_EQ(in_->documentCount(), 1);  // a new drawing takes the last one's place
  EXPECT_TRUE(in_->doc().fileName.isEmpty());
  EXPECT_FALSE(in_->closeDocument(true, "", &error));  // no name to save under
  EXPECT_FALSE(error.isEmpty());
}

TEST_F(SandboxTest, BatchModeRunsSavesAndReports) {
  const QString block = writeBlock("b.dwg");
  // The pause takes the picks file's answer; an expression never closed is dropped.
  writeFile(path("run.scr"),
            "._circle 1,1 1\r\n(command \"._line\" \"0,0\" pause \"\")\r\n(setq offen\r\n");
  writeFile(path("picks.txt"), "2,2\n");
  QString out;
  QTextStream stream(&out);
  EXPECT_EQ(runBatch({block, path("picks.txt"), path("run.scr"), path("out.dxf")}, stream), 0);
  EXPECT_TRUE(out.contains("Gespeichert:"));
  EXPECT_TRUE(out.contains("Unvollständiger Ausdruck"));
  Drawing saved;
  QString error;
  ASSERT_TRUE(readDxfFile(path("out.dxf"), saved, &error)) << error.toStdString();
  ASSERT_EQ(saved.entities.size(), 6u);  // the opened drawing's four lines, circle, line
  EXPECT_EQ(saved.entities[5].p2, (Point{2, 2, 0}));

  out.clear();
  EXPECT_EQ(runBatch({"", "", path("fehlt.scr"), ""}, stream), 1);
  EXPECT_TRUE(out.contains("Skriptdatei nicht gefunden"));
  writeFile(path("bad.txt"), "klick\n");
  EXPECT_EQ(runBatch({"", path("bad.txt"), path("run.scr"), ""}, stream), 1);
  writeFile(path("kaputt.dwg"), "0\nSECTION\n");
  EXPECT_EQ(runBatch({path("kaputt.dwg"), "", path("run.scr"), ""}, stream), 1);
  EXPECT_EQ(runBatch({"", "", path("run.scr"), path("kein/ordner/x.dxf")}, stream), 1);
}

}  // namespace sandbox

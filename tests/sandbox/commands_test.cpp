// The commands as the program sends them: change, undo bracket, write block,
// slide, layers, explode, array, attributes, xref, open.
#include <QFile>

#include "dxf.h"
#include "sandboxtest.h"
#include "slidereader.h"

namespace sandbox {

using ::testing::HasSubstr;

TEST_F(SandboxTest, ChangeMovesTheLastEntityToLayerAndColour) {
  run(QStringLiteral("._circle 0,0 1 \r._change (entlast)  _prop _la Moebel\r\r"));
  EXPECT_EQ(last().layer, QStringLiteral("Moebel"));
  ASSERT_NE(drawing().layer("moebel"), nullptr);
  run(QStringLiteral("._change (entlast)  _prop _col 1  "));
  EXPECT_EQ(last().color, 1);
  EXPECT_FALSE(in_->commandActive());
  run(QStringLiteral("._change (entlast)  _prop _la 0\r\r"));
  EXPECT_EQ(last().layer, QStringLiteral("0"));
  EXPECT_EQ(events_.count("end CHANGE"), 3);
}

TEST_F(SandboxTest, UndoMarkThenBackRestoresTheDrawing) {
  run(QStringLiteral("._line 0,0 5,5 \r-layer m Alt \r"));
  const Drawing before = drawing();
  run(QStringLiteral("._undo _m "));
  run(QStringLiteral("._donut 0 3\r1,1,0\r\r._change (entlast)  _prop _col 1  "));
  run(QStringLiteral("-layer m Neu \r._base 7,7 ._erase (entlast)  ._circle 9,9 1 \r"));
  EXPECT_NE(drawing(), before);
  run(QStringLiteral("._undo _b "));
  EXPECT_EQ(drawing(), before);
  // A second back without a mark takes back everything.
  run(QStringLiteral("._undo _b "));
  EXPECT_TRUE(drawing().entities.empty());
  EXPECT_THAT(history().toStdString(), HasSubstr("Alles zurückgenommen."));
}

TEST_F(SandboxTest, WblockWritesTheSelectionAsADrawingThatOpensAgain) {
  run(QStringLiteral("-layer m Teil \r._line 10,10 20,10 \r._circle 15,15 3 \r._erase all \r"));
  run(QStringLiteral("._undo 1 "));  // the objects are back and are the previous selection
  ASSERT_EQ(drawing().entities.size(), 2u);
  const QString file = path("neu/block.dwg");
  run(QStringLiteral("._-wblock %1\r\r10,10,0\r_p \r").arg(file));
  EXPECT_TRUE(drawing().entities.empty());  // the objects went into the file
  Drawing written;
  QString error;
  ASSERT_TRUE(readDxfFile(file, written, &error)) << error.toStdString();
  ASSERT_EQ(written.entities.size(), 2u);
  EXPECT_EQ(written.insbase, (Point{10, 10, 0}));
  ASSERT_NE(written.layer("Teil"), nullptr);
  run(QStringLiteral("._undo _b ._open \"%1\"\r").arg(file));
  EXPECT_EQ(in_->doc().fileName, file);
  EXPECT_EQ(in_->windowTitle(), QStringLiteral("Sandbox CAD - [block.dwg]"));
  EXPECT_EQ(drawing().entities.size(), 2u);
}

TEST_F(SandboxTest, SlideOfTheViewShowsTheRedDonutAndAsksBeforeReplacing) {
  run(QStringLiteral(
      "._line 0,0 100,0 \r._donut 0 10\r50,50,0\r\r._change (entlast)  _prop _col 1  "));
  in_->doc().view.zoomTo(drawing().extents());
  const QString file = path("dia/0A.sld");
  run(QStringLiteral("._mslide %1\r").arg(file));
  auto slide = kolvane::readSlideFile(file);
  ASSERT_TRUE(slide.has_value());
  EXPECT_EQ(slide->highX + 1, in_->doc().view.screenWidth);
  // The line in colour 7, then the donut: a colour 1 record and filled polygons.
  bool red = false;
  int redFills = 0, vectors = 0;
  for (const auto& r : slide->records) {
    if (r.type == kolvane::SlideRecordType::Color) red = r.a == 1;
    if (r.type == kolvane::SlideRecordType::SolidFill && red) ++redFills;
    if (r.type == kolvane::SlideRecordType::Vector) ++vectors;
  }
  EXPECT_GT(redFills, 20);
  EXPECT_GE(vectors, 1);
  // An existing slide is replaced only after a yes.
  const QByteArray first = readFile(file);
  run(QStringLiteral("._erase (entlast)  ._mslide %1\r_n\r").arg(file));
  EXPECT_EQ(readFile(file), first);
  run(QStringLiteral("._mslide %1\r_y\r").arg(file));
  EXPECT_NE(readFile(file), first);
}

TEST_F(SandboxTest, LayerFormsOfTheLayerManager) {
  run(QStringLiteral("-layer n A,B,C \r-layer m D \r-layer aus A,B,C \r"));
  EXPECT_FALSE(drawing().layer("A")->on);
  // "FA": the names switch on, each ended by Return; "se" sets the current layer.
  run(QStringLiteral("-Layer FA A\rB\rse A\r\r"));
  EXPECT_TRUE(drawing().layer("A")->on);
  EXPECT_TRUE(drawing().layer("B")->on);
  EXPECT_FALSE(drawing().layer("C")->on);
  EXPECT_EQ(drawing().currentLayer, QStringLiteral("A"));
  run(QStringLiteral("-Layer FA f B\rC\rse A\r\r"));
  EXPECT_TRUE(drawing().layer("B")->frozen);
  EXPECT_TRUE(drawing().layer("C")->frozen);
  run(QStringLiteral("-Layer FA t C\r\r"));
  EXPECT_FALSE(drawing().layer("C")->frozen);
  // The current layer can't be frozen; an unknown one is reported.
  run(QStringLiteral("-layer f A \r-layer ein Gibtsnicht \r"));
  EXPECT_FALSE(drawing().layer("A")->frozen);
  EXPECT_THAT(history().toStdString(), HasSubstr("Layer \"Gibtsnicht\" nicht gefunden."));
  run(QStringLiteral("_.layer "));
  EXPECT_TRUE(events_.contains("end LAYER"));
}

TEST_F(SandboxTest, ExplodeArrayAndAttributes) {
  // A block with one attribute definition.
  Drawing b;
  Entity att;
  att.type = EntityType::AttDef;
  att.tag = QStringLiteral("NR");
  att.text = QStringLiteral("000");
  att.p1 = {1, 1, 0};
  b.add(att);
  Entity line;
  line.p2 = {4, 0, 0};
  b.add(line);
  QString error;
  ASSERT_TRUE(writeDxfFile(path("att.dwg"), b, &error));
  run(QStringLiteral("attreq 0\r._-insert %1\r0,0,0 2\r\r90\r").arg(path("att.dwg")));
  ASSERT_EQ(last().attributes.size(), 1u);
  EXPECT_EQ(last().attributes[0].value, QStringLiteral("000"));
  picks("string A-17 neu\n");
  run(QStringLiteral("._attedit (entlast) "));
  EXPECT_EQ(last().attributes[0].value, QStringLiteral("A-17 neu"));

  run(QStringLiteral("._array (entlast) \r\r2\r3\r10\r20\r"));
  EXPECT_EQ(drawing().entities.size(), 6u);
  EXPECT_EQ(last().p1, (Point{40, 10, 0}));

  run(QStringLiteral("._explode (entlast) \r"));
  EXPECT_EQ(drawing().entities.size(), 7u);  // one reference became a line and a text
  EXPECT_EQ(last().type, EntityType::Text);
  const Entity& exploded = drawing().entities[drawing().entities.size() - 2];
  EXPECT_EQ(exploded.type, EntityType::Line);
  EXPECT_NEAR(exploded.p2.x, 40, 1e-9);  // turned by 90 degrees, scaled by 2
  EXPECT_NEAR(exploded.p2.y, 18, 1e-9);
}

TEST_F(SandboxTest, InsertAsksBeforeRedefiningUnlessExpert) {
  const QString file = writeBlock("b.dwg");
  run(QStringLiteral("._-insert Teil=%1\r0,0,0 1\r1\r0\r").arg(file));
  writeBlock("b.dwg", {5, 5, 0});
  // The answer "j" of the program's string redefines the block.
  run(QStringLiteral("._-insert Teil=%1\rj 0,0,0 1\r1\r0\r").arg(file));
  EXPECT_EQ(drawing().block("Teil")->base, (Point{5, 5, 0}));
  writeBlock("b.dwg", {7, 7, 0});
  run(QStringLiteral("expert 2\r._-insert Teil=%1\r0,0,0 1\r1\r0\r").arg(file));
  EXPECT_EQ(drawing().block("Teil")->base, (Point{7, 7, 0}));
  EXPECT_EQ(drawing().entities.size(), 3u);
  // An attached drawing keeps its file.
  run(QStringLiteral("._-xref\rz\r\r\"%1\"\r3,3 1\r1\r0\r").arg(file));
  EXPECT_EQ(drawing().block("b")->xrefPath, file);
  EXPECT_EQ(drawing().entities.size(), 4u);
}

TEST_F(SandboxTest, MissingAndBrokenFilesAreMessagesNotCrashes) {
  KolvaneTest::writeFile(path("kaputt.dwg"), "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nzehn\n");
  KolvaneTest::writeFile(path("halb.dwg"), "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\n1.0\n");
  run(QStringLiteral("._open %1\r._open %2\r._open %3\r")
          .arg(path("kaputt.dwg"), path("halb.dwg"), path("fehlt.dwg")));
  run(QStringLiteral("._-insert %1\r._-insert %2\r(load \"%3\")\r._script %3\r")
          .arg(path("kaputt.dwg"), path("fehlt.dwg"), path("fehlt.lsp")));
  EXPECT_THAT(history().toStdString(), HasSubstr("Zahl erwartet: \"zehn\""));
  EXPECT_THAT(history().toStdString(), HasSubstr("ENDSEC fehlt"));
  EXPECT_THAT(history().toStdString(), HasSubstr("fehlt.dwg\" nicht gefunden"));
  EXPECT_THAT(history().toStdString(), HasSubstr("LOAD fehlgeschlagen"));
  EXPECT_THAT(history().toStdString(), HasSubstr("Skriptdatei nicht gefunden"));
  EXPECT_EQ(in_->documentCount(), 1);
  EXPECT_TRUE(in_->doc().fileName.isEmpty());
  EXPECT_FALSE(in_->commandActive());
  run(QStringLiteral("._circle 1,1 1 \r"));
  EXPECT_EQ(drawing().entities.size(), 1u);
}

TEST_F(SandboxTest, ShellRunsTheLineAndReturnsWhenItEnds) {
  run(QStringLiteral("._shell echo fertig > \"%1\"\r").arg(path("aus gabe.txt")));
  EXPECT_EQ(readFile(path("aus gabe.txt")).trimmed(), QByteArray("fertig"));
  run(QStringLiteral("._shell exit 3\r"));
  EXPECT_THAT(history().toStdString(), HasSubstr("Status 3"));
}

}  // namespace sandbox

// The commands as the program sends them: change, undo bracket, write block,
// slide, layers, explode, array, attributes, xref, open, break; and what the
// commands do with answers they can't take.
#include <QFile>

#include "dxf.h"
#include "sandboxtest.h"
#include "slidereader.h"

namespace sandbox {

using ::testing::HasSubstr;
using ::testing::Not;

namespace {

// A block drawing with one attribute definition NR (default "000") and a line.
void writeAttributeBlock(const QString& file) {
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
  ASSERT_TRUE(writeDxfFile(file, b, &error)) << error.toStdString();
}

}  // namespace

TEST_F(SandboxTest, ChangeMovesTheLastEntityToLayerAndColour) {
  run(QStringLiteral("._circle 0,0 1\r._change (entlast)  _prop _la Moebel\r\r"));
  EXPECT_EQ(last().layer, QStringLiteral("Moebel"));
  ASSERT_NE(drawing().layer("moebel"), nullptr);
  run(QStringLiteral("._change (entlast)  _prop _col 1  "));
  EXPECT_EQ(last().color, 1);
  EXPECT_FALSE(in_->commandActive());
  run(QStringLiteral("._change (entlast)  _prop _la 0\r\r"));
  EXPECT_EQ(last().layer, QStringLiteral("0"));
  EXPECT_EQ(events_.count("end CHANGE"), 3);
  EXPECT_TRUE(in_->errorLines().isEmpty()) << in_->errorLines().join('\n').toStdString();
  // A wrong word is refused and the same question comes again; the command
  // goes on with the next answer.
  run(QStringLiteral("._change (entlast)  frob _prop Rahmen _col gruen 3  "));
  EXPECT_EQ(last().color, 3);
  EXPECT_EQ(in_->errorLines(),
            (QStringList{"Punkt oder Option-Schlüsselwort erforderlich.",
                         "Ungültiges Option-Schlüsselwort.", "Ungültiges Option-Schlüsselwort."}));
  EXPECT_FALSE(in_->commandActive());
  // German colour names on a German host; a property the sandbox lacks is said so.
  run(QStringLiteral("._change (entlast)  _prop f grün _th  "));
  EXPECT_EQ(last().color, 3);
  EXPECT_THAT(in_->errorLines().last().toStdString(), HasSubstr("Eigenschaft"));
  EXPECT_EQ(events_.count("end CHANGE"), 5);
}

TEST_F(SandboxTest, UndoMarkThenBackRestoresTheDrawing) {
  run(QStringLiteral("._line 0,0 5,5 \r-layer m Alt \r"));
  const Drawing before = drawing();
  run(QStringLiteral("._undo _m "));
  run(QStringLiteral("._donut 0 3\r1,1,0\r\r._change (entlast)  _prop _col 1  "));
  run(QStringLiteral("-layer m Neu \r._base 7,7 ._erase (entlast)  ._circle 9,9 1\r"));
  EXPECT_NE(drawing(), before);
  run(QStringLiteral("._undo _b "));  // back to the mark: no question
  EXPECT_EQ(drawing(), before);
  EXPECT_THAT(history().toStdString(), HasSubstr("Markierung erreicht."));
  EXPECT_THAT(history().toStdString(), Not(HasSubstr("OK? <J>")));
  // Without a mark Back asks first: No leaves everything, Return (yes) takes
  // back everything.
  run(QStringLiteral("._undo _b _n "));
  EXPECT_EQ(drawing(), before);
  EXPECT_THAT(history().toStdString(), HasSubstr("Damit wird alles zurückgenommen. OK? <J> _n"));
  run(QStringLiteral("._undo _b \r"));
  EXPECT_TRUE(drawing().entities.empty());
  EXPECT_THAT(history().toStdString(), HasSubstr("Alles zurückgenommen."));
  EXPECT_FALSE(in_->commandActive());
  // Begin and End are taken and change nothing; a wrong word is asked again.
  run(QStringLiteral("._circle 1,1 1\r._undo _be ._undo _e ._undo frob 1 "));
  EXPECT_TRUE(drawing().entities.empty());
  EXPECT_EQ(in_->errorLines(), QStringList{"Ungültiges Option-Schlüsselwort."});
  EXPECT_EQ(events_.count("end UNDO"), 7);
}

TEST_F(SandboxTest, WblockWritesTheSelectionAsADrawingThatOpensAgain) {
  run(QStringLiteral("-layer m Teil \r._line 10,10 20,10 \r._circle 15,15 3\r._erase all \r"));
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
  run(QStringLiteral("._undo _b _y ._open \"%1\"\r").arg(file));
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
  run(QStringLiteral("-Layer FA t C\r\r\r"));
  EXPECT_FALSE(drawing().layer("C")->frozen);
  EXPECT_TRUE(in_->errorLines().isEmpty()) << in_->errorLines().join('\n').toStdString();
  // The current layer can't be frozen; an unknown one is reported; a wrong
  // option is asked again. "f" is the colour on a German host, "fr" freezes.
  run(QStringLiteral("-layer fr A \r-layer ein Gibtsnicht \r-layer frob f 1 B \r"));
  EXPECT_FALSE(drawing().layer("A")->frozen);
  EXPECT_EQ(drawing().layer("B")->color, 1);
  ASSERT_EQ(in_->errorLines().size(), 3);
  EXPECT_THAT(in_->errorLines()[0].toStdString(), HasSubstr("aktuelle Layer"));
  EXPECT_EQ(in_->errorLines()[1], QStringLiteral("Layer \"Gibtsnicht\" nicht gefunden."));
  EXPECT_EQ(in_->errorLines()[2], QStringLiteral("Ungültiges Option-Schlüsselwort."));
  // The current layer goes off only after a yes.
  run(QStringLiteral("-layer aus A \r\r-layer aus A _y \r"));
  EXPECT_FALSE(drawing().layer("A")->on);
  EXPECT_EQ(in_->errorLines().size(), 3);
  run(QStringLiteral("_.layer "));
  EXPECT_TRUE(events_.contains("end LAYER"));
}

TEST_F(SandboxTest, ExplodeArrayAndAttributes) {
  writeAttributeBlock(path("att.dwg"));
  run(QStringLiteral("attreq 0\r._-insert %1\r0,0,0 2\r\r90\r").arg(path("att.dwg")));
  ASSERT_EQ(last().attributes.size(), 1u);
  EXPECT_EQ(last().attributes[0].value, QStringLiteral("000"));
  picks("string A-17 neu\n");
  run(QStringLiteral("._-attedit (entlast) "));
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

  // The polar array is not in the sandbox: said so, nothing made.
  run(QStringLiteral("._array (entlast) \r_po\r"));
  EXPECT_EQ(drawing().entities.size(), 7u);
  EXPECT_EQ(in_->errorLines(), QStringList{"Die polare Anordnung bietet die Sandbox nicht."});
}

TEST_F(SandboxTest, AtteditOpensAModalDialogAndTheLineFormAsksTheValues) {
  writeAttributeBlock(path("att.dwg"));
  run(QStringLiteral("attreq 0\r._-insert %1\r0,0,0 1\r\r0\r").arg(path("att.dwg")));
  in_->setUserMode(Interpreter::UserMode::Interactive);
  // The dialog stays open until the user closes it; OK keeps the values.
  run(QStringLiteral("._attedit (entlast) "));
  EXPECT_TRUE(in_->modal());
  EXPECT_EQ(in_->modalTitle(), QStringLiteral("Attribute bearbeiten"));
  EXPECT_TRUE(in_->commandActive());
  run(QStringLiteral("\r"));
  EXPECT_FALSE(in_->modal());
  EXPECT_FALSE(in_->commandActive());
  EXPECT_EQ(last().attributes[0].value, QStringLiteral("000"));
  EXPECT_EQ(events_.count("end ATTEDIT"), 1);
  // -ATTEDIT asks on the command line, no dialog.
  run(QStringLiteral("._-attedit (entlast) B-2\r"));
  EXPECT_EQ(last().attributes[0].value, QStringLiteral("B-2"));
  EXPECT_FALSE(in_->modal());
  EXPECT_TRUE(events_.contains("end -ATTEDIT"));
  // A reference without attributes is said so and opens nothing.
  const QString plain = writeBlock("plain.dwg");
  run(QStringLiteral("._-insert %1\r5,5 1\r\r0\r._attedit (entlast) ").arg(plain));
  EXPECT_FALSE(in_->modal());
  EXPECT_FALSE(in_->commandActive());
  EXPECT_EQ(in_->errorLines(), QStringList{"Block hat keine editierbaren Attribute."});
}

TEST_F(SandboxTest, ExplodeInLispTakesOneObjectWithoutReturn) {
  const QString block = writeBlock("b.dwg");
  run(QStringLiteral("._-insert %1\r0,0 1\r\r0\r._-insert b\r20,0 1\r\r0\r").arg(block));
  ASSERT_EQ(drawing().entities.size(), 2u);
  run(QStringLiteral("(command \"._explode\" (entlast))\r"));
  EXPECT_FALSE(in_->commandActive());
  EXPECT_EQ(drawing().entities.size(), 5u);  // one reference, four lines
  EXPECT_EQ(events_.mid(events_.size() - 3),
            (QStringList{"begin EXPLODE", "end EXPLODE", "endLisp"}));
  // Typed, the selection goes on until Return.
  in_->setUserMode(Interpreter::UserMode::Interactive);
  run(QStringLiteral("._explode -2,-2 11,6 "));  // a window around the first reference
  EXPECT_TRUE(in_->commandActive());
  run(QStringLiteral("\r"));
  EXPECT_FALSE(in_->commandActive());
  EXPECT_EQ(drawing().entities.size(), 8u);
  EXPECT_TRUE(in_->errorLines().isEmpty()) << in_->errorLines().join('\n').toStdString();
}

TEST_F(SandboxTest, BreakSplitsAndShortensLinesCirclesAndPolylines) {
  run(QStringLiteral("._line 0,0 10,0 \r"));
  // The pick is the first point; a wrong word at the second is asked again.
  run(QStringLiteral("._break 3,0 frob 7,0 "));
  ASSERT_EQ(drawing().entities.size(), 2u);
  EXPECT_EQ(drawing().entities[0].p1, (Point{0, 0, 0}));
  EXPECT_EQ(drawing().entities[0].p2, (Point{3, 0, 0}));
  EXPECT_EQ(drawing().entities[1].p1, (Point{7, 0, 0}));
  EXPECT_EQ(drawing().entities[1].p2, (Point{10, 0, 0}));
  EXPECT_EQ(in_->errorLines(), QStringList{"Punkt oder Option-Schlüsselwort erforderlich."});
  // First point asked apart; a point beyond the end shortens.
  run(QStringLiteral("._break 1,0 _f 1,0 2,0 ._break 9,0 12,0 "));
  ASSERT_EQ(drawing().entities.size(), 3u);
  EXPECT_EQ(drawing().entities[0].p2, (Point{1, 0, 0}));
  EXPECT_EQ(drawing().entities[1].p1, (Point{7, 0, 0}));
  EXPECT_EQ(drawing().entities[1].p2, (Point{9, 0, 0}));
  EXPECT_EQ(drawing().entities[2].p1, (Point{2, 0, 0}));
  EXPECT_EQ(drawing().entities[2].p2, (Point{3, 0, 0}));

  // A circle loses what runs counter-clockwise from the first point to the second.
  run(QStringLiteral("._circle 50,50 10\r._break 60,50 50,60 "));
  EXPECT_EQ(last().type, EntityType::Arc);
  EXPECT_NEAR(last().startAngle, 90, 1e-9);
  EXPECT_NEAR(last().endAngle, 0, 1e-9);
  // A polyline falls into two.
  run(QStringLiteral("._pline 0,20 10,20 10,30 \r._break 5,20 10,25 "));
  const Entity& tail = last();
  const Entity& head = drawing().entities[drawing().entities.size() - 2];
  ASSERT_EQ(head.vertices.size(), 2u);
  EXPECT_EQ(head.vertices[1], (Vertex{5, 20, 0}));
  ASSERT_EQ(tail.vertices.size(), 2u);
  EXPECT_EQ(tail.vertices[0], (Vertex{10, 25, 0}));
  EXPECT_EQ(tail.vertices[1], (Vertex{10, 30, 0}));
  // A text can't be broken.
  run(QStringLiteral("._text 0,40 1 0 Hallo\r._break (entlast) "));
  EXPECT_EQ(last().text, QStringLiteral("Hallo"));
  EXPECT_EQ(in_->errorLines().size(), 2);
  EXPECT_EQ(events_.count("end BREAK"), 6);
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

TEST_F(SandboxTest, WrongWordsAreAskedAgainAndMissingOptionsSaidSo) {
  // A word that is no option of the question: refused, the question comes
  // again and the command goes on.
  run(QStringLiteral("._line 0,0 frob 5,0 _u 6,0 \r"));
  ASSERT_EQ(drawing().entities.size(), 1u);
  EXPECT_EQ(last().p2, (Point{6, 0, 0}));
  EXPECT_THAT(
      history().toStdString(),
      HasSubstr("Nächsten Punkt angeben oder [Zurück]: frob\nPunkt oder "
                "Option-Schlüsselwort erforderlich.\nNächsten Punkt angeben oder [Zurück]: "));
  // An option the sandbox lacks is an error line; the polyline goes on.
  run(QStringLiteral("._pline 0,10 _a 5,10 5,15 _c "));
  EXPECT_TRUE(last().closed);
  EXPECT_EQ(last().vertices.size(), 3u);
  const QString block = writeBlock("x.dwg");
  run(QStringLiteral("._-xref frob _a\r%1\r0,0 1\r\r0\r").arg(block));
  EXPECT_EQ(last().blockName, QStringLiteral("x"));
  EXPECT_EQ(in_->errorLines().join('\n').toStdString(),
            "Punkt oder Option-Schlüsselwort erforderlich.\n"
            "Diese Option bietet die Sandbox nicht: Arc\n"
            "Ungültiges Option-Schlüsselwort.");
  // An English host asks in English, from the same table.
  in_->setLanguage(Language::English);
  run(QStringLiteral("._circle 0,0 _d 4\r"));
  EXPECT_EQ(last().radius, 2);
  EXPECT_THAT(
      history().toStdString(),
      HasSubstr(
          "Specify radius of circle or [Diameter] <1>: _d\nSpecify diameter of circle <2>: 4"));
}

TEST_F(SandboxTest, InsertUsesTheDefinedBlockAndAsksOnlyForNameEqualsFile) {
  const QString file = writeBlock("b.dwg");
  run(QStringLiteral("._-insert %1\r0,0 1\r\r0\r").arg(file));
  writeBlock("b.dwg", {5, 5, 0});
  // The path of a drawing whose block is defined: no question, the file is
  // not read again; the plain name is the same block.
  run(QStringLiteral("._-insert %1\r10,0 1\r\r0\r._-insert b\r20,0 1\r\r0\r").arg(file));
  EXPECT_EQ(drawing().entities.size(), 3u);
  EXPECT_EQ(drawing().block("b")->base, (Point{0, 0, 0}));
  EXPECT_THAT(history().toStdString(), Not(HasSubstr("Neu definieren?")));
  // Return at the name takes the last block.
  run(QStringLiteral("._-insert \r30,0 1\r\r0\r"));
  EXPECT_EQ(last().blockName, QStringLiteral("b"));
  EXPECT_EQ(drawing().entities.size(), 4u);
  // "name=file" asks; "n" keeps the old definition and the reference is placed.
  run(QStringLiteral("._-insert b=%1\rn 40,0 1\r\r0\r").arg(file));
  EXPECT_THAT(history().toStdString(),
              HasSubstr("Block \"b\" ist bereits vorhanden. Neu definieren?"));
  EXPECT_EQ(drawing().block("b")->base, (Point{0, 0, 0}));
  EXPECT_EQ(drawing().entities.size(), 5u);
  EXPECT_TRUE(in_->errorLines().isEmpty()) << in_->errorLines().join('\n').toStdString();
}

TEST_F(SandboxTest, YesNoQuestionsTakeTheWordsOfTheHostsLanguage) {
  const QString file = writeBlock("b.dwg");
  run(QStringLiteral("._-insert Teil=%1\r0,0 1\r\r0\r").arg(file));
  writeBlock("b.dwg", {5, 5, 0});
  // An English host: "j" is no answer there, "y" is.
  in_->setLanguage(Language::English);
  run(QStringLiteral("._-insert Teil=%1\rj y 0,0 1\r\r0\r").arg(file));
  EXPECT_EQ(drawing().block("Teil")->base, (Point{5, 5, 0}));
  EXPECT_THAT(history().toStdString(), HasSubstr("Block \"Teil\" already exists. Redefine it?"));
  EXPECT_EQ(in_->errorLines(), QStringList{"Invalid option keyword."});
  // "_Yes" on any host; on the German host "y" is refused.
  writeBlock("b.dwg", {7, 7, 0});
  in_->setLanguage(Language::German);
  run(QStringLiteral("._-insert Teil=%1\ry _Yes 0,0 1\r\r0\r").arg(file));
  EXPECT_EQ(drawing().block("Teil")->base, (Point{7, 7, 0}));
  EXPECT_EQ(in_->errorLines().size(), 2);
  EXPECT_EQ(drawing().entities.size(), 3u);
}

TEST_F(SandboxTest, MissingAndBrokenFilesAreMessagesNotCrashes) {
  KolvaneTest::writeFile(path("kaputt.dwg"), "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nzehn\n");
  KolvaneTest::writeFile(path("halb.dwg"), "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\n1.0\n");
  run(QStringLiteral("._open %1\r._open %2\r._open %3\r")
          .arg(path("kaputt.dwg"), path("halb.dwg"), path("fehlt.dwg")));
  run(QStringLiteral("._-insert %1\r._-insert %2\r(load \"%3\")\r._script %3\r")
          .arg(path("kaputt.dwg"), path("fehlt.dwg"), path("fehlt.lsp")));
  // Every failure is an error line naming its file.
  const QString errors = in_->errorLines().join('\n');
  EXPECT_THAT(errors.toStdString(), HasSubstr("\"zehn\""));
  EXPECT_THAT(errors.toStdString(), HasSubstr("halb.dwg"));
  EXPECT_THAT(
      errors.toStdString(),
      HasSubstr(
          QStringLiteral("Datei \"%1\" nicht gefunden.").arg(path("fehlt.dwg")).toStdString()));
  EXPECT_THAT(history().toStdString(), HasSubstr("LOAD fehlgeschlagen"));
  EXPECT_THAT(history().toStdString(), HasSubstr("Skriptdatei nicht gefunden"));
  EXPECT_EQ(in_->documentCount(), 1);
  EXPECT_TRUE(in_->doc().fileName.isEmpty());
  EXPECT_FALSE(in_->commandActive());
  run(QStringLiteral("._circle 1,1 1\r"));
  EXPECT_EQ(drawing().entities.size(), 1u);
}

TEST_F(SandboxTest, ShellRunsTheLineAndReturnsWhenItEnds) {
  run(QStringLiteral("._shell echo fertig > \"%1\"\r").arg(path("aus gabe.txt")));
  EXPECT_EQ(readFile(path("aus gabe.txt")).trimmed(), QByteArray("fertig"));
  run(QStringLiteral("._shell exit 3\r"));
  EXPECT_THAT(history().toStdString(), HasSubstr("Status 3"));
}

}  // namespace sandbox

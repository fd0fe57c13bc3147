#include "authortest.h"
#include "blockdaten.h"
#include "neuanlage.h"

namespace kolvane {
namespace {

class BlockdatenTest : public AuthorTest {
 protected:
  // A state as a run of the automation route leaves it for view 0.
  Neuanlage neu(const QString& c, int punkte) {
    Neuanlage n;
    n.strSlideLibDateiName = c + ".slb";
    for (int m = 0; m < 10; ++m) n.aryDatenbankEintrag[size_t(m)] = QStringLiteral("Wert %1").arg(m);
    n.strLayer = "Schrauben";
    n.strFarbe = "3";
    n.strLinie = "Strich";
    n.SlideAnzahl = int16_t(punkte);
    for (int j = 0; j < punkte; ++j) n.Einfuegepunkte[size_t(j)] = {10.0 * (j + 1), 20.5 * (j + 1), -j * 1.0};
    return n;
  }
  void punkteAnsicht(const QString& c, int k, const QList<Punkt>& punkte) {
    for (int j = 0; j < punkte.size(); ++j)
      for (int a = 0; a < 3; ++a)
        ausfuehren(QStringLiteral("UPDATE tblBlockInfo SET %1%2%3 = ? WHERE Block = ?")
                       .arg(QChar('A' + j)).arg(QChar("XYZ"[a])).arg(k),
                   {punkte[j][size_t(a)], c});
  }
  qint64 nr(const QString& c) { return wert(c, "Nr").toLongLong(); }
  int varianten(const QString& name) {
    Connection conn;
    EXPECT_TRUE(conn.open(db_));
    return conn.scalar("SELECT COUNT(*) FROM tblVariationBloecke WHERE BlockName = ?", {name}).toInt();
  }
};

TEST_F(BlockdatenTest, ANewBlockGetsItsRowWithMadeNames) {
  oeffnen(0);
  const QString c = code(0);
  ASSERT_EQ(bv_->aktivierteBlocknummer, c);
  Neuanlage n = neu(c, 2);
  ASSERT_TRUE(BlockdatenInDatenbankAbspeichern(*bv_, n, false));
  EXPECT_EQ(n.strBlockName, "Block0-1");
  EXPECT_EQ(wert(c, "BlkName0").toString(), "Block0-1");
  for (int k = 1; k <= 4; ++k)
    EXPECT_EQ(wert(c, QStringLiteral("BLKName%1").arg(k)).toString(), QStringLiteral("Block%1-1").arg(k));
  for (int m = 0; m < 10; ++m) EXPECT_EQ(wert(c, QStringLiteral("M%1").arg(m)).toString(), QStringLiteral("Wert %1").arg(m));
  EXPECT_EQ(wert(c, "Layer").toString(), "Schrauben");
  EXPECT_EQ(wert(c, "LYCOLOR").toString(), "3");
  EXPECT_EQ(wert(c, "LYLINE").toString(), "Strich");
  EXPECT_EQ(wert(c, "SlideLib").toString(), "000\\" + c + ".slb");
  EXPECT_EQ(wert(c, "OrdnerID").toInt(), 1);
  EXPECT_DOUBLE_EQ(wert(c, "AX0").toDouble(), 10);
  EXPECT_DOUBLE_EQ(wert(c, "AY0").toDouble(), 20.5);
  EXPECT_DOUBLE_EQ(wert(c, "AZ0").toDouble(), 0);
  EXPECT_DOUBLE_EQ(wert(c, "BX0").toDouble(), 20);
  EXPECT_DOUBLE_EQ(wert(c, "BY0").toDouble(), 41);
  EXPECT_DOUBLE_EQ(wert(c, "BZ0").toDouble(), -1);
  for (char p = 'C'; p <= 'F'; ++p)
    for (char a : {'X', 'Y', 'Z'}) {
      const QVariant v = wert(c, QString(QChar(p)) + QChar(a) + "0");
      EXPECT_FALSE(v.isNull()) << p << a;
      EXPECT_EQ(v.toDouble(), 0.0) << p << a;
    }
  // The browser's slot and the open record set know the block.
  EXPECT_EQ(bv_->aryTBloecke[0].BlkName0, "Block0-1");
  EXPECT_EQ(lib_->rsBlockInfo0.text("Block"), c);
  EXPECT_EQ(lib_->rsBlockInfo0.text("M0"), "Wert 0");
  EXPECT_EQ(anzahl("SELECT COUNT(*) FROM tblBlockInfo"), 1);
  EXPECT_TRUE(prompt_->asked.isEmpty()) << prompt_->asked.join('\n').toStdString();

  // A second block counts on; a given name stays.
  bv_->lisBlockBenennung_Click(1);
  const QString c1 = code(1);
  ASSERT_EQ(bv_->aktivierteBlocknummer, c1);
  Neuanlage n1 = neu(c1, 1);
  ASSERT_TRUE(BlockdatenInDatenbankAbspeichern(*bv_, n1, false));
  EXPECT_EQ(wert(c1, "BlkName0").toString(), "Block0-2");
  EXPECT_EQ(wert(c1, "BlkName3").toString(), "Block3-2");
  bv_->lisBlockBenennung_Click(2);
  Neuanlage n2 = neu(code(2), 1);
  n2.strBlockName = "Flansch \"DN 50\" O'Brien";
  ASSERT_TRUE(BlockdatenInDatenbankAbspeichern(*bv_, n2, false));
  EXPECT_EQ(wert(code(2), "BlkName0").toString(), "Flansch \"DN 50\" O'Brien");
  EXPECT_EQ(wert(code(2), "BlkName1").toString(), "Block1-3");
  EXPECT_EQ(anzahl("SELECT COUNT(*) FROM tblBlockInfo"), 3);
}

TEST_F(BlockdatenTest, TheKeystrokeRouteWritesNoPoints) {
  oeffnen(0);
  const QString c = code(0);
  Neuanlage n = neu(c, 2);
  ASSERT_TRUE(BlockdatenInDatenbankAbspeichern(*bv_, n, true));
  EXPECT_EQ(wert(c, "BlkName0").toString(), "Block0-1");
  EXPECT_EQ(wert(c, "BlkName4").toString(), "Block4-1");
  for (char p = 'A'; p <= 'F'; ++p)
    for (char a : {'X', 'Y', 'Z'})
      EXPECT_TRUE(wert(c, QString(QChar(p)) + QChar(a) + "0").isNull()) << p << a;
}

TEST_F(BlockdatenTest, AFurtherViewIsSeenAtOnce) {
  const QString c = blockAnlegen(0);
  oeffnen(0);
  ASSERT_EQ(bv_->aktivierteBlocknummer, c);
  Neuanlage n;
  n.byteZuErstellendeAnsicht = 2;
  n.strBlockName = "Seitenansicht";
  n.SlideAnzahl = 1;
  n.Einfuegepunkte[0] = {7, 8, 9};
  ASSERT_TRUE(BlockdatenInDatenbankAbspeichernAnsichten(*bv_, n, false));
  EXPECT_DOUBLE_EQ(wert(c, "AX2").toDouble(), 7);
  EXPECT_DOUBLE_EQ(wert(c, "AZ2").toDouble(), 9);
  EXPECT_EQ(wert(c, "BlkName2").toString(), "Seitenansicht");
  EXPECT_EQ(lib_->rsBlockInfo0.text("Block"), c);
  EXPECT_DOUBLE_EQ(lib_->rsBlockInfo0.value("AX2").toDouble(), 7);
  // View 0 untouched.
  EXPECT_DOUBLE_EQ(wert(c, "AX0").toDouble(), 1);
  EXPECT_EQ(wert(c, "BlkName0").toString(), "Vorhanden");
}

TEST_F(BlockdatenTest, AFurtherViewOnTheKeystrokeRouteIsMarkedOnly) {
  const QString c = blockAnlegen(0);
  oeffnen(0);
  Neuanlage n;
  n.byteZuErstellendeAnsicht = 3;
  n.strBlockName = "Draufsicht";
  n.SlideAnzahl = 2;
  n.Einfuegepunkte[0] = {7, 8, 9};
  ASSERT_TRUE(BlockdatenInDatenbankAbspeichernAnsichten(*bv_, n, true));
  EXPECT_DOUBLE_EQ(wert(c, "AX3").toDouble(), 0.1);
  EXPECT_EQ(wert(c, "BlkName3").toString(), "Draufsicht");
  for (const char* s : {"AY3", "AZ3", "BX3", "BY3", "FZ3"}) EXPECT_TRUE(wert(c, s).isNull()) << s;
}

// A replaced view keeps none of its old points: a letter beyond the new count
// would still count as a point, with no slide of its own.
TEST_F(BlockdatenTest, AReplacedViewLosesItsOldFurtherPoints) {
  const QString c = blockAnlegen(0);
  punkteAnsicht(c, 1, {{1, 1, 1}, {2, 2, 2}, {3, 3, 3}});
  oeffnen(0);
  Neuanlage n;
  n.byteZuErstellendeAnsicht = 1;
  n.strBlockName = "Neu";
  n.SlideAnzahl = 1;
  n.Einfuegepunkte[0] = {5, 6, 7};
  ASSERT_TRUE(BlockdatenInDatenbankAbspeichernAnsichten(*bv_, n, false));
  EXPECT_DOUBLE_EQ(wert(c, "AX1").toDouble(), 5);
  EXPECT_DOUBLE_EQ(wert(c, "AY1").toDouble(), 6);
  EXPECT_DOUBLE_EQ(wert(c, "BX1").toDouble(), 0);
  EXPECT_DOUBLE_EQ(wert(c, "CZ1").toDouble(), 0);
}

TEST_F(BlockdatenTest, AViewOfNoBlockIsRefused) {
  oeffnen(0);
  Neuanlage n;
  n.byteZuErstellendeAnsicht = 1;
  n.SlideAnzahl = 1;
  EXPECT_FALSE(BlockdatenInDatenbankAbspeichernAnsichten(*bv_, n, false));
  n.byteZuErstellendeAnsicht = 5;
  EXPECT_FALSE(BlockdatenInDatenbankAbspeichernAnsichten(*bv_, n, false));
  EXPECT_EQ(anzahl("SELECT COUNT(*) FROM tblBlockInfo"), 0);
}

TEST_F(BlockdatenTest, AVariantNameInUseAsksForAnother) {
  const QString c = blockAnlegen(0);
  ausfuehren("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) VALUES (?, ?, ?)",
             {"Mit \"Zoll\" O'Neil", nr(c), "a00010.dwg"});
  oeffnen(0);
  Neuanlage n;
  n.bytVarianteAnlegen = 1;
  n.strBlockName = "mit \"zoll\" o'neil";
  n.strVariaBlockName = "b00010.dwg";
  int gefragt = 0;
  prompt_->answer(Answer::Yes);
  ASSERT_TRUE(subBlockdatenInDatenbankAbspeichernVariante(*bv_, n, [&] {
    ++gefragt;
    return QStringLiteral("Ohne 'Zoll'");
  }));
  EXPECT_EQ(gefragt, 1);
  EXPECT_TRUE(gezeigt(100));
  EXPECT_TRUE(gezeigt(101));
  EXPECT_TRUE(gezeigt(102));
  EXPECT_EQ(varianten("Ohne 'Zoll'"), 1);
  EXPECT_EQ(anzahl(QStringLiteral("SELECT COUNT(*) FROM tblVariationBloecke WHERE BlockDateiName = "
                                  "'b00010.dwg' AND BlockID = %1").arg(nr(c))),
            1);

  // No: the name is kept as it is.
  prompt_->asked.clear();
  prompt_->answer(Answer::No);
  n.strBlockName = "Ohne 'Zoll'";
  n.strVariaBlockName = "c00010.dwg";
  ASSERT_TRUE(subBlockdatenInDatenbankAbspeichernVariante(*bv_, n, [&] {
    ++gefragt;
    return QStringLiteral("nie");
  }));
  EXPECT_TRUE(gezeigt(100));
  EXPECT_EQ(gefragt, 1);
  EXPECT_EQ(varianten("Ohne 'Zoll'"), 2);
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(BlockdatenTest, AFreeVariantNameAsksNothing) {
  const QString c = blockAnlegen(0);
  oeffnen(0);
  Neuanlage n;
  n.strBlockName = "Erste";
  n.strVariaBlockName = "a00010.dwg";
  ASSERT_TRUE(subBlockdatenInDatenbankAbspeichernVariante(*bv_, n, [] { return QStringLiteral("x"); }));
  EXPECT_TRUE(prompt_->asked.isEmpty()) << prompt_->asked.join('\n').toStdString();
  EXPECT_EQ(varianten("Erste"), 1);
}

// The names compared are those of the block the variant belongs to, even when
// the record set of variants was last read for another block.
TEST_F(BlockdatenTest, VariantNamesAreComparedWithTheRightBlock) {
  const QString a = blockAnlegen(0);
  const QString b = blockAnlegen(1, "Zweiter");
  ausfuehren("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) VALUES (?, ?, ?)",
             {"Kurz", nr(a), "a00010.dwg"});
  oeffnen(1);
  ASSERT_EQ(bv_->aktivierteBlocknummer, b);
  Neuanlage n;
  n.strBlockName = "Lang";
  n.strVariaBlockName = "a00020.dwg";
  ASSERT_TRUE(subBlockdatenInDatenbankAbspeichernVariante(*bv_, n, {}));
  // Now a variant of the first block, with a name it has.
  bv_->lisBlockBenennung_Click(0);
  ASSERT_EQ(bv_->aktivierteBlocknummer, a);
  n.strBlockName = "Kurz";
  n.strVariaBlockName = "b00010.dwg";
  prompt_->answer(Answer::No);
  ASSERT_TRUE(subBlockdatenInDatenbankAbspeichernVariante(*bv_, n, {}));
  EXPECT_TRUE(gezeigt(100)) << prompt_->asked.join('\n').toStdString();
}

}  // namespace
}  // namespace kolvane

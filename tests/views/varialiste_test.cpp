// The reader of the old variant list files: fixed records of 248 bytes.
#include <QDir>

#include "codepage.h"
#include "kolvanetest.h"
#include "varialiste.h"

namespace kolvane {
namespace {

QByteArray satz(const QString& name, const QString& pfad, char fuell = ' ') {
  QByteArray n = toWindows1252(name), p = toWindows1252(pfad);
  n.append(QByteArray(kVariaNameBreite - n.size(), fuell));
  p.append(QByteArray(kVariaPfadBreite - p.size(), fuell));
  return n + p;
}

QStringList namen(const QList<VariaListenEintrag>& l) {
  QStringList n;
  for (const VariaListenEintrag& e : l) n << e.name + "|" + e.pfad;
  return n;
}

class VariaListeTest : public KolvaneTest {};

TEST_F(VariaListeTest, WholeRecordsCountAndTheirPaddingGoes) {
  const QByteArray zwei = satz("Tisch DN50", "C:\\Blöcke\\tisch50.dwg") + satz("Tisch DN80", "tisch80");
  ASSERT_EQ(zwei.size(), 496);
  writeFile(path("a.dat"), zwei);
  EXPECT_EQ(namen(fctVariaListeLesen(path("a.dat"))),
            (QStringList{"Tisch DN50|C:\\Blöcke\\tisch50.dwg", "Tisch DN80|tisch80"}));

  // 300 bytes: one record and the start of another, which is left out.
  writeFile(path("b.dat"), zwei.left(300));
  EXPECT_EQ(namen(fctVariaListeLesen(path("b.dat"))), QStringList{"Tisch DN50|C:\\Blöcke\\tisch50.dwg"});
}

TEST_F(VariaListeTest, Windows1252TextComesOutAsWritten) {
  // ä ö ü ß Ä Ö Ü, and € and – from the range that differs from Latin-1.
  const QString name = QString::fromUtf8("Größe Ä Ö Ü äöü €5 – x");
  const QString pfad = QString::fromUtf8("\\\\server\\Blöcke\\Türen\\Tür Ü.dwg");
  const QByteArray d = satz(name, pfad);
  EXPECT_EQ(uchar(d[2]), 0xF6) << "written as one byte per letter";
  const auto l = fctVariaListeAusDaten(d);
  ASSERT_EQ(l.size(), 1);
  EXPECT_EQ(l[0].name, name);
  EXPECT_EQ(l[0].pfad, pfad);
}

TEST_F(VariaListeTest, DamagedOrMissingFilesGiveWhatIsWholeAndNoCrash) {
  EXPECT_TRUE(fctVariaListeLesen(path("fehlt.dat")).isEmpty());
  EXPECT_TRUE(fctVariaListeLesen(QString()).isEmpty());
  QDir().mkpath(path("verzeichnis.dat"));
  EXPECT_TRUE(fctVariaListeLesen(path("verzeichnis.dat")).isEmpty());
  EXPECT_TRUE(fctVariaListeAusDaten(QByteArray()).isEmpty());
  EXPECT_TRUE(fctVariaListeAusDaten(satz("A", "a").left(247)).isEmpty());

  // An end-of-file mark after the last record; a record padded with NULs; a
  // blank record between; fields filled to the last byte.
  const QString voll = QString(kVariaNameBreite, 'N');
  const QString vollPfad = QString(kVariaPfadBreite, 'p');
  const QByteArray d = satz("A", "a.dwg") + satz("B", "b.dwg", '\0') + satz("", "") + satz(voll, vollPfad) + "\x1A";
  writeFile(path("c.dat"), d);
  EXPECT_EQ(namen(fctVariaListeLesen(path("c.dat"))),
            (QStringList{"A|a.dwg", "B|b.dwg", voll + "|" + vollPfad}));

  // Bytes of every value, in records of the wrong lengths.
  QByteArray wirr;
  for (int i = 0; i < 1000; ++i) wirr.append(char(i * 37 % 256));
  const auto l = fctVariaListeAusDaten(wirr);
  EXPECT_LE(l.size(), 4);
  for (const auto& e : l) {
    EXPECT_LE(e.name.size(), kVariaNameBreite);
    EXPECT_LE(e.pfad.size(), kVariaPfadBreite);
  }
}

}  // namespace
}  // namespace kolvane

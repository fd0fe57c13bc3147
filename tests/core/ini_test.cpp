#include <QFile>

#include "inifile.h"
#include "kolvanetest.h"

namespace kolvane {
namespace {

class IniTest : public KolvaneTest {};

TEST_F(IniTest, MissingFileKeyAndSectionReadEmpty) {
  const QString ini = path("a.ini");
  EXPECT_EQ(IniGetValue(ini, "S", "k"), "");
  ASSERT_TRUE(IniSetValue(ini, "S", "k", "v"));
  EXPECT_EQ(IniGetValue(ini, "S", "other"), "");
  EXPECT_EQ(IniGetValue(ini, "Other", "k"), "");
}

TEST_F(IniTest, SectionsAndKeysIgnoreCaseValuesAreTrimmed) {
  const QString ini = path("a.ini");
  writeFile(ini, "[AllgemeineDaten]\r\n  Sprache =   deutsch  \r\nQuoted=\" x \"\r\n");
  EXPECT_EQ(IniGetValue(ini, "allgemeinedaten", "SPRACHE"), "deutsch");
  EXPECT_EQ(IniGetValue(ini, "AllgemeineDaten", "quoted"), " x ");
  // A write to another spelling hits the same key and keeps the file's spelling.
  ASSERT_TRUE(IniSetValue(ini, "ALLGEMEINEDATEN", "sprache", "english"));
  const QByteArray content = readFile(ini);
  EXPECT_EQ(content.count("Sprache="), 1);
  EXPECT_EQ(IniGetValue(ini, "AllgemeineDaten", "Sprache"), "english");
}

TEST_F(IniTest, FirstWriteCreatesFileAndFolders) {
  const QString ini = path("deep/er/x.ini");
  ASSERT_TRUE(IniSetValue(ini, "Position", "s1", "3"));
  EXPECT_TRUE(QFile::exists(ini));
  EXPECT_EQ(fctIniInteger(ini, "Position", "s1"), 3);
}

TEST_F(IniTest, LongValueIsReadWhole) {
  const QString ini = path("a.ini");
  const QString value = QString(300, 'x') + "/dbKolvane.mdb";
  ASSERT_TRUE(IniSetValue(ini, "AllgemeineDaten", "DbVerzeichnis0", value));
  EXPECT_EQ(IniGetValue(ini, "AllgemeineDaten", "DbVerzeichnis0"), value);
}

TEST_F(IniTest, NumbersAndBytes) {
  const QString ini = path("a.ini");
  writeFile(ini, "[S]\nn=12\nbad=12a\nbig=300\nneg=-1\nempty=\n");
  EXPECT_EQ(fctIniInteger(ini, "S", "n"), 12);
  EXPECT_EQ(fctIniInteger(ini, "S", "bad"), 0);
  EXPECT_EQ(fctIniInteger(ini, "S", "empty"), 0);
  EXPECT_EQ(fctIniByte(ini, "S", "n"), 12);
  EXPECT_EQ(fctIniByte(ini, "S", "big"), 0);
  EXPECT_EQ(fctIniByte(ini, "S", "neg"), 0);
}

TEST_F(IniTest, WritesKeepOtherLinesAndSections) {
  const QString ini = path("a.ini");
  writeFile(ini, "; comment\n[A]\nx=1\n\n[B]\ny=2\n");
  ASSERT_TRUE(IniSetValue(ini, "A", "z", "3"));
  ASSERT_TRUE(IniSetValue(ini, "C", "w", "4"));
  EXPECT_EQ(IniGetValue(ini, "A", "x"), "1");
  EXPECT_EQ(IniGetValue(ini, "A", "z"), "3");
  EXPECT_EQ(IniGetValue(ini, "B", "y"), "2");
  EXPECT_EQ(IniGetValue(ini, "C", "w"), "4");
  EXPECT_TRUE(readFile(ini).startsWith("; comment"));
  ASSERT_TRUE(subIniSektionLoeschen(ini, "a"));
  EXPECT_EQ(IniGetValue(ini, "A", "x"), "");
  EXPECT_EQ(IniGetValue(ini, "B", "y"), "2");
}

TEST_F(IniTest, CountsKeysUpToTheFirstEmpty) {
  const QString ini = path("a.ini");
  writeFile(ini, "[S]\np1=a\np2=b\np4=d\n");
  EXPECT_EQ(fctAnzahlIniEintraege(ini, "S", "p"), 2);
  subAryInIniSpeichern({"x", "y"}, ini, "S", "q", false);
  EXPECT_EQ(IniGetValue(ini, "S", "p1"), "");  // the section was cleared first
  EXPECT_EQ(IniGetValue(ini, "S", "q1"), "y");
}

TEST_F(IniTest, GarbageAndBinaryFilesNeverCrash) {
  const QString ini = path("a.ini");
  QByteArray garbage;
  for (int i = 0; i < 4096; ++i) garbage.append(char((i * 131 + 7) & 0xFF));
  writeFile(ini, garbage + "\n[S]\nk=v\n=novalue\n[broken\nnoequals\n");
  EXPECT_EQ(IniGetValue(ini, "S", "k"), "v");
  EXPECT_EQ(IniGetValue(ini, "S", ""), "");
  EXPECT_TRUE(IniSetValue(ini, "S", "k2", "v2"));
  EXPECT_EQ(IniGetValue(ini, "S", "k2"), "v2");
}

TEST_F(IniTest, WindowsFilesAreReadAsWindows1252) {
  const QString ini = path("a.ini");
  writeFile(ini, "[S]\nk=Gr\xFC\xDF" "e \x80\n");
  EXPECT_EQ(IniGetValue(ini, "S", "k"), QString::fromUtf8("Grüße €"));
  writeFile(ini, "[S]\nk=Gr\xC3\xBC\xC3\x9F" "e\n");
  EXPECT_EQ(IniGetValue(ini, "S", "k"), QString::fromUtf8("Grüße"));
}

TEST_F(IniTest, UnwritableFileReportsFalse) {
  // Below a regular file no file can be made, whoever runs the test.
  writeFile(path("datei"), "kein Verzeichnis");
  EXPECT_FALSE(IniSetValue(path("datei/x.ini"), "S", "k", "v"));
  EXPECT_EQ(IniGetValue(path("datei/x.ini"), "S", "k"), "");
  EXPECT_EQ(readFile(path("datei")), "kein Verzeichnis");
  // A read-only directory, where permissions bind (not for root).
  const QString dir = path("ro");
  QDir().mkpath(dir);
  QFile::setPermissions(dir, QFile::ReadOwner | QFile::ExeOwner);
  if (!QFile(dir + "/probe").open(QIODevice::WriteOnly)) {
    EXPECT_FALSE(IniSetValue(dir + "/x.ini", "S", "k", "v"));
    EXPECT_EQ(IniGetValue(dir + "/x.ini", "S", "k"), "");
  }
  QFile::setPermissions(dir, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

}  // namespace
}  // namespace kolvane

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "connection.h"
#include "diagnostics.h"
#include "layout.h"
#include "paths.h"
#include "storetest.h"

namespace kolvane {
namespace {

class PathsTest : public StoreTest {};

TEST(Paths, DisplayShorteningStartsAt35Characters) {
  const QString p34 = "/home/anna/Kolvane/Normteile/dbK.m";
  ASSERT_EQ(p34.size(), 34);
  EXPECT_EQ(fctPfadAuf34ZeichenKuerzen(p34), p34);
  const QString p35 = "/home/anna/Kolvane/Normteile/dbK.md";
  ASSERT_EQ(p35.size(), 35);
  EXPECT_EQ(fctPfadAuf34ZeichenKuerzen(p35), "/ho.../anna/Kolvane/Normteile/dbK.md");
  EXPECT_EQ(fctPfadAuf34ZeichenKuerzen("C:\\Kolvane\\Bibliotheken\\Normteile\\dbKolvane.mdb"),
            "C:\\...\\Normteile\\dbKolvane.mdb");
}

TEST(Paths, SplittingAndJoining) {
  QString d, v, n, e;
  ASSERT_TRUE(fctPfadVollAufteilen("/srv/lib/dbKolvane.mdb", d, v, n, e));
  EXPECT_EQ(d + v, fctNativerPfad("/srv/lib/"));
  EXPECT_EQ(n, "dbKolvane");
  EXPECT_EQ(e, ".mdb");
  ASSERT_TRUE(fctPfadVollAufteilen("C:\\Kolvane\\lib\\dbKolvane.mdb", d, v, n, e));
  EXPECT_EQ(d, fctNativerPfad("C:\\"));
  EXPECT_EQ(v, fctNativerPfad("Kolvane\\lib\\"));
  ASSERT_TRUE(fctPfadVollAufteilen("\\\\server\\teile\\lib\\dbKolvane.mdb", d, v, n, e));
  EXPECT_EQ(d, fctNativerPfad("\\\\server\\teile\\"));
  EXPECT_EQ(v, fctNativerPfad("lib\\"));
  EXPECT_FALSE(fctPfadVollAufteilen("lib/dbKolvane.mdb", d, v, n, e));
  EXPECT_FALSE(fctPfadVollAufteilen("", d, v, n, e));
  EXPECT_FALSE(fctPfadVollAufteilen("\\\\\\x", d, v, n, e));

  fctPfadAufteilen("C:\\lib\\000\\0000021.slb", d, v, n, e);
  EXPECT_EQ(d + v + n + e, fctNativerPfad("C:\\lib\\000\\0000021.slb"));
  EXPECT_EQ(n, "0000021");
  EXPECT_EQ(e, ".slb");
  // A four-character extension is split wrongly; library files never have one.
  fctPfadAufteilen("/lib/bild.jpeg", d, v, n, e);
  EXPECT_EQ(e, "jpeg");
  EXPECT_EQ(n, "bild.");
  EXPECT_EQ(fctPfadOhneDatei("C:\\lib\\dbKolvane.mdb"), fctNativerPfad("C:\\lib\\"));

  EXPECT_EQ(fctPfadZusammenfuegen("/lib/", "/000"), "/lib/000");
  EXPECT_EQ(fctPfadZusammenfuegen("/lib", "000\\0000021.slb"), "/lib/000/0000021.slb");
  EXPECT_EQ(fctPfadZusammenfuegen("/", "lib"), "/lib");
  EXPECT_EQ(fctBackslashAmEndeAnfuegen("/lib"), "/lib/");
  EXPECT_EQ(fctBackslashAmEndeAnfuegen("/lib/"), "/lib/");
  EXPECT_EQ(fctGespeicherterPfad("000/0000021.slb"), "000\\0000021.slb");
  QStringList l, u;
  EXPECT_EQ(fctNetzlaufwerkeAuslesen(l, u), 0);
  EXPECT_EQ(l, QStringList{"0"});
}

TEST_F(PathsTest, FilesAreFoundWithoutRegardToCase) {
  writeFile(path("lib/000/Block/00000210.DWG"), "x");
  EXPECT_TRUE(fctDateiExist(path("lib/000/block/00000210.dwg")));
  EXPECT_EQ(fctDateiFinden(path("LIB/000/block/00000210.dwg")), path("lib/000/Block/00000210.DWG"));
  EXPECT_TRUE(fctDateiExist("  " + path("lib/000")));
  EXPECT_FALSE(fctDateiExist(path("lib/001/x")));
  // A stored SlideLib with backslashes resolves below the library.
  writeFile(path("lib/000/0000021.slb"), "x");
  EXPECT_EQ(fctSlideLibPfad(path("lib"), "000\\0000021.slb"), path("lib/000/0000021.slb"));
  EXPECT_EQ(fctSlideAdresse(fctSlideLibPfad(path("lib"), "000\\0000021.slb"), "0A"),
            path("lib/000/0000021.slb") + "(0A)");
  EXPECT_EQ(fctBlockDwgPfad(path("lib"), "000", "0000021", 0), path("lib/000/Block/00000210.DWG"));
  // View 0's slide library is the code and ".slb", without a view digit; the
  // others carry theirs.
  EXPECT_EQ(fctSlidePfad(path("lib"), "000", "0000021", 0, ".slb"), path("lib/000/0000021.slb"));
  EXPECT_EQ(fctSlidePfad(path("lib"), "000", "0000021", 2, ".slb"), path("lib/000/00000212.slb"));
  EXPECT_EQ(fctSlideLibEintrag("000", "0000021", ".slb"), "000\\0000021.slb");
}

TEST_F(PathsTest, AReadOnlyLibraryDirectoryIsDetected) {
  const QString db = neueBibliothek("lib");
  EXPECT_FALSE(fctReadOnlyMitVerzeichnis(path("lib")));
  EXPECT_FALSE(QFileInfo::exists(path("lib/Test.txt")));
  QFile::setPermissions(db, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
  EXPECT_TRUE(fctReadOnlyMitVerzeichnis(path("lib")));
  QFile::setPermissions(db, QFile::ReadOwner | QFile::WriteOwner);
  QFile::setPermissions(path("lib"), QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup |
                                         QFile::ExeGroup);
  EXPECT_TRUE(fctReadOnlyMitVerzeichnis(path("lib")));
  QFile::setPermissions(path("lib"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  EXPECT_TRUE(fctReadOnlyMitVerzeichnis(path("gibtsnicht")));
  // A Test.txt of the user's survives the test.
  writeFile(path("lib/Test.txt"), "meins");
  EXPECT_FALSE(fctReadOnlyMitVerzeichnis(path("lib")));
  EXPECT_EQ(readFile(path("lib/Test.txt")), "meins");
}

TEST_F(PathsTest, FileOperations) {
  writeFile(path("a.txt"), "a");
  EXPECT_TRUE(MoveAFile(path("a.txt"), path("a.txt")));  // same path: nothing happens
  EXPECT_EQ(readFile(path("a.txt")), "a");
  EXPECT_FALSE(CopyAFile(path("a.txt"), path("a.txt")));
  writeFile(path("b.txt"), "b");
  EXPECT_TRUE(MoveAFile(path("a.txt"), path("b.txt")));  // overwrites
  EXPECT_EQ(readFile(path("b.txt")), "a");
  EXPECT_FALSE(QFileInfo::exists(path("a.txt")));
  EXPECT_TRUE(DeleteAFile(path("a.txt")));  // missing: no error
  EXPECT_FALSE(MoveAFile(path("a.txt"), path("c.txt")));
  EXPECT_EQ(fehlerBerichte(), 1);
  EXPECT_TRUE(CopyAFile(path("b.txt"), path("c.txt")));
  writeFile(path("d/x/1.dwg"), "1");
  writeFile(path("d/2.DWG"), "2");
  writeFile(path("d/3.slb"), "3");
  EXPECT_EQ(SearchDWGFiles(path("d"), path("liste.txt")), QStringList{"2.DWG"});
  EXPECT_EQ(readFile(path("liste.txt")), "2.DWG\n");
  EXPECT_EQ(fctSearchFilesAry(path("d"), ".dwg", true), QStringList({"2.DWG", "x/1.dwg"}));
  EXPECT_TRUE(CopyAFolder(path("d"), path("e")));
  EXPECT_TRUE(MoveAFolder(path("e"), path("f")));
  EXPECT_FALSE(MoveAFolder(path("d"), path("f")));  // the target is there
  EXPECT_TRUE(fctFolderExistMitDatei(path("f/x/1.dwg")));
  EXPECT_EQ(fctFolderExistRueckgabe(path("f/x/1.dwg")), path("f/x/"));
  EXPECT_TRUE(DeleteAFolder(path("f")));
  EXPECT_FALSE(fctFolderExist(path("f")));
  EXPECT_TRUE(fctMkDirAlle(path("g/h/i")));
  EXPECT_EQ(fctDateiEndungUmbenennen("x/0000021.slb", ".sld"), "x/0000021.sld");
}

class BlockDateienTest : public StoreTest {
 protected:
  void SetUp() override {
    StoreTest::SetUp();
    db_ = neueBibliothek("lib");
    lib_ = path("lib");
    ASSERT_TRUE(conn_.open(db_));
    blockNr_ = blockAnlegen(conn_, "0000021", 1, "Winkel", "000\\0000021.slb");
  }
  // The files DeleteAFile was asked for, in order (from the debug trace).
  QStringList geloescht() {
    QStringList out;
    for (const QByteArray& l : readFile(errorFilePath()).split('\n'))
      if (l.startsWith("DeleteAFile: DeleteFile "))
        out << QDir(lib_).relativeFilePath(QString::fromUtf8(l.mid(24)));
    return out;
  }
  QString db_, lib_;
  Connection conn_;
  qint64 blockNr_ = 0;
};

TEST_F(BlockDateienTest, BlockFilesGoInTheirOrderAndMissingOnesAreNoError) {
  writeFile(path("lib/000/0000021.slb"), "s");
  writeFile(path("lib/000/00000212.slb"), "s");
  writeFile(path("lib/000/00000210.dat"), "d");
  writeFile(path("lib/000/Block/00000210.dwg"), "w");
  writeFile(path("lib/000/Block/00000213.dwg"), "w");
  // Variants of views 0 and 2: suffix 0 and 1 of view 0, suffix 0 of view 2.
  writeFile(path("lib/000/Block/Varia/00000210.dwg"), "v");
  writeFile(path("lib/000/Block/Varia/00100210.dwg"), "v");
  writeFile(path("lib/000/Block/Varia/00000212.dwg"), "v");
  writeFile(path("lib/000/0000022.slb"), "another block");
  for (const char* n : {"00000210.dwg", "00100210.dwg", "00000212.dwg", "fremd.dwg"})
    ASSERT_TRUE(conn_.execute("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) "
                              "VALUES ('v', ?, ?)", {blockNr_, QString(n)}));
  diagnostics().booDebug = true;
  ASSERT_TRUE(DateienBlockLoeschen(conn_, lib_, "000\\0000021.slb", "0000021"));
  diagnostics().booDebug = false;
  const QStringList order = geloescht();
  const QStringList expected = {
      "000/0000021.slb", "000/00000211.slb", "000/00000212.slb", "000/00000213.slb",
      "000/00000214.slb", "000/00000210.dat", "000/00000211.dat", "000/00000212.dat",
      "000/00000213.dat", "000/00000214.dat", "000/Block/00000210.dwg", "000/Block/00000211.dwg",
      "000/Block/00000212.dwg", "000/Block/00000213.dwg", "000/Block/00000214.dwg",
      "000/Block/Varia/00000210.dwg", "000/Block/Varia/00100210.dwg",
      "000/Block/Varia/00000212.dwg"};
  EXPECT_EQ(order, expected);
  EXPECT_EQ(QDir(path("lib/000")).entryList(QDir::Files), QStringList{"0000022.slb"});
  EXPECT_TRUE(QDir(path("lib/000/Block/Varia")).isEmpty());
  EXPECT_EQ(conn_.scalar("SELECT count(*) FROM tblVariationBloecke").toInt(), 1);
  EXPECT_EQ(fehlerBerichte(), 0);
}

TEST_F(BlockDateienTest, OneViewAndNewVariantNames) {
  writeFile(path("lib/000/00000212.slb"), "s");
  writeFile(path("lib/000/00000212.sld"), "s");
  writeFile(path("lib/000/0000021.slb"), "s");
  writeFile(path("lib/000/Block/00000212.dwg"), "w");
  writeFile(path("lib/000/Block/00000210.dwg"), "w");
  writeFile(path("lib/000/Block/Varia/00000212.dwg"), "v");
  EXPECT_EQ(fctVariaBlockName(lib_, "000", "0000021", 2), "00100212.dwg");
  EXPECT_EQ(fctVariaBlockName(lib_, "000", "0000021", 1), "00000211.dwg");
  ASSERT_TRUE(DateienBlockLoeschenEinzelenAnsicht(conn_, lib_, "000\\0000021.slb", "0000021", 2));
  EXPECT_EQ(QDir(path("lib/000")).entryList(QDir::Files), QStringList{"0000021.slb"});
  EXPECT_EQ(QDir(path("lib/000/Block")).entryList(QDir::Files), QStringList{"00000210.dwg"});
  EXPECT_EQ(fctVariaBlockName(lib_, "000", "0000021", 2), "00000212.dwg");
}

}  // namespace
}  // namespace kolvane

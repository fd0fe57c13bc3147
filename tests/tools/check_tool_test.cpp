#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include "connection.h"
#include "kolvanetest.h"
#include "prefix.h"
#include "schema.h"

namespace kolvane {

namespace {

struct Lauf {
  int code = -1;
  QString aus, fehler;
};

}  // namespace

// "kolvane-tool check" as a user runs it, on a library of two blocks.
class CheckToolTest : public KolvaneTest {
 protected:
  void SetUp() override {
    KolvaneTest::SetUp();
    installData();
    bib_ = path("lib");
    QDir().mkpath(bib_ + "/000/Block");
    ASSERT_TRUE(Mk_Datenbank(bib_ + "/dbKolvane.mdb"));
    QStringList prefix;
    ASSERT_TRUE(fctPrefixEinlesen(10, prefix));
    Connection conn;
    ASSERT_TRUE(conn.open(bib_ + "/dbKolvane.mdb"));
    for (int slot = 0; slot < 2; ++slot) {
      const QString code = fctBlockCode("000", slot, prefix);
      ASSERT_TRUE(conn.execute("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0) "
                               "VALUES (?, ?, 1, 'B')",
                               {code, "000\\" + code + ".slb"}));
      writeFile(bib_ + "/000/" + code + ".slb", "slides");
      writeFile(bib_ + "/000/Block/" + code + "0.dwg", "drawing");
      code_ << code;
    }
    frei_ = fctBlockCode("000", 9, prefix);
  }

  Lauf laufen(const QStringList& args) {
    QProcess p;
    QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
    umgebung.insert("HOME", path("home"));
    umgebung.insert("XDG_CONFIG_HOME", path("home/.config"));
    umgebung.insert("TMPDIR", path("home/tmp"));
    QDir().mkpath(path("home/tmp"));
    p.setProcessEnvironment(umgebung);
    p.start(QStringLiteral(KOLVANE_TOOL_EXE), QStringList{"check"} + args);
    EXPECT_TRUE(p.waitForFinished(30000)) << args.join(' ').toStdString();
    if (p.state() != QProcess::NotRunning) p.kill();
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1,
            QString::fromUtf8(p.readAllStandardOutput()), QString::fromUtf8(p.readAllStandardError())};
  }

  QString bib_;
  QStringList code_;
  QString frei_;
};

TEST_F(CheckToolTest, ExitStatusTellsCleanDamagedAndBadCall) {
  const Lauf sauber = laufen({bib_});
  EXPECT_EQ(sauber.code, 0) << sauber.aus.toStdString() << sauber.fehler.toStdString();
  EXPECT_TRUE(sauber.aus.startsWith("Keine Befunde")) << sauber.aus.toStdString();
  // The database file stands for its library.
  EXPECT_EQ(laufen({bib_ + "/dbKolvane.mdb"}).code, 0);

  QFile::remove(bib_ + "/000/Block/" + code_[1] + "0.dwg");
  const Lauf kaputt = laufen({bib_});
  EXPECT_EQ(kaputt.code, 1);
  const QStringList zeilen = kaputt.aus.split('\n', Qt::SkipEmptyParts);
  ASSERT_EQ(zeilen.size(), 2) << kaputt.aus.toStdString();
  EXPECT_EQ(zeilen[0], "Zeile ohne Datei: " + code_[1] + ": " +
                           QDir::toNativeSeparators("000/Block/" + code_[1] + "0.dwg") + " fehlt");
  EXPECT_TRUE(zeilen[1].startsWith("1 Befund, davon 0")) << zeilen[1].toStdString();

  for (const QStringList& falsch :
       {QStringList{}, QStringList{bib_, "--fix"}, QStringList{bib_, bib_}, QStringList{path("nichts")}}) {
    const Lauf l = laufen(falsch);
    EXPECT_EQ(l.code, 2) << falsch.join(' ').toStdString();
    EXPECT_TRUE(l.aus.isEmpty());
    EXPECT_FALSE(l.fehler.isEmpty());
  }
  // A directory without a library can't be opened.
  QDir().mkpath(path("leer"));
  EXPECT_EQ(laufen({path("leer")}).code, 2);
}

TEST_F(CheckToolTest, RepairEndsCleanWhenEverythingWasRepairable) {
  writeFile(bib_ + "/000/" + frei_ + ".slb", "stray");
  const Lauf l = laufen({"--repair", bib_});
  EXPECT_EQ(l.code, 0) << l.aus.toStdString() << l.fehler.toStdString();
  EXPECT_TRUE(l.aus.contains("Datei ohne Zeile: ")) << l.aus.toStdString();
  EXPECT_TRUE(l.aus.contains("Nach der Reparatur: keine Befunde")) << l.aus.toStdString();
  EXPECT_TRUE(QFileInfo(bib_ + "/Verwaist/000/" + frei_ + ".slb").isFile());
  EXPECT_FALSE(QFileInfo::exists(bib_ + "/000/" + frei_ + ".slb"));

  // A missing drawing stays: exit 1 after the repair as well.
  writeFile(bib_ + "/000/" + frei_ + ".slb", "stray again");
  QFile::remove(bib_ + "/000/" + code_[0] + ".slb");
  const Lauf rest = laufen({bib_, "--repair"});
  EXPECT_EQ(rest.code, 1) << rest.aus.toStdString();
  EXPECT_TRUE(rest.aus.contains("Nicht repariert (braucht eine Entscheidung): Zeile ohne Datei: " + code_[0]))
      << rest.aus.toStdString();
  EXPECT_TRUE(rest.aus.contains("Nach der Reparatur: 1 Befund bleibt")) << rest.aus.toStdString();
  EXPECT_TRUE(QFileInfo(bib_ + "/Verwaist/000/" + frei_ + " (2).slb").isFile());
}

}  // namespace kolvane

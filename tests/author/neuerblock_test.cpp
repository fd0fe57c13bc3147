#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include "authortest.h"
#include "karteidateneingabe.h"
#include "labels.h"
#include "neuanlagejournal.h"
#include "neuerblock.h"
#include "settings.h"

namespace kolvane {
namespace {

// The new block command against the fake host. The host's answers to the
// strings the command sends are played by onSendCommand: the drawing of
// "._-wblock", the slide of "._mslide" and the script of "._shell", run for
// real with the built slidelib tool.
class NeuerBlockTest : public AuthorTest {
 protected:
  void SetUp() override {
    AuthorTest::SetUp();
    automationGebunden();
    host_.variables.insert("VIEWSIZE", 120.0);
    settings_->setup.longVorschaudiaBeimErzeugen = 0;
    host_.onSendCommand = [this](const QString& c) { spielen(c); };
  }
  void TearDown() override {
    nb_.reset();
    AuthorTest::TearDown();
  }

  static QString bis(const QString& c, int von, QChar ende) { return c.mid(von, c.indexOf(ende, von) - von); }
  void spielen(const QString& c) {
    if (c.startsWith("._-wblock ")) {
      writeFile(bis(c, 10, '\r'), "drawing");
    } else if (c.startsWith("._mslide ")) {
      writeFile(bis(c, 9, '\r'), slideBytes(++slides_));
    } else if (c.startsWith("._shell \"")) {
      QProcess sh;
      sh.start("/bin/sh", {bis(c, 9, '"')});
      sh.waitForFinished(30000);
      shellStatus_ = sh.exitCode();
      shellFehler_ = sh.readAllStandardError();
    }
  }
  void starten(int pos = 0) {
    oeffnen(pos);
    nb_ = std::make_unique<NeuerBlock>(*settings_, *bv_, *bridge_);
    host_.transcript.clear();
  }
  // Two insertion points, the end of the asking, and a frame.
  void zweiPunkte() {
    host_.points = {HostPoint{10, 20, 0}, HostPoint{30, 40, 0}, std::nullopt, HostPoint{0, 0, 0},
                    HostPoint{100, 50, 0}};
    host_.selectionCounts.insert("SS6", 3);
  }
  QStringList gesendet() const {
    QStringList out;
    for (const QString& l : host_.only({"sendCommand"})) out << l.mid(12);
    return out;
  }
  QStringList filedia() const {
    QStringList out;
    for (const QString& l : host_.transcript)
      if (l.contains("|filedia", Qt::CaseInsensitive)) out << l;
    return out;
  }

  std::unique_ptr<NeuerBlock> nb_;
  int slides_ = 0;
  int shellStatus_ = -1;
  QByteArray shellFehler_;
};

TEST_F(NeuerBlockTest, ANewBlockWithTwoPoints) {
  starten(0);
  const QString c = code(0);
  const QString t = nb_->temp();
  zweiPunkte();
  prompt_->dialogResult("frmKarteiDateneingabe", 1, [this] {
    nb_->kartei()->txtBenennung[0] = "Flansch DN 50";
    nb_->kartei()->txtLayer = "Schrauben";
  });
  nb_->combutNeu_Click();

  const QString mark = "._donut 0 2\r";
  const QString rot = "._change (entlast)  _prop _col 1  ";
  const QStringList erwartet{
      "._undo _m ",
      mark + "10,20,0\r\r", rot,
      mark + "30,40,0\r\r", rot,
      "._undo _b ", "._undo _m ",
      "._-wblock " + t + "/" + c + "0.dwg\r\r10,20,0\r_p \r",
      "._undo _b ", "._undo _m ",
      "._donut 0 10\r10,20,0\r\r", rot, "._mslide " + t + "/0A.sld\r",
      "._erase (entlast)  ",
      "._donut 0 10\r30,40,0\r\r", rot, "._mslide " + t + "/0B.sld\r",
      "._erase (entlast)  ",
      "._shell \"" + t + "/Slidelib.sh\"\r",
      "._undo _b "};
  EXPECT_EQ(gesendet(), erwartet);
  EXPECT_EQ(shellStatus_, 0) << shellFehler_.toStdString();
  // The user is asked in words: point A, point B, the frame's corners.
  const QStringList fragen = host_.only({"getPoint", "getCorner"});
  ASSERT_EQ(fragen.size(), 5);
  EXPECT_TRUE(fragen[0].contains(labels().fctBeschriftMsgboxZuordnen(58))) << fragen[0].toStdString();
  EXPECT_TRUE(fragen[1].contains(labels().fctBeschriftMsgboxZuordnen(61))) << fragen[1].toStdString();
  EXPECT_TRUE(fragen[3].contains(labels().fctBeschriftMsgboxZuordnen(69))) << fragen[3].toStdString();
  EXPECT_TRUE(fragen[4].startsWith("getCorner|0,0,0|")) << fragen[4].toStdString();
  EXPECT_EQ(filedia(), QStringList({"getVariable|filedia", "setVariable|filedia|0",
                                    "setVariable|filedia|1"}));
  EXPECT_EQ(host_.variables.value("FILEDIA").toInt(), 1);

  EXPECT_EQ(wert(c, "M0").toString(), "Flansch DN 50");
  EXPECT_EQ(wert(c, "Layer").toString(), "Schrauben");
  EXPECT_EQ(wert(c, "BlkName0").toString(), "Block0-1");
  EXPECT_EQ(wert(c, "SlideLib").toString(), "000\\" + c + ".slb");
  EXPECT_DOUBLE_EQ(wert(c, "AX0").toDouble(), 10);
  EXPECT_DOUBLE_EQ(wert(c, "AY0").toDouble(), 20);
  EXPECT_DOUBLE_EQ(wert(c, "BX0").toDouble(), 30);
  EXPECT_DOUBLE_EQ(wert(c, "BY0").toDouble(), 40);
  EXPECT_DOUBLE_EQ(wert(c, "CX0").toDouble(), 0);
  EXPECT_TRUE(wert(c, "AX1").isNull());
  EXPECT_EQ(readFile(bib_ + "/000/Block/" + c + "0.dwg"), "drawing");
  const QByteArray slb = readFile(bib_ + "/000/" + c + ".slb");
  EXPECT_TRUE(slb.startsWith("AutoCAD Slide Library")) << slb.left(30).toStdString();
  EXPECT_FALSE(QFileInfo::exists(t));
  EXPECT_FALSE(QFileInfo::exists(fctJournalPfad(bib_)));
  EXPECT_FALSE(nb_->laeuft());
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join('\n').toStdString();
  EXPECT_TRUE(prompt_->exhausted());
  EXPECT_EQ(bv_->aryTBloecke[0].BlkName0, "Block0-1");
}

TEST_F(NeuerBlockTest, AnOccupiedSlotIsRefusedWithoutTheViewChooser) {
  blockAnlegen(0);
  starten(0);
  zweiPunkte();
  nb_->combutNeu_Click();
  EXPECT_TRUE(gezeigt(933));
  EXPECT_TRUE(gesendet().isEmpty()) << gesendet().join('\n').toStdString();
  EXPECT_TRUE(filedia().isEmpty());
  EXPECT_EQ(anzahl("SELECT COUNT(*) FROM tblBlockInfo"), 1);
}

TEST_F(NeuerBlockTest, AReadOnlyLibraryIsRefusedBeforeAnyPick) {
  starten(0);
  lib_->booSchreibgeschuetzt = true;
  zweiPunkte();
  nb_->combutNeu_Click();
  EXPECT_TRUE(gezeigt(934)) << prompt_->asked.join('\n').toStdString();
  EXPECT_TRUE(gezeigt(935));
  EXPECT_TRUE(gesendet().isEmpty());
  EXPECT_TRUE(host_.only({"getPoint"}).isEmpty());
  EXPECT_EQ(anzahl("SELECT COUNT(*) FROM tblBlockInfo"), 0);
}

TEST_F(NeuerBlockTest, ACancelledDataCardLeavesNothing) {
  starten(0);
  const QString c = code(0);
  const QString t = nb_->temp();
  zweiPunkte();
  prompt_->dialogResult("frmKarteiDateneingabe", 0);
  nb_->combutNeu_Click();
  EXPECT_EQ(anzahl("SELECT COUNT(*) FROM tblBlockInfo"), 0);
  EXPECT_FALSE(QFileInfo::exists(bib_ + "/000/" + c + ".slb"));
  EXPECT_FALSE(QFileInfo::exists(bib_ + "/000/Block/" + c + "0.dwg"));
  EXPECT_FALSE(QFileInfo::exists(t));
  EXPECT_FALSE(QFileInfo::exists(fctJournalPfad(bib_)));
  const QStringList s = gesendet();
  const qsizetype marke = s.lastIndexOf("._undo _m ");
  ASSERT_GE(marke, 0);
  EXPECT_EQ(s.mid(marke + 1).count("._undo _b "), 1) << s.join('\n').toStdString();
  EXPECT_EQ(s.last(), "._undo _b ");
  EXPECT_EQ(filedia().last(), "setVariable|filedia|1");
  EXPECT_EQ(host_.variables.value("FILEDIA").toInt(), 1);
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(NeuerBlockTest, AnEmptySelectionAnsweredNoWritesNothing) {
  starten(0);
  const QString c = code(0);
  zweiPunkte();
  host_.selectionCounts.insert("SS6", 0);
  host_.strings = {QStringLiteral("N")};
  nb_->combutNeu_Click();
  for (const QString& s : gesendet()) EXPECT_FALSE(s.startsWith("._-wblock")) << s.toStdString();
  EXPECT_EQ(host_.only({"getString"}).size(), 1);
  EXPECT_EQ(anzahl("SELECT COUNT(*) FROM tblBlockInfo"), 0);
  EXPECT_FALSE(QFileInfo::exists(bib_ + "/000/Block/" + c + "0.dwg"));
  EXPECT_FALSE(QFileInfo::exists(nb_->temp()));
  EXPECT_EQ(gesendet().last(), "._undo _b ");
  EXPECT_EQ(host_.variables.value("FILEDIA").toInt(), 1);
  EXPECT_EQ(prompt_->unexpected(), 0);
}

}  // namespace
}  // namespace kolvane

// The demo library as `kolvane-tool demo-library` makes it, looked at through
// the browser and the insert's view choice.
#include <QFileInfo>
#include <QProcess>

#include "browsertest.h"
#include "connection.h"
#include "einfuegepunktwahl.h"

namespace kolvane {
namespace {

class DemoTest : public BrowserTest {
 protected:
  void demoOeffnen() {
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("HOME", path("home"));
    env.insert("XDG_CONFIG_HOME", path("home/.config"));
    tool.setProcessEnvironment(env);
    tool.start(QStringLiteral(KOLVANE_TOOL), {"demo-library", path("demo")});
    ASSERT_TRUE(tool.waitForFinished(120000));
    ASSERT_EQ(tool.exitCode(), 0) << tool.readAll().toStdString();
    db_ = path("demo/dbKolvane.mdb");
    settings_->aryVerzeichnisseDatenbank = QStringList{db_};
    settings_->strAktuelleDatenbank = db_;
    oeffnen();
  }
};

TEST_F(DemoTest, TheGateValvesSideViewAtTheOriginCyclesAndIsOffered) {
  demoOeffnen();
  Connection c;
  ASSERT_TRUE(c.open(db_));
  const QString block = c.scalar("SELECT Block FROM tblBlockInfo WHERE M0 = 'Schieber DN50'").toString();
  ASSERT_FALSE(block.isEmpty());
  EXPECT_EQ(c.scalar("SELECT AX2 FROM tblBlockInfo WHERE Block = ?", {block}).toDouble(), 0.0);
  EXPECT_TRUE(c.scalar("SELECT AX1 FROM tblBlockInfo WHERE Block = ?", {block}).isNull());

  // It follows the 21 fittings of folder 000: slot 21, the second of page 2.
  // On it the views command is on, and holding the button shows view 0,
  // view 2, view 0.
  ASSERT_EQ(bv_->intBilder, 20);
  bv_->GeheZuSeite(1, 1, "000");
  ASSERT_EQ(bv_->aktivierteBlocknummer, block);
  EXPECT_TRUE(bv_->model().enabled.value("combutAnsicht"));
  const QPoint at(10, 10);
  bv_->sldBlockverwaltung_LButtonDown(bv_->pos, at);
  EXPECT_EQ(QFileInfo(bv_->model().bilder[size_t(bv_->pos)].slidePath).fileName(), block + ".slb(0A)");
  QStringList shown;
  for (int i = 0; i < 2; ++i) {
    ASSERT_TRUE(bv_->Timer2_Timer(true, at));
    shown << QFileInfo(bv_->cyclingSlide()).fileName();
  }
  EXPECT_EQ(shown, QStringList({block + "2.slb(2A)", block + ".slb(0A)"}));

  // The insert's view choice offers it.
  EXPECT_EQ(Einfuegepunktwahl::AnsichtenZurWahl(bv_->bibliothek().connDb, block), (std::vector<uint8_t>{0, 2}));
}

}  // namespace
}  // namespace kolvane

// The board of points as a window, and the insert's place in the main window.
#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QFrame>
#include <QKeyEvent>
#include <QPushButton>
#include <QTimer>

#include "einfuegenanbindung.h"
#include "einfuegentest.h"
#include "frmblockverwaltung.h"
#include "frmvariaeinfuegepkte.h"
#include "slideview.h"

namespace kolvane {
namespace {

TEST(FrmVariaEinfuegepkte, ShowsThePointsAndFramesTheChoice) {
  VariaEinfuegepkte b;
  b.Form_Load(0, 2, "/l/000/x.slb", "/p/frei2.sld");
  FrmVariaEinfuegepkte f(b);
  f.resize(480, 200);
  f.show();
  EXPECT_EQ(f.objectName(), "frmVariaEinfuegepkte");
  EXPECT_EQ(f.bestaetigen()->objectName(), "cmbEinfuegen");
  EXPECT_EQ(f.slide(1)->path(), "/l/000/x.slb(0B)");
  EXPECT_EQ(f.slide(2)->path(), "/p/frei2.sld");
  EXPECT_TRUE(f.slide(1)->isVisible());
  EXPECT_FALSE(f.slide(2)->isVisible()) << "two points: the third slot stays empty";
  EXPECT_TRUE(f.markierungsumrandung()->geometry().contains(f.slide(0)->geometry()));

  emit f.slide(1)->leftButtonDown(1);
  EXPECT_TRUE(f.markierungsumrandung()->geometry().contains(f.slide(1)->geometry()));
  emit f.slide(2)->leftButtonDown(2);  // blank: no choice
  EXPECT_EQ(b.gewaehlt(), 1);
  f.bestaetigen()->click();
  EXPECT_EQ(f.result(), QDialog::Accepted);
  EXPECT_EQ(b.NummerEinfuegepkt(), 2);

  // The marking board; closing it cancels.
  b.Form_Load(1, 5, "/l/000/x1.slb", "/p/frei2.sld", true);
  FrmVariaEinfuegepkte m(b);
  m.show();
  EXPECT_EQ(m.bestaetigen()->objectName(), "cmbMarkieren");
  EXPECT_TRUE(m.slide(4)->isVisible());
  EXPECT_FALSE(m.slide(5)->isVisible()) << "five points: the sixth slot stays empty";
  m.reject();
  EXPECT_TRUE(b.geschlossen());
  EXPECT_EQ(b.NummerEinfuegepkt(), 0);
}

// Shows the board as the modal run does and waits until it has the keyboard.
bool aktiv(QWidget& w) {
  w.show();
  w.activateWindow();
  QElapsedTimer t;
  t.start();
  while (!w.isActiveWindow() && t.elapsed() < 3000) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  return w.isActiveWindow();
}

// A key as typed: press and release to the widget with the focus.
void taste(Qt::Key k) {
  QWidget* w = QApplication::focusWidget();
  ASSERT_NE(w, nullptr);
  QKeyEvent druck(QEvent::KeyPress, k, Qt::NoModifier);
  QApplication::sendEvent(w, &druck);
  QKeyEvent los(QEvent::KeyRelease, k, Qt::NoModifier);
  QApplication::sendEvent(w, &los);
}

TEST(FrmVariaEinfuegepkte, ArrowsMoveTheFrameOverThePointsReturnTakesItEscapeCancels) {
  VariaEinfuegepkte b;
  b.Form_Load(0, 2, "/l/000/x.slb", "/p/frei2.sld");
  {
    FrmVariaEinfuegepkte f(b);
    ASSERT_TRUE(aktiv(f));
    taste(Qt::Key_Right);
    EXPECT_EQ(b.gewaehlt(), 1);
    EXPECT_TRUE(f.markierungsumrandung()->geometry().contains(f.slide(1)->geometry()));
    taste(Qt::Key_Right);  // no third point: the frame stays, the focus too
    EXPECT_EQ(b.gewaehlt(), 1);
    EXPECT_EQ(QApplication::focusWidget(), f.bestaetigen());
    taste(Qt::Key_Down);
    EXPECT_EQ(b.gewaehlt(), 1);
    if (!qEnvironmentVariableIsEmpty("KOLVANE_SHOTS"))
      f.grab().save(qEnvironmentVariable("KOLVANE_SHOTS") + "/einfuegepunkte.png");
    taste(Qt::Key_Return);
    EXPECT_EQ(f.result(), QDialog::Accepted);
    EXPECT_EQ(b.NummerEinfuegepkt(), 2);
  }
  // Five points in two rows: Down goes to the row below where there is a point.
  b.Form_Load(1, 5, "/l/000/x1.slb", "/p/frei2.sld");
  {
    FrmVariaEinfuegepkte f(b);
    ASSERT_TRUE(aktiv(f));
    taste(Qt::Key_Down);
    EXPECT_EQ(b.gewaehlt(), 3);
    taste(Qt::Key_Right);
    taste(Qt::Key_Right);
    EXPECT_EQ(b.gewaehlt(), 4);
    taste(Qt::Key_Up);
    EXPECT_EQ(b.gewaehlt(), 1);
    taste(Qt::Key_Right);
    taste(Qt::Key_Down);
    EXPECT_EQ(b.gewaehlt(), 2) << "no point below the third";
    taste(Qt::Key_Escape);
    EXPECT_EQ(f.result(), QDialog::Rejected);
    EXPECT_TRUE(b.geschlossen());
    EXPECT_EQ(b.NummerEinfuegepkt(), 0);
  }
}

class EinfuegenFenster : public EinfuegenTest {};

TEST_F(EinfuegenFenster, OptionsCommandsAndBoardInTheMainWindow) {
  automationGebunden();
  settings_->setup.longEinfuegenLayer0 = 0;
  settings_->setup.longAbfrageYFaktor = 1;
  blockAnlegen(0, "Tisch", {{0, 0, 0}, {2, 0, 0}});
  oeffnen();
  FrmBlockverwaltung frm(*bv_);
  bv_->hooks.anzeigen = [&frm](const PageModel& m) { frm.zeigen(m); };
  einfuegenAnbinden(frm, *ins_, true);
  bv_->Anzeigen();

  // The boxes started from the setup and drive the options; on the keystroke
  // route the angle and the X factor lock each other.
  EXPECT_EQ(ins_->optionen.byteAbfrageYFaktor, 1);
  frm.option("checkWinkel")->setChecked(true);
  EXPECT_EQ(ins_->optionen.byteAbfrageEinfuegewinkel, 1);
  EXPECT_FALSE(frm.option("checkXFrage")->isEnabled());
  frm.option("checkWinkel")->setChecked(false);
  EXPECT_TRUE(frm.option("checkXFrage")->isEnabled());
  frm.option("checkXFrage")->setChecked(true);
  EXPECT_FALSE(frm.option("checkWinkel")->isEnabled());
  frm.option("checkXFrage")->setChecked(false);
  frm.option("checkYFrage")->setChecked(false);

  // The board through the window: confirmed on point B.
  QTimer::singleShot(0, [] {
    for (QWidget* w : QApplication::topLevelWidgets())
      if (auto* d = qobject_cast<FrmVariaEinfuegepkte*>(w); d && d->isVisible()) {
        emit d->slide(1)->doubleClicked(1);
      }
  });
  prompt_->dialogResult("frmVariaEinfuegepkte", 1, [this] {
    EXPECT_EQ(ins_->wahl.boardZeigen(ins_->wahl.board), VariaEinfuegepkte::kBestaetigt);
  });
  // The button runs the insert.
  ASSERT_TRUE(frm.befehlAktiv("cmbEinfuegen"));
  frm.button("cmbEinfuegen")->click();
  EXPECT_EQ(gesendet().value(1), "sendCommand|._move (entlast)  2,0,0 ");
  log_.clear();
  prompt_->dialogResult("frmVariaEinfuegepkte", 1);
  frm.action("mnuBBlockEinfuegen")->trigger();
  EXPECT_EQ(gesendet().size(), 1);
}

}  // namespace
}  // namespace kolvane

// frmDefMenue in its window, opened by the main form's command.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include "defmenueanbindung.h"
#include "defmenuetest.h"
#include "frmblockverwaltung.h"
#include "frmdefmenue.h"

namespace kolvane {
namespace {

// Shows the program's forms for real and leaves every other question to the
// scripted prompt.
class FormularPrompt final : public Prompt {
 public:
  explicit FormularPrompt(ScriptedPrompt& s) : s_(s) {}
  Answer message(const MessageRequest& r) override { return s_.message(r); }
  Answer messageWithCheck(const MessageRequest& r, const QString& c, bool* b) override {
    return s_.messageWithCheck(r, c, b);
  }
  std::optional<QString> input(const QString& p, const QString& t, const QString& d) override {
    return s_.input(p, t, d);
  }
  std::optional<QString> inputWithCheck(const QString& p, const QString& t, const QString& d,
                                        const QString& c, bool* b) override {
    return s_.inputWithCheck(p, t, d, c, b);
  }
  PickResult pick(const QStringList& i, const QString& p, const QString& t, int w) override {
    return s_.pick(i, p, t, w);
  }
  QString openFile(const QString& t, const QString& d, const QString& f, const QString& n) override {
    return s_.openFile(t, d, f, n);
  }
  QString saveFile(const QString& t, const QString& d, const QString& f, const QString& n) override {
    return s_.saveFile(t, d, f, n);
  }
  QString chooseFolder(const QString& t, const QString& d) override { return s_.chooseFolder(t, d); }
  int dialog(const QString& name, const std::function<int()>& show) override {
    s_.asked << "dialog|" + name;
    return show();
  }

 private:
  ScriptedPrompt& s_;
};

FrmDefMenue* offenerDialog() {
  for (QWidget* w : QApplication::topLevelWidgets())
    if (auto* d = qobject_cast<FrmDefMenue*>(w); d && d->isVisible()) return d;
  return nullptr;
}

class FrmDefMenueTest : public DefMenueTest {};

TEST_F(FrmDefMenueTest, TheCommandOpensTheDialogAndTheHeadingFollowsTheSave) {
  oeffnen();
  // A definition file to load through the dialog's button.
  writeFile(path("vorlage.dat"),
            QByteArray("Nennweite").leftJustified(20, ' ') + QByteArray("DN 50").leftJustified(100, ' ') +
                QByteArray("Werkstoff").leftJustified(20, ' ') + QByteArray("St 37 \"roh\" 5 %").leftJustified(100, ' '));
  FrmBlockverwaltung frm(*bv_);
  bv_->hooks.anzeigen = [&frm](const PageModel& m) { frm.zeigen(m); };
  defMenueAnbinden(frm, *bv_);
  bv_->Anzeigen();
  auto* kopf = frm.findChild<QLabel*>("labBezeichnung");
  ASSERT_TRUE(kopf);
  EXPECT_EQ(kopf->text(), "Benennung");
  ASSERT_TRUE(frm.befehlAktiv("mnuEDefMenue"));

  FormularPrompt formulare(*prompt_);
  setPrompt(&formulare);
  bool gesehen = false;
  QTimer::singleShot(0, [&] {
    FrmDefMenue* d = offenerDialog();
    ASSERT_TRUE(d);
    gesehen = true;
    ASSERT_EQ(d->txtBenennung().size(), 10);
    EXPECT_EQ(d->txtBenennung()[0]->text(), "Benennung");
    EXPECT_TRUE(d->checkGlobal()->isChecked()) << "folder 000 shares row 1";
    prompt_->text(path("vorlage.dat"));
    d->findChild<QPushButton*>("cmbKarteiLaden")->click();
    EXPECT_EQ(d->txtBenennung()[1]->text(), "Werkstoff");
    EXPECT_EQ(d->txtStandardwert()[1]->text(), "St 37 \"roh\" 5 %");
    EXPECT_EQ(d->txtBenennung()[2]->text(), "") << "the file has two records";
    d->checkGlobal()->setChecked(false);
    QDir().mkpath("/tmp/cards-shots");
    EXPECT_TRUE(d->grab().save("/tmp/cards-shots/frmdefmenue.png"));
    d->findChild<QPushButton*>("combutSpeichern")->click();
  });
  frm.action("mnuEDefMenue")->trigger();
  setPrompt(prompt_.get());

  EXPECT_TRUE(gesehen);
  EXPECT_EQ(offenerDialog(), nullptr) << "saving closed the dialog";
  const qint64 eigen = verweis("000");
  ASSERT_GT(eigen, 1);
  EXPECT_EQ(zeile(eigen).mid(0, 2), (QStringList{"Nennweite", "Werkstoff"}));
  EXPECT_EQ(zeile(eigen)[11], "St 37 \"roh\" 5 %");
  EXPECT_EQ(kopf->text(), "Nennweite") << "the page was drawn again";
  EXPECT_EQ(prompt_->unexpected(), 0);
}

}  // namespace
}  // namespace kolvane

#include "frmvariaeinfuegepkte.h"

#include <QEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "labels.h"
#include "slideview.h"
#include "variaeinfuegepkte.h"

namespace kolvane {

namespace {

constexpr int kSpalten = 3;
constexpr int kRand = 4;

}  // namespace

FrmVariaEinfuegepkte::FrmVariaEinfuegepkte(VariaEinfuegepkte& logik, QWidget* parent)
    : QDialog(parent), logik_(logik) {
  const QString form = logik_.markieren() ? QStringLiteral("frmVariaEinfuegepkteMarkieren")
                                          : QStringLiteral("frmVariaEinfuegepkte");
  const QString knopf = logik_.markieren() ? QStringLiteral("cmbMarkieren") : QStringLiteral("cmbEinfuegen");
  auto beschriftung = [&form](const QString& control) {
    const QString t = labels().fctBeschriftFrmZuordnen(form + "." + control);
    return t.isEmpty() ? control : t;
  };
  setObjectName(form);
  setWindowTitle(beschriftung(QStringLiteral("Caption")));
  setModal(true);

  bilder_ = new QWidget(this);
  bilder_->setMinimumSize(3 * 120, 110);
  bilder_->installEventFilter(this);
  picMarkierungsumrandung_ = new QFrame(bilder_);
  picMarkierungsumrandung_->setObjectName(QStringLiteral("picMarkierungsumrandung"));
  picMarkierungsumrandung_->setAutoFillBackground(true);
  QPalette p = picMarkierungsumrandung_->palette();
  p.setColor(QPalette::Window, QColor(255, 0, 0));
  picMarkierungsumrandung_->setPalette(p);
  for (int i = 0; i < VariaEinfuegepkte::kPunkte; ++i) {
    auto* s = new SlideView(i, bilder_);
    s->setObjectName(QStringLiteral("sldVariaEinfuegepkte_%1").arg(i));
    s->setPath(logik_.adressen()[size_t(i)]);
    connect(s, &SlideView::leftButtonDown, this, [this](int index) {
      if (logik_.sldVariaEinfuegepkte_MouseDown(index)) rahmenSetzen();
    });
    connect(s, &SlideView::doubleClicked, this, [this](int index) {
      if (logik_.sldVariaEinfuegepkte_DblClick(index)) accept();
    });
    slides_ << s;
  }

  cmbEinfuegen_ = new QPushButton(beschriftung(knopf));
  cmbEinfuegen_->setObjectName(knopf);
  cmbEinfuegen_->setDefault(true);
  cmbAbbrechen_ = new QPushButton(beschriftung(QStringLiteral("cmbAbbrechen")));
  cmbAbbrechen_->setObjectName(QStringLiteral("cmbAbbrechen"));
  connect(cmbEinfuegen_, &QPushButton::clicked, this, [this] {
    logik_.cmbEinfuegen_Click();
    accept();
  });
  connect(cmbAbbrechen_, &QPushButton::clicked, this, &FrmVariaEinfuegepkte::reject);

  auto* knoepfe = new QHBoxLayout;
  knoepfe->addStretch();
  knoepfe->addWidget(cmbEinfuegen_);
  knoepfe->addWidget(cmbAbbrechen_);
  // The arrow keys move the frame wherever the focus is, so they never move
  // it from one button to the other; Return confirms through the default
  // button, Escape cancels.
  cmbEinfuegen_->installEventFilter(this);
  cmbAbbrechen_->installEventFilter(this);
  bilder_->setFocusPolicy(Qt::StrongFocus);
  auto* aussen = new QVBoxLayout(this);
  aussen->addWidget(bilder_, 1);
  aussen->addLayout(knoepfe);

  // The board grows with the points: one row up to three, two rows above.
  const int zeilen = logik_.anzahl() > kSpalten ? 2 : 1;
  resize(3 * 160, zeilen * 140 + 50);
  anordnen();
  cmbEinfuegen_->setFocus();
}

void FrmVariaEinfuegepkte::reject() {
  if (!logik_.geschlossen()) logik_.cmbAbbrechen_Click();
  QDialog::reject();
}

bool FrmVariaEinfuegepkte::eventFilter(QObject* o, QEvent* e) {
  if (o == bilder_ && e->type() == QEvent::Resize) anordnen();
  if (e->type() == QEvent::KeyPress && (o == bilder_ || o == cmbEinfuegen_ || o == cmbAbbrechen_)) {
    int schritt = 0;
    switch (static_cast<QKeyEvent*>(e)->key()) {
      case Qt::Key_Left: schritt = -1; break;
      case Qt::Key_Right: schritt = 1; break;
      case Qt::Key_Up: schritt = -kSpalten; break;
      case Qt::Key_Down: schritt = kSpalten; break;
      default: break;
    }
    if (schritt != 0) {
      if (logik_.rahmenBewegen(schritt)) rahmenSetzen();
      return true;
    }
  }
  return QDialog::eventFilter(o, e);
}

void FrmVariaEinfuegepkte::anordnen() {
  const int zeilen = logik_.anzahl() > kSpalten ? 2 : 1;
  const int w = bilder_->width() / kSpalten;
  const int h = bilder_->height() / zeilen;
  for (int i = 0; i < slides_.size(); ++i) {
    // Only the view's points: a slot without a point stays empty.
    const bool sichtbar = i < logik_.anzahl();
    slides_[i]->setVisible(sichtbar);
    if (sichtbar)
      slides_[i]->setGeometry((i % kSpalten) * w + kRand, (i / kSpalten) * h + kRand,
                              qMax(1, w - 2 * kRand), qMax(1, h - 2 * kRand));
  }
  rahmenSetzen();
}

void FrmVariaEinfuegepkte::rahmenSetzen() {
  const SlideView* s = slide(logik_.gewaehlt());
  if (!s) return;
  picMarkierungsumrandung_->setGeometry(s->geometry().adjusted(-kRand / 2, -kRand / 2, kRand / 2, kRand / 2));
  picMarkierungsumrandung_->lower();
}

}  // namespace kolvane

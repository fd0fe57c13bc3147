#include "frmansichten.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ansichten.h"
#include "formtexte.h"
#include "slideview.h"

namespace kolvane {

FrmAnsichten::FrmAnsichten(const QString& form, AnsichtenWahl& logik, QList<Knopf> knoepfe, QWidget* parent)
    : QDialog(parent), logik_(logik) {
  setObjectName(form);
  setWindowTitle(fctFormBeschriftung(form, QStringLiteral("Caption")));
  setModal(true);
  auto* bilder = new QHBoxLayout;
  for (int k = 0; k < 5; ++k) {
    auto* rahmen = new QFrame;
    rahmen->setObjectName(QStringLiteral("pctRahmen_%1").arg(k));
    rahmen->setAutoFillBackground(true);
    auto* innen = new QVBoxLayout(rahmen);
    innen->setContentsMargins(3, 3, 3, 3);
    auto* s = new SlideView(k);
    s->setObjectName(QStringLiteral("sldAnsichten_%1").arg(k));
    s->setMinimumSize(120, 90);
    auto* name = new QLabel;
    name->setObjectName(QStringLiteral("labAnsicht_%1").arg(k));
    name->setAlignment(Qt::AlignHCenter);
    innen->addWidget(s, 1);
    innen->addWidget(name);
    bilder->addWidget(rahmen);
    slides_ << s;
    rahmen_ << rahmen;
    connect(s, &SlideView::leftButtonDown, this, [this](int i) {
      if (logik_.sldAnsichten_MouseDown(i)) rahmenSetzen();
    });
  }
  auto* leiste = new QHBoxLayout;
  leiste->addStretch();
  QList<QPushButton*> buttons;
  for (const Knopf& k : knoepfe) {
    auto* b = new QPushButton(fctFormBeschriftung(form, k.name));
    b->setObjectName(k.name);
    b->setAutoDefault(false);
    leiste->addWidget(b);
    buttons << b;
    const auto aktion = k.aktion;
    connect(b, &QPushButton::clicked, this, [this, aktion] {
      if (!aktion || aktion()) accept();
      else Anzeigen();
    });
  }
  auto* abbrechen = new QPushButton(fctFormBeschriftung(form, QStringLiteral("cmbAbbrechen")));
  abbrechen->setObjectName(QStringLiteral("cmbAbbrechen"));
  abbrechen->setAutoDefault(false);
  leiste->addWidget(abbrechen);
  connect(abbrechen, &QPushButton::clicked, this, &QDialog::reject);
  if (!buttons.isEmpty()) {
    buttons.first()->setDefault(true);
    for (SlideView* s : slides_)
      connect(s, &SlideView::doubleClicked, buttons.first(), [b = buttons.first(), this](int i) {
        if (logik_.sldAnsichten_MouseDown(i)) {
          rahmenSetzen();
          b->click();
        }
      });
  }
  auto* l = new QVBoxLayout(this);
  l->addLayout(bilder, 1);
  l->addLayout(leiste);
  Anzeigen();
}

void FrmAnsichten::Anzeigen() {
  for (int k = 0; k < 5; ++k) {
    const AnsichtBild& a = logik_.bilder[size_t(k)];
    slides_[k]->setPath(QString());
    slides_[k]->setPath(a.adresse);
    if (auto* name = rahmen_[k]->findChild<QLabel*>())
      name->setText(QString::number(k) + (a.vorhanden ? QStringLiteral(": ") + a.name : QString()));
  }
  rahmenSetzen();
}

void FrmAnsichten::rahmenSetzen() {
  for (int k = 0; k < 5; ++k) {
    QPalette p = rahmen_[k]->palette();
    p.setColor(QPalette::Window, k == logik_.gewaehlt ? QColor(255, 0, 0) : palette().color(QPalette::Button));
    rahmen_[k]->setPalette(p);
  }
}

}  // namespace kolvane

#include "frmsuchergebnis.h"

#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "formtexte.h"
#include "slidecolors.h"
#include "slideview.h"
#include "suchergebnis.h"

namespace kolvane {

namespace {

const QString kForm = QStringLiteral("frmSuchergebnis");
// The active frame's colours as the Windows edition stores them (BGR).
constexpr long kGruen = 32768;
constexpr long kRot = 255;

QLabel* wertLabel(const QString& name) {
  auto* l = new QLabel;
  l->setObjectName(name);
  l->setTextInteractionFlags(Qt::TextSelectableByMouse);
  l->setMinimumWidth(160);
  return l;
}

}  // namespace

FrmSuchergebnis::FrmSuchergebnis(Suchergebnis& logik, QWidget* parent)
    : QDialog(parent), logik_(logik) {
  setObjectName(kForm);
  setWindowTitle(fctFormBeschriftung(kForm, QStringLiteral("Caption")));
  setModal(false);
  const QColor hintergrund = logik_.slideHintergrund();

  auto* raster = new QGridLayout;
  raster->setSpacing(4);
  for (int i = 0; i < Suchergebnis::kBilder; ++i) {
    auto* rahmen = new QFrame;
    rahmen->setObjectName(QStringLiteral("Picture1_%1").arg(i));
    rahmen->setAutoFillBackground(true);
    auto* innen = new QVBoxLayout(rahmen);
    innen->setContentsMargins(3, 3, 3, 3);
    auto* s = new SlideView(i);
    s->setObjectName(QStringLiteral("sldSuchergebnis_%1").arg(i));
    s->setMinimumSize(110, 82);
    if (hintergrund.isValid()) s->setBackColor(hintergrund);
    innen->addWidget(s);
    raster->addWidget(rahmen, i / 5, i % 5);
    slides_ << s;
    rahmen_ << rahmen;
    connect(s, &SlideView::leftButtonDown, this, &FrmSuchergebnis::bildGeklickt);
    connect(s, &SlideView::doubleClicked, this, [this](int k) {
      bildGeklickt(k);
      if (logik_.cmbEinfuegen_Click()) hide();
    });
  }

  lisBlockBenennung_ = new QListWidget;
  lisBlockBenennung_->setObjectName(QStringLiteral("lisBlockBenennung"));
  lisBlockBenennung_->setMinimumWidth(200);
  connect(lisBlockBenennung_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0) bildGeklickt(row);
  });

  labOrdnername_ = wertLabel(QStringLiteral("labOrdnername"));
  labSeitenNummer_ = wertLabel(QStringLiteral("labSeitenNummer"));
  labBlockName_ = wertLabel(QStringLiteral("labBlockName"));
  auto* angaben = new QFormLayout;
  angaben->addRow(fctFormBeschriftung(kForm, QStringLiteral("labOrdner")), labOrdnername_);
  angaben->addRow(fctFormBeschriftung(kForm, QStringLiteral("labSeite")), labSeitenNummer_);
  angaben->addRow(fctFormBeschriftung(kForm, QStringLiteral("labName")), labBlockName_);

  auto* rechts = new QVBoxLayout;
  rechts->addWidget(lisBlockBenennung_, 1);
  rechts->addLayout(angaben);
  auto* oben = new QHBoxLayout;
  oben->addLayout(raster, 1);
  oben->addLayout(rechts);

  cmbZurueck_ = fctFormKnopf(kForm, QStringLiteral("cmbZurueck"));
  cmbVor_ = fctFormKnopf(kForm, QStringLiteral("cmbVor"));
  cmbGeheZu_ = fctFormKnopf(kForm, QStringLiteral("cmbGeheZu"));
  cmbEinfuegen_ = fctFormKnopf(kForm, QStringLiteral("cmbEinfuegen"));
  combutAnsicht_ = fctFormKnopf(kForm, QStringLiteral("combutAnsicht"));
  combutBild_ = fctFormKnopf(kForm, QStringLiteral("combutBild"));
  auto* abbrechen = fctFormKnopf(kForm, QStringLiteral("combutAbbrechen"));
  auto* leiste = new QHBoxLayout;
  leiste->addWidget(cmbZurueck_);
  leiste->addWidget(cmbVor_);
  leiste->addSpacing(12);
  leiste->addWidget(cmbGeheZu_);
  leiste->addWidget(cmbEinfuegen_);
  leiste->addWidget(combutAnsicht_);
  leiste->addWidget(combutBild_);
  leiste->addStretch();
  leiste->addWidget(abbrechen);

  auto* l = new QVBoxLayout(this);
  l->addLayout(oben, 1);
  l->addLayout(leiste);

  connect(cmbVor_, &QPushButton::clicked, this, [this] {
    if (logik_.cmbVor_Click()) Anzeigen();
  });
  connect(cmbZurueck_, &QPushButton::clicked, this, [this] {
    if (logik_.cmbZurueck_Click()) Anzeigen();
  });
  connect(cmbGeheZu_, &QPushButton::clicked, this, [this] {
    if (logik_.cmbGeheZu_Click()) hide();
  });
  connect(cmbEinfuegen_, &QPushButton::clicked, this, [this] {
    if (logik_.cmbEinfuegen_Click()) hide();
  });
  connect(combutAnsicht_, &QPushButton::clicked, this, [this] {
    if (ansichtZeigen) ansichtZeigen();
  });
  connect(combutBild_, &QPushButton::clicked, this, [this] {
    if (bild) bild();
  });
  connect(abbrechen, &QPushButton::clicked, this, &QDialog::reject);
  Anzeigen();
}

void FrmSuchergebnis::bildGeklickt(int i) {
  logik_.sldSuchergebnis_LButtonDown(i);
  Anzeigen();
}

void FrmSuchergebnis::Anzeigen() {
  const QColor knopf = palette().color(QPalette::Button);
  const QColor aktiv = colorFromBgr(logik_.rahmenAktiv == FrameColor::Green ? kGruen : kRot);
  for (int i = 0; i < Suchergebnis::kBilder; ++i) {
    slides_[i]->setPath(logik_.sldSuchergebnis[size_t(i)]);
    QPalette p = rahmen_[i]->palette();
    p.setColor(QPalette::Window, i == logik_.bytErgebnisPosition ? aktiv : knopf);
    rahmen_[i]->setPalette(p);
  }
  {
    const QSignalBlocker still(lisBlockBenennung_);
    QStringList alt;
    for (int r = 0; r < lisBlockBenennung_->count(); ++r) alt << lisBlockBenennung_->item(r)->text();
    if (alt != logik_.lisBlockBenennung) {
      lisBlockBenennung_->clear();
      lisBlockBenennung_->addItems(logik_.lisBlockBenennung);
    }
    lisBlockBenennung_->setCurrentRow(logik_.lisBlockBenennungIndex);
  }
  labOrdnername_->setText(logik_.labOrdnername);
  labSeitenNummer_->setText(logik_.labSeitenNummer);
  labBlockName_->setText(logik_.labBlockName);
  cmbVor_->setEnabled(logik_.cmbVorEnabled);
  cmbZurueck_->setEnabled(logik_.cmbZurueckEnabled);
  cmbGeheZu_->setEnabled(logik_.cmbGeheZuEnabled);
  cmbEinfuegen_->setEnabled(logik_.cmbEinfuegenEnabled);
  combutAnsicht_->setEnabled(logik_.byteAnsichtVorhanden == 1);
  combutBild_->setEnabled(logik_.cmbEinfuegenEnabled);
}

}  // namespace kolvane

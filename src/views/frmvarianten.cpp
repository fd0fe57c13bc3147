#include "frmvarianten.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "formtexte.h"
#include "variaeinfuegen.h"
#include "varianeu.h"

namespace kolvane {

namespace {



QListWidget* liste(const QStringList& namen, int gewaehlt) {
  auto* l = new QListWidget;
  l->setObjectName(QStringLiteral("lisAuswahl"));
  l->addItems(namen);
  if (gewaehlt >= 0 && gewaehlt < l->count()) l->setCurrentRow(gewaehlt);
  return l;
}

}  // namespace

// ---------------------------------------------------------------- insert

FrmVariaEinfuegen::FrmVariaEinfuegen(VariaEinfuegen& logik, QWidget* parent) : QDialog(parent), logik_(logik) {
  const QString f = QStringLiteral("frmVariaEinfuegen");
  setObjectName(f);
  setWindowTitle(fctFormBeschriftung(f, QStringLiteral("Caption")));
  setModal(true);
  auto* lab = new QLabel(fctFormBeschriftung(f, QStringLiteral("labAuswahl")));
  lis_ = liste(logik_.namen(), logik_.gewaehlt);
  lab->setBuddy(lis_);
  auto* ok = fctFormKnopf(f, QStringLiteral("cmbOk"));
  ok->setDefault(true);
  auto* abbrechen = fctFormKnopf(f, QStringLiteral("cmbAbbrechen"));
  connect(lis_, &QListWidget::currentRowChanged, this, [this](int r) { logik_.gewaehlt = r; });
  connect(lis_, &QListWidget::itemDoubleClicked, this, [this] { this->ok(); });
  connect(ok, &QPushButton::clicked, this, [this] { this->ok(); });
  connect(abbrechen, &QPushButton::clicked, this, &FrmVariaEinfuegen::reject);
  auto* knoepfe = new QHBoxLayout;
  knoepfe->addStretch();
  knoepfe->addWidget(ok);
  knoepfe->addWidget(abbrechen);
  auto* l = new QVBoxLayout(this);
  l->addWidget(lab);
  l->addWidget(lis_, 1);
  l->addLayout(knoepfe);
  resize(380, 300);
  lis_->setFocus();
}

void FrmVariaEinfuegen::ok() {
  if (logik_.cmbOk_Click())
    accept();
  else
    lis_->setFocus();
}

void FrmVariaEinfuegen::reject() {
  if (!logik_.geschlossen()) logik_.cmbAbbrechen_Click();
  QDialog::reject();
}

// ---------------------------------------------------------------- new variant

FrmVariaNeu::FrmVariaNeu(VariaNeu& logik, QWidget* parent) : QDialog(parent), logik_(logik) {
  const QString f = QStringLiteral("frmVariaNeu");
  setObjectName(f);
  setWindowTitle(fctFormBeschriftung(f, QStringLiteral("Caption")));
  setModal(true);
  auto* lab = new QLabel(fctFormBeschriftung(f, QStringLiteral("labAuswahl")));
  lis_ = liste(logik_.namen(), logik_.gewaehlt);
  lab->setBuddy(lis_);
  connect(lis_, &QListWidget::currentRowChanged, this, [this](int r) { logik_.gewaehlt = r; });

  optUmbenennen_ = new QRadioButton(fctFormBeschriftung(f, QStringLiteral("optUmbenennen")));
  optUmbenennen_->setObjectName(QStringLiteral("optUmbenennen"));
  optLoeschen_ = new QRadioButton(fctFormBeschriftung(f, QStringLiteral("optLoeschen")));
  optLoeschen_->setObjectName(QStringLiteral("optLoeschen"));
  (logik_.modus == VariaNeu::Modus::Loeschen ? optLoeschen_ : optUmbenennen_)->setChecked(true);
  connect(optUmbenennen_, &QRadioButton::toggled, this,
          [this](bool an) { logik_.modus = an ? VariaNeu::Modus::Umbenennen : VariaNeu::Modus::Loeschen; });
  auto* aendern = fctFormKnopf(f, QStringLiteral("cmdVariatenNeu"));
  connect(aendern, &QPushButton::clicked, this, [this] {
    if (logik_.cmdVariatenNeu_Click()) fuellen();
  });

  auto* neu = fctFormKnopf(f, QStringLiteral("cmbNeu"));
  neu->setDefault(true);
  auto* abbrechen = fctFormKnopf(f, QStringLiteral("cmbAbbrechen"));
  connect(neu, &QPushButton::clicked, this, &QDialog::accept);
  connect(abbrechen, &QPushButton::clicked, this, &QDialog::reject);

  auto* aenderung = new QHBoxLayout;
  aenderung->addWidget(optUmbenennen_);
  aenderung->addWidget(optLoeschen_);
  aenderung->addStretch();
  aenderung->addWidget(aendern);
  auto* knoepfe = new QHBoxLayout;
  knoepfe->addStretch();
  knoepfe->addWidget(neu);
  knoepfe->addWidget(abbrechen);
  auto* l = new QVBoxLayout(this);
  l->addWidget(lab);
  l->addWidget(lis_, 1);
  l->addLayout(aenderung);
  l->addLayout(knoepfe);
  resize(420, 340);
}

void FrmVariaNeu::fuellen() {
  const int r = logik_.gewaehlt;
  lis_->blockSignals(true);
  lis_->clear();
  lis_->addItems(logik_.namen());
  lis_->blockSignals(false);
  lis_->setCurrentRow(qMin(r, lis_->count() - 1));
}

}  // namespace kolvane

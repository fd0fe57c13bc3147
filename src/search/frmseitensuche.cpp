#include "frmseitensuche.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "formtexte.h"
#include "seitensuche.h"

namespace kolvane {

namespace {
const QString kForm = QStringLiteral("frmSeitenSuche");
}  // namespace

FrmSeitenSuche::FrmSeitenSuche(SeitenSuche& logik, QWidget* parent) : QDialog(parent), logik_(logik) {
  setObjectName(kForm);
  setWindowTitle(fctFormBeschriftung(kForm, QStringLiteral("Caption")));
  setModal(true);
  logik_.Form_Load();

  lisSeitenNamen_ = new QListWidget;
  lisSeitenNamen_->setObjectName(QStringLiteral("lisSeitenNamen"));
  lisSeitenNamen_->addItems(logik_.lisSeitenNamen);
  txtSeitenNr_ = new QLineEdit;
  txtSeitenNr_->setObjectName(QStringLiteral("txtSeitenNr"));
  txtSeitenNr_->setMaxLength(6);
  auto* felder = new QFormLayout;
  felder->addRow(fctFormBeschriftung(kForm, QStringLiteral("labSeitenNamen")), lisSeitenNamen_);
  felder->addRow(fctFormBeschriftung(kForm, QStringLiteral("labSeitenNr")), txtSeitenNr_);

  auto* ok = fctFormKnopf(kForm, QStringLiteral("cmdOK"));
  ok->setDefault(true);
  auto* abbrechen = fctFormKnopf(kForm, QStringLiteral("cmdAbbrechen"));
  auto* leiste = new QHBoxLayout;
  leiste->addStretch();
  leiste->addWidget(ok);
  leiste->addWidget(abbrechen);
  auto* l = new QVBoxLayout(this);
  l->addLayout(felder, 1);
  l->addLayout(leiste);

  connect(lisSeitenNamen_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row < 0) return;
    logik_.lisSeitenNamen_Click(row);
    const QSignalBlocker still(txtSeitenNr_);
    txtSeitenNr_->setText(logik_.txtSeitenNr);
  });
  connect(txtSeitenNr_, &QLineEdit::textEdited, this, [this](const QString& text) {
    logik_.txtSeitenNr_Change(text);
    auswahlZeigen();
  });
  connect(ok, &QPushButton::clicked, this, [this] {
    logik_.txtSeitenNr_Change(txtSeitenNr_->text());
    if (logik_.cmdOK_Click()) accept();
    else txtSeitenNr_->setFocus();
  });
  connect(lisSeitenNamen_, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) {
    if (logik_.lisSeitenNamen_DblClick(lisSeitenNamen_->row(item))) accept();
  });
  connect(abbrechen, &QPushButton::clicked, this, &QDialog::reject);
  txtSeitenNr_->setFocus();
}

void FrmSeitenSuche::auswahlZeigen() {
  const QSignalBlocker still(lisSeitenNamen_);
  lisSeitenNamen_->setCurrentRow(logik_.lisSeitenNamenIndex);
  if (logik_.lisSeitenNamenIndex < 0) lisSeitenNamen_->clearSelection();
}

}  // namespace kolvane

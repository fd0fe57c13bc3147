#include "frmvollbild.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "labels.h"
#include "slideview.h"

namespace kolvane {

namespace {
QString caption(const char* control) {
  return labels().fctBeschriftFrmZuordnen(QStringLiteral("frmVollbild.") + QLatin1String(control));
}
}  // namespace

FrmVollbild::FrmVollbild(Vollbild& logic, QWidget* parent) : QDialog(parent), logic_(logic) {
  setObjectName(QStringLiteral("frmVollbild"));
  setWindowTitle(caption("Caption"));
  auto* layout = new QVBoxLayout(this);
  sldVollbild_ = new SlideView(0, this);
  sldVollbild_->setObjectName(QStringLiteral("sldVollbild"));
  const QColor back = logic_.hintergrund();
  if (back.isValid()) sldVollbild_->setBackColor(back);
  layout->addWidget(sldVollbild_, 1);
  auto* buttons = new QHBoxLayout;
  cmbVor_ = new QPushButton(caption("cmbVor"));
  cmbVor_->setObjectName(QStringLiteral("cmbVor"));
  cmbZurueck_ = new QPushButton(caption("cmbZurueck"));
  cmbZurueck_->setObjectName(QStringLiteral("cmbZurueck"));
  auto* ok = new QPushButton(caption("combutOk"));
  ok->setObjectName(QStringLiteral("combutOk"));
  cmbVor_->setToolTip(labels().tooltip(QStringLiteral("frmVollbild.cmbVor")));
  cmbZurueck_->setToolTip(labels().tooltip(QStringLiteral("frmVollbild.cmbZurueck")));
  buttons->addWidget(cmbVor_);
  buttons->addWidget(cmbZurueck_);
  buttons->addStretch();
  buttons->addWidget(ok);
  layout->addLayout(buttons);
  connect(cmbVor_, &QPushButton::clicked, this, [this] {
    logic_.cmbVor_Click();
    zeigen();
  });
  connect(cmbZurueck_, &QPushButton::clicked, this, [this] {
    logic_.cmbZurueck_Click();
    zeigen();
  });
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  resize(800, 600);
  zeigen();
}

void FrmVollbild::zeigen() {
  sldVollbild_->setPath(logic_.slide());
  // The title names the block shown, as the steps change it.
  const QString titel = logic_.titel();
  setWindowTitle(titel.isEmpty() ? caption("Caption") : caption("Caption") + QStringLiteral(" - ") + titel);
  cmbVor_->setEnabled(logic_.cmbVorAktiv());
  cmbZurueck_->setEnabled(logic_.cmbZurueckAktiv());
}

}  // namespace kolvane

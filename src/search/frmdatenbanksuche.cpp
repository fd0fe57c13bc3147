#include "frmdatenbanksuche.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "datenbanksuche.h"
#include "formtexte.h"

namespace kolvane {

namespace {

const QString kForm = QStringLiteral("frmDatenbankSuche");
// A list longer than this is browsed in the result grid; the table shows its start.
constexpr int kGridZeilen = 500;

QCheckBox* check(const QString& name) {
  auto* c = new QCheckBox(fctFormBeschriftung(kForm, name));
  c->setObjectName(name);
  return c;
}

}  // namespace

FrmDatenbankSuche::FrmDatenbankSuche(DatenbankSuche& logik, QWidget* parent)
    : QDialog(parent), logik_(logik) {
  setObjectName(kForm);
  setWindowTitle(fctFormBeschriftung(kForm, QStringLiteral("Caption")));
  setModal(false);

  auto* felder = new QGridLayout;
  for (int i = 0; i < 11; ++i) {
    auto* lab = new QLabel;
    lab->setObjectName(QStringLiteral("labBenennung_%1").arg(i));
    auto* txt = new QLineEdit;
    txt->setObjectName(QStringLiteral("txtBenennung_%1").arg(i));
    lab->setBuddy(txt);
    felder->addWidget(lab, i, 0);
    if (i < 10) {
      auto* cb = new QComboBox;
      cb->setObjectName(QStringLiteral("comboxSuchkriterienVerknuepfen_%1").arg(i));
      for (const QString& v : suchVerknuepfungen()) cb->addItem(v);
      felder->addWidget(cb, i, 1);
      combox_ << cb;
    }
    felder->addWidget(txt, i, 2);
    labBenennung_ << lab;
    txtBenennung_ << txt;
  }
  felder->setColumnStretch(2, 1);

  checkAktuellerOrdner_ = check(QStringLiteral("checkAktuellerOrdner"));
  checkGanzeWoerter_ = check(QStringLiteral("checkGanzeWoerter"));
  chkAnsichtenVarianten_ = check(QStringLiteral("chkAnsichtenVarianten"));
  checkDirektEinfuegen_ = check(QStringLiteral("checkDirektEinfuegen"));
  auto* optionen = new QGridLayout;
  optionen->addWidget(checkAktuellerOrdner_, 0, 0);
  optionen->addWidget(checkGanzeWoerter_, 0, 1);
  optionen->addWidget(chkAnsichtenVarianten_, 1, 0);
  optionen->addWidget(checkDirektEinfuegen_, 1, 1);

  dataGrid1_ = new QTableWidget(0, 3);
  dataGrid1_->setObjectName(QStringLiteral("DataGrid1"));
  dataGrid1_->setHorizontalHeaderLabels({fctFormBeschriftung(kForm, QStringLiteral("DataGrid1.Block")),
                                         fctFormBeschriftung(kForm, QStringLiteral("DataGrid1.M0")),
                                         fctFormBeschriftung(kForm, QStringLiteral("DataGrid1.BlkName0"))});
  dataGrid1_->horizontalHeader()->setStretchLastSection(true);
  dataGrid1_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  dataGrid1_->setSelectionBehavior(QAbstractItemView::SelectRows);
  dataGrid1_->verticalHeader()->hide();
  dataGrid1_->setMinimumHeight(120);

  auto* suchen = fctFormKnopf(kForm, QStringLiteral("cmbSuchen"));
  // Return in any box searches.
  suchen->setDefault(true);
  auto* leer = fctFormKnopf(kForm, QStringLiteral("cmbLeer"));
  auto* speichern = fctFormKnopf(kForm, QStringLiteral("cmbSpeichern"));
  auto* laden = fctFormKnopf(kForm, QStringLiteral("cmbLaden"));
  auto* abbrechen = fctFormKnopf(kForm, QStringLiteral("cmbAbbrechen"));
  auto* knoepfe = new QHBoxLayout;
  knoepfe->addWidget(laden);
  knoepfe->addWidget(speichern);
  knoepfe->addWidget(leer);
  knoepfe->addStretch();
  knoepfe->addWidget(suchen);
  knoepfe->addWidget(abbrechen);

  auto* l = new QVBoxLayout(this);
  l->addLayout(felder);
  l->addLayout(optionen);
  l->addWidget(dataGrid1_, 1);
  l->addLayout(knoepfe);

  connect(suchen, &QPushButton::clicked, this, [this] {
    uebernehmen();
    logik_.cmbSuchen_Click();
    trefferZeigen();
  });
  connect(leer, &QPushButton::clicked, this, [this] {
    uebernehmen();
    logik_.cmbLeer_Click();
    anzeigen();
  });
  connect(speichern, &QPushButton::clicked, this, [this] {
    uebernehmen();
    logik_.cmbSpeichern_Click();
  });
  connect(laden, &QPushButton::clicked, this, [this] {
    uebernehmen();
    if (logik_.cmbLaden_Click()) anzeigen();
  });
  connect(abbrechen, &QPushButton::clicked, this, &QDialog::hide);

  anzeigen();
  resize(640, sizeHint().height());
}

void FrmDatenbankSuche::anzeigen() {
  const Suchkriterien& k = logik_.k;
  for (int i = 0; i < 11; ++i) {
    labBenennung_[i]->setText(logik_.labBenennung[size_t(i)]);
    txtBenennung_[i]->setText(k.txtBenennung[size_t(i)]);
  }
  for (int i = 0; i < 10; ++i) {
    const int n = combox_[i]->findText(k.comboxSuchkriterienVerknuepfen[size_t(i)]);
    combox_[i]->setCurrentIndex(qMax(0, n));
  }
  checkAktuellerOrdner_->setChecked(k.checkAktuellerOrdner);
  checkGanzeWoerter_->setChecked(k.checkGanzeWoerter);
  chkAnsichtenVarianten_->setChecked(k.chkAnsichtenVarianten);
  checkDirektEinfuegen_->setChecked(k.checkDirektEinfuegen);
  trefferZeigen();
}

void FrmDatenbankSuche::uebernehmen() {
  Suchkriterien& k = logik_.k;
  for (int i = 0; i < 11; ++i) k.txtBenennung[size_t(i)] = txtBenennung_[i]->text();
  for (int i = 0; i < 10; ++i) k.comboxSuchkriterienVerknuepfen[size_t(i)] = combox_[i]->currentText();
  k.checkAktuellerOrdner = checkAktuellerOrdner_->isChecked();
  k.checkGanzeWoerter = checkGanzeWoerter_->isChecked();
  k.chkAnsichtenVarianten = chkAnsichtenVarianten_->isChecked();
  k.checkDirektEinfuegen = checkDirektEinfuegen_->isChecked();
}

void FrmDatenbankSuche::trefferZeigen() {
  Recordset& rs = logik_.rsDatenbankSuche;
  dataGrid1_->setRowCount(0);
  if (!rs.isOpen() || rs.RecordCount() < 1) return;
  const int n = qMin(rs.RecordCount(), kGridZeilen);
  dataGrid1_->setRowCount(n);
  const int vorher = rs.AbsolutePosition();
  rs.MoveFirst();
  for (int r = 0; r < n && !rs.isEOF(); ++r, rs.MoveNext()) {
    dataGrid1_->setItem(r, 0, new QTableWidgetItem(rs.text(QStringLiteral("Block"))));
    dataGrid1_->setItem(r, 1, new QTableWidgetItem(rs.text(QStringLiteral("M0"))));
    dataGrid1_->setItem(r, 2, new QTableWidgetItem(rs.text(QStringLiteral("BlkName0"))));
  }
  if (vorher > 0) rs.setAbsolutePosition(vorher); else rs.MoveFirst();
}

}  // namespace kolvane

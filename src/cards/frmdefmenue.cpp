#include "frmdefmenue.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "bibliothek.h"
#include "defmenue.h"
#include "formtexte.h"
#include "prompt.h"

namespace kolvane {

namespace {

const QString kForm = QStringLiteral("frmDefMenue");



}  // namespace

FrmDefMenue::FrmDefMenue(DefMenue& logik, QWidget* parent) : QDialog(parent), logik_(logik) {
  setObjectName(kForm);
  setWindowTitle(fctFormBeschriftung(kForm, QStringLiteral("Caption")));
  setModal(true);

  auto* felder = new QGridLayout;
  auto* kopfName = new QLabel(fctFormBeschriftung(kForm, QStringLiteral("labBenennung")));
  auto* kopfWert = new QLabel(fctFormBeschriftung(kForm, QStringLiteral("labStandardwert")));
  felder->addWidget(kopfName, 0, 1);
  felder->addWidget(kopfWert, 0, 2);
  const QString feld = fctFormBeschriftung(kForm, QStringLiteral("labFeld"));
  for (int i = 0; i < 10; ++i) {
    auto* lab = new QLabel(QStringLiteral("%1 %2").arg(feld).arg(i + 1));
    lab->setObjectName(QStringLiteral("labFeld_%1").arg(i));
    // Both columns of tblDefMenue hold 100 characters; a file keeps 20 of a name.
    auto* name = new QLineEdit;
    name->setObjectName(QStringLiteral("txtBenennung_%1").arg(i));
    name->setMaxLength(100);
    auto* wert = new QLineEdit;
    wert->setObjectName(QStringLiteral("txtStandardwert_%1").arg(i));
    wert->setMaxLength(100);
    lab->setBuddy(name);
    felder->addWidget(lab, i + 1, 0);
    felder->addWidget(name, i + 1, 1);
    felder->addWidget(wert, i + 1, 2);
    txtBenennung_ << name;
    txtStandardwert_ << wert;
  }
  felder->setColumnStretch(1, 1);
  felder->setColumnStretch(2, 2);

  checkGlobal_ = new QCheckBox(fctFormBeschriftung(kForm, QStringLiteral("checkGlobal")));
  checkGlobal_->setObjectName(QStringLiteral("checkGlobal"));

  auto* laden = fctFormKnopf(kForm, QStringLiteral("cmbKarteiLaden"));
  auto* inDatei = fctFormKnopf(kForm, QStringLiteral("combutInDateiSpeichern"));
  auto* speichern = fctFormKnopf(kForm, QStringLiteral("combutSpeichern"));
  speichern->setDefault(true);
  speichern->setEnabled(!logik_.schreibgeschuetzt());
  auto* abbrechen = fctFormKnopf(kForm, QStringLiteral("combutAbbrechen"));
  auto* knoepfe = new QHBoxLayout;
  knoepfe->addWidget(laden);
  knoepfe->addWidget(inDatei);
  knoepfe->addStretch();
  knoepfe->addWidget(speichern);
  knoepfe->addWidget(abbrechen);

  auto* l = new QVBoxLayout(this);
  l->addLayout(felder);
  l->addWidget(checkGlobal_);
  l->addLayout(knoepfe);

  connect(speichern, &QPushButton::clicked, this, [this] {
    uebernehmen();
    if (logik_.combutSpeichern_Click()) accept();
  });
  connect(abbrechen, &QPushButton::clicked, this, &QDialog::reject);
  connect(inDatei, &QPushButton::clicked, this, [this] {
    uebernehmen();
    logik_.combutInDateiSpeichern_Click();
  });
  connect(laden, &QPushButton::clicked, this, [this] {
    uebernehmen();
    if (logik_.cmbKarteiLaden_Click()) anzeigen();
  });

  anzeigen();
  resize(720, sizeHint().height());
  txtBenennung_.first()->setFocus();
}

void FrmDefMenue::uebernehmen() {
  for (int i = 0; i < 10; ++i) {
    logik_.txtBenennung[size_t(i)] = txtBenennung_[i]->text();
    logik_.txtStandardwert[size_t(i)] = txtStandardwert_[i]->text();
  }
  logik_.checkGlobal = checkGlobal_->isChecked();
}

void FrmDefMenue::anzeigen() {
  for (int i = 0; i < 10; ++i) {
    txtBenennung_[i]->setText(logik_.txtBenennung[size_t(i)]);
    txtStandardwert_[i]->setText(logik_.txtStandardwert[size_t(i)]);
  }
  checkGlobal_->setChecked(logik_.checkGlobal);
}

int zeigeDefMenue(Bibliothek& lib, QWidget* eltern) {
  DefMenue logik(lib);
  if (!logik.Form_Load()) return 0;
  QPointer<QWidget> fenster(eltern);
  const int r = prompt().dialog(kForm, [&logik, fenster] {
    FrmDefMenue f(logik, fenster.data());
    return f.exec() == QDialog::Accepted ? 1 : 0;
  });
  if (r != 1) return 0;
  // Confirmed without the dialog's own button (scripted): the same save.
  if (!logik.gespeichert() && !logik.combutSpeichern_Click()) return 0;
  return 1;
}

}  // namespace kolvane

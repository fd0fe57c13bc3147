#include "frmdbmaske.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "acadconnect.h"
#include "dbmaske.h"
#include "formtexte.h"
#include "msgbox.h"
#include "slideview.h"

namespace kolvane {

namespace {

const QString kForm = QStringLiteral("frmDbMaske");



}  // namespace

FrmDbMaske::FrmDbMaske(DbMaske& logik, CadBridge* bridge, QWidget* parent)
    : QDialog(parent), logik_(logik), bridge_(bridge) {
  setObjectName(kForm);
  setWindowTitle(fctFormBeschriftung(kForm, QStringLiteral("Caption")));
  setModal(true);
  sld_ = new SlideView(0);
  sld_->setObjectName(QStringLiteral("sldDbMaske"));
  sld_->setFixedSize(220, 165);
  labBlockName_ = new QLabel;
  labBlockName_->setObjectName(QStringLiteral("labBlockName"));
  auto* felder = new QFormLayout;
  for (int i = 0; i < 10; ++i) {
    auto* lab = new QLabel;
    lab->setObjectName(QStringLiteral("labBenennung_%1").arg(i));
    auto* t = new QLineEdit;
    t->setObjectName(QStringLiteral("txtBenennung_%1").arg(i));
    t->setMaxLength(100);
    felder->addRow(lab, t);
    labBenennung_ << lab;
    txtBenennung_ << t;
  }
  auto feld = [](const QString& name, int laenge) {
    auto* t = new QLineEdit;
    t->setObjectName(name);
    t->setMaxLength(laenge);
    return t;
  };
  txtLayer_ = feld(QStringLiteral("txtLayer"), 35);
  txtLinie_ = feld(QStringLiteral("txtLinie"), 20);
  txtFarbe_ = feld(QStringLiteral("txtFarbe"), 4);
  layerListe_ = fctFormKnopf(kForm, QStringLiteral("combutLayerListe"));
  auto* layerZeile = new QHBoxLayout;
  layerZeile->addWidget(txtLayer_, 1);
  layerZeile->addWidget(layerListe_);
  felder->addRow(fctFormBeschriftung(kForm, QStringLiteral("labLayer")), layerZeile);
  felder->addRow(fctFormBeschriftung(kForm, QStringLiteral("labLinie")), txtLinie_);
  felder->addRow(fctFormBeschriftung(kForm, QStringLiteral("labFarbe")), txtFarbe_);

  auto* zurueck = fctFormKnopf(kForm, QStringLiteral("combutZurueck"));
  auto* vor = fctFormKnopf(kForm, QStringLiteral("combutVor"));
  leer_ = fctFormKnopf(kForm, QStringLiteral("cmbLeer"));
  speichern_ = fctFormKnopf(kForm, QStringLiteral("combutSpeichern"));
  auto* schliessen = fctFormKnopf(kForm, QStringLiteral("combutSchliessen"));
  auto* einfuegenKnopf = fctFormKnopf(kForm, QStringLiteral("combutEinfuegen"));
  auto* bildKnopf = fctFormKnopf(kForm, QStringLiteral("combutBild"));
  auto* defKnopf = fctFormKnopf(kForm, QStringLiteral("combutDef"));
  dateiKnopf_ = fctFormKnopf(kForm, QStringLiteral("combutDatei"));
  auto* knoepfe = new QHBoxLayout;
  knoepfe->addWidget(zurueck);
  knoepfe->addWidget(vor);
  knoepfe->addWidget(einfuegenKnopf);
  knoepfe->addWidget(bildKnopf);
  knoepfe->addWidget(defKnopf);
  knoepfe->addWidget(dateiKnopf_);
  knoepfe->addStretch();
  knoepfe->addWidget(leer_);
  knoepfe->addWidget(speichern_);
  knoepfe->addWidget(schliessen);
  auto* kopf = new QHBoxLayout;
  kopf->addWidget(sld_);
  kopf->addWidget(labBlockName_, 1, Qt::AlignTop);
  auto* l = new QVBoxLayout(this);
  l->addLayout(kopf);
  l->addLayout(felder);
  l->addLayout(knoepfe);

  connect(speichern_, &QPushButton::clicked, this, [this] {
    uebernehmen();
    logik_.combutSpeichern_Click();
  });
  connect(leer_, &QPushButton::clicked, this, [this] {
    logik_.cmbLeer_Click();
    for (QLineEdit* t : txtBenennung_) t->clear();
  });
  connect(vor, &QPushButton::clicked, this, [this] {
    logik_.combutVor_Click();
    Anzeigen();
  });
  connect(zurueck, &QPushButton::clicked, this, [this] {
    logik_.combutZurueck_Click();
    Anzeigen();
  });
  connect(layerListe_, &QPushButton::clicked, this, [this] {
    uebernehmen();
    if (bridge_ && fctLayerWaehlen(*bridge_, logik_.txtLayer, logik_.txtFarbe, logik_.txtLinie)) Anzeigen();
  });
  connect(dateiKnopf_, &QPushButton::clicked, this, [this] {
    uebernehmen();
    if (logik_.combutDatei_Click()) Anzeigen();
  });
  connect(schliessen, &QPushButton::clicked, this, &QDialog::accept);
  connect(einfuegenKnopf, &QPushButton::clicked, this, [this] {
    if (einfuegen) einfuegen();
  });
  connect(bildKnopf, &QPushButton::clicked, this, [this] {
    if (bild) bild();
  });
  // The definition changes the captions: the card is shown anew.
  connect(defKnopf, &QPushButton::clicked, this, [this] {
    if (definition && definition()) {
      logik_.Anzeigen();
      Anzeigen();
    }
  });
  Anzeigen();
  if (logik_.schreibgeschuetzt) subMsgboxInfoEinzeilig(945);
}

void FrmDbMaske::uebernehmen() {
  for (int i = 0; i < 10; ++i) logik_.txtBenennung[size_t(i)] = txtBenennung_[i]->text();
  logik_.txtLayer = txtLayer_->text();
  logik_.txtLinie = txtLinie_->text();
  logik_.txtFarbe = txtFarbe_->text();
}

void FrmDbMaske::Anzeigen() {
  const bool schreiben = logik_.zeile && !logik_.schreibgeschuetzt;
  for (int i = 0; i < 10; ++i) {
    labBenennung_[i]->setText(logik_.labBenennung[size_t(i)]);
    txtBenennung_[i]->setText(logik_.txtBenennung[size_t(i)]);
    txtBenennung_[i]->setReadOnly(!schreiben);
  }
  txtLayer_->setText(logik_.txtLayer);
  txtLinie_->setText(logik_.txtLinie);
  txtFarbe_->setText(logik_.txtFarbe);
  txtLayer_->setReadOnly(!schreiben);
  // The keystroke route can't be asked about layers.
  txtLinie_->setReadOnly(!schreiben || !logik_.layerFragen);
  txtFarbe_->setReadOnly(!schreiben || !logik_.layerFragen);
  layerListe_->setEnabled(schreiben && logik_.layerFragen && bridge_);
  dateiKnopf_->setEnabled(schreiben);
  speichern_->setEnabled(schreiben);
  leer_->setEnabled(schreiben);
  labBlockName_->setText(logik_.labBlockName + QStringLiteral("\n") + fctFormBeschriftung(kForm, QStringLiteral("labSeite")) +
                         u' ' + logik_.labSeitenNummer);
  sld_->setPath(logik_.slideAdresse);
}

}  // namespace kolvane

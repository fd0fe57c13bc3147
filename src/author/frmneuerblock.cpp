#include "frmneuerblock.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "bildausschnitt.h"
#include "blocknameeingeben.h"
#include "cadbridge.h"
#include "karteidateneingabe.h"
#include "formtexte.h"
#include "kartendefinition.h"
#include "slideview.h"

namespace kolvane {

namespace {



// The dialog known to the bridge while it is open, under its number.
int zeigen(QDialog& d, CadBridge& b, int nummer) {
  b.formulare[size_t(nummer)] = &d;
  const int r = d.exec();
  b.formulare[size_t(nummer)] = nullptr;
  return r == QDialog::Accepted ? 1 : 0;
}

}  // namespace

// ---------------------------------------------------------------- block name

FrmBlocknameEingeben::FrmBlocknameEingeben(BlocknameEingeben& logik, QWidget* parent)
    : QDialog(parent), logik_(logik) {
  const QString f = QStringLiteral("frmBlocknameEingeben");
  setObjectName(f);
  setWindowTitle(fctFormBeschriftung(f, logik_.variante ? QStringLiteral("CaptionVariante") : QStringLiteral("Caption")));
  setModal(true);
  auto* lab = new QLabel(fctFormBeschriftung(
      f, logik_.variante ? QStringLiteral("labVariantenname") : QStringLiteral("labBlockname")));
  txt_ = new QLineEdit(logik_.txtBlocknameEingeben);
  txt_->setObjectName(QStringLiteral("txtBlocknameEingeben"));
  lab->setBuddy(txt_);
  auto* ok = fctFormKnopf(f, QStringLiteral("cmbOk"));
  ok->setDefault(true);
  auto* abbrechen = fctFormKnopf(f, QStringLiteral("cmbAbbrechen"));
  auto* knoepfe = new QHBoxLayout;
  knoepfe->addStretch();
  knoepfe->addWidget(ok);
  knoepfe->addWidget(abbrechen);
  auto* l = new QVBoxLayout(this);
  l->addWidget(lab);
  l->addWidget(txt_);
  l->addLayout(knoepfe);
  connect(ok, &QPushButton::clicked, this, [this] {
    logik_.txtBlocknameEingeben = txt_->text();
    if (logik_.cmbOk_Click())
      accept();
    else
      txt_->setFocus();
  });
  connect(abbrechen, &QPushButton::clicked, this, &QDialog::reject);
  resize(420, sizeHint().height());
}

// ---------------------------------------------------------------- data card

FrmKarteiDateneingabe::FrmKarteiDateneingabe(Karteidateneingabe& logik, QWidget* parent)
    : QDialog(parent), logik_(logik) {
  const QString f = QStringLiteral("frmKarteiDateneingabe");
  setObjectName(f);
  setWindowTitle(fctFormBeschriftung(f, QStringLiteral("Caption")) + QStringLiteral(" – ") + logik_.labBlockName);
  setModal(true);
  auto* vorschau = new SlideView(0);
  vorschau->setObjectName(QStringLiteral("sldKartei"));
  vorschau->setMinimumSize(200, 150);
  vorschau->setPath(logik_.labAnzeigePfad);
  auto* felder = new QFormLayout;
  for (int i = 0; i < 10; ++i) {
    auto* t = new QLineEdit(logik_.txtBenennung[size_t(i)]);
    t->setObjectName(QStringLiteral("txtBenennung_%1").arg(i));
    t->setMaxLength(100);
    auto* lab = new QLabel(logik_.labBenennung[size_t(i)]);
    lab->setObjectName(QStringLiteral("labBenennung_%1").arg(i));
    felder->addRow(lab, t);
    txtBenennung_ << t;
  }
  auto feld = [&](const QString& name, const QString& wert, int laenge) {
    auto* t = new QLineEdit(wert);
    t->setObjectName(name);
    t->setMaxLength(laenge);
    return t;
  };
  txtLayer_ = feld(QStringLiteral("txtLayer"), logik_.txtLayer, 35);
  txtLinie_ = feld(QStringLiteral("txtLinie"), logik_.txtLinie, 20);
  txtFarbe_ = feld(QStringLiteral("txtFarbe"), logik_.txtFarbe, 4);
  auto* layerZeile = new QHBoxLayout;
  layerZeile->addWidget(txtLayer_, 1);
  auto* layerListe = fctFormKnopf(f, QStringLiteral("combutLayerListe"));
  layerListe->setEnabled(logik_.bridge != nullptr);
  layerZeile->addWidget(layerListe);
  felder->addRow(fctFormBeschriftung(f, QStringLiteral("labLayer")), layerZeile);
  connect(layerListe, &QPushButton::clicked, this, [this] {
    if (!logik_.combutLayerListe_Click()) return;
    txtLayer_->setText(logik_.txtLayer);
    txtLinie_->setText(logik_.txtLinie);
    txtFarbe_->setText(logik_.txtFarbe);
  });
  felder->addRow(fctFormBeschriftung(f, QStringLiteral("labLinie")), txtLinie_);
  felder->addRow(fctFormBeschriftung(f, QStringLiteral("labFarbe")), txtFarbe_);
  auto* speichern = fctFormKnopf(f, QStringLiteral("combutSpeichern"));
  speichern->setDefault(true);
  auto* abbrechen = fctFormKnopf(f, QStringLiteral("combutAbbrechen"));
  auto* kopf = new QHBoxLayout;
  auto* info = new QVBoxLayout;
  auto* name = new QLabel(logik_.labBlockName);
  name->setObjectName(QStringLiteral("labBlockName"));
  auto* pfad = new QLabel(logik_.labAnzeigePfad);
  pfad->setObjectName(QStringLiteral("labAnzeigePfad"));
  pfad->setWordWrap(true);
  info->addWidget(name);
  info->addWidget(pfad);
  info->addStretch();
  kopf->addWidget(vorschau);
  kopf->addLayout(info, 1);
  // The defaults of a card definition file as the values.
  auto* datei = fctFormKnopf(f, QStringLiteral("combutDatei"));
  connect(datei, &QPushButton::clicked, this, [this] {
    if (!fctKartenwerteAusDateiLaden(logik_.bibliothek(), logik_.txtBenennung)) return;
    for (int i = 0; i < 10; ++i) txtBenennung_[i]->setText(logik_.txtBenennung[size_t(i)]);
  });
  auto* knoepfe = new QHBoxLayout;
  knoepfe->addWidget(datei);
  knoepfe->addStretch();
  knoepfe->addWidget(speichern);
  knoepfe->addWidget(abbrechen);
  auto* l = new QVBoxLayout(this);
  l->addLayout(kopf);
  l->addLayout(felder);
  l->addLayout(knoepfe);
  connect(speichern, &QPushButton::clicked, this, [this] {
    for (int i = 0; i < 10; ++i) logik_.txtBenennung[size_t(i)] = txtBenennung_[i]->text();
    logik_.txtLayer = txtLayer_->text();
    logik_.txtLinie = txtLinie_->text();
    logik_.txtFarbe = txtFarbe_->text();
    accept();
  });
  connect(abbrechen, &QPushButton::clicked, this, &FrmKarteiDateneingabe::reject);
  txtBenennung_.first()->setFocus();
}

void FrmKarteiDateneingabe::reject() {
  if (logik_.combutAbbrechen_Click()) QDialog::reject();
}

// ---------------------------------------------------------------- picture frame

FrmBildausschnittAnpassen::FrmBildausschnittAnpassen(Bildausschnitt& logik, QWidget* parent)
    : QDialog(parent), logik_(logik) {
  const QString f = QStringLiteral("frmBildausschnittAnpassen");
  setObjectName(f);
  setWindowTitle(fctFormBeschriftung(f, QStringLiteral("Caption")));
  setModal(true);
  sld_ = new SlideView(0);
  sld_->setObjectName(QStringLiteral("sldBildausschnittAnpassen"));
  sld_->setMinimumSize(360, 270);
  auto* frage = new QLabel(fctFormBeschriftung(f, QStringLiteral("labBildausschnittKorrekt")));
  frage->setObjectName(QStringLiteral("labBildausschnittKorrekt"));
  auto* ja = fctFormKnopf(f, QStringLiteral("cmbJa"));
  ja->setDefault(true);
  auto* nein = fctFormKnopf(f, QStringLiteral("cmbNein"));
  auto* gross = fctFormKnopf(f, QStringLiteral("cmbZoomGross"));
  auto* klein = fctFormKnopf(f, QStringLiteral("cmbZoomKlein"));
  auto* pan = fctFormKnopf(f, QStringLiteral("cmbPan"));
  auto* verdeckt = fctFormKnopf(f, QStringLiteral("cmbVerdeckt"));
  auto* ausblenden = fctFormKnopf(f, QStringLiteral("cmbElementeAusblenden"));
  auto* knoepfe = new QGridLayout;
  knoepfe->addWidget(ja, 0, 0);
  knoepfe->addWidget(nein, 0, 1);
  knoepfe->addWidget(gross, 1, 0);
  knoepfe->addWidget(klein, 1, 1);
  knoepfe->addWidget(pan, 2, 0);
  knoepfe->addWidget(verdeckt, 2, 1);
  knoepfe->addWidget(ausblenden, 3, 0, 1, 2);
  knoepfe->setRowStretch(4, 1);
  auto* l = new QHBoxLayout(this);
  auto* links = new QVBoxLayout;
  links->addWidget(sld_, 1);
  links->addWidget(frage);
  l->addLayout(links, 1);
  l->addLayout(knoepfe);
  logik_.dialogVorn = [this](bool vorn) {
    if (vorn) {
      show();
      raise();
      activateWindow();
    } else {
      hide();
    }
  };
  auto neu = [this](void (Bildausschnitt::*aktion)()) {
    return [this, aktion] {
      (logik_.*aktion)();
      Anzeigen();
    };
  };
  connect(ja, &QPushButton::clicked, this, [this] {
    logik_.cmbJa_Click();
    accept();
  });
  connect(nein, &QPushButton::clicked, this, neu(&Bildausschnitt::cmbNein_Click));
  connect(gross, &QPushButton::clicked, this, neu(&Bildausschnitt::cmbZoomGross_Click));
  connect(klein, &QPushButton::clicked, this, neu(&Bildausschnitt::cmbZoomKlein_Click));
  connect(pan, &QPushButton::clicked, this, neu(&Bildausschnitt::cmbPan_Click));
  connect(ausblenden, &QPushButton::clicked, this, neu(&Bildausschnitt::cmbElementeAusblenden_Click));
  connect(verdeckt, &QPushButton::clicked, this, [this] {
    logik_.cmbVerdeckt_Click();
    accept();
  });
  ausblenden->setVisible(!logik_.bytBlockImportManuell());
  Anzeigen();
}

void FrmBildausschnittAnpassen::Anzeigen() {
  // The same path again: the view reads the file anew.
  sld_->setPath(QString());
  sld_->setPath(logik_.slideDatei());
}

int zeigeBlocknameEingeben(BlocknameEingeben& l, CadBridge& b, QWidget* eltern) {
  FrmBlocknameEingeben f(l, eltern);
  return zeigen(f, b, 3);
}

int zeigeKarteiDateneingabe(Karteidateneingabe& l, CadBridge& b, QWidget* eltern) {
  FrmKarteiDateneingabe f(l, eltern);
  return zeigen(f, b, 2);
}

int zeigeBildausschnittAnpassen(Bildausschnitt& l, CadBridge& b, QWidget* eltern) {
  FrmBildausschnittAnpassen f(l, eltern);
  const int r = zeigen(f, b, 1);
  l.dialogVorn = nullptr;
  return r;
}

}  // namespace kolvane

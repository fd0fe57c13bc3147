#include "frmerweitertessetup.h"

#include <QColorDialog>
#include <QComboBox>
#include <QDir>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "erweitertessetup.h"
#include "formtexte.h"
#include "grid.h"
#include "prompt.h"

namespace kolvane {

namespace {

const QString kForm = QStringLiteral("frmErweitertesSetup");

QGroupBox* rahmenBox(const QString& name) {
  auto* g = new QGroupBox(fctFormBeschriftung(kForm, name));
  g->setObjectName(name);
  return g;
}

}  // namespace

FrmErweitertesSetup::FrmErweitertesSetup(ErweitertesSetup& logik, QWidget* parent)
    : QDialog(parent), logik_(logik) {
  setObjectName(kForm);
  setWindowTitle(fctFormBeschriftung(kForm, QStringLiteral("Caption")));
  setModal(true);

  // --- libraries ---
  QGroupBox* fraDatenbanken = rahmenBox(QStringLiteral("fraDatenbanken"));
  lisDatenbanken_ = new QListWidget;
  lisDatenbanken_->setObjectName(QStringLiteral("cboDatenbanken"));
  lisDatenbanken_->setMinimumWidth(420);
  auto* hinzufuegen = fctFormKnopf(kForm, QStringLiteral("cmbDatenbankHinzufuegen"));
  auto* neu = fctFormKnopf(kForm, QStringLiteral("cmbDatenbankNeu"));
  neu->setEnabled(bool(logik_.hooks.datenbankNeu));
  cmdLoeschen_ = fctFormKnopf(kForm, QStringLiteral("cmdLoeschen"));
  cmdNachOben_ = fctFormKnopf(kForm, QStringLiteral("cmdNachOben"));
  cmdNachUnten_ = fctFormKnopf(kForm, QStringLiteral("cmdNachUnten"));
  auto* import = fctFormKnopf(kForm, QStringLiteral("cmbDatenbankImport"));
  import->setEnabled(false);
  import->setToolTip(fctFormBeschriftung(kForm, QStringLiteral("cmbDatenbankImportSpaeter")));
  auto* dbKnoepfe = new QVBoxLayout;
  for (QPushButton* b : {hinzufuegen, neu, cmdLoeschen_, cmdNachOben_, cmdNachUnten_, import})
    dbKnoepfe->addWidget(b);
  dbKnoepfe->addStretch();
  auto* dbZeile = new QHBoxLayout(fraDatenbanken);
  dbZeile->addWidget(lisDatenbanken_, 1);
  dbZeile->addLayout(dbKnoepfe);

  // --- display ---
  QGroupBox* fraAnzeige = rahmenBox(QStringLiteral("fraAnzeige"));
  auto* anzeige = new QGridLayout(fraAnzeige);
  auto* labBilderanzahl = new QLabel(fctFormBeschriftung(kForm, QStringLiteral("labBilderanzahl")));
  comboxBilderanzahl_ = new QComboBox;
  comboxBilderanzahl_->setObjectName(QStringLiteral("comboxBilderanzahl"));
  const QStringList eintraege = ErweitertesSetup::bilderanzahlEintraege();
  for (int i = 0; i < eintraege.size(); ++i) {
    // The grid beside the old entry's name, so "20a" and "20b" say something.
    const GridSize g = gridForSetting(i);
    comboxBilderanzahl_->addItem(QStringLiteral("%1  (%2 × %3)").arg(eintraege[i]).arg(g.rows).arg(g.columns));
  }
  labBilderanzahl->setBuddy(comboxBilderanzahl_);
  auto* labHintergrund = new QLabel(fctFormBeschriftung(kForm, QStringLiteral("labHintergrund")));
  picHintergrund_ = new QLabel;
  picHintergrund_->setObjectName(QStringLiteral("picHintergrund"));
  // Wide enough for the word that stands for "no colour of its own".
  picHintergrund_->setFixedSize(
      qMax(60, picHintergrund_->fontMetrics().horizontalAdvance(
                   fctFormBeschriftung(kForm, QStringLiteral("HintergrundStandard"))) + 16),
      24);
  picHintergrund_->setFrameShape(QFrame::Box);
  picHintergrund_->setAutoFillBackground(true);
  picHintergrund_->setAlignment(Qt::AlignCenter);
  auto* farbeWaehlen = fctFormKnopf(kForm, QStringLiteral("cmdHintergrundWaehlen"));
  auto* farbeStandard = fctFormKnopf(kForm, QStringLiteral("cmdHintergrundStandard"));
  auto* farbZeile = new QHBoxLayout;
  farbZeile->addWidget(picHintergrund_);
  farbZeile->addWidget(farbeWaehlen);
  farbZeile->addWidget(farbeStandard);
  farbZeile->addStretch();
  anzeige->addWidget(labBilderanzahl, 0, 0);
  anzeige->addWidget(comboxBilderanzahl_, 0, 1, Qt::AlignLeft);
  anzeige->addWidget(labHintergrund, 1, 0);
  anzeige->addLayout(farbZeile, 1, 1);
  anzeige->setColumnStretch(1, 1);

  // --- language ---
  QGroupBox* fraSprache = rahmenBox(QStringLiteral("fraSprache"));
  auto* sprache = new QGridLayout(fraSprache);
  auto* labSprache = new QLabel(fctFormBeschriftung(kForm, QStringLiteral("labSprache")));
  cboSprachen_ = new QComboBox;
  cboSprachen_->setObjectName(QStringLiteral("cboSprachen"));
  cboSprachen_->addItems(logik_.sprachen());
  labSprache->setBuddy(cboSprachen_);
  auto* labHinweis = new QLabel(fctFormBeschriftung(kForm, QStringLiteral("labSpracheHinweis")));
  labHinweis->setObjectName(QStringLiteral("labSpracheHinweis"));
  labHinweis->setWordWrap(true);
  sprache->addWidget(labSprache, 0, 0);
  sprache->addWidget(cboSprachen_, 0, 1, Qt::AlignLeft);
  sprache->addWidget(labHinweis, 1, 0, 1, 2);
  sprache->setColumnStretch(1, 1);

  // --- buttons ---
  auto* ok = fctFormKnopf(kForm, QStringLiteral("cmbOk"));
  ok->setDefault(true);
  auto* abbrechen = fctFormKnopf(kForm, QStringLiteral("cmbAbbrechen"));
  auto* knoepfe = new QHBoxLayout;
  knoepfe->addStretch();
  knoepfe->addWidget(ok);
  knoepfe->addWidget(abbrechen);

  auto* unten = new QHBoxLayout;
  unten->addWidget(fraAnzeige, 1);
  unten->addWidget(fraSprache, 1);
  auto* l = new QVBoxLayout(this);
  l->addWidget(fraDatenbanken, 1);
  l->addLayout(unten);
  l->addLayout(knoepfe);

  // --- events to the logic ---
  connect(lisDatenbanken_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (fuellt_) return;
    logik_.auswahl = row;
    aktualisieren();
  });
  auto nachKlick = [this](bool (ErweitertesSetup::*routine)()) {
    return [this, routine] {
      if ((logik_.*routine)()) aktualisieren();
    };
  };
  connect(hinzufuegen, &QPushButton::clicked, this, nachKlick(&ErweitertesSetup::cmbDatenbankHinzufuegen_Click));
  connect(neu, &QPushButton::clicked, this, nachKlick(&ErweitertesSetup::cmbDatenbankNeu_Click));
  connect(cmdLoeschen_, &QPushButton::clicked, this, nachKlick(&ErweitertesSetup::cmdLoeschen_Click));
  connect(cmdNachOben_, &QPushButton::clicked, this, nachKlick(&ErweitertesSetup::nachOben));
  connect(cmdNachUnten_, &QPushButton::clicked, this, nachKlick(&ErweitertesSetup::nachUnten));
  connect(comboxBilderanzahl_, &QComboBox::activated, this, [this](int i) { logik_.comboxBilderanzahl = i; });
  connect(cboSprachen_, &QComboBox::activated, this,
          [this](int i) { logik_.sprache = cboSprachen_->itemText(i); });
  connect(farbeWaehlen, &QPushButton::clicked, this, [this] {
    QColor gewaehlt;
    const QColor start = logik_.hintergrund().isValid() ? logik_.hintergrund() : QColor(Qt::white);
    QPointer<QWidget> selbst(this);
    const QString titel = fctFormBeschriftung(kForm, QStringLiteral("TitelHintergrund"));
    if (prompt().dialog(QStringLiteral("dlgHintergrundfarbe"), [&gewaehlt, start, selbst, titel] {
          gewaehlt = QColorDialog::getColor(start, selbst.data(), titel);
          return gewaehlt.isValid() ? 1 : 0;
        }) == 1 && gewaehlt.isValid()) {
      logik_.setHintergrund(gewaehlt);
      aktualisieren();
    }
  });
  connect(farbeStandard, &QPushButton::clicked, this, [this] {
    logik_.setHintergrund(QColor());
    aktualisieren();
  });
  connect(ok, &QPushButton::clicked, this, [this] {
    if (logik_.cmbOk_Click()) accept();
  });
  connect(abbrechen, &QPushButton::clicked, this, &QDialog::reject);

  aktualisieren();
  lisDatenbanken_->setFocus();
}

void FrmErweitertesSetup::aktualisieren() {
  fuellt_ = true;
  lisDatenbanken_->clear();
  const QStringList& dbs = logik_.datenbanken();
  for (int i = 0; i < dbs.size(); ++i) {
    auto* item = new QListWidgetItem(QDir::toNativeSeparators(dbs[i]));
    if (logik_.istAktuell(i)) {
      // The library in use stands out; it can't be removed.
      QFont f = item->font();
      f.setBold(true);
      item->setFont(f);
      item->setToolTip(fctFormBeschriftung(kForm, QStringLiteral("DatenbankAktuell")));
    }
    lisDatenbanken_->addItem(item);
  }
  lisDatenbanken_->setCurrentRow(logik_.auswahl);
  const int n = int(dbs.size());
  cmdLoeschen_->setEnabled(logik_.auswahl >= 0 && logik_.auswahl < n && !logik_.istAktuell(logik_.auswahl));
  cmdNachOben_->setEnabled(logik_.auswahl > 0 && logik_.auswahl < n);
  cmdNachUnten_->setEnabled(logik_.auswahl >= 0 && logik_.auswahl + 1 < n);

  comboxBilderanzahl_->setCurrentIndex(logik_.comboxBilderanzahl);

  QPalette p = picHintergrund_->palette();
  if (logik_.hintergrund().isValid()) {
    p.setColor(QPalette::Window, logik_.hintergrund());
    picHintergrund_->setText(QString());
  } else {
    p = QPalette();
    picHintergrund_->setText(fctFormBeschriftung(kForm, QStringLiteral("HintergrundStandard")));
  }
  picHintergrund_->setPalette(p);

  cboSprachen_->setCurrentIndex(cboSprachen_->findText(logik_.sprache));
  fuellt_ = false;
}

int zeigeErweitertesSetup(ErweitertesSetup& logik, QWidget* eltern) {
  QPointer<QWidget> fenster(eltern);
  bool gezeigt = false;
  const int r = prompt().dialog(kForm, [&logik, &gezeigt, fenster] {
    gezeigt = true;
    FrmErweitertesSetup f(logik, fenster.data());
    return f.exec() == QDialog::Accepted ? 1 : 0;
  });
  if (r != 1) return 0;
  // Confirmed without the dialog (scripted): the same OK.
  if (!gezeigt && !logik.cmbOk_Click()) return 0;
  return 1;
}

}  // namespace kolvane

#include "frmordner.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "formtexte.h"
#include "ordner.h"
#include "prompt.h"

namespace kolvane {

namespace {

const QString kVerwaltung = QStringLiteral("frmOrdnerverwaltung");
const QString kNeu = QStringLiteral("frmOrdnerNeu");
const QString kUmbenennen = QStringLiteral("frmOrdnerUmbenennen");

// The common shape of the two name dialogs: label, field, OK and Cancel. OK
// hands the text to the logic and closes only when it went through; otherwise
// the text stays, selected, for correction.
template <class Logik>
QLineEdit* nameDialogAufbauen(QDialog* d, const QString& form, Logik& logik) {
  d->setObjectName(form);
  d->setWindowTitle(fctFormBeschriftung(form, QStringLiteral("Caption")));
  d->setModal(true);
  auto* lab = new QLabel(fctFormBeschriftung(form, QStringLiteral("labOrdnername")));
  // No length limit here: a field would cut a pasted name silently; the
  // logic refuses a long one with a message instead.
  auto* feld = new QLineEdit(logik.txtOrdnername);
  feld->setObjectName(QStringLiteral("txtOrdnername"));
  lab->setBuddy(feld);
  auto* ok = fctFormKnopf(form, QStringLiteral("cmbOk"));
  ok->setDefault(true);
  auto* abbrechen = fctFormKnopf(form, QStringLiteral("cmbAbbrechen"));
  auto* knoepfe = new QHBoxLayout;
  knoepfe->addStretch();
  knoepfe->addWidget(ok);
  knoepfe->addWidget(abbrechen);
  auto* l = new QVBoxLayout(d);
  l->addWidget(lab);
  l->addWidget(feld);
  l->addLayout(knoepfe);
  QObject::connect(ok, &QPushButton::clicked, d, [d, feld, &logik] {
    logik.txtOrdnername = feld->text();
    if (logik.cmbOk_Click()) {
      d->accept();
    } else {
      feld->setFocus();
      feld->selectAll();
    }
  });
  QObject::connect(abbrechen, &QPushButton::clicked, d, &QDialog::reject);
  d->resize(420, d->sizeHint().height());
  feld->setFocus();
  feld->selectAll();
  return feld;
}

}  // namespace

FrmOrdnerNeu::FrmOrdnerNeu(OrdnerNeu& logik, QWidget* parent) : QDialog(parent), logik_(logik) {
  txtOrdnername_ = nameDialogAufbauen(this, kNeu, logik_);
}

FrmOrdnerUmbenennen::FrmOrdnerUmbenennen(OrdnerUmbenennen& logik, QWidget* parent)
    : QDialog(parent), logik_(logik) {
  txtOrdnername_ = nameDialogAufbauen(this, kUmbenennen, logik_);
}

FrmOrdnerverwaltung::FrmOrdnerverwaltung(OrdnerVerwaltung& logik, QWidget* parent)
    : QDialog(parent), logik_(logik) {
  setObjectName(kVerwaltung);
  setWindowTitle(fctFormBeschriftung(kVerwaltung, QStringLiteral("Caption")));
  setModal(true);

  dlisOrdner_ = new QListWidget;
  dlisOrdner_->setObjectName(QStringLiteral("dlisOrdner"));
  imgAuf_ = fctFormKnopf(kVerwaltung, QStringLiteral("imgAuf"));
  imgAb_ = fctFormKnopf(kVerwaltung, QStringLiteral("imgAb"));
  cmbNeu_ = fctFormKnopf(kVerwaltung, QStringLiteral("cmbNeu"));
  cmbUmbenennen_ = fctFormKnopf(kVerwaltung, QStringLiteral("cmbUmbenennen"));
  cmbLoeschen_ = fctFormKnopf(kVerwaltung, QStringLiteral("cmbLoeschen"));
  auto* import = fctFormKnopf(kVerwaltung, QStringLiteral("cmdOrdnerImport"));
  auto* export_ = fctFormKnopf(kVerwaltung, QStringLiteral("cmdOrdnerExport"));
  auto* ok = fctFormKnopf(kVerwaltung, QStringLiteral("cmbOk"));
  ok->setDefault(true);

  const bool schreiben = !logik_.schreibgeschuetzt();
  for (QPushButton* b : {cmbNeu_, cmbUmbenennen_, cmbLoeschen_, imgAuf_, imgAb_}) b->setEnabled(schreiben);
  import->setEnabled(schreiben && bool(logik_.hooks.cmdOrdnerImport));
  export_->setEnabled(bool(logik_.hooks.cmdOrdnerExport));

  auto* rechts = new QVBoxLayout;
  for (QPushButton* b : {cmbNeu_, cmbUmbenennen_, cmbLoeschen_}) rechts->addWidget(b);
  rechts->addSpacing(12);
  rechts->addWidget(imgAuf_);
  rechts->addWidget(imgAb_);
  rechts->addSpacing(12);
  rechts->addWidget(import);
  rechts->addWidget(export_);
  rechts->addStretch();
  rechts->addWidget(ok);
  auto* l = new QHBoxLayout(this);
  l->addWidget(dlisOrdner_, 1);
  l->addLayout(rechts);

  // The name dialogs of this form.
  logik_.hooks.frmOrdnerNeu = [this](OrdnerNeu& n) {
    FrmOrdnerNeu f(n, this);
    return f.exec() == QDialog::Accepted ? 1 : 0;
  };
  logik_.hooks.frmOrdnerUmbenennen = [this](OrdnerUmbenennen& u) {
    FrmOrdnerUmbenennen f(u, this);
    return f.exec() == QDialog::Accepted ? 1 : 0;
  };

  connect(dlisOrdner_, &QListWidget::currentRowChanged, this, [this](int row) { logik_.auswahl = row; });
  connect(dlisOrdner_, &QListWidget::itemDoubleClicked, this, [this] { befehl(&OrdnerVerwaltung::cmbUmbenennen_Click); });
  connect(cmbNeu_, &QPushButton::clicked, this, [this] { befehl(&OrdnerVerwaltung::cmbNeu_Click); });
  connect(cmbUmbenennen_, &QPushButton::clicked, this, [this] { befehl(&OrdnerVerwaltung::cmbUmbenennen_Click); });
  connect(cmbLoeschen_, &QPushButton::clicked, this, [this] { befehl(&OrdnerVerwaltung::cmbLoeschen_Click); });
  connect(imgAuf_, &QPushButton::clicked, this, [this] {
    logik_.imgAufAb_Click(false);
    anzeigen();
  });
  connect(imgAb_, &QPushButton::clicked, this, [this] {
    logik_.imgAufAb_Click(true);
    anzeigen();
  });
  connect(import, &QPushButton::clicked, this, [this] {
    if (logik_.hooks.cmdOrdnerImport) logik_.hooks.cmdOrdnerImport();
    logik_.Anzeigen();
    anzeigen();
  });
  connect(export_, &QPushButton::clicked, this, [this] {
    if (logik_.hooks.cmdOrdnerExport) logik_.hooks.cmdOrdnerExport();
  });
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);

  anzeigen();
  resize(480, 360);
}

FrmOrdnerverwaltung::~FrmOrdnerverwaltung() {
  logik_.hooks.frmOrdnerNeu = {};
  logik_.hooks.frmOrdnerUmbenennen = {};
}

void FrmOrdnerverwaltung::befehl(bool (OrdnerVerwaltung::*routine)()) {
  (logik_.*routine)();
  anzeigen();
}

void FrmOrdnerverwaltung::anzeigen() {
  const QSignalBlocker sperre(dlisOrdner_);
  dlisOrdner_->clear();
  dlisOrdner_->addItems(logik_.eintraege());
  dlisOrdner_->setCurrentRow(logik_.auswahl);
}

int zeigeOrdnerverwaltung(Blockverwaltung& bv, QWidget* eltern, std::function<void()> ordnerImport,
                          std::function<void()> ordnerExport) {
  OrdnerVerwaltung logik(bv);
  logik.hooks.cmdOrdnerImport = std::move(ordnerImport);
  logik.hooks.cmdOrdnerExport = std::move(ordnerExport);
  QPointer<QWidget> fenster(eltern);
  return prompt().dialog(kVerwaltung, [&logik, fenster] {
    FrmOrdnerverwaltung f(logik, fenster.data());
    return f.exec() == QDialog::Accepted ? 1 : 0;
  });
}

}  // namespace kolvane

#include "frmseiten.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "formtexte.h"
#include "prompt.h"
#include "seiten.h"

namespace kolvane {

namespace {

const QString kVerwaltung = QStringLiteral("frmSeitenverwaltung");
const QString kNeu = QStringLiteral("frmSeiteNeu");
const QString kUmbenennen = QStringLiteral("frmSeiteUmbenennen");

// OK and Cancel below a form; OK runs uebernehmen and closes only when it
// went through.
void knoepfeAnfuegen(QDialog* d, const QString& form, QVBoxLayout* l, const std::function<bool()>& uebernehmen,
                     QLineEdit* fokus) {
  auto* ok = fctFormKnopf(form, QStringLiteral("cmbOk"));
  ok->setDefault(true);
  auto* abbrechen = fctFormKnopf(form, QStringLiteral("cmbAbbrechen"));
  auto* knoepfe = new QHBoxLayout;
  knoepfe->addStretch();
  knoepfe->addWidget(ok);
  knoepfe->addWidget(abbrechen);
  l->addLayout(knoepfe);
  QObject::connect(ok, &QPushButton::clicked, d, [d, uebernehmen, fokus] {
    if (uebernehmen()) {
      d->accept();
    } else {
      fokus->setFocus();
      fokus->selectAll();
    }
  });
  QObject::connect(abbrechen, &QPushButton::clicked, d, &QDialog::reject);
}

QLineEdit* feld(const QString& name, const QString& text) {
  auto* f = new QLineEdit(text);
  f->setObjectName(name);
  return f;
}

}  // namespace

FrmSeiteNeu::FrmSeiteNeu(SeiteNeu& logik, QWidget* parent) : QDialog(parent), logik_(logik) {
  setObjectName(kNeu);
  setWindowTitle(fctFormBeschriftung(kNeu, QStringLiteral("Caption")));
  setModal(true);
  txtSeitenNr_ = feld(QStringLiteral("txtSeitenNr"), logik_.txtSeitenNr);
  txtSeitenname_ = feld(QStringLiteral("txtSeitenname"), logik_.txtSeitenname);
  auto* form = new QFormLayout;
  form->addRow(fctFormBeschriftung(kNeu, QStringLiteral("labSeitenNr")), txtSeitenNr_);
  form->addRow(fctFormBeschriftung(kNeu, QStringLiteral("labSeitenname")), txtSeitenname_);
  auto* l = new QVBoxLayout(this);
  l->addLayout(form);
  knoepfeAnfuegen(this, kNeu, l, [this] {
    logik_.txtSeitenNr = txtSeitenNr_->text();
    logik_.txtSeitenname = txtSeitenname_->text();
    return logik_.cmbOk_Click();
  }, txtSeitenname_);
  resize(420, sizeHint().height());
  txtSeitenname_->setFocus();
}

FrmSeiteUmbenennen::FrmSeiteUmbenennen(SeiteUmbenennen& logik, QWidget* parent)
    : QDialog(parent), logik_(logik) {
  setObjectName(kUmbenennen);
  setWindowTitle(fctFormBeschriftung(kUmbenennen, QStringLiteral("Caption")));
  setModal(true);
  txtSeitenname_ = feld(QStringLiteral("txtSeitenname"), logik_.txtSeitenname);
  auto* form = new QFormLayout;
  auto* nummer = new QLabel(QString::number(logik_.seitenNr()));
  nummer->setObjectName(QStringLiteral("labSeitenNrWert"));
  form->addRow(fctFormBeschriftung(kUmbenennen, QStringLiteral("labSeitenNr")), nummer);
  form->addRow(fctFormBeschriftung(kUmbenennen, QStringLiteral("labSeitenname")), txtSeitenname_);
  auto* l = new QVBoxLayout(this);
  l->addLayout(form);
  knoepfeAnfuegen(this, kUmbenennen, l, [this] {
    logik_.txtSeitenname = txtSeitenname_->text();
    return logik_.cmbOk_Click();
  }, txtSeitenname_);
  resize(420, sizeHint().height());
  txtSeitenname_->setFocus();
  txtSeitenname_->selectAll();
}

FrmSeitenverwaltung::FrmSeitenverwaltung(SeitenVerwaltung& logik, QWidget* parent)
    : QDialog(parent), logik_(logik) {
  setObjectName(kVerwaltung);
  setWindowTitle(fctFormBeschriftung(kVerwaltung, QStringLiteral("Caption")));
  setModal(true);
  lisSeiten_ = new QListWidget;
  lisSeiten_->setObjectName(QStringLiteral("lisSeiten"));
  auto* neu = fctFormKnopf(kVerwaltung, QStringLiteral("cmbNeu"));
  auto* umbenennen = fctFormKnopf(kVerwaltung, QStringLiteral("cmbUmbenennen"));
  auto* loeschen = fctFormKnopf(kVerwaltung, QStringLiteral("cmbLoeschen"));
  auto* alleLoeschen = fctFormKnopf(kVerwaltung, QStringLiteral("cmbAlleLoeschen"));
  auto* ok = fctFormKnopf(kVerwaltung, QStringLiteral("cmbOk"));
  ok->setDefault(true);
  auto* abbrechen = fctFormKnopf(kVerwaltung, QStringLiteral("cmbAbbrechen"));
  const bool schreiben = !logik_.schreibgeschuetzt();
  for (QPushButton* b : {neu, umbenennen, loeschen, alleLoeschen}) b->setEnabled(schreiben);

  auto* rechts = new QVBoxLayout;
  for (QPushButton* b : {neu, umbenennen, loeschen, alleLoeschen}) rechts->addWidget(b);
  rechts->addStretch();
  rechts->addWidget(ok);
  rechts->addWidget(abbrechen);
  auto* l = new QHBoxLayout(this);
  l->addWidget(lisSeiten_, 1);
  l->addLayout(rechts);

  logik_.hooks.frmSeiteNeu = [this](SeiteNeu& n) {
    FrmSeiteNeu f(n, this);
    return f.exec() == QDialog::Accepted ? 1 : 0;
  };
  logik_.hooks.frmSeiteUmbenennen = [this](SeiteUmbenennen& u) {
    FrmSeiteUmbenennen f(u, this);
    return f.exec() == QDialog::Accepted ? 1 : 0;
  };

  connect(lisSeiten_, &QListWidget::currentRowChanged, this, [this](int row) { logik_.auswahl = row; });
  // A double click goes to the page, as OK does.
  connect(lisSeiten_, &QListWidget::itemDoubleClicked, this, [this] {
    if (logik_.cmbOk_Click()) accept();
  });
  connect(neu, &QPushButton::clicked, this, [this] { befehl(&SeitenVerwaltung::cmbNeu_Click); });
  connect(umbenennen, &QPushButton::clicked, this, [this] { befehl(&SeitenVerwaltung::cmbUmbenennen_Click); });
  connect(loeschen, &QPushButton::clicked, this, [this] { befehl(&SeitenVerwaltung::cmbLoeschen_Click); });
  connect(alleLoeschen, &QPushButton::clicked, this, [this] { befehl(&SeitenVerwaltung::cmbAlleLoeschen_Click); });
  connect(ok, &QPushButton::clicked, this, [this] {
    logik_.cmbOk_Click();
    accept();
  });
  connect(abbrechen, &QPushButton::clicked, this, &QDialog::reject);

  anzeigen();
  resize(420, 360);
}

FrmSeitenverwaltung::~FrmSeitenverwaltung() {
  logik_.hooks.frmSeiteNeu = {};
  logik_.hooks.frmSeiteUmbenennen = {};
}

void FrmSeitenverwaltung::befehl(bool (SeitenVerwaltung::*routine)()) {
  (logik_.*routine)();
  anzeigen();
}

void FrmSeitenverwaltung::anzeigen() {
  const QSignalBlocker sperre(lisSeiten_);
  lisSeiten_->clear();
  lisSeiten_->addItems(logik_.eintraege());
  lisSeiten_->setCurrentRow(logik_.auswahl);
}

int zeigeSeitenverwaltung(Blockverwaltung& bv, QWidget* eltern) {
  SeitenVerwaltung logik(bv);
  QPointer<QWidget> fenster(eltern);
  const int r = prompt().dialog(kVerwaltung, [&logik, fenster] {
    FrmSeitenverwaltung f(logik, fenster.data());
    return f.exec() == QDialog::Accepted ? 1 : 0;
  });
  return r;
}

}  // namespace kolvane

#include "frmsetup.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDir>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <functional>

#include "formtexte.h"
#include "prompt.h"
#include "setup.h"

namespace kolvane {

namespace {

const QString kForm = QStringLiteral("frmSetup");

QGroupBox* rahmenBox(const QString& name) {
  auto* g = new QGroupBox(fctFormBeschriftung(kForm, name));
  g->setObjectName(name);
  return g;
}

}  // namespace

FrmSetup::FrmSetup(Setup& logik, QWidget* parent) : QDialog(parent), logik_(logik) {
  setObjectName(kForm);
  setWindowTitle(fctFormBeschriftung(kForm, QStringLiteral("Caption")));
  setModal(true);

  // The current library, for orientation.
  auto* pfadZeile = new QHBoxLayout;
  auto* labPfad = new QLabel(fctFormBeschriftung(kForm, QStringLiteral("labPfad")));
  auto* txtPfad = new QLineEdit(QDir::toNativeSeparators(logik_.txtPfad()));
  txtPfad->setObjectName(QStringLiteral("txtPfad"));
  txtPfad->setReadOnly(true);
  labPfad->setBuddy(txtPfad);
  pfadZeile->addWidget(labPfad);
  pfadZeile->addWidget(txtPfad, 1);

  // The check boxes by frame; the scale fields sit below their box.
  QHash<QString, QVBoxLayout*> spalten;
  QHash<QString, QGroupBox*> boxen;
  for (const QString& r : Setup::rahmen()) {
    boxen[r] = rahmenBox(r);
    spalten[r] = new QVBoxLayout(boxen[r]);
  }
  for (const SetupSchalter& s : Setup::schalter()) {
    const QString name = QString::fromLatin1(s.control);
    if (s.art != SetupSchalter::Art::Check) continue;
    auto* c = new QCheckBox(fctFormBeschriftung(kForm, name));
    c->setObjectName(name);
    controls_.insert(name, c);
    spalten[QString::fromLatin1(s.rahmen)]->addWidget(c);
    connect(c, &QCheckBox::toggled, this, [this, name](bool an) {
      if (fuellt_) return;
      logik_.anhaken(name, an);
      aktualisieren();
    });
  }
  auto* massstab = new QGridLayout;
  massstab->setContentsMargins(24, 0, 0, 0);
  int spalte = 0;
  for (const char* achse : {"X", "Y", "Z"}) {
    const QString txt = QStringLiteral("txtMassstab") + QLatin1String(achse);
    const QString lab = QStringLiteral("labMassstab") + QLatin1String(achse);
    auto* l = new QLabel(fctFormBeschriftung(kForm, lab));
    l->setObjectName(lab);
    auto* e = new QLineEdit;
    e->setObjectName(txt);
    e->setMaxLength(20);
    e->setMaximumWidth(80);
    l->setBuddy(e);
    controls_.insert(lab, l);
    controls_.insert(txt, e);
    massstab->addWidget(l, 0, spalte++);
    massstab->addWidget(e, 0, spalte++);
    connect(e, &QLineEdit::textEdited, this, [this, txt](const QString& t) { logik_.setText(txt, t); });
  }
  massstab->setColumnStretch(spalte, 1);
  // Right under "check the scale".
  QVBoxLayout* einfuegen = spalten[QStringLiteral("fraEinfuegen")];
  einfuegen->insertLayout(einfuegen->indexOf(controls_.value(QStringLiteral("checkMassstabskontrolle"))) + 1,
                          massstab);
  einfuegen->addStretch();

  // The option groups.
  auto gruppe = [this](const QString& rahmen, const QList<SetupOption>& optionen,
                       std::function<void(int)> setzen) {
    QGroupBox* box = rahmenBox(rahmen);
    controls_.insert(rahmen, box);
    auto* l = new QVBoxLayout(box);
    auto* g = new QButtonGroup(box);
    for (const SetupOption& o : optionen) {
      const QString name = QString::fromLatin1(o.control);
      auto* b = new QRadioButton(fctFormBeschriftung(kForm, name));
      b->setObjectName(name);
      controls_.insert(name, b);
      g->addButton(b, o.zahl);
      l->addWidget(b);
    }
    connect(g, &QButtonGroup::idToggled, this, [this, setzen](int id, bool an) {
      if (!fuellt_ && an) setzen(id);
    });
    return box;
  };
  QGroupBox* doppelklick = gruppe(QStringLiteral("fraDoppelklick"), Setup::doppelklickOptionen(),
                                  [this](int n) { logik_.setDoppelklick(n); });
  QGroupBox* bruch = gruppe(QStringLiteral("fraBruchOption"), Setup::bruchOptionen(),
                            [this](int n) { logik_.setBruchOption(n); });

  auto* rechts = new QVBoxLayout;
  spalten[QStringLiteral("fraNeu")]->addStretch();
  spalten[QStringLiteral("fraKolvane")]->addStretch();
  rechts->addWidget(boxen[QStringLiteral("fraNeu")]);
  rechts->addWidget(boxen[QStringLiteral("fraKolvane")]);
  rechts->addWidget(doppelklick);
  rechts->addWidget(bruch);
  rechts->addStretch();
  auto* mitte = new QHBoxLayout;
  mitte->addWidget(boxen[QStringLiteral("fraEinfuegen")], 1);
  mitte->addLayout(rechts, 1);

  // Buttons.
  auto* erweitert = fctFormKnopf(kForm, QStringLiteral("combutErweitertesSetup"));
  erweitert->setEnabled(bool(logik_.hooks.erweitertesSetup));
  auto* rechte = fctFormKnopf(kForm, QStringLiteral("combutRechte"));
  rechte->hide();  // the rights value is kept, but nothing acts on it
  auto* ok = fctFormKnopf(kForm, QStringLiteral("combutOk"));
  ok->setDefault(true);
  auto* abbrechen = fctFormKnopf(kForm, QStringLiteral("combutAbbrechen"));
  auto* knoepfe = new QHBoxLayout;
  knoepfe->addWidget(erweitert);
  knoepfe->addWidget(rechte);
  knoepfe->addStretch();
  knoepfe->addWidget(ok);
  knoepfe->addWidget(abbrechen);

  auto* l = new QVBoxLayout(this);
  l->addLayout(pfadZeile);
  l->addLayout(mitte, 1);
  l->addLayout(knoepfe);

  connect(ok, &QPushButton::clicked, this, [this] {
    if (logik_.combutOk_Click()) accept();
  });
  connect(abbrechen, &QPushButton::clicked, this, &QDialog::reject);
  connect(erweitert, &QPushButton::clicked, this, [this] {
    if (logik_.hooks.erweitertesSetup) logik_.hooks.erweitertesSetup();
  });

  aktualisieren();
}

void FrmSetup::aktualisieren() {
  fuellt_ = true;
  for (const SetupSchalter& s : Setup::schalter()) {
    const QString name = QString::fromLatin1(s.control);
    if (auto* c = qobject_cast<QCheckBox*>(controls_.value(name))) c->setChecked(logik_.angehakt(name));
    if (auto* e = qobject_cast<QLineEdit*>(controls_.value(name)); e && e->text() != logik_.text(name))
      e->setText(logik_.text(name));
  }
  for (const SetupOption& o : Setup::doppelklickOptionen())
    if (auto* b = qobject_cast<QRadioButton*>(controls_.value(QString::fromLatin1(o.control))))
      b->setChecked(logik_.doppelklick() == o.zahl);
  for (const SetupOption& o : Setup::bruchOptionen())
    if (auto* b = qobject_cast<QRadioButton*>(controls_.value(QString::fromLatin1(o.control))))
      b->setChecked(logik_.bruchOption() == o.zahl);
  for (auto it = controls_.cbegin(); it != controls_.cend(); ++it)
    it.value()->setEnabled(logik_.aktiviert(it.key()));
  fuellt_ = false;
}

int zeigeSetup(Setup& logik, QWidget* eltern) {
  QPointer<QWidget> fenster(eltern);
  bool gezeigt = false;
  const int r = prompt().dialog(kForm, [&logik, &gezeigt, fenster] {
    gezeigt = true;
    FrmSetup f(logik, fenster.data());
    return f.exec() == QDialog::Accepted ? 1 : 0;
  });
  if (r != 1) return 0;
  // Confirmed without the dialog (scripted): the same OK.
  if (!gezeigt && !logik.combutOk_Click()) return 0;
  return 1;
}

}  // namespace kolvane

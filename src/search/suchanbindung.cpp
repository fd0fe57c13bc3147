#include "suchanbindung.h"

#include <QDir>
#include <QFileInfo>
#include <QPushButton>

#include "blockverwaltung.h"
#include "datenbanksuche.h"
#include "diagnostics.h"
#include "einfuegen.h"
#include "frmblockverwaltung.h"
#include "frmdatenbanksuche.h"
#include "frmseitensuche.h"
#include "frmsuchergebnis.h"
#include "layout.h"
#include "prompt.h"
#include "seitensuche.h"
#include "suchergebnis.h"
#include "suchtreffer.h"

namespace kolvane {

SucheAnbindung::SucheAnbindung(FrmBlockverwaltung& frm, Blockverwaltung& bv, Einfuegen& ins)
    : frm_(frm), bv_(bv), ins_(ins), suche_(std::make_unique<DatenbankSuche>(bv)) {
  DatenbankSuche& s = *suche_;
  s.hooks.einfuegen = [this](const QString& block, uint8_t ansicht) {
    fctSuchtrefferEinfuegen(bv_, ins_, block, ansicht);
  };
  s.hooks.hauptformNachVorne = [this] {
    frm_.show();
    frm_.raise();
  };
  s.hooks.suchergebnisAnzeigen = [this] { subSuchergebnisAnzeigen(); };
  s.hooks.schliessen = [this] { schliessen(); };

  auto vorher = frm.befehl;
  frm.befehl = [this, vorher](const QString& befehl) {
    if (befehl == QLatin1String("mnuESuche"))
      suchdialogZeigen();
    else if (befehl == QLatin1String("mnuESeiteSuchen"))
      seitenSucheZeigen();
    else if (vorher)
      vorher(befehl);
  };
  frm.setImplementiert(QStringLiteral("mnuESuche"), true);
  frm.setImplementiert(QStringLiteral("mnuESeiteSuchen"), true);
}

SucheAnbindung::~SucheAnbindung() = default;

void SucheAnbindung::suchdialogZeigen() {
  suche_->Form_Load();
  if (!dialog_) dialog_ = std::make_unique<FrmDatenbankSuche>(*suche_, &frm_);
  dialog_->anzeigen();
  dialog_->show();
  dialog_->raise();
  dialog_->activateWindow();
}

bool SucheAnbindung::fctBlkSuchenUndDirektEinfuegen(const QString& name) {
  Trace t(QStringLiteral("fctBlkSuchenUndDirektEinfuegen ") + name);
  if (bytLaedtNoch || name.isEmpty()) return false;
  if (dialog_) dialog_->uebernehmen();
  suche_->Form_Load();
  suche_->k.txtBenennung[Suchkriterien::kNameFeld] = name;
  if (dialog_) dialog_->anzeigen();
  suche_->cmbSuchen_Click();
  if (dialog_) dialog_->trefferZeigen();
  return true;
}

void SucheAnbindung::subSuchergebnisAnzeigen() {
  ergebnisSchliessen();
  ergebnis_ = std::make_unique<Suchergebnis>(bv_, suche_->rsDatenbankSuche, suche_->strBlkNameGesucht);
  Suchergebnis& e = *ergebnis_;
  e.einfuegen = [this](const QString& block, uint8_t ansicht) {
    fctSuchtrefferEinfuegen(bv_, ins_, block, ansicht);
  };
  e.schliessen = [this] { schliessen(); };
  e.hauptformNachVorne = [this] {
    frm_.show();
    frm_.raise();
    frm_.activateWindow();
  };
  if (!e.Form_Load()) {
    ergebnis_.reset();
    return;
  }
  ergebnisFenster_ = std::make_unique<FrmSuchergebnis>(e, &frm_);
  // A further view of the hit: chosen from its views that have a drawing,
  // then inserted.
  ergebnisFenster_->ansichtZeigen = [this] {
    if (!ergebnis_ || ergebnis_->strAktivierteBlocknummer.isEmpty()) return;
    const QString block = ergebnis_->strAktivierteBlocknummer;
    const TSuchTreffer* t = ergebnis_->treffer(ergebnis_->bytErgebnisPosition);
    QStringList namen;
    QList<uint8_t> ansichten;
    for (uint8_t k = 0; k <= 4; ++k) {
      const QString dwg = fctBlockDwgPfad(bv_.bibliothek().VerzeichnisOhneDb, block.left(3), block, k);
      if (!QFileInfo::exists(dwg)) continue;
      const QString name = t ? t->BlkName[k] : QString();
      namen << (name.isEmpty() ? block + QString::number(k) : name);
      ansichten << k;
    }
    if (namen.isEmpty()) return;
    const PickResult r = prompt().pick(namen, QString(), ergebnisFenster_->windowTitle(), 3000);
    if (r.index < 0 || r.index >= ansichten.size()) return;
    fctSuchtrefferEinfuegen(bv_, ins_, block, ansichten[r.index]);
  };
  // The full view follows the browser's active block, which a hit is not.
  if (auto* b = ergebnisFenster_->findChild<QPushButton*>(QStringLiteral("combutBild"))) b->hide();
  ergebnisFenster_->show();
  ergebnisFenster_->raise();
}

void SucheAnbindung::ergebnisSchliessen() {
  // Called from the form's own buttons too: it goes once its click is over.
  if (ergebnisFenster_) {
    ergebnisFenster_->hide();
    FrmSuchergebnis* f = ergebnisFenster_.release();
    Suchergebnis* l = ergebnis_.release();
    QObject::connect(f, &QObject::destroyed, [l] { delete l; });
    f->deleteLater();
  }
  ergebnis_.reset();
}

void SucheAnbindung::seitenSucheZeigen() {
  SeitenSuche logik(bv_);
  logik.Form_Load();
  prompt().dialog(QStringLiteral("frmSeitenSuche"), [this, &logik] {
    FrmSeitenSuche f(logik, &frm_);
    return f.exec();
  });
}

void SucheAnbindung::schliessen() {
  ergebnisSchliessen();
  if (dialog_) dialog_->hide();
}

void SucheAnbindung::bibliothekGewechselt() {
  ergebnisSchliessen();
  suche_->bibliothekGewechselt();
  suche_->Form_Load();
  if (dialog_) dialog_->anzeigen();
}

}  // namespace kolvane

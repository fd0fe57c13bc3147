#include "variaeinfuegen.h"

#include "diagnostics.h"
#include "msgbox.h"

namespace kolvane {

namespace {
VariaEinfuegen* offen_ = nullptr;
}  // namespace

VariaEinfuegen::VariaEinfuegen(Bibliothek& lib, QString datPfad) : datPfad_(std::move(datPfad)) {
  Trace t(QStringLiteral("frmVariaEinfuegen.Form_Load"));
  eintraege_ = fctVariantenEintraege(lib, datPfad_);
  ergebnis.ergebnis = VarianteWahl::Ergebnis::Abgebrochen;
  if (!offen_) offen_ = this;
}

VariaEinfuegen::~VariaEinfuegen() {
  if (offen_ == this) offen_ = nullptr;
}

VariaEinfuegen* VariaEinfuegen::offen() { return offen_; }

QStringList VariaEinfuegen::namen() const {
  QStringList n;
  for (const VariantenEintrag& e : eintraege_) n << e.name;
  return n;
}

bool VariaEinfuegen::cmbOk_Click() {
  Trace t(QStringLiteral("frmVariaEinfuegen.cmbOk"));
  if (gewaehlt < 0 || gewaehlt >= eintraege_.size()) {
    if (eintraege_.isEmpty()) {
      // No block row: nothing to choose from, the plain block goes in.
      ergebnis = VarianteWahl{};
      geschlossen_ = true;
      return true;
    }
    subMsgboxInfoEinzeilig(kVariaKeineAuswahl);
    return false;
  }
  const VariantenEintrag& e = eintraege_[gewaehlt];
  if (e.art == VariantenEintrag::Art::Ansicht) {
    ergebnis = VarianteWahl{};
    geschlossen_ = true;
    return true;
  }
  t.step(QStringLiteral("Variante ") + e.name);
  const QString pfad = fctVariantenZeichnungMitMeldung(datPfad_, e);
  if (pfad.isEmpty()) return false;
  ergebnis.ergebnis = VarianteWahl::Ergebnis::Gewaehlt;
  ergebnis.strVariaPfad = pfad;
  ergebnis.strVariaBlkName = e.name;
  geschlossen_ = true;
  return true;
}

void VariaEinfuegen::cmbAbbrechen_Click() {
  ergebnis = VarianteWahl{};
  ergebnis.ergebnis = VarianteWahl::Ergebnis::Abgebrochen;
  geschlossen_ = true;
}

}  // namespace kolvane

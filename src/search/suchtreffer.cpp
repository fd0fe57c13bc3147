#include "suchtreffer.h"

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "diagnostics.h"
#include "einfuegen.h"

namespace kolvane {

void fctSuchtrefferEinfuegen(Blockverwaltung& bv, Einfuegen& ins, const QString& block, uint8_t ansicht) {
  Trace t(QStringLiteral("fctSuchtrefferEinfuegen ") + block);
  if (block.size() < 3 || ins.laeuft()) return;
  Bibliothek& lib = bv.bibliothek();
  const QString ordnerVorher = lib.strAktuelleOrdnerNr;
  const QString blockVorher = bv.aktivierteBlocknummer;
  lib.strAktuelleOrdnerNr = block.left(3);
  bv.aktivierteBlocknummer = block;
  ins.byteEinfuegenUeberDatenbankSuche = 1;
  ins.wahl.byteAktivierteAnsicht = ansicht;
  ins.cmbEinfuegen_Click();
  ins.wahl.byteAktivierteAnsicht = 0;
  lib.strAktuelleOrdnerNr = ordnerVorher;
  bv.aktivierteBlocknummer = blockVorher;
  bv.subSeiteNeuAnzeigen();
}

}  // namespace kolvane

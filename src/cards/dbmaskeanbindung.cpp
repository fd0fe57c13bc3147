#include "dbmaskeanbindung.h"

#include "blockverwaltung.h"
#include "cadbridge.h"
#include "dbmaske.h"
#include "frmblockverwaltung.h"
#include "frmdbmaske.h"
#include "frmdefmenue.h"
#include "prompt.h"

namespace kolvane {

void dbMaskeAnbinden(FrmBlockverwaltung& frm, Blockverwaltung& bv, CadBridge* b) {
  auto vorher = frm.befehl;
  frm.befehl = [vorher, &frm, &bv, b](const QString& befehl) {
    if (befehl != QLatin1String("lisBlockBenennung_DblClick")) {
      if (vorher) vorher(befehl);
      return;
    }
    DbMaske logik(bv);
    logik.Anzeigen();
    // A free slot has no card.
    if (!logik.zeile) return;
    FrmDbMaske f(logik, b && !b->istLT() ? b : nullptr, &frm);
    f.einfuegen = [&bv] {
      if (bv.hooks.cmbEinfuegen) bv.hooks.cmbEinfuegen();
    };
    f.bild = [&bv] {
      if (bv.hooks.vollbildZeigen) bv.hooks.vollbildZeigen();
    };
    f.definition = [&bv, &f] { return zeigeDefMenue(bv.bibliothek(), &f) == 1; };
    prompt().dialog(QStringLiteral("frmDbMaske"), [&f] { return f.exec(); });
  };
}

}  // namespace kolvane

#include "defmenueanbindung.h"

#include "blockverwaltung.h"
#include "frmblockverwaltung.h"
#include "frmdefmenue.h"

namespace kolvane {

void defMenueAnbinden(FrmBlockverwaltung& frm, Blockverwaltung& bv) {
  auto vorher = frm.befehl;
  frm.befehl = [vorher, &frm, &bv](const QString& befehl) {
    if (befehl != QLatin1String("mnuEDefMenue")) {
      if (vorher) vorher(befehl);
      return;
    }
    if (zeigeDefMenue(bv.bibliothek(), &frm) == 1) bv.subSeiteNeuAnzeigen();
  };
  frm.setImplementiert(QStringLiteral("mnuEDefMenue"), true);
}

}  // namespace kolvane

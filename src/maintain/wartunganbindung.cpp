#include "wartunganbindung.h"

#include "blockverwaltung.h"
#include "frmblockverwaltung.h"
#include "frmordner.h"
#include "frmseiten.h"

namespace kolvane {

void wartungAnbinden(FrmBlockverwaltung& frm, Blockverwaltung& bv) {
  auto vorher = frm.befehl;
  frm.befehl = [vorher, &frm, &bv](const QString& befehl) {
    if (befehl == QLatin1String("mnuEOrdnerverwaltung"))
      zeigeOrdnerverwaltung(bv, &frm);
    else if (befehl == QLatin1String("mnuZ2Seitenverwaltung"))
      zeigeSeitenverwaltung(bv, &frm);
    else if (vorher)
      vorher(befehl);
  };
  frm.setImplementiert(QStringLiteral("mnuEOrdnerverwaltung"), true);
  frm.setImplementiert(QStringLiteral("mnuZ2Seitenverwaltung"), true);
}

}  // namespace kolvane

#include "neuerblockanbindung.h"

#include "cadbridge.h"
#include "frmblockverwaltung.h"
#include "frmneuerblock.h"
#include "neuerblock.h"

namespace kolvane {

void neuerBlockAnbinden(FrmBlockverwaltung& frm, NeuerBlock& neu, CadBridge& b) {
  auto vorher = frm.befehl;
  frm.befehl = [vorher, &neu](const QString& befehl) {
    if (befehl == QLatin1String("combutNeu") || befehl == QLatin1String("mnuBBlockNeu"))
      neu.combutNeu_Click();
    else if (vorher)
      vorher(befehl);
  };
  frm.setImplementiert(QStringLiteral("combutNeu"), true);
  frm.setImplementiert(QStringLiteral("mnuBBlockNeu"), true);
  neu.hooks.frmBlocknameEingeben = [&frm, &b](BlocknameEingeben& l) {
    return zeigeBlocknameEingeben(l, b, &frm);
  };
  neu.hooks.frmKarteiDateneingabe = [&frm, &b](Karteidateneingabe& l) {
    return zeigeKarteiDateneingabe(l, b, &frm);
  };
  neu.hooks.frmBildausschnittAnpassen = [&frm, &b](Bildausschnitt& l) {
    return zeigeBildausschnittAnpassen(l, b, &frm);
  };
  neu.hooks.hauptform = [&frm](bool sichtbar) { frm.hauptformZeigen(sichtbar); };
}

}  // namespace kolvane

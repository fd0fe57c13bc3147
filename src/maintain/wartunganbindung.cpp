#include "wartunganbindung.h"

#include <QCoreApplication>
#include <QProgressDialog>

#include "blockverwaltung.h"
#include "labels.h"
#include "verschieben.h"
#include "frmblockverwaltung.h"
#include "frmordner.h"
#include "frmseiten.h"

namespace kolvane {

namespace {

// A shift of many blocks shows its progress and can be cancelled between two
// blocks; a short one finishes before the window would appear.
void verschieben(FrmBlockverwaltung& frm, Blockverwaltung& bv, bool ganzeSeite) {
  BlockVerschieben v(bv);
  QProgressDialog fortschritt(&frm);
  fortschritt.setWindowTitle(labels().fctBeschriftFrmZuordnen(3, LabelSektion::Allg));
  fortschritt.setLabelText(labels().fctBeschriftMsgboxZuordnen(199) + u'\n' + labels().fctBeschriftMsgboxZuordnen(200));
  fortschritt.setMinimumDuration(500);
  fortschritt.setAutoReset(false);
  v.fortschritt = [&fortschritt](int fertig, int gesamt) {
    fortschritt.setMaximum(gesamt);
    fortschritt.setValue(fertig);
    QCoreApplication::processEvents();
    return !fortschritt.wasCanceled();
  };
  if (ganzeSeite)
    v.fctEineSeiteNachHinten();
  else
    v.subBloeckeUmEinsVerschieben();
}

}  // namespace

void wartungAnbinden(FrmBlockverwaltung& frm, Blockverwaltung& bv) {
  auto vorher = frm.befehl;
  frm.befehl = [vorher, &frm, &bv](const QString& befehl) {
    if (befehl == QLatin1String("mnuEOrdnerverwaltung"))
      zeigeOrdnerverwaltung(bv, &frm);
    else if (befehl == QLatin1String("mnuZ2Seitenverwaltung"))
      zeigeSeitenverwaltung(bv, &frm);
    else if (befehl == QLatin1String("mnuBBlockSchieben"))
      verschieben(frm, bv, false);
    else if (befehl == QLatin1String("mnuBLeereSeite"))
      verschieben(frm, bv, true);
    else if (vorher)
      vorher(befehl);
  };
  frm.setImplementiert(QStringLiteral("mnuEOrdnerverwaltung"), true);
  frm.setImplementiert(QStringLiteral("mnuZ2Seitenverwaltung"), true);
  frm.setImplementiert(QStringLiteral("mnuBBlockSchieben"), true);
  frm.setImplementiert(QStringLiteral("mnuBLeereSeite"), true);
}

}  // namespace kolvane

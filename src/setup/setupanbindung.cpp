#include "setupanbindung.h"

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "erweitertessetup.h"
#include "frmblockverwaltung.h"
#include "frmerweitertessetup.h"
#include "frmsetup.h"
#include "settings.h"
#include "setup.h"
#include "slidecache.h"

namespace kolvane {

namespace {

void erweitertZeigen(FrmBlockverwaltung& frm, Blockverwaltung& bv, Settings& s,
                     const std::function<bool(const QString&)>& oeffnen, QWidget* eltern) {
  ErweitertesSetup e(s);
  e.hooks.anzeigeGeaendert = [&bv] {
    // Another grid or back colour: every thumbnail is drawn anew.
    SlideCache::instance().clear();
    bv.subBilderanzahlFestlegen();
    bv.BilderAnzeigenBeiGeaenderterBilderanzahl();
  };
  e.hooks.bibliothekenGeaendert = [&bv] { bv.Anzeigen(); };
  e.hooks.datenbankNeu = [&bv, oeffnen](const QString& pfad) {
    if (!bv.bibliothek().NeueDatenbankErstellen(pfad)) return false;
    return oeffnen ? oeffnen(pfad) : true;
  };
  zeigeErweitertesSetup(e, eltern ? eltern : &frm);
}

}  // namespace

void setupAnbinden(FrmBlockverwaltung& frm, Blockverwaltung& bv, Settings& s,
                   std::function<bool(const QString& pfad)> bibliothekOeffnen) {
  auto vorher = frm.befehl;
  frm.befehl = [vorher, &frm, &bv, &s, bibliothekOeffnen](const QString& befehl) {
    if (befehl == QLatin1String("mnuEErweitertesSetup")) {
      erweitertZeigen(frm, bv, s, bibliothekOeffnen, nullptr);
    } else if (befehl == QLatin1String("mnuESetup")) {
      Setup l(s, bv.strACadVersion);
      l.hooks.optionenAnzeigen = [&frm, &s] { frm.optionenAusEinstellungen(s.setup); };
      l.hooks.ordnerNeuAnzeigen = [&bv] { bv.fctCboOrdnerNeuAnzeigen(bv.strAktuellerOrdnerName(), false); };
      l.hooks.anzeigeGeaendert = [&bv] { bv.Anzeigen(); };
      l.hooks.erweitertesSetup = [&frm, &bv, &s, bibliothekOeffnen] {
        erweitertZeigen(frm, bv, s, bibliothekOeffnen, nullptr);
      };
      zeigeSetup(l, &frm);
    } else if (vorher) {
      vorher(befehl);
    }
  };
  frm.setImplementiert(QStringLiteral("mnuESetup"), true);
  frm.setImplementiert(QStringLiteral("mnuEErweitertesSetup"), true);
}

}  // namespace kolvane

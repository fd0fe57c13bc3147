#include "karteidateneingabe.h"

#include "acadconnect.h"
#include "bibliothek.h"
#include "cadbridge.h"
#include "kartendefinition.h"
#include "diagnostics.h"
#include "labels.h"
#include "msgbox.h"
#include "recordhelpers.h"

namespace kolvane {

void Karteidateneingabe::Form_Load(const QString& blockName, const QString& slidePfad, int seite,
                                   const QString& layer, const QString& linie,
                                   const QString& farbe) {
  Trace t(QStringLiteral("frmKarteiDateneingabe.Form_Load"));
  labAnzeigePfad = slidePfad;
  labBlockName = blockName.isEmpty()
                     ? labels().fctBeschriftFrmZuordnen(QStringLiteral("frmKarteiDateneingabe.labBlockNameNeu"))
                     : blockName;
  labSeitenNummer = QString::number(seite);
  // method1: captions and defaults of the folder's definition.
  KartenDefinition d;
  fctKartenDefinitionLesen(lib_, d);
  for (int i = 0; i < 10; ++i) {
    labBenennung[size_t(i)] = fctKartenBeschriftung(d, i);
    txtBenennung[size_t(i)] = d.standardwert[size_t(i)];
  }
  txtLayer = layer;
  txtLinie = linie;
  txtFarbe = farbe;
}

bool Karteidateneingabe::combutAbbrechen_Click() { return fctMsgboxFrageEinzeilig(938); }

bool Karteidateneingabe::combutLayerListe_Click() {
  return bridge && fctLayerWaehlen(*bridge, txtLayer, txtFarbe, txtLinie);
}

}  // namespace kolvane

#include "karteidateneingabe.h"

#include "acadconnect.h"
#include "bibliothek.h"
#include "cadbridge.h"
#include "diagnostics.h"
#include "labels.h"
#include "msgbox.h"
#include "recordhelpers.h"

namespace kolvane {

namespace {
const QString kFrei = QStringLiteral("*****Frei*****");
}

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
  Recordset& ro = lib_.rsOrdner;
  Recordset& rd = lib_.rsDefMenue;
  labBenennung.fill(QString());
  txtBenennung.fill(QString());
  if (ro.isOpen() && rd.isOpen() && rd.RecordCount() > 0) {
    if (!fctRsFind(ro, QStringLiteral("OrdnerNr"), lib_.strAktuelleOrdnerNr)) ro.MoveFirst();
    QString nrDef = ro.text(QStringLiteral("NrTblDefMenue"));
    if (nrDef.isEmpty()) nrDef = QStringLiteral("1");
    rd.MoveFirst();
    if (!rd.Find(QStringLiteral("Nr = ") + nrDef)) rd.MoveFirst();
    for (int i = 0; i < 10; ++i) {
      labBenennung[size_t(i)] = rd.text(QStringLiteral("Benennung") + QString::number(i + 1));
      txtBenennung[size_t(i)] = rd.text(QStringLiteral("Standardwert") + QString::number(i + 1));
    }
  }
  if (labBenennung[0].isEmpty() || labBenennung[0] == kFrei)
    labBenennung[0] = labels().fctBeschriftFrmZuordnen(164);
  txtLayer = layer;
  txtLinie = linie;
  txtFarbe = farbe;
}

bool Karteidateneingabe::combutAbbrechen_Click() { return fctMsgboxFrageEinzeilig(938); }

bool Karteidateneingabe::combutLayerListe_Click() {
  Trace t(QStringLiteral("frmKarteiDateneingabe.combutLayerListe"));
  if (!bridge || !bridge->acadApp) return false;
  QStringList layer;
  fctAcadLayerListe(*bridge, layer, 0);
  if (layer.isEmpty()) {
    subMsgboxInfoEinzeilig(943);
    return false;
  }
  Labels& l = labels();
  const PickResult wahl = fctAuswahlen(layer, l.fctBeschriftMsgboxZuordnen(944),
                                       l.fctBeschriftFrmZuordnen(QStringLiteral("frmKarteiDateneingabe.labLayer")));
  if (wahl.index < 0 || wahl.text.isEmpty()) return false;
  txtLayer = wahl.text;
  QString farbe, linie;
  if (fctAcadLayerEigenschaften(*bridge, txtLayer, farbe, linie)) {
    txtFarbe = farbe;
    txtLinie = linie;
  }
  return true;
}

}  // namespace kolvane

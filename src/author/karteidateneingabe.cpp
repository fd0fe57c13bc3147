#include "karteidateneingabe.h"

#include "bibliothek.h"
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

}  // namespace kolvane

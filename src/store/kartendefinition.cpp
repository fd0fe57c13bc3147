#include "kartendefinition.h"

#include "bibliothek.h"
#include "labels.h"
#include "recordhelpers.h"

namespace kolvane {

bool fctKartenDefinitionLesen(Bibliothek& lib, KartenDefinition& d) {
  d = KartenDefinition{};
  Recordset& ro = lib.rsOrdner;
  Recordset& rd = lib.rsDefMenue;
  if (!ro.isOpen() || !rd.isOpen() || rd.RecordCount() < 1) return false;
  if (!fctRsFind(ro, QStringLiteral("OrdnerNr"), lib.strAktuelleOrdnerNr)) ro.MoveFirst();
  QString nrDef = ro.text(QStringLiteral("NrTblDefMenue"));
  if (nrDef.trimmed().isEmpty()) nrDef = QStringLiteral("1");
  bool zahl = false;
  nrDef.toInt(&zahl);
  rd.MoveFirst();
  if (!zahl || !rd.Find(QStringLiteral("Nr = ") + nrDef)) rd.MoveFirst();
  for (int i = 0; i < 10; ++i) {
    d.benennung[size_t(i)] = rd.text(QStringLiteral("Benennung") + QString::number(i + 1));
    d.standardwert[size_t(i)] = rd.text(QStringLiteral("Standardwert") + QString::number(i + 1));
  }
  return true;
}

QString fctKartenBeschriftung(const KartenDefinition& d, int i) {
  const QString& b = d.benennung[size_t(i)];
  if (i == 0 && (b.isEmpty() || b == QLatin1String("*****Frei*****"))) return labels().fctBeschriftFrmZuordnen(164);
  return b;
}

}  // namespace kolvane

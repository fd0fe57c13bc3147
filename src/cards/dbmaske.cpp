#include "dbmaske.h"

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "connection.h"
#include "diagnostics.h"
#include "kartendefinition.h"
#include "labels.h"
#include "msgbox.h"
#include "recordhelpers.h"
#include "recordset.h"

namespace kolvane {

void DbMaske::Anzeigen() {
  Trace t(QStringLiteral("frmDbMaske.Anzeigen"));
  Bibliothek& lib = bv_.bibliothek();
  KartenDefinition d;
  fctKartenDefinitionLesen(lib, d);
  for (int i = 0; i < 10; ++i) labBenennung[size_t(i)] = fctKartenBeschriftung(d, i);
  Recordset& rs = lib.rsBlockInfo0;
  zeile = rs.isOpen() && rs.RecordCount() > 0 &&
          fctRsFindMitZuruecksetzen(rs, QStringLiteral("Block"), bv_.aktivierteBlocknummer);
  txtBenennung.fill(QString());
  txtLayer.clear();
  txtLinie.clear();
  txtFarbe.clear();
  labBlockName.clear();
  slideAdresse = bv_.frei2();
  if (zeile) {
    for (int i = 0; i < 10; ++i) txtBenennung[size_t(i)] = rs.text(QStringLiteral("M") + QString::number(i));
    txtLayer = rs.text(QStringLiteral("Layer"));
    txtLinie = rs.text(QStringLiteral("LYLINE"));
    txtFarbe = rs.text(QStringLiteral("LYCOLOR"));
    labBlockName = rs.text(QStringLiteral("BlkName0"));
    slideAdresse = bv_.slideAdresse(rs.text(QStringLiteral("SlideLib")));
  }
  labSeitenNummer = QString::number(bv_.s1 + 1);
  schreibgeschuetzt = lib.booSchreibgeschuetzt || lib.connDb.isReadOnly();
  layerFragen = !bv_.istLT();
}

bool DbMaske::combutSpeichern_Click() {
  Trace t(QStringLiteral("frmDbMaske.combutSpeichern"));
  if (!zeile || schreibgeschuetzt) return false;
  Recordset& rs = bv_.bibliothek().rsBlockInfo0;
  if (!fctRsFindMitZuruecksetzen(rs, QStringLiteral("Block"), bv_.aktivierteBlocknummer)) return false;
  bool ok = true;
  for (int i = 0; i < 10; ++i)
    ok = rs.setValue(QStringLiteral("M") + QString::number(i), txtBenennung[size_t(i)]) && ok;
  if (!txtLayer.trimmed().isEmpty()) {
    ok = rs.setValue(QStringLiteral("Layer"), txtLayer) && ok;
    ok = rs.setValue(QStringLiteral("LYLINE"), txtLinie) && ok;
    ok = rs.setValue(QStringLiteral("LYCOLOR"), txtFarbe) && ok;
  }
  if (!ok || !rs.Update()) {
    if (rs.isEditing()) rs.CancelUpdate();
    subErrorAllgemein(false, QStringLiteral("frmDbMaske.combutSpeichern"), rs.lastError());
    return false;
  }
  bv_.lisBlockBenennungAktualisieren(txtBenennung[0]);
  return true;
}

void DbMaske::combutVor_Click() {
  bv_.Command1_Click(0);
  Anzeigen();
}

void DbMaske::combutZurueck_Click() {
  bv_.Command1_Click(1);
  Anzeigen();
}

bool DbMaske::combutDatei_Click() { return fctKartenwerteAusDateiLaden(bv_.bibliothek(), txtBenennung); }

}  // namespace kolvane

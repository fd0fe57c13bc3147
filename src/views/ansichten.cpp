#include "ansichten.h"

#include <QFileInfo>

#include "bibliothek.h"
#include "layout.h"
#include "recordhelpers.h"
#include "recordset.h"

namespace kolvane {

AnsichtenBilder fctAnsichtenLesen(Bibliothek& lib, const QString& code, const QString& frei2) {
  AnsichtenBilder b;
  for (AnsichtBild& a : b) a.adresse = frei2;
  Recordset rs;
  if (!fctRsEinlesenMitEinemKriterium(rs, lib.connDb, QStringLiteral("tblBlockInfo"), QStringLiteral("Block"),
                                      code, 0) ||
      rs.RecordCount() < 1)
    return b;
  for (int k = 0; k < 5; ++k) {
    AnsichtBild& a = b[size_t(k)];
    a.vorhanden = k == 0 || byteAnsichtVorhanden(rs, k);
    a.name = rs.text(QStringLiteral("BLKName") + QString::number(k));
    if (!a.vorhanden) continue;
    const QString slb = fctSlidePfad(lib.VerzeichnisOhneDb, lib.strAktuelleOrdnerNr, code, k, QStringLiteral(".slb"));
    const QString sld = fctSlidePfad(lib.VerzeichnisOhneDb, lib.strAktuelleOrdnerNr, code, k, QStringLiteral(".sld"));
    if (QFileInfo(slb).isFile())
      a.adresse = slb + u'(' + QString::number(k) + QStringLiteral("A)");
    else if (QFileInfo(sld).isFile())
      a.adresse = sld;
  }
  return b;
}

bool AnsichtenWahl::sldAnsichten_MouseDown(int k) {
  if (k < 0 || k > 4) return false;
  gewaehlt = k;
  return true;
}

}  // namespace kolvane

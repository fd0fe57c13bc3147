#include "ansichtenmarkieren.h"

#include "blockverwaltung.h"
#include "frmansichten.h"
#include "msgbox.h"
#include "prompt.h"

namespace kolvane {

bool AnsichtenMarkieren::cmbMarkieren_Click() {
  if (!bilder[size_t(gewaehlt)].vorhanden) {
    subMsgboxInfoEinzeilig(941);
    return false;
  }
  bytMarkierteAnsicht = uint8_t(gewaehlt);
  return true;
}

int frmAnsichtenMarkierenZeigen(Blockverwaltung& bv, QWidget* eltern) {
  AnsichtenMarkieren logik;
  logik.bilder = fctAnsichtenLesen(bv.bibliothek(), bv.aktivierteBlocknummer, bv.frei2());
  FrmAnsichten f(QStringLiteral("frmAnsichtenMarkieren"), logik,
                 {{QStringLiteral("cmbMarkieren"), [&logik] { return logik.cmbMarkieren_Click(); }}}, eltern);
  const int r = prompt().dialog(QStringLiteral("frmAnsichtenMarkieren"), [&f] { return f.exec(); });
  return r == QDialog::Accepted ? logik.bytMarkierteAnsicht : -1;
}

}  // namespace kolvane

#include "ansichtenzeigen.h"

#include "diagnostics.h"
#include "msgbox.h"

namespace kolvane {

bool AnsichtenZeigen::cmbEinfuegen_Click() {
  Trace t(QStringLiteral("frmAnsichten.cmbEinfuegen"));
  if (!bilder[size_t(gewaehlt)].vorhanden) {
    subMsgboxInfoEinzeilig(941);
    return false;
  }
  if (einfuegen) einfuegen(gewaehlt);
  return true;
}

bool AnsichtenZeigen::mnuBBlock_Click() {
  if (neueAnsicht) neueAnsicht();
  return true;
}

}  // namespace kolvane

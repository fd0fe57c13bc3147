#include "blocknameeingeben.h"

#include "connection.h"
#include "diagnostics.h"
#include "msgbox.h"

namespace kolvane {

bool BlocknameEingeben::fctNameVariaBlockVorhanden(const QString& name) {
  // Bound, not spliced: a name may hold quotes. LIKE compares every letter
  // without case; its wildcards are escaped, "_" and "%" are characters of a
  // name.
  QString muster = name;
  muster.replace(u'\\', QStringLiteral("\\\\"))
      .replace(u'%', QStringLiteral("\\%"))
      .replace(u'_', QStringLiteral("\\_"));
  return conn_
             .scalar(QStringLiteral("SELECT COUNT(*) FROM tblVariationBloecke WHERE BlockName LIKE ? "
                                    "ESCAPE '\\'"),
                     {muster})
             .toInt() > 0;
}

bool BlocknameEingeben::cmbOk_Click() {
  Trace t(QStringLiteral("frmBlocknameEingeben.cmbOk"));
  if (txtBlocknameEingeben.size() > kMaxLaenge) {
    subMsgboxInfoEinzeilig(304);
    return false;
  }
  if (variante) {
    if (txtBlocknameEingeben.trimmed().isEmpty()) {
      subMsgboxInfoEinzeilig(136);
      return false;
    }
    if (fctNameVariaBlockVorhanden(txtBlocknameEingeben)) {
      subMsgboxInfoEinzeilig(57);
      return false;
    }
  }
  return true;
}

}  // namespace kolvane

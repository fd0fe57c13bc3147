#include "seitensuche.h"

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "diagnostics.h"
#include "msgbox.h"
#include "recordset.h"

namespace kolvane {

namespace {

// The message for a page number that can't be gone to.
constexpr int kMsgSeitennummer = 968;
// The browser counts pages in a 16-bit number.
constexpr int32_t kHoechsteSeite = 32767;

}  // namespace

void SeitenSuche::Form_Load() {
  Trace t(QStringLiteral("frmSeitenSuche.Form_Load"));
  arySeiten.clear();
  lisSeitenNamen.clear();
  lisSeitenNamenIndex = -1;
  Recordset& rs = bv_.bibliothek().rsSeiten;
  if (!rs.isOpen() || rs.RecordCount() < 1) return;
  // The browser reads from the same record set: its cursor goes back.
  const int vorher = rs.AbsolutePosition();
  rs.MoveFirst();
  while (!rs.isEOF()) {
    Eintrag e;
    e.SeitenName = rs.text(QStringLiteral("SeitenName")).trimmed();
    e.SeitenNr = int32_t(rs.value(QStringLiteral("SeitenNr")).toLongLong());
    // A row without a name (or without a page) has nothing to offer here.
    if (!e.SeitenName.isEmpty() && e.SeitenNr >= 1) {
      arySeiten.push_back(e);
      lisSeitenNamen << e.SeitenName;
    }
    rs.MoveNext();
  }
  if (vorher > 0) rs.setAbsolutePosition(vorher);
  else rs.MoveFirst();
}

void SeitenSuche::lisSeitenNamen_Click(int index) {
  if (index < 0 || index >= int(arySeiten.size())) return;
  lisSeitenNamenIndex = index;
  txtSeitenNr = QString::number(arySeiten[size_t(index)].SeitenNr);
}

void SeitenSuche::txtSeitenNr_Change(const QString& text) {
  txtSeitenNr = text;
  if (lisSeitenNamenIndex < 0 || lisSeitenNamenIndex >= int(arySeiten.size())) return;
  bool ok = false;
  const int nr = text.trimmed().toInt(&ok);
  if (!ok || nr != arySeiten[size_t(lisSeitenNamenIndex)].SeitenNr) lisSeitenNamenIndex = -1;
}

bool SeitenSuche::cmdOK_Click() {
  Trace t(QStringLiteral("frmSeitenSuche.cmdOK_Click"));
  const QString text = txtSeitenNr.trimmed();
  bool ziffern = !text.isEmpty();
  for (QChar c : text) ziffern = ziffern && c >= u'0' && c <= u'9';
  bool ok = false;
  const int32_t nr = ziffern ? text.toInt(&ok) : 0;
  if (!ok || nr < 1 || nr > kHoechsteSeite) {
    subMsgboxInfoEinzeilig(kMsgSeitennummer);
    return false;
  }
  bv_.GeheZuSeite(nr - 1, bv_.pos, bv_.strAktuelleOrdnerNr());
  return true;
}

bool SeitenSuche::lisSeitenNamen_DblClick(int index) {
  lisSeitenNamen_Click(index);
  return cmdOK_Click();
}

}  // namespace kolvane

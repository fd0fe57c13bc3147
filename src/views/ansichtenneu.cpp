#include "ansichtenneu.h"

#include "diagnostics.h"
#include "labels.h"
#include "msgbox.h"
#include "neuanlage.h"
#include "prompt.h"

namespace kolvane {

namespace {

// frmMsgboxVarianten: replace the view (1), make a variant (2), cancel (0).
int fctFormAnzeigen0Abbr1Ja2Nein() {
  Labels& l = labels();
  MessageRequest r;
  r.text = l.fctBeschriftMsgboxZuordnen(278) + u'\r' + l.fctBeschriftMsgboxZuordnen(279) + u'\r' +
           l.fctBeschriftMsgboxZuordnen(280);
  r.title = l.fctBeschriftFrmZuordnen(4, LabelSektion::Allg);
  r.buttons = Buttons::YesNoCancel;
  r.icon = Icon::Question;
  r.buttonTexts = {l.fctBeschriftFrmZuordnen(217), l.fctBeschriftFrmZuordnen(216),
                   l.fctBeschriftFrmZuordnen(QStringLiteral("frmAnsichtenNeu.cmbAbbrechen"))};
  switch (prompt().message(r)) {
    case Answer::Yes: return 1;
    case Answer::No: return 2;
    default: return 0;
  }
}

}  // namespace

bool AnsichtenNeu::cmbNeu_Click() {
  Trace t(QStringLiteral("frmAnsichtenNeu.cmbNeu"));
  const int k = gewaehlt;
  n_.bytVarianteGewaehlt = 0;
  n_.bytVarianteAnlegen = 0;
  n_.byteZuErstellendeAnsicht = uint8_t(k);
  if (!bilder[size_t(k)].vorhanden) return true;
  const int antwort = fctFormAnzeigen0Abbr1Ja2Nein();
  if (antwort == 0) return false;
  if (antwort == 2) {
    n_.bytVarianteAnlegen = 1;
    n_.bytVarianteGewaehlt = 1;
  }
  if (n_.bytVarianteGewaehlt == 1 || k > 0) {
    strDatDateiBlockvaria = datBasis_ + QString::number(k) + QStringLiteral(".dat");
    return true;
  }
  // Replacing view 0: not from here.
  return false;
}

}  // namespace kolvane

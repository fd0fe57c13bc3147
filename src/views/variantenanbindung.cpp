#include "variantenanbindung.h"

#include "frmblockverwaltung.h"

#include <QPointer>

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "einfuegen.h"
#include "frmvarianten.h"
#include "layout.h"
#include "neuanlage.h"
#include "neuerblock.h"
#include "prompt.h"
#include "variaeinfuegen.h"
#include "varianeu.h"
#include "varianten.h"

namespace kolvane {

void variantenAnbinden(Blockverwaltung& bv, Einfuegen& ins, NeuerBlock& neu, QWidget* eltern) {
  QPointer<QWidget> fenster(eltern);
  bv.hooks.fctVariaEinfuegenKontroll = [&bv](const QString& dat) {
    return fctVariaEinfuegenKontroll(bv.bibliothek(), dat);
  };
  ins.hooks.fctVariaEinfuegenKontroll = [&bv](const QString& dat) {
    return fctVariaEinfuegenKontroll(bv.bibliothek(), dat);
  };

  // The chooser; a scripted run chooses through VariaEinfuegen::offen() and
  // confirms by the dialog's result.
  ins.hooks.frmVariaEinfuegen = [&bv, fenster](const QString& dat) {
    VariaEinfuegen logik(bv.bibliothek(), dat);
    const int r = prompt().dialog(QStringLiteral("frmVariaEinfuegen"), [&logik, fenster] {
      FrmVariaEinfuegen f(logik, fenster.data());
      return f.exec() == QDialog::Accepted ? 1 : 0;
    });
    if (r != 1) return VarianteWahl{VarianteWahl::Ergebnis::Abgebrochen, {}, {}};
    // Confirmed without the dialog's own OK (scripted): the same checks.
    if (!logik.geschlossen() && !logik.cmbOk_Click())
      return VarianteWahl{VarianteWahl::Ergebnis::Abgebrochen, {}, {}};
    return logik.ergebnis;
  };

  // Shown by the new block command through the prompt: 1 goes on to make the
  // variant, 0 (cancel) ends the command.
  neu.hooks.frmVariaNeu = [&bv, fenster](Neuanlage& n) {
    const QString dat = fctVariantenListePfad(bv.bibliotheksVerzeichnis(), bv.strAktuelleOrdnerNr(),
                                              bv.aktivierteBlocknummer, n.byteZuErstellendeAnsicht);
    VariaNeu logik(bv.bibliothek(), dat);
    FrmVariaNeu f(logik, fenster.data());
    const int r = f.exec() == QDialog::Accepted ? 1 : 0;
    if (r != 1) n.bytAbbrechen = 1;
    // A deleted variant may change the frame's colour: the page at once.
    if (logik.geaendert()) bv.subSeiteNeuAnzeigen();
    return r;
  };
}

void variantenBefehlAnbinden(FrmBlockverwaltung& frm, NeuerBlock& neu) {
  auto vorher = frm.befehl;
  frm.befehl = [vorher, &neu](const QString& befehl) {
    if (befehl != QLatin1String("mnuBVarianten")) {
      if (vorher) vorher(befehl);
      return;
    }
    neu.n.byteZuErstellendeAnsicht = 0;
    neu.n.bytAbbrechen = 0;
    const int r = prompt().dialog(QStringLiteral("frmVariaNeu"), [&neu] {
      return neu.hooks.frmVariaNeu ? neu.hooks.frmVariaNeu(neu.n) : 0;
    });
    if (r != 1) return;
    // The choice of a variant is made: the command asks no view.
    neu.n.bytVarianteUeberRechteMaus = 1;
    neu.combutNeu_Click();
  };
  frm.setImplementiert(QStringLiteral("mnuBVarianten"), true);
}

}  // namespace kolvane

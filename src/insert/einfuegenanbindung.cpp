#include "einfuegenanbindung.h"

#include <QCheckBox>

#include "einfuegen.h"
#include "frmblockverwaltung.h"
#include "frmvariaeinfuegepkte.h"

namespace kolvane {

namespace {

void sperreAnwenden(FrmBlockverwaltung& frm, const EinfuegeOptionen& o, bool istLT, const QString& geklickt) {
  const OptionenSperre s = fctOptionenSperre(o, istLT, geklickt);
  if (QCheckBox* c = frm.option(QStringLiteral("checkWinkel"))) c->setEnabled(s.checkWinkel);
  if (QCheckBox* c = frm.option(QStringLiteral("checkXFrage"))) c->setEnabled(s.checkXFrage);
}

}  // namespace

void einfuegenAnbinden(FrmBlockverwaltung& frm, Einfuegen& einfuegen, bool istLT) {
  // The options: the boxes started from the setup; from now on a click counts.
  for (const QString& name : EinfuegeOptionen::checkBoxen()) {
    QCheckBox* c = frm.option(name);
    if (!c) continue;
    einfuegen.optionen.setzen(name, c->isChecked());
    QObject::connect(c, &QCheckBox::toggled, &frm, [&frm, &einfuegen, name, istLT](bool an) {
      einfuegen.optionen.setzen(name, an);
      if (name == QLatin1String("checkWinkel") || name == QLatin1String("checkXFrage"))
        sperreAnwenden(frm, einfuegen.optionen, istLT, name);
    });
  }
  sperreAnwenden(frm, einfuegen.optionen, istLT, QString());

  // The commands.
  auto vorher = frm.befehl;
  frm.befehl = [vorher, &einfuegen](const QString& befehl) {
    if (befehl == QLatin1String("cmbEinfuegen") || befehl == QLatin1String("mnuBBlockEinfuegen"))
      einfuegen.cmbEinfuegen_Click();
    else if (befehl == QLatin1String("drop"))
      einfuegen.dropEinfuegen();
    else if (vorher)
      vorher(befehl);
  };
  frm.setImplementiert(QStringLiteral("cmbEinfuegen"), true);
  frm.setImplementiert(QStringLiteral("mnuBBlockEinfuegen"), true);

  // The board of points over the main window, which takes the front back.
  einfuegen.wahl.boardZeigen = [&frm](VariaEinfuegepkte& board) {
    FrmVariaEinfuegepkte f(board, &frm);
    const int ergebnis = f.exec();
    frm.raise();
    frm.activateWindow();
    return ergebnis;
  };
  einfuegen.hooks.hauptform = [&frm](bool sichtbar) { frm.hauptformZeigen(sichtbar); };
}

}  // namespace kolvane

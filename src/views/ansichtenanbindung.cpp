#include "ansichtenanbindung.h"

#include "ansichtenloeschen.h"
#include "bearbeiten.h"
#include "ansichtenneu.h"
#include "ansichtenzeigen.h"
#include "bibliothek.h"
#include "blockverwaltung.h"
#include "einfuegen.h"
#include "frmansichten.h"
#include "frmblockverwaltung.h"
#include "layout.h"
#include "neuerblock.h"
#include "prompt.h"
#include "recordhelpers.h"
#include "recordset.h"

namespace kolvane {

namespace {

bool belegt(Blockverwaltung& bv) {
  Recordset& rs = bv.bibliothek().rsBlockInfo0;
  return !bv.aktivierteBlocknummer.isEmpty() && rs.isOpen() && rs.RecordCount() > 0 &&
         fctRsFindMitZuruecksetzen(rs, QStringLiteral("Block"), bv.aktivierteBlocknummer);
}

}  // namespace

void ansichtenAnbinden(FrmBlockverwaltung& frm, Blockverwaltung& bv, Einfuegen& ins, NeuerBlock& neu,
                       CadBridge& b, std::function<bool(const QString& code, int ansicht)> variantenLoeschen) {
  auto bilder = [&bv] {
    return fctAnsichtenLesen(bv.bibliothek(), bv.aktivierteBlocknummer, bv.frei2());
  };

  // frmAnsichten: insert a view, or make a further one.
  auto zeigen = [&frm, &bv, &ins, &neu, &b, bilder] {
    if (!belegt(bv)) return;
    AnsichtenZeigen logik;
    logik.bilder = bilder();
    logik.einfuegen = [&ins](int k) {
      ins.wahl.byteAktivierteAnsicht = uint8_t(k);
      ins.cmbEinfuegen_Click();
      ins.wahl.byteAktivierteAnsicht = 0;
    };
    // What works in the host runs once the dialog is closed.
    std::function<void()> danach;
    logik.neueAnsicht = [&danach, &neu] { danach = [&neu] { neu.combutNeu_Click(); }; };
    auto mitAnsicht = [&logik, &danach](std::function<void(int)> was) {
      return [&logik, &danach, was] {
        if (!logik.bilder[size_t(logik.gewaehlt)].vorhanden) return false;
        danach = [was, k = logik.gewaehlt] { was(k); };
        return true;
      };
    };
    FrmAnsichten f(
        QStringLiteral("frmAnsichten"), logik,
        {{QStringLiteral("cmbEinfuegen"), [&logik] { return logik.cmbEinfuegen_Click(); }},
         {QStringLiteral("mnuBBlock"), [&logik] { return logik.mnuBBlock_Click(); }},
         {QStringLiteral("mnuBBlockEdit"), mitAnsicht([&bv, &b](int k) { EditKolvaneDwgFile(bv, b, uint8_t(k)); })},
         {QStringLiteral("cmbEinfuegepunkte"),
          mitAnsicht([&neu](int k) { neu.NewInsertPointsAnSlide(uint8_t(k), false); })},
         {QStringLiteral("cmbSlides"), mitAnsicht([&neu](int k) { neu.NewInsertPointsAnSlide(uint8_t(k), true); })}},
        &frm);
    prompt().dialog(QStringLiteral("frmAnsichten"), [&f] { return f.exec(); });
    if (danach) danach();
  };

  // frmAnsichtenLoeschen.
  auto loeschen = [&frm, &bv, bilder, variantenLoeschen] {
    if (!belegt(bv)) return;
    AnsichtenLoeschen logik(bv);
    logik.bilder = bilder();
    logik.fctVariaBloeckeLoeschen = variantenLoeschen;
    FrmAnsichten f(QStringLiteral("frmAnsichtenLoeschen"), logik,
                   {{QStringLiteral("cmbLoeschen"),
                     [&logik, &bv] {
                       const bool weg = logik.cmbLoeschen_Click();
                       // The block is gone, or its last further view: nothing left to choose.
                       return weg && (logik.gewaehlt == 0 || !belegt(bv));
                     }},
                    {QStringLiteral("cmbAlleLoeschen"), [&logik] { return logik.cmbAlleLoeschen_Click(); }}},
                   &frm);
    prompt().dialog(QStringLiteral("frmAnsichtenLoeschen"), [&f] { return f.exec(); });
  };

  auto vorher = frm.befehl;
  frm.befehl = [vorher, zeigen, loeschen, &bv, &b](const QString& befehl) {
    if (befehl == QLatin1String("combutAnsicht"))
      zeigen();
    else if (befehl == QLatin1String("mnuBBlockBearbeiten"))
      EditKolvaneDwgFile(bv, b, 0);
    else if (befehl == QLatin1String("combutLoeschen") || befehl == QLatin1String("mnuBBlockLoeschen"))
      loeschen();
    else if (vorher)
      vorher(befehl);
  };
  for (const char* c : {"combutAnsicht", "combutLoeschen", "mnuBBlockLoeschen", "mnuBBlockBearbeiten"})
    frm.setImplementiert(QLatin1String(c), true);

  // The new block command on an occupied slot: which view.
  neu.hooks.frmAnsichtenNeu = [&frm, &bv, bilder](Neuanlage& n) {
    const QString datBasis = fctVariantenListePfad(bv.bibliotheksVerzeichnis(), bv.strAktuelleOrdnerNr(),
                                                   bv.aktivierteBlocknummer, 0)
                                 .chopped(5);
    AnsichtenNeu logik(n, datBasis);
    logik.bilder = bilder();
    // The first free view is offered first.
    for (int k = 1; k < 5; ++k)
      if (!logik.bilder[size_t(k)].vorhanden) {
        logik.gewaehlt = k;
        break;
      }
    FrmAnsichten f(QStringLiteral("frmAnsichtenNeu"), logik,
                   {{QStringLiteral("cmbNeu"), [&logik] { return logik.cmbNeu_Click(); }}}, &frm);
    const int r = f.exec() == QDialog::Accepted ? 1 : 0;
    if (r == 1 && !logik.strDatDateiBlockvaria.isEmpty()) bv.strDatDateiBlockvaria = logik.strDatDateiBlockvaria;
    return r;
  };
}

}  // namespace kolvane

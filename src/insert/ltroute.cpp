#include "ltroute.h"

#include "acadconnect.h"
#include "blockname.h"
#include "diagnostics.h"
#include "einfuegeoptionen.h"
#include "layout.h"
#include "ltscript.h"

namespace kolvane {

LtErgebnis ACadLtBlockEinfuegen(CadBridge& b, const EinfuegeOptionen& o, LtEinfuegen& e,
                                uint8_t& bytMarkierteAnsicht, uint8_t& byteAktivierteAnsicht) {
  Trace t(QStringLiteral("ACadLtBlockEinfuegen"));
  // 1. The view of frmAnsichten and its drawing.
  if (!e.bytVariaBlockEinfuegen && e.NummerEinfuegepkt >= -1) {
    bytMarkierteAnsicht = byteAktivierteAnsicht;
    e.SpeicherortDerBlockzeichnung =
        fctBlockDwgPfad(e.bibliothek, e.ordnerNr, e.aktivierteBlocknummer, bytMarkierteAnsicht);
  }
  // 2. The name, by a copy; the script quotes it.
  QString datei = e.SpeicherortDerBlockzeichnung;
  QString name = e.strBlockName.isEmpty() ? QString() : fctBlockNameRegelnLT(e.strBlockName);
  if (!name.isEmpty()) {
    const QString kopie = fctBlockzeichnungKopieren(datei, e.strVerzeichnisTempKolvane, name);
    if (!kopie.isEmpty()) datei = kopie;
    if (!fctDateiExistiert(datei)) t.step(QStringLiteral("Datei existiert nicht: ") + datei);
  }
  LtEinfuegeDaten d;
  d.strLayer = e.strLayer;
  d.longXRef = e.longXRef;
  d.byteBlockAusBibliothek = o.byteBlockAusBibliothek;
  d.strBlockName = name;
  d.SpeicherortDerBlockzeichnung = datei;
  d.aktivierteBlocknummer = e.aktivierteBlocknummer;
  d.bytMarkierteAnsicht = bytMarkierteAnsicht;
  d.byteAbfrageEinfuegewinkel = o.byteAbfrageEinfuegewinkel;
  d.byteAbfrageXFaktor = o.byteAbfrageXFaktor;
  // 3. A script that can't be written is this routine's failure (reported);
  //    after it, a failure of the keys means the host's window has gone.
  if (!subScriptSchreibenFuerLT(d)) return LtErgebnis::Fehler;
  // 4.-11.
  if (!ACadLtBlockEinfuegenTippen(b, d)) return LtErgebnis::HostWeg;
  // 12.
  byteAktivierteAnsicht = 0;
  return LtErgebnis::Eingefuegt;
}

}  // namespace kolvane

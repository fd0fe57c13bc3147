#include "einfuegen.h"

#include <QDir>

#include "acadconnect.h"
#include "bibliothek.h"
#include "blockname.h"
#include "blockverwaltung.h"
#include "cadbridge.h"
#include "commandchannel.h"
#include "desktop.h"
#include "diagnostics.h"
#include "einfuegeserie.h"
#include "eventsink.h"
#include "hostfile.h"
#include "layout.h"
#include "lisproute.h"
#include "ltroute.h"
#include "msgbox.h"
#include "paths.h"
#include "platzierung.h"
#include "recordhelpers.h"
#include "settings.h"

namespace kolvane {

namespace {

constexpr int kBlockNichtGefunden = 95;
constexpr int kKeinLetzterBlock1 = 327, kKeinLetzterBlock2 = 328;
constexpr int kDateiFehlt1 = 288, kDateiFehlt2 = 289;

}  // namespace

Einfuegen::Einfuegen(Settings& settings, Blockverwaltung& browser, CadBridge& bridge)
    : settings_(settings), bv_(browser), lib_(browser.bibliothek()), b_(bridge) {
  optionen = EinfuegeOptionen::ausEinstellungen(settings_.setup);
}

Einfuegen::~Einfuegen() = default;

void Einfuegen::LBlockEinfuegen() {
  bytLBlockAusfuehren = 1;
  cmbEinfuegen_Click();
}

void Einfuegen::dropEinfuegen(int16_t nummerEinfuegepkt) {
  bytEinfuegenViaDragAndDrop = 1;
  NummerEinfuegepktDrop = nummerEinfuegepkt;
  cmbEinfuegen_Click();
}

QString Einfuegen::fctBlockNameAuslesen(uint8_t bytAnsicht) {
  Trace t(QStringLiteral("fctBlockNameAuslesen"));
  t.step(QStringLiteral("BlockName bestimmen - bytMarkierteAnsichtUebergabe: ") + QString::number(bytAnsicht));
  if (!rsBlockZeile_.isOpen() || rsBlockZeile_.RecordCount() < 1) return {};
  rsBlockZeile_.MoveFirst();
  return rsBlockZeile_.text(QStringLiteral("BLKName") + QString::number(bytAnsicht));
}

bool Einfuegen::blockZeileLesen() {
  rsBlockZeile_.Close();
  if (!lib_.connDb.isOpen()) return false;
  return fctRsEinlesenMitKriterium(
      rsBlockZeile_, lib_.connDb,
      QStringLiteral("SELECT * FROM tblBlockInfo WHERE Block like '") + aktivierteBlocknummer + "'");
}

uint8_t Einfuegen::ansichtBestimmen() const {
  for (uint8_t n = 1; n <= 4; ++n)
    if (wahl.byteAktivierteAnsicht == n || bytMarkierteAnsicht == n) return n;
  return 0;
}

void Einfuegen::cmbEinfuegen_Click() {
  // A second call from a wait of the first (a double click meanwhile) is lost.
  if (laeuft_) return;
  laeuft_ = true;
  if (hooks.ablauf) hooks.ablauf(true);
  Trace t(QStringLiteral("cmbEinfuegen_Click"));

  // 1. The temporary directory, empty.
  const QString temp = settings_.strVerzeichnisTempKolvane();
  QDir(temp).removeRecursively();
  QDir().mkpath(temp);
  // 2.
  b_.Unterbrechung = 0;
  NummerEinfuegepkt = 0;
  bytAbbrechen = 0;
  strBlockName.clear();
  SpeicherortDerBlockzeichnung.clear();

  bool markiert = false;
  bool ersterDurchlauf = true;
  bool ende = false;
  for (;;) {
    const Weiter w = einBlock(markiert, ersterDurchlauf);
    if (w == Weiter::HostWeg) {
      // The program ends: nothing of it is touched any more.
      laeuft_ = false;
      if (hooks.ablauf) hooks.ablauf(false);
      return;
    }
    if (w == Weiter::Ende) {
      ende = true;
      break;
    }
    if (w == Weiter::MarkierteZuEnde) break;
    // 23. The next marked row, unless the user broke off.
    if (!markiert) break;
    Recordset& rm = lib_.rsMarkierteBloecke;
    if (rm.isOpen() && !rm.isEOF()) rm.MoveNext();
    if (b_.Unterbrechung == 1) break;
  }

  if (!ende) {
    // 24. The marks go once their list was walked, also those not reached. A
    //     drop or lblock, which don't walk it, leaves the user's marks alone.
    Recordset& rm = lib_.rsMarkierteBloecke;
    if (markiert && rm.isOpen() && rm.RecordCount() > 0) {
      t.step(QStringLiteral("Markierungen löschen"));
      fctAlleEintraegLoeschen(rm);
    }
    // 25./26.
    bytEinfuegenViaDragAndDrop = 0;
    if (byteEinfuegenUeberDatenbankSuche != 1) {
      if (settings_.setup.longKolvaneAnzeigenNachEinfuegen == 1) {
        if (hooks.hauptform) hooks.hauptform(true);
      } else if (b_.desktop) {
        b_.desktop->appActivate(b_.typAcadVersionInfo.strACadTitel);
      }
    }
  }
  // 27.
  schluss();
}

void Einfuegen::schluss() {
  Trace t(QStringLiteral("cmbEinfuegen_Click Ende"));
  QDir(settings_.strVerzeichnisTempKolvane()).removeRecursively();
  wahl.rsBlockInfo0Einfuegepkt.Close();
  rsBlockZeile_.Close();
  // The ways in are one-shot, also when the run ended early.
  bytEinfuegenViaDragAndDrop = 0;
  NummerEinfuegepktDrop = 0;
  const bool suche = byteEinfuegenUeberDatenbankSuche == 1;
  byteEinfuegenUeberDatenbankSuche = 0;
  bytLBlockAusfuehren = 0;
  // The page again: the block set afresh, the marks as they now are. A search
  // hit stands in for the browser's folder meanwhile: its caller shows the
  // page once the browser's own folder is back.
  lib_.rsBlockInfo0.setFilter(QString());
  if (!suche) bv_.subSeiteNeuAnzeigen();
  laeuft_ = false;
  if (hooks.ablauf) hooks.ablauf(false);
}

Einfuegen::Weiter Einfuegen::markierteZeileLesen(bool& markiert, bool& ersterDurchlauf) {
  Recordset& rm = lib_.rsMarkierteBloecke;
  if (ersterDurchlauf) rm.MoveFirst();
  ersterDurchlauf = false;
  if (rm.isEOF()) return Weiter::MarkierteZuEnde;
  markiert = true;
  strBlockName = rm.text(QStringLiteral("BlockName"));
  aktivierteBlocknummer = rm.text(QStringLiteral("BlockNr"));
  wahl.SpeicherOrtSlideLibFuerBlockEinfuegen = rm.text(QStringLiteral("SpeicherOrtSlide"));
  SpeicherortDerBlockzeichnung = fctNativerPfad(rm.text(QStringLiteral("SpeicherOrtDWG")));
  bytMarkierteAnsicht = uint8_t(rm.value(QStringLiteral("MarkierteAnsicht")).toInt());
  NummerEinfuegepkt = int16_t(rm.value(QStringLiteral("NummerEinfuegepkt")).toInt());
  strLayer = rm.text(QStringLiteral("Layer"));
  strLinientyp = rm.text(QStringLiteral("LYLINE"));
  strLayerFarbe = rm.text(QStringLiteral("LYCOLOR"));
  return Weiter::Ja;
}

Einfuegen::Weiter Einfuegen::einBlock(bool& markiert, bool& ersterDurchlauf) {
  Trace t(QStringLiteral("cmbEinfuegen_Click Block"));
  bytVariaBlockEinfuegen = 0;
  const bool lblock = bytLBlockAusfuehren == 1;
  const bool drop = bytEinfuegenViaDragAndDrop == 1;
  Recordset& rm = lib_.rsMarkierteBloecke;

  if (!lblock) {
    // 3. The marked list, one row per pass.
    if (!drop && rm.isOpen() && rm.RecordCount() > 0) {
      t.step(QStringLiteral("markierte Blöcke"));
      const Weiter w = markierteZeileLesen(markiert, ersterDurchlauf);
      if (w != Weiter::Ja) return w;
    } else {
      // 4. The active block's row.
      aktivierteBlocknummer = bv_.aktivierteBlocknummer;
      if (byteEinfuegenUeberDatenbankSuche == 1) {
        // A search hit may lie in any folder: its row is read by its code.
        if (!blockZeileLesen() || rsBlockZeile_.RecordCount() < 1) {
          subMsgboxInfoEinzeilig(kBlockNichtGefunden);
          return Weiter::Ende;
        }
        strLayer = rsBlockZeile_.text(QStringLiteral("Layer"));
        strLinientyp = rsBlockZeile_.text(QStringLiteral("LYLINE"));
        strLayerFarbe = rsBlockZeile_.text(QStringLiteral("LYCOLOR"));
      } else {
        Recordset& rs = lib_.rsBlockInfo0;
        rs.setFilter(QString());
        const bool gefunden = rs.isOpen() && rs.RecordCount() > 0 &&
                              rs.Find(QStringLiteral("Block = '") + aktivierteBlocknummer + "'");
        if (!gefunden) {
          subMsgboxInfoEinzeilig(kBlockNichtGefunden);
          return Weiter::Ende;
        }
        strLayer = rs.text(QStringLiteral("Layer"));
        strLinientyp = rs.text(QStringLiteral("LYLINE"));
        strLayerFarbe = rs.text(QStringLiteral("LYCOLOR"));
      }
    }
    blockZeileLesen();
    // 5. Variants of the view, unless this is a drop.
    if (settings_.setup.longVariantenfrage == 1 && bytVariaBlockEinfuegen == 0 && !drop) {
      // The view being inserted: the one chosen in the views dialog or marked.
      const QString dat = fctVariantenListePfad(lib_.VerzeichnisOhneDb, lib_.strAktuelleOrdnerNr,
                                                aktivierteBlocknummer, ansichtBestimmen());
      if (hooks.fctVariaEinfuegenKontroll && hooks.fctVariaEinfuegenKontroll(dat)) {
        t.step(QStringLiteral("frmVariaEinfuegen"));
        const VarianteWahl v = hooks.frmVariaEinfuegen ? hooks.frmVariaEinfuegen(dat) : VarianteWahl{};
        if (v.ergebnis == VarianteWahl::Ergebnis::Abgebrochen) {
          bytMarkierteAnsicht = 0;
          return Weiter::Ende;
        }
        if (v.ergebnis == VarianteWahl::Ergebnis::Gewaehlt) {
          bytVariaBlockEinfuegen = 1;
          SpeicherortDerBlockzeichnung = v.strVariaPfad;
          strBlockName = v.strVariaBlkName;
        }
      }
    }
  } else {
    // 6. The last block: everything from its record.
    bytLBlockAusfuehren = 0;
    if (!letzterBlock.vorhanden) {
      subMsgboxInfoZweizeilig(kKeinLetzterBlock1, kKeinLetzterBlock2);
      return Weiter::Ende;
    }
    t.step(QStringLiteral("lblock"));
    strBlockName = letzterBlock.strBlockName;
    aktivierteBlocknummer = letzterBlock.aktivierteBlocknummer;
    wahl.SpeicherOrtSlideLibFuerBlockEinfuegen = letzterBlock.SpeicherOrtSlideLibFuerBlockEinfuegen;
    SpeicherortDerBlockzeichnung = letzterBlock.SpeicherortDerBlockzeichnung;
    bytMarkierteAnsicht = letzterBlock.ansicht;
    NummerEinfuegepkt = letzterBlock.NummerEinfuegepkt;
    strLayer = letzterBlock.strLayer;
    strLinientyp = letzterBlock.strLinientyp;
    strLayerFarbe = letzterBlock.strLayerFarbe;
    blockZeileLesen();
  }

  // 7. The stored name of the view.
  if (bytVariaBlockEinfuegen != 1 && !lblock) strBlockName = fctBlockNameAuslesen(bytMarkierteAnsicht);

  // 8. The keystroke route does the rest its own way.
  if (b_.istLT()) {
    LtEinfuegen e;
    e.bytVariaBlockEinfuegen = bytVariaBlockEinfuegen == 1;
    e.NummerEinfuegepkt = NummerEinfuegepkt;
    e.bibliothek = lib_.VerzeichnisOhneDb;
    e.ordnerNr = lib_.strAktuelleOrdnerNr;
    e.aktivierteBlocknummer = aktivierteBlocknummer;
    e.strBlockName = strBlockName;
    e.SpeicherortDerBlockzeichnung = SpeicherortDerBlockzeichnung;
    e.strVerzeichnisTempKolvane = settings_.strVerzeichnisTempKolvane();
    e.strLayer = strLayer;
    e.longXRef = settings_.setup.longXRef;
    switch (ACadLtBlockEinfuegen(b_, optionen, e, bytMarkierteAnsicht, wahl.byteAktivierteAnsicht)) {
      case LtErgebnis::HostWeg:
        bytAbbrechen = 1;
        return Weiter::HostWeg;
      case LtErgebnis::Fehler:
        return Weiter::Ende;
      case LtErgebnis::Eingefuegt:
        break;
    }
    SpeicherortDerBlockzeichnung = e.SpeicherortDerBlockzeichnung;
    letztenBlockSpeichern(SpeicherortDerBlockzeichnung, bytMarkierteAnsicht);
    return Weiter::Ja;
  }

  // 9. View and point.
  uint8_t ansicht = ansichtBestimmen();
  if (bytVariaBlockEinfuegen == 1 || NummerEinfuegepkt == -1) {
    NummerEinfuegepkt = 1;
  } else {
    wahl.aktivierteBlocknummer = aktivierteBlocknummer;
    wahl.bytMarkierteAnsicht = bytMarkierteAnsicht;
    if (!wahl.EinzufuegendeAnsichtBestimmenUndRsEinlesen(lib_.connDb)) return Weiter::Ende;
    ansicht = wahl.byteBestimmenWelcheAnsichtEingefuegtWird;
    if (drop) NummerEinfuegepkt = NummerEinfuegepktDrop > 0 ? NummerEinfuegepktDrop : int16_t(1);
    if (NummerEinfuegepkt == 0) {
      uint8_t bytMarkieren1BeiEinfuege0 = 0;
      Einfuegepunktwahl::Ort ort;
      ort.bibliothek = lib_.VerzeichnisOhneDb;
      ort.ordnerNr = lib_.strAktuelleOrdnerNr;
      ort.slideLib = rsBlockZeile_.text(QStringLiteral("SlideLib"));
      ort.frei2 = bv_.frei2();
      wahl.VariaEinfuegepktBestimmen(bytMarkieren1BeiEinfuege0, ort);
      if (wahl.FormularAbbrechen == 1) {
        wahl.FormularAbbrechen = 0;
        bytMarkierteAnsicht = 0;
        return Weiter::Ende;
      }
      NummerEinfuegepkt = wahl.NummerEinfuegepkt;
    }
  }

  // 10. The drawing of the view.
  if (SpeicherortDerBlockzeichnung.isEmpty())
    SpeicherortDerBlockzeichnung =
        fctBlockDwgPfad(lib_.VerzeichnisOhneDb, lib_.strAktuelleOrdnerNr, aktivierteBlocknummer, ansicht);

  // 11. The name: the host names a block by its file, so the drawing is
  //     copied under the name; without a name, code and view.
  EinfuegeWerte w;
  w.strDatei = SpeicherortDerBlockzeichnung;
  w.strBlockName = fctBlockNameRegeln(strBlockName);
  if (!w.strBlockName.isEmpty()) {
    const QString kopie =
        fctBlockzeichnungKopieren(w.strDatei, settings_.strVerzeichnisTempKolvane(), w.strBlockName);
    if (!kopie.isEmpty()) w.strDatei = kopie;
  } else {
    w.strBlockName = aktivierteBlocknummer + QString::number(ansicht);
  }
  // 12.
  w.strPfadSlash = fctLispPfad(w.strDatei);
  // 13. Scale and angle.
  if (settings_.setup.longMassstabskontrolle == 1) {
    w.strMassstabXEinfuegen = KommaPunktErsetzen(settings_.setup.strMassstabX);
    w.strMassstabYEinfuegen = KommaPunktErsetzen(settings_.setup.strMassstabY);
  }
  w.dblWinkelEinfuegen = 0;
  // 14. The offset of the chosen point.
  w.NummerEinfuegepkt = NummerEinfuegepkt;
  w.ansicht = ansicht;
  if (NummerEinfuegepkt != 1) {
    std::array<double, 3> dblDistanz{0, 0, 0};
    if (!DistanzZumErstenEinfuegepkt(wahl.rsBlockInfo0Einfuegepkt, ansicht, NummerEinfuegepkt, dblDistanz))
      return Weiter::Ende;
    KommaPunktErsetzen(dblDistanz, w.strDistanz);
  }
  w.strLayer = strLayer;
  w.strLinientyp = strLinientyp;
  w.strLayerFarbe = strLayerFarbe;
  if (rsBlockZeile_.isOpen() && rsBlockZeile_.RecordCount() > 0) {
    rsBlockZeile_.MoveFirst();
    QStringList m;
    for (int i = 0; i < 10; ++i) m << rsBlockZeile_.text(QStringLiteral("M") + QString::number(i));
    w.werteM0bisM9 = m;
    w.strLispBefehl = rsBlockZeile_.text(QStringLiteral("Lisp") + QString::number(ansicht));
  }
  werte = w;

  // 15. The drawing must be there.
  if (!fctDateiExistiert(w.strDatei)) {
    t.step(QStringLiteral("Datei fehlt: ") + w.strDatei);
    subMsgboxInfoZweizeilig(kDateiFehlt1, kDateiFehlt2);
    return Weiter::Ende;
  }
  // 16. The host; gone, the program ends.
  if (!ACAD_aktivieren(b_)) {
    bytAbbrechen = 1;
    return Weiter::HostWeg;
  }

  Weiter weiter = Weiter::Ja;
  if (NummerEinfuegepkt == 1 && settings_.allg(QStringLiteral("NewInsertRoutine")) == QLatin1String("1")) {
    // 17. The Lisp route.
    fctLispRouteEinfuegen(b_, optionen, werte, settings_.setup.longEinfuegenLayer0, hooks.hauptform);
  } else {
    aufAutomationsroute(weiter);
    if (weiter != Weiter::Ja) return weiter;
  }

  // 21.
  if (bytVariaBlockEinfuegen != 1) wahl.rsBlockInfo0Einfuegepkt.Close();
  if (settings_.bytOhneWithEvent == 1) b_.EventActivX.reset();
  // 22.
  letztenBlockSpeichern(SpeicherortDerBlockzeichnung, ansicht);
  return Weiter::Ja;
}

void Einfuegen::aufAutomationsroute(Weiter& weiter) {
  Trace t(QStringLiteral("cmbEinfuegen_Click Serie"));
  // 18. The host in front, a running command dropped, a sink of its own.
  const QString titel = b_.typAcadVersionInfo.strACadTitel;
  if (b_.desktop) {
    const quint64 h = b_.desktop->findWindow(titel);
    if (h != 0) b_.desktop->setForegroundWindow(h);
  }
  SendKeys(b_, QStringLiteral("{ESC}{ESC}"), true);
  t.step(QStringLiteral("EventActivX"));
  fctEventActivXErstellen(b_);
  // 19. The variables; whatever happens from here, they are restored.
  EinfuegeVariablen variablen(b_);
  variablen.sichern();
  variablen.erzwingen();
  b_.Unterbrechung = 0;
  // 20. Series and follow-ups, again while the user goes on.
  Einfuegeserie serie(b_, optionen, settings_.setup.longEinfuegenLayer0, settings_.programDir());
  do {
    t.step(QStringLiteral("Serie"));
    if (!serie.serieSenden(werte) || !serie.folgebefehleSenden(werte)) {
      weiter = Weiter::Ende;
      return;
    }
    variablen.wiederherstellen();
  } while (optionen.byteMehrfacheinfuegen == 1 && b_.Unterbrechung == 0);
}

void Einfuegen::letztenBlockSpeichern(const QString& datei, uint8_t ansicht) {
  LetzterBlock l;
  l.vorhanden = true;
  l.strBlockName = strBlockName;
  l.aktivierteBlocknummer = aktivierteBlocknummer;
  l.SpeicherOrtSlideLibFuerBlockEinfuegen = wahl.SpeicherOrtSlideLibFuerBlockEinfuegen;
  l.SpeicherortDerBlockzeichnung = datei;
  l.ansicht = ansicht;
  l.NummerEinfuegepkt = NummerEinfuegepkt;
  l.strLayer = strLayer;
  l.strLinientyp = strLinientyp;
  l.strLayerFarbe = strLayerFarbe;
  letzterBlock = l;
  // The view state is the insert's own; the next one starts afresh.
  wahl.byteAktivierteAnsicht = 0;
  bytMarkierteAnsicht = 0;
  NummerEinfuegepkt = 0;
  SpeicherortDerBlockzeichnung.clear();
}

}  // namespace kolvane

#include "neuerblock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "bibliothek.h"
#include "blockdaten.h"
#include "blockverwaltung.h"
#include "cadbridge.h"
#include "commandchannel.h"
#include "desktop.h"
#include "diagnostics.h"
#include "eventsink.h"
#include "labels.h"
#include "layout.h"
#include "msgbox.h"
#include "neuanlagejournal.h"
#include "paths.h"
#include "prefix.h"
#include "prompt.h"
#include "recordhelpers.h"
#include "settings.h"
#include "slideaufnahme.h"

namespace kolvane {

namespace {

const QString kAuswahlSatz = QStringLiteral("SS6");

QString text(int nr) { return labels().fctBeschriftMsgboxZuordnen(nr); }

QString punktText(const HostPoint& p) {
  std::array<QString, 3> s;
  KommaPunktErsetzen(p, s);
  return s[0] + u',' + s[1] + u',' + s[2];
}

}  // namespace

NeuerBlock::NeuerBlock(Settings& settings, Blockverwaltung& browser, CadBridge& bridge)
    : settings_(settings), bv_(browser), lib_(browser.bibliothek()), b_(bridge) {}

NeuerBlock::~NeuerBlock() = default;

QString NeuerBlock::temp() const { return settings_.strVerzeichnisTempKolvane(); }

QString NeuerBlock::ordnerVerzeichnis() const {
  return QDir(lib_.VerzeichnisOhneDb).filePath(lib_.strAktuelleOrdnerNr);
}

QString NeuerBlock::blockCode() const {
  const size_t i = size_t(bv_.s1) * size_t(bv_.intBilder) + size_t(bv_.pos);
  return i < bv_.aryTBloecke.size() ? bv_.aryTBloecke[i].Block : bv_.aktivierteBlocknummer;
}

// ---------------------------------------------------------------- entry

void NeuerBlock::combutNeu_Click() {
  if (laeuft_) return;
  laeuft_ = true;
  if (hooks.ablauf) hooks.ablauf(true);
  Trace t(QStringLiteral("combutNeu_Click"));
  // What the caller set stays; everything else of the last run goes.
  {
    Neuanlage frisch;
    frisch.bytVarianteUeberRechteMaus = n.bytVarianteUeberRechteMaus;
    frisch.bytBlockImportManuell = n.bytBlockImportManuell;
    frisch.strZuImportierenderBlock = n.strZuImportierenderBlock;
    n = frisch;
  }
  filediaGesetzt_ = false;
  marke_ = false;
  blockname_ = std::make_unique<BlocknameEingeben>(lib_.connDb);
  kartei_ = std::make_unique<Karteidateneingabe>(lib_);
  if (!b_.istLT()) kartei_->bridge = &b_;
  bildausschnitt_ = std::make_unique<Bildausschnitt>(b_, n, temp());

  const Ende e = pruefen() ? (b_.istLT() ? ACadLtBlockNeu() : automationsroute()) : Ende::Still;
  Q_UNUSED(e);
  n.bytVarianteUeberRechteMaus = 0;
  n.bytBlockImportManuell = 0;
  b_.bytEventBeruecksichtigen = 0;
  blockname_.reset();
  kartei_.reset();
  bildausschnitt_.reset();
  laeuft_ = false;
  if (hooks.ablauf) hooks.ablauf(false);
}

bool NeuerBlock::pruefen() {
  Trace t(QStringLiteral("combutNeu_Click pruefen"));
  if (bv_.aktivierteBlocknummer.isEmpty() || !lib_.rsBlockInfo0.isOpen()) return false;
  // A library that can't be written gets no block: said now, before any pick.
  QStringList orte{lib_.VerzeichnisOhneDb, ordnerVerzeichnis(),
                   QDir(ordnerVerzeichnis()).filePath(QStringLiteral("Block"))};
  if (lib_.booSchreibgeschuetzt || lib_.connDb.isReadOnly()) orte = {lib_.VerzeichnisOhneDb};
  for (const QString& ort : orte) {
    const QFileInfo fi(ort);
    if ((fi.exists() && !fi.isWritable()) || lib_.booSchreibgeschuetzt || lib_.connDb.isReadOnly()) {
      t.step(QStringLiteral("schreibgeschützt: ") + ort);
      subMsgboxInfoEinzeilig(text(934) + u'\r' + QDir::toNativeSeparators(ort) + u'\r' + text(935));
      return false;
    }
  }
  // 2. An occupied slot asks whether a further view or a variant is wanted.
  if (n.bytVarianteUeberRechteMaus != 1) {
    n.byteZuErstellendeAnsicht = 0;
    n.bytVarianteAnlegen = 0;
    Recordset& rs = lib_.rsBlockInfo0;
    rs.Requery();
    if (rs.RecordCount() > 0 &&
        fctRsFind(rs, QStringLiteral("Block"), bv_.aktivierteBlocknummer)) {
      if (!hooks.frmAnsichtenNeu) {
        subMsgboxInfoEinzeilig(933);
        return false;
      }
      n.bytAbbrechen = 0;
      const int ok = prompt().dialog(QStringLiteral("frmAnsichtenNeu"),
                                     [this] { return hooks.frmAnsichtenNeu(n); });
      if (ok != 1 || n.bytAbbrechen == 1) return false;
      if (n.bytVarianteAnlegen == 1 && hooks.frmVariaNeu &&
          prompt().dialog(QStringLiteral("frmVariaNeu"), [this] { return hooks.frmVariaNeu(n); }) != 1)
        return false;
    }
  } else {
    n.bytVarianteAnlegen = 1;
  }
  n.bytVarianteUeberRechteMaus = 0;
  return true;
}

// ---------------------------------------------------------------- the automation route

NeuerBlock::Ende NeuerBlock::automationsroute() {
  Trace t(QStringLiteral("combutNeu_Click Automation"));
  // 1. The event sink of the run; without it the host is gone.
  if (!fctEventActivXErstellen(b_)) {
    n.bytAbbrechen = 1;
    b_.subAcadNichtErreichbar();
    return Ende::Still;
  }
  Host* h = b_.acadApp;
  // 5. The host to the front.
  if (!ACAD_aktivieren(b_) || !h) return Ende::Still;
  if (hooks.hauptform) hooks.hauptform(false);
  h->setWindowState(3);
  h->clearError();
  if (b_.desktop && b_.typAcadVersionInfo.hWnd) {
    b_.desktop->setForegroundWindow(b_.typAcadVersionInfo.hWnd);
    b_.desktop->bringWindowToTop(b_.typAcadVersionInfo.hWnd);
  }
  SendKeys(b_, QStringLiteral("{ESC}{ESC}"), true);
  // 6. File dialogs off; the mark every undo of the run returns to.
  n.intFiledia = int16_t(h->getVariable(QStringLiteral("filedia")).toInt());
  h->clearError();
  h->setVariable(QStringLiteral("filedia"), 0);
  h->clearError();
  filediaGesetzt_ = true;
  undoMarke();
  // 7. The temporary directory, empty.
  QDir(temp()).removeRecursively();
  if (!QDir().mkpath(temp())) {
    subMsgboxInfoEinzeilig(text(937) + u'\r' + QDir::toNativeSeparators(temp()));
    abbruch();
    return Ende::Abbruch;
  }
  // 8.
  if (n.bytVarianteAnlegen == 1)
    n.TempBlockzeichnung = QDir(temp()).filePath(fctVariaBlockName());
  else
    n.TempBlockzeichnung =
        QDir(temp()).filePath(bv_.aktivierteBlocknummer + n.ansichtZiffer() + QStringLiteral(".dwg"));

  // 9.-15. The insertion points.
  if (n.bytBlockImportManuell != 1) {
    n.bytAbbruchSub = 0;
    const bool punkte = EinfuegepunkteAbfragen();
    const bool escape = fctEscapeGedrueckt(b_) || n.bytAbbruchSub == 2;
    if (!punkte && n.bytAbbruchSub == 1) {
      // Escape at the first point, twice: no message.
      abbruch();
      return Ende::Abbruch;
    }
    if (escape) {
      n.bytBloeckeImportAbbrechen = 1;
      abbruch(39);
      return Ende::Abbruch;
    }
    if (n.bytAbbrechen == 1) {
      n.bytAbbrechen = 0;
      abbruch(40);
      return Ende::Abbruch;
    }
    // 15. The marks go; a fresh mark stands.
    undoZurueck();
    undoMarke();
  }

  // 16./17. The objects and the drawing, or the drawing to import.
  if (n.bytBlockImportManuell == 1) {
    if (!CopyAFile(n.strZuImportierenderBlock, n.TempBlockzeichnung)) {
      abbruch();
      return Ende::Abbruch;
    }
    const QVariant ins = h->getVariable(QStringLiteral("insbase"));
    h->clearError();
    const QVariantList l = ins.toList();
    for (int a = 0; a < 3 && a < l.size(); ++a) n.Einfuegepunkte[0][size_t(a)] = l[a].toDouble();
    n.SlideAnzahl = 1;
  } else {
    const Ende e = auswaehlenUndSchreiben();
    if (e != Ende::Fertig) return e;
  }
  if (n.bytVarianteAnlegen == 1) return speichern();

  // 18.-31. Frame, name, slides, slide library.
  Ende e = bildausschnittAbfragen();
  if (e != Ende::Fertig) return e;
  e = slidesUndBibliothek();
  if (e != Ende::Fertig) return e;
  return speichern();
}

void NeuerBlock::undoMarke() {
  SendCommand(b_, QStringLiteral("._undo _m "));
  marke_ = true;
}

void NeuerBlock::undoZurueck() {
  // Back only to a mark of this run: a Back without one would take back
  // everything the user drew.
  if (!marke_) return;
  SendCommand(b_, QStringLiteral("._undo _b "));
  marke_ = false;
}

bool NeuerBlock::punktAbfragen(int j) {
  Host* h = b_.acadApp;
  static const int kMeldung[6] = {58, 61, 62, 63, 64, 65};
  const QString prompt = text(kMeldung[j]) + text(66) + QStringLiteral(": ");
  subEscapeVerwerfen(b_);
  const std::optional<HostPoint> p = h->getPoint(std::nullopt, prompt);
  const bool fehler = !p || h->failed();
  h->clearError();
  if (fehler) return false;
  n.Einfuegepunkte[size_t(j)] = *p;
  return true;
}

bool NeuerBlock::EinfuegepunkteAbfragen() {
  Trace t(QStringLiteral("EinfuegepunkteAbfragen"));
  Host* h = b_.acadApp;
  ACAD_aktivieren(b_);
  // a.-c. Point A. Escape asks again once; a failed pick asks again with a hint.
  const QString promptA =
      text(n.bytVarianteAnlegen == 1 ? 59 : 58) + QStringLiteral(" ");
  int escapes = 0;
  std::optional<HostPoint> a;
  for (;;) {
    subEscapeVerwerfen(b_);
    a = h->getPoint(std::nullopt, promptA);
    const bool fehler = !a || h->failed();
    h->clearError();
    if (fctEscapeGedrueckt(b_)) {
      if (++escapes >= 2) {
        n.bytAbbruchSub = 1;
        return false;
      }
      subPause(b_, 1000);
      continue;
    }
    if (!fehler) break;
    a = h->getPoint(std::nullopt, text(60) + u' ' + promptA);
    const bool nochmal = !a || h->failed();
    h->clearError();
    if (fctEscapeGedrueckt(b_)) {
      n.bytAbbruchSub = 2;
      return false;
    }
    if (nochmal) {
      n.bytAbbrechen = 1;
      return false;
    }
    break;
  }
  n.Einfuegepunkte[0] = *a;
  n.SlideAnzahl = 1;
  // d. A variant gets one point and no mark.
  if (n.bytVarianteAnlegen == 1) return true;
  // e. The mark scales with the view, so the user sees the point at any zoom.
  const double viewsize = h->getVariable(QStringLiteral("viewsize")).toDouble();
  h->clearError();
  n.RingAussenDurchmesserPunkt = fctZahlFuerAcad(viewsize / 60);
  auto markieren = [this](const HostPoint& p) {
    SendCommand(b_, fctDonutBefehl(n.RingAussenDurchmesserPunkt, p));
    SendCommand(b_, fctRotFaerbenBefehl());
  };
  markieren(n.Einfuegepunkte[0]);
  // 10. Points B to F; Return (or Escape) ends the asking.
  if (settings_.setup.longMehrereEinfuegepkte != 0) {
    for (int j = 1; j < 6; ++j) {
      if (!punktAbfragen(j)) {
        // 11. Escape at a further point ends the command.
        if (fctEscapeGedrueckt(b_)) n.bytAbbruchSub = 2;
        break;
      }
      markieren(n.Einfuegepunkte[size_t(j)]);
      ++n.SlideAnzahl;
    }
  }
  return n.bytAbbruchSub == 0;
}

NeuerBlock::Ende NeuerBlock::auswaehlenUndSchreiben() {
  Trace t(QStringLiteral("Auswahl und Wblock"));
  Host* h = b_.acadApp;
  for (;;) {
    // a. The user's selection, into a set of its own.
    h->selectionSetDelete(kAuswahlSatz);
    h->clearError();
    subEscapeVerwerfen(b_);
    int anzahl = -1;
    if (h->selectionSetAdd(kAuswahlSatz)) anzahl = h->selectOnScreen(kAuswahlSatz);
    if (h->failed()) {
      t.step(QStringLiteral("SelectOnScreen: ") + h->lastError());
      h->clearError();
    }
    // b.
    if (fctEscapeGedrueckt(b_)) {
      h->selectionSetDelete(kAuswahlSatz);
      h->clearError();
      abbruch();
      return Ende::Abbruch;
    }
    // c. The drawing, with point A as its base point; "_p" takes the set just
    //    made. An empty selection writes nothing and asks at once.
    if (anzahl > 0)
      SendCommand(b_, QStringLiteral("._-wblock ") + n.TempBlockzeichnung + QStringLiteral("\r\r") +
                          punktText(n.Einfuegepunkte[0]) + QStringLiteral("\r_p \r"));
    // d.
    h->selectionSetDelete(kAuswahlSatz);
    h->clearError();
    if (QFileInfo::exists(n.TempBlockzeichnung)) break;
    // e. Nothing selected: again, or the end.
    const std::optional<QString> antwort = h->getString(
        false, QStringLiteral("\r\nSie haben kein Objekt gewählt! Wiederholen? [<J>/N]:"));
    h->clearError();
    const QString a = antwort.value_or(QStringLiteral("N")).trimmed();
    if (antwort && (a.isEmpty() || a.compare(QStringLiteral("j"), Qt::CaseInsensitive) == 0))
      continue;
    abbruch();
    return Ende::Still;
  }
  // 17. The written objects come back to the drawing.
  if (n.bytVarianteAnlegen != 1) {
    undoZurueck();
    undoMarke();
  }
  return Ende::Fertig;
}

NeuerBlock::Ende NeuerBlock::bildausschnittAbfragen() {
  Trace t(QStringLiteral("Bildausschnitt"));
  Host* h = b_.acadApp;
  // 19. Two corners; a failed pick asks once more with a hint. A frame of no
  //     area can't be shot: the corners are asked again.
  auto ecke = [&](const std::optional<HostPoint>& von, int nr) -> std::optional<HostPoint> {
    for (int versuch = 0; versuch < 2; ++versuch) {
      const QString p = versuch == 0 ? text(nr) + QStringLiteral(": ")
                                     : text(60) + u' ' + text(nr) + text(70) + QStringLiteral(": ");
      subEscapeVerwerfen(b_);
      const std::optional<HostPoint> q = von ? h->getCorner(*von, p) : h->getPoint(std::nullopt, p);
      const bool fehler = !q || h->failed();
      h->clearError();
      if (fctEscapeGedrueckt(b_)) return std::nullopt;
      if (!fehler) return q;
    }
    return std::nullopt;
  };
  for (;;) {
    const std::optional<HostPoint> p1 = ecke(std::nullopt, 69);
    const std::optional<HostPoint> p2 = p1 ? ecke(p1, 71) : std::nullopt;
    if (!p1 || !p2) {
      abbruch();
      return Ende::Abbruch;
    }
    n.pZ1 = *p1;
    n.pZ2 = *p2;
    if (n.pZ1[0] != n.pZ2[0] && n.pZ1[1] != n.pZ2[1]) break;
    subMsgboxInfoEinzeilig(939);
  }
  // 20./21.
  n.RingAussenDurchmesserPunkt = GroesseRoterKreisFuerEinfuegepktBestimmen(n.pZ1, n.pZ2);
  h->zoomWindow(n.pZ1, n.pZ2);
  h->clearError();
  // 22. The name, when the setup asks for it.
  if (!nurPunkte_ && settings_.setup.longAbfrageBlocknameBeimErzeugen == 1) {
    // The keys are typed with wait: the host has worked them when the call
    // returns, so no pause follows.
    SendKeys(b_, QStringLiteral("{ESC}"), true);
    if (!blocknameDialog(false)) {
      abbruch();
      return Ende::Abbruch;
    }
  }
  // 23.
  if (!nurPunkte_ && n.byteZuErstellendeAnsicht == 0) {
    const size_t i = size_t(bv_.s1) * size_t(bv_.intBilder) + size_t(bv_.pos);
    if (i < bv_.aryTBloecke.size()) bv_.aryTBloecke[i].BlkName0 = n.strBlockName;
  }
  return Ende::Fertig;
}

bool NeuerBlock::blocknameDialog(bool variante) {
  blockname_->variante = variante;
  blockname_->txtBlocknameEingeben = n.strBlockName;
  b_.bytEventBeruecksichtigen = 1;
  b_.bytBlockv0Anpassen1Datenbank2BlockName3 = 3;
  n.bytAbbrechen = 0;
  const int ok = prompt().dialog(QStringLiteral("frmBlocknameEingeben"), [this] {
    return hooks.frmBlocknameEingeben ? hooks.frmBlocknameEingeben(*blockname_) : 0;
  });
  b_.bytEventBeruecksichtigen = 0;
  b_.bytBlockv0Anpassen1Datenbank2BlockName3 = 0;
  if (ok != 1) {
    n.bytAbbrechen = 0;
    return false;
  }
  n.strBlockName = blockname_->txtBlocknameEingeben;
  return true;
}

NeuerBlock::Ende NeuerBlock::slidesUndBibliothek() {
  Trace t(QStringLiteral("Slides"));
  // 24.
  const QString v = n.ansichtZiffer();
  for (int j = 0; j < 6; ++j) n.arySlideNamen[size_t(j)] = v + QChar(u'A' + j);
  n.ErstesSlidebild = n.arySlideNamen[0];
  // 25. The first slide, waited for.
  SlidesErstellen(b_, temp(), n.Einfuegepunkte[0], n.ErstesSlidebild, n.RingAussenDurchmesserPunkt);
  if (!fctAufDateiWarten(fctTempSlide(temp(), n.ErstesSlidebild))) {
    subMsgboxInfoZweizeilig2(241, 333);
    abbruch();
    return Ende::Abbruch;
  }
  // 26.
  SendKeys(b_, QStringLiteral("{ESC}"), true);
  n.bytAbbrechen = 0;
  // 27. The frame shown for approval.
  if (settings_.setup.longVorschaudiaBeimErzeugen == 1) {
    b_.bytEventBeruecksichtigen = 1;
    b_.bytBlockv0Anpassen1Datenbank2BlockName3 = 1;
    bildausschnitt_->bestaetigt = false;
    const int ok = prompt().dialog(QStringLiteral("frmBildausschnittAnpassen"), [this] {
      return hooks.frmBildausschnittAnpassen ? hooks.frmBildausschnittAnpassen(*bildausschnitt_) : 0;
    });
    b_.bytEventBeruecksichtigen = 0;
    b_.bytBlockv0Anpassen1Datenbank2BlockName3 = 0;
    if (ok != 1) {
      abbruch();
      return Ende::Abbruch;
    }
  }
  // 28. The slides of the other points, and their list.
  SendCommand(b_, fctLetztesLoeschenBefehl());
  for (int k = 1; k < n.SlideAnzahl; ++k) {
    SlidesErstellen(b_, temp(), n.Einfuegepunkte[size_t(k)], n.arySlideNamen[size_t(k)],
                    n.RingAussenDurchmesserPunkt);
    if (k < 5) SendCommand(b_, fctLetztesLoeschenBefehl());
  }
  QStringList namen;
  for (int k = 0; k < n.SlideAnzahl; ++k) namen << n.arySlideNamen[size_t(k)];
  if (!DialisteSchreiben(temp(), namen)) {
    abbruch();
    return Ende::Abbruch;
  }
  // 29. Names and places.
  const QString code = blockCode();
  n.strSlideLibDateiName =
      code + (n.byteZuErstellendeAnsicht == 0 ? QString() : v) + QStringLiteral(".slb");
  n.strTempSpeicherOrtSlideLib = QDir(temp()).filePath(n.strSlideLibDateiName);
  n.SpeicherOrtSlideLib = QDir(ordnerVerzeichnis()).filePath(n.strSlideLibDateiName);
  n.SpeicherortDerBlockzeichnung = QDir(ordnerVerzeichnis())
                                       .filePath(QStringLiteral("Block/") + bv_.aktivierteBlocknummer +
                                                 v + QStringLiteral(".dwg"));
  // 30./31. The library, by the tool the host runs.
  ACAD_aktivieren(b_);
  const QString skript = fctSlidelibSkriptSchreiben(temp(), settings_.programDir(), n.strSlideLibDateiName);
  if (skript.isEmpty()) {
    abbruch();
    return Ende::Abbruch;
  }
  SendCommand(b_, fctShellBefehl(skript));
  if (!fctAufDateiWarten(n.strTempSpeicherOrtSlideLib)) {
    subMsgboxInfoZweizeilig2(241, 334);
    abbruch();
    return Ende::Abbruch;
  }
  return Ende::Fertig;
}

// ---------------------------------------------------------------- storing

NeuerBlock::Ende NeuerBlock::speichern() {
  Trace t(QStringLiteral("speichern"));
  if (n.bytVarianteAnlegen == 1) {
    // 33.-36. A variant: its name, its row, its drawing.
    t.step(QStringLiteral("bytvarianteAnlegen = 1; DatenAbspeichern"));
    SendKeys(b_, QStringLiteral("{ESC}"), true);
    if (!blocknameDialog(true)) {
      abbruch();
      return Ende::Abbruch;
    }
    undoZurueck();
    filediaZurueck();
    SendKeys(b_, QStringLiteral("{ESC}"), true);
    const bool ok = dateienInDieBibliothek([this] {
      return subBlockdatenInDatenbankAbspeichernVariante(bv_, n, [this]() -> QString {
        return blocknameDialog(true) ? n.strBlockName : QString();
      });
    });
    if (!ok) {
      abbruch();
      return Ende::Abbruch;
    }
    zeigen();
    return Ende::Fertig;
  }
  if (n.byteZuErstellendeAnsicht == 0) {
    // 32. The data card; its save stores the row.
    t.step(QStringLiteral("Blockdaten Speicher Ansicht 0"));
    kartei_->Form_Load(n.strBlockName, fctTempSlide(temp(), n.ErstesSlidebild), bv_.s1 + 1,
                       n.strLayer, n.strLinie, n.strFarbe);
    b_.bytEventBeruecksichtigen = 1;
    b_.bytBlockv0Anpassen1Datenbank2BlockName3 = 2;
    const int ok = prompt().dialog(QStringLiteral("frmKarteiDateneingabe"), [this] {
      return hooks.frmKarteiDateneingabe ? hooks.frmKarteiDateneingabe(*kartei_) : 0;
    });
    b_.bytEventBeruecksichtigen = 0;
    b_.bytBlockv0Anpassen1Datenbank2BlockName3 = 0;
    if (ok != 1) {
      abbruch();
      return Ende::Abbruch;
    }
    n.aryDatenbankEintrag = kartei_->txtBenennung;
    n.strLayer = kartei_->txtLayer;
    n.strLinie = kartei_->txtLinie;
    n.strFarbe = kartei_->txtFarbe;
  } else {
    t.step(QStringLiteral("Blockdaten Speicher Ansicht >0"));
  }
  undoZurueck();
  filediaZurueck();
  const bool ok = dateienInDieBibliothek([this] {
    return n.byteZuErstellendeAnsicht == 0 ? BlockdatenInDatenbankAbspeichern(bv_, n, b_.istLT())
                                           : BlockdatenInDatenbankAbspeichernAnsichten(bv_, n, b_.istLT());
  });
  if (!ok) {
    abbruch();
    return Ende::Abbruch;
  }
  zeigen();
  return Ende::Fertig;
}

bool NeuerBlock::dateienInDieBibliothek(const std::function<bool()>& zeileSchreiben, bool nurSlides) {
  Trace t(QStringLiteral("DateienAusTempVerschieben"));
  NeuanlageJournal j;
  j.block = bv_.aktivierteBlocknummer;
  j.ansicht = n.byteZuErstellendeAnsicht;
  j.variante = n.bytVarianteAnlegen == 1;
  j.ersetzen = nurSlides;
  if (nurSlides) {
    j.dateien << qMakePair(n.strTempSpeicherOrtSlideLib, n.SpeicherOrtSlideLib);
  } else if (j.variante) {
    j.variaName = n.strVariaBlockName;
    j.dateien << qMakePair(n.TempBlockzeichnung, n.strVariaDwgVerzeichnis);
  } else {
    j.dateien << qMakePair(n.strTempSpeicherOrtSlideLib, n.SpeicherOrtSlideLib)
              << qMakePair(n.TempBlockzeichnung, n.SpeicherortDerBlockzeichnung);
  }
  const QString bib = lib_.VerzeichnisOhneDb;
  auto scheitern = [&] {
    subMsgboxInfoZweizeilig(936, 935);
    return false;
  };
  fctHaltepunkt("dateien-fertig");
  // The places, made now: nothing of the run reached the library before.
  for (const auto& d : j.dateien)
    if (!QDir().mkpath(QFileInfo(d.second).path())) {
      t.step(QStringLiteral("mkpath ") + d.second);
      return scheitern();
    }
  if (!fctJournalSchreiben(bib, j)) return scheitern();
  if (!zeileSchreiben()) {
    fctJournalLoeschen(bib);
    return scheitern();
  }
  fctHaltepunkt("zeile-geschrieben");
  QList<QPair<QString, QString>> verschoben;
  for (const auto& d : j.dateien) {
    if (!MoveAFile(d.first, d.second)) {
      // Back as it was: the files to the temporary directory, the row away.
      for (const auto& v : verschoben) MoveAFile(v.second, v.first);
      fctNeuanlageZuruecknehmen(lib_.connDb, bib, j);
      lib_.rsBlockInfo0.Requery();
      return scheitern();
    }
    verschoben << d;
    if (verschoben.size() == 1) fctHaltepunkt("zwischen-dateien");
  }
  fctHaltepunkt("dateien-verschoben");
  fctJournalLoeschen(bib);
  // The slides and the list are of no more use.
  for (int k = 0; k < n.SlideAnzahl; ++k) QFile::remove(fctTempSlide(temp(), n.arySlideNamen[size_t(k)]));
  QFile::remove(QDir(temp()).filePath(QStringLiteral("dialist.txt")));
  return true;
}

// ---------------------------------------------------------------- ends

void NeuerBlock::filediaZurueck() {
  if (!filediaGesetzt_ || !b_.acadApp) return;
  b_.acadApp->setVariable(QStringLiteral("filedia"), n.intFiledia);
  b_.acadApp->clearError();
  filediaGesetzt_ = false;
}

void NeuerBlock::abbruch(int meldung) {
  Trace t(QStringLiteral("combutNeu_Click Abbruch"));
  n.bytBloeckeImportAbbrechen = 1;
  QDir(temp()).removeRecursively();
  if (!b_.istLT()) {
    undoZurueck();
    filediaZurueck();
  }
  if (hooks.hauptform) hooks.hauptform(true);
  if (meldung) subMsgboxInfoEinzeilig(meldung);
}

void NeuerBlock::zeigen() {
  // 37. The page with the new block, the main form in front.
  Trace t(QStringLiteral("combutNeu_Click Ende"));
  QDir(temp()).removeRecursively();
  if (n.bytBlockImportManuell == 1) return;
  lib_.rsBlockInfo0.setFilter(QString());
  bv_.subSeiteNeuAnzeigen();
  if (n.byteZuErstellendeAnsicht == 0 && n.bytVarianteAnlegen == 0) {
    Recordset& rs = lib_.rsBlockInfo0;
    if (fctRsFind(rs, QStringLiteral("Block"), bv_.aktivierteBlocknummer))
      bv_.lisBlockBenennungAktualisieren(rs.text(QStringLiteral("M0")));
  }
  if (hooks.hauptform) hooks.hauptform(true);
}

// ---------------------------------------------------------------- variant names

QString NeuerBlock::fctVariaBlockName() {
  Trace t(QStringLiteral("fctVariaBlockName"));
  const QString varia = QDir(ordnerVerzeichnis()).filePath(QStringLiteral("Block/Varia"));
  const QString code = bv_.aktivierteBlocknummer;
  QStringList suffixe;
  for (int32_t n0 = 0;; ++n0) {
    if (n0 >= suffixe.size() && !fctPrefixEinlesen(n0 + 10, suffixe)) return {};
    const QString kandidat =
        suffixe[n0] + code.right(4) + n.ansichtZiffer() + QStringLiteral(".dwg");
    const QString pfad = QDir(varia).filePath(kandidat);
    if (!QFileInfo::exists(fctDateiFinden(pfad))) {
      n.strVariaBlockName = kandidat;
      n.strVariaDwgVerzeichnis = pfad;
      return kandidat;
    }
  }
}

}  // namespace kolvane

#include "datenbanksuche.h"

#include <QDir>
#include <QFileInfo>

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "diagnostics.h"
#include "kartendefinition.h"
#include "labels.h"
#include "msgbox.h"
#include "prompt.h"
#include "settings.h"
#include "suchdatei.h"
#include "textcompare.h"

namespace kolvane {

namespace {

constexpr int kMeldungKeinSuchbegriff = 55;
constexpr int kMeldungNichtsGefunden = 56;
constexpr int kMeldungDateiNichtLesbar = 964;
constexpr int kMeldungDateiNichtGeschrieben = 965;
constexpr int kMeldungDateiLeer = 969;
constexpr int kMeldungDateiBeschaedigt = 970;
constexpr int kMeldungDateiZuLang = 971;
constexpr int kMeldungSucheBleibt = 972;

QString frm(const QString& key) {
  return labels().fctBeschriftFrmZuordnen(QStringLiteral("frmDatenbankSuche.") + key);
}

QString dateiFilter() { return QStringLiteral("Str-Datei (*.str)|*.str"); }

}  // namespace

uint8_t fctBytAktAnsichtUeberBlkName(const Recordset& rs, const QString& name) {
  if (name.isEmpty() || !rs.isOpen() || rs.isEOF() || rs.isBOF()) return 0;
  for (uint8_t n = 0; n <= 4; ++n)
    if (equalNoCase(rs.text(QStringLiteral("BlkName") + QString::number(n)).trimmed(), name.trimmed())) return n;
  return 0;
}

void DatenbankSuche::Form_Load() {
  Trace t(QStringLiteral("frmDatenbankSuche.Form_Load"));
  KartenDefinition d;
  fctKartenDefinitionLesen(bv_.bibliothek(), d);
  for (int i = 0; i < 10; ++i) labBenennung[size_t(i)] = fctKartenBeschriftung(d, i);
  labBenennung[Suchkriterien::kNameFeld] = frm(QStringLiteral("labBenennung10"));
}

bool DatenbankSuche::cmbSuchen_Click() {
  Trace t(QStringLiteral("frmDatenbankSuche.cmbSuchen_Click"));
  // 1. Something to look for: the folder limit alone is no search.
  if (k.leer()) {
    fctMsgboxAnzeigen({kMeldungKeinSuchbegriff}, kTitelKolvane, Buttons::Ok, Icon::Information);
    return false;
  }
  // 2. The hits, on the library's connection.
  Bibliothek& lib = bv_.bibliothek();
  rsDatenbankSuche.Close();
  const SuchAnweisung a = fctRsOeffnenKriterium(k, lib.lngAktuelleOrdnerID);
  t.step(a.sql);
  if (!rsDatenbankSuche.Open(a.sql, lib.connDb, a.werte)) {
    subErrorAllgemein(true, QStringLiteral("frmDatenbankSuche.cmbSuchen_Click"), rsDatenbankSuche.lastError());
    rsDatenbankSuche.Close();
    return false;
  }
  // 3. None: the dialog stays for another try.
  if (rsDatenbankSuche.RecordCount() < 1) {
    if (hooks.hauptformNachVorne) hooks.hauptformNachVorne();
    fctMsgboxAnzeigen({kMeldungNichtsGefunden}, kTitelKolvane, Buttons::Ok, Icon::Information);
    rsDatenbankSuche.Close();
    return false;
  }
  // 4. The name searched tells the results which view to offer.
  rsDatenbankSuche.MoveFirst();
  strBlkNameGesucht = k.txtBenennung[Suchkriterien::kNameFeld];
  // 5. One hit, to be inserted at once.
  if (rsDatenbankSuche.RecordCount() == 1 && k.checkDirektEinfuegen) {
    const QString block = rsDatenbankSuche.text(QStringLiteral("Block"));
    const uint8_t ansicht = fctBytAktAnsichtUeberBlkName(rsDatenbankSuche, strBlkNameGesucht);
    t.step(QStringLiteral("direkt einfügen ") + block);
    if (hooks.einfuegen) hooks.einfuegen(block, ansicht);
    if (hooks.schliessen) hooks.schliessen();
    return true;
  }
  // 6. The result grid.
  if (hooks.hauptformNachVorne) hooks.hauptformNachVorne();
  if (hooks.suchergebnisAnzeigen) hooks.suchergebnisAnzeigen();
  return true;
}

QString DatenbankSuche::suchdateiVerzeichnis() const {
  return bv_.bibliothek().settings().environment().configDir;
}

void DatenbankSuche::dateiMeldung(int nr, const QString& datei, const QString& grund) {
  fctDateiMeldung(nr, datei, grund, nr == kMeldungDateiNichtGeschrieben ? 0 : kMeldungSucheBleibt);
}

bool DatenbankSuche::inDateiSpeichern(const QString& datei) {
  Trace t(QStringLiteral("frmDatenbankSuche.cmbSpeichern_Click"));
  SuchdateiInhalt inhalt;
  for (size_t i = 0; i < 10; ++i) {
    inhalt.txtBenennung[i] = k.txtBenennung[i];
    inhalt.comboxSuchkriterienVerknuepfen[i] = k.comboxSuchkriterienVerknuepfen[i];
  }
  QString grund;
  if (!fctSuchdateiSchreiben(datei, inhalt, &grund)) {
    dateiMeldung(kMeldungDateiNichtGeschrieben, datei, grund);
    return false;
  }
  return true;
}

bool DatenbankSuche::cmbSpeichern_Click() {
  QDir().mkpath(suchdateiVerzeichnis());
  QString datei = prompt().saveFile(frm(QStringLiteral("DateiSpeichernTitel")), suchdateiVerzeichnis(),
                                    dateiFilter(), QStringLiteral("DatenbankSuche1.str"));
  if (datei.isEmpty()) return false;
  if (QFileInfo(datei).suffix().isEmpty()) datei += QStringLiteral(".str");
  return inDateiSpeichern(datei);
}

bool DatenbankSuche::ausDateiLaden(const QString& datei) {
  Trace t(QStringLiteral("frmDatenbankSuche.cmbLaden_Click"));
  SuchdateiInhalt inhalt;
  switch (fctSuchdateiLesen(datei, inhalt)) {
    case SuchdateiFehler::Keiner:
      for (size_t i = 0; i < 10; ++i) {
        k.txtBenennung[i] = inhalt.txtBenennung[i];
        k.comboxSuchkriterienVerknuepfen[i] = inhalt.comboxSuchkriterienVerknuepfen[i];
      }
      return true;
    case SuchdateiFehler::NichtLesbar: dateiMeldung(kMeldungDateiNichtLesbar, datei); return false;
    case SuchdateiFehler::Leer: dateiMeldung(kMeldungDateiLeer, datei); return false;
    case SuchdateiFehler::ZuLang: dateiMeldung(kMeldungDateiZuLang, datei); return false;
    case SuchdateiFehler::Beschaedigt: dateiMeldung(kMeldungDateiBeschaedigt, datei); return false;
  }
  return false;
}

bool DatenbankSuche::cmbLaden_Click() {
  const QString datei = prompt().openFile(frm(QStringLiteral("DateiLadenTitel")), suchdateiVerzeichnis(),
                                          dateiFilter(), QStringLiteral("DatenbankSuche1.str"));
  if (datei.isEmpty()) return false;
  return ausDateiLaden(datei);
}

void DatenbankSuche::bibliothekGewechselt() {
  rsDatenbankSuche.Close();
  strBlkNameGesucht.clear();
}

}  // namespace kolvane

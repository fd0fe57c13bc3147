#include "defmenue.h"

#include <QDir>
#include <QFileInfo>

#include "bibliothek.h"
#include "diagnostics.h"
#include "kartendefinition.h"
#include "labels.h"
#include "msgbox.h"
#include "prompt.h"
#include "recordhelpers.h"
#include "schema.h"
#include "settings.h"

namespace kolvane {

namespace {

QString spalteBenennung(size_t i) { return QStringLiteral("Benennung") + QString::number(i + 1); }
QString spalteStandardwert(size_t i) { return QStringLiteral("Standardwert") + QString::number(i + 1); }

// The folder's reference to its definition; no value is the global row.
qint64 verweis(const Recordset& ordner) {
  bool zahl = false;
  const qint64 nr = ordner.text(QStringLiteral("NrTblDefMenue")).trimmed().toLongLong(&zahl);
  return zahl ? nr : 1;
}

// rsDefMenue on the row with this key; false (and on no row) when it is gone.
bool defZeile(Recordset& rs, qint64 nr) {
  if (!rs.isOpen() || rs.RecordCount() < 1) return false;
  rs.MoveFirst();
  return rs.Find(QStringLiteral("Nr = ") + QString::number(nr)) && !rs.isEOF();
}

QString frm(const QString& key) {
  return labels().fctBeschriftFrmZuordnen(QStringLiteral("frmDefMenue.") + key);
}

}  // namespace

bool DefMenue::ordnerFinden() {
  return lib_.rsOrdner.isOpen() && fctRsFind(lib_.rsOrdner, QStringLiteral("OrdnerNr"), lib_.strAktuelleOrdnerNr);
}

bool DefMenue::Form_Load() {
  Trace t(QStringLiteral("frmDefMenue.Form_Load"));
  Recordset& rd = lib_.rsDefMenue;
  if (!lib_.rsOrdner.isOpen() || !rd.isOpen() || rd.RecordCount() < 1) {
    subErrorAllgemein(false, QStringLiteral("frmDefMenue.Form_Load"),
                      QStringLiteral("Die Tabellen der Bibliothek sind nicht geöffnet."));
    return false;
  }
  const qint64 nr = ordnerFinden() ? verweis(lib_.rsOrdner) : 1;
  if (!defZeile(rd, nr)) rd.MoveFirst();
  checkGlobal = rd.text(QStringLiteral("Nr")).toLongLong() == 1;
  for (size_t i = 0; i < 10; ++i) {
    txtBenennung[i] = rd.text(spalteBenennung(i));
    txtStandardwert[i] = rd.text(spalteStandardwert(i));
  }
  if (txtBenennung[0].isEmpty() || txtBenennung[0] == freiText())
    txtBenennung[0] = labels().fctBeschriftFrmZuordnen(164);
  return true;
}

bool DefMenue::AbspeichernInTblDefMenue() {
  Recordset& rd = lib_.rsDefMenue;
  // Values go through the record set's bound statement, as typed.
  for (size_t i = 0; i < 10; ++i) {
    if (!rd.setValue(spalteBenennung(i), txtBenennung[i]) ||
        !rd.setValue(spalteStandardwert(i), txtStandardwert[i])) {
      subErrorAllgemein(false, QStringLiteral("AbspeichernInTblDefMenue"), rd.lastError());
      rd.CancelUpdate();
      return false;
    }
  }
  rd.setValue(QStringLiteral("global"), checkGlobal ? 1 : 0);
  return rd.Update();  // reports itself
}

bool DefMenue::speichernGlobal() {
  Recordset& rd = lib_.rsDefMenue;
  if (!defZeile(rd, 1)) {
    subErrorAllgemein(false, QStringLiteral("frmDefMenue.combutSpeichern_Click"),
                      QStringLiteral("Die globale Definition (Nr 1) fehlt in tblDefMenue."));
    return false;
  }
  if (!AbspeichernInTblDefMenue()) return false;
  // The folder follows the global row; a folder that is gone has nothing to point.
  if (!ordnerFinden()) return true;
  return lib_.rsOrdner.Update(QStringLiteral("NrTblDefMenue"), 1);
}

bool DefMenue::speichernEigen() {
  Recordset& ro = lib_.rsOrdner;
  Recordset& rd = lib_.rsDefMenue;
  if (!ordnerFinden()) {
    fctMsgboxAnzeigen({kMeldungOrdnerFehlt}, kTitelFrage, Buttons::Ok, Icon::Exclamation);
    return false;
  }
  const qint64 nr = verweis(ro);
  // A row of its own is overwritten; a folder on the global row, or pointing
  // at a row that is gone, gets a new one.
  if (nr > 1 && defZeile(rd, nr)) return AbspeichernInTblDefMenue();
  if (!rd.AddNew()) {
    subErrorAllgemein(false, QStringLiteral("frmDefMenue.combutSpeichern_Click"), rd.lastError());
    return false;
  }
  if (!AbspeichernInTblDefMenue()) return false;
  const qint64 neu = rd.text(QStringLiteral("Nr")).toLongLong();
  if (neu < 2) {
    subErrorAllgemein(false, QStringLiteral("frmDefMenue.combutSpeichern_Click"),
                      QStringLiteral("Die neue Zeile in tblDefMenue hat keine Nummer."));
    return false;
  }
  if (!fctRsFind(ro, QStringLiteral("OrdnerNr"), lib_.strAktuelleOrdnerNr)) return false;
  return ro.Update(QStringLiteral("NrTblDefMenue"), neu);
}

bool DefMenue::schreibgeschuetzt() const { return lib_.booSchreibgeschuetzt; }

bool DefMenue::combutSpeichern_Click() {
  Trace t(QStringLiteral("frmDefMenue.combutSpeichern_Click"));
  if (!lib_.rsOrdner.isOpen() || !lib_.rsDefMenue.isOpen()) {
    subErrorAllgemein(false, QStringLiteral("frmDefMenue.combutSpeichern_Click"),
                      QStringLiteral("Die Tabellen der Bibliothek sind nicht geöffnet."));
    return false;
  }
  // A write-protected library keeps its definitions (the dialog offers no save).
  if (lib_.booSchreibgeschuetzt) return false;
  if (checkGlobal && !fctMsgboxFrageZweizeilig(kFrageGlobal1, kFrageGlobal2)) return false;
  // The row and the folder's reference change together or not at all.
  Connection& c = lib_.connDb;
  const bool transaktion = c.begin();
  bool ok = checkGlobal ? speichernGlobal() : speichernEigen();
  if (transaktion) {
    if (ok && !c.commit()) {
      subErrorAllgemein(false, QStringLiteral("frmDefMenue.combutSpeichern_Click"), c.error());
      ok = false;
    }
    if (!ok) c.rollback();
  }
  if (!ok) {
    // A failed Update leaves its edit open, and the record sets may hold rows
    // the rollback took back: drop the edits (so nothing is written twice, or
    // reported twice) and read both anew.
    lib_.rsDefMenue.CancelUpdate();
    lib_.rsOrdner.CancelUpdate();
    lib_.rsDefMenue.Requery();
    lib_.rsOrdner.Requery();
  }
  if (!ok) return false;
  labBezeichnung = txtBenennung[0];
  gespeichert_ = true;
  return true;
}

void DefMenue::dateiMeldung(int nr, const QString& datei, const QString& grund) {
  fctDateiMeldung(nr, datei, grund, kMeldungDefinitionBleibt);
}

bool DefMenue::inDateiSpeichern(const QString& datei) {
  Trace t(QStringLiteral("frmDefMenue.combutInDateiSpeichern_Click"));
  DefMenueDateiInhalt inhalt;
  inhalt.benennung = txtBenennung;
  inhalt.standardwert = txtStandardwert;
  QString grund;
  if (!fctDefMenueDateiSchreiben(datei, inhalt, &grund)) {
    t.step(QStringLiteral("nicht geschrieben: ") + grund);
    fctDateiMeldung(kMeldungDateiNichtGeschrieben, datei, grund);
    return false;
  }
  return true;
}

bool DefMenue::combutInDateiSpeichern_Click() {
  QString datei = prompt().saveFile(frm(QStringLiteral("DateiSpeichernTitel")), fctKartenDateiVerzeichnis(lib_),
                                    dateiFilter(), dateiName());
  if (datei.isEmpty()) return false;
  if (QFileInfo(datei).suffix().isEmpty()) datei += QStringLiteral(".dat");
  return inDateiSpeichern(datei);
}

bool DefMenue::ausDateiLaden(const QString& datei) {
  Trace t(QStringLiteral("frmDefMenue.cmbKarteiLaden_Click"));
  DefMenueDateiInhalt inhalt;
  switch (fctDefMenueDateiLesen(datei, inhalt)) {
    case DefDateiFehler::Keiner:
      txtBenennung = inhalt.benennung;
      txtStandardwert = inhalt.standardwert;
      return true;
    case DefDateiFehler::NichtLesbar:
      dateiMeldung(kMeldungDateiNichtLesbar, datei);
      return false;
    case DefDateiFehler::Leer:
      dateiMeldung(kMeldungDateiLeer, datei);
      return false;
    case DefDateiFehler::ZuLang:
      dateiMeldung(kMeldungDateiZuLang, datei);
      return false;
    case DefDateiFehler::Beschaedigt:
      dateiMeldung(kMeldungDateiBeschaedigt, datei);
      return false;
  }
  return false;
}

bool DefMenue::cmbKarteiLaden_Click() {
  const QString datei = prompt().openFile(frm(QStringLiteral("DateiLadenTitel")), fctKartenDateiVerzeichnis(lib_),
                                          dateiFilter(), dateiName());
  if (datei.isEmpty()) return false;
  return ausDateiLaden(datei);
}

}  // namespace kolvane

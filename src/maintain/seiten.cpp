#include "seiten.h"

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "diagnostics.h"
#include "labels.h"
#include "msgbox.h"
#include "ordner.h"
#include "prompt.h"
#include "recordset.h"
#include "textcompare.h"

namespace kolvane {

namespace {

const QString kSeiteNeu = QStringLiteral("frmSeiteNeu");
const QString kSeiteUmbenennen = QStringLiteral("frmSeiteUmbenennen");

constexpr int kNameBreite = 100;  // tblSeiten.SeitenName when the record set can't tell

struct Zeile {
  qint64 nr = 0;
  int seitenNr = 0;
  QString name;
};

// The page rows of the current folder, read by value: a typed name never
// stands in a filter here.
std::vector<Zeile> seitenZeilen(Bibliothek& lib) {
  std::vector<Zeile> out;
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT Nr, SeitenNr, SeitenName FROM tblSeiten WHERE NrTblOrdner = ? ORDER BY Nr"),
               lib.connDb, {lib.lngAktuelleOrdnerID}))
    return out;
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext())
    out.push_back({rs.value(QStringLiteral("Nr")).toLongLong(), rs.value(QStringLiteral("SeitenNr")).toInt(),
                   rs.text(QStringLiteral("SeitenName"))});
  return out;
}

const Zeile* zeileMitNummer(const std::vector<Zeile>& z, int seitenNr) {
  for (const Zeile& e : z)
    if (e.seitenNr == seitenNr) return &e;
  return nullptr;
}

bool frage(int nr1, const QString& mitte, int nr2) {
  MessageRequest r;
  r.text = labels().fctBeschriftMsgboxZuordnen(nr1) + u'\r' + mitte + u'\r' +
           labels().fctBeschriftMsgboxZuordnen(nr2);
  r.title = labels().fctBeschriftFrmZuordnen(kTitelFrage, LabelSektion::Allg);
  r.buttons = Buttons::YesNo;
  r.icon = Icon::Question;
  return prompt().message(r) == Answer::Yes;
}

// A page name the user typed: a box says what is wrong with it. A name that
// another page of the folder has already is asked about (it may stand twice
// if the user says so). False: nothing is to be written.
bool seitenNamePruefen(Bibliothek& lib, const QString& name, int eigeneSeite) {
  if (name.isEmpty()) {
    fctMsgboxAnzeigen({52}, kTitelKolvane, Buttons::Ok, Icon::Information);
    return false;
  }
  if (name.contains(u'\'')) {
    subMsgboxInfoEinzeilig(kMsgHochkomma);
    return false;
  }
  const int w = lib.rsSeiten.isOpen() ? lib.rsSeiten.fieldWidth(QStringLiteral("SeitenName")) : -1;
  if (name.size() > (w > 0 ? w : kNameBreite)) {
    subMsgboxInfoEinzeilig(kMsgNameZuLang);
    return false;
  }
  for (const Zeile& z : seitenZeilen(lib))
    if (z.seitenNr != eigeneSeite && equalNoCase(z.name.trimmed(), name))
      return frage(358, name, 359);
  return true;
}

}  // namespace

bool fctSeitenNameSchreiben(Blockverwaltung& bv, int seitenNr, const QString& name) {
  Trace t(QStringLiteral("fctSeitenNameSchreiben"));
  Bibliothek& lib = bv.bibliothek();
  Connection& c = lib.connDb;
  const std::vector<Zeile> zeilen = seitenZeilen(lib);
  const Zeile* z = zeileMitNummer(zeilen, seitenNr);
  const bool ok =
      z ? c.execute(QStringLiteral("UPDATE tblSeiten SET SeitenName = ? WHERE Nr = ?"), {name, z->nr})
        : c.execute(QStringLiteral("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (?, ?, ?)"),
                    {seitenNr, name, lib.lngAktuelleOrdnerID});
  if (!ok) subErrorAllgemein(false, QStringLiteral("fctSeitenNameSchreiben"), c.error());
  bv.subRsSeitenNeuEinlesen();
  bv.fctSeiteInCboEinlesen();
  bv.Anzeigen();
  return ok;
}

// ------------------------------------------------------------- frmSeiteNeu

bool SeiteNeu::cmbOk_Click() {
  Trace t(QStringLiteral("frmSeiteNeu.cmbOk_Click"));
  Bibliothek& lib = bv_.bibliothek();
  if (lib.booSchreibgeschuetzt) return false;
  const QString nummer = txtSeitenNr.trimmed();
  const QString name = fctNameBereinigen(txtSeitenname);
  // 1. Both fields are needed.
  if (nummer.isEmpty()) {
    fctMsgboxAnzeigen({51}, kTitelKolvane, Buttons::Ok, Icon::Information);
    return false;
  }
  if (name.isEmpty()) {
    fctMsgboxAnzeigen({52}, kTitelKolvane, Buttons::Ok, Icon::Information);
    return false;
  }
  // 2. A page number is 1 or more, digits only, and reachable by typing.
  bool ziffern = true;
  for (QChar ch : nummer)
    if (ch < u'0' || ch > u'9') ziffern = false;
  const int seite = ziffern && nummer.size() <= 6 ? nummer.toInt() : 0;
  if (seite < 1) {
    subMsgboxInfoEinzeilig(968);
    return false;
  }
  if (seite > kHoechsteSeite) {
    subMsgboxInfoEinzeilig(236);
    return false;
  }
  // 3./4. A page of that number has a name already: overwrite it?
  const std::vector<Zeile> zeilen = seitenZeilen(lib);
  if (zeileMitNummer(zeilen, seite) && !frage(360, QString::number(seite), 361)) return false;
  // 4./5. The name: its own checks and the question about a name used twice.
  if (!seitenNamePruefen(lib, name, seite)) return false;
  if (!fctSeitenNameSchreiben(bv_, seite, name)) return false;
  fertig_ = true;
  return true;
}

// ------------------------------------------------------ frmSeiteUmbenennen

bool SeiteUmbenennen::cmbOk_Click() {
  Trace t(QStringLiteral("frmSeiteUmbenennen.cmbOk_Click"));
  Bibliothek& lib = bv_.bibliothek();
  if (lib.booSchreibgeschuetzt) return false;
  const QString name = fctNameBereinigen(txtSeitenname);
  if (!seitenNamePruefen(lib, name, seitenNr_)) return false;
  if (!fctSeitenNameSchreiben(bv_, seitenNr_, name)) return false;
  fertig_ = true;
  return true;
}

// ----------------------------------------------------- frmSeitenverwaltung

SeitenVerwaltung::SeitenVerwaltung(Blockverwaltung& bv) : bv_(bv) { Anzeigen(); }

bool SeitenVerwaltung::schreibgeschuetzt() const { return bv_.bibliothek().booSchreibgeschuetzt; }

QStringList SeitenVerwaltung::eintraege() const {
  QStringList out;
  for (const Eintrag& e : lisSeiten) out << QString::number(e.seitenNr) + QStringLiteral("  ") + e.name;
  return out;
}

void SeitenVerwaltung::Anzeigen() {
  const int vorher = auswahl >= 0 && auswahl < int(lisSeiten.size()) ? lisSeiten[size_t(auswahl)].seitenNr : 0;
  lisSeiten.clear();
  auswahl = -1;
  Recordset& rs = bv_.bibliothek().rsSeiten;
  if (rs.isOpen() && rs.RecordCount() > 0) {
    for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext())
      lisSeiten.push_back({int32_t(rs.value(QStringLiteral("Nr")).toLongLong()),
                           rs.value(QStringLiteral("SeitenNr")).toInt(), rs.text(QStringLiteral("SeitenName"))});
    rs.MoveFirst();
  }
  for (size_t i = 0; i < lisSeiten.size() && auswahl < 0; ++i)
    if (lisSeiten[i].seitenNr == vorher) auswahl = int(i);
}

void SeitenVerwaltung::browserAuffrischen() {
  bv_.subRsSeitenNeuEinlesen();
  bv_.fctSeiteInCboEinlesen();
  bv_.Anzeigen();
  Anzeigen();
}

bool SeitenVerwaltung::cmbNeu_Click() {
  if (schreibgeschuetzt()) return false;
  neu_ = std::make_unique<SeiteNeu>(bv_);
  SeiteNeu* logik = neu_.get();
  // The page the browser stands on is offered.
  logik->txtSeitenNr = QString::number(bv_.s1 + 1);
  const int r = prompt().dialog(kSeiteNeu, [this, logik] {
    return hooks.frmSeiteNeu ? hooks.frmSeiteNeu(*logik) : 0;
  });
  if (r == 1 && !logik->fertig()) logik->cmbOk_Click();
  const bool ok = logik->fertig();
  const int seite = logik->txtSeitenNr.trimmed().toInt();
  neu_.reset();
  Anzeigen();
  if (ok)
    for (size_t i = 0; i < lisSeiten.size(); ++i)
      if (lisSeiten[i].seitenNr == seite) auswahl = int(i);
  return ok;
}

bool SeitenVerwaltung::cmbUmbenennen_Click() {
  if (schreibgeschuetzt()) return false;
  if (auswahl < 0 || auswahl >= int(lisSeiten.size())) {
    subMsgboxInfoEinzeilig(kMsgKeinEintrag);
    return false;
  }
  const Eintrag e = lisSeiten[size_t(auswahl)];
  umbenennen_ = std::make_unique<SeiteUmbenennen>(bv_, e.seitenNr, e.name);
  SeiteUmbenennen* logik = umbenennen_.get();
  const int r = prompt().dialog(kSeiteUmbenennen, [this, logik] {
    return hooks.frmSeiteUmbenennen ? hooks.frmSeiteUmbenennen(*logik) : 0;
  });
  if (r == 1 && !logik->fertig()) logik->cmbOk_Click();
  const bool ok = logik->fertig();
  umbenennen_.reset();
  Anzeigen();
  return ok;
}

bool SeitenVerwaltung::cmbLoeschen_Click() {
  Trace t(QStringLiteral("frmSeitenverwaltung.cmbLoeschen_Click"));
  if (schreibgeschuetzt()) return false;
  if (auswahl < 0 || auswahl >= int(lisSeiten.size())) {
    subMsgboxInfoEinzeilig(kMsgKeinEintrag);
    return false;
  }
  if (!fctMsgboxFrageEinzeilig(kMsgSeiteLoeschen)) return false;
  Connection& c = bv_.bibliothek().connDb;
  // Only the name goes: the page's blocks stay on their slots.
  if (!c.execute(QStringLiteral("DELETE FROM tblSeiten WHERE Nr = ?"), {lisSeiten[size_t(auswahl)].nr})) {
    subErrorAllgemein(false, QStringLiteral("frmSeitenverwaltung.cmbLoeschen_Click"), c.error());
    return false;
  }
  browserAuffrischen();
  return true;
}

bool SeitenVerwaltung::cmbAlleLoeschen_Click() {
  Trace t(QStringLiteral("frmSeitenverwaltung.cmbAlleLoeschen_Click"));
  if (schreibgeschuetzt()) return false;
  if (!fctMsgboxFrageEinzeilig(kMsgAlleSeitenLoeschen)) return false;
  Bibliothek& lib = bv_.bibliothek();
  if (!lib.connDb.execute(QStringLiteral("DELETE FROM tblSeiten WHERE NrTblOrdner = ?"),
                          {lib.lngAktuelleOrdnerID})) {
    subErrorAllgemein(false, QStringLiteral("frmSeitenverwaltung.cmbAlleLoeschen_Click"), lib.connDb.error());
    return false;
  }
  browserAuffrischen();
  return true;
}

bool SeitenVerwaltung::cmbOk_Click() {
  if (auswahl < 0 || auswahl >= int(lisSeiten.size())) return false;
  const int seite = lisSeiten[size_t(auswahl)].seitenNr;
  if (seite < 1) return false;
  bv_.GeheZuSeite(seite - 1, bv_.pos, bv_.strAktuelleOrdnerNr());
  return true;
}

}  // namespace kolvane

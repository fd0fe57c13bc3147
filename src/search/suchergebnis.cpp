#include "suchergebnis.h"

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "diagnostics.h"
#include "layout.h"
#include "paths.h"
#include "prefix.h"
#include "recordhelpers.h"
#include "recordset.h"
#include "textcompare.h"

namespace kolvane {

namespace {

// A column of the search's row; "" when the statement didn't select it (the
// other table kind selects "*" and names its column BlkName).
QString feld(const Recordset& rs, const QString& name) {
  return rs.hasField(name) ? rs.text(name).trimmed() : QString();
}

// Puts a record set's cursor back where it stood before a search moved it.
void positionZurueck(Recordset& rs, int position) {
  if (position > 0) {
    rs.setAbsolutePosition(position);
  } else if (position == Recordset::adPosEOF) {
    rs.MoveLast();
    rs.MoveNext();
  } else if (position == Recordset::adPosBOF) {
    rs.MoveFirst();
    rs.MovePrevious();
  }
}

}  // namespace

Suchergebnis::Suchergebnis(Blockverwaltung& bv, Recordset& rsDatenbankSuche, const QString& gesucht)
    : strBlkNameGesucht(gesucht), bv_(bv), rs_(rsDatenbankSuche) {}

bool Suchergebnis::Form_Load() {
  Trace t(QStringLiteral("frmSuchergebnis.Form_Load"));
  aryTreffer.clear();
  intAnzahlDerGefundenenBloecke = 0;
  bool ok = true;
  if (!rs_.isOpen()) {
    subErrorAllgemein(false, QStringLiteral("frmSuchergebnis.Form_Load"),
                      QStringLiteral("Das Suchergebnis ist nicht geöffnet."));
    ok = false;
  } else if (rs_.RecordCount() > 0) {
    const int32_t aktuellerOrdner = bv_.bibliothek().lngAktuelleOrdnerID;
    const bool inventor = !rs_.hasField(QStringLiteral("BlkName0")) && rs_.hasField(QStringLiteral("BlkName"));
    aryTreffer.reserve(size_t(rs_.RecordCount()));
    rs_.MoveFirst();
    while (!rs_.isEOF()) {
      TSuchTreffer h;
      h.Block = feld(rs_, QStringLiteral("Block"));
      h.M0 = feld(rs_, QStringLiteral("M0"));
      h.OrdnerID = feld(rs_, QStringLiteral("OrdnerID"));
      h.SlideLib = feld(rs_, QStringLiteral("SlideLib"));
      if (inventor) {
        h.BlkName[0] = feld(rs_, QStringLiteral("BlkName"));
      } else {
        for (int k = 0; k < 5; ++k) h.BlkName[size_t(k)] = feld(rs_, QStringLiteral("BlkName%1").arg(k));
      }
      for (int k = 1; k <= 4 && !h.weitereAnsicht; ++k) {
        const QString ax = QStringLiteral("AX%1").arg(k);
        if (rs_.hasField(ax) && fctAnsichtWertVorhanden(rs_.value(ax))) h.weitereAnsicht = true;
      }
      // The block name of a row is shown only for the folder the browser stands on.
      h.Name = h.M0;
      if (!h.OrdnerID.isEmpty() && h.OrdnerID.toLongLong() == aktuellerOrdner && !h.BlkName[0].isEmpty())
        h.Name = h.BlkName[0];
      aryTreffer.push_back(h);
      rs_.MoveNext();
    }
    rs_.MoveFirst();
    intAnzahlDerGefundenenBloecke = int32_t(aryTreffer.size());
  }
  intErgebnisSeite = 0;
  bytErgebnisPosition = 0;
  seiteFuellen();
  Anzeigen();
  return ok;
}

const TSuchTreffer* Suchergebnis::treffer(int i) const {
  if (i < 0 || i >= kBilder) return nullptr;
  const int64_t n = int64_t(intErgebnisSeite) * kBilder + i;
  return n < int64_t(aryTreffer.size()) ? &aryTreffer[size_t(n)] : nullptr;
}

QColor Suchergebnis::slideHintergrund() const { return bv_.slideHintergrund(); }

void Suchergebnis::seiteFuellen() {
  lisBlockBenennung.clear();
  for (int i = 0; i < kBilder; ++i) {
    const TSuchTreffer* h = treffer(i);
    if (!h) {
      sldSuchergebnis[size_t(i)] = bv_.frei2();
      lisBlockBenennung << Blockverwaltung::kFrei;
      continue;
    }
    // A slide library shows its slide "0a"; a plain slide file is shown as it is.
    sldSuchergebnis[size_t(i)] =
        h->SlideLib.isEmpty() ? bv_.frei2() : bv_.slideAdresse(h->SlideLib, QStringLiteral("0a"));
    // The list names the card (M0) as the browser's list does; a row without
    // one still shows a line that tells it apart.
    QString text = h->M0;
    if (text.isEmpty()) text = h->Name.isEmpty() ? h->Block : h->Name;
    lisBlockBenennung << text;
  }
  knoepfeSetzen();
}

void Suchergebnis::knoepfeSetzen() {
  cmbZurueckEnabled = intErgebnisSeite != 0;
  cmbVorEnabled = int64_t(intErgebnisSeite + 1) * kBilder < intAnzahlDerGefundenenBloecke;
}

bool Suchergebnis::ordnerSuchen(const QString& ordnerID, QString& ordnerNr, QString& ordnerName) {
  bool nummer = false;
  const qint64 id = ordnerID.toLongLong(&nummer);
  if (!nummer) return false;
  Recordset& ro = bv_.bibliothek().rsOrdner;
  if (!ro.isOpen() || ro.RecordCount() < 1) return false;
  const int vorher = ro.AbsolutePosition();
  ro.MoveFirst();
  const bool gefunden = ro.Find(QStringLiteral("Nr = ") + QString::number(id));
  if (gefunden) {
    ordnerNr = ro.text(QStringLiteral("OrdnerNr")).trimmed();
    ordnerName = ro.text(QStringLiteral("OrdnerName"));
    const int nul = ordnerName.indexOf(QChar(0));
    if (nul >= 0) ordnerName.truncate(nul);
  }
  positionZurueck(ro, vorher);
  return gefunden;
}

QString Suchergebnis::seitenBeschriftung(const QString& ordnerID, int seitenNr) {
  const QString nummer = QString::number(seitenNr);
  Recordset rs;
  // ordnerID is the number of a folder row that was just found.
  if (!rs.Open(QStringLiteral("SELECT SeitenNr, SeitenName From tblSeiten WHERE NrTblOrdner = ") +
                   QString::number(ordnerID.toLongLong()),
               bv_.bibliothek().connDb)) {
    subErrorAllgemein(false, QStringLiteral("frmSuchergebnis.Anzeigen"), rs.lastError());
    return nummer;
  }
  if (rs.RecordCount() > 0 && rs.Find(QStringLiteral("SeitenNr = ") + nummer)) {
    const QString name = rs.text(QStringLiteral("SeitenName")).trimmed();
    if (!name.isEmpty()) return name;
  }
  return nummer;
}

void Suchergebnis::Anzeigen() {
  Trace t(QStringLiteral("frmSuchergebnis.Anzeigen"));
  rahmenAktiv = FrameColor::Red;
  byteAnsichtVorhanden = 0;
  ordnerGefunden_ = false;
  intSeite = -1;
  intFuerNummerPositionsSuche = 0;
  lisBlockBenennungIndex = bytErgebnisPosition;
  const TSuchTreffer* h = treffer(bytErgebnisPosition);
  if (!h) {
    labOrdnername = labSeitenNummer = labBlockName = kFrei;
    strAktivierteBlocknummer.clear();
    cmbEinfuegenEnabled = cmbGeheZuEnabled = false;
    return;
  }
  labBlockName = h->Name;
  strAktivierteBlocknummer = h->Block;
  cmbEinfuegenEnabled = true;

  // The folder. A row whose folder is gone stays selectable; it has no page.
  QString ordnerNr, ordnerName;
  ordnerGefunden_ = ordnerSuchen(h->OrdnerID, ordnerNr, ordnerName);
  labOrdnername = ordnerGefunden_ ? ordnerName : kFrei;
  if (ordnerNr.isEmpty()) ordnerNr = h->Block.left(3);

  // The browser's page follows from the slot of the code, with the browser's
  // page size; a row on no slot (a cut block waiting to be pasted) has none.
  const int32_t slot = fctSlotAusBlockCode(h->Block);
  const int32_t bilder = bv_.intBilder > 0 ? bv_.intBilder : 20;
  if (slot >= 0 && slot / bilder <= INT16_MAX) {
    intSeite = int16_t(slot / bilder);
    intFuerNummerPositionsSuche = slot % bilder;
  }
  if (!ordnerGefunden_ || intSeite < 0)
    labSeitenNummer = kFrei;
  else
    labSeitenNummer = seitenBeschriftung(h->OrdnerID, intSeite + 1);
  cmbGeheZuEnabled = ordnerGefunden_ && intSeite >= 0;

  // Further views: by their points, or by their drawings alone.
  const QString bib = bv_.bibliothek().VerzeichnisOhneDb;
  if (h->weitereAnsicht) byteAnsichtVorhanden = 1;
  for (int n = 1; n <= 4 && byteAnsichtVorhanden == 0; ++n)
    if (fctDateiExist(fctBlockDwgPfad(bib, ordnerNr, h->Block, n))) byteAnsichtVorhanden = 1;

  // Variants of view 0 turn the frame green. The browser's active block is
  // not touched: the check reads the hit's own list.
  const auto& kontrolle = bv_.hooks.fctVariaEinfuegenKontroll;
  const bool varianten = kontrolle && kontrolle(fctVariantenListePfad(bib, ordnerNr, h->Block, 0));
  rahmenAktiv = varianten ? FrameColor::Green : FrameColor::Red;
}

bool Suchergebnis::cmbVor_Click() {
  if (!cmbVorEnabled) return false;
  ++intErgebnisSeite;
  seiteFuellen();
  Anzeigen();
  return true;
}

bool Suchergebnis::cmbZurueck_Click() {
  if (!cmbZurueckEnabled) return false;
  --intErgebnisSeite;
  seiteFuellen();
  Anzeigen();
  return true;
}

void Suchergebnis::sldSuchergebnis_LButtonDown(int i) {
  if (i < 0 || i >= kBilder) return;
  bytErgebnisPosition = uint8_t(i);
  Anzeigen();
}

bool Suchergebnis::cmbGeheZu_Click() {
  Trace t(QStringLiteral("frmSuchergebnis.cmbGeheZu_Click"));
  if (!treffer(bytErgebnisPosition) || !cmbGeheZuEnabled) return false;
  bv_.byteGeheZuVonSuchergebnis = 1;
  bv_.suchergebnisSeite = intSeite + 1;
  bv_.suchergebnisPos = intFuerNummerPositionsSuche;
  bv_.comboxOrdner_Click(labOrdnername);
  // A folder that could not be opened (renamed meanwhile; the browser said so)
  // leaves the request behind: it must not move a later folder change, and
  // the results stay open.
  bv_.byteGeheZuVonSuchergebnis = 0;
  if (bv_.strAktuellerOrdnerName().section(QChar(0), 0, 0) != labOrdnername) return false;
  if (schliessen) schliessen();
  if (hauptformNachVorne) hauptformNachVorne();
  return true;
}

bool Suchergebnis::cmbEinfuegen_Click() {
  Trace t(QStringLiteral("frmSuchergebnis.cmbEinfuegen_Click"));
  const TSuchTreffer* h = treffer(bytErgebnisPosition);
  if (!h || h->Block.isEmpty()) return false;
  const QString block = h->Block;
  const uint8_t ansicht = strBlkNameGesucht.isEmpty() ? 0 : fctBytAktAnsichtUeberBlkName(block, strBlkNameGesucht);
  if (einfuegen) einfuegen(block, ansicht);
  if (schliessen) schliessen();
  return true;
}

uint8_t Suchergebnis::fctBytAktAnsichtUeberBlkName(const QString& block, const QString& name) const {
  const QString gesucht = name.trimmed();
  if (gesucht.isEmpty()) return 0;
  for (const TSuchTreffer& h : aryTreffer) {
    if (!equalNoCase(h.Block, block)) continue;
    for (int k = 0; k < 5; ++k)
      if (equalNoCase(h.BlkName[size_t(k)], gesucht)) return uint8_t(k);
    return 0;
  }
  return 0;
}

}  // namespace kolvane

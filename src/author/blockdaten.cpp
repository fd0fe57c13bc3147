#include "blockdaten.h"

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "diagnostics.h"
#include "msgbox.h"
#include "neuanlage.h"
#include "recordhelpers.h"
#include "recordset.h"

namespace kolvane {

namespace {

const char* const kBuchstaben[6] = {"A", "B", "C", "D", "E", "F"};
const QString kBlockStandardName = QStringLiteral("Block");

QString spalte(int buchstabe, char achse, int ansicht) {
  return QLatin1String(kBuchstaben[buchstabe]) + QChar(achse) + QString::number(ansicht);
}

// Writes the points of view k to the row the record set stands on: with
// `leeren`, every letter's X, Y, Z first become 0 (X of A stays), then the
// picked points take their letters.
bool punkteSetzen(Recordset& rs, const Neuanlage& n, int k, bool leeren) {
  bool ok = true;
  if (leeren)
    for (int j = 0; j < 6; ++j)
      for (char a : {'X', 'Y', 'Z'})
        if (!(j == 0 && a == 'X')) ok = rs.setValue(spalte(j, a, k), 0.0) && ok;
  for (int j = 0; j < n.SlideAnzahl && j < 6; ++j)
    for (int a = 0; a < 3; ++a)
      ok = rs.setValue(spalte(j, "XYZ"[a], k), n.Einfuegepunkte[size_t(j)][size_t(a)]) && ok;
  return ok;
}

// The next free made name of view k ("Block<k>-<n>").
QString gemachterName(Connection& conn, int k) {
  return fctNaechsterFreierName(conn, QStringLiteral("tblBlockInfo"),
                                QStringLiteral("BLKName") + QString::number(k),
                                kBlockStandardName + QString::number(k) + u'-');
}

// Ends a transaction: commit when everything went, else roll back and report.
bool abschliessen(Connection& c, bool ok, const QString& routine, const QString& was) {
  if (ok && c.commit()) return true;
  c.rollback();
  subErrorAllgemein(false, routine, was + QStringLiteral(": ") + c.error());
  return false;
}

}  // namespace

bool BlockdatenInDatenbankAbspeichern(Blockverwaltung& bv, Neuanlage& n, bool istLT) {
  Trace t(QStringLiteral("BlockdatenInDatenbankAbspeichern"));
  Bibliothek& lib = bv.bibliothek();
  Recordset& rs = lib.rsBlockInfo0;
  Connection& c = lib.connDb;
  const size_t index = size_t(bv.s1) * size_t(bv.intBilder) + size_t(bv.pos);
  if (index >= bv.aryTBloecke.size()) {
    subErrorAllgemein(false, QStringLiteral("BlockdatenInDatenbankAbspeichern"),
                      QStringLiteral("kein Platz für den Block: ") + QString::number(index));
    return false;
  }
  const QString code = bv.aryTBloecke[index].Block;
  if (!c.begin()) {
    subErrorAllgemein(false, QStringLiteral("BlockdatenInDatenbankAbspeichern"), c.error());
    return false;
  }
  bool ok = true;
  bool gefunden = rs.RecordCount() > 0 && fctRsFindMitZuruecksetzen(rs, QStringLiteral("Block"), code);
  if (!gefunden) {
    // A placeholder row of an old library ("1") is taken over.
    rs.MoveFirst();
    if (!(rs.RecordCount() > 0 && !rs.isEOF() && rs.text(QStringLiteral("Block")) == QLatin1String("1")))
      ok = rs.AddNew();
  }
  if (!fctRsFindMitZuruecksetzen(lib.rsOrdner, QStringLiteral("OrdnerNr"), lib.strAktuelleOrdnerNr))
    lib.rsOrdner.MoveFirst();

  t.step(QStringLiteral("Variablen den RsFeldern zuweisen und abspeichern"));
  if (n.strBlockName.isEmpty()) {
    n.strBlockName = gemachterName(c, 0);
    bv.aryTBloecke[index].BlkName0 = n.strBlockName;
  }
  ok = ok && rs.setValue(QStringLiteral("Block"), code);
  ok = ok && rs.setValue(QStringLiteral("SlideLib"),
                         lib.strAktuelleOrdnerNr + u'\\' + n.strSlideLibDateiName);
  ok = ok && rs.setValue(QStringLiteral("OrdnerID"), lib.rsOrdner.value(QStringLiteral("Nr")));
  ok = ok && rs.setValue(QStringLiteral("BLKName0"), n.strBlockName);
  for (int m = 0; m < 10; ++m)
    ok = ok && rs.setValue(QStringLiteral("M") + QString::number(m), n.aryDatenbankEintrag[size_t(m)]);
  ok = ok && rs.setValue(QStringLiteral("Layer"), n.strLayer);
  ok = ok && rs.setValue(QStringLiteral("LYCOLOR"), n.strFarbe);
  ok = ok && rs.setValue(QStringLiteral("LYLINE"), n.strLinie);
  t.step(QStringLiteral("vor Update"));
  ok = ok && rs.Update();
  if (!ok && rs.isEditing()) rs.CancelUpdate();

  // The full row: names for the four further views, and the points of view 0.
  Recordset zeile;
  if (ok) {
    ok = fctRsEinlesenMitEinemKriterium(zeile, c, QStringLiteral("tblBlockInfo"),
                                        QStringLiteral("Block"), code, 0) &&
         zeile.RecordCount() > 0;
    if (!ok) subMsgboxInfoZweizeilig2(199, 200);
  }
  if (ok) {
    for (int k = 1; k <= 4 && ok; ++k)
      ok = zeile.setValue(QStringLiteral("BLKNAME") + QString::number(k), gemachterName(c, k)) &&
           zeile.Update();
  }
  if (ok && !istLT) {
    t.step(QStringLiteral("rsBlockInfo0Einfuegepkt Einlesen"));
    ok = punkteSetzen(zeile, n, 0, true) && zeile.Update();
  }
  if (!abschliessen(c, ok, QStringLiteral("BlockdatenInDatenbankAbspeichern"),
                    QStringLiteral("Die Blockdaten konnten nicht gespeichert werden"))) {
    rs.Requery();
    return false;
  }
  // The open record set stands on the written row; its M0 is read next.
  rs.Requery();
  fctRsFindMitZuruecksetzen(rs, QStringLiteral("Block"), code);
  return true;
}

bool BlockdatenInDatenbankAbspeichernAnsichten(Blockverwaltung& bv, Neuanlage& n, bool istLT) {
  const int k = n.byteZuErstellendeAnsicht;
  Trace t(QStringLiteral("BlockdatenInDatenbankAbspeichernAnsichten"));
  Bibliothek& lib = bv.bibliothek();
  Connection& c = lib.connDb;
  if (k < 1 || k > 4) {
    subErrorAllgemein(false, QStringLiteral("BlockdatenInDatenbankAbspeichernAnsichten"),
                      QStringLiteral("keine Ansicht 1 bis 4: ") + QString::number(k));
    return false;
  }
  const QString code = bv.aktivierteBlocknummer;
  QStringList spalten{QStringLiteral("SlideLib"), QStringLiteral("BlkName") + QString::number(k)};
  for (int j = 0; j < 6; ++j)
    for (char a : {'X', 'Y', 'Z'}) spalten << spalte(j, a, k);
  Recordset zeile;
  t.step(QStringLiteral("rsEinfuegepkteInDatenbankAbspeichern öffnen für Ansicht ") +
         QString::number(k));
  if (!c.begin()) return false;
  bool ok = fctRsEinlesenMitKriterium(
                zeile, c,
                QStringLiteral("SELECT  ") + spalten.join(QStringLiteral(", ")) +
                    QStringLiteral(" From tblBlockInfo WHERE Block = '") + code + u'\'') &&
            zeile.RecordCount() > 0;
  if (ok && istLT) {
    ok = zeile.setValue(QStringLiteral("AX") + QString::number(k), QStringLiteral("0.1"));
  } else if (ok) {
    // A replaced view keeps none of its old points: letters beyond the new
    // count would otherwise still count as points without slides.
    ok = punkteSetzen(zeile, n, k, true);
  }
  ok = ok && zeile.setValue(QStringLiteral("BlkName") + QString::number(k), n.strBlockName) &&
       zeile.Update();
  if (!abschliessen(c, ok, QStringLiteral("BlockdatenInDatenbankAbspeichernAnsichten"),
                    QStringLiteral("Die Ansicht konnte nicht gespeichert werden")))
    return false;
  // The open record set knows the view at once.
  lib.rsBlockInfo0.Requery();
  fctRsFindMitZuruecksetzen(lib.rsBlockInfo0, QStringLiteral("Block"), code);
  return true;
}

bool BlockdatenInDatenbankAbspeichernAnsichten2(Blockverwaltung& bv, const Neuanlage& n, uint8_t bytViewToSave,
                                                int bytNumberOfSlides, uint8_t bytClearEntrys) {
  Trace t(QStringLiteral("BlockdatenInDatenbankAbspeichernAnsichten2"));
  Connection& c = bv.bibliothek().connDb;
  const int k = bytViewToSave;
  Recordset zeile;
  if (!c.begin()) return false;
  bool ok = fctRsEinlesenMitEinemKriterium(zeile, c, QStringLiteral("tblBlockInfo"), QStringLiteral("Block"),
                                           bv.aktivierteBlocknummer, 0) &&
            zeile.RecordCount() > 0;
  if (ok && bytClearEntrys == 1)
    for (int j = 0; j < 6; ++j)
      for (char a : {'X', 'Y', 'Z'}) ok = zeile.setValue(spalte(j, a, k), 0.0) && ok;
  for (int j = 0; ok && j < bytNumberOfSlides && j < 6; ++j)
    for (int a = 0; a < 3; ++a)
      ok = zeile.setValue(spalte(j, "XYZ"[a], k), n.Einfuegepunkte[size_t(j)][size_t(a)]) && ok;
  ok = ok && zeile.Update();
  return abschliessen(c, ok, QStringLiteral("BlockdatenInDatenbankAbspeichernAnsichten2"),
                      QStringLiteral("Die Einfügepunkte konnten nicht gespeichert werden"));
}

bool subBlockdatenInDatenbankAbspeichernVariante(Blockverwaltung& bv, Neuanlage& n,
                                                 const std::function<QString()>& nameFrage) {
  Trace t(QStringLiteral("subBlockdatenInDatenbankAbspeichernVariante"));
  Bibliothek& lib = bv.bibliothek();
  if (!fctRsFindMitZuruecksetzen(lib.rsBlockInfo0, QStringLiteral("Block"), bv.aktivierteBlocknummer)) {
    subMsgboxInfoZweizeilig2(199, 200);
    return false;
  }
  const QVariant blockNr = lib.rsBlockInfo0.value(QStringLiteral("Nr"));
  Recordset& rs = lib.rsVariaBloecke;
  // Read for this block each time: the set may still hold another block's variants.
  if (!lib.fctRsVariaBloeckeEinlesen(blockNr.toInt())) return false;
  // Compared row by row, not by a criterion: a name may hold quotes.
  auto vergeben = [&rs](const QString& name) {
    for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext())
      if (rs.text(QStringLiteral("BlockName")).compare(name, Qt::CaseInsensitive) == 0 &&
          !rs.text(QStringLiteral("BlockDateiName")).isEmpty())
        return true;
    return false;
  };
  if (vergeben(n.strBlockName) && fctMsgboxFrageDreizeilig12(100, 101, 102) == Answer::Yes &&
      nameFrage) {
    const QString neu = nameFrage();
    if (!neu.isEmpty()) n.strBlockName = neu;
  }
  bool ok = rs.AddNew() && rs.setValue(QStringLiteral("BlockName"), n.strBlockName) &&
            rs.setValue(QStringLiteral("BlockDateiName"), n.strVariaBlockName) &&
            rs.setValue(QStringLiteral("BlockID"), blockNr) && rs.Update();
  if (!ok) {
    if (rs.isEditing()) rs.CancelUpdate();
    subErrorAllgemein(false, QStringLiteral("subBlockdatenInDatenbankAbspeichernVariante"),
                      rs.lastError());
  }
  return ok;
}

}  // namespace kolvane

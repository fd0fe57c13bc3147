#include "bibliothek.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "diagnostics.h"
#include "labels.h"
#include "layout.h"
#include "msgbox.h"
#include "neuanlagejournal.h"
#include "verschiebejournal.h"
#include "paths.h"
#include "prefix.h"
#include "prompt.h"
#include "recordhelpers.h"
#include "schema.h"
#include "settings.h"

namespace kolvane {

namespace {

const QString kBlockInfo0Sql = QStringLiteral(
    "SELECT Nr, Block, OrdnerID,  SlideLib, BlkName0, M0, M1, M2, M3, M4, M5, M6, M7, M8, M9, "
    "AX1, AX2, AX3, AX4, LAYER, LYCOLOR, LYLINE FROM tblBlockInfo WHERE OrdnerID = ");
const QString kSeitenSql = QStringLiteral(
    "SELECT Nr, SeitenNr, SeitenName, NrTblOrdner From tblSeiten WHERE NrTblOrdner = ");
const QString kSeitenOrdnung = QStringLiteral(" ORDER BY SeitenName");
constexpr int kMaxBibliotheken = 6;

QString seitenSql(int32_t ordnerID) {
  return kSeitenSql + QString::number(ordnerID) + kSeitenOrdnung;
}

// A path as the list compares it: native, cleaned, without case.
QString vergleichsform(const QString& pfad) {
  return QDir::cleanPath(fctNativerPfad(pfad.trimmed()).replace(u'\\', u'/')).toLower();
}

}  // namespace

Bibliothek::Bibliothek(Settings& settings) : settings_(settings) {}

Bibliothek::~Bibliothek() { RecordsetsUndVerbindungSchliessen(); }

bool Bibliothek::gleicherPfad(const QString& a, const QString& b) const {
  return vergleichsform(a) == vergleichsform(b);
}

// --- opening ---------------------------------------------------------------------

bool Bibliothek::ConnectionUndRecordsetOeffnen() {
  Trace t(QStringLiteral("ConnectionUndRecordsetOeffnen"));
  const QString routine = QStringLiteral("ConnectionUndRecordsetOeffnen");
  bytBeenden = false;
  // A library is never opened with a bad suffix table: its codes would be wrong.
  t.step(QStringLiteral("Prefix pruefen"));
  if (!fctPrefixTabellePruefen()) return false;

  // 1./2. The file, or the user's decision about it.
  for (;;) {
    QString& pfad = settings_.strAktuelleDatenbank;
    if (pfad.isEmpty() && !settings_.aryVerzeichnisseDatenbank.isEmpty())
      pfad = settings_.aryVerzeichnisseDatenbank.first();
    t.step(QStringLiteral("Datenbank vorhanden? ") + pfad);
    const QString gefunden = fctDateiFinden(pfad);
    if (!pfad.isEmpty() && QFileInfo(gefunden).isFile()) {
      if (gefunden != pfad) subVerzeichnisAusArrayAendern(pfad, gefunden);
      pfad = gefunden;
      break;
    }
    switch (subDatenbankFehlt()) {
      case Fehlt::Weiter: continue;
      case Fehlt::Abbruch: return false;
    }
  }
  const QString pfad = settings_.strAktuelleDatenbank;
  RecordsetsUndVerbindungSchliessen();
  VerzeichnisOhneDb = fctBibliotheksVerzeichnis(pfad);

  // 3. The connection; a library that can't be written is opened read-only.
  booSchreibgeschuetzt = fctReadOnlyMitVerzeichnis(VerzeichnisOhneDb);
  if (booSchreibgeschuetzt)
    t.step(QStringLiteral("fctReadOnlyMitVerzeichnis(VerzeichnisDatenbank) = False:"));
  t.step(QStringLiteral("connDb:"));
  if (!connDb.open(pfad, booSchreibgeschuetzt ? Connection::Mode::ReadOnly
                                              : Connection::Mode::ReadWrite)) {
    t.step(QStringLiteral("connDb Error:") + connDb.error());
    subErrorAllgemein(false, routine, connDb.error());
    return false;
  }
  if (!connDb.tableExists(QStringLiteral("tblOrdner")) ||
      !connDb.tableExists(QStringLiteral("tblBlockInfo"))) {
    subErrorAllgemein(false, routine,
                      QStringLiteral("Die Datei %1 ist keine Kolvane-Datenbank.").arg(pfad));
    connDb.close();
    return false;
  }

  // A new block that a killed run left half-stored is finished or taken back
  // before anything reads the library.
  if (!booSchreibgeschuetzt) {
    switch (fctNeuanlageAufraeumen(connDb, VerzeichnisOhneDb)) {
      case Aufraeumen::Fertiggestellt: subMsgboxInfoZweizeilig(930, 931); break;
      case Aufraeumen::Zurueckgenommen: subMsgboxInfoZweizeilig(930, 932); break;
      default: break;
    }
    // The same for a block that a killed shift left between two slots.
    const VerschiebungAufgeraeumt v = fctVerschiebungAufraeumen(connDb, VerzeichnisOhneDb);
    if (!v.meldung.isEmpty()) subMsgboxInfoEinzeilig(v.meldung);
  }

  // 4. Folders.
  if (!fctRsEinlesenAllgemein(rsOrdner, connDb, QStringLiteral("tblOrdner"),
                              QStringLiteral("Ordnername")))
    t.step(QStringLiteral("fctRsEinlesenAllgemein(rsOrdner...) = false"));

  // 5. Sort order of older libraries: NrTblOrdnen from Nr.
  if (rsOrdner.isOpen() && !fctSpalteVorhanden(rsOrdner, QStringLiteral("NrTblOrdnen"))) {
    if (booSchreibgeschuetzt) {
      t.step(QStringLiteral("NrTblOrdnen fehlt, Bibliothek schreibgeschützt"));
    } else if (fctSpalteAnlegenFallsNichtVorhanden(connDb, rsOrdner, QStringLiteral("tblOrdner"),
                                                   QStringLiteral("NrTblOrdnen"),
                                                   QStringLiteral("SHORT"), QString())) {
      fctWerteVonSpalteUebertragen(connDb, QStringLiteral("tblOrdner"),
                                   QStringLiteral("NrTblOrdnen"), QStringLiteral("Nr"));
    }
  }
  if (!subRsOrdnerOeffnen() || rsOrdner.RecordCount() < 1) {
    subErrorAllgemein(false, routine,
                      QStringLiteral("Die Datenbank %1 hat keinen Ordner.").arg(pfad));
    RecordsetsUndVerbindungSchliessen();
    return false;
  }

  // 6. The current folder: the one of dbKolvane.ini, else the first.
  t.step(QStringLiteral("aktuellen Ordner suchen:"));
  const QString gemerkt = Settings::readPosition(VerzeichnisOhneDb).strAktuelleOrdnerNr;
  if (gemerkt.isEmpty() || !fctRsFind(rsOrdner, QStringLiteral("OrdnerNr"), gemerkt))
    rsOrdner.MoveFirst();
  strAktuelleOrdnerNr = rsOrdner.text(QStringLiteral("OrdnerNr"));
  strAktuellerOrdnerName = rsOrdner.text(QStringLiteral("Ordnername"));
  lngAktuelleOrdnerID = int32_t(rsOrdner.value(QStringLiteral("Nr")).toLongLong());

  // 7. Default names for views that have none.
  if (!booSchreibgeschuetzt) fctBlockNamenErgaenzen();

  // 8. The record sets of the folder, the card definitions, the marks.
  if (!subRsBlockInfo0Oeffnen(lngAktuelleOrdnerID)) {
    t.step(QStringLiteral("rsBlockInfo0.Open Error:") + rsBlockInfo0.lastError());
    RecordsetsUndVerbindungSchliessen();
    return false;
  }
  if (!rsDefMenue.Open(QStringLiteral("tblDefMenue"), connDb)) {
    t.step(QStringLiteral("rsDefMenue.Open error:") + rsDefMenue.lastError());
    subErrorAllgemein(false, routine, rsDefMenue.lastError());
    RecordsetsUndVerbindungSchliessen();
    return false;
  }
  if (!subRsSeitenOeffnen(lngAktuelleOrdnerID)) {
    RecordsetsUndVerbindungSchliessen();
    return false;
  }
  subRsTblMarkierteBloeckeOeffnen();

  // 9. The library directory; the main window shows library and pages.
  t.step(QStringLiteral("VerzeichnisOhneDb zuweisen"));
  t.step(QStringLiteral("comboxVerzeichnis.text:") + pfad);
  t.step(QStringLiteral("fctSEiteInCboEinlesen"));
  return true;
}

Bibliothek::Fehlt Bibliothek::subDatenbankFehlt() {
  Trace t(QStringLiteral("subDatenbankFehlt"));
  const QString pfad = settings_.strAktuelleDatenbank;
  const QString dir = fctPfadOhneDatei(pfad);
  // An old-format library in the directory: offer its import first.
  if (!dir.isEmpty() && fctDateiExist(fctPfadZusammenfuegen(dir, QStringLiteral("Bver2.dbf")))) {
    subMsgboxInfoZweizeilig2(kLabelAltesFormat1, kLabelAltesFormat2);
    if (fctMsgboxFrageZweizeilig2(kLabelAltesFormatFrage1, kLabelAltesFormatFrage2) &&
        hooks.datenbankImportieren && hooks.datenbankImportieren(dir) && fctDateiExist(pfad))
      return Fehlt::Weiter;
  }
  const Answer a = fctMsgboxFrageDreizeilig12(kLabelDbFehlt1, kLabelDbFehlt2, kLabelDbFehlt3);
  if (a == Answer::Yes) {
    // Search: the user picks the file.
    for (;;) {
      const QString neu = fctNativerPfad(
          prompt().openFile(labels().fctBeschriftMsgboxZuordnen(kLabelDbFehlt1), dir,
                            QStringLiteral("dbKolvane (dbKolvane.mdb);;*.mdb"), dbDateiName()));
      if (neu.isEmpty()) return Fehlt::Weiter;
      if (!fctDbVerzeichnisAufEinmaligkeitPruefen(neu)) {
        subMsgboxInfoZweizeilig(kLabelDbSchonInListe1, kLabelDbSchonInListe2);
        return Fehlt::Weiter;
      }
      if (!fctTestDb(neu)) {
        if (fctMsgboxFrageZweizeilig(kLabelDbUngueltig1, kLabelDbUngueltig2)) continue;
        return Fehlt::Weiter;
      }
      subVerzeichnisAusArrayAendern(pfad, neu);
      settings_.strAktuelleDatenbank = neu;
      return Fehlt::Weiter;
    }
  }
  if (a == Answer::No) {
    // New: an empty library where the old one was.
    t.step(QStringLiteral("fctMkDirAlle"));
    fctMkDirAlle(dir);
    if (!Mk_Datenbank(pfad)) return Fehlt::Abbruch;
    fctMkDirAlle(fctPfadZusammenfuegen(dir, QStringLiteral("000")));
    return Fehlt::Weiter;
  }
  // Cancel: the entry leaves the list.
  subVerzeichnisAusArrayAendern(pfad, QString());
  subComboVerzeichnisseNeuEinlesen();
  if (!settings_.aryVerzeichnisseDatenbank.isEmpty()) {
    settings_.strAktuelleDatenbank = settings_.aryVerzeichnisseDatenbank.first();
    return Fehlt::Weiter;
  }
  settings_.strAktuelleDatenbank.clear();
  if (fctMsgboxFrageEinzeilig(kLabelKeineDbMehr) && hooks.cmbDatenbankNeu &&
      hooks.cmbDatenbankNeu() && !settings_.strAktuelleDatenbank.isEmpty())
    return Fehlt::Weiter;
  bytBeenden = true;
  return Fehlt::Abbruch;
}

bool Bibliothek::fctBlockNamenErgaenzen() {
  Trace t(QStringLiteral("fctBlockNamenErgaenzen"));
  // Only rows with a missing name of an existing view come back, so a large
  // library costs one scan at each opening.
  QStringList fehlt{QStringLiteral("IFNULL(BLKNAME0, '') = ''")};
  for (int v = 1; v <= 4; ++v)
    fehlt << QStringLiteral("(IFNULL(BLKNAME%1, '') = '' AND ").arg(v) + fctAnsichtVorhandenSql(v) +
                 QLatin1Char(')');
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT DISTINCT Nr, BLKNAME0, BLKNAME1, BLKNAME2, BLKNAME3, "
                              "BLKNAME4 FROM tblBlockInfo WHERE ") +
                   fehlt.join(QStringLiteral(" OR ")),
               connDb)) {
    subErrorAllgemein(false, QStringLiteral("ConnectionUndRecordsetOeffnen"), rs.lastError());
    return false;
  }
  if (rs.RecordCount() < 1) return true;
  std::vector<int> positionen;
  for (int i = 1; i <= rs.RecordCount(); ++i) positionen.push_back(i);
  if (hooks.arbeitsfensterZeigen)
    hooks.arbeitsfensterZeigen(QStringLiteral("Kolvane korrigiert die Datenbank"),
                               QStringLiteral("Dieser Vorgang kann einige Zeit dauern."));
  bool ok = connDb.begin();
  Recordset zeile;
  for (int position : positionen) {
    if (!ok) break;
    rs.setAbsolutePosition(position);
    const QString nr = rs.text(QStringLiteral("Nr"));
    if (!zeile.Open(QStringLiteral("SELECT Nr, Block, AX1, AX2, AX3, AX4 FROM tblBlockInfo WHERE "
                                   "Nr = ") + nr,
                    connDb) ||
        zeile.RecordCount() < 1)
      continue;
    const QString block = zeile.text(QStringLiteral("Block"));
    for (int v = 0; v <= 4 && ok; ++v) {
      const QString spalte = QStringLiteral("BLKNAME%1").arg(v);
      if (!rs.text(spalte).isEmpty()) continue;
      if (!byteAnsichtVorhanden(zeile, v)) continue;
      const QString name = QStringLiteral("0000") + block + (v > 0 ? QString::number(v) : QString());
      if (!rs.Update(spalte, name)) {
        subErrorAllgemein(false, QStringLiteral("ConnectionUndRecordsetOeffnen"),
                          QStringLiteral("Der Standard-BlockName konnte nicht eingetragen werden"));
        ok = false;
      }
    }
  }
  if (ok)
    ok = connDb.commit();
  else
    connDb.rollback();
  if (hooks.arbeitsfensterSchliessen) hooks.arbeitsfensterSchliessen();
  return ok;
}

void Bibliothek::RecordsetsUndVerbindungSchliessen() {
  rsBlockInfo0.Close();
  rsVariaBloecke.Close();
  rsOrdner.Close();
  rsSeiten.Close();
  rsMarkierteBloecke.Close();
  rsDefMenue.Close();
  bytRsMarkierteBloeckeOkGleich1 = 0;
  connDb.close();
}

bool Bibliothek::subRsOrdnerOeffnen() {
  const bool nachName = settings_.setup.lonOrdnerSortieren == 1 ||
                        (rsOrdner.isOpen() && !rsOrdner.hasField(QStringLiteral("NrTblOrdnen")) &&
                         !connDb.columnExists(QStringLiteral("tblOrdner"),
                                              QStringLiteral("NrTblOrdnen")));
  fctRsEinlesenAllgemein(rsOrdner, connDb, QStringLiteral("tblOrdner"),
                         nachName ? QStringLiteral("Ordnername") : QStringLiteral("NrTblOrdnen"));
  return rsOrdner.isOpen();
}

bool Bibliothek::subRsBlockInfo0Oeffnen(int32_t ordnerID) {
  Trace t(QStringLiteral("subRsBlockInfo0Oeffnen"));
  rsBlockInfo0.Close();
  if (rsBlockInfo0.Open(kBlockInfo0Sql + QString::number(ordnerID), connDb)) return true;
  t.step(QStringLiteral("rsBlockInfo0.Open Error:") + rsBlockInfo0.lastError());
  subErrorAllgemein(false, QStringLiteral("subRsBlockInfo0Oeffnen"), rsBlockInfo0.lastError());
  return false;
}

bool Bibliothek::subRsSeitenOeffnen(int32_t ordnerID) {
  rsSeiten.Close();
  if (rsSeiten.Open(seitenSql(ordnerID), connDb)) return true;
  subErrorAllgemein(false, QStringLiteral("subRsSeitenOeffnen"), rsSeiten.lastError());
  return false;
}

bool Bibliothek::subRsTblMarkierteBloeckeOeffnen() {
  Trace t(QStringLiteral("subRsTblMarkierteBloeckeOeffnen"));
  bytRsMarkierteBloeckeOkGleich1 = 0;
  rsMarkierteBloecke.Close();
  const QString tabelle = QStringLiteral("tblMarkierteBloecke");
  if (!connDb.tableExists(tabelle)) {
    if (booSchreibgeschuetzt) {
      t.step(QStringLiteral("Tabelle fehlt, Bibliothek schreibgeschützt"));
      return false;
    }
    if (!subMk_TblMarkierteBloecke(connDb)) return false;
  } else if (!booSchreibgeschuetzt) {
    // The narrow table of a new library gets its layer columns, rows kept.
    for (const SchemaSpalte& s : markierteBloeckeLayerSpalten()) {
      if (connDb.columnExists(tabelle, s.name)) continue;
      if (!connDb.execute(QStringLiteral("ALTER TABLE ") + tabelle + " ADD COLUMN " + s.name +
                          QStringLiteral(" TEXT (%1)").arg(s.breite))) {
        subErrorAllgemein(false, QStringLiteral("subRsTblMarkierteBloeckeOeffnen"), connDb.error());
        return false;
      }
    }
  }
  if (!rsMarkierteBloecke.Open(tabelle, connDb)) {
    subErrorAllgemein(false, QStringLiteral("subRsTblMarkierteBloeckeOeffnen"),
                      rsMarkierteBloecke.lastError());
    return false;
  }
  bytRsMarkierteBloeckeOkGleich1 = 1;
  return true;
}

bool Bibliothek::fctRsVariaBloeckeEinlesen(int32_t blockNr) {
  rsVariaBloecke.Close();
  return fctRsEinlesenMitKriterium(
      rsVariaBloecke, connDb,
      QStringLiteral("SELECT * FROM tblVariationBloecke WHERE BlockID = ") + QString::number(blockNr));
}

bool Bibliothek::fctOrdnerWechseln(const QString& ordnerNr) {
  Trace t(QStringLiteral("fctOrdnerWechseln"));
  if (!fctRsFind(rsOrdner, QStringLiteral("OrdnerNr"), ordnerNr)) return false;
  strAktuelleOrdnerNr = rsOrdner.text(QStringLiteral("OrdnerNr"));
  strAktuellerOrdnerName = rsOrdner.text(QStringLiteral("Ordnername"));
  lngAktuelleOrdnerID = int32_t(rsOrdner.value(QStringLiteral("Nr")).toLongLong());
  return subRsBlockInfo0Oeffnen(lngAktuelleOrdnerID) && subRsSeitenOeffnen(lngAktuelleOrdnerID);
}

// --- tests of a library -------------------------------------------------------------

bool Bibliothek::fctTestDb(const QString& pfad, QString* grund) {
  Trace t(QStringLiteral("fctTestDb"));
  auto nein = [&](const QString& warum) {
    t.step(warum);
    if (grund) *grund = warum;
    return false;
  };
  const QString datei = fctDateiFinden(pfad);
  const QString problem = libraryFileProblem(datei);
  if (!problem.isEmpty()) return nein(problem);
  Connection c;
  if (!c.open(datei, Connection::Mode::ReadOnly)) return nein(c.error());
  Recordset rs;
  if (!rs.Open(QStringLiteral("tblOrdner"), c))
    return nein(QStringLiteral("tblOrdner: ") + rs.lastError());
  if (rs.RecordCount() < 1) return nein(QStringLiteral("tblOrdner hat keinen Ordner."));
  const QString ordnerNr = rs.text(QStringLiteral("OrdnerNr"));
  if (!rs.Open(QStringLiteral("SELECT * FROM tblOrdner WHERE OrdnerNr Like '") + ordnerNr + u'\'', c) ||
      rs.RecordCount() < 1)
    return nein(QStringLiteral("Ordner ") + ordnerNr + QStringLiteral(": ") + rs.lastError());
  const QString id = rs.text(QStringLiteral("Nr"));
  if (!rs.Open(kBlockInfo0Sql + id, c)) return nein(QStringLiteral("tblBlockInfo: ") + rs.lastError());
  if (!rs.Open(QStringLiteral("tblDefMenue"), c))
    return nein(QStringLiteral("tblDefMenue: ") + rs.lastError());
  if (!rs.Open(kSeitenSql + id + kSeitenOrdnung, c))
    return nein(QStringLiteral("tblSeiten: ") + rs.lastError());
  return true;
}

bool Bibliothek::fctDbPruefen() {
  Trace t(QStringLiteral("fctDbPruefen"));
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT SlideLib From tblBlockInfo"), connDb)) {
    subErrorAllgemein(false, QStringLiteral("fctDbPruefen"), rs.lastError());
    return false;
  }
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext()) {
    const QString slide = fctSlideLibPfad(VerzeichnisOhneDb, rs.text(QStringLiteral("SlideLib")));
    if (!fctDateiExist(slide)) {
      t.step(QStringLiteral("fehlt: ") + slide);
      return false;
    }
    QString laufwerk, dir, name, endung;
    fctPfadAufteilen(slide, laufwerk, dir, name, endung);
    const QString dwg = fctPfadZusammenfuegen(laufwerk + dir,
                                              QStringLiteral("Block/") + name + QStringLiteral("0.dwg"));
    if (!fctDateiExist(dwg)) {
      t.step(QStringLiteral("fehlt: ") + dwg);
      return false;
    }
  }
  return true;
}

uint8_t Bibliothek::fctNachBestehenderDbSuchen1Neu2Alt0Keine(const QString& verzeichnis) {
  Trace t(QStringLiteral("fctNachBestehenderDbSuchen1Neu2Alt0Keine"));
  const QStringList namen = fctSearchFilesAry(verzeichnis, QStringLiteral(".mdb"), false);
  // The names pass through the list file, as they always did.
  fctMkDirAlle(settings_.sCTemp);
  const QString liste = fctPfadZusammenfuegen(settings_.sCTemp, QStringLiteral("txtDbNamen.txt"));
  WriteIntorTxtFile(liste, namen.isEmpty() ? QString() : namen.join(u'\n') + u'\n', false);
  QStringList gelesen;
  {
    QFile f(liste);
    if (f.open(QIODevice::ReadOnly))
      gelesen = QString::fromUtf8(f.readAll()).split(u'\n', Qt::SkipEmptyParts);
  }
  DeleteAFile(liste);
  for (const QString& name : gelesen) {
    const QString pfad = fctPfadZusammenfuegen(verzeichnis, name);
    if (fctTestDb(pfad)) {
      settings_.strAktuelleDatenbank = pfad;
      return 1;
    }
  }
  if (fctDateiExist(fctPfadZusammenfuegen(verzeichnis, QStringLiteral("Bver2.dbf")))) return 2;
  return 0;
}

// --- the list of libraries ----------------------------------------------------------------

bool Bibliothek::fctDbVerzeichnisAufEinmaligkeitPruefen(const QString& pfad) const {
  for (const QString& p : settings_.aryVerzeichnisseDatenbank)
    if (gleicherPfad(p, pfad)) return false;
  return true;
}

bool Bibliothek::NeueDatenbankErstellen(const QString& pfadEingabe) {
  Trace t(QStringLiteral("NeueDatenbankErstellen"));
  const QString pfad = fctNativerPfad(pfadEingabe);
  if (QFileInfo::exists(fctDateiFinden(pfad))) {
    subErrorAllgemein(false, QStringLiteral("NeueDatenbankErstellen"),
                      QStringLiteral("Die Datei %1 ist schon vorhanden; eine neue Datenbank wird "
                                     "nicht darüber angelegt.")
                          .arg(pfad));
    return false;
  }
  const QString dir = fctPfadOhneDatei(pfad);
  fctMkDirAlle(dir);
  t.step(QStringLiteral("Mk_Datenbank"));
  if (!Mk_Datenbank(pfad)) return false;
  fctMkDirAlle(fctPfadZusammenfuegen(dir, QStringLiteral("000")));
  t.step(QStringLiteral("aryVerzeichnisseDatenbank erweitern"));
  if (fctDbVerzeichnisAufEinmaligkeitPruefen(pfad)) settings_.aryVerzeichnisseDatenbank << pfad;
  fctDbsInAryNeuSortieren(pfad);
  settings_.strAktuelleDatenbank = pfad;
  t.step(QStringLiteral("Eintrag1"));
  settings_.fctKeyKolvaneExist();
  settings_.store().fctRegSchreiben(settings_.strRegistryPfad, QStringLiteral("Eintrag1"), pfad);
  RecordsetsUndVerbindungSchliessen();
  if (hooks.lisBlockBenennungLeeren) hooks.lisBlockBenennungLeeren();
  t.step(QStringLiteral("Imput_Prefix"));
  if (!ConnectionUndRecordsetOeffnen()) return false;
  t.step(QStringLiteral("Ordner aktualisieren"));
  if (hooks.ordnerAktualisieren) hooks.ordnerAktualisieren();
  t.step(QStringLiteral("Verzeichnis in Combo hinzufügen"));
  return true;
}

bool Bibliothek::NeueDatenbankEinfuegen(const QString& pfadEingabe) {
  Trace t(QStringLiteral("NeueDatenbankEinfuegen"));
  const QString pfad = fctDateiFinden(pfadEingabe);
  t.step(QStringLiteral("Prüfen, ob die Datenbank schon vorhanden ist"));
  if (!fctDbVerzeichnisAufEinmaligkeitPruefen(pfad)) {
    subMsgboxInfoEinzeilig(kLabelDbSchonInListe1);
    return false;
  }
  // Tested before the open library is closed: a failure changes nothing.
  QString grund;
  if (!fctTestDb(pfad, &grund)) {
    t.step(grund);
    subMsgboxInfoZweizeilig(kLabelEinfuegenFehler1, kLabelEinfuegenFehler2);
    subMsgboxHinweisZweizeilig(kLabelEinfuegenHinweis1, kLabelEinfuegenHinweis2);
    return false;
  }
  const QString alt = settings_.strAktuelleDatenbank;
  const QString alterOrdner = strAktuelleOrdnerNr;
  t.step(QStringLiteral("Recorssets und Verbindung zur Db schließen"));
  RecordsetsUndVerbindungSchliessen();
  if (hooks.lisBlockBenennungLeeren) hooks.lisBlockBenennungLeeren();
  settings_.strAktuelleDatenbank = pfad;
  if (!ConnectionUndRecordsetOeffnen()) {
    subMsgboxInfoZweizeilig(kLabelEinfuegenFehler1, kLabelEinfuegenFehler2);
    subMsgboxHinweisZweizeilig(kLabelEinfuegenHinweis1, kLabelEinfuegenHinweis2);
    // The library that was open comes back on the folder it stood on, and the
    // window, whose list was emptied, shows it again.
    settings_.strAktuelleDatenbank = alt;
    if (!alt.isEmpty() && ConnectionUndRecordsetOeffnen()) {
      if (!alterOrdner.isEmpty() && alterOrdner != strAktuelleOrdnerNr) fctOrdnerWechseln(alterOrdner);
      if (hooks.ordnerAktualisieren) hooks.ordnerAktualisieren();
    }
    return false;
  }
  t.step(QStringLiteral("aryVerzeichnisseDatenbank erweitern"));
  settings_.aryVerzeichnisseDatenbank << pfad;
  fctDbsInAryNeuSortieren(pfad);
  if (hooks.ordnerAktualisieren) hooks.ordnerAktualisieren();
  return true;
}

ComboVerzeichnisse Bibliothek::subComboVerzeichnisseNeuEinlesen() const {
  ComboVerzeichnisse c;
  c.eintraege = settings_.aryVerzeichnisseDatenbank;
  for (int i = 0; i < c.eintraege.size(); ++i)
    if (gleicherPfad(c.eintraege[i], settings_.strAktuelleDatenbank)) {
      c.auswahl = i;
      break;
    }
  return c;
}

void Bibliothek::subVerzeichnisAusArrayAendern(const QString& alt, const QString& neu) {
  QStringList& ary = settings_.aryVerzeichnisseDatenbank;
  for (int i = 0; i < ary.size(); ++i) {
    if (!gleicherPfad(ary[i], alt)) continue;
    if (neu.isEmpty())
      ary.removeAt(i);
    else
      ary[i] = neu;
    break;
  }
  if (gleicherPfad(settings_.strAktuelleDatenbank, alt)) settings_.strAktuelleDatenbank = neu;
}

QList<MenueEintrag> Bibliothek::fctDbsInMenueDateiEintragen(const QString& pfad) const {
  QList<MenueEintrag> menue;
  if (!pfad.isEmpty()) menue << MenueEintrag{pfad, fctPfadAuf34ZeichenKuerzen(pfad)};
  for (const QString& p : settings_.aryVerzeichnisseDatenbank) {
    if (menue.size() >= kMaxBibliotheken) break;
    if (gleicherPfad(p, pfad)) continue;
    menue << MenueEintrag{p, fctPfadAuf34ZeichenKuerzen(p)};
  }
  return menue;
}

void Bibliothek::fctDbsInAryNeuSortieren(const QString& pfad) {
  QStringList neu;
  if (!pfad.isEmpty()) neu << pfad;
  for (const QString& p : settings_.aryVerzeichnisseDatenbank)
    if (!gleicherPfad(p, pfad)) neu << p;
  while (neu.size() > kMaxBibliotheken) neu.removeLast();
  settings_.aryVerzeichnisseDatenbank = neu;
}

// --- path entries ------------------------------------------------------------------------

bool Bibliothek::fctSlideLibPfadeRelativ() {
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT tblBlockInfo.SlideLib, tblOrdner.OrdnerNr FROM tblBlockInfo "
                              "INNER JOIN tblOrdner ON tblBlockInfo.OrdnerID = tblOrdner.Nr "
                              "ORDER BY tblBlockInfo.Nr LIMIT 1"),
               connDb) ||
      rs.RecordCount() < 1)
    return true;
  const QString slideLib = rs.text(QStringLiteral("SlideLib"));
  return slideLib.left(4) == rs.text(QStringLiteral("OrdnerNr")) + u'\\';
}

bool Bibliothek::fctPfadEintragAendern() {
  Trace t(QStringLiteral("fctPfadEintragAendern"));
  const QString routine = QStringLiteral("fctPfadEintragAendern");
  if (booSchreibgeschuetzt || !connDb.isOpen()) return false;
  if (hooks.arbeitsfensterZeigen)
    hooks.arbeitsfensterZeigen(QStringLiteral("DatenbankEinträge müssen geändert werden."),
                               QStringLiteral("Die Bearbeitung kann einige Zeit dauern!"));
  Recordset rs;
  bool ok = rs.Open(QStringLiteral("SELECT Nr, Block, OrdnerID, SlideLib FROM tblBlockInfo"), connDb);
  if (!ok) subErrorAllgemein(false, routine, rs.lastError());
  const int position = rsOrdner.AbsolutePosition();
  if (ok) ok = connDb.begin();
  for (rs.MoveFirst(); ok && !rs.isEOF(); rs.MoveNext()) {
    rsOrdner.MoveFirst();
    if (!rsOrdner.Find(QStringLiteral("Nr = ") + rs.text(QStringLiteral("OrdnerID")))) continue;
    const QString ordnerNr = rsOrdner.text(QStringLiteral("OrdnerNr"));
    const QString alt = rs.text(QStringLiteral("SlideLib"));
    QString neu = fctGespeicherterPfad(alt);
    if (neu.left(4) != ordnerNr + u'\\') neu = ordnerNr + u'\\' + neu.section(u'\\', -1);
    if (neu != alt && !rs.Update(QStringLiteral("SlideLib"), neu)) ok = false;
  }
  if (ok)
    ok = connDb.commit();
  else
    connDb.rollback();
  if (position > 0) rsOrdner.setAbsolutePosition(position);
  if (hooks.arbeitsfensterSchliessen) hooks.arbeitsfensterSchliessen();
  return ok;
}

// --- commands --------------------------------------------------------------------------------

const QStringList& Bibliothek::befehleBeiSchreibschutz() {
  // Each also stands for its button of Toolbar1.
  static const QStringList b = {"combutNeu",          "combutL_schen",        "mnuBBlockNeu",
                                "mnuBBlockLoeschen",  "mnuZSeiteAusschneiden", "mnuZSeiteEinfuegen",
                                "mnuZKopieren",       "mnuFEinfuegen"};
  return b;
}

QStringList Bibliothek::fctSperrenCmdBeiSchreibschutz() const {
  return booSchreibgeschuetzt ? befehleBeiSchreibschutz() : QStringList();
}

const QStringList& Bibliothek::befehlsflaeche() {
  static const QStringList b = {"mnuDatei",   "mnuBearbeiten",       "mnuExtras",  "fraOptionen",
                                "combutNeu",  "combutVor",           "combutZurueck",
                                "cmbEinfuegen", "combutZurueckAnfang", "combutEnde",
                                "combutL_schen", "combutBild",       "combutAbbrechen"};
  return b;
}

QStringList Bibliothek::subCmdSperrenEntsperren(uint8_t bytSperren) {
  Trace t(QStringLiteral("subCmdSperrenEntsperren"));
  t.step(bytSperren == 1 ? QStringLiteral("Sperren") : QStringLiteral("Entsperren"));
  return befehlsflaeche();
}

}  // namespace kolvane

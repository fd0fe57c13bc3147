#include "ordner.h"

#include <QDir>
#include <QFileInfo>

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "diagnostics.h"
#include "labels.h"
#include "layout.h"
#include "msgbox.h"
#include "prefix.h"
#include "prompt.h"
#include "recordhelpers.h"
#include "settings.h"
#include "textcompare.h"

namespace kolvane {

namespace {

const QString kOrdnerNeu = QStringLiteral("frmOrdnerNeu");
const QString kOrdnerUmbenennen = QStringLiteral("frmOrdnerUmbenennen");

// Width of tblOrdner.Ordnername when the record set can't tell.
constexpr int kNameBreite = 100;

QString msg(int nr) { return labels().fctBeschriftMsgboxZuordnen(nr); }

int namensBreite(Bibliothek& lib) {
  const int w = lib.rsOrdner.isOpen() ? lib.rsOrdner.fieldWidth(QStringLiteral("Ordnername")) : -1;
  return w > 0 ? w : kNameBreite;
}

QString ordnerVerzeichnis(const Bibliothek& lib, const QString& ordnerNr) {
  return QDir::cleanPath(lib.VerzeichnisOhneDb + ordnerNr);
}

// A row of tblOrdner whose name equals name without regard to case, other
// than the row eigeneNr; 0 when there is none.
int32_t ordnerMitNamen(Bibliothek& lib, const QString& name, int32_t eigeneNr) {
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT Nr, Ordnername FROM tblOrdner"), lib.connDb)) return 0;
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext()) {
    const int32_t nr = int32_t(rs.value(QStringLiteral("Nr")).toLongLong());
    if (nr != eigeneNr && equalNoCase(fctNameBereinigen(rs.text(QStringLiteral("Ordnername"))), name))
      return nr;
  }
  return 0;
}

}  // namespace

QString fctNameBereinigen(const QString& name) { return name.trimmed(); }

bool fctOrdnerNamePruefen(Bibliothek& lib, const QString& eingabe, int32_t eigeneNr) {
  const QString name = fctNameBereinigen(eingabe);
  if (name.isEmpty()) {
    subMsgboxInfoEinzeilig(kMsgOrdnerNameLeer);
    return false;
  }
  // Names stand in the library's filters unescaped.
  if (name.contains(u'\'')) {
    subMsgboxInfoEinzeilig(kMsgHochkomma);
    return false;
  }
  if (name.size() > namensBreite(lib)) {
    subMsgboxInfoEinzeilig(kMsgNameZuLang);
    return false;
  }
  if (ordnerMitNamen(lib, name, eigeneNr) != 0) {
    subMsgboxInfoEinzeilig(msg(kMsgOrdnerNameVorhanden1) + u'\r' + name + u'\r' +
                           msg(kMsgOrdnerNameVorhanden2));
    return false;
  }
  return true;
}

QString fctFreieOrdnerNr(Bibliothek& lib) {
  Trace t(QStringLiteral("fctFreieOrdnerNr"));
  const int32_t hoechste = fctLetzterWertInSpalte(lib.connDb, QStringLiteral("tblOrdner"), QStringLiteral("Nr"));
  QStringList prefix;
  // Folder numbers are three characters: the first pass of the table only.
  if (!fctPrefixEinlesen(kSlotsJeDurchlauf, prefix)) return {};
  QStringList belegt;
  Recordset rs;
  if (rs.Open(QStringLiteral("SELECT OrdnerNr FROM tblOrdner"), lib.connDb))
    for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext()) belegt << rs.text(QStringLiteral("OrdnerNr")).trimmed();
  for (int32_t i = qMax<int32_t>(0, hoechste); i < prefix.size(); ++i) {
    const QString kandidat = prefix[i];
    bool frei = true;
    for (const QString& b : belegt)
      if (equalNoCase(b, kandidat)) {
        frei = false;
        break;
      }
    // A directory of that name holds files of an earlier folder (set aside
    // after a crash, or left by a folder without blocks): it is not reused.
    if (frei && !fctFolderExist(ordnerVerzeichnis(lib, kandidat))) return kandidat;
  }
  subErrorAllgemein(false, QStringLiteral("fctFreieOrdnerNr"),
                    QStringLiteral("Die Tabelle der Ordnernummern hat keine freie Nummer mehr."));
  return {};
}

QString fctGeloeschtZiel(const QString& verzeichnis) {
  const QString basis = QDir::cleanPath(verzeichnis) + QStringLiteral("geloescht");
  if (!QFileInfo::exists(basis)) return basis;
  for (int i = 1;; ++i) {
    const QString z = basis + QString::number(i);
    if (!QFileInfo::exists(z)) return z;
  }
}

bool fctOrdnerNeuAnlegen(Bibliothek& lib, const QString& ordnerName, int32_t* nr, QString* ordnerNr,
                         bool* angelegt) {
  Trace t(QStringLiteral("fctOrdnerNeuAnlegen"));
  const QString routine = QStringLiteral("fctOrdnerNeuAnlegen");
  if (angelegt) *angelegt = false;
  const QString name = fctNameBereinigen(ordnerName);
  if (!lib.connDb.isOpen() || lib.booSchreibgeschuetzt || name.isEmpty() || name.contains(u'\'') ||
      name.size() > namensBreite(lib)) {
    subErrorAllgemein(true, routine, QStringLiteral("Der Ordner \"%1\" kann nicht angelegt werden.").arg(name));
    return false;
  }
  // A folder of that name is used as it stands.
  if (const int32_t vorhanden = ordnerMitNamen(lib, name, 0)) {
    if (nr) *nr = vorhanden;
    if (ordnerNr)
      *ordnerNr = fctWertInSpalteAuslesen(lib.connDb, QStringLiteral("tblOrdner"), QStringLiteral("OrdnerNr"),
                                          QStringLiteral("Nr"), QString::number(vorhanden));
    return true;
  }
  // Older libraries lack the sort column.
  if (!lib.connDb.columnExists(QStringLiteral("tblOrdner"), QStringLiteral("NrTblOrdnen")) &&
      !lib.connDb.execute(QStringLiteral("ALTER TABLE tblOrdner ADD COLUMN NrTblOrdnen SHORT"))) {
    subErrorAllgemein(false, routine, lib.connDb.error());
    return false;
  }
  const QString neueNr = fctFreieOrdnerNr(lib);
  if (neueNr.isEmpty()) return false;
  t.step(QStringLiteral("Zeile ") + neueNr);
  Connection& c = lib.connDb;
  int64_t neu = 0;
  bool ok = c.begin() &&
            c.execute(QStringLiteral("INSERT INTO tblOrdner (OrdnerNr, Ordnername, NrTblDefMenue) VALUES (?, ?, 1)"),
                      {neueNr, name});
  if (ok) {
    neu = c.lastInsertId();
    ok = c.execute(QStringLiteral("UPDATE tblOrdner SET NrTblOrdnen = Nr WHERE Nr = ?"), {qint64(neu)}) &&
         c.commit();
  }
  if (!ok) {
    const QString fehler = c.error();
    c.rollback();
    subErrorAllgemein(false, routine, fehler);
    return false;
  }
  t.step(QStringLiteral("Verzeichnis ") + neueNr);
  const QString dir = ordnerVerzeichnis(lib, neueNr);
  if (!QDir().mkpath(dir)) {
    // Without its directory the folder could take no block: the row goes.
    if (!c.execute(QStringLiteral("DELETE FROM tblOrdner WHERE Nr = ?"), {qint64(neu)}))
      subErrorAllgemein(true, routine, c.error());
    subMsgboxInfoEinzeilig(msg(kMsgOrdnerVerzeichnis1) + u'\r' + QDir::toNativeSeparators(dir) + u'\r' +
                           msg(kMsgOrdnerVerzeichnis2));
    return false;
  }
  if (nr) *nr = int32_t(neu);
  if (ordnerNr) *ordnerNr = neueNr;
  if (angelegt) *angelegt = true;
  return true;
}

void fctBrowserOrdnerAuffrischen(Blockverwaltung& bv) {
  Bibliothek& lib = bv.bibliothek();
  lib.subRsOrdnerOeffnen();
  bv.OrdnerInArrayEinlesen();
  bv.Anzeigen();
}

// ------------------------------------------------------------ frmOrdnerNeu

bool OrdnerNeu::cmbOk_Click() {
  Trace t(QStringLiteral("frmOrdnerNeu.cmbOk_Click"));
  Bibliothek& lib = bv_.bibliothek();
  if (lib.booSchreibgeschuetzt) return false;
  if (!fctOrdnerNamePruefen(lib, txtOrdnername, 0)) return false;
  bool angelegt = false;
  if (!fctOrdnerNeuAnlegen(lib, txtOrdnername, nullptr, &ordnerNr_, &angelegt) || !angelegt) return false;
  fctBrowserOrdnerAuffrischen(bv_);
  fertig_ = true;
  return true;
}

// ------------------------------------------------------ frmOrdnerUmbenennen

bool OrdnerUmbenennen::cmbOk_Click() {
  Trace t(QStringLiteral("frmOrdnerUmbenennen.cmbOk_Click"));
  Bibliothek& lib = bv_.bibliothek();
  if (lib.booSchreibgeschuetzt) return false;
  if (!fctOrdnerNamePruefen(lib, txtOrdnername, nr_)) return false;
  const QString name = fctNameBereinigen(txtOrdnername);
  if (!lib.connDb.execute(QStringLiteral("UPDATE tblOrdner SET Ordnername = ? WHERE Nr = ?"), {name, nr_})) {
    subErrorAllgemein(false, QStringLiteral("frmOrdnerUmbenennen.cmbOk_Click"), lib.connDb.error());
    return false;
  }
  if (nr_ == lib.lngAktuelleOrdnerID) lib.strAktuellerOrdnerName = name;
  fctBrowserOrdnerAuffrischen(bv_);
  fertig_ = true;
  return true;
}

// ------------------------------------------------------ frmOrdnerverwaltung

OrdnerVerwaltung::OrdnerVerwaltung(Blockverwaltung& bv) : bv_(bv) { Anzeigen(); }

bool OrdnerVerwaltung::schreibgeschuetzt() const { return bv_.bibliothek().booSchreibgeschuetzt; }

bool OrdnerVerwaltung::nachNameSortiert() const {
  Bibliothek& lib = bv_.bibliothek();
  return lib.settings().setup.lonOrdnerSortieren == 1 ||
         !lib.connDb.columnExists(QStringLiteral("tblOrdner"), QStringLiteral("NrTblOrdnen"));
}

QStringList OrdnerVerwaltung::eintraege() const {
  QStringList out;
  for (const Eintrag& e : dlisOrdner) out << e.name;
  return out;
}

void OrdnerVerwaltung::auswahlAufNr(int32_t nr) {
  auswahl = -1;
  for (size_t i = 0; i < dlisOrdner.size(); ++i)
    if (dlisOrdner[i].nr == nr) auswahl = int(i);
}

void OrdnerVerwaltung::Anzeigen() {
  const int32_t vorher = auswahl >= 0 && auswahl < int(dlisOrdner.size()) ? dlisOrdner[size_t(auswahl)].nr
                                                                          : bv_.bibliothek().lngAktuelleOrdnerID;
  dlisOrdner.clear();
  Recordset& ro = bv_.bibliothek().rsOrdner;
  if (ro.isOpen() && ro.RecordCount() > 0) {
    const int stand = ro.AbsolutePosition();
    for (ro.MoveFirst(); !ro.isEOF(); ro.MoveNext())
      dlisOrdner.push_back({int32_t(ro.value(QStringLiteral("Nr")).toLongLong()),
                            ro.text(QStringLiteral("OrdnerNr")), ro.text(QStringLiteral("Ordnername"))});
    if (stand > 0) ro.setAbsolutePosition(stand);
  }
  auswahlAufNr(vorher);
  if (auswahl < 0 && !dlisOrdner.empty()) auswahl = 0;
}

bool OrdnerVerwaltung::cmbNeu_Click() {
  if (schreibgeschuetzt()) return false;
  neu_ = std::make_unique<OrdnerNeu>(bv_);
  OrdnerNeu* logik = neu_.get();
  const int r = prompt().dialog(kOrdnerNeu, [this, logik] {
    return hooks.frmOrdnerNeu ? hooks.frmOrdnerNeu(*logik) : 0;
  });
  // Confirmed without the form's own button (a scripted run): the same OK.
  if (r == 1 && !logik->fertig()) logik->cmbOk_Click();
  const bool ok = logik->fertig();
  QString ordnerNr = logik->neueOrdnerNr();
  neu_.reset();
  Anzeigen();
  if (ok)
    for (size_t i = 0; i < dlisOrdner.size(); ++i)
      if (dlisOrdner[i].ordnerNr == ordnerNr) auswahl = int(i);
  return ok;
}

bool OrdnerVerwaltung::cmbUmbenennen_Click() {
  if (schreibgeschuetzt()) return false;
  if (auswahl < 0 || auswahl >= int(dlisOrdner.size())) {
    subMsgboxInfoEinzeilig(kMsgKeinEintrag);
    return false;
  }
  const Eintrag e = dlisOrdner[size_t(auswahl)];
  umbenennen_ = std::make_unique<OrdnerUmbenennen>(bv_, e.nr, e.name);
  OrdnerUmbenennen* logik = umbenennen_.get();
  const int r = prompt().dialog(kOrdnerUmbenennen, [this, logik] {
    return hooks.frmOrdnerUmbenennen ? hooks.frmOrdnerUmbenennen(*logik) : 0;
  });
  if (r == 1 && !logik->fertig()) logik->cmbOk_Click();
  const bool ok = umbenennen_->fertig();
  umbenennen_.reset();
  Anzeigen();
  return ok;
}

bool OrdnerVerwaltung::cmbLoeschen_Click() {
  Trace t(QStringLiteral("frmOrdnerverwaltung.cmbLoeschen_Click"));
  Bibliothek& lib = bv_.bibliothek();
  if (schreibgeschuetzt()) return false;
  // 1. The last folder of a library stays.
  if (lib.rsOrdner.RecordCount() < 2) {
    fctMsgboxAnzeigen({54}, kTitelFrage, Buttons::Ok, Icon::Information);
    return false;
  }
  if (auswahl < 0 || auswahl >= int(dlisOrdner.size())) {
    subMsgboxInfoEinzeilig(kMsgKeinEintrag);
    return false;
  }
  const int32_t nr = dlisOrdner[size_t(auswahl)].nr;
  // 2.-4. The question depends on whether the folder holds blocks.
  const qint64 bloecke =
      lib.connDb.scalar(QStringLiteral("SELECT COUNT(*) FROM tblBlockInfo WHERE OrdnerID = ?"), {nr}).toLongLong();
  if (bloecke > 0) {
    if (!fctMsgboxFrageZweizeilig2(356, 357)) return false;
  } else if (!fctMsgboxFrageEinzeilig(355)) {
    return false;
  }
  if (!fctOrdnerLoeschen(nr)) return false;
  // 5. The list from the first folder.
  Anzeigen();
  auswahl = dlisOrdner.empty() ? -1 : 0;
  return true;
}

bool OrdnerVerwaltung::fctOrdnerLoeschen(int32_t nr) {
  Trace t(QStringLiteral("fctOrdnerLoeschen"));
  const QString routine = QStringLiteral("fctOrdnerLoeschen");
  Bibliothek& lib = bv_.bibliothek();
  Connection& c = lib.connDb;
  const QString ordnerNr = fctWertInSpalteAuslesen(c, QStringLiteral("tblOrdner"), QStringLiteral("OrdnerNr"),
                                                   QStringLiteral("Nr"), QString::number(nr))
                               .trimmed();
  if (ordnerNr.isEmpty()) {
    subErrorAllgemein(false, routine, QStringLiteral("Der Ordner %1 wurde nicht gefunden.").arg(nr));
    return false;
  }
  const bool mitBloecken =
      c.scalar(QStringLiteral("SELECT COUNT(*) FROM tblBlockInfo WHERE OrdnerID = ?"), {nr}).toLongLong() > 0;
  // The rows stand or fall together; children first.
  const QString bloeckeDesOrdners = QStringLiteral("(SELECT Nr FROM tblBlockInfo WHERE OrdnerID = ?)");
  bool ok = c.begin() &&
            c.execute(QStringLiteral("DELETE FROM tblVariationBloecke WHERE BlockID IN ") + bloeckeDesOrdners, {nr});
  if (ok && c.tableExists(QStringLiteral("tblMarkierteBloecke")))
    ok = c.execute(QStringLiteral("DELETE FROM tblMarkierteBloecke WHERE BlockNr IN "
                                  "(SELECT Block FROM tblBlockInfo WHERE OrdnerID = ?)"),
                   {nr});
  ok = ok && c.execute(QStringLiteral("DELETE FROM tblBlockInfo WHERE OrdnerID = ?"), {nr}) &&
       c.execute(QStringLiteral("DELETE FROM tblSeiten WHERE NrTblOrdner = ?"), {nr}) &&
       c.execute(QStringLiteral("DELETE FROM tblOrdner WHERE Nr = ?"), {nr}) && c.commit();
  if (!ok) {
    const QString fehler = c.error();
    c.rollback();
    subErrorAllgemein(false, routine, fehler);
    return false;
  }
  fctHaltepunkt("ordner-zeilen-geloescht");
  // The files of a folder with blocks are set aside, never deleted. A crash
  // before this leaves a directory without rows: nothing is lost.
  if (mitBloecken) {
    const QString dir = ordnerVerzeichnis(lib, ordnerNr);
    if (fctFolderExist(dir)) {
      const QString ziel = fctGeloeschtZiel(dir);
      t.step(dir + QStringLiteral(" -> ") + ziel);
      if (!MoveAFolder(dir, ziel))
        subErrorAllgemein(false, routine,
                          QStringLiteral("Das Verzeichnis %1 konnte nicht in %2 umbenannt werden.")
                              .arg(QDir::toNativeSeparators(dir), QDir::toNativeSeparators(ziel)));
    }
  }
  fctHaltepunkt("ordner-verzeichnis-verschoben");
  // The browser: marks and folders read again; the current folder gone, the first one.
  if (lib.rsMarkierteBloecke.isOpen()) lib.rsMarkierteBloecke.Requery();
  if (nr == lib.lngAktuelleOrdnerID) {
    lib.subRsOrdnerOeffnen();
    Recordset& ro = lib.rsOrdner;
    ro.MoveFirst();
    if (ro.isEOF()) return true;
    const QString erster = ro.text(QStringLiteral("Ordnername"));
    lib.lngAktuelleOrdnerID = int32_t(ro.value(QStringLiteral("Nr")).toLongLong());
    bv_.intAktuellerOrdner = int16_t(lib.lngAktuelleOrdnerID);
    bv_.OrdnerInArrayEinlesen();
    lib.strAktuellerOrdnerName.clear();  // so the click reads the folder
    bv_.comboxOrdner_Click(erster);
  } else {
    fctBrowserOrdnerAuffrischen(bv_);
  }
  return true;
}

bool OrdnerVerwaltung::nrTblOrdnenEindeutig() {
  // Rows of older libraries may share a sort value (or have none): then
  // every row gets its place in the present order, so a swap moves something.
  Recordset& ro = bv_.bibliothek().rsOrdner;
  QList<qint64> werte;
  bool eindeutig = true;
  for (ro.MoveFirst(); !ro.isEOF(); ro.MoveNext()) {
    const QVariant v = ro.value(QStringLiteral("NrTblOrdnen"));
    if (!v.isValid() || v.isNull() || werte.contains(v.toLongLong())) eindeutig = false;
    werte << v.toLongLong();
  }
  if (eindeutig) return true;
  Connection& c = bv_.bibliothek().connDb;
  if (!c.begin()) return false;
  int platz = 1;
  for (const Eintrag& e : dlisOrdner)
    if (!c.execute(QStringLiteral("UPDATE tblOrdner SET NrTblOrdnen = ? WHERE Nr = ?"), {platz++, e.nr})) {
      const QString fehler = c.error();
      c.rollback();
      subErrorAllgemein(false, QStringLiteral("imgAufAb_Click"), fehler);
      return false;
    }
  if (!c.commit()) {
    c.rollback();
    return false;
  }
  bv_.bibliothek().subRsOrdnerOeffnen();
  return true;
}

bool OrdnerVerwaltung::imgAufAb_Click(bool nachUnten) {
  Trace t(QStringLiteral("imgAufAb_Click"));
  Bibliothek& lib = bv_.bibliothek();
  if (schreibgeschuetzt()) return false;
  if (nachNameSortiert()) {
    subMsgboxInfoZweizeilig(kMsgOrdnerNachName1, kMsgOrdnerNachName2);
    return false;
  }
  if (auswahl < 0 || auswahl >= int(dlisOrdner.size())) {
    subMsgboxInfoEinzeilig(kMsgKeinEintrag);
    return false;
  }
  const int32_t nr = dlisOrdner[size_t(auswahl)].nr;
  const int nachbar = auswahl + (nachUnten ? 1 : -1);
  if (nachbar < 0 || nachbar >= int(dlisOrdner.size())) return false;
  // The list is rsOrdner in its order: read it so, then swap with the neighbour.
  lib.subRsOrdnerOeffnen();
  Anzeigen();
  if (!nrTblOrdnenEindeutig()) return false;
  auswahlAufNr(nr);
  Connection& c = lib.connDb;
  // fctWertVersetzen swaps with the next row for 1, the previous for 0.
  if (!c.begin()) {
    subErrorAllgemein(false, QStringLiteral("imgAufAb_Click"), c.error());
    return false;
  }
  if (!fctWertVersetzen(nachUnten ? 1 : 0, lib.rsOrdner, auswahl + 1, QStringLiteral("NrTblOrdnen")) ||
      !c.commit()) {
    c.rollback();
    fctBrowserOrdnerAuffrischen(bv_);
    Anzeigen();
    return false;
  }
  fctBrowserOrdnerAuffrischen(bv_);
  auswahl = -1;
  Anzeigen();
  auswahlAufNr(nr);
  return true;
}

}  // namespace kolvane

#include "ansichtenloeschen.h"

#include "bibliothek.h"
#include "connection.h"
#include "blockverwaltung.h"
#include "diagnostics.h"
#include "labels.h"
#include "layout.h"
#include "msgbox.h"
#include "recordhelpers.h"
#include "recordset.h"

namespace kolvane {

namespace {
constexpr int kAnsichtLoeschenFrage = 940;
constexpr int kBlockLoeschen1 = 73, kBlockLoeschen2 = 72;
}  // namespace

bool AnsichtenLoeschen::cmbLoeschen_Click() {
  Trace t(QStringLiteral("frmAnsichtenLoeschen.cmbLoeschen"));
  if (gewaehlt == 0) return blockLoeschen(true);
  if (!bilder[size_t(gewaehlt)].vorhanden) return false;
  return ansichtLoeschen(gewaehlt);
}

bool AnsichtenLoeschen::cmbAlleLoeschen_Click() {
  Trace t(QStringLiteral("frmAnsichtenLoeschen.cmbAlleLoeschen"));
  if (!fctMsgboxFrageZweizeilig2(kBlockLoeschen1, kBlockLoeschen2)) return false;
  return blockLoeschen(false);
}

bool AnsichtenLoeschen::ansichtLoeschen(int k) {
  Bibliothek& lib = bv_.bibliothek();
  const QString code = bv_.aktivierteBlocknummer;
  if (!fctMsgboxFrageEinzeilig(kAnsichtLoeschenFrage)) return false;
  // 1. Its variants first; kept variants keep the view.
  if (fctVariaBloeckeLoeschen && !fctVariaBloeckeLoeschen(code, k)) return false;
  // 2. The points, in one statement: the view is gone at once.
  QStringList sets;
  for (char p = 'A'; p <= 'F'; ++p)
    for (char a : {'X', 'Y', 'Z'}) sets << QStringLiteral("%1%2%3 = NULL").arg(QChar(p)).arg(QChar(a)).arg(k);
  Recordset zeile;
  if (!fctRsEinlesenMitEinemKriterium(zeile, lib.connDb, QStringLiteral("tblBlockInfo"), QStringLiteral("Block"),
                                      code, 0) ||
      zeile.RecordCount() < 1)
    return false;
  const QString slideLib = zeile.text(QStringLiteral("SlideLib"));
  if (!lib.connDb.execute(QStringLiteral("UPDATE tblBlockInfo SET ") + sets.join(QStringLiteral(", ")) +
                              QStringLiteral(" WHERE Block = ?"),
                          {code})) {
    subErrorAllgemein(false, QStringLiteral("frmAnsichtenLoeschen.cmbLoeschen"), lib.connDb.error());
    return false;
  }
  // 3. Its files.
  DateienBlockLoeschenEinzelenAnsicht(lib.connDb, lib.VerzeichnisOhneDb, slideLib, code, k);
  bilder[size_t(k)] = AnsichtBild{false, bilder[size_t(k)].name, bv_.frei2()};
  lib.rsBlockInfo0.Requery();
  bv_.subSeiteNeuAnzeigen();
  return true;
}

bool AnsichtenLoeschen::blockLoeschen(bool fragen) {
  Bibliothek& lib = bv_.bibliothek();
  Connection& c = lib.connDb;
  const QString code = bv_.aktivierteBlocknummer;
  // The question names the views and the variants: all of them go.
  if (fragen && !fctMsgboxFrageZweizeilig2(kBlockLoeschen1, kBlockLoeschen2)) return false;
  Recordset zeile;
  if (!fctRsEinlesenMitEinemKriterium(zeile, c, QStringLiteral("tblBlockInfo"), QStringLiteral("Block"), code, 0) ||
      zeile.RecordCount() < 1)
    return false;
  const QString slideLib = zeile.text(QStringLiteral("SlideLib"));
  const QVariant nr = zeile.value(QStringLiteral("Nr"));
  zeile.Close();
  // The rows first, in one transaction: a block without its pictures can be
  // made again, a picture without its block would stand on a free slot.
  const bool ok = c.begin() &&
                  c.execute(QStringLiteral("DELETE FROM tblVariationBloecke WHERE BlockID = ?"), {nr}) &&
                  c.execute(QStringLiteral("DELETE FROM tblBlockInfo WHERE Nr = ?"), {nr}) && c.commit();
  if (!ok) {
    c.rollback();
    subErrorAllgemein(false, QStringLiteral("frmAnsichtenLoeschen.cmbLoeschen"), c.error());
    return false;
  }
  DateienBlockLoeschen(c, lib.VerzeichnisOhneDb, slideLib, code);
  lib.rsBlockInfo0.Requery();
  bv_.subSeiteNeuAnzeigen();
  return true;
}

}  // namespace kolvane

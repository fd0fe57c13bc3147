#include "schema.h"

#include <QStringList>

#include "connection.h"
#include "diagnostics.h"
#include "jetsql.h"
#include "recordset.h"

namespace kolvane {

namespace {

using Typ = SchemaSpalte::Typ;

SchemaSpalte text(const QString& n, int w) { return {n, Typ::Text, w}; }
SchemaSpalte lng(const QString& n) { return {n, Typ::Long, 0}; }
SchemaSpalte dbl(const QString& n) { return {n, Typ::Double, 0}; }

QList<SchemaTabelle> makeSchema() {
  QList<SchemaTabelle> s;

  SchemaTabelle block{QStringLiteral("tblBlockInfo"), {}, {}};
  block.spalten << text("Block", 144) << text("SlideLib", 144) << lng("OrdnerID");
  for (int v = 0; v <= 4; ++v) block.spalten << text(QStringLiteral("BlkName%1").arg(v), 32);
  for (int m = 0; m <= 9; ++m) block.spalten << text(QStringLiteral("M%1").arg(m), 100);
  // Insertion points: view, then point A to F, then X, Y, Z.
  for (int v = 0; v <= 4; ++v)
    for (char p = 'A'; p <= 'F'; ++p)
      for (char a : {'X', 'Y', 'Z'})
        block.spalten << dbl(QStringLiteral("%1%2%3").arg(QChar(p)).arg(QChar(a)).arg(v));
  for (int v = 0; v <= 4; ++v) block.spalten << text(QStringLiteral("FktRuf%1").arg(v), 100);
  block.spalten << text("Prg", 3) << text("Layer", 35) << text("LyLine", 20)
                << text("LyColor", 4);
  block.schluessel << SchemaFremdschluessel{"tblOrdner_tblBlockInfo", "OrdnerID", "tblOrdner"};
  s << block;

  SchemaTabelle def{QStringLiteral("tblDefMenue"), {lng("global")}, {}};
  for (int i = 1; i <= 10; ++i)
    def.spalten << text(QStringLiteral("Benennung%1").arg(i), 100)
                << text(QStringLiteral("Standardwert%1").arg(i), 100);
  s << def;

  SchemaTabelle ordner{QStringLiteral("tblOrdner"),
                       {text("OrdnerNr", 3), text("Ordnername", 100), text("OrdnerRechte", 100),
                        lng("NrTblDefMenue"), lng("NrTblRechte")},
                       {{"tblDefMenue_tblOrdner", "NrTblDefMenue", "tblDefMenue"}}};
  s << ordner;

  SchemaTabelle seiten{QStringLiteral("tblSeiten"),
                       {lng("SeitenNr"), text("SeitenName", 100), lng("NrTblOrdner")},
                       {{"tblOrdner_tblSeiten", "NrTblOrdner", "tblOrdner"}}};
  s << seiten;

  SchemaTabelle marks{QStringLiteral("tblMarkierteBloecke"),
                      {text("BlockName", 100), text("BlockNr", 20), text("SpeicherOrtSlide", 100),
                       text("SpeicherOrtDWG", 100), lng("MarkierteAnsicht"),
                       lng("NummerEinfuegepkt")},
                      {}};
  s << marks;

  SchemaTabelle varia{QStringLiteral("tblVariationBloecke"),
                      {text("BlockName", 100), lng("BlockID"), text("BlockDateiName", 100)},
                      {{"tblBlockInfo_tblVariationBloecke", "BlockID", "tblBlockInfo"}}};
  s << varia;
  return s;
}

QString spaltenTyp(const SchemaSpalte& c) {
  switch (c.typ) {
    case Typ::Long: return QStringLiteral("INTEGER");
    case Typ::Double: return QStringLiteral("DOUBLE");
    case Typ::Text: return textColumnType(c.breite);
  }
  return {};
}

QString createTable(const SchemaTabelle& t, const QList<SchemaSpalte>& extra = {}) {
  QStringList parts;
  parts << QStringLiteral("Nr INTEGER CONSTRAINT PrimaryKey PRIMARY KEY AUTOINCREMENT");
  for (const SchemaSpalte& c : t.spalten) parts << c.name + u' ' + spaltenTyp(c);
  for (const SchemaSpalte& c : extra) parts << c.name + u' ' + spaltenTyp(c);
  for (const SchemaFremdschluessel& k : t.schluessel)
    parts << QStringLiteral("CONSTRAINT %1 FOREIGN KEY (%2) REFERENCES %3 (Nr)")
                 .arg(k.name, k.spalte, k.zielTabelle);
  return QStringLiteral("CREATE TABLE ") + t.name + " (" + parts.join(QStringLiteral(", ")) + ")";
}

}  // namespace

const QList<SchemaTabelle>& bibliotheksSchema() {
  static const QList<SchemaTabelle> s = makeSchema();
  return s;
}

const QList<SchemaSpalte>& markierteBloeckeLayerSpalten() {
  static const QList<SchemaSpalte> c = {text("Layer", 100), text("LyLine", 100),
                                        text("LyColor", 100)};
  return c;
}

bool Mk_Datenbank(const QString& strPfad) {
  Trace t(QStringLiteral("Mk_Datenbank"));
  t.step(QStringLiteral("Mk_Datenbank "));
  const QString routine = QStringLiteral("Mk_Datenbank");
  Connection conn;
  t.step(QStringLiteral("Datenbank erstellen"));
  if (!conn.open(strPfad, Connection::Mode::Create)) {
    subErrorAllgemein(false, routine, conn.error());
    return false;
  }
  auto fail = [&](const QString& why) {
    conn.rollback();
    subErrorAllgemein(false, routine, why);
    return false;
  };
  if (!conn.begin()) return fail(conn.error());
  // The keys are part of each table here; they are made with it, after the
  // tables they point to are known by name.
  for (const SchemaTabelle& tab : bibliotheksSchema()) {
    t.step(QStringLiteral("Tabelle erstellen : ") + tab.name);
    if (!conn.execute(createTable(tab))) return fail(conn.error());
  }
  for (const SchemaTabelle& tab : bibliotheksSchema())
    for (const SchemaFremdschluessel& k : tab.schluessel) t.step(QStringLiteral("Key erstellen : ") + k.name);

  t.step(QStringLiteral("Voreinträge in die Datenbanken schreiben"));
  if (!conn.execute(QStringLiteral("CREATE INDEX OrdnerID ON tblBlockInfo(OrdnerID DESC)")))
    return fail(conn.error());
  {
    Recordset rs;
    if (!rs.Open(QStringLiteral("tblDefMenue"), conn) || !rs.AddNew()) return fail(rs.lastError());
    rs.setValue(QStringLiteral("global"), QStringLiteral("1"));
    for (int i = 1; i <= 10; ++i) {
      rs.setValue(QStringLiteral("Benennung%1").arg(i), freiText());
      rs.setValue(QStringLiteral("Standardwert%1").arg(i), QString(""));
    }
    if (!rs.Update()) return fail(rs.lastError());
    rs.Close();
    if (!rs.Open(QStringLiteral("tblOrdner"), conn) || !rs.AddNew()) return fail(rs.lastError());
    rs.setValue(QStringLiteral("OrdnerNr"), QStringLiteral("000"));
    rs.setValue(QStringLiteral("OrdnerName"), QStringLiteral("Standard-Ordner"));
    rs.setValue(QStringLiteral("OrdnerRechte"), QStringLiteral("Alle"));
    rs.setValue(QStringLiteral("NrTblDefMenue"), QStringLiteral("1"));
    if (!rs.Update()) return fail(rs.lastError());
    rs.Close();
    if (!rs.Open(QStringLiteral("tblSeiten"), conn) || !rs.AddNew()) return fail(rs.lastError());
    rs.setValue(QStringLiteral("SeitenNr"), QStringLiteral("1"));
    rs.setValue(QStringLiteral("SeitenName"), QStringLiteral("1"));
    rs.setValue(QStringLiteral("NrTblOrdner"), QStringLiteral("1"));
    if (!rs.Update()) return fail(rs.lastError());
  }
  if (!conn.commit()) return fail(conn.error());
  return true;
}

bool subMk_TblMarkierteBloecke(Connection& conn) {
  Trace t(QStringLiteral("subMk_TblMarkierteBloecke"));
  for (const SchemaTabelle& tab : bibliotheksSchema()) {
    if (tab.name != QLatin1String("tblMarkierteBloecke")) continue;
    t.step(QStringLiteral("Tabelle erstellen : ") + tab.name);
    if (!conn.execute(createTable(tab, markierteBloeckeLayerSpalten()))) {
      subErrorAllgemein(false, QStringLiteral("subMk_TblMarkierteBloecke"), conn.error());
      return false;
    }
  }
  return true;
}

bool subMk_TblMarkierteBloecke(const QString& strPfad) {
  Connection conn;
  if (!conn.open(strPfad)) {
    subErrorAllgemein(false, QStringLiteral("subMk_TblMarkierteBloecke"), conn.error());
    return false;
  }
  return subMk_TblMarkierteBloecke(conn);
}

}  // namespace kolvane

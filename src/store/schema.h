#pragma once
#include <QList>
#include <QString>

namespace kolvane {

class Connection;

// The tables of a library, in the order they are made.
struct SchemaSpalte {
  enum class Typ { Long, Double, Text };
  QString name;
  Typ typ;
  int breite = 0;  // characters, for Text
};
struct SchemaFremdschluessel {
  QString name;
  QString spalte;
  QString zielTabelle;
};
struct SchemaTabelle {
  QString name;
  QList<SchemaSpalte> spalten;  // after Nr
  QList<SchemaFremdschluessel> schluessel;
};

// tblBlockInfo, tblDefMenue, tblOrdner, tblSeiten, tblMarkierteBloecke (narrow),
// tblVariationBloecke.
const QList<SchemaTabelle>& bibliotheksSchema();
// The three layer columns that only the wide tblMarkierteBloecke has.
const QList<SchemaSpalte>& markierteBloeckeLayerSpalten();

// The file name of a library's database.
inline QString dbDateiName() { return QStringLiteral("dbKolvane.mdb"); }
// The text of a free slot and of an unused card field.
inline QString freiText() { return QStringLiteral("*****Frei*****"); }

// Creates a new library database at strPfad (the directory must exist, the file
// must not): the six tables, the four foreign keys, the index "OrdnerID" and the
// first rows. Failures are reported; false then.
bool Mk_Datenbank(const QString& strPfad);

// Creates tblMarkierteBloecke in its wide form (with Layer, LyLine, LyColor) in
// the library at strPfad, or on an open connection.
bool subMk_TblMarkierteBloecke(const QString& strPfad);
bool subMk_TblMarkierteBloecke(Connection& conn);

}  // namespace kolvane

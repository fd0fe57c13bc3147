#pragma once
#include <QString>

namespace kolvane {

// The one place where SQL of the old database engine becomes SQL this store
// understands. Data definition only: "TEXT (n)" becomes "TEXT(n)" with the
// case-insensitive collation, "SHORT" a small integer, "LONG" an integer,
// "COUNTER" an autoincrement key, "DOUBLE" stays. Text inside quotes and
// brackets is left alone; everything else passes unchanged.
QString translateJetSql(const QString& sql);

// The declared type of a new text column of width n, as the schema writes it.
QString textColumnType(int width);

}  // namespace kolvane

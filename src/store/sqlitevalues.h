#pragma once
#include <QString>
#include <QVariant>
#include <sqlite3.h>

namespace kolvane::sqlitevalues {

// Binds a value to a parameter (1-based); an invalid or null QVariant is NULL.
int bind(sqlite3_stmt* st, int index, const QVariant& v);
// The value of a result column: qlonglong, double, QString, QByteArray or an
// invalid QVariant for NULL.
QVariant column(sqlite3_stmt* st, int index);
// The statement text as UTF-16 for sqlite3_prepare16_v2.
int prepare(sqlite3* db, const QString& sql, sqlite3_stmt** st);
QString lastError(sqlite3* db);

}  // namespace kolvane::sqlitevalues

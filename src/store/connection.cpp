#include "connection.h"

#include <QAtomicInt>
#include <QFile>
#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlError>
#include <sqlite3.h>

#include "jetsql.h"
#include "sqlitevalues.h"
#include "textcompare.h"

namespace kolvane {

namespace sqlitevalues {

int bind(sqlite3_stmt* st, int index, const QVariant& v) {
  if (!v.isValid() || v.isNull()) return sqlite3_bind_null(st, index);
  switch (v.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::UChar:
    case QMetaType::SChar:
      return sqlite3_bind_int64(st, index, v.toLongLong());
    case QMetaType::ULong:
    case QMetaType::ULongLong:
      return sqlite3_bind_int64(st, index, static_cast<sqlite3_int64>(v.toULongLong()));
    case QMetaType::Double:
    case QMetaType::Float:
      return sqlite3_bind_double(st, index, v.toDouble());
    case QMetaType::QByteArray: {
      const QByteArray b = v.toByteArray();
      return sqlite3_bind_blob(st, index, b.constData(), int(b.size()), SQLITE_TRANSIENT);
    }
    default: {
      const QString s = v.toString();
      return sqlite3_bind_text16(st, index, s.utf16(), int(s.size() * sizeof(char16_t)),
                                 SQLITE_TRANSIENT);
    }
  }
}

QVariant column(sqlite3_stmt* st, int index) {
  switch (sqlite3_column_type(st, index)) {
    case SQLITE_INTEGER: return QVariant(qlonglong(sqlite3_column_int64(st, index)));
    case SQLITE_FLOAT: return QVariant(sqlite3_column_double(st, index));
    case SQLITE_TEXT: {
      const auto* p = static_cast<const char16_t*>(sqlite3_column_text16(st, index));
      const int bytes = sqlite3_column_bytes16(st, index);
      return QVariant(QString(reinterpret_cast<const QChar*>(p), bytes / int(sizeof(char16_t))));
    }
    case SQLITE_BLOB: {
      const auto* p = static_cast<const char*>(sqlite3_column_blob(st, index));
      return QVariant(QByteArray(p, sqlite3_column_bytes(st, index)));
    }
    default: return QVariant();
  }
}

int prepare(sqlite3* db, const QString& sql, sqlite3_stmt** st) {
  return sqlite3_prepare16_v2(db, sql.utf16(), int(sql.size() * sizeof(char16_t)), st, nullptr);
}

QString lastError(sqlite3* db) {
  return db ? QString::fromUtf8(sqlite3_errmsg(db)) : QStringLiteral("keine Verbindung");
}

}  // namespace sqlitevalues

using namespace sqlitevalues;

// --- file kind -------------------------------------------------------------

LibraryFileKind libraryFileKind(const QString& path) {
  QFileInfo fi(path);
  if (!fi.exists() || !fi.isFile()) return LibraryFileKind::Missing;
  if (fi.size() == 0) return LibraryFileKind::Empty;
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) return LibraryFileKind::Other;
  const QByteArray head = f.read(32);
  if (head.startsWith(QByteArrayLiteral("SQLite format 3\0"))) return LibraryFileKind::SQLite;
  // A Jet (or its successor's) file: a four-byte page header, then its id.
  if (head.size() >= 19 && (head.mid(4, 15) == QByteArrayLiteral("Standard Jet DB") ||
                            head.mid(4, 15) == QByteArrayLiteral("Standard ACE DB")))
    return LibraryFileKind::Jet;
  return LibraryFileKind::Other;
}

QString libraryFileProblem(const QString& path) {
  switch (libraryFileKind(path)) {
    case LibraryFileKind::SQLite: return {};
    case LibraryFileKind::Missing:
      return QStringLiteral("Die Datenbank %1 ist nicht vorhanden.").arg(path);
    case LibraryFileKind::Empty:
      return QStringLiteral("Die Datei %1 ist leer: sie ist keine Kolvane-Datenbank.").arg(path);
    case LibraryFileKind::Jet:
      return QStringLiteral(
                 "Die Datei %1 ist eine Jet-Datenbank (Access) der Windows-Ausgabe. Diese "
                 "Ausgabe kann sie nicht öffnen; sie muss erst übernommen werden.")
          .arg(path);
    case LibraryFileKind::Other:
      break;
  }
  return QStringLiteral("Die Datei %1 ist keine Kolvane-Datenbank.").arg(path);
}

// --- text rules --------------------------------------------------------------

namespace {

void likeFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  // like(pattern, text [, escape]) is "text LIKE pattern [ESCAPE escape]".
  if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
    sqlite3_result_null(ctx);
    return;
  }
  const auto* p = static_cast<const QChar*>(sqlite3_value_text16(argv[0]));
  const int pn = sqlite3_value_bytes16(argv[0]) / 2;
  const auto* t = static_cast<const QChar*>(sqlite3_value_text16(argv[1]));
  const int tn = sqlite3_value_bytes16(argv[1]) / 2;
  QChar escape;
  if (argc == 3 && sqlite3_value_type(argv[2]) != SQLITE_NULL) {
    const auto* e = static_cast<const QChar*>(sqlite3_value_text16(argv[2]));
    const int en = sqlite3_value_bytes16(argv[2]) / 2;
    if (en != 1) {
      sqlite3_result_error(ctx, "ESCAPE expression must be a single character", -1);
      return;
    }
    escape = e[0];
  }
  sqlite3_result_int(ctx, likeMatch(QStringView(t, tn), QStringView(p, pn), LikeWildcards::Sql,
                                    escape)
                              ? 1
                              : 0);
}

// The same over UTF-8, the encoding a library stores its text in: no
// conversion of the row's value for each call.
void likeFunctionUtf8(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
    sqlite3_result_null(ctx);
    return;
  }
  const unsigned char* p = sqlite3_value_text(argv[0]);
  const int pn = sqlite3_value_bytes(argv[0]);
  const unsigned char* t = sqlite3_value_text(argv[1]);
  const int tn = sqlite3_value_bytes(argv[1]);
  char32_t escape = 0;
  if (argc == 3 && sqlite3_value_type(argv[2]) != SQLITE_NULL) {
    const QString e = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(argv[2])),
                                        sqlite3_value_bytes(argv[2]));
    const QList<uint> cp = e.toUcs4();
    if (cp.size() != 1) {
      sqlite3_result_error(ctx, "ESCAPE expression must be a single character", -1);
      return;
    }
    escape = cp[0];
  }
  sqlite3_result_int(ctx, likeMatchUtf8(t, tn, p, pn, escape) ? 1 : 0);
}

int noCaseCollation(void*, int an, const void* a, int bn, const void* b) {
  return compareNoCase(QStringView(static_cast<const QChar*>(a), an / 2),
                       QStringView(static_cast<const QChar*>(b), bn / 2));
}

QAtomicInt g_counter;

}  // namespace

bool registerTextRules(sqlite3* db) {
  const int flags = SQLITE_UTF16 | SQLITE_DETERMINISTIC;
  const int flags8 = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
  return sqlite3_create_function(db, "like", 2, flags8, nullptr, likeFunctionUtf8, nullptr, nullptr) ==
             SQLITE_OK &&
         sqlite3_create_function(db, "like", 3, flags8, nullptr, likeFunctionUtf8, nullptr, nullptr) ==
             SQLITE_OK &&
         sqlite3_create_function(db, "like", 2, flags, nullptr, likeFunction, nullptr, nullptr) ==
             SQLITE_OK &&
         sqlite3_create_function(db, "like", 3, flags, nullptr, likeFunction, nullptr, nullptr) ==
             SQLITE_OK &&
         sqlite3_create_collation(db, "NOCASE", SQLITE_UTF16_ALIGNED, nullptr, noCaseCollation) ==
             SQLITE_OK;
}

// --- connection ----------------------------------------------------------------

Connection::Connection() = default;

Connection::~Connection() { close(); }

QSqlDatabase Connection::database() const {
  return name_.isEmpty() ? QSqlDatabase() : QSqlDatabase::database(name_, false);
}

bool Connection::open(const QString& path, Mode mode) {
  close();
  error_.clear();
  path_ = path;
  readOnly_ = mode == Mode::ReadOnly;
  if (mode == Mode::Create) {
    if (QFileInfo::exists(path)) {
      error_ = QStringLiteral("Die Datei %1 ist schon vorhanden.").arg(path);
      return false;
    }
  } else {
    error_ = libraryFileProblem(path);
    if (!error_.isEmpty()) return false;
  }
  name_ = QStringLiteral("kolvane-%1").arg(g_counter.fetchAndAddRelaxed(1));
  {
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_);
    if (!db.isValid()) {
      error_ = QStringLiteral("Der SQLite-Treiber von Qt fehlt.");
      close();
      return false;
    }
    db.setDatabaseName(path);
    QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000");
    if (readOnly_) options += QStringLiteral(";QSQLITE_OPEN_READONLY");
    db.setConnectOptions(options);
    if (!db.open()) {
      error_ = db.lastError().text();
      close();
      return false;
    }
    const QVariant h = db.driver()->handle();
    if (h.isValid() && qstrcmp(h.typeName(), "sqlite3*") == 0)
      handle_ = *static_cast<sqlite3* const*>(h.constData());
  }
  if (!handle_ || !registerTextRules(handle_)) {
    error_ = QStringLiteral("Die Verbindung zu %1 kann nicht eingerichtet werden.").arg(path);
    close();
    return false;
  }
  sqlite3_busy_timeout(handle_, 5000);
  // Up to 64 MiB of pages stay in memory (taken as they are read), so a
  // search over a large library reads the file once and then only checks
  // that nobody changed it.
  if (!execute(QStringLiteral("PRAGMA cache_size=-65536")) ||
      !execute(QStringLiteral("PRAGMA foreign_keys=ON")) ||
      (!readOnly_ && !execute(QStringLiteral("PRAGMA journal_mode=DELETE")))) {
    const QString e = error_;
    close();
    error_ = e;
    return false;
  }
  // The header told SQLite; reading the schema tells a damaged file.
  if (!scalar(QStringLiteral("SELECT count(*) FROM sqlite_master")).isValid() &&
      mode != Mode::Create) {
    const QString e = QStringLiteral("Die Datei %1 ist beschädigt: %2").arg(path, error_);
    close();
    error_ = e;
    return false;
  }
  return true;
}

void Connection::close() {
  handle_ = nullptr;
  if (!name_.isEmpty()) {
    {
      QSqlDatabase db = QSqlDatabase::database(name_, false);
      if (db.isOpen()) db.close();
    }
    QSqlDatabase::removeDatabase(name_);
    name_.clear();
  }
}

bool Connection::execute(const QString& sql, const QVariantList& values) {
  if (!handle_) {
    error_ = QStringLiteral("Die Verbindung ist nicht geöffnet.");
    return false;
  }
  sqlite3_stmt* st = nullptr;
  if (prepare(handle_, translateJetSql(sql), &st) != SQLITE_OK) {
    error_ = lastError(handle_);
    sqlite3_finalize(st);
    return false;
  }
  for (int i = 0; i < values.size(); ++i) bind(st, i + 1, values[i]);
  int rc;
  while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
  }
  if (rc != SQLITE_DONE) error_ = lastError(handle_);
  sqlite3_finalize(st);
  return rc == SQLITE_DONE;
}

QVariant Connection::scalar(const QString& sql, const QVariantList& values) {
  if (!handle_) {
    error_ = QStringLiteral("Die Verbindung ist nicht geöffnet.");
    return {};
  }
  sqlite3_stmt* st = nullptr;
  if (prepare(handle_, sql, &st) != SQLITE_OK) {
    error_ = lastError(handle_);
    sqlite3_finalize(st);
    return {};
  }
  for (int i = 0; i < values.size(); ++i) bind(st, i + 1, values[i]);
  QVariant result;
  const int rc = sqlite3_step(st);
  if (rc == SQLITE_ROW) {
    result = column(st, 0);
    // A NULL is still a row: a valid but null value.
    if (!result.isValid()) result = QVariant(QMetaType::fromType<QString>());
  } else if (rc != SQLITE_DONE) {
    error_ = lastError(handle_);
  }
  sqlite3_finalize(st);
  return result;
}

int64_t Connection::changes() const { return handle_ ? sqlite3_changes64(handle_) : 0; }
int64_t Connection::lastInsertId() const {
  return handle_ ? sqlite3_last_insert_rowid(handle_) : 0;
}

bool Connection::tableExists(const QString& table) {
  return scalar(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' AND "
                               "name = ? COLLATE NOCASE"),
                {table})
      .isValid();
}

QStringList Connection::columns(const QString& table) {
  QStringList out;
  if (!handle_) return out;
  sqlite3_stmt* st = nullptr;
  if (prepare(handle_, QStringLiteral("SELECT name FROM pragma_table_info(?)"), &st) == SQLITE_OK) {
    bind(st, 1, table);
    while (sqlite3_step(st) == SQLITE_ROW) out << column(st, 0).toString();
  }
  sqlite3_finalize(st);
  return out;
}

bool Connection::columnExists(const QString& table, const QString& column) {
  for (const QString& c : columns(table))
    if (equalNoCase(c, column)) return true;
  return false;
}

bool Connection::begin() { return execute(QStringLiteral("BEGIN")); }
bool Connection::commit() { return execute(QStringLiteral("COMMIT")); }
void Connection::rollback() {
  if (handle_ && !sqlite3_get_autocommit(handle_)) execute(QStringLiteral("ROLLBACK"));
}

}  // namespace kolvane

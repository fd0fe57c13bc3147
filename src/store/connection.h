#pragma once
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <cstdint>

struct sqlite3;

namespace kolvane {

// What lies under a library's file name, told by its first bytes.
enum class LibraryFileKind { Missing, Empty, SQLite, Jet, Other };
LibraryFileKind libraryFileKind(const QString& path);
// "" when the file is an SQLite database; otherwise one sentence that says what
// is wrong with it (missing, empty, a Jet database of the Windows edition, not a
// database at all).
QString libraryFileProblem(const QString& path);

// One connection to a library file (Qt's SQLite driver). Every connection gets
// the case-insensitive LIKE and NOCASE collation of the library, enforced
// foreign keys, a busy timeout of five seconds and the rollback journal, so a
// library on a shared directory works as far as SQLite allows there.
class Connection {
 public:
  enum class Mode { ReadWrite, ReadOnly, Create };

  Connection();
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // Opens an existing library file (Create: a new file that must not exist).
  // A file that is not an SQLite database is refused before it is touched. On
  // failure error() says why; nothing is reported here.
  bool open(const QString& path, Mode mode = Mode::ReadWrite);
  void close();
  bool isOpen() const { return handle_ != nullptr; }
  bool isReadOnly() const { return readOnly_; }
  QString path() const { return path_; }
  QString error() const { return error_; }
  QSqlDatabase database() const;
  sqlite3* handle() const { return handle_; }

  // Runs one statement after translating the old engine's forms; bound values
  // replace "?" in order.
  bool execute(const QString& sql, const QVariantList& values = {});
  // The first column of the first row of a query; invalid when no row.
  QVariant scalar(const QString& sql, const QVariantList& values = {});
  int64_t changes() const;
  int64_t lastInsertId() const;

  // Tables and columns as the database describes them (sqlite_master).
  bool tableExists(const QString& table);
  QStringList columns(const QString& table);
  bool columnExists(const QString& table, const QString& column);

  bool begin();
  bool commit();
  void rollback();

 private:
  QString name_;
  QString path_;
  QString error_;
  sqlite3* handle_ = nullptr;
  bool readOnly_ = false;
};

// Registers the library's text rules on a raw connection.
bool registerTextRules(sqlite3* db);

}  // namespace kolvane

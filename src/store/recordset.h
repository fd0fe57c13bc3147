#pragma once
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <cstdint>
#include <vector>

namespace kolvane {

class Connection;

// A positioned set of rows read from a library, with the behaviour of the old
// keyset cursor and optimistic lock: every row keeps its SQLite rowid (also when
// the SELECT does not name Nr), so it can be changed or deleted; Find and Filter
// evaluate "Col LIKE '...'" and "Col = value" here, case-insensitively, with
// the wildcards % _ and *. Fields are found by name without regard to case.
//
// Errors: Open, Requery, Find, Filter, AddNew and Delete return false and leave
// the reason in lastError() for the calling routine to report. Update reports
// itself (a text too long for its column, a row changed by another user).
class Recordset {
 public:
  // AbsolutePosition when the cursor stands on no row.
  static constexpr int adPosUnknown = -1;
  static constexpr int adPosBOF = -2;
  static constexpr int adPosEOF = -3;
  enum class Direction { Forward, Backward };

  Recordset();
  ~Recordset();
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  // source: a table name (optionally in brackets) or a SELECT statement. The
  // cursor stands on the first row.
  bool Open(const QString& source, Connection& conn);
  // The same with values for the statement's "?" parameters, in order: what a
  // user typed goes into the statement as a value, never as SQL text.
  // Requery binds them again.
  bool Open(const QString& source, Connection& conn, const QVariantList& werte);
  void Close();
  bool Requery();
  bool isOpen() const { return open_; }
  const QString& source() const { return source_; }
  const QString& lastError() const { return error_; }
  // The table that changes go to (the first table after FROM).
  const QString& baseTable() const { return baseTable_; }

  // --- position ---
  int RecordCount() const { return open_ ? int(visible_.size()) : -1; }
  bool isBOF() const;
  bool isEOF() const;
  // 1-based position of the current row, or one of the adPos values.
  int AbsolutePosition() const;
  bool setAbsolutePosition(int position);
  // Moving away from a changed row writes it first, as the old cursor did.
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();
  void Move(int rows);

  // --- search ---
  // Searches from the current row (skip rows first) for one criterion,
  // "Col LIKE 'pattern'" or "Col <op> value". Found: the cursor is on the row.
  // Not found: EOF (forward) or BOF (backward). False also for a closed or
  // empty record set and for a criterion that can't be read (see lastError()).
  bool Find(const QString& criteria, int skip = 0, Direction direction = Direction::Forward);
  // Shows only the rows that meet the criteria (clauses joined by AND / OR);
  // "" shows all rows again. The cursor goes to the first row.
  bool setFilter(const QString& criteria);
  const QString& filter() const { return filter_; }

  // --- changes ---
  bool AddNew();
  bool setValue(const QString& field, const QVariant& value);
  bool Update();
  bool Update(const QString& field, const QVariant& value);
  void CancelUpdate();
  bool isEditing() const { return mode_ != EditMode::None; }
  // Deletes the current row; it stays current (without values) until a move.
  bool Delete();

  // --- fields ---
  int fieldCount() const { return int(fields_.size()); }
  QString fieldName(int index) const;
  bool hasField(const QString& field) const { return fieldIndex(field) >= 0; }
  // Width of a text column as declared (TEXT(n)), -1 when it has none.
  int fieldWidth(const QString& field) const;
  // The value of the current row; invalid for NULL, for no current row and for
  // a column the library lacks (Lisp0 to Lisp4, Layer, LyLine, LyColor: these
  // read as "" without a report; another unknown name is reported).
  QVariant value(const QString& field) const;
  // value() as text: NULL and a missing column give "".
  QString text(const QString& field) const;
  QVariant value(int index) const;
  int64_t rowid() const;

 private:
  enum class EditMode { None, Editing, Adding };
  struct Field {
    QString name;
    QString table;   // origin table, "" for an expression
    QString column;  // origin column
    QString declaredType;
    int width = -1;
    bool numeric = false;
    bool integer = false;
  };
  struct Row {
    int64_t rowid = 0;
    std::vector<QVariant> values;
  };
  struct Criterion;
  struct Clause;

  int fieldIndex(const QString& field) const;
  bool load();
  bool onRow() const;
  Row* currentRow();
  const Row* currentRow() const;
  bool leaveRow();
  bool parseCriteria(const QString& text, std::vector<std::vector<Criterion>>* groups,
                     bool single);
  bool matches(const Row& row, const Criterion& c) const;
  bool coerce(const Field& f, const QVariant& in, QVariant* out, QString* why) const;

  Connection* conn_ = nullptr;
  bool open_ = false;
  QString source_;
  QString sql_;        // the statement actually run (with the rowid column)
  QVariantList werte_; // values of its parameters
  bool hasRowid_ = false;
  QString baseTable_;
  QString error_;
  QString filter_;
  std::vector<Field> fields_;
  QHash<QString, int> index_;  // lower-case name -> field
  std::vector<Row> rows_;
  std::vector<int> visible_;   // rows_ indices in view (all, or those the filter lets through)
  int cur_ = -1;               // index into visible_; -1 BOF, size() EOF
  bool onDeleted_ = false;
  EditMode mode_ = EditMode::None;
  Row pending_;
  std::vector<bool> changed_;
};

}  // namespace kolvane

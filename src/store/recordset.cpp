#include "recordset.h"

#include <QLocale>
#include <QRegularExpression>
#include <sqlite3.h>

#include "connection.h"
#include "diagnostics.h"
#include "sqlitevalues.h"
#include "textcompare.h"

namespace kolvane {

using namespace sqlitevalues;

namespace {

const QString kRowidAlias = QStringLiteral("kolvane_rowid");

// Columns that older libraries may lack; they read as "" (no report).
bool isOptionalColumn(const QString& lower) {
  static const QStringList names = {"lisp0", "lisp1", "lisp2", "lisp3", "lisp4",
                                    "layer", "lyline", "lycolor"};
  return names.contains(lower);
}

QString unquoteIdentifier(QString s) {
  if (s.size() >= 2 && ((s.front() == u'[' && s.back() == u']') ||
                        (s.front() == u'"' && s.back() == u'"') ||
                        (s.front() == u'`' && s.back() == u'`')))
    s = s.mid(1, s.size() - 2);
  return s;
}

QString quoteIdentifier(const QString& s) { return u'[' + s + u']'; }

// --- the shape of a SELECT: where the rowid column goes and which table it is
// taken from.
struct SqlToken {
  QString text;
  qsizetype start;
  qsizetype end;
  int depth;
  bool word;
};

std::vector<SqlToken> tokenize(const QString& sql) {
  std::vector<SqlToken> out;
  int depth = 0;
  qsizetype i = 0;
  const qsizetype n = sql.size();
  while (i < n) {
    const QChar c = sql[i];
    if (c.isSpace()) {
      ++i;
      continue;
    }
    const qsizetype start = i;
    if (c == u'\'' || c == u'"' || c == u'[' || c == u'`') {
      const QChar close = c == u'[' ? QChar(u']') : c;
      ++i;
      while (i < n) {
        if (sql[i] == close) {
          if (close == u'\'' && i + 1 < n && sql[i + 1] == u'\'') {
            i += 2;
            continue;
          }
          break;
        }
        ++i;
      }
      ++i;
      out.push_back({sql.mid(start, i - start), start, i, depth, c != u'\''});
      continue;
    }
    if (c.isLetterOrNumber() || c == u'_') {
      while (i < n && (sql[i].isLetterOrNumber() || sql[i] == u'_' || sql[i] == u'.')) ++i;
      out.push_back({sql.mid(start, i - start), start, i, depth, true});
      continue;
    }
    if (c == u'(') ++depth;
    out.push_back({QString(c), start, i + 1, c == u'(' ? depth - 1 : depth, false});
    if (c == u')') --depth;
    ++i;
  }
  return out;
}

struct SelectShape {
  bool ok = false;
  qsizetype insertAt = 0;  // after SELECT [DISTINCT|ALL]
  QString table;
  QString reference;  // alias or table, as written
};

SelectShape analyseSelect(const QString& sql) {
  SelectShape shape;
  const auto tokens = tokenize(sql);
  if (tokens.empty() || tokens[0].text.compare(QLatin1String("SELECT"), Qt::CaseInsensitive) != 0)
    return shape;
  size_t k = 1;
  shape.insertAt = tokens[0].end;
  if (k < tokens.size() && (tokens[k].text.compare(QLatin1String("DISTINCT"), Qt::CaseInsensitive) == 0 ||
                            tokens[k].text.compare(QLatin1String("ALL"), Qt::CaseInsensitive) == 0))
    shape.insertAt = tokens[k++].end;
  static const QStringList stops = {"WHERE", "ORDER", "GROUP", "INNER", "LEFT", "RIGHT",
                                    "JOIN", "ON", "HAVING", "LIMIT", "UNION", "CROSS",
                                    "NATURAL", "OUTER", "FULL", "INTERSECT", "EXCEPT", "IN"};
  for (; k < tokens.size(); ++k) {
    const SqlToken& t = tokens[k];
    if (t.depth != 0 || !t.word) continue;
    if (t.text.compare(QLatin1String("FROM"), Qt::CaseInsensitive) != 0) continue;
    if (k + 1 >= tokens.size() || !tokens[k + 1].word) return shape;  // a subquery
    shape.table = unquoteIdentifier(tokens[k + 1].text);
    shape.reference = tokens[k + 1].text;
    size_t a = k + 2;
    if (a < tokens.size() && tokens[a].text.compare(QLatin1String("AS"), Qt::CaseInsensitive) == 0)
      ++a;
    if (a < tokens.size() && tokens[a].word && tokens[a].depth == 0 &&
        !stops.contains(tokens[a].text, Qt::CaseInsensitive))
      shape.reference = tokens[a].text;
    break;
  }
  if (shape.table.isEmpty()) return shape;
  for (const SqlToken& t : tokens) {
    if (t.depth != 0 || !t.word) continue;
    for (const char* w : {"GROUP", "UNION", "INTERSECT", "EXCEPT", "HAVING"})
      if (t.text.compare(QLatin1String(w), Qt::CaseInsensitive) == 0) return shape;
  }
  shape.ok = true;
  return shape;
}

QString variantText(const QVariant& v) {
  switch (v.typeId()) {
    case QMetaType::QString: return *static_cast<const QString*>(v.constData());
    case QMetaType::Double: return QString::number(v.toDouble(), 'g', 15);
    default: return v.toString();
  }
}

bool isNumber(const QVariant& v) {
  const int t = v.typeId();
  return t == QMetaType::LongLong || t == QMetaType::Double || t == QMetaType::Int;
}

}  // namespace

// --- criteria of Find and Filter --------------------------------------------

struct Recordset::Criterion {
  enum Op { Like, Eq, Ne, Lt, Gt, Le, Ge };
  int field = -1;
  Op op = Eq;
  QString text;       // the value as text (pattern for LIKE)
  bool numeric = false;
  double number = 0;
  bool isNull = false;
};

bool Recordset::parseCriteria(const QString& input, std::vector<std::vector<Criterion>>* groups,
                              bool single) {
  groups->clear();
  groups->emplace_back();
  qsizetype i = 0;
  const qsizetype n = input.size();
  auto skipSpace = [&] {
    while (i < n && input[i].isSpace()) ++i;
  };
  auto fail = [&](const QString& why) {
    error_ = QStringLiteral("Die Bedingung \"%1\" ist ungültig: %2").arg(input, why);
    groups->clear();
    return false;
  };
  auto readWord = [&]() {
    const qsizetype s = i;
    while (i < n && (input[i].isLetterOrNumber() || input[i] == u'_' || input[i] == u'.')) ++i;
    return input.mid(s, i - s);
  };
  for (;;) {
    skipSpace();
    // Column.
    QString column;
    if (i < n && input[i] == u'[') {
      const qsizetype e = input.indexOf(u']', i);
      if (e < 0) return fail(QStringLiteral("\"]\" fehlt"));
      column = input.mid(i + 1, e - i - 1);
      i = e + 1;
    } else {
      column = readWord();
    }
    if (column.isEmpty()) return fail(QStringLiteral("Spaltenname fehlt"));
    // A qualified name ("tbl.Col") is found by its column part.
    if (fieldIndex(column) < 0 && column.contains(u'.')) column = column.section(u'.', -1);
    Criterion c;
    c.field = fieldIndex(column);
    if (c.field < 0) return fail(QStringLiteral("Spalte %1 ist nicht im Datensatz").arg(column));
    // Operator.
    skipSpace();
    if (input.mid(i, 4).compare(QLatin1String("LIKE"), Qt::CaseInsensitive) == 0 &&
        (i + 4 >= n || !input[i + 4].isLetterOrNumber())) {
      c.op = Criterion::Like;
      i += 4;
    } else if (input.mid(i, 2) == QLatin1String("<>")) {
      c.op = Criterion::Ne;
      i += 2;
    } else if (input.mid(i, 2) == QLatin1String("<=")) {
      c.op = Criterion::Le;
      i += 2;
    } else if (input.mid(i, 2) == QLatin1String(">=")) {
      c.op = Criterion::Ge;
      i += 2;
    } else if (i < n && input[i] == u'=') {
      c.op = Criterion::Eq;
      ++i;
    } else if (i < n && input[i] == u'<') {
      c.op = Criterion::Lt;
      ++i;
    } else if (i < n && input[i] == u'>') {
      c.op = Criterion::Gt;
      ++i;
    } else {
      return fail(QStringLiteral("Vergleich fehlt"));
    }
    // Value.
    skipSpace();
    if (i >= n) return fail(QStringLiteral("Wert fehlt"));
    if (input[i] == u'\'' || input[i] == u'#') {
      const QChar q = input[i++];
      QString v;
      bool closed = false;
      while (i < n) {
        if (input[i] == q) {
          if (q == u'\'' && i + 1 < n && input[i + 1] == u'\'') {  // '' is one quote
            v += u'\'';
            i += 2;
            continue;
          }
          closed = true;
          ++i;
          break;
        }
        v += input[i++];
      }
      if (!closed) return fail(QStringLiteral("Anführungszeichen nicht geschlossen"));
      c.text = v;
    } else {
      const qsizetype s = i;
      if (i < n && (input[i] == u'-' || input[i] == u'+')) ++i;
      while (i < n && !input[i].isSpace()) ++i;
      const QString raw = input.mid(s, i - s);
      if (raw.compare(QLatin1String("NULL"), Qt::CaseInsensitive) == 0) {
        c.isNull = true;
      } else {
        bool ok = false;
        c.number = QLocale::c().toDouble(raw, &ok);
        if (!ok) return fail(QStringLiteral("Wert %1 ist keine Zahl").arg(raw));
        c.numeric = true;
        c.text = raw;
      }
    }
    if (c.op == Criterion::Like && (c.numeric || c.isNull)) {
      c.numeric = false;
      c.isNull = false;
    }
    groups->back().push_back(c);
    // Joiner.
    skipSpace();
    if (i >= n) break;
    if (single) return fail(QStringLiteral("nur eine Bedingung ist erlaubt"));
    const QString joiner = readWord();
    if (joiner.compare(QLatin1String("AND"), Qt::CaseInsensitive) == 0) continue;
    if (joiner.compare(QLatin1String("OR"), Qt::CaseInsensitive) == 0) {
      groups->emplace_back();
      continue;
    }
    return fail(QStringLiteral("unerwarteter Text nach dem Wert"));
  }
  return true;
}

bool Recordset::matches(const Row& row, const Criterion& c) const {
  const QVariant& v = row.values[size_t(c.field)];
  const bool null = !v.isValid() || v.isNull();
  if (c.isNull) return (c.op == Criterion::Eq) == null;
  if (null) return false;
  if (c.op == Criterion::Like) {
    if (v.typeId() == QMetaType::QString)
      return likeMatch(*static_cast<const QString*>(v.constData()), c.text, LikeWildcards::Ado);
    return likeMatch(variantText(v), c.text, LikeWildcards::Ado);
  }
  int cmp;
  if (c.numeric && isNumber(v)) {
    const double d = v.toDouble();
    cmp = d < c.number ? -1 : (d > c.number ? 1 : 0);
  } else {
    cmp = compareNoCase(variantText(v), c.text);
  }
  switch (c.op) {
    case Criterion::Eq: return cmp == 0;
    case Criterion::Ne: return cmp != 0;
    case Criterion::Lt: return cmp < 0;
    case Criterion::Gt: return cmp > 0;
    case Criterion::Le: return cmp <= 0;
    case Criterion::Ge: return cmp >= 0;
    default: return false;
  }
}

// --- open, read ---------------------------------------------------------------

Recordset::Recordset() = default;
Recordset::~Recordset() = default;

bool Recordset::Open(const QString& source, Connection& conn) { return Open(source, conn, {}); }

bool Recordset::Open(const QString& source, Connection& conn, const QVariantList& werte) {
  Close();
  error_.clear();
  werte_ = werte;
  conn_ = &conn;
  source_ = source.trimmed();
  if (!conn.isOpen()) {
    error_ = QStringLiteral("Die Verbindung zur Datenbank ist nicht geöffnet.");
    return false;
  }
  const bool isSelect = source_.startsWith(QLatin1String("SELECT"), Qt::CaseInsensitive) &&
                        (source_.size() == 6 || !source_[6].isLetterOrNumber());
  if (isSelect) {
    const SelectShape shape = analyseSelect(source_);
    baseTable_ = shape.table;
    if (shape.ok)
      sql_ = source_.left(shape.insertAt) + u' ' + shape.reference + u'.' + "rowid AS " +
             kRowidAlias + u',' + source_.mid(shape.insertAt);
    else
      sql_ = source_;
  } else {
    baseTable_ = unquoteIdentifier(source_);
    sql_ = QStringLiteral("SELECT rowid AS ") + kRowidAlias + ", * FROM " +
           quoteIdentifier(baseTable_);
  }
  if (!load()) {
    conn_ = nullptr;
    return false;
  }
  open_ = true;
  return true;
}

bool Recordset::load() {
  sqlite3* db = conn_ ? conn_->handle() : nullptr;
  if (!db) {
    error_ = QStringLiteral("Die Verbindung zur Datenbank ist nicht geöffnet.");
    return false;
  }
  sqlite3_stmt* st = nullptr;
  hasRowid_ = sql_ != source_;
  if (prepare(db, sql_, &st) != SQLITE_OK) {
    sqlite3_finalize(st);
    st = nullptr;
    // The rowid can't be had (a view, an unusual statement): read-only rows.
    if (!hasRowid_ || prepare(db, source_, &st) != SQLITE_OK) {
      error_ = sqlitevalues::lastError(db);
      sqlite3_finalize(st);
      return false;
    }
    sql_ = source_;
    hasRowid_ = false;
  }
  for (int i = 0; i < werte_.size(); ++i) {
    if (sqlitevalues::bind(st, i + 1, werte_[i]) != SQLITE_OK) {
      error_ = sqlitevalues::lastError(db);
      sqlite3_finalize(st);
      return false;
    }
  }
  const int first = hasRowid_ ? 1 : 0;
  const int count = sqlite3_column_count(st);
  fields_.clear();
  index_.clear();
  static const QRegularExpression width(QStringLiteral("\\(\\s*(\\d+)\\s*\\)"));
  for (int i = first; i < count; ++i) {
    Field f;
    f.name = QString::fromUtf8(sqlite3_column_name(st, i));
    if (const char* t = sqlite3_column_table_name(st, i)) f.table = QString::fromUtf8(t);
    if (const char* o = sqlite3_column_origin_name(st, i)) f.column = QString::fromUtf8(o);
    if (const char* d = sqlite3_column_decltype(st, i)) f.declaredType = QString::fromUtf8(d);
    const QString upper = f.declaredType.toUpper();
    if (upper.contains(QLatin1String("CHAR")) || upper.contains(QLatin1String("TEXT"))) {
      const auto m = width.match(upper);
      if (m.hasMatch()) f.width = m.captured(1).toInt();
    } else if (upper.contains(QLatin1String("INT"))) {
      f.numeric = f.integer = true;
    } else if (upper.contains(QLatin1String("REAL")) || upper.contains(QLatin1String("FLOA")) ||
               upper.contains(QLatin1String("DOUB")) || upper.contains(QLatin1String("NUM")) ||
               upper.contains(QLatin1String("DEC"))) {
      f.numeric = true;
    }
    const QString key = f.name.toLower();
    if (!index_.contains(key)) index_.insert(key, int(fields_.size()));
    fields_.push_back(f);
  }
  rows_.clear();
  int rc;
  while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    Row r;
    r.rowid = hasRowid_ ? sqlite3_column_int64(st, 0) : 0;
    r.values.reserve(fields_.size());
    for (int i = first; i < count; ++i) r.values.push_back(column(st, i));
    rows_.push_back(std::move(r));
  }
  if (rc != SQLITE_DONE) {
    error_ = sqlitevalues::lastError(db);
    sqlite3_finalize(st);
    rows_.clear();
    return false;
  }
  sqlite3_finalize(st);
  changed_.assign(fields_.size(), false);
  mode_ = EditMode::None;
  onDeleted_ = false;
  visible_.resize(rows_.size());
  for (size_t i = 0; i < rows_.size(); ++i) visible_[i] = int(i);
  if (!filter_.isEmpty()) {
    const QString f = filter_;
    open_ = true;
    if (!setFilter(f)) filter_.clear();
  }
  cur_ = visible_.empty() ? 0 : 0;
  return true;
}

void Recordset::Close() {
  open_ = false;
  conn_ = nullptr;
  rows_.clear();
  visible_.clear();
  fields_.clear();
  index_.clear();
  filter_.clear();
  mode_ = EditMode::None;
  onDeleted_ = false;
  cur_ = -1;
}

bool Recordset::Requery() {
  if (!open_ || !conn_) {
    error_ = QStringLiteral("Der Datensatz ist nicht geöffnet.");
    return false;
  }
  if (mode_ != EditMode::None && !Update()) CancelUpdate();
  if (!load()) {
    open_ = false;
    return false;
  }
  return true;
}

// --- position -------------------------------------------------------------------

bool Recordset::onRow() const {
  return open_ && !onDeleted_ && cur_ >= 0 && cur_ < int(visible_.size());
}

Recordset::Row* Recordset::currentRow() {
  if (mode_ != EditMode::None) return &pending_;
  return onRow() ? &rows_[size_t(visible_[size_t(cur_)])] : nullptr;
}

const Recordset::Row* Recordset::currentRow() const {
  if (mode_ != EditMode::None) return &pending_;
  return onRow() ? &rows_[size_t(visible_[size_t(cur_)])] : nullptr;
}

bool Recordset::isBOF() const {
  if (!open_) return true;
  if (mode_ == EditMode::Adding) return false;
  return visible_.empty() || cur_ < 0;
}

bool Recordset::isEOF() const {
  if (!open_) return true;
  if (mode_ == EditMode::Adding) return false;
  return visible_.empty() || cur_ >= int(visible_.size());
}

int Recordset::AbsolutePosition() const {
  if (!open_ || visible_.empty() || onDeleted_) return adPosUnknown;
  if (cur_ < 0) return adPosBOF;
  if (cur_ >= int(visible_.size())) return adPosEOF;
  return cur_ + 1;
}

bool Recordset::setAbsolutePosition(int position) {
  if (!open_ || position < 1 || position > int(visible_.size())) return false;
  if (!leaveRow()) return false;
  cur_ = position - 1;
  onDeleted_ = false;
  return true;
}

bool Recordset::leaveRow() {
  if (mode_ == EditMode::None) return true;
  return Update();
}

void Recordset::MoveFirst() {
  if (!open_) return;
  leaveRow();
  onDeleted_ = false;
  cur_ = 0;
}

void Recordset::MoveLast() {
  if (!open_) return;
  leaveRow();
  onDeleted_ = false;
  cur_ = visible_.empty() ? 0 : int(visible_.size()) - 1;
}

void Recordset::MoveNext() {
  if (!open_) return;
  leaveRow();
  if (onDeleted_) {
    onDeleted_ = false;  // the next row has taken the deleted one's place
    return;
  }
  if (cur_ < int(visible_.size())) ++cur_;
}

void Recordset::MovePrevious() {
  if (!open_) return;
  leaveRow();
  onDeleted_ = false;
  if (cur_ >= 0) --cur_;
}

void Recordset::Move(int rows) {
  if (!open_ || rows == 0) return;
  leaveRow();
  int target = cur_ + rows;
  if (onDeleted_ && rows > 0) --target;
  onDeleted_ = false;
  cur_ = qBound(-1, target, int(visible_.size()));
}

// --- search -----------------------------------------------------------------------

bool Recordset::Find(const QString& criteria, int skip, Direction direction) {
  error_.clear();
  if (!open_ || visible_.empty()) return false;
  std::vector<std::vector<Criterion>> groups;
  if (!parseCriteria(criteria, &groups, true)) return false;
  if (!leaveRow()) return false;
  const Criterion& c = groups.front().front();
  const int n = int(visible_.size());
  int i;
  if (direction == Direction::Forward) {
    if (cur_ >= n && !onDeleted_) return false;
    i = (cur_ < 0 ? 0 : cur_) + (onDeleted_ ? 0 : skip);
    onDeleted_ = false;
    for (; i < n; ++i) {
      if (matches(rows_[size_t(visible_[size_t(i)])], c)) {
        cur_ = i;
        return true;
      }
    }
    cur_ = n;
  } else {
    if (cur_ < 0) return false;
    i = qMin(cur_, n) - skip - (onDeleted_ ? 1 : 0);
    if (cur_ >= n) i = n - 1 - qMax(0, skip - 1);
    onDeleted_ = false;
    for (; i >= 0; --i) {
      if (matches(rows_[size_t(visible_[size_t(i)])], c)) {
        cur_ = i;
        return true;
      }
    }
    cur_ = -1;
  }
  return false;
}

bool Recordset::setFilter(const QString& criteria) {
  if (!open_) {
    error_ = QStringLiteral("Der Datensatz ist nicht geöffnet.");
    return false;
  }
  if (!leaveRow()) return false;
  std::vector<std::vector<Criterion>> groups;
  const QString trimmed = criteria.trimmed();
  if (!trimmed.isEmpty() && trimmed != QLatin1String("0") && !parseCriteria(trimmed, &groups, false))
    return false;
  visible_.clear();
  for (size_t r = 0; r < rows_.size(); ++r) {
    bool take = groups.empty();
    for (const auto& g : groups) {
      bool all = true;
      for (const Criterion& c : g)
        if (!matches(rows_[r], c)) {
          all = false;
          break;
        }
      if (all) {
        take = true;
        break;
      }
    }
    if (take) visible_.push_back(int(r));
  }
  filter_ = groups.empty() ? QString() : trimmed;
  cur_ = 0;
  onDeleted_ = false;
  return true;
}

// --- fields -------------------------------------------------------------------------

int Recordset::fieldIndex(const QString& field) const {
  return index_.value(field.toLower(), -1);
}

QString Recordset::fieldName(int index) const {
  return index >= 0 && index < int(fields_.size()) ? fields_[size_t(index)].name : QString();
}

int Recordset::fieldWidth(const QString& field) const {
  const int i = fieldIndex(field);
  return i < 0 ? -1 : fields_[size_t(i)].width;
}

QVariant Recordset::value(int index) const {
  const Row* r = currentRow();
  if (!r || index < 0 || index >= int(r->values.size())) return {};
  return r->values[size_t(index)];
}

QVariant Recordset::value(const QString& field) const {
  const int i = fieldIndex(field);
  if (i < 0) {
    if (open_ && !isOptionalColumn(field.toLower()))
      subErrorAllgemein(true, QStringLiteral("Recordset"),
                        QStringLiteral("Das Feld %1 ist nicht im Datensatz (%2).").arg(field, source_));
    return {};
  }
  return value(i);
}

QString Recordset::text(const QString& field) const {
  const QVariant v = value(field);
  if (!v.isValid() || v.isNull()) return {};
  return variantText(v);
}

int64_t Recordset::rowid() const {
  const Row* r = currentRow();
  return r ? r->rowid : 0;
}

// --- changes ---------------------------------------------------------------------

bool Recordset::coerce(const Field& f, const QVariant& in, QVariant* out, QString* why) const {
  if (!in.isValid() || in.isNull()) {
    *out = QVariant();
    return true;
  }
  if (f.numeric) {
    double d = 0;
    if (isNumber(in) || in.typeId() == QMetaType::Bool) {
      d = in.toDouble();
    } else {
      const QString s = in.toString().trimmed();
      if (s.isEmpty()) {
        *out = QVariant();
        return true;
      }
      bool ok = false;
      d = QLocale::c().toDouble(s, &ok);
      if (!ok) d = QLocale::c().toDouble(QString(s).replace(u',', u'.'), &ok);
      if (!ok) {
        *why = QStringLiteral("Der Wert \"%1\" passt nicht in das Zahlenfeld %2.").arg(s, f.name);
        return false;
      }
    }
    if (f.integer)
      *out = QVariant(qlonglong(qRound64(d)));
    else
      *out = QVariant(d);
    return true;
  }
  if (!f.declaredType.isEmpty() && in.typeId() != QMetaType::QString &&
      in.typeId() != QMetaType::QByteArray) {
    *out = QVariant(variantText(in));
    return true;
  }
  *out = in;
  return true;
}

bool Recordset::AddNew() {
  if (!open_) {
    error_ = QStringLiteral("Der Datensatz ist nicht geöffnet.");
    return false;
  }
  if (!leaveRow()) return false;
  if (!hasRowid_ || baseTable_.isEmpty()) {
    error_ = QStringLiteral("In diesen Datensatz kann nicht geschrieben werden.");
    return false;
  }
  pending_ = Row{};
  pending_.values.assign(fields_.size(), QVariant());
  changed_.assign(fields_.size(), false);
  mode_ = EditMode::Adding;
  onDeleted_ = false;
  return true;
}

bool Recordset::setValue(const QString& field, const QVariant& v) {
  const int i = fieldIndex(field);
  if (i < 0) {
    error_ = QStringLiteral("Das Feld %1 ist nicht im Datensatz.").arg(field);
    subErrorAllgemein(false, QStringLiteral("Recordset.Feld"), error_);
    return false;
  }
  if (mode_ == EditMode::None) {
    if (!onRow()) {
      error_ = QStringLiteral("Kein aktueller Datensatz.");
      subErrorAllgemein(false, QStringLiteral("Recordset.Feld"), error_);
      return false;
    }
    pending_ = rows_[size_t(visible_[size_t(cur_)])];
    changed_.assign(fields_.size(), false);
    mode_ = EditMode::Editing;
  }
  QVariant coerced;
  QString why;
  if (!coerce(fields_[size_t(i)], v, &coerced, &why)) {
    error_ = why;
    subErrorAllgemein(false, QStringLiteral("Recordset.Feld"), why);
    return false;
  }
  pending_.values[size_t(i)] = coerced;
  changed_[size_t(i)] = true;
  return true;
}

void Recordset::CancelUpdate() {
  mode_ = EditMode::None;
  changed_.assign(fields_.size(), false);
}

bool Recordset::Update(const QString& field, const QVariant& v) {
  return setValue(field, v) && Update();
}

bool Recordset::Update() {
  if (mode_ == EditMode::None) return true;
  const QString routine = QStringLiteral("Recordset.Update");
  auto refuse = [&](const QString& why) {
    error_ = why;
    CancelUpdate();
    subErrorAllgemein(false, routine, why);
    return false;
  };
  sqlite3* db = conn_ ? conn_->handle() : nullptr;
  if (!db) return refuse(QStringLiteral("Die Verbindung zur Datenbank ist nicht geöffnet."));
  if (!hasRowid_ || baseTable_.isEmpty())
    return refuse(QStringLiteral("In diesen Datensatz (%1) kann nicht geschrieben werden.").arg(source_));
  std::vector<int> cols;
  for (size_t i = 0; i < fields_.size(); ++i) {
    if (!changed_[i]) continue;
    const Field& f = fields_[i];
    if (f.column.isEmpty() || f.table.compare(baseTable_, Qt::CaseInsensitive) != 0)
      return refuse(QStringLiteral("Das Feld %1 kann nicht geändert werden.").arg(f.name));
    const QVariant& v = pending_.values[i];
    if (f.width >= 0 && v.typeId() == QMetaType::QString &&
        static_cast<const QString*>(v.constData())->size() > f.width)
      return refuse(QStringLiteral("Der Text für das Feld %1 ist länger als %2 Zeichen.")
                        .arg(f.name)
                        .arg(f.width));
    cols.push_back(int(i));
  }
  QString sql;
  if (mode_ == EditMode::Adding) {
    if (cols.empty()) {
      sql = QStringLiteral("INSERT INTO ") + quoteIdentifier(baseTable_) + " DEFAULT VALUES";
    } else {
      QStringList names, marks;
      for (int i : cols) {
        names << quoteIdentifier(fields_[size_t(i)].column);
        marks << QStringLiteral("?");
      }
      sql = QStringLiteral("INSERT INTO ") + quoteIdentifier(baseTable_) + " (" + names.join(", ") +
            ") VALUES (" + marks.join(", ") + ")";
    }
  } else {
    if (cols.empty()) {
      CancelUpdate();
      return true;
    }
    QStringList sets, checks;
    for (int i : cols) {
      sets << quoteIdentifier(fields_[size_t(i)].column) + " = ?";
      checks << quoteIdentifier(fields_[size_t(i)].column) + " IS ?";
    }
    sql = QStringLiteral("UPDATE ") + quoteIdentifier(baseTable_) + " SET " + sets.join(", ") +
          " WHERE rowid = ? AND " + checks.join(" AND ");
  }
  sqlite3_stmt* st = nullptr;
  if (prepare(db, sql, &st) != SQLITE_OK) {
    sqlite3_finalize(st);
    return refuse(sqlitevalues::lastError(db));
  }
  int p = 1;
  for (int i : cols) bind(st, p++, pending_.values[size_t(i)]);
  if (mode_ == EditMode::Editing) {
    const Row& old = rows_[size_t(visible_[size_t(cur_)])];
    sqlite3_bind_int64(st, p++, old.rowid);
    for (int i : cols) bind(st, p++, old.values[size_t(i)]);
  }
  const int rc = sqlite3_step(st);
  sqlite3_finalize(st);
  if (rc != SQLITE_DONE) return refuse(sqlitevalues::lastError(db));

  // Read the row back as the database holds it (defaults, the new key).
  auto reread = [&](Row& r) {
    QStringList names;
    std::vector<int> idx;
    for (size_t i = 0; i < fields_.size(); ++i) {
      if (fields_[i].column.isEmpty() || fields_[i].table.compare(baseTable_, Qt::CaseInsensitive) != 0)
        continue;
      names << quoteIdentifier(fields_[i].column);
      idx.push_back(int(i));
    }
    if (names.isEmpty()) return true;
    sqlite3_stmt* q = nullptr;
    if (prepare(db, QStringLiteral("SELECT ") + names.join(", ") + " FROM " +
                        quoteIdentifier(baseTable_) + " WHERE rowid = ?",
                &q) != SQLITE_OK) {
      sqlite3_finalize(q);
      return false;
    }
    sqlite3_bind_int64(q, 1, r.rowid);
    bool found = false;
    if (sqlite3_step(q) == SQLITE_ROW) {
      found = true;
      for (size_t k = 0; k < idx.size(); ++k) r.values[size_t(idx[k])] = column(q, int(k));
    }
    sqlite3_finalize(q);
    return found;
  };

  if (mode_ == EditMode::Adding) {
    pending_.rowid = sqlite3_last_insert_rowid(db);
    reread(pending_);
    rows_.push_back(pending_);
    visible_.push_back(int(rows_.size()) - 1);
    cur_ = int(visible_.size()) - 1;
    CancelUpdate();
    return true;
  }
  Row& row = rows_[size_t(visible_[size_t(cur_)])];
  if (sqlite3_changes(db) == 0) {
    // Optimistic lock: the row is not as it was read. Show what is there now.
    const bool still = reread(row);
    CancelUpdate();
    error_ = still ? QStringLiteral("Der Datensatz wurde inzwischen von einem anderen Benutzer "
                                    "geändert; er wird neu gelesen.")
                   : QStringLiteral("Der Datensatz wurde inzwischen von einem anderen Benutzer "
                                    "gelöscht.");
    subErrorAllgemein(false, routine, error_);
    return false;
  }
  for (int i : cols) row.values[size_t(i)] = pending_.values[size_t(i)];
  CancelUpdate();
  return true;
}

bool Recordset::Delete() {
  if (mode_ == EditMode::Adding) {
    CancelUpdate();
    return true;
  }
  CancelUpdate();
  if (!onRow()) {
    error_ = QStringLiteral("Kein aktueller Datensatz zum Löschen.");
    return false;
  }
  sqlite3* db = conn_ ? conn_->handle() : nullptr;
  if (!db || !hasRowid_ || baseTable_.isEmpty()) {
    error_ = QStringLiteral("Aus diesem Datensatz kann nicht gelöscht werden.");
    return false;
  }
  sqlite3_stmt* st = nullptr;
  if (prepare(db, QStringLiteral("DELETE FROM ") + quoteIdentifier(baseTable_) + " WHERE rowid = ?",
              &st) != SQLITE_OK) {
    error_ = sqlitevalues::lastError(db);
    sqlite3_finalize(st);
    return false;
  }
  const int r = visible_[size_t(cur_)];
  sqlite3_bind_int64(st, 1, rows_[size_t(r)].rowid);
  const int rc = sqlite3_step(st);
  sqlite3_finalize(st);
  if (rc != SQLITE_DONE) {
    error_ = sqlitevalues::lastError(db);
    return false;
  }
  rows_.erase(rows_.begin() + r);
  visible_.erase(visible_.begin() + cur_);
  for (int& v : visible_)
    if (v > r) --v;
  onDeleted_ = true;
  return true;
}

}  // namespace kolvane

#include "jetsql.h"

#include <QRegularExpression>

namespace kolvane {

QString textColumnType(int width) {
  return QStringLiteral("TEXT(%1) COLLATE NOCASE").arg(width);
}

namespace {

// Translates one stretch of SQL that holds no quoted text.
QString translatePlain(const QString& part) {
  static const QRegularExpression text(QStringLiteral("\\b(?:TEXT|VARCHAR|CHAR)\\s*\\(\\s*(\\d+)\\s*\\)(?!\\s*COLLATE)"),
                                       QRegularExpression::CaseInsensitiveOption);
  static const QRegularExpression counter(QStringLiteral("\\bCOUNTER\\b"),
                                          QRegularExpression::CaseInsensitiveOption);
  static const QRegularExpression shortType(QStringLiteral("\\bSHORT\\b"),
                                            QRegularExpression::CaseInsensitiveOption);
  static const QRegularExpression longType(QStringLiteral("\\bLONG\\b"),
                                           QRegularExpression::CaseInsensitiveOption);
  QString s;
  qsizetype last = 0;
  auto it = text.globalMatch(part);
  while (it.hasNext()) {
    const auto m = it.next();
    s += part.mid(last, m.capturedStart() - last);
    s += textColumnType(m.captured(1).toInt());
    last = m.capturedEnd();
  }
  s += part.mid(last);
  // "COUNTER" only as a type: an autoincrement key.
  s.replace(counter, QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT"));
  s.replace(shortType, QStringLiteral("SMALLINT"));
  s.replace(longType, QStringLiteral("INTEGER"));
  return s;
}

}  // namespace

QString translateJetSql(const QString& sql) {
  QString out;
  QString plain;
  for (qsizetype i = 0; i < sql.size(); ++i) {
    const QChar c = sql[i];
    QChar close;
    if (c == u'\'') close = u'\'';
    else if (c == u'"') close = u'"';
    else if (c == u'[') close = u']';
    if (close.isNull()) {
      plain += c;
      continue;
    }
    out += translatePlain(plain);
    plain.clear();
    qsizetype j = i + 1;
    while (j < sql.size() && sql[j] != close) ++j;
    out += sql.mid(i, j - i + 1);
    i = j;
  }
  out += translatePlain(plain);
  return out;
}

}  // namespace kolvane

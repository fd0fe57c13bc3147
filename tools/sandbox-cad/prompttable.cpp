#include "prompttable.h"

#include "prompts_data.h"

namespace sandbox {

namespace {

QString capitals(const QString& word) {
  QString c;
  for (const QChar ch : word)
    if (ch.isUpper()) c += ch;
  return c;
}

bool fits(const QString& typed, const QString& keyword) {
  if (keyword.isEmpty()) return false;
  if (typed.compare(keyword, Qt::CaseInsensitive) == 0) return true;
  const QString caps = capitals(keyword);
  if (caps.isEmpty()) return false;
  if (typed.compare(caps, Qt::CaseInsensitive) == 0) return true;
  // "Properties": "P", "Pr", "Prop" ... all fit, since the abbreviation leads.
  return keyword.startsWith(caps) && typed.size() >= caps.size() &&
         keyword.startsWith(typed, Qt::CaseInsensitive);
}

}  // namespace

QList<Keyword> parseKeywords(const QString& text) {
  QList<Keyword> out;
  for (const QString& item : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
    const qsizetype bar = item.indexOf(QLatin1Char('|'));
    if (bar < 0)
      out.append(Keyword{item, item});
    else
      out.append(Keyword{item.left(bar), item.mid(bar + 1)});
  }
  return out;
}

int matchKeyword(const QString& typed, const QList<Keyword>& keywords, Language language) {
  QString t = typed.trimmed();
  bool global = language == Language::English;
  if (t.startsWith(QLatin1Char('_'))) {
    t.remove(0, 1);
    global = true;
  }
  if (t.isEmpty()) return -1;
  int found = -1, count = 0, leading = -1, leadingCount = 0;
  for (int i = 0; i < keywords.size(); ++i) {
    const QString& name = global ? keywords[i].global : keywords[i].local;
    if (t.compare(name, Qt::CaseInsensitive) == 0) return i;  // the whole name decides
    if (fits(t, name)) {
      found = i;
      ++count;
      if (name.startsWith(t, Qt::CaseInsensitive)) {
        leading = i;
        ++leadingCount;
      }
    }
  }
  if (count == 1) return found;
  // "F" for Farbe before ltFaktor: a word that begins the keyword wins.
  return leadingCount == 1 ? leading : -1;
}

bool PromptTable::parse(const QString& text, QString* error) {
  QList<PromptRow> rows;
  int number = 0;
  for (const QString& raw : text.split(QLatin1Char('\n'))) {
    ++number;
    const QString line = raw.endsWith(QLatin1Char('\r')) ? raw.chopped(1) : raw;
    if (line.trimmed().isEmpty() || line.startsWith(QLatin1Char('#'))) continue;
    const QStringList f = line.split(QLatin1Char('\t'));
    if (f.size() != 8 || f[0].isEmpty() || f[1].isEmpty() || f[7].isEmpty()) {
      if (error)
        *error = QStringLiteral("prompts.tsv, line %1: eight fields expected (command, key, de, "
                                "en, keywords, default, condition, source)")
                     .arg(number);
      return false;
    }
    rows.append(PromptRow{f[0], f[1], f[2], f[3], parseKeywords(f[4]), f[5], f[6], f[7]});
  }
  rows_ = rows;
  return true;
}

const PromptTable& PromptTable::instance() {
  static const PromptTable table = [] {
    PromptTable t;
    QString error;
    if (!t.parse(QString::fromUtf8(kPromptsTsv), &error)) qFatal("%s", qPrintable(error));
    return t;
  }();
  return table;
}

const PromptRow* PromptTable::find(const QString& command, const QString& key) const {
  for (const PromptRow& r : rows_)
    if (r.command == command && r.key == key) return &r;
  return nullptr;
}

}  // namespace sandbox

#include "inifile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSaveFile>

#include "codepage.h"

namespace kolvane {

namespace {

struct Line {
  enum Kind { Other, Section, Pair } kind = Other;
  QString text;     // the line as it stands
  QString name;     // section name or key, as written
  QString value;    // for pairs, trimmed and unquoted
};

QString unquote(QString v) {
  v = v.trimmed();
  if (v.size() >= 2 && ((v.front() == '"' && v.back() == '"') || (v.front() == '\'' && v.back() == '\'')))
    v = v.mid(1, v.size() - 2);
  return v;
}

QList<Line> parse(const QString& text) {
  QList<Line> lines;
  const QStringList raw = text.split('\n');
  for (int i = 0; i < raw.size(); ++i) {
    QString s = raw[i];
    if (s.endsWith('\r')) s.chop(1);
    if (i == raw.size() - 1 && s.isEmpty()) break;  // text ended with a line end
    Line l;
    l.text = s;
    const QString t = s.trimmed();
    if (t.startsWith('[')) {
      const int close = t.indexOf(']');
      l.kind = Line::Section;
      l.name = (close > 0 ? t.mid(1, close - 1) : t.mid(1)).trimmed();
    } else if (!t.startsWith(';')) {
      const int eq = s.indexOf('=');
      if (eq > 0 && !s.left(eq).trimmed().isEmpty()) {
        l.kind = Line::Pair;
        l.name = s.left(eq).trimmed();
        l.value = unquote(s.mid(eq + 1));
      }
    }
    lines.append(l);
  }
  return lines;
}

QList<Line> readLines(const QString& datei, bool* exists = nullptr) {
  QFile f(datei);
  if (!f.open(QIODevice::ReadOnly)) {
    if (exists) *exists = false;
    return {};
  }
  if (exists) *exists = true;
  return parse(decodeTextFile(f.readAll()));
}

bool writeLines(const QString& datei, const QList<Line>& lines) {
  const QFileInfo fi(datei);
  if (!QDir().mkpath(fi.absolutePath())) return false;
  QString out;
  for (const Line& l : lines) {
    out += l.text;
    out += "\r\n";
  }
  QSaveFile f(datei);
  if (!f.open(QIODevice::WriteOnly)) return false;
  f.write(out.toUtf8());
  return f.commit();
}

bool same(const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

// Index of the section header, -1 when absent.
int findSection(const QList<Line>& lines, const QString& sektion) {
  for (int i = 0; i < lines.size(); ++i)
    if (lines[i].kind == Line::Section && same(lines[i].name, sektion)) return i;
  return -1;
}

// End of a section's body: the next header or the end.
int sectionEnd(const QList<Line>& lines, int header) {
  int i = header + 1;
  while (i < lines.size() && lines[i].kind != Line::Section) ++i;
  return i;
}

}  // namespace

IniData IniData::load(const QString& datei) {
  IniData d;
  const QList<Line> lines = readLines(datei, &d.exists_);
  QString section;
  for (const Line& l : lines) {
    if (l.kind == Line::Section) {
      section = l.name.toLower();
    } else if (l.kind == Line::Pair) {
      d.entries_.append({section, l.name.toLower(), l.name, l.value});
    }
  }
  return d;
}

QString IniData::value(const QString& sektion, const QString& schluessel) const {
  const QString s = sektion.toLower(), k = schluessel.toLower();
  for (const Entry& e : entries_)
    if (e.section == s && e.key == k) return e.value;
  return {};
}

QStringList IniData::keys(const QString& sektion) const {
  QStringList out;
  const QString s = sektion.toLower();
  for (const Entry& e : entries_)
    if (e.section == s) out << e.keyAsWritten;
  return out;
}

QString IniGetValue(const QString& datei, const QString& sektion, const QString& schluessel) {
  const QList<Line> lines = readLines(datei);
  const int h = findSection(lines, sektion);
  if (h < 0) return {};
  const int end = sectionEnd(lines, h);
  for (int i = h + 1; i < end; ++i)
    if (lines[i].kind == Line::Pair && same(lines[i].name, schluessel)) return lines[i].value;
  return {};
}

int16_t fctIniInteger(const QString& datei, const QString& sektion, const QString& schluessel) {
  bool ok = false;
  const int v = IniGetValue(datei, sektion, schluessel).toInt(&ok);
  if (!ok || v < INT16_MIN || v > INT16_MAX) return 0;
  return int16_t(v);
}

uint8_t fctIniByte(const QString& datei, const QString& sektion, const QString& schluessel) {
  bool ok = false;
  const int v = IniGetValue(datei, sektion, schluessel).toInt(&ok);
  if (!ok || v < 0 || v > 255) return 0;
  return uint8_t(v);
}

bool IniSetValue(const QString& datei, const QString& sektion, const QString& schluessel,
                 const QString& wert) {
  QList<Line> lines = readLines(datei);
  Line pair;
  pair.kind = Line::Pair;
  pair.name = schluessel;
  pair.value = wert;
  pair.text = schluessel + "=" + wert;
  int h = findSection(lines, sektion);
  if (h < 0) {
    Line head;
    head.kind = Line::Section;
    head.name = sektion;
    head.text = "[" + sektion + "]";
    lines.append(head);
    lines.append(pair);
    return writeLines(datei, lines);
  }
  const int end = sectionEnd(lines, h);
  for (int i = h + 1; i < end; ++i) {
    if (lines[i].kind == Line::Pair && same(lines[i].name, schluessel)) {
      pair.name = lines[i].name;
      pair.text = lines[i].name + "=" + wert;
      lines[i] = pair;
      return writeLines(datei, lines);
    }
  }
  // After the last non-empty line of the section, so blank separators stay below it.
  int at = end;
  while (at > h + 1 && lines[at - 1].text.trimmed().isEmpty()) --at;
  lines.insert(at, pair);
  return writeLines(datei, lines);
}

bool IniDeleteKey(const QString& datei, const QString& sektion, const QString& schluessel) {
  QList<Line> lines = readLines(datei);
  const int h = findSection(lines, sektion);
  if (h < 0) return true;
  const int end = sectionEnd(lines, h);
  for (int i = h + 1; i < end; ++i) {
    if (lines[i].kind == Line::Pair && same(lines[i].name, schluessel)) {
      lines.removeAt(i);
      return writeLines(datei, lines);
    }
  }
  return true;
}

bool subIniSektionLoeschen(const QString& datei, const QString& sektion) {
  QList<Line> lines = readLines(datei);
  const int h = findSection(lines, sektion);
  if (h < 0) return true;
  lines.erase(lines.begin() + h, lines.begin() + sectionEnd(lines, h));
  return writeLines(datei, lines);
}

int16_t fctAnzahlIniEintraege(const QString& datei, const QString& sektion,
                              const QString& praefix) {
  const IniData d = IniData::load(datei);
  int16_t n = 0;
  while (n < INT16_MAX && !d.value(sektion, praefix + QString::number(n + 1)).isEmpty()) ++n;
  return n;
}

void subAryInIniSpeichern(const QStringList& ary, const QString& datei, const QString& sektion,
                          const QString& praefix, bool ohneLoeschen) {
  if (!ohneLoeschen) subIniSektionLoeschen(datei, sektion);
  for (int i = 0; i < ary.size(); ++i) IniSetValue(datei, sektion, praefix + QString::number(i), ary[i]);
}

QStringList fctIniSchluessel(const QString& datei, const QString& sektion) {
  return IniData::load(datei).keys(sektion);
}

}  // namespace kolvane

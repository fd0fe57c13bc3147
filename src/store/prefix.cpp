#include "prefix.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include "codepage.h"
#include "diagnostics.h"
#include "paths.h"
#include "settings.h"

namespace kolvane {

namespace {

struct Tabelle {
  QDateTime geaendert;
  qint64 groesse = -1;
  QStringList items;
  QString fehler;  // "" when the table is good
  QHash<QString, int32_t> zeileVon;  // upper-case item -> line
};

QHash<QString, Tabelle>& cache() {
  static QHash<QString, Tabelle> c;
  return c;
}

// Items as the old sequential input read them: an item ends at a comma or a
// line end, blanks around it go, one pair of quotes is removed.
QStringList parseItems(const QString& content) {
  QStringList items;
  QString cur;
  bool quoted = false, inItem = false;
  auto finish = [&] {
    QString s = cur.trimmed();
    if (s.size() >= 2 && s.front() == u'"' && s.back() == u'"') s = s.mid(1, s.size() - 2);
    items << s;
    cur.clear();
    inItem = false;
  };
  for (qsizetype i = 0; i < content.size(); ++i) {
    const QChar c = content[i];
    if (c == u'"') quoted = !quoted;
    if (!quoted && (c == u',' || c == u'\n' || c == u'\r')) {
      if (c == u'\r' && i + 1 < content.size() && content[i + 1] == u'\n') ++i;
      finish();
      continue;
    }
    cur += c;
    inItem = true;
  }
  if (inItem && !cur.trimmed().isEmpty()) finish();
  // Blank lines at the end are no items.
  while (!items.isEmpty() && items.last().isEmpty()) items.removeLast();
  return items;
}

QString pruefen(const QStringList& items, QHash<QString, int32_t>* zeileVon) {
  static const QString verboten = QStringLiteral("%_*'[]");
  if (items.size() < kPrefixMindestAnzahl)
    return QStringLiteral("Die Tabelle hat %1 Einträge, gebraucht werden %2.")
        .arg(items.size())
        .arg(kPrefixMindestAnzahl);
  zeileVon->reserve(items.size());
  for (int32_t i = 0; i < items.size(); ++i) {
    const QString& s = items[i];
    if (s.size() != 3)
      return QStringLiteral("Zeile %1 (\"%2\") hat nicht drei Zeichen.").arg(i + 1).arg(s);
    for (QChar c : s)
      if (verboten.contains(c))
        return QStringLiteral("Zeile %1 (\"%2\") enthält ein verbotenes Zeichen.").arg(i + 1).arg(s);
    const QString key = s.toUpper();
    if (zeileVon->contains(key))
      return QStringLiteral("Zeile %1 (\"%2\") gleicht Zeile %3.")
          .arg(i + 1)
          .arg(s)
          .arg(zeileVon->value(key) + 1);
    zeileVon->insert(key, i);
  }
  return {};
}

// The table of a file, parsed and checked when the file changed on disk.
const Tabelle* laden(const QString& datei, QString* fehler) {
  Trace t(QStringLiteral("fctPrefixEinlesen"));
  t.step(QStringLiteral("Open :") + datei);
  const QFileInfo fi(datei);
  if (!fi.isFile()) {
    *fehler = QStringLiteral("Die Datei %1 fehlt.").arg(datei);
    return nullptr;
  }
  Tabelle& tab = cache()[fi.absoluteFilePath()];
  if (tab.groesse != fi.size() || tab.geaendert != fi.lastModified()) {
    QFile f(datei);
    if (!f.open(QIODevice::ReadOnly)) {
      *fehler = QStringLiteral("Die Datei %1 kann nicht gelesen werden.").arg(datei);
      cache().remove(fi.absoluteFilePath());
      return nullptr;
    }
    tab = Tabelle{};
    tab.items = parseItems(fromWindows1252(f.readAll()));
    tab.fehler = pruefen(tab.items, &tab.zeileVon);
    tab.groesse = fi.size();
    tab.geaendert = fi.lastModified();
  }
  if (!tab.fehler.isEmpty()) {
    *fehler = QStringLiteral("Die Tabelle %1 ist nicht brauchbar: %2").arg(datei, tab.fehler);
    return nullptr;
  }
  return &tab;
}

}  // namespace

QString prefixDatei() {
  const Settings* s = currentSettings();
  const QString dir = s ? s->programDir() : QString();
  return fctDateiFinden(fctPfadZusammenfuegen(dir, QStringLiteral("txtPrefix.txt")));
}

int32_t fctPrefixZeile(int32_t slot) {
  if (slot <= kSlotsJeDurchlauf) return slot;
  const int32_t durchlauf = (slot - 1) / kSlotsJeDurchlauf + 1;
  return slot - (durchlauf - 1) * kSlotsJeDurchlauf - 1;
}

bool fctPrefixEinlesen(int32_t obergrenze, QStringList& aryPrefix) {
  return fctPrefixEinlesen(obergrenze, aryPrefix, prefixDatei());
}

bool fctPrefixEinlesen(int32_t obergrenze, QStringList& aryPrefix, const QString& datei) {
  aryPrefix.clear();
  QString fehler;
  const Tabelle* tab = laden(datei, &fehler);
  if (!tab) {
    subErrorAllgemein(false, QStringLiteral("fctPrefixEinlesen"), fehler);
    return false;
  }
  if (obergrenze < 0) return true;
  aryPrefix.reserve(obergrenze + 1);
  for (int32_t i = 0; i <= obergrenze; ++i) aryPrefix << tab->items[fctPrefixZeile(i)];
  return true;
}

bool fctPrefixTabellePruefen(const QString& datei) {
  QString fehler;
  if (laden(datei.isEmpty() ? prefixDatei() : datei, &fehler)) return true;
  subErrorAllgemein(false, QStringLiteral("fctPrefixEinlesen"), fehler);
  return false;
}

QString fctBlockCode(const QString& ordnerNr, int32_t slot, const QStringList& aryPrefix) {
  if (slot < 0 || slot >= aryPrefix.size()) return {};
  return ordnerNr + QString::number(slot / kSlotsJeDurchlauf) + aryPrefix[slot];
}

int32_t fctSlotAusBlockCode(const QString& block, const QString& datei) {
  if (block.size() < 7) return -1;
  QString fehler;
  const Tabelle* tab = laden(datei.isEmpty() ? prefixDatei() : datei, &fehler);
  if (!tab) return -1;
  bool ok = false;
  const int32_t ziffer = block.mid(3, block.size() - 6).toInt(&ok);
  const auto it = tab->zeileVon.constFind(block.right(3).toUpper());
  if (!ok || ziffer < 0 || it == tab->zeileVon.constEnd()) return -1;
  const int32_t zeile = *it;
  // Slot candidates of that line: the first pass, and the pass of the digit
  // and the one before it (a pass spans two digits).
  QList<int64_t> kandidaten{zeile};
  for (int64_t d : {int64_t(ziffer), int64_t(ziffer) + 1})
    if (d >= 2) kandidaten << (d - 1) * kSlotsJeDurchlauf + 1 + zeile;
  for (int64_t k : kandidaten)
    if (k >= 0 && k <= INT32_MAX && k / kSlotsJeDurchlauf == ziffer &&
        fctPrefixZeile(int32_t(k)) == zeile)
      return int32_t(k);
  return -1;
}

}  // namespace kolvane

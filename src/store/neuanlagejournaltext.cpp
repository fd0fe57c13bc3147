// The journal's text: one "key=value" a line, UTF-8; the moves as
// "Datei=<temporary file><TAB><place in the library>".
#include "neuanlagejournal.h"

namespace kolvane {

QByteArray fctJournalAlsText(const NeuanlageJournal& j) {
  QString text = QStringLiteral("Block=") + j.block + u'\n' + QStringLiteral("Ansicht=") +
                 QString::number(j.ansicht) + u'\n' + QStringLiteral("Variante=") +
                 (j.variante ? u'1' : u'0') + u'\n' + QStringLiteral("VariaName=") + j.variaName +
                 u'\n' + QStringLiteral("Ersetzen=") + (j.ersetzen ? u'1' : u'0') + u'\n';
  for (const auto& d : j.dateien) text += QStringLiteral("Datei=") + d.first + u'\t' + d.second + u'\n';
  return text.toUtf8();
}

bool fctJournalAusText(const QByteArray& daten, NeuanlageJournal& j) {
  j = NeuanlageJournal{};
  bool block = false;
  bool ansicht = false;
  for (const QString& zeile : QString::fromUtf8(daten).split(u'\n')) {
    const qsizetype gleich = zeile.indexOf(u'=');
    if (gleich < 0) continue;
    const QString k = zeile.left(gleich);
    const QString v = zeile.mid(gleich + 1);
    if (k == QLatin1String("Block")) {
      j.block = v;
      block = !v.isEmpty() && !v.contains(u'\t');
    } else if (k == QLatin1String("Ansicht")) {
      j.ansicht = v.toInt(&ansicht);
    } else if (k == QLatin1String("Variante")) {
      j.variante = v == QLatin1String("1");
    } else if (k == QLatin1String("Ersetzen")) {
      j.ersetzen = v == QLatin1String("1");
    } else if (k == QLatin1String("VariaName")) {
      j.variaName = v;
    } else if (k == QLatin1String("Datei")) {
      const QStringList teile = v.split(u'\t');
      if (teile.size() != 2 || teile[0].isEmpty() || teile[1].isEmpty()) return false;
      j.dateien << qMakePair(teile[0], teile[1]);
    }
  }
  return block && ansicht && j.ansicht >= 0 && j.ansicht <= 4 && !j.dateien.isEmpty();
}

}  // namespace kolvane

#include "varialiste.h"

#include <QFile>

#include "codepage.h"

namespace kolvane {

namespace {

// One fixed-width field, without the padding of its writer.
QString feld(const char* p, int breite) {
  int n = breite;
  while (n > 0 && (p[n - 1] == ' ' || p[n - 1] == '\0')) --n;
  return fromWindows1252(QByteArray(p, n));
}

}  // namespace

QList<VariaListenEintrag> fctVariaListeAusDaten(const QByteArray& daten) {
  QList<VariaListenEintrag> liste;
  const qsizetype saetze = qMin<qsizetype>(daten.size() / kVariaSatzLaenge, kVariaMaxSaetze);
  for (qsizetype i = 0; i < saetze; ++i) {
    const char* satz = daten.constData() + i * kVariaSatzLaenge;
    VariaListenEintrag e{feld(satz, kVariaNameBreite), feld(satz + kVariaNameBreite, kVariaPfadBreite)};
    if (e.name.isEmpty() && e.pfad.isEmpty()) continue;
    liste << e;
  }
  return liste;
}

QList<VariaListenEintrag> fctVariaListeLesen(const QString& datei) {
  if (datei.isEmpty()) return {};
  QFile f(datei);
  if (!f.open(QIODevice::ReadOnly)) return {};
  // Only whole records, and no more of them than a list can hold.
  const qint64 laenge = qMin<qint64>(f.size(), qint64(kVariaMaxSaetze) * kVariaSatzLaenge);
  return fctVariaListeAusDaten(f.read(laenge - laenge % kVariaSatzLaenge));
}

}  // namespace kolvane

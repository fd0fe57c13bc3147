#include "defmenuedatei.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "codepage.h"

namespace kolvane {

namespace {

// One field without the padding of its writer; false for a control character
// inside the text (a file of another kind, or a damaged one).
bool feld(const char* p, int breite, QString* aus) {
  int n = breite;
  while (n > 0 && (p[n - 1] == ' ' || p[n - 1] == '\0')) --n;
  for (int i = 0; i < n; ++i)
    if (uchar(p[i]) < 0x20 || uchar(p[i]) == 0x7F) return false;
  *aus = fromWindows1252(QByteArray(p, n));
  return true;
}

// The text in the code page, cut to the width and padded with blanks. A
// control character (a pasted tab) becomes a blank, so the file reads back.
QByteArray gepolstert(const QString& text, int breite) {
  QByteArray b = toWindows1252(text).left(breite);
  for (char& c : b)
    if (uchar(c) < 0x20 || uchar(c) == 0x7F) c = ' ';
  b.append(QByteArray(breite - b.size(), ' '));
  return b;
}

}  // namespace

DefDateiFehler fctDefMenueAusDaten(const QByteArray& daten, DefMenueDateiInhalt& inhalt) {
  if (daten.isEmpty()) return DefDateiFehler::Leer;
  if (daten.size() > kDefDateiLaenge) return DefDateiFehler::ZuLang;
  if (daten.size() % kDefSatzLaenge != 0) return DefDateiFehler::Beschaedigt;
  DefMenueDateiInhalt neu;
  const int saetze = int(daten.size() / kDefSatzLaenge);
  for (int i = 0; i < saetze; ++i) {
    const char* satz = daten.constData() + qsizetype(i) * kDefSatzLaenge;
    if (!feld(satz, kDefNameBreite, &neu.benennung[size_t(i)]) ||
        !feld(satz + kDefNameBreite, kDefWertBreite, &neu.standardwert[size_t(i)]))
      return DefDateiFehler::Beschaedigt;
  }
  inhalt = neu;
  return DefDateiFehler::Keiner;
}

DefDateiFehler fctDefMenueDateiLesen(const QString& datei, DefMenueDateiInhalt& inhalt) {
  if (datei.isEmpty() || QFileInfo(datei).isDir()) return DefDateiFehler::NichtLesbar;
  QFile f(datei);
  if (!f.open(QIODevice::ReadOnly)) return DefDateiFehler::NichtLesbar;
  // One byte more than a whole definition tells a file that is too long
  // without reading all of it.
  const QByteArray daten = f.read(kDefDateiLaenge + 1);
  if (f.error() != QFileDevice::NoError) return DefDateiFehler::NichtLesbar;
  return fctDefMenueAusDaten(daten, inhalt);
}

QByteArray fctDefMenueDaten(const DefMenueDateiInhalt& inhalt) {
  QByteArray d;
  d.reserve(kDefDateiLaenge);
  for (size_t i = 0; i < size_t(kDefSaetze); ++i)
    d += gepolstert(inhalt.benennung[i], kDefNameBreite) + gepolstert(inhalt.standardwert[i], kDefWertBreite);
  return d;
}

bool fctDefMenueDateiSchreiben(const QString& datei, const DefMenueDateiInhalt& inhalt,
                               QString* grund) {
  QSaveFile f(datei);
  const QByteArray d = fctDefMenueDaten(inhalt);
  if (!f.open(QIODevice::WriteOnly) || f.write(d) != d.size() || !f.commit()) {
    if (grund) *grund = f.errorString();
    return false;
  }
  return true;
}

}  // namespace kolvane

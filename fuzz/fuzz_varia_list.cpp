// Feeds arbitrary bytes to the reader of a view's old variant list (fixed
// records of 248 bytes). Beyond "no crash, no hang": never more entries than
// whole records, fields within their widths, no padding left at their ends,
// and a list written back from the entries reads as the same entries.
#include <cstdint>
#include <cstdlib>

#include "codepage.h"
#include "varialiste.h"

namespace {

QByteArray feld(const QString& text, int breite) {
  QByteArray b = kolvane::toWindows1252(text);
  b.append(QByteArray(breite - b.size(), ' '));
  return b;
}

bool gepolstert(const QString& s) { return s.endsWith(u' ') || s.endsWith(QChar(0)); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kolvane;
  const QByteArray daten(reinterpret_cast<const char*>(data), qsizetype(size));
  const QList<VariaListenEintrag> liste = fctVariaListeAusDaten(daten);
  if (liste.size() > daten.size() / kVariaSatzLaenge) std::abort();
  QByteArray wieder;
  for (const VariaListenEintrag& e : liste) {
    if (e.name.size() > kVariaNameBreite || e.pfad.size() > kVariaPfadBreite) std::abort();
    if (gepolstert(e.name) || gepolstert(e.pfad) || (e.name.isEmpty() && e.pfad.isEmpty())) std::abort();
    wieder += feld(e.name, kVariaNameBreite) + feld(e.pfad, kVariaPfadBreite);
  }
  const QList<VariaListenEintrag> zurueck = fctVariaListeAusDaten(wieder);
  if (zurueck.size() != liste.size()) std::abort();
  for (qsizetype i = 0; i < liste.size(); ++i)
    if (zurueck[i].name != liste[i].name || zurueck[i].pfad != liste[i].pfad) std::abort();
  return 0;
}

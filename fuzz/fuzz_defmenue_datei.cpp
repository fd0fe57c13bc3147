// Feeds arbitrary bytes to the reader of a card definition file (fixed records
// of 120 bytes). Beyond "no crash, no hang": a refused file leaves the
// definition it was given as it was; an accepted one has whole records only,
// fields within their widths and without padding at their ends, and written
// back it reads as the same definition.
#include <cstdint>
#include <cstdlib>

#include "defmenuedatei.h"

namespace {

bool gepolstert(const QString& s) { return s.endsWith(u' ') || s.endsWith(QChar(0)); }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kolvane;
  const QByteArray daten(reinterpret_cast<const char*>(data), qsizetype(size));
  DefMenueDateiInhalt inhalt;
  inhalt.benennung[3] = QStringLiteral("vorher");
  const DefDateiFehler f = fctDefMenueAusDaten(daten, inhalt);
  if (f != DefDateiFehler::Keiner) {
    if (inhalt.benennung[3] != QLatin1String("vorher") || !inhalt.standardwert[0].isEmpty()) std::abort();
    if (daten.isEmpty() != (f == DefDateiFehler::Leer)) std::abort();
    return 0;
  }
  if (daten.size() > kDefDateiLaenge || daten.size() % kDefSatzLaenge != 0) std::abort();
  for (size_t i = 0; i < size_t(kDefSaetze); ++i) {
    const QString& n = inhalt.benennung[i];
    const QString& w = inhalt.standardwert[i];
    if (n.size() > kDefNameBreite || w.size() > kDefWertBreite) std::abort();
    if (gepolstert(n) || gepolstert(w)) std::abort();
    if (i >= size_t(daten.size() / kDefSatzLaenge) && (!n.isEmpty() || !w.isEmpty())) std::abort();
  }
  const QByteArray wieder = fctDefMenueDaten(inhalt);
  if (wieder.size() != kDefDateiLaenge) std::abort();
  DefMenueDateiInhalt zurueck;
  if (fctDefMenueAusDaten(wieder, zurueck) != DefDateiFehler::Keiner) std::abort();
  if (zurueck.benennung != inhalt.benennung || zurueck.standardwert != inhalt.standardwert) std::abort();
  return 0;
}

// Feeds arbitrary bytes to the reader of a stored search (".str"). Beyond "no
// crash, no hang": a refused file leaves the search it was given as it was; an
// accepted one has single-line texts within their length and one of the seven
// comparisons per field, and written back it reads as the same search.
#include <cstdint>
#include <cstdlib>

#include "suchdatei.h"
#include "suchkriterium.h"

namespace {

bool gueltig(const QString& v) {
  for (const QString& s : kolvane::suchVerknuepfungen())
    if (s == v) return true;
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kolvane;
  const QByteArray daten(reinterpret_cast<const char*>(data), qsizetype(size));
  SuchdateiInhalt inhalt;
  inhalt.txtBenennung[3] = QStringLiteral("vorher");
  const SuchdateiFehler f = fctSuchdateiAusDaten(daten, inhalt);
  if (f != SuchdateiFehler::Keiner) {
    if (inhalt.txtBenennung[3] != QLatin1String("vorher") || !inhalt.txtBenennung[0].isEmpty()) std::abort();
    if (daten.isEmpty() && f != SuchdateiFehler::Leer) std::abort();
    return 0;
  }
  if (daten.size() > kSuchdateiHoechstLaenge) std::abort();
  for (size_t i = 0; i < 10; ++i) {
    const QString& t = inhalt.txtBenennung[i];
    if (t.size() > kSuchdateiZeilenLaenge || t.contains(u'\n') || t.contains(u'\r')) std::abort();
    if (!gueltig(inhalt.comboxSuchkriterienVerknuepfen[i])) std::abort();
  }
  const QByteArray wieder = fctSuchdateiDaten(inhalt, QStringLiteral("23.11.2026 12:00"));
  SuchdateiInhalt zurueck;
  if (fctSuchdateiAusDaten(wieder, zurueck) != SuchdateiFehler::Keiner) std::abort();
  if (zurueck.txtBenennung != inhalt.txtBenennung ||
      zurueck.comboxSuchkriterienVerknuepfen != inhalt.comboxSuchkriterienVerknuepfen)
    std::abort();
  return 0;
}

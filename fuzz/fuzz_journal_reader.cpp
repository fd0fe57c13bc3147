// Feeds arbitrary bytes to the reader of a new block's journal, the file a
// killed run leaves in the library. Beyond "no crash, no hang": a journal that
// was read is written and read back to the same contents.
#include <cstdint>
#include <cstdlib>

#include "neuanlagejournal.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace kolvane;
  NeuanlageJournal j;
  if (!fctJournalAusText(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)), j)) return 0;
  if (j.block.isEmpty() || j.ansicht < 0 || j.ansicht > 4 || j.dateien.isEmpty()) std::abort();
  NeuanlageJournal wieder;
  if (!fctJournalAusText(fctJournalAlsText(j), wieder)) std::abort();
  if (wieder.block != j.block || wieder.ansicht != j.ansicht || wieder.variante != j.variante ||
      wieder.ersetzen != j.ersetzen || wieder.dateien != j.dateien)
    std::abort();
  return 0;
}

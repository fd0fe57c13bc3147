// Feeds arbitrary bytes to the sandbox's DXF reader (the checks in front of
// dxflib, dxflib itself and the model built from what it reports). Beyond "no
// crash, no hang", it checks what must hold for any input: a refused file
// leaves the target untouched and says why, and a drawing that was read is
// written and read back with as many layers, blocks and entities.
#include <cstdint>
#include <cstdlib>

#include "dxf.h"

using namespace sandbox;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
  Drawing d;
  d.ensureLayer(QStringLiteral("unberührt"));
  QString error;
  if (!readDxf(bytes, d, &error)) {
    if (error.isEmpty() || !d.layer(QStringLiteral("unberührt")) || !d.entities.empty()) std::abort();
    return 0;
  }
  d.extents();
  for (const Entity& e : d.entities)
    if (e.type == EntityType::Insert) d.explode(e);
  Drawing again;
  if (!readDxf(writeDxf(d), again, &error)) std::abort();
  if (again.entities.size() != d.entities.size() || again.blocks.size() != d.blocks.size())
    std::abort();
  return 0;
}

#pragma once
// Drawings as DXF text (release 12 ASCII), whatever the file's extension.
#include <QByteArray>
#include <QString>

#include "drawing.h"

namespace sandbox {

// Reads layers, blocks, entities and the header's insertion base and current
// layer. LWPOLYLINE of later releases is read too. False with a reason for
// anything that is no DXF or is cut off; `out` is untouched then.
bool readDxf(const QByteArray& data, Drawing& out, QString* error);
bool readDxfFile(const QString& path, Drawing& out, QString* error);

QByteArray writeDxf(const Drawing& d);
bool writeDxfFile(const QString& path, const Drawing& d, QString* error);

}  // namespace sandbox

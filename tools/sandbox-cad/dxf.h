#pragma once
// Drawings as DXF text, whatever the file's extension: read from any release
// R12 to 2018 through dxflib, written as release 12.
#include <QByteArray>
#include <QString>

#include "drawing.h"

namespace sandbox {

// Reads layers, blocks (with their attribute definitions), entities and the
// header's insertion base and current layer. What the model has no kind for
// comes as the nearest it has: SPLINE, ELLIPSE and HATCH boundaries as
// polylines, MTEXT as text, TRACE as solid. False with a German reason for
// anything that is no DXF text, is damaged or cut off, binary DXF, DWG or of
// an unknown release; `out` is untouched then.
bool readDxf(const QByteArray& data, Drawing& out, QString* error);
bool readDxfFile(const QString& path, Drawing& out, QString* error);

QByteArray writeDxf(const Drawing& d);
bool writeDxfFile(const QString& path, const Drawing& d, QString* error);

}  // namespace sandbox

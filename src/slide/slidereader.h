#pragma once
#include <QByteArrayView>
#include <QString>
#include <optional>

#include "slide.h"

namespace kolvane {

// Reads a slide in the current or the old form, in either byte order. Reading
// stops after the end-of-file record, so a slide inside a library is read from
// its address on. Gives nothing for bytes that are no slide or are damaged (a
// record cut off, an unknown record type); never reports: a bad file only
// shows as an empty picture. `used` receives the bytes the slide took.
std::optional<Slide> readSlide(QByteArrayView data, qsizetype* used = nullptr);

// The whole file as a slide; nothing when it is missing, unreadable or no slide.
std::optional<Slide> readSlideFile(const QString& path);

// Larger files are no slides; reading them whole would only cost memory.
inline constexpr qint64 kMaxSlideFileSize = 64 * 1024 * 1024;

}  // namespace kolvane

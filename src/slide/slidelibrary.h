#pragma once
#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace kolvane {

// One slide of a library's directory. `size` is the room up to the next slide
// (or the end of the file); 0 when the address lies outside the file.
struct SlideLibraryEntry {
  QString name;
  quint32 address = 0;
  quint32 size = 0;
};

inline constexpr int kSlideNameMax = 31;  // a name and its NUL fill the 32 bytes

// Whether the bytes begin with the header of a slide library.
bool isSlideLibrary(QByteArrayView data);

// The directory of a library, in file order. It ends at a name that begins with
// NUL, where the first slide begins, or at the end of the bytes, whichever
// comes first, so a directory that never ends can't run on. A name of 32
// characters without NUL is taken whole. Nothing when the bytes are no library.
std::optional<std::vector<SlideLibraryEntry>> readSlideLibraryDirectory(QByteArrayView data);

// The entry of that name, compared without case; null when there is none.
const SlideLibraryEntry* findSlideLibraryEntry(const std::vector<SlideLibraryEntry>& directory,
                                               const QString& name);

struct SlideLibraryMember {
  QString name;
  QByteArray slide;  // a complete slide file
};

// The bytes of a library holding the members in their order; empty, with the
// reason in `error`, when a name can't be stored (empty, longer than 31
// characters, outside Latin-1, or twice without regard to case).
QByteArray writeSlideLibrary(const std::vector<SlideLibraryMember>& members, QString* error);

// The slide library tool's work: reads each listed slide file (found without
// regard to case, "\" read as a separator), names it after its file name
// without folder and extension, and writes the library under a temporary name
// that is renamed at the end, so a failure leaves no half file. False, with a
// line naming the file in `error`, when a file is missing or no slide, or the
// library can't be written.
bool packSlideLibrary(const QStringList& slideFiles, const QString& libraryFile, QString* error);

}  // namespace kolvane

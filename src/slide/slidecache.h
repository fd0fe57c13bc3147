#pragma once
#include <QHash>
#include <QMutex>
#include <QString>
#include <memory>
#include <vector>

#include "slide.h"
#include "slidelibrary.h"

namespace kolvane {

// Parsed slides by address, shared by every slide display of the process, so
// that drawing a page again reads no file. An entry holds while its file keeps
// its modification time and size; a changed file is read again. A library's
// directory is read once and then only the member asked for.
class SlideCache {
 public:
  static SlideCache& instance();

  explicit SlideCache(int capacity = 2048);
  SlideCache(const SlideCache&) = delete;
  SlideCache& operator=(const SlideCache&) = delete;

  // The slide of an address ("x.sld", "lib.slb(0A)"); null when the file is
  // missing, is damaged, or the library has no slide of that name.
  std::shared_ptr<const Slide> slide(const QString& address);

  void clear();
  // Files opened for reading since the last clear().
  int fileReads() const;

 private:
  struct Stamp {
    qint64 modified = 0;
    qint64 size = -1;
    bool operator==(const Stamp&) const = default;
  };
  struct SlideEntry {
    Stamp stamp;
    std::shared_ptr<const Slide> slide;
    quint64 used = 0;
  };
  struct LibraryEntry {
    Stamp stamp;
    std::vector<SlideLibraryEntry> directory;
    quint64 used = 0;
  };

  std::shared_ptr<const Slide> readPlain(const QString& file);
  std::shared_ptr<const Slide> readMember(const QString& file, const Stamp& stamp,
                                          const QString& name);
  QByteArray readRange(const QString& file, qint64 from, qint64 length);
  void trim();

  mutable QMutex mutex_;
  int capacity_;
  quint64 clock_ = 0;
  int fileReads_ = 0;
  QHash<QString, SlideEntry> slides_;
  QHash<QString, LibraryEntry> libraries_;
};

}  // namespace kolvane

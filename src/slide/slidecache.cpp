#include "slidecache.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "slideaddress.h"
#include "slidereader.h"

namespace kolvane {

SlideCache& SlideCache::instance() {
  static SlideCache cache;
  return cache;
}

SlideCache::SlideCache(int capacity) : capacity_(std::max(capacity, 16)) {}

std::shared_ptr<const Slide> SlideCache::slide(const QString& address) {
  const SlideAddress a = parseSlideAddress(address);
  const QString file = findFileIgnoringCase(a.file);
  if (file.isEmpty()) return nullptr;
  const QFileInfo info(file);
  const Stamp stamp{info.lastModified().toMSecsSinceEpoch(), info.size()};
  const QString key = a.name.isEmpty() ? file : file + QChar(0) + a.name.toUpper();

  QMutexLocker lock(&mutex_);
  ++clock_;
  auto it = slides_.find(key);
  if (it != slides_.end() && it->stamp == stamp) {
    it->used = clock_;
    return it->slide;
  }
  // A damaged file is remembered as such too, so it isn't read at every paint.
  std::shared_ptr<const Slide> s = a.name.isEmpty() ? readPlain(file) : readMember(file, stamp, a.name);
  slides_.insert(key, SlideEntry{stamp, s, clock_});
  trim();
  return s;
}

namespace {

std::shared_ptr<const Slide> parsed(QByteArrayView bytes) {
  auto s = readSlide(bytes);
  return s ? std::make_shared<const Slide>(std::move(*s)) : nullptr;
}

}  // namespace

std::shared_ptr<const Slide> SlideCache::readPlain(const QString& file) {
  return parsed(readRange(file, 0, kMaxSlideFileSize));
}

std::shared_ptr<const Slide> SlideCache::readMember(const QString& file, const Stamp& stamp,
                                                    const QString& name) {
  // At first sight of a library its bytes give the directory and the member;
  // later only the member's own bytes are read.
  QByteArray whole;
  auto lib = libraries_.find(file);
  if (lib == libraries_.end() || !(lib->stamp == stamp)) {
    whole = readRange(file, 0, kMaxSlideFileSize);
    auto directory = readSlideLibraryDirectory(whole);
    if (!directory) directory.emplace();
    lib = libraries_.insert(file, LibraryEntry{stamp, std::move(*directory), clock_});
  }
  lib->used = clock_;
  const SlideLibraryEntry* e = findSlideLibraryEntry(lib->directory, name);
  if (!e || e->size == 0) return nullptr;
  return parsed(whole.isEmpty() ? readRange(file, e->address, e->size)
                                : QByteArrayView(whole).sliced(e->address, e->size));
}

QByteArray SlideCache::readRange(const QString& file, qint64 from, qint64 length) {
  QFile f(file);
  ++fileReads_;
  if (!f.open(QIODevice::ReadOnly) || f.size() > kMaxSlideFileSize || from > f.size() || !f.seek(from))
    return {};
  return f.read(std::min(length, f.size() - from));
}

void SlideCache::trim() {
  // Drops the quarter used longest ago once the cache is full.
  const auto drop = [](auto& hash, int capacity) {
    if (hash.size() <= capacity) return;
    std::vector<quint64> ages;
    ages.reserve(hash.size());
    for (const auto& e : hash) ages.push_back(e.used);
    const auto cut = ages.begin() + ages.size() / 4;
    std::nth_element(ages.begin(), cut, ages.end());
    const quint64 limit = *cut;
    for (auto it = hash.begin(); it != hash.end();) it = it->used < limit ? hash.erase(it) : ++it;
  };
  drop(slides_, capacity_);
  drop(libraries_, capacity_ / 4);
}

void SlideCache::clear() {
  QMutexLocker lock(&mutex_);
  slides_.clear();
  libraries_.clear();
  fileReads_ = 0;
}

int SlideCache::fileReads() const {
  QMutexLocker lock(&mutex_);
  return fileReads_;
}

}  // namespace kolvane

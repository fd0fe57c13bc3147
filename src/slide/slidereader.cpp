#include "slidereader.h"

#include <QFile>
#include <cstring>

namespace kolvane {

namespace {

constexpr char kSlideId[] = "AutoCAD Slide\r\n\x1a";  // with its NUL: the 17 bytes of the id
constexpr qsizetype kCurrentHeader = 31;
constexpr qsizetype kOldHeader = 34;

class Bytes {
 public:
  Bytes(QByteArrayView data, bool bigEndian)
      : p_(reinterpret_cast<const uint8_t*>(data.data())), n_(data.size()), big_(bigEndian) {}
  qsizetype size() const { return n_; }
  uint8_t u8(qsizetype i) const { return p_[i]; }
  int8_t s8(qsizetype i) const { return static_cast<int8_t>(p_[i]); }
  uint16_t u16(qsizetype i) const {
    return big_ ? uint16_t(p_[i] << 8 | p_[i + 1]) : uint16_t(p_[i + 1] << 8 | p_[i]);
  }
  int16_t s16(qsizetype i) const { return static_cast<int16_t>(u16(i)); }
  uint32_t u32le(qsizetype i) const {
    return uint32_t(p_[i]) | uint32_t(p_[i + 1]) << 8 | uint32_t(p_[i + 2]) << 16 |
           uint32_t(p_[i + 3]) << 24;
  }
  double f64le(qsizetype i) const {
    uint64_t bits = 0;
    for (int k = 7; k >= 0; --k) bits = bits << 8 | p_[i + k];
    double v;
    std::memcpy(&v, &bits, sizeof v);
    return v;
  }

 private:
  const uint8_t* p_;
  qsizetype n_;
  bool big_;
};

// Fills the header fields; returns where the records begin, or 0 for no slide.
qsizetype readHeader(QByteArrayView data, Slide& s) {
  if (data.size() < kCurrentHeader || std::memcmp(data.data(), kSlideId, sizeof kSlideId) != 0)
    return 0;
  const auto* p = reinterpret_cast<const uint8_t*>(data.data());
  s.typeIndicator = p[17];
  s.level = p[18];
  if (s.level == 2) {
    // The test number 0x1234 tells the byte order of every 2-byte value; a
    // value that is neither order is taken as the common one.
    s.bigEndian = p[29] == 0x12 && p[30] == 0x34;
    const Bytes b(data, s.bigEndian);
    s.highX = b.u16(19);
    s.highY = b.u16(21);
    s.aspectRatio = b.u32le(23) / 1e7;
    s.hardwareFill = b.u16(27);
    return kCurrentHeader;
  }
  if (s.level == 1 && data.size() >= kOldHeader) {
    // No test number: the writer's own order, low byte first in practice.
    const Bytes b(data, false);
    s.highX = b.u16(19);
    s.highY = b.u16(21);
    s.aspectRatio = b.f64le(23);
    s.hardwareFill = b.u16(31);
    return kOldHeader;
  }
  return 0;
}

}  // namespace

std::optional<Slide> readSlide(QByteArrayView data, qsizetype* used) {
  Slide s;
  qsizetype pos = readHeader(data, s);
  if (pos == 0) return std::nullopt;
  const Bytes b(data, s.bigEndian);
  const qsizetype n = b.size();
  s.records.reserve((n - pos) / 4);
  s.endRecord = false;
  while (pos < n) {
    if (pos + 2 > n) return std::nullopt;
    const uint16_t word = b.u16(pos);
    const int high = word >> 8;
    const auto need = [&](qsizetype len) { return pos + len <= n; };
    if (high <= 0x7F) {
      if (!need(8)) return std::nullopt;
      s.records.push_back({SlideRecordType::Vector, static_cast<int16_t>(word), b.s16(pos + 2),
                           b.s16(pos + 4), b.s16(pos + 6)});
      pos += 8;
      continue;
    }
    switch (high) {
      case 0xFB:
        if (!need(5)) return std::nullopt;
        s.records.push_back({SlideRecordType::OffsetVector, static_cast<int8_t>(word & 0xFF),
                             b.s8(pos + 2), b.s8(pos + 3), b.s8(pos + 4)});
        pos += 5;
        break;
      case 0xFC:
        pos += 2;
        s.endRecord = true;
        break;
      case 0xFD:
        if (!need(6)) return std::nullopt;
        s.records.push_back({SlideRecordType::SolidFill, b.s16(pos + 2), b.s16(pos + 4), 0, 0});
        pos += 6;
        break;
      case 0xFE:
        if (!need(3)) return std::nullopt;
        s.records.push_back(
            {SlideRecordType::CommonEndpoint, static_cast<int8_t>(word & 0xFF), b.s8(pos + 2), 0, 0});
        pos += 3;
        break;
      case 0xFF:
        s.records.push_back({SlideRecordType::Color, static_cast<int16_t>(word & 0xFF), 0, 0, 0});
        pos += 2;
        break;
      default:
        return std::nullopt;  // 0x80..0xFA name no record: the rest can't be found
    }
    if (s.endRecord) break;
  }
  if (used) *used = pos;
  return s;
}

std::optional<Slide> readSlideFile(const QString& path) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly) || f.size() > kMaxSlideFileSize) return std::nullopt;
  return readSlide(f.readAll());
}

}  // namespace kolvane

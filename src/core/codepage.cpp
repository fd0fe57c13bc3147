#include "codepage.h"

#include <QStringDecoder>

namespace kolvane {

namespace {
// 0x80..0x9F of Windows-1252; 0 marks the five undefined positions, which map
// to the C1 control of the same value as Windows itself does.
constexpr char16_t kHigh[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
}  // namespace

QString fromWindows1252(const QByteArray& bytes) {
  QString out;
  out.reserve(bytes.size());
  for (char c : bytes) {
    const auto b = static_cast<unsigned char>(c);
    if (b >= 0x80 && b < 0xA0 && kHigh[b - 0x80] != 0)
      out.append(QChar(kHigh[b - 0x80]));
    else
      out.append(QChar(char16_t(b)));
  }
  return out;
}

QByteArray toWindows1252(const QString& text) {
  QByteArray out;
  out.reserve(text.size());
  for (QChar ch : text) {
    const char16_t u = ch.unicode();
    if (u < 0x80 || (u >= 0xA0 && u <= 0xFF)) {
      out.append(char(u));
      continue;
    }
    char mapped = '?';
    for (int i = 0; i < 32; ++i) {
      if (kHigh[i] == u) {
        mapped = char(0x80 + i);
        break;
      }
    }
    if (u >= 0x80 && u < 0xA0) mapped = char(u);
    out.append(mapped);
  }
  return out;
}

QString decodeTextFile(const QByteArray& bytes) {
  QByteArray body = bytes;
  if (body.startsWith("\xEF\xBB\xBF")) body.remove(0, 3);
  QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString text = utf8.decode(body);
  if (!utf8.hasError()) return text;
  return fromWindows1252(body);
}

}  // namespace kolvane

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTextStream>
#include <algorithm>

#include "commands.h"
#include "slideaddress.h"
#include "slidecache.h"
#include "slidelibrary.h"
#include "slidereader.h"
#include "sliderenderer.h"

namespace kolvane::tool {

namespace {

constexpr int kMaxSide = 8192;  // a picture larger than this is no preview

int fail(const QString& text) {
  QTextStream(stderr) << text << "\n";
  return 1;
}

int usage(const char* text) {
  QTextStream(stderr) << "usage: kolvane-tool " << text << "\n";
  return 2;
}

// The file an address names, or "" after saying on stderr that it is missing.
QString existingFile(const QString& command, const SlideAddress& address) {
  const QString file = findFileIgnoringCase(address.file);
  if (file.isEmpty()) fail(QStringLiteral("%1: no such file: %2").arg(command, address.file));
  return file;
}

void printSlide(QTextStream& out, const Slide& s) {
  static const char* const kNames[kSlideRecordTypes] = {"vector", "offset vector", "common endpoint",
                                                         "solid fill", "new colour"};
  out << "form: " << (s.level == 1 ? "old" : "current") << " (level " << int(s.level) << ")\n"
      << "type: " << int(s.typeIndicator) << "\n"
      << "byte order: " << (s.bigEndian ? "high byte first" : "low byte first") << "\n"
      << "high x dot: " << s.highX << "\n"
      << "high y dot: " << s.highY << "\n"
      << "aspect ratio: " << QString::number(s.aspectRatio, 'g', 10) << "\n"
      << "hardware fill: " << s.hardwareFill << "\n";
  const auto counts = s.recordCounts();
  for (int t = 0; t < kSlideRecordTypes; ++t) out << kNames[t] << ": " << counts[t] << "\n";
  out << "end of file: " << (s.endRecord ? 1 : 0) << "\n";
}

}  // namespace

int runRender(const QStringList& args) {
  static const char* const kUsage = "render SLIDE --png OUT [--size WxH] [--background #RRGGBB]";
  QString slidePath, png;
  QSize size;
  QColor background(Qt::black);
  for (int i = 0; i < args.size(); ++i) {
    const QString& a = args[i];
    const bool hasValue = i + 1 < args.size();
    if (a == "--png" && hasValue) {
      png = args[++i];
    } else if (a == "--size" && hasValue) {
      const auto m = QRegularExpression("^(\\d{1,5})x(\\d{1,5})$").match(args[++i]);
      if (!m.hasMatch()) return usage(kUsage);
      size = QSize(m.captured(1).toInt(), m.captured(2).toInt());
      if (size.isEmpty() || size.width() > kMaxSide || size.height() > kMaxSide) return usage(kUsage);
    } else if (a == "--background" && hasValue) {
      background = QColor::fromString(args[++i]);
      if (!background.isValid() || !args[i].startsWith('#')) return usage(kUsage);
    } else if (!a.startsWith("--") && slidePath.isEmpty()) {
      slidePath = a;
    } else {
      return usage(kUsage);
    }
  }
  if (slidePath.isEmpty() || png.isEmpty()) return usage(kUsage);

  const SlideAddress address = parseSlideAddress(slidePath);
  if (existingFile("render", address).isEmpty()) return 1;
  const auto slide = SlideCache::instance().slide(slidePath);
  if (!slide) return fail(QStringLiteral("render: no readable slide: %1").arg(slidePath));
  if (size.isEmpty()) {
    // The slide's own size, brought down to a sensible picture when larger.
    size = QSize(slide->highX + 1, slide->highY + 1);
    if (std::max(size.width(), size.height()) > kMaxSide)
      size.scale(kMaxSide, kMaxSide, Qt::KeepAspectRatio);
  }
  QImage image(size, QImage::Format_RGB32);
  if (image.isNull()) return fail(QStringLiteral("render: no memory for a picture of that size"));
  {
    QPainter p(&image);
    drawSlide(p, *slide, QRectF(QPointF(0, 0), QSizeF(size)), background);
  }
  if (!image.save(png, "PNG")) return fail(QStringLiteral("render: can't write %1").arg(png));
  return 0;
}

int runSlideInfo(const QStringList& args) {
  if (args.size() != 1 || args[0].startsWith("--")) return usage("slide-info FILE");
  const SlideAddress address = parseSlideAddress(args[0]);
  const QString file = existingFile("slide-info", address);
  if (file.isEmpty()) return 1;
  QFile f(file);
  if (!f.open(QIODevice::ReadOnly) || f.size() > kMaxSlideFileSize)
    return fail(QStringLiteral("slide-info: can't read %1").arg(file));
  const QByteArray bytes = f.readAll();
  QTextStream out(stdout);

  if (isSlideLibrary(bytes)) {
    const auto directory = readSlideLibraryDirectory(bytes);
    if (address.name.isEmpty()) {
      for (const auto& e : *directory) out << e.name << "\t" << e.address << "\t" << e.size << "\n";
      return 0;
    }
    const SlideLibraryEntry* e = findSlideLibraryEntry(*directory, address.name);
    if (!e) return fail(QStringLiteral("slide-info: no slide %1 in %2").arg(address.name, file));
    const auto s = e->size ? readSlide(QByteArrayView(bytes).sliced(e->address, e->size))
                           : std::optional<Slide>();
    if (!s) return fail(QStringLiteral("slide-info: slide %1 in %2 is damaged").arg(address.name, file));
    printSlide(out, *s);
    return 0;
  }
  if (!address.name.isEmpty())
    return fail(QStringLiteral("slide-info: not a slide library: %1").arg(file));
  const auto s = readSlide(bytes);
  if (!s) return fail(QStringLiteral("slide-info: not a slide: %1").arg(file));
  printSlide(out, *s);
  return 0;
}

}  // namespace kolvane::tool

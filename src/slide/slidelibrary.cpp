#include "slidelibrary.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "slideaddress.h"
#include "slidereader.h"

namespace kolvane {

namespace {

constexpr char kLibraryId[] = "AutoCAD Slide Library 1.0\r\n\x1a";
constexpr qsizetype kLibraryHeader = 32;
constexpr qsizetype kEntrySize = 36;
constexpr qsizetype kNameBytes = 32;

quint32 u32le(const uchar* p) {
  return quint32(p[0]) | quint32(p[1]) << 8 | quint32(p[2]) << 16 | quint32(p[3]) << 24;
}

void setError(QString* error, const QString& text) {
  if (error) *error = text;
}

std::filesystem::path fsPath(const QString& path) {
#ifdef Q_OS_WIN
  return std::filesystem::path(path.toStdWString());
#else
  return std::filesystem::path(QFile::encodeName(path).toStdString());
#endif
}

}  // namespace

bool isSlideLibrary(QByteArrayView data) {
  // The version is not checked: only one was ever written.
  return data.size() >= kLibraryHeader && data.startsWith(QByteArrayView("AutoCAD Slide Library"));
}

std::optional<std::vector<SlideLibraryEntry>> readSlideLibraryDirectory(QByteArrayView data) {
  if (!isSlideLibrary(data)) return std::nullopt;
  const auto* p = reinterpret_cast<const uchar*>(data.data());
  const qsizetype n = data.size();
  std::vector<SlideLibraryEntry> entries;
  qsizetype firstSlide = n;
  for (qsizetype pos = kLibraryHeader; pos + kEntrySize <= n && pos < firstSlide; pos += kEntrySize) {
    if (p[pos] == 0) break;
    const auto* name = reinterpret_cast<const char*>(p + pos);
    const qsizetype len = std::find(name, name + kNameBytes, '\0') - name;
    SlideLibraryEntry e{QString::fromLatin1(name, len), u32le(p + pos + kNameBytes), 0};
    if (e.address >= pos + kEntrySize && e.address < n)
      firstSlide = std::min<qsizetype>(firstSlide, e.address);
    entries.push_back(e);
  }
  // A slide's room reaches to the next address above it.
  std::vector<quint32> starts;
  for (const auto& e : entries)
    if (e.address < n) starts.push_back(e.address);
  std::sort(starts.begin(), starts.end());
  for (auto& e : entries) {
    if (e.address >= n) continue;
    const auto next = std::upper_bound(starts.begin(), starts.end(), e.address);
    e.size = (next == starts.end() ? quint32(n) : *next) - e.address;
  }
  return entries;
}

const SlideLibraryEntry* findSlideLibraryEntry(const std::vector<SlideLibraryEntry>& directory,
                                               const QString& name) {
  for (const auto& e : directory)
    if (e.name.compare(name, Qt::CaseInsensitive) == 0) return &e;
  return nullptr;
}

QByteArray writeSlideLibrary(const std::vector<SlideLibraryMember>& members, QString* error) {
  QSet<QString> seen;
  for (const auto& m : members) {
    const QByteArray latin = m.name.toLatin1();
    if (m.name.isEmpty() || latin.size() > kSlideNameMax || latin.contains('\0') ||
        QString::fromLatin1(latin) != m.name) {
      setError(error, QStringLiteral("slide name \"%1\" can't be stored in a library").arg(m.name));
      return {};
    }
    if (seen.contains(m.name.toUpper())) {
      setError(error, QStringLiteral("slide name \"%1\" is listed twice").arg(m.name));
      return {};
    }
    seen.insert(m.name.toUpper());
  }

  QByteArray out(kLibraryHeader, '\0');
  std::copy_n(kLibraryId, sizeof kLibraryId - 1, out.begin());
  qint64 address = kLibraryHeader + kEntrySize * (qint64(members.size()) + 1);
  for (const auto& m : members) {
    if (address > 0xFFFFFFFF) {
      setError(error, QStringLiteral("the library would outgrow its 4-byte addresses"));
      return {};
    }
    QByteArray entry(kEntrySize, '\0');
    const QByteArray latin = m.name.toLatin1();
    std::copy(latin.begin(), latin.end(), entry.begin());
    for (int k = 0; k < 4; ++k) entry[kNameBytes + k] = char(address >> (8 * k) & 0xFF);
    out += entry;
    address += m.slide.size();
  }
  out += QByteArray(kEntrySize, '\0');
  for (const auto& m : members) out += m.slide;
  return out;
}

bool packSlideLibrary(const QStringList& slideFiles, const QString& libraryFile, QString* error) {
  if (slideFiles.isEmpty()) {
    setError(error, QStringLiteral("no slides listed"));
    return false;
  }
  std::vector<SlideLibraryMember> members;
  members.reserve(slideFiles.size());
  for (const QString& listed : slideFiles) {
    const QString file = findFileIgnoringCase(listed);
    if (file.isEmpty()) {
      setError(error, QStringLiteral("%1: no such file").arg(listed));
      return false;
    }
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly) || f.size() > kMaxSlideFileSize) {
      setError(error, QStringLiteral("%1: can't be read").arg(listed));
      return false;
    }
    QByteArray bytes = f.readAll();
    if (!readSlide(bytes)) {
      setError(error, QStringLiteral("%1: not a slide").arg(listed));
      return false;
    }
    members.push_back({QFileInfo(nativeSlidePath(listed)).completeBaseName(), std::move(bytes)});
  }
  const QByteArray library = writeSlideLibrary(members, error);
  if (library.isEmpty()) return false;
  // Written beside its place and renamed over it: a reader sees the old
  // library or the whole new one, never a part. The file is not forced to the
  // disk: the library is made in the temporary directory and moved on at once.
  const QString target = nativeSlidePath(libraryFile);
  const QString temp = target + QStringLiteral(".%1.part").arg(QCoreApplication::applicationPid());
  QFile out(temp);
  const bool written = out.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
                       out.write(library) == library.size() && out.flush();
  const QString why = out.errorString();
  out.close();
  std::error_code renamed;
  if (written) std::filesystem::rename(fsPath(temp), fsPath(target), renamed);
  if (!written || renamed) {
    QFile::remove(temp);
    setError(error, QStringLiteral("%1: can't be written: %2")
                        .arg(libraryFile, written ? QString::fromStdString(renamed.message()) : why));
    return false;
  }
  return true;
}

}  // namespace kolvane

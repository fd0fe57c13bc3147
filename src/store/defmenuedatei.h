#pragma once
#include <QByteArray>
#include <QString>
#include <array>

namespace kolvane {

// A card definition file: the names and defaults of the ten card fields, as
// fixed records of 120 bytes without a header, Windows-1252, each field padded
// with blanks:
//
//   offset  0,  20 bytes: the name of field i
//   offset 20, 100 bytes: its default
//
// Record i + 1 holds field i, so a complete file has 10 records (1200 bytes).
// Longer texts are cut to the widths on writing; on reading the padding
// (trailing blanks and NULs) is removed. A file of fewer whole records leaves
// the missing fields empty.
struct DefMenueDateiInhalt {
  std::array<QString, 10> benennung;
  std::array<QString, 10> standardwert;
};

constexpr int kDefSatzLaenge = 120;
constexpr int kDefNameBreite = 20;
constexpr int kDefWertBreite = kDefSatzLaenge - kDefNameBreite;
constexpr int kDefSaetze = 10;
constexpr int kDefDateiLaenge = kDefSatzLaenge * kDefSaetze;

// Why a file was refused.
enum class DefDateiFehler {
  Keiner,
  NichtLesbar,   // missing, a directory, no permission
  Leer,          // no bytes
  Beschaedigt,   // not whole records, or control characters inside a field
  ZuLang,        // more than 10 records
};

// The records of a file's contents. On refusal `inhalt` is left untouched.
DefDateiFehler fctDefMenueAusDaten(const QByteArray& daten, DefMenueDateiInhalt& inhalt);
DefDateiFehler fctDefMenueDateiLesen(const QString& datei, DefMenueDateiInhalt& inhalt);

// The 1200 bytes of a definition: texts cut to their widths (a character the
// code page lacks becomes "?").
QByteArray fctDefMenueDaten(const DefMenueDateiInhalt& inhalt);
// Writes the file whole or not at all; grund receives what failed.
bool fctDefMenueDateiSchreiben(const QString& datei, const DefMenueDateiInhalt& inhalt,
                               QString* grund = nullptr);

}  // namespace kolvane

#pragma once
#include <QByteArray>
#include <QString>
#include <array>

namespace kolvane {

// A stored search (".str"): a plain text file of 21 lines.
//
//   line 0              when it was written (ignored on reading)
//   lines 1, 3, ... 19  the texts of card fields 0 to 9
//   lines 2, 4, ... 20  their comparisons ("$", "=", ">", ">=", "<=", "<", "<>")
//
// The block name is not stored. Written in Windows-1252 with CR LF, as the
// Windows edition wrote it (UTF-8 when a text needs it); read in either. A
// shorter file blanks the fields it lacks, and a missing comparison is "$".
struct SuchdateiInhalt {
  std::array<QString, 10> txtBenennung;
  std::array<QString, 10> comboxSuchkriterienVerknuepfen;
  SuchdateiInhalt() { comboxSuchkriterienVerknuepfen.fill(QStringLiteral("$")); }
};

constexpr int kSuchdateiZeilen = 21;
constexpr int kSuchdateiZeilenLaenge = 255;        // characters of a line at most
constexpr int kSuchdateiHoechstLaenge = 64 * 1024;  // bytes read at most

enum class SuchdateiFehler {
  Keiner,
  NichtLesbar,  // missing, a directory, no permission
  Leer,         // no bytes, or nothing but the date line
  Beschaedigt,  // control characters, or a comparison that is none of the seven
  ZuLang,       // more than 21 lines, a line over 255 characters, or too many bytes
};

// The search in a file's contents. On refusal `inhalt` is left untouched.
SuchdateiFehler fctSuchdateiAusDaten(const QByteArray& daten, SuchdateiInhalt& inhalt);
SuchdateiFehler fctSuchdateiLesen(const QString& datei, SuchdateiInhalt& inhalt);
// The file's bytes; `geschrieben` is line 0.
QByteArray fctSuchdateiDaten(const SuchdateiInhalt& inhalt, const QString& geschrieben);
// Writes the file whole or not at all; false with the reason in *grund.
bool fctSuchdateiSchreiben(const QString& datei, const SuchdateiInhalt& inhalt, QString* grund = nullptr);

}  // namespace kolvane

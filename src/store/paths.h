#pragma once
#include <QString>
#include <QStringList>

namespace kolvane {

// Path helpers. Paths in memory are native; every helper also takes the other
// separator, so a path stored by the Windows edition ("000\0000021.slb") works
// here. Network drives and UNC shares exist only on Windows; elsewhere the
// helpers for them report none.

QChar nativerTrenner();
// Both separators turned into the native one.
QString fctNativerPfad(const QString& pfad);
// The stored form of a path below the library: backslashes, as the Windows
// edition writes SlideLib.
QString fctGespeicherterPfad(const QString& pfad);
// Whether the path is absolute (a root, a drive letter or a share).
bool fctIstAbsoluterPfad(const QString& pfad);

// Full split into drive (root, "C:\" or "\\server\share\"), directory (with
// trailing separator, without the drive), name and extension (with its dot).
// False for a path that is not absolute or is otherwise malformed.
bool fctPfadVollAufteilen(const QString& pfad, QString& laufwerk, QString& verzeichnis,
                          QString& name, QString& endung);
// Quick split of a path the program built itself: drive = first three
// characters, directory up to the last separator, extension = last four
// characters, name = the rest. It assumes a three-character extension.
void fctPfadAufteilen(const QString& pfad, QString& laufwerk, QString& verzeichnis, QString& name,
                      QString& endung);
// Drive and directory by the same rule (everything up to the last separator).
QString fctPfadOhneDatei(const QString& pfad);

// True when the library directory can't be written: writing "TEst" to
// Test.txt there fails, or the directory or its dbKolvane.mdb carries no write
// permission. The test file is deleted.
bool fctReadOnlyMitVerzeichnis(const QString& verzeichnis);

// For display: a path below 35 characters stays; a longer one becomes its first
// three characters, "..." and its right end of at most 32 characters, cut at a
// separator.
QString fctPfadAuf34ZeichenKuerzen(const QString& pfad);
QString fctBackslashAmEndeAnfuegen(const QString& pfad);
// Creates the whole chain of directories; false when the last is not there.
bool fctMkDirAlle(const QString& pfad);
// Joins with exactly one separator.
QString fctPfadZusammenfuegen(const QString& a, const QString& b);
QString fctGetAbsolutPath(const QString& pfad);
// The share of a network drive letter: Windows only; false elsewhere.
bool UNCPathFromNetworkDrive(const QString& laufwerk, QString& unc);
// Pairs of drive and share; the lists start with "0" (none).
int fctNetzlaufwerkeAuslesen(QStringList& laufwerke, QStringList& uncs);

// The file test behind everything: the path left-trimmed, the file or folder
// found also without regard to case when the exact name is missing (libraries
// from the Windows edition).
bool fctDateiExist(const QString& pfad);
// The path as it exists on disk (case resolved); the given (native) path when
// nothing fits.
QString fctDateiFinden(const QString& pfad);

}  // namespace kolvane

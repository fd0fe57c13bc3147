#pragma once
#include <QString>
#include <QStringList>
#include <cstdint>

namespace kolvane {

class Connection;

// The directory layout of a library and its file operations. A library is a
// directory: dbKolvane.mdb, dbKolvane.ini, one directory per folder (named by
// OrdnerNr) with the slide libraries <code>.slb (view 0) and <code><v>.slb,
// the variant lists <code><v>.dat, and Block/<code><v>.dwg, Block/Varia/ for
// variant drawings. No table lists the files: their names are computed, and a
// missing file means an empty view or slot.

// --- file operations: errors become false and a trace line ---
// A missing file is no error.
bool DeleteAFile(const QString& pfad);
// Moves, overwriting the target, across file systems by copy and delete;
// nothing happens when both are the same path. Failure is reported.
bool MoveAFile(const QString& von, const QString& nach);
// Copies with overwrite; a copy onto its own source is refused.
bool CopyAFile(const QString& von, const QString& nach);
bool CopyAFolder(const QString& von, const QString& nach);
bool DeleteAFolder(const QString& pfad);
bool MoveAFolder(const QString& von, const QString& nach);
// Lists the .dwg files of a directory into the text file liste, one name per
// line; returns them.
QStringList SearchDWGFiles(const QString& verzeichnis, const QString& liste);
// Files of a directory with the extension (".dwg", "*" for all), optionally
// with those of its subdirectories (as paths relative to it), sorted by name.
QStringList fctSearchFilesAry(const QString& verzeichnis, const QString& endung,
                              bool unterverzeichnisse);
bool fctFolderExist(const QString& pfad);
bool fctFolderExistAnlegen(const QString& pfad);
// The path may end in a file name (a "." in its last part): tests its folder.
bool fctFolderExistMitDatei(const QString& pfad);
// As before; the folder part with a trailing separator, "" when missing.
QString fctFolderExistRueckgabe(const QString& pfad);
// File names of a directory, sorted.
QStringList fctDateiNameAuslesen(const QString& verzeichnis);
// Replaces the last four characters (".xyz") by endung.
QString fctDateiEndungUmbenennen(const QString& pfad, const QString& endung);
bool WriteIntorTxtFile(const QString& pfad, const QString& text, bool anhaengen);

// --- paths of a library's files ---
// The library directory of a dbKolvane.mdb path (with trailing separator).
QString fctBibliotheksVerzeichnis(const QString& datenbank);
// The stored (relative, backslash) SlideLib of a block: "000\0000021.slb".
QString fctSlideLibEintrag(const QString& ordnerNr, const QString& block,
                           const QString& slideEndung);
// The file of a stored SlideLib: relative entries below the library, absolute
// ones (older libraries) as they stand; either separator.
QString fctSlideLibPfad(const QString& bibliothek, const QString& slideLib);
// <L>/<N>/<C><v><ext> (view 0 has no digit): slide library or slide of a view.
QString fctSlidePfad(const QString& bibliothek, const QString& ordnerNr, const QString& block,
                     int ansicht, const QString& slideEndung);
// <L>/<N>/Block/<C><v>.dwg
QString fctBlockDwgPfad(const QString& bibliothek, const QString& ordnerNr, const QString& block,
                        int ansicht);
// <L>/<N>/<C><v>.dat
QString fctVariantenListePfad(const QString& bibliothek, const QString& ordnerNr,
                              const QString& block, int ansicht);
// The directory of variant drawings: <L>/<N>/Block/Varia/
QString fctVariaVerzeichnis(const QString& bibliothek, const QString& ordnerNr);
// A slide address: a slide file as it stands, a slide of a library as
// "path(NAME)".
QString fctSlideAdresse(const QString& datei, const QString& slideName = QString());

// The file name <P><R><v>.dwg of a new variant drawing: P the first suffix from
// index 0 on whose file is not in Block/Varia/ yet, R the last four characters
// of the block code. "" (reported) when the suffix table can't be read.
QString fctVariaBlockName(const QString& bibliothek, const QString& ordnerNr,
                          const QString& block, int ansicht);

// Deletes a block's files, in an order that leaves a block without its picture
// rather than a picture without its block: the slide files of every view, the
// variant lists, the drawings, then each variant drawing with its row in
// tblVariationBloecke. A missing file is no error. False when a file that is
// there can't be deleted.
bool DateienBlockLoeschen(Connection& conn, const QString& bibliothek, const QString& slideLib,
                          const QString& block);
// The same for one view only, both slide extensions.
bool DateienBlockLoeschenEinzelenAnsicht(Connection& conn, const QString& bibliothek,
                                         const QString& slideLib, const QString& block,
                                         int ansicht);

}  // namespace kolvane

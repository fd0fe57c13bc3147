#pragma once
#include <QString>
#include <QStringList>
#include <cstdint>
#include <vector>

namespace kolvane {

// The consistency check of a library: the rows of dbKolvane.mdb against the
// files of its folder directories. A block's files are named by its code
// (slide library <N>/<C>.slb or .sld, drawings <N>/Block/<C><v>.dwg, variant
// lists <N>/<C><v>.dat, variant drawings <N>/Block/Varia/ named in
// tblVariationBloecke). Two kinds of row stand on no slot and are legitimate:
// "ZwischenA", a cut block waiting in the clipboard, and rows with "§" in
// Block, the blocks of a cut page ("<index>§<old code>"). Their files still
// carry the old code, which their SlideLib names.

struct Befund {
  enum class Art {
    ZeileOhneDatei,         // a block row whose slide or drawing is missing
    DateiOhneZeile,         // a file of a folder directory that no row owns
    DoppelterCode,          // a second row on the code (the file names) of another
    VarianteOhneBlock,      // a variant row whose block row is gone
    VarianteOhneDatei,      // a variant row whose drawing is missing
    MarkeOhneBlock,         // a mark whose block is gone
    BlockOhneOrdner,        // a block row whose OrdnerID names no folder
    OrdnerOhneVerzeichnis,  // a folder row without its directory
    CodeOhnePlatz,          // a block row whose code is on no slot of its folder
    SlideLibAbweichend,     // SlideLib names another file than the code's slide
  };
  Art art = Art::ZeileOhneDatei;
  QString block;  // the code concerned (Block of the row); "" for a stray file
  QString datei;  // file or directory, relative to the library with "/"; "" when none
  QString text;   // the whole finding as one line in plain German
  bool reparierbar = false;
  int64_t zeile = 0;  // Nr of the row concerned (block, variant, mark or folder row)
};

// The label of a kind, as the lines begin ("Zeile ohne Datei").
QString fctBefundArtText(Befund::Art art);

// Checks the library in the directory (opened read-only). The findings come in
// a fixed order: folders, block rows by Nr, variant rows, marks, stray files by
// path. An empty list with *fehler empty means a consistent library; when the
// library can't be read, the list is empty and *fehler says why (reported too).
std::vector<Befund> fctBibliothekPruefen(const QString& bibliotheksVerzeichnis, QString* fehler);

// Repairs what needs no guess: dangling variant rows and marks are deleted in
// one transaction, a missing folder directory is created, a stray file is
// moved aside into <library>/Verwaist/<OrdnerNr>/... (never deleted, never
// overwriting). Everything else stays and is named in the report as needing a
// person. One line per step in *bericht. False when a repair failed.
bool fctBibliothekReparieren(const QString& bibliotheksVerzeichnis,
                             const std::vector<Befund>& befunde, QStringList* bericht);

// The directory of set-aside files below a library.
QString verwaistVerzeichnisName();

}  // namespace kolvane

#pragma once
#include <QList>
#include <QString>
#include <cstdint>

namespace kolvane {

class Bibliothek;

// The variants of a block's view: further drawings of the same part (another
// size, say) without a slot or picture of their own. They come in two forms:
//
//  - rows of tblVariationBloecke (BlockID = the block's Nr) whose drawing lies
//    in the folder's Block/Varia directory. A row belongs to the view whose
//    digit stands before ".dwg" in its BlockDateiName (<P><R><v>.dwg);
//  - the older list file <folder>/<code><v>.dat (see varialiste.h), whose
//    entries name a drawing by path. It is read, never written.
//
// A view is addressed by its list file's path, as the browser and the insert
// compose it: the file need not exist. Block code and view come from the
// file's name "<code><v>.dat", the folder's directory from its directory.

struct VariantenEintrag {
  enum class Art { Ansicht, Liste, Zeile };
  Art art = Art::Ansicht;
  QString name;    // what the list shows
  QString datei;   // Liste: the path text of the file; Zeile: BlockDateiName
  int64_t nr = 0;  // Zeile: Nr of the row
};

// Code and view of a list file path; false for a name that is not
// "<code><digit 0-4>.dat" with a code of letters and digits.
bool fctVariaDatPfadZerlegen(const QString& datPfad, QString& code, int& ansicht);
// Whether the drawing's file name is one of view k (digit before ".dwg").
bool fctVariaDateiDerAnsicht(const QString& blockDateiName, int ansicht);

// Whether the view has variants: an entry in its list file, or a row of the
// block for it. Quiet: it runs on every display of a page, so a failure is
// written to the error file only, and counts as "none".
bool fctVariaEinfuegenKontroll(Bibliothek& lib, const QString& datPfad);

// The chooser's entries: first the view itself (BLKName<v>, or code and view
// when it has no name), then the list file's entries in file order, then the
// rows in table order. Empty when the block has no row.
QList<VariantenEintrag> fctVariantenEintraege(Bibliothek& lib, const QString& datPfad);

// The drawing of a list or row entry as it lies on disk (case resolved): a
// row's file in <folder>/Block/Varia/, a list entry's path with "\" read as a
// separator, relative to the folder when it is not absolute, ".dwg" added when
// it has no extension. "" when it does not exist (and for the view itself).
QString fctVariantenZeichnung(const QString& datPfad, const VariantenEintrag& e);
// The same, but a missing drawing is told to the user with its path.
QString fctVariantenZeichnungMitMeldung(const QString& datPfad, const VariantenEintrag& e);

// Deletes one row entry: its drawing, then its row. A drawing that stays
// (open in the CAD, no rights) is told and keeps its row. False when anything
// stayed.
bool fctVarianteLoeschen(Bibliothek& lib, const QString& datPfad, const VariantenEintrag& e);

// Deletes the variants of view `ansicht` of block `code` (-1: of all its
// views) after asking; the view deletion calls it before the view's files go.
// True when there was nothing to delete or everything was deleted. False when
// the user cancelled or chose to keep the variants (the view's files can't go
// without the variants' rows and drawings, so keeping them keeps the view), or
// when something could not be deleted (reported).
// Deleted are the rows with their drawings and the view's list file; the
// drawings a list file names lie outside the library and stay.
bool fctVariaBloeckeLoeschen(Bibliothek& lib, const QString& code, int ansicht);

// Message numbers of the variants.
constexpr int kVariaErsterEintrag = 950;     // the view itself can't be changed
constexpr int kVariaListenEintrag = 951;     // a list file entry can't be changed here
constexpr int kVariaLoeschenFrage = 952;
constexpr int kVariaNichtGeloescht1 = 953, kVariaNichtGeloescht2 = 954;
constexpr int kVariaZeichnungFehlt1 = 955, kVariaZeichnungFehlt2 = 956;
constexpr int kVariaKeineAuswahl = 957;
// frmMsgboxVarianten and its further questions.
constexpr int kVariaFrage1 = 281, kVariaFrage2 = 282, kVariaFrage3 = 283;
constexpr int kVariaAnsichtFrage1 = 284, kVariaAnsichtFrage2 = 285;
constexpr int kVariaAlleFrage1 = 286, kVariaAlleFrage2 = 287;
constexpr int kVariaKnopfLoeschen = 218, kVariaKnopfBehalten = 206;

}  // namespace kolvane

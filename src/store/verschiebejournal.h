#pragma once
#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <cstdint>

namespace kolvane {

class Connection;

// A block that moves to another slot changes its code, and with it the names
// of all its files and its rows. Before the first file of a block moves, the
// journal "Verschiebung.journal" in the library names the whole move: the
// block's row, old and new code, every file with its new name, the variant
// rows with their new file names. Then the files move, the rows follow in one
// transaction (block row, variant rows, marks), and the journal goes. A run
// that dies in between leaves the journal; the next opening of the library
// moves the files still under their old name on and writes the rows, so the
// block stands whole on its new code. Only one block is ever under way.
struct VerschiebeJournal {
  struct Variante {
    int64_t nr = 0;  // Nr of the row in tblVariationBloecke
    QString alt;     // BlockDateiName before the move
    QString neu;     // and after
  };
  int64_t nr = 0;        // Nr of the block's row in tblBlockInfo
  QString codeAlt;       // the code its files are named by now
  QString codeNeu;       // and after the move
  QString blockNeu;      // the row's Block after the move (the code; "ZwischenA" and
                         // "<i>§<code>" for blocks waiting in the clipboard)
  QString slideLibNeu;   // the row's SlideLib after the move
  // The moves, old path to new path, relative to the library with "/".
  QList<QPair<QString, QString>> dateien;
  QList<Variante> varianten;
};

// The journal as text (one "key=value" a line, UTF-8), and back; false when the
// text is no whole journal.
QByteArray fctVerschiebeJournalAlsText(const VerschiebeJournal& j);
bool fctVerschiebeJournalAusText(const QByteArray& daten, VerschiebeJournal& j);

// <library>/Verschiebung.journal
QString fctVerschiebeJournalPfad(const QString& bibliothek);
// Written whole or not at all; false (reported) when it can't be written.
bool fctVerschiebeJournalSchreiben(const QString& bibliothek, const VerschiebeJournal& j);
bool fctVerschiebeJournalLesen(const QString& bibliothek, VerschiebeJournal& j);
bool fctVerschiebeJournalLoeschen(const QString& bibliothek);

// The rows of a move, in one transaction: the variant rows get their new file
// names, the block row its Block and SlideLib, and the marks of the block
// (BlockNr on the old code) the new code and the new paths of slide and
// drawing. Written by Nr and to fixed values, so a second run changes nothing.
// False (reported) when the transaction failed; nothing is changed then.
bool fctVerschiebungZeilenSchreiben(Connection& conn, const QString& bibliothek,
                                    const VerschiebeJournal& j);

// What the opening of a library found.
struct VerschiebungAufgeraeumt {
  enum class Ergebnis {
    Nichts,         // no journal
    Abgeschlossen,  // the interrupted block now stands on its new code
    Verworfen,      // a journal that could not be read was removed
    Fehler,         // a file could not be moved or the rows not written; the journal stays
  };
  Ergebnis ergebnis = Ergebnis::Nichts;
  QString codeAlt, codeNeu;
  // The text for the user ("" for Nichts): what was done, in the program's
  // language (messages 990 to 992).
  QString meldung;
};

// Run when a writable library opens, with its connection: completes a block
// move that a killed run left half done. Files still under their old name are
// moved on (a file already at its new place stays), then the rows are written
// and the journal goes. No box is shown here; the caller shows meldung.
VerschiebungAufgeraeumt fctVerschiebungAufraeumen(Connection& conn, const QString& bibliothek);

// Message numbers of the block moves.
constexpr int kMsgVerschiebungAbgeschlossen = 990;
constexpr int kMsgVerschiebungBlock = 991;
constexpr int kMsgVerschiebungFehler = 992;
constexpr int kMsgVerschiebenAbgebrochen = 993;
constexpr int kMsgVerschiebenAbgebrochen2 = 994;
constexpr int kMsgVerschiebenBlockFehler = 995;
constexpr int kMsgVerschiebenBlockFehler2 = 996;

}  // namespace kolvane

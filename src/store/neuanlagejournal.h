#pragma once
#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

namespace kolvane {

class Connection;

// A new block reaches the library in three steps: the journal is written, the
// row is stored (one transaction), the files are moved from the temporary
// directory, and the journal goes. A run that was killed between them leaves
// the journal; the next opening of the library finishes the block when its
// row stands and its files are still at hand, and otherwise takes back what
// half arrived. So the library never holds a row without its files nor files
// without their row. (A further view that replaces an existing one is told
// apart from the old one by its AX column only, which the old view already
// set: such a run is always finished, never taken back.)
struct NeuanlageJournal {
  QString block;            // the slot's code
  int ansicht = 0;          // the view made; 0 a new block
  bool variante = false;    // a variant's drawing (row in tblVariationBloecke)
  QString variaName;        // its file name (BlockDateiName)
  // Files of a block that stays (new slides of a view): what is at hand is
  // moved, without a word to the user; no row is ever taken back.
  bool ersetzen = false;
  // The moves, temporary file to its place in the library.
  QList<QPair<QString, QString>> dateien;
};

// The journal as text, and back; false when the text is no whole journal.
QByteArray fctJournalAlsText(const NeuanlageJournal& j);
bool fctJournalAusText(const QByteArray& daten, NeuanlageJournal& j);

// <library>/Neuanlage.journal
QString fctJournalPfad(const QString& bibliothek);
// Written whole or not at all; false (reported) when it can't be written.
bool fctJournalSchreiben(const QString& bibliothek, const NeuanlageJournal& j);
bool fctJournalLesen(const QString& bibliothek, NeuanlageJournal& j);
bool fctJournalLoeschen(const QString& bibliothek);

// What fctNeuanlageAufraeumen did.
enum class Aufraeumen { Nichts, Fertiggestellt, Zurueckgenommen, Verworfen, Fehler };
// Run when a library opens (with its connection): finishes or takes back a
// new block that a killed run left, as the journal tells.
Aufraeumen fctNeuanlageAufraeumen(Connection& conn, const QString& bibliothek);

// Takes back a new block whose row stands: the row goes (a further view's
// columns become null), the files at the places the journal names go for a
// new block or a variant, and the journal.
bool fctNeuanlageZuruecknehmen(Connection& conn, const QString& bibliothek,
                               const NeuanlageJournal& j);

}  // namespace kolvane

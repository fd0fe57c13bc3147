#pragma once
#include <QString>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>

namespace kolvane {

class Blockverwaltung;
class DateiBestand;
struct VerschiebeJournal;

// Shifting blocks along the current folder. A block's slot code is in its row
// and in the names of all its files, so moving a block one slot on renames
// every file and rewrites the row; each block goes through the journal (see
// verschiebejournal.h), in this order: journal written, slide moved, drawings
// and view slides moved, variant lists moved, variant drawings moved, then in
// one transaction the variant rows, the block row and its marks, then the
// journal removed. Blocks always move into a slot that is free, from the far
// end backwards, so no two blocks ever stand on one code, and a run that stops
// (cancel, failure, kill) leaves the later blocks moved, the earlier ones in
// place, and the gap between them.
//
// A slot counts as occupied by a block row of the folder on its code, and by a
// block waiting in the clipboard ("ZwischenA", or "<i>§<code>" of a cut page)
// whose files still carry the code: such a block moves along (its SlideLib,
// and the code after "§", follow), so no file of it is ever overwritten.
class BlockVerschieben {
 public:
  explicit BlockVerschieben(Blockverwaltung& bv);
  ~BlockVerschieben();

  enum class Ergebnis {
    Nichts,       // nothing to move (a free active slot); nothing changed
    Fertig,       // all blocks moved
    Abgebrochen,  // the user cancelled between two blocks; the library is whole
    Fehler,       // a block could not be moved; the run stopped (reported)
  };

  // Progress of a long run, asked before each block: done blocks of total.
  // Returning false cancels before the next block. Unset: never cancels. The
  // window shows it as a progress dialog with messages 199 and 200.
  std::function<bool(int done, int total)> fortschritt;

  // mnuBBlockSchieben: the blocks from the active slot up to the first free
  // slot move one slot on; the active slot becomes free. A free active slot:
  // nothing. The browser's page is read again afterwards.
  Ergebnis subBloeckeUmEinsVerschieben();

  // mnuBLeereSeite ("leere Seite einfügen"): every block from the first slot
  // of the active page on moves a whole page on (intBilder slots), the last
  // first; then the page names of the folder from the active page on move one
  // page on, in one transaction, so they stay with their blocks. The active
  // page is then empty. ohneNeuEinlesen leaves the browser to the caller.
  Ergebnis fctEineSeiteNachHinten(bool ohneNeuEinlesen = false);

  // Moves the block whose files are named by blockNrAlt (in the current
  // folder; slideLib its stored SlideLib) to blockNrNeu, which must be free:
  // its files, its variant drawings and rows, its row and its marks, through
  // the journal. False (reported) when it failed; the block then stands
  // whole on its old code (or, if even that could not be restored, the journal
  // stays for the next opening to complete).
  bool DateienUmEinePositionVerschieben(const QString& slideLib, const QString& blockNrAlt,
                                        const QString& blockNrNeu);

  // Blocks moved by the last run.
  int verschoben() const { return verschoben_; }

  // What stands on a slot: the row and how its Block is written.
  struct Belegung {
    int64_t nr = 0;
    QString block;     // the row's Block
    QString code;      // the code its files are named by
    QString slideLib;  // as stored
  };
  // The occupied slots of the current folder, by slot (-1 never appears).
  bool belegungLesen(std::map<int32_t, Belegung>& belegung);

 private:
  Ergebnis verschieben(const std::map<int32_t, Belegung>& belegung, int32_t vonSlot, int32_t abstand,
                       bool nurBisLuecke);
  bool planen(const Belegung& b, const QString& neu, VerschiebeJournal& j);
  bool blockVerschieben(const Belegung& b, const QString& neu, int lfd);
  void browserNeuEinlesen();

  Blockverwaltung& bv_;
  std::unique_ptr<DateiBestand> bestand_;  // the folder's files during a run
  int verschoben_ = 0;
};

}  // namespace kolvane

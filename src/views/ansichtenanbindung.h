#pragma once
#include <QString>
#include <functional>

namespace kolvane {

class Blockverwaltung;
class CadBridge;
class Einfuegen;
class FrmBlockverwaltung;
class NeuerBlock;

// The window side of the views: combutAnsicht shows the views of the active
// block (insert one, or make a further one), combutLoeschen and
// mnuBBlockLoeschen delete a view or the block, and the new block command on
// an occupied slot asks which view it makes. `variantenLoeschen` removes the
// variants of a view (-1: all) after asking; false when the user kept them.
// mnuBBlockBearbeiten opens the block's drawing in the host; the views dialog
// also opens a view's drawing, and renews a view's points or its slides.
void ansichtenAnbinden(FrmBlockverwaltung& frm, Blockverwaltung& bv, Einfuegen& ins, NeuerBlock& neu,
                       CadBridge& b, std::function<bool(const QString& code, int ansicht)> variantenLoeschen);

}  // namespace kolvane

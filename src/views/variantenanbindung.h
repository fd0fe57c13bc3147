#pragma once

class QWidget;

namespace kolvane {

class Blockverwaltung;
class FrmBlockverwaltung;
class Einfuegen;
class NeuerBlock;

// The window side of the variants: the browser's check that paints the active
// frame green, the insert's check and its chooser frmVariaEinfuegen, and the
// new block command's frmVariaNeu (the variants of the view before a new one
// is made; cancelling it ends the command).
void variantenAnbinden(Blockverwaltung& bv, Einfuegen& ins, NeuerBlock& neu, QWidget* eltern);

// mnuBVarianten: the variants of the active block's view 0 in frmVariaNeu;
// its "Neu" makes a further variant by the new block command.
void variantenBefehlAnbinden(FrmBlockverwaltung& frm, NeuerBlock& neu);

}  // namespace kolvane

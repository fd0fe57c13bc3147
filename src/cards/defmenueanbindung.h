#pragma once

namespace kolvane {

class Blockverwaltung;
class FrmBlockverwaltung;

// mnuEDefMenue: the card definition of the current folder in frmDefMenue; a
// stored definition redraws the page, so the heading shows the new name.
void defMenueAnbinden(FrmBlockverwaltung& frm, Blockverwaltung& bv);

}  // namespace kolvane

#pragma once

namespace kolvane {

class Blockverwaltung;
class CadBridge;
class FrmBlockverwaltung;

// A double click on a block's name in the main form's list opens its data
// card (frmDbMaske).
void dbMaskeAnbinden(FrmBlockverwaltung& frm, Blockverwaltung& bv, CadBridge* b);

}  // namespace kolvane

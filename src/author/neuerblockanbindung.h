#pragma once

namespace kolvane {

class CadBridge;
class FrmBlockverwaltung;
class NeuerBlock;

// The window side of the new block command: combutNeu and mnuBBlockNeu run
// it, its dialogs are shown over the main window, and the main form hides
// and shows for it.
void neuerBlockAnbinden(FrmBlockverwaltung& frm, NeuerBlock& neu, CadBridge& b);

}  // namespace kolvane

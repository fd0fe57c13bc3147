#pragma once

namespace kolvane {

class Einfuegen;
class FrmBlockverwaltung;

// The window side of the insert: the boxes of fraOptionen drive the insert's
// options (and, on the keystroke route, lock each other), the commands
// cmbEinfuegen, mnuBBlockEinfuegen and "drop" run it, its boards are shown
// over the main window, and the main form hides and shows for it.
void einfuegenAnbinden(FrmBlockverwaltung& frm, Einfuegen& einfuegen, bool istLT);

}  // namespace kolvane

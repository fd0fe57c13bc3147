#pragma once

namespace kolvane {

class Blockverwaltung;
class FrmBlockverwaltung;

// The main form's way to the folder and page dialogs (Extras "Ordner
// verwalten ...", Bearbeiten "Seitenverwaltung ...") and to the shifts
// (Bearbeiten "Blöcke verschieben", "leere Seite einfügen").
void wartungAnbinden(FrmBlockverwaltung& frm, Blockverwaltung& bv);

}  // namespace kolvane

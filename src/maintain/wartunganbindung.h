#pragma once

namespace kolvane {

class Blockverwaltung;
class FrmBlockverwaltung;

// The main form's way to the folder and page dialogs: Extras "Ordner
// verwalten ..." and Bearbeiten "Seitenverwaltung ...".
void wartungAnbinden(FrmBlockverwaltung& frm, Blockverwaltung& bv);

}  // namespace kolvane

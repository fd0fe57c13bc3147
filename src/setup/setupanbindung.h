#pragma once
#include <QString>
#include <functional>

namespace kolvane {

class Blockverwaltung;
class FrmBlockverwaltung;
class Settings;

// Extras "Setup ..." and "Erweitertes Setup ...": the two dialogs, and what
// the main form redoes after their OK (the insert options, the folder list,
// the page with its size and back colour, the list of libraries).
// `bibliothekOeffnen` opens a library path (the new-library button).
void setupAnbinden(FrmBlockverwaltung& frm, Blockverwaltung& bv, Settings& s,
                   std::function<bool(const QString& pfad)> bibliothekOeffnen);

}  // namespace kolvane

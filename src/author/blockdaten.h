#pragma once
#include <QString>
#include <cstdint>
#include <functional>

namespace kolvane {

class Blockverwaltung;
struct Neuanlage;

// The rows a new block, a further view and a variant write. A block is one
// row of tblBlockInfo whose Block is the slot's code, all its views in that
// row; its variants are rows of tblVariationBloecke pointing to it. Each
// routine writes its row in one transaction: it stands whole or not at all.

// View 0: the row of the active slot (new, or the one found), its SlideLib,
// folder, name (made when empty, with names for views 1 to 4 reserved), card
// values, layer, and the points of view 0. `istLT`: the keystroke route, which
// knows no points.
bool BlockdatenInDatenbankAbspeichern(Blockverwaltung& bv, Neuanlage& n, bool istLT);
// A view 1 to 4 (n.byteZuErstellendeAnsicht) of the active block: its points
// and name; on the keystroke route AX<k> "0.1" and the name.
bool BlockdatenInDatenbankAbspeichernAnsichten(Blockverwaltung& bv, Neuanlage& n, bool istLT);
// Renews the points of one view of the active block: with bytClearEntrys
// every letter's columns become 0 first, then the first bytNumberOfSlides
// points are written.
bool BlockdatenInDatenbankAbspeichernAnsichten2(Blockverwaltung& bv, const Neuanlage& n, uint8_t bytViewToSave,
                                                int bytNumberOfSlides, uint8_t bytClearEntrys);
// A variant of the active block. `nameFrage` asks for another name when the
// name is taken (frmBlocknameEingeben again): the new name, or "" to keep it.
bool subBlockdatenInDatenbankAbspeichernVariante(Blockverwaltung& bv, Neuanlage& n,
                                                 const std::function<QString()>& nameFrage);


}  // namespace kolvane

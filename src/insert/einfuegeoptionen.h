#pragma once
#include <QString>
#include <QStringList>
#include <cstdint>

namespace kolvane {

struct SetupWerte;

// The insert options: one byte per check box of fraOptionen. Each starts from
// its long... value of the setup and follows the clicks on its box.
struct EinfuegeOptionen {
  uint8_t byteBlockAusBibliothek = 0;             // checkBlock: "name=path"
  uint8_t byteUrsprungBeimEinfuegen = 0;          // checkUrsprung: explode after placing
  uint8_t byteAbfrageXFaktor = 0;                 // checkXFrage
  uint8_t byteAbfrageYFaktor = 0;                 // checkYFrage
  uint8_t byteAbfrageZFaktor = 0;                 // checkZFrage: kept, no command reads it
  uint8_t byteAbfrageEinfuegewinkel = 0;          // checkWinkel
  uint8_t byteAbfrageAttributeBeimEinfuegen = 0;  // checkAttribute
  uint8_t byteReihe = 0;                          // checkReihe: an array of the block
  uint8_t byteMehrfacheinfuegen = 0;              // checkMehr: repeat until broken off
  uint8_t byteBruchFrage = 0;                     // checkBruch: load "break" after placing

  static EinfuegeOptionen ausEinstellungen(const SetupWerte& setup);

  // The check boxes in the order of the frame.
  static const QStringList& checkBoxen();
  // The option behind a box; null for a name that is none of them.
  uint8_t* option(const QString& checkBox);
  uint8_t wert(const QString& checkBox) const;
  // A click on a box: its option takes the box's state. False for an unknown box.
  bool setzen(const QString& checkBox, bool an);
};

// Which of the two boxes the keystroke route locks. There the host can't be
// asked for the angle and the X factor in one go: with one of them on, the
// other box is disabled.
struct OptionenSperre {
  bool checkWinkel = true;
  bool checkXFrage = true;
};
// The boxes' state after a click on `geklickt` (or at start, ""). Both on,
// which only the defaults can bring, leaves the clicked box usable
// (checkWinkel at start) so the user can always get out.
OptionenSperre fctOptionenSperre(const EinfuegeOptionen& o, bool istLT,
                                 const QString& geklickt = QString());

}  // namespace kolvane

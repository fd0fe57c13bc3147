#pragma once
#include <QString>
#include <array>
#include <cstdint>
#include <functional>

namespace kolvane {

class Bibliothek;

// One of the five views of a block as the view dialogs show it.
struct AnsichtBild {
  bool vorhanden = false;  // its point A is set (view 0 always)
  QString name;            // BLKName<k>
  QString adresse;         // what the picture shows: its slide, or the blank picture
};
using AnsichtenBilder = std::array<AnsichtBild, 5>;

// The views of the block with this code in the current folder: presence by
// point A, the picture of a view only when its file exists (the slide library
// with "<k>A", else the plain slide, else the blank picture `frei2`).
AnsichtenBilder fctAnsichtenLesen(Bibliothek& lib, const QString& code, const QString& frei2);

// The logic the three view dialogs share: five pictures and the one chosen.
class AnsichtenWahl {
 public:
  AnsichtenBilder bilder;
  int gewaehlt = 0;  // the view under the cursor
  // A click on picture k; false when k is no picture.
  bool sldAnsichten_MouseDown(int k);
};

}  // namespace kolvane

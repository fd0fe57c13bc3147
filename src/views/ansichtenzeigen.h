#pragma once
#include <functional>

#include "ansichten.h"

namespace kolvane {

// The logic of frmAnsichten: the views of the active block; the chosen one is
// inserted, or a further view is made.
class AnsichtenZeigen : public AnsichtenWahl {
 public:
  // The insert of view k of the active block.
  std::function<void(int ansicht)> einfuegen;
  // The new block command on the block's slot (its chooser asks which view).
  std::function<void()> neueAnsicht;

  // cmbEinfuegen (and a double click): true when the dialog closes.
  bool cmbEinfuegen_Click();
  bool mnuBBlock_Click();
};

}  // namespace kolvane

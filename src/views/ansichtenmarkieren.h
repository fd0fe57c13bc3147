#pragma once
#include <cstdint>

#include "ansichten.h"

class QWidget;

namespace kolvane {

class Blockverwaltung;

// The logic of frmAnsichtenMarkieren: which view of the active block a mark
// takes. Only a view that exists can be marked.
class AnsichtenMarkieren : public AnsichtenWahl {
 public:
  uint8_t bytMarkierteAnsicht = 0;
  // True when the dialog closes with the chosen view.
  bool cmbMarkieren_Click();
};

// The dialog over the active block's views: the view to mark, or -1 when the
// user cancelled.
int frmAnsichtenMarkierenZeigen(Blockverwaltung& bv, QWidget* eltern);

}  // namespace kolvane

#pragma once
#include <QString>

#include "ansichten.h"

namespace kolvane {

struct Neuanlage;

// The logic of frmAnsichtenNeu: which view of an occupied slot the new block
// command makes. A view that does not exist yet is made; an existing one is
// replaced or gets a variant, as the user answers. View 0 is never replaced
// from here (the block would have to be deleted first): only a variant can be
// added to it.
class AnsichtenNeu : public AnsichtenWahl {
 public:
  // `datBasis`: the list file path of the block without view digit and ".dat".
  AnsichtenNeu(Neuanlage& n, QString datBasis) : n_(n), datBasis_(std::move(datBasis)) {}

  // cmbNeu on the chosen view: true when the dialog closes with a choice.
  bool cmbNeu_Click();
  // The variant list of the chosen view, set when a variant is to be made.
  QString strDatDateiBlockvaria;

 private:
  Neuanlage& n_;
  QString datBasis_;
};

}  // namespace kolvane

#pragma once
#include <QString>
#include <functional>

#include "ansichten.h"

namespace kolvane {

class Blockverwaltung;

// The logic of frmAnsichtenLoeschen: one view of the active block goes (its
// points, its slides, its drawing, its variants), or view 0 and with it the
// whole block. The other views keep their numbers.
class AnsichtenLoeschen : public AnsichtenWahl {
 public:
  explicit AnsichtenLoeschen(Blockverwaltung& bv) : bv_(bv) {}

  // The variants of a view (-1: of every view) go, after the user's answer;
  // false when the user kept them and so nothing is to be deleted.
  std::function<bool(const QString& code, int ansicht)> fctVariaBloeckeLoeschen;

  // The chosen view; true when something was deleted.
  bool cmbLoeschen_Click();
  // Every view, that is the block, after one question.
  bool cmbAlleLoeschen_Click();

 private:
  bool ansichtLoeschen(int k);
  bool blockLoeschen(bool fragen);
  Blockverwaltung& bv_;
};

}  // namespace kolvane

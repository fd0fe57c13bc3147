#pragma once
#include <QString>

namespace kolvane {

class Connection;

// The logic of frmBlocknameEingeben: the name of a new block, view or
// variant. An empty name is legal for a block (the storage makes one); a
// variant needs a name that none of the library's variants has.
class BlocknameEingeben {
 public:
  explicit BlocknameEingeben(Connection& conn) : conn_(conn) {}

  bool variante = false;
  QString txtBlocknameEingeben;

  // Checks the text; false shows the reason and the dialog stays.
  bool cmbOk_Click();

  static constexpr int kMaxLaenge = 32;

 private:
  bool fctNameVariaBlockVorhanden(const QString& name);
  Connection& conn_;
};

}  // namespace kolvane

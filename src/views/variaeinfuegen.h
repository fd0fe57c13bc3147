#pragma once
#include <QList>
#include <QString>

#include "einfuegen.h"
#include "varianten.h"

namespace kolvane {

class Bibliothek;

// The logic of frmVariaEinfuegen: the choice of a variant when a view that
// has variants is inserted. The list starts with the view itself (the plain
// block), chosen at the start.
class VariaEinfuegen {
 public:
  VariaEinfuegen(Bibliothek& lib, QString datPfad);
  ~VariaEinfuegen();
  VariaEinfuegen(const VariaEinfuegen&) = delete;
  VariaEinfuegen& operator=(const VariaEinfuegen&) = delete;

  const QList<VariantenEintrag>& eintraege() const { return eintraege_; }
  QStringList namen() const;
  int gewaehlt = 0;

  // cmbOk: the chosen entry. The view itself: the plain block (Keine). A
  // variant whose drawing is missing is told and nothing is chosen: false,
  // the dialog stays.
  bool cmbOk_Click();
  void cmbAbbrechen_Click();
  bool geschlossen() const { return geschlossen_; }
  // What the insert gets: Abgebrochen until OK went through.
  VarianteWahl ergebnis;

  // The chooser open at the moment (null otherwise), for scripted runs.
  static VariaEinfuegen* offen();

 private:
  QString datPfad_;
  QList<VariantenEintrag> eintraege_;
  bool geschlossen_ = false;
};

}  // namespace kolvane

#pragma once
#include <QList>
#include <QString>

#include "varianten.h"

namespace kolvane {

class Bibliothek;

// The logic of frmVariaNeu: the variants a view has, shown before a new one is
// made. cmbNeu goes on to make it; the user may first rename or delete a
// variant row (cmdVariatenNeu, by the mode chosen). The view itself (first
// entry) and the entries of an old list file are not changed here.
class VariaNeu {
 public:
  VariaNeu(Bibliothek& lib, QString datPfad);
  ~VariaNeu();
  VariaNeu(const VariaNeu&) = delete;
  VariaNeu& operator=(const VariaNeu&) = delete;

  enum class Modus { Umbenennen, Loeschen };
  Modus modus = Modus::Umbenennen;
  int gewaehlt = -1;

  const QList<VariantenEintrag>& eintraege() const { return eintraege_; }
  QStringList namen() const;
  const QString& datPfad() const { return datPfad_; }

  // Renames (the new name asked in the input box, until it is free or the
  // user cancels) or deletes (after asking) the chosen row, as the mode says.
  // True when the list changed.
  bool cmdVariatenNeu_Click();
  bool umbenennen();
  bool loeschen();
  void neuEinlesen();
  // Whether a variant was renamed or deleted while the dialog was open.
  bool geaendert() const { return geaendert_; }

  // The dialog open at the moment (null otherwise), for scripted runs.
  static VariaNeu* offen();

 private:
  // The chosen row entry; null (with the reason told) for anything else.
  const VariantenEintrag* zeileGewaehlt() const;
  bool nameFrei(const QString& name, int64_t ausser) const;

  Bibliothek& lib_;
  QString datPfad_;
  QList<VariantenEintrag> eintraege_;
  bool geaendert_ = false;
};

}  // namespace kolvane

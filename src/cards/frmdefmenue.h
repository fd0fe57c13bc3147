#pragma once
#include <QDialog>
#include <QList>

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace kolvane {

class Bibliothek;
class DefMenue;

// frmDefMenue: the names and defaults of the ten card fields of the current
// folder, thin over DefMenue.
class FrmDefMenue : public QDialog {
  Q_OBJECT
 public:
  FrmDefMenue(DefMenue& logik, QWidget* parent = nullptr);
  QList<QLineEdit*> txtBenennung() const { return txtBenennung_; }
  QList<QLineEdit*> txtStandardwert() const { return txtStandardwert_; }
  QCheckBox* checkGlobal() const { return checkGlobal_; }

  // Boxes to logic and back.
  void uebernehmen();
  void anzeigen();

 private:
  DefMenue& logik_;
  QList<QLineEdit*> txtBenennung_;
  QList<QLineEdit*> txtStandardwert_;
  QCheckBox* checkGlobal_ = nullptr;
};

// Loads the current folder's definition and shows frmDefMenue over eltern,
// through the prompt (a scripted run confirms by the dialog's result: 1 stores
// what the logic holds). 1 when the definition was stored, 0 otherwise.
int zeigeDefMenue(Bibliothek& lib, QWidget* eltern);

}  // namespace kolvane

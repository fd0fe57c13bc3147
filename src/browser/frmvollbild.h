#pragma once
#include <QDialog>

#include "vollbild.h"

class QPushButton;

namespace kolvane {

class SlideView;

// The full view window: one slide at the window's size, with the two step
// buttons and OK.
class FrmVollbild : public QDialog {
  Q_OBJECT
 public:
  FrmVollbild(Vollbild& logic, QWidget* parent = nullptr);
  SlideView* slide() const { return sldVollbild_; }
  QPushButton* cmbVor() const { return cmbVor_; }
  QPushButton* cmbZurueck() const { return cmbZurueck_; }

 private:
  void zeigen();
  Vollbild& logic_;
  SlideView* sldVollbild_;
  QPushButton* cmbVor_;
  QPushButton* cmbZurueck_;
};

}  // namespace kolvane

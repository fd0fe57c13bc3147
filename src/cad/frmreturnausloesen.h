#pragma once
#include <QDialog>

namespace kolvane {

class CadBridge;

// A small modal window: "Drücken Sie diese Nachricht mit der Return-Taste weg."
// Once shown it waits for the Return key (fctReturnAbwarten) and closes.
class FrmReturnAusloesen : public QDialog {
  Q_OBJECT
 public:
  explicit FrmReturnAusloesen(CadBridge& b, QWidget* parent = nullptr);

 private:
  CadBridge& b_;
};

// Shows the window modally, through the prompt, until Return came.
void frmReturnAusloesenZeigen(CadBridge& b);

}  // namespace kolvane

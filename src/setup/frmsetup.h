#pragma once
#include <QDialog>
#include <QHash>

class QButtonGroup;
class QCheckBox;
class QLineEdit;

namespace kolvane {

class Setup;

// frmSetup: the options, in the frames insert, new block and program, with
// the double-click choice; thin over Setup.
class FrmSetup : public QDialog {
  Q_OBJECT
 public:
  explicit FrmSetup(Setup& logik, QWidget* parent = nullptr);

  // The controls by their names (check boxes, text fields, options).
  QWidget* control(const QString& name) const { return controls_.value(name); }

  // Enabled states and values from the logic.
  void aktualisieren();

 private:
  Setup& logik_;
  QHash<QString, QWidget*> controls_;
  bool fuellt_ = false;
};

// Shows frmSetup over eltern through the prompt. 1 when OK wrote the values,
// 0 for Cancel. A scripted run that answers 1 presses OK on the logic.
int zeigeSetup(Setup& logik, QWidget* eltern);

}  // namespace kolvane

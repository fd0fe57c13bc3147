#pragma once
#include <QDialog>

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace kolvane {

class ErweitertesSetup;

// frmErweitertesSetup: libraries, display and language; thin over
// ErweitertesSetup.
class FrmErweitertesSetup : public QDialog {
  Q_OBJECT
 public:
  explicit FrmErweitertesSetup(ErweitertesSetup& logik, QWidget* parent = nullptr);

  // Lists, boxes and button states from the logic.
  void aktualisieren();

 private:
  ErweitertesSetup& logik_;
  QListWidget* lisDatenbanken_ = nullptr;
  QPushButton* cmdLoeschen_ = nullptr;
  QPushButton* cmdNachOben_ = nullptr;
  QPushButton* cmdNachUnten_ = nullptr;
  QComboBox* comboxBilderanzahl_ = nullptr;
  QLabel* picHintergrund_ = nullptr;
  QComboBox* cboSprachen_ = nullptr;
  bool fuellt_ = false;
};

// Shows frmErweitertesSetup over eltern through the prompt. 1 when OK wrote
// the values, 0 for Cancel. A scripted run that answers 1 presses OK on the
// logic.
int zeigeErweitertesSetup(ErweitertesSetup& logik, QWidget* eltern);

}  // namespace kolvane

#pragma once
#include <QDialog>

class QLineEdit;
class QListWidget;

namespace kolvane {

class SeitenSuche;

// The "go to page" dialog of the main form: the folder's named pages and a
// page number. OK (or a double click on a name) goes there and closes; a
// number that can't be gone to keeps the dialog open.
class FrmSeitenSuche : public QDialog {
  Q_OBJECT
 public:
  explicit FrmSeitenSuche(SeitenSuche& logik, QWidget* parent = nullptr);

 private:
  void auswahlZeigen();

  SeitenSuche& logik_;
  QListWidget* lisSeitenNamen_ = nullptr;
  QLineEdit* txtSeitenNr_ = nullptr;
};

}  // namespace kolvane

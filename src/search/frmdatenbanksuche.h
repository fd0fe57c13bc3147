#pragma once
#include <QDialog>
#include <QList>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QTableWidget;

namespace kolvane {

class DatenbankSuche;

// frmDatenbankSuche: the search dialog, thin over DatenbankSuche. It is not
// modal: it stays open while the user works in the results and the browser.
class FrmDatenbankSuche : public QDialog {
  Q_OBJECT
 public:
  explicit FrmDatenbankSuche(DatenbankSuche& logik, QWidget* parent = nullptr);
  // The logic's captions, texts and options into the controls.
  void anzeigen();
  // The boxes into the logic.
  void uebernehmen();
  // DataGrid1: the hits of the last search (the first rows of a long list).
  void trefferZeigen();

 private:
  DatenbankSuche& logik_;
  QList<QLabel*> labBenennung_;
  QList<QLineEdit*> txtBenennung_;
  QList<QComboBox*> combox_;
  QCheckBox *checkAktuellerOrdner_ = nullptr, *checkGanzeWoerter_ = nullptr,
            *chkAnsichtenVarianten_ = nullptr, *checkDirektEinfuegen_ = nullptr;
  QTableWidget* dataGrid1_ = nullptr;
};

}  // namespace kolvane

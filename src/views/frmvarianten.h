#pragma once
#include <QDialog>

class QListWidget;
class QRadioButton;

namespace kolvane {

class VariaEinfuegen;
class VariaNeu;

// frmVariaEinfuegen: the list of the view and its variants; cmbOk inserts the
// chosen one (a double click too), cmbAbbrechen ends the insert.
class FrmVariaEinfuegen : public QDialog {
  Q_OBJECT
 public:
  explicit FrmVariaEinfuegen(VariaEinfuegen& logik, QWidget* parent = nullptr);
  QListWidget* lisAuswahl() const { return lis_; }

 public slots:
  void reject() override;

 private:
  void ok();
  VariaEinfuegen& logik_;
  QListWidget* lis_ = nullptr;
};

// frmVariaNeu: the view's variants before a new one is made. cmbNeu goes on,
// cmbAbbrechen ends the new block command; cmdVariatenNeu renames or deletes
// the chosen variant as the two options say.
class FrmVariaNeu : public QDialog {
  Q_OBJECT
 public:
  explicit FrmVariaNeu(VariaNeu& logik, QWidget* parent = nullptr);
  QListWidget* lisAuswahl() const { return lis_; }

 private:
  void fuellen();
  VariaNeu& logik_;
  QListWidget* lis_ = nullptr;
  QRadioButton* optUmbenennen_ = nullptr;
  QRadioButton* optLoeschen_ = nullptr;
};

}  // namespace kolvane

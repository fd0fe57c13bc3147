#pragma once
#include <QDialog>
#include <functional>

class QLineEdit;
class QListWidget;
class QPushButton;

namespace kolvane {

class Blockverwaltung;
class OrdnerNeu;
class OrdnerUmbenennen;
class OrdnerVerwaltung;

// frmOrdnerNeu: the name field over OrdnerNeu. OK stays open on a refused name.
class FrmOrdnerNeu : public QDialog {
  Q_OBJECT
 public:
  FrmOrdnerNeu(OrdnerNeu& logik, QWidget* parent = nullptr);
  QLineEdit* txtOrdnername() const { return txtOrdnername_; }

 private:
  OrdnerNeu& logik_;
  QLineEdit* txtOrdnername_ = nullptr;
};

// frmOrdnerUmbenennen: the name field over OrdnerUmbenennen.
class FrmOrdnerUmbenennen : public QDialog {
  Q_OBJECT
 public:
  FrmOrdnerUmbenennen(OrdnerUmbenennen& logik, QWidget* parent = nullptr);
  QLineEdit* txtOrdnername() const { return txtOrdnername_; }

 private:
  OrdnerUmbenennen& logik_;
  QLineEdit* txtOrdnername_ = nullptr;
};

// frmOrdnerverwaltung: the list of folders with its commands, over
// OrdnerVerwaltung. It opens the two name dialogs for its logic.
class FrmOrdnerverwaltung : public QDialog {
  Q_OBJECT
 public:
  FrmOrdnerverwaltung(OrdnerVerwaltung& logik, QWidget* parent = nullptr);
  ~FrmOrdnerverwaltung() override;
  QListWidget* dlisOrdner() const { return dlisOrdner_; }
  // Logic to list and back.
  void anzeigen();

 private:
  void befehl(bool (OrdnerVerwaltung::*routine)());
  OrdnerVerwaltung& logik_;
  QListWidget* dlisOrdner_ = nullptr;
  QPushButton* cmbNeu_ = nullptr;
  QPushButton* cmbUmbenennen_ = nullptr;
  QPushButton* cmbLoeschen_ = nullptr;
  QPushButton* imgAuf_ = nullptr;
  QPushButton* imgAb_ = nullptr;
};

// Shows frmOrdnerverwaltung over eltern through the prompt. The import and
// export buttons run the hooks given (disabled when empty).
int zeigeOrdnerverwaltung(Blockverwaltung& bv, QWidget* eltern, std::function<void()> ordnerImport = {},
                          std::function<void()> ordnerExport = {});

}  // namespace kolvane

#pragma once
#include <QDialog>

class QLineEdit;
class QListWidget;

namespace kolvane {

class Blockverwaltung;
class SeiteNeu;
class SeiteUmbenennen;
class SeitenVerwaltung;

// frmSeiteNeu: page number and name over SeiteNeu.
class FrmSeiteNeu : public QDialog {
  Q_OBJECT
 public:
  FrmSeiteNeu(SeiteNeu& logik, QWidget* parent = nullptr);
  QLineEdit* txtSeitenNr() const { return txtSeitenNr_; }
  QLineEdit* txtSeitenname() const { return txtSeitenname_; }

 private:
  SeiteNeu& logik_;
  QLineEdit* txtSeitenNr_ = nullptr;
  QLineEdit* txtSeitenname_ = nullptr;
};

// frmSeiteUmbenennen: the name of one page over SeiteUmbenennen.
class FrmSeiteUmbenennen : public QDialog {
  Q_OBJECT
 public:
  FrmSeiteUmbenennen(SeiteUmbenennen& logik, QWidget* parent = nullptr);
  QLineEdit* txtSeitenname() const { return txtSeitenname_; }

 private:
  SeiteUmbenennen& logik_;
  QLineEdit* txtSeitenname_ = nullptr;
};

// frmSeitenverwaltung: the named pages of the current folder over
// SeitenVerwaltung; it opens the two page dialogs for its logic.
class FrmSeitenverwaltung : public QDialog {
  Q_OBJECT
 public:
  FrmSeitenverwaltung(SeitenVerwaltung& logik, QWidget* parent = nullptr);
  ~FrmSeitenverwaltung() override;
  QListWidget* lisSeiten() const { return lisSeiten_; }
  void anzeigen();

 private:
  void befehl(bool (SeitenVerwaltung::*routine)());
  SeitenVerwaltung& logik_;
  QListWidget* lisSeiten_ = nullptr;
};

// Shows frmSeitenverwaltung over eltern through the prompt (main form's menu
// and the right click on the page label).
int zeigeSeitenverwaltung(Blockverwaltung& bv, QWidget* eltern);

}  // namespace kolvane

#pragma once
#include <QDialog>
#include <QList>
#include <functional>

class QFrame;

namespace kolvane {

class AnsichtenWahl;
class SlideView;

// The window of the view dialogs (frmAnsichten, frmAnsichtenNeu,
// frmAnsichtenLoeschen): the five views side by side, the chosen one framed
// red, and the dialog's buttons. A button's action returns true to close the
// dialog as confirmed; a double click runs the first button.
class FrmAnsichten : public QDialog {
  Q_OBJECT
 public:
  struct Knopf {
    QString name;                   // control name, also its label key
    std::function<bool()> aktion;   // true: close as confirmed
  };
  FrmAnsichten(const QString& form, AnsichtenWahl& logik, QList<Knopf> knoepfe,
               QWidget* parent = nullptr);
  // The pictures again (after a view was deleted).
  void Anzeigen();

 private:
  void rahmenSetzen();
  AnsichtenWahl& logik_;
  QList<SlideView*> slides_;
  QList<QFrame*> rahmen_;
};

}  // namespace kolvane

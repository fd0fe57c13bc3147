#pragma once
#include <QDialog>
#include <QList>

class QLabel;
class QLineEdit;

namespace kolvane {

class BlocknameEingeben;
class Bildausschnitt;
class CadBridge;
class Karteidateneingabe;
class SlideView;

// The dialogs of the new block command, thin over their logic.

// frmBlocknameEingeben: the name of a new block or variant.
class FrmBlocknameEingeben : public QDialog {
  Q_OBJECT
 public:
  FrmBlocknameEingeben(BlocknameEingeben& logik, QWidget* parent = nullptr);
  QLineEdit* txtBlocknameEingeben() const { return txt_; }

 private:
  BlocknameEingeben& logik_;
  QLineEdit* txt_ = nullptr;
};

// frmKarteiDateneingabe: the data card of a new block.
class FrmKarteiDateneingabe : public QDialog {
  Q_OBJECT
 public:
  FrmKarteiDateneingabe(Karteidateneingabe& logik, QWidget* parent = nullptr);
  QList<QLineEdit*> txtBenennung() const { return txtBenennung_; }

  void reject() override;  // Escape and the window's close: cancel, asked

 private:
  Karteidateneingabe& logik_;
  QList<QLineEdit*> txtBenennung_;
  QLineEdit *txtLayer_ = nullptr, *txtLinie_ = nullptr, *txtFarbe_ = nullptr;
};

// frmBildausschnittAnpassen: the first slide, kept or framed anew.
class FrmBildausschnittAnpassen : public QDialog {
  Q_OBJECT
 public:
  FrmBildausschnittAnpassen(Bildausschnitt& logik, QWidget* parent = nullptr);
  void Anzeigen();

 private:
  Bildausschnitt& logik_;
  SlideView* sld_ = nullptr;
};

// Shows each dialog over `eltern` with the bridge knowing it (a click into
// the host brings it back to the front).
int zeigeBlocknameEingeben(BlocknameEingeben& l, CadBridge& b, QWidget* eltern);
int zeigeKarteiDateneingabe(Karteidateneingabe& l, CadBridge& b, QWidget* eltern);
int zeigeBildausschnittAnpassen(Bildausschnitt& l, CadBridge& b, QWidget* eltern);

}  // namespace kolvane

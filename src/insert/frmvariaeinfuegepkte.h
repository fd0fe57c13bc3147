#pragma once
#include <QDialog>
#include <QVector>

class QFrame;
class QPushButton;

namespace kolvane {

class SlideView;
class VariaEinfuegepkte;

// The board of insertion points: six slides, a frame around the chosen one,
// the confirm button (cmbEinfuegen, or cmbMarkieren on the marking board) and
// cmbAbbrechen. It shows the state of VariaEinfuegepkte and forwards the mouse.
class FrmVariaEinfuegepkte : public QDialog {
  Q_OBJECT
 public:
  explicit FrmVariaEinfuegepkte(VariaEinfuegepkte& logik, QWidget* parent = nullptr);

  SlideView* slide(int index) const { return index < slides_.size() ? slides_[index] : nullptr; }
  QFrame* markierungsumrandung() const { return picMarkierungsumrandung_; }
  QPushButton* bestaetigen() const { return cmbEinfuegen_; }
  QPushButton* abbrechen() const { return cmbAbbrechen_; }

 public slots:
  void reject() override;

 protected:
  bool eventFilter(QObject* o, QEvent* e) override;

 private:
  void anordnen();
  void rahmenSetzen();

  VariaEinfuegepkte& logik_;
  QWidget* bilder_ = nullptr;
  QFrame* picMarkierungsumrandung_ = nullptr;
  QVector<SlideView*> slides_;
  QPushButton* cmbEinfuegen_ = nullptr;
  QPushButton* cmbAbbrechen_ = nullptr;
};

}  // namespace kolvane

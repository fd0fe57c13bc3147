#pragma once
#include <QDialog>
#include <QList>
#include <functional>

class QFrame;
class QLabel;
class QListWidget;
class QPushButton;

namespace kolvane {

class SlideView;
class Suchergebnis;

// The window of the search results: 20 thumbnails in five columns and four
// rows, the list of their names, folder, page and name of the active hit, and
// the commands. Not modal: the search dialog stays usable beside it. All
// state and decisions are in Suchergebnis; this only draws it and forwards
// the user's clicks.
class FrmSuchergebnis : public QDialog {
  Q_OBJECT
 public:
  explicit FrmSuchergebnis(Suchergebnis& logik, QWidget* parent = nullptr);

  // The views dialog for the active hit, and its full view. Unset: nothing.
  std::function<void()> ansichtZeigen;
  std::function<void()> bild;

  // Draws the logic's state.
  void Anzeigen();

 private:
  void bildGeklickt(int i);

  Suchergebnis& logik_;
  QList<SlideView*> slides_;
  QList<QFrame*> rahmen_;
  QListWidget* lisBlockBenennung_ = nullptr;
  QLabel* labOrdnername_ = nullptr;
  QLabel* labSeitenNummer_ = nullptr;
  QLabel* labBlockName_ = nullptr;
  QPushButton* cmbVor_ = nullptr;
  QPushButton* cmbZurueck_ = nullptr;
  QPushButton* cmbGeheZu_ = nullptr;
  QPushButton* cmbEinfuegen_ = nullptr;
  QPushButton* combutAnsicht_ = nullptr;
  QPushButton* combutBild_ = nullptr;
};

}  // namespace kolvane

#pragma once
#include <QDialog>
#include <QList>
#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace kolvane {

class CadBridge;
class DbMaske;
class SlideView;

// frmDbMaske: the data card of the active block, thin over DbMaske.
class FrmDbMaske : public QDialog {
  Q_OBJECT
 public:
  FrmDbMaske(DbMaske& logik, CadBridge* bridge, QWidget* parent = nullptr);
  // The logic's values into the boxes.
  void Anzeigen();

  // The main form's insert of the active block, its full view, and the card
  // definition of the folder (true when it was saved); unset: no button.
  std::function<void()> einfuegen;
  std::function<void()> bild;
  std::function<bool()> definition;

 private:
  void uebernehmen();  // the boxes into the logic
  DbMaske& logik_;
  CadBridge* bridge_;
  SlideView* sld_ = nullptr;
  QLabel* labBlockName_ = nullptr;
  QList<QLabel*> labBenennung_;
  QList<QLineEdit*> txtBenennung_;
  QLineEdit *txtLayer_ = nullptr, *txtLinie_ = nullptr, *txtFarbe_ = nullptr;
  QPushButton *speichern_ = nullptr, *leer_ = nullptr, *layerListe_ = nullptr, *dateiKnopf_ = nullptr;
};

}  // namespace kolvane

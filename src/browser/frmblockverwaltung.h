#pragma once
#include <QHash>
#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <QVector>
#include <functional>

#include "pagemodel.h"

class QAction;
class QCheckBox;
class QComboBox;
class QFrame;
class QKeyEvent;
class QLabel;
class QListWidget;
class QMenu;
class QPushButton;
class QScrollArea;
class QToolBar;

namespace kolvane {

struct SetupWerte;

class Blockverwaltung;
class SlideView;

// The main window: draws the page model of Blockverwaltung and forwards every
// click and key to it. It holds no state of the browser.
class FrmBlockverwaltung : public QMainWindow {
  Q_OBJECT

 public:
  explicit FrmBlockverwaltung(Blockverwaltung& logic, QWidget* parent = nullptr);

  // Draws a page model (Anzeigen's result).
  void zeigen(const PageModel& model);
  // The main form steps aside while the user works in the host (false) and
  // comes back to the front (true).
  void hauptformZeigen(bool sichtbar);
  // The coloured frame around a picture, and the smallest cell of the grid: a
  // picture of 80 x 50 inside its frame.
  static constexpr int kRand = 2;
  static constexpr int kMinBildBreite = 80 + 2 * kRand, kMinBildHoehe = 50 + 2 * kRand;
  // Lays the grid out for the current size (FormularAufGroesseAngleichen).
  void FormularAufGroesseAngleichen();

  // Commands that exist but whose work is not part of the program yet stay
  // disabled, whatever the page says.
  void setImplementiert(const QString& befehl, bool ja);
  // The action or button of a command, for tests and wiring.
  QAction* action(const QString& befehl) const { return actions_.value(befehl); }
  QPushButton* button(const QString& befehl) const { return buttons_.value(befehl); }
  bool befehlAktiv(const QString& befehl) const;
  // The insert options of fraOptionen, by variable name.
  QCheckBox* option(const QString& name) const { return options_.value(name); }
  // The insert options' boxes take the setup's values again (after the
  // setup dialog's OK); each box's click handler passes its state on.
  void optionenAusEinstellungen(const SetupWerte& setup);
  SlideView* slide(int index) const { return index < slides_.size() ? slides_[index] : nullptr; }
  QFrame* rahmen(int index) const { return index < frames_.size() ? frames_[index] : nullptr; }
  QListWidget* liste() const { return lisBlockBenennung_; }
  QComboBox* seitenCombo() const { return cboSeite_; }
  QWidget* bilder() const { return gridArea_; }
  QScrollArea* bilderRollen() const { return gridScroll_; }
  QToolBar* werkzeugleiste() const { return toolbar_; }
  // The crossed frame over picture i (shown when its slide can't be read).
  QWidget* defektMarke(int index) const { return index < marken_.size() ? marken_[index] : nullptr; }
  // Gives the grid the keyboard focus (the start, and after a dialog).
  void bilderFokussieren();

  // Called when a library of the Datei menu was chosen, and when the window
  // is closed (Form_Unload decides: true lets it close).
  std::function<void(const QString& pfad)> bibliothekGewaehlt;
  std::function<bool()> formUnload;
  // Commands the window doesn't handle itself (by name, e.g. "cmbEinfuegen").
  std::function<void(const QString& befehl)> befehl;

 protected:
  void resizeEvent(QResizeEvent* e) override;
  bool eventFilter(QObject* o, QEvent* e) override;
  void closeEvent(QCloseEvent* e) override;

 private:
  QAction* addAction(QMenu* menu, const QString& name, bool toolbar = false);
  QPushButton* addButton(const QString& name);
  void bilderSteuerelementeLaden(int anzahl);  // fctBilderSteuerelementeLaden
  void befehlAusloesen(const QString& name);
  // A key on the grid: pictures, pages, Return inserts. False for other keys.
  bool bilderTaste(QKeyEvent* e);
  void timer2();
  void dragStarten();
  void dateiMenueFuellen(const PageModel& m);
  QString caption(const QString& control) const;

  Blockverwaltung& logic_;
  QWidget* gridArea_ = nullptr;
  QScrollArea* gridScroll_ = nullptr;
  QVector<QFrame*> frames_;
  QVector<SlideView*> slides_;
  QVector<QCheckBox*> checks_;
  QVector<QWidget*> marken_;
  QListWidget* lisBlockBenennung_ = nullptr;
  QComboBox* comboxVerzeichnis_ = nullptr;
  QComboBox* comboxOrdner_ = nullptr;
  QComboBox* cboSeite_ = nullptr;
  QLabel* labSeitenNummer_ = nullptr;
  QLabel* labBezeichnung_ = nullptr;
  QLabel* labNameDaten_ = nullptr;
  QLabel* status_ = nullptr;
  QLabel* statusFehler_ = nullptr;
  QMenu* mnuDatei_ = nullptr;
  QMenu* mnuBearbeiten_ = nullptr;
  QToolBar* toolbar_ = nullptr;
  QList<QAction*> dateiListe_;
  QHash<QString, QAction*> actions_;
  QHash<QString, QPushButton*> buttons_;
  QHash<QString, QCheckBox*> options_;
  QHash<QString, bool> implementiert_;
  PageModel model_;
  QStringList bibliothekenGezeigt_;
  QString bibliothekGezeigt_;
  bool fuellt_ = false;  // the code sets the controls: their events do nothing
  QTimer timer2_;
};

}  // namespace kolvane

#pragma once
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>

class QWidget;

namespace kolvane {

class Desktop;
class EventClassModule;
class Host;

// The three facts about the host that every part of the program reads. Fixed
// by ACAD_Connect at start-up and never revised during the run.
struct AcadVersionInfo {
  // A row of the version table, "AutoCAD LT" for every host of the keystroke
  // route, or "AutoCAD" for the title-only case.
  QString strACadVersion;
  quint64 hWnd = 0;         // foreground window right after the activation that succeeded
  QString strACadTitel;     // what AppActivate is given for the rest of the run
  uint8_t bytVerbunden = 0; // set on the keystroke route; nothing reads it
};

// The host state of one run: the bound host and desktop, the exchange flags,
// the guard timer and the place of the files written for the host. The main
// form owns one; the routines of the bridge take it as their first argument.
class CadBridge : public QObject {
  Q_OBJECT
 public:
  explicit CadBridge(Desktop* desktop, QObject* parent = nullptr);
  ~CadBridge() override;

  AcadVersionInfo typAcadVersionInfo;
  // The application object; null on the keystroke route.
  Host* acadApp = nullptr;
  Desktop* desktop = nullptr;

  // 2 while a host command with user input runs, 1 when its end was reported.
  uint8_t bytAcadArbeitet = 0;
  // 1 when the user broke off; each command of a series is skipped then.
  uint8_t Unterbrechung = 0;

  // Main form variables the event sink reads: whether host activation brings a
  // form of this program up, and which one (0 main form, 1 frame adjustment,
  // 2 data card, 3 block name, 4 view, 5 frmToAcivate of the sink).
  uint8_t bytEventBeruecksichtigen = 0;
  uint8_t bytBlockv0Anpassen1Datenbank2BlockName3 = 0;
  std::array<QPointer<QWidget>, 5> formulare;

  // The main form's window; the guard timer compares the active window with it.
  quint64 hWndHauptfenster = 0;

  // The event sink in use (made at start and once more by each insert).
  std::unique_ptr<EventClassModule> EventActivX;

  // How a host is reached: attach to a running one (GetObject) and start one
  // (CreateObject). Null result with the reason in *fehler when there is none.
  // Both hand out the one host object of the run (its owner lives longer than
  // the bridge); asking again must not open a second connection.
  std::function<Host*(QString* fehler)> hostGetObject;
  std::function<Host*(QString* fehler)> hostCreateObject;

  // The document that fctAcadDokOeffnen opened with bytMerken for a later close.
  QString strGemerktesDokument;

  // Files written for the host (menu copies, the menu Lisp, insert.lsp) live in
  // a per-user data directory; the program directory may be read-only.
  QString strDatenVerzeichnis;
  QString hostDatei(const QString& name) const;
  // The program's own executable, as the host's start commands name it.
  QString strExePfad;

  // True on the keystroke route: the one comparison every branch by route makes.
  bool istLT() const;

  // Timer4: every 50 ms while armed, bring the host back to the front when the
  // main form is the active window and a host command with user input runs.
  QTimer Timer4;
  void Timer4Starten();
  void Timer4Stoppen();

  // subPause sleeps; tests put a recorder here so nothing really sleeps.
  std::function<void(int ms)> pauseHook;

  // The host vanished in mid-run (AppActivate or the document failed at the
  // head of a series): the box of messages 67, 68 and 3, then the program ends.
  void subAcadNichtErreichbar();
  // Ends the program without questions: programmBeenden, or with no receiver
  // the process ends at once.
  void subSofortBeenden();

 signals:
  // The program must end without questions (the host quits or vanished). The
  // main form saves and closes, then ends; with no receiver the process ends.
  void programmBeenden();

 private:
  void timer4Tick();
};

}  // namespace kolvane

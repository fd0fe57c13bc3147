#pragma once
#include <QLocalServer>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <optional>

class QLocalSocket;

namespace kolvane {

// The start service: how the host's commands (and a second start of the
// program) steer the running program. It listens on a local socket that only
// the same user can open; the program's own command line is its client
// (`kolvane --start3 NAME`). Every call hands its value over and returns at
// once; the work itself runs later on the main form, through the signals.
class StartService : public QObject {
  Q_OBJECT
 public:
  explicit StartService(QObject* parent = nullptr);
  ~StartService() override;

  // Per user: a socket in the user's runtime directory, else one named with
  // the user's id.
  static QString defaultServerName();
  // Listens under the name. A socket left by a run that ended without closing
  // it is removed; false when another program answers there.
  bool listen(const QString& serverName = defaultServerName());
  QString fullServerName() const { return server_.fullServerName(); }
  void close() { server_.close(); }

  // Values handed over for the main form (it reads them while it loads, too).
  QString strOrdnerUebergabe;   // StartKolvane2: folder
  QString varSeiteUebergabe;    // StartKolvane2: page number or name
  QString strBlkNameUebergeben; // StartKolvane3: block name to search
  QString sDbPathUe;            // ChangeDb: library path; "TestDb" is a test marker

  // Set by the main form from the first line of its load until it is up: an
  // entry then only raises the window.
  bool bytLaedtNoch = false;
  // Set while an insert, new-block or import flow runs: calls and the timers'
  // work wait until it has ended.
  void setAblaufLaeuft(bool laeuft);
  bool ablaufLaeuft() const { return ablaufLaeuft_; }

  // The program directory that fctGetAppPath reports.
  QString strAppPfad;

  // Tests a library before ChangeDb accepts it; false with the reason refuses
  // the call: the caller gets the error text, the program keeps its library
  // and reports the failure once it is free. Unset: every path is accepted.
  std::function<bool(const QString& pfad, QString* grund)> bibliothekPruefen;

  // The methods of the start class.
  void StartKolvane();
  QString fctGetAppPath() const { return strAppPfad; }
  void StartKolvane2(const QString& strOrdner, const QString& varSeite);
  void StartKolvane3(const QString& strBlockName);
  void ChangeDb(const QString& strDbPfad);
  // Starts Timer7 (500 ms) and lets the caller go at once; true (-1).
  int16_t LBlockEinfuegen();

  // A later entry into Main: while loading only raise the window; else the
  // target jump, the library switch, and Timer5 for the rest.
  void Main();

  QTimer Timer5;  // delayed hand-over of the block name after an entry
  QTimer Timer7;  // delayed lblock insert

 signals:
  // SetForegroundWindow and BringWindowToTop on the main window.
  void fensterNachVorne();
  // fctAufOrdnerUndSeiteSpringen with the handed target.
  void aufOrdnerUndSeiteSpringen(const QString& strOrdner, const QString& varSeite);
  // The library switch: comboxVerzeichnis gets the path and its click runs.
  void bibliothekWechseln(const QString& pfad);
  // fctBlkSuchenUndDirektEinfuegen with the handed name.
  void blkSuchenUndDirektEinfuegen(const QString& strSuchtext);
  // Timer7: bytLBlockAusfuehren = 1, then cmbEinfuegen_Click.
  void lblockEinfuegen();

 private:
  void neueVerbindung();
  void anfrageLesen(QLocalSocket* s);
  QStringList antwort(const QStringList& anfrage);
  void timer5Tick();
  void timer7Tick();
  void ausfuehren(std::function<void()> arbeit);

  QLocalServer server_;
  bool ablaufLaeuft_ = false;
  QList<std::function<void()>> wartend_;
};

// True for a first argument that makes the program a client of the service:
// "--start", "--start2", "--start3", "--change-db", "--lblock".
bool istStartKommando(const QString& erstesArgument);

// How a call to the running program went.
struct StartAntwort {
  enum class Art {
    NichtErreicht,  // nobody listens under the name
    KeineAntwort,   // connected, but no reply within the time
    Ok,             // taken; wert is the reply's value
    Fehler          // refused; wert is the reason, in the program's language
  };
  Art art = Art::NichtErreicht;
  QString wert;
};
// One call. The connection is tried once; a call that was sent is never sent
// again, so waiting for a busy program can't hand the same work over twice.
StartAntwort startServiceAnfrage(const QStringList& anfrage, const QString& serverName,
                                 int timeoutMs = 5000);

// One call to the running program: the reply's value, or nullopt when no
// program answers or it refused the call (then *fehler gets its reason).
std::optional<QString> fctStartServiceAufrufen(const QStringList& anfrage,
                                               const QString& serverName,
                                               int timeoutMs = 5000,
                                               QString* fehler = nullptr);

// The client: args are the command line after the program name. 0 when the
// running program took the call; 1 when none runs ("--lblock" prints "Kolvane
// muss gestartet sein, um diese Funktion auszuführen."); 2 for a wrong call;
// 3 when the running program refused it (its reason is printed).
int runStartClient(const QStringList& args,
                   const QString& serverName = StartService::defaultServerName());

}  // namespace kolvane

#pragma once
#include <QObject>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>

#include "desktop.h"
#include "settings.h"

class QLockFile;
class QTranslator;
class QWidget;

namespace kolvane {

class Bibliothek;
class Blockverwaltung;
class CadBridge;
class Desktop;
class Einfuegen;
class NeuerBlock;
class FrmBlockverwaltung;
class Host;
class StartService;
class SucheAnbindung;

// What the command line asks for.
struct Kommandozeile {
  QString sDbPathUe;     // "/d <path>": the library to switch to
  bool lblock = false;   // "lblock": insert the last block again (second instance)
  QString host;          // "--host NAME": sandbox, x11, com
  QString screenshot;    // "--screenshot FILE": picture of the main window, then end
  static Kommandozeile lesen(const QStringList& args);
};

// What a start asks for before anything runs: the program, or only a text.
// Help and version end at once; an unknown option is an error.
struct Aufruf {
  enum class Art { Starten, Hilfe, Version, Fehler };
  Art art = Art::Starten;
  QString option;  // the option that was not understood (Fehler)
  static Aufruf pruefen(const QStringList& args);
};
QString aufrufHilfe();      // the usage text
QString programmVersion();  // the version the program was built as, e.g. "9.0"

// Qt's own texts (choosers, standard buttons) in the program's language: the
// translator for `strSprache` ("" is "deutsch"), installed in the application;
// null for English, an unknown language, or when Qt's translation file is missing.
std::unique_ptr<QTranslator> qtUebersetzungInstallieren(const QString& strSprache);

// How the program reaches its CAD host: the window side, and the automation
// object when the host has one. Tests put fakes here.
struct HostAnbindung {
  std::unique_ptr<Desktop> desktop;
  std::function<Host*(QString* fehler)> getObject;  // null: no automation host
};
using HostAnbinder = std::function<HostAnbindung(const QString& hostArt)>;
// The real hosts by name: "sandbox" (the default) connects to a running sandbox CAD.
HostAnbindung hostAnbinden(const QString& hostArt);

// The program's life: the process entry Main with its second entry through the
// start service, the loading of the main form and its closing. It owns the
// settings, the library, the browser, the host bridge and the main window.
class Programm : public QObject {
  Q_OBJECT
 public:
  Programm(Environment env, HostAnbinder anbinder = hostAnbinden);
  ~Programm() override;

  // The first entry. Returns -1 when the program runs on the event loop, else
  // the exit code of a process that ends here.
  int Main(const QStringList& args);
  // Loads the main form; false sets bytBeenden (no host, cancelled first start).
  bool Form_Load();
  // The close of the main form: false refuses it.
  bool Form_Unload();
  // Shutdown without questions (the host quits or vanished).
  void sofortBeenden();

  Settings& settings() { return *settings_; }
  Bibliothek* bibliothek() { return lib_.get(); }
  Blockverwaltung* browser() { return bv_.get(); }
  CadBridge* cad() { return cad_.get(); }
  FrmBlockverwaltung* fenster() { return frm_.get(); }
  StartService* startService() { return start_.get(); }
  Einfuegen* einfuegen() { return einfuegen_.get(); }
  NeuerBlock* neuerBlock() { return neuerBlock_.get(); }
  SucheAnbindung* suche() { return suche_.get(); }

  bool bytBeenden = false;
  bool bytLaedtNoch = false;
  Kommandozeile kommandozeile;
  // The start service's name (tests use their own).
  QString startServiceName;
  // How long a second start waits for the first's start service before it
  // gives up (the first may sit in its first-start dialog meanwhile).
  int uebergabeWartezeitMs = 60000;
  // Ends the event loop; tests replace it.
  std::function<void(int)> beenden;

 signals:
  void geladen();

 private:
  bool ersterStart();
  bool hostVerbinden();
  void fensterLagern();
  void positionenSpeichern();
  void startServiceVerbinden();
  bool sperreNehmen();
  int anErstenUebergeben();
  bool bibliothekWechseln(const QString& pfad);
  bool screenshotSchreiben();

  std::unique_ptr<Settings> settings_;
  HostAnbinder anbinder_;
  HostAnbindung anbindung_;
  std::unique_ptr<Bibliothek> lib_;
  std::unique_ptr<Blockverwaltung> bv_;
  std::unique_ptr<CadBridge> cad_;
  std::unique_ptr<FrmBlockverwaltung> frm_;
  std::unique_ptr<Einfuegen> einfuegen_;
  std::unique_ptr<NeuerBlock> neuerBlock_;
  std::unique_ptr<SucheAnbindung> suche_;
  std::unique_ptr<StartService> start_;
  std::unique_ptr<QLockFile> sperre_;
  std::unique_ptr<QTranslator> qtUebersetzung_;
  bool entladen_ = false;
};

}  // namespace kolvane

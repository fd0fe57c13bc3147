#include <QApplication>
#include <QTextStream>

#include "diagnostics.h"
#include "labels.h"
#include "msgbox.h"
#include "qtprompt.h"
#include "settings.h"

using namespace kolvane;

// The process entry. What stands so far: the settings file and temporary root
// are found, debug mode asked, the labels loaded. The main window follows.
int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Kolvane"));
  QApplication::setApplicationVersion(QStringLiteral("9.0"));

  QtPrompt qtPrompt;
  setPrompt(&qtPrompt);
  Settings settings(Environment::fromSystem());
  setCurrentSettings(&settings);
  settings.subPfadeFestlegen();
  fctGetCDebug(settings.strIniDateiVerzeichnis);

  if (!labels().fctSpracheAuslesen(0)) {
    MessageRequest r;
    r.title = QStringLiteral("Info");
    r.text = QStringLiteral("Es konnte keine Beschriftungsdatei gefunden werden.\rKolvane kann nicht gestartet werden.");
    r.icon = Icon::Information;
    prompt().message(r);
    return 1;
  }
  labels().fctBeschriftungsFileZuordnenIni();

  settings.fctLesenKolvaneIniDatei();
  settings.subLesenKolvaneIniDatei();

  QTextStream out(stdout);
  out << labels().progName() << "\n"
      << "  settings file: " << settings.strIniDateiVerzeichnis << "\n"
      << "  temporary root: " << settings.sCTemp << "\n"
      << "  language: " << labels().language() << "\n"
      << "  known libraries: " << settings.aryVerzeichnisseDatenbank.join(", ") << "\n"
      << "The main window is not built yet: this start only checks settings and labels.\n";
  out.flush();
  if (QGuiApplication::platformName() != QLatin1String("offscreen"))
    subMsgboxInfoEinzeilig(labels().progName() +
                           QStringLiteral(": Einstellungen und Beschriftungen sind geladen. "
                                          "Das Hauptfenster folgt."));
  return 0;
}

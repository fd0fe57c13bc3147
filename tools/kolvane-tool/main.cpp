#include <QGuiApplication>
#include <QTextStream>
#include <cstdio>
#include <functional>
#include <map>

#include "commands.h"

using namespace kolvane::tool;

namespace {

struct Command {
  std::function<int(const QStringList&)> run;
  const char* usage;
};

const std::map<QString, Command>& commands() {
  static const std::map<QString, Command> table = {
      {"new-library", {runNewLibrary, "new-library DIR"}},
      {"info", {runInfo, "info LIBRARY"}},
      {"codes", {runCodes, "codes LIBRARY --folder ORDNERNR --page N --slots S"}},
      {"render", {runRender, "render SLIDE --png OUT [--size WxH] [--background #RRGGBB]"}},
      {"slide-info", {runSlideInfo, "slide-info FILE"}},
#ifdef KOLVANE_TOOL_CHECK
      {"check", {runCheck, "check LIBRARY [--repair]"}},
#endif
#ifdef KOLVANE_TOOL_DEMO
      {"demo-library", {runDemoLibrary, "demo-library DIR"}},
#endif
  };
  return table;
}

// The tool speaks for itself: one line on stderr per failure. Qt's own notes
// (a missing runtime directory, font warnings of the offscreen platform) stay out.
void quiet(QtMsgType type, const QMessageLogContext&, const QString& msg) {
  if (type == QtCriticalMsg || type == QtFatalMsg) QTextStream(stderr) << msg << "\n";
}

int usage() {
  QTextStream err(stderr);
  err << "usage: kolvane-tool COMMAND ...\n";
  for (const auto& [name, c] : commands()) err << "  kolvane-tool " << c.usage << "\n";
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  // Rendering needs a GUI application, but never a display.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(quiet);
  QGuiApplication app(argc, argv);
  QStringList args = app.arguments().mid(1);
  if (args.isEmpty()) return usage();
  const QString name = args.takeFirst();
  const auto it = commands().find(name);
  if (it == commands().end()) return usage();
  return it->second.run(args);
}

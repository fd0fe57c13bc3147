// sandbox-cad: a simulated CAD host for demos and end-to-end tests.
//
//   sandbox-cad [--socket NAME] [--open DRAWING] [--picks FILE] [--script FILE]
//               [--keystroke] [--title TEXT] [--version-text TEXT] [--user-delay MS]
//               [--screenshot FILE] [--language de|en] [--feed-pending] [--user-on-poll]
//               [--history FILE]
//   sandbox-cad --batch [--open DRAWING] [--picks FILE] --script FILE [--save OUT.dxf]
//               [--language de|en]
#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QTextStream>
#include <QTimer>
#include <cstdio>

#include "automationserver.h"
#include "batch.h"
#include "drawingview.h"
#include "interpreter.h"
#include "mainwindow.h"
#include "sandboxprotocol.h"

using namespace sandbox;

namespace {

bool noDisplay() {
  return qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

bool wantsBatch(int argc, char** argv) {
  for (int i = 1; i < argc; ++i)
    if (qstrcmp(argv[i], "--batch") == 0) return true;
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && (wantsBatch(argc, argv) || noDisplay()))
    qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("sandbox-cad"));

  QCommandLineParser p;
  p.setApplicationDescription(
      QStringLiteral("Sandbox CAD: a simulated CAD host for demos and tests."));
  p.addHelpOption();
  const QCommandLineOption batch(QStringLiteral("batch"),
                                 QStringLiteral("Run a script headless and exit."));
  const QCommandLineOption open(QStringLiteral("open"), QStringLiteral("Drawing to open."),
                                QStringLiteral("DRAWING"));
  const QCommandLineOption picks(QStringLiteral("picks"),
                                 QStringLiteral("Answers of the user, one a line."),
                                 QStringLiteral("FILE"));
  const QCommandLineOption script(QStringLiteral("script"), QStringLiteral("Script to run."),
                                  QStringLiteral("FILE"));
  const QCommandLineOption save(QStringLiteral("save"),
                                QStringLiteral("Save the drawing here (batch)."),
                                QStringLiteral("OUT"));
  const QCommandLineOption socket(QStringLiteral("socket"),
                                  QStringLiteral("Name of the automation socket."),
                                  QStringLiteral("NAME"));
  const QCommandLineOption keystroke(QStringLiteral("keystroke"),
                                     QStringLiteral("Serve only the window side (no automation)."));
  const QCommandLineOption title(QStringLiteral("title"),
                                 QStringLiteral("Title before the drawing name."),
                                 QStringLiteral("TEXT"));
  const QCommandLineOption version(QStringLiteral("version-text"),
                                   QStringLiteral("Version the automation reports."),
                                   QStringLiteral("TEXT"));
  const QCommandLineOption delay(QStringLiteral("user-delay"),
                                 QStringLiteral("Milliseconds before the picks file answers."),
                                 QStringLiteral("MS"));
  const QCommandLineOption shot(QStringLiteral("screenshot"),
                                QStringLiteral("Keep a picture of the window here."),
                                QStringLiteral("FILE"));
  const QCommandLineOption language(
      QStringLiteral("language"),
      QStringLiteral("Language of the host: de (default) or en. Local keywords follow it."),
      QStringLiteral("de|en"), QStringLiteral("de"));
  const QCommandLineOption feedPending(
      QStringLiteral("feed-pending"),
      QStringLiteral("Feed strings sent while a command waits for the user to its prompt "
                     "instead of refusing them as a busy host does."));
  const QCommandLineOption userOnPoll(
      QStringLiteral("user-on-poll"),
      QStringLiteral("The picks file answers right after the program polls a key, not after "
                     "the user's delay."));
  const QCommandLineOption history(
      QStringLiteral("history"),
      QStringLiteral("Write every line of the command line history to this file as it comes."),
      QStringLiteral("FILE"));
  for (const auto& o : {batch, open, picks, script, save, socket, keystroke, title, version, delay,
                        shot, language, feedPending, userOnPoll, history})
    p.addOption(o);
  p.process(app);
  const QString lang = p.value(language).toLower();
  if (lang != QLatin1String("de") && lang != QLatin1String("en")) {
    std::fputs("sandbox-cad: --language takes de or en\n", stderr);
    return 2;
  }
  const Language hostLanguage = lang == QLatin1String("en") ? Language::English : Language::German;

  QTextStream out(stdout);
  if (p.isSet(batch)) {
    if (!p.isSet(script)) {
      std::fputs("sandbox-cad: --batch needs --script FILE\n", stderr);
      return 1;
    }
    BatchOptions b{p.value(open), p.value(picks), p.value(script), p.value(save)};
    b.language = hostLanguage;
    return runBatch(b, out);
  }

  Interpreter in;
  in.setLanguage(hostLanguage);
  in.setFeedPending(p.isSet(feedPending));
  in.setUserOnPoll(p.isSet(userOnPoll));
  const bool lt = p.isSet(keystroke);
  in.titleBase = p.isSet(title) ? p.value(title)
                 : lt           ? QStringLiteral("Sandbox CAD LT")
                                : QStringLiteral("Sandbox CAD");
  if (p.isSet(version)) in.versionText = p.value(version);
  QString error;
  if (p.isSet(picks)) {
    if (!in.picks().load(p.value(picks), &error)) {
      std::fprintf(stderr, "sandbox-cad: %s\n", qPrintable(error));
      return 1;
    }
    in.setUserMode(Interpreter::UserMode::Scripted);
    in.setUserDelay(p.isSet(delay) ? p.value(delay).toInt() : lt ? 2000 : 300);
  }

  // The history as the user reads it, for tests that check what was asked.
  QFile historyFile(p.value(history));
  if (p.isSet(history)) {
    if (!historyFile.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
      std::fprintf(stderr, "sandbox-cad: can't write %s\n", qPrintable(p.value(history)));
      return 1;
    }
    QObject::connect(&in, &Interpreter::lineAdded, &in, [&historyFile](const QString& line) {
      historyFile.write((line + QLatin1Char('\n')).toUtf8());
      historyFile.flush();
    });
  }

  MainWindow window(in);
  if (p.isSet(open) && !in.openDocument(in.resolvePath(p.value(open)), &error)) in.message(error);
  window.setWindowTitle(in.windowTitle());
  window.show();
  if (p.isSet(script) && !in.runScript(in.resolvePath(p.value(script)), &error)) in.message(error);

  AutomationServer server(in, lt);
  const QString name =
      p.isSet(socket) ? p.value(socket) : kolvane::sandboxproto::defaultSocketName();
  if (!server.listen(name, &error)) {
    std::fprintf(stderr, "sandbox-cad: %s\n", qPrintable(error));
    return 1;
  }
  server.setWindowHooks(
      WindowHooks{[&window] {
                    window.showNormal();
                    window.raise();
                    window.activateWindow();
                  },
                  [&window] { return window.isMinimized()   ? 2
                                     : window.isMaximized() ? 3
                                                            : 1; },
                  [&window](int s) {
                    if (s == 2)
                      window.showMinimized();
                    else if (s == 3)
                      window.showMaximized();
                    else
                      window.showNormal();
                  },
                  [&window] { return window.view()->lastCursor(); },
                  [&window](const QString& file) { return window.writeScreenshot(file); }});
  QObject::connect(&window, &MainWindow::activated, &server, &AutomationServer::windowActivated);
  QObject::connect(&window, &MainWindow::deactivated, &server,
                   &AutomationServer::windowDeactivated);

  // The picture of the window follows the drawing, a moment after it settles.
  QTimer shotTimer;
  shotTimer.setSingleShot(true);
  shotTimer.setInterval(300);
  if (p.isSet(shot)) {
    QObject::connect(&shotTimer, &QTimer::timeout, &window,
                     [&] { window.writeScreenshot(p.value(shot)); });
    QObject::connect(&in, &Interpreter::settled, &shotTimer, qOverload<>(&QTimer::start));
    shotTimer.start();
  }
  QObject::connect(&in, &Interpreter::quitRequested, &app, [&] {
    if (p.isSet(shot)) window.writeScreenshot(p.value(shot));
    server.announceQuit();
    QTimer::singleShot(100, &app, &QApplication::quit);
  });
  out << "sandbox-cad: listening on " << server.serverName() << (lt ? " (keystroke mode)" : "")
      << Qt::endl;
  return app.exec();
}

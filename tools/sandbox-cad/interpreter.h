#pragma once
// The command line of the sandbox CAD: one stream of input (what a user types,
// keystrokes of the program, strings sent by automation, script files), a
// command processor that runs the commands as coroutines, the Lisp subset, the
// documents and the system variables. Commands stop where they need the user;
// then a click, a typed answer or the picks file goes on.
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <coroutine>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "document.h"
#include "lisp.h"
#include "picks.h"
#include "prompttable.h"
#include "task.h"

class QTimer;

namespace sandbox {

// A question at the command line and what may answer it.
struct Ask {
  QString prompt;
  bool word = true;           // a word: an option or a name
  bool point = false;         // "x,y[,z]", "@dx,dy", a click
  bool number = false;        // a number
  bool select = false;        // an object: an entity name, a click, a window, all
  bool text = false;          // a text with blanks: only Return ends it
  bool file = false;          // a file name, quoted or not; an empty answer asks again
  std::optional<Point> base;  // for "@" points
  // The options the question takes. A word that names none of them is
  // refused and the question comes again, unless free words are asked too
  // (`word`: a name, a file).
  QList<Keyword> keywords;
};

struct Answer {
  enum Kind { Enter, Word, Point, Number, Entity, Window, All };
  Kind kind = Enter;
  QString text;
  sandbox::Point p, p2;
  double number = 0;
  int entity = 0;
  QString keyword;  // the global name of the option the word named ("Yes"), or ""
  Answer() = default;
  Answer(Kind k, QString t = {}) : kind(k), text(std::move(t)) {}
  // A word that names the option, "_" prefix or not; or, for a question with
  // keywords, the option it matched by its global name.
  bool is(const char* option) const;
};

// What arrives at a prompt before it is converted.
struct Input {
  enum Kind { Text, Empty, Cancel, Point, Window, All, Value };
  Kind kind = Empty;
  QString text;
  sandbox::Point p1, p2;
  lisp::Value value;
  Input() = default;
  explicit Input(Kind k) : kind(k) {}
};

class Interpreter;
using Command = Task<void> (*)(Interpreter&);

struct CommandDef {
  QString global;     // the name the events report ("-INSERT")
  QStringList names;  // what may be typed, lower case, without prefixes
  Command run;
  bool undoable = true;  // its changes become an undo step
};

class Interpreter : public QObject, private lisp::Environment {
  Q_OBJECT
 public:
  // How the picks file answers: at once when asked (batch), or as a user who
  // acts a moment later or right after the program polled a key (server).
  enum class UserMode { Interactive, Immediate, Scripted };

  explicit Interpreter(QObject* parent = nullptr);
  ~Interpreter() override;

  // --- documents ---
  Document& doc() { return *docs_[current_]; }
  bool hasDocument() const { return !docs_.empty(); }
  int documentCount() const { return int(docs_.size()); }
  bool openDocument(const QString& path, QString* error);
  bool closeDocument(bool save, const QString& fileName, QString* error);
  // The path of a file named at a prompt: "\" read as "/", relative to the
  // drawing's folder; `extension` added when the name has none.
  QString resolvePath(const QString& name, const QString& extension = {}) const;

  // --- input ---
  void typeLine(const QString& line);  // a line at the command line, ended by Return
  void typeText(const QString& text);  // characters as they are typed
  // SendKeys: false with the reason for a malformed key string.
  bool typeKeys(const QString& keys, QString* error);
  void cancel();                   // Escape
  void userPoint(const Point& p);  // a click in the drawing
  void userWindow(const Point& a, const Point& b);
  // A string sent by automation: it starts at the command prompt, after what
  // was sent before; it never answers a question meant for the user.
  void send(const QString& text);
  // Runs a script file as typed; false when it can't be read.
  bool runScript(const QString& path, QString* error);

  // --- automation questions answered at the command line ---
  using Reply = std::function<void(const QStringList& values)>;
  void requestPoint(std::optional<Point> base, const QString& prompt, Reply reply);
  void requestCorner(Point base, const QString& prompt, Reply reply);
  void requestString(bool blanks, const QString& prompt, Reply reply);
  void requestReal(const QString& prompt, Reply reply);
  void requestSelection(const QString& setName, Reply reply);

  // --- the user at the picks file ---
  void setUserMode(UserMode m) { userMode_ = m; }
  UserMode userMode() const { return userMode_; }
  void setUserDelay(int ms) { userDelay_ = ms; }
  PicksSource& picks() { return picks_; }
  // GetAsyncKeyState. The scripted user acts `userDelay` after the sandbox
  // started waiting for the user, as a person would, however often the program
  // polls; with `setUserOnPoll` it acts right after a poll instead (faster
  // tests that don't care about timing).
  int16_t keyQuestion(int vk);
  void setUserOnPoll(bool on) { userOnPoll_ = on; }
  KeyStates& keys() { return keys_; }

  // --- state ---
  // Nothing runs and nothing waits to be worked.
  bool idle() const;
  bool commandActive() const { return !active_.done(); }
  bool waitingForUser() const;
  QString currentPrompt() const { return prompt_; }
  // The waiting question takes text with blanks (only Return ends it).
  bool textPrompt() const { return waiting_ && waitingAsk_.text; }
  const QStringList& history() const { return history_; }
  // Line `i` of the history is an error line.
  bool isErrorLine(int i) const { return errorAt_.contains(i); }
  int entlastHandle() const;

  // --- variables ---
  QVariant variable(const QString& name, QString* error = nullptr);
  bool setVariable(const QString& name, const QVariant& value, QString* error);
  Point lastPoint() const { return lastPoint_; }
  void setLastPoint(const Point& p) { lastPoint_ = p; }

  // --- the host's language and the prompt table ---
  Language language() const { return language_; }
  void setLanguage(Language l);
  // Question `key` of `command` (their row in prompts.tsv) in the host's
  // language, %1, %2 ... filled from `args`, with the row's keywords.
  Ask prompt(const QString& command, const QString& key, const QStringList& args = {}) const;
  // A text of the table (messages too: rows whose key names the message).
  QString text(const QString& command, const QString& key, const QStringList& args = {}) const;

  // --- strictness ---
  // What happens to a string sent by automation while a command waits for
  // the user: refused as a busy host refuses (default), or fed to the prompt.
  void setFeedPending(bool on) { feedPending_ = on; }
  bool feedPending() const { return feedPending_; }
  // A modal dialog is open (ATTEDIT on the automation route): sent strings
  // are refused until the user closes it.
  bool modal() const { return modal_; }
  QString modalTitle() const { return modalTitle_; }
  // A command runs inside a Lisp (command ...) call.
  bool inLispCommand() const { return inLisp_ && feeding_; }
  // The error lines of this run: every line the command line marked as one.
  const QStringList& errorLines() const { return errors_; }

  // --- for the commands ---
  Task<Answer> ask(Ask a);
  // An error line: shown like any message, marked in the history, the batch
  // log and on standard error ("[error] ...").
  void error(const QString& text);
  void error(const QString& command, const QString& key, const QStringList& args = {}) {
    error(text(command, key, args));
  }
  // A modal dialog of a command: waits until the user closes it (Return or
  // Escape at the command line, or the picks file) and returns true for OK.
  Task<bool> modalDialog(const QString& title);
  Task<std::vector<int>> selectObjects(QString prompt = QStringLiteral("Objekte wählen: "));
  void message(const QString& text);
  void changed();  // the drawing changed: redraw, extents, undo step
  void viewChanged();
  void documentsChanged();
  void pushScript(const QString& text);
  lisp::Interpreter& lisp() { return *lisp_; }
  const CommandDef* findCommand(const QString& typed) const;
  int shellTimeoutMs = 10 * 60 * 1000;
  // Defaults a command offers the next time (donut diameters, text height).
  QMap<QString, double> defaults;
  QString versionText = QStringLiteral("19.1s (Sandbox)");
  QString titleBase = QStringLiteral("Sandbox CAD");
  QString windowTitle() const;
  void requestQuit();
  // A system variable typed as a command: the SETVAR it starts takes this name.
  QString pendingVariable;
  bool isVariable(const QString& name) const;
  bool quitting() const { return quitting_; }

 public slots:
  // Works the input as far as it goes; runs again by itself when input comes.
  void pump();

 signals:
  void lineAdded(const QString& line);
  void promptChanged(const QString& prompt);
  void drawingChanged();
  void titleChanged(const QString& title);
  void commandBegan(const QString& name);
  void commandEnded(const QString& name);
  void lispEnded();
  void quitRequested();
  // Nothing more can be done without new input (finished, or waiting for the user).
  void settled();
  void inputArrived();

 private:
  friend struct RawInput;
  struct Pending {
    QString text;                     // a sent string, or
    std::function<Task<void>()> job;  // an automation question
  };

  // lisp::Environment
  bool command(const std::vector<lisp::Value>& args, QString* error) override;
  lisp::Value entlast() override;
  void print(const QString& text) override;
  QVariant getvar(const QString& name) override { return variable(name); }
  bool setvar(const QString& name, const QVariant& value, QString* error) override {
    return setVariable(name, value, error);
  }
  bool startapp(const QString& program, const QString& argument) override;
  QString findFile(const QString& name) override;
  QString errorText(const QString& message) override;
  std::optional<QString> getString(bool blanks, const QString& prompt) override;
  // Serves the user while the Lisp waits for him: for one answer (a pause)
  // or until the running command or job has ended (a getstring); false when
  // he broke off or the sandbox quits.
  bool waitForUser(bool oneAnswer);

  std::optional<Input> take(const Ask& a);
  std::optional<Input> takeToken(QString& buffer, const Ask& a, bool endTerminates);
  void commandLine(const Input& in);
  void startCommand(const QString& typed);
  void startJob(std::function<Task<void>()> job);
  void resumeWith(Input in);
  void afterStep();
  void abortActive();
  void finishActive();
  void evalTopLisp(const QString& text);
  void flushFeed();
  bool pauseForUser();
  void settle();
  void userActs();
  void postPump();
  std::optional<Answer> convert(const Input& in, const Ask& a, QString* why);
  void echo(const QString& prompt, const QString& answer);

  std::vector<std::unique_ptr<Document>> docs_;
  int current_ = 0;
  std::unique_ptr<lisp::Interpreter> lisp_;

  QString typed_;             // typing, keystrokes and sent strings being worked
  QString script_;            // the rest of the running script
  std::deque<Input> picked_;  // clicks and windows behind their marks in typed_
  std::deque<lisp::Value> feed_;
  std::deque<Pending> pending_;

  Task<void> active_;
  QString activeName_;
  bool activeIsJob_ = false;
  bool activeUndoable_ = true;
  Document* activeDoc_ = nullptr;
  Drawing before_;
  bool drawingTouched_ = false;
  std::coroutine_handle<> waiting_;
  Ask waitingAsk_;
  std::optional<Input> resumeInput_;
  bool cancelPending_ = false;

  bool pumping_ = false;
  bool pumpPosted_ = false;
  bool inLisp_ = false;
  int transparentLisp_ = 0;
  bool feeding_ = false;
  bool pausing_ = false;
  bool lispAborted_ = false;
  int accepted_ = 0;
  int pauseMark_ = 0;
  bool quitting_ = false;

  UserMode userMode_ = UserMode::Interactive;
  int userDelay_ = 300;
  bool userOnPoll_ = false;
  QTimer* userTimer_;
  PicksSource picks_;
  KeyStates keys_;

  QString prompt_;
  QStringList history_;
  QStringList errors_;
  QSet<int> errorAt_;
  Language language_ = Language::German;
  bool feedPending_ = false;
  bool modal_ = false;
  QString modalTitle_;
  QString lastCommand_;  // what Return at the command prompt repeats
  QMap<QString, int> ints_;
  Point lastPoint_;
};

// The commands (commands_*.cpp).
const std::vector<CommandDef>& commandTable();

}  // namespace sandbox

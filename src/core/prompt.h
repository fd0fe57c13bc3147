#pragma once
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace kolvane {

// Values as the old message box used them, so stored flags and label numbers
// keep their meaning.
enum class Icon { None = 0, Critical = 16, Question = 32, Exclamation = 48, Information = 64 };
enum class Buttons { Ok = 0, OkCancel = 1, AbortRetryIgnore = 2, YesNoCancel = 3, YesNo = 4,
                     RetryCancel = 5 };
enum class Answer { None = 0, Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6,
                    No = 7 };

struct MessageRequest {
  QString text;   // lines joined by "\r"
  QString title;
  Buttons buttons = Buttons::Ok;
  Icon icon = Icon::None;
  QStringList buttonTexts;  // own captions for the buttons, in button order; empty = standard
};

struct PickResult {
  int index = -1;  // -1 = cancelled
  QString text;
};

// Every question to the user goes through this interface: the Qt implementation
// shows real dialogs, the scripted one (tests) answers from a queue and records
// what was asked.
class Prompt {
 public:
  virtual ~Prompt() = default;

  virtual Answer message(const MessageRequest& request) = 0;
  // A box with a "don't show again" check; *checked receives its state.
  virtual Answer messageWithCheck(const MessageRequest& request, const QString& checkText,
                                  bool* checked) = 0;
  // An input box; nullopt when cancelled.
  virtual std::optional<QString> input(const QString& promptText, const QString& title,
                                       const QString& defaultText) = 0;
  // An input box with a check box choice; nullopt when cancelled.
  virtual std::optional<QString> inputWithCheck(const QString& promptText, const QString& title,
                                                const QString& defaultText,
                                                const QString& checkText, bool* checked) = 0;
  // The general pick list; index -1 when cancelled.
  virtual PickResult pick(const QStringList& items, const QString& promptText,
                          const QString& title, int widthTwips) = 0;
  // File and folder choosers; "" when cancelled.
  virtual QString openFile(const QString& title, const QString& directory, const QString& filter,
                           const QString& proposedName) = 0;
  virtual QString saveFile(const QString& title, const QString& directory, const QString& filter,
                           const QString& proposedName) = 0;
  virtual QString chooseFolder(const QString& title, const QString& directory) = 0;
  // A modal form of the program: `show` runs it and returns its result. The
  // scripted prompt returns a queued result for `formName` instead (and may run
  // a queued action on the form's logic).
  virtual int dialog(const QString& formName, const std::function<int()>& show) = 0;
};

// The prompt in force. Until one is set, a prompt that answers every question
// with its default (Cancel, No, empty) so nothing hangs without a display.
Prompt& prompt();
void setPrompt(Prompt* p);

}  // namespace kolvane

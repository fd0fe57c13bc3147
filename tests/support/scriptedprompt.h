#pragma once
#include <QStringList>
#include <deque>
#include <functional>
#include <variant>

#include "prompt.h"

namespace kolvane {

// A Prompt for tests: answers from a queue, records every question. An
// unexpected question (empty queue) answers with the default (Cancel / No /
// empty) and is recorded with "UNEXPECTED" so a test can fail on it. A box
// with OK alone takes a queued answer only when one stands first.
class ScriptedPrompt final : public Prompt {
 public:
  ScriptedPrompt();   // installs itself as the prompt in force
  ~ScriptedPrompt() override;  // and removes itself

  // Queue answers, in the order the questions will come.
  ScriptedPrompt& answer(Answer a);
  ScriptedPrompt& answerWithCheck(Answer a, bool checked);
  ScriptedPrompt& text(const QString& t);        // input box (or chooser) answer
  ScriptedPrompt& cancel();                      // cancels an input, pick or chooser
  ScriptedPrompt& pickIndex(int index);
  ScriptedPrompt& dialogResult(const QString& formName, int result,
                               std::function<void()> action = {});

  // What was asked, one entry per question: "message|<title>|<text>|<buttons>|<icon>",
  // "check|...", "input|<title>|<prompt>", "pick|<title>|<items joined by ;>",
  // "openFile|<title>", "saveFile|<title>", "folder|<title>", "dialog|<form>".
  QStringList asked;
  int unexpected() const;
  bool exhausted() const { return queue_.empty(); }

  Answer message(const MessageRequest& request) override;
  Answer messageWithCheck(const MessageRequest& request, const QString& checkText,
                          bool* checked) override;
  std::optional<QString> input(const QString& promptText, const QString& title,
                               const QString& defaultText) override;
  std::optional<QString> inputWithCheck(const QString& promptText, const QString& title,
                                        const QString& defaultText, const QString& checkText,
                                        bool* checked) override;
  PickResult pick(const QStringList& items, const QString& promptText, const QString& title,
                  int widthTwips) override;
  QString openFile(const QString& title, const QString& directory, const QString& filter,
                   const QString& proposedName) override;
  QString saveFile(const QString& title, const QString& directory, const QString& filter,
                   const QString& proposedName) override;
  QString chooseFolder(const QString& title, const QString& directory) override;
  int dialog(const QString& formName, const std::function<int()>& show) override;

 private:
  struct Item {
    enum Kind { AnswerItem, TextItem, CancelItem, PickItem, DialogItem };
    explicit Item(Kind k = AnswerItem, Answer a = Answer::None) : kind(k), answer(a) {}
    Kind kind;
    Answer answer;
    bool checked = false;
    QString text;
    int index = -1;
    std::function<void()> action;
  };
  bool next(Item::Kind kind, Item* out, const QString& what);
  std::deque<Item> queue_;
  Prompt* previous_ = nullptr;
};

}  // namespace kolvane

#pragma once
#include "prompt.h"

class QWidget;

namespace kolvane {

// The Prompt of the running program: real dialogs, owned by the window given
// (the main form once it exists).
class QtPrompt final : public Prompt {
 public:
  explicit QtPrompt(QWidget* owner = nullptr) : owner_(owner) {}
  void setOwner(QWidget* owner) { owner_ = owner; }

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
  QWidget* owner_;
};

// Twips (1440 per inch) to pixels of the screen's logical resolution.
int twipsToPixels(int twips, bool horizontal = true);

}  // namespace kolvane

#include "prompt.h"

namespace kolvane {

namespace {

class SilentPrompt final : public Prompt {
 public:
  Answer message(const MessageRequest& r) override {
    switch (r.buttons) {
      case Buttons::Ok: return Answer::Ok;
      case Buttons::YesNo: return Answer::No;
      default: return Answer::Cancel;
    }
  }
  Answer messageWithCheck(const MessageRequest& r, const QString&, bool* checked) override {
    if (checked) *checked = false;
    return message(r);
  }
  std::optional<QString> input(const QString&, const QString&, const QString&) override {
    return std::nullopt;
  }
  std::optional<QString> inputWithCheck(const QString&, const QString&, const QString&,
                                        const QString&, bool* checked) override {
    if (checked) *checked = false;
    return std::nullopt;
  }
  PickResult pick(const QStringList&, const QString&, const QString&, int) override { return {}; }
  QString openFile(const QString&, const QString&, const QString&, const QString&) override {
    return {};
  }
  QString saveFile(const QString&, const QString&, const QString&, const QString&) override {
    return {};
  }
  QString chooseFolder(const QString&, const QString&) override { return {}; }
  int dialog(const QString&, const std::function<int()>&) override { return 0; }
};

SilentPrompt g_silent;
Prompt* g_prompt = nullptr;

}  // namespace

Prompt& prompt() { return g_prompt ? *g_prompt : g_silent; }
void setPrompt(Prompt* p) { g_prompt = p; }

}  // namespace kolvane

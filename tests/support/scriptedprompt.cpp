#include "scriptedprompt.h"

namespace kolvane {


ScriptedPrompt::ScriptedPrompt() {
  previous_ = &prompt();
  setPrompt(this);
}

ScriptedPrompt::~ScriptedPrompt() { setPrompt(nullptr); }

ScriptedPrompt& ScriptedPrompt::answer(Answer a) {
  queue_.push_back(Item(Item::AnswerItem, a));
  return *this;
}
ScriptedPrompt& ScriptedPrompt::answerWithCheck(Answer a, bool checked) {
  Item i(Item::AnswerItem, a);
  i.checked = checked;
  queue_.push_back(i);
  return *this;
}
ScriptedPrompt& ScriptedPrompt::text(const QString& t) {
  Item i(Item::TextItem);
  i.text = t;
  queue_.push_back(i);
  return *this;
}
ScriptedPrompt& ScriptedPrompt::cancel() {
  queue_.push_back(Item(Item::CancelItem));
  return *this;
}
ScriptedPrompt& ScriptedPrompt::pickIndex(int index) {
  Item i(Item::PickItem);
  i.index = index;
  queue_.push_back(i);
  return *this;
}
ScriptedPrompt& ScriptedPrompt::dialogResult(const QString& formName, int result,
                                             std::function<void()> action) {
  Item i(Item::DialogItem);
  i.text = formName;
  i.index = result;
  i.action = std::move(action);
  queue_.push_back(i);
  return *this;
}

int ScriptedPrompt::unexpected() const {
  int n = 0;
  for (const QString& a : asked)
    if (a.startsWith(QLatin1String("UNEXPECTED"))) ++n;
  return n;
}

bool ScriptedPrompt::next(Item::Kind kind, Item* out, const QString& what) {
  if (queue_.empty()) {
    asked << QStringLiteral("UNEXPECTED ") + what;
    return false;
  }
  Item i = queue_.front();
  // A cancel answers any input, pick or chooser.
  const bool fits = i.kind == kind || (i.kind == Item::CancelItem && kind != Item::AnswerItem);
  if (!fits) {
    asked << QStringLiteral("UNEXPECTED ") + what;
    return false;
  }
  queue_.pop_front();
  *out = i;
  return true;
}

static QString describe(const MessageRequest& r) {
  return r.title + "|" + r.text + "|" + QString::number(int(r.buttons)) + "|" +
         QString::number(int(r.icon));
}

Answer ScriptedPrompt::message(const MessageRequest& r) {
  const QString what = QStringLiteral("message|") + describe(r);
  asked << what;
  // A box with OK alone asks nothing: it needs no queued answer.
  if (r.buttons == Buttons::Ok && (queue_.empty() || queue_.front().kind != Item::AnswerItem))
    return Answer::Ok;
  Item i;
  if (!next(Item::AnswerItem, &i, what))
    return r.buttons == Buttons::Ok ? Answer::Ok
                                    : (r.buttons == Buttons::YesNo ? Answer::No : Answer::Cancel);
  return i.answer;
}

Answer ScriptedPrompt::messageWithCheck(const MessageRequest& r, const QString&, bool* checked) {
  const QString what = QStringLiteral("check|") + describe(r);
  asked << what;
  Item i;
  if (checked) *checked = false;
  if (!next(Item::AnswerItem, &i, what)) return r.buttons == Buttons::Ok ? Answer::Ok : Answer::No;
  if (checked) *checked = i.checked;
  return i.answer;
}

std::optional<QString> ScriptedPrompt::input(const QString& p, const QString& title,
                                             const QString&) {
  const QString what = QStringLiteral("input|") + title + "|" + p;
  asked << what;
  Item i;
  if (!next(Item::TextItem, &i, what) || i.kind == Item::CancelItem) return std::nullopt;
  return i.text;
}

std::optional<QString> ScriptedPrompt::inputWithCheck(const QString& p, const QString& title,
                                                      const QString& d, const QString&,
                                                      bool* checked) {
  if (checked) *checked = false;
  return input(p, title, d);
}

PickResult ScriptedPrompt::pick(const QStringList& items, const QString&, const QString& title,
                                int) {
  const QString what = QStringLiteral("pick|") + title + "|" + items.join(';');
  asked << what;
  Item i;
  if (!next(Item::PickItem, &i, what) || i.kind == Item::CancelItem) return {};
  if (i.index < 0 || i.index >= items.size()) return {};
  return {i.index, items[i.index]};
}

QString ScriptedPrompt::openFile(const QString& title, const QString&, const QString&,
                                 const QString&) {
  const QString what = QStringLiteral("openFile|") + title;
  asked << what;
  Item i;
  if (!next(Item::TextItem, &i, what) || i.kind == Item::CancelItem) return {};
  return i.text;
}

QString ScriptedPrompt::saveFile(const QString& title, const QString&, const QString&,
                                 const QString&) {
  const QString what = QStringLiteral("saveFile|") + title;
  asked << what;
  Item i;
  if (!next(Item::TextItem, &i, what) || i.kind == Item::CancelItem) return {};
  return i.text;
}

QString ScriptedPrompt::chooseFolder(const QString& title, const QString&) {
  const QString what = QStringLiteral("folder|") + title;
  asked << what;
  Item i;
  if (!next(Item::TextItem, &i, what) || i.kind == Item::CancelItem) return {};
  return i.text;
}

int ScriptedPrompt::dialog(const QString& formName, const std::function<int()>&) {
  const QString what = QStringLiteral("dialog|") + formName;
  asked << what;
  if (queue_.empty() || queue_.front().kind != Item::DialogItem ||
      queue_.front().text != formName) {
    asked << QStringLiteral("UNEXPECTED ") + what;
    return 0;
  }
  Item i = queue_.front();
  queue_.pop_front();
  if (i.action) i.action();
  return i.index;
}

}  // namespace kolvane

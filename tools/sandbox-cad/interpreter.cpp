#include "interpreter.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStringDecoder>
#include <QTimer>
#include <algorithm>
#include <cstdio>

#include "sandboxprotocol.h"
#include "sendkeys.h"

namespace sandbox {

namespace proto = kolvane::sandboxproto;

namespace {

// Marks in the typed stream for what is no character.
constexpr QChar kCancelMark(0xE000);
constexpr QChar kPickMark(0xE001);

void consumeTerminator(QString& b) {
  if (b.startsWith(QLatin1String("\r\n")))
    b.remove(0, 2);
  else if (!b.isEmpty() &&
           (b[0] == QLatin1Char(' ') || b[0] == QLatin1Char('\r') || b[0] == QLatin1Char('\n')))
    b.remove(0, 1);
}

// Drops everything up to an Escape further on; false when there is none.
bool dropToCancel(QString& b) {
  const qsizetype at = b.indexOf(kCancelMark);
  if (at < 0) return false;
  b.remove(0, at + 1);
  return true;
}

QString stripPrefixes(QString name) {
  while (name.startsWith(QLatin1Char('.')) || name.startsWith(QLatin1Char('_')) ||
         name.startsWith(QLatin1Char('\'')))
    name.remove(0, 1);
  return name;
}

const char* const kIntVariables[] = {"FILEDIA", "CMDECHO", "ATTREQ", "ORTHOMODE", "EXPERT", "SDI"};

}  // namespace

bool Answer::is(const char* options) const {
  if (kind != Word) return false;
  const QString w = stripPrefixes(text).toLower();
  const QString k = keyword.toLower();
  for (const QString& o : QString::fromUtf8(options).split(QLatin1Char(',')))
    if (w == o || (!k.isEmpty() && k == o)) return true;
  return false;
}

// The awaiter of one raw input: taken at once when it is there, otherwise the
// command is suspended until the processor resumes it with input.
struct RawInput {
  RawInput(Interpreter& i, const Ask& a) : in(i), ask(a) {}
  Interpreter& in;
  const Ask& ask;
  std::optional<Input> got;

  bool await_ready() {
    got = in.take(ask);
    return got && got->kind != Input::Cancel;
  }
  void await_suspend(std::coroutine_handle<> h) {
    in.waiting_ = h;
    in.waitingAsk_ = ask;
    if (got) in.cancelPending_ = true;  // Escape: the processor ends the command
  }
  Input await_resume() {
    if (!got || got->kind == Input::Cancel) {
      got = std::move(in.resumeInput_);
      in.resumeInput_.reset();
    }
    return got ? *got : Input{};
  }
};

Interpreter::Interpreter(QObject* parent) : QObject(parent), userTimer_(new QTimer(this)) {
  docs_.push_back(std::make_unique<Document>());
  lisp_ = std::make_unique<lisp::Interpreter>(static_cast<lisp::Environment&>(*this));
  for (const char* v : kIntVariables) ints_.insert(QString::fromLatin1(v), 0);
  ints_[QStringLiteral("FILEDIA")] = 1;
  ints_[QStringLiteral("CMDECHO")] = 1;
  ints_[QStringLiteral("ATTREQ")] = 1;
  prompt_ = text(QStringLiteral("*"), QStringLiteral("command"));
  userTimer_->setSingleShot(true);
  connect(userTimer_, &QTimer::timeout, this, [this] {
    if (waitingForUser() && picks_.hasNext()) userActs();
  });
}

Interpreter::~Interpreter() {
  active_.reset();
}

bool Interpreter::idle() const {
  return active_.done() && pending_.empty() && script_.isEmpty() && typed_.trimmed().isEmpty();
}

bool Interpreter::waitingForUser() const {
  return !active_.done() && waiting_ && !feeding_ && (!inLisp_ || pausing_);
}

QString Interpreter::windowTitle() const {
  return titleBase + QStringLiteral(" - [") + docs_[current_]->displayName + QLatin1Char(']');
}

int Interpreter::entlastHandle() const {
  const auto& e = docs_[current_]->drawing.entities;
  return e.empty() ? 0 : e.back().handle;
}

// ---------------------------------------------------------------- messages

void Interpreter::message(const QString& text) {
  for (const QString& line : text.split(QLatin1Char('\n'))) {
    history_ << line;
    emit lineAdded(line);
  }
}

void Interpreter::error(const QString& text) {
  // Marked before they are shown, so the window can colour them as they come.
  const int first = int(history_.size());
  for (int i = 0; i < int(text.count(QLatin1Char('\n'))) + 1; ++i) errorAt_.insert(first + i);
  message(text);
  errors_ << text;
  std::fprintf(stderr, "[error] %s\n", qPrintable(text));
  std::fflush(stderr);
}

void Interpreter::setLanguage(Language l) {
  language_ = l;
  if (active_.done()) {
    prompt_ = text(QStringLiteral("*"), QStringLiteral("command"));
    emit promptChanged(prompt_);
  }
}

QString Interpreter::text(const QString& command, const QString& key,
                          const QStringList& args) const {
  const PromptRow* r = PromptTable::instance().find(command, key);
  if (!r) return command + QLatin1Char('/') + key;  // a missing row shows as such
  QString t = language_ == Language::English ? r->en : r->de;
  for (const QString& a : args) t = t.arg(a);
  return t;
}

Ask Interpreter::prompt(const QString& command, const QString& key,
                        const QStringList& args) const {
  Ask a;
  a.prompt = text(command, key, args);
  if (const PromptRow* r = PromptTable::instance().find(command, key)) a.keywords = r->keywords;
  return a;
}

QString Interpreter::errorText(const QString& message) {
  return (language_ == Language::English ? QStringLiteral("; error: ")
                                         : QStringLiteral("; Fehler: ")) +
         message;
}

Task<bool> Interpreter::modalDialog(const QString& title) {
  modal_ = true;
  modalTitle_ = title;
  message(text(QStringLiteral("*"), QStringLiteral("dialogOpen"), {title}));
  Ask a;
  a.prompt = title + QStringLiteral(": ");
  a.text = true;
  const Answer x = co_await ask(a);
  modal_ = false;
  co_return x.kind != Answer::Word || x.text.isEmpty() ||
      x.text.compare(QLatin1String("ok"), Qt::CaseInsensitive) == 0;
}

void Interpreter::echo(const QString& prompt, const QString& answer) {
  QString a = answer;
  a.replace(kPickMark, QString()).replace(kCancelMark, QString());
  message(prompt + a);
}

void Interpreter::print(const QString& text) {
  if (text == QLatin1String("\n")) return;
  message(text.endsWith(QLatin1Char('\n')) ? text.chopped(1) : text);
}

void Interpreter::changed() {
  drawingTouched_ = true;
  docs_[current_]->modified = true;
  emit drawingChanged();
}

void Interpreter::viewChanged() {
  emit drawingChanged();
}

void Interpreter::documentsChanged() {
  emit titleChanged(windowTitle());
  emit drawingChanged();
}

// ---------------------------------------------------------------- input

void Interpreter::postPump() {
  emit inputArrived();
  if (pumpPosted_) return;
  pumpPosted_ = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        pumpPosted_ = false;
        pump();
      },
      Qt::QueuedConnection);
}

void Interpreter::typeLine(const QString& line) {
  typed_ += line + QLatin1Char('\r');
  postPump();
}

void Interpreter::typeText(const QString& text) {
  typed_ += text;
  postPump();
}

bool Interpreter::typeKeys(const QString& keys, QString* error) {
  const auto strokes = parseSendKeys(keys, error);
  if (!strokes) return false;
  for (const KeyStroke& k : *strokes) {
    switch (k.kind) {
      case KeyStroke::Char:
        if (!k.control && !k.alt) typed_ += k.ch;
        break;
      case KeyStroke::Enter:
        typed_ += QLatin1Char('\r');
        keys_.click(13);
        break;
      case KeyStroke::Escape:
        typed_ += kCancelMark;
        keys_.click(27);
        break;
      case KeyStroke::Backspace:
        if (!typed_.isEmpty() && typed_.back() != kCancelMark && typed_.back() != kPickMark)
          typed_.chop(1);
        break;
      default: break;
    }
  }
  postPump();
  return true;
}

void Interpreter::cancel() {
  typed_ += kCancelMark;
  postPump();
}

void Interpreter::userPoint(const Point& p) {
  Input in{Input::Point};
  in.p1 = p;
  picked_.push_back(in);
  typed_ += kPickMark;
  postPump();
}

void Interpreter::userWindow(const Point& a, const Point& b) {
  Input in{Input::Window};
  in.p1 = a;
  in.p2 = b;
  picked_.push_back(in);
  typed_ += kPickMark;
  postPump();
}

void Interpreter::send(const QString& text) {
  if (feedPending_ && waitingForUser() && !modal_) {
    typed_ += text;  // the open prompt takes it, as typed
    postPump();
    return;
  }
  pending_.push_back(Pending{text, {}});
  postPump();
}

void Interpreter::pushScript(const QString& text) {
  script_ = text;
  postPump();
}

bool Interpreter::runScript(const QString& path, QString* error) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) {
    *error = QStringLiteral("Skriptdatei nicht gefunden: %1").arg(path);
    return false;
  }
  QStringDecoder utf8(QStringDecoder::Utf8);
  const QByteArray bytes = f.readAll();
  QString text = utf8.decode(bytes);
  if (utf8.hasError()) text = QString::fromLatin1(bytes);
  pushScript(text);
  return true;
}

void Interpreter::userActs() {
  const auto p = picks_.next();
  if (!p) return;
  Input in;
  switch (p->kind) {
    case PickAnswer::Point:
      in.kind = Input::Point;
      in.p1 = p->p1;
      picked_.push_back(in);
      typed_ += kPickMark;
      keys_.click(1);
      break;
    case PickAnswer::Window:
      in.kind = Input::Window;
      in.p1 = p->p1;
      in.p2 = p->p2;
      picked_.push_back(in);
      typed_ += kPickMark;
      keys_.click(1);
      break;
    case PickAnswer::All:
      in.kind = Input::All;
      picked_.push_back(in);
      typed_ += kPickMark;
      break;
    case PickAnswer::String:
    case PickAnswer::Real:
      typed_ += p->text + QLatin1Char('\r');
      keys_.click(13);
      break;
    case PickAnswer::Escape:
      typed_ += kCancelMark;
      keys_.click(27);
      break;
    case PickAnswer::Enter:
      typed_ += QLatin1Char('\r');
      keys_.click(13);
      break;
  }
  postPump();
}

int16_t Interpreter::keyQuestion(int vk) {
  const int16_t v = keys_.question(vk);
  if (userOnPoll_ && userMode_ == UserMode::Scripted && waitingForUser() && picks_.hasNext()) {
    userTimer_->stop();
    userActs();
  }
  return v;
}

std::optional<Input> Interpreter::takeToken(QString& b, const Ask& a, bool endTerminates) {
  if (b.isEmpty()) return std::nullopt;
  const QChar c = b[0];
  if (c == kCancelMark) {
    b.remove(0, 1);
    return Input{Input::Cancel};
  }
  if (c == kPickMark) {
    b.remove(0, 1);
    if (picked_.empty()) return Input{Input::Empty};
    Input in = picked_.front();
    picked_.pop_front();
    return in;
  }
  if (c == QLatin1Char('\r') || c == QLatin1Char('\n') || (c == QLatin1Char(' ') && !a.text)) {
    consumeTerminator(b);
    return Input{Input::Empty};
  }
  if (!a.text && (c == QLatin1Char('(') || c == QLatin1Char('"'))) {
    const qsizetype end = c == QLatin1Char('(') ? lisp::Interpreter::expressionEnd(b, 0)
                                                : b.indexOf(QLatin1Char('"'), 1) + 1;
    if (end <= 0) {
      if (dropToCancel(b)) return Input{Input::Cancel};
      if (endTerminates) {  // a script that ends inside an expression
        error(QStringLiteral("Unvollständiger Ausdruck am Ende des Skripts verworfen."));
        b.clear();
      }
      return std::nullopt;
    }
    Input in;
    if (c == QLatin1Char('(')) {
      in.kind = Input::Text;
      in.text = b.left(end);
    } else {
      in.kind = Input::Value;  // a quoted name is text as it stands
      in.value = lisp::Value::str(b.mid(1, end - 2));
    }
    b.remove(0, end);
    consumeTerminator(b);
    return in;
  }
  qsizetype i = 0;
  while (i < b.size()) {
    const QChar x = b[i];
    if (x == QLatin1Char('\r') || x == QLatin1Char('\n') || x == kCancelMark || x == kPickMark ||
        (x == QLatin1Char(' ') && !a.text))
      break;
    ++i;
  }
  if (i == b.size() && !endTerminates) return std::nullopt;
  if (i < b.size() && b[i] == kCancelMark) {
    b.remove(0, i + 1);
    return Input{Input::Cancel};
  }
  Input in{Input::Text};
  in.text = b.left(i);
  b.remove(0, i);
  if (!b.isEmpty() && b[0] != kPickMark) consumeTerminator(b);
  return in;
}

std::optional<Input> Interpreter::take(const Ask& a) {
  if (feeding_) {
    if (feed_.empty()) return std::nullopt;
    Input in{Input::Value};
    in.value = feed_.front();
    feed_.pop_front();
    return in;
  }
  if (pausing_ && accepted_ != pauseMark_) return std::nullopt;
  if (!script_.isEmpty()) {
    if (auto t = takeToken(script_, a, true)) return t;
    if (!script_.isEmpty()) return std::nullopt;
  }
  if (auto t = takeToken(typed_, a, false)) return t;
  if (userMode_ == UserMode::Immediate && typed_.isEmpty()) {
    if (picks_.hasNext()) {
      userActs();
      return takeToken(typed_, a, false);
    }
    error(QStringLiteral("Keine Antwort mehr in der Pickdatei."));
    return Input{Input::Cancel};
  }
  return std::nullopt;
}

// ---------------------------------------------------------------- prompts

std::optional<Answer> Interpreter::convert(const Input& in, const Ask& a, QString* why) {
  Answer ans;
  auto textAnswer = [&](const QString& s) -> std::optional<Answer> {
    if (a.text) {
      ans.kind = Answer::Word;
      ans.text = s;
      return ans;
    }
    if (s.isEmpty()) {
      if (a.file) return std::nullopt;
      ans.kind = Answer::Enter;
      return ans;
    }
    if (a.point) {
      QString t = s;
      Point origin;
      if (t.startsWith(QLatin1Char('@'))) {
        origin = a.base ? *a.base : lastPoint_;
        t.remove(0, 1);
      }
      double v[3];
      if (proto::parsePoint(t, v)) {
        ans.kind = Answer::Point;
        ans.p = origin + Point{v[0], v[1], v[2]};
        return ans;
      }
    }
    if (a.number) {
      double d = 0;
      if (proto::parseNumber(s, &d)) {
        ans.kind = Answer::Number;
        ans.number = d;
        return ans;
      }
    }
    if (a.word || a.file || a.select || !a.keywords.isEmpty()) {
      ans.kind = Answer::Word;
      ans.text = s;
      return ans;
    }
    *why = a.point    ? text(QStringLiteral("*"), QStringLiteral("pointOrKeyword"))
           : a.number ? text(QStringLiteral("*"), QStringLiteral("numberExpected"))
                      : text(QStringLiteral("*"), QStringLiteral("invalidKeyword"));
    return std::nullopt;
  };

  switch (in.kind) {
    case Input::Empty:
      if (a.file) return std::nullopt;
      return ans;
    case Input::Point:
      if (!a.point && !a.select) break;
      ans.kind = Answer::Point;
      ans.p = in.p1;
      return ans;
    case Input::Window:
      if (a.select) {
        ans.kind = Answer::Window;
        ans.p = in.p1;
        ans.p2 = in.p2;
        return ans;
      }
      if (!a.point) break;
      ans.kind = Answer::Point;
      ans.p = in.p1;
      return ans;
    case Input::All:
      if (!a.select) break;
      ans.kind = Answer::All;
      return ans;
    case Input::Text: return textAnswer(in.text);
    case Input::Value: {
      const lisp::Value& v = in.value;
      if (v.kind == lisp::Value::Str) return textAnswer(v.s);
      if (v.kind == lisp::Value::Nil) return ans;
      if (v.isNumber()) {
        if (a.number) {
          ans.kind = Answer::Number;
          ans.number = v.number();
          return ans;
        }
        return textAnswer(lisp::toText(v, false));
      }
      if (v.kind == lisp::Value::List && a.point && v.items.size() >= 2 && v.items.size() <= 3) {
        ans.kind = Answer::Point;
        ans.p = {v.items[0].number(), v.items[1].number(),
                 v.items.size() > 2 ? v.items[2].number() : 0};
        return ans;
      }
      if (v.kind == lisp::Value::Ename && a.select) {
        ans.kind = Answer::Entity;
        ans.entity = int(v.i);
        return ans;
      }
      break;
    }
    case Input::Cancel: break;
  }
  *why = a.point ? text(QStringLiteral("*"), QStringLiteral("pointOrKeyword"))
                 : text(QStringLiteral("*"), QStringLiteral("invalidKeyword"));
  return std::nullopt;
}

namespace {

QString echoOf(const Input& in) {
  switch (in.kind) {
    case Input::Text: return in.text;
    case Input::Point: return proto::formatPoint(in.p1.x, in.p1.y, in.p1.z);
    case Input::Window:
      return QStringLiteral("Fenster %1 %2")
          .arg(proto::formatPoint(in.p1.x, in.p1.y, in.p1.z),
               proto::formatPoint(in.p2.x, in.p2.y, in.p2.z));
    case Input::All: return QStringLiteral("alle");
    case Input::Value:
      return in.value.kind == lisp::Value::Str ? in.value.s : lisp::toText(in.value, true);
    default: return {};
  }
}

}  // namespace

Task<Answer> Interpreter::ask(Ask a) {
  for (;;) {
    prompt_ = a.prompt;
    emit promptChanged(prompt_);
    Input in = co_await RawInput{*this, a};
    if (in.kind == Input::Text && !a.text && in.text.size() > 1 &&
        in.text.startsWith(QLatin1Char('\''))) {
      echo(a.prompt, in.text);
      const QString name = stripPrefixes(in.text);
      const CommandDef* def = findCommand(name);
      if (def && def->global == QLatin1String("SETVAR")) {
        co_await def->run(*this);
      } else if (isVariable(name)) {
        pendingVariable = name;
        co_await findCommand(QStringLiteral("setvar"))->run(*this);
      } else {
        error(text(QStringLiteral("*"), QStringLiteral("notTransparent")));
      }
      message(text(QStringLiteral("*"), QStringLiteral("resume"), {activeName_}));
      continue;
    }
    if (in.kind == Input::Text && !a.text && in.text.startsWith(QLatin1Char('('))) {
      echo(a.prompt, in.text);
      lisp::Value v;
      QString error;
      ++transparentLisp_;
      const bool ok = lisp_->evalText(in.text, &v, &error);
      --transparentLisp_;
      if (!ok) {
        this->error(error);
        continue;
      }
      in = Input{Input::Value};
      in.value = v;
    } else {
      echo(a.prompt, echoOf(in));
    }
    QString why;
    auto ans = convert(in, a, &why);
    if (!ans) {
      if (!why.isEmpty()) error(why);
      continue;
    }
    // An option word is one of the question's keywords, by the host's rules;
    // anything else is refused and the question comes again.
    if (ans->kind == Answer::Word && !a.keywords.isEmpty() && !a.text) {
      const int k = matchKeyword(ans->text, a.keywords, language_);
      if (k >= 0) {
        ans->keyword = a.keywords[k].global;
      } else if (!a.word) {
        error(a.point ? text(QStringLiteral("*"), QStringLiteral("pointOrKeyword"))
                      : text(QStringLiteral("*"), QStringLiteral("invalidKeyword")));
        continue;
      }
    }
    if (ans->kind == Answer::Point) lastPoint_ = ans->p;
    ++accepted_;
    co_return *ans;
  }
}

namespace {

bool inside(const Extents& x, const Point& a, const Point& b) {
  const double x0 = std::min(a.x, b.x), x1 = std::max(a.x, b.x);
  const double y0 = std::min(a.y, b.y), y1 = std::max(a.y, b.y);
  return x.valid() && x.min.x >= x0 && x.max.x <= x1 && x.min.y >= y0 && x.max.y <= y1;
}

void addUnique(std::vector<int>& sel, int handle, int* added) {
  if (std::find(sel.begin(), sel.end(), handle) != sel.end()) return;
  sel.push_back(handle);
  ++*added;
}

}  // namespace

Task<std::vector<int>> Interpreter::selectObjects(QString prompt) {
  std::vector<int> sel;
  Ask a;
  a.prompt = prompt.isEmpty() ? text(QStringLiteral("*"), QStringLiteral("selectObjects")) : prompt;
  a.select = true;
  a.point = true;
  std::optional<Point> corner;
  for (;;) {
    int added = 0;
    if (corner) {
      Ask c;
      c.prompt = text(QStringLiteral("*"), QStringLiteral("oppositeCorner"));
      c.point = true;
      c.word = false;
      const Answer x = co_await ask(c);
      const Drawing& d = doc().drawing;
      if (x.kind == Answer::Point)
        for (const Entity& e : d.entities)
          if (inside(d.extentsOf(e), *corner, x.p)) addUnique(sel, e.handle, &added);
      corner.reset();
      message(text(QStringLiteral("*"), QStringLiteral("found"), {QString::number(added)}));
      continue;
    }
    const Answer x = co_await ask(a);
    if (x.kind == Answer::Enter) break;
    Drawing& d = doc().drawing;
    switch (x.kind) {
      case Answer::Entity:
        if (d.entity(x.entity))
          addUnique(sel, x.entity, &added);
        else
          error(QStringLiteral("Objekt nicht gefunden."));
        break;
      case Answer::Point: {
        const double tolerance = doc().view.height / 100;
        for (auto it = d.entities.rbegin(); it != d.entities.rend(); ++it) {
          Extents e = d.extentsOf(*it);
          if (!e.valid()) continue;
          if (x.p.x >= e.min.x - tolerance && x.p.x <= e.max.x + tolerance &&
              x.p.y >= e.min.y - tolerance && x.p.y <= e.max.y + tolerance) {
            addUnique(sel, it->handle, &added);
            break;
          }
        }
        if (!added) corner = x.p;
        break;
      }
      case Answer::Window:
        for (const Entity& e : d.entities)
          if (inside(d.extentsOf(e), x.p, x.p2)) addUnique(sel, e.handle, &added);
        break;
      case Answer::All:
        for (const Entity& e : d.entities) addUnique(sel, e.handle, &added);
        break;
      case Answer::Word:
        if (x.is("p,v,vorher,previous")) {
          for (int h : doc().previousSelection)
            if (d.entity(h)) addUnique(sel, h, &added);
        } else if (x.is("all,alle")) {
          for (const Entity& e : d.entities) addUnique(sel, e.handle, &added);
        } else if (x.is("l,letztes,last")) {
          if (!d.entities.empty()) addUnique(sel, d.entities.back().handle, &added);
        } else {
          error(text(QStringLiteral("*"), QStringLiteral("invalidSelection")));
          continue;
        }
        break;
      default: break;
    }
    if (!corner) message(text(QStringLiteral("*"), QStringLiteral("found"), {QString::number(added)}));
  }
  doc().previousSelection = sel;
  co_return sel;
}

// ---------------------------------------------------------------- the processor

const CommandDef* Interpreter::findCommand(const QString& typed) const {
  const QString name = stripPrefixes(typed).toLower();
  for (const CommandDef& c : commandTable())
    if (c.names.contains(name)) return &c;
  return nullptr;
}

bool Interpreter::isVariable(const QString& name) const {
  static const QStringList more = {"LASTPOINT", "VIEWSIZE", "EXTMIN", "EXTMAX",
                                   "INSBASE",   "DWGPREFIX", "DWGNAME", "PDMODE",
                                   "CLAYER",    "VIEWCTR",   "CMDACTIVE"};
  const QString n = stripPrefixes(name).toUpper();
  return ints_.contains(n) || more.contains(n);
}

void Interpreter::pump() {
  if (pumping_) return;
  pumping_ = true;
  while (!quitting_) {
    if (!active_.done()) {
      if (!waiting_) break;
      auto in = take(waitingAsk_);
      if (!in) break;
      resumeWith(std::move(*in));
      continue;
    }
    Ask commandPrompt;
    if (auto in = takeToken(script_, commandPrompt, true)) {
      commandLine(*in);
      continue;
    }
    if (auto in = takeToken(typed_, commandPrompt, false)) {
      commandLine(*in);
      continue;
    }
    if (!pending_.empty()) {
      Pending p = std::move(pending_.front());
      pending_.pop_front();
      if (p.job)
        startJob(std::move(p.job));
      else
        typed_ += p.text;
      continue;
    }
    break;
  }
  pumping_ = false;
  settle();
}

void Interpreter::settle() {
  emit settled();
  if (userMode_ == UserMode::Scripted && waitingForUser() && picks_.hasNext() &&
      !userTimer_->isActive())
    userTimer_->start(userDelay_);
}

void Interpreter::commandLine(const Input& in) {
  switch (in.kind) {
    case Input::Cancel:
      message(prompt_ + text(QStringLiteral("*"), QStringLiteral("cancel")));
      script_.clear();
      return;
    case Input::Text:
      message(prompt_ + in.text);
      if (in.text.startsWith(QLatin1Char('(')))
        evalTopLisp(in.text);
      else
        startCommand(in.text);
      return;
    case Input::Value:
      message(prompt_ + in.value.s);
      startCommand(in.value.s);
      return;
    case Input::Empty:
      // Return or a blank at the command prompt repeats the last command.
      if (!lastCommand_.isEmpty()) {
        message(prompt_);
        startCommand(lastCommand_);
      }
      return;
    default: return;  // a click at the command prompt
  }
}

void Interpreter::startCommand(const QString& typed) {
  const QString name = stripPrefixes(typed);
  const CommandDef* def = findCommand(name);
  if (!def && isVariable(name)) {
    pendingVariable = name;
    def = findCommand(QStringLiteral("setvar"));
  }
  if (!def) {
    if (lisp_->hasCommand(name)) {
      inLisp_ = true;
      lispAborted_ = false;
      QString error;
      if (!lisp_->runCommand(name, &error)) this->error(error);
      inLisp_ = false;
      emit lispEnded();
      return;
    }
    error(text(QStringLiteral("*"), QStringLiteral("unknownCommand"), {name.toUpper()}));
    return;
  }
  lastCommand_ = typed;
  activeName_ = def->global;
  activeIsJob_ = false;
  activeUndoable_ = def->undoable;
  activeDoc_ = &doc();
  before_ = doc().drawing;
  drawingTouched_ = false;
  emit commandBegan(activeName_);
  active_ = def->run(*this);
  active_.start();
  afterStep();
}

void Interpreter::startJob(std::function<Task<void>()> job) {
  activeName_.clear();
  activeIsJob_ = true;
  activeUndoable_ = false;
  activeDoc_ = &doc();
  drawingTouched_ = false;
  active_ = job();
  active_.start();
  afterStep();
}

void Interpreter::resumeWith(Input in) {
  if (in.kind == Input::Cancel) {
    abortActive();
    return;
  }
  resumeInput_ = std::move(in);
  auto h = std::exchange(waiting_, {});
  h.resume();
  afterStep();
}

void Interpreter::afterStep() {
  if (cancelPending_) {
    cancelPending_ = false;
    abortActive();
  } else if (!active_.done() && !waiting_) {
    // cannot happen: a command is suspended only at an input
  } else if (active_.done()) {
    finishActive();
  }
}

void Interpreter::finishActive() {
  const QString name = activeName_;
  const bool job = activeIsJob_;
  active_.reset();
  waiting_ = {};
  const bool docAlive = std::any_of(docs_.begin(), docs_.end(),
                                    [this](const auto& d) { return d.get() == activeDoc_; });
  if (!job && docAlive && drawingTouched_ && activeUndoable_) activeDoc_->recordStep(before_, name);
  activeDoc_ = nullptr;
  prompt_ = text(QStringLiteral("*"), QStringLiteral("command"));
  emit promptChanged(prompt_);
  if (!job) emit commandEnded(name);
}

void Interpreter::abortActive() {
  message(text(QStringLiteral("*"), QStringLiteral("cancel")));
  modal_ = false;
  script_.clear();
  feed_.clear();
  if (inLisp_) lispAborted_ = true;
  finishActive();
}

// ---------------------------------------------------------------- Lisp

void Interpreter::evalTopLisp(const QString& text) {
  inLisp_ = true;
  lispAborted_ = false;
  lisp::Value v;
  QString error;
  const bool ok = lisp_->evalText(text, &v, &error);
  inLisp_ = false;
  feeding_ = false;
  pausing_ = false;
  feed_.clear();
  if (!ok && lispAborted_)
    message(error);  // the user broke off: the host says so, but it is no fault
  else if (!ok)
    this->error(error);
  else if (!(v.kind == lisp::Value::Str && v.s.isEmpty()))
    message(lisp::toText(v, true));
  emit lispEnded();
}

void Interpreter::flushFeed() {
  feeding_ = true;
  while (!feed_.empty() && !quitting_) {
    if (active_.done()) {
      const lisp::Value v = feed_.front();
      feed_.pop_front();
      if (v.kind == lisp::Value::Str && v.s.isEmpty()) {
        // Return at the command prompt: the last command again.
        if (!lastCommand_.isEmpty()) {
          message(prompt_);
          startCommand(lastCommand_);
        }
        continue;
      }
      message(prompt_ + lisp::toText(v, false));
      if (v.kind == lisp::Value::Str)
        startCommand(v.s);
      else
        error(text(QStringLiteral("*"), QStringLiteral("unknownCommand"), {lisp::toText(v, true)}));
      continue;
    }
    if (!waiting_) break;
    auto in = take(waitingAsk_);
    if (!in) break;
    resumeWith(std::move(*in));
  }
  feeding_ = false;
}

bool Interpreter::pauseForUser() {
  if (active_.done() || !waiting_) return true;
  return waitForUser(true);
}

bool Interpreter::command(const std::vector<lisp::Value>& args, QString* error) {
  if (!inLisp_ || transparentLisp_ > 0) {
    *error = QStringLiteral("COMMAND kann hier nicht verwendet werden");
    return false;
  }
  if (args.empty()) {  // (command) alone breaks off the running command
    if (!active_.done()) {
      const bool was = lispAborted_;
      abortActive();
      lispAborted_ = was;
    }
    return true;
  }
  // Each argument is one whole answer to one prompt: " " and "" are each a
  // Return, whatever stands before them.
  for (const lisp::Value& v : args) {
    if (v.kind == lisp::Value::Str && v.s == QLatin1String("\\")) {
      flushFeed();
      if (!pauseForUser()) {
        *error = QStringLiteral("Funktion abgebrochen");
        return false;
      }
      continue;
    }
    if (v.kind == lisp::Value::Nil) continue;
    if (v.kind == lisp::Value::Str && v.s.trimmed().isEmpty()) {
      feed_.push_back(lisp::Value::str({}));
      continue;
    }
    feed_.push_back(v);
  }
  flushFeed();
  if (lispAborted_) {
    *error = QStringLiteral("Funktion abgebrochen");
    return false;
  }
  return true;
}

lisp::Value Interpreter::entlast() {
  const int h = entlastHandle();
  return h ? lisp::Value::ename(h) : lisp::Value::nil();
}

bool Interpreter::startapp(const QString& program, const QString& argument) {
  return QProcess::startDetached(
      program, argument.isEmpty() ? QStringList() : QProcess::splitCommand(argument));
}

QString Interpreter::findFile(const QString& name) {
  const QString candidate = resolvePath(name);
  return QFileInfo(candidate).isFile() ? candidate : QString();
}

// ---------------------------------------------------------------- automation questions

namespace {

// Answers the automation side exactly once, also when the question is broken off.
struct ReplyOnce {
  Interpreter::Reply reply;
  QStringList fallback;
  bool done = false;
  void operator()(const QStringList& v) {
    if (done) return;
    done = true;
    reply(v);
  }
  ~ReplyOnce() {
    if (!done) reply(fallback);
  }
};

Task<void> pointJob(Interpreter& in, Ask a, std::shared_ptr<ReplyOnce> r) {
  const Answer x = co_await in.ask(a);
  if (x.kind == Answer::Point)
    (*r)({proto::formatPoint(x.p.x, x.p.y, x.p.z)});
  else
    (*r)({});
}

Task<void> textJob(Interpreter& in, Ask a, std::shared_ptr<ReplyOnce> r) {
  const Answer x = co_await in.ask(a);
  (*r)({x.kind == Answer::Enter ? QString() : x.text});
}

Task<void> realJob(Interpreter& in, Ask a, std::shared_ptr<ReplyOnce> r) {
  const Answer x = co_await in.ask(a);
  if (x.kind == Answer::Number)
    (*r)({proto::formatNumber(x.number)});
  else
    (*r)({});
}

Task<void> selectionJob(Interpreter& in, QString setName, std::shared_ptr<ReplyOnce> r) {
  const std::vector<int> sel = co_await in.selectObjects();
  in.doc().selectionSets[setName.toUpper()] = sel;
  (*r)({QString::number(sel.size())});
}

}  // namespace

void Interpreter::requestPoint(std::optional<Point> base, const QString& prompt, Reply reply) {
  auto r = std::make_shared<ReplyOnce>();
  r->reply = std::move(reply);
  r->fallback = QStringList();
  Ask a;
  a.prompt = prompt;
  a.point = true;
  a.word = false;
  a.base = base;
  pending_.push_back(Pending{{}, [this, a, r] { return pointJob(*this, a, r); }});
  postPump();
}

void Interpreter::requestCorner(Point base, const QString& prompt, Reply reply) {
  requestPoint(base, prompt, std::move(reply));
}

void Interpreter::requestString(bool blanks, const QString& prompt, Reply reply) {
  auto r = std::make_shared<ReplyOnce>();
  r->reply = std::move(reply);
  r->fallback = QStringList();
  Ask a;
  a.prompt = prompt;
  a.text = blanks;
  pending_.push_back(Pending{{}, [this, a, r] { return textJob(*this, a, r); }});
  postPump();
}

void Interpreter::requestReal(const QString& prompt, Reply reply) {
  auto r = std::make_shared<ReplyOnce>();
  r->reply = std::move(reply);
  r->fallback = QStringList();
  Ask a;
  a.prompt = prompt;
  a.number = true;
  a.word = false;
  pending_.push_back(Pending{{}, [this, a, r] { return realJob(*this, a, r); }});
  postPump();
}

void Interpreter::requestSelection(const QString& setName, Reply reply) {
  auto r = std::make_shared<ReplyOnce>();
  r->reply = std::move(reply);
  r->fallback = QStringList{QStringLiteral("-1")};
  pending_.push_back(Pending{{}, [this, setName, r] { return selectionJob(*this, setName, r); }});
  postPump();
}

std::optional<QString> Interpreter::getString(bool blanks, const QString& prompt) {
  if (!active_.done()) return std::nullopt;  // only at the command prompt
  auto answer = std::make_shared<std::optional<QString>>();
  auto r = std::make_shared<ReplyOnce>();
  r->reply = [answer](const QStringList& v) {
    if (!v.isEmpty()) *answer = v[0];
  };
  Ask a;
  a.prompt = prompt;
  while (a.prompt.startsWith(QLatin1Char('\n'))) a.prompt.remove(0, 1);
  a.text = blanks;
  startJob([this, a, r] { return textJob(*this, a, r); });
  waitForUser(false);
  return *answer;
}

bool Interpreter::waitForUser(bool oneAnswer) {
  const bool was = pausing_;
  pausing_ = true;
  pauseMark_ = accepted_;
  while (!quitting_ && !lispAborted_ && !active_.done() && (!oneAnswer || accepted_ == pauseMark_)) {
    if (waiting_) {
      if (auto in = take(waitingAsk_)) {
        resumeWith(std::move(*in));
        continue;
      }
    }
    if (userMode_ == UserMode::Immediate) {
      abortActive();
      break;
    }
    settle();
    QEventLoop loop;
    connect(this, &Interpreter::inputArrived, &loop, &QEventLoop::quit);
    connect(this, &Interpreter::quitRequested, &loop, &QEventLoop::quit);
    loop.exec();
  }
  pausing_ = was;
  return !lispAborted_ && !quitting_;
}

void Interpreter::requestQuit() {
  quitting_ = true;
  emit quitRequested();
}

// ---------------------------------------------------------------- documents and variables

QString Interpreter::resolvePath(const QString& name, const QString& extension) const {
  QString s = name.trimmed();
  if (s.size() >= 2 && s.startsWith(QLatin1Char('"')) && s.endsWith(QLatin1Char('"')))
    s = s.mid(1, s.size() - 2);
#ifndef Q_OS_WIN
  s.replace(QLatin1Char('\\'), QLatin1Char('/'));
#endif
  if (s.isEmpty()) return s;
  const Document& d = *docs_[current_];
  if (QFileInfo(s).isRelative() && !d.fileName.isEmpty())
    s = QFileInfo(d.fileName).absoluteDir().filePath(s);
  if (!extension.isEmpty() && QFileInfo(s).suffix().isEmpty()) s += extension;
  return QFileInfo(s).absoluteFilePath();
}

bool Interpreter::openDocument(const QString& path, QString* error) {
  const QString file = QFileInfo(path).absoluteFilePath();
  for (size_t i = 0; i < docs_.size(); ++i)
    if (docs_[i]->fileName == file) {
      current_ = int(i);
      documentsChanged();
      return true;
    }
  auto doc = std::make_unique<Document>();
  doc->view.screenWidth = docs_[current_]->view.screenWidth;
  doc->view.screenHeight = docs_[current_]->view.screenHeight;
  if (!doc->load(file, error)) return false;
  const Document& cur = *docs_[current_];
  const bool replace = ints_.value(QStringLiteral("SDI")) == 1 ||
                       (cur.fileName.isEmpty() && !cur.modified && cur.drawing.entities.empty());
  if (replace) {
    docs_[current_] = std::move(doc);
  } else {
    docs_.push_back(std::move(doc));
    current_ = int(docs_.size()) - 1;
  }
  documentsChanged();
  return true;
}

bool Interpreter::closeDocument(bool save, const QString& fileName, QString* error) {
  Document& d = doc();
  if (save) {
    const QString target = fileName.isEmpty() ? d.fileName : resolvePath(fileName);
    if (target.isEmpty()) {
      *error = QStringLiteral("Die Zeichnung hat noch keinen Namen.");
      return false;
    }
    if (!d.save(target, error)) return false;
  }
  docs_.erase(docs_.begin() + current_);
  // The sandbox always keeps a drawing open: a new one takes the last one's place.
  if (docs_.empty()) docs_.push_back(std::make_unique<Document>());
  current_ = int(docs_.size()) - 1;
  documentsChanged();
  return true;
}

QVariant Interpreter::variable(const QString& name, QString* error) {
  const QString n = stripPrefixes(name).toUpper();
  const Document& d = doc();
  auto point = [](const Point& p) { return QVariant(QVariantList{p.x, p.y, p.z}); };
  if (ints_.contains(n)) return ints_.value(n);
  if (n == QLatin1String("LASTPOINT")) return point(lastPoint_);
  if (n == QLatin1String("CMDACTIVE")) {
    // 1 a command, 4 a script, 8 a dialog box, 32 Lisp: as a host counts them.
    int v = 0;
    if (!active_.done() && !activeIsJob_) v |= 1;
    if (!script_.isEmpty()) v |= 4;
    if (modal_) v |= 8;
    if (inLisp_) v |= 32;
    return v;
  }
  if (n == QLatin1String("VIEWSIZE")) return d.view.height;
  if (n == QLatin1String("VIEWCTR")) return point(d.view.center);
  if (n == QLatin1String("EXTMIN") || n == QLatin1String("EXTMAX")) {
    const Extents x = d.drawing.extents();
    if (!x.valid()) return point({});
    return point(n == QLatin1String("EXTMIN") ? x.min : x.max);
  }
  if (n == QLatin1String("INSBASE")) return point(d.drawing.insbase);
  if (n == QLatin1String("PDMODE")) return d.drawing.pdmode;
  if (n == QLatin1String("CLAYER")) return d.drawing.currentLayer;
  if (n == QLatin1String("DWGNAME")) return d.displayName;
  if (n == QLatin1String("DWGPREFIX")) {
    const QString dir =
        d.fileName.isEmpty() ? QDir::currentPath() : QFileInfo(d.fileName).absolutePath();
    return QDir::toNativeSeparators(dir.endsWith(QLatin1Char('/')) ? dir : dir + QLatin1Char('/'));
  }
  if (error) *error = QStringLiteral("Unbekannte Systemvariable: %1").arg(name);
  return {};
}

bool Interpreter::setVariable(const QString& name, const QVariant& value, QString* error) {
  const QString n = stripPrefixes(name).toUpper();
  auto fail = [&](const QString& text) {
    if (error) *error = text;
    return false;
  };
  auto toPoint = [&](Point* p) {
    if (value.typeId() == QMetaType::QVariantList) {
      const QVariantList l = value.toList();
      if (l.size() < 2) return false;
      *p = {l[0].toDouble(), l[1].toDouble(), l.size() > 2 ? l[2].toDouble() : 0.0};
      return true;
    }
    double v[3];
    if (!proto::parsePoint(value.toString(), v)) return false;
    *p = {v[0], v[1], v[2]};
    return true;
  };
  if (ints_.contains(n) || n == QLatin1String("PDMODE")) {
    bool ok = false;
    const double d = value.toString().toDouble(&ok);
    if (!ok || d != std::floor(d))
      return fail(QStringLiteral("Ganze Zahl erwartet für %1.").arg(n));
    const int v = int(d);
    const int max = n == QLatin1String("EXPERT") ? 5 : n == QLatin1String("PDMODE") ? 100 : 1;
    if (v < 0 || v > max)
      return fail(QStringLiteral("Wert außerhalb des Bereichs für %1: %2").arg(n).arg(v));
    if (n == QLatin1String("PDMODE")) {
      doc().drawing.pdmode = v;
      changed();
    } else {
      ints_[n] = v;
    }
    return true;
  }
  if (n == QLatin1String("LASTPOINT")) {
    if (!toPoint(&lastPoint_)) return fail(QStringLiteral("Punkt erwartet."));
    return true;
  }
  if (n == QLatin1String("INSBASE")) {
    Point p;
    if (!toPoint(&p)) return fail(QStringLiteral("Punkt erwartet."));
    doc().drawing.insbase = p;
    changed();
    return true;
  }
  if (n == QLatin1String("CLAYER")) {
    Layer* l = doc().drawing.layer(value.toString());
    if (!l) return fail(QStringLiteral("Layer nicht gefunden: %1").arg(value.toString()));
    doc().drawing.currentLayer = l->name;
    return true;
  }
  if (isVariable(n)) return fail(QStringLiteral("%1 ist schreibgeschützt.").arg(n));
  return fail(QStringLiteral("Unbekannte Systemvariable: %1").arg(name));
}

}  // namespace sandbox

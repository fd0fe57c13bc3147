#include "lisp.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <cmath>
#include <optional>

#include "sandboxprotocol.h"

namespace sandbox::lisp {

namespace {

// Errors travel as exceptions inside this file only; the public calls catch them.
struct Failure {
  QString message;
};

[[noreturn]] void fail(const QString& m) {
  throw Failure{m};
}

class Reader {
 public:
  explicit Reader(const QString& t) : t_(t) {}

  std::vector<Value> all() {
    std::vector<Value> out;
    for (;;) {
      skip();
      if (p_ >= t_.size()) return out;
      out.push_back(read());
    }
  }

 private:
  void skip() {
    while (p_ < t_.size()) {
      if (t_[p_].isSpace())
        ++p_;
      else if (t_[p_] == QLatin1Char(';')) {
        while (p_ < t_.size() && t_[p_] != QLatin1Char('\n')) ++p_;
      } else
        break;
    }
  }

  Value read() {
    skip();
    if (p_ >= t_.size()) fail(QStringLiteral("unvollständiger Ausdruck"));
    const QChar c = t_[p_];
    if (c == QLatin1Char('(')) {
      ++p_;
      std::vector<Value> items;
      for (;;) {
        skip();
        if (p_ >= t_.size()) fail(QStringLiteral("fehlende schließende Klammer"));
        if (t_[p_] == QLatin1Char(')')) {
          ++p_;
          return Value::list(std::move(items));
        }
        items.push_back(read());
      }
    }
    if (c == QLatin1Char(')')) fail(QStringLiteral("überzählige schließende Klammer"));
    if (c == QLatin1Char('\'')) {
      ++p_;
      return Value::list({Value::sym(QStringLiteral("QUOTE")), read()});
    }
    if (c == QLatin1Char('"')) return string();
    return atom();
  }

  Value string() {
    ++p_;
    QString s;
    while (p_ < t_.size() && t_[p_] != QLatin1Char('"')) {
      QChar c = t_[p_++];
      if (c == QLatin1Char('\\') && p_ < t_.size()) {
        const QChar n = t_[p_++];
        if (n == QLatin1Char('n'))
          c = QLatin1Char('\n');
        else if (n == QLatin1Char('r'))
          c = QLatin1Char('\r');
        else if (n == QLatin1Char('t'))
          c = QLatin1Char('\t');
        else if (n == QLatin1Char('e'))
          c = QChar(27);
        else
          c = n;
      }
      s += c;
    }
    if (p_ >= t_.size()) fail(QStringLiteral("Zeichenkette ohne Ende"));
    ++p_;
    return Value::str(s);
  }

  Value atom() {
    const qsizetype start = p_;
    while (p_ < t_.size() && !t_[p_].isSpace() && t_[p_] != QLatin1Char('(') &&
           t_[p_] != QLatin1Char(')') && t_[p_] != QLatin1Char('"') && t_[p_] != QLatin1Char(';'))
      ++p_;
    const QString a = t_.mid(start, p_ - start);
    bool ok = false;
    const long long i = a.toLongLong(&ok);
    if (ok) return Value::integer(i);
    double d = 0;
    if (kolvane::sandboxproto::parseNumber(a, &d) && (a[0].isDigit() || a.size() > 1))
      return Value::real(d);
    if (a.compare(QLatin1String("nil"), Qt::CaseInsensitive) == 0) return Value::nil();
    if (a.compare(QLatin1String("t"), Qt::CaseInsensitive) == 0) return Value::t();
    return Value::sym(a);
  }

  const QString& t_;
  qsizetype p_ = 0;
};

QString number(double v) {
  QString s = kolvane::sandboxproto::formatNumber(v);
  if (!s.contains(QLatin1Char('.')) && !s.contains(QLatin1Char('e'))) s += QLatin1String(".0");
  return s;
}

bool truthy(const Value& v) {
  return !v.isNil();
}

const Value& arg(const std::vector<Value>& a, size_t i) {
  static const Value none;
  return i < a.size() ? a[i] : none;
}

QString textArg(const std::vector<Value>& a, size_t i, const char* fn) {
  if (arg(a, i).kind != Value::Str)
    fail(QStringLiteral("falscher Argumenttyp bei %1").arg(QLatin1String(fn)));
  return a[i].s;
}

bool equalValues(const Value& a, const Value& b) {
  if (a.isNumber() && b.isNumber()) return a.number() == b.number();
  if (a.kind != b.kind) return false;
  if (a.kind == Value::Str || a.kind == Value::Sym) return a.s == b.s;
  if (a.kind == Value::Ename) return a.i == b.i;
  return a.kind == Value::Nil || a.kind == Value::True;
}

}  // namespace

QString toText(const Value& v, bool quoted) {
  switch (v.kind) {
    case Value::Nil: return QStringLiteral("nil");
    case Value::True: return QStringLiteral("T");
    case Value::Int: return QString::number(v.i);
    case Value::Real: return number(v.r);
    case Value::Str: {
      if (!quoted) return v.s;
      QString s = v.s;
      s.replace(QLatin1String("\\"), QLatin1String("\\\\"))
          .replace(QLatin1String("\""), QLatin1String("\\\""));
      return QLatin1Char('"') + s + QLatin1Char('"');
    }
    case Value::Sym: return v.s;
    case Value::Ename: return QStringLiteral("<Objektname: %1>").arg(v.i, 0, 16);
    case Value::List: {
      QStringList parts;
      for (const Value& x : v.items) parts << toText(x, true);
      return QLatin1Char('(') + parts.join(QLatin1Char(' ')) + QLatin1Char(')');
    }
  }
  return {};
}

Interpreter::Interpreter(Environment& env) : env_(env) {
  // As in a CAD's Lisp, pause is a variable whose value (command) takes as
  // "the user answers here".
  globals_.insert(QStringLiteral("PAUSE"), Value::str(QStringLiteral("\\")));
}

qsizetype Interpreter::expressionEnd(const QString& text, qsizetype from) {
  int depth = 0;
  bool inString = false;
  for (qsizetype i = from; i < text.size(); ++i) {
    const QChar c = text[i];
    if (inString) {
      if (c == QLatin1Char('\\'))
        ++i;
      else if (c == QLatin1Char('"'))
        inString = false;
      continue;
    }
    if (c == QLatin1Char('"'))
      inString = true;
    else if (c == QLatin1Char('('))
      ++depth;
    else if (c == QLatin1Char(')') && --depth <= 0)
      return i + 1;
  }
  return -1;
}

Value Interpreter::lookup(const QString& name) const {
  for (auto it = frames_.rbegin(); it != frames_.rend(); ++it)
    if (it->contains(name)) return it->value(name);
  return globals_.value(name);
}

void Interpreter::assign(const QString& name, const Value& v) {
  for (auto it = frames_.rbegin(); it != frames_.rend(); ++it)
    if (it->contains(name)) {
      (*it)[name] = v;
      return;
    }
  globals_[name] = v;
}

Value Interpreter::eval(const Value& form, int depth) {
  if (depth > 500) fail(QStringLiteral("zu tiefe Rekursion"));
  if (form.kind == Value::Sym) return lookup(form.s);
  if (form.kind != Value::List) return form;
  const Value& head = form.items[0];
  if (head.kind != Value::Sym)
    fail(QStringLiteral("ungültige Funktion: %1").arg(toText(head, true)));
  const QString& name = head.s;
  const std::vector<Value> rest(form.items.begin() + 1, form.items.end());

  if (name == QLatin1String("QUOTE")) return arg(rest, 0);
  if (name == QLatin1String("SETQ")) {
    Value v;
    for (size_t i = 0; i + 1 < rest.size() + 1 && i < rest.size(); i += 2) {
      if (rest[i].kind != Value::Sym) fail(QStringLiteral("setq: Symbol erwartet"));
      v = eval(arg(rest, i + 1), depth + 1);
      assign(rest[i].s, v);
    }
    return v;
  }
  if (name == QLatin1String("IF")) {
    if (truthy(eval(arg(rest, 0), depth + 1))) return eval(arg(rest, 1), depth + 1);
    return rest.size() > 2 ? eval(rest[2], depth + 1) : Value::nil();
  }
  if (name == QLatin1String("PROGN")) {
    Value v;
    for (const Value& x : rest) v = eval(x, depth + 1);
    return v;
  }
  if (name == QLatin1String("AND")) {
    for (const Value& x : rest)
      if (!truthy(eval(x, depth + 1))) return Value::nil();
    return Value::t();
  }
  if (name == QLatin1String("OR")) {
    for (const Value& x : rest)
      if (truthy(eval(x, depth + 1))) return Value::t();
    return Value::nil();
  }
  if (name == QLatin1String("DEFUN")) {
    if (arg(rest, 0).kind != Value::Sym) fail(QStringLiteral("defun: Name erwartet"));
    auto f = std::make_shared<Function>();
    bool locals = false;
    for (const Value& p : arg(rest, 1).items) {
      if (p.kind != Value::Sym) fail(QStringLiteral("defun: ungültige Parameterliste"));
      if (p.s == QLatin1String("/"))
        locals = true;
      else
        (locals ? f->locals : f->params).push_back(p.s);
    }
    f->body.assign(rest.begin() + std::min<size_t>(2, rest.size()), rest.end());
    functions_.insert(rest[0].s, f);
    return rest[0];
  }

  std::vector<Value> args;
  for (const Value& x : rest) args.push_back(eval(x, depth + 1));
  return call(name, args, depth);
}

Value Interpreter::callUser(const Function& f, const std::vector<Value>& args, int depth) {
  QHash<QString, Value> frame;
  for (size_t i = 0; i < f.params.size(); ++i) frame.insert(f.params[i], arg(args, i));
  for (const QString& l : f.locals) frame.insert(l, Value::nil());
  frames_.push_back(std::move(frame));
  Value v;
  try {
    for (const Value& x : f.body) v = eval(x, depth + 1);
  } catch (...) {
    frames_.pop_back();
    throw;
  }
  frames_.pop_back();
  return v;
}

Value Interpreter::call(const QString& name, const std::vector<Value>& a, int depth) {
  if (auto f = functions_.value(name)) return callUser(*f, a, depth);

  if (name == QLatin1String("COMMAND")) {
    QString error;
    if (!env_.command(a, &error)) fail(error);
    return Value::nil();
  }
  if (name == QLatin1String("ENTLAST")) return env_.entlast();
  if (name == QLatin1String("PRINC") || name == QLatin1String("PRIN1") ||
      name == QLatin1String("PRINT")) {
    if (a.empty()) return Value::str({});
    env_.print(toText(a[0], name != QLatin1String("PRINC")));
    return a[0];
  }
  if (name == QLatin1String("TERPRI")) {
    env_.print(QStringLiteral("\n"));
    return Value::nil();
  }
  if (name == QLatin1String("LOAD")) {
    // A name without extension is looked for as ".vlx", ".fas", ".lsp", in
    // that order; the first two are compiled forms the sandbox can't read.
    const QString wanted = textArg(a, 0, "load");
    QString file;
    if (QFileInfo(wanted).suffix().isEmpty()) {
      for (const char* ext : {".vlx", ".fas", ".lsp"}) {
        file = env_.findFile(wanted + QLatin1String(ext));
        if (!file.isEmpty()) break;
      }
    } else {
      file = env_.findFile(wanted);
    }
    if (file.isEmpty()) {
      if (a.size() > 1) return a[1];
      fail(QStringLiteral("LOAD fehlgeschlagen: \"%1\"").arg(a[0].s));
    }
    const QString suffix = QFileInfo(file).suffix().toLower();
    if (suffix == QLatin1String("vlx") || suffix == QLatin1String("fas"))
      fail(QStringLiteral("LOAD fehlgeschlagen: \"%1\" (kompilierte Form)").arg(file));
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly) || loadDepth_ > 8)
      fail(QStringLiteral("LOAD fehlgeschlagen: \"%1\"").arg(a[0].s));
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8.decode(f.readAll());
    if (utf8.hasError()) {
      f.seek(0);
      text = QString::fromLatin1(f.readAll());
    }
    ++loadDepth_;
    Value v;
    try {
      for (const Value& form : Reader(text).all()) v = eval(form, depth + 1);
    } catch (...) {
      --loadDepth_;
      throw;
    }
    --loadDepth_;
    return v;
  }
  if (name == QLatin1String("STARTAPP")) {
    const QString program = textArg(a, 0, "startapp");
    const QString argument = a.size() > 1 ? textArg(a, 1, "startapp") : QString();
    return env_.startapp(program, argument) ? Value::integer(33) : Value::nil();
  }
  if (name == QLatin1String("SETVAR")) {
    const QString var = textArg(a, 0, "setvar");
    const Value& v = arg(a, 1);
    QVariant q;
    if (v.kind == Value::Int)
      q = int(v.i);
    else if (v.kind == Value::Real)
      q = v.r;
    else if (v.kind == Value::Str)
      q = v.s;
    else if (v.kind == Value::List && v.items.size() >= 2)
      q = QVariantList{v.items[0].number(), v.items[1].number(),
                       v.items.size() > 2 ? v.items[2].number() : 0.0};
    QString error;
    if (!env_.setvar(var, q, &error)) fail(error);
    return v;
  }
  if (name == QLatin1String("GETVAR")) {
    const QVariant q = env_.getvar(textArg(a, 0, "getvar"));
    if (q.typeId() == QMetaType::Int) return Value::integer(q.toInt());
    if (q.typeId() == QMetaType::Double) return Value::real(q.toDouble());
    if (q.typeId() == QMetaType::QString) return Value::str(q.toString());
    if (q.typeId() == QMetaType::QVariantList) {
      std::vector<Value> p;
      for (const QVariant& c : q.toList()) p.push_back(Value::real(c.toDouble()));
      return Value::list(p);
    }
    return Value::nil();
  }
  if (name == QLatin1String("STRCAT")) {
    QString s;
    for (size_t i = 0; i < a.size(); ++i) s += textArg(a, i, "strcat");
    return Value::str(s);
  }
  if (name == QLatin1String("LIST")) return Value::list(a);
  if (name == QLatin1String("CAR"))
    return arg(a, 0).kind == Value::List ? a[0].items[0] : Value::nil();
  if (name == QLatin1String("CDR")) {
    if (arg(a, 0).kind != Value::List) return Value::nil();
    return Value::list(std::vector<Value>(a[0].items.begin() + 1, a[0].items.end()));
  }
  if (name == QLatin1String("CADR"))
    return arg(a, 0).kind == Value::List && a[0].items.size() > 1 ? a[0].items[1] : Value::nil();
  if (name == QLatin1String("NOT") || name == QLatin1String("NULL"))
    return truthy(arg(a, 0)) ? Value::nil() : Value::t();
  if (name == QLatin1String("/=")) {
    for (size_t i = 1; i < a.size(); ++i)
      if (equalValues(a[0], a[i])) return Value::nil();
    return Value::t();
  }
  if (name == QLatin1String("GETSTRING")) {
    // (getstring [cr] [prompt]): with cr not nil the answer may hold blanks.
    const bool blanks = a.size() > 1 && !a[0].isNil();
    const QString prompt = a.empty() ? QString() : textArg(a, a.size() > 1 ? 1 : 0, "getstring");
    const std::optional<QString> got = env_.getString(blanks, prompt);
    if (!got) fail(QStringLiteral("Funktion abgebrochen"));
    return Value::str(*got);
  }
  if (name == QLatin1String("=") || name == QLatin1String("EQUAL") || name == QLatin1String("EQ")) {
    for (size_t i = 1; i < a.size(); ++i)
      if (!equalValues(a[0], a[i])) return Value::nil();
    return Value::t();
  }
  if (name == QLatin1String("+") || name == QLatin1String("-") || name == QLatin1String("*") ||
      name == QLatin1String("/")) {
    bool real = false;
    for (const Value& v : a) {
      if (!v.isNumber()) fail(QStringLiteral("falscher Argumenttyp bei %1").arg(name));
      real = real || v.kind == Value::Real;
    }
    if (a.empty()) return Value::integer(name == QLatin1String("*") ? 1 : 0);
    double r = a[0].number();
    if (a.size() == 1 && name == QLatin1String("-")) r = -r;
    for (size_t i = 1; i < a.size(); ++i) {
      const double x = a[i].number();
      if (name == QLatin1String("+"))
        r += x;
      else if (name == QLatin1String("-"))
        r -= x;
      else if (name == QLatin1String("*"))
        r *= x;
      else {
        if (x == 0) fail(QStringLiteral("Division durch Null"));
        r = real ? r / x : double((long long)r / (long long)x);
      }
    }
    return real ? Value::real(r) : Value::integer((long long)r);
  }
  if (name == QLatin1String("ATOF")) {
    double d = 0;
    kolvane::sandboxproto::parseNumber(textArg(a, 0, "atof"), &d);
    return Value::real(d);
  }
  if (name == QLatin1String("ATOI")) return Value::integer(textArg(a, 0, "atoi").toLongLong());
  if (name == QLatin1String("FINDFILE")) {
    const QString f = env_.findFile(textArg(a, 0, "findfile"));
    return f.isEmpty() ? Value::nil() : Value::str(f);
  }
  fail(QStringLiteral("no function definition: %1").arg(name));
}

bool Interpreter::evalText(const QString& text, Value* result, QString* error) {
  try {
    Value v;
    for (const Value& form : Reader(text).all()) v = eval(form, 0);
    if (result) *result = v;
    return true;
  } catch (const Failure& f) {
    if (error) *error = env_.errorText(f.message);
    return false;
  }
}

bool Interpreter::loadFile(const QString& path, QString* error) {
  return evalText(QStringLiteral("(load \"%1\")")
                      .arg(QString(path).replace(QLatin1String("\\"), QLatin1String("/"))),
                  nullptr, error);
}

bool Interpreter::hasCommand(const QString& name) const {
  return functions_.contains(QStringLiteral("C:") + name.toUpper());
}

bool Interpreter::runCommand(const QString& name, QString* error) {
  try {
    callUser(*functions_.value(QStringLiteral("C:") + name.toUpper()), {}, 0);
    return true;
  } catch (const Failure& f) {
    if (error) *error = env_.errorText(f.message);
    return false;
  }
}

}  // namespace sandbox::lisp

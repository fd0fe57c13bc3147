#pragma once
// The Lisp subset of the sandbox: what the program's generated Lisp and a user
// at the command line need. Symbols are case-insensitive, variables dynamic.
#include <QHash>
#include <QString>
#include <QVariant>
#include <memory>
#include <optional>
#include <vector>

namespace sandbox::lisp {

struct Value {
  enum Kind { Nil, True, Int, Real, Str, Sym, List, Ename };
  Kind kind = Nil;
  long long i = 0;
  double r = 0;
  QString s;                 // text of Str, name of Sym (upper case)
  std::vector<Value> items;  // List

  Value() = default;
  explicit Value(Kind k) : kind(k) {}

  static Value nil() { return {}; }
  static Value t() { return Value{True}; }
  static Value integer(long long v) {
    Value x{Int};
    x.i = v;
    return x;
  }
  static Value real(double v) {
    Value x{Real};
    x.r = v;
    return x;
  }
  static Value str(QString v) {
    Value x{Str};
    x.s = std::move(v);
    return x;
  }
  static Value sym(const QString& v) {
    Value x{Sym};
    x.s = v.toUpper();
    return x;
  }
  static Value list(std::vector<Value> v) {
    if (v.empty()) return nil();
    Value x{List};
    x.items = std::move(v);
    return x;
  }
  static Value ename(int handle) {
    Value x{Ename};
    x.i = handle;
    return x;
  }
  bool isNil() const { return kind == Nil; }
  bool isNumber() const { return kind == Int || kind == Real; }
  double number() const { return kind == Int ? double(i) : r; }
};

// The text of a value as princ writes it (strings bare) or as prin1 does.
QString toText(const Value& v, bool quoted);

// What the Lisp needs of the CAD around it.
class Environment {
 public:
  virtual ~Environment() = default;
  // (command ...): false when the user broke off (Escape during a pause).
  virtual bool command(const std::vector<Value>& args, QString* error) = 0;
  virtual Value entlast() = 0;
  virtual void print(const QString& text) = 0;
  virtual QVariant getvar(const QString& name) = 0;
  virtual bool setvar(const QString& name, const QVariant& value, QString* error) = 0;
  virtual bool startapp(const QString& program, const QString& argument) = 0;
  // The file that (load) means, "" when there is none.
  virtual QString findFile(const QString& name) = 0;
  // (getstring): a text the user types at the command line; nothing when he
  // broke off.
  virtual std::optional<QString> getString(bool /*blanks*/, const QString& /*prompt*/) {
    return std::nullopt;
  }
  // An error of the Lisp as the command line shows it.
  virtual QString errorText(const QString& message) { return QStringLiteral("; Fehler: ") + message; }
};

class Interpreter {
 public:
  explicit Interpreter(Environment& env);

  // Reads and evaluates every expression of the text; the value of the last.
  // False with a message for a reader error, an unknown function or a break,
  // worded by the environment's errorText ("; Fehler: no function definition: X").
  bool evalText(const QString& text, Value* result, QString* error);
  bool loadFile(const QString& path, QString* error);
  // The defined function "C:NAME" runs as the command NAME.
  bool hasCommand(const QString& name) const;
  bool runCommand(const QString& name, QString* error);

  // Where the expression that starts at `from` ("(" or a quote) ends: the index
  // behind it, or -1 while it is incomplete.
  static qsizetype expressionEnd(const QString& text, qsizetype from);

 private:
  struct Function {
    std::vector<QString> params, locals;
    std::vector<Value> body;
  };
  Value eval(const Value& form, int depth);
  Value call(const QString& name, const std::vector<Value>& args, int depth);
  Value callUser(const Function& f, const std::vector<Value>& args, int depth);
  Value lookup(const QString& name) const;
  void assign(const QString& name, const Value& v);

  Environment& env_;
  QHash<QString, Value> globals_;
  std::vector<QHash<QString, Value>> frames_;
  QHash<QString, std::shared_ptr<Function>> functions_;
  int loadDepth_ = 0;
};

}  // namespace sandbox::lisp

// The Lisp subset on its own: reader, evaluation, functions, errors.
#include "lisp.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

namespace sandbox::lisp {
namespace {

// An environment that records what the Lisp asks of the CAD.
class Recorder : public Environment {
 public:
  bool command(const std::vector<Value>& args, QString* error) override {
    QStringList parts;
    for (const Value& v : args) parts << toText(v, true);
    commands << parts.join(' ');
    if (failCommands) *error = "Funktion abgebrochen";
    return !failCommands;
  }
  Value entlast() override { return Value::ename(0x2a); }
  void print(const QString& text) override { printed << text; }
  QVariant getvar(const QString& name) override { return vars.value(name.toUpper()); }
  bool setvar(const QString& name, const QVariant& value, QString* error) override {
    if (name.compare("readonly", Qt::CaseInsensitive) == 0) {
      *error = "schreibgeschützt";
      return false;
    }
    vars[name.toUpper()] = value;
    return true;
  }
  bool startapp(const QString& program, const QString& argument) override {
    started << program + "|" + argument;
    return true;
  }
  QString findFile(const QString& name) override { return files.value(name); }

  QStringList commands, printed, started;
  QVariantMap vars;
  QMap<QString, QString> files;
  bool failCommands = false;
};

class LispTest : public ::testing::Test {
 protected:
  QString eval(const QString& text) {
    Value v;
    QString error;
    if (!lisp.evalText(text, &v, &error)) return "ERR " + error;
    return toText(v, true);
  }
  Recorder env;
  Interpreter lisp{env};
};

TEST_F(LispTest, AtomsListsAndQuotes) {
  EXPECT_EQ(eval("42"), "42");
  EXPECT_EQ(eval("-2.5"), "-2.5");
  EXPECT_EQ(eval("1e3"), "1000.0");
  EXPECT_EQ(eval("\"a\\\"b\\\\c\""), "\"a\\\"b\\\\c\"");
  EXPECT_EQ(eval("nil"), "nil");
  EXPECT_EQ(eval("T"), "T");
  EXPECT_EQ(eval("'(1 \"x\" sym)"), "(1 \"x\" SYM)");
  EXPECT_EQ(eval("(quote ())"), "nil");
  EXPECT_EQ(eval("; a comment\n(list 1 2) ; and another"), "(1 2)");
  EXPECT_EQ(eval("(car '(7 8)) (cadr '(7 8))"), "8");  // the value of the last form
  EXPECT_EQ(eval("(cdr '(7 8 9))"), "(8 9)");
  EXPECT_EQ(eval("(entlast)"), "<Objektname: 2a>");
}

TEST_F(LispTest, ArithmeticAndComparisons) {
  EXPECT_EQ(eval("(+ 1 2 3)"), "6");
  EXPECT_EQ(eval("(+ 1 2.5)"), "3.5");
  EXPECT_EQ(eval("(- 5)"), "-5");
  EXPECT_EQ(eval("(/ 7 2)"), "3");
  EXPECT_EQ(eval("(/ 7 2.0)"), "3.5");
  EXPECT_EQ(eval("(* 2 3)"), "6");
  EXPECT_EQ(eval("(= 1 1.0)"), "T");
  EXPECT_EQ(eval("(= \"a\" \"b\")"), "nil");
  EXPECT_EQ(eval("(not nil)"), "T");
  EXPECT_EQ(eval("(atof \"2.25\")"), "2.25");
  EXPECT_EQ(eval("(atoi \"17\")"), "17");
  EXPECT_EQ(eval("(strcat \"a\" \"b\" \"c\")"), "\"abc\"");
  EXPECT_TRUE(eval("(/ 1 0)").startsWith("ERR"));
  EXPECT_TRUE(eval("(+ 1 \"x\")").startsWith("ERR"));
  EXPECT_TRUE(eval("(strcat 1)").startsWith("ERR"));
}

TEST_F(LispTest, SetqIfPrognAndOrShortCircuit) {
  EXPECT_EQ(eval("(setq a 1 b (+ a 1))"), "2");
  EXPECT_EQ(eval("b"), "2");
  EXPECT_EQ(eval("unbound"), "nil");
  EXPECT_EQ(eval("(if a \"ja\" \"nein\")"), "\"ja\"");
  EXPECT_EQ(eval("(if nil \"ja\")"), "nil");
  EXPECT_EQ(eval("(progn (setq c 5) (* c 2))"), "10");
  // The second half of and/or is not evaluated once the answer is known.
  EXPECT_EQ(eval("(and nil (command \"x\"))"), "nil");
  EXPECT_EQ(eval("(or T (command \"x\"))"), "T");
  EXPECT_TRUE(env.commands.isEmpty());
}

TEST_F(LispTest, DefunBindsParametersAndLocalsDynamically) {
  eval("(setq x \"global\" tmp \"outer\")");
  EXPECT_EQ(eval("(defun f (x / tmp) (setq tmp x) (g))"), "F");
  eval("(defun g () (strcat x \"+\" tmp))");
  // g sees the caller's bindings; after the call the globals are untouched.
  EXPECT_EQ(eval("(f \"inner\")"), "\"inner+inner\"");
  EXPECT_EQ(eval("x"), "\"global\"");
  EXPECT_EQ(eval("tmp"), "\"outer\"");
  // Missing arguments are nil, Lisp names ignore case.
  eval("(DEFUN h (a b) (list a b))");
  EXPECT_EQ(eval("(H 1)"), "(1 nil)");
  // An error inside a function leaves no frame behind.
  eval("(defun boom (x) (undefined-fn))");
  EXPECT_TRUE(eval("(boom 1)").startsWith("ERR"));
  EXPECT_EQ(eval("x"), "\"global\"");
}

TEST_F(LispTest, CommandFunctionsAndTheCad) {
  eval("(defun c:lman ( / ) (startapp \"/opt/kolvane\" \"/d x\") (princ))");
  EXPECT_TRUE(lisp.hasCommand("LMAN"));
  EXPECT_TRUE(lisp.hasCommand("lman"));
  EXPECT_FALSE(lisp.hasCommand("other"));
  QString error;
  EXPECT_TRUE(lisp.runCommand("lman", &error));
  EXPECT_EQ(env.started, QStringList{"/opt/kolvane|/d x"});

  eval("(command \"._-insert\" \"b.dwg\" pause \"1\" 2 2.5 '(1 2))");
  EXPECT_EQ(env.commands.last(), "\"._-insert\" \"b.dwg\" \"\\\\\" \"1\" 2 2.5 (1 2)");
  env.failCommands = true;
  EXPECT_EQ(eval("(progn (command \"x\") (princ \"never\"))"),
            "ERR ; Fehler: Funktion abgebrochen");
  EXPECT_TRUE(env.printed.isEmpty());

  EXPECT_EQ(eval("(setvar \"filedia\" 0)"), "0");
  EXPECT_EQ(env.vars.value("FILEDIA").toInt(), 0);
  EXPECT_EQ(eval("(getvar \"filedia\")"), "0");
  env.vars["LASTPOINT"] = QVariantList{1.0, 2.0, 0.0};
  EXPECT_EQ(eval("(getvar \"lastpoint\")"), "(1.0 2.0 0.0)");
  EXPECT_TRUE(eval("(setvar \"readonly\" 1)").contains("schreibgeschützt"));

  eval("(princ \"start kolvane\\n\") (prin1 \"q\") (princ 3)");
  EXPECT_EQ(env.printed, (QStringList{"start kolvane\n", "\"q\"", "3"}));
  EXPECT_EQ(eval("(princ)"), "\"\"");
}

TEST_F(LispTest, LoadEvaluatesAFileAndReportsAMissingOne) {
  QTemporaryDir dir;
  const QString file = dir.filePath("kolvane.mnl");
  QFile f(file);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  f.write(
      "(defun c:kolvane9()\r\n  (princ \"start kolvane\\n\")\r\n  (startapp "
      "\"C:\\\\Programme\\\\k.exe\")\r\n)\r\n(setq geladen T)");
  f.close();
  env.files["kolvane.mnl"] = file;
  EXPECT_EQ(eval("(load \"kolvane.mnl\")"), "T");
  EXPECT_TRUE(lisp.hasCommand("kolvane9"));
  QString error;
  lisp.runCommand("KOLVANE9", &error);
  EXPECT_EQ(env.started, QStringList{"C:\\Programme\\k.exe|"});
  EXPECT_EQ(eval("(load \"fehlt.lsp\")"), "ERR ; Fehler: LOAD fehlgeschlagen: \"fehlt.lsp\"");
  EXPECT_EQ(eval("(load \"fehlt.lsp\" \"ersatz\")"), "\"ersatz\"");
  EXPECT_EQ(eval("(findfile \"fehlt.lsp\")"), "nil");
}

TEST_F(LispTest, ReaderErrorsAndExpressionEnds) {
  for (const char* bad : {"(+ 1 2", ")", "(strcat \"open", "(1 2)", "(unknownfn)"})
    EXPECT_TRUE(eval(bad).startsWith("ERR")) << bad;
  EXPECT_EQ(Interpreter::expressionEnd("(a (b) \")\") rest", 0), 11);
  EXPECT_EQ(Interpreter::expressionEnd("(a \"\\\")\"", 0), -1);
  EXPECT_EQ(Interpreter::expressionEnd("(a (b)", 0), -1);
  EXPECT_EQ(Interpreter::expressionEnd("x (y) z", 2), 5);
}

}  // namespace
}  // namespace sandbox::lisp

#pragma once
// The sandbox's window: the drawing above, the command line with its history
// below; the title says that this is the sandbox and which drawing is open.
#include <QMainWindow>

class QKeyEvent;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace sandbox {

class DrawingView;
class Interpreter;

class MainWindow : public QMainWindow {
  Q_OBJECT
 public:
  explicit MainWindow(Interpreter& in, QWidget* parent = nullptr);
  DrawingView* view() const { return view_; }
  bool writeScreenshot(const QString& path);

 signals:
  void activated();
  void deactivated();
  void closing();

 protected:
  void changeEvent(QEvent* e) override;
  void closeEvent(QCloseEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  void submit(const QString& text, QChar ending);
  bool handleKey(QKeyEvent* k);

  Interpreter& in_;
  DrawingView* view_;
  QPlainTextEdit* history_;
  QLabel* prompt_;
  QLineEdit* line_;
};

}  // namespace sandbox

#include "mainwindow.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QToolBar>
#include <QVBoxLayout>

#include "drawingview.h"
#include "interpreter.h"

namespace sandbox {

MainWindow::MainWindow(Interpreter& in, QWidget* parent) : QMainWindow(parent), in_(in) {
  view_ = new DrawingView(in, this);
  history_ = new QPlainTextEdit(this);
  history_->setReadOnly(true);
  history_->setMaximumBlockCount(2000);
  history_->setFont(QFont(QStringLiteral("Monospace")));
  prompt_ = new QLabel(in.currentPrompt(), this);
  line_ = new QLineEdit(this);
  line_->installEventFilter(this);

  auto* bottom = new QWidget(this);
  auto* layout = new QVBoxLayout(bottom);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->addWidget(history_);
  auto* row = new QHBoxLayout;
  row->addWidget(prompt_);
  row->addWidget(line_, 1);
  layout->addLayout(row);

  auto* split = new QSplitter(Qt::Vertical, this);
  split->addWidget(view_);
  split->addWidget(bottom);
  split->setStretchFactor(0, 4);
  split->setStretchFactor(1, 1);
  setCentralWidget(split);

  QToolBar* tools = addToolBar(QStringLiteral("Ansicht"));
  tools->addAction(QStringLiteral("Zoom Grenzen"), this, [this] {
    in_.doc().view.zoomTo(in_.doc().drawing.extents());
    in_.viewChanged();
  });
  tools->addAction(QStringLiteral("Abbruch (Esc)"), this, [this] { in_.cancel(); });

  setWindowTitle(in.windowTitle());
  resize(1100, 800);
  connect(&in, &Interpreter::titleChanged, this, &QWidget::setWindowTitle);
  connect(&in, &Interpreter::promptChanged, prompt_, &QLabel::setText);
  // Error lines stand out in red, as a host marks them.
  connect(&in, &Interpreter::lineAdded, history_, [this, &in](const QString& line) {
    if (in.isErrorLine(int(in.history().size()) - 1))
      history_->appendHtml(QStringLiteral("<span style=\"color:#c00000\">%1</span>")
                               .arg(line.toHtmlEscaped()));
    else
      history_->appendPlainText(line);
  });
  connect(view_, &DrawingView::keyTyped, this, [this](QKeyEvent* e) {
    line_->setFocus();
    if (!handleKey(e) && !e->text().isEmpty() && e->text()[0].isPrint()) line_->insert(e->text());
  });
  for (const QString& l : in.history()) history_->appendPlainText(l);
  line_->setFocus();
}

bool MainWindow::writeScreenshot(const QString& path) {
  return grab().save(path);
}

bool MainWindow::eventFilter(QObject* watched, QEvent* e) {
  if (watched == line_ && e->type() == QEvent::KeyPress && handleKey(static_cast<QKeyEvent*>(e)))
    return true;
  return QMainWindow::eventFilter(watched, e);
}

// Return ends the input; a blank too, unless the prompt takes text with blanks
// or a Lisp expression or a quoted name is being typed. Escape breaks off.
bool MainWindow::handleKey(QKeyEvent* k) {
  const QString text = line_->text();
  if (k->key() == Qt::Key_Escape) {
    line_->clear();
    in_.keys().click(27);
    in_.cancel();
    return true;
  }
  if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) {
    in_.keys().click(13);
    submit(text, QLatin1Char('\r'));
    return true;
  }
  if (k->key() == Qt::Key_Space && !in_.textPrompt() && !text.startsWith(QLatin1Char('(')) &&
      !text.startsWith(QLatin1Char('"'))) {
    submit(text, QLatin1Char(' '));
    return true;
  }
  return false;
}

void MainWindow::submit(const QString& text, QChar ending) {
  line_->clear();
  in_.typeText(text + ending);
}

void MainWindow::changeEvent(QEvent* e) {
  if (e->type() == QEvent::ActivationChange) {
    if (isActiveWindow())
      emit activated();
    else
      emit deactivated();
  }
  QMainWindow::changeEvent(e);
}

void MainWindow::closeEvent(QCloseEvent* e) {
  emit closing();
  in_.requestQuit();
  e->accept();
}

}  // namespace sandbox

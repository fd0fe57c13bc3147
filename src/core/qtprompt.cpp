#include "qtprompt.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <tuple>

#include "labels.h"

namespace kolvane {

namespace {

QMessageBox::Icon qtIcon(Icon i) {
  switch (int(i) & 0x70) {
    case 16: return QMessageBox::Critical;
    case 32: return QMessageBox::Question;
    case 48: return QMessageBox::Warning;
    case 64: return QMessageBox::Information;
    default: return QMessageBox::NoIcon;
  }
}

struct ButtonSpec {
  QMessageBox::StandardButton button;
  Answer answer;
};

QList<ButtonSpec> buttonsOf(Buttons b) {
  switch (b) {
    case Buttons::Ok: return {{QMessageBox::Ok, Answer::Ok}};
    case Buttons::OkCancel: return {{QMessageBox::Ok, Answer::Ok}, {QMessageBox::Cancel, Answer::Cancel}};
    case Buttons::AbortRetryIgnore:
      return {{QMessageBox::Abort, Answer::Abort}, {QMessageBox::Retry, Answer::Retry},
              {QMessageBox::Ignore, Answer::Ignore}};
    case Buttons::YesNoCancel:
      return {{QMessageBox::Yes, Answer::Yes}, {QMessageBox::No, Answer::No},
              {QMessageBox::Cancel, Answer::Cancel}};
    case Buttons::YesNo: return {{QMessageBox::Yes, Answer::Yes}, {QMessageBox::No, Answer::No}};
    case Buttons::RetryCancel: return {{QMessageBox::Retry, Answer::Retry}, {QMessageBox::Cancel, Answer::Cancel}};
  }
  return {{QMessageBox::Ok, Answer::Ok}};
}

// German captions of the standard buttons, from the label file when it has them.
QString standardCaption(QMessageBox::StandardButton b) {
  const char* key = nullptr;
  const char* fallback = nullptr;
  switch (b) {
    case QMessageBox::Ok: key = "Button.Ok", fallback = "OK"; break;
    case QMessageBox::Cancel: key = "Button.Abbrechen", fallback = "Abbrechen"; break;
    case QMessageBox::Yes: key = "Button.Ja", fallback = "Ja"; break;
    case QMessageBox::No: key = "Button.Nein", fallback = "Nein"; break;
    case QMessageBox::Abort: key = "Button.Abbruch", fallback = "Abbrechen"; break;
    case QMessageBox::Retry: key = "Button.Wiederholen", fallback = "Wiederholen"; break;
    case QMessageBox::Ignore: key = "Button.Ignorieren", fallback = "Ignorieren"; break;
    default: return {};
  }
  const QString t = labels().fctBeschriftFrmZuordnen(QString::fromLatin1(key));
  return t.isEmpty() ? QString::fromUtf8(fallback) : t;
}

Answer run(QWidget* owner, const MessageRequest& r, QCheckBox* check) {
  QMessageBox box(owner);
  box.setWindowTitle(r.title);
  QString text = r.text;
  text.replace("\r\n", "\n").replace('\r', '\n');
  box.setText(text);
  box.setIcon(qtIcon(r.icon));
  const QList<ButtonSpec> specs = buttonsOf(r.buttons);
  QHash<QAbstractButton*, Answer> answers;
  for (int i = 0; i < specs.size(); ++i) {
    QPushButton* b = box.addButton(specs[i].button);
    b->setText(i < r.buttonTexts.size() && !r.buttonTexts[i].isEmpty() ? r.buttonTexts[i]
                                                                       : standardCaption(specs[i].button));
    answers.insert(b, specs[i].answer);
    if (i == 0) box.setDefaultButton(b);
  }
  if (check) box.setCheckBox(check);
  box.exec();
  QAbstractButton* clicked = box.clickedButton();
  if (!clicked) return r.buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
  return answers.value(clicked, Answer::Cancel);
}

// "Text (*.x)|*.x|..." of the old file dialogs to Qt's "Text (*.x);;...".
QString qtFilter(const QString& filter) {
  const QStringList parts = filter.split('|');
  QStringList out;
  for (int i = 0; i < parts.size(); i += 2) {
    QString desc = parts[i].trimmed();
    const QString pattern = i + 1 < parts.size() ? parts[i + 1].trimmed() : QString();
    if (desc.isEmpty()) continue;
    if (!desc.contains('(') && !pattern.isEmpty()) desc += " (" + QString(pattern).replace(';', ' ') + ")";
    out << desc;
  }
  return out.join(QStringLiteral(";;"));
}

}  // namespace

int twipsToPixels(int twips, bool horizontal) {
  const QScreen* s = QGuiApplication::primaryScreen();
  const double dpi = s ? (horizontal ? s->logicalDotsPerInchX() : s->logicalDotsPerInchY()) : 96.0;
  return int(twips * dpi / 1440.0);
}

Answer QtPrompt::message(const MessageRequest& r) { return run(owner_, r, nullptr); }

Answer QtPrompt::messageWithCheck(const MessageRequest& r, const QString& checkText,
                                  bool* checked) {
  auto* check = new QCheckBox(checkText.isEmpty() ? QStringLiteral("Nicht mehr anzeigen") : checkText);
  const Answer a = run(owner_, r, check);
  if (checked) *checked = check->isChecked();
  return a;
}

std::optional<QString> QtPrompt::input(const QString& promptText, const QString& title,
                                       const QString& defaultText) {
  bool ok = false;
  QString p = promptText;
  p.replace('\r', '\n');
  const QString v = QInputDialog::getText(owner_, title, p, QLineEdit::Normal, defaultText, &ok);
  if (!ok) return std::nullopt;
  return v;
}

std::optional<QString> QtPrompt::inputWithCheck(const QString& promptText, const QString& title,
                                                const QString& defaultText,
                                                const QString& checkText, bool* checked) {
  QDialog d(owner_);
  d.setWindowTitle(title);
  auto* layout = new QVBoxLayout(&d);
  QString p = promptText;
  p.replace('\r', '\n');
  layout->addWidget(new QLabel(p));
  auto* edit = new QLineEdit(defaultText);
  layout->addWidget(edit);
  auto* check = new QCheckBox(checkText);
  layout->addWidget(check);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  layout->addWidget(buttons);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &d, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &d, &QDialog::reject);
  const bool ok = d.exec() == QDialog::Accepted;
  if (checked) *checked = check->isChecked();
  if (!ok) return std::nullopt;
  return edit->text();
}

PickResult QtPrompt::pick(const QStringList& items, const QString& promptText,
                          const QString& title, int widthTwips) {
  // frmAuswahlLisAllgemein: a list that grows with its widest entry.
  QDialog d(owner_);
  d.setObjectName(QStringLiteral("frmAuswahlLisAllgemein"));
  d.setWindowTitle(title);
  auto* layout = new QVBoxLayout(&d);
  if (!promptText.isEmpty()) {
    QString p = promptText;
    p.replace('\r', '\n');
    layout->addWidget(new QLabel(p));
  }
  auto* list = new QListWidget;
  list->addItems(items);
  if (!items.isEmpty()) list->setCurrentRow(0);
  layout->addWidget(list);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  layout->addWidget(buttons);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &d, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &d, &QDialog::reject);
  QObject::connect(list, &QListWidget::itemDoubleClicked, &d, &QDialog::accept);
  int width = widthTwips > 0 ? twipsToPixels(widthTwips) : 0;
  const QFontMetrics fm(list->font());
  for (const QString& i : items) width = qMax(width, fm.horizontalAdvance(i) + 60);
  d.resize(qMax(width, 260), qMin(600, 140 + 20 * int(items.size())));
  if (d.exec() != QDialog::Accepted || list->currentRow() < 0) return {};
  return {list->currentRow(), list->currentItem()->text()};
}

QString QtPrompt::openFile(const QString& title, const QString& directory, const QString& filter,
                           const QString& proposedName) {
  QString dir = directory;
  if (!proposedName.isEmpty()) dir += "/" + proposedName;
  return QFileDialog::getOpenFileName(owner_, title, dir, qtFilter(filter));
}

QString QtPrompt::saveFile(const QString& title, const QString& directory, const QString& filter,
                           const QString& proposedName) {
  QString dir = directory;
  if (!proposedName.isEmpty()) dir += "/" + proposedName;
  return QFileDialog::getSaveFileName(owner_, title, dir, qtFilter(filter));
}

QString QtPrompt::chooseFolder(const QString& title, const QString& directory) {
  // A folder that does not exist yet would leave the chooser in the working
  // directory: the nearest existing one above it, else the home directory.
  QString start = directory;
  while (!start.isEmpty() && !QFileInfo(start).isDir()) {
    const QString oben = QFileInfo(QDir::cleanPath(start)).path();
    if (oben == QDir::cleanPath(start)) break;
    start = oben;
  }
  if (start.isEmpty() || !QFileInfo(start).isDir() || QDir(start).isRoot()) start = QDir::homePath();
  QFileDialog d(owner_, title, start);
  d.setObjectName(QStringLiteral("folderChooser"));
  d.setFileMode(QFileDialog::Directory);
  d.setOption(QFileDialog::ShowDirsOnly, true);
#ifndef Q_OS_WIN
  // Qt's own chooser: it speaks the program's language and can say in a line
  // what to choose; a desktop's chooser would do neither.
  d.setOption(QFileDialog::DontUseNativeDialog, true);
  if (auto* grid = qobject_cast<QGridLayout*>(d.layout()); grid && !title.isEmpty()) {
    auto* zeile = new QLabel(title, &d);
    zeile->setObjectName(QStringLiteral("folderChooserHint"));
    QFont f = zeile->font();
    f.setBold(true);
    zeile->setFont(f);
    // Above everything: the grid's widgets move one row down.
    QList<std::tuple<QLayoutItem*, int, int, int, int>> items;
    while (grid->count() > 0) {
      int r = 0, c = 0, rs = 0, cs = 0;
      grid->getItemPosition(0, &r, &c, &rs, &cs);
      items.append({grid->takeAt(0), r, c, rs, cs});
    }
    grid->addWidget(zeile, 0, 0, 1, -1);
    for (const auto& [item, r, c, rs, cs] : items) grid->addItem(item, r + 1, c, rs, cs);
  }
#endif
  if (d.exec() != QDialog::Accepted) return {};
  const QStringList gewaehlt = d.selectedFiles();
  return gewaehlt.isEmpty() ? QString() : gewaehlt.first();
}

int QtPrompt::dialog(const QString&, const std::function<int()>& show) { return show ? show() : 0; }

}  // namespace kolvane

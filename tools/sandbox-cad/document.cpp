#include "document.h"

#include <QFileInfo>
#include <algorithm>

#include "dxf.h"

namespace sandbox {

void View::zoomTo(const Extents& x, double margin) {
  if (!x.valid()) {
    center = {0, 0, 0};
    height = 100;
    return;
  }
  center = {(x.min.x + x.max.x) / 2, (x.min.y + x.max.y) / 2, 0};
  const double aspect = double(std::max(1, screenWidth)) / std::max(1, screenHeight);
  const double h = std::max(x.max.y - x.min.y, (x.max.x - x.min.x) / aspect);
  height = std::max(h, 1e-6) * margin;
}

QString displayNameOf(const QString& path) {
  return QFileInfo(path).fileName();
}

Document::Document(QString file) : fileName(std::move(file)) {
  displayName = fileName.isEmpty() ? QStringLiteral("Zeichnung1.dwg") : displayNameOf(fileName);
}

void Document::recordStep(const Drawing& before, const QString& command) {
  undo_.push_back(Step{false, before, command});
  modified = true;
}

void Document::mark() {
  undo_.push_back(Step{true, drawing, QStringLiteral("Markierung")});
}

bool Document::undoBack(bool* hadMark) {
  *hadMark = false;
  if (undo_.empty()) return false;
  auto it = std::find_if(undo_.rbegin(), undo_.rend(), [](const Step& s) { return s.isMark; });
  if (it != undo_.rend()) {
    *hadMark = true;
    const size_t at = size_t(undo_.rend() - it) - 1;
    drawing = undo_[at].before;
    undo_.resize(at);
  } else {
    drawing = undo_.front().before;
    undo_.clear();
  }
  return true;
}

bool Document::undoOne(QString* command) {
  while (!undo_.empty() && undo_.back().isMark) undo_.pop_back();
  if (undo_.empty()) return false;
  drawing = undo_.back().before;
  *command = undo_.back().command;
  undo_.pop_back();
  return true;
}

bool Document::load(const QString& path, QString* error) {
  Drawing d;
  if (!readDxfFile(path, d, error)) return false;
  drawing = std::move(d);
  fileName = QFileInfo(path).absoluteFilePath();
  displayName = displayNameOf(path);
  modified = false;
  undo_.clear();
  previousSelection.clear();
  view.zoomTo(drawing.extents());
  return true;
}

bool Document::save(const QString& path, QString* error) {
  if (!writeDxfFile(path, drawing, error)) return false;
  fileName = QFileInfo(path).absoluteFilePath();
  displayName = displayNameOf(path);
  modified = false;
  return true;
}

}  // namespace sandbox

#pragma once
// One open drawing of the sandbox: its model, file, view and undo history.
#include <QMap>
#include <QString>
#include <vector>

#include "drawing.h"

namespace sandbox {

// The part of the drawing shown: a centre, the height in drawing units
// ("viewsize") and the screen it is shown on, in dots.
struct View {
  Point center{0, 0, 0};
  double height = 100;
  int screenWidth = 1024, screenHeight = 700;
  double width() const { return height * screenWidth / std::max(1, screenHeight); }
  void zoomTo(const Extents& x, double margin = 1.05);
};

class Document {
 public:
  explicit Document(QString fileName = {});

  Drawing drawing;
  View view;
  QString fileName;     // full path, "" for a new drawing
  QString displayName;  // the name in the title
  bool modified = false;
  int lastInserted = 0;  // handle of the last reference an insert made

  // The objects of the last selection ("_p").
  std::vector<int> previousSelection;
  // Named selection sets of the automation side.
  QMap<QString, std::vector<int>> selectionSets;

  // Undo: a step is the drawing as it was before a command changed it, or a
  // mark ("_m"). Back ("_b") returns to the newest mark.
  void recordStep(const Drawing& before, const QString& command);
  void mark();
  // False when there was nothing to take back.
  bool undoBack(bool* hadMark);
  bool undoOne(QString* command);
  int undoDepth() const { return int(undo_.size()); }

  // Loads a DXF file in place of this drawing; false with a reason.
  bool load(const QString& path, QString* error);
  bool save(const QString& path, QString* error);

 private:
  struct Step {
    bool isMark = false;
    Drawing before;
    QString command;
  };
  std::vector<Step> undo_;
};

QString displayNameOf(const QString& path);

}  // namespace sandbox

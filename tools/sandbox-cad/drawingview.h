#pragma once
// The drawing on screen: wheel zooms at the cursor, the middle button pans
// (double click: zoom to extents), a left click picks a point, the right button
// is Return.
#include <QPoint>
#include <QWidget>

#include "drawing.h"

namespace sandbox {

class Interpreter;

class DrawingView : public QWidget {
  Q_OBJECT
 public:
  explicit DrawingView(Interpreter& in, QWidget* parent = nullptr);
  QPoint lastCursor() const { return lastCursor_; }

 signals:
  void keyTyped(QKeyEvent* e);

 protected:
  void paintEvent(QPaintEvent*) override;
  void resizeEvent(QResizeEvent*) override;
  void mousePressEvent(QMouseEvent*) override;
  void mouseReleaseEvent(QMouseEvent*) override;
  void mouseMoveEvent(QMouseEvent*) override;
  void mouseDoubleClickEvent(QMouseEvent*) override;
  void wheelEvent(QWheelEvent*) override;
  void keyPressEvent(QKeyEvent*) override;

 private:
  Point toWorld(const QPointF& p) const;
  Interpreter& in_;
  QPoint panFrom_;
  bool panning_ = false;
  QPoint lastCursor_;
};

}  // namespace sandbox

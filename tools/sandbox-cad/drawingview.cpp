#include "drawingview.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include "interpreter.h"
#include "scene.h"
#include "slidecolors.h"

namespace sandbox {

namespace {
const QColor kBack(33, 40, 48);
}

DrawingView::DrawingView(Interpreter& in, QWidget* parent) : QWidget(parent), in_(in) {
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(320, 200);
  setCursor(Qt::CrossCursor);
  connect(&in_, &Interpreter::drawingChanged, this, qOverload<>(&QWidget::update));
}

Point DrawingView::toWorld(const QPointF& p) const {
  const View& v = in_.doc().view;
  const double upd = v.height / std::max(1, height());
  return {v.center.x + (p.x() - width() / 2.0) * upd, v.center.y - (p.y() - height() / 2.0) * upd,
          0};
}

void DrawingView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), kBack);
  painter.setRenderHint(QPainter::Antialiasing);
  const View& v = in_.doc().view;
  const double upd = v.height / std::max(1, height());
  QTransform t;
  t.translate(width() / 2.0, height() / 2.0);
  t.scale(1 / upd, -1 / upd);
  t.translate(-v.center.x, -v.center.y);
  for (const Primitive& p : flatten(in_.doc().drawing, upd)) {
    const QColor c = kolvane::slideColor(p.color, kBack);
    QPolygonF poly;
    for (const QPointF& q : p.points) poly << t.map(q);
    if (p.fill) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(c);
      painter.drawPolygon(poly);
    } else {
      painter.setPen(QPen(c, 1));
      painter.setBrush(Qt::NoBrush);
      if (p.closed)
        painter.drawPolygon(poly);
      else
        painter.drawPolyline(poly);
    }
  }
}

void DrawingView::resizeEvent(QResizeEvent*) {
  View& v = in_.doc().view;
  v.screenWidth = width();
  v.screenHeight = height();
}

void DrawingView::mousePressEvent(QMouseEvent* e) {
  if (e->button() == Qt::LeftButton) {
    in_.keys().press(1);
    in_.userPoint(toWorld(e->position()));
  } else if (e->button() == Qt::RightButton) {
    in_.keys().press(2);
    in_.typeLine(QString());
  } else if (e->button() == Qt::MiddleButton) {
    panning_ = true;
    panFrom_ = e->pos();
  }
}

void DrawingView::mouseReleaseEvent(QMouseEvent* e) {
  if (e->button() == Qt::LeftButton)
    in_.keys().release(1);
  else if (e->button() == Qt::RightButton)
    in_.keys().release(2);
  else if (e->button() == Qt::MiddleButton)
    panning_ = false;
}

void DrawingView::mouseMoveEvent(QMouseEvent* e) {
  lastCursor_ = e->globalPosition().toPoint();
  if (!panning_) return;
  View& v = in_.doc().view;
  const double upd = v.height / std::max(1, height());
  const QPoint d = e->pos() - panFrom_;
  v.center = v.center - Point{d.x() * upd, -d.y() * upd, 0};
  panFrom_ = e->pos();
  update();
}

void DrawingView::mouseDoubleClickEvent(QMouseEvent* e) {
  if (e->button() != Qt::MiddleButton) return;
  in_.doc().view.zoomTo(in_.doc().drawing.extents());
  update();
}

void DrawingView::wheelEvent(QWheelEvent* e) {
  View& v = in_.doc().view;
  const Point before = toWorld(e->position());
  v.height *= e->angleDelta().y() > 0 ? 1 / 1.25 : 1.25;
  const Point after = toWorld(e->position());
  v.center = v.center + (before - after);
  update();
}

void DrawingView::keyPressEvent(QKeyEvent* e) {
  emit keyTyped(e);
}

}  // namespace sandbox

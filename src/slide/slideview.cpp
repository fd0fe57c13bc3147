#include "slideview.h"

#include <QApplication>

#include <QMouseEvent>
#include <QPainter>

#include "slidecache.h"
#include "sliderenderer.h"

namespace kolvane {

SlideView::SlideView(int index, QWidget* parent)
    : QWidget(parent), index_(index), cache_(&SlideCache::instance()) {
  setAttribute(Qt::WA_OpaquePaintEvent);
}

void SlideView::setPath(const QString& address) {
  path_ = address;
  auto s = address.isEmpty() ? nullptr : cache_->slide(address);
  if (s == slide_) return;
  slide_ = std::move(s);
  pictureValid_ = false;
  update();
}

void SlideView::setBackColor(const QColor& color) {
  if (color == back_) return;
  back_ = color;
  pictureValid_ = false;
  update();
}

void SlideView::setCache(SlideCache* cache) {
  cache_ = cache ? cache : &SlideCache::instance();
  setPath(path_);
}

QSize SlideView::sizeHint() const { return {160, 120}; }

void SlideView::paintEvent(QPaintEvent*) {
  const qreal dpr = devicePixelRatioF();
  const QSize pixels = (QSizeF(size()) * dpr).toSize();
  if (picture_.size() != pixels || picture_.devicePixelRatio() != dpr) {
    picture_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    picture_.setDevicePixelRatio(dpr);
    pictureValid_ = false;
  }
  if (!pictureValid_) {
    pictureValid_ = true;
    QPainter p(&picture_);
    const QRectF all(QPointF(0, 0), QSizeF(size()));
    if (slide_)
      drawSlide(p, *slide_, all, back_);
    else
      p.fillRect(all, back_);
  }
  QPainter p(this);
  p.drawImage(0, 0, picture_);
}

void SlideView::mousePressEvent(QMouseEvent* event) {
  pressedAt_ = QPoint(-1, -1);
  if (event->button() == Qt::LeftButton) {
    pressedAt_ = event->position().toPoint();
    emit leftButtonDown(index_);
  }
  else if (event->button() == Qt::RightButton)
    emit rightButtonDown(index_);
  else
    event->ignore();
}

void SlideView::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::LeftButton) || pressedAt_.x() < 0) return;
  if ((event->position().toPoint() - pressedAt_).manhattanLength() < QApplication::startDragDistance()) return;
  pressedAt_ = QPoint(-1, -1);
  emit dragStarted(index_);
}

void SlideView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton)
    emit doubleClicked(index_);
  else
    event->ignore();
}

}  // namespace kolvane

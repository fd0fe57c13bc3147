#pragma once
#include <QColor>
#include <QImage>
#include <QString>
#include <QWidget>
#include <memory>

#include "slide.h"

namespace kolvane {

class SlideCache;

// Shows a slide file or a named slide of a library, addressed by a path text
// as the page display builds it ("...\0010021.slb(0A)", "x.sld"), on a back
// colour, and reports the mouse with the view's index. A missing or damaged
// file shows an empty picture and says nothing. Slides come from a shared
// cache, so showing a page again reads no file.
class SlideView : public QWidget {
  Q_OBJECT

 public:
  explicit SlideView(int index, QWidget* parent = nullptr);

  int index() const { return index_; }

  // Sets the address and reads the slide, from the cache when the file hasn't
  // changed. Setting the same address again picks up a file written since.
  void setPath(const QString& address);
  QString path() const { return path_; }

  void setBackColor(const QColor& color);
  QColor backColor() const { return back_; }

  // Where the slides come from; the process-wide cache unless set.
  void setCache(SlideCache* cache);

  // The slide shown; null for an empty picture.
  std::shared_ptr<const Slide> slide() const { return slide_; }

  QSize sizeHint() const override;

 signals:
  void leftButtonDown(int index);
  void rightButtonDown(int index);
  void doubleClicked(int index);
  // The left button held and moved beyond the drag distance: a drag may start.
  void dragStarted(int index);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  int index_;
  QPoint pressedAt_{-1, -1};
  QString path_;
  QColor back_{Qt::black};
  SlideCache* cache_;
  std::shared_ptr<const Slide> slide_;
  // The last drawing, reused while slide, size and colour stay: a page is
  // repainted far more often than it changes.
  QImage picture_;
  bool pictureValid_ = false;
};

}  // namespace kolvane

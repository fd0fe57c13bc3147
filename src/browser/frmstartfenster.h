#pragma once
#include <QWidget>

namespace kolvane {

// The start window: the program's name while the library opens. It is not
// modal, so nothing waits for it, and it goes when the main form shows.
class FrmStartfenster : public QWidget {
  Q_OBJECT
 public:
  explicit FrmStartfenster(QWidget* parent = nullptr);
};

}  // namespace kolvane

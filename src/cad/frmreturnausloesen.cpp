#include "frmreturnausloesen.h"

#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

#include "commandchannel.h"
#include "prompt.h"

namespace kolvane {

FrmReturnAusloesen::FrmReturnAusloesen(CadBridge& b, QWidget* parent) : QDialog(parent), b_(b) {
  setWindowTitle(QStringLiteral("Kolvane"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(
      new QLabel(QStringLiteral("Drücken Sie diese Nachricht mit der\n\nReturn-Taste weg."), this));
  // The form's timer: the wait starts once the window is up.
  QTimer::singleShot(0, this, [this]() {
    fctReturnAbwarten(b_);
    accept();
  });
}

void frmReturnAusloesenZeigen(CadBridge& b) {
  prompt().dialog(QStringLiteral("frmReturnAusloesen"), [&b]() {
    FrmReturnAusloesen frm(b);
    return frm.exec();
  });
}

}  // namespace kolvane

#include "frmstartfenster.h"

#include <QLabel>
#include <QVBoxLayout>

#include "labels.h"
#include "settings.h"

namespace kolvane {

namespace {
QString caption(const char* control) {
  QString t = labels().fctBeschriftFrmZuordnen(QStringLiteral("frmStartfenster.") + QLatin1String(control));
  const Settings* s = currentSettings();
  t.replace('$', s ? s->version() : QStringLiteral("9.0"));
  return t;
}
}  // namespace

FrmStartfenster::FrmStartfenster(QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
  setObjectName(QStringLiteral("frmStartfenster"));
  setWindowTitle(caption("Caption"));
  auto* layout = new QVBoxLayout(this);
  auto* name = new QLabel(caption("labProgName"));
  QFont f = name->font();
  f.setPointSizeF(f.pointSizeF() * 2);
  f.setBold(true);
  name->setFont(f);
  layout->addWidget(name, 0, Qt::AlignHCenter);
  layout->addWidget(new QLabel(caption("labText")), 0, Qt::AlignHCenter);
  layout->addSpacing(12);
  layout->addWidget(new QLabel(caption("labLaden")), 0, Qt::AlignHCenter);
  setAutoFillBackground(true);
  resize(380, 160);
}

}  // namespace kolvane

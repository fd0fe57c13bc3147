#include "formtexte.h"

#include <QPushButton>

#include "labels.h"

namespace kolvane {

QString fctFormBeschriftung(const QString& form, const QString& control) {
  const QString t = labels().fctBeschriftFrmZuordnen(form + u'.' + control);
  return t.isEmpty() ? control : t;
}

QPushButton* fctFormKnopf(const QString& form, const QString& name) {
  auto* b = new QPushButton(fctFormBeschriftung(form, name));
  b->setObjectName(name);
  b->setAutoDefault(false);
  return b;
}

}  // namespace kolvane

#pragma once
#include <QString>

class QPushButton;

namespace kolvane {

// The caption of a form's control from the label file ("form.control"); the
// control's name when the file has none, so a missing label shows, not hides.
QString fctFormBeschriftung(const QString& form, const QString& control);
// A button of a form: its caption, its object name, and no auto-default (a
// dialog names its default button itself).
QPushButton* fctFormKnopf(const QString& form, const QString& name);

}  // namespace kolvane

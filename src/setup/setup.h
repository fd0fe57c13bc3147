#pragma once
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

#include "settings.h"

namespace kolvane {

// One control of frmSetup and the setup value it shows.
struct SetupSchalter {
  enum class Art { Check, Text };
  const char* control;  // check box or text field
  const char* wert;     // the value's name in the setup table
  const char* rahmen;   // the frame it stands in
  Art art;
};

// One option of an option group: the control and the number it stands for.
struct SetupOption {
  const char* control;
  int32_t zahl;
};

// The logic of frmSetup: the options of the per-user store. The dialog works
// on a copy of the values; OK writes each changed value by its name, in the
// order of the setup table, and tells the main form what it must redo.
// Cancel writes nothing.
class Setup {
 public:
  // strACadVersion "AutoCAD LT" restricts the offers to what the keystroke
  // route can do.
  Setup(Settings& settings, const QString& strACadVersion = QString());

  // What the main form redoes after OK. Unset hooks do nothing.
  struct Hooks {
    // The insert options of the main form take the setup values again
    // (OptionesGruppeAnzeige); after every OK.
    std::function<void()> optionenAnzeigen;
    // The folder sorting changed: the folder combo is filled again.
    std::function<void()> ordnerNeuAnzeigen;
    // A value the browser shows changed (the old display): redraw.
    std::function<void()> anzeigeGeaendert;
    // combutErweitertesSetup: the advanced dialog.
    std::function<void()> erweitertesSetup;
  } hooks;

  // The controls in the order the dialog shows them, by frame.
  static const QList<SetupSchalter>& schalter();
  static const QStringList& rahmen();  // fraEinfuegen, fraNeu, fraKolvane
  // fraDoppelklick (longDoppelklick) and fraBruchOption (longBruchOption).
  static const QList<SetupOption>& doppelklickOptionen();
  static const QList<SetupOption>& bruchOptionen();
  // The labels of the scale fields, enabled with them.
  static const QStringList& massstabFelder();

  // --- the controls' values ---
  bool angehakt(const QString& control) const;
  // A click on a check box; also applies the ties between boxes.
  void anhaken(const QString& control, bool an);
  QString text(const QString& control) const;
  void setText(const QString& control, const QString& t);
  int32_t doppelklick() const { return werte_.longDoppelklick; }
  void setDoppelklick(int32_t n) { werte_.longDoppelklick = n; }
  int32_t bruchOption() const { return werte_.longBruchOption; }
  void setBruchOption(int32_t n) { werte_.longBruchOption = n; }
  // txtPfad: the current library.
  QString txtPfad() const { return settings_.strAktuelleDatenbank; }
  bool istLT() const { return istLT_; }

  // Whether a control (check box, text field, its label, option group or
  // option) can be used now.
  bool aktiviert(const QString& control) const;

  // OK: a scale that is not a number is refused with a message and the dialog
  // stays (false). Otherwise each changed value is written and kept in the
  // settings in force, then the hooks run; true closes the dialog.
  bool combutOk_Click();
  // The values OK wrote, in the order written.
  const QStringList& geschrieben() const { return geschrieben_; }

  // Message texts.
  static constexpr int kMeldungMassstab = 1008;
  static constexpr int kMeldungMassstabBleibt = 1009;

 private:
  const SetupSchalter* finde(const QString& control) const;
  void ltSperreAnwenden(const QString& geklickt);

  Settings& settings_;
  SetupWerte werte_;
  bool istLT_ = false;
  // LT: the angle and X factor boxes lock each other.
  bool winkelGesperrt_ = false;
  bool xFaktorGesperrt_ = false;
  QStringList geschrieben_;
};

// A scale text as a number: digits with "." or "," as the decimal point.
bool fctMassstabGueltig(const QString& text);

}  // namespace kolvane

#pragma once
#include <QColor>
#include <QString>

namespace kolvane {

class Blockverwaltung;

// The full view of one slide: the active block of the main form, stepped with
// the main form's picture buttons, or a given slide (views, slide capture).
class Vollbild {
 public:
  // The active block of the page; ansicht above 0 shows that view and no steps.
  Vollbild(Blockverwaltung& bv, int ansicht = 0);
  // A given slide: a plain ".sld" as it is, a library with "(<view>A)".
  Vollbild(Blockverwaltung& bv, const QString& slide, int ansicht);

  QString slide() const { return slide_; }
  // What the window names: the block's designation and code ("Tisch (0000021)"),
  // with the view above 0; a given slide by its file. "" for a free slot.
  QString titel() const { return titel_; }
  QColor hintergrund() const;  // the slides' back colour of the page
  bool cmbVorAktiv() const { return vorAktiv_; }
  bool cmbZurueckAktiv() const { return zurueckAktiv_; }

  // The two buttons run the main form's picture buttons, crossed over on
  // purpose: cmbVor goes back by one, cmbZurueck forward.
  void cmbVor_Click();
  void cmbZurueck_Click();

 private:
  void zeichnen();
  Blockverwaltung& bv_;
  int ansicht_ = 0;
  bool gegeben_ = false;
  QString slide_;
  QString titel_;
  bool vorAktiv_ = true;
  bool zurueckAktiv_ = true;
};

}  // namespace kolvane

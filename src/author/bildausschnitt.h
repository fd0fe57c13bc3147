#pragma once
#include <QString>
#include <functional>

namespace kolvane {

class CadBridge;
struct Neuanlage;

// The logic of frmBildausschnittAnpassen: the first slide of the new view is
// shown, and the user keeps its frame or changes it. Each change shoots the
// first slide again over the old one.
class Bildausschnitt {
 public:
  Bildausschnitt(CadBridge& b, Neuanlage& n, QString temp);

  // The slide the dialog shows: <T>/<V>A.sld.
  QString slideDatei() const;

  // Answers of the buttons. Each one that changes the picture returns after
  // the new slide is there; the dialog then shows it again.
  void cmbJa_Click() { bestaetigt = true; }
  void cmbNein_Click();   // a new frame picked in the host
  void cmbZoomGross_Click();
  void cmbZoomKlein_Click();
  void cmbPan_Click();
  // Hidden lines removed for the other points' slides; closes as confirmed.
  void cmbVerdeckt_Click();
  void cmbElementeAusblenden_Click();
  // The picks of a new frame: false when the user broke off.
  bool SlidesErstellenVonBildausschnittAnpassen();

  bool bestaetigt = false;
  bool bytBlockImportManuell() const;
  // The dialog steps aside while the user works in the host (false) and
  // comes back (true).
  std::function<void(bool vorn)> dialogVorn;

 private:
  void neuSchiessen();
  void vorn(bool v) {
    if (dialogVorn) dialogVorn(v);
  }
  CadBridge& b_;
  Neuanlage& n_;
  QString temp_;
};

}  // namespace kolvane

#pragma once
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>

namespace kolvane {

// The board that chooses one of up to six insertion points of a view, one
// slide per point: frmVariaEinfuegepkte for an insert, and
// frmVariaEinfuegepkteMarkieren, the same board for marking. The widget only
// shows this state and forwards the mouse.
class VariaEinfuegepkte {
 public:
  static constexpr int kPunkte = 6;
  // The result of the modal board when the user confirmed (a dialog's Accepted).
  static constexpr int kBestaetigt = 1;

  // Form_Load: the six slide names of the view ("<v>A" to "<v>F"), every
  // picture blank (frei2), the first anzahl pictures from the view's slide
  // library, the frame on point 0.
  void Form_Load(uint8_t ansicht, int anzahl, const QString& slideLib, const QString& frei2,
                 bool markieren = false);

  // A left button down on slide i: the frame goes there and i is the choice.
  // A blank slide can't be chosen (false).
  bool sldVariaEinfuegepkte_MouseDown(int index);
  // A double click: the same, then the form confirms at once (true when it did).
  bool sldVariaEinfuegepkte_DblClick(int index);
  // An arrow key: the frame moves by schritt points (1 along a row, the row's
  // length to the next row), but only onto a point of the view (true).
  bool rahmenBewegen(int schritt);
  // cmbEinfuegen (cmbMarkieren on the marking board): hands the choice over.
  void cmbEinfuegen_Click();
  void cmbAbbrechen_Click();

  // The state the widget shows.
  bool markieren() const { return markieren_; }
  int anzahl() const { return anzahl_; }
  const std::array<QString, kPunkte>& namen() const { return namen_; }
  const std::array<QString, kPunkte>& adressen() const { return adressen_; }
  int gewaehlt() const { return gewaehlt_; }  // the frame, 0 to 5
  bool geschlossen() const { return geschlossen_; }
  bool bestaetigt() const { return bestaetigt_; }

  // The choice as the caller reads it: 1 = A ... 6 = F; 0 when cancelled.
  int16_t NummerEinfuegepkt() const { return bestaetigt_ ? int16_t(gewaehlt_ + 1) : int16_t(0); }

 private:
  std::array<QString, kPunkte> namen_;
  std::array<QString, kPunkte> adressen_;
  int anzahl_ = 0;
  int gewaehlt_ = 0;
  bool markieren_ = false;
  bool geschlossen_ = false;
  bool bestaetigt_ = false;
};

}  // namespace kolvane

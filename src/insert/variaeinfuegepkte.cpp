#include "variaeinfuegepkte.h"

#include "layout.h"

namespace kolvane {

void VariaEinfuegepkte::Form_Load(uint8_t ansicht, int anzahl, const QString& slideLib,
                                  const QString& frei2, bool markieren) {
  markieren_ = markieren;
  anzahl_ = qBound(0, anzahl, kPunkte);
  gewaehlt_ = 0;
  geschlossen_ = false;
  bestaetigt_ = false;
  // 1.-3. Names, blanks, then the view's points.
  for (int i = 0; i < kPunkte; ++i) {
    namen_[size_t(i)] = QString::number(ansicht) + QLatin1Char(char('A' + i));
    // A plain slide (the keystroke route's kind) has no named slides inside.
    const bool sld = slideLib.endsWith(QLatin1String("sld"), Qt::CaseInsensitive);
    adressen_[size_t(i)] =
        i < anzahl_ ? (sld ? slideLib : fctSlideAdresse(slideLib, namen_[size_t(i)])) : frei2;
  }
}

bool VariaEinfuegepkte::sldVariaEinfuegepkte_MouseDown(int index) {
  if (index < 0 || index >= anzahl_) return false;
  gewaehlt_ = index;
  return true;
}

bool VariaEinfuegepkte::sldVariaEinfuegepkte_DblClick(int index) {
  if (!sldVariaEinfuegepkte_MouseDown(index)) return false;
  cmbEinfuegen_Click();
  return true;
}

bool VariaEinfuegepkte::rahmenBewegen(int schritt) {
  return sldVariaEinfuegepkte_MouseDown(gewaehlt_ + schritt);
}

void VariaEinfuegepkte::cmbEinfuegen_Click() {
  bestaetigt_ = true;
  geschlossen_ = true;
}

void VariaEinfuegepkte::cmbAbbrechen_Click() {
  bestaetigt_ = false;
  geschlossen_ = true;
}

}  // namespace kolvane

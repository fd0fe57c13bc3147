#include "slidecolors.h"

#include <QGuiApplication>
#include <QPalette>
#include <array>
#include <cmath>

namespace kolvane {

namespace {

// Indices 10 to 249: 24 hues 15 degrees apart, each in five shades (value 1,
// 0.8, 0.6, 0.5, 0.3) of a full and a half saturation; every channel is cut to
// a whole number.
QRgb hueShade(int index) {
  static constexpr double kValue[5] = {255.0, 204.0, 153.0, 127.5, 76.5};
  const int hue = (index - 10) / 10;  // 0..23
  const int shade = (index - 10) % 10;
  const double v = kValue[shade / 2];
  const double lo = shade % 2 ? v * 0.5 : 0.0;
  const double f = (hue % 4) / 4.0;  // position inside a 60-degree sector
  const double rise = lo + (v - lo) * f;
  const double fall = v - (v - lo) * f;
  double r = 0, g = 0, b = 0;
  switch (hue / 4) {
    case 0: r = v, g = rise, b = lo; break;
    case 1: r = fall, g = v, b = lo; break;
    case 2: r = lo, g = v, b = rise; break;
    case 3: r = lo, g = fall, b = v; break;
    case 4: r = rise, g = lo, b = v; break;
    default: r = v, g = lo, b = fall; break;
  }
  return qRgb(int(std::floor(r)), int(std::floor(g)), int(std::floor(b)));
}

const std::array<QRgb, 256>& table() {
  static const std::array<QRgb, 256> t = [] {
    std::array<QRgb, 256> a{};
    const QRgb first[10] = {qRgb(0, 0, 0),     qRgb(255, 0, 0),   qRgb(255, 255, 0), qRgb(0, 255, 0),
                            qRgb(0, 255, 255), qRgb(0, 0, 255),   qRgb(255, 0, 255), qRgb(255, 255, 255),
                            qRgb(128, 128, 128), qRgb(192, 192, 192)};
    for (int i = 0; i < 10; ++i) a[i] = first[i];
    for (int i = 10; i < 250; ++i) a[i] = hueShade(i);
    const int greys[6] = {51, 80, 105, 130, 190, 255};
    for (int i = 0; i < 6; ++i) a[250 + i] = qRgb(greys[i], greys[i], greys[i]);
    return a;
  }();
  return t;
}

}  // namespace

QRgb aciRgb(int index) { return table()[index & 0xFF]; }

QColor contrastColor(const QColor& back) {
  const QRgb c = back.rgb();
  const int luma = qRed(c) * 299 + qGreen(c) * 587 + qBlue(c) * 114;  // x 1000
  return luma > 127500 ? QColor(Qt::black) : QColor(Qt::white);
}

QColor slideColor(int index, const QColor& back) {
  if (index == 7 || index == 0) return contrastColor(back);
  return QColor::fromRgb(aciRgb(index));
}

QColor colorFromBgr(long value) {
  const auto v = static_cast<uint32_t>(value);
  if (v & 0x80000000u) {
    // The Windows system colours the old controls used most.
    const QPalette pal = QGuiApplication::palette();
    switch (v & 0xFF) {
      case 5: return pal.color(QPalette::Base);              // window
      case 8: return pal.color(QPalette::Text);              // window text
      case 13: return pal.color(QPalette::Highlight);
      case 14: return pal.color(QPalette::HighlightedText);
      case 15: return pal.color(QPalette::Button);           // button face
      case 18: return pal.color(QPalette::ButtonText);
      default: return pal.color(QPalette::Window);
    }
  }
  return QColor(int(v & 0xFF), int(v >> 8 & 0xFF), int(v >> 16 & 0xFF));
}

}  // namespace kolvane

#pragma once
// What the user does at the sandbox when no one sits there: a picks file with
// one answer per line, in the order the sandbox asks. And the key states that
// the program polls, fed by the same answers and by a real user.
#include <QList>
#include <QString>
#include <cstdint>
#include <optional>

#include "drawing.h"

namespace sandbox {

struct PickAnswer {
  enum Kind { Point, Window, All, String, Real, Escape, Enter };
  Kind kind = Enter;
  sandbox::Point p1, p2;
  QString text;  // String and Real as written
};

// Lines: "x,y[,z]", "window x1,y1 x2,y2", "all", "string TEXT", "real N",
// "ESC", "ENTER". Empty lines and lines starting with "#" are skipped.
std::optional<PickAnswer> parsePickLine(const QString& line, QString* error);

class PicksSource {
 public:
  // False with the line and reason of the first bad line; nothing is kept then.
  bool load(const QString& path, QString* error);
  bool parse(const QString& text, QString* error);
  bool hasNext() const { return pos_ < answers_.size(); }
  std::optional<PickAnswer> next();
  qsizetype remaining() const { return answers_.size() - pos_; }

 private:
  QList<PickAnswer> answers_;
  qsizetype pos_ = 0;
};

// GetAsyncKeyState for 1 (left button), 2 (right button), 13 (Return) and 27
// (Escape): bit 0x8000 while down, bit 1 when pressed since the last question.
class KeyStates {
 public:
  void press(int vk);  // down, and remembered as pressed
  void release(int vk);
  void click(int vk) {  // down and up again before anyone asked
    press(vk);
    release(vk);
  }
  int16_t question(int vk);

 private:
  static int slot(int vk);
  bool down_[4] = {};
  bool pressed_[4] = {};
};

}  // namespace sandbox

#pragma once
// The keystroke grammar of SendKeys: "{ESC}", "{TAB}", "{ENTER}", "~", braced
// special characters "{(}" "{)}" "{{}" "{}}" "{+}" "{^}" "{%}" "{~}" "{[}" "{]}",
// repeat counts "{x 3}", the modifiers "+" "^" "%" for the next key or a group
// in parentheses.
#include <QList>
#include <QString>
#include <optional>

namespace sandbox {

struct KeyStroke {
  enum Kind { Char, Enter, Escape, Tab, Backspace, Other };
  Kind kind = Char;
  QChar ch;
  bool shift = false, control = false, alt = false;
  KeyStroke() = default;
  explicit KeyStroke(Kind k) : kind(k) {}
};

// The strokes, or nothing with the reason for a malformed string.
std::optional<QList<KeyStroke>> parseSendKeys(const QString& keys, QString* error);

}  // namespace sandbox

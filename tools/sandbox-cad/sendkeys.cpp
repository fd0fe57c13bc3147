#include "sendkeys.h"

namespace sandbox {

namespace {

std::optional<KeyStroke> named(const QString& name) {
  const QString n = name.toUpper();
  KeyStroke k;
  if (name.size() == 1) {
    k.ch = name[0];
    return k;
  }
  if (n == QLatin1String("ENTER"))
    k.kind = KeyStroke::Enter;
  else if (n == QLatin1String("ESC") || n == QLatin1String("ESCAPE"))
    k.kind = KeyStroke::Escape;
  else if (n == QLatin1String("TAB"))
    k.kind = KeyStroke::Tab;
  else if (n == QLatin1String("BS") || n == QLatin1String("BKSP") ||
           n == QLatin1String("BACKSPACE"))
    k.kind = KeyStroke::Backspace;
  else {
    static const char* const others[] = {
        "DEL", "DELETE", "INS",  "INSERT", "UP",       "DOWN", "LEFT",    "RIGHT", "HOME",
        "END", "PGUP",   "PGDN", "BREAK",  "CAPSLOCK", "HELP", "NUMLOCK", "PRTSC", "SCROLLLOCK"};
    bool known = false;
    for (const char* o : others) known = known || n == QLatin1String(o);
    if (!known && n.startsWith(QLatin1Char('F'))) {
      bool ok = false;
      const int f = n.mid(1).toInt(&ok);
      known = ok && f >= 1 && f <= 16;
    }
    if (!known) return std::nullopt;
    k.kind = KeyStroke::Other;
  }
  return k;
}

}  // namespace

std::optional<QList<KeyStroke>> parseSendKeys(const QString& keys, QString* error) {
  QList<KeyStroke> out;
  bool shift = false, control = false, alt = false;
  bool group = false;  // modifiers hold for a parenthesised group
  auto put = [&](KeyStroke k, int times) {
    k.shift = shift;
    k.control = control;
    k.alt = alt;
    if (k.kind == KeyStroke::Char && shift && !control && !alt) k.ch = k.ch.toUpper();
    for (int i = 0; i < times; ++i) out << k;
    if (!group) shift = control = alt = false;
  };
  for (qsizetype i = 0; i < keys.size(); ++i) {
    const QChar c = keys[i];
    if (c == QLatin1Char('{')) {
      // "{}}" is a closing brace: there the name itself is "}".
      qsizetype end;
      if (i + 2 < keys.size() && keys[i + 1] == QLatin1Char('}') && keys[i + 2] == QLatin1Char('}'))
        end = i + 2;
      else
        end = keys.indexOf(QLatin1Char('}'), i + 1);
      if (end <= i + 1) {
        *error = QStringLiteral("\"{\" ohne \"}\" an Stelle %1").arg(i + 1);
        return std::nullopt;
      }
      QString inner = keys.mid(i + 1, end - i - 1);
      int times = 1;
      const qsizetype blank = inner.lastIndexOf(QLatin1Char(' '));
      if (blank > 0) {
        bool ok = false;
        times = inner.mid(blank + 1).toInt(&ok);
        if (!ok || times < 0) {
          *error = QStringLiteral("ungültige Wiederholung in {%1}").arg(inner);
          return std::nullopt;
        }
        inner = inner.left(blank);
      }
      const auto k = named(inner);
      if (!k) {
        *error = QStringLiteral("unbekannte Taste {%1}").arg(inner);
        return std::nullopt;
      }
      put(*k, times);
      i = end;
    } else if (c == QLatin1Char('~')) {
      put(KeyStroke{KeyStroke::Enter}, 1);
    } else if (c == QLatin1Char('+')) {
      shift = true;
    } else if (c == QLatin1Char('^')) {
      control = true;
    } else if (c == QLatin1Char('%')) {
      alt = true;
    } else if (c == QLatin1Char('(') && (shift || control || alt)) {
      group = true;
    } else if (c == QLatin1Char(')') && group) {
      group = false;
      shift = control = alt = false;
    } else if (c == QLatin1Char('}')) {
      *error = QStringLiteral("\"}\" ohne \"{\" an Stelle %1").arg(i + 1);
      return std::nullopt;
    } else {
      KeyStroke k;
      k.ch = c;
      put(k, 1);
    }
  }
  return out;
}

}  // namespace sandbox

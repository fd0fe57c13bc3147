#pragma once
#include <QString>
#include <ostream>

// Test failures print Qt strings as text (escaped control characters), not bytes.
inline void PrintTo(const QString& s, std::ostream* os) {
  QString t = s;
  t.replace("\r", "\\r").replace("\n", "\\n");
  *os << '"' << t.toStdString() << '"';
}

#pragma once
// The line protocol between the program and the sandbox CAD (tools/sandbox-cad).
// Both sides include this header; it needs QtCore alone.
//
// One message per line, UTF-8, fields separated by TAB; a field escapes "\" as
// "\\", TAB as "\t", LF as "\n" and CR as "\r".
//
//   request  <id> <operation> <argument>...      client to sandbox
//   reply    = <id> ok <value>...                sandbox to client
//            = <id> error <text>
//   event    ! <name> <argument>...              sandbox to host clients
//
// The first request of a connection is "hello <role> <version>", role "host"
// (the automation side) or "desktop" (the window side). A sandbox in keystroke
// mode refuses the host role. Variables travel as typed values: "i:3", "r:2.5",
// "s:text", "p:x,y,z", "n:" for none. Numbers use the C locale and the shortest
// form that reads back to the same double.
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantList>
#include <charconv>
#include <cstdlib>

namespace kolvane::sandboxproto {

inline constexpr int kVersion = 1;

// Environment variable that names the socket (tests and demos use their own).
inline constexpr char kSocketEnv[] = "KOLVANE_SANDBOX_SOCKET";
// Environment variable bounding every host call in milliseconds (tests).
inline constexpr char kTimeoutEnv[] = "KOLVANE_SANDBOX_TIMEOUT_MS";

// The socket name: the environment's when set, else one per user.
inline QString defaultSocketName() {
  const QString env = qEnvironmentVariable(kSocketEnv);
  if (!env.isEmpty()) return env;
  QString user = qEnvironmentVariable("USER");
  if (user.isEmpty()) user = qEnvironmentVariable("USERNAME");
  if (user.isEmpty()) user = QStringLiteral("user");
  return QStringLiteral("kolvane-sandbox-") + user;
}

inline QString escapeField(const QString& s) {
  QString out;
  out.reserve(s.size());
  for (QChar c : s) {
    switch (c.unicode()) {
      case '\\': out += QLatin1String("\\\\"); break;
      case '\t': out += QLatin1String("\\t"); break;
      case '\n': out += QLatin1String("\\n"); break;
      case '\r': out += QLatin1String("\\r"); break;
      default: out += c;
    }
  }
  return out;
}

inline QString unescapeField(const QString& s) {
  QString out;
  out.reserve(s.size());
  for (qsizetype i = 0; i < s.size(); ++i) {
    const QChar c = s[i];
    if (c != QLatin1Char('\\') || i + 1 == s.size()) {
      out += c;
      continue;
    }
    const QChar n = s[++i];
    if (n == QLatin1Char('t'))
      out += QLatin1Char('\t');
    else if (n == QLatin1Char('n'))
      out += QLatin1Char('\n');
    else if (n == QLatin1Char('r'))
      out += QLatin1Char('\r');
    else
      out += n;
  }
  return out;
}

// A whole message, ending with LF.
inline QByteArray encodeLine(const QStringList& fields) {
  QString line;
  for (qsizetype i = 0; i < fields.size(); ++i) {
    if (i) line += QLatin1Char('\t');
    line += escapeField(fields[i]);
  }
  line += QLatin1Char('\n');
  return line.toUtf8();
}

// A message without its LF (a CR before it is dropped).
inline QStringList decodeLine(QByteArray line) {
  if (line.endsWith('\n')) line.chop(1);
  if (line.endsWith('\r')) line.chop(1);
  QStringList fields = QString::fromUtf8(line).split(QLatin1Char('\t'));
  for (QString& f : fields) f = unescapeField(f);
  return fields;
}

inline QString formatNumber(double v) {
  char buf[64];
  const auto r = std::to_chars(buf, buf + sizeof buf, v);
  return QString::fromLatin1(buf, r.ptr - buf);
}

// A number in the C locale; false when the text is none.
inline bool parseNumber(const QString& text, double* out) {
  const QByteArray b = text.trimmed().toLatin1();
  if (b.isEmpty()) return false;
  const char* first = b.constData();
  if (*first == '+') ++first;
  double v = 0;
  const auto r = std::from_chars(first, b.constData() + b.size(), v);
  if (r.ec != std::errc() || r.ptr != b.constData() + b.size()) return false;
  *out = v;
  return true;
}

inline QString formatPoint(double x, double y, double z) {
  return formatNumber(x) + QLatin1Char(',') + formatNumber(y) + QLatin1Char(',') + formatNumber(z);
}

// "x,y" or "x,y,z" into three doubles; false when it is no point.
inline bool parsePoint(const QString& text, double out[3]) {
  const QStringList parts = text.split(QLatin1Char(','));
  if (parts.size() < 2 || parts.size() > 3) return false;
  double v[3] = {0, 0, 0};
  for (qsizetype i = 0; i < parts.size(); ++i)
    if (!parseNumber(parts[i], &v[i])) return false;
  for (int i = 0; i < 3; ++i) out[i] = v[i];
  return true;
}

// Typed values. A point is a QVariantList of three doubles.
inline QString encodeValue(const QVariant& v) {
  switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Short:
    case QMetaType::Bool: return QStringLiteral("i:") + QString::number(v.toLongLong());
    case QMetaType::Double:
    case QMetaType::Float: return QStringLiteral("r:") + formatNumber(v.toDouble());
    case QMetaType::QString: return QStringLiteral("s:") + v.toString();
    case QMetaType::QVariantList: {
      const QVariantList l = v.toList();
      if (l.size() == 3)
        return QStringLiteral("p:") +
               formatPoint(l[0].toDouble(), l[1].toDouble(), l[2].toDouble());
      return QStringLiteral("n:");
    }
    default: return v.isValid() ? QStringLiteral("s:") + v.toString() : QStringLiteral("n:");
  }
}

inline QVariant decodeValue(const QString& s) {
  const QString body = s.mid(2);
  if (s.startsWith(QLatin1String("i:"))) return QVariant(body.toInt());
  if (s.startsWith(QLatin1String("r:"))) {
    double d = 0;
    return parseNumber(body, &d) ? QVariant(d) : QVariant();
  }
  if (s.startsWith(QLatin1String("s:"))) return QVariant(body);
  if (s.startsWith(QLatin1String("p:"))) {
    double p[3];
    if (!parsePoint(body, p)) return {};
    return QVariantList{p[0], p[1], p[2]};
  }
  return {};
}

}  // namespace kolvane::sandboxproto

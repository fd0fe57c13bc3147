#include "picks.h"

#include <QFile>
#include <QStringDecoder>

#include "sandboxprotocol.h"

namespace sandbox {

namespace {

bool point(const QString& text, Point& p) {
  double v[3];
  if (!kolvane::sandboxproto::parsePoint(text, v)) return false;
  p = {v[0], v[1], v[2]};
  return true;
}

}  // namespace

std::optional<PickAnswer> parsePickLine(const QString& raw, QString* error) {
  const QString line = raw.trimmed();
  PickAnswer a;
  const QString word = line.section(QLatin1Char(' '), 0, 0).toLower();
  const QString rest = line.section(QLatin1Char(' '), 1).trimmed();
  if (line.compare(QLatin1String("ESC"), Qt::CaseInsensitive) == 0)
    a.kind = PickAnswer::Escape;
  else if (line.compare(QLatin1String("ENTER"), Qt::CaseInsensitive) == 0)
    a.kind = PickAnswer::Enter;
  else if (line.compare(QLatin1String("all"), Qt::CaseInsensitive) == 0)
    a.kind = PickAnswer::All;
  else if (word == QLatin1String("string")) {
    a.kind = PickAnswer::String;
    a.text = raw.trimmed().section(QLatin1Char(' '), 1);
  } else if (word == QLatin1String("real")) {
    double d = 0;
    if (!kolvane::sandboxproto::parseNumber(rest, &d)) {
      *error = QStringLiteral("Zahl erwartet: \"%1\"").arg(rest);
      return std::nullopt;
    }
    a.kind = PickAnswer::Real;
    a.text = rest;
  } else if (word == QLatin1String("window")) {
    const QStringList corners = rest.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (corners.size() != 2 || !point(corners[0], a.p1) || !point(corners[1], a.p2)) {
      *error = QStringLiteral("\"window x1,y1 x2,y2\" erwartet");
      return std::nullopt;
    }
    a.kind = PickAnswer::Window;
  } else if (point(line, a.p1)) {
    a.kind = PickAnswer::Point;
  } else {
    *error = QStringLiteral("unbekannte Antwort \"%1\"").arg(line);
    return std::nullopt;
  }
  return a;
}

bool PicksSource::parse(const QString& text, QString* error) {
  QList<PickAnswer> answers;
  const QStringList lines = text.split(QLatin1Char('\n'));
  for (qsizetype i = 0; i < lines.size(); ++i) {
    const QString line = lines[i].trimmed();
    if (line.isEmpty() || line.startsWith(QLatin1Char('#'))) continue;
    QString why;
    const auto a = parsePickLine(line, &why);
    if (!a) {
      *error = QStringLiteral("Pickdatei, Zeile %1: %2").arg(i + 1).arg(why);
      return false;
    }
    answers << *a;
  }
  answers_ = answers;
  pos_ = 0;
  return true;
}

bool PicksSource::load(const QString& path, QString* error) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) {
    *error = QStringLiteral("Pickdatei nicht lesbar: %1").arg(path);
    return false;
  }
  return parse(QString::fromUtf8(f.readAll()), error);
}

std::optional<PickAnswer> PicksSource::next() {
  if (!hasNext()) return std::nullopt;
  return answers_[pos_++];
}

int KeyStates::slot(int vk) {
  switch (vk) {
    case 1: return 0;
    case 2: return 1;
    case 13: return 2;
    case 27: return 3;
    default: return -1;
  }
}

void KeyStates::press(int vk) {
  const int s = slot(vk);
  if (s < 0) return;
  down_[s] = true;
  pressed_[s] = true;
}

void KeyStates::release(int vk) {
  const int s = slot(vk);
  if (s >= 0) down_[s] = false;
}

int16_t KeyStates::question(int vk) {
  const int s = slot(vk);
  if (s < 0) return 0;
  const int16_t v = int16_t((down_[s] ? 0x8000 : 0) | (pressed_[s] ? 1 : 0));
  pressed_[s] = false;
  return v;
}

}  // namespace sandbox

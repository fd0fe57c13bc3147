#include "platzierung.h"

#include <QString>

#include "diagnostics.h"
#include "recordset.h"

namespace kolvane {

namespace {

// A coordinate of the row; false for an empty column, as a number can't be
// made of it.
bool koordinate(const Recordset& rs, QChar punkt, QChar achse, int ansicht, double& wert) {
  const QString spalte = QString(punkt) + achse + QString::number(ansicht);
  const QVariant v = rs.value(spalte);
  if (!v.isValid() || v.isNull() || v.toString().trimmed().isEmpty()) {
    subErrorAllgemein(false, QStringLiteral("DistanzZumErstenEinfuegepkt"),
                      QStringLiteral("Die Koordinate %1 ist leer.").arg(spalte));
    return false;
  }
  bool ok = false;
  wert = v.toDouble(&ok);
  if (!ok) {
    // A text stored by an old library may carry a decimal comma.
    wert = v.toString().replace(',', '.').toDouble(&ok);
  }
  if (!ok) {
    subErrorAllgemein(false, QStringLiteral("DistanzZumErstenEinfuegepkt"),
                      QStringLiteral("Die Koordinate %1 ist keine Zahl: %2").arg(spalte, v.toString()));
    return false;
  }
  return true;
}

}  // namespace

bool DistanzZumErstenEinfuegepkt(const Recordset& rs, int ansicht, int16_t NummerEinfuegepkt,
                                 std::array<double, 3>& dblDistanz) {
  Trace t(QStringLiteral("DistanzZumErstenEinfuegepkt"));
  static const char achsen[3] = {'X', 'Y', 'Z'};
  std::array<double, 3> punkt{0, 0, 0};
  // 1. The chosen point, B to F.
  if (NummerEinfuegepkt >= 2 && NummerEinfuegepkt <= 6) {
    const QChar p = QLatin1Char(char('A' + NummerEinfuegepkt - 1));
    for (int i = 0; i < 3; ++i)
      if (!koordinate(rs, p, QLatin1Char(achsen[i]), ansicht, punkt[size_t(i)])) return false;
  }
  // 2. Minus point A.
  for (int i = 0; i < 3; ++i) {
    double a = 0;
    if (!koordinate(rs, QLatin1Char('A'), QLatin1Char(achsen[i]), ansicht, a)) return false;
    dblDistanz[size_t(i)] = punkt[size_t(i)] - a;
  }
  return true;
}

}  // namespace kolvane

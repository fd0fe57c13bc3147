#include "suchkriterium.h"

namespace kolvane {

namespace {

const QString kTabelle = QStringLiteral("tblBlockInfo");

}  // namespace

bool Suchkriterien::leer() const {
  for (const QString& t : txtBenennung)
    if (!t.isEmpty()) return false;
  return true;
}

const std::array<QString, 7>& suchVerknuepfungen() {
  static const std::array<QString, 7> v{QStringLiteral("$"),  QStringLiteral("="), QStringLiteral(">"),
                                        QStringLiteral(">="), QStringLiteral("<="), QStringLiteral("<"),
                                        QStringLiteral("<>")};
  return v;
}

SuchAnweisung fctRsOeffnenKriterium(const Suchkriterien& k, int64_t ordnerId) {
  SuchAnweisung a;
  a.sql = QStringLiteral(
      "SELECT Nr, Block, OrdnerID, SlideLib, BlkName0, BlkName1, BlkName2, BlkName3, BlkName4, M0, "
      "AX1, AX2, AX3, AX4 From tblBlockInfo WHERE ");
  // A term follows "WHERE " directly and every further one after "AND ".
  const auto anhaengen = [&a](const QString& term) {
    if (!a.sql.endsWith(QLatin1String("WHERE "))) a.sql += QStringLiteral("AND ");
    a.sql += term;
  };
  if (k.checkAktuellerOrdner) {
    anhaengen(QStringLiteral("OrdnerID = ? "));
    a.werte << QVariant::fromValue<qlonglong>(ordnerId);
  }
  const auto muster = [&k](const QString& text) {
    return k.checkGanzeWoerter ? text : QStringLiteral("%") + text + QStringLiteral("%");
  };
  for (int i = 0; i < Suchkriterien::kFelder; ++i) {
    const QString& text = k.txtBenennung[size_t(i)];
    if (text.isEmpty()) continue;
    const QString m = muster(text);
    if (i < Suchkriterien::kNameFeld) {
      anhaengen(QStringLiteral("M%1 LIKE ? ").arg(i));
      a.werte << m;
    } else if (!k.chkAnsichtenVarianten) {
      anhaengen(QStringLiteral("(BlkName0 LIKE ?) "));
      a.werte << m;
    } else {
      // The row's own view names first: the variants are looked up once.
      anhaengen(QStringLiteral("(BlkName0 LIKE ? OR BlkName1 LIKE ? OR BlkName2 LIKE ? OR BlkName3 LIKE ? "
                               "OR BlkName4 LIKE ? OR ") +
                kTabelle + ".Nr IN(SELECT BlockID FROM tblVariationBloecke WHERE BlockName LIKE ?)) ");
      for (int n = 0; n < 6; ++n) a.werte << m;
    }
  }
  return a;
}

std::array<QString, 10> ArraySuchkriteriumZuordnen(const Suchkriterien& k) {
  std::array<QString, 10> s;
  for (size_t i = 0; i < s.size(); ++i) {
    const QString& v = k.comboxSuchkriterienVerknuepfen[i];
    if (v == QLatin1String("$"))
      s[i] = QStringLiteral("%") + k.txtBenennung[i] + QStringLiteral("%");
    else if (v == QLatin1String("="))
      s[i] = k.txtBenennung[i];
  }
  return s;
}

}  // namespace kolvane

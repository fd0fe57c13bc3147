#include "einfuegebefehle.h"

#include "commandchannel.h"
#include "einfuegeoptionen.h"
#include "einfuegewerte.h"
#include "hostfile.h"

namespace kolvane {

namespace {

constexpr QChar q = QLatin1Char('"');

QString quoted(const QString& s) { return q + s + q; }

QString winkel(const EinfuegeWerte& w) { return fctZahlFuerAcad(w.dblWinkelEinfuegen); }

}  // namespace

QString fctInsertMitPause(const EinfuegeOptionen& o, const EinfuegeWerte& w) {
  const QString kopf = QStringLiteral("(command ") + quoted(QStringLiteral("._-insert")) + " ";
  QString s;
  if (o.byteBlockAusBibliothek == 1) {
    s = kopf + quoted(w.strBlockName + "=" + w.strPfadSlash) + " pause " +
        quoted(w.strMassstabXEinfuegen) + " " + quoted(w.strMassstabYEinfuegen) + " " +
        quoted(winkel(w)) + ")";
  } else if (o.byteAbfrageXFaktor == 0 && o.byteAbfrageYFaktor == 0) {
    s = kopf + quoted(w.strPfadSlash) + " pause " + quoted(w.strMassstabXEinfuegen) + " " +
        quoted(w.strMassstabYEinfuegen) + " " + quoted(winkel(w)) + ")";
  } else if (o.byteAbfrageXFaktor == 1 && o.byteAbfrageYFaktor == 0) {
    s = kopf + quoted(w.strPfadSlash) + " pause pause " + quoted(w.strMassstabYEinfuegen) + " " +
        quoted(winkel(w)) + ")";
  } else if (o.byteAbfrageXFaktor == 0) {
    s = kopf + quoted(w.strPfadSlash) + " pause " + quoted(w.strMassstabXEinfuegen) + " pause " +
        quoted(winkel(w)) + ")";
  } else {
    s = kopf + quoted(w.strPfadSlash) + " pause pause pause " + quoted(winkel(w)) + ")";
  }
  return s + QLatin1Char('\r');
}

QString fctInsertAmUrsprung(const EinfuegeOptionen& o, const EinfuegeWerte& w) {
  // "j " answers whether the block is to be redefined; the plain form has no
  // such question.
  const QString rest = QStringLiteral("0,0,0 ") + w.strMassstabXEinfuegen + "\r" +
                       w.strMassstabYEinfuegen + "\r" + winkel(w) + "\r";
  if (o.byteBlockAusBibliothek == 1)
    return QStringLiteral("._-insert ") + w.strBlockName + "=" + w.strDatei + "\r" + "j " + rest;
  return QStringLiteral("._-insert ") + w.strDatei + "\r" + rest;
}

QString fctMoveBefehl(const std::array<QString, 3>& d) {
  // Two blanks: the first ends the expression, the second the selection.
  return QStringLiteral("._move (entlast)  ") + d[0] + "," + d[1] + "," + d[2] + " ";
}

QString fctRotateBefehl(const std::array<QString, 3>& p) {
  return QStringLiteral("._rotate (entlast)") + "\r" + "\r" + p[0] + "," + p[1] + "," + p[2] + "\r";
}

QString fctBruchBefehl(const QString& programmVerzeichnis) {
  return QStringLiteral("(load ") + q + fctLispPfad(programmVerzeichnis) + "/" + "break" + q + ")" +
         "\r";
}

QString fctLayerBefehl(const QString& strLayer) {
  return QStringLiteral("._change (entlast)  _prop _la ") + strLayer + "\r" + "\r";
}

QString fctLayer0Befehl() { return QStringLiteral("._change (entlast)  _prop _la 0") + "\r" + "\r"; }

QString fctEraseBefehl() { return QStringLiteral("._erase (entlast)  "); }

QString fctAtteditBefehl() { return QStringLiteral("._attedit (entlast) "); }

QString fctExplodeBefehl() { return QStringLiteral("._explode (entlast) ") + "\r"; }

QString fctArrayBefehl() { return QStringLiteral("._array (entlast) ") + "\r"; }

QString fctKolvaneEinfuegeAufruf(const EinfuegeOptionen& o, const EinfuegeWerte& w,
                                 int32_t longEinfuegenLayer0) {
  const QString nil = QStringLiteral("nil");
  const QString eins = quoted(QStringLiteral("1"));
  // The typed parts that come from data are escaped; the fixed ones stand.
  const QString pfad = o.byteBlockAusBibliothek == 1
                           ? quoted(sendKeysEscape(w.strBlockName) + "=" + sendKeysEscape(w.strPfadSlash))
                           : quoted(sendKeysEscape(w.strPfadSlash));
  const QStringList werte{
      pfad,
      o.byteAbfrageXFaktor == 1 ? nil : quoted(w.strMassstabXEinfuegen),
      o.byteAbfrageYFaktor == 1 ? nil : quoted(w.strMassstabYEinfuegen),
      o.byteAbfrageEinfuegewinkel == 1 ? nil : quoted(winkel(w)),
      longEinfuegenLayer0 == 1 ? eins : nil,
      o.byteAbfrageAttributeBeimEinfuegen == 1 ? eins : nil,
      o.byteUrsprungBeimEinfuegen == 1 ? eins : nil,
      o.byteReihe == 1 ? eins : nil};
  return QStringLiteral("{(}kolvane_einfuege ") + werte.join(QLatin1Char(' ')) + "{)}" + "\r";
}

QString fctInsertLspLaden(const QString& verzeichnis) {
  return QStringLiteral("{(}load ") + q + sendKeysEscape(fctLispPfad(verzeichnis)) + "/" +
         "insert.lsp" + q + "{)}" + "\r";
}

}  // namespace kolvane

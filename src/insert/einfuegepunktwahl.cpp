#include "einfuegepunktwahl.h"

#include "cadbridge.h"
#include "commandchannel.h"
#include "connection.h"
#include "diagnostics.h"
#include "einfuegeoptionen.h"
#include "layout.h"
#include "paths.h"
#include "prompt.h"
#include "recordhelpers.h"

namespace kolvane {

QString Einfuegepunktwahl::sqlEinfuegepunkte(uint8_t ansicht, const QString& block) {
  const QString n = QString::number(ansicht);
  QStringList spalten;
  for (char p = 'A'; p <= 'F'; ++p)
    for (char a : {'X', 'Y', 'Z'}) spalten << QLatin1Char(p) + QString(QLatin1Char(a)) + n;
  // The blank after the last column and the one before the keyword make two;
  // the views 1 to 4 spell the keyword "From". Both are the library's business.
  return QStringLiteral("SELECT  ") + spalten.join(QStringLiteral(", ")) + QLatin1Char(' ') +
         (ansicht == 0 ? QStringLiteral(" FROM") : QStringLiteral(" From")) +
         QStringLiteral(" tblBlockInfo WHERE Block like '") + block + QLatin1Char('\'');
}

std::vector<uint8_t> Einfuegepunktwahl::AnsichtenZurWahl(Connection& conn, const QString& block) {
  Trace t(QStringLiteral("AnsichtenZurWahl"));
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT AX1, AX2, AX3, AX4 FROM tblBlockInfo WHERE Block like '") + block +
                   QLatin1Char('\''),
               conn)) {
    subErrorAllgemein(false, QStringLiteral("AnsichtenZurWahl"), rs.lastError());
    return {};
  }
  if (rs.RecordCount() < 1) return {};
  rs.MoveFirst();
  return fctVorhandeneAnsichten(rs);
}

bool Einfuegepunktwahl::EinzufuegendeAnsichtBestimmenUndRsEinlesen(Connection& conn) {
  Trace t(QStringLiteral("EinzufuegendeAnsichtBestimmenUndRsEinlesen"));
  // 1. View 1 wins over view 2 when the two sources disagree.
  byteBestimmenWelcheAnsichtEingefuegtWird = 0;
  for (uint8_t n = 1; n <= 4; ++n) {
    if (byteAktivierteAnsicht == n || bytMarkierteAnsicht == n) {
      byteBestimmenWelcheAnsichtEingefuegtWird = n;
      break;
    }
  }
  // 2./3. The view's points, kept open until the insert is over.
  const QString sql = sqlEinfuegepunkte(byteBestimmenWelcheAnsichtEingefuegtWird, aktivierteBlocknummer);
  t.step(sql);
  rsBlockInfo0Einfuegepkt.Close();
  if (!rsBlockInfo0Einfuegepkt.Open(sql, conn)) {
    subErrorAllgemein(false, QStringLiteral("EinzufuegendeAnsichtBestimmenUndRsEinlesen"),
                      rsBlockInfo0Einfuegepkt.lastError());
    return false;
  }
  return true;
}

void Einfuegepunktwahl::AnzahlDerEinfuegepkteErmitteln() {
  const QString n = QString::number(byteBestimmenWelcheAnsichtEingefuegtWird);
  AnzahlEinfuegepunkte = 1;
  // From the last point back: a gap in the middle doesn't reduce the number.
  for (int p = 5; p >= 1; --p) {
    const QString x = rsBlockInfo0Einfuegepkt.text(QLatin1Char(char('A' + p)) + QStringLiteral("X") + n);
    if (!x.isEmpty() && x != QLatin1String("0")) {
      AnzahlEinfuegepunkte = int16_t(p + 1);
      return;
    }
  }
}

void Einfuegepunktwahl::VariaEinfuegepktBestimmen(uint8_t& bytMarkieren1BeiEinfuege0, const Ort& ort) {
  Trace t(QStringLiteral("VariaEinfuegepktBestimmen"));
  // 1.
  AnzahlDerEinfuegepkteErmitteln();
  // 2. The pictures: the view's own slide library, else the block's.
  const uint8_t ansicht = byteBestimmenWelcheAnsichtEingefuegtWird;
  const QString blockSlides = fctSlideLibPfad(ort.bibliothek, ort.slideLib);
  if (ansicht != 0) {
    const QString eigene = fctSlidePfad(ort.bibliothek, ort.ordnerNr, aktivierteBlocknummer, ansicht,
                                        QStringLiteral(".slb"));
    SpeicherOrtSlideLibFuerBlockEinfuegen = fctDateiExist(eigene) ? eigene : blockSlides;
  } else {
    SpeicherOrtSlideLibFuerBlockEinfuegen = blockSlides;
  }
  t.step(QStringLiteral("SpeicherOrtSlideLibFuerBlockEinfuegen: ") + SpeicherOrtSlideLibFuerBlockEinfuegen);
  // 3.
  NummerEinfuegepkt = 1;
  // 4. More than one point: the board.
  if (AnzahlEinfuegepunkte > 1) {
    const bool markieren = bytMarkieren1BeiEinfuege0 == 1;
    const QString form = markieren ? QStringLiteral("frmVariaEinfuegepkteMarkieren")
                                   : QStringLiteral("frmVariaEinfuegepkte");
    board.Form_Load(ansicht, AnzahlEinfuegepunkte, SpeicherOrtSlideLibFuerBlockEinfuegen, ort.frei2,
                    markieren);
    strAufrufer = QStringLiteral("frmBockverwaltung");
    t.step(form);
    const int ergebnis = prompt().dialog(form, [this] { return boardZeigen ? boardZeigen(board) : 0; });
    strAufrufer.clear();
    // Confirmed by the dialog and not cancelled on the board itself.
    const bool abgebrochen = board.geschlossen() && !board.bestaetigt();
    const bool gewaehlt = ergebnis == VariaEinfuegepkte::kBestaetigt && !abgebrochen;
    if (gewaehlt) {
      NummerEinfuegepkt = int16_t(board.gewaehlt() + 1);
    } else if (markieren) {
      NummerEinfuegepkt = 1;
      bytAbbrechen = 1;
    } else {
      FormularAbbrechen = 1;
      return;
    }
  }
  // 5.
  bytMarkieren1BeiEinfuege0 = 0;
}

bool AbfrageXYWinkel(CadBridge& b, const EinfuegeOptionen& o, QString& strMassstabX,
                     QString& strMassstabY) {
  Trace t(QStringLiteral("AbfrageXYWinkel"));
  if (o.byteAbfrageXFaktor == 1) {
    const std::optional<double> x = AbfrageGetReal(b, QStringLiteral("\r\nX-Faktor: "));
    if (!x) return false;
    strMassstabX = fctZahlFuerAcad(*x);
  }
  if (o.byteAbfrageYFaktor == 1) {
    const std::optional<double> y = AbfrageGetReal(b, QStringLiteral("\r\nY-Faktor: "));
    if (!y) return false;
    strMassstabY = fctZahlFuerAcad(*y);
  }
  return true;
}

}  // namespace kolvane

// New insertion points and slides of a stored view: the flow of the new block
// command without selection and drawing. The points are picked in the drawing
// the host has open; its base point follows the new point A, and the view's
// slide library is shot anew. Only the slide library reaches the library.
#include <QDir>

#include "bibliothek.h"
#include "blockdaten.h"
#include "blockverwaltung.h"
#include "cadbridge.h"
#include "commandchannel.h"
#include "diagnostics.h"
#include "eventsink.h"
#include "msgbox.h"
#include "neuerblock.h"
#include "recordhelpers.h"
#include "recordset.h"
#include "settings.h"

namespace kolvane {

bool NeuerBlock::SetInsertPointsToP1P6(uint8_t ansicht) {
  Trace t(QStringLiteral("PunkteWerte aus Datenbank den Variablen zuordnen (?)"));
  Recordset zeile;
  if (!fctRsEinlesenMitEinemKriterium(zeile, lib_.connDb, QStringLiteral("tblBlockInfo"), QStringLiteral("Block"),
                                      bv_.aktivierteBlocknummer, 0) ||
      zeile.RecordCount() < 1)
    return false;
  // As the insert counts them: up to the last letter whose X is set (neither
  // empty nor 0); point A always.
  const QString v = QString::number(ansicht);
  auto feld = [&zeile, &v](int j, char a) { return zeile.value(QString(QChar(u'A' + j)) + QChar(a) + v); };
  if (!fctAnsichtWertVorhanden(feld(0, 'X'))) return false;
  n.SlideAnzahl = 1;
  for (int j = 1; j < 6; ++j) {
    const QVariant x = feld(j, 'X');
    if (!x.isNull() && !x.toString().trimmed().isEmpty() && x.toDouble() != 0) n.SlideAnzahl = int16_t(j + 1);
  }
  for (int j = 0; j < n.SlideAnzahl; ++j)
    n.Einfuegepunkte[size_t(j)] = {feld(j, 'X').toDouble(), feld(j, 'Y').toDouble(), feld(j, 'Z').toDouble()};
  return n.SlideAnzahl > 0;
}

void NeuerBlock::NewInsertPointsAnSlide(uint8_t ansicht, bool bytNurSlide) {
  if (laeuft_) return;
  if (b_.istLT()) {
    // Points can't be picked without the host's automation.
    subMsgboxInfoEinzeilig(942);
    return;
  }
  laeuft_ = true;
  if (hooks.ablauf) hooks.ablauf(true);
  Trace t(QStringLiteral("NewInsertPoints"));
  n = Neuanlage{};
  n.byteZuErstellendeAnsicht = ansicht;
  nurPunkte_ = true;
  filediaGesetzt_ = false;
  marke_ = false;
  bildausschnitt_ = std::make_unique<Bildausschnitt>(b_, n, temp());
  auto ende = [this] {
    b_.bytEventBeruecksichtigen = 0;
    bildausschnitt_.reset();
    nurPunkte_ = false;
    laeuft_ = false;
    if (hooks.ablauf) hooks.ablauf(false);
  };
  // 1.
  if (!fctEventActivXErstellen(b_)) {
    b_.subAcadNichtErreichbar();
    ende();
    return;
  }
  Host* h = b_.acadApp;
  if (!ACAD_aktivieren(b_) || !h) {
    ende();
    return;
  }
  if (hooks.hauptform) hooks.hauptform(false);
  // 2.
  n.intFiledia = int16_t(h->getVariable(QStringLiteral("filedia")).toInt());
  h->setVariable(QStringLiteral("filedia"), 0);
  h->clearError();
  filediaGesetzt_ = true;
  undoMarke();
  QDir(temp()).removeRecursively();
  QDir().mkpath(temp());
  if (!bytNurSlide) {
    // 3. The points; their marks go again, the base point follows point A.
    const bool punkte = EinfuegepunkteAbfragen();
    if (!punkte || fctEscapeGedrueckt(b_)) {
      abbruch(n.bytAbbruchSub == 1 ? 0 : (n.bytAbbrechen == 1 ? 40 : 39));
      ende();
      return;
    }
    undoZurueck();
    std::array<QString, 3> p;
    KommaPunktErsetzen(n.Einfuegepunkte[0], p);
    SendCommand(b_, QStringLiteral("._base ") + p[0] + u',' + p[1] + u',' + p[2] + u' ');
  } else if (!SetInsertPointsToP1P6(ansicht)) {
    // 4.
    abbruch();
    ende();
    return;
  }
  // 5.-6. The frame and the slides, as for a new block.
  undoMarke();
  if (bildausschnittAbfragen() != Ende::Fertig || slidesUndBibliothek() != Ende::Fertig) {
    ende();
    return;
  }
  // 7.-8. The points, then the slide library into the library.
  undoZurueck();
  filediaZurueck();
  const bool ok = dateienInDieBibliothek(
      [this, ansicht, bytNurSlide] {
        return bytNurSlide || BlockdatenInDatenbankAbspeichernAnsichten2(bv_, n, ansicht, n.SlideAnzahl, 1);
      },
      true);
  if (!ok) abbruch();
  else zeigen();
  ende();
}

}  // namespace kolvane

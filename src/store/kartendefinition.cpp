#include "kartendefinition.h"

#include <QDir>

#include "bibliothek.h"
#include "defmenuedatei.h"
#include "labels.h"
#include "msgbox.h"
#include "prompt.h"
#include "recordhelpers.h"
#include "settings.h"

namespace kolvane {

bool fctKartenDefinitionLesen(Bibliothek& lib, KartenDefinition& d) {
  d = KartenDefinition{};
  Recordset& ro = lib.rsOrdner;
  Recordset& rd = lib.rsDefMenue;
  if (!ro.isOpen() || !rd.isOpen() || rd.RecordCount() < 1) return false;
  if (!fctRsFind(ro, QStringLiteral("OrdnerNr"), lib.strAktuelleOrdnerNr)) ro.MoveFirst();
  QString nrDef = ro.text(QStringLiteral("NrTblDefMenue"));
  if (nrDef.trimmed().isEmpty()) nrDef = QStringLiteral("1");
  bool zahl = false;
  nrDef.toInt(&zahl);
  rd.MoveFirst();
  if (!zahl || !rd.Find(QStringLiteral("Nr = ") + nrDef)) rd.MoveFirst();
  for (int i = 0; i < 10; ++i) {
    d.benennung[size_t(i)] = rd.text(QStringLiteral("Benennung") + QString::number(i + 1));
    d.standardwert[size_t(i)] = rd.text(QStringLiteral("Standardwert") + QString::number(i + 1));
  }
  return true;
}

QString fctKartenDateiVerzeichnis(Bibliothek& lib) { return lib.settings().environment().configDir; }

bool fctKartenwerteAusDateiLaden(Bibliothek& lib, std::array<QString, 10>& werte) {
  constexpr int kWerteBleiben = 973;
  QDir().mkpath(fctKartenDateiVerzeichnis(lib));
  const QString datei = prompt().openFile(labels().fctBeschriftFrmZuordnen(QStringLiteral("frmDefMenue.DateiLadenTitel")),
                                          fctKartenDateiVerzeichnis(lib), QStringLiteral("Dat-Datei (*.dat)|*.dat"),
                                          QStringLiteral("datKartei1.dat"));
  if (datei.isEmpty()) return false;
  DefMenueDateiInhalt inhalt;
  switch (fctDefMenueDateiLesen(datei, inhalt)) {
    case DefDateiFehler::Keiner:
      // The defaults become the values; the names are the definition's business.
      werte = inhalt.standardwert;
      return true;
    case DefDateiFehler::NichtLesbar: fctDateiMeldung(964, datei, QString(), kWerteBleiben); return false;
    case DefDateiFehler::Leer: fctDateiMeldung(960, datei, QString(), kWerteBleiben); return false;
    case DefDateiFehler::ZuLang: fctDateiMeldung(962, datei, QString(), kWerteBleiben); return false;
    case DefDateiFehler::Beschaedigt: fctDateiMeldung(961, datei, QString(), kWerteBleiben); return false;
  }
  return false;
}

QString fctKartenBeschriftung(const KartenDefinition& d, int i) {
  const QString& b = d.benennung[size_t(i)];
  if (i == 0 && (b.isEmpty() || b == QLatin1String("*****Frei*****"))) return labels().fctBeschriftFrmZuordnen(164);
  return b;
}

}  // namespace kolvane

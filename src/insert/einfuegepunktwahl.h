#pragma once
#include <QString>
#include <cstdint>
#include <functional>
#include <vector>

#include "recordset.h"
#include "variaeinfuegepkte.h"

namespace kolvane {

class CadBridge;
class Connection;
struct EinfuegeOptionen;

// Which view an insert takes, how many insertion points that view has, and
// which one the user wants. Used by the insert and by marking.
class Einfuegepunktwahl {
 public:
  // --- input ---
  QString aktivierteBlocknummer;
  uint8_t bytMarkierteAnsicht = 0;     // the view picked before the insert began
  uint8_t byteAktivierteAnsicht = 0;   // the view picked in frmAnsichten; 0 when none

  // --- result ---
  uint8_t byteBestimmenWelcheAnsichtEingefuegtWird = 0;
  Recordset rsBlockInfo0Einfuegepkt;   // the 18 coordinates of the view
  int16_t AnzahlEinfuegepunkte = 1;
  int16_t NummerEinfuegepkt = 0;       // 1 = A ... 6 = F
  QString SpeicherOrtSlideLibFuerBlockEinfuegen;
  int16_t FormularAbbrechen = 0;       // the insert's board was cancelled
  uint8_t bytAbbrechen = 0;            // the marking board was cancelled

  // The caller the board notes while it is shown ("frmBockverwaltung").
  QString strAufrufer;
  // The board of the last choice; its widget runs it modally through this
  // hook (the result of exec). Unset, the board stays unanswered: cancelled.
  VariaEinfuegepkte board;
  std::function<int(VariaEinfuegepkte&)> boardZeigen;

  // Where the pictures of the points are found.
  struct Ort {
    QString bibliothek;  // library directory
    QString ordnerNr;    // the page's directory
    QString slideLib;    // SlideLib of the block's row
    QString frei2;       // the blank picture
  };

  // The statement of the view's points, as the library is asked.
  static QString sqlEinfuegepunkte(uint8_t ansicht, const QString& block);

  // The views the choice offers for a block (frmAnsichten's list): 0 and each
  // further view that exists, by the library's one rule. Empty when the block
  // has no row or the library can't be read (reported).
  static std::vector<uint8_t> AnsichtenZurWahl(Connection& conn, const QString& block);

  // View 1 to 4 when frmAnsichten or the marked view names it (1 first), else
  // 0; then the view's points are read. False, reported, when they can't be.
  bool EinzufuegendeAnsichtBestimmenUndRsEinlesen(Connection& conn);
  // The last point whose X is set (neither empty nor "0") counts: F gives 6,
  // ... B gives 2; none gives 1.
  void AnzahlDerEinfuegepkteErmitteln();
  // The whole choice. The argument is 1 for marking, 0 for an insert, and 0
  // again afterwards. A view of one point shows no board.
  void VariaEinfuegepktBestimmen(uint8_t& bytMarkieren1BeiEinfuege0, const Ort& ort);
};

// The factors asked at the host's command line, despite the name: X when
// byteAbfrageXFaktor is 1, then Y; an answer replaces the factor. False when
// the user broke off a question.
bool AbfrageXYWinkel(CadBridge& b, const EinfuegeOptionen& o, QString& strMassstabX,
                     QString& strMassstabY);

}  // namespace kolvane

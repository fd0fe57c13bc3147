#pragma once
#include <QColor>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "pagemodel.h"

namespace kolvane {

class Blockverwaltung;
class Recordset;

// One row of the search result, read once when the results open.
struct TSuchTreffer {
  QString Block;
  QString M0;
  QString Name;       // what labBlockName shows: M0, or BlkName0 for a row of the current folder
  QString OrdnerID;   // Nr of the folder's row, as text ("" when the row has none)
  QString SlideLib;
  std::array<QString, 5> BlkName;  // BlkName0 to BlkName4
  bool weitereAnsicht = false;     // AX1 to AX4: a further view has its point A
};

// The logic of frmSuchergebnis: the hits of the database search as a grid of
// 20 thumbnails of its own, independent of folders and pages. For the active
// hit it tells folder, page and name, inserts it, or moves the main browser
// onto it. The browser's state is only read here, except by cmbGeheZu_Click
// (which moves it on purpose).
class Suchergebnis {
 public:
  static constexpr int kBilder = 20;  // the grid's pictures, whatever intBilder is
  static inline const QString kFrei = QStringLiteral("frei");

  Suchergebnis(Blockverwaltung& bv, Recordset& rsDatenbankSuche, const QString& strBlkNameGesucht);

  // Work done elsewhere. Unset hooks do nothing.
  // The insert of a search hit: the main form's folder and active block are
  // set to the hit for the insert and restored afterwards; ansicht is the
  // view preset for it.
  std::function<void(const QString& block, uint8_t ansicht)> einfuegen;
  // Unloads the results and the search dialog.
  std::function<void()> schliessen;
  // Brings the main form to the front.
  std::function<void()> hauptformNachVorne;

  // --- state ---
  // A search over a whole library can find more rows than a 16-bit count holds.
  int32_t intAnzahlDerGefundenenBloecke = 0;
  int32_t intErgebnisSeite = 0;       // zero-based page of the result grid
  uint8_t bytErgebnisPosition = 0;    // active picture, 0 to 19
  QString strAktivierteBlocknummer;   // Block of the active hit ("" on a free picture)
  int16_t intSeite = 0;               // zero-based browser page of the active hit; -1: on no slot
  int32_t intFuerNummerPositionsSuche = 0;  // its picture on that page
  uint8_t byteAnsichtVorhanden = 0;   // the active hit has a further view
  std::vector<TSuchTreffer> aryTreffer;
  QString strBlkNameGesucht;

  QString labOrdnername, labSeitenNummer, labBlockName;
  QStringList lisBlockBenennung;      // the grid's 20 list lines
  int lisBlockBenennungIndex = 0;     // the list follows the active picture
  std::array<QString, kBilder> sldSuchergebnis;  // slide address per picture
  // The active picture's frame: green with variants (32768), red without
  // (255); every other picture keeps the button face.
  FrameColor rahmenAktiv = FrameColor::Red;
  bool cmbVorEnabled = false;
  bool cmbZurueckEnabled = false;
  bool cmbEinfuegenEnabled = false;   // a hit is active
  bool cmbGeheZuEnabled = false;      // and it lies on a page of an existing folder

  // --- routines ---
  // Reads every row of the search, fills the first page, stands on picture 0.
  bool Form_Load();
  // Labels, page, views and frame of the active picture.
  void Anzeigen();
  // The next or previous 20 hits; the active picture index stays.
  bool cmbVor_Click();
  bool cmbZurueck_Click();
  void sldSuchergebnis_LButtonDown(int i);
  // Moves the main browser to the hit's folder, page and picture, then closes
  // the search. False (nothing moves) on a free picture, a hit on no slot or
  // in a folder that is gone.
  bool cmbGeheZu_Click();
  // Inserts the active hit (with the view whose name was searched), then
  // closes the search. False on a free picture.
  bool cmbEinfuegen_Click();
  // The view (0 to 4) of the hit `block` whose BlkName<k> equals `name`
  // without regard to case; 0 when none does.
  uint8_t fctBytAktAnsichtUeberBlkName(const QString& block, const QString& name) const;

  // The hit under picture i of the current result page; nullptr for a free picture.
  const TSuchTreffer* treffer(int i) const;
  // The back colour of the thumbnails, as the browser's (invalid: the default).
  QColor slideHintergrund() const;

 private:
  void seiteFuellen();
  void knoepfeSetzen();
  // Finds the folder's row (by Nr) in the library's folder list; the list's
  // cursor returns to where it stood. False when there is no such folder.
  bool ordnerSuchen(const QString& ordnerID, QString& ordnerNr, QString& ordnerName);
  QString seitenBeschriftung(const QString& ordnerID, int seitenNr);

  Blockverwaltung& bv_;
  Recordset& rs_;
  bool ordnerGefunden_ = false;
};

}  // namespace kolvane

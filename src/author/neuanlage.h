#pragma once
#include <QString>
#include <array>
#include <cstdint>

#include "host.h"

namespace kolvane {

// The working state of one run of the new block command, from the choice of
// view to the stored row: what the picks, the dialogs and the capture gather
// and what the storage writes. One object lives as long as the command.
struct Neuanlage {
  // --- what is made ---
  uint8_t byteZuErstellendeAnsicht = 0;  // 0 a new block, 1 to 4 a further view
  uint8_t bytVarianteAnlegen = 0;        // 1: a variant of the block
  uint8_t bytVarianteUeberRechteMaus = 0;  // the choice was made by the variants menu
  uint8_t bytBlockImportManuell = 0;     // 1: strZuImportierenderBlock is imported
  QString strZuImportierenderBlock;
  // Set by the view chooser when a replaced view is taken as a fresh one (its
  // old point columns are cleared first).
  uint8_t bytVarianteGewaehlt = 0;

  // --- flags of the run ---
  uint8_t bytAbbrechen = 0;
  uint8_t bytAbbruchSub = 0;
  uint8_t bytBloeckeImportAbbrechen = 0;

  // --- files and names ---
  QString TempBlockzeichnung;
  QString SpeicherortDerBlockzeichnung;
  QString strBlockName;
  QString strVariaBlockName;
  QString strVariaDwgVerzeichnis;
  QString strSpeicherOrtSlideFuerLT;

  // --- points ---
  std::array<HostPoint, 6> Einfuegepunkte{};
  int16_t SlideAnzahl = 0;
  int16_t intFiledia = 0;
  QString RingAussenDurchmesserPunkt;

  // --- slides ---
  HostPoint pZ1{}, pZ2{};
  QString ErstesSlidebild;
  std::array<QString, 6> arySlideNamen;
  QString strSlideLibDateiName;
  QString strTempSpeicherOrtSlideLib;
  QString SpeicherOrtSlideLib;

  // --- the data card ---
  std::array<QString, 10> aryDatenbankEintrag;
  QString strLayer, strLinie, strFarbe;

  // The digit of the view being made, as file names carry it.
  QString ansichtZiffer() const { return QString::number(byteZuErstellendeAnsicht); }
};

}  // namespace kolvane

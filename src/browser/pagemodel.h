#pragma once
#include <QColor>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

namespace kolvane {

// What one page shows; computed by Anzeigen, drawn by the window.
struct SlotModel {
  QString code;          // block code of the slot
  QString text;          // Benennung: M0 of the block, or "*****Frei*****"
  QString slidePath;     // address for the slide display
  bool occupied = false;
  bool markVisible = false;
  bool marked = false;
  // Why the slot's slide can't be shown ("" when it can): the slot shows a
  // crossed frame, and the status bar says it when the slot is the active one.
  QString slideFehler;
};

enum class FrameColor { ButtonFace, Red, Green };

struct PageModel {
  int intBilder = 20;
  int rows = 4;
  int columns = 5;
  QVector<SlotModel> bilder;   // one per picture of the page
  int pos = 0;                // active picture
  FrameColor activeFrame = FrameColor::Red;
  QStringList listEntries;    // lisBlockBenennung
  QString labNameDaten;       // BlkName0 of the active block
  QString labBezeichnung;
  QString pageText;           // cboSeite / dcboSeite
  QString labSeitenNummer;
  QString folderName;         // comboxOrdner
  QStringList folderNames;
  QString libraryPath;        // comboxVerzeichnis
  QStringList libraryPaths;
  QString statusText;         // status bar: label and block count
  QString statusFehler;       // status bar: why the active slot's slide can't be shown
  QString txtVerzeichnisBlock;  // drawing path of the active block (drag source)
  QHash<QString, bool> enabled;  // command name -> enabled
  QHash<QString, bool> visible;  // command name -> visible (only those that change)
  QColor slideBack;           // sBkColor, invalid = the display's default
};

}  // namespace kolvane

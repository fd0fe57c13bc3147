#pragma once
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>

#include "bildausschnitt.h"
#include "blocknameeingeben.h"
#include "karteidateneingabe.h"
#include "neuanlage.h"

namespace kolvane {

class Bibliothek;
class Blockverwaltung;
class CadBridge;
class Settings;

// The new block command: a selection in the drawing becomes a stored block on
// the active slot (a new block on a free slot; on an occupied one a further
// view or a variant). The user picks the insertion points, the objects and
// the picture frame in the host; the drawing, the slides and the slide
// library are made in the run's temporary directory, and only when every step
// has succeeded does the row get written and the files moved into the
// library. Escape or a cancelled dialog at any step leaves the library as it
// was and the drawing as it was before the command.
class NeuerBlock {
 public:
  NeuerBlock(Settings& settings, Blockverwaltung& browser, CadBridge& bridge);
  ~NeuerBlock();
  NeuerBlock(const NeuerBlock&) = delete;
  NeuerBlock& operator=(const NeuerBlock&) = delete;

  struct Hooks {
    // Shows (true) or hides (false) the main form.
    std::function<void(bool sichtbar)> hauptform;
    // The command starts (true) and has ended (false).
    std::function<void(bool laeuft)> ablauf;
    // The dialogs as widgets over their logic; each returns 1 for OK. They
    // are shown through the prompt in force (scripted in tests).
    std::function<int(BlocknameEingeben&)> frmBlocknameEingeben;
    std::function<int(Karteidateneingabe&)> frmKarteiDateneingabe;
    std::function<int(Bildausschnitt&)> frmBildausschnittAnpassen;
    // The choice of a further view or a variant on an occupied slot: sets
    // byteZuErstellendeAnsicht or bytVarianteAnlegen of the state; 1 for OK.
    // Unset: the slot is refused with a message.
    std::function<int(Neuanlage&)> frmAnsichtenNeu;
    // The variant's own dialog after that choice; 1 for OK.
    std::function<int(Neuanlage&)> frmVariaNeu;
  } hooks;

  // The state of the run. Callers set bytVarianteUeberRechteMaus,
  // bytBlockImportManuell and strZuImportierenderBlock before the command.
  Neuanlage n;

  // The dialogs' logic during a run (null outside one).
  BlocknameEingeben* blockname() { return blockname_.get(); }
  Karteidateneingabe* kartei() { return kartei_.get(); }
  Bildausschnitt* bildausschnitt() { return bildausschnitt_.get(); }

  // The whole command, on the route of the host.
  void combutNeu_Click();
  // New insertion points of a view of the active block, picked in the drawing
  // the host has open (the block's own, opened for editing), and its slides
  // shot anew; with bytNurSlide only the slides, at the stored points. The
  // drawing's base point moves to the new point A; its file stays.
  void NewInsertPointsAnSlide(uint8_t ansicht, bool bytNurSlide);
  bool laeuft() const { return laeuft_; }

  // A free file name for a variant's drawing: suffix + the code's last four
  // characters + view digit + ".dwg", the first whose file does not exist in
  // the folder's Block/Varia directory (its path goes to strVariaDwgVerzeichnis).
  QString fctVariaBlockName();

  // The library's places for the block being made.
  QString ordnerVerzeichnis() const;   // <library>/<folder>
  QString temp() const;

 private:
  enum class Ende { Fertig, Abbruch, Still };
  Ende automationsroute();
  Ende ACadLtBlockNeu();
  bool pruefen();
  bool EinfuegepunkteAbfragen();
  bool punktAbfragen(int j);
  Ende auswaehlenUndSchreiben();
  Ende bildausschnittAbfragen();
  Ende slidesUndBibliothek();
  Ende speichern();
  bool dateienInDieBibliothek(const std::function<bool()>& zeileSchreiben, bool nurSlides = false);
  bool SetInsertPointsToP1P6(uint8_t ansicht);
  bool vorbereiten();
  bool blocknameDialog(bool variante);
  void abbruch(int meldung = 0);
  void undoMarke();
  void undoZurueck();
  void filediaZurueck();
  void zeigen();
  QString blockCode() const;

  Settings& settings_;
  Blockverwaltung& bv_;
  Bibliothek& lib_;
  CadBridge& b_;
  std::unique_ptr<BlocknameEingeben> blockname_;
  std::unique_ptr<Karteidateneingabe> kartei_;
  std::unique_ptr<Bildausschnitt> bildausschnitt_;
  bool laeuft_ = false;
  bool filediaGesetzt_ = false;
  bool marke_ = false;  // an undo mark of this run stands
  bool nurPunkte_ = false;  // new points of a stored view: no name, no drawing
};

}  // namespace kolvane

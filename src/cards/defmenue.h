#pragma once
#include <QString>
#include <array>

#include "defmenuedatei.h"

namespace kolvane {

class Bibliothek;

// The logic of frmDefMenue, the definition of a folder's data card: the names
// and defaults of the fields M0 to M9 in a row of tblDefMenue. The folder's
// NrTblDefMenue points at its row; 1 (or no value) is the global row that
// every folder without a definition of its own shares.
class DefMenue {
 public:
  explicit DefMenue(Bibliothek& lib) : lib_(lib) {}

  std::array<QString, 10> txtBenennung;
  std::array<QString, 10> txtStandardwert;
  bool checkGlobal = false;
  // After a save: the heading the main form shows (the first field's name).
  QString labBezeichnung;
  // True once combutSpeichern_Click has stored the definition.
  bool gespeichert() const { return gespeichert_; }

  // The definition in force for the current folder. A folder that is not
  // found, or that points at no row of its own, shows the global row; a
  // reference to a row that is gone shows the first row. False when the
  // library's record sets aren't open.
  bool Form_Load();

  // Stores the boxes: checkGlobal (after a question) in row 1 with the folder
  // pointing there; otherwise in the folder's own row, made at its first
  // private save. True when stored: the dialog closes. A write-protected
  // library stores nothing.
  bool combutSpeichern_Click();
  bool schreibgeschuetzt() const;

  // The file exchange: a definition file written from the boxes, or read into
  // them. A cancelled chooser does nothing. False when nothing was written or
  // read; a file that can't be read or isn't a definition is refused with a
  // message and the boxes stay as they were.
  bool combutInDateiSpeichern_Click();
  bool cmbKarteiLaden_Click();

  // The file parts alone, for the chooser's result.
  bool inDateiSpeichern(const QString& datei);
  bool ausDateiLaden(const QString& datei);

  // Message texts.
  static constexpr int kMeldungOrdnerFehlt = 45;
  static constexpr int kMeldungDateiLeer = 960;
  static constexpr int kMeldungDateiBeschaedigt = 961;
  static constexpr int kMeldungDateiZuLang = 962;
  static constexpr int kMeldungDefinitionBleibt = 963;
  static constexpr int kMeldungDateiNichtLesbar = 964;
  static constexpr int kMeldungDateiNichtGeschrieben = 965;
  static constexpr int kFrageGlobal1 = 966, kFrageGlobal2 = 967;

  // The definition file's proposed name and chooser filter.
  static QString dateiName() { return QStringLiteral("datKartei1.dat"); }
  static QString dateiFilter() { return QStringLiteral("Dat-Datei (*.dat)|*.dat"); }

 private:
  bool AbspeichernInTblDefMenue();
  bool ordnerFinden();
  bool speichernGlobal();
  bool speichernEigen();
  void dateiMeldung(int nr, const QString& datei, const QString& grund = QString());

  Bibliothek& lib_;
  bool gespeichert_ = false;
};

}  // namespace kolvane

#pragma once
#include <QColor>
#include <QString>
#include <QStringList>
#include <functional>

namespace kolvane {

class Settings;

// The logic of frmErweitertesSetup: the list of libraries, the number of
// pictures per page, the back colour of the slides and the language. The
// dialog works on copies; OK writes what changed, Cancel writes nothing.
class ErweitertesSetup {
 public:
  explicit ErweitertesSetup(Settings& settings);

  // What the main form redoes after OK. Unset hooks do nothing.
  struct Hooks {
    // Number of pictures or back colour changed: the page is laid out and
    // drawn again (the block codes stay).
    std::function<void()> anzeigeGeaendert;
    // The list of libraries changed: the library combo and the Datei menu.
    std::function<void()> bibliothekenGeaendert;
    // cmbDatenbankNeu: makes a new library at the path and opens it; true when
    // it exists then. Unset: the button is not offered.
    std::function<bool(const QString& pfad)> datenbankNeu;
  } hooks;

  // --- libraries (cboDatenbanken) ---
  // Full paths of dbKolvane.mdb, in the order of the list.
  const QStringList& datenbanken() const { return datenbanken_; }
  int auswahl = -1;  // the selected row
  // The library in use: it can't be removed.
  bool istAktuell(int zeile) const;
  // Asks for a directory and adds the library in it.
  bool cmbDatenbankHinzufuegen_Click();
  // Adds the library in the directory (or the dbKolvane.mdb named). A
  // directory without a working library, or one already listed, is refused
  // with a message. The new row is selected.
  bool hinzufuegen(const QString& verzeichnisOderDatei);
  // Removes the selected row from the list (not from the disk); never the
  // library in use.
  bool cmdLoeschen_Click();
  // Moves the selected row one up or down; it stays selected.
  bool nachOben();
  bool nachUnten();
  // Asks for the new library's file, makes it (hook) and lists it.
  bool cmbDatenbankNeu_Click();

  // --- display ---
  // The entries of comboxBilderanzahl; the index is longAnzahlDerBilder.
  static const QStringList& bilderanzahlEintraege();
  int comboxBilderanzahl = 4;
  // The slides' back colour; invalid = the display's default.
  QColor hintergrund() const { return hintergrund_; }
  void setHintergrund(const QColor& c) { hintergrund_ = c; }

  // --- language (cboSprachen) ---
  // The languages with both a caption and a message file in the label folder.
  const QStringList& sprachen() const { return sprachen_; }
  QString sprache;

  // OK: writes the list (Kolvane9.0.ini), the number of pictures (all setup
  // values, as the store keeps them together), the back colour ("sBkColor")
  // and the language ("Sprache", with the message that the captions change at
  // the next start). Runs the hooks of what changed.
  bool cmbOk_Click();

  // A colour as the number the settings keep (blue in the high byte).
  static long bgrVonFarbe(const QColor& c);

  // Message texts.
  static constexpr int kMeldungKeineBibliothek = 1000;
  static constexpr int kMeldungListeBleibt = 1001;
  static constexpr int kMeldungSchonInListe = 1002;
  static constexpr int kMeldungAktuelleBleibt1 = 1003, kMeldungAktuelleBleibt2 = 1004;
  static constexpr int kMeldungSpracheNeustart1 = 1005, kMeldungSpracheNeustart2 = 1006;
  static constexpr int kMeldungDateiBesteht = 1007;

 private:
  bool istGelistet(const QString& pfad) const;

  Settings& settings_;
  QStringList datenbanken_;
  QStringList sprachen_;
  QColor hintergrund_;
  QColor hintergrundAlt_;
  int bilderanzahlAlt_ = 4;
  QString spracheAlt_;
};

}  // namespace kolvane

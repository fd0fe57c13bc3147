#pragma once
#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace kolvane {

class Bibliothek;
class Blockverwaltung;

// Message numbers of the folder and page dialogs.
constexpr int kMsgOrdnerNameLeer = 980;
constexpr int kMsgOrdnerNameVorhanden1 = 981;
constexpr int kMsgOrdnerNameVorhanden2 = 982;
constexpr int kMsgNameZuLang = 983;
constexpr int kMsgOrdnerVerzeichnis1 = 984;
constexpr int kMsgOrdnerVerzeichnis2 = 985;
constexpr int kMsgOrdnerNachName1 = 986;
constexpr int kMsgOrdnerNachName2 = 987;
constexpr int kMsgHochkomma = 919;
constexpr int kMsgKeinEintrag = 957;

// Folder names as the user types them: blanks around the name don't count.
QString fctNameBereinigen(const QString& name);

// Checks a folder name the user typed: not empty, no apostrophe, not longer
// than the column, and no other folder of that name (compared without case;
// eigeneNr is the Nr of the folder being renamed, 0 for a new one). A refused
// name is explained in a box; false then, and nothing is changed.
bool fctOrdnerNamePruefen(Bibliothek& lib, const QString& name, int32_t eigeneNr);

// Makes a folder without a dialog (imports): row with OrdnerNr from the suffix
// table, NrtblDefMenue 1 and NrTblOrdnen = Nr, in one transaction, then its
// directory. A folder of that name that exists already is taken as it is
// (*angelegt false). If the directory can't be made the row goes again. The
// browser is not refreshed here. False (reported) when nothing could be made.
bool fctOrdnerNeuAnlegen(Bibliothek& lib, const QString& ordnerName, int32_t* nr = nullptr,
                         QString* ordnerNr = nullptr, bool* angelegt = nullptr);

// The first free OrdnerNr: the suffix table from the index of the highest Nr
// of tblOrdner on, the first suffix that no row holds and no directory of the
// library carries. "" (reported) when there is none.
QString fctFreieOrdnerNr(Bibliothek& lib);

// Where a deleted folder's directory is set aside: "<dir>geloescht", or with a
// number behind it when that exists already.
QString fctGeloeschtZiel(const QString& verzeichnis);

// frmOrdnerNeu: the name of a new folder.
class OrdnerNeu {
 public:
  explicit OrdnerNeu(Blockverwaltung& bv) : bv_(bv) {}
  QString txtOrdnername;
  // Checks the name, makes the folder and refreshes the browser. False keeps
  // the dialog open with the text (a box has said why).
  bool cmbOk_Click();
  bool fertig() const { return fertig_; }
  const QString& neueOrdnerNr() const { return ordnerNr_; }

 private:
  Blockverwaltung& bv_;
  bool fertig_ = false;
  QString ordnerNr_;
};

// frmOrdnerUmbenennen: a new name for one folder.
class OrdnerUmbenennen {
 public:
  OrdnerUmbenennen(Blockverwaltung& bv, int32_t nr, const QString& alterName)
      : txtOrdnername(alterName), bv_(bv), nr_(nr) {}
  QString txtOrdnername;
  bool cmbOk_Click();
  bool fertig() const { return fertig_; }

 private:
  Blockverwaltung& bv_;
  int32_t nr_;
  bool fertig_ = false;
};

// frmOrdnerverwaltung: the folders of the library in the browser's order, and
// the commands new, rename, delete and the order (imgAufAb).
class OrdnerVerwaltung {
 public:
  explicit OrdnerVerwaltung(Blockverwaltung& bv);

  struct Eintrag {
    int32_t nr = 0;
    QString ordnerNr;
    QString name;
  };
  // dlisOrdner: one entry per row of rsOrdner, in its order.
  std::vector<Eintrag> dlisOrdner;
  int auswahl = -1;  // selected entry, -1 none

  // Work of other subsystems behind the dialog's buttons; unset ones are
  // disabled.
  struct Hooks {
    std::function<void()> cmdOrdnerImport;
    std::function<void()> cmdOrdnerExport;
    // The thin forms over the dialogs' logic (set by the window); each
    // returns 1 when its OK went through. Unset: the prompt's answer alone.
    std::function<int(OrdnerNeu&)> frmOrdnerNeu;
    std::function<int(OrdnerUmbenennen&)> frmOrdnerUmbenennen;
  } hooks;

  bool schreibgeschuetzt() const;
  bool nachNameSortiert() const;
  QStringList eintraege() const;

  // Fills dlisOrdner from rsOrdner; the selection stays on the folder it stood
  // on (by Nr), else the current folder.
  void Anzeigen();

  // cmbNeu: frmOrdnerNeu through the prompt. True when a folder was made; it
  // is selected then.
  bool cmbNeu_Click();
  // cmbUmbenennen: frmOrdnerUmbenennen for the selected folder.
  bool cmbUmbenennen_Click();
  // cmbLoeschen: the selected folder with its blocks, variants, marks and page
  // names; a folder with blocks keeps its files in "<dir>geloescht".
  bool cmbLoeschen_Click();
  // imgAufAb: the selected folder one place up (nachUnten false) or down.
  bool imgAufAb_Click(bool nachUnten);

  // The logic of the dialogs while they are open (for the thin forms and the
  // scripted actions of tests).
  OrdnerNeu* ordnerNeu() { return neu_.get(); }
  OrdnerUmbenennen* ordnerUmbenennen() { return umbenennen_.get(); }

  // Deletes the folder row nr with everything that hangs on it, in one
  // transaction, then sets a folder with blocks aside on disk. No question.
  bool fctOrdnerLoeschen(int32_t nr);

 private:
  bool nrTblOrdnenEindeutig();
  void auswahlAufNr(int32_t nr);

  Blockverwaltung& bv_;
  std::unique_ptr<OrdnerNeu> neu_;
  std::unique_ptr<OrdnerUmbenennen> umbenennen_;
};

// After folder rows changed: rsOrdner is read again in the browser's order, the
// folder combo rebuilt and the page shown; the current folder stays.
void fctBrowserOrdnerAuffrischen(Blockverwaltung& bv);

}  // namespace kolvane

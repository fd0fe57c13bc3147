#pragma once
#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace kolvane {

class Blockverwaltung;

// Message numbers of the page dialogs.
constexpr int kMsgSeiteLoeschen = 988;
constexpr int kMsgAlleSeitenLoeschen = 989;

// The highest page number the dialogs take, as the page combo does.
constexpr int kHoechsteSeite = 500;

// Rows of tblSeiten give page numbers of the current folder a name. These
// dialogs add, rename and delete such rows only: a page exists without one, and
// no block moves.

// Writes the name of page seitenNr of the current folder: the row of that
// number gets it, or a new row is made. No question; false (reported) on
// failure. The browser's page rows are read again.
bool fctSeitenNameSchreiben(Blockverwaltung& bv, int seitenNr, const QString& name);

// frmSeiteNeu: a page number and its name.
class SeiteNeu {
 public:
  explicit SeiteNeu(Blockverwaltung& bv) : bv_(bv) {}
  QString txtSeitenNr;
  QString txtSeitenname;
  // Checks number and name (boxes say what is wrong), asks before a page's
  // name is overwritten or a name is used twice, writes the row. False keeps
  // the dialog open with its text.
  bool cmbOk_Click();
  bool fertig() const { return fertig_; }

 private:
  Blockverwaltung& bv_;
  bool fertig_ = false;
};

// frmSeiteUmbenennen: a new name for a named page.
class SeiteUmbenennen {
 public:
  SeiteUmbenennen(Blockverwaltung& bv, int seitenNr, const QString& alterName)
      : txtSeitenname(alterName), bv_(bv), seitenNr_(seitenNr) {}
  QString txtSeitenname;
  int seitenNr() const { return seitenNr_; }
  bool cmbOk_Click();
  bool fertig() const { return fertig_; }

 private:
  Blockverwaltung& bv_;
  int seitenNr_;
  bool fertig_ = false;
};

// frmSeitenverwaltung: the named pages of the current folder (lisSeiten, in the
// order of rsSeiten, by name), and new, rename, delete and go to.
class SeitenVerwaltung {
 public:
  explicit SeitenVerwaltung(Blockverwaltung& bv);

  struct Eintrag {
    int32_t nr = 0;  // the row's key
    int seitenNr = 0;
    QString name;
  };
  std::vector<Eintrag> lisSeiten;
  int auswahl = -1;

  struct Hooks {
    // The thin forms over the dialogs' logic; 1 when their OK went through.
    std::function<int(SeiteNeu&)> frmSeiteNeu;
    std::function<int(SeiteUmbenennen&)> frmSeiteUmbenennen;
  } hooks;

  bool schreibgeschuetzt() const;
  // "<number>  <name>" per entry, as the list shows them.
  QStringList eintraege() const;

  // Fills lisSeiten from rsSeiten; the selection stays on its page number.
  void Anzeigen();
  bool cmbNeu_Click();
  bool cmbUmbenennen_Click();
  // Deletes the selected page's name (after a question).
  bool cmbLoeschen_Click();
  // Deletes the names of all pages of the folder (after a question).
  bool cmbAlleLoeschen_Click();
  // Goes to the selected page; false when none is selected.
  bool cmbOk_Click();

  SeiteNeu* seiteNeu() { return neu_.get(); }
  SeiteUmbenennen* seiteUmbenennen() { return umbenennen_.get(); }

 private:
  void browserAuffrischen();
  Blockverwaltung& bv_;
  std::unique_ptr<SeiteNeu> neu_;
  std::unique_ptr<SeiteUmbenennen> umbenennen_;
};

}  // namespace kolvane

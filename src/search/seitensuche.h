#pragma once
#include <QString>
#include <QStringList>
#include <cstdint>
#include <vector>

namespace kolvane {

class Blockverwaltung;

// The logic of frmSeitenSuche, the main form's "go to page" dialog: the named
// pages of the current folder by name, and a page number to go to.
class SeitenSuche {
 public:
  explicit SeitenSuche(Blockverwaltung& bv) : bv_(bv) {}

  struct Eintrag {
    QString SeitenName;
    int32_t SeitenNr = 0;
  };

  std::vector<Eintrag> arySeiten;  // in name order, as the list shows them
  QStringList lisSeitenNamen;
  int lisSeitenNamenIndex = -1;    // selected name, -1 for none
  QString txtSeitenNr;

  // Fills the list from the current folder's page rows, in name order.
  void Form_Load();
  // Selecting a name puts its page number into the text box.
  void lisSeitenNamen_Click(int index);
  // The selection stays only while the text is the selected page's number.
  void txtSeitenNr_Change(const QString& text);
  // Goes to the page typed. A text that is not a whole number of 1 or more
  // (up to the highest page number) is refused with a message; false then,
  // and the dialog stays open.
  bool cmdOK_Click();
  // The same as OK for the name double-clicked.
  bool lisSeitenNamen_DblClick(int index);

 private:
  Blockverwaltung& bv_;
};

}  // namespace kolvane

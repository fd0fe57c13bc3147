// The card definition of a folder: which row of tblDefMenue it reads and
// where a save lands (the folder's own row, or the shared row 1).
#include "bibliothek.h"
#include "defmenue.h"
#include "defmenuetest.h"
#include "labels.h"
#include "schema.h"

namespace kolvane {
namespace {

QStringList werte(const DefMenue& d) {
  QStringList z;
  for (const QString& s : d.txtBenennung) z << s;
  for (const QString& s : d.txtStandardwert) z << s;
  return z;
}

// Names and defaults as a user may type them: quotes, "%", "_" and "*" are
// stored as they stand.
void fuellen(DefMenue& d, const QString& stamm) {
  const QStringList heikel{"O'Neil", "50 %", "a\"b\"c", "'; DELETE FROM tblOrdner; --", "_*?[",
                           "%", "''", "\\\\server\\x", "Länge €", QString(90, 'x')};
  for (size_t i = 0; i < 10; ++i) {
    d.txtBenennung[i] = stamm + QString::number(i);
    d.txtStandardwert[i] = stamm + " " + heikel[int(i)];
  }
}

TEST_F(DefMenueTest, PrivateSaveMakesTheFoldersOwnRowOnceThenOverwritesIt) {
  ordnerAnlegen("001", QVariant());
  oeffnen();
  const QStringList global = zeile(1);

  DefMenue d(*lib_);
  ASSERT_TRUE(d.Form_Load());
  EXPECT_TRUE(d.checkGlobal);
  EXPECT_EQ(d.txtBenennung[0], labels().fctBeschriftFrmZuordnen(164)) << "a free first field is called by its label";
  EXPECT_EQ(d.txtBenennung[1], freiText());

  fuellen(d, "Tür");
  d.checkGlobal = false;
  ASSERT_TRUE(d.combutSpeichern_Click());
  EXPECT_EQ(prompt_->asked, QStringList()) << "a private save asks nothing";
  const qint64 eigen = verweis("000");
  EXPECT_GT(eigen, 1);
  EXPECT_EQ(zeile(eigen), werte(d));
  EXPECT_EQ(wert("SELECT global FROM tblDefMenue WHERE Nr = ?", {eigen}).toInt(), 0);
  EXPECT_EQ(zeile(1), global) << "the shared row is untouched";
  EXPECT_EQ(verweis("001"), 0) << "the other folder keeps no reference";
  EXPECT_EQ(d.labBezeichnung, QString::fromUtf8("Tür0"));
  EXPECT_EQ(bv_->fctBezeichnungsFeldAuslesen(), QString::fromUtf8("Tür0"));

  // Opened again it shows the folder's own row; a second save overwrites it.
  DefMenue e(*lib_);
  ASSERT_TRUE(e.Form_Load());
  EXPECT_FALSE(e.checkGlobal);
  EXPECT_EQ(werte(e), werte(d));
  e.txtStandardwert[9] = "geändert";
  ASSERT_TRUE(e.combutSpeichern_Click());
  EXPECT_EQ(verweis("000"), eigen);
  EXPECT_EQ(zeilen(), 2);
  EXPECT_EQ(zeile(eigen).last(), QString::fromUtf8("geändert"));
}

TEST_F(DefMenueTest, SharedSaveGoesToRowOneAndFoldersWithoutReferenceShowIt) {
  ordnerAnlegen("001", QVariant());  // no value: the shared row
  ordnerAnlegen("002", 1);
  oeffnen();
  // Folder 000 first gets a row of its own.
  DefMenue d(*lib_);
  ASSERT_TRUE(d.Form_Load());
  fuellen(d, "Privat");
  d.checkGlobal = false;
  ASSERT_TRUE(d.combutSpeichern_Click());
  const qint64 eigen = verweis("000");
  ASSERT_GT(eigen, 1);

  // Shared: a question first; No keeps everything as it is.
  DefMenue g(*lib_);
  ASSERT_TRUE(g.Form_Load());
  fuellen(g, "Gemeinsam");
  g.checkGlobal = true;
  prompt_->answer(Answer::No);
  EXPECT_FALSE(g.combutSpeichern_Click());
  EXPECT_TRUE(gezeigt(DefMenue::kFrageGlobal1));
  EXPECT_EQ(verweis("000"), eigen);
  EXPECT_EQ(zeile(1).first(), freiText());

  prompt_->answer(Answer::Yes);
  ASSERT_TRUE(g.combutSpeichern_Click());
  EXPECT_EQ(zeile(1), werte(g));
  EXPECT_EQ(wert("SELECT global FROM tblDefMenue WHERE Nr = 1").toInt(), 1);
  EXPECT_EQ(verweis("000"), 1) << "the folder goes to the shared row";
  EXPECT_EQ(zeile(eigen), werte(d)) << "its old row stays, unused";

  // The folders without a reference, or with 1, show the shared definition.
  for (const QString nr : {"001", "002"}) {
    SCOPED_TRACE(nr.toStdString());
    lib_->strAktuelleOrdnerNr = nr;
    DefMenue a(*lib_);
    ASSERT_TRUE(a.Form_Load());
    EXPECT_TRUE(a.checkGlobal);
    EXPECT_EQ(werte(a), werte(g));
    EXPECT_EQ(bv_->fctBezeichnungsFeldAuslesen(), "Gemeinsam0");
  }
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(DefMenueTest, UnknownFolderAndDanglingReference) {
  ordnerAnlegen("001", 99);  // a row that is gone
  oeffnen();
  // A folder pointing at no row shows the first row; its first private save
  // gives it a row of its own.
  lib_->strAktuelleOrdnerNr = "001";
  DefMenue d(*lib_);
  ASSERT_TRUE(d.Form_Load());
  EXPECT_EQ(d.txtBenennung[1], freiText());
  fuellen(d, "Neu");
  d.checkGlobal = false;
  ASSERT_TRUE(d.combutSpeichern_Click());
  const qint64 neu = verweis("001");
  EXPECT_GT(neu, 1);
  EXPECT_NE(neu, 99);
  EXPECT_EQ(zeile(neu), werte(d));

  // A folder that is not in the library: the shared row to look at, and a
  // private save refused with its message.
  lib_->strAktuelleOrdnerNr = "777";
  DefMenue u(*lib_);
  ASSERT_TRUE(u.Form_Load());
  EXPECT_TRUE(u.checkGlobal);
  u.checkGlobal = false;
  fuellen(u, "Nie");
  const qint64 vorher = zeilen();
  EXPECT_FALSE(u.combutSpeichern_Click());
  EXPECT_TRUE(gezeigt(DefMenue::kMeldungOrdnerFehlt));
  EXPECT_EQ(zeilen(), vorher);
  EXPECT_FALSE(u.gespeichert());
}

TEST_F(DefMenueTest, AFailedSaveLeavesRowsAndReferencesAsTheyWere) {
  oeffnen();
  DefMenue d(*lib_);
  ASSERT_TRUE(d.Form_Load());
  fuellen(d, "Gut");
  d.checkGlobal = false;
  d.txtStandardwert[5] = QString(101, u'x');  // one more than the column holds
  const qint64 vorher = zeilen();
  EXPECT_FALSE(d.combutSpeichern_Click());
  EXPECT_EQ(prompt_->asked.size(), 1) << "one report: " << prompt_->asked.join(" / ").toStdString();
  EXPECT_EQ(zeilen(), vorher);
  EXPECT_EQ(verweis("000"), 1);
  EXPECT_FALSE(d.gespeichert());

  // The record sets hold nothing of the failed attempt: the next save is whole.
  d.txtStandardwert[5] = "passt";
  ASSERT_TRUE(d.combutSpeichern_Click());
  EXPECT_EQ(zeilen(), vorher + 1);
  EXPECT_EQ(zeile(verweis("000")), werte(d));

  // A write-protected library stores nothing and asks nothing.
  lib_->booSchreibgeschuetzt = true;
  prompt_->asked.clear();
  d.checkGlobal = true;
  EXPECT_FALSE(d.combutSpeichern_Click());
  EXPECT_EQ(prompt_->asked, QStringList());
  EXPECT_EQ(zeile(1).first(), freiText());
}

}  // namespace
}  // namespace kolvane

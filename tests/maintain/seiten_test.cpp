#include <QCryptographicHash>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlQuery>

#include "connection.h"
#include "einfuegentest.h"
#include "frmseiten.h"
#include "labels.h"
#include "seiten.h"

namespace kolvane {

// Folder 000 with blocks on pages 1 and 3, page names "1" (a new library's),
// "Rohre" (2) and "Pumpen" (3); a second folder with a page name of its own.
class SeitenTest : public EinfuegenTest {
 protected:
  void SetUp() override {
    EinfuegenTest::SetUp();
    QByteArray zusatz;
    for (int nr = 980; nr <= 989; ++nr)
      if (labels().fctBeschriftMsgboxZuordnen(nr).isEmpty()) zusatz += "\n" + QByteArray::number(nr) + "=Meldung " + QByteArray::number(nr);
    if (!zusatz.isEmpty()) {
      QFile f(labels().strMsgboxDatei);
      ASSERT_TRUE(f.open(QIODevice::Append));
      f.write(zusatz + "\n");
      f.close();
      labels().fctBeschriftungsFileZuordnenIni();
    }
    a0_ = blockAnlegen(0, "A0");
    a45_ = blockAnlegen(45, "A45");
    ausfuehren("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (2, 'Rohre', 1), (3, 'Pumpen', 1)");
    ausfuehren("INSERT INTO tblOrdner (OrdnerNr, Ordnername, NrTblDefMenue) VALUES ('001', 'Zweiter', 1)");
    ausfuehren("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (1, 'Fremd', 2)");
    oeffnen();
  }

  void ausfuehren(const QString& sql, const QVariantList& werte = {}) {
    Connection conn;
    ASSERT_TRUE(conn.open(db_));
    ASSERT_TRUE(conn.execute(sql, werte)) << conn.error().toStdString();
  }

  // The page rows as "folder:number=name", in key order.
  QStringList seiten() {
    Connection conn;
    EXPECT_TRUE(conn.open(db_));
    QSqlQuery q(conn.database());
    EXPECT_TRUE(q.exec("SELECT NrTblOrdner, SeitenNr, SeitenName FROM tblSeiten ORDER BY Nr"));
    QStringList out;
    while (q.next()) out << q.value(0).toString() + ":" + q.value(1).toString() + "=" + q.value(2).toString();
    return out;
  }

  QStringList bloecke() {
    Connection conn;
    EXPECT_TRUE(conn.open(db_));
    QSqlQuery q(conn.database());
    EXPECT_TRUE(q.exec("SELECT Nr, Block, OrdnerID, SlideLib FROM tblBlockInfo ORDER BY Nr"));
    QStringList out;
    while (q.next()) out << q.value(1).toString() + "@" + q.value(2).toString() + "@" + q.value(3).toString();
    return out;
  }

  QByteArray dateiHash() const {
    QFile f(db_);
    if (!f.open(QIODevice::ReadOnly)) return {};
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256).toHex();
  }

  // frmSeiteNeu with number and name typed and OK pressed.
  // antwort: the answer to a question the OK asks.
  bool neueSeite(SeitenVerwaltung& sv, const QString& nr, const QString& name, QString* nameDanach = nullptr,
                 Answer antwort = Answer::None) {
    prompt_->dialogResult("frmSeiteNeu", 0, [&sv, nr, name, nameDanach] {
      sv.seiteNeu()->txtSeitenNr = nr;
      sv.seiteNeu()->txtSeitenname = name;
      if (!sv.seiteNeu()->cmbOk_Click() && nameDanach) *nameDanach = sv.seiteNeu()->txtSeitenname;
    });
    if (antwort != Answer::None) prompt_->answer(antwort);
    return sv.cmbNeu_Click();
  }

  bool umbenennen(SeitenVerwaltung& sv, int seitenNr, const QString& name, Answer antwort = Answer::None) {
    sv.auswahl = -1;
    for (size_t i = 0; i < sv.lisSeiten.size(); ++i)
      if (sv.lisSeiten[i].seitenNr == seitenNr) sv.auswahl = int(i);
    prompt_->dialogResult("frmSeiteUmbenennen", 0, [&sv, name] {
      sv.seiteUmbenennen()->txtSeitenname = name;
      sv.seiteUmbenennen()->cmbOk_Click();
    });
    if (antwort != Answer::None) prompt_->answer(antwort);
    return sv.cmbUmbenennen_Click();
  }

  const QStringList kAnfang{"1:1=1", "1:2=Rohre", "1:3=Pumpen", "2:1=Fremd"};
  QString a0_, a45_;
};

TEST_F(SeitenTest, TheListShowsTheFoldersNamedPagesByName) {
  SeitenVerwaltung sv(*bv_);
  EXPECT_EQ(sv.eintraege(), (QStringList{"1  1", "3  Pumpen", "2  Rohre"}));
  sv.auswahl = 1;
  ASSERT_TRUE(sv.cmbOk_Click());
  EXPECT_EQ(bv_->s1, 2);
  EXPECT_EQ(bv_->model().pageText, "Pumpen");
}

TEST_F(SeitenTest, ANewPageNameIsWrittenAndShownAndAnOldOneOverwrittenOnlyAfterTheQuestion) {
  SeitenVerwaltung sv(*bv_);
  ASSERT_TRUE(neueSeite(sv, " 4 ", " Ventile \"DN 50\" [alt]/neu "));
  EXPECT_EQ(seiten(), kAnfang + QStringList{"1:4=Ventile \"DN 50\" [alt]/neu"});
  EXPECT_EQ(sv.lisSeiten[size_t(sv.auswahl)].seitenNr, 4);
  bv_->GeheZuSeite(3, 0, "000");
  EXPECT_EQ(bv_->model().pageText, "Ventile \"DN 50\" [alt]/neu");

  // Page 2 has a name: No keeps it, Yes overwrites it (one row still).
  QByteArray hash = dateiHash();
  EXPECT_FALSE(neueSeite(sv, "2", "Kabel", nullptr, Answer::No));
  EXPECT_TRUE(gezeigt(360)) << prompt_->asked.join("\n").toStdString();
  EXPECT_EQ(dateiHash(), hash);
  ASSERT_TRUE(neueSeite(sv, "2", "Kabel", nullptr, Answer::Yes));
  EXPECT_EQ(seiten(), (QStringList{"1:1=1", "1:2=Kabel", "1:3=Pumpen", "2:1=Fremd", "1:4=Ventile \"DN 50\" [alt]/neu"}));

  // A name another page of the folder has: asked; the other folder's names don't count.
  hash = dateiHash();
  prompt_->asked.clear();
  EXPECT_FALSE(neueSeite(sv, "7", "PUMPEN", nullptr, Answer::No));
  EXPECT_TRUE(gezeigt(358));
  EXPECT_EQ(dateiHash(), hash);
  ASSERT_TRUE(neueSeite(sv, "7", "PUMPEN", nullptr, Answer::Yes));
  prompt_->asked.clear();
  ASSERT_TRUE(neueSeite(sv, "8", "Fremd"));
  EXPECT_EQ(prompt_->asked, QStringList{"dialog|frmSeiteNeu"});
  EXPECT_EQ(seiten().mid(5), (QStringList{"1:7=PUMPEN", "1:8=Fremd"}));
}

TEST_F(SeitenTest, BadNumbersAndNamesAreRefusedAndNothingChanges) {
  SeitenVerwaltung sv(*bv_);
  const QByteArray hash = dateiHash();
  const struct {
    QString nr, name;
    int meldung;
  } faelle[] = {
      {"", "Name", 51},         {"5", "  ", 52},         {"abc", "Name", 968},
      {"0", "Name", 968},       {"-3", "Name", 968},     {"501", "Name", 236},
      {"99999999999", "N", 968}, {"5", "Peter's", 919},  {"5", QString(300, 'x'), 983},
  };
  for (const auto& f : faelle) {
    SCOPED_TRACE((f.nr + "/" + f.name.left(10)).toStdString());
    prompt_->asked.clear();
    QString name;
    EXPECT_FALSE(neueSeite(sv, f.nr, f.name, &name));
    EXPECT_TRUE(gezeigt(f.meldung)) << prompt_->asked.join("\n").toStdString();
    EXPECT_EQ(name, f.name);
    EXPECT_EQ(dateiHash(), hash);
  }
  EXPECT_FALSE(umbenennen(sv, 2, "Rohr'e"));
  EXPECT_TRUE(gezeigt(919));
  EXPECT_FALSE(umbenennen(sv, 2, ""));
  EXPECT_TRUE(gezeigt(52));
  EXPECT_EQ(dateiHash(), hash);
  EXPECT_EQ(seiten(), kAnfang);
}

TEST_F(SeitenTest, RenameAsksOnlyAboutANameOfAnotherPage) {
  SeitenVerwaltung sv(*bv_);
  ASSERT_TRUE(umbenennen(sv, 2, "ROHRE"));  // its own name in other letters
  EXPECT_EQ(prompt_->asked, QStringList{"dialog|frmSeiteUmbenennen"});
  EXPECT_FALSE(umbenennen(sv, 2, "pumpen", Answer::No));
  EXPECT_TRUE(gezeigt(358));
  EXPECT_EQ(seiten(), (QStringList{"1:1=1", "1:2=ROHRE", "1:3=Pumpen", "2:1=Fremd"}));
}

TEST_F(SeitenTest, DeletingNamesLeavesTheBlocksAndThePagesShowTheirNumbers) {
  const QStringList bloeckeVorher = bloecke();
  bv_->GeheZuSeite(2, 0, "000");
  ASSERT_EQ(bv_->model().pageText, "Pumpen");
  SeitenVerwaltung sv(*bv_);
  sv.auswahl = 1;  // "3  Pumpen"
  prompt_->answer(Answer::No);
  EXPECT_FALSE(sv.cmbLoeschen_Click());
  EXPECT_EQ(seiten(), kAnfang);
  prompt_->answer(Answer::Yes);
  ASSERT_TRUE(sv.cmbLoeschen_Click());
  EXPECT_TRUE(gezeigt(988));
  EXPECT_EQ(seiten(), (QStringList{"1:1=1", "1:2=Rohre", "2:1=Fremd"}));
  EXPECT_EQ(bloecke(), bloeckeVorher);
  EXPECT_EQ(bv_->model().pageText, "3");
  EXPECT_EQ(bv_->model().bilder[5].code, a45_);  // slot 45 of 20 a page: page 3, picture 5
  EXPECT_TRUE(bv_->model().bilder[5].occupied);
  EXPECT_EQ(sv.eintraege(), (QStringList{"1  1", "2  Rohre"}));

  // All names of the folder; the other folder keeps its own.
  prompt_->answer(Answer::Yes);
  ASSERT_TRUE(sv.cmbAlleLoeschen_Click());
  EXPECT_TRUE(gezeigt(989));
  EXPECT_EQ(seiten(), QStringList{"2:1=Fremd"});
  EXPECT_EQ(bloecke(), bloeckeVorher);
  EXPECT_TRUE(sv.eintraege().isEmpty());
  EXPECT_TRUE(bv_->arySeiten.empty());
  // Nothing selected: a message, nothing else.
  prompt_->asked.clear();
  EXPECT_FALSE(sv.cmbLoeschen_Click());
  EXPECT_EQ(prompt_->asked.size(), 1);
}

TEST_F(SeitenTest, TheFormsKeepARefusedNameForCorrection) {
  SeiteNeu logik(*bv_);
  logik.txtSeitenNr = "5";
  FrmSeiteNeu frm(logik);
  frm.show();
  frm.txtSeitenname()->setText("Pe'ter");
  frm.findChild<QPushButton*>("cmbOk")->click();
  EXPECT_TRUE(frm.isVisible());
  EXPECT_EQ(frm.txtSeitenname()->text(), "Pe'ter");
  frm.txtSeitenname()->setText("Peter");
  frm.findChild<QPushButton*>("cmbOk")->click();
  EXPECT_FALSE(frm.isVisible());
  EXPECT_EQ(seiten(), kAnfang + QStringList{"1:5=Peter"});
  SeitenVerwaltung sv(*bv_);
  FrmSeitenverwaltung liste(sv);
  EXPECT_EQ(liste.findChildren<QPushButton*>().size(), 6);
}

}  // namespace kolvane

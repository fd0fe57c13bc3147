#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QCoreApplication>

#include "bibliothekspruefung.h"
#include "connection.h"
#include "einfuegentest.h"
#include "labels.h"
#include "prefix.h"
#include "verschiebejournal.h"
#include "verschieben.h"

namespace kolvane {

// A library of folder 000 whose blocks carry every kind of file: slide library
// and drawing of view 0, a further view (slide and drawing), variant lists of
// views 0 and 1, a variant drawing "ABC<last four of the code>1.dwg" with its
// row, and a mark on the block's view 1.
class VerschiebenTest : public EinfuegenTest {
 protected:
  void SetUp() override {
    EinfuegenTest::SetUp();
    QByteArray zusatz;
    for (int nr = 990; nr <= 996; ++nr)
      if (labels().fctBeschriftMsgboxZuordnen(nr).isEmpty())
        zusatz += "\n" + QByteArray::number(nr) + "=Meldung " + QByteArray::number(nr);
    if (!zusatz.isEmpty()) {
      QFile f(labels().strMsgboxDatei);
      ASSERT_TRUE(f.open(QIODevice::Append));
      f.write(zusatz + "\n");
      f.close();
      labels().fctBeschriftungsFileZuordnenIni();
    }
  }

  QString code(int slot) {
    QStringList prefix;
    EXPECT_TRUE(fctPrefixEinlesen(slot, prefix));
    return fctBlockCode("000", slot, prefix);
  }

  void ausfuehren(const QString& sql, const QVariantList& werte = {}) {
    Connection conn;
    ASSERT_TRUE(conn.open(db_));
    ASSERT_TRUE(conn.execute(sql, werte)) << conn.error().toStdString();
  }

  QString vollerBlock(int slot) {
    const QString c = blockAnlegen(slot, "B" + QString::number(slot));
    spalteSetzen(c, "BlkName1", "B" + QString::number(slot) + "-1");
    spalteSetzen(c, "M0", "Name " + QString::number(slot));
    writeFile(bib_ + "/000/" + c + "1.slb", "view 1 of " + c.toUtf8());
    writeFile(zeichnung(c, 1), "drawing 1 of " + c.toUtf8());
    writeFile(bib_ + "/000/" + c + "0.dat", "list 0 of " + c.toUtf8());
    writeFile(bib_ + "/000/" + c + "1.dat", "list 1 of " + c.toUtf8());
    const QString varia = "ABC" + c.right(4) + "1.dwg";
    writeFile(bib_ + "/000/Block/Varia/" + varia, "variant of " + c.toUtf8());
    ausfuehren("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) "
               "SELECT 'V" + QString::number(slot) + "', Nr, ? FROM tblBlockInfo WHERE Block = ?",
               {varia, c});
    markieren(c, zeichnung(c, 1), 1, 2, "B" + QString::number(slot));
    return c;
  }

  // The whole library as lines: every file (path and a hash of its content)
  // and every row of blocks, variants, marks and pages.
  QStringList bestand() {
    QStringList out;
    QDirIterator it(bib_, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
      const QString f = it.next();
      const QString rel = QDir(bib_).relativeFilePath(f);
      if (rel.startsWith("dbKolvane")) continue;
      out << "datei " + rel + " " +
                 QCryptographicHash::hash(readFile(f), QCryptographicHash::Md5).toHex();
    }
    Connection conn;
    EXPECT_TRUE(conn.open(db_));
    QSqlQuery q(conn.database());
    for (const QString& sql :
         {QString("SELECT 'block', Nr, Block, SlideLib, OrdnerID, BlkName0, BlkName1, M0, AX0 FROM tblBlockInfo"),
          QString("SELECT 'variante', Nr, BlockName, BlockID, BlockDateiName FROM tblVariationBloecke"),
          QString("SELECT 'marke', Nr, BlockName, BlockNr, SpeicherOrtSlide, SpeicherOrtDWG, MarkierteAnsicht, "
                  "NummerEinfuegepkt FROM tblMarkierteBloecke"),
          QString("SELECT 'seite', Nr, SeitenNr, SeitenName, NrTblOrdner FROM tblSeiten")}) {
      EXPECT_TRUE(q.exec(sql)) << sql.toStdString();
      while (q.next()) {
        QStringList z;
        for (int i = 0; i < q.record().count(); ++i) z << q.value(i).toString();
        out << z.join("|");
      }
    }
    out.sort();
    return out;
  }

  // The state expected after blocks moved: their codes (and the last four
  // characters in variant names) renamed everywhere; contents unchanged.
  QStringList umbenannt(QStringList zeilen, const QList<QPair<int, int>>& wege) {
    for (QString& z : zeilen) {
      // Hashes of contents don't name codes; only the part before them changes.
      const bool datei = z.startsWith("datei ");
      const qsizetype hash = datei ? z.lastIndexOf(' ') : z.size();
      QString kopf = z.left(hash);
      for (int i = 0; i < wege.size(); ++i) {
        const QString alt = code(wege[i].first);
        kopf.replace(alt, "@" + QString::number(i) + "@");
        kopf.replace("ABC" + alt.right(4), "ABC@v" + QString::number(i) + "@");
      }
      for (int i = 0; i < wege.size(); ++i) {
        const QString neu = code(wege[i].second);
        kopf.replace("@" + QString::number(i) + "@", neu);
        kopf.replace("ABC@v" + QString::number(i) + "@", "ABC" + neu.right(4));
      }
      z = kopf + z.mid(hash);
    }
    zeilen.sort();
    return zeilen;
  }

  // The library check finds nothing.
  void konsistent() {
    QString fehler;
    const std::vector<Befund> befunde = fctBibliothekPruefen(bib_, &fehler);
    EXPECT_TRUE(fehler.isEmpty()) << fehler.toStdString();
    for (const Befund& b : befunde) ADD_FAILURE() << b.text.toStdString();
  }

  QString text(int nr) const { return labels().fctBeschriftMsgboxZuordnen(nr); }

  // The test program again as the child (see verschieben_kind.cpp) doing
  // `art` on this test's library, killed at the step `halt`.
  void kindToeten(const QString& art, const QString& halt) {
    QProcess kind;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("KOLVANE_HALTEPUNKT", halt);
    env.insert("KOLVANE_SCHIEBEN_KIND", tmp_.path());
    env.insert("KOLVANE_SCHIEBEN_ART", art);
    env.insert("QT_QPA_PLATFORM", "offscreen");
    kind.setProcessEnvironment(env);
    kind.setProcessChannelMode(QProcess::MergedChannels);
    kind.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=VerschiebenKind.*"});
    ASSERT_TRUE(kind.waitForFinished(60000));
    ASSERT_EQ(kind.exitStatus(), QProcess::CrashExit) << kind.readAll().toStdString();
  }
};

TEST_F(VerschiebenTest, FreierAktiverPlatzAendertNichts) {
  for (int s : {3, 4, 5}) vollerBlock(s);
  oeffnen(2);
  const QStringList vorher = bestand();
  BlockVerschieben v(*bv_);
  EXPECT_EQ(v.subBloeckeUmEinsVerschieben(), BlockVerschieben::Ergebnis::Nichts);
  EXPECT_EQ(v.verschoben(), 0);
  EXPECT_EQ(bestand(), vorher);
  EXPECT_TRUE(prompt_->asked.isEmpty()) << prompt_->asked.join("\n").toStdString();
}

// Blocks in 3, 4, 5 and 7, shifted from 3: 3, 4, 5 go to 4, 5, 6 with every
// file, variant, row and mark; 7 stays; 3 is free.
TEST_F(VerschiebenTest, BloeckeDreiVierFuenfRueckenAufVierFuenfSechs) {
  for (int s : {3, 4, 5, 7}) vollerBlock(s);
  oeffnen(3);
  const QStringList vorher = bestand();
  BlockVerschieben v(*bv_);
  std::vector<std::pair<int, int>> gemeldet;
  v.fortschritt = [&](int fertig, int gesamt) {
    gemeldet.emplace_back(fertig, gesamt);
    return true;
  };
  ASSERT_EQ(v.subBloeckeUmEinsVerschieben(), BlockVerschieben::Ergebnis::Fertig);
  EXPECT_EQ(v.verschoben(), 3);
  EXPECT_EQ(gemeldet, (std::vector<std::pair<int, int>>{{0, 3}, {1, 3}, {2, 3}, {3, 3}}));
  EXPECT_EQ(bestand(), umbenannt(vorher, {{5, 6}, {4, 5}, {3, 4}}));
  konsistent();
  EXPECT_FALSE(QFileInfo::exists(fctVerschiebeJournalPfad(bib_)));

  // The variant's file name keeps "ABC" and the view digit "1".
  const QString c6 = code(6);
  EXPECT_TRUE(QFileInfo::exists(bib_ + "/000/Block/Varia/ABC" + c6.right(4) + "1.dwg"));
  Connection conn;
  ASSERT_TRUE(conn.open(db_));
  EXPECT_EQ(conn.scalar("SELECT BlockDateiName FROM tblVariationBloecke WHERE BlockName = 'V5'").toString(),
            "ABC" + c6.right(4) + "1.dwg");
  EXPECT_EQ(conn.scalar("SELECT SlideLib FROM tblBlockInfo WHERE BlkName0 = 'B5'").toString(), "000\\" + c6 + ".slb");
  EXPECT_EQ(conn.scalar("SELECT SpeicherOrtDWG FROM tblMarkierteBloecke WHERE BlockName = 'B5'").toString(),
            zeichnung(c6, 1));

  // The browser shows the result: slot 3 free, slot 4 the block from 3.
  EXPECT_FALSE(bv_->model().bilder[3].occupied);
  EXPECT_TRUE(bv_->model().bilder[4].occupied);
  EXPECT_EQ(bv_->aryTBloecke[4].BlkName0, "B3");
}

// A block on the last slot of a page goes to the first slot of the next; a
// cut block waiting in the clipboard ("ZwischenA") on the way moves along.
TEST_F(VerschiebenTest, LetzterPlatzDerSeiteUndZwischenspeicher) {
  const int letzter = 19;  // of a page of 20
  vollerBlock(letzter - 1);
  const QString cut = vollerBlock(letzter);
  ausfuehren("UPDATE tblBlockInfo SET Block = 'ZwischenA' WHERE Block = ?", {cut});
  vollerBlock(21);
  oeffnen(letzter - 1);
  ASSERT_EQ(bv_->intBilder, 20);
  const QStringList vorher = bestand();
  BlockVerschieben v(*bv_);
  ASSERT_EQ(v.subBloeckeUmEinsVerschieben(), BlockVerschieben::Ergebnis::Fertig);
  EXPECT_EQ(v.verschoben(), 2);
  EXPECT_EQ(bestand(), umbenannt(vorher, {{letzter, letzter + 1}, {letzter - 1, letzter}}));
  konsistent();
  Connection conn;
  ASSERT_TRUE(conn.open(db_));
  EXPECT_EQ(conn.scalar("SELECT SlideLib FROM tblBlockInfo WHERE Block = 'ZwischenA'").toString(),
            "000\\" + code(20) + ".slb");
  EXPECT_EQ(conn.scalar("SELECT BlkName0 FROM tblBlockInfo WHERE Block = ?", {code(letzter)}).toString(), "B18");
}

// "Leere Seite einfügen" on the second page: its blocks move a page on, the
// page names from there on follow them, the first page stays as it was.
TEST_F(VerschiebenTest, LeereSeiteUndSeitennamen) {
  for (int s : {0, 1, 20, 21, 39, 45}) vollerBlock(s);
  ausfuehren("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (2, 'Rohre', 1), (3, 'Pumpen', 1)");
  ausfuehren("INSERT INTO tblOrdner (OrdnerNr, Ordnername, NrTblDefMenue) VALUES ('001', 'Zweiter', 1)");
  QDir().mkpath(bib_ + "/001");
  ausfuehren("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (2, 'Fremd', 2)");
  oeffnen(0);
  bv_->GeheZuSeite(1, 3, "000");
  ASSERT_EQ(bv_->s1, 1);
  const QStringList vorher = bestand();
  BlockVerschieben v(*bv_);
  ASSERT_EQ(v.fctEineSeiteNachHinten(), BlockVerschieben::Ergebnis::Fertig);
  EXPECT_EQ(v.verschoben(), 4);
  QStringList erwartet = umbenannt(vorher, {{45, 65}, {39, 59}, {21, 41}, {20, 40}});
  erwartet.replaceInStrings(QRegularExpression("^seite\\|(\\d+)\\|2\\|Rohre\\|1$"), "seite|\\1|3|Rohre|1");
  erwartet.replaceInStrings(QRegularExpression("^seite\\|(\\d+)\\|3\\|Pumpen\\|1$"), "seite|\\1|4|Pumpen|1");
  erwartet.sort();
  EXPECT_EQ(bestand(), erwartet);
  konsistent();
  for (const SlotModel& s : bv_->model().bilder) EXPECT_FALSE(s.occupied) << s.code.toStdString();

  // A page with no block from it on: nothing moves, the names still follow.
  bv_->GeheZuSeite(10, 0, "000");  // page 11
  BlockVerschieben leer(*bv_);
  ausfuehren("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (12, 'Hinten', 1)");
  EXPECT_EQ(leer.fctEineSeiteNachHinten(), BlockVerschieben::Ergebnis::Fertig);
  EXPECT_EQ(leer.verschoben(), 0);
  Connection conn;
  ASSERT_TRUE(conn.open(db_));
  EXPECT_EQ(conn.scalar("SELECT SeitenNr FROM tblSeiten WHERE SeitenName = 'Hinten'").toInt(), 13);
  EXPECT_EQ(conn.scalar("SELECT SeitenNr FROM tblSeiten WHERE SeitenName = 'Pumpen'").toInt(), 4);
}

// Cancel between blocks: the later blocks stand on their new slots, the
// earlier ones on their old, one slot between them is free, and the library
// is whole.
TEST_F(VerschiebenTest, AbbruchZwischenBloecken) {
  for (int s = 0; s < 10; ++s) blockAnlegen(s, "B" + QString::number(s));
  oeffnen(0);
  BlockVerschieben v(*bv_);
  v.fortschritt = [](int fertig, int) { return fertig < 4; };
  EXPECT_EQ(v.subBloeckeUmEinsVerschieben(), BlockVerschieben::Ergebnis::Abgebrochen);
  EXPECT_EQ(v.verschoben(), 4);
  konsistent();
  Connection conn;
  ASSERT_TRUE(conn.open(db_));
  for (int s = 0; s < 10; ++s) {
    const int jetzt = s < 6 ? s : s + 1;
    EXPECT_EQ(conn.scalar("SELECT BlkName0 FROM tblBlockInfo WHERE Block = ?", {code(jetzt)}).toString(),
              "B" + QString::number(s));
  }
  EXPECT_FALSE(conn.scalar("SELECT Nr FROM tblBlockInfo WHERE Block = ?", {code(6)}).isValid());
  EXPECT_TRUE(gezeigt(993));
  EXPECT_FALSE(QFileInfo::exists(fctVerschiebeJournalPfad(bib_)));
}

// The journal: written whole, read back; a journal left with half the files
// moved is completed at the next opening; an unreadable one is dropped.
TEST_F(VerschiebenTest, JournalAufraeumen) {
  const QString c3 = vollerBlock(3);
  const QString c4 = code(4);
  VerschiebeJournal j;
  j.nr = 1;
  j.codeAlt = c3;
  j.codeNeu = c4;
  j.blockNeu = c4;
  j.slideLibNeu = "000\\" + c4 + ".slb";
  for (const char* rest : {".slb", "1.slb", "0.dat", "1.dat"})
    j.dateien << qMakePair("000/" + c3 + rest, "000/" + c4 + rest);
  for (const char* v : {"0.dwg", "1.dwg"}) j.dateien << qMakePair("000/Block/" + c3 + v, "000/Block/" + c4 + v);
  j.dateien << qMakePair("000/Block/Varia/ABC" + c3.right(4) + "1.dwg", "000/Block/Varia/ABC" + c4.right(4) + "1.dwg");
  j.varianten << VerschiebeJournal::Variante{1, "ABC" + c3.right(4) + "1.dwg", "ABC" + c4.right(4) + "1.dwg"};
  VerschiebeJournal zurueck;
  ASSERT_TRUE(fctVerschiebeJournalAusText(fctVerschiebeJournalAlsText(j), zurueck));
  EXPECT_EQ(fctVerschiebeJournalAlsText(zurueck), fctVerschiebeJournalAlsText(j));
  // A journal cut short is no journal.
  const QByteArray alsText = fctVerschiebeJournalAlsText(j);
  EXPECT_FALSE(fctVerschiebeJournalAusText(alsText.left(alsText.size() - 7), zurueck));

  const QStringList vorher = bestand();
  ASSERT_TRUE(fctVerschiebeJournalSchreiben(bib_, j));
  // Killed after the slide and the drawings moved.
  for (int i : {0, 1, 4, 5}) QFile::rename(bib_ + "/" + j.dateien[i].first, bib_ + "/" + j.dateien[i].second);
  Connection conn;
  ASSERT_TRUE(conn.open(db_));
  const VerschiebungAufgeraeumt r = fctVerschiebungAufraeumen(conn, bib_);
  EXPECT_EQ(r.ergebnis, VerschiebungAufgeraeumt::Ergebnis::Abgeschlossen);
  EXPECT_TRUE(r.meldung.contains(text(990))) << r.meldung.toStdString();
  EXPECT_TRUE(r.meldung.contains(c3) && r.meldung.contains(c4));
  conn.close();
  EXPECT_EQ(bestand(), umbenannt(vorher, {{3, 4}}));
  konsistent();
  ASSERT_TRUE(conn.open(db_));
  EXPECT_EQ(fctVerschiebungAufraeumen(conn, bib_).ergebnis, VerschiebungAufgeraeumt::Ergebnis::Nichts);
  writeFile(fctVerschiebeJournalPfad(bib_), "Nr=1\nCodeAlt=x\n");
  EXPECT_EQ(fctVerschiebungAufraeumen(conn, bib_).ergebnis, VerschiebungAufgeraeumt::Ergebnis::Verworfen);
  EXPECT_FALSE(QFileInfo::exists(fctVerschiebeJournalPfad(bib_)));
}

// --- crash safety: the shift of 50 blocks killed at every step ---

struct Absturz {
  const char* art;  // "eins" or "seite"
  QString halt;
};

void PrintTo(const Absturz& a, std::ostream* os) { *os << a.art << " " << a.halt.toStdString(); }

class VerschiebenAbsturz : public VerschiebenTest, public ::testing::WithParamInterface<Absturz> {};

// 50 blocks on slots 0 to 49 (every fifth with all kinds of file), shifted by
// one slot (or a page) from slot 0 by a child process that is killed at the
// step named; then the library is opened as the program opens it.
TEST_P(VerschiebenAbsturz, BibliothekBleibtGanz) {
  const Absturz a = GetParam();
  constexpr int kAnzahl = 50;
  for (int s = 0; s < kAnzahl; ++s) {
    if (s % 5 == 0)
      vollerBlock(s);
    else
      blockAnlegen(s, "B" + QString::number(s));
  }
  ausfuehren("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (2, 'Zwei', 1)");
  const int abstand = QString(a.art) == "seite" ? 20 : 1;

  kindToeten(a.art, a.halt);
  if (HasFatalFailure()) return;

  // The opening of the library.
  {
    Connection conn;
    ASSERT_TRUE(conn.open(db_));
    const VerschiebungAufgeraeumt r = fctVerschiebungAufraeumen(conn, bib_);
    const bool journalDa = !a.halt.startsWith("schieben-7") && !a.halt.startsWith("schieben-8");
    EXPECT_EQ(r.ergebnis, journalDa ? VerschiebungAufgeraeumt::Ergebnis::Abgeschlossen
                                    : VerschiebungAufgeraeumt::Ergebnis::Nichts);
  }
  EXPECT_FALSE(QFileInfo::exists(fctVerschiebeJournalPfad(bib_)));
  konsistent();

  // Every block stands on its old slot or moved on, in its order; the blocks
  // moved are the last ones, and no slot holds two.
  Connection conn;
  ASSERT_TRUE(conn.open(db_));
  int bewegt = 0;
  for (int s = kAnzahl - 1; s >= 0; --s) {
    const QString name = "B" + QString::number(s);
    const QString jetzt = conn.scalar("SELECT Block FROM tblBlockInfo WHERE BlkName0 = ?", {name}).toString();
    if (jetzt == code(s + abstand)) {
      EXPECT_EQ(bewegt, kAnzahl - 1 - s) << name.toStdString() << " moved after an earlier one stayed";
      ++bewegt;
    } else {
      EXPECT_EQ(jetzt, code(s)) << name.toStdString();
    }
  }
  EXPECT_EQ(conn.scalar("SELECT COUNT(*) FROM tblBlockInfo").toInt(), kAnzahl);
  EXPECT_EQ(conn.scalar("SELECT COUNT(*) FROM tblMarkierteBloecke").toInt(), kAnzahl / 5);
  EXPECT_EQ(conn.scalar("SELECT COUNT(*) FROM tblMarkierteBloecke m WHERE NOT EXISTS (SELECT 1 FROM "
                        "tblBlockInfo b WHERE b.Block = m.BlockNr AND b.BlkName0 = m.BlockName)")
                .toInt(),
            0);
  const int lfd = a.halt.count('-') == 2 ? a.halt.section('-', 2).toInt() : 1;
  const int schritt = a.halt.section('-', 1, 1).toInt();
  // Killed after the journal of block lfd was written: that block was completed.
  EXPECT_EQ(bewegt, schritt == 8 ? kAnzahl : lfd) << a.halt.toStdString();
  if (schritt == 8) {  // the page names had not followed yet
    EXPECT_EQ(conn.scalar("SELECT SeitenNr FROM tblSeiten WHERE SeitenName = 'Zwei'").toInt(), 2);
  }
}

// A folder with blocks, pages and variants deleted by a child killed between
// the rows' commit and the move of its directory, or after it: the rows are
// gone together, every file of the folder is still on disk, and the check
// finds the library whole.
class OrdnerAbsturz : public VerschiebenTest, public ::testing::WithParamInterface<const char*> {};

TEST_P(OrdnerAbsturz, OrdnerLoeschenVerliertNichts) {
  for (int s = 0; s < 3; ++s) vollerBlock(s);
  ausfuehren("INSERT INTO tblOrdner (OrdnerNr, Ordnername, OrdnerRechte, NrTblDefMenue) VALUES ('001', 'Zubehör', 'Alle', 1)");
  QDir().mkpath(bib_ + "/001/Block");
  QStringList prefix;
  ASSERT_TRUE(fctPrefixEinlesen(5, prefix));
  QStringList dateien;
  for (int s = 0; s < 4; ++s) {
    const QString c = fctBlockCode("001", s, prefix);
    ausfuehren("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0) VALUES (?, ?, 2, ?)",
               {c, "001\\" + c + ".slb", "Z" + QString::number(s)});
    ausfuehren("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) "
               "SELECT 'ZV', Nr, 'v.dwg' FROM tblBlockInfo WHERE Block = ?", {c});
    writeFile(bib_ + "/001/" + c + ".slb", "slide library " + c.toUtf8());
    writeFile(bib_ + "/001/Block/" + c + "0.dwg", "drawing " + c.toUtf8());
    dateien << c + ".slb" << "Block/" + c + "0.dwg";
  }
  ausfuehren("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (1, 'Eins', 2)");

  kindToeten("ordner", GetParam());
  if (HasFatalFailure()) return;

  Connection conn;
  ASSERT_TRUE(conn.open(db_));
  EXPECT_EQ(conn.scalar("SELECT COUNT(*) FROM tblOrdner WHERE Nr = 2").toInt(), 0);
  EXPECT_EQ(conn.scalar("SELECT COUNT(*) FROM tblBlockInfo WHERE OrdnerID = 2").toInt(), 0);
  EXPECT_EQ(conn.scalar("SELECT COUNT(*) FROM tblSeiten WHERE NrTblOrdner = 2").toInt(), 0);
  EXPECT_EQ(conn.scalar("SELECT COUNT(*) FROM tblVariationBloecke WHERE BlockName = 'ZV'").toInt(), 0);
  EXPECT_EQ(conn.scalar("SELECT COUNT(*) FROM tblBlockInfo WHERE OrdnerID = 1").toInt(), 3);
  conn.close();
  // Killed before the move the directory stands as it was, after it aside.
  const QString ort = QString(GetParam()) == "ordner-zeilen-geloescht" ? "/001/" : "/001geloescht/";
  for (const QString& d : dateien) EXPECT_TRUE(QFileInfo::exists(bib_ + ort + d)) << (ort + d).toStdString();
  konsistent();
}

INSTANTIATE_TEST_SUITE_P(BeideHaltepunkte, OrdnerAbsturz,
                         ::testing::Values("ordner-zeilen-geloescht", "ordner-verzeichnis-verschoben"));

std::vector<Absturz> absturzFaelle() {
  std::vector<Absturz> out;
  for (int schritt = 1; schritt <= 7; ++schritt) {
    const QString n = "schieben-" + QString::number(schritt);
    out.push_back({"eins", n});
    out.push_back({"eins", n + "-25"});
    out.push_back({"eins", n + "-50"});
  }
  for (int schritt : {1, 3, 5, 6}) out.push_back({"seite", "schieben-" + QString::number(schritt) + "-30"});
  out.push_back({"seite", "schieben-8"});
  return out;
}

INSTANTIATE_TEST_SUITE_P(JederHaltepunkt, VerschiebenAbsturz, ::testing::ValuesIn(absturzFaelle()));

}  // namespace kolvane

#include <QApplication>
#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSet>
#include <QSqlQuery>
#include <QSqlRecord>
#include <algorithm>

#include "connection.h"
#include "einfuegentest.h"
#include "frmordner.h"
#include "labels.h"
#include "ordner.h"
#include "prefix.h"

namespace kolvane {

namespace {

// One row of a table, with its values by column and as one line.
struct Zeile {
  QString tabelle;
  QVariantMap werte;
  QString text;
  bool operator==(const Zeile& o) const { return text == o.text; }
};

void PrintTo(const Zeile& z, std::ostream* os) { *os << z.text.toStdString(); }

}  // namespace

// A library with two folders full of content: folder 000 ("Standard-Ordner",
// Nr 1) and folder 001 ("Armaturen", Nr 2), each with blocks and their files,
// variant rows, marks and page names.
class OrdnerTest : public EinfuegenTest {
 protected:
  void SetUp() override {
    EinfuegenTest::SetUp();
    meldungenErgaenzen();
    a0_ = blockAnlegen(0, QStringLiteral("A0"));
    a1_ = blockAnlegen(21, QStringLiteral("A21"));
    armaturen_ = ordnerAnlegen(QStringLiteral("001"), QStringLiteral("Armaturen"));
    b0_ = blockIn(QStringLiteral("001"), armaturen_, 0, QStringLiteral("B0"));
    b1_ = blockIn(QStringLiteral("001"), armaturen_, 45, QStringLiteral("B45"));
    variante(a0_, QStringLiteral("A0 Variante"));
    variante(b0_, QStringLiteral("B0 Variante 1"));
    variante(b0_, QStringLiteral("B0 Variante 2"));
    markieren(a1_, zeichnung(a1_, 0), 0, 0);
    markieren(b1_, bib_ + "/001/Block/" + b1_ + "0.dwg", 0, 0);
    seite(1, 2, QStringLiteral("Rohre"));
    seite(armaturen_, 1, QStringLiteral("Ventile"));
    seite(armaturen_, 3, QStringLiteral("Pumpen"));
  }

  // The texts of the dialogs' own messages, for a data directory that lacks them.
  void meldungenErgaenzen() {
    QByteArray zusatz;
    for (int nr = 980; nr <= 989; ++nr)
      if (labels().fctBeschriftMsgboxZuordnen(nr).isEmpty()) zusatz += "\n" + QByteArray::number(nr) + "=Meldung " + QByteArray::number(nr);
    if (zusatz.isEmpty()) return;
    QFile f(labels().strMsgboxDatei);
    ASSERT_TRUE(f.open(QIODevice::Append));
    f.write(zusatz + "\n");
    f.close();
    labels().fctBeschriftungsFileZuordnenIni();
  }

  qint64 ordnerAnlegen(const QString& ordnerNr, const QString& name) {
    Connection conn;
    EXPECT_TRUE(conn.open(db_));
    EXPECT_TRUE(conn.execute("INSERT INTO tblOrdner (OrdnerNr, Ordnername, OrdnerRechte, NrTblDefMenue) VALUES (?, ?, 'Alle', 1)",
                             {ordnerNr, name}));
    QDir().mkpath(bib_ + "/" + ordnerNr + "/Block");
    return conn.lastInsertId();
  }

  QString blockIn(const QString& ordnerNr, qint64 ordnerId, int slot, const QString& blkName) {
    QStringList prefix;
    EXPECT_TRUE(fctPrefixEinlesen(slot, prefix));
    const QString code = fctBlockCode(ordnerNr, slot, prefix);
    ausfuehren("INSERT INTO tblBlockInfo (Block, SlideLib, OrdnerID, BlkName0, M0) VALUES (?, ?, ?, ?, ?)",
               {code, ordnerNr + "\\" + code + ".slb", ordnerId, blkName, "Block " + code});
    writeFile(bib_ + "/" + ordnerNr + "/" + code + ".slb", "slide library");
    writeFile(bib_ + "/" + ordnerNr + "/Block/" + code + "0.dwg", "drawing " + code.toUtf8());
    return code;
  }

  void variante(const QString& code, const QString& name) {
    ausfuehren("INSERT INTO tblVariationBloecke (BlockName, BlockID, BlockDateiName) "
               "SELECT ?, Nr, ? FROM tblBlockInfo WHERE Block = ?",
               {name, "Block/Varia/" + name + ".dwg", code});
  }

  void seite(qint64 ordnerId, int nr, const QString& name) {
    ausfuehren("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (?, ?, ?)", {nr, name, ordnerId});
  }

  void ausfuehren(const QString& sql, const QVariantList& werte = {}) {
    Connection conn;
    ASSERT_TRUE(conn.open(db_));
    ASSERT_TRUE(conn.execute(sql, werte)) << conn.error().toStdString();
  }

  QVariant wert(const QString& sql, const QVariantList& werte = {}) {
    Connection conn;
    EXPECT_TRUE(conn.open(db_));
    return conn.scalar(sql, werte);
  }

  // Every row of every table of the library.
  std::vector<Zeile> zeilen() {
    std::vector<Zeile> out;
    Connection conn;
    EXPECT_TRUE(conn.open(db_));
    for (const QString& t : QStringList{"tblOrdner", "tblBlockInfo", "tblSeiten", "tblVariationBloecke",
                                        "tblMarkierteBloecke", "tblDefMenue"}) {
      QSqlQuery q(conn.database());
      EXPECT_TRUE(q.exec("SELECT * FROM " + t + " ORDER BY Nr"));
      while (q.next()) {
        Zeile z{t, {}, t};
        const QSqlRecord r = q.record();
        for (int i = 0; i < r.count(); ++i) {
          z.werte.insert(r.fieldName(i), r.value(i));
          z.text += "|" + r.fieldName(i) + "=" + r.value(i).toString();
        }
        out.push_back(z);
      }
    }
    return out;
  }

  // The rows without those a deletion of folder nr takes along.
  std::vector<Zeile> ohneOrdner(const std::vector<Zeile>& alle, qint64 nr) {
    QSet<qint64> bloecke;
    QSet<QString> codes;
    for (const Zeile& z : alle)
      if (z.tabelle == "tblBlockInfo" && z.werte["OrdnerID"].toLongLong() == nr) {
        bloecke << z.werte["Nr"].toLongLong();
        codes << z.werte["Block"].toString();
      }
    std::vector<Zeile> out;
    for (const Zeile& z : alle) {
      const bool weg = (z.tabelle == "tblOrdner" && z.werte["Nr"].toLongLong() == nr) ||
                       (z.tabelle == "tblBlockInfo" && z.werte["OrdnerID"].toLongLong() == nr) ||
                       (z.tabelle == "tblSeiten" && z.werte["NrTblOrdner"].toLongLong() == nr) ||
                       (z.tabelle == "tblVariationBloecke" && bloecke.contains(z.werte["BlockID"].toLongLong())) ||
                       (z.tabelle == "tblMarkierteBloecke" && codes.contains(z.werte["BlockNr"].toString()));
      if (!weg) out.push_back(z);
    }
    return out;
  }

  // The folder directories and their files, relative to the library.
  QStringList dateien() const {
    QStringList out;
    QDirIterator it(bib_, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
      const QString p = QDir(bib_).relativeFilePath(it.next());
      if (p.contains('/') || it.fileInfo().isDir()) out << p;
    }
    out.sort();
    return out;
  }

  QByteArray dateiHash() const {
    QFile f(db_);
    if (!f.open(QIODevice::ReadOnly)) return {};
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256).toHex();
  }

  // Types a name into frmOrdnerNeu and presses OK; returns whether it went through.
  bool neuerOrdner(OrdnerVerwaltung& ov, const QString& name, QString* textDanach = nullptr) {
    prompt_->dialogResult("frmOrdnerNeu", 0, [&ov, name, textDanach] {
      ov.ordnerNeu()->txtOrdnername = name;
      if (ov.ordnerNeu()->cmbOk_Click()) return;
      if (textDanach) *textDanach = ov.ordnerNeu()->txtOrdnername;
    });
    return ov.cmbNeu_Click();
  }

  bool umbenennen(OrdnerVerwaltung& ov, int index, const QString& name) {
    ov.auswahl = index;
    prompt_->dialogResult("frmOrdnerUmbenennen", 0, [&ov, name] {
      ov.ordnerUmbenennen()->txtOrdnername = name;
      ov.ordnerUmbenennen()->cmbOk_Click();
    });
    return ov.cmbUmbenennen_Click();
  }

  int index(const OrdnerVerwaltung& ov, const QString& name) const {
    return int(ov.eintraege().indexOf(name));
  }

  QString a0_, a1_, b0_, b1_;
  qint64 armaturen_ = 0;
};

TEST_F(OrdnerTest, ANewFolderTakesTheFirstFreeSuffixAndADirectoryOfThatNumber) {
  oeffnen();
  QStringList prefix;
  ASSERT_TRUE(fctPrefixEinlesen(4, prefix));
  // A directory of an earlier folder lies under the next number: it is skipped, untouched.
  writeFile(bib_ + "/" + prefix[2] + "/alt.slb", "old");
  const auto vorher = zeilen();
  const QStringList dateienVorher = dateien();
  OrdnerVerwaltung ov(*bv_);
  ASSERT_EQ(ov.eintraege(), (QStringList{"Armaturen", "Standard-Ordner"}));
  // Quotes, brackets, slashes and wildcards are a name like any other.
  const QString name = QStringLiteral("Schränke \"A\" [1]/2 50% *_");
  ASSERT_TRUE(neuerOrdner(ov, "  " + name + " "));
  EXPECT_EQ(prompt_->asked, QStringList{"dialog|frmOrdnerNeu"});

  std::vector<Zeile> neue, alte;
  for (const Zeile& z : zeilen()) (std::find(vorher.begin(), vorher.end(), z) == vorher.end() ? neue : alte).push_back(z);
  EXPECT_EQ(alte, vorher);
  ASSERT_EQ(neue.size(), 1u);
  const QVariantMap& w = neue[0].werte;
  EXPECT_EQ(neue[0].tabelle, "tblOrdner");
  EXPECT_EQ(w["Ordnername"].toString(), name);
  EXPECT_EQ(w["OrdnerNr"].toString(), prefix[3]);
  EXPECT_EQ(w["NrTblDefMenue"].toInt(), 1);
  EXPECT_EQ(w["NrTblOrdnen"].toLongLong(), w["Nr"].toLongLong());
  QStringList dateienErwartet = dateienVorher;
  dateienErwartet << prefix[3];
  dateienErwartet.sort();
  EXPECT_EQ(dateien(), dateienErwartet);

  // The dialog's list and the browser's combo know it; the browser can go there.
  EXPECT_EQ(ov.auswahl, index(ov, name));
  EXPECT_TRUE(bv_->model().folderNames.contains(name));
  EXPECT_EQ(bv_->strAktuelleOrdnerNr(), "001");  // the first by name, as it was
  bv_->comboxOrdner_Click(name);
  EXPECT_EQ(bv_->strAktuelleOrdnerNr(), prefix[3]);
  EXPECT_EQ(bv_->strAktuellerOrdnerName(), name);

  // Made without the dialog (imports): the next number; an existing name is taken as it is.
  int32_t nr = 0;
  QString ordnerNr;
  bool angelegt = false;
  ASSERT_TRUE(fctOrdnerNeuAnlegen(bv_->bibliothek(), "Import", &nr, &ordnerNr, &angelegt));
  EXPECT_TRUE(angelegt);
  EXPECT_EQ(ordnerNr, prefix[4]);
  ASSERT_TRUE(fctOrdnerNeuAnlegen(bv_->bibliothek(), "armaturen", &nr, &ordnerNr, &angelegt));
  EXPECT_FALSE(angelegt);
  EXPECT_EQ(nr, armaturen_);
  EXPECT_EQ(ordnerNr, "001");
}

TEST_F(OrdnerTest, AFolderWhoseDirectoryCantBeMadeLeavesNoRow) {
  oeffnen();
  QStringList prefix;
  ASSERT_TRUE(fctPrefixEinlesen(2, prefix));
  // A file stands where the directory would go.
  writeFile(bib_ + "/" + prefix[2], "a file");
  const auto vorher = zeilen();
  OrdnerVerwaltung ov(*bv_);
  QString text;
  EXPECT_FALSE(neuerOrdner(ov, "Neu", &text));
  EXPECT_TRUE(gezeigt(984));
  EXPECT_TRUE(gezeigt(985));
  EXPECT_EQ(text, "Neu");
  EXPECT_EQ(zeilen(), vorher);
  EXPECT_EQ(ov.eintraege(), (QStringList{"Armaturen", "Standard-Ordner"}));
  EXPECT_EQ(readFile(bib_ + "/" + prefix[2]), "a file");
}

TEST_F(OrdnerTest, BadNamesAreRefusedWithAMessageAndTheLibraryStaysAsItWas) {
  oeffnen();
  const QByteArray hash = dateiHash();
  const QStringList dateienVorher = dateien();
  OrdnerVerwaltung ov(*bv_);
  const struct {
    QString name;
    int meldung;
  } faelle[] = {
      {"", 980},
      {"    ", 980},
      {"Peter's Ordner", 919},
      {"standard-ORDNER", 981},
      {" Armaturen ", 981},
      {QString(300, 'x'), 983},
      {QString(101, 'y'), 983},
  };
  for (const auto& f : faelle) {
    SCOPED_TRACE(f.name.left(20).toStdString());
    prompt_->asked.clear();
    QString text;
    EXPECT_FALSE(neuerOrdner(ov, f.name, &text));
    EXPECT_TRUE(gezeigt(f.meldung)) << prompt_->asked.join("\n").toStdString();
    EXPECT_EQ(text, f.name);  // kept for correction
    EXPECT_EQ(dateiHash(), hash);
    EXPECT_EQ(dateien(), dateienVorher);
  }
  // The same for a rename, and a folder's own name in other letters is no clash.
  prompt_->asked.clear();
  EXPECT_FALSE(umbenennen(ov, index(ov, "Armaturen"), "STANDARD-Ordner"));
  EXPECT_TRUE(gezeigt(981));
  EXPECT_FALSE(umbenennen(ov, index(ov, "Armaturen"), "Ar'maturen"));
  EXPECT_TRUE(gezeigt(919));
  EXPECT_FALSE(umbenennen(ov, index(ov, "Armaturen"), QString(300, 'z')));
  EXPECT_TRUE(gezeigt(983));
  EXPECT_EQ(dateiHash(), hash);
  EXPECT_TRUE(umbenennen(ov, index(ov, "Armaturen"), "ARMATUREN"));
  EXPECT_EQ(wert("SELECT Ordnername FROM tblOrdner WHERE Nr = ?", {armaturen_}).toString(), "ARMATUREN");
  // A hundred characters fit the column.
  EXPECT_TRUE(neuerOrdner(ov, QString(100, 'h')));
}

TEST_F(OrdnerTest, RenameChangesTheNameAloneAndTheBrowserFollows) {
  oeffnen();
  bv_->comboxOrdner_Click("Armaturen");
  bv_->combutVor_Click();
  const auto vorher = zeilen();
  const QStringList dateienVorher = dateien();
  OrdnerVerwaltung ov(*bv_);
  ASSERT_TRUE(umbenennen(ov, index(ov, "Armaturen"), " Ventile & Hähne "));
  EXPECT_EQ(ov.eintraege(), (QStringList{"Standard-Ordner", "Ventile & Hähne"}));
  auto erwartet = vorher;
  for (Zeile& z : erwartet)
    if (z.tabelle == "tblOrdner" && z.werte["Nr"].toLongLong() == armaturen_)
      z.text.replace("Ordnername=Armaturen", "Ordnername=Ventile & Hähne");
  EXPECT_EQ(zeilen(), erwartet);
  EXPECT_EQ(dateien(), dateienVorher);
  // The current folder was renamed: the browser stays on it, on its page.
  EXPECT_EQ(bv_->strAktuellerOrdnerName(), "Ventile & Hähne");
  EXPECT_EQ(bv_->model().folderName, "Ventile & Hähne");
  EXPECT_EQ(bv_->strAktuelleOrdnerNr(), "001");
  EXPECT_EQ(bv_->s1, 1);
  EXPECT_TRUE(bv_->model().folderNames.contains("Ventile & Hähne"));
  EXPECT_FALSE(bv_->model().folderNames.contains("Armaturen"));
}

TEST_F(OrdnerTest, DeletingAFolderWithBlocksTakesItsRowsInOneGoAndSetsItsFilesAside) {
  oeffnen();
  bv_->comboxOrdner_Click("Armaturen");
  const auto vorher = zeilen();
  const QStringList dateienVorher = dateien();
  // An earlier deletion left "001geloescht": this one becomes "001geloescht1".
  writeFile(bib_ + "/001geloescht/x.slb", "earlier");
  OrdnerVerwaltung ov(*bv_);

  // No: nothing happens.
  ov.auswahl = index(ov, "Armaturen");
  const QByteArray hash = dateiHash();
  prompt_->answer(Answer::No);
  EXPECT_FALSE(ov.cmbLoeschen_Click());
  EXPECT_TRUE(gezeigt(356));
  EXPECT_TRUE(gezeigt(357));
  EXPECT_EQ(dateiHash(), hash);

  prompt_->answer(Answer::Yes);
  ASSERT_TRUE(ov.cmbLoeschen_Click());
  const auto nachher = zeilen();
  EXPECT_EQ(nachher, ohneOrdner(vorher, armaturen_));
  EXPECT_EQ(vorher.size() - nachher.size(), 1u + 2u + 2u + 2u + 1u);  // folder, blocks, pages, variants, mark
  QStringList erwartet;
  for (const QString& d : dateienVorher)
    erwartet << (d.startsWith("001") ? QString(d).replace(0, 3, "001geloescht1") : d);
  erwartet << "001geloescht" << "001geloescht/x.slb";
  erwartet.sort();
  EXPECT_EQ(dateien(), erwartet);
  // The current folder is gone: the browser stands on the first one.
  EXPECT_EQ(ov.eintraege(), QStringList{"Standard-Ordner"});
  EXPECT_EQ(bv_->strAktuelleOrdnerNr(), "000");
  EXPECT_EQ(bv_->strAktuellerOrdnerName(), "Standard-Ordner");
  EXPECT_EQ(bv_->model().folderNames, QStringList{"Standard-Ordner"});
  EXPECT_EQ(bv_->model().bilder[0].code, a0_);
  EXPECT_TRUE(bv_->model().bilder[0].occupied);

  // The last folder stays.
  prompt_->asked.clear();
  ov.auswahl = 0;
  const QByteArray hash2 = dateiHash();
  EXPECT_FALSE(ov.cmbLoeschen_Click());
  EXPECT_TRUE(gezeigt(54));
  EXPECT_EQ(prompt_->asked.size(), 1);
  EXPECT_EQ(dateiHash(), hash2);
}

TEST_F(OrdnerTest, AFolderWithoutBlocksLosesItsPageNamesAndKeepsItsDirectory) {
  QStringList prefix;
  ASSERT_TRUE(fctPrefixEinlesen(3, prefix));
  const qint64 leer = ordnerAnlegen(prefix[2], "Leer");
  seite(leer, 1, "Eins");
  writeFile(bib_ + "/" + prefix[2] + "/liegt.txt", "x");
  oeffnen();
  const auto vorher = zeilen();
  const QStringList dateienVorher = dateien();
  OrdnerVerwaltung ov(*bv_);
  ov.auswahl = index(ov, "Leer");
  prompt_->answer(Answer::Yes);
  ASSERT_TRUE(ov.cmbLoeschen_Click());
  EXPECT_TRUE(gezeigt(355));
  EXPECT_FALSE(gezeigt(356));
  EXPECT_EQ(zeilen(), ohneOrdner(vorher, leer));
  EXPECT_EQ(dateien(), dateienVorher);
  // The browser was not on it and stays where it was.
  EXPECT_EQ(bv_->strAktuelleOrdnerNr(), "001");
  EXPECT_EQ(bv_->model().folderNames, (QStringList{"Armaturen", "Standard-Ordner"}));
  // Its number isn't given again while its directory lies there.
  ASSERT_TRUE(neuerOrdner(ov, "Neu"));
  EXPECT_EQ(wert("SELECT OrdnerNr FROM tblOrdner WHERE Ordnername = 'Neu'").toString(), prefix[3]);
}

TEST_F(OrdnerTest, TheOrderSwapsNeighboursOnlyWhenFoldersAreNotSortedByName) {
  ordnerAnlegen("002", "Chemie");
  oeffnen();
  // Sorted by name (the default): a message, nothing changes.
  {
    OrdnerVerwaltung ov(*bv_);
    ov.auswahl = 0;
    const QByteArray hash = dateiHash();
    EXPECT_FALSE(ov.imgAufAb_Click(true));
    EXPECT_TRUE(gezeigt(986));
    EXPECT_EQ(dateiHash(), hash);
  }
  settings_->setup.lonOrdnerSortieren = 0;
  fctBrowserOrdnerAuffrischen(*bv_);
  OrdnerVerwaltung ov(*bv_);
  ASSERT_EQ(ov.eintraege(), (QStringList{"Standard-Ordner", "Armaturen", "Chemie"}));
  ov.auswahl = 0;
  ASSERT_TRUE(ov.imgAufAb_Click(true));
  EXPECT_EQ(ov.eintraege(), (QStringList{"Armaturen", "Standard-Ordner", "Chemie"}));
  EXPECT_EQ(ov.auswahl, 1);  // the selection moves with the folder
  EXPECT_EQ(bv_->model().folderNames, ov.eintraege());
  EXPECT_EQ(wert("SELECT NrTblOrdnen FROM tblOrdner WHERE Nr = 1").toInt(), 2);
  EXPECT_EQ(wert("SELECT NrTblOrdnen FROM tblOrdner WHERE Nr = 2").toInt(), 1);
  ov.auswahl = 2;
  ASSERT_TRUE(ov.imgAufAb_Click(false));
  EXPECT_EQ(ov.eintraege(), (QStringList{"Armaturen", "Chemie", "Standard-Ordner"}));
  // At the ends nothing moves.
  const QByteArray hash = dateiHash();
  ov.auswahl = 0;
  EXPECT_FALSE(ov.imgAufAb_Click(false));
  ov.auswahl = 2;
  EXPECT_FALSE(ov.imgAufAb_Click(true));
  EXPECT_EQ(dateiHash(), hash);
  EXPECT_EQ(bv_->strAktuelleOrdnerNr(), "001");

  // Rows that share a sort value (an old library) are numbered first, so the swap shows.
  ausfuehren("UPDATE tblOrdner SET NrTblOrdnen = NULL");
  fctBrowserOrdnerAuffrischen(*bv_);
  ov.Anzeigen();
  const QStringList alt = ov.eintraege();
  ov.auswahl = 0;
  ASSERT_TRUE(ov.imgAufAb_Click(true));
  EXPECT_EQ(ov.eintraege(), (QStringList{alt[1], alt[0], alt[2]}));
}

TEST_F(OrdnerTest, TheFormsHandTheirFieldsToTheLogic) {
  oeffnen();
  OrdnerVerwaltung ov(*bv_);
  FrmOrdnerverwaltung frm(ov);
  EXPECT_EQ(frm.dlisOrdner()->count(), 2);
  // frmOrdnerNeu as the window shows it: a refused name keeps it open with the text.
  OrdnerNeu logik(*bv_);
  FrmOrdnerNeu neu(logik);
  neu.show();
  neu.txtOrdnername()->setText("Armaturen");
  neu.findChild<QPushButton*>("cmbOk")->click();
  EXPECT_TRUE(neu.isVisible());
  EXPECT_EQ(neu.txtOrdnername()->text(), "Armaturen");
  EXPECT_TRUE(gezeigt(981));
  neu.txtOrdnername()->setText("Pumpen");
  neu.findChild<QPushButton*>("cmbOk")->click();
  EXPECT_FALSE(neu.isVisible());
  EXPECT_EQ(neu.result(), QDialog::Accepted);
  ov.Anzeigen();
  frm.anzeigen();
  EXPECT_EQ(frm.dlisOrdner()->count(), 3);
  // Without import and export hooks their buttons are off.
  EXPECT_FALSE(frm.findChild<QPushButton*>("cmdOrdnerImport")->isEnabled());
  EXPECT_TRUE(frm.findChild<QPushButton*>("cmbNeu")->isEnabled());
}

}  // namespace kolvane

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "bibliothek.h"
#include "layout.h"
#include "paths.h"
#include "recordhelpers.h"
#include "storetest.h"

namespace kolvane {
namespace {

class BibliothekTest : public StoreTest {
 protected:
  // Makes the library at rel the only known and current one.
  QString einzige(const QString& rel) {
    const QString db = neueBibliothek(rel);
    settings_->aryVerzeichnisseDatenbank = {db};
    settings_->strAktuelleDatenbank = db;
    return db;
  }
  static QStringList ordnerFolge(Recordset& rs) {
    QStringList out;
    for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext()) out << rs.text("Ordnername");
    return out;
  }
};

TEST_F(BibliothekTest, OpensANewLibraryWithItsRecordSets) {
  const QString db = einzige("lib");
  Bibliothek b(*settings_);
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  EXPECT_TRUE(b.connDb.isOpen());
  EXPECT_FALSE(b.connDb.isReadOnly());
  EXPECT_EQ(b.strAktuelleOrdnerNr, "000");
  EXPECT_EQ(b.strAktuellerOrdnerName, "Standard-Ordner");
  EXPECT_EQ(b.lngAktuelleOrdnerID, 1);
  EXPECT_EQ(b.VerzeichnisOhneDb, path("lib/"));
  EXPECT_EQ(b.rsOrdner.RecordCount(), 1);
  EXPECT_EQ(b.rsSeiten.RecordCount(), 1);
  EXPECT_EQ(b.rsDefMenue.RecordCount(), 1);
  EXPECT_EQ(b.rsBlockInfo0.RecordCount(), 0);
  EXPECT_TRUE(b.rsBlockInfo0.hasField("LYCOLOR"));
  EXPECT_EQ(b.bytRsMarkierteBloeckeOkGleich1, 1);
  EXPECT_TRUE(b.rsMarkierteBloecke.hasField("Layer"));  // widened at the first opening
  EXPECT_TRUE(b.fctSperrenCmdBeiSchreibschutz().isEmpty());
  EXPECT_TRUE(b.fctDbPruefen());
  EXPECT_TRUE(prompt_->asked.isEmpty()) << prompt_->asked.join('\n').toStdString();
  b.RecordsetsUndVerbindungSchliessen();
  EXPECT_FALSE(b.connDb.isOpen());
  EXPECT_FALSE(b.rsOrdner.isOpen());
}

TEST_F(BibliothekTest, AnOlderLibraryIsMigratedAtItsFirstOpening) {
  const QString db = einzige("lib");
  Connection c;
  ASSERT_TRUE(c.open(db));
  ordnerAnlegen(c, "001", "Zeta");
  ordnerAnlegen(c, "002", "Alpha");
  const qint64 nr = blockAnlegen(c, "0010005", 2, "Winkel");
  // View 0 always exists; 1, 3 (point A at x 0) and 4 by their points; 2 (no point) not.
  ASSERT_TRUE(c.execute("UPDATE tblBlockInfo SET BlkName0 = NULL, AX1 = 5, AX3 = 0, AX4 = '0.1' "
                        "WHERE Nr = ?", {nr}));
  const qint64 benannt = blockAnlegen(c, "0010006", 2, "fertig");
  c.close();

  settings_->setup.lonOrdnerSortieren = 0;
  Bibliothek b(*settings_);
  QStringList fenster;
  b.hooks.arbeitsfensterZeigen = [&](const QString& a, const QString& z) { fenster << a << z; };
  b.hooks.arbeitsfensterSchliessen = [&] { fenster << "zu"; };
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  // NrTblOrdnen from Nr, and the folders in that order.
  Recordset rs;
  ASSERT_TRUE(rs.Open("SELECT Nr, NrTblOrdnen FROM tblOrdner", b.connDb));
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext())
    EXPECT_EQ(rs.value("NrTblOrdnen").toInt(), rs.value("Nr").toInt());
  EXPECT_EQ(ordnerFolge(b.rsOrdner), QStringList({"Standard-Ordner", "Zeta", "Alpha"}));
  // Default names for the views that exist.
  ASSERT_TRUE(fctRsEinlesenMitEinemKriterium(rs, b.connDb, "tblBlockInfo", "Nr", QString::number(nr), 1));
  EXPECT_EQ(rs.text("BlkName0"), "00000010005");
  EXPECT_EQ(rs.text("BlkName1"), "000000100051");
  EXPECT_TRUE(rs.value("BlkName2").isNull());
  EXPECT_EQ(rs.text("BlkName3"), "000000100053");
  EXPECT_EQ(rs.text("BlkName4"), "000000100054");
  ASSERT_TRUE(fctRsEinlesenMitEinemKriterium(rs, b.connDb, "tblBlockInfo", "Nr", QString::number(benannt), 1));
  EXPECT_EQ(rs.text("BlkName0"), "Name0010006");
  EXPECT_EQ(fenster, QStringList({"Kolvane korrigiert die Datenbank",
                                  "Dieser Vorgang kann einige Zeit dauern.", "zu"}));
  // Sorted by name when the setup says so; the second opening migrates nothing.
  settings_->setup.lonOrdnerSortieren = 1;
  fenster.clear();
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  EXPECT_TRUE(fenster.isEmpty());
  EXPECT_EQ(ordnerFolge(b.rsOrdner), QStringList({"Alpha", "Standard-Ordner", "Zeta"}));
  EXPECT_EQ(fehlerBerichte(), 0);
}

TEST_F(BibliothekTest, TheCurrentFolderComesFromTheLibrarysIni) {
  const QString db = einzige("lib");
  Connection c;
  ASSERT_TRUE(c.open(db));
  const qint64 id = ordnerAnlegen(c, "001", "Muttern");
  blockAnlegen(c, "0010000", int(id));
  blockAnlegen(c, "0010001", int(id));
  c.close();
  Settings::writePosition(path("lib"), Position{"001", 2, 5});
  Bibliothek b(*settings_);
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  EXPECT_EQ(b.strAktuelleOrdnerNr, "001");
  EXPECT_EQ(b.strAktuellerOrdnerName, "Muttern");
  EXPECT_EQ(b.rsBlockInfo0.RecordCount(), 2);
  EXPECT_EQ(b.rsSeiten.RecordCount(), 0);
  ASSERT_TRUE(b.fctOrdnerWechseln("000"));
  EXPECT_EQ(b.rsBlockInfo0.RecordCount(), 0);
  EXPECT_EQ(b.rsSeiten.RecordCount(), 1);
  EXPECT_FALSE(b.fctOrdnerWechseln("077"));
  Settings::writePosition(path("lib"), Position{"077", 0, 0});
  settings_->setup.lonOrdnerSortieren = 0;  // the first folder is then "000"
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  EXPECT_EQ(b.strAktuelleOrdnerNr, "000");
}

TEST_F(BibliothekTest, ALibraryMovedToAnotherDirectoryKeepsWorking) {
  const QString db = neueBibliothek("alt/lib");
  Connection c;
  ASSERT_TRUE(c.open(db));
  blockAnlegen(c, "0000000", 1, "Winkel");
  blockAnlegen(c, "0000001", 1, "Flansch");
  c.close();
  dateienAnlegen(path("alt/lib"), "000", "0000000");
  // Files as the Windows edition may have named them.
  writeFile(path("alt/lib/000/0000001.SLB"), "s");
  writeFile(path("alt/lib/000/Block/00000010.DWG"), "d");
  ASSERT_TRUE(CopyAFolder(path("alt/lib"), path("woanders/tief/lib")));
  ASSERT_TRUE(DeleteAFolder(path("alt")));
  const QString neu = path("woanders/tief/lib/dbKolvane.mdb");
  settings_->aryVerzeichnisseDatenbank = {neu};
  settings_->strAktuelleDatenbank = neu;
  Bibliothek b(*settings_);
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  EXPECT_TRUE(b.fctSlideLibPfadeRelativ());
  EXPECT_TRUE(b.fctDbPruefen());
  ASSERT_TRUE(fctRsFind(b.rsBlockInfo0, "Block", "0000001"));
  EXPECT_EQ(fctSlideLibPfad(b.VerzeichnisOhneDb, b.rsBlockInfo0.text("SlideLib")),
            path("woanders/tief/lib/000/0000001.SLB"));
  // A missing drawing is found by the check.
  QFile::remove(path("woanders/tief/lib/000/Block/00000010.DWG"));
  EXPECT_FALSE(b.fctDbPruefen());
}

TEST_F(BibliothekTest, AbsoluteSlidePathsBecomeRelative) {
  const QString db = einzige("lib");
  Connection c;
  ASSERT_TRUE(c.open(db));
  const qint64 id = ordnerAnlegen(c, "001", "Zwei");
  blockAnlegen(c, "0000000", 1, "", "C:\\Kolvane\\Alt\\000\\0000000.slb");
  blockAnlegen(c, "0010000", int(id), "", "/mnt/alt/001/0010000.sld");
  blockAnlegen(c, "0010001", int(id), "", "001\\0010001.slb");
  c.close();
  Bibliothek b(*settings_);
  int fenster = 0;
  b.hooks.arbeitsfensterZeigen = [&](const QString&, const QString&) { ++fenster; };
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  EXPECT_FALSE(b.fctSlideLibPfadeRelativ());
  ASSERT_TRUE(b.rsOrdner.setAbsolutePosition(2));
  ASSERT_TRUE(b.fctPfadEintragAendern());
  EXPECT_EQ(fenster, 1);
  EXPECT_EQ(b.rsOrdner.AbsolutePosition(), 2);
  EXPECT_TRUE(b.fctSlideLibPfadeRelativ());
  Recordset rs;
  ASSERT_TRUE(rs.Open("SELECT SlideLib FROM tblBlockInfo ORDER BY Nr", b.connDb));
  QStringList libs;
  for (; !rs.isEOF(); rs.MoveNext()) libs << rs.text("SlideLib");
  EXPECT_EQ(libs, QStringList({"000\\0000000.slb", "001\\0010000.sld", "001\\0010001.slb"}));
}

TEST_F(BibliothekTest, AVanishedLibraryOffersNew) {
  settings_->aryVerzeichnisseDatenbank = {path("weg/lib/dbKolvane.mdb")};
  settings_->strAktuelleDatenbank = path("weg/lib/dbKolvane.mdb");
  prompt_->answer(Answer::No);  // New
  Bibliothek b(*settings_);
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  EXPECT_TRUE(gefragt(229) && gefragt(230) && gefragt(231));
  EXPECT_TRUE(QFileInfo(path("weg/lib/000")).isDir());
  EXPECT_EQ(b.rsOrdner.RecordCount(), 1);
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(BibliothekTest, AVanishedLibraryOffersSearch) {
  const QString anderer = neueBibliothek("anderer");
  const QString zweiter = neueBibliothek("zweiter");
  writeFile(path("kaputt/dbKolvane.mdb"), "kein SQLite");
  settings_->aryVerzeichnisseDatenbank = {path("weg/dbKolvane.mdb"), zweiter};
  settings_->strAktuelleDatenbank = path("weg/dbKolvane.mdb");
  prompt_->answer(Answer::Yes).text(zweiter).answer(Answer::Ok);  // already listed: refused
  prompt_->answer(Answer::Yes).text(path("kaputt/dbKolvane.mdb")).answer(Answer::Yes)  // retry
      .text(anderer);                                                // a good one
  Bibliothek b(*settings_);
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  EXPECT_TRUE(gefragt(197) && gefragt(198));
  EXPECT_TRUE(gefragt(220) && gefragt(221));
  EXPECT_EQ(settings_->strAktuelleDatenbank, anderer);
  EXPECT_EQ(settings_->aryVerzeichnisseDatenbank, QStringList({anderer, zweiter}));
  EXPECT_EQ(b.connDb.path(), anderer);
  EXPECT_EQ(prompt_->unexpected(), 0) << prompt_->asked.join('\n').toStdString();
}

TEST_F(BibliothekTest, AVanishedLibraryCancelledLeavesTheList) {
  const QString zweiter = neueBibliothek("zweiter");
  settings_->aryVerzeichnisseDatenbank = {path("weg/dbKolvane.mdb"), zweiter};
  settings_->strAktuelleDatenbank = path("weg/dbKolvane.mdb");
  prompt_->answer(Answer::Cancel);
  Bibliothek b(*settings_);
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());  // the next one in the list
  EXPECT_EQ(settings_->aryVerzeichnisseDatenbank, QStringList{zweiter});
  EXPECT_EQ(b.connDb.path(), zweiter);

  // The last one gone: the question for a new library; No ends the program.
  settings_->aryVerzeichnisseDatenbank = {path("weg/dbKolvane.mdb")};
  settings_->strAktuelleDatenbank = path("weg/dbKolvane.mdb");
  prompt_->answer(Answer::Cancel).answer(Answer::No);
  EXPECT_FALSE(b.ConnectionUndRecordsetOeffnen());
  EXPECT_TRUE(gefragt(222));
  EXPECT_TRUE(b.bytBeenden);
  EXPECT_TRUE(settings_->aryVerzeichnisseDatenbank.isEmpty());

  // Yes hands over to the setup's new library.
  settings_->aryVerzeichnisseDatenbank = {path("weg/dbKolvane.mdb")};
  settings_->strAktuelleDatenbank = path("weg/dbKolvane.mdb");
  prompt_->answer(Answer::Cancel).answer(Answer::Yes);
  b.hooks.cmbDatenbankNeu = [&] { return b.NeueDatenbankErstellen(path("frisch/dbKolvane.mdb")); };
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  EXPECT_FALSE(b.bytBeenden);
  EXPECT_EQ(b.connDb.path(), path("frisch/dbKolvane.mdb"));
  EXPECT_EQ(prompt_->unexpected(), 0);
}

TEST_F(BibliothekTest, AnOldFormatLibraryIsOfferedFirst) {
  writeFile(path("alt/Bver2.dbf"), "dbase");
  settings_->aryVerzeichnisseDatenbank = {path("alt/dbKolvane.mdb")};
  settings_->strAktuelleDatenbank = path("alt/dbKolvane.mdb");
  QString importiert;
  Bibliothek b(*settings_);
  b.hooks.datenbankImportieren = [&](const QString& dir) {
    importiert = dir;
    return false;  // the import is not there yet
  };
  prompt_->answer(Answer::Ok).answer(Answer::Yes).answer(Answer::No);
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  const QStringList f = fragen();
  ASSERT_EQ(f.size(), 3);
  EXPECT_TRUE(f[0].contains("L" + QString::number(Bibliothek::kLabelAltesFormat1)) && f[1].contains("L" + QString::number(Bibliothek::kLabelAltesFormatFrage1)) && f[2].contains("L229"));
  EXPECT_EQ(importiert, path("alt/"));
}

TEST_F(BibliothekTest, FilesThatAreNoLibraryAreRefused) {
  const QString gut = einzige("gut");
  QByteArray jet(2048, '\0');
  jet[1] = 1;
  jet.replace(4, 15, "Standard Jet DB");
  writeFile(path("jet/dbKolvane.mdb"), jet);
  writeFile(path("leer/dbKolvane.mdb"), "");
  QByteArray zufall;
  for (int i = 0; i < 4096; ++i) zufall += char((i * 7919 + 13) % 251);
  writeFile(path("zufall/dbKolvane.mdb"), zufall);
  QString grund;
  EXPECT_FALSE(Bibliothek::fctTestDb(path("jet/dbKolvane.mdb"), &grund));
  EXPECT_TRUE(grund.contains("Jet")) << grund.toStdString();
  EXPECT_FALSE(Bibliothek::fctTestDb(path("leer/dbKolvane.mdb"), &grund));
  EXPECT_TRUE(grund.contains("leer"));
  EXPECT_FALSE(Bibliothek::fctTestDb(path("zufall/dbKolvane.mdb"), &grund));
  EXPECT_TRUE(grund.contains("keine Kolvane-Datenbank"));
  EXPECT_EQ(readFile(path("leer/dbKolvane.mdb")), "");  // untouched
  EXPECT_TRUE(Bibliothek::fctTestDb(gut));

  Bibliothek b(*settings_);
  for (const char* rel : {"jet", "leer", "zufall"}) {
    settings_->strAktuelleDatenbank = path(QString(rel) + "/dbKolvane.mdb");
    EXPECT_FALSE(b.ConnectionUndRecordsetOeffnen()) << rel;
    EXPECT_FALSE(b.connDb.isOpen());
  }
  EXPECT_EQ(fehlerBerichte(), 3);
  EXPECT_TRUE(prompt_->asked.join('\n').contains("Jet-Datenbank"));

  // Adding one leaves the open library as it was.
  settings_->strAktuelleDatenbank = gut;
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  EXPECT_FALSE(b.NeueDatenbankEinfuegen(path("jet/dbKolvane.mdb")));
  EXPECT_TRUE(gefragt(Bibliothek::kLabelEinfuegenFehler1) && gefragt(Bibliothek::kLabelEinfuegenHinweis1));
  EXPECT_EQ(b.connDb.path(), gut);
  EXPECT_TRUE(b.rsOrdner.isOpen());
  EXPECT_EQ(settings_->aryVerzeichnisseDatenbank, QStringList{gut});
  EXPECT_FALSE(b.NeueDatenbankErstellen(path("jet/dbKolvane.mdb")));  // never over a file
}

TEST_F(BibliothekTest, AFailedAddReopensTheLibraryThatWasOpenOnItsFolder) {
  const QString gut = einzige("gut");
  {
    Connection c;
    ASSERT_TRUE(c.open(gut));
    const qint64 id = ordnerAnlegen(c, "001", "Zeta");
    blockAnlegen(c, "0010000", int(id));
  }
  // A library that passes the test but can't be taken over: another program
  // holds it open in WAL mode, so it can't be put back to a plain journal.
  const QString belegt = neueBibliothek("belegt");
  Connection andere;
  ASSERT_TRUE(andere.open(belegt));
  ASSERT_TRUE(andere.execute("PRAGMA journal_mode=WAL"));
  ASSERT_EQ(andere.scalar("SELECT COUNT(*) FROM tblOrdner").toInt(), 1);  // and reads in it
  ASSERT_TRUE(Bibliothek::fctTestDb(belegt));

  Bibliothek b(*settings_);
  int geleert = 0, aktualisiert = 0;
  b.hooks.lisBlockBenennungLeeren = [&] { ++geleert; };
  b.hooks.ordnerAktualisieren = [&] { ++aktualisiert; };
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  ASSERT_TRUE(b.fctOrdnerWechseln("001"));  // not the folder of its ini
  EXPECT_FALSE(b.NeueDatenbankEinfuegen(belegt));
  EXPECT_TRUE(gefragt(Bibliothek::kLabelEinfuegenFehler1));
  EXPECT_EQ(settings_->strAktuelleDatenbank, gut);
  EXPECT_EQ(b.connDb.path(), gut);
  EXPECT_EQ(b.strAktuelleOrdnerNr, "001");
  EXPECT_EQ(b.strAktuellerOrdnerName, "Zeta");
  EXPECT_EQ(b.rsBlockInfo0.RecordCount(), 1);
  EXPECT_EQ(settings_->aryVerzeichnisseDatenbank, QStringList{gut});
  EXPECT_EQ(geleert, 1);
  EXPECT_EQ(aktualisiert, 1) << "the emptied window is shown the library again";
  // Once the other program lets go, the same library is added.
  andere.close();
  EXPECT_TRUE(b.NeueDatenbankEinfuegen(belegt));
  EXPECT_EQ(b.connDb.path(), belegt);
}

TEST_F(BibliothekTest, ASeventhLibraryPushesTheOldestOut) {
  QStringList libs;
  for (int i = 1; i <= 6; ++i) libs << neueBibliothek(QString("lib%1").arg(i));
  settings_->aryVerzeichnisseDatenbank = libs;
  settings_->strAktuelleDatenbank = libs.first();
  Bibliothek b(*settings_);
  ASSERT_TRUE(b.ConnectionUndRecordsetOeffnen());
  const QString siebte = path("lib7/dbKolvane.mdb");
  ASSERT_TRUE(b.NeueDatenbankErstellen(siebte));
  EXPECT_EQ(settings_->aryVerzeichnisseDatenbank, QStringList({siebte}) + libs.mid(0, 5));
  EXPECT_EQ(settings_->strAktuelleDatenbank, siebte);
  EXPECT_EQ(settings_->store().fctRegLesen(settings_->strRegistryPfad, "Eintrag1").toString(), siebte);
  const auto combo = b.subComboVerzeichnisseNeuEinlesen();
  EXPECT_EQ(combo.auswahl, 0);
  // The menu: the given one first, then the list; at most six.
  const auto menue = b.fctDbsInMenueDateiEintragen(libs[3]);
  ASSERT_EQ(menue.size(), 6);
  EXPECT_EQ(menue[0].pfad, libs[3]);
  EXPECT_EQ(menue[1].pfad, siebte);
  EXPECT_EQ(menue[0].anzeige, fctPfadAuf34ZeichenKuerzen(libs[3]));
  b.fctDbsInAryNeuSortieren(libs[3]);
  EXPECT_EQ(settings_->aryVerzeichnisseDatenbank.first(), libs[3]);
  EXPECT_EQ(settings_->aryVerzeichnisseDatenbank.size(), 6);
  // Adding an existing library.
  const QString achte = neueBibliothek("lib8");
  ASSERT_TRUE(b.NeueDatenbankEinfuegen(achte));
  EXPECT_EQ(settings_->aryVerzeichnisseDatenbank.first(), achte);
  EXPECT_EQ(b.connDb.path(), achte);
  EXPECT_FALSE(b.NeueDatenbankEinfuegen(achte));  // already listed: a hint, nothing else
  EXPECT_TRUE(gefragt(197));
}

TEST_F(BibliothekTest, TheListComparesPathsWithoutCase) {
  settings_->aryVerzeichnisseDatenbank = {"/Srv/Kolvane/dbKolvane.mdb", "/b/dbKolvane.mdb"};
  Bibliothek b(*settings_);
  EXPECT_FALSE(b.fctDbVerzeichnisAufEinmaligkeitPruefen("/srv/kolvane/DBKOLVANE.MDB"));
  EXPECT_FALSE(b.fctDbVerzeichnisAufEinmaligkeitPruefen("/srv//kolvane/./dbKolvane.mdb"));
  EXPECT_TRUE(b.fctDbVerzeichnisAufEinmaligkeitPruefen("/srv/kolvane2/dbKolvane.mdb"));
  b.subVerzeichnisAusArrayAendern("/SRV/kolvane/dbKolvane.mdb", "/c/dbKolvane.mdb");
  EXPECT_EQ(settings_->aryVerzeichnisseDatenbank, QStringList({"/c/dbKolvane.mdb", "/b/dbKolvane.mdb"}));
  b.subVerzeichnisAusArrayAendern("/b/dbKolvane.mdb", "");
  EXPECT_EQ(settings_->aryVerzeichnisseDatenbank, QStringList({"/c/dbKolvane.mdb"}));
}

TEST_F(BibliothekTest, AReadOnlyLibraryOpensWithChangingCommandsDisabled) {
  const QString db = einzige("lib");
  QFile::setPermissions(path("lib"), QFile::ReadOwner | QFile::ExeOwner);
  Bibliothek b(*settings_);
  const bool offen = b.ConnectionUndRecordsetOeffnen();
  QFile::setPermissions(path("lib"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  ASSERT_TRUE(offen);
  EXPECT_TRUE(b.booSchreibgeschuetzt);
  EXPECT_TRUE(b.connDb.isReadOnly());
  EXPECT_EQ(b.fctSperrenCmdBeiSchreibschutz(), Bibliothek::befehleBeiSchreibschutz());
  EXPECT_TRUE(b.fctSperrenCmdBeiSchreibschutz().contains("mnuZSeiteEinfuegen"));
  EXPECT_EQ(b.rsOrdner.RecordCount(), 1);
  EXPECT_FALSE(b.rsOrdner.hasField("NrTblOrdnen"));  // not migrated
  EXPECT_FALSE(b.connDb.execute("UPDATE tblOrdner SET Ordnername = 'x'"));
  EXPECT_EQ(fehlerBerichte(), 0);
  EXPECT_EQ(Bibliothek::subCmdSperrenEntsperren(1).size(), 13);
  EXPECT_TRUE(Bibliothek::subCmdSperrenEntsperren(0).contains("combutAbbrechen"));
}

TEST_F(BibliothekTest, SearchingADirectoryForALibrary) {
  Bibliothek b(*settings_);
  EXPECT_EQ(b.fctNachBestehenderDbSuchen1Neu2Alt0Keine(path("leer")), 0);
  writeFile(path("alt/Bver2.DBF"), "x");
  writeFile(path("alt/aaa.mdb"), "kein SQLite");
  EXPECT_EQ(b.fctNachBestehenderDbSuchen1Neu2Alt0Keine(path("alt")), 2);
  const QString db = neueBibliothek("alt");
  EXPECT_EQ(b.fctNachBestehenderDbSuchen1Neu2Alt0Keine(path("alt")), 1);
  EXPECT_EQ(settings_->strAktuelleDatenbank, db);
  EXPECT_FALSE(QFileInfo::exists(settings_->sCTemp + "txtDbNamen.txt"));
}

TEST_F(BibliothekTest, NoLibraryOpensWithABadSuffixTable) {
  einzige("lib");
  writeFile(QDir(env_.programDir).filePath("txtPrefix.txt"), "000\r\n001\r\n");
  Bibliothek b(*settings_);
  EXPECT_FALSE(b.ConnectionUndRecordsetOeffnen());
  EXPECT_FALSE(b.connDb.isOpen());
  EXPECT_EQ(fehlerBerichte(), 1);
}

}  // namespace
}  // namespace kolvane

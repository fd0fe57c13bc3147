// The definition file: fixed records of 120 bytes in Windows-1252, written
// from the dialog's boxes and read back into them; files that aren't a
// definition are refused and leave the boxes alone.
#include <QDir>

#include "codepage.h"
#include "defmenue.h"
#include "defmenuedatei.h"
#include "defmenuetest.h"

namespace kolvane {
namespace {

QByteArray satz(const QByteArray& name, const QByteArray& wert, char fuell = ' ') {
  return name + QByteArray(kDefNameBreite - name.size(), fuell) + wert +
         QByteArray(kDefWertBreite - wert.size(), fuell);
}

class DefMenueDateiTest : public DefMenueTest {
 protected:
  void SetUp() override {
    DefMenueTest::SetUp();
    oeffnen();
  }
};

TEST_F(DefMenueDateiTest, WrittenInTheCodePageAndReadBackWithoutPadding) {
  DefMenue d(*lib_);
  ASSERT_TRUE(d.Form_Load());
  d.txtBenennung[0] = QString::fromUtf8("Größe");
  d.txtStandardwert[0] = QString::fromUtf8("Ä Ö Ü ä ö ü ß € – 50 %");
  d.txtBenennung[1] = QString::fromUtf8("Fünfundzwanzig Zeichen!!");  // 24: cut to 20
  d.txtStandardwert[1] = QString(130, u'w');
  d.txtBenennung[2] = "  eingerückt";
  d.txtStandardwert[2] = "Ende mit Blanks   ";
  d.txtBenennung[3] = QString::fromUtf8("Tab\tim Namen");
  for (size_t i = 4; i < 10; ++i) d.txtBenennung[i].clear(), d.txtStandardwert[i].clear();
  const QString datei = path("aus/datKartei1.dat");
  QDir().mkpath(path("aus"));
  ASSERT_TRUE(d.inDateiSpeichern(datei));

  const QByteArray b = readFile(datei);
  ASSERT_EQ(b.size(), 1200);
  EXPECT_EQ(b.left(20), QByteArray("Gr\xF6\xDF" "e").leftJustified(20, ' '));
  EXPECT_EQ(b.mid(20, 4), QByteArray("\xC4 \xD6 "));
  EXPECT_EQ(uchar(b[20 + 14]), 0x80) << "the euro sign of Windows-1252";
  EXPECT_EQ(uchar(b[20 + 16]), 0x96) << "the en dash";
  EXPECT_EQ(b.mid(120, 20), QByteArray("F\xFCnfundzwanzig Zeich"));
  EXPECT_EQ(b.mid(140, 100), QByteArray(100, 'w'));
  EXPECT_EQ(b.mid(360, 4), QByteArray("Tab "));
  EXPECT_EQ(b.mid(480), QByteArray(720, ' '));

  DefMenue e(*lib_);
  ASSERT_TRUE(e.ausDateiLaden(datei));
  EXPECT_EQ(e.txtBenennung[0], d.txtBenennung[0]);
  EXPECT_EQ(e.txtStandardwert[0], d.txtStandardwert[0]);
  EXPECT_EQ(e.txtBenennung[1], QString::fromUtf8("Fünfundzwanzig Zeich"));
  EXPECT_EQ(e.txtStandardwert[1], QString(100, u'w'));
  EXPECT_EQ(e.txtBenennung[2], "  eingerückt") << "leading blanks stay";
  EXPECT_EQ(e.txtStandardwert[2], "Ende mit Blanks") << "trailing blanks go";
  EXPECT_EQ(e.txtBenennung[3], "Tab im Namen");
  EXPECT_TRUE(e.txtStandardwert[9].isEmpty());
  EXPECT_EQ(prompt_->asked, QStringList());
}

TEST_F(DefMenueDateiTest, FewerRecordsEmptyTheRestAndNulPaddingGoes) {
  writeFile(path("drei.dat"), satz("A", "a") + satz("B", "b", '\0') + satz("", "nur Wert"));
  DefMenue d(*lib_);
  for (size_t i = 0; i < 10; ++i) d.txtBenennung[i] = d.txtStandardwert[i] = "alt";
  ASSERT_TRUE(d.ausDateiLaden(path("drei.dat")));
  EXPECT_EQ(d.txtBenennung[0], "A");
  EXPECT_EQ(d.txtStandardwert[1], "b");
  EXPECT_EQ(d.txtBenennung[2], "");
  EXPECT_EQ(d.txtStandardwert[2], "nur Wert");
  for (size_t i = 3; i < 10; ++i) EXPECT_TRUE(d.txtBenennung[i].isEmpty() && d.txtStandardwert[i].isEmpty()) << i;
}

TEST_F(DefMenueDateiTest, FilesThatArentADefinitionAreRefusedAndChangeNothing) {
  const QByteArray voll = satz("Name", "Wert").repeated(10);
  QByteArray binaer;
  for (int i = 0; i < 1200; ++i) binaer.append(char(i * 31 % 256));
  QDir().mkpath(path("ordner.dat"));
  struct Fall {
    const char* datei;
    QByteArray inhalt;
    int meldung;
  };
  const QList<Fall> faelle{
      {"leer.dat", QByteArray(), DefMenue::kMeldungDateiLeer},
      {"halb.dat", voll.left(250), DefMenue::kMeldungDateiBeschaedigt},
      {"eof.dat", voll.left(240) + "\x1A", DefMenue::kMeldungDateiBeschaedigt},
      {"binaer.dat", binaer, DefMenue::kMeldungDateiBeschaedigt},
      {"lang.dat", voll + satz("elf", "elf"), DefMenue::kMeldungDateiZuLang},
      {"riesig.dat", QByteArray(5'000'000, ' '), DefMenue::kMeldungDateiZuLang},
      {"fehlt.dat", QByteArray(), DefMenue::kMeldungDateiNichtLesbar},
      {"ordner.dat", QByteArray(), DefMenue::kMeldungDateiNichtLesbar},
  };
  for (const Fall& f : faelle) {
    SCOPED_TRACE(f.datei);
    const QString datei = path(f.datei);
    if (QString(f.datei) != "fehlt.dat" && QString(f.datei) != "ordner.dat") writeFile(datei, f.inhalt);
    prompt_->asked.clear();
    DefMenue d(*lib_);
    ASSERT_TRUE(d.Form_Load());
    d.txtStandardwert[4] = "getippt";
    const auto namen = d.txtBenennung;
    EXPECT_FALSE(d.ausDateiLaden(datei));
    EXPECT_EQ(d.txtBenennung, namen);
    EXPECT_EQ(d.txtStandardwert[4], "getippt");
    ASSERT_EQ(prompt_->asked.size(), 1);
    EXPECT_TRUE(gezeigt(f.meldung));
    EXPECT_TRUE(gezeigt(DefMenue::kMeldungDefinitionBleibt));
    EXPECT_TRUE(prompt_->asked.first().contains(QDir::toNativeSeparators(datei)));
  }
  EXPECT_EQ(zeile(1).first(), "*****Frei*****") << "nothing reached the library";
}

TEST_F(DefMenueDateiTest, ChoosersCancelledOrNamedWithoutExtension) {
  DefMenue d(*lib_);
  ASSERT_TRUE(d.Form_Load());
  d.txtBenennung[0] = "Nennweite";
  // Cancelled choosers do nothing.
  prompt_->cancel();
  EXPECT_FALSE(d.combutInDateiSpeichern_Click());
  prompt_->cancel();
  EXPECT_FALSE(d.cmbKarteiLaden_Click());
  EXPECT_EQ(d.txtBenennung[0], "Nennweite");
  EXPECT_EQ(prompt_->asked, (QStringList{"saveFile|Datei speichern unter", "openFile|Datei laden"}));

  // A name without extension gets ".dat"; the file loads into other boxes.
  prompt_->text(path("karte"));
  ASSERT_TRUE(d.combutInDateiSpeichern_Click());
  EXPECT_EQ(readFile(path("karte.dat")).size(), 1200);
  DefMenue e(*lib_);
  prompt_->text(path("karte.dat"));
  ASSERT_TRUE(e.cmbKarteiLaden_Click());
  EXPECT_EQ(e.txtBenennung[0], "Nennweite");

  // A place that can't be written: its message, and no file.
  prompt_->asked.clear();
  EXPECT_FALSE(d.inDateiSpeichern(path("gibtsnicht/x.dat")));
  EXPECT_TRUE(gezeigt(DefMenue::kMeldungDateiNichtGeschrieben));
  EXPECT_FALSE(QFile::exists(path("gibtsnicht/x.dat")));
}

}  // namespace
}  // namespace kolvane

#include <QDir>
#include <QFile>
#include <QSet>
#include <thread>

#include "prefix.h"
#include "storetest.h"

namespace kolvane {
namespace {

class PrefixTest : public StoreTest {
 protected:
  QString tabelle() const { return QDir(env_.programDir).filePath("txtPrefix.txt"); }
  // A table of n items from the real one, with changes.
  void schreiben(int n, const QHash<int, QByteArray>& aenderungen = {}) {
    QFile f(sourceDataDir() + "/txtPrefix.txt");
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    QList<QByteArray> zeilen = f.readAll().split('\n');
    QByteArray out;
    for (int i = 0; i < n; ++i) out += aenderungen.value(i, zeilen[i].trimmed()) + "\r\n";
    writeFile(tabelle(), out);
  }
};

TEST_F(PrefixTest, CodesAcrossTheFirstPassAndTheOverflow) {
  QStringList ary;
  ASSERT_TRUE(fctPrefixEinlesen(42875, ary));
  ASSERT_EQ(ary.size(), 42876);
  EXPECT_EQ(fctBlockCode("006", 0, ary), "0060000");
  EXPECT_EQ(fctBlockCode("006", 21, ary), "006000L");
  EXPECT_EQ(fctBlockCode("006", 42873, ary), "0060ZZY");
  // Slot 42874: digit 1 and the last item of the first pass.
  EXPECT_EQ(fctBlockCode("006", 42874, ary), "0061ZZZ");
  // Slot 42875: digit 1 and the file from its first item again.
  EXPECT_EQ(fctBlockCode("006", 42875, ary), "0061000");
  EXPECT_EQ(fctBlockCode("006", 42876, ary), QString());  // beyond what was read
}

TEST_F(PrefixTest, LaterPassesRestartTheFile) {
  QStringList ary;
  ASSERT_TRUE(fctPrefixEinlesen(3 * 42874 + 2, ary));
  EXPECT_EQ(ary[2 * 42874], ary[42873]);      // end of pass 2: line 42874
  EXPECT_EQ(fctBlockCode("000", 2 * 42874, ary), "0002ZZY");
  EXPECT_EQ(ary[2 * 42874 + 1], "000");       // pass 3 starts at line 1
  EXPECT_EQ(fctBlockCode("000", 2 * 42874 + 1, ary), "0002000");
  // All codes of a folder differ, across passes.
  QSet<QString> codes;
  for (int i = 0; i < ary.size(); ++i) codes.insert(fctBlockCode("000", i, ary));
  EXPECT_EQ(codes.size(), ary.size());
  // And the way back from a code to its slot.
  for (int slot : {0, 35, 42873, 42874, 42875, 85747, 85748, 85749, 3 * 42874 + 2})
    EXPECT_EQ(fctSlotAusBlockCode(fctBlockCode("007", slot, ary)), slot) << slot;
  EXPECT_EQ(fctSlotAusBlockCode("007x"), -1);
  EXPECT_EQ(fctSlotAusBlockCode("0070OOO"), -1);  // no "O" in the table
}

TEST_F(PrefixTest, AMissingOrShortTableIsReported) {
  QFile::remove(tabelle());
  QStringList ary{"x"};
  EXPECT_FALSE(fctPrefixEinlesen(35, ary));
  EXPECT_TRUE(ary.isEmpty());
  EXPECT_EQ(fehlerBerichte(), 1);
  schreiben(100);
  EXPECT_FALSE(fctPrefixEinlesen(35, ary));
  EXPECT_FALSE(fctPrefixTabellePruefen());
  EXPECT_EQ(fehlerBerichte(), 3);
  writeFile(tabelle(), "");
  EXPECT_FALSE(fctPrefixEinlesen(0, ary));
}

TEST_F(PrefixTest, ABadTableIsRefused) {
  for (const auto& [zeile, text] : std::vector<std::pair<int, QByteArray>>{
           {5, "0_5"}, {6, "A%B"}, {7, "ab'"}, {8, "[01"}, {9, "12"}, {10, "1234"},
           {11, "00a"} /* equals "00A" without case */}) {
    schreiben(42875, {{zeile, text}});
    QStringList ary;
    EXPECT_FALSE(fctPrefixEinlesen(10, ary)) << text.constData();
  }
  EXPECT_GE(fehlerBerichte(), 7);
}

TEST_F(PrefixTest, ItemsAreReadAsTheOldSequentialInputDid) {
  // Quotes removed, blanks around an item dropped, a comma ends an item,
  // Windows-1252, trailing blank lines ignored.
  schreiben(42875, {{0, "\"OOA\""}, {1, "  OOB  "}, {2, "C\xC4" "C"}});
  QStringList ary;
  ASSERT_TRUE(fctPrefixEinlesen(3, ary)) << prompt_->asked.join("\n").toStdString();
  EXPECT_EQ(ary[0], "OOA");
  EXPECT_EQ(ary[1], "OOB");
  EXPECT_EQ(ary[2], QString::fromUtf8("CÄC"));
  writeFile(tabelle(), readFile(tabelle()) + "\r\n\r\n");
  EXPECT_TRUE(fctPrefixEinlesen(3, ary));
}

TEST_F(PrefixTest, AChangedFileIsReadAgain) {
  QStringList ary;
  ASSERT_TRUE(fctPrefixEinlesen(0, ary));
  EXPECT_EQ(ary[0], "000");
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  schreiben(42875, {{0, "ZZZ"}, {42874, "000"}});
  ASSERT_TRUE(fctPrefixEinlesen(0, ary));
  EXPECT_EQ(ary[0], "ZZZ");
}

}  // namespace
}  // namespace kolvane

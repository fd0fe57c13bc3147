#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QProcess>

#include "connection.h"
#include "storetest.h"

namespace kolvane {
namespace {

struct Lauf {
  int status = -1;
  QStringList out;
  QStringList err;
};

class ToolTest : public StoreTest {
 protected:
  Lauf tool(const QStringList& args) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    QDir().mkpath(path("run"));
    QFile::setPermissions(path("run"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    env.insert("XDG_RUNTIME_DIR", path("run"));
    env.insert("HOME", path("home"));
    env.insert("XDG_CONFIG_HOME", path("home/.config"));
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(KOLVANE_TOOL), args);
    EXPECT_TRUE(p.waitForFinished(60000));
    Lauf l;
    l.status = p.exitCode();
    l.out = QString::fromUtf8(p.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    l.err = QString::fromUtf8(p.readAllStandardError()).split('\n', Qt::SkipEmptyParts);
    return l;
  }
  static QByteArray hash(const QString& file) {
    QFile f(file);
    f.open(QIODevice::ReadOnly);
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
  }
};

TEST_F(ToolTest, NewLibraryInfoAndCodes) {
  const Lauf neu = tool({"new-library", path("a/b/lib")});
  ASSERT_EQ(neu.status, 0) << neu.err.join('\n').toStdString();
  ASSERT_EQ(neu.out, QStringList{path("a/b/lib/dbKolvane.mdb")});
  EXPECT_TRUE(QDir(path("a/b/lib/000")).exists());

  Connection c;
  ASSERT_TRUE(c.open(path("a/b/lib/dbKolvane.mdb")));
  const qint64 id = ordnerAnlegen(c, "001", "Muttern");
  ASSERT_TRUE(c.execute("INSERT INTO tblSeiten (SeitenNr, SeitenName, NrTblOrdner) VALUES (1, 'Eins', ?)", {id}));
  blockAnlegen(c, "0010001", int(id), "M8");
  blockAnlegen(c, "0011000", int(id), "Ganz hinten");  // slot 42875
  blockAnlegen(c, "0010002", int(id));                 // no text
  c.close();

  const Lauf info = tool({"info", path("a/b/lib")});
  ASSERT_EQ(info.status, 0);
  EXPECT_EQ(info.out, QStringList({"folder\t1\t000\tStandard-Ordner\t0", "folder\t2\t001\tMuttern\t3",
                                   "page\t000\t1\t1", "page\t001\t1\tEins"}));

  const QByteArray vorher = hash(path("a/b/lib/dbKolvane.mdb"));
  const Lauf codes = tool({"codes", path("a/b/lib/dbKolvane.mdb"), "--folder", "001", "--page", "0",
                           "--slots", "4"});
  ASSERT_EQ(codes.status, 0) << codes.err.join('\n').toStdString();
  EXPECT_EQ(codes.out, QStringList({"0\t0010000\t*****Frei*****", "1\t0010001\tM8", "2\t0010002\t",
                                    "3\t0010003\t*****Frei*****"}));
  // The page across the end of the first pass: 595 x 72 = 42840.
  const Lauf ende = tool({"codes", path("a/b/lib"), "--folder", "001", "--page", "595", "--slots", "72"});
  ASSERT_EQ(ende.status, 0);
  ASSERT_EQ(ende.out.size(), 72);
  EXPECT_EQ(ende.out[42873 - 42840], "42873\t0010ZZY\t*****Frei*****");
  EXPECT_EQ(ende.out[42874 - 42840], "42874\t0011ZZZ\t*****Frei*****");
  EXPECT_EQ(ende.out[42875 - 42840], "42875\t0011000\tGanz hinten");
  EXPECT_EQ(hash(path("a/b/lib/dbKolvane.mdb")), vorher);  // it only reads
  EXPECT_FALSE(QFile::exists(path("a/b/lib/dbKolvane.mdb-journal")));

  // A library is never made over an existing one.
  const Lauf nochmal = tool({"new-library", path("a/b/lib")});
  EXPECT_EQ(nochmal.status, 1);
  EXPECT_EQ(hash(path("a/b/lib/dbKolvane.mdb")), vorher);
}

TEST_F(ToolTest, MissingOrDamagedLibrariesAreExitStatusOneWithOneLine) {
  writeFile(path("kaputt/dbKolvane.mdb"), QByteArray(3000, 'x'));
  QByteArray jet(2048, '\0');
  jet.replace(4, 15, "Standard Jet DB");
  writeFile(path("jet/dbKolvane.mdb"), jet);
  writeFile(path("leer/dbKolvane.mdb"), "");
  const QList<std::pair<QString, QString>> faelle = {
      {path("gibtsnicht"), "nicht vorhanden"},
      {path("kaputt"), "keine Kolvane-Datenbank"},
      {path("jet/dbKolvane.mdb"), "Jet"},
      {path("leer"), "leer"}};
  for (const auto& [bib, text] : faelle) {
    for (const QStringList& args :
         {QStringList{"info", bib}, QStringList{"codes", bib, "--folder", "000", "--page", "0", "--slots", "2"}}) {
      const Lauf l = tool(args);
      EXPECT_EQ(l.status, 1) << bib.toStdString();
      ASSERT_EQ(l.err.size(), 1) << l.err.join('\n').toStdString();
      EXPECT_TRUE(l.err[0].contains(text)) << l.err[0].toStdString();
      EXPECT_TRUE(l.out.isEmpty());
    }
  }
  EXPECT_EQ(readFile(path("leer/dbKolvane.mdb")), "");
  // A folder that is not there, and bad usage.
  ASSERT_EQ(tool({"new-library", path("lib")}).status, 0);
  const Lauf ordner = tool({"codes", path("lib"), "--folder", "009", "--page", "0", "--slots", "2"});
  EXPECT_EQ(ordner.status, 1);
  EXPECT_EQ(ordner.err.size(), 1);
  EXPECT_EQ(tool({"codes", path("lib"), "--folder", "000", "--page", "x", "--slots", "2"}).status, 2);
  EXPECT_EQ(tool({"info"}).status, 2);
}

}  // namespace
}  // namespace kolvane

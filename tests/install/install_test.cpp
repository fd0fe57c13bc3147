// The program as a user gets it: the build installed into a prefix of the
// test's own and started from its bin/, where no data file lies, so that it
// must find its data in <prefix>/share/kolvane; and the Debian package made of
// the same install, with its files and its dependencies.
#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QMap>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSet>
#include <QStandardPaths>

#include "kolvanetest.h"
#include "qtprint.h"

namespace kolvane {
namespace {

constexpr int kBound = 120000;  // no process of these tests runs longer
const QStringList kProgramme = {"kolvane", "kolvane-tool", "sandbox-cad", "slidelib"};
const QStringList kIconSizes = {"48", "128", "256"};

struct Lauf {
  int code = -1;  // -1: did not start, crashed or was killed after the bound
  QString aus, fehler;
  QString bericht() const { return QStringLiteral("exit %1\nstdout:\n%2\nstderr:\n%3").arg(code).arg(aus, fehler); }
};

Lauf laufen(const QString& exe, const QStringList& args, const QString& dir,
            const QProcessEnvironment& env = QProcessEnvironment::systemEnvironment(), int boundMs = kBound) {
  QProcess p;
  p.setProcessEnvironment(env);
  p.setWorkingDirectory(dir);
  p.start(exe, args);
  Lauf l;
  if (!p.waitForStarted(10000)) {
    l.fehler = exe + ": " + p.errorString();
    return l;
  }
  const bool fertig = p.waitForFinished(boundMs);
  if (!fertig) {
    p.kill();
    p.waitForFinished(5000);
    l.fehler = QStringLiteral("killed after %1 ms\n").arg(boundMs);
  }
  if (fertig && p.exitStatus() == QProcess::NormalExit) l.code = p.exitCode();
  l.aus = QString::fromLocal8Bit(p.readAllStandardOutput());
  l.fehler += QString::fromLocal8Bit(p.readAllStandardError());
  return l;
}

// Every file below dir with its size and time of change, one a line, to see
// that a run wrote nothing there.
QString bestand(const QString& dir) {
  QMap<QString, QString> m;
  QDirIterator it(dir, QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QFileInfo fi(it.next());
    m.insert(QDir(dir).relativeFilePath(fi.filePath()),
             QString::number(fi.size()) + '@' + QString::number(fi.lastModified().toMSecsSinceEpoch()));
  }
  QString t;
  for (auto it = m.cbegin(); it != m.cend(); ++it) t += it.key() + ' ' + it.value() + '\n';
  return t;
}

// The keys of the [Desktop Entry] group of a desktop file.
QMap<QString, QString> desktopEintrag(const QString& datei) {
  QFile f(datei);
  QMap<QString, QString> m;
  if (!f.open(QIODevice::ReadOnly)) return m;
  bool imEintrag = false;
  for (const QByteArray& roh : f.readAll().split('\n')) {
    const QString z = QString::fromUtf8(roh).trimmed();
    if (z.startsWith('[')) {
      imEintrag = z == QLatin1String("[Desktop Entry]");
      continue;
    }
    const qsizetype gleich = z.indexOf('=');
    if (imEintrag && gleich > 0) m.insert(z.left(gleich).trimmed(), z.mid(gleich + 1).trimmed());
  }
  return m;
}

// desktop-file-validate's verdict, or a skip note when it is not installed.
void desktopEintragPruefen(const QString& datei) {
  const QString validate = QStandardPaths::findExecutable(QStringLiteral("desktop-file-validate"));
  if (validate.isEmpty()) {
    std::fprintf(stderr, "desktop-file-validate is not installed: %s not validated\n", qPrintable(datei));
    return;
  }
  const Lauf l = laufen(validate, {datei}, QFileInfo(datei).path());
  EXPECT_EQ(l.code, 0) << l.bericht().toStdString();
  EXPECT_TRUE(l.aus.trimmed().isEmpty() && l.fehler.trimmed().isEmpty())
      << "desktop-file-validate has notes:\n"
      << l.bericht().toStdString();
}

class InstallTest : public KolvaneTest {
 protected:
  static QString buildDir() { return QStringLiteral(KOLVANE_BUILD_DIR); }

  // `cmake --install` of the build into prefix.
  void installieren(const QString& prefix) {
    const Lauf l = laufen(QStringLiteral(KOLVANE_CMAKE_EXE), {"--install", buildDir(), "--prefix", prefix}, path("."));
    ASSERT_EQ(l.code, 0) << l.bericht().toStdString();
  }

  // An environment for the installed programs: the user's places all below
  // the test's directory, no display, the sandbox on a socket of the test's
  // own, and a PATH on which the build's programs are not found.
  QProcessEnvironment umgebung(const QString& prefix) {
    const QString home = path("home");
    for (const char* d : {"", "/.config", "/.local/share", "/.local/state", "/.cache", "/tmp", "/run"})
      QDir().mkpath(home + QLatin1String(d));
    QFile::setPermissions(home + "/run", QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    QProcessEnvironment e = QProcessEnvironment::systemEnvironment();
    e.insert("HOME", home);
    e.insert("XDG_CONFIG_HOME", home + "/.config");
    e.insert("XDG_DATA_HOME", home + "/.local/share");
    e.insert("XDG_STATE_HOME", home + "/.local/state");
    e.insert("XDG_CACHE_HOME", home + "/.cache");
    e.insert("XDG_RUNTIME_DIR", home + "/run");
    e.insert("TMPDIR", home + "/tmp");
    e.insert("PATH", prefix + "/bin:/usr/bin:/bin");
    e.insert("QT_QPA_PLATFORM", "offscreen");
    e.insert("KOLVANE_SANDBOX_SOCKET", path("cad.sock"));
    e.remove("KOLVANE_SOURCE_DIR");
    e.remove("LD_LIBRARY_PATH");
    return e;
  }
};

TEST_F(InstallTest, TheInstalledProgramFindsItsDataInTheSharedDirectoryAndShowsItsWindow) {
  const QString prefix = path("prefix");
  ASSERT_NO_FATAL_FAILURE(installieren(prefix));

  // The programs in bin/, and nothing else there: the data lie in share/kolvane.
  for (const QString& p : kProgramme)
    EXPECT_TRUE(QFileInfo(prefix + "/bin/" + p).isExecutable()) << p.toStdString() << " is not installed";
  for (const QFileInfo& fi : QDir(prefix + "/bin").entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden))
    EXPECT_TRUE(fi.isFile() && fi.isExecutable()) << "not a program, in bin/: " << fi.fileName().toStdString();
  const QString daten = prefix + "/share/kolvane";
  for (const char* d : {"txtPrefix.txt", "frei2.sld", "txtBeschriftKolvane9.0"})
    EXPECT_TRUE(QFileInfo::exists(daten + "/" + d)) << d << " is not in share/kolvane";

  // Every installed program has its manual page.
  for (const QString& p : kProgramme) {
    const QString man = prefix + "/share/man/man1/" + p + ".1";
    EXPECT_TRUE(QFileInfo::exists(man) || QFileInfo::exists(man + ".gz")) << "no manual page for " << p.toStdString();
  }

  // The desktop entry starts an installed program and names an installed icon,
  // at each size its folder promises.
  const QString desktop = prefix + "/share/applications/kolvane.desktop";
  ASSERT_TRUE(QFileInfo::exists(desktop));
  const QMap<QString, QString> eintrag = desktopEintrag(desktop);
  EXPECT_EQ(eintrag.value("Type"), "Application");
  const QString exec = eintrag.value("Exec").section(' ', 0, 0);
  EXPECT_TRUE(kProgramme.contains(exec)) << "Exec names " << exec.toStdString();
  EXPECT_TRUE(QFileInfo(prefix + "/bin/" + exec).isExecutable());
  const QString icon = eintrag.value("Icon");
  ASSERT_FALSE(icon.isEmpty());
  EXPECT_TRUE(QFileInfo::exists(prefix + "/share/icons/hicolor/scalable/apps/" + icon + ".svg"));
  for (const QString& s : kIconSizes) {
    const QString png = prefix + "/share/icons/hicolor/" + s + "x" + s + "/apps/" + icon + ".png";
    QImageReader r(png);
    const QSize groesse = r.size();
    EXPECT_EQ(QString::fromLatin1(r.format()), "png") << png.toStdString();
    EXPECT_EQ(QStringLiteral("%1x%2").arg(groesse.width()).arg(groesse.height()), s + "x" + s) << png.toStdString();
  }
  desktopEintragPruefen(desktop);

  const QProcessEnvironment env = umgebung(prefix);
  const QString home = path("home");

  // The installed program reports the version the project was built as.
  const Lauf version = laufen(prefix + "/bin/kolvane", {"--version"}, home, env);
  EXPECT_EQ(version.code, 0) << version.bericht().toStdString();
  EXPECT_EQ(version.aus, "kolvane " KOLVANE_PROJECT_VERSION "\n");

  // The installed tool makes the demo library; it needs the suffix table.
  const QString datenVorher = bestand(daten);
  const QString demo = home + "/demo";
  const Lauf tool = laufen(prefix + "/bin/kolvane-tool", {"demo-library", demo}, home, env);
  ASSERT_EQ(tool.code, 0) << tool.bericht().toStdString();
  ASSERT_TRUE(QFileInfo::exists(demo + "/dbKolvane.mdb"));

  // The user's settings: the sandbox as host, the demo as the library.
  writeFile(home + "/.config/Kolvane/Kolvane9.0.ini",
            "[AllgemeineDaten]\r\nHost=sandbox\r\nDbVerzeichnis0=" + (demo + "/dbKolvane.mdb").toUtf8() + "\r\n");

  // The installed sandbox CAD, listening on the test's socket.
  QProcess cad;
  cad.setProcessEnvironment(env);
  cad.setWorkingDirectory(home);
  cad.setProcessChannelMode(QProcess::MergedChannels);
  cad.start(prefix + "/bin/sandbox-cad", {"--socket", path("cad.sock")});
  struct Ende {
    QProcess& p;
    ~Ende() {
      if (p.state() == QProcess::NotRunning) return;
      p.terminate();
      if (!p.waitForFinished(5000)) p.kill();
      p.waitForFinished(2000);
    }
  } ende{cad};
  QByteArray cadAusgabe;
  QElapsedTimer uhr;
  uhr.start();
  while (!cadAusgabe.contains("listening") && uhr.elapsed() < 20000 && cad.state() != QProcess::NotRunning) {
    cad.waitForReadyRead(200);
    cadAusgabe += cad.readAll();
  }
  ASSERT_TRUE(cadAusgabe.contains("listening")) << cadAusgabe.toStdString();

  // The installed program, its window saved as a picture.
  const QString shot = home + "/kolvane.png";
  const Lauf programm = laufen(prefix + "/bin/kolvane", {"--host", "sandbox", "--screenshot", shot}, home, env, 60000);
  cadAusgabe += cad.readAll();
  ASSERT_EQ(programm.code, 0) << programm.bericht().toStdString() << "\nsandbox:\n" << cadAusgabe.toStdString();
  QFile png(shot);
  ASSERT_TRUE(png.open(QIODevice::ReadOnly)) << "no screenshot";
  EXPECT_TRUE(png.read(8) == QByteArray("\x89PNG\r\n\x1a\n", 8)) << "the screenshot is no PNG";
  png.close();
  QImage bild;
  ASSERT_TRUE(bild.load(shot, "PNG"));
  EXPECT_GE(bild.width(), 320);
  EXPECT_GE(bild.height(), 200);
  // A window, not an empty surface: the picture holds more than a few colours.
  QSet<QRgb> farben;
  for (int y = 0; y < bild.height() && farben.size() < 16; y += 3)
    for (int x = 0; x < bild.width() && farben.size() < 16; x += 3) farben.insert(bild.pixel(x, y));
  EXPECT_GE(farben.size(), 16) << "the screenshot is nearly one colour";

  // The runs wrote nothing into the shared data directory, which a system
  // install keeps read-only, and nothing beside the programs.
  EXPECT_EQ(bestand(daten), datenVorher);
  for (const QFileInfo& fi : QDir(prefix + "/bin").entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden))
    EXPECT_TRUE(kProgramme.contains(fi.fileName())) << "written beside the programs: " << fi.fileName().toStdString();
}

TEST_F(InstallTest, TheDebianPackageHoldsTheInstallAndNamesItsDependencies) {
  const QString dpkgDeb = QStandardPaths::findExecutable(QStringLiteral("dpkg-deb"));
  if (dpkgDeb.isEmpty() || !QFileInfo(QStringLiteral(KOLVANE_CPACK_EXE)).isExecutable())
    GTEST_SKIP() << "cpack or dpkg-deb is not installed";
  const QString aus = path("deb");
  QDir().mkpath(aus);
  const Lauf cpack = laufen(QStringLiteral(KOLVANE_CPACK_EXE),
                            {"-G", "DEB", "--config", buildDir() + "/CPackConfig.cmake", "-B", aus}, aus);
  ASSERT_EQ(cpack.code, 0) << cpack.bericht().toStdString();
  const QStringList debs = QDir(aus).entryList({"*.deb"}, QDir::Files);
  ASSERT_EQ(debs.size(), 1) << debs.join(' ').toStdString();
  EXPECT_TRUE(debs[0].startsWith("kolvane_" KOLVANE_PROJECT_VERSION "_")) << debs[0].toStdString();
  const QString deb = aus + "/" + debs[0];

  // The control fields.
  const Lauf felder = laufen(dpkgDeb, {"-f", deb}, aus);
  ASSERT_EQ(felder.code, 0) << felder.bericht().toStdString();
  QMap<QString, QString> feld;
  for (const QString& z : felder.aus.split('\n'))
    if (!z.startsWith(' ') && z.contains(':')) feld.insert(z.section(':', 0, 0), z.section(':', 1).trimmed());
  EXPECT_EQ(feld.value("Package"), "kolvane");
  EXPECT_EQ(feld.value("Version"), KOLVANE_PROJECT_VERSION);
  EXPECT_EQ(feld.value("Section"), "graphics");
  EXPECT_FALSE(feld.value("Maintainer").isEmpty());
  EXPECT_FALSE(feld.value("Description").isEmpty());
  QSet<QString> abhaengig;
  for (const QString& d : feld.value("Depends").split(',')) abhaengig.insert(d.trimmed().section(' ', 0, 0));
  for (const char* p : {"libqt6core6", "libqt6gui6", "libqt6widgets6", "libqt6sql6", "libqt6network6",
                        "libsqlite3-0", "libqt6sql6-sqlite", "qt6-qpa-plugins"})
    EXPECT_TRUE(abhaengig.contains(p)) << "Depends lacks " << p << ": " << feld.value("Depends").toStdString();
  const Lauf info = laufen(dpkgDeb, {"-I", deb}, aus);
  EXPECT_TRUE(info.aus.contains(" Depends: ")) << info.bericht().toStdString();

  // The files, under /usr.
  const Lauf liste = laufen(dpkgDeb, {"-c", deb}, aus);
  ASSERT_EQ(liste.code, 0) << liste.bericht().toStdString();
  QSet<QString> dateien;
  for (const QString& z : liste.aus.split('\n', Qt::SkipEmptyParts)) dateien.insert(z.section(' ', -1));
  QStringList erwartet = {"./usr/share/kolvane/txtPrefix.txt", "./usr/share/kolvane/frei2.sld",
                          "./usr/share/applications/kolvane.desktop",
                          "./usr/share/icons/hicolor/scalable/apps/kolvane.svg"};
  for (const QString& p : kProgramme) erwartet << "./usr/bin/" + p;
  for (const QString& s : kIconSizes) erwartet << "./usr/share/icons/hicolor/" + s + "x" + s + "/apps/kolvane.png";
  for (const QString& e : erwartet) EXPECT_TRUE(dateien.contains(e)) << e.toStdString() << " is not in the package";
  for (const QString& p : kProgramme)
    EXPECT_TRUE(dateien.contains("./usr/share/man/man1/" + p + ".1.gz") ||
                dateien.contains("./usr/share/man/man1/" + p + ".1"))
        << "no manual page for " << p.toStdString() << " in the package";

  // Unpacked: the desktop entry is valid, and the program (stripped) still
  // starts and reports its version.
  const QString wurzel = path("root");
  const Lauf auspacken = laufen(dpkgDeb, {"-x", deb, wurzel}, aus);
  ASSERT_EQ(auspacken.code, 0) << auspacken.bericht().toStdString();
  desktopEintragPruefen(wurzel + "/usr/share/applications/kolvane.desktop");
  const Lauf version = laufen(wurzel + "/usr/bin/kolvane", {"--version"}, aus, umgebung(wurzel + "/usr"));
  EXPECT_EQ(version.code, 0) << version.bericht().toStdString();
  EXPECT_EQ(version.aus, "kolvane " KOLVANE_PROJECT_VERSION "\n");
}

}  // namespace
}  // namespace kolvane

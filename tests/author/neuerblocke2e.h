#pragma once
// The fixture of the end-to-end tests of block authoring and of the views:
// the sandbox CAD with a drawing of a line and a circle, bound as the program
// binds it; a library with its browser; the new block command; and the
// checks that read back what landed (library listing, rows, slides, drawing).
#include <gmock/gmock.h>
#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSqlQuery>
#include <QSqlRecord>
#include <cmath>
#include <sys/mount.h>
#include <unistd.h>
#include "commandchannel.h"
#include "connection.h"
#include "dxf.h"
#include "einfuegentest.h"
#include "labels.h"
#include "neuanlagejournal.h"
#include "neuerblock.h"
#include "remotehost.h"
#include "sandboxbridge.h"
#include "sandboxprocess.h"
#include "slidelibrary.h"
#include "slidereader.h"

namespace kolvane {

// The user's part of a run: point A at (10,10), the objects in a window round
// the drawing's line and circle, the frame.
inline const QString kPunktA = QStringLiteral("10,10\n");
inline const QString kAuswahl = QStringLiteral("window -5,-5 65,45\nENTER\n");
inline const QString kRahmen = QStringLiteral("-10,-10\n70,50\n");

class NeuerBlockE2E : public EinfuegenTest {
 protected:
  void SetUp() override {
    EinfuegenTest::SetUp();
    wache_.stop();  // the sandbox bridge bounds every call and wait itself
    settings_->setup.longMehrereEinfuegepkte = 1;
    settings_->setup.longVorschaudiaBeimErzeugen = 1;
    settings_->setup.longAbfrageBlocknameBeimErzeugen = 0;
  }
  void TearDown() override {
    neu_.reset();
    ins_.reset();
    bridge_.reset();
    sb_.reset();
    // Every error line of the host that the test did not name fails it.
    cad_.checkErrorLines();
    cad_.stop();
    EinfuegenTest::TearDown();
  }

  // The sandbox with the user's picks and a drawing of a line and a circle,
  // bound as the program binds it, and the browser on the free slot `pos`.
  void starten(const QString& picks, bool keystroke = false, int pos = 3) {
    const QString socket = path("cad.sock");
    writeFile(path("picks.txt"), picks.toUtf8());
    // The host's language for the whole run (CTest runs these tests on a
    // German and on an English host).
    QStringList mehr{"--history", path("verlauf.txt"), "--language",
                     qgetenv("KOLVANE_HOST_LANGUAGE") == "en" ? "en" : "de"};
    if (keystroke) mehr << "--keystroke";
    ASSERT_TRUE(cad_.start(socket, path("picks.txt"), mehr))
        << cad_.output().toStdString();
    if (keystroke) settings_->fctWertAllgInIniSpeichern("LtTitel1", "Sandbox CAD LT");
    sb_ = std::make_unique<SandboxBridge>();
    bridge_ = sb_->binden(socket, path("daten"), keystroke);
    ASSERT_TRUE(bridge_);
    // The drawing the user works in.
    if (keystroke) {
      ASSERT_TRUE(SendKeys(*bridge_, "._line 0,0 60,0 60,40 \r._circle 30,20 10\r", true));
    } else {
      ASSERT_TRUE(SendCommand(*bridge_, "._line 0,0 60,0 60,40 \r"));
      ASSERT_TRUE(SendCommand(*bridge_, "._circle 30,20 10\r"));
    }
    oeffnen(pos);
    neu_ = std::make_unique<NeuerBlock>(*settings_, *bv_, *bridge_);
    code_ = bv_->aktivierteBlocknummer;
    ASSERT_FALSE(code_.isEmpty());
  }

  // Dialog answers of a run that goes through: the frame kept, the card
  // saved with a value of its own.
  void rahmenBestaetigen() { prompt_->dialogResult("frmBildausschnittAnpassen", 1); }
  void karteSpeichern(const QString& m0 = QStringLiteral("Flansch")) {
    prompt_->dialogResult("frmKarteiDateneingabe", 1,
                          [this, m0] { neu_->kartei()->txtBenennung[0] = m0; });
  }

  // Every file of the library with size and hash, and every row of every table.
  QStringList bestand() {
    QStringList l;
    QDirIterator it(bib_, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
      const QString f = it.next();
      const QFileInfo fi(f);
      QString zeile = QDir(bib_).relativeFilePath(f);
      if (fi.isFile()) {
        zeile += " " + QString::number(fi.size()) + " " +
                 QCryptographicHash::hash(readFile(f), QCryptographicHash::Sha1).toHex();
      }
      l << zeile;
    }
    Connection c;
    EXPECT_TRUE(c.open(db_, Connection::Mode::ReadOnly));
    for (const char* tab : {"tblBlockInfo", "tblOrdner", "tblSeiten", "tblDefMenue", "tblVariationBloecke",
                            "tblMarkierteBloecke"}) {
      QSqlQuery q(c.database());
      EXPECT_TRUE(q.exec(QString("SELECT * FROM %1 ORDER BY Nr").arg(tab)));
      while (q.next()) {
        QStringList werte;
        for (int i = 0; i < q.record().count(); ++i) werte << q.value(i).toString();
        l << QString(tab) + ": " + werte.join('|');
      }
    }
    l.sort();
    return l;
  }

  QVariant wert(const QString& spalte) {
    Connection c;
    EXPECT_TRUE(c.open(db_, Connection::Mode::ReadOnly));
    return c.scalar("SELECT " + spalte + " FROM tblBlockInfo WHERE Block = ?", {code_});
  }

  // The drawing as the sandbox holds it now.
  sandbox::Drawing zeichnungLesen(bool keystroke = false) {
    sandbox::Drawing d;
    const QString datei = path("alles.dwg");
    if (keystroke) {
      EXPECT_TRUE(SendKeys(*bridge_, "._-wblock " + datei + "\r*\r", true));
    } else {
      EXPECT_TRUE(sb_->frei());
      EXPECT_TRUE(SendCommand(*bridge_, "._-wblock " + datei + "\r*\r"));
    }
    QString fehler;
    EXPECT_TRUE(sandbox::readDxfFile(datei, d, &fehler)) << fehler.toStdString();
    QFile::remove(datei);
    return d;
  }

  // The newest block reference of a drawing; null when there is none.
  static const sandbox::Entity* letzteReferenz(const sandbox::Drawing& d) {
    const sandbox::Entity* r = nullptr;
    for (const sandbox::Entity& e : d.entities)
      if (e.type == sandbox::EntityType::Insert) r = &e;
    return r;
  }

  // The drawing after the run is the one before it: the line and the circle,
  // and none of the red marks.
  void zeichnungWieVorher(bool keystroke = false) {
    const sandbox::Drawing d = zeichnungLesen(keystroke);
    std::vector<sandbox::EntityType> typen;
    for (const sandbox::Entity& e : d.entities) typen.push_back(e.type);
    EXPECT_EQ(typen, (std::vector<sandbox::EntityType>{sandbox::EntityType::Line, sandbox::EntityType::Line,
                                                        sandbox::EntityType::Circle}));
  }

  // The centre of the red filled areas of a slide of the library, in dots.
  std::optional<QPointF> roterPunkt(const QString& slb, const QString& name) {
    const QByteArray daten = readFile(slb);
    const auto verzeichnis = readSlideLibraryDirectory(daten);
    if (!verzeichnis) return std::nullopt;
    const SlideLibraryEntry* e = findSlideLibraryEntry(*verzeichnis, name);
    if (!e) return std::nullopt;
    const std::optional<Slide> s = readSlide(QByteArrayView(daten).sliced(e->address));
    if (!s) return std::nullopt;
    int farbe = 7;
    double sx = 0, sy = 0;
    int n = 0;
    for (const SlideRecord& r : s->records) {
      if (r.type == SlideRecordType::Color) farbe = r.a;
      if (r.type == SlideRecordType::SolidFill && r.b >= 0 && farbe == 1) {
        sx += r.a;
        sy += r.b;
        ++n;
      }
    }
    if (n == 0) return std::nullopt;
    return QPointF(sx / n, sy / n);
  }

  QString slb() const { return bib_ + "/000/" + code_ + ".slb"; }
  QString dwg() const { return bib_ + "/000/Block/" + code_ + "0.dwg"; }
  QString temp() const { return settings_->strVerzeichnisTempKolvane(); }

  SandboxProcess cad_{SANDBOX_CAD_EXE};
  std::unique_ptr<SandboxBridge> sb_;
  std::unique_ptr<NeuerBlock> neu_;
  QString code_;
};

}  // namespace kolvane

#include <QDir>
#include <QFile>

#include "acadconnect.h"
#include "cadtest.h"
#include "inifile.h"

namespace kolvane {
namespace {

class AcadConnectTest : public CadTest {
 protected:
  int16_t connect(uint8_t nurVersuch = 0, uint8_t ohneMeldung = 0, uint8_t only16 = 0) {
    return ACAD_Connect(*bridge_, nurVersuch, ohneMeldung, only16);
  }
  const AcadVersionInfo& info() const { return bridge_->typAcadVersionInfo; }
  // The eight rows of the title table, each one activation attempt.
  static QStringList titelZeilen() {
    QStringList t;
    for (const QString& z : fctLtTitelTabelle()) t << "appActivate|" + z;
    return t;
  }
  QString box117118() const {
    return "message|Info|" + labels().fctBeschriftMsgboxZuordnen(117) + "\r" +
           labels().fctBeschriftMsgboxZuordnen(118) + "|0|64";
  }
};

TEST_F(AcadConnectTest, FullHostWinsOverLtAndKeepsTheCaptionUpToTheFirstHyphen) {
  desk_.addWindow(20, "AutoCAD LT 2009 - [Plan.dwg]");
  desk_.addWindow(10, "AutoCAD 2014 - [Zeichnung1.dwg]");

  EXPECT_EQ(connect(), -1);

  EXPECT_EQ(bridge_->acadApp, &host_);
  EXPECT_EQ(info().strACadVersion, "AutoCAD 2014");
  EXPECT_EQ(info().strACadTitel, "AutoCAD 2014 ");
  EXPECT_EQ(info().hWnd, 10u);
  EXPECT_FALSE(bridge_->istLT());
  EXPECT_EQ(desk_.transcript,
            QStringList({"appActivate|AutoCAD 2014 - [Zeichnung1.dwg]", "foregroundWindow"}));
  EXPECT_EQ(host_.transcript,
            QStringList({"version", "caption", "name", "version", "documentCount",
                         "activeDocumentWindowTitle", "caption"}));
  EXPECT_TRUE(prompt_->asked.isEmpty());
}

TEST_F(AcadConnectTest, VersionTableComparesFiveCharactersExactly) {
  const QList<QPair<QString, QString>> faelle = {
      {"16.0s (LMS Tech)", "AutoCAD 2004"}, {"16.0sX", "AutoCAD 2004"},
      {"15.0h", "AutoCAD 2000"},            {"15.05.123", "AutoCAD 2000i"},
      {"20.0s (LMS Tech)", "AutoCAD 2015"}, {"17.1s", "AutoCAD 2008"}};
  for (const auto& [version, name] : faelle) {
    host_.versionText = version;
    host_.transcript.clear();
    EXPECT_EQ(connect(), -1) << version.toStdString();
    EXPECT_EQ(info().strACadVersion, name) << version.toStdString();
  }
  EXPECT_TRUE(prompt_->asked.isEmpty());
}

TEST_F(AcadConnectTest, UnknownVersionIsRefusedWithTheBoxOfStepFour) {
  for (const QString& v : {QStringLiteral("21.0s (LMS Tech)"), QStringLiteral("16.0S"),
                           QStringLiteral("16.0")}) {
    prompt_->asked.clear();
    prompt_->answer(Answer::Ok);
    desk_.transcript.clear();
    host_.versionText = v;
    EXPECT_EQ(connect(), 0);
    EXPECT_EQ(bridge_->acadApp, nullptr);
    EXPECT_EQ(prompt_->asked,
              QStringList("message|Info|Kolvane findet nur ein AutoCAD mit der VersionsNr: " + v +
                          "\rBitte melden Sie sich bei der Firma Hesmer Datenwerk|0|64"));
    // No window is tried after a refusal.
    EXPECT_TRUE(desk_.transcript.isEmpty());
  }
}

TEST_F(AcadConnectTest, PlainYear2007FallsToTheTitleRoute) {
  host_.versionText = "2007";
  desk_.addWindow(30, "AutoCAD LT 2007 - [a.dwg]");

  EXPECT_EQ(connect(), -1);

  EXPECT_EQ(bridge_->acadApp, nullptr);  // released
  EXPECT_EQ(info().strACadVersion, "AutoCAD LT");
  EXPECT_EQ(info().strACadTitel, "AutoCAD LT");
  EXPECT_EQ(info().hWnd, 30u);
  EXPECT_TRUE(bridge_->istLT());
  EXPECT_EQ(desk_.transcript, QStringList({"appActivate|AutoCAD LT", "foregroundWindow"}));
  EXPECT_EQ(host_.transcript, QStringList("version"));
}

TEST_F(AcadConnectTest, CaptionWithoutHyphenStaysWholeAndAProductHyphenCutsAtTheFirst) {
  host_.captionText = "AutoCAD 2014";
  desk_.addWindow(10, "AutoCAD 2014");
  EXPECT_EQ(connect(), -1);
  EXPECT_EQ(info().strACadTitel, "AutoCAD 2014");

  host_.captionText = "Mega-CAD 2014 - [Zeichnung1.dwg]";
  EXPECT_EQ(connect(), -1);
  EXPECT_EQ(info().strACadTitel, "Mega");
}

TEST_F(AcadConnectTest, TitleWithTheDrawingInFrontIsFoundOnlyByThePartialSearch) {
  hostLaeuft_ = false;
  desk_.addWindow(5, "Posteingang - Mail");
  desk_.addWindow(40, "Plan.dwg - AutoCAD LT 2009");

  EXPECT_EQ(connect(), -1);

  // Every row of the title table fails; the partial search finds the window
  // and its text, one character short, still activates it by its beginning.
  EXPECT_EQ(desk_.transcript,
            titelZeilen() + QStringList({"topLevelWindows", "appActivate|Plan.dwg - AutoCAD LT 200",
                                         "foregroundWindow"}));
  EXPECT_EQ(info().strACadVersion, "AutoCAD LT");
  EXPECT_EQ(info().strACadTitel, "Plan.dwg - AutoCAD LT 200");
  EXPECT_EQ(info().hWnd, 40u);
  EXPECT_TRUE(prompt_->asked.isEmpty());
}

TEST_F(AcadConnectTest, TitleTableTakesTheFirstRowThatActivates) {
  hostLaeuft_ = false;
  desk_.addWindow(50, "ZWCAD 2012 - [x.dwg]");
  desk_.addWindow(51, "Bricscad Pro V11");
  EXPECT_EQ(connect(), -1);
  EXPECT_EQ(info().strACadTitel, "Bricscad Pro");
  EXPECT_EQ(info().hWnd, 51u);
  EXPECT_EQ(desk_.transcript.last(), "foregroundWindow");
  EXPECT_EQ(desk_.transcript.size(), 8);  // rows 1 to 7, then the handle
}

TEST_F(AcadConnectTest, ConfiguredTitleKeepsItsRowBetweenTheFirstAndTheSeventh) {
  hostLaeuft_ = false;
  settings_->fctWertAllgInIniSpeichern("LtTitel2", "Hausmarke CAD");
  const QStringList t = fctLtTitelTabelle();
  ASSERT_EQ(t.size(), 8);
  EXPECT_EQ(t[0], "AutoCAD LT");
  EXPECT_EQ(t[2], "Hausmarke CAD");
  EXPECT_EQ(t[6], "Bricscad Pro");
  EXPECT_EQ(t[7], "ZWCAD");

  desk_.addWindow(60, "Hausmarke CAD 3 - [a.dwg]");
  desk_.addWindow(61, "ZWCAD");
  EXPECT_EQ(connect(), -1);
  EXPECT_EQ(info().strACadTitel, "Hausmarke CAD");
  EXPECT_EQ(info().hWnd, 60u);
}

TEST_F(AcadConnectTest, WindowListOnlyWithSettingOne) {
  hostLaeuft_ = false;
  desk_.addWindow(7, "Editor - notiz.txt");
  desk_.addWindow(8, "Hidden tool", 0x00800000);  // not visible: never offered
  desk_.addWindow(9, "MeinCAD 5 [plan]");

  // Without the setting: straight to the failure box.
  prompt_->answer(Answer::Ok).answer(Answer::Ok);
  EXPECT_EQ(connect(), 0);
  EXPECT_EQ(prompt_->asked, QStringList(box117118()));

  // Any value other than "1" is the same.
  IniSetValue(settings_->strIniDateiVerzeichnis, "MsgboxAnzeigen", "AutoCadTitel", "0");
  prompt_->asked.clear();
  EXPECT_EQ(connect(), 0);
  EXPECT_EQ(prompt_->asked, QStringList(box117118()));

  // With "1" the user picks the host's window from the list.
  IniSetValue(settings_->strIniDateiVerzeichnis, "MsgboxAnzeigen", "AutoCadTitel", "1");
  prompt_->asked.clear();
  desk_.transcript.clear();
  prompt_->pickIndex(1);
  EXPECT_EQ(connect(), -1);
  EXPECT_EQ(prompt_->asked, QStringList("pick|Kolvane|Editor - notiz.tx;MeinCAD 5 [plan"));
  EXPECT_EQ(info().strACadVersion, "AutoCAD LT");
  EXPECT_EQ(info().strACadTitel, "MeinCAD 5 [plan");
  EXPECT_EQ(info().hWnd, 9u);
  EXPECT_EQ(desk_.transcript.mid(desk_.transcript.size() - 2),
            QStringList({"appActivate|MeinCAD 5 [plan", "foregroundWindow"}));

  // A cancelled list falls through to the box.
  prompt_->asked.clear();
  prompt_->cancel().answer(Answer::Ok);
  EXPECT_EQ(connect(), 0);
  EXPECT_EQ(prompt_->asked.size(), 2);
  EXPECT_EQ(prompt_->asked[1], box117118());
}

TEST_F(AcadConnectTest, NoHostWithoutMessageAndTheTrialCall) {
  hostLaeuft_ = false;
  EXPECT_EQ(connect(0, 1), 0);
  EXPECT_TRUE(prompt_->asked.isEmpty());
  // A mere trial returns as it started when no automation answers.
  desk_.transcript.clear();
  EXPECT_EQ(connect(1, 0), -1);
  EXPECT_TRUE(desk_.transcript.isEmpty());
}

TEST_F(AcadConnectTest, OnlyAutoCadSixteenActivatesTheTitleAutoCad) {
  desk_.addWindow(70, "AutoCAD 2004 - [a.dwg]");
  EXPECT_EQ(connect(0, 0, 1), -1);
  EXPECT_EQ(info().strACadVersion, "AutoCAD");
  EXPECT_EQ(info().strACadTitel, "AutoCAD");
  EXPECT_EQ(bridge_->acadApp, nullptr);
  EXPECT_TRUE(host_.transcript.isEmpty());
  EXPECT_EQ(desk_.transcript, QStringList({"appActivate|AutoCAD", "foregroundWindow"}));
}

TEST(FensterTitelPruefen, StyleTextAndMatchRules) {
  auto w = [](const QString& t, uint32_t style = 0x10C00000) {
    DesktopWindow d;
    d.title = t;
    d.style = style;
    return d;
  };
  EXPECT_EQ(fctFensterTitelPruefen(w("AutoCAD LT 2009"), "AutoCAD LT"), "AutoCAD LT 200");
  EXPECT_EQ(fctFensterTitelPruefen(w("plan - autocad lt 2009"), "AutoCAD LT"),
            "plan - autocad lt 200");
  EXPECT_EQ(fctFensterTitelPruefen(w("AutoCAD LT 2009", 0x10000000), "AutoCAD LT"), "");
  EXPECT_EQ(fctFensterTitelPruefen(w("AutoCAD LT 2009", 0x00800000), "AutoCAD LT"), "");
  EXPECT_EQ(fctFensterTitelPruefen(w(""), ""), "");
  EXPECT_EQ(fctFensterTitelPruefen(w("Notes"), ""), "Note");
  // The search text must lie within the shortened text.
  EXPECT_EQ(fctFensterTitelPruefen(w("Plan AutoCAD LT"), "AutoCAD LT"), "");
}

// ---------------------------------------------------------------------------

TEST_F(AcadConnectTest, LayerPropertiesAndCreation) {
  automationGebunden();
  HostLayer l;
  l.name = "Wasser";
  l.color = 5;
  l.linetype = "DASHED";
  host_.layerList << l;
  QString farbe, linie;
  EXPECT_TRUE(fctAcadLayerEigenschaften(*bridge_, "Wasser", farbe, linie));
  EXPECT_EQ(farbe, "5");
  EXPECT_EQ(linie, "DASHED");
  EXPECT_FALSE(fctAcadLayerEigenschaften(*bridge_, "Gas", farbe, linie));
  EXPECT_FALSE(host_.failed());

  host_.transcript.clear();
  fctAcadLayerAnlegen(*bridge_, "Gas", "", "");
  fctAcadLayerAnlegen(*bridge_, "Strom", "3abc", "GIBTESNICHT");
  EXPECT_EQ(host_.transcript,
            QStringList({"addLayer|Gas", "setLayerColor|Gas|7", "setLayerLinetype|Gas|Continuous",
                         "addLayer|Strom", "setLayerColor|Strom|3",
                         "setLayerLinetype|Strom|GIBTESNICHT"}));
  // A refused value leaves the layer in place and no error behind.
  host_.failing << "setLayerLinetype";
  fctAcadLayerAnlegen(*bridge_, "Heizung", "1", "FEHLT");
  EXPECT_FALSE(host_.failed());
  EXPECT_TRUE(fctAcadLayerEigenschaften(*bridge_, "Heizung", farbe, linie));
  EXPECT_EQ(linie, "Continuous");
}

TEST_F(AcadConnectTest, LayerListKeepsZeroOnlyWhenNothingQualifies) {
  automationGebunden();
  QStringList ary;
  fctAcadLayerListe(*bridge_, ary, 0);
  EXPECT_EQ(ary, QStringList("0"));
  HostLayer a, b, c;
  a.name = "A";
  b.name = "B";
  b.on = false;
  c.name = "C";
  host_.layerList = {a, b, c};
  fctAcadLayerListe(*bridge_, ary, 0);
  EXPECT_EQ(ary, QStringList({"A", "B", "C"}));
  fctAcadLayerListe(*bridge_, ary, 1);
  EXPECT_EQ(ary, QStringList({"A", "C"}));
  host_.layerList = {b};
  fctAcadLayerListe(*bridge_, ary, 1);
  EXPECT_EQ(ary, QStringList("0"));
}

TEST_F(AcadConnectTest, OpenAndCloseDocuments) {
  automationGebunden();
  EXPECT_TRUE(fctAcadDokOeffnen(*bridge_, "/bib/000/Block/0001AAA0.dwg", 1));
  fctAcadDokSchliessen(*bridge_, false, "", 1);
  fctAcadDokSchliessen(*bridge_, true, "/tmp/neu.dwg", 0);
  EXPECT_EQ(host_.only({"openDocument", "closeDocument"}),
            QStringList({"openDocument|/bib/000/Block/0001AAA0.dwg",
                         "closeDocument|0|/bib/000/Block/0001AAA0.dwg",
                         "closeDocument|1|/tmp/neu.dwg"}));
  // Nothing kept: nothing to close.
  host_.transcript.clear();
  fctAcadDokSchliessen(*bridge_, false, "", 1);
  EXPECT_TRUE(host_.only({"closeDocument"}).isEmpty());

  host_.failing << "openDocument" << "closeDocument";
  EXPECT_FALSE(fctAcadDokOeffnen(*bridge_, "/x.dwg", 0));
  fctAcadDokSchliessen(*bridge_, false, "", 0);
  EXPECT_FALSE(host_.failed());
}

TEST_F(AcadConnectTest, SearchPathOrderDrawingHostSupport) {
  automationGebunden();
  QDir().mkpath(path("dwg"));
  QDir().mkpath(path("acad"));
  QDir().mkpath(path("support1"));
  QDir().mkpath(path("support2"));
  writeFile(path("support2/lman.lsp"), "x");
  writeFile(path("support1/LMAN.LSP"), "x");
  host_.variables["DWGPREFIX"] = path("dwg") + "/";
  host_.pathText = path("acad");
  host_.supportPathText = path("nichtda") + ";" + path("support1") + ";" + path("support2");

  // A name that differs only in case is found where the exact one is missing.
  EXPECT_EQ(fctDateiImAcadSuchpfad(*bridge_, "lman.lsp"), path("support1") + "/LMAN.LSP");
  writeFile(path("acad/lman.lsp"), "x");
  EXPECT_EQ(fctDateiImAcadSuchpfad(*bridge_, "lman.lsp"), path("acad") + "/lman.lsp");
  writeFile(path("dwg/lman.lsp"), "x");
  EXPECT_EQ(fctDateiImAcadSuchpfad(*bridge_, "lman.lsp"), path("dwg") + "/lman.lsp");
  EXPECT_EQ(fctDateiImAcadSuchpfad(*bridge_, "fehlt.lsp"), "");

  host_.documents = 0;
  EXPECT_EQ(fctDateiImAcadSuchpfad(*bridge_, "lman.lsp"), "");
  host_.documents = 1;
  hostLaeuft_ = false;
  EXPECT_EQ(fctDateiImAcadSuchpfad(*bridge_, "lman.lsp"), "");
}

}  // namespace
}  // namespace kolvane

#include "acadconnect.h"

#include <QDir>
#include <QFileInfo>
#include <QWidget>

#include "cadbridge.h"
#include "desktop.h"
#include "diagnostics.h"
#include "host.h"
#include "inifile.h"
#include "labels.h"
#include "msgbox.h"
#include "settings.h"

namespace kolvane {

namespace {

constexpr uint32_t kSichtbarMitRahmen = 0x10800000;  // WS_VISIBLE | WS_BORDER

// Built-in titles of rows 2 to 6; a site names its own products in the settings.
const char* const kLtTitelVorgabe[5] = {"AutoCAD OEM", "ACADLT", "AutoCAD LT OEM", "CAD LT",
                                        "LTCAD"};

QString settingAllg(const QString& key) {
  const Settings* s = currentSettings();
  return s ? s->allg(key) : QString();
}

// The host is taken as it answers: the first activation that succeeded decides
// the window handle for the rest of the run.
void ltGebunden(CadBridge& b, const QString& titel) {
  b.typAcadVersionInfo.strACadVersion = QStringLiteral("AutoCAD LT");
  b.typAcadVersionInfo.hWnd = b.desktop->foregroundWindow();
  b.typAcadVersionInfo.strACadTitel = titel;
  b.typAcadVersionInfo.bytVerbunden = 1;
}

// A file in a directory; on a file system that tells case apart, a name that
// differs only in case is found too (libraries and hosts from Windows).
QString dateiInVerzeichnis(QString dir, const QString& name) {
  if (dir.isEmpty()) return {};
  if (!dir.endsWith('/') && !dir.endsWith('\\')) dir += '/';
  dir.replace('\\', '/');
  const QString genau = dir + name;
  if (QFileInfo(genau).isFile()) return genau;
  const QDir d(dir);
  if (!d.exists()) return {};
  for (const QString& e : d.entryList(QDir::Files | QDir::Hidden, QDir::Name))
    if (e.compare(name, Qt::CaseInsensitive) == 0) return dir + e;
  return {};
}

// Val(): the leading integer of a text, 0 when there is none.
int val(const QString& s) {
  const QString t = s.trimmed();
  int i = 0;
  if (i < t.size() && (t[i] == '-' || t[i] == '+')) ++i;
  while (i < t.size() && t[i].isDigit()) ++i;
  bool ok = false;
  const int v = t.left(i).toInt(&ok);
  return ok ? v : 0;
}

}  // namespace

const QList<AcadVersionZeile>& acadVersionTabelle() {
  static const QList<AcadVersionZeile> tabelle = {
      {"15.0h", "AutoCAD 2000"}, {"15.05", "AutoCAD 2000i"}, {"15.06", "AutoCAD 2002"},
      {"16.0s", "AutoCAD 2004"}, {"16.1s", "AutoCAD 2005"},  {"16.2s", "AutoCAD 2006"},
      {"17.0s", "AutoCAD 2007"}, {"17.1s", "AutoCAD 2008"},  {"17.2s", "AutoCAD 2009"},
      {"18.0s", "AutoCAD 2010"}, {"18.1s", "AutoCAD 2011"},  {"18.2s", "AutoCAD 2012"},
      {"19.0s", "AutoCAD 2013"}, {"19.1s", "AutoCAD 2014"},  {"20.0s", "AutoCAD 2015"}};
  return tabelle;
}

QStringList fctLtTitelTabelle() {
  QStringList t{QStringLiteral("AutoCAD LT")};
  for (int i = 0; i < 5; ++i) {
    const QString eigener = settingAllg(QStringLiteral("LtTitel") + QString::number(i + 1));
    t << (eigener.isEmpty() ? QString::fromLatin1(kLtTitelVorgabe[i]) : eigener);
  }
  t << QStringLiteral("Bricscad Pro") << QStringLiteral("ZWCAD");
  return t;
}

int16_t ACAD_Start(CadBridge& b, uint8_t bytNurVerbinden) {
  Trace t(QStringLiteral("ACAD_Start"));
  QString fehler;
  b.acadApp = b.hostGetObject ? b.hostGetObject(&fehler) : nullptr;
  if (!b.acadApp && bytNurVerbinden != 1 && b.hostCreateObject) {
    t.step(QStringLiteral("CreateObject"));
    b.acadApp = b.hostCreateObject(&fehler);
  }
  if (!b.acadApp && !fehler.isEmpty()) t.step(QStringLiteral("Fehler: ") + fehler);
  return b.acadApp ? -1 : 0;
}

int16_t ACAD_Connect(CadBridge& b, uint8_t bytNurVersuch, uint8_t bytOhneMeldung,
                     uint8_t& booOnlyAutoCAD16) {
  Trace t(QStringLiteral("ACAD_Connect"));
  int16_t ergebnis = -1;
  AcadVersionInfo& info = b.typAcadVersionInfo;
  Desktop& d = *b.desktop;

  // 1. Start unbound; the title-only case skips the automation.
  b.acadApp = nullptr;
  if (booOnlyAutoCAD16 != 1) {
    // 2. A running host with automation.
    t.step(QStringLiteral("GetObject"));
    QString fehler;
    Host* app = b.hostGetObject ? b.hostGetObject(&fehler) : nullptr;
    if (!app) {
      t.step(QStringLiteral("Fehler: ") + fehler + QStringLiteral("; Nr.: 429"));
      if (bytNurVersuch == 1) return ergebnis;
    } else {
      b.acadApp = app;
      // 3. The version table, on five characters.
      const QString version = app->version();
      app->clearError();
      const QString fuenf = version.left(5);
      const AcadVersionZeile* treffer = nullptr;
      for (const AcadVersionZeile& z : acadVersionTabelle())
        if (fuenf == QLatin1String(z.praefix)) {
          treffer = &z;
          break;
        }
      if (treffer) {
        info.strACadVersion = QString::fromLatin1(treffer->name);
        const QString caption = app->caption();
        app->clearError();
        info.strACadTitel = caption;
        d.appActivate(caption);
        info.hWnd = d.foregroundWindow();
        // 5. The part before the first "-" finds the window whatever drawing is open.
        info.strACadTitel = caption.split('-').first();
        t.step(QStringLiteral("strACadTitel: ") + info.strACadTitel);
        app->name();
        app->version();
        app->documentCount();
        app->activeDocumentWindowTitle();
        app->caption();
        app->clearError();
        return -1;
      }
      // 4. A host that registers the automation name but reports a plain year
      //    is driven by its window; anything else is refused.
      if (version == QLatin1String("2007") || version == QLatin1String("2008")) {
        t.step(QStringLiteral("Version ") + version + QStringLiteral(": Titelsuche"));
        b.acadApp = nullptr;
      } else {
        MessageRequest r;
        r.title = QStringLiteral("Info");
        r.text = QStringLiteral("Kolvane findet nur ein AutoCAD mit der VersionsNr: ") + version +
                 QStringLiteral("\rBitte melden Sie sich bei der Firma Hesmer Datenwerk");
        r.icon = Icon::Information;
        prompt().message(r);
        b.acadApp = nullptr;
        return 0;
      }
    }
  } else {
    // 6. Only the window titled "AutoCAD".
    t.step(QStringLiteral("AppActivate AutoCAD"));
    if (d.appActivate(QStringLiteral("AutoCAD"))) {
      info.strACadVersion = QStringLiteral("AutoCAD");
      info.strACadTitel = QStringLiteral("AutoCAD");
      info.hWnd = d.foregroundWindow();
      return -1;
    }
  }

  // 7. The title table of the keystroke route.
  const QStringList titel = fctLtTitelTabelle();
  for (const QString& z : titel) {
    if (z.isEmpty()) continue;
    t.step(QStringLiteral("AppActivate ") + z);
    if (d.appActivate(z)) {
      ltGebunden(b, z);
      return -1;
    }
  }

  // 8. By part of the title: a longer title, with the drawing's name in front.
  t.step(QStringLiteral("fctFensterSucheGenauerTitel"));
  QString gefunden = fctFensterSucheGenauerTitel(b, QStringLiteral("AutoCAD LT"));
  QString neuerTitel = gefunden;
  if (gefunden.isEmpty() && titel.size() > 4 && !titel[4].isEmpty()) {
    gefunden = fctFensterSucheGenauerTitel(b, titel[4]);
    neuerTitel = titel[4];
  }
  if (!gefunden.isEmpty() && d.appActivate(gefunden)) {
    ltGebunden(b, neuerTitel);
    return -1;
  }

  // 9. The user names the window, when the settings offer the list.
  bool aktivierungFehlgeschlagen = false;
  const Settings* s = currentSettings();
  if (s && IniGetValue(s->strIniDateiVerzeichnis, QStringLiteral("MsgboxAnzeigen"),
                       QStringLiteral("AutoCadTitel")) == QLatin1String("1")) {
    QStringList aryTitel;
    if (fctFensterAlleTitel(b, aryTitel) == -1) {
      t.step(QStringLiteral("Übersicht der geöffneten Fenster"));
      const PickResult p = fctAuswahlen(
          aryTitel,
          QStringLiteral("Übersicht der geöffneten Fenster\r\rWählen Sie das AutoCAD-Fenster aus."),
          labels().fctBeschriftFrmZuordnen(kTitelKolvane, LabelSektion::Allg), 7500);
      if (p.index >= 0 && !p.text.isEmpty()) {
        if (d.appActivate(p.text)) {
          ltGebunden(b, p.text);
          return -1;
        }
        aktivierungFehlgeschlagen = true;
      }
    }
  }

  // 10. No host of any kind.
  if (bytOhneMeldung != 1) subMsgboxInfoZweizeilig(117, 118);
  ergebnis = 0;
  if (aktivierungFehlgeschlagen)
    subErrorAllgemein(true, QStringLiteral("ACAD_Connect"),
                      QStringLiteral("Das gewählte Fenster konnte nicht aktiviert werden."), 5);
  return ergebnis;
}

QString fctFensterTitelPruefen(const DesktopWindow& w, const QString& strTitel) {
  if ((w.style & kSichtbarMitRahmen) != kSichtbarMitRahmen) return {};
  if (w.title.isEmpty()) return {};
  // The window text is cut one short of the length it reports; a title found
  // here still activates its window, since activation accepts a beginning.
  const QString text = w.title.left(w.title.size() - 1);
  if (text.startsWith(strTitel) || text.toUpper().contains(strTitel.toUpper())) return text;
  return {};
}

QString fctFensterSucheGenauerTitel(CadBridge& b, const QString& strTitel) {
  for (const DesktopWindow& w : b.desktop->topLevelWindows()) {
    const QString t = fctFensterTitelPruefen(w, strTitel);
    if (!t.isEmpty()) return t;
  }
  return {};
}

int16_t fctFensterAlleTitel(CadBridge& b, QStringList& aryTitel) {
  aryTitel.clear();
  for (const DesktopWindow& w : b.desktop->topLevelWindows()) {
    const QString t = fctFensterTitelPruefen(w, QString());
    if (!t.isEmpty()) aryTitel << t;
  }
  return aryTitel.isEmpty() ? 0 : -1;
}

void fctFensterInDenVordergrund(CadBridge& b, quint64 hWnd, QWidget* frm) {
  b.desktop->setForegroundWindow(hWnd);
  b.desktop->bringWindowToTop(hWnd);
  if (frm) {
    frm->show();
    frm->raise();
  }
}

bool fctAcadLayerEigenschaften(CadBridge& b, const QString& strLayer, QString& strFarbe,
                               QString& strLinie) {
  Trace t(QStringLiteral("fctAcadLayerEigenschaften"));
  if (!b.acadApp) return false;
  const std::optional<HostLayer> l = b.acadApp->layer(strLayer);
  if (!l || b.acadApp->failed()) {
    b.acadApp->clearError();
    return false;
  }
  strFarbe = QString::number(l->color);
  strLinie = l->linetype;
  return true;
}

bool fctLayerWaehlen(CadBridge& b, QString& strLayer, QString& strFarbe, QString& strLinie) {
  Trace t(QStringLiteral("fctLayerWaehlen"));
  if (!b.acadApp) return false;
  QStringList layer;
  fctAcadLayerListe(b, layer, 0);
  if (layer.isEmpty()) {
    subMsgboxInfoEinzeilig(943);
    return false;
  }
  Labels& l = labels();
  const PickResult wahl = fctAuswahlen(layer, l.fctBeschriftMsgboxZuordnen(944),
                                       l.fctBeschriftFrmZuordnen(QStringLiteral("frmKarteiDateneingabe.labLayer")));
  if (wahl.index < 0 || wahl.text.isEmpty()) return false;
  strLayer = wahl.text;
  QString farbe, linie;
  if (fctAcadLayerEigenschaften(b, strLayer, farbe, linie)) {
    strFarbe = farbe;
    strLinie = linie;
  }
  return true;
}

void fctAcadLayerAnlegen(CadBridge& b, const QString& strLayer, const QString& strFarbe,
                         const QString& strLinie) {
  Trace t(QStringLiteral("fctAcadLayerAnlegen"));
  Host* h = b.acadApp;
  if (!h) return;
  // A line type that the drawing lacks leaves the layer with the default: the
  // host's refusal is cleared and not reported.
  t.step(QStringLiteral("Layers.Add ") + strLayer);
  h->addLayer(strLayer);
  h->setLayerColor(strLayer, strFarbe.isEmpty() ? 7 : val(strFarbe));
  h->setLayerLinetype(strLayer, strLinie.isEmpty() ? QStringLiteral("Continuous") : strLinie);
  h->clearError();
}

void fctAcadLayerListe(CadBridge& b, QStringList& aryLayer, uint8_t bytNurEingeschaltete) {
  Trace t(QStringLiteral("fctAcadLayerListe"));
  aryLayer = QStringList{QStringLiteral("0")};
  if (!b.acadApp) return;
  bool erster = true;
  for (const HostLayer& l : b.acadApp->layers()) {
    if (bytNurEingeschaltete == 1 && !l.on) continue;
    if (erster) {
      aryLayer[0] = l.name;
      erster = false;
    } else {
      aryLayer << l.name;
    }
  }
  b.acadApp->clearError();
}

bool fctAcadDokOeffnen(CadBridge& b, const QString& strDatei, uint8_t bytMerken) {
  Trace t(QStringLiteral("fctAcadDokOeffnen"));
  if (!b.acadApp) return false;
  t.step(QStringLiteral("Documents.Open ") + strDatei);
  if (!b.acadApp->openDocument(strDatei)) {
    t.step(QStringLiteral("Fehler: ") + b.acadApp->lastError());
    b.acadApp->clearError();
    return false;
  }
  if (bytMerken == 1) b.strGemerktesDokument = strDatei;
  return true;
}

void fctAcadDokSchliessen(CadBridge& b, bool SaveChanges, const QString& strDatei,
                          uint8_t bytAktivesDok) {
  Trace t(QStringLiteral("fctAcadDokSchliessen"));
  if (!b.acadApp) return;
  bool ok = false;
  if (bytAktivesDok != 1) {
    ok = b.acadApp->closeDocument(SaveChanges, strDatei);
  } else if (!b.strGemerktesDokument.isEmpty()) {
    // The kept drawing is named to the host; a save-as name is only given for
    // the active document.
    ok = b.acadApp->closeDocument(SaveChanges, b.strGemerktesDokument);
  } else {
    t.step(QStringLiteral("Fehler: kein gemerktes Dokument"));
    return;
  }
  b.strGemerktesDokument.clear();
  if (!ok || b.acadApp->failed()) {
    t.step(QStringLiteral("Fehler: ") + b.acadApp->lastError());
    b.acadApp->clearError();
  }
}

QString fctDateiImAcadSuchpfad(CadBridge& b, const QString& strDatei) {
  Trace t(QStringLiteral("fctDateiImAcadSuchpfad"));
  ACAD_Start(b, 1);
  Host* h = b.acadApp;
  if (!h) return {};
  if (h->documentCount() == 0) {
    h->clearError();
    return {};
  }
  QStringList orte;
  orte << h->getVariable(QStringLiteral("DWGPREFIX")).toString() << h->path();
  for (const QString& p : h->supportPath().split(';')) orte << p.trimmed();
  h->clearError();
  for (const QString& ort : orte) {
    const QString f = dateiInVerzeichnis(ort, strDatei);
    if (!f.isEmpty()) {
      t.step(QStringLiteral("gefunden: ") + f);
      return f;
    }
  }
  return {};
}

bool fctDateiExistiert(const QString& strDatei) {
  QString p = strDatei;
  while (!p.isEmpty() && p.front().isSpace()) p.remove(0, 1);
  if (p.isEmpty()) return false;
  return QFileInfo::exists(p);
}

}  // namespace kolvane

#include "erweitertessetup.h"

#include <QDir>
#include <QFileInfo>

#include "bibliothek.h"
#include "diagnostics.h"
#include "formtexte.h"
#include "inifile.h"
#include "labels.h"
#include "msgbox.h"
#include "paths.h"
#include "prompt.h"
#include "schema.h"
#include "settings.h"
#include "slidecolors.h"

namespace kolvane {

namespace {

const QString kForm = QStringLiteral("frmErweitertesSetup");

QStringList ohneLeere(const QStringList& l) {
  QStringList r;
  for (const QString& p : l)
    if (!p.isEmpty()) r << p;
  return r;
}

// Library paths compare as the store compares them: without case, with either
// separator.
bool gleich(const QString& a, const QString& b) {
  return QDir::cleanPath(QDir::fromNativeSeparators(a))
             .compare(QDir::cleanPath(QDir::fromNativeSeparators(b)), Qt::CaseInsensitive) == 0;
}

}  // namespace

ErweitertesSetup::ErweitertesSetup(Settings& settings) : settings_(settings) {
  datenbanken_ = ohneLeere(settings_.aryVerzeichnisseDatenbank);
  for (int i = 0; i < datenbanken_.size(); ++i)
    if (gleich(datenbanken_[i], settings_.strAktuelleDatenbank)) auswahl = i;
  if (auswahl < 0 && !datenbanken_.isEmpty()) auswahl = 0;

  const int n = settings_.setup.longAnzahlDerBilder;
  comboxBilderanzahl = n >= 0 && n < bilderanzahlEintraege().size() ? n : 4;
  bilderanzahlAlt_ = n;

  bool ok = false;
  const long bk = settings_.allg(QStringLiteral("sBkColor")).trimmed().toLong(&ok);
  hintergrund_ = ok ? colorFromBgr(bk) : QColor();
  hintergrundAlt_ = hintergrund_;

  sprachen_ = Labels::subCboSprachenEinlesen(settings_.labelDir());
  sprache = settings_.strSprache.trimmed().isEmpty() ? QStringLiteral("deutsch") : settings_.strSprache.trimmed();
  spracheAlt_ = sprache;
}

const QStringList& ErweitertesSetup::bilderanzahlEintraege() {
  static const QStringList l = {"4", "9", "16", "20a", "20b", "36a", "36b", "72"};
  return l;
}

long ErweitertesSetup::bgrVonFarbe(const QColor& c) {
  return long(c.red()) | long(c.green()) << 8 | long(c.blue()) << 16;
}

bool ErweitertesSetup::istAktuell(int zeile) const {
  return zeile >= 0 && zeile < datenbanken_.size() &&
         gleich(datenbanken_[zeile], settings_.strAktuelleDatenbank);
}

bool ErweitertesSetup::istGelistet(const QString& pfad) const {
  for (const QString& p : datenbanken_)
    if (gleich(p, pfad)) return true;
  return false;
}

bool ErweitertesSetup::cmbDatenbankHinzufuegen_Click() {
  const QString dir = prompt().chooseFolder(fctFormBeschriftung(kForm, QStringLiteral("TitelHinzufuegen")),
                                            settings_.strVerzeichnisVorgabe);
  if (dir.isEmpty()) return false;
  return hinzufuegen(dir);
}

bool ErweitertesSetup::hinzufuegen(const QString& verzeichnisOderDatei) {
  Trace t(QStringLiteral("frmErweitertesSetup.hinzufuegen"));
  const QFileInfo fi(verzeichnisOderDatei);
  QString pfad = fi.isDir() ? QDir(verzeichnisOderDatei).filePath(dbDateiName()) : verzeichnisOderDatei;
  pfad = QDir::cleanPath(fctDateiFinden(pfad));
  QString grund;
  if (!Bibliothek::fctTestDb(pfad, &grund)) {
    fctDateiMeldung(kMeldungKeineBibliothek, verzeichnisOderDatei, grund, kMeldungListeBleibt);
    return false;
  }
  if (istGelistet(pfad)) {
    fctDateiMeldung(kMeldungSchonInListe, pfad, QString(), kMeldungListeBleibt);
    return false;
  }
  datenbanken_ << QDir::toNativeSeparators(pfad);
  auswahl = int(datenbanken_.size()) - 1;
  return true;
}

bool ErweitertesSetup::cmdLoeschen_Click() {
  if (auswahl < 0 || auswahl >= datenbanken_.size()) return false;
  if (istAktuell(auswahl)) {
    subMsgboxHinweisZweizeilig(kMeldungAktuelleBleibt1, kMeldungAktuelleBleibt2);
    return false;
  }
  datenbanken_.removeAt(auswahl);
  if (auswahl >= datenbanken_.size()) auswahl = int(datenbanken_.size()) - 1;
  return true;
}

bool ErweitertesSetup::nachOben() {
  if (auswahl < 1 || auswahl >= datenbanken_.size()) return false;
  datenbanken_.swapItemsAt(auswahl, auswahl - 1);
  --auswahl;
  return true;
}

bool ErweitertesSetup::nachUnten() {
  if (auswahl < 0 || auswahl + 1 >= datenbanken_.size()) return false;
  datenbanken_.swapItemsAt(auswahl, auswahl + 1);
  ++auswahl;
  return true;
}

bool ErweitertesSetup::cmbDatenbankNeu_Click() {
  Trace t(QStringLiteral("frmErweitertesSetup.cmbDatenbankNeu_Click"));
  if (!hooks.datenbankNeu) return false;
  const QString datei = prompt().saveFile(fctFormBeschriftung(kForm, QStringLiteral("TitelNeu")),
                                          settings_.strVerzeichnisVorgabe,
                                          QStringLiteral("Kolvane (dbKolvane.mdb)|dbKolvane.mdb"),
                                          dbDateiName());
  if (datei.isEmpty()) return false;
  // A library's file always carries its fixed name; the chooser gives the place.
  const QString pfad = QDir(QFileInfo(datei).absolutePath()).filePath(dbDateiName());
  if (istGelistet(pfad)) {
    fctDateiMeldung(kMeldungSchonInListe, pfad, QString(), kMeldungListeBleibt);
    return false;
  }
  if (fctDateiExist(pfad)) {
    fctDateiMeldung(kMeldungDateiBesteht, pfad, QString(), kMeldungListeBleibt);
    return false;
  }
  if (!hooks.datenbankNeu(QDir::toNativeSeparators(pfad))) return false;
  if (!istGelistet(pfad)) datenbanken_ << QDir::toNativeSeparators(pfad);
  for (int i = 0; i < datenbanken_.size(); ++i)
    if (gleich(datenbanken_[i], pfad)) auswahl = i;
  return true;
}

bool ErweitertesSetup::cmbOk_Click() {
  Trace t(QStringLiteral("frmErweitertesSetup.cmbOk_Click"));
  auto nichtGespeichert = [](const QString& was) {
    subErrorAllgemein(true, QStringLiteral("frmErweitertesSetup.cmbOk_Click"),
                      QStringLiteral("nicht gespeichert: ") + was);
  };
  bool anzeige = false;

  if (datenbanken_ != ohneLeere(settings_.aryVerzeichnisseDatenbank)) {
    t.step(QStringLiteral("Bibliotheken"));
    settings_.aryVerzeichnisseDatenbank = datenbanken_;
    settings_.subSpeichernKolvaneIniDatei();
    if (hooks.bibliothekenGeaendert) hooks.bibliothekenGeaendert();
  }

  if (comboxBilderanzahl != bilderanzahlAlt_) {
    t.step(QStringLiteral("Bilderanzahl"));
    settings_.setup.longAnzahlDerBilder = comboxBilderanzahl;
    settings_.SetupInRegistrierdatenbankSpeichern();
    anzeige = true;
  }

  if (hintergrund_ != hintergrundAlt_) {
    t.step(QStringLiteral("sBkColor"));
    const bool ok = hintergrund_.isValid()
                        ? settings_.fctWertAllgInIniSpeichern(QStringLiteral("sBkColor"),
                                                              QString::number(bgrVonFarbe(hintergrund_)))
                        : IniDeleteKey(settings_.strIniDateiVerzeichnis, QStringLiteral("AllgemeineDaten"),
                                       QStringLiteral("sBkColor"));
    if (!ok) nichtGespeichert(QStringLiteral("sBkColor"));
    anzeige = true;
  }

  if (anzeige && hooks.anzeigeGeaendert) hooks.anzeigeGeaendert();

  if (sprache != spracheAlt_) {
    t.step(QStringLiteral("Sprache"));
    if (!settings_.fctWertAllgInIniSpeichern(QStringLiteral("Sprache"), sprache))
      nichtGespeichert(QStringLiteral("Sprache"));
    settings_.strSprache = sprache;
    // Every window is labelled when it is made; the new captions come with the
    // next start.
    subMsgboxInfoZweizeilig(kMeldungSpracheNeustart1, kMeldungSpracheNeustart2);
  }
  return true;
}

}  // namespace kolvane

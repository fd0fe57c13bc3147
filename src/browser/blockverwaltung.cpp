#include "blockverwaltung.h"

#include <QDir>
#include <QFileInfo>

#include "diagnostics.h"
#include "kartendefinition.h"
#include "labels.h"
#include "layout.h"
#include "msgbox.h"
#include "paths.h"
#include "prefix.h"
#include "prompt.h"
#include "recordhelpers.h"
#include "settings.h"
#include "slideaddress.h"
#include "slidecache.h"
#include "slidecolors.h"

namespace kolvane {

namespace {

// Old-format characters in card values, as the Windows edition stored them.
QString altZeichenReparieren(QString s) {
  s.replace(QChar(179), QChar(0xFC));  // ü
  s.replace(QChar(245), QChar(0xE4));  // ä
  s.replace(QChar(247), QChar(0xF6));  // ö
  s.replace(QChar(175), QChar(0xDF));  // ß
  s.replace(QChar(166), QChar(186));
  return s;
}

bool istZahl(const QString& t) {
  if (t.isEmpty()) return false;
  for (QChar c : t)
    if (!c.isDigit()) return false;
  return true;
}

// The commands that follow the active slot: on for a block, off for a free slot.
const QStringList& blockBefehle() {
  static const QStringList l = {"cmbEinfuegen",     "combutLoeschen",     "mnuBBlockEinfuegen",
                                "mnuBBlockLoeschen", "mnuBVarianten",     "mnuFAusschneiden",
                                "mnuZKopieren",     "mnuBBlockBearbeiten", "mnuBBlockOeffnen"};
  return l;
}
// Off for a block (a slot takes one block), on for a free slot.
const QStringList& freiBefehle() {
  static const QStringList l = {"combutNeu", "mnuBBlockNeu", "mnuFEinfuegen", "mnuFEinfuegen2"};
  return l;
}
// On in both cases: their dialogs check their own conditions.
const QStringList& seitenBefehle() {
  static const QStringList l = {"mnuZSeiteAusschneiden", "mnuZSeiteEinfuegen",
                                "mnuBZwischenspeicher", "mnuZ2Seitenverwaltung",
                                "mnuFAusschneiden2"};
  return l;
}

}  // namespace

Blockverwaltung::Blockverwaltung(Settings& settings, Bibliothek& bibliothek)
    : settings_(settings), lib_(bibliothek) {
  grid_ = gridForSetting(settings_.setup.longAnzahlDerBilder);
  intBilder = grid_.intBilder;
}

QString Blockverwaltung::strSlideSpeicherInSlbOderSld() const {
  return istLT() ? QStringLiteral(".sld") : QStringLiteral(".slb");
}

QString Blockverwaltung::frei2() const {
  // Looked up once: every free slot of every page shows it.
  if (frei2_.isEmpty())
    frei2_ = fctDateiFinden(QDir(settings_.programDir()).filePath(QStringLiteral("frei2.sld")));
  return frei2_;
}

QColor Blockverwaltung::slideHintergrund() const {
  // sBkColor, stored by the Windows edition as BGR; invalid leaves the default.
  bool ok = false;
  const long v = settings_.allg(QStringLiteral("sBkColor")).toLong(&ok);
  return ok ? colorFromBgr(v) : QColor();
}

QString Blockverwaltung::slideFehler(const QString& adresse) const {
  if (adresse.isEmpty()) return {};
  // The shared cache the thumbnails draw from: a slide read for the page is
  // not read again, and a damaged one is remembered as such.
  if (SlideCache::instance().slide(adresse)) return {};
  const QString datei = findFileIgnoringCase(parseSlideAddress(adresse).file);
  const QString grund = labels().fctBeschriftFrmZuordnen(
      datei.isEmpty() ? QStringLiteral("frmBlockverwaltung.DiaFehlt") : QStringLiteral("frmBlockverwaltung.DiaDefekt"));
  // The file's name (and the slide's in a library) is enough to find it.
  QString name = adresse;
  name.replace(QLatin1Char('\\'), QLatin1Char('/'));
  return grund + QStringLiteral(": ") + name.section(QLatin1Char('/'), -1);
}

QString Blockverwaltung::slideAdresse(const QString& slideLib, const QString& slideName) const {
  const QString datei = fctSlideLibPfad(lib_.VerzeichnisOhneDb, slideLib);
  // A plain slide ends in "sld" (exact case, as stored); anything else is a library.
  if (slideLib.right(3) == QLatin1String("sld")) return datei;
  return fctSlideAdresse(datei, slideName);
}

void Blockverwaltung::subBilderanzahlFestlegen() {
  grid_ = gridForSetting(settings_.setup.longAnzahlDerBilder);
  if (grid_.corrected) settings_.setup.longAnzahlDerBilder = 4;
  intBilder = grid_.intBilder;
}

// ---------------------------------------------------------------- slots

bool Blockverwaltung::fctPrefixEinlesen(int32_t obergrenze) {
  if (!kolvane::fctPrefixEinlesen(obergrenze, aryPrefix)) {
    aryPrefix.clear();
    return false;
  }
  aryPrefix2 = aryPrefix;
  return true;
}

bool Blockverwaltung::istVorDerSeite(int32_t i) const {
  return i < int32_t(aryPrefix.size()) - 1 - (intBilder - 1);
}

bool Blockverwaltung::slideDateiFehlt(const QString& slideLib) const {
  const QString datei = fctSlideLibPfad(lib_.VerzeichnisOhneDb, slideLib);
  return !fctDateiExist(datei);
}

// A block whose slide is gone is removed on sight, but only where that can't
// be a passing fault: the library and the folder's directory are reachable, the
// library is writable, and the slide is missing also without regard to case.
bool Blockverwaltung::zeileLoeschenAufSicht(const QString& slideLib) {
  const QString ordner = QDir(lib_.VerzeichnisOhneDb).filePath(lib_.strAktuelleOrdnerNr);
  if (!QFileInfo(lib_.VerzeichnisOhneDb).isDir() || !fctDateiExist(ordner)) return false;
  if (lib_.booSchreibgeschuetzt) return false;
  if (!slideDateiFehlt(slideLib)) return false;
  const QVariant nr = lib_.rsBlockInfo0.value(QStringLiteral("Nr"));
  if (!lib_.connDb.execute(QStringLiteral("DELETE FROM tblVariationBloecke WHERE BlockID = ?"), {nr}))
    return false;
  if (!lib_.rsBlockInfo0.Delete()) {
    subErrorAllgemein(true, QStringLiteral("BlocknummernEinlesen"), lib_.rsBlockInfo0.lastError());
    return false;
  }
  return true;
}

void Blockverwaltung::BlocknummernEinlesen(int32_t i) {
  Trace t(QStringLiteral("BlocknummernEinlesen"));
  if (i < 0) return;
  if (size_t(i) >= aryTBloecke.size()) aryTBloecke.resize(size_t(i) + 1);
  if (i >= aryPrefix.size()) return;  // the suffix table could not be read
  const QString code = fctBlockCode(lib_.strAktuelleOrdnerNr, i, aryPrefix);
  TBlock& slot = aryTBloecke[size_t(i)];
  slot.Block = code;
  if (istVorDerSeite(i)) return;  // before the page: only the code is needed

  // 1./2. The picture of the slot, its marking box cleared.
  const int index = i - s1 * intBilder;
  aktivierteBlocknummer = code;
  if (index >= 0 && size_t(index) < slotSlides_.size()) slotMarked_[size_t(index)] = false;

  // 3.-7. The block's row, its text and its slide.
  Recordset& rs = lib_.rsBlockInfo0;
  const bool gefunden = fctRsFind(rs, QStringLiteral("Block"), code);
  QString slide = frei2();
  if (gefunden) {
    slot.Benennung = altZeichenReparieren(rs.text(QStringLiteral("M0")));
    slot.BlkName0 = rs.text(QStringLiteral("BlkName0"));
    const QString slideLib = rs.text(QStringLiteral("SlideLib"));
    if (slideDateiFehlt(slideLib) && zeileLoeschenAufSicht(slideLib)) {
      t.step(QStringLiteral("Slide fehlt, Zeile gelöscht: ") + code);
      slot.Benennung = kFrei;
      slot.BlkName0.clear();
    } else {
      slide = slideAdresse(slideLib);
    }
  } else {
    slot.Benennung = kFrei;
    slot.BlkName0.clear();
  }
  // 8. Marks.
  bool markiert = false;
  if (markierenAn && lib_.bytRsMarkierteBloeckeOkGleich1 == 1 && slot.Benennung != kFrei) {
    markiert = fctRsFind(lib_.rsMarkierteBloecke, QStringLiteral("BlockNr"), code);
  }
  if (index >= 0 && size_t(index) < slotSlides_.size()) {
    slotSlides_[size_t(index)] = slide;
    slotMarked_[size_t(index)] = markiert;
  }
  // 9. The list entry.
  lisBlockBenennung << slot.Benennung;
  bytBlocknummernEingelesen_ = true;
}

void Blockverwaltung::ArrayTBloeckeNeuEinlesenBeiOrdnerwechsel(const QString& ordnerNr) {
  const int32_t letzter = intBilder * (s1 + 1) - 1;
  fctPrefixEinlesen(letzter);
  lib_.strAktuelleOrdnerNr = ordnerNr;
  aryTBloecke.assign(size_t(letzter) + 1, TBlock{});
  lisBlockBenennung.clear();
  slotSlides_.assign(size_t(intBilder), frei2());
  slotMarked_.assign(size_t(intBilder), false);
  slideFehlerDerSeite_.clear();
  for (int32_t i = s1 * intBilder; i <= letzter; ++i) BlocknummernEinlesen(i);
}

void Blockverwaltung::subSeitenwechselSequenz() {
  intBilder2 = intBilder * (s1 + 1);
  fctPrefixEinlesen(intBilder2 - 1);
  aryTBloecke.assign(size_t(intBilder2) + 1, TBlock{});
  lisBlockBenennung.clear();
  slotSlides_.assign(size_t(intBilder), frei2());
  slotMarked_.assign(size_t(intBilder), false);
  slideFehlerDerSeite_.clear();
  for (int32_t i = 0; i < aryPrefix.size(); ++i) BlocknummernEinlesen(i);
  Anzeigen();
}

// ---------------------------------------------------------------- folders

void Blockverwaltung::comboxOrdner_Click(const QString& text) {
  Trace t(QStringLiteral("comboxOrdner_Click"));
  // 1. The same folder: nothing is reloaded, unless the search results ask for a page.
  if (text == lib_.strAktuellerOrdnerName) {
    if (byteGeheZuVonSuchergebnis == 1) {
      s1 = int16_t(qMax(0, suchergebnisSeite - 1));
      pos = suchergebnisPos;
      subSeitenwechselSequenz();
      byteGeheZuVonSuchergebnis = 0;
    }
    return;
  }
  // 2. Find the folder by its name: the search matches a prefix, so the name is compared.
  Recordset& ro = lib_.rsOrdner;
  bool gefunden = false;
  if (ro.isOpen() && ro.RecordCount() > 0) {
    ro.MoveFirst();
    while (ro.Find(QStringLiteral("OrdnerName Like '") + text + "%'")) {
      QString name = ro.text(QStringLiteral("OrdnerName"));
      const int nul = name.indexOf(QChar(0));
      if (nul >= 0) name.truncate(nul);
      if (name == text) {
        gefunden = true;
        break;
      }
      ro.MoveNext();
      if (ro.isEOF()) break;
    }
  }
  if (!gefunden) {
    fctMsgboxAnzeigen({37}, kTitelKolvane, Buttons::Ok, Icon::Information);
    return;
  }
  // 3./4. The folder becomes current; its blocks and pages are read.
  const QString ordnerNr = ro.text(QStringLiteral("OrdnerNr"));
  lib_.strAktuellerOrdnerName = ro.text(QStringLiteral("OrdnerName"));
  lib_.lngAktuelleOrdnerID = int32_t(ro.value(QStringLiteral("Nr")).toLongLong());
  intAktuellerOrdner = int16_t(lib_.lngAktuelleOrdnerID);
  lib_.strAktuelleOrdnerNr = ordnerNr;
  lib_.subRsBlockInfo0Oeffnen(lib_.lngAktuelleOrdnerID);
  if (lib_.rsBlockInfo0.RecordCount() > 0 && !lib_.fctSlideLibPfadeRelativ()) {
    lib_.fctPfadEintragAendern();
    lib_.subRsBlockInfo0Oeffnen(lib_.lngAktuelleOrdnerID);
  }
  lib_.subRsSeitenOeffnen(lib_.lngAktuelleOrdnerID);
  // 5. The first page, unless the search results name one.
  s1 = 0;
  if (settings_.setup.lonPosSeitenWechsel == 0) pos = 0;
  if (byteGeheZuVonSuchergebnis == 1) {
    s1 = int16_t(qMax(0, suchergebnisSeite - 1));
    pos = suchergebnisPos;
  }
  // 6. Slots and page names.
  if (byteGeheZuVonSuchergebnis == 1)
    subSeitenwechselSequenz();
  else
    ArrayTBloeckeNeuEinlesenBeiOrdnerwechsel(ordnerNr);
  fctSeiteInCboEinlesen();
  // 7.
  Anzeigen();
  byteGeheZuVonSuchergebnis = 0;
}

void Blockverwaltung::OrdnerInArrayEinlesen() {
  Recordset& ro = lib_.rsOrdner;
  tordnerOrdner.clear();
  if (!ro.isOpen() || ro.RecordCount() < 1) return;
  ro.MoveFirst();
  while (!ro.isEOF()) {
    TOrdner o;
    o.OrdnerName = ro.text(QStringLiteral("OrdnerName"));
    o.OrdnerNr = ro.text(QStringLiteral("OrdnerNr")).left(3).leftJustified(3, ' ');
    tordnerOrdner.push_back(o);
    ro.MoveNext();
  }
  ro.MoveFirst();
  ro.Find(QStringLiteral("Nr Like '") + QString::number(lib_.lngAktuelleOrdnerID) + "'");
}

bool Blockverwaltung::fctCboOrdnerNeuAnzeigen(const QString& ordnerName, bool bytOhneSortierung) {
  Recordset& ro = lib_.rsOrdner;
  QString name = ordnerName;
  if (name.isEmpty() && ro.isOpen() && !ro.isEOF() && !ro.isBOF()) name = ro.text(QStringLiteral("OrdnerName"));
  if (!bytOhneSortierung) lib_.subRsOrdnerOeffnen();
  bool ok = false;
  if (fctRsFind(ro, QStringLiteral("OrdnerName"), name)) {
    lib_.lngAktuelleOrdnerID = int32_t(ro.value(QStringLiteral("Nr")).toLongLong());
    intAktuellerOrdner = int16_t(lib_.lngAktuelleOrdnerID);
    OrdnerInArrayEinlesen();
    lib_.strAktuellerOrdnerName.clear();  // so the click reloads
    comboxOrdner_Click(name);
    ok = true;
  }
  Anzeigen();
  return ok;
}

bool Blockverwaltung::subRsSeitenNeuEinlesen() {
  return lib_.subRsSeitenOeffnen(lib_.lngAktuelleOrdnerID);
}

void Blockverwaltung::fctSeiteInCboEinlesen() {
  arySeiten.clear();
  Recordset& rs = lib_.rsSeiten;
  if (!rs.isOpen() || rs.RecordCount() < 1) return;
  int32_t maxNr = 0;
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext())
    maxNr = qMax<int32_t>(maxNr, int32_t(rs.value(QStringLiteral("Nr")).toLongLong()));
  arySeiten.assign(size_t(maxNr) + 1, TSeite{});
  size_t k = 1;
  for (rs.MoveFirst(); !rs.isEOF() && k < arySeiten.size(); rs.MoveNext(), ++k) {
    arySeiten[k].SeitenName = rs.text(QStringLiteral("SeitenName"));
    arySeiten[k].SeitenNr = int16_t(rs.value(QStringLiteral("SeitenNr")).toInt());
  }
  rs.MoveFirst();
}

bool Blockverwaltung::fctSeiteNrErmitteln(const QString& name, int16_t& nr) {
  Recordset& rs = lib_.rsSeiten;
  if (!rs.isOpen() || rs.RecordCount() < 1) return false;
  if (!fctRsFindStringEnthalten(rs, QStringLiteral("SeitenName"), name)) {
    // Once: names with trailing blanks are trimmed in every row, then again.
    for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext()) {
      const QString alt = rs.text(QStringLiteral("SeitenName"));
      QString neu = alt;
      while (neu.endsWith(' ')) neu.chop(1);
      if (neu != alt) rs.Update(QStringLiteral("SeitenName"), neu);
    }
    if (!fctRsFindStringEnthalten(rs, QStringLiteral("SeitenName"), name)) return false;
  }
  nr = int16_t(rs.value(QStringLiteral("SeitenNr")).toInt());
  return true;
}

QString Blockverwaltung::fctBezeichnungsFeldAuslesen() {
  KartenDefinition d;
  fctKartenDefinitionLesen(lib_, d);
  return fctKartenBeschriftung(d, 0);
}

// ---------------------------------------------------------------- pages

void Blockverwaltung::combutVor_Click() {
  ++s1;
  if (settings_.setup.lonPosSeitenWechsel == 0) pos = 0;
  subSeitenwechselSequenz();
}

void Blockverwaltung::combutZurueck_Click() {
  if (s1 == 0) return;
  --s1;
  if (settings_.setup.lonPosSeitenWechsel == 0) pos = 0;
  subSeitenwechselSequenz();
}

void Blockverwaltung::combutZurueckAnfang_Click() {
  // Not the first page: the nearest earlier page that holds a block.
  if (s1 == 0) return;
  Recordset& rs = lib_.rsBlockInfo0;
  int32_t gefunden = 0;
  for (int32_t i = int32_t(aryPrefix.size()) - 1 - intBilder; i > 0; --i) {
    if (!rs.isOpen() || rs.RecordCount() < 1) break;
    QString code = size_t(i) < aryTBloecke.size() ? aryTBloecke[size_t(i)].Block : QString();
    if (code.isEmpty()) code = fctBlockCode(lib_.strAktuelleOrdnerNr, i, aryPrefix);
    if (fctRsFind(rs, QStringLiteral("Block"), code)) {
      gefunden = i;
      break;
    }
  }
  --s1;
  while (s1 > 0 && s1 * intBilder - 1 >= gefunden) --s1;
  if (settings_.setup.lonPosSeitenWechsel == 0) pos = 0;
  subSeitenwechselSequenz();
}

void Blockverwaltung::combutEnde_Click() {
  // Not a last page, for there is none: the next page with a block, at most 49 on.
  const int16_t vorher = s1;
  Recordset& rs = lib_.rsBlockInfo0;
  bool treffer = false;
  for (int zaehler = 1; zaehler != 50 && !treffer; ++zaehler) {
    ++s1;
    const int32_t letzter = intBilder * (s1 + 1) - 1;
    if (!fctPrefixEinlesen(letzter)) break;
    if (!rs.isOpen() || rs.RecordCount() < 1) continue;
    for (int32_t i = s1 * intBilder; i <= letzter; ++i) {
      if (fctRsFind(rs, QStringLiteral("Block"), fctBlockCode(lib_.strAktuelleOrdnerNr, i, aryPrefix))) {
        treffer = true;
        break;
      }
    }
  }
  if (!treffer) {
    subMsgboxInfoEinzeilig(labels().fctBeschriftMsgboxZuordnen(QStringLiteral("KeinBlockIn49Seiten")));
    s1 = vorher;
  } else if (settings_.setup.lonPosSeitenWechsel == 0) {
    pos = 0;
  }
  subSeitenwechselSequenz();
}

void Blockverwaltung::GeheZuSeite(int seite, int32_t position, const QString& ordnerNr) {
  s1 = int16_t(qMax(0, seite));
  lib_.strAktuelleOrdnerNr = ordnerNr;
  pos = position;
  subSeitenwechselSequenz();
}

bool Blockverwaltung::fctAufOrdnerUndSeiteSpringen() {
  bool ok = false;
  const QString ordner = strOrdnerUebergabe;
  const QString seite = varSeiteUebergabe;
  if (ordner == QLatin1String("TestOrdner") && seite == QLatin1String("TestSeite")) {
    subMsgboxInfoEinzeilig(QStringLiteral(
        "Mit diesem Start können Sie zu einem Ordner und einer Seite direkt wechseln.\r"
        "Schreiben Sie ensprechenden Ordner und entsprechende Seite in die Kolvane-Menüdatei von AutoCAD."));
  } else if (!ordner.isEmpty()) {
    Recordset& ro = lib_.rsOrdner;
    ro.MoveFirst();
    if (ro.Find(QStringLiteral("OrdnerName LIKE '") + ordner + "%'")) {
      comboxOrdner_Click(ro.text(QStringLiteral("OrdnerName")));
      int16_t nr = 0;
      if (istZahl(seite))
        nr = int16_t(seite.toInt());
      else if (!seite.isEmpty())
        fctSeiteNrErmitteln(seite, nr);
      if (nr > 0) {
        GeheZuSeite(nr - 1, pos, lib_.strAktuelleOrdnerNr);
        ok = true;
      }
    }
  }
  strOrdnerUebergabe.clear();
  varSeiteUebergabe = QStringLiteral("1");
  return ok;
}

void Blockverwaltung::subSeiteNeuAnzeigen() {
  lib_.rsBlockInfo0.Requery();
  subSeitenwechselSequenz();
}

void Blockverwaltung::BilderAnzeigenBeiGeaenderterBilderanzahl() {
  lib_.rsBlockInfo0.Requery();
  s1 = 0;
  pos = 0;
  subBilderanzahlFestlegen();
  lisBlockBenennung.clear();
  subSeitenwechselSequenz();
}

void Blockverwaltung::cboSeite_Click(const QString& text) {
  if (bytCboSeiteGesperrt == 1) return;
  if (!lib_.rsSeiten.isOpen() || lib_.rsSeiten.RecordCount() < 1) return;
  int16_t nr = 0;
  if (fctSeiteNrErmitteln(text, nr))
    GeheZuSeite(nr - 1, pos, lib_.strAktuelleOrdnerNr);
  else
    Anzeigen();
}

void Blockverwaltung::cboSeite_Return(const QString& text) {
  GeheZuSeite(text.trimmed().toInt() - 1, pos, lib_.strAktuelleOrdnerNr);
}

QString Blockverwaltung::dcboSeite_Return(const QString& text) {
  const QString t = text.trimmed();
  if (!istZahl(t) || t.toInt() < 1) {
    subMsgboxInfoEinzeilig(237);
    return QStringLiteral("1");
  }
  int nr = t.size() > 6 ? 501 : t.toInt();
  if (nr > 500) {
    subMsgboxInfoEinzeilig(236);
    nr = 500;
  }
  GeheZuSeite(nr - 1, pos, lib_.strAktuelleOrdnerNr);
  return QString::number(nr);
}

void Blockverwaltung::seitennameDialog() {
  const QString neu = hooks.seitennameAendern ? hooks.seitennameAendern(model_.pageText)
                                              : frmBlocknameAendern(model_.pageText);
  if (neu.isEmpty()) return;
  const bool ok = hooks.fctSeiteAendern ? hooks.fctSeiteAendern(s1 + 1, neu) : fctSeiteAendern(s1 + 1, neu);
  if (!ok) {
    subMsgboxInfoEinzeilig(235);
    return;
  }
  subRsSeitenNeuEinlesen();
  fctSeiteInCboEinlesen();
  Anzeigen();
}

QString Blockverwaltung::frmBlocknameAendern(const QString& alterName) {
  QString text = alterName;
  for (;;) {
    const auto neu = prompt().input(labels().fctBeschriftFrmZuordnen(93),
                                    labels().fctBeschriftFrmZuordnen(QStringLiteral("frmBlocknameAendern.Caption")),
                                    text);
    if (!neu) return {};
    text = neu->trimmed();
    // Names stand in the filters of the library unescaped: no apostrophe.
    if (!text.contains('\'')) return text;
    subMsgboxInfoEinzeilig(919);
  }
}

bool Blockverwaltung::fctSeiteAendern(int nr, const QString& name) {
  Trace t(QStringLiteral("fctSeiteAendern"));
  Recordset& rs = lib_.rsSeiten;
  if (!rs.isOpen() || lib_.booSchreibgeschuetzt || name.contains('\'')) return false;
  if (rs.RecordCount() > 0) {
    rs.MoveFirst();
    if (rs.Find(QStringLiteral("Seitenname Like '") + name + "'")) {
      MessageRequest r;
      r.title = QStringLiteral("gleicher Seitenname");
      r.text = QStringLiteral("Seite mit folgendem Name besteht schon:\r") + name +
               QStringLiteral("\rSoll die Seite trotzdem angelegt werden?");
      r.buttons = Buttons::YesNo;
      r.icon = Icon::Question;
      if (prompt().message(r) != Answer::Yes) return true;
    }
  }
  bool gefunden = false;
  if (rs.RecordCount() > 0) {
    rs.MoveFirst();
    gefunden = rs.Find(QStringLiteral("SeitenNr Like '") + QString::number(nr) + "'");
  }
  bool ok = false;
  if (gefunden) {
    ok = rs.Update(QStringLiteral("SeitenName"), name);
  } else {
    ok = rs.AddNew() && rs.setValue(QStringLiteral("SeitenName"), name) &&
         rs.setValue(QStringLiteral("SeitenNr"), nr) &&
         rs.setValue(QStringLiteral("NrTblOrdner"), lib_.lngAktuelleOrdnerID) && rs.Update();
  }
  if (!ok) subErrorAllgemein(true, QStringLiteral("fctSeiteAendern"), rs.lastError());
  subRsSeitenNeuEinlesen();
  fctSeiteInCboEinlesen();
  return ok;
}

// ---------------------------------------------------------------- library

void Blockverwaltung::positionSpeichern() {
  if (lib_.VerzeichnisOhneDb.isEmpty()) return;
  Settings::writePosition(lib_.VerzeichnisOhneDb, {lib_.strAktuelleOrdnerNr, s1, pos});
}

bool Blockverwaltung::bibliothekOeffnen() {
  Trace t(QStringLiteral("bibliothekOeffnen"));
  lisBlockBenennung.clear();
  if (!lib_.ConnectionUndRecordsetOeffnen()) return false;
  if (lib_.rsBlockInfo0.RecordCount() > 0 && !lib_.fctSlideLibPfadeRelativ()) {
    t.step(QStringLiteral("Pfadeinträge ändern"));
    lib_.fctPfadEintragAendern();
    lib_.subRsBlockInfo0Oeffnen(lib_.lngAktuelleOrdnerID);
  }
  intAktuellerOrdner = int16_t(lib_.lngAktuelleOrdnerID);
  OrdnerInArrayEinlesen();
  const Position p = Settings::readPosition(lib_.VerzeichnisOhneDb);
  s1 = 0;
  pos = (p.pos >= 0 && p.pos < intBilder) ? p.pos : 0;
  ArrayTBloeckeNeuEinlesenBeiOrdnerwechsel(lib_.strAktuelleOrdnerNr);
  fctSeiteInCboEinlesen();
  if (p.s1 > 0)
    GeheZuSeite(p.s1, pos, lib_.strAktuelleOrdnerNr);
  else
    Anzeigen();
  return true;
}

bool Blockverwaltung::comboxVerzeichnis_Click(const QString& pfad) {
  Trace t(QStringLiteral("comboxVerzeichnis_Click"));
  // 1. The current one: nothing.
  if (pfad.isEmpty() || pfad.compare(settings_.strAktuelleDatenbank, Qt::CaseInsensitive) == 0) return true;
  // The new library is tested before the old one is closed: a failure leaves it as it was.
  QString grund;
  if (!Bibliothek::fctTestDb(pfad, &grund)) {
    subErrorAllgemein(false, QStringLiteral("comboxVerzeichnis_Click"), grund);
    return false;
  }
  // 2. Marks go with the library.
  if (lib_.rsMarkierteBloecke.isOpen()) fctAlleEintraegLoeschen(lib_.rsMarkierteBloecke);
  // 3. The position of the library being left.
  positionSpeichern();
  // 4.-9.
  const QString alt = settings_.strAktuelleDatenbank;
  lib_.RecordsetsUndVerbindungSchliessen();
  lisBlockBenennung.clear();
  settings_.strAktuelleDatenbank = pfad;
  if (!bibliothekOeffnen()) {
    subMsgboxInfoDreizeilig(910, 911, 912);
    settings_.strAktuelleDatenbank = alt;
    bibliothekOeffnen();
    return false;
  }
  lib_.fctDbsInAryNeuSortieren(pfad);
  settings_.fctSetupWertSpeichern(QStringLiteral("Eintrag1"), pfad);
  return true;
}

// ---------------------------------------------------------------- display

void Blockverwaltung::seiteninfoSetzen() {
  bytCboSeiteGesperrt = 1;
  const QString nummer = QString::number(s1 + 1);
  model_.pageText = nummer;
  model_.labSeitenNummer = nummer;
  Recordset& rs = lib_.rsSeiten;
  Recordset& ro = lib_.rsOrdner;
  if (rs.isOpen() && rs.RecordCount() > 0) {
    rs.MoveFirst();
    const bool zeile = rs.Find(QStringLiteral("SeitenNr Like '") + nummer + "'");
    const bool ordner = ro.isOpen() && fctRsFindMitZuruecksetzen(ro, QStringLiteral("OrdnerNr"), lib_.strAktuelleOrdnerNr);
    if (zeile && ordner &&
        rs.value(QStringLiteral("NrTblOrdner")).toLongLong() == ro.value(QStringLiteral("Nr")).toLongLong()) {
      const QString name = rs.text(QStringLiteral("SeitenName"));
      const QString nr = rs.text(QStringLiteral("SeitenNr"));
      model_.pageText = name.isEmpty() ? nr : name;
      model_.labSeitenNummer = nr;
    }
  }
  bytCboSeiteGesperrt = 0;
}

void Blockverwaltung::Anzeigen() {
  Trace t(QStringLiteral("Anzeigen"));
  // 0. A stopped program shows no page.
  if (diagnostics().bytProgrammStop == 1) {
    subMsgboxInfoZweizeilig(126, 127);
    return;
  }
  // 1. Not before the slots were read once.
  if (!bytBlocknummernEingelesen_) return;
  PageModel& m = model_;
  m.intBilder = intBilder;
  m.rows = grid_.rows;
  m.columns = grid_.columns;
  if (pos < 0) pos = 0;
  // 4./5. The active slot.
  const int32_t aktiv = s1 * intBilder + pos;
  aktivierteBlocknummer = size_t(aktiv) < aryTBloecke.size() ? aryTBloecke[size_t(aktiv)].Block : QString();
  m.pos = pos;
  m.listEntries = lisBlockBenennung;
  m.bilder.resize(intBilder);
  for (int i = 0; i < intBilder; ++i) {
    const size_t slot = size_t(s1 * intBilder + i);
    SlotModel& sm = m.bilder[i];
    sm.code = slot < aryTBloecke.size() ? aryTBloecke[slot].Block : QString();
    sm.text = slot < aryTBloecke.size() ? aryTBloecke[slot].Benennung : kFrei;
    sm.occupied = sm.text != kFrei;
    sm.slidePath = size_t(i) < slotSlides_.size() ? slotSlides_[size_t(i)] : frei2();
    sm.markVisible = markierenAn;
    sm.marked = size_t(i) < slotMarked_.size() && slotMarked_[size_t(i)];
    // Only a block's slide can be damaged; nothing is deleted for it.
    // Looked at once per page walk, not at every key.
    if (sm.occupied) {
      auto f = slideFehlerDerSeite_.constFind(sm.slidePath);
      if (f == slideFehlerDerSeite_.constEnd()) f = slideFehlerDerSeite_.insert(sm.slidePath, slideFehler(sm.slidePath));
      sm.slideFehler = f.value();
    } else {
      sm.slideFehler.clear();
    }
  }
  const bool frei = size_t(aktiv) >= aryTBloecke.size() || aryTBloecke[size_t(aktiv)].Benennung == kFrei;
  // 6.
  m.labNameDaten = frei ? QString() : aryTBloecke[size_t(aktiv)].BlkName0;
  // 7./8.
  seiteninfoSetzen();
  m.folderName = lib_.strAktuellerOrdnerName;
  m.folderNames.clear();
  for (const TOrdner& o : tordnerOrdner) m.folderNames << o.OrdnerName;
  m.libraryPath = settings_.strAktuelleDatenbank;
  m.libraryPaths = settings_.aryVerzeichnisseDatenbank;
  m.labBezeichnung = fctBezeichnungsFeldAuslesen();
  // 9.-13. The active block's row.
  Recordset& rs = lib_.rsBlockInfo0;
  const bool zeile = !frei && fctRsFind(rs, QStringLiteral("Block"), aktivierteBlocknummer);
  m.enabled.clear();
  m.visible.clear();
  byteAnsichtVorhanden = 0;
  if (!zeile) {
    m.activeFrame = FrameColor::Red;
    m.enabled["mnuBVariantenAuswahl"] = false;
    strLayer.clear();
    strLinientyp.clear();
    strLayerFarbe.clear();
  } else {
    strDatDateiBlockvaria =
        fctVariantenListePfad(lib_.VerzeichnisOhneDb, lib_.strAktuelleOrdnerNr, aktivierteBlocknummer, 0);
    const bool varianten = hooks.fctVariaEinfuegenKontroll && hooks.fctVariaEinfuegenKontroll(strDatDateiBlockvaria);
    m.activeFrame = varianten ? FrameColor::Green : FrameColor::Red;
    m.enabled["mnuBVariantenAuswahl"] = varianten;
    // A further view by its points, or by its drawing alone.
    if (fctVorhandeneAnsichten(rs).size() > 1) byteAnsichtVorhanden = 1;
    for (int n = 1; n <= 4 && byteAnsichtVorhanden == 0; ++n)
      if (fctDateiExist(fctBlockDwgPfad(lib_.VerzeichnisOhneDb, lib_.strAktuelleOrdnerNr, aktivierteBlocknummer, n)))
        byteAnsichtVorhanden = 1;
    strLayer = rs.text(QStringLiteral("LAYER"));
    strLinientyp = rs.text(QStringLiteral("LYLINE"));
    strLayerFarbe = rs.text(QStringLiteral("LYCOLOR"));
  }
  for (const char* c : {"combutAnsicht", "mnuBAnsichten"}) m.enabled[c] = byteAnsichtVorhanden == 1;
  // 14. Page buttons.
  m.enabled["combutZurueck"] = s1 != 0;
  m.enabled["combutZurueckAnfang"] = s1 != 0;
  m.enabled["combutVor"] = true;
  m.enabled["combutEnde"] = true;
  // 15. Commands of the slot.
  for (const QString& c : blockBefehle()) m.enabled[c] = !frei;
  for (const QString& c : freiBefehle()) m.enabled[c] = frei;
  for (const QString& c : seitenBefehle()) m.enabled[c] = true;
  // 17. The keystroke route opens no drawing.
  if (istLT()) {
    m.visible["mnuBBlockOeffnen"] = false;
    m.visible["mnuBSep6"] = false;
    m.enabled["mnuDBloeckeImport"] = false;
    m.enabled["mnuBBlockBearbeiten"] = false;
  }
  // 16. A write-protected library: its rule stands last.
  for (const QString& c : lib_.fctSperrenCmdBeiSchreibschutz()) m.enabled[c] = false;
  // 18. The drawing of the active block, for a drag to the host.
  m.txtVerzeichnisBlock =
      zeile ? fctBlockDwgPfad(lib_.VerzeichnisOhneDb, lib_.strAktuelleOrdnerNr, aktivierteBlocknummer, 0) : QString();
  t.step(QStringLiteral("Speicherorte der Dateien:") + m.txtVerzeichnisBlock);
  // 19. The status bar: the count of blocks in the folder.
  QString anzahl = QString::number(qMax(0, rs.RecordCount()));
  if (rs.RecordCount() == 1) {
    rs.MoveFirst();
    if (rs.text(QStringLiteral("Block")).isEmpty()) anzahl = QStringLiteral("0");
  }
  m.statusText = labels().fctBeschriftFrmZuordnen(QStringLiteral("frmBlockverwaltung.StatusBar1")) + " " + anzahl;
  m.statusFehler = pos < m.bilder.size() ? m.bilder[pos].slideFehler : QString();
  if (!slideBackGelesen_) {
    slideBack_ = slideHintergrund();
    slideBackGelesen_ = true;
  }
  m.slideBack = slideBack_;
  if (hooks.anzeigen) hooks.anzeigen(m);
}

void Blockverwaltung::lisBlockBenennungAktualisieren(const QString& name) {
  const int32_t aktiv = s1 * intBilder + pos;
  if (size_t(aktiv) < aryTBloecke.size()) aryTBloecke[size_t(aktiv)].Benennung = name;
  lisBlockBenennung.clear();
  for (int32_t i = s1 * intBilder; i < s1 * intBilder + intBilder && size_t(i) < aryTBloecke.size(); ++i)
    lisBlockBenennung << aryTBloecke[size_t(i)].Benennung;
  Recordset& rs = lib_.rsBlockInfo0;
  const bool zeile = fctRsFind(rs, QStringLiteral("Block"), aktivierteBlocknummer);
  if (size_t(pos) < slotSlides_.size()) {
    slideFehlerDerSeite_.remove(slotSlides_[size_t(pos)]);  // the slide may be new
    slotSlides_[size_t(pos)] = zeile ? slideAdresse(rs.text(QStringLiteral("SlideLib"))) : frei2();
    slideFehlerDerSeite_.remove(slotSlides_[size_t(pos)]);
    if (!zeile) slotMarked_[size_t(pos)] = false;
  }
  Anzeigen();
}

void Blockverwaltung::lisBlockBenennung_Click(int index) {
  if (index < 0 || index >= intBilder) return;
  pos = index;
  Anzeigen();
}

void Blockverwaltung::Command1_Click(int index) {
  switch (index) {
    case 0:
      if (pos >= intBilder - 1) {
        combutVor_Click();
        return;
      }
      ++pos;
      break;
    case 1:
      if (pos > 0) --pos;
      break;
    case 2:
      pos = intBilder - 1;  // the last picture of the current page
      break;
    case 3:
      pos = 0;
      break;
    default:
      return;
  }
  Anzeigen();
}

// ---------------------------------------------------------------- mouse

void Blockverwaltung::sldBlockverwaltung_LButtonDown(int index, const QPoint& cursor) {
  pos = index;
  cyclingSlide_.clear();
  Anzeigen();
  timer2Start_ = cursor;
  timer2Schritt_ = 0;
  timer2ErsterLauf_ = true;
}

void Blockverwaltung::sldBlockverwaltung_DblClick(int index) {
  switch (settings_.setup.longDoppelklick) {
    case 1:
      if (hooks.cmbEinfuegen) hooks.cmbEinfuegen();
      break;
    case 2:
      if (index >= 0 && size_t(index) < slotMarked_.size()) {
        slotMarked_[size_t(index)] = !slotMarked_[size_t(index)];
        Anzeigen();
      }
      break;
    case 3:
      if (hooks.vollbildZeigen) hooks.vollbildZeigen();
      break;
    default:
      break;
  }
}

void Blockverwaltung::sldBlockverwaltung_RButtonDown(int index) {
  pos = index;
  Anzeigen();
  if (hooks.kontextmenue) hooks.kontextmenue();
}

bool Blockverwaltung::Timer2_Timer(bool linkeTasteGedrueckt, const QPoint& cursor) {
  if (istLT()) return false;
  auto ansichtsPfad = [&](int ansicht) {
    const QString p = fctSlidePfad(lib_.VerzeichnisOhneDb, lib_.strAktuelleOrdnerNr, aktivierteBlocknummer,
                                   ansicht, QStringLiteral(".slb"));
    if (fctDateiExist(p)) return p;
    return fctSlideLibPfad(lib_.VerzeichnisOhneDb, lib_.rsBlockInfo0.text(QStringLiteral("SlideLib")));
  };
  // 6. Released meanwhile: back to the first view, cycling ends.
  if (!linkeTasteGedrueckt) {
    if (!cyclingSlide_.isEmpty()) {
      cyclingSlide_ = fctSlideAdresse(ansichtsPfad(0), QStringLiteral("0A"));
      if (size_t(pos) < slotSlides_.size()) model_.bilder[pos].slidePath = cyclingSlide_;
      if (hooks.anzeigen) hooks.anzeigen(model_);
    }
    cyclingSlide_.clear();
    return false;
  }
  // 1. The cursor stays within 5 pixels of where the button went down.
  if (qAbs(cursor.x() - timer2Start_.x()) >= 5 || qAbs(cursor.y() - timer2Start_.y()) >= 5) return false;
  // 2./3. The block and its views; a free slot or a single view doesn't cycle.
  if (timer2ErsterLauf_ && timer2Schritt_ < 1) {
    Recordset& rs = lib_.rsBlockInfo0;
    if (!fctRsFind(rs, QStringLiteral("Block"), aktivierteBlocknummer)) return false;
    timer2Ansichten_ = fctVorhandeneAnsichten(rs);
  }
  if (timer2Ansichten_.size() < 2) return false;
  // 4. The next view that exists, wrapping to 0; a deleted view in between is
  // passed over.
  ++timer2Schritt_;
  if (size_t(timer2Schritt_) >= timer2Ansichten_.size()) timer2Schritt_ = 0;
  timer2ErsterLauf_ = false;
  // 5./7. Its slide in the active picture.
  const int ansicht = timer2Ansichten_[size_t(timer2Schritt_)];
  cyclingSlide_ = fctSlideAdresse(ansichtsPfad(ansicht), QString::number(ansicht) + "A");
  if (pos >= 0 && pos < model_.bilder.size()) model_.bilder[pos].slidePath = cyclingSlide_;
  if (hooks.anzeigen) hooks.anzeigen(model_);
  return true;
}

}  // namespace kolvane

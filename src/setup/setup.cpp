#include "setup.h"

#include <QRegularExpression>

#include "diagnostics.h"
#include "labels.h"
#include "msgbox.h"

namespace kolvane {

namespace {

using Art = SetupSchalter::Art;

// The setup table's field of a value name.
const SetupFeld* feld(const char* name) {
  for (const SetupFeld& f : setupTabelle())
    if (qstrcmp(f.name, name) == 0) return &f;
  return nullptr;
}

const QString kX = QStringLiteral("checkAbfrageXFaktor");
const QString kWinkel = QStringLiteral("checkAbfrageEinfuegewinkel");

}  // namespace

const QList<SetupSchalter>& Setup::schalter() {
  static const QList<SetupSchalter> l = {
      {"checkEinfuegenAufLayer0", "longEinfuegenLayer0", "fraEinfuegen", Art::Check},
      {"checkBlockAusBibliothek", "longBlockAusBibliothek", "fraEinfuegen", Art::Check},
      {"checkUrsprungBeimEinfuegen", "longUrsprungBeimEinfuegen", "fraEinfuegen", Art::Check},
      {"checkXRef", "longXRef", "fraEinfuegen", Art::Check},
      {"checkAbfrageXFaktor", "longAbfrageXFaktor", "fraEinfuegen", Art::Check},
      {"checkAbfrageYFaktor", "longAbfrageYFaktor", "fraEinfuegen", Art::Check},
      {"checkAbfrageZFaktor", "longAbfrageZFaktor", "fraEinfuegen", Art::Check},
      {"checkAbfrageEinfuegewinkel", "longAbfrageEinfuegewinkel", "fraEinfuegen", Art::Check},
      {"checkAbfrageAttribute", "longAbfrageAttributeBeimEinfuegen", "fraEinfuegen", Art::Check},
      {"checkReihe", "longReihe", "fraEinfuegen", Art::Check},
      {"checkMehrfacheinfuegen", "longMehrfacheinfuegen", "fraEinfuegen", Art::Check},
      {"chkLispVarUebergeben", "lonLispVarUebergeben", "fraEinfuegen", Art::Check},
      {"checkBruch", "longBruchFrage", "fraEinfuegen", Art::Check},
      {"checkMassstabskontrolle", "longMassstabskontrolle", "fraEinfuegen", Art::Check},
      {"txtMassstabX", "strMassstabX", "fraEinfuegen", Art::Text},
      {"txtMassstabY", "strMassstabY", "fraEinfuegen", Art::Text},
      {"txtMassstabZ", "strMassstabZ", "fraEinfuegen", Art::Text},
      {"checkVorschaudiaBeimErzeugen", "longVorschaudiaBeimErzeugen", "fraNeu", Art::Check},
      {"checkAbfrageBlocknameBeimErzeugen", "longAbfrageBlocknameBeimErzeugen", "fraNeu", Art::Check},
      {"checkMehrereEinfuegepkte", "longMehrereEinfuegepkte", "fraNeu", Art::Check},
      {"chkOldView", "lonOldView", "fraKolvane", Art::Check},
      {"checkStuecklisteEinfuegen", "longStuecklisteEinfuegen", "fraKolvane", Art::Check},
      {"checkVariantenfrage", "longVariantenfrage", "fraKolvane", Art::Check},
      {"checkFensterpositionSpeichern", "longFensterpositionSpeichern", "fraKolvane", Art::Check},
      {"chkKolvaneNachEinfuegen", "longKolvaneAnzeigenNachEinfuegen", "fraKolvane", Art::Check},
      {"chkPosSeitenWechsel", "lonPosSeitenWechsel", "fraKolvane", Art::Check},
      {"chkOrdnerSortieren", "lonOrdnerSortieren", "fraKolvane", Art::Check},
  };
  return l;
}

const QStringList& Setup::rahmen() {
  static const QStringList l = {"fraEinfuegen", "fraNeu", "fraKolvane"};
  return l;
}

const QList<SetupOption>& Setup::doppelklickOptionen() {
  static const QList<SetupOption> l = {
      {"optEinfuegen", 1}, {"optMarkieren", 2}, {"optAnsicht", 3}, {"optMarkierenMitVaria", 4}};
  return l;
}

const QList<SetupOption>& Setup::bruchOptionen() {
  static const QList<SetupOption> l = {{"optAutomatisch", 0}, {"optManuell", 1}};
  return l;
}

const QStringList& Setup::massstabFelder() {
  static const QStringList l = {"txtMassstabX", "txtMassstabY", "txtMassstabZ",
                                "labMassstabX", "labMassstabY", "labMassstabZ"};
  return l;
}

bool fctMassstabGueltig(const QString& text) {
  static const QRegularExpression zahl(QStringLiteral("^\\s*[0-9]+([.,][0-9]*)?\\s*$|^\\s*[.,][0-9]+\\s*$"));
  if (!zahl.match(text).hasMatch()) return false;
  QString t = text.trimmed();
  t.replace(u',', u'.');
  return t.toDouble() > 0.0;  // a scale of 0 would squash the block to nothing
}

Setup::Setup(Settings& settings, const QString& strACadVersion)
    : settings_(settings), werte_(settings.setup),
      istLT_(strACadVersion == QLatin1String("AutoCAD LT")) {
  ltSperreAnwenden(QString());
}

const SetupSchalter* Setup::finde(const QString& control) const {
  for (const SetupSchalter& s : schalter())
    if (control == QLatin1String(s.control)) return &s;
  return nullptr;
}

bool Setup::angehakt(const QString& control) const {
  const SetupSchalter* s = finde(control);
  const SetupFeld* f = s ? feld(s->wert) : nullptr;
  return f && f->zahl && werte_.*f->zahl == 1;
}

void Setup::anhaken(const QString& control, bool an) {
  const SetupSchalter* s = finde(control);
  const SetupFeld* f = s ? feld(s->wert) : nullptr;
  if (!f || !f->zahl) return;
  werte_.*f->zahl = an ? 1 : 0;
  if (control == kX || control == kWinkel) ltSperreAnwenden(control);
}

QString Setup::text(const QString& control) const {
  const SetupSchalter* s = finde(control);
  const SetupFeld* f = s ? feld(s->wert) : nullptr;
  return f && f->text ? werte_.*f->text : QString();
}

void Setup::setText(const QString& control, const QString& t) {
  const SetupSchalter* s = finde(control);
  const SetupFeld* f = s ? feld(s->wert) : nullptr;
  if (f && f->text) werte_.*f->text = t;
}

void Setup::ltSperreAnwenden(const QString& geklickt) {
  // The keystroke route can't ask for the angle and the X factor in one go:
  // a ticked one locks the other. Both ticked (only an old store can bring
  // that) leaves both usable, so the user can get out.
  if (!istLT_) {
    winkelGesperrt_ = xFaktorGesperrt_ = false;
    return;
  }
  const bool x = werte_.longAbfrageXFaktor == 1, w = werte_.longAbfrageEinfuegewinkel == 1;
  if (geklickt == kX)
    winkelGesperrt_ = x;
  else if (geklickt == kWinkel)
    xFaktorGesperrt_ = w;
  else {
    winkelGesperrt_ = x && !w;
    xFaktorGesperrt_ = w && !x;
  }
}

bool Setup::aktiviert(const QString& control) const {
  // The break is chosen at insertion; its option group is not offered.
  if (control == QLatin1String("fraBruchOption")) return false;
  for (const SetupOption& o : bruchOptionen())
    if (control == QLatin1String(o.control)) return false;
  if (massstabFelder().contains(control)) {
    if (werte_.longMassstabskontrolle != 1) return false;
    if (istLT_) return false;  // with its box
  }
  if (istLT_) {
    static const QStringList gesperrt = {
        "checkVorschaudiaBeimErzeugen", "checkUrsprungBeimEinfuegen", "checkAbfrageYFaktor",
        "checkAbfrageZFaktor", "checkAbfrageAttribute", "checkReihe", "checkMehrfacheinfuegen",
        "checkMehrereEinfuegepkte", "checkMassstabskontrolle"};
    if (gesperrt.contains(control)) return false;
    if (control == kWinkel) return !winkelGesperrt_;
    if (control == kX) return !xFaktorGesperrt_;
  }
  return true;
}

bool Setup::combutOk_Click() {
  Trace t(QStringLiteral("frmSetup.combutOk_Click"));
  geschrieben_.clear();
  if (werte_.longMassstabskontrolle == 1) {
    for (const char* c : {"txtMassstabX", "txtMassstabY", "txtMassstabZ"}) {
      const QString wert = text(QString::fromLatin1(c));
      if (fctMassstabGueltig(wert)) continue;
      fctDateiMeldung(kMeldungMassstab, wert.isEmpty() ? QStringLiteral("\"\"") : wert, QString(),
                      kMeldungMassstabBleibt);
      return false;
    }
  }
  // Each changed value the dialog shows, in the order of the table, written
  // at once. Only those: the advanced dialog, opened from here, may have
  // changed others in the meantime.
  QStringList gezeigt = {QStringLiteral("longDoppelklick"), QStringLiteral("longBruchOption")};
  for (const SetupSchalter& s : schalter()) gezeigt << QString::fromLatin1(s.wert);
  bool sortierung = false, anzeige = false;
  for (const SetupFeld& f : setupTabelle()) {
    const QString name = QString::fromLatin1(f.name);
    if (!gezeigt.contains(name)) continue;
    QVariant neu;
    if (f.zahl) {
      if (werte_.*f.zahl == settings_.setup.*f.zahl) continue;
      settings_.setup.*f.zahl = werte_.*f.zahl;
      neu = int(werte_.*f.zahl);
    } else {
      if (werte_.*f.text == settings_.setup.*f.text) continue;
      settings_.setup.*f.text = werte_.*f.text;
      neu = werte_.*f.text;
    }
    t.step(name);
    // The value stays in force for this run even when the store refuses it;
    // the failure goes to the error file without a box.
    if (!settings_.fctSetupWertSpeichern(name, neu))
      subErrorAllgemein(true, QStringLiteral("frmSetup.combutOk_Click"),
                        QStringLiteral("Wert nicht gespeichert: ") + name);
    geschrieben_ << name;
    if (name == QLatin1String("lonOrdnerSortieren")) sortierung = true;
    if (name == QLatin1String("lonOldView")) anzeige = true;
  }
  if (sortierung && hooks.ordnerNeuAnzeigen) hooks.ordnerNeuAnzeigen();
  if (hooks.optionenAnzeigen) hooks.optionenAnzeigen();
  if (anzeige && hooks.anzeigeGeaendert) hooks.anzeigeGeaendert();
  return true;
}

}  // namespace kolvane

#include "varianten.h"

#include <QDir>
#include <QFileInfo>

#include "bibliothek.h"
#include "diagnostics.h"
#include "labels.h"
#include "layout.h"
#include "msgbox.h"
#include "paths.h"
#include "recordset.h"
#include "varialiste.h"

namespace kolvane {

namespace {

bool istCode(const QString& code) {
  if (code.isEmpty()) return false;
  for (QChar c : code)
    if (c.unicode() > 0x7F || !c.isLetterOrNumber()) return false;
  return true;
}

// The folder's directory of a list file path.
QString ordnerVon(const QString& datPfad) { return QFileInfo(fctNativerPfad(datPfad)).path(); }

QString zeilenDatei(const QString& datPfad, const QString& blockDateiName) {
  // Only the name counts: a stored path can't lead out of Block/Varia.
  const QString name = QFileInfo(fctNativerPfad(blockDateiName)).fileName();
  if (name.isEmpty()) return {};
  return fctDateiFinden(ordnerVon(datPfad) + QStringLiteral("/Block/Varia/") + name);
}

// Where a list entry's path text points (whether or not the file is there).
QString listenDatei(const QString& datPfad, const QString& text) {
  QString t = text.trimmed();
  t.replace(u'\\', u'/');
  if (t.isEmpty()) return {};
  if (!fctIstAbsoluterPfad(t)) t = ordnerVon(datPfad) + u'/' + t;
  return fctDateiFinden(t);
}

bool istDatei(const QString& pfad) { return !pfad.isEmpty() && QFileInfo(pfad).isFile(); }

// The block's row (Nr, names, SlideLib); false when it has none. A failing
// query is reported, quietly or with a box.
bool blockZeile(Bibliothek& lib, const QString& code, Recordset& rs, bool leise, const QString& quelle) {
  if (!lib.connDb.isOpen() || !istCode(code)) return false;
  // The code is letters and digits only (istCode): it can stand in the text.
  if (!rs.Open(QStringLiteral("SELECT * FROM tblBlockInfo WHERE Block LIKE '") + code + u'\'', lib.connDb)) {
    subErrorAllgemein(leise, quelle, rs.lastError());
    return false;
  }
  return rs.RecordCount() > 0;
}

int64_t blockNr(Bibliothek& lib, const QString& code, bool leise, const QString& quelle) {
  Recordset rs;
  return blockZeile(lib, code, rs, leise, quelle) ? rs.value(QStringLiteral("Nr")).toLongLong() : 0;
}

// The rows of the block that belong to the view, in table order.
bool zeilenLesen(Bibliothek& lib, int64_t nr, int ansicht, QList<VariantenEintrag>& out, bool leise,
                 const QString& quelle) {
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT Nr, BlockName, BlockDateiName FROM tblVariationBloecke WHERE BlockID = ") +
                   QString::number(nr) + QStringLiteral(" ORDER BY Nr"),
               lib.connDb)) {
    subErrorAllgemein(leise, quelle, rs.lastError());
    return false;
  }
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext()) {
    const QString datei = rs.text(QStringLiteral("BlockDateiName")).trimmed();
    if (!fctVariaDateiDerAnsicht(datei, ansicht)) continue;
    VariantenEintrag e;
    e.art = VariantenEintrag::Art::Zeile;
    e.name = rs.text(QStringLiteral("BlockName"));
    while (e.name.endsWith(u' ')) e.name.chop(1);
    e.datei = datei;
    e.nr = rs.value(QStringLiteral("Nr")).toLongLong();
    out << e;
  }
  return true;
}

QString zeilen(std::initializer_list<int> nrn) {
  QStringList t;
  for (int n : nrn) t << labels().fctBeschriftMsgboxZuordnen(n);
  return t.join(u'\r');
}

// frmMsgboxVarianten: delete the variants (Yes), keep them (No), cancel.
Answer frmMsgboxVarianten() {
  Labels& l = labels();
  MessageRequest r;
  r.text = zeilen({kVariaFrage1, kVariaFrage2, kVariaFrage3});
  r.title = l.fctBeschriftFrmZuordnen(kTitelFrage, LabelSektion::Allg);
  r.buttons = Buttons::YesNoCancel;
  r.icon = Icon::Question;
  r.buttonTexts = {l.fctBeschriftFrmZuordnen(kVariaKnopfLoeschen), l.fctBeschriftFrmZuordnen(kVariaKnopfBehalten),
                   l.fctBeschriftFrmZuordnen(QStringLiteral("frmMsgboxVarianten.cmbAbbrechen"))};
  return prompt().message(r);
}

}  // namespace

bool fctVariaDatPfadZerlegen(const QString& datPfad, QString& code, int& ansicht) {
  const QString name = QFileInfo(fctNativerPfad(datPfad)).fileName();
  if (name.size() < 6 || !name.endsWith(QStringLiteral(".dat"), Qt::CaseInsensitive)) return false;
  const QChar ziffer = name[name.size() - 5];
  if (ziffer < u'0' || ziffer > u'4') return false;
  const QString c = name.left(name.size() - 5);
  if (!istCode(c)) return false;
  code = c;
  ansicht = ziffer.unicode() - u'0';
  return true;
}

bool fctVariaDateiDerAnsicht(const QString& blockDateiName, int ansicht) {
  const QString name = QFileInfo(fctNativerPfad(blockDateiName.trimmed())).fileName();
  if (name.size() < 5 || !name.endsWith(QStringLiteral(".dwg"), Qt::CaseInsensitive)) return false;
  return name[name.size() - 5] == QChar(u'0' + ansicht);
}

bool fctVariaEinfuegenKontroll(Bibliothek& lib, const QString& datPfad) {
  QString code;
  int ansicht = 0;
  if (!fctVariaDatPfadZerlegen(datPfad, code, ansicht)) return false;
  if (!fctVariaListeLesen(fctDateiFinden(datPfad)).isEmpty()) return true;
  const QString quelle = QStringLiteral("fctVariaEinfuegenKontroll");
  const int64_t nr = blockNr(lib, code, true, quelle);
  if (nr == 0) return false;
  QList<VariantenEintrag> z;
  return zeilenLesen(lib, nr, ansicht, z, true, quelle) && !z.isEmpty();
}

QList<VariantenEintrag> fctVariantenEintraege(Bibliothek& lib, const QString& datPfad) {
  Trace t(QStringLiteral("fctVariantenEintraege"));
  QString code;
  int ansicht = 0;
  if (!fctVariaDatPfadZerlegen(datPfad, code, ansicht)) return {};
  t.step(QStringLiteral("RsBlockNamen Einlesen"));
  const QString quelle = QStringLiteral("fctVariantenEintraege");
  Recordset zeile;
  if (!blockZeile(lib, code, zeile, false, quelle)) return {};
  const int64_t nr = zeile.value(QStringLiteral("Nr")).toLongLong();
  t.step(QStringLiteral("BlockName in die Liste eintragen:"));
  VariantenEintrag erster;
  erster.name = zeile.text(QStringLiteral("BLKName") + QString::number(ansicht));
  while (erster.name.endsWith(u' ')) erster.name.chop(1);
  if (erster.name.isEmpty()) erster.name = code + QString::number(ansicht);
  QList<VariantenEintrag> liste{erster};
  t.step(QStringLiteral("Dat-Datei in lisAuswahl eintragen"));
  for (const VariaListenEintrag& l : fctVariaListeLesen(fctDateiFinden(datPfad))) {
    VariantenEintrag e;
    e.art = VariantenEintrag::Art::Liste;
    e.name = l.name;
    e.datei = l.pfad;
    liste << e;
  }
  zeilenLesen(lib, nr, ansicht, liste, false, quelle);
  return liste;
}

QString fctVariantenZeichnung(const QString& datPfad, const VariantenEintrag& e) {
  switch (e.art) {
    case VariantenEintrag::Art::Ansicht:
      return {};
    case VariantenEintrag::Art::Zeile: {
      const QString p = zeilenDatei(datPfad, e.datei);
      return istDatei(p) ? p : QString();
    }
    case VariantenEintrag::Art::Liste: {
      const QString p = listenDatei(datPfad, e.datei);
      if (istDatei(p)) return p;
      // The list may call a drawing by its name alone.
      if (!p.isEmpty() && QFileInfo(p).suffix().isEmpty()) {
        const QString mitEndung = fctDateiFinden(p + QStringLiteral(".dwg"));
        if (istDatei(mitEndung)) return mitEndung;
      }
      return {};
    }
  }
  return {};
}

QString fctVariantenZeichnungMitMeldung(const QString& datPfad, const VariantenEintrag& e) {
  const QString p = fctVariantenZeichnung(datPfad, e);
  if (!p.isEmpty() || e.art == VariantenEintrag::Art::Ansicht) return p;
  const QString wo = e.art == VariantenEintrag::Art::Zeile ? zeilenDatei(datPfad, e.datei)
                                                          : listenDatei(datPfad, e.datei);
  Trace t(QStringLiteral("fctVariantenZeichnung"));
  t.step(QStringLiteral("Datei fehlt: ") + wo);
  subMsgboxInfoEinzeilig(labels().fctBeschriftMsgboxZuordnen(kVariaZeichnungFehlt1) + u'\r' +
                         (wo.isEmpty() ? e.datei : wo) + u'\r' +
                         labels().fctBeschriftMsgboxZuordnen(kVariaZeichnungFehlt2));
  return {};
}

bool fctVarianteLoeschen(Bibliothek& lib, const QString& datPfad, const VariantenEintrag& e) {
  Trace t(QStringLiteral("fctVarianteLoeschen"));
  if (e.art != VariantenEintrag::Art::Zeile) return false;
  // The drawing first: a row without its drawing would be offered and fail at
  // the insert; a drawing without its row is merely a file too many.
  const QString datei = zeilenDatei(datPfad, e.datei);
  t.step(QStringLiteral("fctVarianteDateiLoeschen ") + datei);
  if (!datei.isEmpty()) {
    DeleteAFile(datei);
    if (QFileInfo::exists(datei)) {
      subMsgboxInfoEinzeilig(labels().fctBeschriftMsgboxZuordnen(kVariaNichtGeloescht1) + u'\r' + datei + u'\r' +
                             labels().fctBeschriftMsgboxZuordnen(kVariaNichtGeloescht2));
      return false;
    }
  }
  t.step(QStringLiteral("Zeile löschen"));
  if (!lib.connDb.execute(QStringLiteral("DELETE FROM tblVariationBloecke WHERE Nr = ?"), {qlonglong(e.nr)})) {
    subErrorAllgemein(false, QStringLiteral("fctVarianteLoeschen"), lib.connDb.error());
    return false;
  }
  return true;
}

bool fctVariaBloeckeLoeschen(Bibliothek& lib, const QString& code, int ansicht) {
  Trace t(QStringLiteral("fctVariaBloeckeLoeschen"));
  const QString quelle = QStringLiteral("fctVariaBloeckeLoeschen");
  if (!istCode(code) || ansicht < -1 || ansicht > 4) {
    subErrorAllgemein(false, quelle, QStringLiteral("Kein Block %1, Ansicht %2.").arg(code).arg(ansicht));
    return false;
  }
  if (!lib.connDb.isOpen()) {
    subErrorAllgemein(false, quelle, QStringLiteral("Keine Bibliothek geöffnet."));
    return false;
  }
  // 1. The folder by the block's slide library; the current folder for a row
  //    without one.
  Recordset zeile;
  if (!blockZeile(lib, code, zeile, false, quelle)) return true;  // no block, no variants
  const QString slideLib = zeile.text(QStringLiteral("SlideLib"));
  zeile.Close();
  const QString ordner = slideLib.trimmed().isEmpty()
                             ? fctPfadZusammenfuegen(lib.VerzeichnisOhneDb, lib.strAktuelleOrdnerNr)
                             : QFileInfo(fctSlideLibPfad(lib.VerzeichnisOhneDb, slideLib.trimmed())).path();
  struct Ansicht {
    QString dat;
    QList<VariantenEintrag> eintraege;
  };
  QList<Ansicht> ansichten;
  bool etwas = false;
  for (int k = ansicht < 0 ? 0 : ansicht; k <= (ansicht < 0 ? 4 : ansicht); ++k) {
    Ansicht a;
    a.dat = fctDateiFinden(ordner + u'/' + code + QString::number(k) + QStringLiteral(".dat"));
    a.eintraege = fctVariantenEintraege(lib, a.dat);
    if (!a.eintraege.isEmpty()) a.eintraege.removeFirst();
    etwas = etwas || !a.eintraege.isEmpty();
    ansichten << a;
  }
  if (!etwas) return true;

  // 2. Whether they go, and once more in plain words.
  t.step(QStringLiteral("frmMsgboxVarianten"));
  if (frmMsgboxVarianten() != Answer::Yes) return false;
  const QList<int> frage = ansicht < 0 ? QList<int>{kVariaFrage1, kVariaAlleFrage1, kVariaAlleFrage2}
                                       : QList<int>{kVariaFrage1, kVariaAnsichtFrage1, kVariaAnsichtFrage2};
  if (fctMsgboxAnzeigen(frage, kTitelFrage, Buttons::YesNo, Icon::Question) != Answer::Yes) return false;

  // 3. Rows with their drawings, then the list files.
  bool ok = true;
  for (const Ansicht& a : ansichten) {
    for (const VariantenEintrag& e : a.eintraege)
      if (e.art == VariantenEintrag::Art::Zeile) ok = fctVarianteLoeschen(lib, a.dat, e) && ok;
    if (!DeleteAFile(a.dat)) {
      subErrorAllgemein(false, quelle, QStringLiteral("Die Variantenliste %1 kann nicht gelöscht werden.").arg(a.dat));
      ok = false;
    }
  }
  return ok;
}

}  // namespace kolvane

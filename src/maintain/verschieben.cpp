#include "verschieben.h"

#include <QDir>
#include <algorithm>
#include <QFileInfo>
#include <QHash>
#include <QStringList>

#include "bibliothek.h"
#include "blockverwaltung.h"
#include "diagnostics.h"
#include "labels.h"
#include "layout.h"
#include "msgbox.h"
#include "paths.h"
#include "prefix.h"
#include "recordset.h"
#include "verschiebejournal.h"

namespace kolvane {

namespace {

const QString kZwischenA = QStringLiteral("ZwischenA");

bool istZwischenA(const QString& block) { return block.compare(kZwischenA, Qt::CaseInsensitive) == 0; }

// Paths in one form: "/" between parts (stored paths may carry "\\").
QString sauber(const QString& pfad) {
  QString p = pfad;
  return QDir::cleanPath(p.replace(u'\\', u'/'));
}

// A named step of a block's move. The kill tests of crash safety stop the
// process at "schieben-<n>" (the first block) or at "schieben-<n>-<k>" (the
// k-th block of the run).
void haltepunkt(const char* schritt, int lfd) {
  fctHaltepunkt(schritt);
  static const bool gesetzt = qEnvironmentVariableIsSet("KOLVANE_HALTEPUNKT");
  if (gesetzt) fctHaltepunkt((QByteArray(schritt) + '-' + QByteArray::number(lfd)).constData());
}

}  // namespace

// The files of the folder's directories, listed once per run and found
// without regard to case (libraries from Windows carry names in any case). A
// file the run moves is renamed here as well, so the listing stays true.
class DateiBestand {
 public:
  // The file as it is named on disk, "" when there is none.
  QString finden(const QString& pfad) {
    const QString p = sauber(pfad);
    const qsizetype schnitt = p.lastIndexOf(u'/');
    if (schnitt < 0) return {};
    const QString dir = p.left(schnitt);
    const auto& namen = verzeichnis(dir);
    const auto it = namen.constFind(p.mid(schnitt + 1).toLower());
    if (it == namen.constEnd()) return {};
    return dir + u'/' + *it;
  }
  void verschoben(const QString& von, const QString& nach) {
    const QString v = sauber(von), n = sauber(nach);
    verzeichnis(v.left(v.lastIndexOf(u'/'))).remove(v.mid(v.lastIndexOf(u'/') + 1).toLower());
    const QString name = n.mid(n.lastIndexOf(u'/') + 1);
    verzeichnis(n.left(n.lastIndexOf(u'/'))).insert(name.toLower(), name);
  }

 private:
  QHash<QString, QString>& verzeichnis(const QString& dir) {
    const QString schluessel = dir.toLower();
    auto it = listen_.find(schluessel);
    if (it != listen_.end()) return *it;
    QHash<QString, QString> namen;
    const QString wirklich = fctDateiFinden(dir);
    for (const QString& n : QDir(wirklich).entryList(QDir::Files | QDir::Hidden | QDir::System))
      namen.insert(n.toLower(), n);
    return *listen_.insert(schluessel, namen);
  }
  QHash<QString, QHash<QString, QString>> listen_;
};

BlockVerschieben::BlockVerschieben(Blockverwaltung& bv) : bv_(bv) {}
BlockVerschieben::~BlockVerschieben() = default;

bool BlockVerschieben::belegungLesen(std::map<int32_t, Belegung>& belegung) {
  Trace t(QStringLiteral("belegungLesen"));
  belegung.clear();
  Bibliothek& lib = bv_.bibliothek();
  const QString ordnerNr = lib.strAktuelleOrdnerNr;
  Recordset rs;
  // The folder whose codes the browser computes: that of its OrdnerNr.
  if (!rs.Open(QStringLiteral("SELECT Nr, Block, SlideLib FROM tblBlockInfo WHERE OrdnerID IN (SELECT Nr FROM "
                              "tblOrdner WHERE OrdnerNr = ?) OR Block = 'ZwischenA' OR Block LIKE '%§%'"),
               lib.connDb, {ordnerNr})) {
    subErrorAllgemein(false, t.routine(), rs.lastError());
    return false;
  }
  for (; !rs.isEOF(); rs.MoveNext()) {
    Belegung b;
    b.nr = rs.value(QStringLiteral("Nr")).toLongLong();
    b.block = rs.text(QStringLiteral("Block"));
    b.slideLib = rs.text(QStringLiteral("SlideLib"));
    if (istZwischenA(b.block) || b.block.contains(u'§')) {
      // A block waiting in the clipboard: its files keep the code its SlideLib
      // names, in that folder's directory.
      const QFileInfo fi(sauber(b.slideLib));
      if (fi.dir().dirName().compare(ordnerNr, Qt::CaseInsensitive) != 0) continue;
      b.code = fi.completeBaseName();
    } else {
      b.code = b.block;
    }
    if (!b.code.startsWith(ordnerNr, Qt::CaseInsensitive)) continue;
    const int32_t slot = fctSlotAusBlockCode(b.code);
    if (slot < 0) continue;
    belegung.emplace(slot, b);
  }
  return true;
}

bool BlockVerschieben::planen(const Belegung& b, const QString& neu, VerschiebeJournal& j) {
  Trace t(QStringLiteral("DateienUmEinePositionVerschieben"));
  Bibliothek& lib = bv_.bibliothek();
  const QString bib = sauber(lib.VerzeichnisOhneDb);
  const QString ordnerNr = lib.strAktuelleOrdnerNr;
  if (!bestand_) bestand_ = std::make_unique<DateiBestand>();
  DateiBestand& bestand = *bestand_;
  auto relativ = [&bib](const QString& pfad) {
    const QString p = sauber(pfad);
    return p.startsWith(bib + u'/') ? p.mid(bib.size() + 1) : p;
  };
  auto dazu = [&](const QString& von, const QString& nach) {
    const QString da = bestand.finden(von);
    if (!da.isEmpty()) j.dateien << qMakePair(relativ(da), relativ(nach));
  };

  const QString slide = sauber(fctSlideLibPfad(lib.VerzeichnisOhneDb, b.slideLib));
  const QString endung = slide.right(4);
  const QString andereEndung =
      endung.compare(QLatin1String(".sld"), Qt::CaseInsensitive) == 0 ? QStringLiteral(".slb") : QStringLiteral(".sld");
  const QString altDir = QFileInfo(slide).path();
  const QString neuDir = bib + u'/' + ordnerNr;
  const QString altBlockDir = sauber(fctDateiFinden(altDir + QStringLiteral("/Block")));
  const QString neuBlockDir = sauber(fctDateiFinden(neuDir + QStringLiteral("/Block")));
  const QString alt = b.code;

  j = VerschiebeJournal{};
  j.nr = b.nr;
  j.codeAlt = alt;
  j.codeNeu = neu;
  if (istZwischenA(b.block))
    j.blockNeu = b.block;
  else if (b.block.contains(u'§'))
    j.blockNeu = b.block.left(b.block.indexOf(u'§') + 1) + neu;
  else
    j.blockNeu = neu;
  j.slideLibNeu = fctSlideLibEintrag(ordnerNr, neu, endung);

  // 1. The slide of view 0 (and a slide of the other kind beside it).
  t.step(QStringLiteral("Slides verschieben"));
  dazu(slide, neuDir + u'/' + neu + endung);
  dazu(altDir + u'/' + alt + andereEndung, neuDir + u'/' + neu + andereEndung);
  // 2. The drawings and the slides of the further views.
  t.step(QStringLiteral("Zeichnungsdatei verschieben"));
  for (int v = 0; v <= 4; ++v) {
    const QString z = QString::number(v);
    dazu(altBlockDir + u'/' + alt + z + QStringLiteral(".dwg"), neuBlockDir + u'/' + neu + z + QStringLiteral(".dwg"));
    if (v == 0) continue;
    for (const QString& e : {endung, andereEndung}) dazu(altDir + u'/' + alt + z + e, neuDir + u'/' + neu + z + e);
  }
  // 3. The variant lists.
  t.step(QStringLiteral("möglich dat-Dateien verschieben (Varianten)"));
  for (int v = 0; v <= 4; ++v) {
    const QString z = QString::number(v);
    dazu(altDir + u'/' + alt + z + QStringLiteral(".dat"), neuDir + u'/' + neu + z + QStringLiteral(".dat"));
  }
  // 4. The variant drawings: first three characters of the old name, the last
  // four of the new code, the rest of the old name (view digit, ".dwg").
  t.step(QStringLiteral("mögliche Varianten verschieben"));
  Recordset rv;
  if (!rv.Open(QStringLiteral("SELECT Nr, BlockDateiName FROM tblVariationBloecke WHERE BlockID = ? ORDER BY Nr"),
               lib.connDb, {qlonglong(b.nr)})) {
    subErrorAllgemein(false, t.routine(), rv.lastError());
    return false;
  }
  for (; !rv.isEOF(); rv.MoveNext()) {
    const QString name = rv.text(QStringLiteral("BlockDateiName"));
    if (name.size() < 8) continue;
    const QString neuName = name.left(3) + neu.right(4) + name.mid(7);
    j.varianten << VerschiebeJournal::Variante{rv.value(QStringLiteral("Nr")).toLongLong(), name, neuName};
    dazu(altBlockDir + QStringLiteral("/Varia/") + name, neuBlockDir + QStringLiteral("/Varia/") + neuName);
  }
  return true;
}

bool BlockVerschieben::blockVerschieben(const Belegung& b, const QString& neu, int lfd) {
  Trace t(QStringLiteral("DateienUmEinePositionVerschieben"));
  t.step(b.code + QStringLiteral(" -> ") + neu);
  Bibliothek& lib = bv_.bibliothek();
  const QString bib = sauber(lib.VerzeichnisOhneDb);
  VerschiebeJournal j;
  if (!planen(b, neu, j)) return false;
  auto voll = [&bib](const QString& rel) { return QDir::isAbsolutePath(rel) ? rel : bib + u'/' + rel; };

  if (!fctVerschiebeJournalSchreiben(lib.VerzeichnisOhneDb, j)) return false;
  haltepunkt("schieben-1", lfd);

  // The groups of files in their order: slide, drawings and view slides,
  // variant lists, variant drawings. A group ends where the next kind begins.
  auto gruppe = [&j](int i) {
    const QString& nach = j.dateien[i].second;
    if (nach.contains(QStringLiteral("/Varia/"), Qt::CaseInsensitive)) return 4;
    if (nach.endsWith(QStringLiteral(".dat"), Qt::CaseInsensitive)) return 3;
    const QString name = nach.mid(nach.lastIndexOf(u'/') + 1);
    if (name.size() == j.codeNeu.size() + 4) return 1;  // <code>.slb / .sld
    return 2;
  };
  // The step after group k is "schieben-<k+1>".
  static const char* const kNach[] = {"", "schieben-2", "schieben-3", "schieben-4", "schieben-5"};
  QList<int> erledigt;
  bool ok = true;
  int schritt = 1;
  for (int i = 0; i < j.dateien.size() && ok; ++i) {
    const int g = gruppe(i);
    while (schritt < g) haltepunkt(kNach[schritt++], lfd);
    const QString von = voll(j.dateien[i].first), nach = voll(j.dateien[i].second);
    fctMkDirAlle(QFileInfo(nach).absolutePath());
    if (MoveAFile(von, nach)) {
      bestand_->verschoben(von, nach);
      erledigt << i;
    } else {
      ok = false;
    }
  }
  if (ok) {
    while (schritt <= 4) haltepunkt(kNach[schritt++], lfd);
    ok = fctVerschiebungZeilenSchreiben(lib.connDb, lib.VerzeichnisOhneDb, j);
  }
  if (!ok) {
    // The block goes back to its old code whole: the files moved so far return.
    bool zurueck = true;
    for (qsizetype k = erledigt.size() - 1; k >= 0; --k) {
      const auto& d = j.dateien[erledigt[k]];
      if (MoveAFile(voll(d.second), voll(d.first)))
        bestand_->verschoben(voll(d.second), voll(d.first));
      else
        zurueck = false;
    }
    if (zurueck) fctVerschiebeJournalLoeschen(lib.VerzeichnisOhneDb);
    subMsgboxInfoEinzeilig(labels().fctBeschriftMsgboxZuordnen(kMsgVerschiebenBlockFehler) + u' ' + b.code +
                           QStringLiteral(" → ") + neu + u'\n' +
                           labels().fctBeschriftMsgboxZuordnen(kMsgVerschiebenBlockFehler2));
    return false;
  }
  haltepunkt("schieben-6", lfd);
  fctVerschiebeJournalLoeschen(lib.VerzeichnisOhneDb);
  haltepunkt("schieben-7", lfd);
  return true;
}

bool BlockVerschieben::DateienUmEinePositionVerschieben(const QString& slideLib, const QString& blockNrAlt,
                                                        const QString& blockNrNeu) {
  std::map<int32_t, Belegung> belegung;
  if (!belegungLesen(belegung)) return false;
  const Belegung* gefunden = nullptr;
  for (const auto& [slot, b] : belegung) {
    if (b.code.compare(blockNrNeu, Qt::CaseInsensitive) == 0) {
      subErrorAllgemein(false, QStringLiteral("DateienUmEinePositionVerschieben"),
                        QStringLiteral("Der Platz %1 ist nicht frei.").arg(blockNrNeu));
      return false;
    }
    if (b.code.compare(blockNrAlt, Qt::CaseInsensitive) == 0) gefunden = &b;
  }
  if (!gefunden) {
    subErrorAllgemein(false, QStringLiteral("DateienUmEinePositionVerschieben"),
                      QStringLiteral("Auf dem Platz %1 steht kein Block.").arg(blockNrAlt));
    return false;
  }
  Belegung b = *gefunden;
  if (!slideLib.isEmpty()) b.slideLib = slideLib;
  bestand_.reset();
  const bool ok = blockVerschieben(b, blockNrNeu, 1);
  bestand_.reset();
  return ok;
}

BlockVerschieben::Ergebnis BlockVerschieben::verschieben(const std::map<int32_t, Belegung>& belegung,
                                                         int32_t vonSlot, int32_t abstand, bool nurBisLuecke) {
  Trace t(nurBisLuecke ? QStringLiteral("subBloeckeUmEinsVerschieben") : QStringLiteral("fctEineSeiteNachHinten"));
  verschoben_ = 0;
  // The blocks to move, the last first.
  std::vector<std::pair<int32_t, const Belegung*>> zuVerschieben;
  if (nurBisLuecke) {
    int32_t s = vonSlot;
    for (auto it = belegung.find(s); it != belegung.end() && it->first == s; ++it, ++s)
      zuVerschieben.emplace_back(s, &it->second);
    t.step(QStringLiteral("Lücke auf Platz ") + QString::number(s));
  } else {
    for (auto it = belegung.lower_bound(vonSlot); it != belegung.end(); ++it)
      zuVerschieben.emplace_back(it->first, &it->second);
  }
  if (zuVerschieben.empty()) return Ergebnis::Nichts;
  std::reverse(zuVerschieben.begin(), zuVerschieben.end());
  const int32_t obergrenze = zuVerschieben.front().first + abstand;
  QStringList prefix;
  if (!fctPrefixEinlesen(obergrenze, prefix)) return Ergebnis::Fehler;

  Bibliothek& lib = bv_.bibliothek();
  if (lib.hooks.arbeitsfensterZeigen)
    lib.hooks.arbeitsfensterZeigen(labels().fctBeschriftMsgboxZuordnen(199), labels().fctBeschriftMsgboxZuordnen(200));
  bestand_ = std::make_unique<DateiBestand>();
  const int gesamt = int(zuVerschieben.size());
  Ergebnis e = Ergebnis::Fertig;
  for (int i = 0; i < gesamt; ++i) {
    if (fortschritt && !fortschritt(i, gesamt)) {
      e = Ergebnis::Abgebrochen;
      break;
    }
    const auto& [slot, b] = zuVerschieben[size_t(i)];
    const QString neu = fctBlockCode(lib.strAktuelleOrdnerNr, slot + abstand, prefix);
    if (!blockVerschieben(*b, neu, i + 1)) {
      e = Ergebnis::Fehler;
      break;
    }
    ++verschoben_;
  }
  if (e == Ergebnis::Fertig && fortschritt) fortschritt(gesamt, gesamt);
  bestand_.reset();
  if (lib.hooks.arbeitsfensterSchliessen) lib.hooks.arbeitsfensterSchliessen();
  if (e == Ergebnis::Abgebrochen)
    subMsgboxInfoZweizeilig(kMsgVerschiebenAbgebrochen, kMsgVerschiebenAbgebrochen2);
  return e;
}

void BlockVerschieben::browserNeuEinlesen() {
  Bibliothek& lib = bv_.bibliothek();
  lib.subRsBlockInfo0Oeffnen(lib.lngAktuelleOrdnerID);
  lib.subRsTblMarkierteBloeckeOeffnen();
  bv_.subRsSeitenNeuEinlesen();
  bv_.fctSeiteInCboEinlesen();
  bv_.subSeitenwechselSequenz();
}

BlockVerschieben::Ergebnis BlockVerschieben::subBloeckeUmEinsVerschieben() {
  Trace t(QStringLiteral("subBloeckeUmEinsVerschieben"));
  Bibliothek& lib = bv_.bibliothek();
  if (lib.booSchreibgeschuetzt || !lib.connDb.isOpen()) return Ergebnis::Nichts;
  std::map<int32_t, Belegung> belegung;
  if (!belegungLesen(belegung)) return Ergebnis::Fehler;
  const int32_t aktiv = int32_t(bv_.s1) * bv_.intBilder + bv_.pos;
  const Ergebnis e = verschieben(belegung, aktiv, 1, true);
  if (e != Ergebnis::Nichts) browserNeuEinlesen();
  return e;
}

BlockVerschieben::Ergebnis BlockVerschieben::fctEineSeiteNachHinten(bool ohneNeuEinlesen) {
  Trace t(QStringLiteral("fctEineSeiteNachHinten"));
  Bibliothek& lib = bv_.bibliothek();
  if (lib.booSchreibgeschuetzt || !lib.connDb.isOpen()) return Ergebnis::Nichts;
  std::map<int32_t, Belegung> belegung;
  if (!belegungLesen(belegung)) return Ergebnis::Fehler;
  const int32_t erster = int32_t(bv_.s1) * bv_.intBilder;
  Ergebnis e = verschieben(belegung, erster, bv_.intBilder, false);
  if (e == Ergebnis::Nichts || e == Ergebnis::Fertig) {
    // The page names from the active page on follow their blocks.
    haltepunkt("schieben-8", verschoben_);
    const int seitenNr = bv_.s1 + 1;
    const QVariant ordnerID = lib.connDb.scalar(QStringLiteral("SELECT Nr FROM tblOrdner WHERE OrdnerNr = ?"),
                                                {lib.strAktuelleOrdnerNr});
    const int vorher = lib.connDb
                           .scalar(QStringLiteral("SELECT COUNT(*) FROM tblSeiten WHERE NrTblOrdner = ? AND "
                                                  "SeitenNr >= ?"),
                                   {ordnerID, seitenNr})
                           .toInt();
    if (vorher > 0) {
      t.step(QStringLiteral("Seiten umnummerieren"));
      bool ok = lib.connDb.begin();
      ok = ok && lib.connDb.execute(QStringLiteral("UPDATE tblSeiten SET SeitenNr = SeitenNr + 1 WHERE "
                                                   "NrTblOrdner = ? AND SeitenNr >= ?"),
                                    {ordnerID, seitenNr});
      ok = ok && lib.connDb.commit();
      if (!ok) {
        const QString grund = lib.connDb.error();
        lib.connDb.rollback();
        subErrorAllgemein(false, t.routine(), grund);
        e = Ergebnis::Fehler;
      } else if (e == Ergebnis::Nichts) {
        e = Ergebnis::Fertig;
      }
    }
  }
  if (e != Ergebnis::Nichts && !ohneNeuEinlesen) {
    t.step(QStringLiteral("BlockNr neu einlesen"));
    browserNeuEinlesen();
  }
  return e;
}

}  // namespace kolvane

#include "bibliothekspruefung.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QMap>
#include <QSet>
#include <exception>

#include "connection.h"
#include "diagnostics.h"
#include "layout.h"
#include "paths.h"
#include "prefix.h"
#include "recordset.h"
#include "schema.h"

namespace kolvane {

namespace {

const QString kZwischenA = QStringLiteral("ZwischenA");

QString artText(Befund::Art art) {
  switch (art) {
    case Befund::Art::ZeileOhneDatei: return QStringLiteral("Zeile ohne Datei");
    case Befund::Art::DateiOhneZeile: return QStringLiteral("Datei ohne Zeile");
    case Befund::Art::DoppelterCode: return QStringLiteral("Doppelter Code");
    case Befund::Art::VarianteOhneBlock: return QStringLiteral("Variante ohne Block");
    case Befund::Art::VarianteOhneDatei: return QStringLiteral("Variante ohne Datei");
    case Befund::Art::MarkeOhneBlock: return QStringLiteral("Markierung ohne Block");
    case Befund::Art::BlockOhneOrdner: return QStringLiteral("Block ohne Ordner");
    case Befund::Art::OrdnerOhneVerzeichnis: return QStringLiteral("Ordner ohne Verzeichnis");
    case Befund::Art::CodeOhnePlatz: return QStringLiteral("Code auf keinem Platz");
    case Befund::Art::SlideLibAbweichend: return QStringLiteral("SlideLib abweichend");
  }
  return {};
}

// Rows that stand on no slot on purpose: the cut block and the blocks of a
// cut page. Their files keep the code they had before the cut.
bool istZwischenspeicherZeile(const QString& block) {
  return block.compare(kZwischenA, Qt::CaseInsensitive) == 0 || block.contains(u'§');
}

// Where a block's files lie: the folder directory's name and the code in
// the file names.
struct DateiOrt {
  QString ordnerNr;
  QString code;
};

// The folder and code named by a SlideLib ("000\0000021.slb", or an absolute
// path of an older library).
DateiOrt ortAusSlideLib(const QString& slideLib) {
  const QFileInfo fi(fctNativerPfad(slideLib));
  const QString name = fi.fileName();
  return {fi.dir().dirName(), name.size() > 4 ? name.left(name.size() - 4) : name};
}

class Pruefung {
 public:
  Pruefung(const QString& bibliothek, Connection& conn) : bib_(bibliothek), conn_(conn) {}

  bool laufen(QString* fehler);
  std::vector<Befund> befunde;

 private:
  // The path relative to the library with "/", or the absolute path when it
  // lies outside.
  QString relativ(const QString& pfad) const {
    const QString sauber = QDir::cleanPath(QDir::fromNativeSeparators(pfad));
    const QString wurzel = QDir::cleanPath(QDir::fromNativeSeparators(bib_));
    if (sauber.startsWith(wurzel + u'/')) return sauber.mid(wurzel.size() + 1);
    return sauber;
  }
  QString schluessel(const QString& pfad) const { return relativ(pfad).toLower(); }
  void melden(Befund::Art art, const QString& block, const QString& datei, const QString& was,
              bool reparierbar, int64_t zeile) {
    Befund b;
    b.art = art;
    b.block = block;
    b.datei = datei;
    b.text = artText(art) + QStringLiteral(": ") + (block.isEmpty() ? QString() : block + ": ") + was;
    b.reparierbar = reparierbar;
    b.zeile = zeile;
    befunde.push_back(b);
  }
  // A file the row needs: a finding when it is missing. It is owned either way.
  void brauchen(const QString& pfad, const QString& block, int64_t nr) {
    besessen_.insert(schluessel(pfad));
    if (!QFileInfo(pfad).isFile())
      melden(Befund::Art::ZeileOhneDatei, block, relativ(pfad),
             QDir::toNativeSeparators(relativ(pfad)) + QStringLiteral(" fehlt"), false, nr);
  }
  void besitzen(const QString& pfad) { besessen_.insert(schluessel(pfad)); }

  bool ordnerLesen(QString* fehler);
  bool bloeckeLesen(QString* fehler);
  bool variantenLesen(QString* fehler);
  bool markenLesen(QString* fehler);
  void dateienDurchsehen();

  QString bib_;
  Connection& conn_;
  QMap<int64_t, QString> ordner_;               // Nr -> OrdnerNr
  QHash<int64_t, DateiOrt> bloecke_;            // block Nr -> where its files lie
  QSet<QString> markierbar_;                    // codes a mark may name (lower case)
  QSet<QString> besessen_;                      // files owned by a row (relative, lower case)
};

bool Pruefung::ordnerLesen(QString* fehler) {
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT Nr, OrdnerNr FROM tblOrdner ORDER BY Nr"), conn_)) {
    *fehler = rs.lastError();
    return false;
  }
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext()) {
    const int64_t nr = rs.value(QStringLiteral("Nr")).toLongLong();
    const QString ordnerNr = rs.text(QStringLiteral("OrdnerNr")).trimmed();
    ordner_.insert(nr, ordnerNr);
    if (ordnerNr.isEmpty()) {
      melden(Befund::Art::OrdnerOhneVerzeichnis, {}, {},
             QStringLiteral("die Ordnerzeile %1 hat keine Ordnernummer").arg(nr), false, nr);
      continue;
    }
    const QString verzeichnis = fctDateiFinden(fctPfadZusammenfuegen(bib_, ordnerNr));
    if (!QFileInfo(verzeichnis).isDir())
      melden(Befund::Art::OrdnerOhneVerzeichnis, {}, ordnerNr,
             QStringLiteral("das Verzeichnis %1 des Ordners fehlt").arg(ordnerNr), true, nr);
  }
  return true;
}

bool Pruefung::bloeckeLesen(QString* fehler) {
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT Nr, Block, SlideLib, OrdnerID, AX1, AX2, AX3, AX4 FROM "
                              "tblBlockInfo ORDER BY Nr"),
               conn_)) {
    *fehler = rs.lastError();
    return false;
  }
  // Without the suffix table no code can be placed; that part is left out then.
  const bool mitTabelle = QFileInfo(prefixDatei()).isFile();
  QHash<QString, int64_t> erste;  // file code (lower case) -> Nr of the first row on it
  bool zwischenAGesehen = false;
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext()) {
    const int64_t nr = rs.value(QStringLiteral("Nr")).toLongLong();
    const QString block = rs.text(QStringLiteral("Block")).trimmed();
    const QString slideLib = rs.text(QStringLiteral("SlideLib")).trimmed();
    const QVariant ordnerId = rs.value(QStringLiteral("OrdnerID"));
    const bool reserviert = istZwischenspeicherZeile(block);
    const DateiOrt ausSlideLib = ortAusSlideLib(slideLib);

    DateiOrt ort;
    bool ordnerBekannt = false;
    if (reserviert) {
      ort = ausSlideLib;
    } else {
      const auto it = ordner_.constFind(ordnerId.toLongLong());
      ordnerBekannt = !ordnerId.isNull() && it != ordner_.constEnd() && !it->isEmpty();
      ort = {ordnerBekannt ? *it : ausSlideLib.ordnerNr, block};
      if (!ordnerBekannt)
        melden(Befund::Art::BlockOhneOrdner, block, {},
               QStringLiteral("die Zeile %1 nennt den Ordner %2, den es nicht gibt")
                   .arg(nr)
                   .arg(ordnerId.isNull() ? QStringLiteral("(leer)") : ordnerId.toString()),
               false, nr);
    }
    if (block.isEmpty() || (reserviert && (slideLib.isEmpty() || ort.code.isEmpty()))) {
      melden(Befund::Art::ZeileOhneDatei, block, {},
             QStringLiteral("die Zeile %1 nennt keinen Code, ihre Dateien sind nicht zu finden").arg(nr),
             false, nr);
      continue;
    }

    // Two rows on one code would share every file.
    const QString codeSchluessel = ort.code.toLower();
    const auto vorher = erste.constFind(codeSchluessel);
    if (vorher != erste.constEnd() ||
        (block.compare(kZwischenA, Qt::CaseInsensitive) == 0 && zwischenAGesehen)) {
      const QString anderer = vorher != erste.constEnd() ? QString::number(*vorher) : kZwischenA;
      melden(Befund::Art::DoppelterCode, block, {},
             QStringLiteral("die Zeile %1 steht auf demselben Code wie die Zeile %2")
                 .arg(nr)
                 .arg(anderer),
             false, nr);
      continue;
    }
    erste.insert(codeSchluessel, nr);
    if (block.compare(kZwischenA, Qt::CaseInsensitive) == 0) zwischenAGesehen = true;
    bloecke_.insert(nr, ort);
    // A cut block's marks still name its old code.
    markierbar_.insert(block.toLower());
    markierbar_.insert(codeSchluessel);

    if (!reserviert && ordnerBekannt) {
      const bool imOrdner = block.left(ort.ordnerNr.size()).compare(ort.ordnerNr, Qt::CaseInsensitive) == 0;
      if (!imOrdner || (mitTabelle && fctSlotAusBlockCode(block) < 0))
        melden(Befund::Art::CodeOhnePlatz, block, {},
               imOrdner ? QStringLiteral("der Code ist auf keinem Platz des Ordners %1").arg(ort.ordnerNr)
                        : QStringLiteral("der Code gehört nicht in den Ordner %1").arg(ort.ordnerNr),
               false, nr);
      // SlideLib must name <N>\<C>.slb or .sld (an absolute path of an older
      // library by its last two parts).
      const QString endung = slideLib.right(4).toLower();
      if (!slideLib.isEmpty() &&
          (ausSlideLib.ordnerNr.compare(ort.ordnerNr, Qt::CaseInsensitive) != 0 ||
           ausSlideLib.code.compare(block, Qt::CaseInsensitive) != 0 ||
           (endung != QLatin1String(".slb") && endung != QLatin1String(".sld"))))
        melden(Befund::Art::SlideLibAbweichend, block, {},
               QStringLiteral("SlideLib \"%1\" passt nicht zum Code").arg(slideLib), false, nr);
    }

    // The files the row needs: its slide, the drawing of view 0 and of each
    // further view that has point A.
    if (slideLib.isEmpty())
      melden(Befund::Art::ZeileOhneDatei, block, {}, QStringLiteral("SlideLib ist leer"), false, nr);
    else
      brauchen(fctSlideLibPfad(bib_, slideLib), block, nr);
    brauchen(fctBlockDwgPfad(bib_, ort.ordnerNr, ort.code, 0), block, nr);
    for (int v = 1; v <= 4; ++v) {
      const QVariant ax = rs.value(QStringLiteral("AX%1").arg(v));
      if (!ax.isNull() && !ax.toString().isEmpty())
        brauchen(fctBlockDwgPfad(bib_, ort.ordnerNr, ort.code, v), block, nr);
    }
    // Every file named by the code belongs to the row, needed or not.
    for (int v = 0; v <= 4; ++v) {
      for (const char* endung : {".slb", ".sld"})
        besitzen(fctSlidePfad(bib_, ort.ordnerNr, ort.code, v, QLatin1String(endung)));
      besitzen(fctVariantenListePfad(bib_, ort.ordnerNr, ort.code, v));
      besitzen(fctBlockDwgPfad(bib_, ort.ordnerNr, ort.code, v));
    }
  }
  return true;
}

bool Pruefung::variantenLesen(QString* fehler) {
  if (!conn_.tableExists(QStringLiteral("tblVariationBloecke"))) return true;
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT Nr, BlockID, BlockDateiName FROM tblVariationBloecke ORDER BY Nr"),
               conn_)) {
    *fehler = rs.lastError();
    return false;
  }
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext()) {
    const int64_t nr = rs.value(QStringLiteral("Nr")).toLongLong();
    const QVariant blockId = rs.value(QStringLiteral("BlockID"));
    const QString name = rs.text(QStringLiteral("BlockDateiName")).trimmed();
    const auto it = bloecke_.constFind(blockId.toLongLong());
    if (blockId.isNull() || it == bloecke_.constEnd()) {
      melden(Befund::Art::VarianteOhneBlock, {}, {},
             QStringLiteral("die Variantenzeile %1 (%2) gehört zur Blockzeile %3, die es nicht gibt")
                 .arg(nr)
                 .arg(name)
                 .arg(blockId.isNull() ? QStringLiteral("(leer)") : blockId.toString()),
             true, nr);
      continue;
    }
    if (name.isEmpty()) {
      melden(Befund::Art::VarianteOhneDatei, it->code, {},
             QStringLiteral("die Variantenzeile %1 nennt keine Datei").arg(nr), false, nr);
      continue;
    }
    const QString pfad = fctDateiFinden(fctVariaVerzeichnis(bib_, it->ordnerNr) + name);
    besitzen(pfad);
    if (!QFileInfo(pfad).isFile())
      melden(Befund::Art::VarianteOhneDatei, it->code, relativ(pfad),
             QDir::toNativeSeparators(relativ(pfad)) + QStringLiteral(" fehlt"), false, nr);
  }
  return true;
}

bool Pruefung::markenLesen(QString* fehler) {
  if (!conn_.tableExists(QStringLiteral("tblMarkierteBloecke"))) return true;
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT Nr, BlockNr FROM tblMarkierteBloecke ORDER BY Nr"), conn_)) {
    *fehler = rs.lastError();
    return false;
  }
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext()) {
    const int64_t nr = rs.value(QStringLiteral("Nr")).toLongLong();
    const QString code = rs.text(QStringLiteral("BlockNr")).trimmed();
    if (!markierbar_.contains(code.toLower()))
      melden(Befund::Art::MarkeOhneBlock, code, {},
             QStringLiteral("die Markierung %1 nennt einen Block, den es nicht gibt").arg(nr), true, nr);
  }
  return true;
}

void Pruefung::dateienDurchsehen() {
  QStringList fremde;
  for (const QString& ordnerNr : ordner_) {
    if (ordnerNr.isEmpty()) continue;
    const QString verzeichnis = fctDateiFinden(fctPfadZusammenfuegen(bib_, ordnerNr));
    if (!QFileInfo(verzeichnis).isDir()) continue;
    // The folder directory, its Block/ and Block/Varia/, each with its kinds.
    const QDir ordnerDir(verzeichnis);
    const QString blockDir = fctDateiFinden(ordnerDir.filePath(QStringLiteral("Block")));
    const QString variaDir = fctDateiFinden(QDir(blockDir).filePath(QStringLiteral("Varia")));
    const QList<QPair<QString, QStringList>> orte = {
        {verzeichnis, {QStringLiteral("*.slb"), QStringLiteral("*.sld"), QStringLiteral("*.dat")}},
        {blockDir, {QStringLiteral("*.dwg")}},
        {variaDir, {QStringLiteral("*.dwg")}}};
    for (const auto& [dir, muster] : orte) {
      QDir d(dir);
      if (!d.exists()) continue;
      d.setNameFilters(muster);
      d.setFilter(QDir::Files | QDir::Hidden);
      for (const QFileInfo& fi : d.entryInfoList(QDir::Files | QDir::Hidden, QDir::Name)) {
        if (!besessen_.contains(schluessel(fi.filePath()))) fremde << relativ(fi.filePath());
      }
    }
  }
  fremde.removeDuplicates();
  fremde.sort(Qt::CaseInsensitive);
  for (const QString& datei : fremde)
    melden(Befund::Art::DateiOhneZeile, {}, datei,
           QDir::toNativeSeparators(datei) + QStringLiteral(" gehört zu keiner Zeile"), true, 0);
}

bool Pruefung::laufen(QString* fehler) {
  if (!conn_.tableExists(QStringLiteral("tblOrdner")) ||
      !conn_.tableExists(QStringLiteral("tblBlockInfo"))) {
    *fehler = QStringLiteral("Der Datenbank fehlen die Tabellen tblOrdner oder tblBlockInfo.");
    return false;
  }
  return ordnerLesen(fehler) && bloeckeLesen(fehler) && variantenLesen(fehler) &&
         markenLesen(fehler) && (dateienDurchsehen(), true);
}

// A free place below Verwaist/ for a set-aside file: the same relative path,
// or with " (2)", " (3)" ... before the extension when that is taken.
QString freierPlatz(const QString& ziel) {
  if (!QFileInfo::exists(ziel)) return ziel;
  const QFileInfo fi(ziel);
  const QString stamm = fi.completeBaseName();
  const QString endung = fi.suffix().isEmpty() ? QString() : u'.' + fi.suffix();
  for (int i = 2;; ++i) {
    const QString p = fi.dir().filePath(QStringLiteral("%1 (%2)%3").arg(stamm).arg(i).arg(endung));
    if (!QFileInfo::exists(p)) return p;
  }
}

QString datenbankIn(const QString& bibliothek) {
  return fctDateiFinden(fctPfadZusammenfuegen(bibliothek, dbDateiName()));
}

}  // namespace

QString fctBefundArtText(Befund::Art art) { return artText(art); }

QString verwaistVerzeichnisName() { return QStringLiteral("Verwaist"); }

std::vector<Befund> fctBibliothekPruefen(const QString& bibliotheksVerzeichnis, QString* fehler) {
  const QString routine = QStringLiteral("fctBibliothekPruefen");
  Trace t(routine);
  QString grund;
  std::vector<Befund> ergebnis;
  try {
    const QString bib = QDir::cleanPath(QFileInfo(fctNativerPfad(bibliotheksVerzeichnis)).absoluteFilePath());
    t.step(QStringLiteral("Datenbank öffnen"));
    Connection conn;
    if (!QFileInfo(bib).isDir())
      grund = QStringLiteral("Das Verzeichnis %1 gibt es nicht.").arg(bib);
    else if (!conn.open(datenbankIn(bib), Connection::Mode::ReadOnly))
      grund = conn.error();
    if (grund.isEmpty()) {
      t.step(QStringLiteral("Zeilen und Dateien vergleichen"));
      Pruefung p(bib, conn);
      if (p.laufen(&grund)) ergebnis = std::move(p.befunde);
    }
  } catch (const std::exception& e) {
    grund = QString::fromLocal8Bit(e.what());
  }
  if (!grund.isEmpty()) {
    subErrorAllgemein(true, routine, grund);
    ergebnis.clear();
  }
  if (fehler) *fehler = grund;
  return ergebnis;
}

bool fctBibliothekReparieren(const QString& bibliotheksVerzeichnis,
                             const std::vector<Befund>& befunde, QStringList* bericht) {
  const QString routine = QStringLiteral("fctBibliothekReparieren");
  Trace t(routine);
  QStringList zeilen;
  bool ok = true;
  auto scheitern = [&](const QString& was) {
    subErrorAllgemein(true, routine, was);
    zeilen << QStringLiteral("Fehlgeschlagen: ") + was;
    ok = false;
  };
  try {
    const QString bib = QDir::cleanPath(QFileInfo(fctNativerPfad(bibliotheksVerzeichnis)).absoluteFilePath());
    // 1. Missing folder directories: files are put back into them by hand later.
    t.step(QStringLiteral("Ordnerverzeichnisse anlegen"));
    for (const Befund& b : befunde) {
      if (b.art != Befund::Art::OrdnerOhneVerzeichnis || !b.reparierbar) continue;
      const QString pfad = fctPfadZusammenfuegen(bib, b.datei);
      if (fctMkDirAlle(pfad))
        zeilen << QStringLiteral("Repariert: Ordnerverzeichnis %1 angelegt").arg(b.datei);
      else
        scheitern(QStringLiteral("Das Verzeichnis %1 kann nicht angelegt werden.").arg(pfad));
    }
    // 2. Dangling variant rows and marks, in one transaction.
    QList<const Befund*> zeilenBefunde;
    for (const Befund& b : befunde)
      if (b.reparierbar &&
          (b.art == Befund::Art::VarianteOhneBlock || b.art == Befund::Art::MarkeOhneBlock))
        zeilenBefunde << &b;
    if (!zeilenBefunde.isEmpty()) {
      t.step(QStringLiteral("Verwaiste Zeilen löschen"));
      Connection conn;
      if (!conn.open(datenbankIn(bib), Connection::Mode::ReadWrite) || !conn.begin()) {
        scheitern(QStringLiteral("Die Datenbank kann nicht geändert werden: %1").arg(conn.error()));
      } else {
        QStringList gemacht;
        bool alle = true;
        for (const Befund* b : zeilenBefunde) {
          // A variant row goes only while its block is still gone.
          const bool variante = b->art == Befund::Art::VarianteOhneBlock;
          const QString sql =
              variante ? QStringLiteral("DELETE FROM tblVariationBloecke WHERE Nr = ? AND NOT EXISTS "
                                        "(SELECT 1 FROM tblBlockInfo b WHERE b.Nr = tblVariationBloecke.BlockID)")
                       : QStringLiteral("DELETE FROM tblMarkierteBloecke WHERE Nr = ?");
          if (!conn.execute(sql, {QVariant::fromValue<qint64>(b->zeile)})) {
            alle = false;
            break;
          }
          gemacht << (variante ? QStringLiteral("Repariert: Variantenzeile %1 gelöscht")
                               : QStringLiteral("Repariert: Markierung %1 gelöscht"))
                         .arg(b->zeile);
        }
        if (alle && conn.commit()) {
          zeilen << gemacht;
        } else {
          const QString e = conn.error();
          conn.rollback();
          scheitern(QStringLiteral("Verwaiste Varianten und Markierungen nicht gelöscht: %1").arg(e));
        }
      }
    }
    // 3. Stray files are moved aside, never deleted.
    t.step(QStringLiteral("Fremde Dateien beiseitelegen"));
    for (const Befund& b : befunde) {
      if (b.art != Befund::Art::DateiOhneZeile || !b.reparierbar || b.datei.isEmpty()) continue;
      const QString von = fctDateiFinden(fctPfadZusammenfuegen(bib, b.datei));
      if (!QFileInfo(von).isFile()) {
        zeilen << QStringLiteral("Schon fort: %1").arg(QDir::toNativeSeparators(b.datei));
        continue;
      }
      const QString ziel = freierPlatz(
          QDir(bib).filePath(verwaistVerzeichnisName() + u'/' + QDir::fromNativeSeparators(b.datei)));
      if (!fctMkDirAlle(QFileInfo(ziel).absolutePath()) || !MoveAFile(von, ziel) ||
          !QFileInfo(ziel).isFile()) {
        scheitern(QStringLiteral("Die Datei %1 kann nicht nach %2 verschoben werden.").arg(von, ziel));
        continue;
      }
      zeilen << QStringLiteral("Repariert: %1 beiseitegelegt nach %2")
                    .arg(QDir::toNativeSeparators(b.datei),
                         QDir::toNativeSeparators(QDir(bib).relativeFilePath(ziel)));
    }
    // 4. What needs a person.
    for (const Befund& b : befunde)
      if (!b.reparierbar) zeilen << QStringLiteral("Nicht repariert (braucht eine Entscheidung): ") + b.text;
  } catch (const std::exception& e) {
    scheitern(QString::fromLocal8Bit(e.what()));
  }
  if (bericht) *bericht << zeilen;
  return ok;
}

}  // namespace kolvane

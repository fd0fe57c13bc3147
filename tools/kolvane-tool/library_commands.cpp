#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QTemporaryDir>
#include <QTextStream>
#include <memory>

#include "bibliothek.h"
#include "commands.h"
#include "umgebung.h"
#include "connection.h"
#include "diagnostics.h"
#include "paths.h"
#include "prefix.h"
#include "recordset.h"
#include "schema.h"
#include "settings.h"

namespace kolvane::tool {

namespace {

int fehler(const QString& text) {
  QTextStream(stderr) << text << "\n";
  return 1;
}

int falscherAufruf(const QString& usage) {
  QTextStream(stderr) << "usage: kolvane-tool " << usage << "\n";
  return 2;
}


// LIBRARY as a directory or its dbKolvane.mdb.
QString datenbankPfad(const QString& argument) {
  const QString s = fctNativerPfad(argument);
  if (QFileInfo(s).isDir()) return fctDateiFinden(fctPfadZusammenfuegen(s, dbDateiName()));
  return fctDateiFinden(s);
}

// Opens a library for reading only; "" or what is wrong with it.
QString lesendOeffnen(const QString& pfad, Connection& conn) {
  QString grund;
  if (!Bibliothek::fctTestDb(pfad, &grund))
    return grund.isEmpty() ? QStringLiteral("%1 ist keine brauchbare Kolvane-Datenbank.").arg(pfad)
                           : grund;
  if (!conn.open(pfad, Connection::Mode::ReadOnly)) return conn.error();
  return {};
}

}  // namespace

int runNewLibrary(const QStringList& args) {
  if (args.size() != 1) return falscherAufruf(QStringLiteral("new-library DIR"));
  Umgebung umgebung;
  const QString dir = QFileInfo(fctNativerPfad(args[0])).absoluteFilePath();
  if (!fctMkDirAlle(dir)) return fehler(QStringLiteral("Das Verzeichnis %1 kann nicht angelegt werden.").arg(dir));
  const QString db = fctPfadZusammenfuegen(dir, dbDateiName());
  if (QFileInfo::exists(fctDateiFinden(db)))
    return fehler(QStringLiteral("In %1 liegt schon eine Datei %2.").arg(dir, dbDateiName()));
  if (!Mk_Datenbank(db)) {
    QFile::remove(db);
    return fehler(QStringLiteral("Die Datenbank %1 kann nicht angelegt werden.").arg(db));
  }
  if (!fctMkDirAlle(fctPfadZusammenfuegen(dir, QStringLiteral("000"))))
    return fehler(QStringLiteral("Das Ordnerverzeichnis 000 in %1 kann nicht angelegt werden.").arg(dir));
  QTextStream(stdout) << db << "\n";
  return 0;
}

int runInfo(const QStringList& args) {
  if (args.size() != 1) return falscherAufruf(QStringLiteral("info LIBRARY"));
  Umgebung umgebung;
  const QString pfad = datenbankPfad(args[0]);
  Connection conn;
  const QString problem = lesendOeffnen(pfad, conn);
  if (!problem.isEmpty()) return fehler(problem);
  QTextStream out(stdout);
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT o.Nr, o.OrdnerNr, o.Ordnername, (SELECT count(*) FROM "
                              "tblBlockInfo b WHERE b.OrdnerID = o.Nr) AS Bloecke FROM tblOrdner o "
                              "ORDER BY o.Nr"),
               conn))
    return fehler(rs.lastError());
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext())
    out << "folder\t" << rs.text("Nr") << '\t' << rs.text("OrdnerNr") << '\t'
        << rs.text("Ordnername") << '\t' << rs.text("Bloecke") << '\n';
  if (!rs.Open(QStringLiteral("SELECT o.OrdnerNr, s.SeitenNr, s.SeitenName FROM tblSeiten s LEFT "
                              "JOIN tblOrdner o ON s.NrTblOrdner = o.Nr ORDER BY s.NrTblOrdner, "
                              "s.SeitenNr, s.Nr"),
               conn))
    return fehler(rs.lastError());
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext())
    out << "page\t" << rs.text("OrdnerNr") << '\t' << rs.text("SeitenNr") << '\t'
        << rs.text("SeitenName") << '\n';
  return 0;
}

int runCodes(const QStringList& args) {
  const QString usage = QStringLiteral("codes LIBRARY --folder ORDNERNR --page N --slots S");
  if (args.size() != 7) return falscherAufruf(usage);
  QString library, folder;
  qint64 page = -1, anzahlSlots = -1;
  library = args[0];
  for (int i = 1; i + 1 < args.size(); i += 2) {
    bool ok = true;
    if (args[i] == QLatin1String("--folder"))
      folder = args[i + 1];
    else if (args[i] == QLatin1String("--page"))
      page = args[i + 1].toLongLong(&ok);
    else if (args[i] == QLatin1String("--slots"))
      anzahlSlots = args[i + 1].toLongLong(&ok);
    else
      return falscherAufruf(usage);
    if (!ok) return falscherAufruf(usage);
  }
  if (folder.isEmpty() || page < 0 || anzahlSlots < 1 || (page + 1) * anzahlSlots - 1 > INT32_MAX)
    return falscherAufruf(usage);
  Umgebung umgebung;
  const QString pfad = datenbankPfad(library);
  Connection conn;
  const QString problem = lesendOeffnen(pfad, conn);
  if (!problem.isEmpty()) return fehler(problem);
  const QVariant id =
      conn.scalar(QStringLiteral("SELECT Nr FROM tblOrdner WHERE OrdnerNr = ?"), {folder});
  if (!id.isValid()) return fehler(QStringLiteral("Der Ordner %1 ist nicht in %2.").arg(folder, pfad));
  const QString tabelle = prefixDatei();
  if (!QFileInfo::exists(tabelle))
    return fehler(QStringLiteral("Die Tabelle txtPrefix.txt fehlt neben dem Programm (%1).").arg(tabelle));
  QStringList aryPrefix;
  const int32_t erster = int32_t(page * anzahlSlots);
  const int32_t letzter = int32_t((page + 1) * anzahlSlots - 1);
  if (!fctPrefixEinlesen(letzter, aryPrefix))
    return fehler(QStringLiteral("Die Tabelle %1 ist nicht brauchbar.").arg(tabelle));
  Recordset rs;
  if (!rs.Open(QStringLiteral("SELECT Block, M0 FROM tblBlockInfo WHERE OrdnerID = ") + id.toString(),
               conn))
    return fehler(rs.lastError());
  QHash<QString, QString> texte;
  for (rs.MoveFirst(); !rs.isEOF(); rs.MoveNext())
    texte.insert(rs.text("Block").toUpper(), rs.text("M0"));
  QTextStream out(stdout);
  for (int32_t i = erster; i <= letzter; ++i) {
    const QString code = fctBlockCode(folder, i, aryPrefix);
    const auto it = texte.constFind(code.toUpper());
    out << i << '\t' << code << '\t' << (it == texte.constEnd() ? freiText() : *it) << '\n';
  }
  return 0;
}

}  // namespace kolvane::tool

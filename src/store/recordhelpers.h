#pragma once
#include <QString>
#include <QVariant>
#include <cstdint>
#include <vector>

namespace kolvane {

class Connection;
class Recordset;

// The record helpers: the few SQL shapes the program uses, on the library's
// connection (or the one given). Filter texts are built as they stand, with
// LIKE: "%", "_" and a quote in a value act as in SQL; nothing is escaped (a
// name with an apostrophe is refused where the user types it). Each helper
// reports its own failure through subErrorAllgemein and returns false or "".

// --- finding: the record set stands on the found row afterwards ---
// "spalte LIKE 'wert'" from the first row; the value is right-trimmed. False for
// a closed or empty record set (traced, not reported).
bool fctRsFind(Recordset& rs, const QString& spalte, const QString& wert);
// "spalte LIKE '%wert%'": contained anywhere.
bool fctRsFindStringEnthalten(Recordset& rs, const QString& spalte, const QString& wert);
// As fctRsFind; when nothing is found the record set returns to its old row.
bool fctRsFindMitZuruecksetzen(Recordset& rs, const QString& spalte, const QString& wert);

// --- reading: the record set is closed and opened anew ---
// "SELECT * FROM [tabelle] ORDER BY ordnung" (the bare table when ordnung is
// empty). True when the table has rows.
bool fctRsEinlesenAllgemein(Recordset& rs, Connection& conn, const QString& tabelle,
                            const QString& ordnung);
// bytZahl 0: "SELECT * FROM [tabelle] WHERE [spalte] LIKE 'wert'", otherwise
// "... = wert". True when the statement opened (the caller looks at the count).
bool fctRsEinlesenMitEinemKriterium(Recordset& rs, Connection& conn, const QString& tabelle,
                                    const QString& spalte, const QString& wert,
                                    uint8_t bytZahl);
// Opens a whole statement of the caller's.
bool fctRsEinlesenMitKriterium(Recordset& rs, Connection& conn, const QString& sql);
bool fctRsEinlesenMitKriterium(Recordset& rs, Connection& conn, const QString& sql,
                               const QString& trace);

// --- columns and values ---
bool fctSpalteVorhanden(const Recordset& rs, const QString& spalte);
// Adds the column when the table lacks it ("ALTER TABLE t ADD COLUMN c typ",
// old engine types such as "SHORT", "TEXT (100)"), then fills it with vorgabe
// when one is given. True when the column is there afterwards.
bool fctSpalteAnlegenFallsNichtVorhanden(Connection& conn, Recordset& rs, const QString& tabelle,
                                         const QString& spalte, const QString& typ,
                                         const QString& vorgabe);
// True when the column is missing or holds no value, in the library at pfad.
bool fctSpalteNichtVorhandenOhneEintrag0(const QString& spalte, const QString& tabelle,
                                         const QString& pfad);
bool fctWerteVonSpalteUebertragen(Connection& conn, const QString& tabelle, const QString& ziel,
                                  const QString& quelle);
// The value of spalte in the row where suchspalte is like wert; "" for no row,
// NULL, or a column the library lacks.
QString fctWertInSpalteAuslesen(Connection& conn, const QString& tabelle, const QString& spalte,
                                const QString& suchspalte, const QString& wert);
// Stores neu in spalte of that row; a missing column is added as "TEXT (100)".
bool fctWertInSpalteSpeichern(Connection& conn, const QString& tabelle, const QString& spalte,
                              const QString& suchspalte, const QString& wert,
                              const QString& neu);
bool fctPruefenWertVorhandenTrue(Connection& conn, const QString& tabelle, const QString& spalte,
                                 const QString& wert);
bool fctPruefenWertVorhandenGroesser1True(Connection& conn, const QString& tabelle,
                                          const QString& spalte, const QString& wert);
// The first matching row's rueckgabeSpalte: "0" for no row, "Fehler" on error,
// "" for NULL.
QString fctPruefenWertVorhandenMitRueckgabeWert(Connection& conn, const QString& tabelle,
                                                const QString& spalte, const QString& wert,
                                                const QString& rueckgabeSpalte);
// The last value of spalte in its own order; 0 for an empty table.
int32_t fctLetzterWertInSpalte(Connection& conn, const QString& tabelle, const QString& spalte);
// Deletes every row of the record set; stops at the first delete that fails.
bool fctAlleEintraegLoeschen(Recordset& rs);
// Swaps spalte of the row at position (1-based) with the next row (bytNachOben
// 1) or the previous one (0). False, with nothing changed, at the end.
bool fctWertVersetzen(uint8_t bytNachOben, Recordset& rs, int position, const QString& spalte);
// stamm followed by the first free number, from the highest one in use.
QString fctNaechsterFreierName(Connection& conn, const QString& tabelle, const QString& spalte,
                               const QString& stamm);

// --- views of a block ---
// View 0 always exists; view k (1 to 4) exists while AX<k>, the X of its point
// A, holds a value. Deleting a view sets its columns to null. Point A at the
// origin is a real point, so "0" counts, as does the "0.1" the keystroke route
// stores; only null or a blank text means no view. Every place that asks
// whether a view exists goes through these.
bool fctAnsichtWertVorhanden(const QVariant& ax);
// View k of the row the record set stands on (AX<k> must be selected).
bool byteAnsichtVorhanden(const Recordset& rs, int k);
// The views of that row, 0 first.
std::vector<uint8_t> fctVorhandeneAnsichten(const Recordset& rs);
// The same rule as an SQL condition on AX<k>.
QString fctAnsichtVorhandenSql(int k);

// --- connection ---
// Opens the library file pfadOderDb. The server branch is not part of this
// edition: it says so and returns false.
bool fctConnectionOeffnen(Connection& conn, const QString& pfadOderDb, const QString& server,
                          const QString& benutzer, const QString& kennwort,
                          uint8_t bytSqlServer);

}  // namespace kolvane

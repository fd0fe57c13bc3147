#pragma once
#include <QString>
#include <QStringList>
#include <cstdint>

namespace kolvane {

// The suffix table txtPrefix.txt and the block code. The table lies in the
// program directory; it holds at least 42875 distinct three-character items in
// a fixed order, the same for every library that shares it: stored codes,
// file names and slide names all derive from it.

// Slots per pass: slot i takes its suffix from pass i div 42874 (see
// fctPrefixEinlesen); the overflow digit of the code is the same quotient.
constexpr int32_t kSlotsJeDurchlauf = 42874;
// Items the table must hold.
constexpr int32_t kPrefixMindestAnzahl = kSlotsJeDurchlauf + 1;

// The table of the program directory (found without regard to case).
QString prefixDatei();

// Fills aryPrefix with the items for indices 0 to obergrenze. The first pass
// takes indices 0 to 42874 from lines 1 to 42875; every later pass starts the
// file again at line 1, at index (pass - 1) x 42874 + 1. The file is parsed
// and checked once per state on disk (three characters, none of % _ * ' [ ],
// all distinct ignoring case, at least 42875 items). Failures (missing, bad or
// short table) are reported; false then, and aryPrefix is empty.
bool fctPrefixEinlesen(int32_t obergrenze, QStringList& aryPrefix);
bool fctPrefixEinlesen(int32_t obergrenze, QStringList& aryPrefix, const QString& datei);

// Whether the table can be used; reports what is wrong with it.
bool fctPrefixTabellePruefen(const QString& datei = QString());

// The zero-based line of the table that slot i takes its suffix from.
int32_t fctPrefixZeile(int32_t slot);

// The code of slot i of a folder: OrdnerNr, the decimal text of i div 42874,
// aryPrefix(i). The one place codes are computed.
QString fctBlockCode(const QString& ordnerNr, int32_t slot, const QStringList& aryPrefix);

// The slot of a code, by the same rule backwards; -1 when the code can't come
// from this table.
int32_t fctSlotAusBlockCode(const QString& block, const QString& datei = QString());

}  // namespace kolvane

#pragma once
#include <QString>
#include <QVariantList>
#include <array>
#include <cstdint>

namespace kolvane {

// What the search dialog holds: a text per card field (0 to 9) and for the
// block name (10), a comparison per card field, and the four options.
struct Suchkriterien {
  static constexpr int kFelder = 11;
  static constexpr int kNameFeld = 10;
  std::array<QString, kFelder> txtBenennung;
  // "$", "=", ">", ">=", "<=", "<", "<>": stored and restored with a search;
  // the statement compares with LIKE whatever they say.
  std::array<QString, 10> comboxSuchkriterienVerknuepfen;
  bool checkAktuellerOrdner = false;
  bool checkGanzeWoerter = false;
  bool chkAnsichtenVarianten = true;   // names of all views and variants too
  bool checkDirektEinfuegen = true;    // what the host's block search relies on

  Suchkriterien() { comboxSuchkriterienVerknuepfen.fill(QStringLiteral("$")); }
  // True when no box holds a text (the folder limit is no search term).
  bool leer() const;
};

// The seven comparisons of a combo, "$" (anywhere in the field) first.
const std::array<QString, 7>& suchVerknuepfungen();

// A statement with the values of its parameters.
struct SuchAnweisung {
  QString sql;
  QVariantList werte;
};

// The statement of a search over tblBlockInfo: the columns the results need,
// one LIKE term per filled box, joined by AND, and the folder limit. Every
// typed text is a bound value: a quote, bracket, "--" or ";" is plain text,
// while "%" (any run) and "_" (one character) remain the wildcards of LIKE.
// Without checkGanzeWoerter a text may stand anywhere in its field. The block
// name looks in BlkName0, or with chkAnsichtenVarianten in all five view names
// and in the names of the block's variants. ordnerId is the current folder's Nr.
SuchAnweisung fctRsOeffnenKriterium(const Suchkriterien& k, int64_t ordnerId);

// The search strings of the ten card fields: "%text%" for a "$" row, the text
// for an "=" row, "" for the other comparisons.
std::array<QString, 10> ArraySuchkriteriumZuordnen(const Suchkriterien& k);

}  // namespace kolvane

#pragma once
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <optional>

namespace kolvane {

// What one insert hands to the host: the values the routine has settled
// before the first string goes out.
struct EinfuegeWerte {
  QString strBlockName;        // the name the block gets in the host, after the name rules
  QString strDatei;            // the drawing to insert (native path)
  QString strPfadSlash;        // the same with "/", for Lisp strings
  QString strMassstabXEinfuegen = QStringLiteral("1");
  QString strMassstabYEinfuegen = QStringLiteral("1");
  double dblWinkelEinfuegen = 0;
  int16_t NummerEinfuegepkt = 1;
  std::array<QString, 3> strDistanz{QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0")};
  uint8_t ansicht = 0;         // the view inserted
  QString strLayer, strLinientyp, strLayerFarbe;
  // The block's row: the data-card values M0 to M9 (nullopt when the row is
  // missing) and its own command, column Lisp<view>.
  std::optional<QStringList> werteM0bisM9;
  QString strLispBefehl;
};

}  // namespace kolvane

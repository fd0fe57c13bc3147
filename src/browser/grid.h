#pragma once
#include <cstdint>

namespace kolvane {

// The grid of one page, from the setting longAnzahlDerBilder.
struct GridSize {
  int intBilder = 20;
  int rows = 4;
  int columns = 5;
  bool corrected = false;  // the setting was out of range and is to be saved as 4
};

// 0: 4 (2x2), 1: 9 (3x3), 2: 16 (4x4), 3 and 4: 20 (4x5), 5 and 6: 36 (6x6),
// 7: 72 (8x9); any other value gives 20 and is corrected to 4.
GridSize gridForSetting(int32_t longAnzahlDerBilder);

}  // namespace kolvane

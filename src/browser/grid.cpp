#include "grid.h"

namespace kolvane {

GridSize gridForSetting(int32_t code) {
  switch (code) {
    case 0: return {4, 2, 2, false};
    case 1: return {9, 3, 3, false};
    case 2: return {16, 4, 4, false};
    case 3:
    case 4: return {20, 4, 5, false};
    case 5:
    case 6: return {36, 6, 6, false};
    case 7: return {72, 8, 9, false};
    default: return {20, 4, 5, true};
  }
}

}  // namespace kolvane

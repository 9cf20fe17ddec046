#include "app/ViewState.h"

#include <cmath>

namespace calder {

std::int32_t ScrollStepFor(std::int32_t memorySize) {
  if (memorySize <= 32768) return 1;
  return static_cast<std::int32_t>(std::nearbyint(memorySize / 32768.0));
}

} // namespace calder

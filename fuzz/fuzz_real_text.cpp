// Any bytes as a text of real values: what is accepted fills the full scale and never passes it.
#include "libs/file32/RealText.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace calder;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  RealValues reals;
  TextFault fault;
  if (!ParseReals(text, 100, reals, fault)) {
    if (fault.reason == TextReason::None || fault.line < 0 || fault.line > static_cast<std::int64_t>(size))
      std::abort();
    return 0;
  }
  if (reals.values.empty() || reals.values.size() > 100) std::abort();
  for (const double value : reals.values) {
    if (!std::isfinite(value) || value > reals.maximum || value < reals.minimum) std::abort();
  }
  std::vector<std::int16_t> codes(reals.values.size());
  if (!ScaleReals(reals, codes, fault)) return 0;
  for (std::size_t i = 0; i < codes.size(); ++i) {
    if (codes[i] == -32768 || (reals.values[i] > 0 && codes[i] < 0) || (reals.values[i] < 0 && codes[i] > 0)) {
      std::abort();
    }
  }
  return 0;
}

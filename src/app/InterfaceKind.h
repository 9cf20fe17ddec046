// The kinds of instrument interface. Append only: settings and files keep the numbers.
#pragma once

#include <cstdint>

namespace calder {

enum InterfaceKind : std::int16_t { kNiGpib = 0, kKiGpib = 1, kUsb488 = 2, kUsbTmc = 3, kSimulated = 4 };

} // namespace calder

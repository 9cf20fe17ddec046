// What the simulated instruments are: their limits, memories and the family whose commands they know.
#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace calder::sim {

enum class Family { Xg, Xj, Qn10, Qn40, Pj, Vj, Kz, Ub91, Ub92, Ub93 };

struct Range {
  double amplitude; // greatest, volts peak to peak; 0 is always taken
  double offsetMin;
  double offsetMax;
};

struct Model {
  std::string_view name;
  Family family;
  int channels;
  int dataBits;
  int memoryMin; // numbers of the waveform memories
  int memoryMax;
  int sizeMax; // points; the sizes are this one and its halves down to sizeMin
  int sizeMin;
  double frequencyMin;
  double frequencyMax;
  std::vector<Range> ranges;
  int usbProduct = 0; // of its USBTMC interface; 0: it has none

  [[nodiscard]] bool HasSize(int points) const;
};

inline constexpr int kUsbVendor = 0x1209;

// In the order of their numbers. The address on the bus is the number plus 1.
std::span<const Model> AllModels();

} // namespace calder::sim

// What the simulated instruments are: their limits, memories and the family whose commands they know.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace calder::sim {

struct Row;

// File: as its model's file describes it.
enum class Family { Xg, Xj, Qn10, Qn40, Pj, Vj, Kz, Ub91, Ub92, Ub93, File };

struct Range {
  double amplitude; // greatest, volts peak to peak; 0 is always taken
  double offsetMin;
  double offsetMax;
};

struct Model {
  std::string name;
  Family family = Family::File;
  int channels = 1;
  int dataBits = 16;
  int memoryMin = 0; // numbers of the waveform memories
  int memoryMax = 0;
  int sizeMax = 0; // points; the sizes are this one and its halves down to sizeMin
  int sizeMin = 0;
  double frequencyMin = 0;
  double frequencyMax = 0;
  std::vector<Range> ranges;
  int usbProduct = 0; // of its USBTMC interface; 0: it has none
  int usbVendor = 0x1209;
  std::vector<int> sizes{};                       // when they are not halves
  bool formatted = false;                         // its blocks begin with a format word and a count
  bool lowByteFirst = false;                      // when it is switched on
  std::shared_ptr<const std::vector<Row>> rows{}; // of a Family::File

  [[nodiscard]] bool HasSize(int points) const;
};

// Those with commands of their own, in the order of their numbers. The address on the bus is the number plus 1.
std::span<const Model> AllModels();

} // namespace calder::sim

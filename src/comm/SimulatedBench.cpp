#include "comm/SimulatedBench.h"

#include <fstream>

namespace calder {

SimulatedBench::SimulatedBench(const std::string& folder) {
  if (folder.empty()) return;
  std::ifstream file(folder + "/bench.txt");
  present_ = file.is_open();
  int address = 0;
  std::string model;
  while (file >> address >> model) addresses_[model] = address;
}

int SimulatedBench::AddressOf(const std::string& model) const {
  const auto found = addresses_.find(model);
  return found == addresses_.end() ? -1 : found->second;
}

} // namespace calder

// Whether the bus libraries are those of the simulated bench, which a file beside them says, and which instrument
// stands at which address there.
#pragma once

#include <map>
#include <string>

namespace calder {

class SimulatedBench {
public:
  // folder: the one that bus libraries are looked for in first; empty for none.
  explicit SimulatedBench(const std::string& folder);

  [[nodiscard]] bool Present() const { return present_; }
  // The GPIB address of a model's instrument, -1 when the bench has none.
  [[nodiscard]] int AddressOf(const std::string& model) const;

private:
  bool present_ = false;
  std::map<std::string, int> addresses_;
};

} // namespace calder

// What is wrong with a model file, and where.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace calder {

struct ModelFault {
  std::int32_t status = 0; // one of the negative statuses of sysinf32.h
  std::string file;        // path as it was given
  std::int32_t line = 0;   // 1-based; 0 when no line is to blame (a missing file, a missing key of the top level)
  std::string text;        // one English sentence
};

// Keeps the first fault of a reading. Readers go on after a fault with harmless values; what they find then is dropped,
// so that no caller has to look after every single value.
class FaultSink {
public:
  explicit FaultSink(std::string file) : file_(std::move(file)) {}

  void Report(std::int32_t status, std::int32_t line, std::string text) {
    if (!fault_) fault_ = ModelFault{status, file_, line, std::move(text)};
  }
  [[nodiscard]] bool Any() const { return fault_.has_value(); }
  [[nodiscard]] const std::optional<ModelFault>& Fault() const { return fault_; }

private:
  std::string file_;
  std::optional<ModelFault> fault_;
};

} // namespace calder

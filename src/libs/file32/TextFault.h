#pragma once

#include <cstdint>
#include <string>

namespace calder {

// Where and why a text file was refused.
struct TextFault {
  std::int64_t line = 0; // 1-based; 0: the file as a whole
  std::string reason;    // plain English, for people
};

} // namespace calder

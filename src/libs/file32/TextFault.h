#pragma once

#include <cstdint>

namespace calder {

enum class TextReason : std::uint8_t {
  None,
  NotANumber,
  NotWhole,
  OutsideTheCodes, // -32768 to 32767
  EmptyLine,       // between numbers
  NoNumber,        // in the whole file
  NoScale,         // every value is zero, or too small to be scaled
  NoRoom,          // for the points
  Unreadable,
  NoMemory,
};

// Where and why a text file was refused.
struct TextFault {
  std::int64_t line = 0; // 1-based; 0: the file as a whole
  TextReason reason = TextReason::None;
};

} // namespace calder

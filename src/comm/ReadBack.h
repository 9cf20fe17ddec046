// Reads the waveform in the instrument's memory back into the edit buffer. Only USBTMC can.
#pragma once

#include "comm/TransferContext.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace calder {

class SystemSetup;

// Fetches the waveform of memory MemoryNo into the receive file. False: the user was shown why, or has cancelled
// (cancelled is asked before each command).
[[nodiscard]] bool ReceiveWaveform(const TransferContext& context, const std::function<bool()>& cancelled = {});

// Decodes the receive file into the edit buffer, with an undo step, and sets the transfer format. False: the file holds
// no waveform block; nothing was changed.
[[nodiscard]] bool DecodeWaveform(const TransferContext& context, SystemSetup& setup);

// What a reply holds: `text,#<digits><count><block>`, the block as it is sent, high byte first.
struct ReceivedBlock {
  enum class Kind { None, Points, ControlPoints };
  Kind kind = Kind::None;
  std::vector<std::int16_t> codes;
  std::vector<std::int32_t> positions; // of control points, full scale W_CONTROL_POINT_SCALE
};
// None for anything that is not complete.
[[nodiscard]] ReceivedBlock ParseReceivedBlock(std::string_view content);

} // namespace calder

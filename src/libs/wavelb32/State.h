// What the waveform library keeps between calls: the table of buffers, scratch memory and the state of the noise.
// Inside the library only.
#pragma once

#include "libs/wavelb32/LaneColumns.h"
#include "libs/wavelb32/wavelb32.h"
#include "platform/DeviceContext.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace calder::wavelb {

enum class PointKind : std::uint8_t { Code16, Value32 };

// Buffers by handle. A handle is generation * 4096 + slot, so it is positive and never 0. Invariants:
// 1. A slot's generation changes each time that its buffer is freed, so the old handle no longer fits.
// 2. Freed slots are used again in the order in which they were freed, after at least kMinimumFree others.
class BufferTable {
public:
  // 0 when the memory cannot be had or all slots are in use.
  [[nodiscard]] WaveHandle Allocate(std::int32_t points, PointKind kind);
  // As many buffers as handles, in one block of memory that lives until the last of them is freed. False: none, and
  // the handles are 0.
  [[nodiscard]] bool AllocateTogether(std::int32_t points, PointKind kind, std::span<WaveHandle> handles);
  [[nodiscard]] std::int32_t Free(WaveHandle handle, PointKind kind);
  [[nodiscard]] std::span<std::int16_t> Codes(WaveHandle handle);
  [[nodiscard]] std::span<std::int32_t> Values(WaveHandle handle);

private:
  static constexpr std::int32_t kSlotBits = 12;
  static constexpr std::int32_t kSlotLimit = 1 << kSlotBits;
  static constexpr std::int32_t kGenerationLimit = (1 << (31 - kSlotBits)) - 1;
  static constexpr std::size_t kMinimumFree = 64;

  struct Slot {
    std::shared_ptr<std::byte> memory; // zeros at first; costs nothing before it is touched
    std::size_t points = 0;
    std::int32_t generation = 1;
    PointKind kind = PointKind::Code16;
  };

  [[nodiscard]] WaveHandle Take(std::shared_ptr<std::byte> memory, std::size_t points, PointKind kind);
  [[nodiscard]] Slot* Find(WaveHandle handle, PointKind kind);

  std::vector<Slot> slots_;
  std::deque<std::int32_t> free_;
};

// Scratch grows to the largest need and is kept, so that no drawing and no resampling pays for fresh memory.
struct State {
  BufferTable buffers;
  std::vector<std::int32_t> edges;
  std::vector<std::int16_t> lows;
  std::vector<std::int16_t> highs;
  std::vector<std::int16_t> tops;
  std::vector<std::int16_t> bottoms;
  LaneColumns lanes;
  LaneColumns ghostLanes;
  std::vector<std::uint32_t> ground; // of a row
  std::vector<std::uint32_t> row;
  std::vector<std::int16_t> copy;
  std::vector<DevicePoint> points;
  std::uint64_t noiseKey = 0;
  std::uint64_t noiseIndex = 0;
};

[[nodiscard]] State& TheState();

// Whole points of a range, as the public header says.
struct PointRange {
  std::size_t first = 0;
  std::size_t count = 0;
};

// None when the range does not lie within 0 to size, or is not a number.
[[nodiscard]] std::optional<PointRange> WholePoints(double start, double count, std::size_t size);

// A buffer's codes in a range of points, or the status that says why not.
struct CodeRange {
  std::int32_t status = W_SUCCESS;
  std::span<std::int16_t> codes;
};
[[nodiscard]] CodeRange FindCodes(WaveHandle handle, double start, double count);

// Parameters beyond this magnitude mean nothing to a waveform of 16-bit codes; refusing them keeps all sums finite.
inline constexpr double kParameterLimit = 1e12;
[[nodiscard]] inline bool IsUsable(double value) {
  return std::abs(value) <= kParameterLimit; // false for a NaN
}

// To the nearest code, halves to even, limited. REQUIRES: value is a number (an infinity is one).
[[nodiscard]] inline std::int16_t ToCode(double value) {
  constexpr double limit = W_CODE_MAX;
  const double above = value < -limit ? -limit : value;
  const double within = above > limit ? limit : above;
  return static_cast<std::int16_t>(static_cast<std::int32_t>(std::rint(within)));
}

} // namespace calder::wavelb

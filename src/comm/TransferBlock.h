// The bytes of a waveform as the instrument takes them.
//
// A model whose protocol says so takes a header of 8 bytes, two 32-bit words, and then either points (first word 0,
// second the number of points; 2 bytes a point) or control points (first word 1, second their number; 6 bytes each: a
// 32-bit position and a 16-bit code). The other models take the points alone. Byte order: high byte first, or low byte
// first when swapped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace calder {

constexpr std::size_t kBlockHeader = 8; // bytes

enum class BlockLayout { PointsAlone, HeaderAndPoints, ControlPoints };

struct BlockRequest {
  BlockLayout layout = BlockLayout::PointsAlone;
  bool lowByteFirst = false;
  std::int32_t divisor = 1;                // every code is divided by it and rounded, halves to even
  std::int32_t shownPoints = 0;            // the count in the header of points
  std::span<const std::int16_t> codes;     // points, or the control points' codes
  std::span<const std::int32_t> positions; // control points only; as many as codes
};

// The divisor that a bit mask stands for: the two's complement of its low 16 bits as a signed number (0xFFFC: 4);
// 1 for a mask of 0.
[[nodiscard]] std::int32_t DivisorOfMask(std::uint32_t mask);

// Fills the block, which is reused. progress gets 0 to 1000 now and then; when it returns false, the building ends and
// so does this function with false.
[[nodiscard]] bool BuildTransferBlock(const BlockRequest& request, std::vector<std::byte>& block,
                                      const std::function<bool(int)>& progress);

// Keeps every `step`-th 2-byte point after the first `header` bytes, `points` of them, and cuts the block there.
void Decimate(std::vector<std::byte>& block, std::size_t header, std::size_t points, std::size_t step);

} // namespace calder

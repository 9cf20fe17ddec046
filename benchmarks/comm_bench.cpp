// Building the block of a waveform transfer, beside a memory copy with the byte swap.
#include "FigureTable.h"
#include "comm/TransferBlock.h"
#include "libs/wavelb32/wavelb32.h"

#include <cstdlib>

using namespace calder;

int main() {
  constexpr int kRounds = 200;
  constexpr std::size_t kPoints = W_MAX_POINTS;
  std::vector<std::int16_t> codes(kPoints);
  for (std::size_t i = 0; i < kPoints; ++i) codes[i] = static_cast<std::int16_t>(i * 40503);
  std::vector<std::uint16_t> swapped(kPoints);
  std::vector<std::byte> block;
  FigureTable table;
  const struct {
    const char* figure;
    BlockLayout layout;
    bool lowByteFirst;
    std::int32_t divisor;
  } rows[] = {{"block, 16 bits, high byte first / copy with the swap", BlockLayout::HeaderAndPoints, false, 1},
              {"block, 16 bits, low byte first / copy with the swap", BlockLayout::PointsAlone, true, 1},
              {"block, 14 bits, high byte first / copy with the swap", BlockLayout::PointsAlone, false, 4},
              {"block, 12 bits, low byte first / copy with the swap", BlockLayout::PointsAlone, true, 16}};
  for (const auto& row : rows) {
    const BlockRequest request{row.layout, row.lowByteFirst, row.divisor, W_MAX_POINTS, codes, {}};
    table.Row(
        row.figure, 2, kRounds,
        [&] {
          if (!BuildTransferBlock(request, block, {})) std::abort();
        },
        [&] {
          for (std::size_t i = 0; i < kPoints; ++i)
            swapped[i] = static_cast<std::uint16_t>(static_cast<std::uint16_t>(codes[i]) << 8 |
                                                    static_cast<std::uint16_t>(codes[i]) >> 8);
          if (swapped[kPoints - 1] == 1) std::abort();
        });
  }
  const std::vector<std::int32_t> positions(W_MAX_CONTROL_POINTS, 77);
  const BlockRequest controls{
      BlockLayout::ControlPoints, false, 1, 0, std::span(codes).first(W_MAX_CONTROL_POINTS), positions};
  table.TimeRow("block of 10000 control points (limit 5 ms a million points)", 2600, kRounds, [&] {
    if (!BuildTransferBlock(controls, block, {})) std::abort();
  });
  return table.IsOver() ? 1 : 0;
}

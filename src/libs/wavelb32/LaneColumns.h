// What each pixel column of the digital view shows of all 16 bits at once, one bit of a word a lane. Inside the library
// only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace calder::wavelb {

struct HorizontalView;

// A word a column. A bit that is set in `always` and not in `ever` has no point in the column.
struct LaneColumns {
  std::vector<std::uint16_t> always;
  std::vector<std::uint16_t> ever;
  std::vector<std::uint16_t> changed; // the bit has an edge in the column, or one within the trace's width
  std::vector<std::uint16_t> dense;   // and so has it in the columns around: edges follow each other without a gap
  std::vector<std::uint16_t> differ;
  std::vector<std::int32_t> firsts; // the column's points, with the one before them, so that an edge between two
  std::vector<std::int32_t> ends;   // columns shows in the right one

  [[nodiscard]] std::size_t Width() const { return always.size(); }
  // REQUIRES: across is usable, traceWidth >= 1.
  void Find(std::span<const std::int16_t> codes, const HorizontalView& across, int traceWidth);
  // Takes out of each column the bits that are the same at all of its points in another waveform of that length; edges
  // keep their width. REQUIRES: after Find of codes.
  void KeepDifferences(std::span<const std::int16_t> codes, std::span<const std::int16_t> others, int traceWidth);
};

// The colours of a lane's trace.
struct LaneColors {
  std::uint32_t bright = 0;
  std::uint32_t halfTone = 0;
};

// Which levels have their trace in a row; rows between the levels show edges alone.
struct LaneRow {
  bool high = false;
  bool low = false;
};

// Draws the bit's trace onto the colours of a row, one a column; where it has none they stay.
// REQUIRES: as many colours as columns.
void DrawLaneRow(const LaneColumns& columns, std::uint16_t bit, LaneRow row, LaneColors colors,
                 std::span<std::uint32_t> pixels);

} // namespace calder::wavelb

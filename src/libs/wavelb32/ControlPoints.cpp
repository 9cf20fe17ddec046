#include "libs/wavelb32/JoinSearch.h"
#include "libs/wavelb32/State.h"

#include <algorithm>

namespace calder {

std::int32_t ConvCPdata(WaveHandle handle, WaveHandle positions32, WaveHandle values16, std::int32_t& count) {
  const std::int32_t pointCount = count;
  count = 0;
  const std::span<const std::int16_t> all = W_Lock(handle);
  const std::span<std::int32_t> positions = W_Lock32(positions32);
  const std::span<std::int16_t> values = W_Lock(values16);
  if (all.empty() || positions.empty() || values.empty()) return W_BAD_HANDLE;
  if (pointCount < 1 || static_cast<std::size_t>(pointCount) > all.size()) return W_BAD_RANGE;
  return W_FindControlPoints(all.first(static_cast<std::size_t>(pointCount)), positions, values, count);
}

std::int32_t W_FindControlPoints(std::span<const std::int16_t> codes, std::span<std::int32_t> positions,
                                 std::span<std::int16_t> values, std::int32_t& count) {
  count = 0;
  if (codes.empty() || codes.size() > static_cast<std::size_t>(W_MAX_POINTS)) return W_BAD_RANGE;
  const std::size_t limit = std::min({static_cast<std::size_t>(W_MAX_CONTROL_POINTS), positions.size(), values.size()});
  const auto found = wavelb::JoinSearch(codes).Find(limit);
  if (!found) return W_NOT_POSSIBLE;
  const auto points = static_cast<std::int64_t>(codes.size());
  for (std::size_t i = 0; i < found->size(); ++i) {
    const std::int64_t position = (*found)[i];
    positions[i] = static_cast<std::int32_t>((2 * position * W_CONTROL_POINT_SCALE + points) / (2 * points));
    values[i] = codes[static_cast<std::size_t>(position)];
  }
  count = static_cast<std::int32_t>(found->size());
  return W_SUCCESS;
}

} // namespace calder

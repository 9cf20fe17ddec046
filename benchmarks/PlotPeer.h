// The same points drawn by a general plotting library, as somebody would use it.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

namespace calder {

// A plot of that size with the points loaded; the result draws it once.
[[nodiscard]] std::function<void()> MakePlotPeer(std::span<const std::int16_t> points, int width, int height);

} // namespace calder

// Interpolation through control points.
#pragma once

#include "libs/wavelb32/wavelb32.h"

#include <cstdint>

namespace calder {

// Replaces the points of the range (rangeStart to rangeEnd, in points) by straight lines through the `count` control
// points x[i] (ascending, in points), y[i] (codes); before the first and after the last control point their codes are
// held. Values are rounded to the nearest code, halves to even, exactly, and limited to +-limit. Returns a wavelb32
// status. memorySize is the number of points of the waveform.
std::int32_t Spline_Hokan_Line(WaveHandle handle, double rangeStart, double rangeEnd, const double* x, const double* y,
                               std::int32_t count, std::int32_t memorySize, std::int32_t limit);

} // namespace calder

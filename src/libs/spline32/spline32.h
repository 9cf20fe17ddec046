// Interpolation through control points.
//
// All positions are in points, all values in codes. x[i] ascend; before the first and after the last control point
// their values are held. Results are rounded to the nearest code, halves to even, and limited to +-limit. memorySize is
// the number of points of the waveform. The functions return a wavelb32 status; nothing is changed unless it is
// W_SUCCESS. A value that is not a number, or beyond 1e12, gives W_BAD_VALUE.
#pragma once

#include "libs/wavelb32/wavelb32.h"

#include <cstdint>

namespace calder {

// Replaces the points of the range rangeStart to rangeEnd by straight lines through the `count` control points. Two
// points on one X make a step. The rounding is exact where the control points are whole numbers.
std::int32_t Spline_Hokan_Line(WaveHandle handle, double rangeStart, double rangeEnd, const double* x, const double* y,
                               std::int32_t count, std::int32_t memorySize, std::int32_t limit);

// Modes of Spline_Hokan_Spline.
inline constexpr std::int32_t SPLINE_NATURAL = 0;        // no curvature at the first and the last control point
inline constexpr std::int32_t SPLINE_PERIODIC_SCOPE = 1; // value, slope and curvature meet at the ends of the range
inline constexpr std::int32_t SPLINE_PERIODIC_WHOLE = 2; // the same at the ends of the waveform

// The same by a cubic spline. Of control points on one X the first counts. A periodic spline goes through the control
// points that lie in its period, ends included; a point at its end is the one at its start, which counts. When none lie
// there, the range gets the natural spline. One control point gives a level line, two a straight one (natural) or a
// smooth wave (periodic).
std::int32_t Spline_Hokan_Spline(std::int32_t mode, WaveHandle handle, double rangeStart, double rangeEnd,
                                 const double* x, const double* y, std::int32_t count, std::int32_t memorySize,
                                 std::int32_t limit);

// Sorts x[first] to x[last] (included) into ascending order; each y stays with its x, equal x keep their order. None of
// them may be NaN.
void Q_Sort(double* x, double* y, std::int32_t first, std::int32_t last);

} // namespace calder

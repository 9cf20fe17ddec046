// The waveform library: point buffers known by handle, drawing, generation and reshaping.
//
// A point is a signed 16-bit data code; full scale is -32767 to +32767, code 0 is the centre. Positions, counts and
// spans are doubles in points. Functions that take a range turn it into whole points in one way: the first point is the
// start rounded up, the number of points is the count rounded up (as platform/WholePoint.h does), and a last point that
// only this rounding pushed past the end is dropped. Results are rounded to the nearest code, halves to even, and
// limited to -32767..32767.
//
// Handles are nonzero; 0 is a failed allocation. A handle that was freed or never given, a range that lies outside its
// buffer, a value that is not a number: nothing is changed and the function returns one of the negative statuses.
//
// The table of buffers is the library's own and is used from one thread.
#pragma once

#include "platform/WaveLimits.h"

#include <cstdint>
#include <limits>
#include <span>

namespace calder {

class DeviceContext;

using WaveHandle = std::int32_t;

// Statuses: 0 or one of these.
inline constexpr std::int32_t W_SUCCESS = 0;
inline constexpr std::int32_t W_BAD_HANDLE = -1;
inline constexpr std::int32_t W_BAD_RANGE = -2;
inline constexpr std::int32_t W_BAD_VALUE = -3;
inline constexpr std::int32_t W_NOT_POSSIBLE = -4;
// What the functions that return a code give instead of one.
inline constexpr std::int32_t W_NO_DATA = std::numeric_limits<std::int32_t>::min();

// The most control points that a transfer block holds.
inline constexpr std::int32_t W_MAX_CONTROL_POINTS = 10000;
// The full scale of a control point's position, whatever the waveform's number of points.
inline constexpr std::int32_t W_CONTROL_POINT_SCALE = W_MAX_POINTS;

// ---- buffers (Buffers.cpp) ----

// A buffer of that many points, all 0. 1 to 2^26 points. Its first use is slower than later ones, since the system
// gives the memory only then; W_WarmMemory takes that moment forward.
[[nodiscard]] WaveHandle W_AllocMemory(std::int32_t points);
// As many such buffers as handles, in one block of memory, which is given back when the last of them is freed. False:
// none, and the handles are 0.
[[nodiscard]] bool W_AllocTogether(std::int32_t points, std::span<WaveHandle> handles);
[[nodiscard]] WaveHandle W_AllocMemory32(std::int32_t points);
std::int32_t W_WarmMemory(WaveHandle handle);
std::int32_t W_FreeMemory(WaveHandle handle);
std::int32_t W_FreeMemory32(WaveHandle handle);
std::int32_t W_ClearMemory(WaveHandle handle, double start, double count);
// The ranges may overlap.
std::int32_t W_CopyMemory(WaveHandle source, WaveHandle destination, double sourceStart, double destinationStart,
                          double count);
// Removes the range from the first pointCount points: later points move down to start, code 0 fills the end.
std::int32_t W_DeleteWave(WaveHandle handle, double start, double count, std::int32_t pointCount);
// The code at index (rounded up to a whole point). The index pointCount, the right end, gives the last point.
[[nodiscard]] std::int32_t W_GetWaveData(WaveHandle handle, double index, std::int32_t pointCount);
[[nodiscard]] std::int32_t W_GetWaveData32(WaveHandle handle, double index, std::int32_t pointCount);
// which: 0 the minimum, 1 the maximum code of the range. An empty range gives W_NO_DATA.
[[nodiscard]] std::int32_t W_GetMaxMin(WaveHandle handle, double start, double count, std::int32_t which);

// Direct access, valid until the buffer is freed; empty for a bad handle.
[[nodiscard]] std::span<std::int16_t> W_Lock(WaveHandle handle);
[[nodiscard]] std::span<std::int32_t> W_Lock32(WaveHandle handle);

// ---- drawing (Draw.cpp, DrawDigital.cpp) ----

// The waveform in the context's pen. The view shows xSpan points from xStart, and depths (32767 - code) from yStart
// over ySpan; width and height are the picture's size in pixels. A point stands at (position - xStart) * width / xSpan,
// (depth - yStart) * height / ySpan, both rounded down; the depth at the lower edge stands in the last row. More points
// than pixels: one column a pixel from the minimum to the maximum of its points, joined to its neighbour. Fewer: a line
// through every point, each also a dot once they are 8 or more logical pixels apart. pointCount is the number of points
// of the waveform, 0 for the whole buffer: what lies after that is not looked at, and the last point's code holds up to
// the position pointCount. width and height are at most 32767.
std::int32_t W_DrawWave2(DeviceContext& context, WaveHandle handle, double xStart, double yStart, double xSpan,
                         double ySpan, int width, int height, std::int32_t pointCount = 0);
// The grid of a small picture: 10 columns and 8 rows in light grey, the zero line in the middle in white. The context's
// pen is changed.
std::int32_t W_DrawGrid(DeviceContext& context, int width, int height);
// The zero line (code 0) of a view in the context's pen, when it lies inside.
std::int32_t W_DrawGrid2(DeviceContext& context, double yStart, double ySpan, int width, int height);
// The digital view has 16 lanes, lane 0 (bit 15) at the top. Its height is 49 units, one of margin above and three a
// lane, and a lane is a whole number of rows high: what that leaves over stays free at the bottom.
inline constexpr int W_LANES = 16;
struct LaneRows {
  int top = 0;    // of the lane's ground
  int bottom = 0; // the first row that is no longer in it; equal to top where the picture is too low for lanes
};
[[nodiscard]] LaneRows W_RowsOfLane(int lane, int height);
// The lane of a row: -1 in the margin and where there are no lanes, 16 and more below the last one.
[[nodiscard]] int W_LaneAt(int row, int height);

// The whole picture of the digital view: grounds and lanes. In each column a lane is high or low; where it changes, the
// column is filled: bright at an edge, in half tone where edges follow each other without a gap, so that a single
// changed point is seen at every zoom. Lanes whose bit is in bitMask are selected: they have the selected colour and a
// tinted ground, which is stronger between markerA and markerB. Bits that the model lacks (beyond the top bitCount) are
// drawn in the quiet colour. ghost: another waveform, of as many points, whose lanes are laid over those of the first
// one in the columns in which the bit of some point differs; 0 for none. pointCount as for W_DrawWave2.
std::int32_t W_DrawDigitalPattern(DeviceContext& context, WaveHandle handle, double xStart, double xSpan,
                                  std::int32_t bitCount, std::int32_t bitMask, double markerA, double markerB,
                                  int width, int height, std::uint32_t traceColor, std::uint32_t groundColor,
                                  std::uint32_t selectedColor, std::uint32_t quietColor, std::int32_t pointCount = 0,
                                  WaveHandle ghost = 0, std::uint32_t ghostColor = 0);
// The lanes whose bits are in bitMask, for paper: no ground, a stepped line a lane in the context's pen, and a
// rectangle in half tone where edges follow each other without a gap. At most one step or rectangle a column and lane.
std::int32_t W_DrawDigital(DeviceContext& context, WaveHandle handle, double xStart, double xSpan, std::int32_t bitMask,
                           int width, int height, std::uint32_t halfTone = 0xA0A0A0);
// The 16 bits mirrored: bit 0 becomes bit 15.
[[nodiscard]] std::uint16_t reverse_bit(std::uint16_t pattern);
// Every point's destination bit takes the value of its source bit. Each mask has one bit of the low 16.
std::int32_t W_CopyBitDigital(WaveHandle handle, double start, double count, std::int32_t sourceMask,
                              std::int32_t destinationMask);

// ---- generation (Generate.cpp) ----
// offset and amplitude (peak to peak) in codes, period the number of periods over the range, phase in degrees,
// symmetry, duty and transition in percent.

std::int32_t W_MakeSin(WaveHandle handle, double start, double count, double offset, double amplitude, double period,
                       double phase);
std::int32_t W_MakeTriangle(WaveHandle handle, double start, double count, double offset, double amplitude,
                            double period, double phase, double symmetry);
std::int32_t W_MakeSquare(WaveHandle handle, double start, double count, double offset, double amplitude, double period,
                          double phase, double duty, double transition);
std::int32_t W_MakeNoise(WaveHandle handle, double start, double count, double offset, double amplitude);
std::int32_t W_MakeDC(WaveHandle handle, double start, double count, double offset);
// Starts the noise afresh: the same seed gives the same noise.
std::int32_t W_InitRand(std::int32_t seed);

// ---- reshaping (Reshape.cpp, Calc.cpp) ----

// Resamples the source range onto the destination range of the same buffer (its first pointCount points).
std::int32_t W_CompWaveX(WaveHandle handle, double sourceStart, double sourceSpan, std::int32_t pointCount,
                         double destinationStart, double destinationSpan);
std::int32_t W_CompYMaxMin(WaveHandle handle, double start, double count, double newMaximum, double newMinimum);
std::int32_t W_CompYAmpOff(WaveHandle handle, double start, double count, double amplitude, double offset);
// How many points W_CompYMaxMin with the same arguments would limit: their new codes lie beyond full scale. Or a
// negative status.
[[nodiscard]] std::int32_t W_CountLimited(WaveHandle handle, double start, double count, double newMaximum,
                                          double newMinimum);
// result[i] = source[start + i] op operand[i], op 0 to 3 for + - * /. Codes are taken as Y values on the scale on which
// code -32767 is yMin and +32767 is yMax, and the outcome is turned back into a code.
std::int32_t W_CalcWave(WaveHandle source, WaveHandle operand, WaveHandle result, double start, double count,
                        double yMin, double yMax, std::int32_t operation);
// What W_CalcWave with the same arguments does at each point of the range: the result is computed, limited, or,
// whatever comes of it, a division by the Y value 0. REQUIRES: as many marks as the range has whole points, or
// W_BAD_RANGE.
enum CalcMark : std::uint8_t { CALC_SOUND = 0, CALC_LIMITED = 1, CALC_BY_ZERO = 2 };
std::int32_t W_CalcFaults(WaveHandle source, WaveHandle operand, double start, double count, double yMin, double yMax,
                          std::int32_t operation, std::span<std::uint8_t> marks);

// ---- control points (ControlPoints.cpp) ----

// The fewest control points whose straight joins give back every code of the first `count` points exactly. In: count =
// the number of points; out: count = the number of control points, positions32 their positions (position *
// W_CONTROL_POINT_SCALE / number of points, to the nearest), values16 their codes. W_NOT_POSSIBLE when more than
// W_MAX_CONTROL_POINTS are needed; count is then 0.
std::int32_t ConvCPdata(WaveHandle handle, WaveHandle positions32, WaveHandle values16, std::int32_t& count);
// The same for 1 to W_MAX_POINTS codes in any memory, from any thread. `count` is an outcome only.
std::int32_t W_FindControlPoints(std::span<const std::int16_t> codes, std::span<std::int32_t> positions,
                                 std::span<std::int16_t> values, std::int32_t& count);

} // namespace calder

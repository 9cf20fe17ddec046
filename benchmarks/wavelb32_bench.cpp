// What the waveform library costs with the largest waveform on a large picture, each figure beside a peer that does the
// bare minimum in the same run, and beside the limit of their ratio. Ends with 1 when a limit is passed.
#include "FigureTable.h"
#include "WavePeers.h"
#include "libs/spline32/spline32.h"
#include "libs/wavelb32/Reduce.h"
#include "libs/wavelb32/wavelb32.h"
#include "platform/PixelContext.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <random>

namespace calder {
namespace {

constexpr std::int32_t points = W_MAX_POINTS;
constexpr double all = points;
constexpr int width = 1920;
constexpr int height = 800;
constexpr double frame = 16000; // microseconds
constexpr int rounds = 60;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "failed: %s\n", what);
  std::exit(2);
}
void Require(std::int32_t status) {
  Require(status == W_SUCCESS, "a call of the library");
}

volatile int sink = 0;

void ReductionAndCopy(FigureTable& table, WaveHandle wave, WaveHandle other) {
  Require(W_MakeNoise(wave, 0, all, 0, 65534));
  const std::span<const std::int16_t> codes = W_Lock(wave);
  std::vector<std::int32_t> edges;
  for (int c = 0; c <= width; ++c) edges.push_back(static_cast<std::int32_t>(std::ceil(c * all / width)));
  std::vector<std::int16_t> lows(width);
  std::vector<std::int16_t> highs(width);
  table.Row(
      "524288 codes to 1920 columns / reading them", 2, rounds,
      [&] { wavelb::ReduceColumns(codes, edges, lows, highs); }, [&] { sink = PeerMinimum(codes); });
  std::vector<std::int16_t> plain(codes.begin(), codes.end());
  table.Row(
      "W_CopyMemory of 524288 points / memcpy", 1.2, rounds, [&] { Require(W_CopyMemory(wave, other, 0, 0, all)); },
      [&] {
        std::memcpy(plain.data(), codes.data(), codes.size_bytes());
        sink = plain.back();
      });
}

class Picture {
public:
  Picture() : context(pixels, width, width, height) {}
  void DrawWave(WaveHandle wave) {
    context.SetPen(0x5555FF);
    Require(W_DrawWave2(context, wave, 0, 0, all, W_CODE_SPAN, width, height));
  }
  std::vector<std::uint32_t> pixels = std::vector<std::uint32_t>(static_cast<std::size_t>(width) * height, 0xFF000000);
  PixelContext context;
};

void Drawing(FigureTable& table, WaveHandle wave, WaveHandle noise) {
  Picture picture;
  std::vector<std::uint32_t> image(picture.pixels.size(), 0);
  struct Kind {
    const char* drawn;
    double sine;
    double noise;
  };
  const Kind kinds[] = {{"W_DrawWave2, sine / filling the image", 65534, 0},
                        {"W_DrawWave2, sine with noise / filling the image", 50000, 8000},
                        {"W_DrawWave2, full-scale noise / filling the image", 0, 65534}};
  for (const Kind& kind : kinds) {
    Require(W_MakeSin(wave, 0, all, 0, kind.sine, 3, 0));
    Require(W_MakeNoise(noise, 0, all, 0, kind.noise));
    Require(W_CalcWave(wave, noise, wave, 0, all, -W_CODE_MAX, W_CODE_MAX, 0));
    std::uint32_t color = 0;
    table.Row(
        kind.drawn, 2.5, rounds, [&] { picture.DrawWave(wave); },
        [&] { std::fill(image.begin(), image.end(), ++color); });
  }
}

void Generation(FigureTable& table, WaveHandle wave) {
  std::vector<std::int16_t> codes(points);
  if (PeerSine(codes))
    table.Row(
        "W_MakeSin of 524288 points / hand-written vectors", 1.5, rounds,
        [&] { Require(W_MakeSin(wave, 0, all, 0, 65534, 1, 0)); }, [&] { Require(PeerSine(codes), "peer"); });
  if (PeerTriangle(codes)) {
    table.Row(
        "W_MakeTriangle / hand-written vectors", 1.5, rounds,
        [&] { Require(W_MakeTriangle(wave, 0, all, 0, 65534, 12.3, 0, 30)); },
        [&] { Require(PeerTriangle(codes), "peer"); });
    table.Row(
        "W_MakeSquare, sharp / hand-written vectors", 1.5, rounds,
        [&] { Require(W_MakeSquare(wave, 0, all, 0, 65534, 12.3, 0, 30, 0)); },
        [&] { Require(PeerSquare(codes), "peer"); });
    table.Row(
        "W_MakeSquare, sloped / hand-written vectors", 1.5, rounds,
        [&] { Require(W_MakeSquare(wave, 0, all, 0, 65534, 12.3, 0, 30, 10)); },
        [&] { Require(PeerSlopes(codes), "peer"); });
    table.Row(
        "W_MakeNoise / hand-written vectors", 1.5, rounds, [&] { Require(W_MakeNoise(wave, 0, all, 0, 65534)); },
        [&] { Require(PeerNoise(codes), "peer"); });
  }
  table.Row(
      "W_MakeDC / filling", 1.5, rounds, [&] { Require(W_MakeDC(wave, 0, all, 123)); },
      [&] { std::fill(codes.begin(), codes.end(), static_cast<std::int16_t>(123)); });
  table.TimeRow("W_MakeSin", frame, rounds, [&] { Require(W_MakeSin(wave, 0, all, 5, 65534, 12.3, 45)); });
  table.TimeRow("W_MakeTriangle", frame, rounds,
                [&] { Require(W_MakeTriangle(wave, 0, all, 5, 65534, 12.3, 45, 30)); });
  table.TimeRow("W_MakeSquare, sharp", frame, rounds,
                [&] { Require(W_MakeSquare(wave, 0, all, 5, 65534, 12.3, 45, 30, 0)); });
  table.TimeRow("W_MakeSquare, sloped", frame, rounds,
                [&] { Require(W_MakeSquare(wave, 0, all, 5, 65534, 12.3, 45, 30, 10)); });
  table.TimeRow("W_MakeNoise", frame, rounds, [&] { Require(W_MakeNoise(wave, 0, all, 5, 60000)); });
}

void Reshaping(FigureTable& table, WaveHandle wave, WaveHandle operand) {
  constexpr int squeezed = 400000;
  Require(W_MakeSin(wave, 0, all, 0, 60000, 5, 0));
  const std::span<const std::int16_t> codes = W_Lock(wave);
  const std::vector<std::int16_t> curve(codes.begin(), codes.end());
  std::vector<std::int16_t> out(squeezed);
  table.Row(
      "W_CompWaveX, 524288 to 400000 points / -O2 linear walk", 0.6, rounds,
      [&] { Require(W_CompWaveX(wave, 0, all, points, 0, squeezed)); }, [&] { PeerLinearWalk(curve, out); });
  table.TimeRow("W_CompYMaxMin", frame, rounds, [&] { Require(W_CompYMaxMin(wave, 0, all, 30000, -31000)); });

  const WaveHandle result = W_AllocMemory(points);
  Picture main;
  Picture small;
  int step = 0;
  table.TimeRow("a drag step of Compress: copies, X, Y, two pictures", frame, rounds, [&] {
    step = (step + 1) % rounds;
    Require(W_CopyMemory(wave, operand, 0, 0, all));
    Require(W_CompWaveX(operand, 0, all, points, 0, all - 1000 * step));
    Require(std::min(W_CountLimited(operand, 0, all - 1000 * step, 40000, -30000), 0));
    Require(W_CompYAmpOff(operand, 0, all - 1000 * step, 70000, 5000));
    Require(W_CopyMemory(operand, result, 0, 0, all));
    for (Picture* picture : {&main, &small}) {
      picture->DrawWave(wave);
      picture->DrawWave(result);
    }
  });
  Require(W_MakeNoise(wave, 0, all, 0, 50000));
  Require(W_MakeNoise(operand, 0, all, 0, 65534));
  std::vector<std::int16_t> peer(points);
  const struct {
    const char* figures[4];
    double yMin, yMax;
  } scales[] = {{{"W_CalcWave +, from -1 to 1 / hand-written vectors", "W_CalcWave -, from -1 to 1",
                  "W_CalcWave *, from -1 to 1", "W_CalcWave /, from -1 to 1"},
                 -1,
                 1},
                {{"W_CalcWave +, from -1.9 to 2.3 V / hand-written vectors", "W_CalcWave -, from -1.9 to 2.3 V",
                  "W_CalcWave *, from -1.9 to 2.3 V", "W_CalcWave /, from -1.9 to 2.3 V"},
                 -1.9,
                 2.3}};
  for (const auto& scale : scales) {
    const double perCode = (scale.yMax - scale.yMin) / 2 / W_CODE_MAX;
    const double centre = (scale.yMin + scale.yMax) / 2 / perCode;
    for (std::int32_t op = 0; op < 4; ++op) {
      if (!PeerCombine(codes, W_Lock(operand), peer, perCode, centre, op)) break;
      Require(W_CalcWave(wave, operand, result, 0, all, scale.yMin, scale.yMax, op));
      Require(std::ranges::equal(W_Lock(result), peer), "the peer's results");
      table.Row(
          scale.figures[op], 1.5, rounds,
          [&] { Require(W_CalcWave(wave, operand, result, 0, all, scale.yMin, scale.yMax, op)); },
          [&] { Require(PeerCombine(codes, W_Lock(operand), peer, perCode, centre, op), "peer"); });
    }
  }
  std::vector<std::uint8_t> marks(points);
  table.TimeRow("W_CalcFaults, division", frame, rounds,
                [&] { Require(W_CalcFaults(wave, operand, 0, all, -1, 1, 3, marks)); });
  Require(W_FreeMemory(result));
}

void DigitalView(FigureTable& table, WaveHandle wave) {
  Picture picture;
  Require(W_MakeNoise(wave, 0, all, 0, 65534));
  table.TimeRow("W_DrawDigitalPattern", frame, rounds, [&] {
    Require(W_DrawDigitalPattern(picture.context, wave, 0, all, 16, 0xFF, 1000, 300000, width, height, 1, 2, 3, 4));
  });
}

// Straight joins of `corners` control points, evenly spread, with random codes up to the amplitude.
void DrawSegments(WaveHandle wave, std::int32_t corners, std::int32_t amplitude) {
  std::mt19937 random(1);
  std::vector<double> x;
  std::vector<double> y;
  for (std::int32_t i = 0; i < corners; ++i) {
    x.push_back(std::floor((all - 1) * i / (corners - 1)));
    y.push_back(std::uniform_int_distribution(-amplitude, amplitude)(random));
  }
  Require(Spline_Hokan_Line(wave, 0, all, x.data(), y.data(), corners, points, W_CODE_MAX));
}

void ControlPoints(FigureTable& table, WaveHandle wave, WaveHandle noise) {
  constexpr double straight = 5000 * (all / 1e6); // microseconds: 5 ms for a million points
  constexpr double any = 100000; // System Setup does this as it opens, which should seem to happen at once
  constexpr int fewRounds = 20;
  const WaveHandle positions = W_AllocMemory32(W_MAX_CONTROL_POINTS);
  const WaveHandle values = W_AllocMemory(W_MAX_CONTROL_POINTS);
  const auto row = [&](const char* name, double limit, std::int32_t expected) {
    table.TimeRow(name, limit, fewRounds, [&] {
      std::int32_t count = points;
      Require(ConvCPdata(wave, positions, values, count) == expected, "ConvCPdata");
    });
  };
  const double ends[][2] = {{0, all - 1}, {-W_CODE_MAX, W_CODE_MAX}};
  DrawSegments(wave, W_MAX_CONTROL_POINTS, W_CODE_MAX);
  row("ConvCPdata, 10000 segments", straight, W_SUCCESS);
  Require(W_ClearMemory(wave, 0, all));
  row("ConvCPdata, constant", straight, W_SUCCESS);
  Require(Spline_Hokan_Line(wave, 0, all, ends[0], ends[1], 2, points, W_CODE_MAX));
  row("ConvCPdata, ramp from code to code", straight, W_SUCCESS);
  Require(W_MakeNoise(wave, 0, all, 0, 65534));
  row("ConvCPdata, noise (not possible)", straight, W_NOT_POSSIBLE);
  Require(W_MakeSin(wave, 0, all, 0, 60000, 3, 0));
  Require(W_MakeNoise(noise, 0, all, 0, 4));
  Require(W_CalcWave(wave, noise, wave, 0, all, -W_CODE_MAX, W_CODE_MAX, 0));
  row("ConvCPdata, sine with a little noise (not possible)", straight, W_NOT_POSSIBLE);

  DrawSegments(wave, W_MAX_CONTROL_POINTS / 2, 20);
  row("ConvCPdata, 5000 gentle segments", any, W_SUCCESS);
  Require(W_MakeSin(wave, 0, all, 0, 65534, 1, 0));
  row("ConvCPdata, sine of 1 period", any, W_SUCCESS);
  Require(W_MakeSin(wave, 0, all, 0, 65534, 2, 0));
  row("ConvCPdata, sine of 2 periods", any, W_SUCCESS);
  Require(W_MakeSin(wave, 0, all, 0, 65534, 5, 0));
  row("ConvCPdata, sine of 5 periods", any, W_SUCCESS);
  Require(W_MakeSin(wave, 0, all, 0, 65534, 50, 0));
  row("ConvCPdata, sine of 50 periods (not possible)", any, W_NOT_POSSIBLE);
  Require(W_MakeSin(wave, 0, all, 0, 1000, 1, 0));
  row("ConvCPdata, sine of 1000 codes", any, W_SUCCESS);
  Require(W_MakeTriangle(wave, 0, all, 0, 65534, 1, 0, 50));
  row("ConvCPdata, triangle", any, W_SUCCESS);
  Require(W_MakeTriangle(wave, 0, all, 0, 65534, 1, 180, 100));
  row("ConvCPdata, ramps between codes", any, W_SUCCESS);
  Require(W_MakeSquare(wave, 0, all, 0, 65534, 1, 0, 50, 40));
  row("ConvCPdata, sloped square", any, W_SUCCESS);
  Require(W_FreeMemory32(positions));
  Require(W_FreeMemory(values));
}

int Run() {
  const WaveHandle wave = W_AllocMemory(points);
  const WaveHandle other = W_AllocMemory(points);
  Require(wave != 0 && other != 0, "memory");
  FigureTable table;
  ReductionAndCopy(table, wave, other);
  Drawing(table, wave, other);
  DigitalView(table, wave);
  Generation(table, wave);
  Reshaping(table, wave, other);
  ControlPoints(table, wave, other);
  Require(W_FreeMemory(wave));
  Require(W_FreeMemory(other));
  return table.IsOver() ? 1 : 0;
}

} // namespace
} // namespace calder

int main() {
  return calder::Run();
}

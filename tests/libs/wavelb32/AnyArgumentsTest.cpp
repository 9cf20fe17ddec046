// Every function with every kind of argument: no crash, no write beside a buffer (the sanitizers watch), a known
// status.
#include "TestWave.h"
#include "libs/spline32/spline32.h"
#include "platform/PixelContext.h"

namespace calder::any_arguments_test {

class AnyArguments : public testing::Test {
protected:
  double Number() {
    constexpr std::array wild = {0.0,   -0.0,  0.5,    -1.0,    1e-300,  1e9,
                                 -1e12, 1e300, -1e308, 32767.0, 65534.0, 4294967296.0};
    switch (Pick(0, 5)) {
    case 0: return wild[static_cast<std::size_t>(Pick(0, std::ssize(wild) - 1))];
    case 1: return static_cast<double>(Pick(-5, 105)) / 4;
    case 2: return Pick(0, 9) == 0 ? kNotANumber : Pick(0, 9) == 0 ? kInfinity : Pick(0, 9) == 0 ? -kInfinity : 3;
    default: return static_cast<double>(Pick(0, 100));
    }
  }
  std::int32_t Integer() {
    constexpr std::int32_t wild[] = {
        0, -1, 1 << 30, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max(), 0x8000};
    return Pick(0, 3) == 0 ? wild[Pick(0, std::size(wild) - 1)] : static_cast<std::int32_t>(Pick(-2, 110));
  }
  WaveHandle Handle() {
    const WaveHandle handles[] = {wave_.Handle(), other_.Handle(), wave_.Handle(), other_.Handle(), values_, freed_, 0};
    return handles[Pick(0, std::size(handles) - 1)];
  }
  std::int64_t Pick(std::int64_t low, std::int64_t high) { return std::uniform_int_distribution(low, high)(random_); }

  void SetUp() override { ASSERT_EQ(W_FreeMemory(freed_), W_SUCCESS); }
  void TearDown() override { ASSERT_EQ(W_FreeMemory32(values_), W_SUCCESS); }

  // One call of one function; its status.
  std::int32_t Call(PixelContext& context) {
    const WaveHandle h = Handle();
    switch (Pick(0, 21)) {
    case 0: return W_ClearMemory(h, Number(), Number());
    case 1: return W_CopyMemory(h, Handle(), Number(), Number(), Number());
    case 2: return W_DeleteWave(h, Number(), Number(), Integer());
    case 3: return W_MakeSin(h, Number(), Number(), Number(), Number(), Number(), Number());
    case 4: return W_MakeTriangle(h, Number(), Number(), Number(), Number(), Number(), Number(), Number());
    case 5: return W_MakeSquare(h, Number(), Number(), Number(), Number(), Number(), Number(), Number(), Number());
    case 6: return W_MakeNoise(h, Number(), Number(), Number(), Number());
    case 7: return W_MakeDC(h, Number(), Number(), Number());
    case 8: return W_InitRand(Integer());
    case 9: return W_CompWaveX(h, Number(), Number(), Integer(), Number(), Number());
    case 10: return W_CompYMaxMin(h, Number(), Number(), Number(), Number());
    case 11: return W_CompYAmpOff(h, Number(), Number(), Number(), Number());
    case 12: return W_CalcWave(h, Handle(), Handle(), Number(), Number(), Number(), Number(), Integer());
    case 13: return W_CopyBitDigital(h, Number(), Number(), Integer(), Integer());
    case 14: return W_DrawWave2(context, h, Number(), Number(), Number(), Number(), Size(), Size(), Integer());
    case 15: return W_DrawGrid(context, Size(), Size());
    case 16: return W_DrawGrid2(context, Number(), Number(), Size(), Size());
    case 17:
      return W_DrawDigitalPattern(context, h, Number(), Number(), Integer(), Integer(), Number(), Number(), Size(),
                                  Size(), 1, 2, 3, 4, Integer(), Pick(0, 1) == 0 ? 0 : Handle(), 5);
    case 18: return W_DrawDigital(context, h, Number(), Number(), Integer(), Size(), Size());
    case 19: {
      const double x[] = {Number(), Number(), Number()};
      const double y[] = {Number(), Number(), Number()};
      return Spline_Hokan_Line(h, Number(), Number(), x, y, static_cast<std::int32_t>(Pick(0, 3)), Integer(),
                               Integer());
    }
    case 20: {
      std::int32_t count = Integer();
      return ConvCPdata(h, Pick(0, 1) == 0 ? values_ : Handle(), Handle(), count);
    }
    default:
      static_cast<void>(W_GetMaxMin(h, Number(), Number(), Integer()));
      static_cast<void>(W_GetWaveData(h, Number(), Integer()));
      static_cast<void>(W_GetWaveData32(h, Number(), Integer()));
      return W_FreeMemory(freed_);
    }
  }

private:
  // A picture's size: mostly one that can be drawn, so that drawing is tried too.
  int Size() { return Pick(0, 5) == 0 ? Integer() : static_cast<int>(Pick(1, 300)); }

  std::mt19937 random_{20};
  TestWave wave_{100};
  TestWave other_{64};
  WaveHandle values_ = W_AllocMemory32(80);
  WaveHandle freed_ = W_AllocMemory(10);
};

TEST_F(AnyArguments, DoNoHarm) {
  std::vector<std::uint32_t> pixels(20000);
  PixelContext context(pixels, 200, 200, 100);
  int succeeded = 0;
  for (int round = 0; round < 100000; ++round) {
    const std::int32_t status = Call(context);
    ASSERT_TRUE(status <= W_SUCCESS && status >= W_NOT_POSSIBLE) << status;
    succeeded += status == W_SUCCESS ? 1 : 0;
  }
  EXPECT_GT(succeeded, 5000) << "the arguments must not all be refused";
}

} // namespace calder::any_arguments_test

#include "app/EditBuffers.h"
#include "Testing.h"

namespace calder::edit_buffers_test {

struct EditBuffersTest : testing::Test {
  void SetUp() override {
    settings.MemorySize = 1000;
    ASSERT_TRUE(buffers.Allocate());
  }
  SystemInfo settings;
  EditBuffers buffers{settings};
};

TEST_F(EditBuffersTest, AGrowingMemoryClearsOnlyTheNewPoints) {
  for (const WaveHandle handle : {buffers.Current(), buffers.UndoCopy(), buffers.Create(), buffers.Work()})
    W_MakeDC(handle, 0, W_MAX_POINTS, 9);
  settings.MemorySize = 2000;
  buffers.ClearGrownPoints(1000);
  for (const WaveHandle handle : {buffers.Current(), buffers.UndoCopy(), buffers.Create(), buffers.Work()}) {
    EXPECT_EQ(Texts(W_GetWaveData(handle, 999, W_MAX_POINTS), W_GetWaveData(handle, 1000, W_MAX_POINTS)), "9 0");
    EXPECT_EQ(Texts(W_GetWaveData(handle, 1999, W_MAX_POINTS), W_GetWaveData(handle, 2000, W_MAX_POINTS)), "0 9");
  }
  settings.MemorySize = 500;
  buffers.ClearGrownPoints(2000);
  EXPECT_EQ(W_GetWaveData(buffers.Current(), 700, W_MAX_POINTS), 9) << "a smaller memory loses nothing";
}

} // namespace calder::edit_buffers_test

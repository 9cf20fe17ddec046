// The model files of the program, every model with every channel and range.

#include "libs/sysinf32/OutputLimits.h"
#include "libs/sysinf32/sysinf32.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

namespace calder {
namespace {

class ModelFiles : public ::testing::Test {
protected:
  void SetUp() override {
    ASSERT_EQ(database_.SysInitDeviceInfo(CALDER_SOURCE_DIR "/models"), 0)
        << database_.SysGetSysErrorFileName() << ":" << database_.SysGetSysErrorLineNo() << ": "
        << database_.SysGetSysErrorText();
  }
  ModelDatabase database_;
};

// The texts and the numbers that the packed record has room for, and values inside their limits.
void ExpectSound(const SystemInfo& record) {
  EXPECT_LE(record.ModelName.size(), 16U);
  EXPECT_LE(record.DefaultArbCommand.size(), 64U);
  EXPECT_LE(record.MemoryName.size(), 32U);
  EXPECT_TRUE(record.Address >= record.AddressMin && record.Address <= record.AddressMax);
  EXPECT_TRUE(record.MemoryNo >= record.MemoryNoMin && record.MemoryNo <= record.MemoryNoMax);
  EXPECT_TRUE(record.MemorySize >= 2 && record.MemorySize <= 524288);
  EXPECT_TRUE(record.Frequency >= record.FrequencyMin && record.Frequency <= record.FrequencyMax);
  EXPECT_DOUBLE_EQ(record.Frequency * record.Period, 1);
  const AmplitudeRange range{"", {record.AmplitudeMin, record.AmplitudeMax}, {record.OffsetMin, record.OffsetMax}};
  EXPECT_TRUE(FitsOutput(range, record.Amplitude, record.Offset, record.Polarity));
  EXPECT_TRUE(record.Output >= 0 && record.Output <= 2);
}

TEST_F(ModelFiles, EveryModelStaysSoundInEveryChannelAndRange) {
  ASSERT_GE(database_.SysGetDeviceCnt(), 2);
  std::set<std::string> names;
  for (std::int32_t model = 0; model < database_.SysGetDeviceCnt(); ++model) {
    SCOPED_TRACE(database_.SysGetDeviceName(model));
    EXPECT_TRUE(names.insert(database_.SysGetDeviceName(model)).second);
    SystemInfo record;
    ASSERT_EQ(database_.SysGetInitDeviceInfo(model, record), 0);
    ExpectSound(record);
    EXPECT_EQ(record.ModelNo, model);
    ASSERT_EQ(database_.SysGetDeviceInfo(model, record), 0);
    ExpectSound(record);
    for (std::int32_t channel = database_.SysGetChannelCnt(model) - 1; channel >= 0; --channel) {
      ASSERT_EQ(database_.SysChangeChannel(model, channel, record), 0);
      ExpectSound(record);
      for (std::int32_t range = database_.SysGetRangeCnt(model, channel) - 1; range >= 0; --range) {
        ASSERT_EQ(database_.SysChangeRange(model, channel, range, record), 0);
        ExpectSound(record);
      }
    }
    for (std::int32_t size = database_.SysGetMemorySizeCnt(model) - 1; size >= 0; --size) {
      ASSERT_EQ(database_.SysChangeMemorySize(model, size, record), 0);
      EXPECT_EQ(database_.SysGetMemorySizeName(model, size), std::to_string(record.MemorySize));
    }
  }
}

TEST_F(ModelFiles, TheFirstTwoModelsAreWhatTheFixedCommandsAreFor) {
  for (std::int32_t model = 0; model < 2; ++model) {
    EXPECT_EQ(database_.SysGetDeviceName(model), model == 0 ? "XG5530" : "XG5531");
    EXPECT_EQ(database_.SysGetChannelCnt(model), model + 1);
    EXPECT_EQ(database_.SysGetInterfaceInfo(model),
              SYS_INTERFACE_USBTMC | SYS_INTERFACE_NI_GPIB | SYS_INTERFACE_KI_GPIB);
    EXPECT_EQ(database_.SysGetMemorySizeName(model, 0), "524288");
  }
}

} // namespace
} // namespace calder

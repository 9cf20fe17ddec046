// The model files of the program, every model with every channel and range.

#include "Testing.h"
#include "libs/bus/VisaNames.h"
#include "libs/sysinf32/ModelParser.h"
#include "libs/sysinf32/OutputLimits.h"
#include "libs/sysinf32/sysinf32.h"

namespace calder::model_files_test {

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

// The value of a key in one of a model's tables; empty when the table lacks it.
std::string Command(const ModelDatabase& database, std::int32_t model, std::int32_t table, const std::string& key) {
  CommandTable rows;
  EXPECT_GE(database.SysGetGPIBInfo(model, table, rows), 0);
  const auto found = std::find(rows.Key.begin(), rows.Key.end(), key);
  return found == rows.Key.end() ? "" : rows.Value[static_cast<std::size_t>(found - rows.Key.begin())];
}

TEST_F(ModelFiles, CommandsSuitTheModelThatTheyStandIn) {
  for (std::int32_t model = 0; model < database_.SysGetDeviceCnt(); ++model) {
    const std::string name = database_.SysGetDeviceName(model);
    SCOPED_TRACE(name);
    EXPECT_TRUE(Command(database_, model, 0, "model").ends_with(", " + name));
    const Protocol& protocol = database_.SysGetProtocol(model);
    const bool stepByStep = protocol.PowerSource.has_value();
    EXPECT_TRUE(!stepByStep || Command(database_, model, 2, "amprng").empty());
    SystemInfo record;
    ASSERT_EQ(database_.SysGetInitDeviceInfo(model, record), 0);
    EXPECT_EQ(record.OffsetSwitch != 0 && !stepByStep, !Command(database_, model, 2, "ofson").empty());
    EXPECT_TRUE(record.MemoryNameSelectable == 0 || !record.MemoryName.empty());
  }
}

// What files and settings of users know by its number.
TEST_F(ModelFiles, TheNumbersThatFilesCarryKeepTheirModels) {
  EXPECT_GE(database_.SysGetDeviceCnt(), 26);
  for (std::int32_t model = 0; model < 2; ++model) {
    EXPECT_EQ(database_.SysGetDeviceName(model), model == 0 ? "XG5530" : "XG5531");
    EXPECT_EQ(database_.SysGetChannelCnt(model), model + 1);
    EXPECT_EQ(database_.SysGetInterfaceInfo(model),
              SYS_INTERFACE_USBTMC | SYS_INTERFACE_NI_GPIB | SYS_INTERFACE_KI_GPIB);
    EXPECT_EQ(database_.SysGetMemorySizeName(model, 0), "524288");
  }
  constexpr std::array kModes = {"AC-INT", "AC-ADD", "ACDC-INT", "ACDC-EXT"};
  ASSERT_EQ(database_.SysGetChannelCnt(10), 4);
  for (std::int32_t mode = 0; mode < 4; ++mode) {
    EXPECT_EQ(database_.SysGetChannelName(10, mode), kModes[static_cast<std::size_t>(mode)]);
    ASSERT_EQ(database_.SysGetRangeCnt(10, mode), 2);
    EXPECT_EQ(Texts(database_.SysGetRangeName(10, mode, 0), database_.SysGetRangeName(10, mode, 1)), "100 V 200 V");
  }
}

TEST(ModelPage, TheWholeFileThatItShowsIsAModel) {
  std::ifstream file(CALDER_SOURCE_DIR "/docs/models.md");
  std::stringstream text;
  text << file.rdbuf();
  const std::string page = text.str();
  const std::string fence = "```toml\n";
  const std::size_t begin = page.find(fence) + fence.size();
  Model model;
  const std::optional<ModelFault> fault =
      ParseModel(page.substr(begin, page.find("```", begin) - begin), "docs/models.md", model);
  EXPECT_FALSE(fault) << fault->line << ": " << fault->text;
  EXPECT_EQ(model.Name, "VJ6140");
}

TEST_F(ModelFiles, TheUsbIdentifiersAreThoseOfTheModelsWithUsb) {
  std::set<std::string> expected;
  for (std::int32_t model = 0; model < database_.SysGetDeviceCnt(); ++model)
    if ((database_.SysGetInterfaceInfo(model) & SYS_INTERFACE_USBTMC) != 0)
      expected.insert(database_.SysGetDeviceName(model));
  std::ifstream file(CALDER_SOURCE_DIR "/data/USBTMC.ID");
  std::set<std::string> listed;
  for (std::string line; std::getline(file, line);) {
    const std::string name = line.substr(0, line.find(','));
    EXPECT_TRUE(ParseUsbName(line.substr(name.size() + 1) + "1")) << line;
    listed.insert(name);
  }
  EXPECT_EQ(listed, expected);
}

} // namespace calder::model_files_test

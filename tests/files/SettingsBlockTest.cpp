#include "files/SettingsBlock.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>

namespace calder {
namespace {

using Block = std::array<std::byte, WDB_SETTINGS_BYTES>;

std::uint64_t Number(const Block& block, std::size_t offset, std::size_t bytes) {
  std::uint64_t value = 0;
  for (std::size_t i = bytes; i-- > 0;) value = value << 8 | static_cast<std::uint64_t>(block[offset + i]);
  return value;
}
std::string Text(const Block& block, std::size_t offset, std::size_t bytes) {
  std::string text(bytes, '\0');
  std::memcpy(text.data(), block.data() + offset, bytes);
  return text;
}
void PutWord(Block& block, std::size_t offset, std::uint16_t word) {
  block[offset] = static_cast<std::byte>(word & 0xFF);
  block[offset + 1] = static_cast<std::byte>(word >> 8);
}

// Every field has a value of its own, and every byte of the numbers counts.
SystemInfo SampleRecord() {
  SystemInfo r;
  r.ModelName = "XG5531";
  r.ModelNo = 7;
  r.Address = 0x1102;
  r.AddressMin = 0x1203;
  r.AddressMax = -4;
  r.DefaultArbCommand = "DATA:DAC VOLATILE,";
  r.MemoryName = "ARB_1";
  r.MemorySize = 0x01020304;
  r.CodeSpan = -65534;
  r.Field9 = 0x0109;
  r.Field10 = 0x0210;
  r.DataBits = 0x00010010;
  r.MemoryNoSelectable = 0x0312;
  r.MemoryNo = 0x0413;
  r.MemoryNoMin = 0x0514;
  r.MemoryNoMax = 0x0615;
  r.MemoryNameSelectable = 0x0716;
  r.MemorySizeNo = 0x0817;
  r.ChannelSelectable = 0x0918;
  r.Channel = 0x0A19;
  r.Frequency = 20.5;
  r.FrequencyMin = 21.5;
  r.FrequencyMax = 22.5;
  r.Field23 = 23.5;
  r.Period = 24.5;
  r.Field25 = 25.5;
  r.Field26 = 26.5;
  r.Field27 = 27.5;
  r.Amplitude = 28.5;
  r.AmplitudeMin = 29.5;
  r.AmplitudeMax = 30.5;
  r.Field31 = 31.5;
  r.Offset = -32.5;
  r.OffsetMin = -33.5;
  r.OffsetMax = std::numeric_limits<double>::infinity();
  r.Field35 = 5e-324;
  r.OffsetSwitch = 0x0B36;
  r.OffsetOn = 0x0C37;
  r.XUnit = 0x0D38;
  r.YUnit = 0x0E39;
  r.XUserMin = 40.5;
  r.XUserMax = 41.5;
  r.YUserMin = 42.5;
  r.YUserMax = -0.0;
  r.Output = 2;
  r.RangeNo = 0x0F45;
  r.Field46 = 0x1046;
  r.XUserName = "deg";
  r.YUserName = "12345678";
  r.TransferFormat = 0x1149;
  r.ControlPointCount = 0x05060750;
  r.SizeRatio = 0x1251;
  r.Polarity = 5;
  return r;
}

TEST(SettingsBlock, HasEveryFieldInItsPlace) {
  const SystemInfo r = SampleRecord();
  Block block;
  block.fill(std::byte{0xAA});
  Pack_Settings(r, 3, CodePage::Western, block);

  const struct {
    std::size_t offset;
    std::int64_t value;
  } kWords[] = {{0, 0x0407},
                {18, r.Address},
                {20, r.AddressMin},
                {22, r.AddressMax},
                {88, r.MemorySizeNo},
                {98, r.Field9},
                {100, r.Field10},
                {106, r.MemoryNoSelectable},
                {108, r.MemoryNo},
                {110, r.MemoryNoMin},
                {112, r.MemoryNoMax},
                {114, r.MemoryNameSelectable},
                {148, r.ChannelSelectable},
                {150, r.Channel},
                {152, 2},
                {218, r.RangeNo},
                {220, r.Field46},
                {254, r.OffsetSwitch},
                {288, r.OffsetOn},
                {290, r.XUnit},
                {308, r.YUnit},
                {342, r.TransferFormat},
                {348, r.SizeRatio},
                {350, r.Polarity}};
  for (const auto& row : kWords) {
    EXPECT_EQ(static_cast<std::int16_t>(Number(block, row.offset, 2)), row.value) << row.offset;
  }
  const struct {
    std::size_t offset;
    std::int32_t value;
  } kLongs[] = {{90, r.MemorySize}, {94, r.CodeSpan}, {102, r.DataBits}, {344, r.ControlPointCount}};
  for (const auto& row : kLongs) {
    EXPECT_EQ(static_cast<std::int32_t>(Number(block, row.offset, 4)), row.value) << row.offset;
  }
  const struct {
    std::size_t offset;
    double value;
  } kDoubles[] = {{154, r.Frequency}, {162, r.FrequencyMin}, {170, r.FrequencyMax}, {178, r.Field23},
                  {186, r.Period},    {194, r.Field25},      {202, r.Field26},      {210, r.Field27},
                  {222, r.Amplitude}, {230, r.AmplitudeMin}, {238, r.AmplitudeMax}, {246, r.Field31},
                  {256, r.Offset},    {264, r.OffsetMin},    {272, r.OffsetMax},    {280, r.Field35},
                  {292, r.XUserMin},  {300, r.XUserMax},     {310, r.YUserMin},     {318, r.YUserMax}};
  for (const auto& row : kDoubles) {
    EXPECT_EQ(Number(block, row.offset, 8), std::bit_cast<std::uint64_t>(row.value)) << row.offset;
  }
  EXPECT_EQ(Text(block, 2, 16), "XG5531          ");
  EXPECT_EQ(Text(block, 24, 64), r.DefaultArbCommand + std::string(46, ' '));
  EXPECT_EQ(Text(block, 116, 32), r.MemoryName + std::string(27, ' '));
  EXPECT_EQ(Text(block, 326, 16), "deg     12345678");

  SystemInfo back;
  std::int32_t kind = 0;
  Unpack_Settings(block, CodePage::Western, back, kind);
  EXPECT_EQ(back, r);
  EXPECT_EQ(kind, 3);
}

TEST(SettingsBlock, FirstWordHasTheModelAndPerhapsTheInterface) {
  const struct {
    std::uint16_t word;
    std::int16_t model;
    std::int32_t kind; // 99: as it was
  } kRows[] = {{0, 0, 99},     {255, 255, 99},   {256, 0, 0},     {0x01FF, 255, 0},
               {0x0503, 3, 4}, {0x7F01, 1, 126}, {0x8001, 1, 99}, {0xFFFF, 255, 99}};
  for (const auto& row : kRows) {
    Block block{};
    PutWord(block, 0, row.word);
    SystemInfo record;
    std::int32_t kind = 99;
    Unpack_Settings(block, CodePage::Western, record, kind);
    EXPECT_EQ(record.ModelNo, row.model) << row.word;
    EXPECT_EQ(kind, row.kind) << row.word;
  }
}

TEST(SettingsBlock, OutputIsATruthValue) {
  for (const auto [output, stored, back] : {std::array{0, -1, 0}, {1, 0, 1}, {2, 2, 2}, {7, 7, 7}, {-1, -1, 0}}) {
    SystemInfo record;
    record.Output = static_cast<std::int16_t>(output);
    Block block;
    Pack_Settings(record, 0, CodePage::Western, block);
    EXPECT_EQ(static_cast<std::int16_t>(Number(block, 152, 2)), stored);
    std::int32_t kind = 0;
    Unpack_Settings(block, CodePage::Western, record, kind);
    EXPECT_EQ(record.Output, back);
  }
}

TEST(SettingsBlock, TextsAreCutAtWholeCharactersAndTrimmed) {
  const struct {
    CodePage page;
    const char* name;
    std::string stored;
    const char* back;
  } kRows[] = {
      {CodePage::Western, "", "        ", ""},
      {CodePage::Western, "  m/s²  ", "  m/s\xB2  ", "  m/s²"},
      {CodePage::Western, "Übergröße",
       "\xDC"
       "bergr\xF6\xDF",
       "Übergröß"},
      {CodePage::Western, "Ω角x", "??x     ", "??x"},
      {CodePage::Japanese, "角度", "\x8A\x70\x93\x78    ", "角度"},
      {CodePage::Japanese, "1角度角度", "1\x8A\x70\x93\x78\x8A\x70 ", "1角度角"},
      {CodePage::Japanese, "ｱﾎﾟ²", "\xB1\xCE\xDF?    ", "ｱﾎﾟ?"},
      {CodePage::Western, "\xC3(\xF0\x9F\x98\x80\xFF", "?(??    ", "?(??"},
  };
  for (const auto& row : kRows) {
    SystemInfo record;
    record.XUserName = row.name;
    Block block;
    Pack_Settings(record, 0, row.page, block);
    EXPECT_EQ(Text(block, 326, 8), row.stored) << row.name;
    std::int32_t kind = 0;
    Unpack_Settings(block, row.page, record, kind);
    EXPECT_EQ(record.XUserName, row.back) << row.name;
  }
}

TEST(SettingsBlock, TakesAnyBytes) {
  Block block;
  for (int value = 0; value < 256; ++value) {
    block.fill(static_cast<std::byte>(value));
    for (const CodePage page : {CodePage::Western, CodePage::Japanese}) {
      SystemInfo record;
      std::int32_t kind = 0;
      Unpack_Settings(block, page, record, kind);
      EXPECT_LE(record.XUserName.size(), 24U); // three bytes of UTF-8 each
      Block again;
      Pack_Settings(record, kind, page, again);
      if (value >= 0x20 && value < 0x7F) {
        EXPECT_EQ(Text(again, 2, 16), Text(block, 2, 16));
      }
    }
  }
}

} // namespace
} // namespace calder

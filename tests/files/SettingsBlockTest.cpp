#include "files/SettingsBlock.h"
#include "Testing.h"

#include <bit>
#include <cstring>

namespace calder::settings_block_test {

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

// A block in which no two bytes beside each other are alike: texts of letters, numbers of any bytes.
Block SampleBlock() {
  Block block;
  for (std::size_t i = 0; i < block.size(); ++i) {
    const bool isText = (i >= 2 && i < 18) || (i >= 24 && i < 88) || (i >= 116 && i < 148) || (i >= 326 && i < 342);
    block[i] = static_cast<std::byte>(isText ? 'A' + i % 26 : (i * 37 + 11) % 256);
  }
  PutWord(block, 0, 0x0407);
  PutWord(block, 152, 2);
  return block;
}

TEST(SettingsBlock, HasEveryFieldInItsPlace) {
  const Block block = SampleBlock();
  SystemInfo r;
  std::int32_t kind = 0;
  Unpack_Settings(block, CodePage::Western, r, kind);
  EXPECT_EQ(Texts(kind, r.ModelNo), "3 7");

  using S = SystemInfo;
  const auto word = [&](std::size_t offset) { return static_cast<std::int16_t>(Number(block, offset, 2)); };
  EXPECT_EQ(Texts(r.Address, r.AddressMin, r.AddressMax), Texts(word(18), word(20), word(22)));
  EXPECT_EQ(Texts(r.MemorySizeNo, r.Field9, r.Field10), Texts(word(88), word(98), word(100)));
  EXPECT_EQ(Texts(r.MemoryNoSelectable, r.MemoryNo, r.MemoryNoMin), Texts(word(106), word(108), word(110)));
  EXPECT_EQ(Texts(r.MemoryNoMax, r.MemoryNameSelectable), Texts(word(112), word(114)));
  EXPECT_EQ(Texts(r.ChannelSelectable, r.Channel, r.Output), Texts(word(148), word(150), word(152)));
  EXPECT_EQ(Texts(r.RangeNo, r.Field46, r.OffsetSwitch), Texts(word(218), word(220), word(254)));
  EXPECT_EQ(Texts(r.OffsetOn, r.XUnit, r.YUnit), Texts(word(288), word(290), word(308)));
  EXPECT_EQ(Texts(r.TransferFormat, r.SizeRatio, r.Polarity), Texts(word(342), word(348), word(350)));
  using Long = std::pair<std::size_t, std::int32_t S::*>;
  for (const auto& [offset, field] :
       {Long{90, &S::MemorySize}, Long{94, &S::CodeSpan}, Long{102, &S::DataBits}, Long{344, &S::ControlPointCount}})
    EXPECT_EQ(r.*field, static_cast<std::int32_t>(Number(block, offset, 4))) << offset;
  using Double = std::pair<std::size_t, double S::*>;
  for (const auto& [offset, field] :
       {Double{154, &S::Frequency},    Double{162, &S::FrequencyMin}, Double{170, &S::FrequencyMax},
        Double{178, &S::Field23},      Double{186, &S::Period},       Double{194, &S::Field25},
        Double{202, &S::Field26},      Double{210, &S::Field27},      Double{222, &S::Amplitude},
        Double{230, &S::AmplitudeMin}, Double{238, &S::AmplitudeMax}, Double{246, &S::Field31},
        Double{256, &S::Offset},       Double{264, &S::OffsetMin},    Double{272, &S::OffsetMax},
        Double{280, &S::Field35},      Double{292, &S::XUserMin},     Double{300, &S::XUserMax},
        Double{310, &S::YUserMin},     Double{318, &S::YUserMax}})
    EXPECT_EQ(std::bit_cast<std::uint64_t>(r.*field), Number(block, offset, 8)) << offset;
  EXPECT_EQ(
      Texts(r.ModelName, r.DefaultArbCommand, r.MemoryName, r.XUserName, r.YUserName),
      Texts(Text(block, 2, 16), Text(block, 24, 64), Text(block, 116, 32), Text(block, 326, 8), Text(block, 334, 8)));

  Block again;
  Pack_Settings(r, kind, CodePage::Western, again);
  EXPECT_EQ(again, block);
}

TEST(SettingsBlock, FirstWordHasTheModelAndPerhapsTheInterface) {
  // kind: 99: as it was
  using Row = std::tuple<std::uint16_t, std::int16_t, std::int32_t>;
  for (const auto& [word, model, theKind] :
       {Row{0, 0, 99}, Row{255, 255, 99}, Row{256, 0, 0}, Row{0x01FF, 255, 0}, Row{0x0503, 3, 4}, Row{0x7F01, 1, 126},
        Row{0x8001, 1, 99}, Row{0xFFFF, 255, 99}}) {
    Block block{};
    PutWord(block, 0, word);
    SystemInfo record;
    std::int32_t kind = 99;
    Unpack_Settings(block, CodePage::Western, record, kind);
    EXPECT_EQ(Texts(record.ModelNo, kind), Texts(model, theKind)) << word;
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
  const std::tuple<CodePage, const char*, std::string, const char*> kRows[] = {
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
      {CodePage::Western, "\xC3(\xF0\x9F\x98\x80\xFF", "?(??    ", "?(??"}};
  for (const auto& [page, name, stored, back] : kRows) {
    SystemInfo record;
    record.XUserName = name;
    Block block;
    Pack_Settings(record, 0, page, block);
    EXPECT_EQ(Text(block, 326, 8), stored) << name;
    std::int32_t kind = 0;
    Unpack_Settings(block, page, record, kind);
    EXPECT_EQ(record.XUserName, back) << name;
  }
  Block block = SampleBlock(); // with bytes that are no character there
  for (const std::size_t i : {326U, 328U}) block[i] = std::byte{0xFF};
  SystemInfo record;
  std::int32_t kind = 0;
  Unpack_Settings(block, CodePage::Japanese, record, kind);
  EXPECT_EQ(record.XUserName, "?P?RSTUV");
}

} // namespace calder::settings_block_test

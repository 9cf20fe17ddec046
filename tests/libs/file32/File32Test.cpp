#include "libs/file32/file32.h"

#include "libs/wavelb32/TestWave.h"
#include "platform/TempFolder.h"

#include <gmock/gmock.h>

namespace calder::file32_test {

// A settings block that announces `entries` control points, or no table.
std::vector<std::byte> Block(std::optional<std::int32_t> entries) {
  std::vector<std::byte> block(WDB_SETTINGS_BYTES);
  for (std::size_t i = 0; i < block.size(); ++i) block[i] = static_cast<std::byte>(i);
  block[342] = static_cast<std::byte>(entries ? 1 : 0);
  block[343] = std::byte{0};
  for (std::size_t i = 0; i < 4; ++i) {
    block[344 + i] = static_cast<std::byte>((static_cast<std::uint32_t>(entries.value_or(0)) >> (8 * i)) & 0xFF);
  }
  return block;
}

class File32Test : public testing::Test {
protected:
  const TempFolder folder;
  File32 file;
};

TEST_F(File32Test, WdbHasBlockCodesAndTableInTheirPlaces) {
  Codes codes = Noise(W_MAX_POINTS);
  codes[0] = 0x1234;
  codes[1] = -2;
  codes.back() = -32767;
  const TestWave source(codes);
  const std::string table = "abcdefghijkl";
  ASSERT_EQ(file.Save4410File(folder / "a.wdb", Block(2), source.Handle(), Bytes(table)), 0);

  const std::string bytes = GetFile(folder / "a.wdb");
  ASSERT_EQ(bytes.size(), 352U + 1048576U + 12U);
  EXPECT_TRUE(std::ranges::equal(Bytes(bytes.substr(0, 352)), Block(2)));
  EXPECT_EQ(bytes.substr(352, 4), "\x34\x12\xFE\xFF");
  EXPECT_EQ(bytes.substr(1048926, 2), "\x01\x80");
  EXPECT_EQ(bytes.substr(1048928), table);

  const TestWave target(W_MAX_POINTS);
  std::vector<std::byte> block(652, std::byte{0x20});
  ASSERT_EQ(file.Read4410File(folder / "a.wdb", block, target.Handle()), 0);
  EXPECT_EQ(target.Copy(), codes);
  EXPECT_TRUE(std::ranges::equal(std::span(block).first(352), Block(2)));
  EXPECT_EQ(block[352], std::byte{0x20});
}

TEST_F(File32Test, WdbOfAShorterBufferIsFilledWithZeros) {
  const TestWave source(Codes{5, -6, 7});
  ASSERT_EQ(file.Save4410File(folder / "a.wdb", Block(std::nullopt), source.Handle()), 0);
  EXPECT_EQ(std::filesystem::file_size(folder / "a.wdb"), WDB_TABLE_OFFSET);
  const TestWave target(Noise(W_MAX_POINTS + 2));
  std::vector<std::byte> block(WDB_SETTINGS_BYTES);
  ASSERT_EQ(file.Read4410File(folder / "a.wdb", block, target.Handle()), 0);
  Codes expected(W_MAX_POINTS + 2);
  expected[0] = 5;
  expected[1] = -6;
  expected[2] = 7;
  EXPECT_EQ(target.Copy(), expected);
}

TEST_F(File32Test, UnsoundWdbChangesNothing) {
  const TestWave target(Noise(W_MAX_POINTS));
  const auto before = target.Copy();
  const std::tuple<std::optional<std::int32_t>, std::size_t, bool> kRows[] = {
      {std::nullopt, 0, false},
      {std::nullopt, 351, false},
      {std::nullopt, 352, false},
      {std::nullopt, WDB_TABLE_OFFSET - 1, false},
      {2, WDB_TABLE_OFFSET + 11, false},
      {10000, WDB_TABLE_OFFSET + 59999, false},
      {10001, WDB_TABLE_OFFSET + 60006, false}, // more than a waveform can have
      {-1, WDB_TABLE_OFFSET + 60000, false},
      {INT32_MAX, WDB_TABLE_OFFSET + 60000, false},
      {0, WDB_TABLE_OFFSET, true},
      {2, WDB_TABLE_OFFSET + 12, true},
      {10000, WDB_TABLE_OFFSET + 60000, true},
      {std::nullopt, WDB_TABLE_OFFSET, true},
      {std::nullopt, WDB_TABLE_OFFSET + 99, true}, // something after it
  };
  for (const auto& [entries, theBytes, sound] : kRows) {
    std::string bytes;
    for (const std::byte byte : Block(entries)) bytes += static_cast<char>(byte);
    bytes.resize(theBytes, 'w');
    PutFile(folder / "a.wdb", bytes);
    std::vector<std::byte> block(WDB_SETTINGS_BYTES, std::byte{0x55});
    const TestWave copy(before);
    const std::int32_t status = file.Read4410File(folder / "a.wdb", block, sound ? copy.Handle() : target.Handle());
    EXPECT_EQ(Texts(status, target.Copy() == before), Texts(sound ? 0 : FILE_READ_FAILED, true)) << theBytes;
    EXPECT_EQ(block[300] == std::byte{0x55}, !sound) << theBytes;
  }
}

TEST_F(File32Test, WdbRefusesWhatItCouldNotReadBack) {
  const TestWave source(4);
  PutFile(folder / "a.wdb", "old");
  const std::string table(12, 't');
  EXPECT_EQ(file.Save4410File(folder / "a.wdb", Block(3), source.Handle(), Bytes(table)), FILE_WRITE_FAILED);
  EXPECT_EQ(file.Save4410File(folder / "a.wdb", Block(std::nullopt), source.Handle(), Bytes(table)), FILE_WRITE_FAILED);
  EXPECT_EQ(file.Save4410File(folder / "a.wdb", std::vector<std::byte>(351), source.Handle()), FILE_WRITE_FAILED);
  EXPECT_EQ(file.Save4410File(folder / "a.wdb", Block(2), source.Handle() + 1, Bytes(table)), FILE_WRITE_FAILED);
  EXPECT_EQ(GetFile(folder / "a.wdb"), "old");
}

TEST_F(File32Test, SystemFileCarriesTheBlock) {
  const std::vector<std::byte> saved = Block(7);
  ASSERT_EQ(file.SaveSystemFile(folder / "a.ocb", saved), 0);
  EXPECT_EQ(std::filesystem::file_size(folder / "a.ocb"), 352U);
  std::vector<std::byte> block(WDB_SETTINGS_BYTES);
  ASSERT_EQ(file.ReadSystemFile(folder / "a.ocb", block), 0);
  EXPECT_EQ(block, saved);

  PutFile(folder / "long.ocb", GetFile(folder / "a.ocb") + "more");
  PutFile(folder / "short.ocb", GetFile(folder / "a.ocb").substr(1));
  block[0] = std::byte{99};
  EXPECT_EQ(file.ReadSystemFile(folder / "short.ocb", block), FILE_READ_FAILED);
  EXPECT_EQ(file.ReadSystemFile(folder / "missing.ocb", block), FILE_READ_FAILED);
  EXPECT_EQ(block[0], std::byte{99});
  EXPECT_EQ(file.ReadSystemFile(folder / "long.ocb", block), 0);
  EXPECT_EQ(block, saved);
}

TEST_F(File32Test, IntegerTextGoesOutAndComesBack) {
  const TestWave source(Noise(W_MAX_POINTS));
  ASSERT_EQ(file.SaveWaveData(folder / "a.txt", source.Handle(), 0, W_MAX_POINTS), 0);
  const TestWave target(W_MAX_POINTS);
  std::int32_t read = -1;
  ASSERT_EQ(file.LoadWaveData(folder / "a.txt", target.Handle(), 0, W_MAX_POINTS, read), 0);
  EXPECT_EQ(read, W_MAX_POINTS);
  EXPECT_EQ(target.Copy(), source.Copy());

  const TestWave small(Codes{1, -2, 30, -400, 5000});
  ASSERT_EQ(file.SaveWaveData(folder / "b.txt", small.Handle(), 1, 3), 0);
  EXPECT_EQ(GetFile(folder / "b.txt"), "-2\r\n30\r\n-400\r\n");
  ASSERT_EQ(file.LoadWaveData(folder / "b.txt", small.Handle(), 3, 2, read), 0);
  EXPECT_EQ(Texts(read, small.Text()), "2 1 -2 30 -2 30");
}

TEST_F(File32Test, RefusedTextLeavesTheBufferAndSaysWhy) {
  const TestWave buffer(Codes{1, 2, 3, 4});
  std::int32_t read = 77;
  PutFile(folder / "a.txt", "10\r\n20\r\n3.5\r\n");
  EXPECT_EQ(file.LoadWaveData(folder / "a.txt", buffer.Handle(), 0, 4, read), FILE_READ_FAILED);
  EXPECT_EQ(file.LastFault().line, 3);
  EXPECT_EQ(file.LastFault().reason, TextReason::NotWhole);
  EXPECT_EQ(file.LoadWaveData(folder / "missing.txt", buffer.Handle(), 0, 4, read), FILE_READ_FAILED);
  EXPECT_EQ(file.LastFault().line, 0);
  EXPECT_EQ(file.LastFault().reason, TextReason::Unreadable);

  PutFile(folder / "good.txt", "10\r\n");
  for (const auto [first, most] : {std::array{-1, 2}, {0, 5}, {4, 1}, {INT32_MAX, INT32_MAX}, {0, -1}, {0, 0}}) {
    EXPECT_EQ(file.LoadWaveData(folder / "good.txt", buffer.Handle(), first, most, read), FILE_READ_FAILED) << first;
    EXPECT_EQ(file.SaveWaveData(folder / "new.txt", buffer.Handle(), first, most), FILE_WRITE_FAILED) << first;
  }
  EXPECT_EQ(file.LoadWaveData(folder / "good.txt", buffer.Handle() + 1, 0, 4, read), FILE_READ_FAILED);
  EXPECT_EQ(Texts(buffer.Text(), read, std::filesystem::exists(folder / "new.txt")), "1 2 3 4 77 false");
}

TEST_F(File32Test, RealTextGivesCodes) {
  Codes codes = {9, 9};
  PutFile(folder / "a.txt", "4\r\n-1\r\n1\r\n");
  ASSERT_EQ(file.LoadRealData(folder / "a.txt", 3, codes), 0);
  EXPECT_THAT(codes, testing::ElementsAre(32767, -8192, 8192));
  ASSERT_EQ(file.LoadRealData(folder / "a.txt", 1, codes), 0);
  EXPECT_THAT(codes, testing::ElementsAre(32767));

  PutFile(folder / "zero.txt", "0\r\n0\r\n");
  EXPECT_EQ(file.LoadRealData(folder / "zero.txt", 3, codes), FILE_READ_FAILED);
  EXPECT_NE(file.LastFault().reason, TextReason::None);
  EXPECT_EQ(file.LoadRealData(folder / "a.txt", 0, codes), FILE_READ_FAILED);
  EXPECT_THAT(codes, testing::ElementsAre(32767));
}

} // namespace calder::file32_test

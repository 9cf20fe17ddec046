// A .wdb file: the first three bytes of the input give its length, the rest its settings block. What is refused changes
// nothing; what is accepted goes through the settings record and back.
#include "files/SettingsBlock.h"
#include "libs/file32/WdbFile.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace calder;
  if (size < 3) return 0;
  const std::size_t number = data[0] | std::size_t{data[1]} << 8 | std::size_t{data[2]} << 16;
  const std::size_t length = number % (WDB_TABLE_OFFSET + 70000);
  std::array<std::uint8_t, WDB_SETTINGS_BYTES> block{};
  std::copy_n(data + 3, std::min(size - 3, block.size()), block.begin());

  static std::vector<std::int16_t> codes(524288);
  static std::vector<std::byte> file;
  file.assign(length, std::byte{0});
  std::ranges::copy(std::as_bytes(std::span(block)).first(std::min(length, block.size())), file.begin());
  codes[0] = 77;
  if (WdbCodes(file, codes) != 0) {
    if (codes[0] != 77) std::abort();
    return 0;
  }
  if (length < WDB_TABLE_OFFSET || codes[0] != 0) std::abort();

  for (const CodePage page : {CodePage::Western, CodePage::Japanese}) {
    const auto settings = WdbSettings(file).first<WDB_SETTINGS_BYTES>();
    SystemInfo record;
    std::int32_t kind = 3;
    Unpack_Settings(settings, page, record, kind);
    std::array<std::byte, WDB_SETTINGS_BYTES> packed;
    Pack_Settings(record, kind, page, packed);
    // Texts lose what means nothing the first time, and nothing more the second time.
    SystemInfo again;
    std::int32_t kindAgain = 3;
    Unpack_Settings(packed, page, again, kindAgain);
    std::array<std::byte, WDB_SETTINGS_BYTES> packedAgain;
    Pack_Settings(again, kindAgain, page, packedAgain);
    if (packed != packedAgain || kind != kindAgain) std::abort();
  }
  return 0;
}

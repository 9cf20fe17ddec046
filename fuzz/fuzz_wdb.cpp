// A .wdb file: the first three bytes of the input give its length, the rest its settings block. What is refused changes
// nothing; what is accepted goes through the settings record and back.
#include "files/SettingsBlock.h"
#include "libs/file32/WdbFile.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace calder;
  if (size < 3) return 0;
  const std::size_t number = data[0] | std::size_t{data[1]} << 8 | std::size_t{data[2]} << 16;
  const std::size_t length = number % (WDB_TABLE_OFFSET + 70000);
  std::array<std::uint8_t, WDB_SETTINGS_BYTES> block{};
  std::copy_n(data + 3, std::min(size - 3, block.size()), block.begin());

  static const int file = ::memfd_create("wdb", 0);
  static std::vector<std::int16_t> codes(524288);
  if (file < 0 || ::pwrite(file, block.data(), block.size(), 0) < 0) std::abort();
  if (::ftruncate(file, static_cast<off_t>(length)) != 0) std::abort();
  codes[0] = 77;
  std::array<std::byte, WDB_SETTINGS_BYTES> settings;
  settings.fill(std::byte{0x55});
  const std::int32_t status = ReadWdb("/proc/self/fd/" + std::to_string(file), settings, codes);
  if (status != 0) {
    if (codes[0] != 77 || std::ranges::count(settings, std::byte{0x55}) != WDB_SETTINGS_BYTES) std::abort();
    return 0;
  }
  if (length < WDB_TABLE_OFFSET || codes[0] != 0) std::abort();

  for (const CodePage page : {CodePage::Western, CodePage::Japanese}) {
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

#include "libs/file32/WdbFile.h"

#include "libs/file32/LittleEndian.h"
#include "platform/posix/WholeFile.h"

#include <algorithm>
#include <array>
#include <new>
#include <optional>

namespace calder {

namespace {

constexpr std::size_t kWavePoints = WDB_WAVE_BYTES / 2;
// Where the settings block tells of the control-point table.
constexpr std::size_t kTransferFormatOffset = 342;
constexpr std::size_t kControlPointCountOffset = 344;
constexpr std::int16_t kWithTable = 1;
constexpr std::int32_t kMostControlPoints = 10000;

// The bytes of the table that the block announces; none when it announces an impossible one.
std::optional<std::size_t> TableBytes(const std::byte* block) {
  if (LoadLittleEndian<std::int16_t>(block + kTransferFormatOffset) != kWithTable) return 0;
  const auto count = LoadLittleEndian<std::int32_t>(block + kControlPointCountOffset);
  if (count < 0 || count > kMostControlPoints) return std::nullopt;
  return static_cast<std::size_t>(count) * WDB_TABLE_ENTRY_BYTES;
}

} // namespace

std::int32_t WriteWdb(const std::string& path, std::span<const std::byte> settingsBlock,
                      std::span<const std::int16_t> codes, std::span<const std::byte> controlPointTable,
                      std::vector<char>& scratch) {
  if (settingsBlock.size() < WDB_SETTINGS_BYTES) return FILE_WRITE_FAILED;
  if (TableBytes(settingsBlock.data()) != controlPointTable.size()) return FILE_WRITE_FAILED;
  codes = codes.first(std::min(codes.size(), kWavePoints));
  std::span<const std::byte> area = std::as_bytes(codes);
  if (std::endian::native != std::endian::little || codes.size() < kWavePoints) {
    try {
      scratch.assign(WDB_WAVE_BYTES, 0);
    } catch (const std::bad_alloc&) {
      return FILE_WRITE_FAILED;
    }
    const std::span<std::byte> bytes = std::as_writable_bytes(std::span(scratch));
    StoreCodes(codes, bytes.data());
    area = bytes;
  }
  const std::array pieces = {settingsBlock.first(WDB_SETTINGS_BYTES), area, controlPointTable};
  return ReplaceFile(path, pieces);
}

// The codes go straight to their place, but only once the file is known to have everything: its size and its table.
std::int32_t ReadWdb(const std::string& path, std::span<std::byte> settingsBlock, std::span<std::int16_t> codes) {
  if (settingsBlock.size() < WDB_SETTINGS_BYTES) return FILE_READ_FAILED;
  RegularFile file(path);
  std::array<std::byte, WDB_SETTINGS_BYTES> block; // NOLINT(cppcoreguidelines-pro-type-member-init): filled at once
  if (!file.Read(0, block)) return FILE_READ_FAILED;
  const std::optional<std::size_t> table = TableBytes(block.data());
  std::array<std::byte, 1> last{};
  if (!table || !file.Read(WDB_TABLE_OFFSET + *table - last.size(), last)) return FILE_READ_FAILED;

  const std::span<std::int16_t> stored = codes.first(std::min(codes.size(), kWavePoints));
  const std::span<std::byte> bytes = std::as_writable_bytes(stored);
  if (!file.Read(WDB_SETTINGS_BYTES, bytes)) return FILE_READ_FAILED;
  if constexpr (std::endian::native != std::endian::little) LoadCodes(bytes.data(), stored);
  std::fill(codes.begin() + static_cast<std::ptrdiff_t>(stored.size()), codes.end(), std::int16_t{0});
  std::ranges::copy(block, settingsBlock.begin());
  return 0;
}

} // namespace calder

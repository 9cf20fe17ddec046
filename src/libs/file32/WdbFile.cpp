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
// Where the settings block describes the control-point table.
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

std::span<const std::byte> WdbSettings(std::span<const std::byte> file) {
  return file.size() < WDB_SETTINGS_BYTES ? std::span<const std::byte>() : file.first(WDB_SETTINGS_BYTES);
}

std::int32_t WdbCodes(std::span<const std::byte> file, std::span<std::int16_t> codes) {
  const std::span<const std::byte> block = WdbSettings(file);
  const std::optional<std::size_t> table = block.empty() ? std::nullopt : TableBytes(block.data());
  if (!table || file.size() < WDB_TABLE_OFFSET + *table) return FILE_READ_FAILED;
  const std::span<std::int16_t> stored = codes.first(std::min(codes.size(), kWavePoints));
  LoadCodes(&file[WDB_SETTINGS_BYTES], stored);
  std::fill(codes.begin() + static_cast<std::ptrdiff_t>(stored.size()), codes.end(), std::int16_t{0});
  return 0;
}

} // namespace calder

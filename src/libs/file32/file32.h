// The file library: .wdb files, system files, text files of codes and of real numbers, and the clipboard's form of a
// waveform. docs/file-formats.md has the layouts.
//
// Every call returns 0 on success. Failures of files are FILE_READ_FAILED and FILE_WRITE_FAILED, of the clipboard
// CLIP_...: the numbers of the messages that report them. A failed read leaves the buffer as it was. A write goes to a
// temporary file beside the target which is flushed and then takes the target's place, so that a failure leaves the old
// file as it was.
//
// Paths are UTF-8.
#pragma once

#include "libs/file32/TextFault.h"
#include "libs/file32/WdbFile.h"
#include "libs/wavelb32/wavelb32.h"
#include "platform/posix/WholeFile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace calder {

class Clipboard;

inline constexpr std::int32_t CLIP_OPEN_FAILED = 80;
inline constexpr std::int32_t CLIP_READ_FAILED = 81;
inline constexpr std::int32_t CLIP_WRITE_FAILED = 82;
inline constexpr std::int32_t CLIP_ERROR = 83;

class File32 {
public:
  File32();
  ~File32();
  File32(const File32&) = delete;
  File32& operator=(const File32&) = delete;

  // A .wdb file: the settings block, the waveform area (524288 codes of the buffer, little-endian 16-bit; points that
  // the buffer lacks are 0) and the control-point table (6 bytes an entry, may be empty), which has to be as long as
  // the settings block says.
  [[nodiscard]] std::int32_t Save4410File(const std::string& path, std::span<const std::byte> settingsBlock,
                                          WaveHandle buffer, std::span<const std::byte> controlPointTable = {});
  // settingsBlock: at least WDB_SETTINGS_BYTES. The block and the buffer are filled only when the whole file is sound.
  // Points of the buffer beyond the file's become 0.
  [[nodiscard]] std::int32_t Read4410File(const std::string& path, std::span<std::byte> settingsBlock,
                                          WaveHandle buffer);
  // The same in steps, for who looks at the settings before any buffer changes: the file's bytes, read once and valid
  // until the next call (empty: it cannot be read), from which WdbSettings takes the block and TakeWdb the waveform.
  [[nodiscard]] std::span<const std::byte> LoadWdb(const std::string& path);
  [[nodiscard]] std::int32_t TakeWdb(std::span<const std::byte> file, WaveHandle buffer);

  // A system file: the settings block alone. A file that is longer than the block is sound; a shorter one is not, and
  // leaves `settingsBlock` as it was.
  [[nodiscard]] std::int32_t SaveSystemFile(const std::string& path, std::span<const std::byte> settingsBlock);
  [[nodiscard]] std::int32_t ReadSystemFile(const std::string& path, std::span<std::byte> settingsBlock);

  // One code a line, CR LF.
  [[nodiscard]] std::int32_t SaveWaveData(const std::string& path, WaveHandle buffer, std::int32_t first,
                                          std::int32_t count);
  // At most `most` points from point `first` on; `read` is how many there were. Lines beyond `most` are not read.
  [[nodiscard]] std::int32_t LoadWaveData(const std::string& path, WaveHandle buffer, std::int32_t first,
                                          std::int32_t most, std::int32_t& read);
  // Real numbers, one a line: scaled so that the largest magnitude is 32767. At most `most` values are taken; the value
  // after the last one still counts for the scale. `codes` holds the codes on success.
  [[nodiscard]] std::int32_t LoadRealData(const std::string& path, std::int32_t most, std::vector<std::int16_t>& codes);
  // Why the last text file was refused.
  [[nodiscard]] const TextFault& LastFault() const;

  // The clipboard. start and count in whole points; a range outside the buffer is CLIP_ERROR. Copying nothing leaves
  // the clipboard as it is.
  [[nodiscard]] std::int32_t SetClipBoard(Clipboard& clipboard, WaveHandle buffer, std::int32_t start,
                                          std::int32_t count);
  // Places the clipboard's waveform into the buffer from start on, at its own length, cut at bufferPoints; points
  // after it stay as they are, and so does everything after a failure. `placed` is how many points were placed: 0 when
  // start is bufferPoints. `count`, the selected range, changes nothing.
  [[nodiscard]] std::int32_t GetClipBoard(Clipboard& clipboard, WaveHandle buffer, std::int32_t start,
                                          std::int32_t count, std::int32_t bufferPoints, std::int32_t& placed);

private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

} // namespace calder

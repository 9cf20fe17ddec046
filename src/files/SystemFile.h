// System files, .ocb: the instrument and display settings alone. docs/file-formats.md has the layout.
#pragma once

#include <cstdint>
#include <string>

namespace calder {

class ErrMsg;
class File32;
class WaveFiles;
struct SystemInfo;

class SystemFile {
public:
  SystemFile(SystemInfo& settings, std::int16_t& interfaceKind, File32& fileLibrary, const ErrMsg& messages,
             const WaveFiles& waveFiles)
      : settings_(settings), interfaceKind_(interfaceKind), fileLibrary_(fileLibrary), messages_(messages),
        waveFiles_(waveFiles) {}

  // 0, or 72: not written, the old file is as it was.
  [[nodiscard]] std::int32_t Write_SystemFile(const std::string& path) const;
  // 0, or 71: nothing could be read, or it holds no settings; the record is as it was. A model that the list lacks
  // becomes the first one of the list.
  [[nodiscard]] std::int32_t Read_SystemFile(const std::string& path);

private:
  SystemInfo& settings_;
  std::int16_t& interfaceKind_;
  File32& fileLibrary_;
  const ErrMsg& messages_;
  const WaveFiles& waveFiles_;
};

} // namespace calder

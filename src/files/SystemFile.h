// System files, .ocb: the instrument and display settings alone. docs/file-formats.md has the layout.
#pragma once

#include "app/Program.h"

#include <cstdint>
#include <string>

namespace calder {

class WaveFiles;

class SystemFile {
public:
  SystemFile(Program& program, const WaveFiles& waveFiles) : program_(program), waveFiles_(waveFiles) {}

  // 0, or 72: not written, the old file is as it was.
  [[nodiscard]] std::int32_t Write_SystemFile(const std::string& path) const;
  // 0, or 71: nothing could be read, or it holds no settings; the record is as it was. A model that the list lacks
  // becomes the first one of the list.
  [[nodiscard]] std::int32_t Read_SystemFile(const std::string& path);

private:
  Program& program_;
  const WaveFiles& waveFiles_;
};

} // namespace calder

// Parameter files, .pwf: which function of the parameter-variable waveforms is selected, and its values.
// docs/file-formats.md has the layout.
#pragma once

#include "app/Messages.h"
#include "app/PwfTable.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace calder {

class PwfFile {
public:
  // The table must outlive this object. The language chooses the code page of the function's name.
  PwfFile(PwfTable& table, Language language) : table_(table), language_(language) {}

  // 0; 72: not written, the old file is as it was.
  [[nodiscard]] std::int32_t Write_Pwf(const std::string& path) const;
  // Selects the file's function and takes its values. 0, also when the file holds nothing of the kind; 71: it cannot be
  // read, or a line is not what belongs there. What was taken before that line stays.
  [[nodiscard]] std::int32_t Read_Pwf(const std::string& path);

  // The same without the file.
  [[nodiscard]] std::string Compose() const;
  [[nodiscard]] std::int32_t Parse(std::string_view text);

private:
  PwfTable& table_;
  Language language_;
};

} // namespace calder

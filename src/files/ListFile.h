// Expression lists, .wfn: the Create dialog's pages as a file. docs/file-formats.md has the layout.
#pragma once

#include "app/Program.h"

#include <cstdint>
#include <string>

namespace calder {

class ListFile {
public:
  explicit ListFile(Program& program) : program_(program) {}

  // Writes every page of the user's that takes part in All Page OK. 0, also when there is none and no file is made; 72:
  // not written, the old file is as it was. The user is not told.
  std::int32_t Write_List(const std::string& path) const;
  // Replaces all pages by those of the file. 0; 71: nothing could be read, the pages are as they were, the user was
  // told. A file that is damaged further on gives the pages before the damage.
  std::int32_t Read_List(const std::string& path);

private:
  Program& program_;
};

} // namespace calder

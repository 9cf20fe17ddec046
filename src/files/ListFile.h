// Expression lists, .wfn: the Create dialog's pages as text. docs/file-formats.md has the layout.
//
// A list is written in the units of the moment and says their ranges, so that it means the same when it is read in
// others.
#pragma once

#include "app/Program.h"

#include <cstdint>
#include <string>
#include <string_view>

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

  // The text of the file, UTF-8.
  [[nodiscard]] std::string Compose() const;
  // The pages of a text in the code page of the language. False: there are none to be read, `pages` is as it was.
  [[nodiscard]] bool Parse(std::string_view text, PageTable& pages) const;

private:
  [[nodiscard]] std::string ComposeHead() const;
  [[nodiscard]] std::string ComposePage(int number, CreatePage page) const;

  Program& program_;
};

} // namespace calder

// Expression lists, .wfn: the Create dialog's pages as a file. docs/file-formats.md has the layout.
#pragma once

#include <cstdint>
#include <string>

namespace calder {

class ErrMsg;
class PageTable;
struct SystemInfo;

class ListFile {
public:
  ListFile(PageTable& pages, const SystemInfo& settings, const ErrMsg& messages)
      : pages_(pages), settings_(settings), messages_(messages) {}

  // Writes every page of the user's that takes part in All Page OK. 0, also when there is none and no file is made; 72:
  // not written, the old file is as it was. Nothing is reported.
  std::int32_t Write_List(const std::string& path) const;
  // Replaces all pages by those of the file. 0; 71: nothing could be read, the pages are as they were, the failure
  // was reported. A file that is damaged further on gives the pages before the damage.
  std::int32_t Read_List(const std::string& path);

private:
  PageTable& pages_;
  const SystemInfo& settings_;
  const ErrMsg& messages_;
};

} // namespace calder

// The common dialogs that choose a file.
#pragma once

#include <optional>
#include <string>

namespace calder {

struct FileDialogRequest {
  std::string title;      // empty: the desktop's own
  std::string filter;     // entries "text|pattern" joined by "|"
  int filterIndex = 1;    // 1-based entry selected at first; 0 counts as 1
  std::string fileName;   // initial name, with or without a folder
  std::string defaultExt; // added to a typed name without an extension; without a dot
};

struct FileDialogAnswer {
  std::string path; // full path
  int filterIndex = 1;
};

class FileDialogs {
public:
  virtual ~FileDialogs() = default;
  // No value: cancelled. Opening lets only existing files through; saving asks before it replaces a
  // file and before it creates one.
  virtual std::optional<FileDialogAnswer> Open(const FileDialogRequest& request) = 0;
  virtual std::optional<FileDialogAnswer> Save(const FileDialogRequest& request) = 0;
};

} // namespace calder

// The common dialogs that choose a file.
#pragma once

#include "platform/FileDialogs.h"
#include "platform/SettingsStore.h"

namespace calder {

class QtFileDialogs final : public FileDialogs {
public:
  // A name without a folder is offered in the folder that the store remembers.
  explicit QtFileDialogs(SettingsStore& settings) : settings_(settings) {}

  std::optional<FileDialogAnswer> Open(const FileDialogRequest& request) override;
  std::optional<FileDialogAnswer> Save(const FileDialogRequest& request) override;

private:
  std::optional<FileDialogAnswer> Run(const FileDialogRequest& request, bool save);

  SettingsStore& settings_;
};

} // namespace calder

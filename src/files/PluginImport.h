// Import through plug-ins: the dialog that they fill, and the file's points into the current waveform.
#pragma once

#include "libs/pluginsp/PluginSp.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace calder {

class EditBuffers;
class ErrMsg;
class FileDialogs;
struct Desktop;
struct RememberedNames;
struct SystemInfo;

// What an import asks of the window.
class ImportPort {
public:
  struct Running {
    std::function<double()> progress; // 0 to 1
    std::function<void()> cancel;
  };

  virtual ~ImportPort() = default;
  // From here to Finished the user can do nothing but cancel; how far the import is shows when it takes longer than a
  // moment.
  virtual void Begin(Running running) = 0;
  // Called often in between: the window stays alive.
  virtual void KeepAlive() = 0;
  virtual void Finished() = 0;
  // The settings, under the plug-in's name; false: the user cancels. See PluginSp::AskOptions. stop: ends a call of
  // `change` that takes too long.
  virtual bool AskOptions(const std::string& name, PluginForm& form, const PluginSp::ChangeOption& change,
                          const std::function<void()>& stop) = 0;
  // What the plug-in says of the points; does not wait for the user.
  virtual void ShowReport(const std::string& report) = 0;
};

class PluginImport {
public:
  struct Hooks {
    std::function<void(const std::string& path)> imported; // from that file
    std::function<void(const std::string& text)> note;     // a line to show, until something else happens
  };

  // What they refer to must outlive this object.
  PluginImport(const Desktop& desktop, const ErrMsg& messages, EditBuffers& buffers, const SystemInfo& settings,
               RememberedNames& names, ImportPort& port, Hooks hooks, PluginLimits limits = {});

  // One import. 0: points were imported, the title has to follow; -1: not, and the waveform is as it was. The former
  // waveform is no undo step.
  [[nodiscard]] std::int32_t Import_Plugin(FileDialogs& dialog);

  // Ends an import under way as the user's cancel does.
  void Cancel() { plugins_.Cancel(); }

private:
  // The dialog's filter: two texts a plug-in.
  [[nodiscard]] std::string Filter(std::int32_t found) const;
  [[nodiscard]] std::string NameOf(std::int32_t k) const;
  // Of a chosen file.
  [[nodiscard]] bool ImportFile(std::int32_t k, const std::string& path);
  // Fetches all blocks into the staging array.
  [[nodiscard]] PluginFault ReadBlocks(std::int32_t k, std::int32_t session, std::int32_t points,
                                       std::span<std::int16_t> staged);
  // Where the point goes, thinned when the file has more points than the memory; none: it is left out.
  class Placing;
  // Message 241 with the reason; nothing after a cancel.
  void ReportFailure(const PluginFault& fault) const;
  [[nodiscard]] std::string Note(std::int32_t points) const;
  [[nodiscard]] ImportPort::Running Running();

  const Desktop& desktop_;
  const ErrMsg& messages_;
  EditBuffers& buffers_;
  const SystemInfo& settings_;
  RememberedNames& names_;
  ImportPort& port_;
  Hooks hooks_;
  PluginSp plugins_;
  std::optional<double> fraction_; // of the blocks; none: the plug-in is still at the beginning
};

} // namespace calder

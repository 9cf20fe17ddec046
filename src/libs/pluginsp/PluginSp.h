// The plug-in library: finds the import plug-ins of an application, names them, and reads a file through one of them in
// blocks. Plug-ins run in a helper process; whatever they do there, the calls here come back.
//
// Calls come from one thread and in this order: OpenPlugin; names and types; BeginPlugin, SeekPlugin, ExecutePlugin,
// EndPlugin for one file after the other; ClosePlugin. Waiting is done on the worker, so the window stays alive.
// Results are 0 for success or one of the negative statuses; then Fault() says what was wrong.
#pragma once

#include "libs/pluginsp/PluginCatalog.h"
#include "libs/pluginsp/PluginForm.h"
#include "libs/pluginsp/PluginProcess.h"
#include "platform/Worker.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace calder {

inline constexpr std::int16_t PLUGIN_SUCCESS = 0;
inline constexpr std::int16_t PLUGIN_FAILED = -1;
inline constexpr std::int16_t PLUGIN_BAD_INDEX = -2;
inline constexpr std::int16_t PLUGIN_NO_SESSION = -3;
inline constexpr std::int16_t PLUGIN_CANCELLED = -4; // by the user, in the settings or by Cancel()

inline constexpr std::int32_t PLUGIN_BLOCK_POINTS = CALDER_PLUGIN_BLOCK;
inline constexpr std::size_t PLUGIN_NAME_BYTES = 64;
inline constexpr std::size_t PLUGIN_TYPE_BYTES = 4;

struct ImportRecord {
  std::string path;
  std::int32_t points = 0; // set by the plug-in, never negative
  std::array<std::int16_t, 2> unused{};
  std::int32_t startOffset = 0; // in bytes, set by the plug-in, within the file
};

struct PluginLimits {
  std::chrono::milliseconds identify{2000}; // for a plug-in to say what it is
  std::chrono::milliseconds call{30000};    // without a sign of life
};

class PluginSp {
public:
  // Lets the user look at the settings. `change` sets one and renews the form, which it may change altogether; false:
  // the plug-in failed, and the file is not read. The result: whether the file is to be read; with false the user
  // cancelled.
  using ChangeOption = std::function<bool(const std::string& key, double value, PluginForm& form)>;
  using AskOptions = std::function<bool(PluginForm& form, const ChangeOption& change)>;

  // helper: the program that runs plug-ins. language: of the plug-in's texts, "en" or "ja".
  PluginSp(std::string helper, std::string language, Worker& worker, PluginLimits limits = {});

  // Lists the plug-ins. pattern: "*" and the ending of their names. found: how many there are, at most `most`; 0 is a
  // success.
  [[nodiscard]] std::int16_t OpenPlugin(const std::vector<std::string>& folders, const std::string& pattern,
                                        const std::string& application, std::int32_t most, std::int32_t& found);
  // k: from 0. The buffer is filled up with NULs.
  std::int16_t GetPluginName(std::int32_t k, std::span<char, PLUGIN_NAME_BYTES> name, std::int32_t& length) const;
  std::int16_t GetPluginType(std::int32_t k, std::int32_t& type, std::span<char, PLUGIN_TYPE_BYTES> extension) const;

  // Opens the file that the record names, asks for its settings if there is anything to set, and fills the rest of the
  // record. After a failure nothing is open.
  [[nodiscard]] std::int16_t BeginPlugin(std::int32_t k, std::int32_t& session, ImportRecord& record,
                                         const AskOptions& ask = {});
  [[nodiscard]] std::int16_t SeekPlugin(std::int32_t k, std::int32_t session, std::int32_t startOffset);
  // count: on entry the room of the block, at most PLUGIN_BLOCK_POINTS; then how many points were delivered. The last
  // argument means nothing.
  [[nodiscard]] std::int16_t ExecutePlugin(std::int32_t k, std::int32_t session, std::int16_t* block,
                                           std::int32_t& count, std::int32_t unused);
  std::int16_t EndPlugin(std::int32_t k, std::int32_t session);
  // Ends what is still open and forgets the list.
  std::int16_t ClosePlugin();

  // Of the last call that failed.
  [[nodiscard]] const PluginFault& Fault() const { return fault_; }
  // What the plug-in had to say of the points; there after EndPlugin.
  [[nodiscard]] const std::string& Report() const { return report_; }
  // How far the plug-in is with the call that is waited for, 0 to 1.
  [[nodiscard]] double Progress() const { return process_ == nullptr ? 0 : process_->Progress(); }
  // Ends the call that is waited for, from within an event of that time or from any thread; the import it belongs to is
  // over.
  void Cancel() { cancelled_ = true; }

private:
  [[nodiscard]] bool Has(std::int32_t k) const { return k >= 0 && static_cast<std::size_t>(k) < plugins_.size(); }
  [[nodiscard]] bool IsOpen(std::int32_t k, std::int32_t session) const {
    return process_ != nullptr && k == plugin_ && session == session_;
  }
  // Puts texts and numbers into the packet's room.
  using Fill = std::function<void(PluginWriter& writer)>;
  [[nodiscard]] bool Call(PluginCall call, PluginPacket& answer, std::int32_t number = 0, const Fill& fill = {});
  [[nodiscard]] bool CallForForm(PluginCall call, PluginForm& form, const Fill& fill = {});
  [[nodiscard]] bool Begin(ImportRecord& record, const AskOptions& ask);
  // Keeps what is wrong; the session is over.
  bool Fail(PluginFault fault);
  [[nodiscard]] std::int16_t NoSession();
  [[nodiscard]] std::int16_t Status() const {
    return fault_.kind == PluginFault::Kind::Cancelled ? PLUGIN_CANCELLED : PLUGIN_FAILED;
  }

  const std::string helper_;
  const std::string language_;
  Worker& worker_;
  const PluginLimits limits_;
  PluginCatalog catalog_;
  std::vector<PluginFile> plugins_;

  std::unique_ptr<PluginProcess> process_; // of the open session
  std::int32_t plugin_ = 0;
  std::int32_t session_ = 0;
  std::span<const std::int16_t> batch_; // delivered by the helper, not yet handed on
  std::atomic<bool> cancelled_ = false;
  PluginFault fault_;
  std::string report_;
};

} // namespace calder

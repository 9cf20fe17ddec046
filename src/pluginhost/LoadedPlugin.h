// One plug-in, loaded into this process, and the file that it has open.
//
// The plug-in is not trusted to keep its promises, only to keep out of this object's memory: every call's results are
// checked, and what is wrong comes back as a fault.
#pragma once

#include "calder_plugin.h"
#include "libs/pluginsp/PluginWire.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

namespace calder {

class LoadedPlugin {
public:
  // progress: called for every sign of life with how far the present call is, 0 to 1.
  explicit LoadedPlugin(std::function<void(double fraction)> progress);
  LoadedPlugin(const LoadedPlugin&) = delete;
  LoadedPlugin& operator=(const LoadedPlugin&) = delete;
  // Closes the file. The shared object stays loaded until the process ends.
  ~LoadedPlugin() { Close(); }

  [[nodiscard]] PluginFault Load(const std::string& path);
  // REQUIRES: Load succeeded.
  [[nodiscard]] const calder_plugin& Table() const { return table_; }

  [[nodiscard]] PluginFault Open(const std::string& path, const std::string& language);
  [[nodiscard]] PluginFault Options(PluginWriter& writer);
  [[nodiscard]] PluginFault Set(const std::string& key, double value);
  [[nodiscard]] PluginFault Start(std::int32_t& points, std::int32_t& startOffset);
  [[nodiscard]] PluginFault Seek(std::int32_t startOffset);
  // The next blocks: as many as there is room for and as a moment gives, but one at least. After the last point the
  // plug-in is asked once more, and has to have none.
  // delivered: 0 only after the end. room holds whole blocks.
  [[nodiscard]] PluginFault Read(std::span<std::int16_t> room, std::int32_t& delivered);
  // Null: none.
  [[nodiscard]] const char* Report();
  void Close();

private:
  static void OnReason(const calder_host* host, const char* text);
  static void OnProgress(const calder_host* host, double fraction);
  [[nodiscard]] PluginFault Refusal();
  [[nodiscard]] PluginFault ReadBlock(std::span<std::int16_t> room, std::int32_t expected);

  // What the plug-in gets; the first member is what it sees of it.
  struct Host {
    calder_host seen{};
    LoadedPlugin* owner = nullptr;
  };
  Host host_;
  std::string language_ = "en";
  std::string reason_;
  std::function<void(double)> progress_;
  calder_plugin table_{}; // as much of the plug-in's as both know
  std::string path_;      // of the open file
  void* session_ = nullptr;
  std::int32_t points_ = 0;
  std::int32_t read_ = 0;
};

} // namespace calder

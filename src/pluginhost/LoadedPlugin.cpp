#include "pluginhost/LoadedPlugin.h"

#include <dlfcn.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <utility>

namespace calder {
namespace {

using Kind = PluginFault::Kind;
using Entry = const calder_plugin* (*)(const calder_host*);

constexpr std::chrono::milliseconds kMoment{20}; // after it a batch is handed over as it is
constexpr std::int32_t kBlock = CALDER_PLUGIN_BLOCK;

} // namespace

LoadedPlugin::LoadedPlugin(std::function<void(double)> progress) : progress_(std::move(progress)) {
  host_.seen = {sizeof(calder_host), CALDER_PLUGIN_VERSION, language_.c_str(), OnReason, OnProgress};
  host_.owner = this;
}

void LoadedPlugin::OnReason(const calder_host* host, const char* text) {
  std::string& reason = reinterpret_cast<const Host*>(host)->owner->reason_;
  reason.assign(text == nullptr ? "" : text, text == nullptr ? 0 : ::strnlen(text, kMostReasonBytes + 1));
  reason = CutText(reason, kMostReasonBytes);
}

void LoadedPlugin::OnProgress(const calder_host* host, double fraction) {
  reinterpret_cast<const Host*>(host)->owner->progress_(fraction);
}

PluginFault LoadedPlugin::Load(const std::string& path) {
  void* library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return {Kind::NotLoaded, 0, 0, ::dlerror()};
  const auto entry = reinterpret_cast<Entry>(::dlsym(library, "calder_plugin_entry"));
  if (entry == nullptr) return {Kind::NotLoaded, 0, 0, "calder_plugin_entry is missing"};
  const calder_plugin* table = entry(&host_.seen);
  if (table == nullptr) return {Kind::NotLoaded, 0, 0, reason_};
  if (table->size < sizeof table_ || table->version != CALDER_PLUGIN_VERSION)
    return {Kind::NotLoaded, 0, 0,
            "version " + std::to_string(table->version) + ", the editor has " + std::to_string(CALDER_PLUGIN_VERSION)};
  table_ = *table;
  if (table_.open == nullptr || table_.start == nullptr || table_.seek == nullptr || table_.read == nullptr ||
      table_.close == nullptr || (table_.options != nullptr && table_.set == nullptr))
    return {Kind::NotLoaded, 0, 0, "the table lacks a call"};
  return {};
}

PluginFault LoadedPlugin::Refusal() {
  return {Kind::Refused, 0, 0, std::exchange(reason_, {})};
}

PluginFault LoadedPlugin::Open(const std::string& path, const std::string& language) {
  Close();
  path_ = path;
  language_ = language;
  host_.seen.language = language_.c_str();
  const std::int32_t result = table_.open(&host_.seen, path.c_str(), &session_);
  if (result == CALDER_PLUGIN_OK) return {};
  Close();
  return Refusal();
}

PluginFault LoadedPlugin::Options(PluginWriter& writer) {
  calder_form form{};
  form.size = sizeof form;
  if (table_.options != nullptr && table_.options(session_, &form) != CALDER_PLUGIN_OK) return Refusal();
  return WriteForm(form, writer) ? PluginFault() : PluginFault{Kind::Garbled};
}

PluginFault LoadedPlugin::Set(const std::string& key, double value) {
  if (table_.set == nullptr || table_.set(session_, key.c_str(), value) != CALDER_PLUGIN_OK) return Refusal();
  return {};
}

PluginFault LoadedPlugin::Start(std::int32_t& points, std::int32_t& startOffset) {
  calder_import import{};
  import.size = sizeof import;
  if (table_.start(session_, &import) != CALDER_PLUGIN_OK) return Refusal();
  if (import.points < 0) return {Kind::NegativeCount, import.points};
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path_, error);
  if (import.start_offset > 0 && (error || static_cast<std::uintmax_t>(import.start_offset) > size))
    return {Kind::OffsetPastEnd, import.start_offset};
  points = points_ = import.points;
  startOffset = import.start_offset;
  read_ = 0;
  return {};
}

PluginFault LoadedPlugin::Seek(std::int32_t startOffset) {
  return table_.seek(session_, startOffset) == CALDER_PLUGIN_OK ? PluginFault() : Refusal();
}

PluginFault LoadedPlugin::ReadBlock(std::span<std::int16_t> room, std::int32_t expected) {
  std::int32_t count = kBlock;
  if (table_.read(session_, room.data(), &count) != CALDER_PLUGIN_OK) return Refusal();
  progress_(0);
  if (count == expected) return {};
  return {expected == 0 ? Kind::MorePoints : Kind::WrongCount, count, expected};
}

PluginFault LoadedPlugin::Read(std::span<std::int16_t> room, std::int32_t& delivered) {
  const auto end = std::chrono::steady_clock::now() + kMoment;
  delivered = 0;
  while (read_ < points_ && room.size() - static_cast<std::size_t>(delivered) >= static_cast<std::size_t>(kBlock)) {
    const std::int32_t expected = std::min(kBlock, points_ - read_);
    PluginFault fault = ReadBlock(room.subspan(static_cast<std::size_t>(delivered)), expected);
    if (fault.kind != Kind::None) return fault;
    delivered += expected;
    read_ += expected;
    if (std::chrono::steady_clock::now() > end) break;
  }
  if (read_ < points_ || delivered == 0) return {};
  std::array<std::int16_t, static_cast<std::size_t>(kBlock)> none{};
  return ReadBlock(none, 0);
}

const char* LoadedPlugin::Report() {
  return table_.report == nullptr ? nullptr : table_.report(session_);
}

void LoadedPlugin::Close() {
  if (session_ != nullptr) table_.close(std::exchange(session_, nullptr));
  points_ = read_ = 0;
}

} // namespace calder

#include "files/PluginImport.h"

#include "app/EditBuffers.h"
#include "app/Messages.h"
#include "app/RememberedNames.h"
#include "files/PluginFaultText.h"
#include "platform/Desktop.h"
#include "platform/FileDialogs.h"

#include <algorithm>

namespace calder {
namespace {

constexpr const char* kApplicationName = "4410";
constexpr const char* kPluginHelper = "calder-plugin-host";
constexpr const char* kPluginPattern = "*.so";
constexpr std::int32_t kMostPlugins = 256;
constexpr std::int32_t kStagingPoints = W_MAX_POINTS + 1;

// A buffer of the waveform library for the time of an import, all 0.
class Staging {
public:
  Staging() : handle_(W_AllocMemory(kStagingPoints)) {}
  ~Staging() { W_FreeMemory(handle_); }
  Staging(const Staging&) = delete;
  Staging& operator=(const Staging&) = delete;
  [[nodiscard]] WaveHandle Handle() const { return handle_; }

private:
  WaveHandle handle_;
};

} // namespace

// Where the points of the file go, one after the other.
class PluginImport::Placing {
public:
  Placing(std::int32_t points, std::int32_t memorySize)
      : thins_(points > memorySize), ratio_(static_cast<double>(memorySize) / std::max(points, 1)),
        memorySize_(memorySize) {}
  // None: the point is left out.
  [[nodiscard]] std::optional<std::size_t> Next() {
    const std::int64_t index = index_++;
    if (!thins_) return static_cast<std::size_t>(index);
    if (placed_ >= memorySize_ || static_cast<std::int64_t>(static_cast<double>(index) * ratio_) != placed_)
      return std::nullopt;
    return static_cast<std::size_t>(placed_++);
  }

private:
  bool thins_;
  double ratio_;
  std::int64_t memorySize_;
  std::int64_t index_ = 0;
  std::int64_t placed_ = 0;
};

PluginImport::PluginImport(const Desktop& desktop, const ErrMsg& messages, EditBuffers& buffers,
                           const SystemInfo& settings, RememberedNames& names, ImportPort& port, Hooks hooks,
                           PluginLimits limits)
    : desktop_(desktop), messages_(messages), buffers_(buffers), settings_(settings), names_(names), port_(port),
      hooks_(std::move(hooks)),
      plugins_(FindProgramFile(desktop.folders.modules, kPluginHelper),
               messages.GetLanguage() == Language::English ? "en" : "ja", desktop.worker, limits) {}

std::int32_t PluginImport::Import_Plugin(FileDialogs& dialog) {
  std::int32_t found = 0;
  const std::int16_t opened =
      plugins_.OpenPlugin(desktop_.folders.plugins, kPluginPattern, kApplicationName, kMostPlugins, found);
  if (opened != PLUGIN_SUCCESS) return -1;
  bool imported = false;
  if (found == 0) {
    messages_.ErrorBox(kMsgNoPlugin);
  } else if (const auto answer = dialog.Open({messages_.Pick("インポート", "IMPORT"), Filter(found), 0, "", ""})) {
    imported = ImportFile(answer->filterIndex - 1, answer->path);
  }
  plugins_.ClosePlugin();
  return imported ? 0 : -1;
}

std::string PluginImport::NameOf(std::int32_t k) const {
  std::array<char, PLUGIN_NAME_BYTES> name{};
  std::int32_t length = 0;
  plugins_.GetPluginName(k, name, length);
  return {name.data(), static_cast<std::size_t>(length)};
}

std::string PluginImport::Filter(std::int32_t found) const {
  std::string filter;
  for (std::int32_t k = 0; k < found; ++k) {
    std::array<char, PLUGIN_TYPE_BYTES> extension{};
    std::int32_t type = 0;
    plugins_.GetPluginType(k, type, extension);
    filter += NameOf(k) + " |*." + std::string(extension.data(), extension.size() - 1) + "|";
  }
  return filter;
}

ImportPort::Running PluginImport::Running() {
  return {[this] { return fraction_.value_or(plugins_.Progress()); }, [this] { plugins_.Cancel(); }};
}

bool PluginImport::ImportFile(std::int32_t k, const std::string& path) {
  const Staging staging;
  const std::span<std::int16_t> staged = W_Lock(staging.Handle());
  if (staged.empty()) {
    messages_.ErrorBox(kMsgNoMemory);
    return false;
  }
  ImportRecord record;
  record.path = path;
  std::int32_t session = 0;
  fraction_.reset();
  const auto ask = [&](PluginForm& form, const PluginSp::ChangeOption& change) {
    port_.Finished();
    const bool goesOn = port_.AskOptions(NameOf(k), form, change, [this] { plugins_.Cancel(); });
    port_.Begin(Running());
    return goesOn;
  };
  port_.Begin(Running());
  PluginFault fault;
  if (plugins_.BeginPlugin(k, session, record, ask) != PLUGIN_SUCCESS) {
    fault = plugins_.Fault();
  } else {
    if (record.startOffset > 0) static_cast<void>(plugins_.SeekPlugin(k, session, record.startOffset));
    fault = ReadBlocks(k, session, record.points, staged);
    if (fault.kind == PluginFault::Kind::None) plugins_.EndPlugin(k, session);
  }
  port_.Finished();
  if (fault.kind != PluginFault::Kind::None) {
    ReportFailure(fault);
    return false;
  }
  W_CopyMemory(staging.Handle(), buffers_.Current(), 0, 0, std::min(record.points, W_MAX_POINTS));
  names_.CurrentWaveFile = kUntitled;
  if (hooks_.imported) hooks_.imported(path);
  if (hooks_.note) hooks_.note(Note(record.points));
  if (!plugins_.Report().empty()) port_.ShowReport(plugins_.Report());
  return true;
}

PluginFault PluginImport::ReadBlocks(std::int32_t k, std::int32_t session, std::int32_t points,
                                     std::span<std::int16_t> staged) {
  Placing placing(points, settings_.MemorySize);
  std::array<std::int16_t, static_cast<std::size_t>(PLUGIN_BLOCK_POINTS)> block{};
  for (std::int32_t left = points; left > 0;) {
    const std::int32_t expected = std::min(left, PLUGIN_BLOCK_POINTS);
    std::int32_t count = PLUGIN_BLOCK_POINTS;
    if (plugins_.ExecutePlugin(k, session, block.data(), count, 0) != PLUGIN_SUCCESS) return plugins_.Fault();
    if (count != expected) return {PluginFault::Kind::WrongCount, count, expected};
    for (const std::int16_t code : std::span(block).first(static_cast<std::size_t>(count)))
      if (const auto place = placing.Next()) staged[*place] = code;
    left -= count;
    fraction_ = 1 - static_cast<double>(left) / points;
    port_.KeepAlive();
  }
  return {};
}

// A cancel says nothing.
void PluginImport::ReportFailure(const PluginFault& fault) const {
  if (fault.kind == PluginFault::Kind::Cancelled) return;
  messages_.ErrorBoxText(messages_.MessageText(kMsgBadFormat) + PluginFaultText(fault, messages_.GetLanguage()));
}

std::string PluginImport::Note(std::int32_t points) const {
  const std::string all = std::to_string(points);
  const std::string kept = std::to_string(std::min(points, settings_.MemorySize));
  const bool thinned = points > settings_.MemorySize;
  if (messages_.GetLanguage() == Language::English)
    return "Imported " + (thinned ? kept + " of " + all : all) +
           " points; Undo does not bring the former waveform back";
  return (thinned ? all + " 点のうち " + kept : all) + " 点をインポートしました。元に戻すでは以前の波形は戻りません";
}

} // namespace calder

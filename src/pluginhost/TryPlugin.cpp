#include "pluginhost/LoadedPlugin.h"
#include "pluginhost/Serve.h"

#include "platform/WholeText.h"

#include <algorithm>
#include <cstdio>

namespace calder {
namespace {

using Kind = PluginFault::Kind;

// False, with the fault printed, when there is one.
bool Worked(const char* call, const PluginFault& fault) {
  if (fault.kind == Kind::None) return true;
  std::fprintf(stderr, "%s: fault %u (%d, %d) %s\n", call, static_cast<unsigned>(fault.kind), fault.number,
               fault.expected, fault.text.c_str());
  return false;
}

bool PrintForm(LoadedPlugin& plugin) {
  std::vector<char> room(sizeof(PluginArea::text));
  PluginWriter writer(room);
  if (!Worked("options", plugin.Options(writer))) return false;
  const auto form = ReadForm({room.data(), writer.Length()});
  if (!form) return Worked("options", {Kind::Garbled});
  for (const PluginOption& option : form->options) {
    std::printf("  %s=%.0f  %s", option.key.c_str(), option.value, option.caption.c_str());
    if (option.kind == PluginOption::Kind::Choice)
      std::printf(": %s", option.choices[static_cast<std::size_t>(option.value)].c_str());
    std::printf("  (%.0f to %.0f)\n", option.minimum, option.maximum);
  }
  if (!form->preview.empty()) std::printf("%s\n", form->preview.c_str());
  return true;
}

bool ApplySettings(LoadedPlugin& plugin, const std::vector<std::string>& settings) {
  for (const std::string& setting : settings) {
    const std::size_t equals = std::min(setting.find('='), setting.size());
    const auto value = ToNumber<double>(std::string_view(setting).substr(std::min(equals + 1, setting.size())));
    if (!value) {
      std::fprintf(stderr, "%s is not KEY=NUMBER\n", setting.c_str());
      return false;
    }
    if (!Worked("set", plugin.Set(setting.substr(0, equals), *value))) return false;
  }
  return true;
}

bool ReadPoints(LoadedPlugin& plugin, std::int32_t points) {
  std::vector<std::int16_t> codes(static_cast<std::size_t>(kBatchPoints));
  std::int16_t lowest = INT16_MAX;
  std::int16_t highest = INT16_MIN;
  for (std::int32_t read = 0; read < points;) {
    std::int32_t delivered = 0;
    if (!Worked("read", plugin.Read(codes, delivered))) return false;
    if (read == 0) {
      std::printf("first codes:");
      for (std::int32_t i = 0; i < std::min(delivered, 8); ++i) std::printf(" %d", codes[static_cast<std::size_t>(i)]);
      std::printf("\n");
    }
    const auto [low, high] = std::minmax_element(codes.begin(), codes.begin() + delivered);
    lowest = std::min(lowest, *low);
    highest = std::max(highest, *high);
    read += delivered;
  }
  if (points > 0) std::printf("codes from %d to %d\n", lowest, highest);
  return true;
}

} // namespace

int TryPlugin(const TryRequest& request) {
  LoadedPlugin plugin([](double) {});
  if (!Worked("calder_plugin_entry", plugin.Load(request.plugin))) return 1;
  const calder_plugin& table = plugin.Table();
  std::printf("%s (*.%s) for %s\n", table.name, table.extension, table.applications);
  if (request.file.empty()) return 0;
  if (!Worked("open", plugin.Open(request.file, request.language)) || !ApplySettings(plugin, request.settings) ||
      !PrintForm(plugin))
    return 1;
  std::int32_t points = 0;
  std::int32_t startOffset = 0;
  if (!Worked("start", plugin.Start(points, startOffset))) return 1;
  std::printf("%d points from byte %d\n", points, startOffset);
  if (startOffset > 0 && !Worked("seek", plugin.Seek(startOffset))) return 1;
  if (!ReadPoints(plugin, points)) return 1;
  if (const char* report = plugin.Report(); report != nullptr) std::printf("%s", report);
  return 0;
}

} // namespace calder

#include "comm/CommandTemplate.h"

#include "libs/sysinf32/CommandColumns.h"
#include "libs/sysinf32/SystemInfo.h"

#include <algorithm>

namespace calder {

std::string FillTemplate(std::string_view text, TemplateValues values) {
  std::string result;
  while (true) {
    const std::size_t open = text.find('$');
    const std::size_t close = open == std::string_view::npos ? open : text.find('$', open + 1);
    if (close == std::string_view::npos) return result += text;
    const std::string_view name = text.substr(open + 1, close - open - 1);
    const auto* value =
        std::find_if(values.begin(), values.end(), [&](const auto& item) { return item.first == name; });
    result += text.substr(0, open);
    if (value != values.end()) {
      result += value->second;
      text.remove_prefix(close + 1);
    } else {
      result += text.substr(open, close - open);
      text.remove_prefix(close); // it may open the next one
    }
  }
}

std::string FillTemplate(std::string_view text, const SystemInfo& settings, int numberOffset) {
  return FillTemplate(text, {{"CH", std::to_string(settings.Channel + 1)},
                             {"NUMBER", std::to_string(settings.MemoryNo + numberOffset)},
                             {"NAME", std::string(TrimCommandText(settings.MemoryName))}});
}

} // namespace calder

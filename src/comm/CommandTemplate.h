// Command texts with placeholders between two "$".
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace calder {

struct SystemInfo;

using TemplateValues = std::initializer_list<std::pair<std::string_view, std::string>>;

// Replaces the named placeholders, from left to right, each once: what a placeholder stands for is not searched again,
// so a memory's name may hold anything. A text between two "$" that is no placeholder stays.
[[nodiscard]] std::string FillTemplate(std::string_view text, TemplateValues values);

// With $CH$, $NUMBER$ (numberOffset added) and $NAME$ of the settings.
[[nodiscard]] std::string FillTemplate(std::string_view text, const SystemInfo& settings, int numberOffset = 0);

} // namespace calder

// The columns of a command definition's value text.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace calder {

// Splits at commas; a field that starts (after blanks) with a double or single quote runs to its closing quote and may
// contain commas. Every column loses blanks and control characters at both ends, then one leading and one trailing
// quote character. An empty value gives one empty column.
[[nodiscard]] std::vector<std::string> SplitCommandColumns(std::string_view value);

// Whether every text between a $ and the next one is one of these names; a last single $ is a character.
[[nodiscard]] bool HasOnlyPlaceholders(std::string_view text, std::initializer_list<std::string_view> names);

// Without blanks and control characters at both ends.
[[nodiscard]] std::string_view TrimCommandText(std::string_view text);

} // namespace calder

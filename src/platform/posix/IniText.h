// The text of an INI file: sections in brackets, one key = "value" a line. Sections and keys keep their order.
//
// Values stand between quotes, with \n, \r, \" and \\ for what would break the line; a value written by hand without
// quotes is taken as it stands, without the blanks around it. Lines that begin with ; or #, and lines that mean
// nothing, are dropped when the text is written again. Names hold no line breaks, "]" or "=".
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace calder {

class IniText {
public:
  using Entries = std::vector<std::pair<std::string, std::string>>;

  void Parse(std::string_view text);
  [[nodiscard]] std::string Write() const;

  // Null when there is none; valid until the next Set.
  [[nodiscard]] const std::string* Find(std::string_view section, std::string_view key) const;
  [[nodiscard]] const Entries* FindSection(std::string_view section) const;
  void Set(std::string_view section, std::string_view key, std::string value);

private:
  Entries& Section(std::string_view name);

  std::vector<std::pair<std::string, Entries>> sections_;
};

} // namespace calder

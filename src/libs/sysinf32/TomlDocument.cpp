#include "libs/sysinf32/TomlDocument.h"

#include "libs/sysinf32/sysinf32.h"

#define TOML_EXCEPTIONS 0
#define TOML_ENABLE_FORMATTERS 0
#define TOML_MAX_NESTED_VALUES 8
#include <toml++/toml.h>

#include <algorithm>
#include <tuple>

namespace calder {

namespace {

struct Placed {
  toml::source_position at;
  TomlNode node;
};

TomlNode Convert(const toml::node& source);

void ConvertTable(const toml::table& table, TomlNode& node) {
  std::vector<Placed> placed;
  placed.reserve(table.size());
  for (const auto& [key, value] : table) {
    Placed& child = placed.emplace_back(Placed{key.source().begin, Convert(value)});
    child.node.key = std::string(key.str());
    // A table that exists only through a longer header or a dotted key has no place of its own.
    if (child.node.line == 0) child.node.line = static_cast<std::int32_t>(child.at.line);
  }
  std::stable_sort(placed.begin(), placed.end(), [](const Placed& a, const Placed& b) {
    return std::tie(a.at.line, a.at.column) < std::tie(b.at.line, b.at.column);
  });
  node.children.reserve(placed.size());
  for (Placed& child : placed) node.children.push_back(std::move(child.node));
}

TomlNode Convert(const toml::node& source) {
  TomlNode node;
  node.line = static_cast<std::int32_t>(source.source().begin.line);
  if (const toml::table* table = source.as_table()) {
    node.kind = TomlNode::Kind::Table;
    ConvertTable(*table, node);
  } else if (const toml::array* array = source.as_array()) {
    node.kind = TomlNode::Kind::Array;
    node.children.reserve(array->size());
    for (const toml::node& item : *array) node.children.push_back(Convert(item));
    if (node.line == 0 && !node.children.empty()) node.line = node.children.front().line;
  } else if (const auto* text = source.as_string()) {
    node.kind = TomlNode::Kind::Text;
    node.text = text->get();
  } else if (const auto* integer = source.as_integer()) {
    node.kind = TomlNode::Kind::Integer;
    node.integer = integer->get();
  } else if (const auto* real = source.as_floating_point()) {
    node.kind = TomlNode::Kind::Real;
    node.real = real->get();
  } else if (const auto* boolean = source.as_boolean()) {
    node.kind = TomlNode::Kind::Boolean;
    node.boolean = boolean->get();
  } else {
    node.kind = TomlNode::Kind::Other;
  }
  return node;
}

// The 1-based number of the first line that is too long; 0 when there is none.
std::int32_t TooLongLine(std::string_view text) {
  std::int32_t line = 1;
  for (std::size_t begin = 0; begin < text.size(); ++line) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    if (end - begin > kTomlMaxLine) return line;
    begin = end + 1;
  }
  return 0;
}

} // namespace

const TomlNode* TomlNode::Find(std::string_view name) const {
  const auto found =
      std::find_if(children.begin(), children.end(), [&](const TomlNode& child) { return child.key == name; });
  return found == children.end() ? nullptr : &*found;
}

void ParseToml(std::string_view text, TomlNode& root, FaultSink& faults) {
  root = TomlNode();
  root.kind = TomlNode::Kind::Table;
  if (text.size() > kTomlMaxBytes) {
    faults.Tell(SYS_BAD_VALUE, 0, "The file is larger than " + std::to_string(kTomlMaxBytes) + " bytes.");
    return;
  }
  if (const std::int32_t line = TooLongLine(text); line != 0) {
    faults.Tell(SYS_SYNTAX_ERROR, line, "The line is longer than " + std::to_string(kTomlMaxLine) + " characters.");
    return;
  }
  const toml::parse_result result = toml::parse(text);
  if (!result) {
    const toml::parse_error& error = result.error();
    faults.Tell(SYS_SYNTAX_ERROR, static_cast<std::int32_t>(error.source().begin.line),
                std::string(error.description()) + ".");
    return;
  }
  ConvertTable(result.table(), root);
}

} // namespace calder

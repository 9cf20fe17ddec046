#include "libs/sysinf32/TableReader.h"

#include "libs/sysinf32/sysinf32.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace calder {

namespace {

std::string Join(std::initializer_list<std::string_view> pieces) {
  std::string text;
  for (const std::string_view piece : pieces) text += piece;
  return text;
}

std::string Quoted(std::string_view text) {
  return Join({"\"", text, "\""});
}

// Reports "<what the value is called> must <rule>."
void Must(const TomlNode& node, std::initializer_list<std::string_view> rule, FaultSink& faults) {
  const std::string name = node.key.empty() ? "The list item" : Quoted(node.key);
  faults.Report(SYS_BAD_VALUE, node.line, Join({name, " must ", Join(rule), "."}));
}

std::size_t EditDistance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, replaced});
    }
  }
  return row[b.size()];
}

std::string NearestHint(std::string_view word, std::span<const std::string_view> known) {
  constexpr std::size_t kNear = 2;
  std::string_view best;
  std::size_t least = kNear + 1;
  for (const std::string_view candidate : known) {
    const std::size_t distance = EditDistance(word.substr(0, 64), candidate);
    if (distance < least) {
      least = distance;
      best = candidate;
    }
  }
  return best.empty() ? std::string() : Join({" Did you mean ", Quoted(best), "?"});
}

} // namespace

bool IsPrintableAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

TableReader::TableReader(const TomlNode& table, std::span<const std::string_view> keys, FaultSink& faults)
    : table_(table), faults_(faults) {
  if (table.kind != TomlNode::Kind::Table) {
    Must(table, {"be a table"}, faults);
    return;
  }
  for (const TomlNode& child : table.children) {
    if (std::find(keys.begin(), keys.end(), child.key) != keys.end()) continue;
    faults.Report(SYS_BAD_VALUE, child.line,
                  Join({"The key ", Quoted(child.key), " is unknown.", NearestHint(child.key, keys)}));
  }
}

const TomlNode& TableReader::Require(std::string_view key) const {
  static const TomlNode none;
  if (const TomlNode* node = table_.Find(key)) return *node;
  faults_.Report(SYS_BAD_VALUE, table_.line,
                 Join({"The key ", Quoted(key), " is missing",
                       table_.key.empty() ? std::string() : " in " + Quoted(table_.key), "."}));
  return none;
}

std::string ReadName(const TomlNode& node, std::size_t most, FaultSink& faults) {
  if (node.kind != TomlNode::Kind::Text) {
    Must(node, {"be a text"}, faults);
  } else if (node.text.empty() || node.text.size() > most) {
    Must(node, {"have 1 to ", std::to_string(most), " characters"}, faults);
  } else if (!IsPrintableAscii(node.text) || node.text.front() == ' ' || node.text.back() == ' ') {
    Must(node, {"be printable ASCII without blanks at its ends"}, faults);
  } else {
    return node.text;
  }
  return std::string();
}

std::string ReadText(const TomlNode& node, std::size_t most, FaultSink& faults) {
  if (node.kind != TomlNode::Kind::Text) {
    Must(node, {"be a text"}, faults);
  } else if (node.text.empty() || node.text.size() > most) {
    Must(node, {"have 1 to ", std::to_string(most), " bytes"}, faults);
  } else {
    return node.text;
  }
  return std::string();
}

std::int32_t ReadInteger(const TomlNode& node, std::int32_t min, std::int32_t max, FaultSink& faults) {
  if (node.kind != TomlNode::Kind::Integer) {
    Must(node, {"be an integer"}, faults);
  } else if (node.integer < min || node.integer > max) {
    Must(node, {"lie in ", std::to_string(min), " to ", std::to_string(max)}, faults);
  } else {
    return static_cast<std::int32_t>(node.integer);
  }
  return min;
}

double ReadNumber(const TomlNode& node, FaultSink& faults) {
  if (node.kind == TomlNode::Kind::Integer) return static_cast<double>(node.integer);
  if (node.kind == TomlNode::Kind::Real && std::isfinite(node.real)) return node.real;
  Must(node, {"be a finite number"}, faults);
  return 0;
}

bool ReadFlag(const TomlNode& node, FaultSink& faults) {
  if (node.kind != TomlNode::Kind::Boolean) Must(node, {"be true or false"}, faults);
  return node.boolean;
}

std::span<const TomlNode> ReadItems(const TomlNode& node, std::size_t most, FaultSink& faults) {
  if (node.kind != TomlNode::Kind::Array) {
    Must(node, {"be a list"}, faults);
  } else if (node.children.empty() || node.children.size() > most) {
    Must(node, {"have 1 to ", std::to_string(most), " items"}, faults);
  } else {
    return node.children;
  }
  return {};
}

std::span<const TomlNode> ReadTables(const TomlNode& node, std::size_t most, FaultSink& faults) {
  if (node.kind != TomlNode::Kind::Table) return ReadItems(node, most, faults);
  Must(node, {"be a list of tables, whose headers stand in double brackets: [[", node.key, "]]"}, faults);
  return {};
}

std::int16_t ReadChoice(const TomlNode& node, std::span<const std::string_view> choices, FaultSink& faults) {
  const auto found = std::find(choices.begin(), choices.end(), node.text);
  if (node.kind == TomlNode::Kind::Text && found != choices.end())
    return static_cast<std::int16_t>(found - choices.begin());
  std::string list;
  for (const std::string_view choice : choices) list += Join({list.empty() ? "" : ", ", Quoted(choice)});
  Must(node, {"be one of ", list}, faults);
  return 0;
}

} // namespace calder

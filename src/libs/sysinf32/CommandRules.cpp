#include "libs/sysinf32/CommandRules.h"

#include "libs/sysinf32/CommandColumns.h"
#include "libs/sysinf32/TableReader.h"
#include "libs/sysinf32/sysinf32.h"
#include "platform/WholeText.h"

#include <algorithm>
#include <optional>

namespace calder {

namespace {

constexpr std::size_t kMaxValue = 64;

// What the columns of a row are.
enum class RowKind {
  Identity, // command, start, length
  Model,    // command, start, length, expected text
  Command,  // command
  Template, // template, number format
  Bank,     // template, number format, offset
  Name,     // template, maximum length
  Mask,     // bit mask
  Flag      // true or nothing
};

struct RowRule {
  std::string_view key;
  RowKind kind;
  std::size_t leastColumns;
  std::size_t mostColumns;
};

constexpr std::array kRules = {
    RowRule{"maker", RowKind::Identity, 3, 3},   RowRule{"model", RowKind::Model, 4, 4},
    RowRule{"serial", RowKind::Identity, 3, 3},  RowRule{"version", RowKind::Identity, 3, 3},
    RowRule{"preset", RowKind::Command, 1, 1},   RowRule{"headoff", RowKind::Command, 1, 1},
    RowRule{"channel", RowKind::Template, 1, 2}, RowRule{"freq", RowKind::Template, 1, 2},
    RowRule{"amprng", RowKind::Template, 1, 2},  RowRule{"amp", RowKind::Template, 1, 2},
    RowRule{"offset", RowKind::Template, 1, 2},  RowRule{"ofson", RowKind::Command, 1, 1},
    RowRule{"ofsoff", RowKind::Command, 1, 1},   RowRule{"outon", RowKind::Template, 1, 2},
    RowRule{"outoff", RowKind::Template, 1, 2},  RowRule{"arbprecommand", RowKind::Template, 1, 2},
    RowRule{"arbmask", RowKind::Mask, 1, 1},     RowRule{"arbsend", RowKind::Template, 1, 2},
    RowRule{"arbbank", RowKind::Bank, 1, 3},     RowRule{"arbstt", RowKind::Template, 1, 2},
    RowRule{"arbbswap", RowKind::Flag, 1, 1},    RowRule{"arbfmt", RowKind::Command, 1, 1},
    RowRule{"arbsize", RowKind::Template, 1, 2}, RowRule{"arbname", RowKind::Name, 2, 2},
    RowRule{"getsts", RowKind::Command, 1, 1},   RowRule{"geterr", RowKind::Command, 1, 1},
    RowRule{"errmask", RowKind::Mask, 1, 1},     RowRule{"gpibcmd", RowKind::Command, 1, 1},
};
static_assert(kRules.size() <= CommandTable::kRows, "a table with every key must fit");

constexpr std::array<std::string_view, kRules.size()> RowKeys() {
  std::array<std::string_view, kRules.size()> keys{};
  std::transform(kRules.begin(), kRules.end(), keys.begin(), [](const RowRule& rule) { return rule.key; });
  return keys;
}

// Decimal, or hexadecimal after 0x.
std::optional<std::int64_t> Mask(std::string_view text) {
  if (text.starts_with("0x") || text.starts_with("0X")) return ToNumber<std::int64_t>(text.substr(2), 16);
  return ToNumber<std::int64_t>(text);
}

bool IsWholeWithin(std::string_view text, std::int64_t min, std::int64_t max) {
  const std::optional<std::int64_t> value = ToNumber<std::int64_t>(text);
  return value && *value >= min && *value <= max;
}

// Empty, or digits places before and after at most one point.
bool IsNumberFormat(std::string_view text) {
  return text.find_first_not_of("#0.") == std::string_view::npos && std::count(text.begin(), text.end(), '.') <= 1 &&
         (text.empty() || text.find_first_of("#0") != std::string_view::npos);
}

// Empty when the columns are right, else what is wrong with them.
std::string ColumnFault(const RowRule& rule, const std::vector<std::string>& columns) {
  constexpr std::int64_t kMaxReply = 1024;
  if (columns.size() < rule.leastColumns || columns.size() > rule.mostColumns)
    return "must have " + std::to_string(rule.leastColumns) +
           (rule.leastColumns == rule.mostColumns ? "" : " to " + std::to_string(rule.mostColumns)) + " columns";
  if (columns[0].empty()) return "must not have an empty first column";
  switch (rule.kind) {
  case RowKind::Identity:
  case RowKind::Model:
    if (!IsWholeWithin(columns[1], 1, kMaxReply) || !IsWholeWithin(columns[2], 1, kMaxReply))
      return "must have a start and a length of 1 to " + std::to_string(kMaxReply);
    if (rule.kind == RowKind::Model &&
        ToNumber<std::int64_t>(columns[2]) != static_cast<std::int64_t>(columns[3].size()))
      return "must have the number of characters of the expected text as its length";
    return std::string();
  case RowKind::Template:
  case RowKind::Bank:
    if (!HasOnlyPlaceholders(columns[0], {"CH", "ARBNUM", "ARBNAME"}))
      return "may hold no placeholder but $CH$, $ARBNUM$ and $ARBNAME$";
    if (columns.size() > 1 && !IsNumberFormat(columns[1])) return "must have a number format of #, 0 and one point";
    if (columns.size() > 2 && !IsWholeWithin(columns[2], -32768, 32767))
      return "must have a whole number as its offset";
    return std::string();
  case RowKind::Name:
    return IsWholeWithin(columns[1], 1, Model::kMaxMemoryName) ? std::string()
                                                               : "must have a maximum length of 1 to 32";
  case RowKind::Mask: {
    const std::optional<std::int64_t> mask = Mask(columns[0]);
    return mask && *mask >= 0 && *mask <= 0xFFFF ? std::string() : "must be a mask of 0 to 0xFFFF";
  }
  case RowKind::Flag: return columns[0] == "true" ? std::string() : "must be \"true\", or be left out";
  case RowKind::Command: return std::string();
  }
  return std::string();
}

void ReadRow(const TomlNode& node, std::vector<CommandRow>& rows, FaultSink& faults) {
  const auto rule = std::find_if(kRules.begin(), kRules.end(), [&](const RowRule& r) { return r.key == node.key; });
  if (rule == kRules.end()) return; // reported by the table's reader
  std::string value = ReadName(node, kMaxValue, faults);
  const std::string fault = ColumnFault(*rule, SplitCommandColumns(value));
  if (!fault.empty()) faults.Report(SYS_BAD_VALUE, node.line, "\"" + node.key + "\" " + fault + ".");
  rows.push_back(CommandRow{node.key, std::move(value)});
}

std::string HexText(std::int64_t mask) {
  std::array<char, 16> digits{};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), mask, 16);
  std::string text(digits.data(), end);
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
  return "0x" + text;
}

// The codes of a model with n data bits are 16-bit codes divided by 2^(16 - n); the mask says so.
void CheckMask(const TomlNode& row, std::int32_t dataBits, FaultSink& faults) {
  const std::int64_t expected = 0x10000 - (std::int64_t{1} << (16 - dataBits));
  if (Mask(TrimCommandText(row.text)) != expected)
    faults.Report(SYS_BAD_VALUE, row.line,
                  "\"arbmask\" does not belong to " + std::to_string(dataBits) + " data bits: that is " +
                      HexText(expected) + ".");
}

} // namespace

void ReadCommands(const TomlNode& commands, Model& model, FaultSink& faults) {
  static constexpr std::array<std::string_view, Model::kTables> kTableNames = {"common", "closing", "oscillator",
                                                                               "waveform"};
  static constexpr auto kKeys = RowKeys();
  const TableReader reader(commands, kTableNames, faults);
  for (std::size_t i = 0; i < kTableNames.size(); ++i) {
    const TomlNode& table = reader.Require(kTableNames[i]);
    const TableReader rows(table, kKeys, faults);
    for (const TomlNode& row : table.children) ReadRow(row, model.Commands[i], faults);
    if (i == 0) {
      for (const std::string_view needed : {"model", "getsts", "errmask"}) static_cast<void>(rows.Require(needed));
    } else if (kTableNames[i] == "waveform") {
      CheckMask(rows.Require("arbmask"), model.DataBits, faults);
      if (rows.Find("arbsend") == nullptr && model.DefaultArbCommand.empty())
        faults.Report(SYS_BAD_VALUE, table.line,
                      "Neither \"arbsend\" nor \"default_arb_command\" says how to send a waveform.");
    }
  }
}

} // namespace calder

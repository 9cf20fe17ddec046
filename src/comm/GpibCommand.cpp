#include "comm/GpibCommand.h"

#include "app/EngValB.h"
#include "comm/CommandTemplate.h"
#include "libs/sysinf32/CommandColumns.h"
#include "platform/AsciiText.h"
#include "platform/MessageBoxes.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace calder {
namespace {

constexpr std::string_view kKeys[] = {"maker",  "model",   "serial",  "version",       "preset",  "headoff", "channel",
                                      "freq",   "amprng",  "amp",     "offset",        "ofson",   "ofsoff",  "outon",
                                      "outoff", "arbmask", "arbsend", "arbprecommand", "arbbank", "arbstt",  "arbbswap",
                                      "arbfmt", "arbsize", "arbname", "getsts",        "geterr",  "errmask", "gpibcmd"};

bool HasHexPrefix(std::string_view text) {
  return text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

int ParseInteger(std::string_view text) {
  int value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

std::optional<double> WholeNumber(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return value;
}

// One pair of quotes that encloses the whole value.
std::string_view WithoutOuterQuotes(std::string_view value) {
  value = TrimCommandText(value);
  if (value.size() < 2 || (value.front() != '"' && value.front() != '\'')) return value;
  if (value.find(value.front(), 1) != value.size() - 1) return value;
  return value.substr(1, value.size() - 2);
}

clsGpibCommand::Row ToRow(std::string_view value) {
  clsGpibCommand::Row row;
  std::vector<std::string> columns = SplitCommandColumns(value);
  const std::size_t count = std::min(columns.size(), row.size()); // further columns mean nothing
  for (std::size_t i = 0; i < count; ++i) row[i] = std::move(columns[i]);
  return row;
}

} // namespace

std::uint32_t ParseCommandMask(std::string_view text) {
  text = TrimCommandText(text);
  const bool hex = HasHexPrefix(text);
  if (hex) text.remove_prefix(2);
  std::uint32_t value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value, hex ? 16 : 10);
  return value;
}

std::string CommandValue::Format(const std::string& picture) const {
  const std::optional<double> number = number_ ? number_ : WholeNumber(text_);
  if (!number) return text_;
  std::string text = FormatMask(*number, picture);
  if (text.ends_with('.')) text.pop_back(); // no digits after the point
  return text;
}

void clsGpibCommand::SetUp(bool reset, const std::vector<std::string>& keys, const std::vector<Row>& values) {
  if (reset) rows_.clear();
  for (std::size_t i = 0; i < keys.size() && !keys[i].empty(); ++i) {
    const std::string key = LowerText(keys[i]);
    if (std::find(std::begin(kKeys), std::end(kKeys), key) == std::end(kKeys)) {
      boxes_.Show("GPIB System Error", "Script Error\r" + keys[i], BoxButtons::Ok, BoxIcon::None);
      continue;
    }
    rows_[key] = i < values.size() ? values[i] : Row{};
  }
}

void clsGpibCommand::Fill(const CommandTable& table, int rows, const std::string& defaultArbCommand) {
  std::vector<std::string> keys;
  std::vector<Row> values;
  for (int i = 0; i < std::min(rows, CommandTable::kRows); ++i) {
    const auto index = static_cast<std::size_t>(i);
    keys.emplace_back(TrimCommandText(table.Key[index]));
    values.push_back(ToRow(WithoutOuterQuotes(table.Value[index])));
  }
  SetUp(true, keys, values);
  if (!ArbSend().empty() || TrimCommandText(defaultArbCommand).empty()) return;
  const std::vector<std::string> parts = SplitCommandColumns(TrimCommandText(defaultArbCommand));
  if (parts.size() >= 2) {
    SetUp(false, {"arbsend", "arbprecommand"}, {Row{parts[1]}, Row{parts[0]}});
  } else {
    SetUp(false, {"arbsend"}, {Row{parts[0]}});
  }
}

std::string clsGpibCommand::ArbPreCommand() const {
  return Formatted("arbprecommand", static_cast<double>(MemoryNo));
}

std::string clsGpibCommand::ArbBank(std::optional<double> value) const {
  if (!value) return Formatted("arbbank", {});
  const std::string& offset = Get("arbbank")[2];
  return Formatted("arbbank", offset.empty() ? *value : *value + LeadingNumber(offset));
}

std::string clsGpibCommand::ArbName(std::string_view name) const {
  const Row& row = Get("arbname");
  std::string text;
  bool joined = true; // the token before was a character code, or there was none
  std::string_view rest = row[0];
  while (!rest.empty()) {
    const std::size_t blank = rest.find(' ');
    const std::string_view token = rest.substr(0, blank);
    rest = blank == std::string_view::npos ? std::string_view{} : rest.substr(blank + 1);
    if (HasHexPrefix(token)) {
      text += static_cast<char>(ParseCommandMask(token));
      joined = true;
      continue;
    }
    if (!joined) text += ' ';
    text += token;
    joined = false;
  }
  constexpr std::string_view kName = "_$Name";
  const std::size_t at = text.find(kName);
  if (at == std::string::npos) return text;
  const double longest = LeadingNumber(row[1]);
  const auto length = static_cast<std::size_t>(std::clamp(longest, 0.0, 1000.0));
  return text.replace(at, kName.size(), name.substr(0, length));
}

std::string clsGpibCommand::Output(int state) const {
  if (state == 0) return OutputOn();
  return state == 1 ? OutputOff() : std::string();
}

bool clsGpibCommand::ArbByteSwap() const {
  const std::string& flag = Get("arbbswap")[0];
  if (flag.empty()) return false;
  if (EqualWithoutCase(flag, "true")) return true;
  boxes_.Show("Interface System Error", "ArbByteSwap Command Error\r" + flag, BoxButtons::Ok, BoxIcon::None);
  return false;
}

const clsGpibCommand::Row& clsGpibCommand::Get(std::string_view key) const {
  static const Row kNone;
  const auto found = rows_.find(key);
  return found == rows_.end() ? kNone : found->second;
}

std::string clsGpibCommand::Formatted(std::string_view key, const CommandValue& value) const {
  const Row& row = Get(key);
  if (row[0].empty()) return {};
  std::string text = ReplacePlaceholders(row[0]);
  if (!row[1].empty() && value.Given()) text += ' ' + value.Format(row[1]);
  return text;
}

std::string clsGpibCommand::ReplacePlaceholders(std::string_view text) const {
  return FillTemplate(text, {{"CH", std::to_string(Channel + 1)},
                             {"ARBNUM", std::to_string(MemoryNo) + ','},
                             {"ARBNAME", std::string(TrimCommandText(MemoryName)) + ','}});
}

clsGpibCommand::ReplyField clsGpibCommand::Field(std::string_view key) const {
  const Row& row = Get(key);
  return {row[0], ParseInteger(row[1]), ParseInteger(row[2]), row[3]};
}

std::uint32_t clsGpibCommand::Mask(std::string_view key) const {
  return ParseCommandMask(Get(key)[0]);
}

} // namespace calder

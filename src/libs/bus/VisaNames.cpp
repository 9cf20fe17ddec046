#include "libs/bus/VisaNames.h"

#include "platform/AsciiText.h"
#include "platform/WholeText.h"

#include <algorithm>
#include <array>
#include <vector>

namespace calder {
namespace {

std::optional<std::uint16_t> ToId(std::string_view text) {
  if (text.size() > 2 && EqualWithoutCase(text.substr(0, 2), "0x")) return ToNumber<std::uint16_t>(text.substr(2), 16);
  return ToNumber<std::uint16_t>(text, 10);
}

std::vector<std::string_view> Fields(std::string_view name) {
  std::vector<std::string_view> fields;
  while (true) {
    const std::size_t end = name.find("::");
    fields.push_back(name.substr(0, end));
    if (end == std::string_view::npos) return fields;
    name.remove_prefix(end + 2);
  }
}

std::string Hex4(std::uint16_t number) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text = "0x";
  for (int shift = 12; shift >= 0; shift -= 4) text += kDigits[(number >> shift) & 15];
  return text;
}

} // namespace

std::optional<UsbName> ParseUsbName(std::string_view name) {
  std::vector<std::string_view> fields = Fields(name);
  if (EqualWithoutCase(fields.back(), "INSTR")) fields.pop_back();
  if (fields.size() < 4 || fields.size() > 5 || !EqualWithoutCase(fields[0].substr(0, 3), "USB")) return std::nullopt;
  const std::string_view boardText = fields[0].substr(3);
  const auto board = boardText.empty() ? std::optional(0) : ToNumber<int>(boardText, 10);
  const auto vendor = ToId(fields[1]);
  const auto product = ToId(fields[2]);
  if (!board || *board < 0 || !vendor || !product || fields[3].empty()) return std::nullopt;
  UsbName usb{*board, *vendor, *product, std::string(fields[3]), std::nullopt};
  if (fields.size() == 5) {
    usb.interface = ToNumber<int>(fields[4], 10);
    if (!usb.interface || *usb.interface < 0) return std::nullopt;
  }
  return usb;
}

std::string FormatUsbName(const UsbName& name) {
  std::string text =
      "USB" + std::to_string(name.board) + "::" + Hex4(name.vendor) + "::" + Hex4(name.product) + "::" + name.serial;
  if (name.interface.value_or(0) != 0) text += "::" + std::to_string(*name.interface);
  return text + "::INSTR";
}

bool SameInstrument(const UsbName& a, const UsbName& b) {
  const bool sameInterface = !a.interface || !b.interface || *a.interface == *b.interface;
  return a.board == b.board && a.vendor == b.vendor && a.product == b.product && EqualWithoutCase(a.serial, b.serial) &&
         sameInterface;
}

bool MatchesVisaExpression(std::string_view expression, std::string_view name) {
  if (expression.empty()) return name.empty();
  const bool escaped = expression[0] == '\\' && expression.size() > 1;
  const std::size_t length = escaped ? 2 : 1;
  const char wanted = expression[length - 1];
  const auto fits = [&](char c) { return (!escaped && wanted == '?') || Lower(c) == Lower(wanted); };
  std::string_view rest = expression.substr(length);
  if (rest.empty() || rest[0] != '*')
    return !name.empty() && fits(name[0]) && MatchesVisaExpression(rest, name.substr(1));
  rest.remove_prefix(1);
  for (std::size_t taken = 0;; ++taken) {
    if (MatchesVisaExpression(rest, name.substr(taken))) return true;
    if (taken == name.size() || !fits(name[taken])) return false;
  }
}

bool IsVisaExpression(std::string_view expression) {
  bool repeatable = false;
  for (std::size_t i = 0; i < expression.size(); ++i) {
    if (expression[i] == '*') {
      if (!repeatable) return false;
      repeatable = false;
      continue;
    }
    if (expression[i] == '\\' && ++i == expression.size()) return false;
    repeatable = true;
  }
  return !expression.empty();
}

} // namespace calder

#include "libs/pluginsp/PluginWire.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace calder {
namespace {

constexpr std::size_t kMostNameBytes = 63;

// A pointer that may be null.
std::string_view TextAt(const char* text, std::size_t most) {
  return text == nullptr ? std::string_view() : std::string_view(text, ::strnlen(text, most + 1));
}

std::vector<std::string> Lines(std::string_view text) {
  std::vector<std::string> lines;
  while (true) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.emplace_back(text.substr(0, end));
    if (end == text.size()) return lines;
    text.remove_prefix(end + 1);
  }
}

// Control characters and what parts the entries of a file dialog have no place in a name.
std::string PlainName(std::string name) {
  for (char& c : name)
    if (static_cast<unsigned char>(c) < ' ' || c == '|' || c == 0x7F) c = ' ';
  return name;
}

bool IsExtension(std::string_view text) {
  return text.size() == 3 && std::ranges::all_of(text, [](char c) {
           return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
         });
}

bool TakeOption(PluginReader& reader, PluginOption& option) {
  const double kind = reader.Number();
  option.key = reader.Text();
  option.caption = reader.Text();
  const std::string choices = reader.Text();
  option.minimum = reader.Number();
  option.maximum = reader.Number();
  const double value = reader.Number();
  if (!reader.Ok()) return false;
  if (kind == CALDER_OPTION_CHOICE) {
    option.kind = PluginOption::Kind::Choice;
    option.choices = Lines(choices);
    option.minimum = 0;
    option.maximum = static_cast<double>(option.choices.size() - 1);
  } else if (kind == CALDER_OPTION_NUMBER) {
    option.kind = PluginOption::Kind::Number;
  } else if (kind == CALDER_OPTION_TRUTH) {
    option.kind = PluginOption::Kind::Truth;
    option.minimum = 0;
    option.maximum = 1;
  } else {
    return false;
  }
  constexpr double lowest = std::numeric_limits<std::int32_t>::min();
  constexpr double highest = std::numeric_limits<std::int32_t>::max();
  if (!(option.minimum >= lowest && option.maximum <= highest && option.minimum <= option.maximum)) return false;
  option.value = std::isnan(value) ? option.minimum : std::rint(std::clamp(value, option.minimum, option.maximum));
  return true;
}

} // namespace

void PluginWriter::Raw(std::span<const char> bytes) {
  ok_ = ok_ && bytes.size() <= room_.size() - filled_;
  if (!ok_) return;
  std::ranges::copy(bytes, room_.begin() + static_cast<std::ptrdiff_t>(filled_));
  filled_ += bytes.size();
}

void PluginWriter::Number(double value) {
  std::array<char, sizeof value> bytes{};
  std::memcpy(bytes.data(), &value, sizeof value);
  Raw(bytes);
}

void PluginWriter::Text(std::string_view text, std::size_t most) {
  const std::string_view cut = CutText(text, most);
  Number(static_cast<double>(cut.size()));
  Raw({cut.data(), cut.size()});
}

double PluginReader::Number() {
  double value = 0;
  ok_ = ok_ && left_.size() >= sizeof value;
  if (!ok_) return 0;
  std::memcpy(&value, left_.data(), sizeof value);
  left_.remove_prefix(sizeof value);
  return value;
}

std::string PluginReader::Text() {
  const double size = Number();
  ok_ = ok_ && size >= 0 && size <= static_cast<double>(left_.size());
  if (!ok_) return {};
  std::string text(left_.substr(0, static_cast<std::size_t>(size)));
  left_.remove_prefix(text.size());
  return text;
}

std::string_view CutText(std::string_view text, std::size_t most) {
  if (text.size() <= most) return text;
  while (most > 0 && (static_cast<unsigned char>(text[most]) & 0xC0U) == 0x80U) --most;
  return text.substr(0, most);
}

bool WriteForm(const calder_form& form, PluginWriter& writer) {
  if (form.count > kMostOptions || (form.count > 0 && form.options == nullptr)) return false;
  writer.Text(TextAt(form.preview, kMostPreviewBytes), kMostPreviewBytes);
  writer.Number(form.count);
  const char* at = reinterpret_cast<const char*>(form.options);
  for (std::uint32_t i = 0; i < form.count; ++i) {
    calder_option option{};
    std::uint32_t size = 0;
    std::memcpy(&size, form.options, sizeof size);
    if (size < sizeof option) return false;
    std::memcpy(&option, at + static_cast<std::size_t>(i) * size, sizeof option);
    writer.Number(option.kind);
    writer.Text(TextAt(option.key, kMostShortBytes), kMostShortBytes);
    writer.Text(TextAt(option.caption, kMostShortBytes), kMostShortBytes);
    writer.Text(TextAt(option.choices, kMostShortBytes), kMostShortBytes);
    writer.Number(option.minimum);
    writer.Number(option.maximum);
    writer.Number(option.value);
  }
  return writer.Ok();
}

std::optional<PluginForm> ReadForm(std::string_view bytes) {
  PluginReader reader(bytes);
  PluginForm form;
  form.preview = reader.Text();
  const double count = reader.Number();
  if (!reader.Ok() || !(count >= 0 && count <= static_cast<double>(kMostOptions))) return std::nullopt;
  form.options.resize(static_cast<std::size_t>(count));
  for (PluginOption& option : form.options)
    if (!TakeOption(reader, option)) return std::nullopt;
  return form;
}

void WriteIdentity(const calder_plugin& plugin, PluginWriter& writer) {
  for (const char* text : {plugin.applications, plugin.name, plugin.name_ja, plugin.extension})
    writer.Text(TextAt(text, kMostShortBytes), kMostShortBytes);
}

std::optional<PluginIdentity> ReadIdentity(std::string_view bytes) {
  PluginReader reader(bytes);
  PluginIdentity identity;
  identity.applications = reader.Text();
  identity.name = PlainName(std::string(CutText(reader.Text(), kMostNameBytes)));
  identity.japaneseName = PlainName(std::string(CutText(reader.Text(), kMostNameBytes)));
  identity.extension = reader.Text();
  if (!reader.Ok() || !IsExtension(identity.extension)) return std::nullopt;
  if (identity.japaneseName.empty()) identity.japaneseName = identity.name;
  return identity;
}

} // namespace calder

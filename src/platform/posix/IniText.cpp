#include "platform/posix/IniText.h"

#include "platform/AsciiText.h"

#include <algorithm>

namespace calder {
namespace {

constexpr std::string_view kBlanks = " \t\r";

std::string Quote(std::string_view value) {
  std::string text = "\"";
  for (const char c : value) {
    switch (c) {
    case '\\': text += "\\\\"; break;
    case '"': text += "\\\""; break;
    case '\n': text += "\\n"; break;
    case '\r': text += "\\r"; break;
    default: text += c;
    }
  }
  return text + '"';
}

std::string Unquote(std::string_view text) {
  if (text.size() < 2 || text.front() != '"' || text.back() != '"') return std::string(text);
  std::string value;
  for (std::size_t i = 1; i + 1 < text.size(); ++i) {
    if (text[i] == '\\' && i + 2 < text.size()) {
      ++i;
      value += text[i] == 'n' ? '\n' : text[i] == 'r' ? '\r' : text[i];
    } else {
      value += text[i];
    }
  }
  return value;
}

} // namespace

void IniText::Parse(std::string_view text) {
  sections_.clear();
  Entries* entries = nullptr;
  while (!text.empty()) {
    const auto end = text.find('\n');
    const std::string_view line = Trimmed(text.substr(0, end), kBlanks);
    text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
    if (line.empty() || line.front() == ';' || line.front() == '#') continue;
    if (line.front() == '[' && line.back() == ']') {
      entries = &Section(Trimmed(line.substr(1, line.size() - 2), kBlanks));
      continue;
    }
    const auto equals = line.find('=');
    if (entries == nullptr || equals == std::string_view::npos) continue;
    entries->emplace_back(Trimmed(line.substr(0, equals), kBlanks), Unquote(Trimmed(line.substr(equals + 1), kBlanks)));
  }
}

std::string IniText::Write() const {
  std::string text;
  for (const auto& [name, entries] : sections_) {
    text += (text.empty() ? "[" : "\n[") + name + "]\n";
    for (const auto& [key, value] : entries) text += key + " = " + Quote(value) + "\n";
  }
  return text;
}

const IniText::Entries* IniText::FindSection(std::string_view section) const {
  const auto found = std::find_if(sections_.begin(), sections_.end(),
                                  [&](const auto& candidate) { return candidate.first == section; });
  return found == sections_.end() ? nullptr : &found->second;
}

const std::string* IniText::Find(std::string_view section, std::string_view key) const {
  const Entries* entries = FindSection(section);
  if (entries == nullptr) return nullptr;
  const auto found =
      std::find_if(entries->begin(), entries->end(), [&](const auto& candidate) { return candidate.first == key; });
  return found == entries->end() ? nullptr : &found->second;
}

void IniText::Set(std::string_view section, std::string_view key, std::string value) {
  Entries& entries = Section(section);
  const auto found =
      std::find_if(entries.begin(), entries.end(), [&](const auto& candidate) { return candidate.first == key; });
  if (found != entries.end()) {
    found->second = std::move(value);
  } else {
    entries.emplace_back(key, std::move(value));
  }
}

IniText::Entries& IniText::Section(std::string_view name) {
  for (auto& [candidate, entries] : sections_) {
    if (candidate == name) return entries;
  }
  return sections_.emplace_back(std::string(name), Entries{}).second;
}

} // namespace calder

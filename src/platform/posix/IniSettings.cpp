#include "platform/posix/IniSettings.h"

#include "libs/file32/file32.h"

#define SI_NO_CONVERSION // texts are UTF-8 as they are
#include <SimpleIni.h>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <span>

namespace calder {
namespace {

// An exclusive lock on a file beside the store, held while the object lives.
class StoreLock {
public:
  explicit StoreLock(const std::string& path) : fd_(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    if (fd_ < 0) return;
    int result = 0;
    do {
      result = flock(fd_, LOCK_EX);
    } while (result != 0 && errno == EINTR);
    held_ = result == 0;
  }
  ~StoreLock() {
    if (fd_ >= 0) close(fd_);
  }
  StoreLock(const StoreLock&) = delete;
  StoreLock& operator=(const StoreLock&) = delete;
  [[nodiscard]] bool Held() const { return held_; }

private:
  int fd_;
  bool held_ = false;
};

// Values are kept on one line between quotes, so that blanks at their ends survive.
std::string Encode(const std::string& value) {
  std::string text = "\"";
  for (const char c : value) {
    if (c == '\\') text += "\\\\";
    else if (c == '\n') text += "\\n";
    else if (c == '\r') text += "\\r";
    else text += c;
  }
  return text + '"';
}

std::string Decode(const std::string& text) {
  if (text.size() < 2 || text.front() != '"' || text.back() != '"') return text; // written by hand
  std::string value;
  for (std::size_t i = 1; i + 1 < text.size(); ++i) {
    if (text[i] != '\\' || i + 2 >= text.size()) {
      value += text[i];
      continue;
    }
    ++i;
    value += text[i] == 'n' ? '\n' : text[i] == 'r' ? '\r' : text[i];
  }
  return value;
}

using Ini = CSimpleIniCaseA;

bool Load(Ini& ini, const std::string& path) {
  std::vector<char> content;
  std::error_code error;
  if (!std::filesystem::exists(path, error)) return true; // a fresh store
  if (ReadWholeFile(path, content) != 0) return false;
  return ini.LoadData(content.data(), content.size()) >= 0;
}

} // namespace

IniSettings::IniSettings(std::string path) : path_(std::move(path)) {
  std::error_code error;
  std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), error);
}

std::optional<std::string> IniSettings::Get(const std::string& section, const std::string& key) const {
  Ini ini;
  ini.SetUnicode();
  if (!Load(ini, path_)) return std::nullopt;
  const char* value = ini.GetValue(section.c_str(), key.c_str(), nullptr);
  if (value == nullptr) return std::nullopt;
  return Decode(value);
}

bool IniSettings::Set(const std::string& section, const std::string& key, const std::string& value) {
  return Update(section, key, [&](const std::optional<std::string>&) { return value; });
}

bool IniSettings::Update(const std::string& section, const std::string& key, const Change& change) {
  const StoreLock lock(path_ + ".lock");
  if (!lock.Held()) return false;
  Ini ini;
  ini.SetUnicode();
  if (!Load(ini, path_)) return false;
  const char* old = ini.GetValue(section.c_str(), key.c_str(), nullptr);
  const std::string oldText = old != nullptr ? old : "";
  const std::string text =
      Encode(change(old != nullptr ? std::optional<std::string>(Decode(oldText)) : std::nullopt));
  if (old != nullptr && text == oldText) return true;
  if (ini.SetValue(section.c_str(), key.c_str(), text.c_str()) < 0) return false;
  std::string content;
  if (ini.Save(content) < 0) return false;
  const std::array pieces{std::as_bytes(std::span(content))};
  return ReplaceFile(path_, pieces) == 0;
}

std::vector<std::pair<std::string, std::string>> IniSettings::All(const std::string& section) const {
  Ini ini;
  ini.SetUnicode();
  std::vector<std::pair<std::string, std::string>> all;
  if (!Load(ini, path_)) return all;
  Ini::TNamesDepend keys;
  ini.GetAllKeys(section.c_str(), keys);
  keys.sort(Ini::Entry::LoadOrder());
  for (const Ini::Entry& key : keys) {
    all.emplace_back(key.pItem, Decode(ini.GetValue(section.c_str(), key.pItem, "")));
  }
  return all;
}

} // namespace calder

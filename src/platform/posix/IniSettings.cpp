#include "platform/posix/IniSettings.h"

#include "libs/file32/WholeFile.h"
#include "platform/posix/IniText.h"

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

// A file that is not there yet is an empty store.
bool Load(IniText& ini, const std::string& path) {
  std::error_code error;
  if (!std::filesystem::exists(path, error)) return true;
  std::vector<char> content;
  if (ReadWholeFile(path, content) != 0) return false;
  ini.Parse({content.data(), content.size()});
  return true;
}

} // namespace

IniSettings::IniSettings(std::string path) : path_(std::move(path)) {
  std::error_code error;
  std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), error);
}

std::optional<std::string> IniSettings::Get(const std::string& section, const std::string& key) const {
  IniText ini;
  if (!Load(ini, path_)) return std::nullopt;
  const std::string* value = ini.Find(section, key);
  return value == nullptr ? std::nullopt : std::optional(*value);
}

bool IniSettings::Set(const std::string& section, const std::string& key, const std::string& value) {
  return Update(section, key, [&](const std::optional<std::string>&) { return value; });
}

bool IniSettings::Update(const std::string& section, const std::string& key, const Change& change) {
  const StoreLock lock(path_ + ".lock");
  if (!lock.Held()) return false;
  IniText ini;
  if (!Load(ini, path_)) return false;
  const std::string* old = ini.Find(section, key);
  std::string value = change(old == nullptr ? std::nullopt : std::optional(*old));
  if (old != nullptr && value == *old) return true;
  ini.Set(section, key, std::move(value));
  const std::string text = ini.Write();
  const std::array pieces{std::as_bytes(std::span(text))};
  return ReplaceFile(path_, pieces, {}, Durability::Renamed) == 0;
}

std::vector<std::pair<std::string, std::string>> IniSettings::All(const std::string& section) const {
  IniText ini;
  if (!Load(ini, path_)) return {};
  const IniText::Entries* entries = ini.FindSection(section);
  return entries == nullptr ? IniText::Entries{} : *entries;
}

} // namespace calder

#include "platform/posix/IniSettings.h"

#include "platform/posix/WholeFile.h"

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

// A file that is replaced is another one, and one that is written over has another time or size.
bool SameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
         a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec &&
         a.st_ctim.tv_sec == b.st_ctim.tv_sec && a.st_ctim.tv_nsec == b.st_ctim.tv_nsec;
}

} // namespace

IniSettings::IniSettings(std::string path) : path_(std::move(path)) {
  std::error_code error;
  std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), error);
}

IniText* IniSettings::Current() const {
  struct stat now {};
  if (stat(path_.c_str(), &now) != 0) {
    text_ = IniText(); // a file that is not there yet is an empty store
    state_ = {};
    return &text_;
  }
  if (SameFile(now, state_)) return &text_;
  std::vector<char> content;
  if (ReadWholeFile(path_, content) != 0) return nullptr;
  text_ = IniText();
  text_.Parse({content.data(), content.size()});
  state_ = now; // older than what was read at the worst: then it is read again
  return &text_;
}

std::optional<std::string> IniSettings::Get(const std::string& section, const std::string& key) const {
  const IniText* ini = Current();
  const std::string* value = ini == nullptr ? nullptr : ini->Find(section, key);
  return value == nullptr ? std::nullopt : std::optional(*value);
}

bool IniSettings::Set(const std::string& section, const std::string& key, const std::string& value) {
  return Update(section, key, [&](const std::optional<std::string>&) { return value; });
}

bool IniSettings::Update(const std::string& section, const std::string& key, const Change& change) {
  const StoreLock lock(path_ + ".lock");
  if (!lock.Held()) return false;
  IniText* ini = Current();
  if (ini == nullptr) return false;
  const std::string* old = ini->Find(section, key);
  std::string value = change(old == nullptr ? std::nullopt : std::optional(*old));
  if (old != nullptr && value == *old) return true;
  state_ = {}; // whether the write succeeds or not, the file is the truth
  ini->Set(section, key, std::move(value));
  const std::string text = ini->Write();
  const std::array pieces{std::as_bytes(std::span(text))};
  if (ReplaceFile(path_, pieces, {}, Durability::Renamed) != 0) return false;
  static_cast<void>(stat(path_.c_str(), &state_)); // nobody else writes while the lock is held
  return true;
}

std::vector<std::pair<std::string, std::string>> IniSettings::All(const std::string& section) const {
  const IniText* ini = Current();
  const IniText::Entries* entries = ini == nullptr ? nullptr : ini->FindSection(section);
  return entries == nullptr ? IniText::Entries{} : *entries;
}

} // namespace calder

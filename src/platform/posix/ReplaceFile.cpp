// A file is replaced by writing a temporary file in the same folder, flushing it, and giving it the target's name: the
// name stands for the old content up to one moment and for the new content from then on, whatever happens to the
// process or the machine. Everything goes through a descriptor of the folder, so that a relative path, or a folder that
// is moved meanwhile, cannot lead to two different places.
//
// A process that is killed while it writes leaves its temporary file (".calder-*.tmp") behind.
#include "platform/posix/Descriptor.h"
#include "platform/posix/WholeFile.h"

#include <fcntl.h>
#include <linux/limits.h>
#include <sys/random.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <charconv>

namespace calder {

namespace {

// The system's own limit on links that lead to links.
constexpr int kMostLinks = 40;
constexpr int kMostNames = 16;

struct Target {
  Descriptor folder;
  std::string name;
};

// The folder and the name of the file that the path leads to; the file itself need not exist.
bool FindTarget(std::string path, Target& target) {
  if (path.find('\0') != std::string::npos) return false;
  for (int links = 0; links < kMostLinks; ++links) {
    const std::size_t slash = path.rfind('/');
    const std::string parent = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const int base = target.folder.Valid() ? target.folder.Get() : AT_FDCWD;
    target.folder = Descriptor(::openat(base, parent.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    target.name = path.substr(slash == std::string::npos ? 0 : slash + 1);
    if (!target.folder.Valid() || target.name.empty()) return false;

    std::array<char, PATH_MAX> link; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the next line
    const ssize_t length = ::readlinkat(target.folder.Get(), target.name.c_str(), link.data(), link.size());
    if (length < 0) return errno == EINVAL || errno == ENOENT; // not a link, or no file yet
    if (length == 0 || static_cast<std::size_t>(length) == link.size()) return false;
    path.assign(link.data(), static_cast<std::size_t>(length));
  }
  return false;
}

// The temporary file; it is removed unless it has become the target.
class TemporaryFile {
public:
  explicit TemporaryFile(int folder) : folder_(folder) {}
  ~TemporaryFile() {
    if (!name_.empty()) ::unlinkat(folder_, name_.c_str(), 0);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  // A random name, and one that is taken is never opened: no two saves can share a temporary file.
  bool Create(mode_t mode) {
    for (int attempt = 0; attempt < kMostNames; ++attempt) {
      std::uint64_t number = 0;
      if (::getrandom(&number, sizeof number, 0) != static_cast<ssize_t>(sizeof number)) return false;
      std::array<char, 16> digits{};
      const std::to_chars_result end = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16);
      const std::string name = ".calder-" + std::string(digits.data(), end.ptr) + ".tmp";
      file_ = Descriptor(::openat(folder_, name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
      if (file_.Valid()) {
        name_ = name;
        return true;
      }
      if (errno != EEXIST && errno != EINTR) return false;
    }
    return false;
  }

  bool Write(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
      const ssize_t written = ::write(file_.Get(), bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return false;
      bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
  }

  // The owner first: changing it takes special permission bits away. A user who may not give files away keeps the file.
  bool TakePermissions(const struct stat& old) {
    if (::fchown(file_.Get(), old.st_uid, old.st_gid) != 0) static_cast<void>(::fchown(file_.Get(), -1U, old.st_gid));
    return ::fchmod(file_.Get(), old.st_mode & 07777U) == 0;
  }

  bool Flush() { return ::fsync(file_.Get()) == 0; }

  bool Become(const std::string& name) {
    if (!file_.Close() || ::renameat(folder_, name_.c_str(), folder_, name.c_str()) != 0) return false;
    name_.clear();
    return true;
  }

private:
  int folder_;
  Descriptor file_;
  std::string name_; // empty: there is nothing to remove
};

} // namespace

std::int32_t ReplaceFile(const std::string& path, std::span<const std::span<const std::byte>> pieces,
                         const WriteGate& gate, Durability durability) {
  const auto open = [&gate](WriteStep step) { return !gate || gate(step); };

  Target target;
  if (!FindTarget(path, target)) return FILE_WRITE_FAILED;
  const int folder = target.folder.Get();
  struct stat old {};
  const bool exists = ::fstatat(folder, target.name.c_str(), &old, AT_SYMLINK_NOFOLLOW) == 0;
  if (!exists && errno != ENOENT) return FILE_WRITE_FAILED;
  // A folder or a device is never replaced, and a write-protected file is not either, though a rename could.
  if (exists && (!S_ISREG(old.st_mode) || ::faccessat(folder, target.name.c_str(), W_OK, AT_EACCESS) != 0)) {
    return FILE_WRITE_FAILED;
  }

  TemporaryFile temporary(folder);
  if (!open(WriteStep::Create) || !temporary.Create(exists ? 0600 : 0666)) return FILE_WRITE_FAILED;
  for (const std::span<const std::byte> piece : pieces) {
    if (!open(WriteStep::Write) || !temporary.Write(piece)) return FILE_WRITE_FAILED;
  }
  if (exists && !temporary.TakePermissions(old)) return FILE_WRITE_FAILED;
  const bool flushed = durability == Durability::Flushed;
  if (flushed && (!open(WriteStep::Flush) || !temporary.Flush())) return FILE_WRITE_FAILED;
  if (!open(WriteStep::Rename) || !temporary.Become(target.name)) return FILE_WRITE_FAILED;

  return 0;
}

} // namespace calder

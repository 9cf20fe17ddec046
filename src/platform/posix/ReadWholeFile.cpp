#include "platform/posix/WholeFile.h"

#include "platform/posix/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <utility>

namespace calder {

namespace {

// No text of this program comes near it; a larger one would only fill the memory.
constexpr std::size_t kMostBytes = std::size_t{1} << 28;

// A regular file that is open for reading; anything else is as a file of no bytes.
class RegularFile {
public:
  explicit RegularFile(const std::string& path);
  // As the system reports it; some files do not know theirs. -1: not open.
  [[nodiscard]] std::int64_t Size() const { return size_; }
  // As ::pread, without interruptions; -1: failed.
  [[nodiscard]] std::ptrdiff_t ReadSome(std::size_t offset, std::span<std::byte> bytes) const;

private:
  Descriptor file_;
  std::int64_t size_ = -1;
};

RegularFile::RegularFile(const std::string& path) {
  if (path.find('\0') != std::string::npos) return;
  // A pipe would make the program wait for its other end: opened without waiting, then refused.
  Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file.Valid() || ::fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return;
  file_ = std::move(file);
  size_ = status.st_size;
}

std::ptrdiff_t RegularFile::ReadSome(std::size_t offset, std::span<std::byte> bytes) const {
  while (true) {
    const ssize_t got = ::pread(file_.Get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (got >= 0 || errno != EINTR) return got;
  }
}

} // namespace

std::int32_t ReadFileStart(const std::string& path, std::size_t most, std::vector<char>& content) {
  const RegularFile file(path);
  if (file.Size() < 0) return FILE_READ_FAILED;
  // The size is a hint: one byte more than it shows the end of the file in the same pass, and a file that grew or that
  // does not know its size is read to its end.
  std::size_t filled = 0;
  std::size_t room = std::min(static_cast<std::size_t>(file.Size()) + 1, most);
  try {
    while (filled < most) {
      if (filled == room) room = std::min(room + room / 2 + 4096, most);
      if (content.size() < room) content.resize(room);
      const std::ptrdiff_t got =
          file.ReadSome(filled, std::as_writable_bytes(std::span(content).subspan(filled, room - filled)));
      if (got < 0) return FILE_READ_FAILED;
      if (got == 0) break;
      filled += static_cast<std::size_t>(got);
    }
    content.resize(filled);
  } catch (const std::bad_alloc&) {
    return FILE_READ_FAILED;
  }
  return 0;
}

std::int32_t ReadWholeFile(const std::string& path, std::vector<char>& content) {
  const std::int32_t status = ReadFileStart(path, kMostBytes + 1, content);
  return status == 0 && content.size() > kMostBytes ? FILE_READ_FAILED : status;
}

} // namespace calder

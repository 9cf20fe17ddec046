#include "common/MappedFile.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace calder::plugin {

MappedFile::MappedFile(const Editor& editor, const std::string& path) {
  const std::string unreadable = editor.Pick("ファイルを読み込めません: ", "The file cannot be read: ");
  // A pipe would wait for its other end: opened without waiting, then refused.
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) throw Refusal(unreadable + std::strerror(errno));
  struct stat state {};
  void* mapped = nullptr;
  const bool regular = ::fstat(file, &state) == 0 && S_ISREG(state.st_mode);
  if (regular && state.st_size > 0)
    mapped = ::mmap(nullptr, static_cast<std::size_t>(state.st_size), PROT_READ, MAP_PRIVATE, file, 0);
  ::close(file);
  if (!regular || mapped == MAP_FAILED) throw Refusal(unreadable + std::strerror(regular ? errno : EINVAL));
  if (mapped == nullptr) return;
  bytes_ = {static_cast<const char*>(mapped), static_cast<std::size_t>(state.st_size)};
  ::madvise(mapped, bytes_.size(), MADV_SEQUENTIAL);
}

MappedFile::~MappedFile() {
  if (!bytes_.empty()) ::munmap(const_cast<char*>(bytes_.data()), bytes_.size());
}

} // namespace calder::plugin

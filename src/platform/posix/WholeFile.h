// Files read and replaced as a whole. Paths are UTF-8. 0 on success.
#pragma once

#include "platform/posix/Descriptor.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace calder {

inline constexpr std::int32_t FILE_READ_FAILED = 71;
inline constexpr std::int32_t FILE_WRITE_FAILED = 72;

// One step of a write, for tests that make it fail or stop there; true goes on.
enum class WriteStep { Create, Write, Flush, Rename };
using WriteGate = std::function<bool(WriteStep)>;

// Replaces the file at `path` by `pieces` one after the other, in one step or not at all. Keeps the old file's
// permissions and, where the user may give files away, its owner; follows a symbolic link to the file that it names.
// Refused: a folder, a device, a pipe, a write-protected file. Other hard links to the old file keep the old content.
//
// Flushed: the content is on the disk before the file takes the name, so that after a loss of power the name leads to
// the old file or to the whole new one (which of them, until the file system has written the folder a few seconds
// later, is not certain; waiting for that would double the time of a save). Renamed: other programs see the old or the
// new file, never a mixture, but after a loss of power it may be either (or empty); for what is cheap to lose and
// written often.
enum class Durability { Flushed, Renamed };
[[nodiscard]] std::int32_t ReplaceFile(const std::string& path, std::span<const std::span<const std::byte>> pieces,
                                       const WriteGate& gate = {}, Durability durability = Durability::Flushed);

// The whole file into `content`, whose memory is reused; after a failure `content` holds anything. Only regular files
// are read, and none of more than 256 MiB.
[[nodiscard]] std::int32_t ReadWholeFile(const std::string& path, std::vector<char>& content);
// The same for the first `most` bytes of a file of any size; fewer when it is shorter.
[[nodiscard]] std::int32_t ReadFileStart(const std::string& path, std::size_t most, std::vector<char>& content);

} // namespace calder

#include "platform/TempFolder.h"
#include "platform/posix/WholeFile.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace calder::replace_file_test {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

std::int32_t Save(const std::string& path, std::initializer_list<std::string_view> texts, const WriteGate& gate = {}) {
  std::vector<std::span<const std::byte>> pieces;
  for (const std::string_view text : texts) pieces.push_back(Bytes(text));
  return ReplaceFile(path, pieces, gate);
}

// Runs `action` in a child process and gives its answer, or -signal.
template <class Action>
int InChild(Action action) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(action());
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

TEST(ReplaceFile, WritesThePiecesAndLeavesNothingElse) {
  const TempFolder folder;
  EXPECT_EQ(Save(folder / "a.txt", {"one", "", "two"}), 0);
  EXPECT_EQ(GetFile(folder / "a.txt"), "onetwo");
  EXPECT_EQ(Save(folder / "a.txt", {}), 0);
  EXPECT_EQ(GetFile(folder / "a.txt"), "");
  EXPECT_EQ(Save(folder / std::string(255, 'n'), {"the longest name"}), 0);
  EXPECT_THAT(folder.Names(), UnorderedElementsAre("a.txt", std::string(255, 'n')));
}

TEST(ReplaceFile, KeepsThePermissionsAndTheOwner) {
  const TempFolder folder;
  const std::string path = folder / "a.txt";
  for (const mode_t mode : {0600U, 0640U, 0755U, 0666U}) {
    PutFile(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), mode), 0);
    if (::geteuid() == 0) {
      ASSERT_EQ(::chown(path.c_str(), 12345, 23456), 0);
    }
    struct stat before {};
    struct stat after {};
    ASSERT_EQ(::stat(path.c_str(), &before), 0);
    ASSERT_EQ(Save(path, {"new"}), 0);
    ASSERT_EQ(::stat(path.c_str(), &after), 0);
    EXPECT_EQ(Texts(after.st_mode, after.st_uid, after.st_gid), Texts(before.st_mode, before.st_uid, before.st_gid));
    EXPECT_NE(after.st_ino, before.st_ino);
  }
  // A new file gets what the user's mask leaves.
  const mode_t mask = ::umask(027);
  EXPECT_EQ(Save(folder / "new.txt", {"x"}), 0);
  ::umask(mask);
  struct stat made {};
  ASSERT_EQ(::stat((folder / "new.txt").c_str(), &made), 0);
  EXPECT_EQ(made.st_mode & 0777U, 0640U);
}

TEST(ReplaceFile, FollowsLinksToTheFileThatTheyName) {
  const TempFolder folder;
  std::filesystem::create_directories(folder / "one/two");
  std::filesystem::create_symlink("one/two/hop", folder / "link");
  std::filesystem::create_symlink("../real.txt", folder / "one/two/hop");
  EXPECT_EQ(Save(folder / "link", {"through a link that names no file yet"}), 0);
  EXPECT_EQ(Save(folder / "link", {"again"}), 0);
  EXPECT_EQ(GetFile(folder / "one/real.txt"), "again");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "one/two/hop"));

  std::filesystem::create_symlink("loop", folder / "loop");
  EXPECT_EQ(Save(folder / "loop", {"x"}), FILE_WRITE_FAILED);
}

TEST(ReplaceFile, WorksForARelativePath) {
  const TempFolder folder;
  EXPECT_EQ(InChild([&] {
              if (::chdir(folder.Path().c_str()) != 0 || ::mkdir("sub", 0755) != 0) return 1;
              return Save("a.txt", {"here"}) == 0 && Save("sub/../sub/b.txt", {"there"}) == 0 ? 0 : 2;
            }),
            0);
  EXPECT_EQ(GetFile(folder / "a.txt"), "here");
  EXPECT_EQ(GetFile(folder / "sub/b.txt"), "there");
}

TEST(ReplaceFile, RefusesWhatIsNoFile) {
  const TempFolder folder;
  std::filesystem::create_directory(folder / "sub");
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0644), 0);
  PutFile(folder / "file", "kept");
  const std::string withNul = std::string(folder / "file") + '\0' + ".txt";
  for (const std::string& path : {std::string(), folder / "sub", folder / "sub/", folder / "sub/..", folder / "pipe",
                                  folder / "missing/a.txt", folder / "file/a.txt", withNul,
                                  folder / std::string(256, 'n'), std::string("/dev/null"), std::string("/proc/a")}) {
    EXPECT_EQ(Save(path, {"x"}), FILE_WRITE_FAILED) << path;
    std::vector<char> content;
    EXPECT_EQ(ReadWholeFile(path, content) == 0, false) << path;
  }
  EXPECT_EQ(GetFile(folder / "file"), "kept");
  EXPECT_THAT(folder.Names(), UnorderedElementsAre("sub", "pipe", "file"));
}

TEST(ReplaceFile, LeavesTheOldFileWhenAStepFails) {
  const TempFolder folder;
  const std::string path = folder / "a.txt";
  PutFile(path, "old");
  for (int stop = 0; stop < 6; ++stop) { // create, three writes, flush, rename
    int step = 0;
    EXPECT_EQ(Save(path, {"1", "2", "3"}, [&](WriteStep) { return step++ != stop; }), FILE_WRITE_FAILED);
    EXPECT_EQ(step, stop + 1);
    EXPECT_EQ(GetFile(path), "old");
    EXPECT_THAT(folder.Names(), ElementsAre("a.txt"));
  }
}

TEST(ReplaceFile, LeavesTheOldFileOnAFullDisk) {
  const TempFolder folder;
  PutFile(folder / "a.txt", "old");
  const std::string large(100'000, 'x');
  EXPECT_EQ(InChild([&] {
              // A limit on the size of files ends a write in its middle, as a full disk does.
              const rlimit limit{50'000, 50'000};
              ::signal(SIGXFSZ, SIG_IGN);
              return ::setrlimit(RLIMIT_FSIZE, &limit) == 0 ? Save(folder / "a.txt", {large}) : 1;
            }),
            FILE_WRITE_FAILED);
  EXPECT_EQ(GetFile(folder / "a.txt"), "old");
  EXPECT_THAT(folder.Names(), ElementsAre("a.txt"));
}

TEST(ReplaceFile, RespectsWriteProtection) {
  const TempFolder folder;
  std::filesystem::create_directory(folder / "closed");
  PutFile(folder / "closed/a.txt", "old");
  PutFile(folder / "protected.txt", "old");
  ::chmod(folder.Path().c_str(), 0777);
  ::chmod((folder / "closed/a.txt").c_str(), 0666);
  ::chmod((folder / "closed").c_str(), 0555);
  ::chmod((folder / "protected.txt").c_str(), 0444);
  for (const char* name : {"closed/a.txt", "closed/b.txt", "protected.txt"}) {
    EXPECT_EQ(InChild([&] {
                if (::geteuid() == 0 && ::setresuid(65534, 65534, 65534) != 0) return 1; // the superuser may everything
                return Save(folder / name, {"new"});
              }),
              FILE_WRITE_FAILED)
        << name;
  }
  EXPECT_EQ(GetFile(folder / "closed/a.txt"), "old");
  EXPECT_EQ(GetFile(folder / "protected.txt"), "old");
  EXPECT_FALSE(std::filesystem::exists(folder / "closed/b.txt"));
  ::chmod((folder / "closed").c_str(), 0755);
}

// What the system has is what a call of it left: a kill between any two shows every state that there can be.
TEST(ReplaceFile, KilledAtAStepLeavesTheOldFile) {
  const TempFolder folder;
  const std::string path = folder / "a.txt";
  PutFile(path, "old");
  const std::string large(50'000, 'x');
  for (int stop = 0; stop < 6; ++stop) { // create, three writes, flush, rename
    int step = 0;
    const auto gate = [&](WriteStep) { return step++ != stop || ::kill(::getpid(), SIGKILL); };
    EXPECT_EQ(InChild([&] { return Save(path, {large, "2", large}, gate); }), -SIGKILL);
    EXPECT_EQ(GetFile(path), "old");
  }
}

TEST(ReadWholeFile, ReusesItsMemoryAndKnowsTheEnd) {
  const TempFolder folder;
  std::vector<char> content;
  for (const std::size_t size : {100'000U, 0U, 1U, 99'999U, 100'001U, 4096U}) {
    PutFile(folder / "a", std::string(size, 'q'));
    ASSERT_EQ(ReadWholeFile(folder / "a", content), 0);
    EXPECT_EQ(std::string(content.begin(), content.end()), std::string(size, 'q'));
  }
  // The largest file, and one byte more.
  for (const std::uintmax_t more : {0U, 1U}) {
    std::filesystem::resize_file(folder / "a", (std::uintmax_t{1} << 28) + more);
    EXPECT_EQ(ReadWholeFile(folder / "a", content) == 0, more == 0);
  }
  // A file that does not know its size.
  ASSERT_EQ(ReadWholeFile("/proc/self/status", content), 0);
  EXPECT_THAT(std::string(content.begin(), content.end()), testing::HasSubstr("Name:"));
}

} // namespace calder::replace_file_test

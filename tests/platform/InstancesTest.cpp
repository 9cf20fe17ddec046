#include "platform/posix/PosixInstances.h"

#include "platform/TempFolder.h"

#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <thread>

namespace calder::instances_test {

TEST(Instances, ACopyThatCrashedDoesNotCount) {
  const TempFolder folder;
  const std::string lock = folder / "sub/instances";
  std::array<int, 2> ready{};
  ASSERT_EQ(pipe(ready.data()), 0);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    PosixInstances mine(lock, "/bin/true");
    mine.StartupFinished();
    const char alone = mine.OthersRunning() ? 'o' : 'a';
    if (write(ready[1], &alone, 1) != 1) _exit(1);
    pause();
    _exit(0);
  }
  char alone = 0;
  ASSERT_EQ(read(ready[0], &alone, 1), 1);
  EXPECT_EQ(alone, 'a');
  EXPECT_TRUE(PosixInstances(lock, "/bin/true").OthersRunning());
  kill(child, SIGKILL);
  ASSERT_EQ(waitpid(child, nullptr, 0), child);
  PosixInstances first(lock, "/bin/true");
  EXPECT_FALSE(first.OthersRunning());
  // A copy that starts before the first one has counted itself in waits for that.
  std::atomic<bool> counted = false;
  std::thread second([&] {
    EXPECT_TRUE(PosixInstances(lock, "/bin/true").OthersRunning());
    EXPECT_TRUE(counted);
  });
  usleep(20000);
  counted = true; // before the lock is shared, hence before the second copy goes on
  first.StartupFinished();
  second.join();
  close(ready[0]);
  close(ready[1]);
}

TEST(Instances, ANewCopyStartsInTheProgramsFolderAndLetsGoOfTheLock) {
  const TempFolder folder;
  const std::string program = folder / "a program";
  PutFile(program, "#!/bin/sh\npwd > started.tmp\necho \"$1\" >> started.tmp\nsed 's/.*) //' /proc/$$/stat | cut -d' ' "
                   "-f4 >> started.tmp\nmv "
                   "started.tmp started\n");
  ASSERT_EQ(chmod(program.c_str(), 0755), 0);
  PosixInstances copies(folder / "instances", program);
  ASSERT_TRUE(copies.StartCopy("/a file"));
  for (int i = 0; i < 2000 && !std::filesystem::exists(folder / "started"); ++i) usleep(1000);
  const std::string started = GetFile(folder / "started");
  EXPECT_TRUE(started.starts_with(folder.Path().string() + "\n/a file\n")) << started;
  EXPECT_FALSE(started.ends_with("\n" + std::to_string(getsid(0)) + "\n")) << "a session of its own";
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "nothing is left to wait for";
  PutFile(folder / "no program", "exit 0\n");
  ASSERT_EQ(chmod((folder / "no program").c_str(), 0755), 0);
  for (const char* name : {"missing", "no program", "no folder/program"})
    EXPECT_FALSE(PosixInstances(folder / "other", folder / name).StartCopy({})) << name;
}

} // namespace calder::instances_test

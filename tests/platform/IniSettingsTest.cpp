#include "platform/posix/IniSettings.h"
#include "platform/posix/IniText.h"

#include "platform/TempFolder.h"

#include <sys/wait.h>
#include <unistd.h>

namespace calder::ini_settings_test {

TEST(IniText, ValuesSurviveWhatTheyHold) {
  IniText ini;
  const std::string values[] = {"", " blanks ", "a=b;c#d", "\"quoted\"", "back\\slash\\", "two\r\nlines", "日本語"};
  for (const std::string& value : values) ini.Set("Section", "key" + std::to_string(&value - values), value);
  IniText again;
  again.Parse(ini.Write());
  for (const std::string& value : values) {
    const std::string* read = again.Find("Section", "key" + std::to_string(&value - values));
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(*read, value);
  }
}

TEST(IniText, ReadsWhatPeopleWrite) {
  IniText ini;
  ini.Parse(
      "stray = 1\n; comment\n[System]\r\n  DebugMode=True  \nnonsense\n# x\n[Other]\na = \"b\"\n[System]\nlate = 2");
  EXPECT_EQ(*ini.Find("System", "DebugMode"), "True");
  EXPECT_EQ(*ini.Find("System", "late"), "2");
  EXPECT_EQ(*ini.Find("Other", "a"), "b");
  EXPECT_EQ(ini.Find("System", "stray"), nullptr);
  EXPECT_EQ(ini.FindSection("System")->size(), 2U);
}

TEST(IniSettings, KeysKeepTheirOrderAndSections) {
  const TempFolder folder;
  IniSettings store(folder / "deep/Calder.ini");
  EXPECT_FALSE(store.Get("A", "x").has_value());
  EXPECT_TRUE(store.Set("A", "x", "1"));
  EXPECT_TRUE(store.Set("B", "x", "2"));
  EXPECT_TRUE(store.Set("A", "w", "3"));
  EXPECT_TRUE(store.Set("A", "x", "4"));
  const IniSettings other(folder / "deep/Calder.ini");
  EXPECT_EQ(other.All("A"), (std::vector<std::pair<std::string, std::string>>{{"x", "4"}, {"w", "3"}}));
  EXPECT_EQ(other.Get("B", "x"), "2");
}

TEST(IniSettings, AStoreThatCannotBeWrittenSaysSo) {
  IniSettings store("/proc/nowhere/Calder.ini");
  EXPECT_FALSE(store.Set("A", "x", "1"));
  EXPECT_FALSE(store.Get("A", "x").has_value());
}

// Copies of the program write at once: every count arrives, and no section loses a key.
TEST(IniSettings, SeveralProcessesLoseNothing) {
  constexpr int kCopies = 6;
  constexpr int kRounds = 40;
  const TempFolder folder;
  const std::string path = folder / "Calder.ini";
  IniSettings(path).Set("Start", "key", "kept");
  std::vector<pid_t> children;
  for (int copy = 0; copy < kCopies; ++copy) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      IniSettings store(path);
      bool sound = true;
      for (int round = 0; round < kRounds; ++round) {
        store.Update("System", "WinCount", [](const std::optional<std::string>& old) {
          return std::to_string(std::stoi(old.value_or("0")) + 1);
        });
        store.Set("Copy" + std::to_string(copy), "round", std::to_string(round));
        sound = sound && store.Get("Start", "key") == "kept";
      }
      _exit(sound ? 0 : 1);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "a copy saw a torn store";
  }
  const IniSettings store(path);
  EXPECT_EQ(store.Get("System", "WinCount"), std::to_string(kCopies * kRounds));
  for (int copy = 0; copy < kCopies; ++copy)
    EXPECT_EQ(store.Get("Copy" + std::to_string(copy), "round"), std::to_string(kRounds - 1));
}

} // namespace calder::ini_settings_test

// What the program was started with.
#include "app/CommandLine.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace calder {
namespace {

TEST(CommandLine, OptionsAndFiles) {
  using Wish = CommandLine::Wish;
  const std::string here = std::filesystem::current_path().string() + "/";
  std::filesystem::create_directory("command line");
  const std::filesystem::path blank = here + "command line/a b.txt";
  std::fclose(std::fopen(blank.c_str(), "w"));
  const struct {
    std::vector<const char*> arguments;
    Wish wish;
    std::vector<std::string> files;
    const char* wrong = "";
  } rows[] = {{{}, Wish::Open, {}},
              {{"a.wdb", "/b/c.txt"}, Wish::Open, {here + "a.wdb", "/b/c.txt"}},
              {{"--", "-a", "--help"}, Wish::Open, {here + "-a", here + "--help"}},
              {{"-"}, Wish::Open, {here + "-"}},
              {{"file:///a%20b%zz.wdb", "file://host/c", "file:d"}, Wish::Open, {"/a b%zz.wdb", "/c", here + "file:d"}},
              {{"command", "line/a", "b.txt"}, Wish::Open, {blank.string()}},
              {{"a", "--help", "-x"}, Wish::Help, {}},
              {{"-v"}, Wish::Version, {}},
              {{"a", "-platform", "x"}, Wish::WrongUse, {}, "-platform"}};
  for (const auto& row : rows) {
    const CommandLine line = ReadCommandLine(row.arguments);
    EXPECT_EQ(line.wish, row.wish);
    EXPECT_EQ(line.files, row.files);
    EXPECT_EQ(line.wrong, row.wrong);
  }
  std::filesystem::remove_all("command line");
}

} // namespace
} // namespace calder

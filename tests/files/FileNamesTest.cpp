#include "files/FileNames.h"

#include <gtest/gtest.h>

namespace calder {
namespace {

TEST(FileNames, TheExtensionIsEverythingBehindTheFirstDot) {
  const struct {
    const char* path;
    const char* extension;
    bool equal;
  } rows[] = {
      {"DATA.WDB", "wdb", true},          {"/a.b/data.wdb", "wdb", true}, {"C:\\x.y\\data.Txt", "txt", true},
      {"a.b.wdb", "wdb", false},          {"a.b.wdb", "b.wdb", true},     {"noextension", "wdb", false},
      {"/folder.wdb/name", "wdb", false}, {"a.wdbx", "wdb", false},       {"a.", "", true},
  };
  for (const auto& row : rows) EXPECT_EQ(Is_FileExt(row.path, row.extension), row.equal) << row.path;
}

TEST(FileNames, DialogsOfferTheRememberedName) {
  const auto open = [](const char* name) { return Set_DialogFile(name, "wdb", "/docs"); };
  EXPECT_EQ(open("Untitled").fileName, "/docs/Untitled");
  EXPECT_EQ(open("Untitled").defaultExt, "wdb");
  EXPECT_EQ(open("/w/a.wdb").fileName, "/w/a");
  EXPECT_EQ(open("/w/a.txt").defaultExt, "txt");
  EXPECT_EQ(open("/w/longname").fileName, "/w/longname");
  EXPECT_EQ(open("").fileName, "");
  EXPECT_EQ(WaveSaveName("/w/w1.wdb", "txt", "/docs").fileName, "/w/w1.txt");
  EXPECT_EQ(WaveSaveName("Untitled", "wdb", "/docs").fileName, "/docs/Untitled");
  EXPECT_EQ(WaveSaveName("/w/w1", "wdb", "/docs").fileName, "/w/w1");
  EXPECT_EQ(WithoutExtension("/w/w1.wdb"), "/w/w1");
  EXPECT_EQ(WithoutExtension("ab"), "");
}

} // namespace
} // namespace calder

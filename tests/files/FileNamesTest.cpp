#include "files/FileNames.h"
#include "Testing.h"

namespace calder::file_names_test {

TEST(FileNames, TheExtensionIsEverythingBehindTheFirstDot) {
  using Row = std::tuple<const char*, const char*, bool>;
  for (const auto& [path, extension, equal] :
       {Row{"DATA.WDB", "wdb", true}, Row{"/a.b/data.wdb", "wdb", true}, Row{"C:\\x.y\\data.Txt", "txt", true},
        Row{"a.b.wdb", "wdb", false}, Row{"a.b.wdb", "b.wdb", true}, Row{"noextension", "wdb", false},
        Row{"/folder.wdb/name", "wdb", false}, Row{"a.wdbx", "wdb", false}, Row{"a.", "", true}})
    EXPECT_EQ(Is_FileExt(path, extension), equal) << path;
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

} // namespace calder::file_names_test

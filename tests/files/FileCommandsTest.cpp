#include "files/FileCommands.h"
#include "editor/EditorFixture.h"
#include "platform/TempFolder.h"

namespace calder {
namespace {

struct FileCommandsTest : EditorFixture {
  void SetUp() override { Begin(); }
  TempFolder folder;
  [[nodiscard]] FileCommands& Files() { return editor->fileCommands; }
};

TEST_F(FileCommandsTest, CancellingEndsEveryCommandSilently) {
  for (const int kind : {0, 2, 4, 5, 6, 99}) {
    desktop.dialogs.Cancel();
    Files().Open_File(kind);
    desktop.dialogs.Cancel();
    Files().Save_File(kind, false);
  }
  EXPECT_EQ(program->names.CurrentWaveFile, "Untitled");
  EXPECT_FALSE(editor->commands.CanUndo());
}

// Each kind accepts its own extensions and says what it says about others; a reader's failure is told with the path.
TEST_F(FileCommandsTest, EveryKindIsDispatchedByItsExtension) {
  std::string called;
  std::int32_t result = 0;
  FormatHandlers handlers;
  const auto plain = [&](const char* name) {
    return [&called, name](const std::string& path) { called = name + path; };
  };
  const auto status = [&](const char* name) {
    return [&called, &result, name](const std::string& path) {
      called = name + path;
      return result;
    };
  };
  handlers.readList = plain("read list ");
  handlers.writeList = plain("write list ");
  handlers.readTable = plain("read table ");
  handlers.writeTable = plain("write table ");
  handlers.readPwf = status("read pwf ");
  handlers.writePwf = status("write pwf ");
  handlers.readSystem = status("read system ");
  handlers.writeSystem = status("write system ");
  Files().SetHandlers(handlers);
  const struct {
    bool open;
    int kind;
    const char* path;
    const char* called;
    const char* message;
    std::int32_t result;
  } rows[] = {
      {true, Kind_List, "/a.wfn", "read list /a.wfn", nullptr, 0},
      {true, Kind_List, "/a.txt", "", nullptr, 0},
      {false, Kind_List, "/a.WFN", "write list /a.WFN", nullptr, 0},
      {false, Kind_List, "/a.txt", "", "Invalid filename.", 0},
      {true, Kind_Table, "/a.csv", "read table /a.csv", nullptr, 0},
      {true, Kind_Table, "/table.txt", "", "Invalid file extension.", 0},
      {false, Kind_Table, "/a.tsv", "write table /a.tsv", nullptr, 0},
      {false, Kind_Table, "/a.txt", "", "Invalid filename.", 0},
      {true, Kind_Pwf, "/a.pwf", "read pwf /a.pwf", nullptr, 0},
      {true, Kind_Pwf, "/a.pwf", "read pwf /a.pwf", "[/a.pwf] File Read error.", 71},
      {true, Kind_Pwf, "/a.txt", "", "Invalid filename.", 0},
      {false, Kind_Pwf, "/a.pwf", "write pwf /a.pwf", "[/a.pwf] File Write error.", 72},
      {true, Kind_System, "/a.ocb", "read system /a.ocb", "[/a.ocb] File Read error.", 71},
      {true, Kind_System, "/a.xyz", "", nullptr, 0},
      {false, Kind_System, "/a.ocb", "write system /a.ocb", nullptr, 0},
      {false, Kind_System, "/a.ocb", "write system /a.ocb", "[/a.ocb] File Write error.", 72},
  };
  for (const auto& row : rows) {
    called.clear();
    result = row.result;
    desktop.dialogs.Answer(row.path);
    if (row.message != nullptr) desktop.boxes.Expect(row.message);
    if (row.open)
      Files().Open_File(row.kind);
    else
      Files().Save_File(row.kind, false);
    EXPECT_EQ(called, row.called) << row.kind << row.path;
  }
  EXPECT_EQ(program->names.LastListFile, "/a.WFN") << "only saving remembers a list";
  EXPECT_EQ(program->names.LastTableFile, "/a.tsv");
  EXPECT_EQ(program->names.LastPwfFile, "");
  EXPECT_EQ(program->names.LastSystemFile, "/a.ocb");
}

TEST_F(FileCommandsTest, TheWaveDialogOffersTheFormOfTheCurrentName) {
  program->names.CurrentWaveFile = "/w/a.txt";
  desktop.dialogs.Cancel();
  Files().Open_File(Kind_Wave);
  EXPECT_EQ(desktop.dialogs.last.filterIndex, 2);
  EXPECT_EQ(desktop.dialogs.last.fileName, "/w/a");
  program->names.CurrentWaveFile = "/w/a.wdb";
  desktop.dialogs.Cancel();
  Files().Save_File(Kind_Wave, true);
  EXPECT_EQ(desktop.dialogs.last.fileName, "/w/a.txt");
  EXPECT_EQ(desktop.dialogs.last.filter, "Text files(*.txt)|*.txt");
}

TEST_F(FileCommandsTest, SaveWritesTheCurrentNameWithoutADialogAndUntitledWithOne) {
  desktop.dialogs.Answer(folder / "new.wdb");
  editor->Do(Command::FileSave);
  EXPECT_EQ(editor->Title(), "Orvo Calder for XG5530/31 <" + (folder / "new.wdb") + ">");
  std::filesystem::remove(folder / "new.wdb");
  editor->Do(Command::FileSave);
  EXPECT_TRUE(std::filesystem::exists(folder / "new.wdb"));
  EXPECT_EQ(desktop.settings.Get("Files", "LastFolder"), folder.Path().string());
  program->names.CurrentWaveFile = folder / "data.dat";
  desktop.boxes.Expect("Invalid file extension.");
  editor->Do(Command::FileSave);
}

} // namespace
} // namespace calder

#include "files/FileCommands.h"
#include "editor/EditorFixture.h"
#include "platform/TempFolder.h"

#include <gmock/gmock.h>

namespace calder::file_commands_test {

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
  EXPECT_EQ(Texts(program->names.CurrentWaveFile, editor->commands.CanUndo()), "Untitled false");
}

// Each kind accepts its own extensions and says what it says about others; a reader's failure is reported with the
// path.
TEST_F(FileCommandsTest, EveryKindIsDispatchedByItsExtension) {
  std::string called;
  std::int32_t result = 0;
  const auto noting = [&](const char* name) {
    return [&called, &result, name](const std::string& path) {
      called = name + path;
      return result;
    };
  };
  Files().SetFormat(Kind_List, {noting("read list "), noting("write list ")});
  Files().SetFormat(Kind_Table, {noting("read table "), noting("write table ")});
  Files().SetFormat(Kind_Pwf, {noting("read pwf "), noting("write pwf ")});
  Files().SetFormat(Kind_System, {noting("read system "), noting("write system ")});
  Files().SetFormat(Kind_Import, {noting("import"), {}});
  const struct {
    bool open;
    int kind;
    const char* path;
    const char* called;
    const char* message;
    std::int32_t result;
    const char* list = "Untitled"; // the remembered names afterwards
    const char* table = "Untitled";
    const char* pwf = "";
    const char* system = "Untitled";
  } rows[] = {{true, Kind_List, "/a.wfn", "read list /a.wfn", nullptr, 0},
              {true, Kind_List, "/a.txt", "", nullptr, 0},
              {false, Kind_List, "/a.WFN", "write list /a.WFN", nullptr, 0, "/a.WFN"},
              {false, Kind_List, "/a.wfn", "write list /a.wfn", nullptr, 72, "/a.wfn"},
              {false, Kind_List, "/a.txt", "", "Invalid filename.", 0},
              {true, Kind_Table, "/a.csv", "read table /a.csv", nullptr, 71, "Untitled", "/a.csv"},
              {true, Kind_Table, "/table.txt", "", "Invalid file extension.", 0},
              {true, Kind_Table, "", "", nullptr, 0},
              {false, Kind_Table, "/a.tsv", "write table /a.tsv", nullptr, 72, "Untitled", "/a.tsv"},
              {false, Kind_Table, "/a.pr", "", "Invalid filename.", 0},
              {true, Kind_Pwf, "/a.pwf", "read pwf /a.pwf", nullptr, 0},
              {true, Kind_Pwf, "/a.pwf", "read pwf /a.pwf", "[/a.pwf] File Read error.", 71},
              {true, Kind_Pwf, "/a.txt", "", "Invalid filename.", 0},
              {false, Kind_Pwf, "/a.pwf", "write pwf /a.pwf", nullptr, 0, "Untitled", "Untitled", "/a.pwf"},
              {false, Kind_Pwf, "/a.pwf", "write pwf /a.pwf", "[/a.pwf] File Write error.", 72},
              {true, Kind_System, "/a.ocb", "read system /a.ocb", nullptr, 0, "Untitled", "Untitled", "", "/a.ocb"},
              {true, Kind_System, "/a.ocb", "read system /a.ocb", "[/a.ocb] File Read error.", 71},
              {true, Kind_System, "/a.xyz", "", nullptr, 0},
              {false, Kind_System, "/a.ocb", "write system /a.ocb", nullptr, 0, "Untitled", "Untitled", "", "/a.ocb"},
              {false, Kind_System, "/a.ocb", "write system /a.ocb", "[/a.ocb] File Write error.", 72},
              {false, Kind_System, "/a.wdb", "", "Invalid filename.", 0}};
  for (const auto& row : rows) {
    program->names = {};
    called.clear();
    result = row.result;
    desktop.dialogs.Answer(row.path);
    if (row.message != nullptr) desktop.boxes.Expect(row.message);
    const bool done = row.open ? Files().Open_File(row.kind) : Files().Save_File(row.kind, false);
    EXPECT_EQ(called, row.called) << row.kind << row.path;
    EXPECT_EQ(desktop.dialogs.last.fileName, row.kind == Kind_Pwf ? "" : "/documents/Untitled") << row.kind;
    EXPECT_EQ(done, *row.called != 0 && row.result == 0) << row.kind << row.path;
    const RememberedNames& names = program->names;
    EXPECT_THAT((std::array{names.LastListFile, names.LastTableFile, names.LastPwfFile, names.LastSystemFile}),
                testing::ElementsAre(row.list, row.table, row.pwf, row.system))
        << row.open << row.kind << row.path;
  }
  result = 0;
  EXPECT_TRUE(Files().Open_File(Kind_Import)) << "it has a dialog of its own";
  EXPECT_EQ(called, "import");
}

TEST_F(FileCommandsTest, TheWaveDialogOffersTheFormOfTheCurrentName) {
  program->names.CurrentWaveFile = "/w/a.txt";
  desktop.dialogs.Cancel();
  Files().Open_File(Kind_Wave);
  EXPECT_EQ(Texts(desktop.dialogs.last.filterIndex, desktop.dialogs.last.fileName), "2 /w/a");
  program->names.CurrentWaveFile = "/w/a.wdb";
  desktop.dialogs.Cancel();
  Files().Save_File(Kind_Wave, true);
  EXPECT_EQ(Texts(desktop.dialogs.last.fileName, desktop.dialogs.last.filter), "/w/a.txt Text files(*.txt)|*.txt");
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

} // namespace calder::file_commands_test

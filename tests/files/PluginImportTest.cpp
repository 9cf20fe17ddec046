#include "files/PluginImport.h"
#include "editor/EditorFixture.h"
#include "plugins/PluginFolder.h"

#include <gmock/gmock.h>

#include <thread>

namespace calder {
namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;

struct Port final : ImportPort {
  void Begin(Running given) override {
    EXPECT_FALSE(running) << "begun twice";
    running = std::move(given);
  }
  void KeepAlive() override {
    ++looks;
    ASSERT_TRUE(running) << "the user could interfere";
    progress.push_back(running->progress());
    if (cancelAtLook == looks) running->cancel();
  }
  void Finished() override { running.reset(); }
  bool AskOptions(const std::string& name, PluginForm& form, const PluginSp::ChangeOption& change,
                  const std::function<void()>& /*stop*/) override {
    EXPECT_FALSE(running) << "the user could not answer";
    asked.push_back(name);
    return !answer || answer(form, change);
  }
  void ShowReport(const std::string& report) override { reports.push_back(report); }

  std::optional<Running> running;
  int looks = 0;
  int cancelAtLook = 0;
  std::vector<double> progress;
  std::function<bool(PluginForm&, const PluginSp::ChangeOption&)> answer;
  std::vector<std::string> asked;
  std::vector<std::string> reports;
};

struct PluginImportTest : EditorFixture {
  void Begin(const std::vector<std::string>& plugins, std::int32_t memorySize = 2000) {
    for (const std::string& name : plugins) folder.Add(name);
    desktop.folders.plugins = folder.Folders();
    desktop.folders.modules = {CALDER_MODULES};
    EditorFixture::Begin();
    program->settings.MemorySize = memorySize;
    program->names.CurrentWaveFile = "/before.wdb";
    Ramp();
    for (std::int16_t& code : W_Lock(program->buffers.Current())) code = static_cast<std::int16_t>(-1 - code);
    import.emplace(program->desktop, program->messages, program->buffers, program->settings, program->names, port,
                   PluginImport::Hooks{[this](const std::string& path) { imported.push_back(path);
  }
  , [this](const std::string& text) { notes.push_back(text); }},
                   PluginLimits{milliseconds(1200), milliseconds(1200)});
} // namespace
std::int32_t Import(const std::string& points, int filterIndex = 1) {
  PutFile(folder.folder / "data.num", points);
  desktop.dialogs.Answer(folder.folder / "data.num", filterIndex);
  return import->Import_Plugin(desktop.dialogs);
}
[[nodiscard]] std::vector<std::int16_t> Codes() const {
  const auto codes = W_Lock(program->buffers.Current());
  return {codes.begin(), codes.end()};
}
[[nodiscard]] bool Untouched() {
  return Code(0) == -1 && Code(1999) == -2000;
}

PluginFolder folder{{}};
Port port;
std::vector<std::string> imported;
std::vector<std::string> notes;
std::optional<PluginImport> import;
}; // namespace calder

TEST_F(PluginImportTest, TheDialogOffersWhatThePluginsSayOfThemselves) {
  desktop.language.id = SystemLanguage::kJapanese;
  Begin({"works", "options"});
  desktop.dialogs.Cancel();
  EXPECT_EQ(import->Import_Plugin(desktop.dialogs), -1);
  EXPECT_EQ(desktop.dialogs.last.filter, "試験 用 |*.num|試験 用 |*.num|");
  EXPECT_EQ(desktop.dialogs.last.title, "インポート");
  EXPECT_EQ(desktop.dialogs.last.filterIndex, 0);
  for (const int entry : {2, 1, 2}) EXPECT_EQ(Import("10", entry), 0);
  EXPECT_THAT(port.asked, ElementsAre("試験 用")) << "the first entry is the plug-in with options";
}

// Those that cannot be used are left out; what is known of the others is not asked again.
TEST_F(PluginImportTest, APluginThatFailsToSayWhatItIsIsLeftOut) {
  Begin({"crash-entry", "hang-entry", "many-programs", "other-program", "works", "wrong-version"});
  PutFile(folder.folder / "text.so", "no shared object");
  for (const auto longest : {milliseconds(60000), milliseconds(1100)}) {
    desktop.dialogs.Cancel();
    const auto began = std::chrono::steady_clock::now();
    EXPECT_EQ(import->Import_Plugin(desktop.dialogs), -1);
    EXPECT_LT(std::chrono::steady_clock::now() - began, longest) << "the one that hangs was asked again";
    EXPECT_EQ(desktop.dialogs.last.filter, "many-programs |*.num|works |*.num|");
  }
  folder.Clear();
  desktop.boxes.Expect("There is no plug-in DLL file.\r");
  EXPECT_EQ(import->Import_Plugin(desktop.dialogs), -1);
  EXPECT_TRUE(Untouched());
}

TEST_F(PluginImportTest, PointsReplaceTheBeginningOrAreThinned) {
  const struct {
    const char* plugin;
    const char* points;
    std::int32_t memorySize;
    std::vector<std::int16_t> begin; // of the waveform
    std::int32_t at;                 // and a point,
    std::int32_t code;               // what it holds,
    std::int32_t next;               // and the one after it
    const char* note;
  } rows[] = {
      {"works", "1200", 2000, {0, 1, 2}, 1199, 1199, -1201, "Imported 1200 points; Undo"},
      // Whole parts of index * 1000 / 1200: 0, 0, 1, 2, 3, 4, 5.
      {"works", "1200", 1000, {0, 2, 3, 4, 5, 6, 8}, 999, 1199, 0, "Imported 1000 of 1200 points; Undo"},
      {"works", "524289", 524288, {0, 2, 3}, 524287, 524288 % 30000, -1, "Imported 524288 of 524289 points; Undo"},
      {"works", "500", 500, {0, 1, 2}, 499, 499, -501, "Imported 500 points; Undo"},
      {"works", "1", 2000, {0, -2, -3}, 0, 0, -2, "Imported 1 points; Undo"},
      {"none", "7", 2000, {-1, -2, -3}, 1999, -2000, -2001, "Imported 0 points; Undo"},
      {"offset", "600", 2000, {3, 4, 5}, 599, 602, -601, "Imported 600 points; Undo"},
      {"slow-open", "600", 2000, {0, 1, 2}, 599, 599, -601, "Imported 600 points; Undo"},
      {"crash-report", "600", 2000, {0, 1, 2}, 599, 599, -601, "Imported 600 points; Undo"},
      {"crash-close", "600", 2000, {0, 1, 2}, 599, 599, -601, "Imported 600 points; Undo"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.plugin) + " " + row.note);
    Begin({row.plugin}, row.memorySize);
    EXPECT_EQ(Import(row.points), 0);
    const auto codes = Codes();
    EXPECT_EQ(std::vector(codes.begin(), codes.begin() + static_cast<std::ptrdiff_t>(row.begin.size())), row.begin);
    EXPECT_EQ(codes[static_cast<std::size_t>(row.at)], row.code);
    const bool last = row.at == W_MAX_POINTS - 1;
    EXPECT_EQ(last ? row.next : codes[static_cast<std::size_t>(row.at) + 1], row.next);
    EXPECT_EQ(program->names.CurrentWaveFile, "Untitled");
    ASSERT_EQ(notes.size(), 1U);
    EXPECT_TRUE(notes.back().starts_with(row.note)) << notes.back();
    notes.clear();
    EXPECT_TRUE(program->buffers.UndoDisabled()) << "no undo step of its own";
    folder.Clear();
  }
  EXPECT_EQ(imported.size(), std::size(rows));
}

// Each costs message 241 with its reason, and nothing else.
TEST_F(PluginImportTest, ABadPluginCostsAnErrorLine) {
  const struct {
    const char* plugin;
    const char* message;
  } rows[] = {
      {"refuse-open", "Invalid file format.\rIt does not please the plug-in."},
      {"crash-open", "Invalid file format.\rThe plug-in crashed (signal 6)."},
      {"hang-open", "Invalid file format.\rThe plug-in did not answer for 2 s."},
#ifndef CALDER_SANITIZED
      {"hog-open", "Invalid file format.\rno memory"},
#endif
      {"crash-options", "crashed"},
      {"crash-set", "crashed"},
      {"crash-start", "crashed"},
      {"negative", "Invalid file format.\rThe plug-in gave a negative number of points: -1200"},
      {"past-end", "Invalid file format.\rThe data would begin beyond the end of the file: byte 1000000"},
      {"crash-seek", "crashed"},
      {"refuse-read", "It does not please"},
      {"crash-read", "crashed"},
      {"hang-read", "did not answer"},
      {"exit-read", "The plug-in's process ended (status 3)."},
      {"one-short", "The plug-in gave 199 points for a block of 200."},
      {"one-too-many", "The plug-in gave 201 points for a block of 200."},
      {"negative-block", "The plug-in gave -500 points for a block of 200."},
      {"endless", "The plug-in gave 500 points for a block of 200."},
  };
  port.answer = [](PluginForm& form, const PluginSp::ChangeOption& change) {
    change("step", 2, form);
    return true;
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.plugin);
    Begin({row.plugin});
    desktop.boxes.Expect(row.message);
    EXPECT_EQ(Import("1200"), -1);
    EXPECT_TRUE(Untouched());
    EXPECT_FALSE(port.running) << "the user stays locked out";
    folder.Clear();
  }
  // A number of points that ends with a block hides nothing either.
  Begin({"endless"});
  desktop.boxes.Expect("The plug-in gave more points than it had announced.");
  EXPECT_EQ(Import("1000"), -1);
  EXPECT_EQ(program->names.CurrentWaveFile, "/before.wdb");
  EXPECT_THAT(notes, ElementsAre());
}

TEST_F(PluginImportTest, ACancelEndsTheImportWithoutAWord) {
  Begin({"hang-open", "long"});
  port.cancelAtLook = 3;
  EXPECT_EQ(Import("1", 2), -1);
  EXPECT_EQ(port.looks, 3);
  EXPECT_GT(port.progress[1], 0);
  EXPECT_LT(port.progress[1], 0.001);
  std::jthread user;
  desktop.worker.onRun = [&](Worker::Meanwhile meanwhile) {
    if (meanwhile == Worker::Meanwhile::Everything)
      user = std::jthread([this] {
        std::this_thread::sleep_for(milliseconds(30));
        import->Cancel();
      });
  };
  const auto began = std::chrono::steady_clock::now();
  EXPECT_EQ(Import("1", 1), -1);
  EXPECT_LT(std::chrono::steady_clock::now() - began, milliseconds(1100)) << "before the time limit";
  EXPECT_TRUE(Untouched());
}

TEST_F(PluginImportTest, SettingsAreAskedAndReportsShown) {
  Begin({"options"});
  port.answer = [](PluginForm& form, const PluginSp::ChangeOption& change) {
    EXPECT_EQ(form.preview, "narrow");
    EXPECT_EQ(form.options.at(0).maximum, 9);
    EXPECT_EQ(form.options.at(1).kind, PluginOption::Kind::Truth);
    EXPECT_TRUE(change("step", 3, form));
    EXPECT_EQ(form.preview, "wide");
    EXPECT_EQ(form.options.at(0).value, 3);
    return true;
  };
  EXPECT_EQ(Import("4"), 0);
  EXPECT_EQ(Code(2), 6);
  EXPECT_THAT(port.reports, ElementsAre("said at the end"));
  port.answer = [](PluginForm&, const PluginSp::ChangeOption&) { return false; };
  EXPECT_EQ(Import("2"), -1) << "cancelled there";
  EXPECT_EQ(Code(2), 6);
}

} // namespace
} // namespace calder

// A desktop for tests: scripted answers, settings and clipboard in memory, time that does not pass.
//
// An unscripted question fails the test, and so does an answer that nobody asked for.
#pragma once

#include "MemoryClipboard.h"
#include "Testing.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/FileDialogs.h"
#include "platform/MessageBoxes.h"
#include "platform/SettingsStore.h"
#include "platform/Worker.h"
#include "platform/posix/DlBusLibraries.h"

#include <deque>
#include <memory>

namespace calder::fake {

// A folder that cannot be there, nor be made by whoever runs the tests: a file has its name.
inline constexpr const char* kNowhere = CALDER_SOURCE_DIR "/README.md";

struct ShownBox {
  std::string title;
  std::string text;
  BoxButtons buttons = BoxButtons::Ok;
  BoxIcon icon = BoxIcon::None;
};

class Boxes final : public MessageBoxes {
public:
  ~Boxes() override {
    EXPECT_TRUE(expected.empty()) << "a message that was expected never came: " << expected.front().first;
  }

  // The next box must contain that text; it is answered so.
  void Expect(const std::string& part, BoxAnswer answer = BoxAnswer::Ok) { expected.emplace_back(part, answer); }

  BoxAnswer Show(const std::string& title, const std::string& text, BoxButtons buttons, BoxIcon icon) override {
    shown.push_back({title, text, buttons, icon});
    if (onShow) onShow();
    if (expected.empty() && acceptAll) return BoxAnswer::Ok;
    if (expected.empty()) {
      ADD_FAILURE() << "unexpected message: " << title << ": " << text;
      return BoxAnswer::No;
    }
    const auto [part, answer] = expected.front();
    expected.pop_front();
    EXPECT_NE(text.find(part), std::string::npos) << "message was: " << text << "\nexpected: " << part;
    return answer;
  }

  std::string Input(const std::string&, const std::string& prompt) override {
    prompts.push_back(prompt);
    return input;
  }

  std::function<void()> onShow;
  bool acceptAll = false; // what comes is recorded and answered with OK
  std::string input;      // what the user types when asked
  std::vector<std::string> prompts;
  std::deque<std::pair<std::string, BoxAnswer>> expected;
  std::vector<ShownBox> shown;
};

class Dialogs final : public FileDialogs {
public:
  ~Dialogs() override { EXPECT_TRUE(answers.empty()) << "a file dialog that was expected never came"; }

  void Answer(const std::string& path, int filterIndex = 1) { answers.push_back(FileDialogAnswer{path, filterIndex}); }
  void Cancel() { answers.emplace_back(std::nullopt); }

  std::optional<FileDialogAnswer> Open(const FileDialogRequest& request) override { return Next(request); }
  std::optional<FileDialogAnswer> Save(const FileDialogRequest& request) override { return Next(request); }

  std::deque<std::optional<FileDialogAnswer>> answers;
  FileDialogRequest last;

private:
  std::optional<FileDialogAnswer> Next(const FileDialogRequest& request) {
    last = request;
    if (answers.empty()) {
      ADD_FAILURE() << "unexpected file dialog: " << request.filter;
      return std::nullopt;
    }
    auto answer = answers.front();
    answers.pop_front();
    return answer;
  }
};

class Settings final : public SettingsStore {
public:
  [[nodiscard]] std::optional<std::string> Get(const std::string& section, const std::string& key) const override {
    for (const auto& [name, value] : All(section)) {
      if (name == key) return value;
    }
    return std::nullopt;
  }
  bool Set(const std::string& section, const std::string& key, const std::string& value) override {
    for (auto& [name, old] : sections[section]) {
      if (name != key) continue;
      old = value;
      return true;
    }
    sections[section].emplace_back(key, value);
    return true;
  }
  bool Update(const std::string& section, const std::string& key, const Change& change) override {
    return Set(section, key, change(Get(section, key)));
  }
  [[nodiscard]] std::vector<std::pair<std::string, std::string>> All(const std::string& section) const override {
    const auto found = sections.find(section);
    return found == sections.end() ? std::vector<std::pair<std::string, std::string>>{} : found->second;
  }

  std::map<std::string, std::vector<std::pair<std::string, std::string>>> sections;
};

class VirtualClock final : public Clock {
public:
  [[nodiscard]] double SecondsOfDay() const override { return seconds; }
  void Wait(double wait, bool processEvents) override {
    seconds += wait;
    if (processEvents && onWait) onWait();
  }

  std::function<void()> onWait; // what happens meanwhile
  double seconds = 0;
};

class Windows final : public WindowList {
public:
  [[nodiscard]] std::vector<std::string> Captions() const override { return captions; }
  std::vector<std::string> captions;
};

class Copies final : public Instances {
public:
  [[nodiscard]] bool OthersRunning() const override { return others; }
  void StartupFinished() override {}
  bool StartCopy(const std::string& file) override {
    files.push_back(file);
    ++started;
    return canStart;
  }
  bool others = false;
  int started = 0;
  std::vector<std::string> files; // that they were started with
  bool canStart = true;
};

class LanguageNo final : public SystemLanguage {
public:
  [[nodiscard]] int DefaultLangID() const override { return id; }
  int id = kEnglish;
};

// The bus libraries of a folder, or none at all: a library that the process has loaded once is found by its name alone.
class Libraries final : public BusLibraries {
public:
  void Offer(std::span<const char* const> names,
             const std::function<bool(std::unique_ptr<BusLibrary>)>& take) override {
    if (folder.empty()) return;
    DlBusLibraries(folder).Offer(names, [&](std::unique_ptr<BusLibrary> library) {
      return take(std::make_unique<Lacking>(std::move(library), lacks));
    });
  }
  std::string folder;
  std::string lacks; // an entry point that no library has

private:
  struct Lacking final : BusLibrary {
    Lacking(std::unique_ptr<BusLibrary> inner, std::string name)
        : library(std::move(inner)), missing(std::move(name)) {}
    [[nodiscard]] void* Entry(const char* name) const override {
      return name == missing ? nullptr : library->Entry(name);
    }
    std::unique_ptr<BusLibrary> library;
    std::string missing;
  };
};

class InlineWorker final : public Worker {
public:
  void Run(const std::function<void()>& work, Meanwhile meanwhile) override {
    if (onRun) onRun(meanwhile);
    work();
  }
  std::function<void(Meanwhile)> onRun; // what happens meanwhile
};

struct FakeDesktop {
  Boxes boxes;
  Dialogs dialogs;
  Settings settings;
  VirtualClock clock;
  MemoryClipboard clipboard;
  Windows windows;
  Copies copies;
  LanguageNo language;
  Libraries libraries;
  InlineWorker worker;
  ProgramFolders folders{{CALDER_SOURCE_DIR, CALDER_SOURCE_DIR "/data"}, kNowhere, "/documents", ""};

  [[nodiscard]] Desktop Services() {
    return {boxes, dialogs, settings, clock, clipboard, windows, copies, language, libraries, worker, folders, {}};
  }
};

} // namespace calder::fake

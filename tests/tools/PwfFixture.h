// The parameter-variable dialog's behaviour on a whole editor, with a form that writes down what it is asked.
#pragma once

#include "RecordingHost.h"
#include "editor/EditorFixture.h"
#include "platform/TempFolder.h"
#include "tools/pwf/PwfDesk.h"

namespace calder {

struct RecordingPwfPort final : PwfPort {
  void ShowList() override { ++lists; }
  void ShowFunction() override {}
  void ShowParameters() override {}
  void ShowPreview() override { ++previews; }
  void GoToBox(int j) override { box = j; }
  void SetBusy(bool nowBusy) override { busy += nowBusy ? 1 : -1; }
  void ShowFault(const ExpressionFault& shown) override { fault = shown; }
  void Close() override { ++closes; }

  int lists = 0;
  int previews = 0;
  int box = -1;
  int busy = 0;
  int closes = 0;
  ExpressionFault fault;
};

struct PwfFixture : EditorFixture {
  void SetUp() override {
    desktop.folders.read.insert(desktop.folders.read.begin(), folder.Path().string());
    Begin();
    program->settings.MemorySize = 1000;
    program->settings.XUnit = program->settings.YUnit = kXUser;
    desk.emplace(*program, editor->setup, editor->fileCommands, host, [this] { return area; });
    desk->SetPort(&pwfPort);
  }
  void TearDown() override { EXPECT_EQ(pwfPort.busy, 0) << "the hourglass stayed"; }

  // Opens with these definitions after a sound header of four lines.
  void Open(const std::string& definitions) {
    PutFile(folder / kPwfDefinitions, "PWF test\r\nVER=1\r\nNUM=2\r\n[definition]\r\n" + definitions);
    desk->Form_Load();
  }
  [[nodiscard]] std::int32_t Generated(int point) {
    return W_GetWaveData(program->buffers.Create(), point, PwfDesk::kPreviewPoints);
  }

  TempFolder folder;
  RecordingHost host;
  RecordingPwfPort pwfPort;
  Scope area;
  std::optional<PwfDesk> desk;
};

} // namespace calder

// The Create dialog's behaviour on a whole editor, with a form that writes down what it is asked.
#pragma once

#include "RecordingHost.h"
#include "editor/EditorFixture.h"
#include "tools/create/CreatePages.h"

namespace calder {

struct RecordingCreatePort final : CreatePort {
  explicit RecordingCreatePort(const Program& state) : program(state) {}
  void ShowPage() override {
    EXPECT_TRUE(program.formSetup) << "the form's handlers would react to being filled";
    ++pages;
  }
  void ShowPreview() override { ++previews; }
  void ShowOperand() override { ++operands; }
  void SetBusy(bool nowBusy) override { busy += nowBusy ? 1 : -1; }
  void ShowFault(const ExpressionFault& shown) override { fault = shown; }
  void Close() override { ++closes; }

  const Program& program;
  int pages = 0;
  int previews = 0;
  int operands = 0;
  int busy = 0;
  int closes = 0;
  std::optional<ExpressionFault> fault;
};

struct CreateFixture : EditorFixture {
  static constexpr double kSize = 1000;

  void SetUp() override {
    Begin();
    SetPoints();
    program->settings.MemorySize = static_cast<std::int32_t>(kSize);
    createPort.emplace(*program);
    create.emplace(*program, editor->setup, editor->fileCommands, host, [this] { return random; });
    create->SetPort(&*createPort);
    program->buffers.CurrentScope() = {100, 200};
  }
  void TearDown() override { EXPECT_EQ(createPort->busy, 0) << "the hourglass stayed"; }

  [[nodiscard]] CreatePage& Page(int page) { return program->pages[page]; }
  // Opens with page 1 as an expression page over that area.
  void OpenExpression(double start, double end, const std::string& expression, const std::string& constants = "") {
    Page(1).SetArea(start, end);
    Page(1).Valid = kPageTrue;
    Page(1).Function = kFunctionExpression;
    Page(1).Expression = expression;
    Page(1).Constants = constants;
    create->PrepareCreate();
  }
  [[nodiscard]] std::int32_t Generated(double point) {
    return W_GetWaveData(program->buffers.Create(), point, program->settings.MemorySize);
  }

  double random = 0.5;
  RecordingHost host;
  std::optional<RecordingCreatePort> createPort;
  std::optional<CreatePages> create;
};

} // namespace calder

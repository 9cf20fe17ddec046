// A whole editor without its window, on the real model database and a desktop of the test's own.
#pragma once

#include "FakeDesktop.h"
#include "editor/Editor.h"

namespace calder {

// In texts and messages of tests.
inline std::ostream& operator<<(std::ostream& text, const Scope& scope) {
  return text << scope.Start << ".." << scope.End;
}

struct RecordingPort final : EditorPort {
  void Show(Changes changes) override { shown.push_back(changes); }
  std::vector<Changes> shown;
};

struct EditorFixture : testing::Test {
  // Both may be set up before Begin.
  fake::FakeDesktop desktop;
  RecordingPort port;
  std::optional<Program> program;
  std::optional<Editor> editor;

  // A second call starts anew.
  void Begin() {
    editor.reset();
    program.emplace(desktop.Services());
    editor.emplace(*program);
    ASSERT_TRUE(editor->Start());
    editor->SetPort(&port);
  }
  void SetPoints() { program->settings.XUnit = program->settings.YUnit = 0; }
  [[nodiscard]] std::int32_t Code(double point) {
    return W_GetWaveData(program->buffers.Current(), point, program->settings.MemorySize);
  }
  // Point i holds i modulo 30000.
  void Ramp() {
    const auto points = W_Lock(program->buffers.Current());
    for (std::size_t i = 0; i < points.size(); ++i) points[i] = static_cast<std::int16_t>(i % 30000);
  }
};

} // namespace calder

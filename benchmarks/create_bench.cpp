// One change of a parameter on a page of 524288 points, generated and drawn in the preview, beside generating and
// drawing alone.
#include "FakeDesktop.h"
#include "FigureTable.h"
#include "editor/Editor.h"
#include "platform/PixelContext.h"
#include "tools/create/CreatePages.h"

#include <cstdlib>

namespace calder {
namespace {

constexpr int kWidth = 560;
constexpr int kHeight = 400;
constexpr double kFrame = 16000; // microseconds

struct Preview final : CreatePort {
  void ShowPage() override {}
  void ShowPreview() override {
    pages->Draw_Wave_Create(context);
    ++drawn;
  }
  void ShowOperand() override {}
  void SetBusy(bool) override {}
  void ShowFault(const ExpressionFault&) override {}
  void Close() override {}

  CreatePages* pages = nullptr;
  std::vector<std::uint32_t> pixels = std::vector<std::uint32_t>(kWidth * kHeight);
  PixelContext context{pixels, kWidth, kWidth, kHeight};
  int drawn = 0;
};

void Rows(FigureTable& table, CreatePages& pages, Preview& preview, WaveHandle buffer) {
  const struct {
    const char* figure;
    int function;
  } rows[] = {{"a phase typed on a page of a sine / generating and drawing", 0},
              {"a phase typed on a page of a triangle / the same", 1},
              {"a phase typed on a page of a square / the same", 2}};
  for (const auto& row : rows) {
    pages.Comb_Wave_Click(row.function);
    int turn = 0;
    const auto change = [&] {
      const int before = preview.drawn;
      pages.Text_LostFocus(kBoxPhase, std::to_string(++turn % 300 + 1));
      if (preview.drawn == before) std::abort();
    };
    table.Row(row.figure, 2, 60, change, [&] {
      constexpr double n = W_MAX_POINTS;
      const double phase = ++turn % 300 + 1;
      std::int32_t status = 0;
      if (row.function == 0) status = W_MakeSin(buffer, 0, n, 0, 65534, 1, phase);
      if (row.function == 1) status = W_MakeTriangle(buffer, 0, n, 0, 65534, 1, phase, 50);
      if (row.function == 2) status = W_MakeSquare(buffer, 0, n, 0, 65534, 1, phase, 50, 0);
      if (status != W_SUCCESS) std::abort();
      pages.Draw_Wave_Create(preview.context);
    });
    table.TimeRow("  under a frame", kFrame, 30, change);
  }
}

int Run() {
  fake::FakeDesktop desktop;
  Program program(desktop.Services());
  Editor editor(program);
  if (!editor.Start()) return 2;
  CreatePages pages(program, editor.setup, editor.fileCommands, editor, [] { return 0.5; });
  Preview preview;
  preview.pages = &pages;
  pages.SetPort(&preview);
  pages.PrepareCreate();
  FigureTable table;
  Rows(table, pages, preview, program.buffers.Create());
  pages.SetPort(nullptr);
  return table.IsOver() ? 1 : 0;
}

} // namespace
} // namespace calder

int main() {
  return calder::Run();
}

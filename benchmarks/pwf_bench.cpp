// One step of the scroll bar on each parameter-variable function, computed and drawn in the preview, and an OK of the
// whole memory.
#include "FakeDesktop.h"
#include "FigureTable.h"
#include "editor/Editor.h"
#include "platform/PixelContext.h"
#include "tools/pwf/PwfDesk.h"

#include <cstdlib>

namespace calder {
namespace {

constexpr int kWidth = 1200; // device pixels of a large window
constexpr int kHeight = 900;
constexpr double kFrame = 16000; // microseconds

struct Preview final : PwfPort {
  void ShowList() override {}
  void ShowFunction() override {}
  void ShowParameters() override {}
  void ShowPreview() override {
    desk->Draw_Wave_PWF(context);
    ++drawn;
  }
  void GoToBox(int /*j*/) override { std::abort(); }
  void SetBusy(bool /*busy*/) override {}
  void ShowFault(const ExpressionFault& fault) override {
    if (fault.message != 0) std::abort();
  }
  void Close() override {}

  PwfDesk* desk = nullptr;
  std::vector<std::uint32_t> pixels = std::vector<std::uint32_t>(kWidth * kHeight);
  PixelContext context{pixels, kWidth, kWidth, kHeight};
  int drawn = 0;
};

int Run() {
  fake::FakeDesktop desktop;
  Program program(desktop.Services());
  Editor editor(program);
  if (!editor.Start()) return 2;
  PwfDesk desk(program, editor.setup, editor.fileCommands, editor, [] { return Scope{}; });
  Preview preview;
  preview.desk = &desk;
  desk.SetPort(&preview);
  FigureTable table;
  table.TimeRow("opening: the file, twenty-five formulas, the preview", kFrame, 20, [&] { desk.Form_Load(); });
  double slowestStep = 0;
  double slowestOk = 0;
  for (int k = 0; k < PwfTable::kFunctions; ++k) {
    if (!desk.Table()[k].IsDefined()) return 2;
    desk.Comb_Wave_Click(k);
    const ScrollRange range = desk.Scroll(0);
    int turn = 0;
    slowestStep =
        std::max(slowestStep, FigureTable::BestTime(30, [&] {
                   const int before = preview.drawn;
                   desk.HScroll1_Change(static_cast<int>(range.Min) + turn++ % static_cast<int>(range.Max - range.Min));
                   if (preview.drawn == before) std::abort();
                 }));
    slowestOk = std::max(slowestOk, FigureTable::BestTime(5, [&] { desk.Btn_OK_Click(); }));
  }
  table.LimitRow("a scroll step of the slowest function, in frames", 1, slowestStep / kFrame);
  table.LimitRow("an OK of the slowest function, in frames", 1, slowestOk / kFrame);
  desk.SetPort(nullptr);
  return table.IsOver() ? 1 : 0;
}

} // namespace
} // namespace calder

int main() {
  return calder::Run();
}

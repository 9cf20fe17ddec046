#include "tools/create/CreatePages.h"

#include "app/Program.h"
#include "files/FileCommands.h"
#include "instrument/SystemSetup.h"
#include "libs/eval32/eval32.h"
#include "platform/Clock.h"
#include "tools/frame/ScopedFlag.h"
#include "tools/frame/ToolHost.h"
#include "tools/frame/WaitCursor.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace calder {
namespace {

constexpr double kSeeds = 100;

} // namespace

CreatePages::CreatePages(Program& program, SystemSetup& setup, FileCommands& files, ToolHost& host, RandomSource random)
    : buffers_(program.buffers), desktop_(program.desktop), evaluator_(program.evaluator),
      formSetup_(program.formSetup), messages_(program.messages), pages_(program.pages), settings_(program.settings),
      units_(program.units), setup_(setup), files_(files), host_(host), random_(std::move(random)),
      listFile_(program.pages, program.settings, program.messages),
      generator_(program.evaluator, program.units, program.settings, program.language) {
  if (!random_) {
    random_ = [this] {
      std::minstd_rand engine(static_cast<std::uint32_t>(desktop_.clock.SecondsOfDay() * 1000));
      engine.discard(1); // neighbouring seeds give neighbouring first numbers
      return std::generate_canonical<double, 24>(engine);
    };
  }
  files_.SetFormat(Kind_List, {[this](const std::string& path) {
                                 const std::int32_t result = listFile_.Read_List(path);
                                 listRead_ = result == 0;
                                 return result;
                               },
                               [this](const std::string& path) { return listFile_.Write_List(path); }});
}

// ---- opening and closing ----

void CreatePages::PrepareCreate() {
  fromMainWindow_ = true;
  generator_.SetTarget(buffers_.Create(), PageGenerator::Placement::OwnArea);
  ClampAreas();
  currentPage_ = pages_.FirstValid();
  if (currentPage_ == 0) {
    currentPage_ = PageTable::kFirst;
    const Scope& scope = buffers_.CurrentScope();
    ThePage().SetArea(scope.Start, scope.End);
    ThePage().Valid = kPageTrue;
  }
  Open();
}

void CreatePages::PrepareCreate(const OperateTarget& target) {
  fromMainWindow_ = false;
  generator_.SetTarget(target.buffer, PageGenerator::Placement::AtZero);
  currentPage_ = 0;
  ThePage().SetArea(target.range.Start, target.range.End);
  ThePage().Valid = kPageTrue;
  Open();
}

void CreatePages::Open() {
  drag_.Release();
  livePreview_ = false;
  Change_Parameter();
  Make_Wave(currentPage_);
  ShowPageArea();
  Form_Load();
  port_->ShowPreview();
}

void CreatePages::Form_Load() {
  cancelled_ = true;
  pageModified_ = true;
  generator_.InitRandom(static_cast<std::int32_t>(std::nearbyint(random_() * kSeeds)));
}

void CreatePages::ClampAreas() {
  clamped_.clear();
  const double size = settings_.MemorySize;
  for (int i = 0; i < PageTable::kPages; ++i) {
    CreatePage& page = pages_[i];
    if (page.EndX <= size) continue;
    const double start = std::min(page.StartX, size);
    clamped_.push_back({i, page.StartX, page.EndX, start, size});
    page.SetArea(start, size);
  }
}

// An area that was edited meanwhile is the user's.
void CreatePages::RestoreAreas() {
  for (const ClampedArea& area : clamped_) {
    CreatePage& page = pages_[area.page];
    if (page.StartX == area.clampedStart && page.EndX == area.clampedEnd) page.SetArea(area.startX, area.endX);
  }
  clamped_.clear();
}

void CreatePages::Form_QueryUnload() {
  drag_.Release();
  RestoreAreas();
  if (!cancelled_) return;
  evaluator_.ClearConstant();
  if (!fromMainWindow_) W_ClearMemory(generator_.GenBuffer(), 0, Page().EndX - Page().StartX);
}

void CreatePages::CloseAfterOk() {
  cancelled_ = false;
  evaluator_.ClearConstant();
  port_->Close();
}

// ---- what the procedures do ----

void CreatePages::Draw_Wave_Create(DeviceContext& picture) const {
  if (formSetup_) return;
  DrawWavePreview(picture, {generator_.GenBuffer(), generator_.StartOf(Page()), Page().Size});
}

void CreatePages::Change_Parameter() {
  const ScopedFlag setup(formSetup_);
  port_->ShowPage();
}

void CreatePages::Check_Visit() {
  CreatePage& page = ThePage();
  if (page.IsVisited()) return;
  page.Visited = kPageTrue;
  page.Valid = kPageTrue;
  Change_Parameter();
}

int CreatePages::Make_Wave(int page, PageGenerator::Expressions expressions) {
  // An expression that is not evaluated leaves an empty area, which no OK may take for the page's waveform.
  const bool cleared = expressions == PageGenerator::Expressions::Cleared;
  if (pages_[page].Function == kFunctionExpression && cleared) pageModified_ = true;
  const WaitCursor busy(*port_);
  lastFault_ = generator_.Make_Wave(pages_[page], expressions);
  return lastFault_.message;
}

void CreatePages::ShowPageArea() {
  buffers_.CurrentScope() = {Page().StartX, Page().EndX};
  host_.RangeChanged();
}

// Computes the page on show and shows it.
void CreatePages::Refresh() {
  Make_Wave(currentPage_);
  // What the user has seen while typing is seen again in the area's new place.
  if (livePreview_ && ExpressionShown() && generator_.EvaluateAside(Page()).message != 0) generator_.ClearArea(Page());
  port_->ShowPreview();
}

void CreatePages::PageChanged() {
  Check_Visit();
  Refresh();
  setup_.ForgetControlPoints();
}

void CreatePages::Report(const ExpressionFault& fault) {
  messages_.ErrorBox(fault.message);
  port_->ShowFault(fault);
}

// ---- the preview ----

void CreatePages::PictWave_MouseDown(bool leftAlone, double x, double y, double width, double height) {
  if (leftAlone) drag_.Press(Page(), x, y, width, height);
}

void CreatePages::PictWave_MouseMove(double x, double y) {
  if (!drag_.Move(ThePage(), x, y)) return;
  Change_Parameter();
  PageChanged();
}

} // namespace calder

#include "tools/pwf/PwfDesk.h"

#include "app/EngValB.h"
#include "app/Program.h"
#include "files/FileCommands.h"
#include "instrument/SystemSetup.h"
#include "libs/eval32/eval32.h"
#include "libs/file32/TextLines.h"
#include "platform/DeviceContext.h"
#include "platform/WaveformTheme.h"
#include "platform/posix/WholeFile.h"
#include "tools/frame/ScopedFlag.h"
#include "tools/frame/ToolHost.h"
#include "tools/frame/WaitCursor.h"

#include <algorithm>
#include <cmath>

namespace calder {
namespace {

constexpr int kMsgUnitChanged = 35;
constexpr int kMsgRangeChanged = 36;
constexpr double kFormerStrength = 0.4;

} // namespace

PwfDesk::PwfDesk(Program& program, SystemSetup& setup, FileCommands& files, ToolHost& host,
                 std::function<Scope()> createArea)
    : buffers_(program.buffers), desktop_(program.desktop), evaluator_(program.evaluator),
      formSetup_(program.formSetup), messages_(program.messages), settings_(program.settings), units_(program.units),
      language_(program.language), functions_(program.functions), setup_(setup), files_(files), host_(host),
      createArea_(std::move(createArea)), file_(program.functions, program.language),
      generator_(program.evaluator, program.units, program.settings, program.language) {
  files_.SetFormat(Kind_Pwf, {[this](const std::string& path) { return file_.Read_Pwf(path); },
                              [this](const std::string& path) { return file_.Write_Pwf(path); }});
}

PwfDesk::~PwfDesk() {
  W_FreeMemory(former_);
  W_FreeMemory(curve_);
}

// ---- opening and closing ----

void PwfDesk::Form_Load() {
  SetUnits();
  if (former_ == 0) former_ = W_AllocMemory(kPreviewPoints);
  if (curve_ == 0) curve_ = W_AllocMemory(kCurvePoints);
  cancelled_ = true;
  waveDirty_ = true;
  dragging_ = false;
  {
    const ScopedFlag setup(formSetup_);
    const ScopedFlag guard(scrollGuard_);
    ReadDefinitions();
    const auto first = std::ranges::find_if(functions_.functions, &PwfFunction::IsDefined);
    const bool any = first != functions_.functions.end();
    functions_.WaveIdx = any ? static_cast<int>(first - functions_.functions.begin()) : 0;
    hasFormer_ = false;
    port_->ShowList();
    Show_Function();
    if (!any) W_ClearMemory(buffers_.Create(), 0, kPreviewPoints);
  }
  if (Function().IsDefined()) Make_Wave_PWF(Length::Preview);
  port_->ShowPreview();
}

void PwfDesk::SetUnits() {
  const auto inform = [this](int message) {
    desktop_.messageBoxes.Show(kApplicationTitle, messages_.MessageText(message), BoxButtons::Ok, BoxIcon::None);
    host_.WaveformChanged();
  };
  SystemInfo& settings = settings_;
  if (settings.XUnit != kXUser || settings.YUnit != kYUser) {
    settings.XUnit = kXUser;
    settings.YUnit = kYUser;
    inform(kMsgUnitChanged);
  }
  if (settings.XUserMin != 0 || settings.XUserMax != 1 || settings.YUserMin != -1 || settings.YUserMax != 1) {
    settings.XUserMin = 0;
    settings.XUserMax = 1;
    settings.YUserMin = -1;
    settings.YUserMax = 1;
    inform(kMsgRangeChanged);
  }
}

void PwfDesk::ReadDefinitions() {
  notes_.clear();
  const std::vector<std::string>& folders = desktop_.folders.read;
  const std::string path = FindProgramFile(folders, kPwfDefinitions);
  std::vector<char> content;
  if (path.empty() || ReadWholeFile(path, content) != 0) {
    std::string looked;
    for (const std::string& folder : folders) looked += (looked.empty() ? "" : ", ") + folder;
    if (!path.empty()) looked = path;
    notes_.push_back(std::string(kPwfDefinitions) +
                     messages_.Pick(path.empty() ? " が見つかりません: " : " を読み込めません: ",
                                    path.empty() ? " was not found in: " : " cannot be read: ") +
                     looked);
    return;
  }
  PwfReading reading = Read_Fnc({content.data(), content.size()}, language_, functions_);
  CheckFormulas(reading);
  remarks_ = reading.remarks;
  for (const PwfFault& fault : reading.faults) notes_.push_back(PwfFaultText(fault, messages_));
}

// A formula that cannot be computed with the values of its own line is a fault of the line.
void PwfDesk::CheckFormulas(PwfReading& reading) {
  for (int k = 0; k < PwfTable::kFunctions; ++k) {
    const int line = reading.lines[Index(k)];
    if (line == 0 || !functions_[k].IsDefined()) continue;
    const ExpressionFault fault = generator_.MakeAside(functions_, k, curve_, kCurvePoints);
    if (fault.message == 0) continue;
    const std::string sentence =
        fault.reason.empty() ? std::string(Trimmed(messages_.MessageText(fault.message), " \r")) : fault.reason;
    reading.faults.push_back({line, PwfFaultReason::Formula, sentence});
    functions_[k] = {};
  }
  std::ranges::stable_sort(reading.faults, {}, &PwfFault::line);
}

void PwfDesk::Form_QueryUnload() {
  dragging_ = false;
  evaluator_.ClearConstant();
  if (cancelled_) W_ClearMemory(buffers_.Create(), 0, createArea_().Length());
}

// ---- functions and parameters ----

void PwfDesk::Show_Function() {
  const PwfFunction& function = Function();
  for (int j = 0; j < PwfTable::kMaxParams; ++j) {
    const PwfParam& param = function.Params[Index(j)];
    texts_[Index(j)] = j < function.ParamCount ? PwfValueText(param, param.Value) : std::string();
    refused_[Index(j)] = false;
  }
  prmSel_ = 0;
  hasCurve_ = false;
  const ScopedFlag setup(formSetup_);
  const ScopedFlag guard(scrollGuard_);
  port_->ShowFunction();
}

void PwfDesk::Comb_Wave_Click(int function) {
  if (formSetup_ || function < 0 || function >= PwfTable::kFunctions) return;
  if (!functions_[function].IsDefined()) return;
  functions_.WaveIdx = function;
  hasFormer_ = false;
  Show_Function();
  Make_Wave_PWF(Length::Preview);
}

void PwfDesk::Comb_PrmSel_Click(int parameter) {
  if (scrollGuard_ || parameter < 0 || parameter >= Function().ParamCount) return;
  prmSel_ = parameter;
  Refresh();
}

void PwfDesk::Refresh() {
  const ScopedFlag guard(scrollGuard_);
  port_->ShowParameters();
}

int PwfDesk::ScrollPosition(int j) const {
  return ScrollPositionOf(Function().Params[Index(j)], Scroll(j));
}

void PwfDesk::Store(int j, double value) {
  PwfParam& param = TheFunction().Params[Index(j)];
  texts_[Index(j)] = PwfValueText(param, value);
  param.Value = LeadingNumber(texts_[Index(j)]);
  refused_[Index(j)] = false;
  Refresh();
  Make_Wave_PWF(Length::Preview);
}

void PwfDesk::Scroll_Pressed() {
  KeepFormer();
  dragging_ = true;
}

void PwfDesk::HScroll1_Change(int position) {
  if (scrollGuard_ || prmSel_ >= Function().ParamCount) return;
  if (!dragging_) KeepFormer();
  Store(prmSel_, ScrolledValue(Function().Params[Index(prmSel_)], Scroll(prmSel_), position));
}

void PwfDesk::Slider_Change(int parameter, int position) {
  if (scrollGuard_ || parameter >= Function().ParamCount) return;
  prmSel_ = parameter;
  HScroll1_Change(position);
}

bool PwfDesk::Text_Validate(int parameter, const std::string& text) {
  const PwfParam& param = Function().Params[Index(parameter)];
  double value = 0;
  const bool isNumber = ParseReal(Trimmed(text), value);
  if (!isNumber || value > param.MaxValue || value < param.MinValue) {
    texts_[Index(parameter)] = isNumber ? NumberText(value > param.MaxValue ? param.MaxValue : param.MinValue) : text;
    refused_[Index(parameter)] = true;
    Refresh();
    return false;
  }
  KeepFormer();
  Store(parameter, value);
  return true;
}

void PwfDesk::Revert(int parameter) {
  const PwfParam& param = Function().Params[Index(parameter)];
  texts_[Index(parameter)] = PwfValueText(param, param.Value);
  refused_[Index(parameter)] = false;
  Refresh();
}

void PwfDesk::Restore(int parameter) {
  if (parameter >= Function().ParamCount) return;
  KeepFormer();
  Store(parameter, Function().Params[Index(parameter)].FileValue);
}

std::string PwfDesk::LimitsText(int j) const {
  const PwfParam& param = Function().Params[Index(j)];
  return NumberText(param.MinValue) + messages_.Pick(" ～ ", " to ") + NumberText(param.MaxValue);
}

// ---- the waveform ----

bool PwfDesk::Make_Wave_PWF(Length length) {
  const PwfFunction& function = Function();
  for (int j = 0; j < function.ParamCount; ++j) {
    const PwfParam& param = function.Params[Index(j)];
    double value = 0;
    if (!ParseReal(Trimmed(texts_[Index(j)]), value)) return false;
    if (value >= param.MinValue && value <= param.MaxValue) continue;
    refused_[Index(j)] = true;
    Refresh();
    port_->GoToBox(j);
    return false;
  }
  const bool isPreview = length == Length::Preview;
  ExpressionFault fault;
  {
    const WaitCursor busy(*port_);
    fault = generator_.Make(functions_, IsWaveIdx(), texts_, buffers_.Create(),
                            isPreview ? kPreviewPoints : settings_.MemorySize);
  }
  port_->ShowFault(fault);
  if (fault.message != 0) {
    messages_.ErrorBox(fault.message);
    return false;
  }
  waveDirty_ = false;
  if (isPreview) {
    hasCurve_ = true;
    port_->ShowPreview();
  }
  return true;
}

void PwfDesk::KeepFormer() {
  if (!hasCurve_ || W_CopyMemory(buffers_.Create(), former_, 0, 0, kPreviewPoints) != W_SUCCESS) return;
  hasFormer_ = true;
}

double PwfDesk::FirstWritten() const {
  return std::clamp<double>(std::nearbyint(createArea_().Start), 0, settings_.MemorySize);
}

void PwfDesk::Btn_OK_Click() {
  if (!Function().IsDefined()) return;
  buffers_.Save_Undo();
  if (!Make_Wave_PWF(Length::Whole)) return;
  const double first = FirstWritten();
  W_CopyMemory(buffers_.Create(), buffers_.Current(), first, first, settings_.MemorySize - first);
  setup_.ForgetControlPoints();
  cancelled_ = false;
  port_->Close();
}

void PwfDesk::Btn_Cancel_Click() {
  cancelled_ = true;
  port_->Close();
}

void PwfDesk::Menu_FileOpen_Click() {
  files_.Open_File(Kind_Pwf);
  hasFormer_ = false;
  Show_Function();
  if (Function().IsDefined()) Make_Wave_PWF(Length::Preview);
}

void PwfDesk::Menu_FileSave_Click() {
  if (Function().IsDefined()) files_.Save_File(Kind_Pwf, false);
}

// ---- the pictures ----

void PwfDesk::Draw_Wave_PWF(DeviceContext& picture) const {
  if (formSetup_) return;
  const PreviewCurve curves[] = {
      {{former_, 0, hasFormer_ ? kPreviewPoints : 0.0}, theme::OnGround(theme::kTrace, kFormerStrength)},
      {{buffers_.Create(), 0, hasCurve_ ? kPreviewPoints : 0.0}, theme::kTrace},
  };
  DrawWavePreview(picture, curves);
}

void PwfDesk::DrawCurve(int function, DeviceContext& picture) {
  picture.FillRectangle(0, 0, picture.Width(), picture.Height(), theme::kGround);
  if (generator_.MakeAside(functions_, function, curve_, kCurvePoints).message != 0) return;
  picture.SetPen(theme::kTrace, std::max(1, static_cast<int>(std::lround(picture.Scale()))));
  W_DrawWave2(picture, curve_, 0, 0, kCurvePoints, W_CODE_SPAN, picture.Width(), picture.Height(), kCurvePoints);
}

std::string PwfDesk::PointerText(int column, int width) const {
  if (!hasCurve_) return {};
  const auto reading = ReadPreview({buffers_.Create(), 0, kPreviewPoints}, column, width);
  if (!reading) return {};
  return PreviewValueText(units_, reading->point / kPreviewPoints * settings_.MemorySize, reading->code);
}

std::string PwfDesk::AreaNote() const {
  const double first = FirstWritten();
  if (first == 0) return {};
  const std::string x = NumberText(units_.PointToX(first));
  return messages_.Pick("OK は波形生成のﾍﾟｰｼﾞの始点 X = ", "OK writes from X = ") + x +
         messages_.Pick(" から書き込みます。", " on, where the page of Wave Create begins.");
}

} // namespace calder

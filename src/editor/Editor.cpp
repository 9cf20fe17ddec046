#include "editor/Editor.h"

#include "instrument/Initialise.h"

#include <algorithm>
#include <filesystem>

namespace calder {
namespace {

constexpr const char* kUsbIdFile = "USBTMC.ID";

} // namespace

Editor::Editor(Program& programState)
    : program(programState), setup(program), waveFiles(program.buffers, program.settings, program.interfaceKind,
                                                       program.names, program.fileLibrary, program.messages, setup),
      fileCommands(program.desktop, program.messages, program.registry, program.names, waveFiles),
      view(program.settings, program.units, program.view),
      markers(program.settings, program.units, program.buffers, program.view, view),
      painter(program.settings, program.buffers, program.view, markers),
      commands(program.buffers, program.settings, program.fileLibrary, program.desktop.clipboard, program.messages),
      lanes(program.buffers, view, program.messages),
      patterns(program.buffers, program.settings, program.evaluator, program.messages) {
  setup.SetHooks({{},
                  [this] {
                    const Action action(*this);
                    view.MemorySizeChanged();
                    Mark(kViewMoved);
                  },
                  [this] {
                    view.Init();
                    SettingsChanged();
                  }});
  fileCommands.SetTitleChanged([this] {
    const Action action(*this);
    Mark(Change::Title);
  });
}

Editor::~Editor() = default;

bool Editor::Start() {
  program.interfaceKind = program.registry.GetGpibBoard();
  program.serialNumber = program.registry.GetSerialNum();
  program.settings.XUnit = kXUser;
  program.settings.YUnit = kYUser;
  std::error_code error;
  const std::string usbIds = std::filesystem::exists(kUsbIdFile, error)
                                 ? std::string(kUsbIdFile)
                                 : FindProgramFile(program.desktop.folders.read, kUsbIdFile);
  if (!ReadUsbIds(usbIds, program.usbIds)) {
    program.desktop.messageBoxes.Show(kApplicationTitle, "Lost the file of USBTMC.ID", BoxButtons::Ok,
                                      BoxIcon::Critical);
    return false;
  }
  if (!InitialiseSystem(program, setup)) return false;
  view.Init();
  program.buffers.ResetScopes();
  program.selectedTool = kToolNone;
  program.buffers.Reset_Undo();
  return true; // the waveform is all 0: the buffers are new
}

void Editor::OpenCommandLine(const std::string& file) {
  if (file.empty()) return;
  const Action action(*this);
  fileCommands.OpenWave(file);
  view.Init();
  program.buffers.ResetScopes();
  program.buffers.Reset_Undo();
  Mark(kEverything);
}

void Editor::ReportNoCopy() const {
  program.messages.ErrorBoxText(program.messages.Pick("もう一つの CALDER を起動できませんでした。",
                                                      "Another copy of CALDER could not be started."));
}

bool Editor::QueryUnload(CloseReason reason) {
  program.registry.SetSerialNum(program.serialNumber);
  if (program.registry.GetGpibBusy() && program.registry.GetGpibHost()) {
    program.messages.CautionBox(kMsgTransferRunning);
    return false;
  }
  if (reason == CloseReason::SessionEnds) {
    program.messages.CautionBox(kMsgCloseBeforeSessionEnd);
    return false;
  }
  if (program.messages.CautionQuestion(kMsgExitQuestion) != BoxAnswer::Yes) return false;
  StoreSession();
  return true;
}

void Editor::StoreSession() {
  program.registry.SetSerialNum(program.serialNumber);
  StoreLastSettings(program);
}

std::string Editor::Title() const {
  return std::string(kTitle) + " <" + program.names.CurrentWaveFile + ">";
}

void Editor::Flush() {
  // Whatever changes the waveform or its range changes the readouts.
  if (marked_.Has(Change::Readouts)) patterns.WaveformChanged();
  if (port_ != nullptr && !marked_.None()) port_->Show(marked_);
  marked_ = {};
}

void Editor::Do(const WindowCommand& command) {
  if (command.call == nullptr) return;
  const Action action(*this);
  command.call(*this);
  Mark(command.changes);
}

void Editor::ShowNewWaveform() {
  const Action action(*this);
  view.ZoomX(0);
  view.ZoomY(0);
  ClampScopes();
  Mark(kEverything);
}

// Setup is a tool too: the units may have changed.
void Editor::WaveformChanged() {
  const Action action(*this);
  Mark(kEverything);
}

void Editor::RangeChanged() {
  const Action action(*this);
  Mark(Change::Picture | Change::Readouts);
}

// A smaller memory may have left the ranges past its end; what lay beyond it ends there.
void Editor::ClampScopes() {
  const double size = program.settings.MemorySize;
  for (Scope* scope : {&program.buffers.CurrentScope(), &program.buffers.UndoScope()}) {
    scope->Start = std::clamp(scope->Start, 0.0, size);
    scope->End = std::clamp(scope->End, 0.0, size);
  }
}

void Editor::SettingsChanged() {
  const Action action(*this);
  // A file may have changed the memory size without the setup noticing.
  if (!view.FitsMemory()) view.MemorySizeChanged();
  ClampScopes();
  Mark(kEverything);
}

void Editor::FileDropped(const std::string& path) {
  const Action action(*this);
  if (fileCommands.OpenWave(path)) ShowNewWaveform();
}

void Editor::ChooseView(ViewKind kind) {
  const Action action(*this);
  shownView_ = kind;
  Mark(kViewMoved | Change::Commands);
}

void Editor::MouseMove(int x, int y, int width, int height, double scale, bool overWave) {
  // A grabbed marker waits too. The far edges count, so that it can be taken to the end of the waveform.
  const Action action(*this);
  const bool inside = x >= 0 && y >= 0 && x <= width && y <= height;
  if (pictureTool_ != nullptr && overWave && !markers.Grabbed()) pictureTool_->Move({x, y, width, height, scale});
  if (!inside) return;
  if (markers.Grabbed()) {
    if (markers.Drag(x, width)) Mark(Change::Markers | Change::Readouts);
  } else if (overWave) {
    markers.Hover(x, y, width, scale);
  }
  mouse_ = {x, y, width, height};
  Mark(Change::Mouse);
}

std::string Editor::MouseXText() const {
  return mouse_.width > 0 ? view.PixelXToText(mouse_.x, mouse_.width) : std::string();
}

std::string Editor::MouseYText() const {
  return mouse_.height > 0 ? view.PixelYToText(mouse_.y, mouse_.height) : std::string();
}

void Editor::MousePress(const PicturePoint& at, PressKeys keys) {
  if (keys == PressKeys::Other) return;
  const Action action(*this);
  const bool withCtrl = keys == PressKeys::Ctrl;
  toolPressed_ = pictureTool_ != nullptr;
  if (toolPressed_ && pictureTool_->Press(at, withCtrl)) return;
  if (!withCtrl) markers.Press();
}

void Editor::MouseRelease(const PicturePoint& at) {
  const Action action(*this);
  const bool grabbed = markers.Grabbed();
  markers.Release();
  if (toolPressed_ && pictureTool_ != nullptr && !grabbed) {
    toolPressed_ = false;
    pictureTool_->Release({std::min(at.x, at.width), std::min(at.y, at.height), at.width, at.height, at.scale});
    return;
  }
  Mark(Change::Picture);
}

void Editor::BackspaceKey() {
  const Action action(*this);
  if (pictureTool_ != nullptr) pictureTool_->BackspaceKey();
}

void Editor::MarkerKey(int direction, KeyStep step, int width) {
  const Action action(*this);
  const double shown = program.view.XEnd - program.view.XStart;
  double points = 1;
  if (step == KeyStep::Pixel) points = std::max(1.0, shown / std::max(1, width));
  if (step == KeyStep::Page) points = shown;
  if (markers.Step(direction * points)) Mark(Change::Markers | Change::Readouts);
  if (view.ShowPoint(markers.ChosenPoint())) Mark(kViewMoved);
}

void Editor::ChooseMarker(Markers::Which marker) {
  const Action action(*this);
  markers.Choose(marker);
  if (view.ShowPoint(markers.ChosenPoint())) Mark(kViewMoved);
}

std::string Editor::SpokenPicture() const {
  const ErrMsg& language = program.messages;
  const auto marker = [&](const char* name, const std::string& x, const std::string& y) {
    return language.Pick("マーカ", "marker ") + std::string(name) + ": " + x + " " + program.units.XUnitName() + ", " +
           y + " " + program.units.YUnitName() + "; ";
  };
  return marker("A", markers.StartXText(), markers.StartYText()) + marker("B", markers.EndXText(), markers.EndYText()) +
         language.Pick("表示範囲", "shown") + ": " + view.StartLabel() + " - " + view.EndLabel() +
         (shownView_ == ViewKind::Digital ? "; " + lanes.MaskText() + "; " + lanes.LaneText() : std::string());
}

void Editor::Mark(DigitalLanes::Outcome outcome) {
  switch (outcome) {
  case DigitalLanes::Outcome::Nothing: break;
  case DigitalLanes::Outcome::Selection: Mark(Change::Picture | Change::Mouse); break;
  case DigitalLanes::Outcome::Waveform: Mark(kEdited | Change::Mouse); break;
  }
}

void Editor::LaneMove(const PicturePoint& at) {
  const Action action(*this);
  MouseMove(at.x, at.y, at.width, at.height, at.scale, false);
  Mark(lanes.Move(at));
}

void Editor::LanePress(const PicturePoint& at, PressKeys keys) {
  const Action action(*this);
  if (keys == PressKeys::None && !markers.Grabbed()) Mark(lanes.Press(at));
  if (keys == PressKeys::Ctrl && program.selectedTool != kToolSpline) Mark(lanes.CtrlPress(at));
}

void Editor::LaneRelease(const PicturePoint& at) {
  const Action action(*this);
  Mark(lanes.Release(at));
}

void Editor::LanePress(LaneKey key) {
  const Action action(*this);
  Mark(lanes.Press(key));
}

void Editor::LaneLeave() {
  const Action action(*this);
  lanes.Leave();
  Mark(Change::Mouse);
}

void Editor::PatternPress(int item) {
  const Action action(*this);
  if (patterns.Btn_Pattern_Click(item, lanes.SelectedBits())) Mark(kEdited);
  Mark(Change::Picture); // the note beside the buttons
}

void Editor::PatternTyped(const std::string& text) {
  const Action action(*this);
  patterns.Type(text);
  Mark(Change::Picture);
}

void Editor::ToolOpened(ToolNo tool, ToolModality modality) {
  const Action action(*this);
  program.selectedTool = tool;
  partlyBlocked_ = modality == ToolModality::Modeless;
  Mark(Change::Commands);
}

void Editor::ToolClosed() {
  program.selectedTool = kToolNone;
  partlyBlocked_ = false;
  WaveformChanged();
}

void Editor::SetPictureTool(PictureTool* tool) {
  const Action action(*this);
  Mark(Change::Commands | Change::Picture);
  toolPressed_ = false;
  pictureTool_ = tool;
  if (tool == nullptr) {
    painter.SetToolLayers({}, {});
  } else {
    painter.SetToolLayers([tool](DeviceContext& picture) { tool->DrawBehind(picture); },
                          [tool](DeviceContext& picture) { tool->DrawLayer(picture); });
  }
}

void Editor::PictureToolChanged() {
  const Action action(*this);
  Mark(Change::Picture);
}

} // namespace calder

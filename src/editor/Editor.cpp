#include "editor/Editor.h"

#include "instrument/Initialise.h"

#include <algorithm>
#include <filesystem>

namespace calder {
namespace {

constexpr const char* kUsbIdFile = "USBTMC.ID";

} // namespace

Editor::Editor(Program& programState)
    : program(programState), setup(program), waveFiles(program, setup), fileCommands(program, waveFiles), view(program),
      markers(program, view), painter(program, markers), commands(program) {
  setup.SetHooks({{},
                  [this] { view.MemorySizeChanged(); },
                  [this] {
                    view.Init();
                    SettingsChanged();
                  }});
  fileCommands.SetTitleChanged([this] {
    if (port_ != nullptr) port_->ShowState();
  });
}

Editor::~Editor() = default;

bool Editor::Start() {
  program.interfaceKind = program.registry.GetGpibBoard();
  program.serialNumber = program.registry.GetSerialNum();
  program.settings.XUnit = 2;
  program.settings.YUnit = 2;
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
  markers.FollowScope();
  program.selectedTool = kToolNone;
  program.buffers.Reset_Undo();
  return true; // the waveform is all 0: the buffers are new
}

void Editor::OpenCommandLine(const std::string& file) {
  if (file.empty()) return;
  fileCommands.OpenWave(file);
  view.Init();
  program.buffers.ResetScopes();
  program.buffers.Reset_Undo();
  AfterEdit();
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

void Editor::Redraw() {
  port_->ShowState();
  port_->Draw_Wave();
}

void Editor::AfterEdit() {
  markers.FollowScope();
  Redraw();
}

void Editor::AfterOpen() {
  view.ZoomX(0);
  view.ZoomY(0);
  ClampScopes();
  AfterEdit();
}

// A smaller memory may have left the ranges behind its end.
void Editor::ClampScopes() {
  const double size = program.settings.MemorySize;
  for (Scope* scope : {&program.buffers.CurrentScope(), &program.buffers.UndoScope()}) {
    // A range that lay behind the new end has nothing left: the whole waveform takes its place.
    if (scope->Start >= size) *scope = {0, size};
    scope->Start = std::clamp(scope->Start, 0.0, size);
    scope->End = std::clamp(scope->End, 0.0, size);
  }
}

void Editor::SettingsChanged() {
  // A file may have changed the memory size without the setup noticing.
  if (!view.FitsMemory()) view.MemorySizeChanged();
  ClampScopes();
  if (port_ != nullptr) AfterEdit();
}

void Editor::Copy() {
  commands.Copy();
  port_->ShowState();
}

void Editor::Cut() {
  commands.Cut();
  AfterEdit();
}

void Editor::Paste() {
  commands.Paste();
  AfterEdit();
}

void Editor::Delete() {
  commands.Delete();
  AfterEdit();
}

void Editor::Undo() {
  commands.Undo();
  AfterEdit();
}

void Editor::FileOpen() {
  if (fileCommands.Open_File(Kind_Wave)) AfterOpen();
}

void Editor::FileSave() {
  fileCommands.SaveCurrent();
}

void Editor::FileSaveAs(bool asText) {
  fileCommands.Save_File(Kind_Wave, asText);
}

void Editor::FileDropped(const std::string& path) {
  if (fileCommands.OpenWave(path)) AfterOpen();
}

void Editor::FileNew() {
  if (program.desktop.instances.StartCopy()) return;
  program.messages.ErrorBoxText(program.messages.Pick("もう一つの CALDER を起動できませんでした。",
                                                      "Another copy of CALDER could not be started."));
}

void Editor::ToggleGrid() {
  painter.ShowGrid(!painter.GridShown());
  Redraw();
}

void Editor::ZoomX(int index) {
  view.ZoomX(index);
  Redraw();
}

void Editor::ZoomY(int index) {
  view.ZoomY(index);
  Redraw();
}

void Editor::WheelZoomX(int steps, double fraction) {
  view.ZoomXAt(std::clamp(view.XZoomIndex() + steps, 0, WaveView::kXZooms - 1), fraction);
  Redraw();
}

void Editor::WheelZoomY(int steps, double fraction) {
  view.ZoomYAt(std::clamp(view.YZoomIndex() + steps, 0, WaveView::kYZooms - 1), fraction);
  Redraw();
}

void Editor::WheelScrollX(int steps) {
  const int tenth = std::max(1, view.HScroll().largeChange / 10);
  if (view.Hrizontal_Scroll(view.HScroll().value + steps * tenth)) Redraw();
}

void Editor::Hrizontal_Scroll(int value) {
  if (view.Hrizontal_Scroll(value)) Redraw();
}

void Editor::Vertical_Scroll(int value) {
  if (view.Vertical_Scroll(value)) Redraw();
}

void Editor::TypeStart(const std::string& text) {
  markers.TypeStart(text);
  Redraw();
}

void Editor::TypeEnd(const std::string& text) {
  markers.TypeEnd(text);
  Redraw();
}

void Editor::TypeScope(const std::string& text) {
  markers.TypeScope(text);
  Redraw();
}

void Editor::ChooseTrack(bool track) {
  markers.FollowScope();
  markers.SetTrack(track);
}

void Editor::ChooseView(ViewKind kind) {
  shownView_ = kind;
  Redraw();
}

void Editor::MouseMove(int x, int y, int width, int height, double scale, bool overWave) {
  // A grabbed marker waits too. The far edges count, so that it can be taken to the end of the waveform.
  const bool inside = x >= 0 && y >= 0 && x <= width && y <= height;
  if (pictureTool_ != nullptr && overWave && !markers.Grabbed()) pictureTool_->Move({x, y, width, height});
  if (!inside) return;
  if (markers.Grabbed()) {
    if (markers.Drag(x, width)) port_->MoveMarkers();
  } else if (overWave) {
    markers.Hover(x, y, width, scale);
  }
  mouse_ = {x, y, width, height};
  port_->ShowState();
}

std::string Editor::MouseXText() const {
  return mouse_.width > 0 ? view.PixelXToText(mouse_.x, mouse_.width) : std::string();
}

std::string Editor::MouseYText() const {
  return mouse_.height > 0 ? view.PixelYToText(mouse_.y, mouse_.height) : std::string();
}

void Editor::MousePress(const PicturePoint& at, PressKeys keys) {
  if (keys == PressKeys::Other) return;
  const bool withCtrl = keys == PressKeys::Ctrl;
  if (pictureTool_ != nullptr && pictureTool_->Press(at, withCtrl)) return;
  if (!withCtrl) markers.Press();
}

void Editor::MouseRelease(const PicturePoint& at) {
  const bool grabbed = markers.Grabbed();
  markers.Release();
  if (pictureTool_ != nullptr && !grabbed) {
    pictureTool_->Release({std::min(at.x, at.width), std::min(at.y, at.height), at.width, at.height});
    return;
  }
  Redraw();
}

void Editor::BackspaceKey() {
  if (pictureTool_ != nullptr) pictureTool_->BackspaceKey();
}

void Editor::ToolOpened(ToolNo tool, ToolModality modality) {
  program.selectedTool = tool;
  partlyBlocked_ = modality == ToolModality::Modeless;
  port_->ShowState();
}

void Editor::ToolClosed() {
  program.selectedTool = kToolNone;
  partlyBlocked_ = false;
  AfterEdit();
}

void Editor::SetPictureTool(PictureTool* tool) {
  pictureTool_ = tool;
  painter.SetToolLayer(tool == nullptr ? std::function<void(DeviceContext&)>()
                                       : [tool](DeviceContext& picture) { tool->DrawLayer(picture); });
}

void Editor::PictureToolChanged() {
  port_->Draw_Wave();
}

} // namespace calder

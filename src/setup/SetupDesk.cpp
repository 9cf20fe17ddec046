#include "setup/SetupDesk.h"

#include "app/EngValB.h"
#include "comm/FailureText.h"
#include "comm/ReadBack.h"
#include "comm/SettingsTransfer.h"
#include "files/FileCommands.h"
#include "instrument/Initialise.h"
#include "libs/sysinf32/CommandColumns.h"
#include "libs/sysinf32/sysinf32.h"
#include "platform/FileDialogs.h"
#include "platform/posix/WholeFile.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace calder {
namespace {

constexpr const char* kNoSerial = "None";
constexpr std::size_t kMemoryNameLength = 32;
constexpr std::size_t kUnitNameLength = 8;
constexpr int kUserUnit = 2;

// The first `limit` characters of a UTF-8 text.
std::string FirstCharacters(std::string_view text, std::size_t limit) {
  std::size_t characters = 0;
  std::size_t i = 0;
  for (; i < text.size(); ++i) {
    const bool continued = (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80;
    if (!continued && characters++ == limit) break;
  }
  return std::string(text.substr(0, i));
}

} // namespace

SetupDesk::SetupDesk(Program& program, SystemSetup& setup, FileCommands& files, const WaveFiles& waveFiles,
                     IntfcLib& bus, TransferProgress& progress)
    : program_(program), setup_(setup), files_(files), bus_(bus),
      limits_(program.settings, program.models, program.messages),
      systemFile_(program.settings, program.interfaceKind, program.fileLibrary, program.messages, waveFiles),
      waveTransfer_(ContextOf(program, bus), setup, progress),
      loopTest_(program.desktop, program.registry, waveTransfer_, progress), bench_(program.desktop.folders.bus) {
  files_.SetFormat(Kind_System, {[this](const std::string& path) {
                                   const std::int32_t result = systemFile_.Read_SystemFile(path);
                                   if (result != kMsgReadFailed) SystemRead();
                                   return result;
                                 },
                                 [this](const std::string& path) { return systemFile_.Write_SystemFile(path); }});
}

void SetupDesk::SystemRead() {
  setup_.RecordLoaded();
  ClearAddedPoints();
  setup_.RefreshControlPoints();
  AskController();
  RefreshSerials();
  Show();
}

void SetupDesk::Form_Load() {
  cancelCopy_ = program_.settings;
  knownPoints_ = program_.settings.MemorySize;
  program_.selectedTool = kToolSystem;
  setup_.RefreshControlPoints();
  setup_.RefillLists();
  setup_.FitInterface();
  AskController();
  RefreshSerials();
  Show();
}

void SetupDesk::Form_Unload() {
  StoreLastSettings(program_);
  program_.selectedTool = kToolNone;
}

void SetupDesk::Show() const {
  if (port_ != nullptr) port_->ShowRecord();
}

std::string SetupDesk::UsbPrefix() const {
  const std::string_view name = TrimCommandText(program_.settings.ModelName);
  const auto found = std::find_if(program_.usbIds.begin(), program_.usbIds.end(),
                                  [&](const UsbId& id) { return TrimCommandText(id.key) == name; });
  return found == program_.usbIds.end() ? std::string() : found->value;
}

void SetupDesk::RefreshSerials() {
  serials_.clear();
  const std::string prefix = UsbPrefix();
  if (UsbShown() && !prefix.empty()) serials_ = bus_.UsbSerialNumbers(prefix);
  if (serials_.empty()) serials_.emplace_back(kNoSerial);
}

std::string SetupDesk::SelectedSerial() const {
  const auto found = std::find(serials_.begin(), serials_.end(), program_.serialNumber);
  if (found != serials_.end()) return *found;
  return serials_.empty() ? kNoSerial : serials_.front();
}

std::string SetupDesk::ResourceName() const {
  const std::string serial = SelectedSerial();
  return serial == kNoSerial ? std::string() : UsbPrefix() + serial;
}

std::vector<std::string> SetupDesk::TransferFormats() const {
  std::vector<std::string> formats{program_.messages.Pick("配列形式", "Array")};
  if (setup_.ControlPointsAvailable()) formats.emplace_back(program_.messages.Pick("制御点形式", "Ctrl Point"));
  return formats;
}

void SetupDesk::ChooseModel(int model) {
  setup_.ChooseModel(model);
  setup_.KeepMemorySize(cancelCopy_.MemorySize);
  ClearAddedPoints();
  setup_.RefreshControlPoints(); // of as many points as the model's memory has
  AvoidController();
  RefreshSerials();
  Show();
}

void SetupDesk::ChooseInterface(int index) {
  if (index < 0 || index >= static_cast<int>(setup_.Interfaces().size())) return;
  setup_.ChooseInterface(setup_.Interfaces()[static_cast<std::size_t>(index)].kind);
  AvoidController();
  RefreshSerials();
  Show();
}

void SetupDesk::AskController() {
  controller_ = UsbShown() ? -1 : ControllerAddress(ContextOf(program_, bus_));
}

// The instrument keeps off the controller's own address.
void SetupDesk::AvoidController() {
  AskController();
  if (UsbShown()) return;
  SystemInfo& settings = program_.settings;
  if (controller_ != settings.Address) return;
  settings.Address = -1;
  program_.models.SysChangeInterface(settings.ModelNo, program_.interfaceKind, settings);
  if (settings.Address == controller_) settings.Address = settings.AddressMin;
  if (settings.Address == controller_) StepAddress(1);
}

void SetupDesk::StepAddress(int by) {
  SystemInfo& settings = program_.settings;
  const int least = settings.AddressMin;
  const int count = settings.AddressMax - least + 1;
  if (count <= 0) return;
  int address = settings.Address;
  for (int i = 0; i < 2; ++i) { // once more when the controller has it
    address = least + ((address - least + by) % count + count) % count;
    if (address != controller_) break;
  }
  settings.Address = static_cast<std::int16_t>(address);
  Show();
}

void SetupDesk::StepMemoryNo(int by) {
  SystemInfo& settings = program_.settings;
  const int number = std::clamp<int>(settings.MemoryNo + by, settings.MemoryNoMin, settings.MemoryNoMax);
  settings.MemoryNo = static_cast<std::int16_t>(number);
  Show();
}

void SetupDesk::EnterAddress(std::string_view text) {
  SystemInfo& settings = program_.settings;
  const double address = LeadingNumber(text);
  const bool inRange = !TrimCommandText(text).empty() && address >= settings.AddressMin &&
                       address <= settings.AddressMax && address == static_cast<int>(address);
  if (inRange && static_cast<int>(address) == controller_) {
    program_.messages.ErrorBoxText(program_.messages.MessageText(kMsgControllerAddress) +
                                   "   Address: " + std::to_string(controller_));
  } else if (inRange) {
    settings.Address = static_cast<std::int16_t>(address);
  }
  Show();
}

void SetupDesk::EnterMemoryNo(std::string_view text) {
  SystemInfo& settings = program_.settings;
  const double number = LeadingNumber(text);
  if (!TrimCommandText(text).empty() && number >= settings.MemoryNoMin && number <= settings.MemoryNoMax)
    settings.MemoryNo = static_cast<std::int16_t>(number);
  Show();
}

void SetupDesk::EnterMemoryName(std::string_view text) {
  program_.settings.MemoryName = FirstCharacters(TrimCommandText(text), kMemoryNameLength);
  Show();
}

void SetupDesk::ChooseMemorySize(int index) {
  setup_.ChooseMemorySize(index);
  Show();
}

void SetupDesk::ChooseTransferFormat(int format) {
  setup_.ChooseTransferFormat(format);
  Show();
}

void SetupDesk::ChooseChannel(int channel) {
  setup_.ChooseChannel(channel);
  Show();
}

void SetupDesk::ChooseRange(int range) {
  program_.models.SysChangeRange(program_.settings.ModelNo, program_.settings.Channel, range, program_.settings);
  Show();
}

void SetupDesk::ChooseOutput(int state) {
  program_.settings.Output = static_cast<std::int16_t>(state);
  Show();
}

void SetupDesk::ChooseOffsetOn(bool on) {
  program_.settings.OffsetOn = on ? 1 : 0;
  Show();
}

void SetupDesk::ChoosePolarity(int polarity) {
  limits_.ChoosePolarity(polarity);
  Show();
}

void SetupDesk::EnterOscillator(int box, std::string_view text) {
  // Leaving a box as it was is no entry: what is shown may have fewer digits than the setting.
  if (!TrimCommandText(text).empty() && text != OscillatorText(box)) {
    switch (box) {
    case 0: limits_.EnterFrequency(text); break;
    case 1: limits_.EnterPeriod(text); break;
    case 2: limits_.EnterAmplitude(text); break;
    default: limits_.EnterOffset(text); break;
    }
  }
  Show();
}

std::string SetupDesk::OscillatorText(int box) const {
  switch (box) {
  case 0: return limits_.FrequencyText();
  case 1: return limits_.PeriodText();
  case 2: return limits_.AmplitudeText();
  default: return limits_.OffsetText();
  }
}

std::string SetupDesk::OscillatorLimitText(int box) const {
  const SystemInfo& settings = program_.settings;
  const auto range = [&](double least, double most) {
    return (least == 0 ? "0" : FormatEngMask(least, ".###")) + program_.messages.Pick(" ～ ", " to ") +
           FormatEngMask(most, ".###");
  };
  switch (box) {
  case 0: return range(settings.FrequencyMin, settings.FrequencyMax);
  case 1: return range(1 / settings.FrequencyMax, 1 / settings.FrequencyMin);
  case 2:
    return range(settings.AmplitudeMin, settings.Polarity % 3 != 0 ? settings.AmplitudeMax / 2 : settings.AmplitudeMax);
  default: return range(settings.OffsetMin, settings.OffsetMax);
  }
}

void SetupDesk::ChooseUnit(Axis axis, int unit) {
  if (unit < 0 || unit > kUserUnit) return;
  (axis == Axis::X ? program_.settings.XUnit : program_.settings.YUnit) = static_cast<std::int16_t>(unit);
  Show();
}

void SetupDesk::EnterUnitName(Axis axis, std::string_view text) {
  (axis == Axis::X ? program_.settings.XUserName : program_.settings.YUserName) =
      FirstCharacters(TrimCommandText(text), kUnitNameLength);
  Show();
}

void SetupDesk::EnterUnitRange(Axis axis, End end, std::string_view text) {
  SystemInfo& settings = program_.settings;
  if (!TrimCommandText(text).empty() && text != UnitRangeText(axis, end)) {
    double least = axis == Axis::X ? settings.XUserMin : settings.YUserMin;
    double most = axis == Axis::X ? settings.XUserMax : settings.YUserMax;
    (end == End::Min ? least : most) = ParseEng(text);
    if (least < most && std::isfinite(most - least)) { // a range without a length, or an endless one, has no scale
      (axis == Axis::X ? settings.XUserMin : settings.YUserMin) = least;
      (axis == Axis::X ? settings.XUserMax : settings.YUserMax) = most;
    }
  }
  Show();
}

std::string SetupDesk::UnitName(Axis axis) const {
  const SystemInfo& settings = program_.settings;
  const int unit = axis == Axis::X ? settings.XUnit : settings.YUnit;
  if (unit != kUserUnit) return {};
  return std::string(TrimCommandText(axis == Axis::X ? settings.XUserName : settings.YUserName));
}

std::string SetupDesk::UnitRangeText(Axis axis, End end) const {
  const SystemInfo& settings = program_.settings;
  if (axis == Axis::X) return FormatEngMask(end == End::Min ? settings.XUserMin : settings.XUserMax, ".000000");
  return FormatEngMask(end == End::Min ? settings.YUserMin : settings.YUserMax, ".000");
}

std::string SetupDesk::CutWarning() const {
  const std::int32_t before = cancelCopy_.MemorySize;
  const std::int32_t after = setup_.ShownMemorySize();
  if (after >= before) return {};
  return std::to_string(before) + " -> " + std::to_string(after) +
         program_.messages.Pick(" 点: OK で波形の残りは失われます。", " points: the waveform will be cut on OK");
}

std::string SetupDesk::BenchHint() const {
  if (!bench_.Present()) return {};
  const ErrMsg& language = program_.messages;
  const std::string model(TrimCommandText(program_.settings.ModelName));
  if (UsbShown())
    return language.Pick("シミュレーションの計測器につながっています。", "Connected to the simulated bench.");
  const int address = bench_.AddressOf(model);
  if (address < 0) return {};
  return std::string(language.Pick("シミュレーションの計測器: ", "On the simulated bench ")) + model +
         language.Pick(" のアドレスは ", " has the address ") + std::to_string(address) + language.Pick("です。", ".");
}

void SetupDesk::ClearAddedPoints() {
  if (program_.settings.MemorySize <= knownPoints_) return;
  program_.buffers.ClearGrownPoints(knownPoints_);
  knownPoints_ = program_.settings.MemorySize;
}

bool SetupDesk::MemoryNameValid() const {
  const std::string_view name = TrimCommandText(program_.settings.MemoryName);
  return std::all_of(name.begin(), name.end(), [](char c) { return c >= ' ' && c <= '~' && c != '"'; });
}

// False: there is no instrument, and the user was shown.
bool SetupDesk::PrepareUsb() {
  if (!UsbShown()) return true;
  const std::string name = ResourceName();
  if (name.empty()) {
    const FailureHint hint = bus_.Hint();
    if (hint.kind == FailureHint::Kind::IncompleteLibrary) {
      program_.messages.ErrorBoxText(FailureText(program_.messages, kBusNoBoard, hint));
    } else {
      program_.messages.ErrorBox(kMsgNoListeners);
    }
    return false;
  }
  SystemInfo& settings = program_.settings;
  settings.Address = 0;
  settings.ModelName = TrimCommandText(settings.ModelName);
  bus_.SetUsbResource(name);
  return true;
}

void SetupDesk::Btn_Trans_Click(Transfer transfer) {
  const bool loop = program_.registry.GetLoopTest() && transfer != Transfer::Settings;
  if (loop && loopTest_.Running()) {
    loopTest_.Press();
    return;
  }
  if (!PrepareUsb()) return;
  if (transfer == Transfer::Waveform && !MemoryNameValid()) {
    program_.desktop.messageBoxes.Show(kApplicationTitle, "Invalid Memory Name.(2-byte Character)", BoxButtons::Ok,
                                       BoxIcon::Critical);
    port_->GoToMemoryName();
    return;
  }
  const bool outermost = !transferring_; // a second press is answered that the bus is busy
  if (outermost) {
    transferring_ = true;
    cancellable_ = !loop && transfer != Transfer::Waveform;
    cancelRequested_ = false;
    port_->SetTransferring(true);
  }
  if (loop) {
    loopTest_.Press();
  } else {
    Run(transfer);
  }
  if (!outermost) return;
  transferring_ = cancellable_ = false;
  if (port_ == nullptr) return;
  port_->SetTransferring(false);
  Show();
}

void SetupDesk::Run(Transfer transfer) {
  const TransferContext context = ContextOf(program_, bus_);
  const auto cancelled = [this] { return cancelRequested_; };
  switch (transfer) {
  case Transfer::Settings: SettingsTransfer(context, cancelled); return;
  case Transfer::Waveform: waveTransfer_.Run(); return;
  case Transfer::ReadBack: break;
  }
  if (!ReceiveWaveform(context, cancelled)) return;
  if (DecodeWaveform(context, setup_)) {
    if (port_ != nullptr) port_->WaveformChanged();
  } else {
    program_.messages.ErrorBox(kMsgTransferStopped);
  }
}

void SetupDesk::Btn_OK_Click() {
  ClearAddedPoints();
  setup_.Accept();
  port_->Close();
}

void SetupDesk::Btn_Cancel_Click() {
  if (transferring_) {
    cancelRequested_ = cancellable_;
    return;
  }
  SystemInfo& settings = program_.settings;
  SystemInfo restored = cancelCopy_;
  // These two belong to the waveform, which may have been read back meanwhile.
  restored.TransferFormat = settings.TransferFormat;
  restored.ControlPointCount = settings.ControlPointCount;
  settings = restored;
  program_.interfaceKind = program_.registry.GetGpibBoard();
  setup_.RecordLoaded();
  port_->Close();
}

void SetupDesk::Menu_FileOpen_Click() {
  files_.Open_File(Kind_System);
}

void SetupDesk::Menu_FileSave_Click() {
  files_.Save_File(Kind_System, false);
}

void SetupDesk::SaveLog() {
  const auto answer = program_.desktop.fileDialogs.Save(
      {"", program_.messages.Pick("通信記録(*.log)|*.log", "Traffic logs(*.log)|*.log"), 1, "traffic.log", "log"});
  if (!answer) return;
  const std::string text = Trace().Text();
  const std::array pieces{std::as_bytes(std::span(text))};
  if (ReplaceFile(answer->path, pieces) != 0)
    program_.messages.ErrorBoxText("[" + answer->path + "] " + program_.messages.MessageText(kMsgWriteFailed));
}

} // namespace calder

#include "comm/USB488_MDL.h"

#include "app/EngValB.h"

namespace calder {
namespace {

constexpr long kReceiveLength = 1024;

int ResultOf(int status) {
  switch (status) {
  case 0: return kBusOk;
  case Usb488::kTimeout: return kBusTimeout;
  case Usb488::kNoDevice: return kBusNoBoard;
  case Usb488::kBufferOverflow: return kBusOverflow;
  default: return kBusFailed;
  }
}

} // namespace

int USB488_MDL::GP_Init(const std::string& configuration) {
  openFailed_ = false;
  if (!Loaded(api_, [this](std::string* lacking) { return Usb488::Load(host_.libraries, lacking); }))
    return kBusNoBoard;
  if (open_) {
    // Whatever they answer: the device is left behind.
    api_->UsbCLS(device_);
    api_->UsbDevClear(device_);
    api_->UsbCloseDevice(device_);
    open_ = false;
  }
  device_ = static_cast<int>(LeadingNumber(ConfigurationValue(configuration, "USB488ID")));
  timeLimit_ = kTimeLimit300ms;
  terminator_ = kTermLf;
  endMark_ = true;
  return ResultOf(api_->UsbInitialize());
}

ErrorLabels USB488_MDL::Labels() const {
  if (!openFailed_) return BackEnd::Labels();
  constexpr const char* kWord = "Device Open Error"; // whatever the library says of it
  return {kWord, kWord, kWord, kWord};
}

// The device, opened when it is not.
int USB488_MDL::Open() {
  openFailed_ = false;
  if (!api_) return kBusNoBoard;
  if (open_) return kBusOk;
  if (const int result = ResultOf(api_->UsbOpenDevice(device_)); result != kBusOk) {
    openFailed_ = true;
    return result;
  }
  open_ = true;
  int result = GP_IFC();
  result |= GP_REN(true);
  result |= GP_MTerm(terminator_);
  result |= GP_EOI(endMark_);
  result |= GP_Time_Out(timeLimit_);
  return result;
}

int USB488_MDL::GP_End() {
  openFailed_ = false;
  if (!api_) return kBusNoBoard;
  int result = kBusOk;
  if (open_) {
    result |= ResultOf(api_->UsbEnableLocal(device_));
    result |= ResultOf(api_->UsbCloseDevice(device_));
    open_ = false;
  }
  return result | ResultOf(api_->UsbFinalize());
}

int USB488_MDL::GP_Send_Str(int /*address*/, const std::string& text) {
  if (const int result = Open(); result != kBusOk) return result;
  const std::string line = text + std::string(TerminatorText(terminator_));
  return ResultOf(api_->UsbSendTextData(device_, line.data(), static_cast<long>(line.size()), endMark_ ? 1 : 0));
}

int USB488_MDL::GP_Receive_Str(int /*address*/, std::string& text) {
  text.clear();
  if (const int result = Open(); result != kBusOk) return result;
  text.resize(kReceiveLength);
  long received = 0;
  const int result = ResultOf(api_->UsbReceiveTextData(device_, text.data(), kReceiveLength, &received));
  CutReply(text, static_cast<std::size_t>(std::max(received, 0L)));
  return result;
}

int USB488_MDL::GP_LLO() {
  if (const int result = Open(); result != kBusOk) return result;
  return ResultOf(api_->UsbSendLLO(device_));
}

int USB488_MDL::GP_REN(bool on) {
  if (!on && !open_) return api_ ? kBusOk : kBusNoBoard;
  if (const int result = Open(); result != kBusOk) return result;
  return ResultOf(on ? api_->UsbEnableRemote(device_) : api_->UsbEnableLocal(device_));
}

int USB488_MDL::GP_IFC() {
  if (const int result = Open(); result != kBusOk) return result;
  return ResultOf(api_->UsbSetIFC(device_));
}

int USB488_MDL::GP_SDC(int /*address*/) {
  if (const int result = Open(); result != kBusOk) return result;
  return ResultOf(api_->UsbDevClear(device_));
}

int USB488_MDL::GP_Time_Out(int code) {
  timeLimit_ = code;
  if (!open_) return kBusOk;
  return ResultOf(api_->UsbSetTimeout(device_, TimeLimitMilliseconds(code)));
}

int USB488_MDL::GP_MTerm(int mode) {
  if (mode < kTermNone || mode > kTermCrLf) return kBusFailed;
  terminator_ = mode;
  return kBusOk;
}

int USB488_MDL::GP_EOI(bool on) {
  endMark_ = on;
  return kBusOk;
}

int USB488_MDL::GP_Send_Binary_Data(std::span<const std::byte> data, int /*address*/, int count, int width, bool swap) {
  if (const int result = Open(); result != kBusOk) return result;
  const std::string payload = BinaryPayload(data, count, width, swap);
  // The data are one transfer, and nothing comes after it that could end the message.
  constexpr int kEndMark = 1;
  return ResultOf(api_->UsbSendBinary(device_, payload.data(), static_cast<long>(payload.size()), kEndMark));
}

} // namespace calder

#include "comm/KI_GPIB_MDL.h"

#include "app/EngValB.h"

#include <array>

namespace calder {
namespace {

constexpr long kReceiveLength = 1024;
constexpr int kSystemController = 0;

int ResultOf(int status) {
  switch (status) {
  case 0: return kBusOk;
  case KiGpib::kTimeout: return kBusTimeout;
  case KiGpib::kNoBoard: return kBusNoBoard;
  case KiGpib::kBufferOverflow: return kBusOverflow;
  default: return kBusFailed;
  }
}

// A quote inside a text is doubled.
std::string Quoted(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') quoted += c;
    quoted += c;
  }
  return quoted += '\'';
}

std::string DataLine(const std::string& text, int terminator, bool endMark) {
  static constexpr std::array<const char*, 4> kCodes{"", " 10", " 13", " 13 10"};
  const char* codes = kCodes[static_cast<std::size_t>(terminator)];
  if (!endMark) return "DATA " + Quoted(text) + " " + codes;
  if (terminator != kTermNone || text.empty()) return "DATA " + Quoted(text) + " EOI " + codes;
  const std::string last = Quoted(text.substr(text.size() - 1));
  const std::string rest = text.substr(0, text.size() - 1);
  return "DATA " + Quoted(rest) + " EOI DATA " + last;
}

// The library counts in steps of its timer, 55 ms.
unsigned long LimitMilliseconds(int code) {
  static constexpr std::array<unsigned long, 18> kLimits{0,   55,  55,   55,   55,    55,    55,     55,     55,
                                                         110, 330, 1045, 3025, 10010, 30030, 100045, 300250, 1000010};
  return kLimits[static_cast<std::size_t>(std::clamp(code, 0, 17))];
}

} // namespace

bool KI_GPIB_MDL::Ready() {
  return Loaded(api_, [this](std::string* lacking) { return KiGpib::Load(host_.libraries, lacking); });
}

int KI_GPIB_MDL::GP_Init(const std::string& configuration) {
  if (!Ready() || api_->_ieee_board_present() == 0) return kBusNoBoard;
  const int ownAddress = static_cast<int>(LeadingNumber(ConfigurationValue(configuration, "MYADRS")));
  api_->_ieee_initialize(ownAddress, kSystemController);
  int result = GP_IFC();
  result |= GP_REN(true);
  result |= GP_MTerm(kTermLf);
  result |= GP_EOI(true);
  result |= GP_Time_Out(kTimeLimit300ms);
  if (result != kBusOk) GP_End(); // a bus that is not used is left as it was
  return result;
}

int KI_GPIB_MDL::GP_Send_Str(int address, const std::string& text) {
  if (const int result = AddressListener(address); result != kBusOk) return result;
  return Transmit(DataLine(text, terminator_, endMark_));
}

int KI_GPIB_MDL::GP_Receive_Str(int address, std::string& text) {
  text.clear();
  if (!Ready()) return kBusNoBoard;
  if (address < kNoAddress) {
    address_ = address;
    const int result = Transmit("UNT UNL LISTEN MLA TALK " + std::to_string(address));
    if (result != kBusOk) return result;
  }
  text.resize(kReceiveLength);
  long received = 0;
  const int result = ResultOf(api_->_ieee_receive(text.data(), kReceiveLength, &received));
  CutReply(text, static_cast<std::size_t>(std::max(received, 0L)));
  return result;
}

int KI_GPIB_MDL::GP_REN(bool on) {
  const int result = Transmit("REN");
  return on ? result : result | GoToLocal();
}

int KI_GPIB_MDL::GP_SDC(int address) {
  address_ = address;
  return Transmit("UNL LISTEN " + std::to_string(address) + " SDC");
}

int KI_GPIB_MDL::GP_Time_Out(int code) {
  return Ready() ? ResultOf(api_->_ieee_settimeout(LimitMilliseconds(code))) : kBusNoBoard;
}

int KI_GPIB_MDL::GP_MTerm(int mode) {
  static constexpr std::array<int, 4> kInput{0, 10, 13, 10};
  if (mode < kTermNone || mode > kTermCrLf) return kBusFailed;
  if (!Ready()) return kBusNoBoard;
  const int result = ResultOf(api_->_ieee_setinputEOS(kInput[static_cast<std::size_t>(mode)]));
  if (result == kBusOk) terminator_ = mode;
  return result;
}

int KI_GPIB_MDL::GP_EOI(bool on) {
  endMark_ = on;
  return kBusOk;
}

int KI_GPIB_MDL::GP_Send_Binary_Data(std::span<const std::byte> data, int address, int count, int width, bool swap) {
  if (const int result = AddressListener(address); result != kBusOk) return result;
  if (!Ready()) return kBusNoBoard;
  const std::string payload = BinaryPayload(data, count, width, swap);
  return ResultOf(api_->_ieee_tarray(payload.data(), static_cast<long>(payload.size()), endMark_ ? 1 : 0));
}

int KI_GPIB_MDL::Transmit(const std::string& words) {
  return Ready() ? ResultOf(api_->_ieee_transmit(words.data(), static_cast<long>(words.size()))) : kBusNoBoard;
}

int KI_GPIB_MDL::GoToLocal() {
  return Transmit("UNL LISTEN " + std::to_string(address_) + " GTL");
}

int KI_GPIB_MDL::AddressListener(int address) {
  if (address >= kNoAddress) return kBusOk;
  address_ = address;
  return Transmit("UNT UNL TALK MTA LISTEN " + std::to_string(address));
}

} // namespace calder

#include "comm/NI_GPIB_Mdl.h"

#include "app/EngValB.h"

#include <array>

namespace calder {
namespace {

constexpr long kReceiveLength = 256;

// IEEE 488.1 command bytes.
constexpr char kSelectedDeviceClear = 4;
constexpr char kLocalLockout = 17;
constexpr char kUnlisten = 63;
constexpr char kUntalk = 95;
constexpr int kListen = 32;
constexpr int kTalk = 64;

// Reading ends at the character (0x400), compared with all its eight bits (0x1000).
constexpr std::array<int, 4> kEosModes{0, 0x140A, 0x140D, 0x140A};

char CommandByte(int base, int address) {
  return static_cast<char>(base + address);
}

} // namespace

template <typename Call>
int NI_GPIB_Mdl::Do(Call call) {
  if (!Loaded(api_, [this](std::string* lacking) { return Ni4882::Load(host_.libraries, lacking); }))
    return kBusNoBoard;
  int status = 0;
  int error = 0;
  if (api_->RegisterGpibGlobalsForThread != nullptr) {
    int ibcnt = 0;
    int ibcntl = 0;
    api_->RegisterGpibGlobalsForThread(&status, &error, &ibcnt, &ibcntl);
    call(*api_);
    count_ = ibcntl;
    api_->UnregisterGpibGlobalsForThread();
  } else {
    call(*api_);
    status = api_->ThreadIbsta();
    error = api_->ThreadIberr();
    count_ = api_->ThreadIbcntl();
  }
  if ((status & Ni4882::kError) == 0) return (status & Ni4882::kTimeout) != 0 ? kBusTimeout : kBusOk;
  return error == Ni4882::kNoBoard ? kBusNoBoard : kBusFailed;
}

template <typename Call>
int NI_GPIB_Mdl::DoMoving(std::size_t bytes, Call call) {
  const int result = Do(call);
  return result == kBusOk && count_ != static_cast<long>(bytes) ? kBusFailed : result;
}

int NI_GPIB_Mdl::GP_Init(const std::string& configuration) {
  std::string name = ConfigurationValue(configuration, "BOARD_NAME");
  if (name.empty()) name = "gpib0";
  ownAddress_ = static_cast<int>(LeadingNumber(ConfigurationValue(configuration, "MYADRS")));
  int board = -1;
  int result = Do([&](const Ni4882& api) { board = api.ibfind(name.c_str()); });
  if (result == kBusOk && board < 0) result = kBusFailed;
  if (result != kBusOk) return result;
  board_ = board;
  result |= Do([&](const Ni4882& api) { api.ibconfig(board_, Ni4882::kConfigAutoPoll, 0); });
  result |= GP_IFC();
  result |= GP_REN(true);
  result |= GP_MTerm(kTermLf);
  result |= GP_EOI(true);
  result |= GP_Time_Out(kTimeLimit300ms);
  if (result != kBusOk) GP_REN(false); // a bus that is not used is left as it was
  return result;
}

int NI_GPIB_Mdl::GP_Send_Str(int address, const std::string& text) {
  if (const int result = AddressListener(address); result != kBusOk) return result;
  return Write(text + std::string(TerminatorText(terminator_)));
}

int NI_GPIB_Mdl::GP_Receive_Str(int address, std::string& text) {
  text.assign(kReceiveLength, ' ');
  if (const int result = AddressTalker(address); result != kBusOk) return result;
  const int result = Do([&](const Ni4882& api) { api.ibrd(board_, text.data(), kReceiveLength); });
  CutReply(text, static_cast<std::size_t>(std::max(count_, 0L)));
  return result;
}

int NI_GPIB_Mdl::GP_LLO() {
  return Commands({&kLocalLockout, 1});
}

int NI_GPIB_Mdl::GP_REN(bool on) {
  return Do([&](const Ni4882& api) { api.ibsre(board_, on ? 1 : 0); });
}

int NI_GPIB_Mdl::GP_IFC() {
  return Do([&](const Ni4882& api) { api.ibsic(board_); });
}

int NI_GPIB_Mdl::GP_SDC(int address) {
  const std::array<char, 3> bytes{kUnlisten, CommandByte(kListen, address), kSelectedDeviceClear};
  return Commands({bytes.data(), bytes.size()});
}

int NI_GPIB_Mdl::GP_Time_Out(int code) {
  return Do([&](const Ni4882& api) { api.ibtmo(board_, code); });
}

int NI_GPIB_Mdl::GP_MTerm(int mode) {
  if (mode < kTermNone || mode > kTermCrLf) return kBusFailed;
  const int result = Do([&](const Ni4882& api) { api.ibeos(board_, kEosModes[static_cast<std::size_t>(mode)]); });
  if (result == kBusOk) terminator_ = mode;
  return result;
}

int NI_GPIB_Mdl::GP_EOI(bool on) {
  return Do([&](const Ni4882& api) { api.ibeot(board_, on ? 1 : 0); });
}

int NI_GPIB_Mdl::GP_Send_Binary_Data(std::span<const std::byte> data, int address, int count, int width, bool swap) {
  if (const int result = AddressListener(address); result != kBusOk) return result;
  if (width == 0 && !swap) {
    const auto bytes = std::min(data.size(), static_cast<std::size_t>(std::max(count, 0)));
    return Write({reinterpret_cast<const char*>(data.data()), bytes});
  }
  return Write(BinaryPayload(data, count, width, swap));
}

int NI_GPIB_Mdl::BoardAdr(int address, int& answer) {
  return Do([&](const Ni4882& api) {
    if (address > 0) {
      api.ibpad(board_, address);
      answer = address;
    } else {
      api.ibask(board_, Ni4882::kAskPrimaryAddress, &answer);
    }
  });
}

int NI_GPIB_Mdl::Commands(std::string_view bytes) {
  return DoMoving(bytes.size(),
                  [&](const Ni4882& api) { api.ibcmd(board_, bytes.data(), static_cast<long>(bytes.size())); });
}

int NI_GPIB_Mdl::AddressListener(int address) {
  if (address >= kNoAddress) return kBusOk;
  const std::array<char, 4> bytes{kUntalk, kUnlisten, CommandByte(kTalk, ownAddress_), CommandByte(kListen, address)};
  return Commands({bytes.data(), bytes.size()});
}

int NI_GPIB_Mdl::AddressTalker(int address) {
  if (address >= kNoAddress) return kBusOk;
  const std::array<char, 4> bytes{kUntalk, kUnlisten, CommandByte(kTalk, address), CommandByte(kListen, ownAddress_)};
  return Commands({bytes.data(), bytes.size()});
}

int NI_GPIB_Mdl::Write(std::string_view bytes) {
  return DoMoving(bytes.size(),
                  [&](const Ni4882& api) { api.ibwrt(board_, bytes.data(), static_cast<long>(bytes.size())); });
}

} // namespace calder

// The simulated bus libraries, loaded as the program loads them, on a bench as switched on.
#pragma once

#include "Testing.h"
#include "libs/bus/KiGpib.h"
#include "libs/bus/Ni4882.h"
#include "libs/bus/Usb488.h"
#include "libs/bus/Visa.h"
#include "platform/posix/DlBusLibraries.h"
#include "sim/SimBench.h"

#include <string_view>

namespace calder {

class BenchTest : public testing::Test {
protected:
  static constexpr int kXg5530 = 1;
  static constexpr int kXj2110 = 3;
  static constexpr int kQn1010 = 7;
  static constexpr int kPj7410 = 11;
  static constexpr int kKz8110 = 18;

  BenchTest() {
    sim::Reset();
    sim::OnWait([this](double seconds) { waited += seconds; });
    EXPECT_TRUE(ni && ki && usb && visa);
    ni->RegisterGpibGlobalsForThread(&status, &error, &count, &countLong);
  }
  ~BenchTest() override { ni->UnregisterGpibGlobalsForThread(); }

  void OpenNi() {
    EXPECT_EQ(ni->ibfind("GPIB0"), 0);
    ni->ibsic(0);
    ni->ibeos(0, 0x140A);
  }
  int Address(int talker, int listener) {
    const std::array<char, 4> bytes = {95, 63, static_cast<char>(64 + talker), static_cast<char>(32 + listener)};
    return ni->ibcmd(0, bytes.data(), bytes.size());
  }
  int Put(int address, std::string_view data) {
    Address(0, address);
    return ni->ibwrt(0, data.data(), static_cast<long>(data.size()));
  }
  std::string Get(int address) {
    Address(address, 0);
    std::string text(256, ' ');
    ni->ibrd(0, text.data(), 256);
    text.resize((status & Ni4882::kError) != 0 ? 0 : static_cast<std::size_t>(count));
    return text;
  }
  std::string Ask(int address, std::string_view query) {
    Put(address, std::string(query) + "\n");
    return Get(address);
  }
  // A raw block in pieces of 512 bytes; the last one carries the end mark.
  void PutBlock(int address, const std::string& block) {
    Address(0, address);
    ni->ibeot(0, 0);
    for (std::size_t at = 0; at < block.size(); at += 512) {
      const std::string piece = block.substr(at, 512);
      if (at + 512 >= block.size()) ni->ibeot(0, 1);
      ni->ibwrt(0, piece.data(), static_cast<long>(piece.size()));
    }
  }
  ViSession OpenVisa() {
    ViSession manager = 0;
    ViSession device = 0;
    EXPECT_EQ(visa->viOpenDefaultRM(manager), VI_SUCCESS);
    EXPECT_EQ(visa->viOpen(manager, "USB0::0x1209::0x5531::1234567", device), VI_SUCCESS);
    return device;
  }
  std::string AskVisa(ViSession device, const std::string& query, std::uint32_t capacity = 1024) {
    std::uint32_t moved = 0;
    EXPECT_EQ(visa->viWrite(device, query.data(), static_cast<std::uint32_t>(query.size()), moved), VI_SUCCESS);
    std::string text(capacity, ' ');
    visa->viRead(device, text.data(), capacity, moved);
    return text.substr(0, moved);
  }

  DlBusLibraries libraries{CALDER_SIM_FOLDER};
  std::unique_ptr<Ni4882> ni = Ni4882::Load(libraries);
  std::unique_ptr<KiGpib> ki = KiGpib::Load(libraries);
  std::unique_ptr<Usb488> usb = Usb488::Load(libraries);
  std::unique_ptr<Visa> visa = LoadVisa(libraries);
  int status = 0;
  int error = 0;
  int count = 0;
  int countLong = 0;
  double waited = 0;
};

// Codes as a block, the high byte first or the low one.
inline std::string BlockOf(const std::vector<std::int16_t>& codes, bool lowFirst = false) {
  std::string block;
  for (const std::int16_t code : codes) {
    const char high = static_cast<char>(code >> 8);
    const char low = static_cast<char>(code);
    block += lowFirst ? low : high;
    block += lowFirst ? high : low;
  }
  return block;
}

} // namespace calder

#include "comm/BusFixture.h"
#include "comm/ReadBack.h"

#include <gmock/gmock.h>

namespace calder::intfc_lib_test {

struct Interface : BusFixture {
  [[nodiscard]] bool Has(const std::string& line) const {
    const auto calls = Calls();
    return std::find(calls.begin(), calls.end(), line) != calls.end();
  }
};

TEST_F(Interface, TimeLimitsGoByTheirCodes) {
  const std::pair<double, int> limits[] = {{0, 0},  {-5, 0},  {1e-9, 1},  {0.5, 10}, {1, 11},
                                           {3, 12}, {30, 14}, {2000, 17}, {1e9, 17}};
  for (const auto& [seconds, code] : limits) EXPECT_EQ(TimeLimitCode(seconds), code) << seconds;
  EXPECT_EQ(TimeLimitSeconds(10), 0.3);
  Choose(1, kNiGpib);
  EXPECT_EQ(bus->Tmo(0.5), 0.3);
  EXPECT_TRUE(Has("ibtmo(0, 10)"));
}

TEST_F(Interface, SetsItselfUpAndKeepsTerminatorAndEndMode) {
  Choose(1, kNiGpib);
  EXPECT_EQ(bus->Eos("\r"), ""); // not initialised: nothing
  EXPECT_EQ(bus->Puts(2, "*CLS"), kBusOk);
  EXPECT_EQ(Calls().front(), "ibfind(\"GPIB0\")");
  EXPECT_EQ(sim::Messages("XG5531"), (std::vector<std::string>{"*CLS"}));
  EXPECT_EQ(bus->Eos(), "\n");
  EXPECT_EQ(bus->Eot(1), 1); // recorded only
  EXPECT_EQ(bus->Eot(-1), 1);
  desktop.boxes.Expect("Nonexistent interface board\rModule IntfcLib : Function GpEot");
  EXPECT_EQ(bus->Eot(7), 1);
  const int calls = sim::CallCount();
  desktop.boxes.Expect("Nonexistent interface board\rModule IntfcLib : Function GpEos");
  EXPECT_EQ(bus->Eos("ab"), "ab");
  EXPECT_EQ(sim::CallCount(), calls); // the back end's terminator stays
  bus->Puts(2, "X");
  EXPECT_TRUE(Has("ibwrt(0, \"X\\n\")"));
  EXPECT_FALSE(bus->GpErrMsgOn(0));
  bus->Eot(9); // no box now
  EXPECT_EQ(bus->ErrorCode(), kBusNoBoard);
  EXPECT_EQ(bus->ErrorText(), "Nonexistent interface board");
  EXPECT_TRUE(bus->GpErrMsgOn(-1));
  program->interfaceKind = static_cast<InterfaceKind>(9);
  desktop.boxes.Expect("Interface error");
  EXPECT_EQ(bus->Puts(2, "X"), kBusFailed);
}

TEST_F(Interface, BoardAdrKeepsTheErrorRuleAndEverySetupShowsItsFailure) {
  Choose(1, kNiGpib);
  ASSERT_TRUE(sim::Script("fail ibask 1\nfail ibask 2"));
  EXPECT_EQ(bus->BoardAdr(-1), -1); // nothing is shown before the first Setup
  EXPECT_EQ(bus->ErrorCode(), kBusFailed);
  bus->Setup();
  desktop.boxes.Expect("Interface error\rModule IntfcLib : Function BoardAdr");
  EXPECT_EQ(bus->BoardAdr(-1), -1);
  EXPECT_EQ(bus->BoardAdr(-1), 0);
  EXPECT_EQ(bus->ErrorCode(), kBusOk);
  EXPECT_NE(bus->Trace().Text().find("  BoardAdr  error 2\n"), std::string::npos);
  bus->GpErrMsgOn(0); // as after a broken transfer
  bus->End();
  ASSERT_TRUE(sim::Script("fail ibfind 2"));
  desktop.boxes.Expect("Interface error\rModule IntfcLib : Function Setup");
  EXPECT_EQ(bus->Setup(), kBusFailed);
}

TEST_F(Interface, RepliesLoseTheirEnds) {
  Choose(1, kNiGpib);
  bus->Puts(2, "*IDN?");
  EXPECT_EQ(bus->Gets(2), "ORVO,XG5531,1234567,1.00");
  // Nothing was asked: the board reports a read that ran out of time as an error.
  desktop.boxes.Expect("Interface error\rModule IntfcLib : Function Gets");
  EXPECT_EQ(bus->Gets(2), "");
  EXPECT_EQ(bus->ErrorCode(), kBusFailed);
  program->interfaceKind = kKiGpib;
  bus->Setup();
  desktop.boxes.Expect("I/O operation aborted(timeout)\rModule IntfcLib : Function Gets");
  EXPECT_EQ(bus->Gets(2), "");
  EXPECT_EQ(bus->ErrorCode(), kBusTimeout);
}

TEST_F(Interface, ConfigurationKeysAreFoundWithoutRegardToCase) {
  const std::string text = "MyAdrs = 3, BOARD_NAME= gpib2 , LOG_FILE";
  EXPECT_EQ(Texts(ConfigurationValue(text, "MYADRS"), ConfigurationValue(text, "BOARD_NAME"),
                  ConfigurationValue(text, "LOG_FILE"), ConfigurationValue(text, "INI_FILE")),
            "3 gpib2  ");
}

TEST_F(Interface, TheSimulatedInstrumentAnswersFromItsFile) {
  Choose(1, kSimulated);
  std::ofstream(folder / "simulated.ini")
      << "[ADRS2]\n*IDN? = ORVO, X\n:A:B?=\"1;2\"\nLONG? = " << std::string(99, 'x') << "\n[ADRS3]\n*IDN?=other\n";
  EXPECT_EQ(bus->Puts(2, ":SET 1; *IDN? ;:A:B?;NONE?"), kBusOk);
  EXPECT_EQ(bus->Gets(2), "ORVO, X,1;2,");
  desktop.boxes.Expect("\rModule IntfcLib : Function Puts\rAddress 2");
  EXPECT_EQ(bus->Puts(2, "LONG?"), kBusOverflow);
  EXPECT_EQ(bus->Gets(2), "Buffer Over");
}

TEST_F(Interface, TheTraceHoldsTheLastTransferOrAllOfThemWithEveryByte) {
  Choose(1, kUsbTmc);
  BusTrace& trace = bus->Trace();
  TransferWave();
  EXPECT_THAT(trace.LastTransfer(), testing::HasSubstr("GP_Send_Str 0  \":SOUR1:FUNC:SHAP USER;"));
  EXPECT_THAT(trace.LastTransfer(), testing::HasSubstr("#42056\" 2056 bytes 0000000000000400"));
  EXPECT_THAT(trace.LastTransfer(), testing::HasSubstr("...\n"));
  trace.Keep(true);
  const std::string first = trace.LastTransfer();
  TransferWave();
  EXPECT_EQ(trace.Text(), first + trace.LastTransfer());
  EXPECT_EQ(bus->BoardAdr(-1), 0); // belongs to no transfer
  EXPECT_THAT(trace.LastTransfer(), testing::Not(testing::HasSubstr("BoardAdr")));
  // The block whole, on its way there and back.
  const auto codes = std::as_bytes(W_Lock(program->buffers.Current()).first(1024));
  std::vector<std::byte> swapped(codes.begin(), codes.end());
  for (std::size_t i = 0; i < swapped.size(); i += 2) std::swap(swapped[i], swapped[i + 1]);
  const std::string block = ShowData({.block = swapped}).substr(std::string("2048 bytes ").size());
  EXPECT_THAT(trace.LastTransfer(), testing::HasSubstr(block + "\n"));
  EXPECT_TRUE(ReceiveWaveform(Context()));
  EXPECT_THAT(trace.LastTransfer(), testing::HasSubstr(block));
  for (int i = 0; i < 34; ++i) trace.Add(0, "X", 1, {.block = std::vector<std::byte>(1 << 20)}, 0);
  for (int i = 0; i < 9; ++i) trace.Add(0, "X", 1, {}, 0);
  EXPECT_GT(trace.Text().size(), BusTrace::kMostBytes - (4 << 20));
  EXPECT_LE(trace.Text().size(), BusTrace::kMostBytes + BusTrace::kMostLines);
  trace.Keep(false);
  TransferWave();
  EXPECT_EQ(trace.Text(), trace.LastTransfer());
}

// Libraries that have every entry point but, each, the one of that name.
struct Lacking final : BusLibraries {
  struct Library final : BusLibrary {
    Lacking& all;
    std::string lacks;
    Library(Lacking& libraries, std::string name) : all(libraries), lacks(std::move(name)) {}
    [[nodiscard]] void* Entry(const char* name) const override {
      all.asked.insert(name);
      return name == lacks ? nullptr : &all;
    }
  };
  void Offer(std::span<const char* const>, const std::function<bool(std::unique_ptr<BusLibrary>)>& take) override {
    for (const std::string& name : lacking) {
      if (take(std::make_unique<Library>(*this, name))) return;
    }
  }
  std::vector<std::string> lacking;
  std::set<std::string> asked;
};

TEST(BusLoaders, ALibraryThatLacksAnEntryPointIsPassedOver) {
  using Load = bool (*)(BusLibraries&);
  const Load loads[] = {[](BusLibraries& all) { return Ni4882::Load(all) != nullptr; },
                        [](BusLibraries& all) { return KiGpib::Load(all) != nullptr; },
                        [](BusLibraries& all) { return Usb488::Load(all) != nullptr; },
                        [](BusLibraries& all) { return LoadVisa(all) != nullptr; }};
  for (const Load load : loads) {
    Lacking libraries;
    libraries.lacking = {"nothing"};
    EXPECT_TRUE(load(libraries));
    const std::set<std::string> entries = libraries.asked;
    EXPECT_GE(entries.size(), 7U);
    for (const std::string& entry : entries) {
      libraries.lacking = {entry, "nothing"};
      EXPECT_TRUE(load(libraries)) << entry;
      libraries.lacking = {entry, entry};
      if (entry.find("GpibGlobals") == std::string::npos) { // there is another way to the status
        EXPECT_FALSE(load(libraries)) << entry;
      }
    }
  }
  // The kernel's driver stands in for a library that is missing, not for a broken one.
  fake::Boxes boxes;
  Lacking libraries;
  libraries.lacking = {"viClear"};
  bool stoodIn = false;
  BackEndHost host{boxes, libraries, "", {}, [&] {
                     stoodIn = true;
                     return std::unique_ptr<Visa>();
                   }};
  USBTMC_MDL incomplete(host);
  EXPECT_EQ(incomplete.GP_Init(""), kBusNoBoard);
  EXPECT_FALSE(stoodIn);
  EXPECT_EQ(incomplete.Hint().entry, "viClear");
  libraries.lacking.clear();
  EXPECT_EQ(USBTMC_MDL(host).GP_Init(""), kBusNoBoard);
  EXPECT_TRUE(stoodIn);
}

} // namespace calder::intfc_lib_test

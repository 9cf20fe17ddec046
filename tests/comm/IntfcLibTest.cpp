#include "comm/BusFixture.h"

#include <fstream>

namespace calder {
namespace {

struct Interface : BusFixture {
  [[nodiscard]] bool Has(const std::string& line) const {
    const auto calls = Calls();
    return std::find(calls.begin(), calls.end(), line) != calls.end();
  }
};

} // namespace

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
  EXPECT_EQ(ConfigurationValue(text, "MYADRS"), "3");
  EXPECT_EQ(ConfigurationValue(text, "BOARD_NAME"), "gpib2");
  EXPECT_EQ(ConfigurationValue(text, "LOG_FILE"), "");
  EXPECT_EQ(ConfigurationValue(text, "INI_FILE"), "");
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

TEST_F(Interface, TheTraceHoldsTheLastTransferOrAll) {
  Choose(1, kUsbTmc);
  BusTrace& trace = bus->Trace();
  TransferWave();
  EXPECT_NE(trace.LastTransfer().find("GP_Send_Str 0  \":SOUR1:FUNC:SHAP USER;"), std::string::npos);
  trace.Keep(true);
  const std::string first = trace.LastTransfer();
  TransferWave();
  EXPECT_EQ(trace.Text().substr(0, first.size()), first);
  EXPECT_EQ(trace.Text(), first + trace.LastTransfer());
  trace.Keep(false);
  TransferWave();
  EXPECT_EQ(trace.Text(), trace.LastTransfer());
}

} // namespace calder

// What a transfer decides on its way: busy and address checks, refusals by the instrument, cancelling, formats, the way
// back.
#include "comm/BusFixture.h"
#include "comm/ReadBack.h"
#include "comm/SettingsTransfer.h"
#include "comm/TransferRate.h"

#include <gmock/gmock.h>

namespace calder::transfer_test {

struct Transfers : BusFixture {
  [[nodiscard]] std::vector<std::int16_t> Codes() {
    const auto codes = W_Lock(program->buffers.Current());
    return {codes.begin(), codes.begin() + program->settings.MemorySize};
  }
  bool ReadBack() { return ReceiveWaveform(Context()) && DecodeWaveform(Context(), *setup); }
};

TEST_F(Transfers, AreRefusedWhileABusIsBusyAndAtTheControllersAddress) {
  Choose(1, kNiGpib);
  program->registry.SetGpibBusy(true);
  desktop.boxes.Expect("Interface Busy!");
  EXPECT_FALSE(TransferWave());
  EXPECT_TRUE(program->registry.GetGpibBusy()); // of the first one
  program->registry.SetGpibBusy(false);

  program->settings.Address = 0;
  sim::Reset();
  desktop.boxes.onShow = [this] { ExpectIdle(); }; // another copy may go on meanwhile
  desktop.boxes.Expect("Interface address error. Check Address.\rAddress:0");
  EXPECT_FALSE(SettingsTransfer(Context()));
  EXPECT_EQ(sim::CallCount(), 1); // the question for the address
  EXPECT_EQ(program->registry.GetGpibAddress(), 0);
}

TEST_F(Transfers, TellAWrongInstrument) {
  Choose(1, kNiGpib);
  program->settings.Address = 3; // an XJ2110, which knows no sequence
  desktop.boxes.acceptAll = true;
  EXPECT_FALSE(SettingsTransfer(Context()));
  ExpectIdle();

  desktop.boxes.shown.clear();
  Choose(2, kNiGpib);
  program->settings.Address = 5;
  EXPECT_FALSE(SettingsTransfer(Context()));
  ASSERT_EQ(desktop.boxes.shown.size(), 1U);
  EXPECT_EQ(desktop.boxes.shown[0].text, "Interface command error. Check Model.\r");
  desktop.boxes.shown.clear();
  EXPECT_FALSE(TransferWave()); // the first failed identification stops without a word
  EXPECT_TRUE(desktop.boxes.shown.empty());
  ExpectIdle();
}

TEST_F(Transfers, TellTheInstrumentsOwnError) {
  Choose(2, kNiGpib);
  program->settings.Frequency = 1e12;
  desktop.boxes.Expect("Interface command error. Check Model.\r-222,");
  EXPECT_FALSE(SettingsTransfer(Context()));
  ExpectIdle();
  // There is no such memory: USBTMC learns it after the block, GPIB when the waveform is chosen.
  Choose(1, kUsbTmc);
  program->settings.MemoryNo = 200;
  desktop.boxes.Expect("-222,");
  desktop.boxes.Expect("Transfer is interrupted because an error occurred.");
  EXPECT_FALSE(TransferWave());
  ExpectIdle();
  Choose(1, kNiGpib);
  program->settings.MemoryNo = 200;
  desktop.boxes.Expect("Interface command error. Check Model.\r-222,");
  EXPECT_FALSE(TransferWave());
  EXPECT_EQ(sim::Messages("XG5531").back(), "*ESR?"); // to the end all the same
  ExpectIdle();
}

TEST_F(Transfers, TheDebugSwitchShowsEachCommand) {
  Choose(2, kNiGpib);
  program->registry.SetDebugMode(true);
  desktop.boxes.acceptAll = true;
  EXPECT_TRUE(TransferWave());
  program->settings.Address = 5; // another instrument
  EXPECT_FALSE(SettingsTransfer(Context()));
  std::vector<std::string> shown;
  for (const auto& box : desktop.boxes.shown) shown.push_back(box.title + ": " + box.text);
  for (const char* wanted : {"GpibPuts: '*IDN?'", "GpPuts: ':TRAC:POIN 1024;:FORM:BORD NORM;:TRAC:DATA 1,USER1,'",
                             "ModelCheck: System Setting Model:XJ2110\rReturn ID:'ORVO,XJ3310,1234567,1.00'"})
    EXPECT_THAT(shown, testing::Contains(wanted));
}

TEST_F(Transfers, StopARunningSequence) {
  Choose(1, kUsbTmc);
  ASSERT_TRUE(sim::Set("XG5531", "sequence", "1"));
  EXPECT_TRUE(SettingsTransfer(Context()));
  EXPECT_EQ(Texts(sim::Setting("XG5531", "sequence"), sim::Setting("XG5531", "running")), "0 0");
  EXPECT_GE(desktop.clock.seconds, 2);
}

TEST_F(Transfers, CancelBeforeAndWhileSending) {
  Choose(1, kNiGpib);
  progress.onValue = [&](int) { progress.cancelled = true; };
  EXPECT_FALSE(TransferWave()); // in the conversion: nothing of the waveform goes out
  EXPECT_EQ(sim::Messages("XG5531").size(), 0U);
  ExpectIdle();

  sim::Reset();
  const sim::Waveform held{"OLD", 0, std::vector<std::int16_t>(1024, 7), {}};
  ASSERT_TRUE(sim::Store("XG5531", 1, held));
  progress.onValue = [&](int value) {
    if (progress.steps.back() == "Send data 1000" && value > 0 && progress.sent > 512) progress.cancelled = true;
  };
  EXPECT_FALSE(TransferWave());
  const auto calls = Calls();
  EXPECT_EQ(std::count(calls.begin(), calls.end(), "ibfind(\"GPIB0\")"), 2); // closed and opened again
  EXPECT_EQ(sim::Memory("XG5531", 1), held);
  // All that follows the block is done, the waits included.
  EXPECT_EQ(Texts(progress.steps.back(), desktop.clock.seconds), "load data 5 5");
  const auto messages = sim::Messages("XG5531");
  EXPECT_EQ(std::vector(messages.end() - 3, messages.end()),
            (std::vector<std::string>{":SOUR1:FUNC:SHAP USER;:SOUR1:FUNC:USER 1", "*ESR?", "*ESR?"}));
  ExpectIdle();
}

// At each bus call from the first command on: before the block nothing changes any more, after it all else is done.
TEST_F(Transfers, ACancelIsSeenBeforeTheInstrumentIsChanged) {
  const auto run = [&](const std::string& script) {
    sim::Reset();
    sim::OnWait([&](double) { progress.cancelled = true; });
    EXPECT_TRUE(sim::Store("XG5531", 1, {"OLD", 0, {7, 7}, {}}) && sim::Store("XJ2110", 1, {"OLD", 0, {7, 7}, {}}));
    EXPECT_TRUE(sim::Script(script));
    const bool sent = TransferWave();
    ExpectIdle();
    return sent;
  };
  // With the calls that make one operation with that of the first byte.
  for (const auto& [model, name, kind, joined] : {std::tuple(1, "XG5531", kNiGpib, 1),
                                                  {1, "XG5531", kUsb488, 0},
                                                  {1, "XG5531", kUsbTmc, 3},
                                                  {2, "XJ2110", kNiGpib, 1},
                                                  {2, "XJ2110", kUsb488, 0}}) {
    Choose(model, kind);
    EXPECT_TRUE(run(""));
    const auto calls = Calls();
    const auto first = std::find_if(calls.begin(), calls.end(), [](const std::string& call) {
      return call.find("SYST:HEAD") != std::string::npos;
    });
    const auto block =
        std::find_if(first, calls.end(), [](const std::string& call) { return call.size() > 600; }) - joined;
    ASSERT_LT(block, calls.end());
    for (auto call = first; call != calls.end(); ++call) {
      SCOPED_TRACE(std::to_string(kind) + ": " + call->substr(0, 60));
      const bool sent = run("late " + std::to_string(call - calls.begin() + 1) + " 0.001");
      const auto messages = sim::Messages(name);
      if (call < block) {
        EXPECT_FALSE(sent);
        EXPECT_EQ(sim::Memory(name, 1)->name, "OLD");
        EXPECT_TRUE(model == 2 || std::none_of(messages.begin(), messages.end(), [](const std::string& message) {
                      return message.starts_with(":SOUR1:FUNC:SHAP ");
                    }));
      } else if (call > block && messages.back() != "*ESR?") {
        EXPECT_EQ(kind, kUsbTmc); // in the wait for the block
      }
    }
  }
  // The wait after the choice is shortened, no more.
  Choose(1, kUsbTmc);
  progress.onValue = [&](int value) { progress.cancelled = progress.steps.back() == "load data 5" && value == 2; };
  EXPECT_FALSE(run(""));
  EXPECT_EQ(progress.values.back(), 2);
  const auto messages = sim::Messages("XG5531");
  EXPECT_EQ(std::vector(messages.end() - 3, messages.end()),
            (std::vector<std::string>{":SOUR1:FUNC:SHAP USER;:SOUR1:FUNC:USER 1", "*ESR?", "*ESR?"}));
}

TEST_F(Transfers, ASettingsTransferThatNeverSettlesIsCancelledWithoutAWord) {
  Choose(10, kNiGpib);
  program->settings.RangeNo = 1;
  desktop.clock.onWait = [] { EXPECT_TRUE(sim::Set("PJ7410", "settling", "9")); };
  EXPECT_FALSE(SettingsTransfer(Context(), [&] { return desktop.clock.seconds > 30; }));
  EXPECT_EQ(sim::Messages("PJ7410").back(), "STAT:OPER:COND?");
  EXPECT_EQ(Calls().back(), "ibsre(0, 0)"); // closed as ever
  ExpectIdle();
  const std::pair<const char*, std::uint32_t> replies[] = {{"6", 6}, {"1e30", 0xFFFFFFFF}, {"-1e30", 0x80000000}};
  for (const auto& [reply, bits] : replies) EXPECT_EQ(ReplyBits(reply), bits) << reply;
}

TEST_F(Transfers, ShowTheirSteps) {
  Choose(1, kUsbTmc);
  EXPECT_TRUE(TransferWave());
  EXPECT_EQ(progress.steps,
            (std::vector<std::string>{"Data convert 1000", "Send data 1000", "Send data 9", "load data 5"}));
  EXPECT_EQ(desktop.clock.seconds, 9 + 5);
  EXPECT_EQ(progress.sends, (std::vector<std::size_t>{0, 2056})); // the clock starts before the first byte
  Choose(1, kNiGpib);
  progress.values.clear();
  EXPECT_TRUE(TransferWave());
  EXPECT_EQ(std::ranges::count(progress.values, 1000), 2) << "all converted, all sent";
}

TEST(TransferRate, IsToldWhenItMeansSomething) {
  const std::tuple<std::size_t, double, const char*, const char*> cases[] = {
      {0, 1, "", ""},
      {500, 0.1, "", ""}, // too early
      {500000, 0.5, "1.00 MB/s, 1 s left", "1.00 MB/s、残り 1 秒"},
      {12345, 1, "12.3 kB/s, 81 s left", "12.3 kB/s、残り 81 秒"},
      {1000000, 0.02, "50.0 MB/s", "50.0 MB/s"},
      {1000000, 0, "", ""},
      {2000000, 1, "", ""}};
  for (const auto& [bytes, seconds, english, japanese] : cases) {
    EXPECT_EQ(TransferRateText(bytes, 1000000, seconds, Language::English), english);
    EXPECT_EQ(TransferRateText(bytes, 1000000, seconds, Language::Japanese), japanese);
  }
  EXPECT_EQ(SecondsLeftText(9, Language::English, "50.0 MB/s"), "50.0 MB/s, 9 s left");
  EXPECT_EQ(SecondsLeftText(9, Language::Japanese), "残り 9 秒");
}

TEST_F(Transfers, AWaveformComesBackAsItWasSent) {
  for (const InterfaceKind kind : {kUsbTmc, kNiGpib, kKiGpib, kUsb488}) {
    SCOPED_TRACE("kind " + std::to_string(kind));
    sim::Reset();
    Choose(1, kind);
    const std::vector<std::int16_t> sent = Codes();
    ASSERT_TRUE(TransferWave());
    const auto held = sim::Memory("XG5531", program->settings.MemoryNo);
    ASSERT_TRUE(held);
    EXPECT_EQ(held->codes, sent);
    // Whatever the way there, the way back is USB.
    program->interfaceKind = kUsbTmc;
    program->settings.Address = 0;
    bus->SetUsbResource(Resource());
    W_ClearMemory(program->buffers.Current(), 0, program->settings.MemorySize);
    ASSERT_TRUE(ReadBack());
    EXPECT_EQ(Codes(), sent);
    ExpectIdle();
    program->buffers.Undo_Swap(); // the read-back is an edit
    EXPECT_EQ(Codes(), std::vector<std::int16_t>(sent.size(), 0));
  }
  Choose(1, kUsbTmc); // and as control points
  const auto codes = W_Lock(program->buffers.Current());
  for (std::size_t i = 0; i < 1024; ++i) codes[i] = static_cast<std::int16_t>(i < 512 ? i * 30 : (1023 - i) * 20);
  const std::vector<std::int16_t> sent = Codes();
  setup->RefreshControlPoints();
  ASSERT_TRUE(TransferWave());
  const auto held = sim::Memory("XG5531", program->settings.MemoryNo);
  ASSERT_TRUE(held);
  EXPECT_EQ(static_cast<int>(held->controls.size()), program->settings.ControlPointCount);
  W_ClearMemory(program->buffers.Current(), 0, 1024);
  ASSERT_TRUE(ReadBack());
  EXPECT_EQ(Codes(), sent);
  EXPECT_EQ(program->settings.TransferFormat, 1);
}

TEST_F(Transfers, AnEmptyMemoryAndAnOldFileGiveNothing) {
  Choose(1, kUsbTmc);
  const std::vector<std::int16_t> before = Codes();
  desktop.boxes.Expect("Since there is no waveform data, read-out is stopped.");
  EXPECT_FALSE(ReadBack());
  ExpectIdle();
  Choose(1, kNiGpib); // has no way to receive a block
  ASSERT_TRUE(TransferWave());
  desktop.boxes.Expect("Module IntfcLib : Function Data Recv SCPI");
  desktop.boxes.Expect("Interface System error");
  EXPECT_FALSE(ReadBack());
  EXPECT_FALSE(DecodeWaveform(Context(), *setup));
  EXPECT_EQ(Codes(), before);
  ExpectIdle();
}

TEST(ReceivedBlockTest, OnlyAWholeBlockIsTaken) {
  const std::string good("\"A\",#212\0\0\0\0\0\0\0\2\x12\x34\xFF\xFE", 20);
  const ReceivedBlock block = ParseReceivedBlock(good);
  EXPECT_EQ(block.kind, ReceivedBlock::Kind::Points);
  EXPECT_EQ(block.codes, (std::vector<std::int16_t>{0x1234, -2}));
  for (std::size_t length = 0; length < good.size(); ++length)
    EXPECT_EQ(ParseReceivedBlock(good.substr(0, length)).kind, ReceivedBlock::Kind::None) << length;
  for (const char* bad : {",#", ",#0", ",#a12345", ",#9999999999", ",#17\0\0\0\0\0\0\0", "no block at all"})
    EXPECT_EQ(ParseReceivedBlock(bad).kind, ReceivedBlock::Kind::None) << bad;
  std::string other = good;
  other[11] = 7; // a format that nobody knows
  EXPECT_EQ(ParseReceivedBlock(other).kind, ReceivedBlock::Kind::None);
  EXPECT_EQ(ParseReceivedBlock(std::string(30, ' ') + good).kind, ReceivedBlock::Kind::None); // too late
}

} // namespace calder::transfer_test

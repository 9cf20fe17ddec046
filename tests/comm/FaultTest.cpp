// A cable pulled, a call that fails or times out, at every bus call of a waveform transfer in turn.
#include "comm/BusFixture.h"

namespace calder {
namespace {

int Count(const std::vector<fake::ShownBox>& boxes, const std::string& title) {
  return static_cast<int>(
      std::count_if(boxes.begin(), boxes.end(), [&](const fake::ShownBox& box) { return box.title == title; }));
}

struct Faults : BusFixture {
  // One transfer under a fault; what it leaves behind must be in order.
  void RunWith(const std::string& fault) {
    SCOPED_TRACE(fault);
    sim::Reset();
    desktop.boxes.shown.clear();
    EXPECT_TRUE(sim::Script(fault));
    const SystemInfo before = program->settings;
    const auto codes = W_Lock(program->buffers.Current());
    const std::vector<std::int16_t> waveform(codes.begin(), codes.end());
    const bool sent = TransferWave();
    ExpectIdle();
    EXPECT_EQ(program->settings, before);
    EXPECT_TRUE(std::equal(codes.begin(), codes.end(), waveform.begin()));
    EXPECT_FALSE(bus->Trace().LastTransfer().empty());
    // The interface layer's own box once, and then one sentence.
    EXPECT_LE(Count(desktop.boxes.shown, "Interface Error"), 1);
    EXPECT_EQ(Count(desktop.boxes.shown, "Error Message"), sent ? 0 : 1);
    ++runs;
    if (!sent) ++failed;
  }
  int runs = 0;
  int failed = 0;
};

} // namespace

TEST_F(Faults, AFaultAtAnyCallOfAWaveformTransferEndsInOneSentence) {
  desktop.boxes.acceptAll = true;
  for (const InterfaceKind kind : {kNiGpib, kKiGpib, kUsb488, kUsbTmc}) {
    SCOPED_TRACE("kind " + std::to_string(kind));
    Choose(1, kind);
    RunWith("");
    const int calls = sim::CallCount();
    EXPECT_GT(calls, 30);
    for (int call = 1; call <= calls; ++call) {
      for (const char* fault : {"fail ", "timeout ", "unplug "}) RunWith(fault + std::to_string(call));
    }
  }
  RecordProperty("runs", runs);
  RecordProperty("failed", failed);
  std::printf("%d runs, %d of them failed as they had to\n", runs, failed);
  EXPECT_GT(failed, runs * 9 / 10);
}

TEST_F(Faults, WithoutTheBusLibraryThereIsNoBoard) {
  desktop.libraries.folder.clear();
  for (const InterfaceKind kind : {kKiGpib, kUsb488}) {
    Choose(1, kind);
    desktop.boxes.Expect("Nonexistent interface board\rModule IntfcLib : Function Setup");
    desktop.boxes.Expect("Nonexistent interface board");
    EXPECT_FALSE(TransferWave());
    EXPECT_EQ(bus->ErrorCode(), kBusNoBoard);
    ExpectIdle();
  }
}

TEST_F(Faults, AShortBlockIsToldByTheInstrument) {
  Choose(1, kUsbTmc);
  ASSERT_TRUE(sim::Script("short viWriteFromFile 1 1000"));
  desktop.boxes.Expect("Interface error");
  desktop.boxes.Expect("Interface System error");
  EXPECT_FALSE(TransferWave());
  ExpectIdle();
  EXPECT_FALSE(sim::Memory("XG5531", program->settings.MemoryNo));
}

} // namespace calder

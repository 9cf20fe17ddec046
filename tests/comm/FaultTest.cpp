// A cable pulled, a call that fails, times out, moves too little or comes late, at every bus call of a waveform
// transfer in turn.
#include "comm/BusFixture.h"
#include "libs/bus/FakePort.h"

namespace calder::fault_test {

bool Begins(const std::string& call, std::initializer_list<const char*> names) {
  return std::any_of(names.begin(), names.end(), [&](const char* name) { return call.starts_with(name); });
}

struct Faults : BusFixture {
  Faults() { desktop.boxes.acceptAll = true; }
  [[nodiscard]] int Boxes(const std::string& title) const {
    const auto& shown = desktop.boxes.shown;
    return static_cast<int>(
        std::count_if(shown.begin(), shown.end(), [&](const fake::ShownBox& box) { return box.title == title; }));
  }
  // One transfer under a fault, all of them with one interface layer; what it leaves must be in order. Whether it
  // reached its end.
  bool RunWith(const std::string& fault) {
    sim::Reset();
    sim::OnWait([](double) {});
    desktop.boxes.shown.clear();
    EXPECT_TRUE(sim::Script(fault));
    const SystemInfo before = program->settings;
    const auto codes = W_Lock(program->buffers.Current());
    const std::vector<std::int16_t> waveform(codes.begin(), codes.end());
    const bool sent = TransferWave();
    ExpectIdle();
    ExpectLocal();
    EXPECT_EQ(program->settings, before);
    EXPECT_TRUE(std::equal(codes.begin(), codes.end(), waveform.begin()));
    EXPECT_FALSE(bus->Trace().LastTransfer().empty());
    EXPECT_EQ(sim::InjectedFaults(), fault.empty() ? 0 : 1);
    ++runs;
    return sent;
  }
  // Remote control was switched off after it was on, whatever that call answered.
  static void ExpectLocal() {
    bool remote = false;
    for (const std::string& call : Calls()) {
      if (Begins(call, {"ibsre(0, 1", "_ieee_transmit(\"REN", "UsbEnableRemote", "viGpibControlREN(2, 1"}))
        remote = true;
      if (Begins(call, {"ibsre(0, 0", "UsbEnableLocal", "viGpibControlREN(2, 2"}) || call.ends_with("GTL\")"))
        remote = false;
    }
    EXPECT_FALSE(remote);
  }
  // The interface layer's own box once, and then one sentence, but for a missing board; or neither.
  void ExpectBoxes(int count) {
    const auto& shown = desktop.boxes.shown;
    const bool noBoard = !shown.empty() && shown[0].text.starts_with("Nonexistent interface board\r");
    EXPECT_EQ(Boxes("Interface Error"), count);
    if (noBoard && Boxes("Error Message") == 0) return;
    EXPECT_EQ(Boxes("Error Message"), count);
  }
  int runs = 0;
};

TEST_F(Faults, AFaultAtAnyCallOfAWaveformTransferEndsInOneSentence) {
  for (const InterfaceKind kind : {kNiGpib, kKiGpib, kUsb488, kUsbTmc}) {
    Choose(1, kind);
    EXPECT_TRUE(RunWith(""));
    ExpectBoxes(0);
    const std::vector<std::string> calls = Calls();
    EXPECT_GT(calls.size(), 30U);
    for (std::size_t i = 0; i < calls.size(); ++i) {
      // The board's address only warns, and the other one reports nothing.
      const bool optional = Begins(calls[i], {"ibask(", "_ieee_initialize("});
      // These report how much they moved; the local lockout is but one byte.
      const bool counted = Begins(calls[i], {"ibwrt(", "ibcmd(", "viWrite"}) && calls[i] != "ibcmd(0, \"\\x11\")";
      const std::string number = std::to_string(i + 1);
      for (const char* kindOfFault : {"fail ", "timeout ", "unplug ", "late ", "short "}) {
        const std::string name = kindOfFault;
        const std::string fault = name + number + (name == "late " ? " 0.01" : name == "short " ? " 1" : "");
        SCOPED_TRACE("kind " + std::to_string(kind) + ", " + fault + ", " + calls[i].substr(0, 60));
        const bool sent = RunWith(fault);
        if (name == "short " && !counted) { // it is for the instrument to report: its error, and that the transfer ends
          EXPECT_LE(Boxes("Interface Error"), 1);
          EXPECT_LE(Boxes("Error Message"), sent ? 0 : 2);
          continue;
        }
        EXPECT_EQ(sent, name == "late " || (optional && name != "unplug "));
        ExpectBoxes(sent ? 0 : 1);
        if (name == "short ") {
          EXPECT_NE(desktop.boxes.shown.front().text.find("Interface error"), std::string::npos);
        }
      }
    }
  }
  std::printf("%d runs\n", runs);
}

TEST_F(Faults, WithoutTheBusLibraryThereIsNoBoard) {
  desktop.libraries.folder.clear();
  for (const InterfaceKind kind : {kNiGpib, kKiGpib, kUsb488, kUsbTmc}) {
    Choose(1, kind);
    for (int press = 0; press < 2; ++press) {
      EXPECT_FALSE(RunWith(""));
      ASSERT_EQ(desktop.boxes.shown.size(), 1U);
      EXPECT_EQ(desktop.boxes.shown[0].text, "Nonexistent interface board\rModule IntfcLib : Function Setup");
    }
  }
}

TEST_F(Faults, ADeviceThatMayNotBeOpenedNamesTheRule) {
  desktop.libraries.folder.clear();
  PortRecord record;
  record.errors = {EACCES};
  kernelVisa = [&] { return std::make_unique<UsbtmcVisa>(std::make_unique<FakePort>(record)); };
  MakeBus();
  Choose(1, kUsbTmc);
  EXPECT_FALSE(RunWith(""));
  ExpectBoxes(1);
  EXPECT_NE(desktop.boxes.shown[1].text.find("Install the udev rule 60-calder-usbtmc.rules."), std::string::npos);
}

// The back end's own box and log, as a configuration text can ask for them.
TEST_F(Faults, EachBackEndHasItsWords) {
  BackEndHost host{desktop.boxes, desktop.libraries, folder.string(), {}, {}};
  NI_GPIB_Mdl ni(host);
  KI_GPIB_MDL ki(host);
  USB488_MDL usb(host);
  struct {
    BackEnd& backEnd;
    int result;
    const char* word;
  } const cases[] = {{ni, 6, "Error"},
                     {ni, 5, "Time Out"},
                     {ni, 4, "Board is Northing"},
                     {ni, 8, "Buffer Over"},
                     {ki, 4, "Board does not exit"},
                     {usb, 8, "Buffer over"}};
  const std::string log = (folder / "bus.log").string();
  std::string wanted;
  for (const auto& one : cases) {
    one.backEnd.ReadReporting("VIEW_ERR_DIALOG, LOG_FILE = " + log);
    one.backEnd.Report(host, "GP_REN", 1, {.text = "A\n"}, one.result);
    wanted += std::string("GP_REN 1 \"A\\n\" ") + one.word + '\n';
    EXPECT_EQ(desktop.boxes.shown.back().text,
              std::string("GP_REN\n") + one.word + "\nアプリケーションを終了しますか?");
  }
  EXPECT_EQ(TextOf(log), wanted);
  ASSERT_TRUE(sim::Script("fail UsbOpenDevice 1"));
  ASSERT_EQ(usb.GP_Init("USB488ID = 2"), kBusOk);
  usb.Report(host, "GP_IFC", -1, {}, usb.GP_IFC());
  EXPECT_EQ(desktop.boxes.shown.back().text, "GP_IFC\nDevice Open Error\nアプリケーションを終了しますか?");
}

} // namespace calder::fault_test

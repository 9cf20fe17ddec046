#include "setup/SetupDesk.h"

#include "comm/BusFixture.h"
#include "files/FileCommands.h"
#include "files/WaveFiles.h"

namespace calder::setup_desk_test {

struct RecordingSetup final : SetupPort {
  void ShowRecord() override { ++shows; }
  void GoToMemoryName() override { ++nameVisits; }
  void SetTransferring(bool on) override { transferring.push_back(on); }
  void WaveformChanged() override { ++changes; }
  void Close() override { ++closes; }
  int shows = 0;
  int nameVisits = 0;
  std::vector<bool> transferring;
  int changes = 0;
  int closes = 0;
};

struct Desk : BusFixture {
  std::optional<WaveFiles> waveFiles;
  std::optional<FileCommands> files;
  RecordingSetup port;
  std::optional<SetupDesk> desk;
  SystemInfo& settings = program->settings;

  Desk() {
    waveFiles.emplace(program->buffers, settings, program->interfaceKind, program->names, program->fileLibrary,
                      program->messages, *setup);
    files.emplace(program->desktop, program->messages, program->registry, program->names, *waveFiles);
    desk.emplace(*program, *setup, *files, *waveFiles, *bus, progress);
    desk->SetPort(&port);
    setup->ChooseModel(1);
    desk->Form_Load();
  }
  void ChooseKind(InterfaceKind kind) {
    for (std::size_t i = 0; i < setup->Interfaces().size(); ++i) {
      if (setup->Interfaces()[i].kind == kind) desk->ChooseInterface(static_cast<int>(i));
    }
    EXPECT_EQ(program->interfaceKind, kind);
  }
};

TEST_F(Desk, TheAddressKeepsOffTheController) {
  settings.Address = 0;
  ChooseKind(kNiGpib);
  EXPECT_EQ(settings.Address, 1);                                   // moved away from the board's 0
  for (const auto& [step, address] : {std::pair{-1, 30}, {1, 1}}) { // round the end, over the 0
    desk->StepAddress(step);
    EXPECT_EQ(settings.Address, address);
  }
  desktop.boxes.Expect("This Address is Controller Address.\r   Address: 0");
  for (const char* refused : {"0", "31", "-1", "", "1.5"}) desk->EnterAddress(refused);
  EXPECT_EQ(settings.Address, 1);
  desk->EnterAddress("7");
  EXPECT_EQ(settings.Address, 7);
}

TEST_F(Desk, EntriesStayInTheirRanges) {
  for (const auto& [typed, step, number] : {std::tuple{"200", -5, 1}, {"128", 1, 128}}) {
    desk->EnterMemoryNo(typed);
    desk->StepMemoryNo(step);
    EXPECT_EQ(settings.MemoryNo, number);
  }
  desk->EnterMemoryName("  A name of more than thirty-two characters  ");
  desk->ChooseUnit(SetupDesk::Axis::X, 2);
  desk->EnterUnitName(SetupDesk::Axis::X, "ミリ秒ミリ秒ミリ秒");
  EXPECT_EQ(Texts(settings.MemoryName, desk->UnitName(SetupDesk::Axis::X)),
            "A name of more than thirty-two c ミリ秒ミリ秒ミリ");
  desk->EnterUnitRange(SetupDesk::Axis::X, SetupDesk::End::Max, "-1"); // below the smallest
  desk->EnterUnitRange(SetupDesk::Axis::X, SetupDesk::End::Min, "-1e300T");
  desk->EnterUnitRange(SetupDesk::Axis::X, SetupDesk::End::Max, "2.5k");
  EXPECT_EQ(settings.XUserMax, 2500);
  const double frequency = settings.Frequency = 1234.000000001;
  for (const std::string& text : {desk->OscillatorText(0), std::string("  ")}) desk->EnterOscillator(0, text);
  EXPECT_EQ(settings.Frequency, frequency) << "left as it was";
}

TEST_F(Desk, CancelRestoresEverythingAndOkAppliesTheMemorySize) {
  const SystemInfo before = settings;
  program->registry.SetGpibBoard(kUsbTmc);
  desk->ChooseModel(6);
  desk->ChooseMemorySize(1);
  desk->EnterOscillator(2, "2");
  EXPECT_NE(settings, before);
  desk->Btn_Cancel_Click();
  EXPECT_EQ(settings, before);
  EXPECT_EQ(Texts(setup->ModelChoice(), program->interfaceKind, port.closes), Texts(1, kUsbTmc, 1));

  desk->Form_Load();
  desk->ChooseMemorySize(2);
  EXPECT_EQ(settings.MemorySize, before.MemorySize);
  desk->Btn_OK_Click();
  EXPECT_EQ(settings.MemorySize, 131072);
  desk->Form_Unload();
  EXPECT_EQ(desktop.settings.Get("Sysinfo", "sys_no"), "1");
  EXPECT_EQ(desktop.settings.Get("Sysinfo", "memory_width_no"), "2");
}

TEST_F(Desk, UsbInstrumentsAreListedAndNoneStopsATransfer) {
  ChooseKind(kUsbTmc);
  EXPECT_EQ(desk->SerialNumbers(), std::vector<std::string>{"1234567"});
  EXPECT_EQ(desk->BenchHint(), "Connected to the simulated bench.");
  EXPECT_EQ(desk->ResourceName(), "USB0::0x1209::0x5531::1234567");
  desk->Btn_Trans_Click(SetupDesk::Transfer::Settings);
  EXPECT_EQ(settings.Address, 0);
  EXPECT_EQ(port.transferring, (std::vector<bool>{true, false}));
  EXPECT_FALSE(sim::Messages("XG5531").empty());
  EXPECT_EQ(SimulatedBench(CALDER_SIM_FOLDER).AddressOf("XG5531"), 2);
  EXPECT_FALSE(SimulatedBench("").Present());

  ASSERT_TRUE(sim::Set("XG5531", "power", "off"));
  ChooseKind(kUsbTmc);
  EXPECT_EQ(desk->SerialNumbers(), std::vector<std::string>{"None"});
  EXPECT_EQ(desk->ResourceName(), "");
  desktop.boxes.Expect("No Listeners on the interface");
  desk->Btn_Trans_Click(SetupDesk::Transfer::Waveform);
  ExpectIdle();
}

TEST_F(Desk, AMissingBoardIsToldOnceAPressAndNeverUnasked) {
  desktop.libraries.folder.clear();
  for (const InterfaceKind kind : {kNiGpib, kKiGpib, kUsb488}) {
    program->interfaceKind = kind;
    settings.Address = 2;
    for (int press = 0; press < 2; ++press) {
      desktop.boxes.Expect("Nonexistent interface board\rModule IntfcLib : Function Setup");
      desk->Btn_Trans_Click(static_cast<SetupDesk::Transfer>(press));
      ExpectIdle();
    }
    desk->Form_Load();
    desk->ChooseModel(2);
    desk->ChooseModel(1);
  }
}

TEST_F(Desk, Usb488NeedsNoGpibLibraryAndAnIncompleteLibraryIsNamed) {
  desktop.libraries.lacks = "ibask";
  program->interfaceKind = kNiGpib;
  settings.Address = 2;
  desktop.boxes.Expect("Function Setup\rThe interface's library lacks the entry point ibask.");
  desk->Btn_Trans_Click(SetupDesk::Transfer::Settings);
  program->interfaceKind = kUsb488;
  desk->Btn_Trans_Click(SetupDesk::Transfer::Settings);
  EXPECT_EQ(sim::Messages("XG5531").back(), "*ESR?");

  MakeBus(); // its libraries are looked for anew
  desktop.libraries.lacks = "viClear";
  ChooseKind(kUsbTmc);
  EXPECT_EQ(desk->SerialNumbers(), std::vector<std::string>{"None"});
  desktop.boxes.Expect("Nonexistent interface board\rThe interface's library lacks the entry point viClear.");
  desk->Btn_Trans_Click(SetupDesk::Transfer::Settings);
  ExpectIdle();
}

TEST_F(Desk, AWrongMemoryNameGoesNowhere) {
  for (const char* name : {"波形", "a\"b", "tab\tx"}) {
    settings.MemoryName = name;
    desktop.boxes.Expect("Invalid Memory Name.(2-byte Character)");
    desk->Btn_Trans_Click(SetupDesk::Transfer::Waveform);
  }
  EXPECT_EQ(port.nameVisits, 3);
  EXPECT_TRUE(sim::Messages("XG5531").empty());
}

TEST_F(Desk, SystemFilesKeepEverySetting) {
  const auto file = [&](const std::string& name, bool save) {
    desktop.dialogs.Answer(name);
    save ? desk->Menu_FileSave_Click() : desk->Menu_FileOpen_Click();
  };
  ChooseKind(kNiGpib);
  settings.Output = 2;
  settings.Polarity = 4;
  settings.XUserName = "ms";
  const SystemInfo saved = settings;
  const std::string path = (folder / "settings.ocb").string();
  file(path, true);
  EXPECT_EQ(program->names.LastSystemFile, path);
  desk->ChooseModel(20);
  file(path, false);
  EXPECT_EQ(Texts(settings.ModelName, settings.Output, settings.Polarity), "XG5531 2 4");
  EXPECT_EQ(Texts(settings.Address, settings.XUserName), Texts(saved.Address, "ms"));
  EXPECT_EQ(program->interfaceKind, kNiGpib);
  EXPECT_EQ(setup->ModelChoice(), 1);
  desktop.boxes.Expect("This Address is Controller Address.\r   Address: 0"); // asked for again
  desk->EnterAddress("0");

  // A kind that the model lacks becomes its first one; a kind that no list offers stays.
  for (const auto& [stored, shown] : {std::pair(kUsbTmc, kNiGpib), {kUsb488, kUsb488}, {kSimulated, kSimulated}}) {
    desk->ChooseModel(2);
    program->interfaceKind = stored;
    for (const bool save : {true, false}) file((folder / "other.ocb").string(), save);
    EXPECT_EQ(program->interfaceKind, shown);
  }

  // Written by hand: the first model, a channel and a range that only another one has.
  desk->ChooseModel(1);
  settings.Channel = 7;
  settings.RangeNo = 9;
  settings.ModelName = "XG5530";
  const SystemFile written(program->settings, program->interfaceKind, program->fileLibrary, program->messages,
                           *waveFiles);
  ASSERT_EQ(written.Write_SystemFile(path), 0);
  file(path, false);
  EXPECT_EQ(Texts(settings.ModelName, settings.Channel), "XG5530 0");
  EXPECT_LT(settings.RangeNo, static_cast<int>(setup->Ranges().size()));

  std::filesystem::resize_file(path, 100);
  const SystemInfo before = settings;
  desktop.boxes.Expect("[" + path + "] File Read error.");
  file(path, false);
  EXPECT_EQ(settings, before);
}

TEST_F(Desk, PointsThatALargerMemoryBringsAreClearBeforeATransfer) {
  setup->ChooseMemorySize(9);
  setup->ApplyMemorySize();
  desk->Form_Load();
  const auto codes = W_Lock(program->buffers.Current());
  std::iota(codes.begin(), codes.end(), std::int16_t{0}); // also after the 1024 points of the waveform
  desk->ChooseModel(6);
  EXPECT_EQ(Texts(settings.MemorySize, codes[1023], codes[1024], codes[8192]), "8192 1023 0 8192");
  EXPECT_EQ(settings.TransferFormat, 1); // a ramp and a line, now over 8192 points
  EXPECT_EQ(settings.ControlPointCount, 4);
  codes[8191] = 5; // from now on they are the waveform's
  ChooseKind(kNiGpib);
  desk->EnterAddress("7");
  desk->Btn_Trans_Click(SetupDesk::Transfer::Waveform);
  EXPECT_EQ(codes[8191], 5);
  desk->Btn_Cancel_Click();
  EXPECT_EQ(Texts(settings.MemorySize, codes[1023]), "1024 1023");
}

TEST_F(Desk, TheLoopTestCountsUntilItIsStoppedOrCancelled) {
  program->registry.SetLoopTest(true);
  setup->ChooseMemorySize(9);
  setup->ApplyMemorySize();
  int opened = 0;
  progress.onValue = [&](int value) {
    if (progress.steps.back() != "load data 5" || value != 5 || ++opened != 3) return;
    EXPECT_EQ(port.transferring, std::vector<bool>{true});
    desk->Btn_Cancel_Click(); // is the progress window's
    desktop.boxes.Expect("次の転送完了後テストを終了します");
    desk->Btn_Trans_Click(SetupDesk::Transfer::ReadBack);
  };
  desk->Btn_Trans_Click(SetupDesk::Transfer::Waveform);
  EXPECT_EQ(progress.captions, (std::vector<std::string>{"1", "2", "3", ""}));
  EXPECT_EQ(port.transferring, (std::vector<bool>{true, false}));
  ExpectIdle();
  progress.onValue = [&](int) {
    if (progress.sent > 0 && progress.steps.back().starts_with("Send data")) progress.cancelled = true;
  };
  for (const InterfaceKind kind : {kNiGpib, kKiGpib, kUsbTmc}) {
    progress.captions.clear();
    progress.sent = 0;
    ChooseKind(kind);
    settings.Address = 2;
    desk->Btn_Trans_Click(SetupDesk::Transfer::Waveform);
    EXPECT_EQ(progress.captions, std::vector<std::string>{""}) << kind;
    ExpectIdle();
  }
}

} // namespace calder::setup_desk_test

#include "libs/bus/FakePort.h"
#include "platform/TempFolder.h"
#include "platform/posix/LinuxUsbtmc.h"

namespace calder::usbtmc_visa_test {

using Lines = std::vector<std::string>;
using Ending = UsbtmcPort::Ending;

class UsbtmcVisaTest : public testing::Test {
protected:
  UsbtmcVisaTest() {
    EXPECT_EQ(visa->viOpenDefaultRM(manager), VI_SUCCESS);
    EXPECT_EQ(visa->viOpen(manager, "USB0::0x1209::0x5530::77", device), VI_SUCCESS);
    record.calls.clear();
  }
  ViStatus Write(const std::string& text) {
    return visa->viWrite(device, text.data(), static_cast<std::uint32_t>(text.size()), moved);
  }
  std::string Read(std::uint32_t capacity) {
    std::string text(capacity, ' ');
    status = visa->viRead(device, text.data(), capacity, moved);
    return text.substr(0, moved);
  }

  PortRecord record;
  std::unique_ptr<Visa> visa = std::make_unique<UsbtmcVisa>(std::make_unique<FakePort>(record));
  ViSession manager = 0;
  ViSession device = 0;
  std::uint32_t moved = 0;
  ViStatus status = 0;
};

TEST_F(UsbtmcVisaTest, FindsAndOpensByName) {
  ViSession list = 0;
  ViSession other = 0;
  std::string name;
  EXPECT_EQ(visa->viFindRsrc(manager, "usb?*INSTR", list, moved, name), VI_SUCCESS);
  EXPECT_EQ(moved, 2U); // the one without a serial number cannot be named
  EXPECT_EQ(name, "USB0::0x1209::0x5530::77::INSTR");
  EXPECT_EQ(visa->viFindNext(list, name), VI_SUCCESS);
  EXPECT_EQ(name, "USB0::0x1209::0x5531::1234567::1::INSTR");
  EXPECT_EQ(visa->viFindNext(list, name), VI_ERROR_RSRC_NFOUND);
  EXPECT_EQ(visa->viFindRsrc(manager, "usb?*INSTR", other, moved, name), VI_SUCCESS);
  EXPECT_NE(other, list) << "a list of its own";
  EXPECT_EQ(visa->viFindRsrc(manager, "USB0::0x1210?*", list, moved, name), VI_ERROR_RSRC_NFOUND);
  EXPECT_EQ(std::to_string(moved) + name, "0");
  EXPECT_EQ(visa->viFindRsrc(manager, "*", list, moved, name), VI_ERROR_INV_EXPR);
  EXPECT_EQ(visa->viOpen(manager, "USB0::0x1209::0x5531::1234567::INSTR", other), VI_SUCCESS);
  EXPECT_EQ(visa->viOpen(manager, "USB0::0x1209::0x5531::1234567::2::INSTR", other), VI_ERROR_RSRC_NFOUND);
  EXPECT_EQ(visa->viOpen(manager, "COM1", other), VI_ERROR_INV_RSRC_NAME);
  record.errors = {EACCES, EPERM, ENOENT, EBUSY};
  for (const ViStatus wanted : {VI_ERROR_NPERMISSION, VI_ERROR_NPERMISSION, VI_ERROR_RSRC_NFOUND, VI_ERROR_RSRC_BUSY})
    EXPECT_EQ(visa->viOpen(manager, "USB0::0x1209::0x5530::77", other), wanted);
  record.calls.clear();
  EXPECT_EQ(visa->viClose(manager), VI_SUCCESS); // and with it what it opened
  EXPECT_EQ(record.calls, (Lines{"close 5", "close 5"}));
  EXPECT_EQ(visa->viClose(device), VI_ERROR_INV_OBJECT);
  EXPECT_EQ(Write("x"), VI_ERROR_INV_OBJECT);
}

TEST_F(UsbtmcVisaTest, AnswersAreReadToTheirEnd) {
  record.answers = {{"ORVO,", Ending::None}, {"XG5530\n", Ending::End}, {"12,34", Ending::Terminator},
                    {"long", Ending::None},  {"", Ending::None},        {"half", Ending::None}};
  using Row = std::tuple<std::uint32_t, const char*, ViStatus>;
  for (const auto& [capacity, text, theStatus] :
       {Row{100, "ORVO,XG5530\n", VI_SUCCESS}, Row{100, "12,34", VI_SUCCESS_TERM_CHAR},
        Row{4, "long", VI_SUCCESS_MAX_CNT}, Row{4, "", VI_ERROR_IO}, // neither bytes nor an end
        Row{100, "half", VI_ERROR_TMO}}) {
    EXPECT_EQ(Read(capacity), text);
    EXPECT_EQ(status, theStatus) << text;
  }
}

TEST_F(UsbtmcVisaTest, ErrorsAreStatuses) {
  using Row = std::tuple<int, ViStatus>;
  for (const auto& [error, wanted] :
       {Row{ETIMEDOUT, VI_ERROR_TMO}, Row{ENODEV, VI_ERROR_CONN_LOST}, Row{ESHUTDOWN, VI_ERROR_CONN_LOST},
        Row{EPIPE, VI_ERROR_IO}, Row{EPROTO, VI_ERROR_IO}, Row{EPERM, VI_ERROR_IO},
        Row{EACCES, VI_ERROR_NPERMISSION}}) {
    record.errors = {error, error};
    EXPECT_EQ(Write("*CLS"), wanted) << error;
    EXPECT_EQ(visa->viClear(device), wanted) << error;
  }
  record.writeLimit = 3;
  EXPECT_EQ(Write("*CLS"), VI_ERROR_IO);
  EXPECT_EQ(moved, 3U);
}

TEST_F(UsbtmcVisaTest, AttributesAndRemoteControlGoToTheDriver) {
  for (const std::uint64_t limit : {0ULL, 100ULL, 30000ULL, 0xFFFFFFFFULL})
    visa->viSetAttribute(device, VI_ATTR_TMO_VALUE, limit);
  EXPECT_EQ(record.calls, (Lines{"limit 100", "limit 100", "limit 30000", "limit 2147483647"}));
  record.calls.clear();
  record.errors = {EINVAL};
  // A terminator that the instrument cannot have is none.
  for (const auto& [attribute, value] :
       {std::pair{VI_ATTR_TERMCHAR, '\r'}, {VI_ATTR_TERMCHAR_EN, 1}, {VI_ATTR_SEND_END_EN, 0}})
    EXPECT_EQ(visa->viSetAttribute(device, attribute, static_cast<std::uint64_t>(value)), VI_SUCCESS);
  EXPECT_EQ(visa->viSetAttribute(device, 0x3FFF0099, 0), VI_ERROR_NSUP_ATTR);
  for (const auto mode : {VI_GPIB_REN_ASSERT, VI_GPIB_REN_ASSERT_ADDRESS_LLO, VI_GPIB_REN_DEASSERT_GTL})
    EXPECT_EQ(visa->viGpibControlREN(device, mode), VI_SUCCESS);
  EXPECT_EQ(visa->viGpibControlREN(device, 7), VI_ERROR_NSUP_OPER);
  EXPECT_EQ(record.calls, (Lines{"terminator 13 off", "terminator 13 on", "end off", "remote on", "remote on",
                                 "lockout", "local", "remote off"}));
  record.errors = {EINVAL};
  EXPECT_EQ(visa->viGpibControlREN(device, VI_GPIB_REN_ASSERT), VI_ERROR_NSUP_OPER);
}

TEST_F(UsbtmcVisaTest, FilesAreStreamed) {
  const TempFolder folder;
  const std::string file = folder / "block";
  constexpr std::uint32_t kTransfer = 2U << 20;
  std::ofstream(file, std::ios::binary) << std::string(kTransfer + 45, 'x');
  EXPECT_EQ(visa->viWriteFromFile(device, file, kTransfer + 45, moved), VI_SUCCESS);
  EXPECT_EQ(moved, kTransfer + 45);
  // The end mark stands at the end only.
  EXPECT_EQ(record.calls, (Lines{"end off", "write 2097152 bytes", "end on", "write 45 bytes"}));
  record.calls.clear();
  record.errors = {0, ETIMEDOUT};
  EXPECT_EQ(visa->viWriteFromFile(device, file, kTransfer + 45, moved), VI_ERROR_TMO);
  EXPECT_EQ(record.calls, (Lines{"end off", "write 2097152 bytes", "end on"})); // and it is on again after a failure
  record.calls.clear();
  EXPECT_EQ(visa->viWriteFromFile(device, file, kTransfer + 46, moved), VI_ERROR_FILE_IO);
  EXPECT_EQ(visa->viWriteFromFile(device, folder / "none", 1, moved), VI_ERROR_FILE_ACCESS);
  EXPECT_EQ(record.calls, Lines());

  record.answers = {{"ab", Ending::None}, {"cd", Ending::End}, {"ef", Ending::None}};
  EXPECT_EQ(visa->viReadToFile(device, file, 100, moved), VI_SUCCESS);
  EXPECT_EQ(Texts(moved, std::filesystem::file_size(file)), "4 4");
  EXPECT_EQ(visa->viReadToFile(device, file, 100, moved), VI_ERROR_TMO); // what came is in the file
  EXPECT_EQ(std::filesystem::file_size(file), 2U);
  EXPECT_EQ(visa->viReadToFile(device, folder / "no/such", 100, moved), VI_ERROR_FILE_ACCESS);
}

// The links and files that the kernel shows for two instruments, one of them with two interfaces, and a stranger.
TEST(LinuxUsbtmc, ReadsWhatTheKernelTells) {
  const TempFolder folder;
  const auto put = [&](const std::string& name, const std::string& text) {
    std::filesystem::create_directories(std::filesystem::path(folder / name).parent_path());
    std::ofstream(folder / name) << text;
  };
  const auto link = [&](const std::string& name, const std::string& to) {
    std::filesystem::create_directories(folder / ("class/" + name));
    std::filesystem::create_directory_symlink(folder / to, folder / ("class/" + name + "/device"));
  };
  put("usb/1-2/idVendor", "1209\n");
  put("usb/1-2/idProduct", "5531\n");
  put("usb/1-2/serial", "12 34\n");
  put("usb/1-2/1-2:1.0/bInterfaceNumber", "00\n");
  put("usb/1-2/1-2:1.1/bInterfaceNumber", "0a\n");
  put("usb/1-3/idVendor", "0957\n");
  put("usb/1-3/idProduct", "zz\n");
  put("usb/1-3/1-3:1.0/bInterfaceNumber", "00\n");
  link("usbtmc10", "usb/1-2/1-2:1.1");
  link("usbtmc2", "usb/1-2/1-2:1.0");
  link("usbtmc3", "usb/1-3/1-3:1.0"); // its number cannot be read
  link("usbtmc4", "usb/gone");        // pulled out just now
  link("hiddev0", "usb/1-2/1-2:1.0"); // of another driver
  LinuxUsbtmc port(folder / "class", "/nodes");
  const auto devices = port.Devices();
  ASSERT_EQ(devices.size(), 2U);
  EXPECT_EQ(Texts(devices[0].node + devices[1].node, devices[0].vendor, devices[0].product, devices[0].serial,
                  devices[1].interface),
            Texts("/nodes/usbtmc2/nodes/usbtmc10", 0x1209, 0x5531, "12 34", 10));
  EXPECT_EQ(LinuxUsbtmc(folder / "none", "/nodes").Devices().size(), 0U);
  int handle = 0;
  EXPECT_EQ(port.Open(devices[0].node, handle), ENOENT);
}

} // namespace calder::usbtmc_visa_test

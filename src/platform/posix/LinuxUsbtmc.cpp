#include "platform/posix/LinuxUsbtmc.h"

#include "platform/WholeText.h"

#include <linux/usb/tmc.h>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>

namespace calder {
namespace {

namespace fs = std::filesystem;

// Bits of a transfer's attributes (USBTMC 1.0, table 9).
constexpr std::uint8_t kEndOfMessage = 1;
constexpr std::uint8_t kTerminatorMet = 2;

int ErrorOf(int result) {
  return result < 0 ? errno : 0;
}

// The first line of one of sysfs's small files.
std::string Attribute(const fs::path& file) {
  std::ifstream stream(file);
  std::string line;
  std::getline(stream, line);
  return line;
}

// usbtmc12 -> 12.
std::optional<int> NodeNumber(std::string_view name) {
  constexpr std::string_view kPrefix = "usbtmc";
  if (!name.starts_with(kPrefix)) return std::nullopt;
  name.remove_prefix(kPrefix.size());
  return ToNumber<int>(name);
}

// usbtmcN/device is a link to the interface's folder, which lies in the folder of the whole USB device.
std::optional<UsbtmcDevice> ReadDevice(const fs::path& entry) {
  std::error_code failure;
  const fs::path interfaceFolder = fs::canonical(entry / "device", failure);
  if (failure) return std::nullopt;
  const fs::path deviceFolder = interfaceFolder.parent_path();
  const auto vendor = ToNumber<unsigned>(Attribute(deviceFolder / "idVendor"), 16);
  const auto product = ToNumber<unsigned>(Attribute(deviceFolder / "idProduct"), 16);
  const auto interfaceNumber = ToNumber<unsigned>(Attribute(interfaceFolder / "bInterfaceNumber"), 16);
  if (!vendor || !product || *vendor > 0xFFFF || *product > 0xFFFF) return std::nullopt;
  UsbtmcDevice device;
  device.vendor = static_cast<std::uint16_t>(*vendor);
  device.product = static_cast<std::uint16_t>(*product);
  device.serial = Attribute(deviceFolder / "serial");
  device.interface = static_cast<int>(interfaceNumber.value_or(0));
  return device;
}

} // namespace

std::vector<UsbtmcDevice> LinuxUsbtmc::Devices() {
  std::vector<std::pair<int, UsbtmcDevice>> found;
  std::error_code failure;
  // Without the driver there is no such folder, and so no device.
  for (fs::directory_iterator at(classFolder_, failure), end; !failure && at != end; at.increment(failure)) {
    const std::string name = at->path().filename().string();
    const auto number = NodeNumber(name);
    auto device = number ? ReadDevice(at->path()) : std::nullopt;
    if (!device) continue;
    device->node = deviceFolder_ + "/" + name;
    found.emplace_back(*number, std::move(*device));
  }
  std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<UsbtmcDevice> devices;
  devices.reserve(found.size());
  for (auto& [number, device] : found) devices.push_back(std::move(device));
  return devices;
}

int LinuxUsbtmc::Open(const std::string& node, int& handle) {
  handle = open(node.c_str(), O_RDWR | O_CLOEXEC);
  if (handle < 0) return errno;
  // A transfer that timed out is ended at the instrument too, so that the next one finds it ready. Older drivers
  // cannot.
  std::uint8_t on = 1;
  (void)ioctl(handle, USBTMC_IOCTL_AUTO_ABORT, &on);
  return 0;
}

void LinuxUsbtmc::Close(int handle) {
  close(handle);
}

int LinuxUsbtmc::Write(int handle, const void* data, std::size_t count, std::size_t& written) {
  const ssize_t result = write(handle, data, count);
  written = result < 0 ? 0 : static_cast<std::size_t>(result);
  return result < 0 ? errno : 0;
}

int LinuxUsbtmc::Read(int handle, void* data, std::size_t capacity, std::size_t& received, Ending& ending) {
  ending = Ending::None;
  const ssize_t result = read(handle, data, capacity);
  received = result < 0 ? 0 : static_cast<std::size_t>(result);
  if (result < 0) return errno;
  std::uint8_t attributes = 0;
  if (ioctl(handle, USBTMC_IOCTL_MSG_IN_ATTR, &attributes) < 0) {
    // Older drivers do not report it: a transfer that was not filled is the last one.
    if (received < capacity) ending = Ending::End;
  } else if ((attributes & kEndOfMessage) != 0) {
    ending = Ending::End;
  } else if ((attributes & kTerminatorMet) != 0) {
    ending = Ending::Terminator;
  }
  return 0;
}

int LinuxUsbtmc::SetTimeout(int handle, std::uint32_t milliseconds) {
  return ErrorOf(ioctl(handle, USBTMC_IOCTL_SET_TIMEOUT, &milliseconds));
}

int LinuxUsbtmc::SetTerminator(int handle, char terminator, bool on) {
  usbtmc_termchar setting{static_cast<std::uint8_t>(terminator), static_cast<std::uint8_t>(on ? 1 : 0)};
  return ErrorOf(ioctl(handle, USBTMC_IOCTL_CONFIG_TERMCHAR, &setting));
}

int LinuxUsbtmc::SetEndMark(int handle, bool on) {
  std::uint8_t setting = on ? 1 : 0;
  return ErrorOf(ioctl(handle, USBTMC_IOCTL_EOM_ENABLE, &setting));
}

int LinuxUsbtmc::Clear(int handle) {
  return ErrorOf(ioctl(handle, USBTMC_IOCTL_CLEAR));
}

int LinuxUsbtmc::SetRemote(int handle, bool on) {
  std::uint8_t setting = on ? 1 : 0;
  return ErrorOf(ioctl(handle, USBTMC488_IOCTL_REN_CONTROL, &setting));
}

int LinuxUsbtmc::GoToLocal(int handle) {
  return ErrorOf(ioctl(handle, USBTMC488_IOCTL_GOTO_LOCAL));
}

int LinuxUsbtmc::LockOut(int handle) {
  return ErrorOf(ioctl(handle, USBTMC488_IOCTL_LOCAL_LOCKOUT));
}

} // namespace calder

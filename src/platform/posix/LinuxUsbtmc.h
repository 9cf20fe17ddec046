// USBTMC instruments by the usbtmc driver of the Linux kernel: /dev/usbtmc* and what sysfs says of them.
//
// The user needs read and write access to the node; packaging/70-calder-usbtmc.rules gives it to whoever is at the
// machine.
#pragma once

#include "platform/UsbtmcPort.h"

namespace calder {

class LinuxUsbtmc final : public UsbtmcPort {
public:
  // classFolder: where sysfs has the driver's devices; deviceFolder: where their nodes are.
  explicit LinuxUsbtmc(std::string classFolder = "/sys/class/usbmisc", std::string deviceFolder = "/dev")
      : classFolder_(std::move(classFolder)), deviceFolder_(std::move(deviceFolder)) {}

  [[nodiscard]] std::vector<UsbtmcDevice> Devices() override;
  [[nodiscard]] int Open(const std::string& node, int& handle) override;
  void Close(int handle) override;
  [[nodiscard]] int Write(int handle, const void* data, std::size_t count, std::size_t& written) override;
  [[nodiscard]] int Read(int handle, void* data, std::size_t capacity, std::size_t& received, Ending& ending) override;
  [[nodiscard]] int SetTimeout(int handle, std::uint32_t milliseconds) override;
  [[nodiscard]] int SetTerminator(int handle, char terminator, bool on) override;
  [[nodiscard]] int SetEndMark(int handle, bool on) override;
  [[nodiscard]] int Clear(int handle) override;
  [[nodiscard]] int SetRemote(int handle, bool on) override;
  [[nodiscard]] int GoToLocal(int handle) override;
  [[nodiscard]] int LockOut(int handle) override;

private:
  std::string classFolder_;
  std::string deviceFolder_;
};

} // namespace calder

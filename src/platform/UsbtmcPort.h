// USBTMC instruments as the system's driver gives them, below the VISA names and sessions.
//
// Operations give 0 or an error number of <cerrno>, such as ETIMEDOUT, ENODEV, EACCES.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace calder {

struct UsbtmcDevice {
  std::string node; // what Open takes
  std::uint16_t vendor = 0;
  std::uint16_t product = 0;
  std::string serial;
  int interface = 0;
};

class UsbtmcPort {
public:
  // What ended a read: nothing, so that the message goes on; its end; the termination character.
  enum class Ending { None, End, Terminator };

  virtual ~UsbtmcPort() = default;

  // The instruments that are connected now, in the order of their nodes.
  [[nodiscard]] virtual std::vector<UsbtmcDevice> Devices() = 0;
  // EACCES or EPERM: the user may not.
  [[nodiscard]] virtual int Open(const std::string& node, int& handle) = 0;
  virtual void Close(int handle) = 0;

  // One transfer, with the end mark when that is enabled.
  [[nodiscard]] virtual int Write(int handle, const void* data, std::size_t count, std::size_t& written) = 0;
  // One transfer of at most `capacity` bytes.
  [[nodiscard]] virtual int Read(int handle, void* data, std::size_t capacity, std::size_t& received,
                                 Ending& ending) = 0;

  // milliseconds: at least 100.
  [[nodiscard]] virtual int SetTimeout(int handle, std::uint32_t milliseconds) = 0;
  // EINVAL: the instrument cannot end its answers at a character.
  [[nodiscard]] virtual int SetTerminator(int handle, char terminator, bool on) = 0;
  [[nodiscard]] virtual int SetEndMark(int handle, bool on) = 0;
  [[nodiscard]] virtual int Clear(int handle) = 0;
  // EINVAL: the instrument has no remote control of its own.
  [[nodiscard]] virtual int SetRemote(int handle, bool on) = 0;
  [[nodiscard]] virtual int GoToLocal(int handle) = 0;
  [[nodiscard]] virtual int LockOut(int handle) = 0;
};

} // namespace calder

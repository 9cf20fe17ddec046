// VISA for USBTMC instruments over the system's own driver, for machines without a VISA library.
//
// Resources are USB0::vendor::product::serial number::INSTR, with the interface number before INSTR when it is not 0.
// What the driver sets limits to: a time limit is at least 100 ms, and "none" is about 24 days; a termination character
// that an instrument does not support is no error, because its answers end with the end mark anyway. An instrument
// without remote control answers viGpibControlREN with VI_ERROR_NSUP_OPER. A write is one transfer; a file goes out in
// transfers of 2 MiB, of which the last carries the end mark. An answer may come in several transfers; it is read to
// its end.
#pragma once

#include "libs/bus/Visa.h"
#include "platform/UsbtmcPort.h"

#include <map>
#include <set>

namespace calder {

class UsbtmcVisa final : public Visa {
public:
  explicit UsbtmcVisa(std::unique_ptr<UsbtmcPort> port) : port_(std::move(port)) {}
  UsbtmcVisa(const UsbtmcVisa&) = delete;
  UsbtmcVisa& operator=(const UsbtmcVisa&) = delete;
  ~UsbtmcVisa() override;

  ViStatus viOpenDefaultRM(ViSession& manager) override;
  ViStatus viFindRsrc(ViSession manager, const std::string& expression, ViSession& list, std::uint32_t& count,
                      std::string& name) override;
  ViStatus viFindNext(ViSession list, std::string& name) override;
  ViStatus viOpen(ViSession manager, const std::string& name, ViSession& device) override;
  ViStatus viClose(ViSession object) override;
  ViStatus viSetAttribute(ViSession device, std::uint32_t attribute, std::uint64_t value) override;
  ViStatus viWrite(ViSession device, const void* data, std::uint32_t count, std::uint32_t& written) override;
  ViStatus viRead(ViSession device, void* data, std::uint32_t capacity, std::uint32_t& received) override;
  ViStatus viClear(ViSession device) override;
  ViStatus viGpibControlREN(ViSession device, std::uint16_t mode) override;
  // VI_ERROR_FILE_IO, and nothing is sent, when the file is shorter than `count`.
  ViStatus viWriteFromFile(ViSession device, const std::string& file, std::uint32_t count,
                           std::uint32_t& written) override;
  ViStatus viReadToFile(ViSession device, const std::string& file, std::uint32_t count,
                        std::uint32_t& received) override;

private:
  struct Device {
    ViSession manager = 0;
    int handle = 0;
    char terminator = '\n';
    bool terminatorOn = false;
    bool endMark = true;
  };
  struct List {
    ViSession manager = 0;
    std::vector<std::string> names;
    std::size_t next = 0;
  };

  [[nodiscard]] Device* Find(ViSession session);
  [[nodiscard]] ViStatus SetTerminator(Device& device);
  [[nodiscard]] ViStatus WriteAll(const Device& device, const char* data, std::size_t count, std::uint32_t& written);
  [[nodiscard]] ViStatus ReadTransfer(const Device& device, char* data, std::size_t capacity, std::uint32_t& received,
                                      UsbtmcPort::Ending& ending);
  void CloseOwned(ViSession manager);

  std::unique_ptr<UsbtmcPort> port_;
  ViSession next_ = 1;
  std::set<ViSession> managers_;
  std::map<ViSession, Device> devices_;
  std::map<ViSession, List> lists_;
  std::vector<char> buffer_; // for files
};

} // namespace calder

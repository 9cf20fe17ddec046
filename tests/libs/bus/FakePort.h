// Scripted USBTMC devices behind our own VISA layer.
#pragma once

#include "Testing.h"
#include "libs/bus/UsbtmcVisa.h"

#include <cerrno>
#include <deque>

namespace calder {

// What the port was asked for, and what it answers.
struct PortRecord {
  using Ending = UsbtmcPort::Ending;
  struct Transfer {
    std::string data;
    Ending ending = Ending::End;
    int error = 0;
  };
  std::vector<UsbtmcDevice> devices = {{"/dev/usbtmc0", 0x1209, 0x5530, "77", 0},
                                       {"/dev/usbtmc1", 0x1209, 0x5531, "1234567", 1},
                                       {"/dev/usbtmc2", 0x1209, 0x5531, "", 0}};
  std::vector<std::string> calls;
  std::deque<Transfer> answers;
  std::deque<int> errors; // of the calls that are no reads, in their order; 0 after the last
  std::size_t writeLimit = static_cast<std::size_t>(-1);
};

class FakePort final : public UsbtmcPort {
public:
  explicit FakePort(PortRecord& record) : record_(record) {}

  std::vector<UsbtmcDevice> Devices() override { return record_.devices; }
  int Open(const std::string& node, int& handle) override {
    handle = 5;
    return Did("open " + node);
  }
  void Close(int handle) override { record_.calls.push_back("close " + std::to_string(handle)); }
  int Write(int /*handle*/, const void* data, std::size_t count, std::size_t& written) override {
    written = std::min(count, record_.writeLimit);
    const std::string text =
        count > 40 ? std::to_string(count) + " bytes" : std::string(static_cast<const char*>(data), count);
    return Did("write " + text);
  }
  int Read(int /*handle*/, void* data, std::size_t capacity, std::size_t& received, Ending& ending) override {
    if (record_.answers.empty()) return ETIMEDOUT;
    const PortRecord::Transfer answer = record_.answers.front();
    record_.answers.pop_front();
    received = std::min(capacity, answer.data.size());
    std::copy_n(answer.data.begin(), received, static_cast<char*>(data));
    ending = answer.ending;
    return answer.error;
  }
  int SetTimeout(int /*handle*/, std::uint32_t milliseconds) override {
    return Did("limit " + std::to_string(milliseconds));
  }
  int SetTerminator(int /*handle*/, char terminator, bool on) override {
    return Did("terminator " + std::to_string(terminator) + (on ? " on" : " off"));
  }
  int SetEndMark(int /*handle*/, bool on) override { return Did(on ? "end on" : "end off"); }
  int Clear(int /*handle*/) override { return Did("clear"); }
  int SetRemote(int /*handle*/, bool on) override { return Did(on ? "remote on" : "remote off"); }
  int GoToLocal(int /*handle*/) override { return Did("local"); }
  int LockOut(int /*handle*/) override { return Did("lockout"); }

private:
  int Did(std::string call) {
    record_.calls.push_back(std::move(call));
    if (record_.errors.empty()) return 0;
    const int error = record_.errors.front();
    record_.errors.pop_front();
    return error;
  }
  PortRecord& record_;
};

} // namespace calder

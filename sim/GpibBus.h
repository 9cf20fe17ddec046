// The bus between the controller, address 0, and the instruments: who talks, who listens, and what goes over.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

namespace calder::sim {

class Bench;

class GpibBus {
public:
  enum class Result { Done, NotInCharge, NotAddressed, NoListener, Nothing };

  void Reset() { *this = GpibBus(); }
  // Interface clear: nobody talks or listens; the controller is in charge from now on.
  void InterfaceClear();
  void RemoteEnable(Bench& bench, bool on);
  [[nodiscard]] int Address() const { return address_; }
  void SetAddress(int address) { address_ = address; }

  // Command bytes: talk and listen addresses, untalk, unlisten, selected device clear, go to local, local lockout.
  [[nodiscard]] Result Command(Bench& bench, std::string_view bytes);
  // From the controller to those that listen. end: the last byte carries the end mark.
  [[nodiscard]] Result Write(Bench& bench, std::string_view data, bool end);
  // From the one that talks to the controller. ended: the last byte carries the end mark.
  [[nodiscard]] Result Read(Bench& bench, std::size_t capacity, int terminator, std::string& data, bool& ended);

private:
  int address_ = 0;
  bool inCharge_ = false;
  int talker_ = -1;
  std::set<int> listeners_;
};

} // namespace calder::sim

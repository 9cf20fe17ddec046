#include "sim/GpibBus.h"

#include "sim/Bench.h"

namespace calder::sim {
namespace {

constexpr int kUnlisten = 63;
constexpr int kUntalk = 95;
constexpr int kListen = 32;
constexpr int kTalk = 64;
constexpr int kGoToLocal = 1;
constexpr int kDeviceClear = 4;
constexpr int kLocalLockout = 17;
constexpr int kAllDevicesClear = 20;

} // namespace

void GpibBus::InterfaceClear() {
  inCharge_ = true;
  talker_ = -1;
  listeners_.clear();
}

void GpibBus::RemoteEnable(Bench& bench, bool on) {
  if (on) return; // an instrument goes to remote when it is addressed
  for (auto& instrument : bench.Instruments()) {
    instrument->Put("remote", "0");
    instrument->Put("lockout", "0");
  }
}

GpibBus::Result GpibBus::Command(Bench& bench, std::string_view bytes) {
  if (!inCharge_) return Result::NotInCharge;
  for (const char byte : bytes) {
    const int code = static_cast<unsigned char>(byte) & 0x7F;
    if (code == kUnlisten) {
      listeners_.clear();
    } else if (code == kUntalk) {
      talker_ = -1;
    } else if (code >= kTalk && code < kUntalk) {
      talker_ = code - kTalk;
    } else if (code >= kListen && code < kUnlisten) {
      listeners_.insert(code - kListen);
      if (Instrument* instrument = bench.At(code - kListen)) instrument->Put("remote", "1");
    } else if (code == kLocalLockout || code == kAllDevicesClear) {
      for (auto& instrument : bench.Instruments()) {
        if (code == kAllDevicesClear) instrument->Clear();
        if (code == kLocalLockout) instrument->Put("lockout", "1");
      }
    } else {
      for (const int listener : listeners_) {
        Instrument* instrument = bench.At(listener);
        if (instrument != nullptr && code == kDeviceClear) instrument->Clear();
        if (instrument != nullptr && code == kGoToLocal) instrument->Put("remote", "0");
      }
    }
  }
  return Result::Done;
}

GpibBus::Result GpibBus::Write(Bench& bench, std::string_view data, bool end) {
  if (talker_ != address_) return Result::NotAddressed;
  bool heard = false;
  for (const int listener : listeners_) {
    Instrument* instrument = bench.At(listener);
    if (instrument == nullptr) continue;
    heard = true;
    instrument->Receive(data, end);
  }
  return heard ? Result::Done : Result::NoListener;
}

GpibBus::Result GpibBus::Read(Bench& bench, std::size_t capacity, int terminator, std::string& data, bool& ended) {
  ended = false;
  if (!listeners_.contains(address_)) return Result::NotAddressed;
  Instrument* instrument = bench.At(talker_);
  if (instrument == nullptr) return Result::Nothing;
  if (!instrument->HasAnswer()) {
    instrument->NothingToSay();
    return Result::Nothing;
  }
  data = instrument->Send(capacity, terminator, ended);
  return Result::Done;
}

} // namespace calder::sim

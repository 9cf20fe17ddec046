#include "sim/Instrument.h"

#include <algorithm>

namespace calder::sim {
namespace {

constexpr std::size_t kErrorsMax = 20;
constexpr int kPowerOn = 0x80;

std::string_view ErrorText(int number) {
  switch (number) {
  case 0: return "No error";
  case -104: return "Data type error";
  case -108: return "Parameter not allowed";
  case -109: return "Missing parameter";
  case -113: return "Undefined header";
  case -114: return "Header suffix out of range";
  case -131: return "Invalid suffix";
  case -161: return "Invalid block data";
  case -221: return "Settings conflict";
  case -222: return "Data out of range";
  case -224: return "Illegal parameter value";
  case -230: return "Data corrupt or stale";
  case -350: return "Queue overflow";
  case -410: return "Query INTERRUPTED";
  case -420: return "Query UNTERMINATED";
  default: return "Error";
  }
}

std::string ErrorLine(int number) {
  return std::to_string(number) + ",\"" + std::string(ErrorText(number)) + "\"";
}

} // namespace

Instrument::Instrument(const Model& model) : model_(model) {
  SwitchOn();
}

void Instrument::SwitchOn() {
  memories_.clear();
  messages_.clear();
  errors_.clear();
  settings_.clear();
  eventStatus_ = kPowerOn;
  Clear();
  Put("power", "on");
  Put("serial", "1234567");
  Put("remote", "0");
  Put("lockout", "0");
  ResetSettings();
}

void Instrument::ResetSettings() {
  Put("channel", "1");
  Put("memory", std::to_string(model_.memoryMin));
  Put("order", model_.lowByteFirst ? "SWAP" : "NORM");
  Put("size", std::to_string(model_.sizeMax));
  Put("header", "1");
  Put("sequence", "0");
  Put("running", "0");
  Put("settling", "0");
  if (model_.name == "PJ7410") Put("mode", "AC-INT");
  for (int channel = 1; channel <= model_.channels; ++channel) {
    const std::string n = std::to_string(channel);
    const double frequency = std::clamp(1000.0, model_.frequencyMin, model_.frequencyMax);
    Put("frequency" + n, ToText(frequency));
    Put("amplitude" + n, "0");
    Put("unit" + n, "");
    Put("offset" + n, "0");
    Put("offseton" + n, "1");
    Put("range" + n, model_.name == "PJ7410" ? "100" : "0");
    Put("output" + n, "0");
    Put("shape" + n, "SIN");
    Put("polarity" + n, "NORM");
    Put("scale" + n, "FS");
    Put("load" + n, "50");
    Put("user" + n, std::to_string(model_.memoryMin));
  }
}

std::string Instrument::NameOf(const std::string& name) const {
  return !settings_.contains(name) && settings_.contains(name + "1") ? name + "1" : name;
}

std::string Instrument::Get(const std::string& name) const {
  const auto found = settings_.find(NameOf(name));
  return found == settings_.end() ? std::string() : found->second;
}

void Instrument::Receive(std::string_view bytes, bool end) {
  // The rest of a terminator whose first byte carried the end mark begins no message.
  if (input_.empty() && !expectsBlock_ && bytes.find_first_not_of("\r\n") == std::string_view::npos) return;
  if (!bytes.empty() && !answer_.empty()) {
    Error(-410);
    answer_.clear();
  }
  while (!bytes.empty()) {
    if (input_.empty()) {
      const bool formatted = model_.formatted && bytes.front() == '\0';
      kind_ = expectsBlock_ || formatted ? Input::Raw : Input::Text;
    }
    if (kind_ == Input::Raw) {
      input_ += bytes;
      break;
    }
    bool complete = false;
    const std::size_t count = scanner_.Scan(bytes, complete);
    input_ += bytes.substr(0, count);
    bytes.remove_prefix(count);
    if (complete) TakeMessage();
  }
  if (input_.empty()) return;
  if (kind_ == Input::Raw) {
    if (end || input_.size() == RawBytes()) TakeRawBlock();
  } else if (end && scanner_.InBlock()) {
    // The end came before the block had its length: no part of the message counts.
    input_.clear();
    scanner_.Clear();
    Error(-161);
  } else if (end) {
    TakeMessage();
  }
}

void Instrument::TakeMessage() {
  std::string message = std::move(input_);
  input_.clear();
  scanner_.Clear();
  if (!message.empty() && message.back() == '\n') message.pop_back();
  if (!message.empty() && message.back() == '\r') message.pop_back();
  if (message.empty()) return;
  messages_.push_back(message);
  Run(message);
}

void Instrument::TakeRawBlock() {
  const std::string block = std::move(input_);
  input_.clear();
  messages_.push_back(block);
  if (!expectsBlock_) {
    kept_ = block;
    return;
  }
  expectsBlock_ = false;
  if (model_.formatted) {
    StoreFormatted(blockMemory_, blockName_, block);
  } else {
    StoreArray(blockMemory_, blockName_, block);
  }
}

void Instrument::Run(std::string_view message) {
  failed_ = false;
  for (Command& command : SplitMessage(message)) {
    RunCommand(*this, command);
    if (failed_) break;
  }
  if (!answer_.empty()) answer_ += '\n';
}

void Instrument::Answer(std::string_view text) {
  if (!answer_.empty()) answer_ += ';';
  answer_ += text;
}

std::string Instrument::Send(std::size_t capacity, int terminator, bool& ended) {
  std::size_t count = std::min(capacity, answer_.size());
  if (terminator >= 0) {
    const std::size_t place = answer_.find(static_cast<char>(terminator));
    if (place != std::string::npos) count = std::min(count, place + 1);
  }
  std::string sent = answer_.substr(0, count);
  answer_.erase(0, count);
  ended = answer_.empty();
  return sent;
}

void Instrument::NothingToSay() {
  Error(-420);
}

void Instrument::Clear() {
  input_.clear();
  scanner_.Clear();
  expectsBlock_ = false;
  kept_.clear();
  answer_.clear();
}

void Instrument::Error(int number) {
  const int group = -number / 100;
  if (group >= 1 && group <= 4) eventStatus_ |= 1 << (6 - group);
  if (group == 1) failed_ = true;
  if (errors_.size() < kErrorsMax) {
    errors_.push_back(number);
  } else {
    errors_.back() = -350;
  }
}

void Instrument::ClearStatus() {
  eventStatus_ = 0;
  errors_.clear();
}

int Instrument::TakeEventStatus() {
  const int status = eventStatus_;
  eventStatus_ = 0;
  return status;
}

int Instrument::StatusByte() const {
  return (errors_.empty() ? 0 : 4) | (answer_.empty() ? 0 : 16);
}

std::string Instrument::NextError() {
  if (errors_.empty()) return ErrorLine(0);
  const int number = errors_.front();
  errors_.pop_front();
  return ErrorLine(number);
}

std::vector<std::string> Instrument::ErrorQueue() const {
  std::vector<std::string> lines;
  for (const int number : errors_) lines.push_back(ErrorLine(number));
  return lines;
}

} // namespace calder::sim

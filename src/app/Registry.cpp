#include "app/Registry.h"

#include "app/EngValB.h"
#include "platform/AsciiText.h"
#include "platform/Desktop.h"
#include "platform/SettingsStore.h"

#include <algorithm>
#include <limits>

namespace calder {
namespace {

constexpr const char* kSystem = "System";
constexpr const char* kForms = "FormProperty";
constexpr std::int32_t kVisibleTwips = 1000;

std::string BoolText(bool value) {
  return value ? "True" : "False";
}

bool IsTrue(const std::string& text) {
  return EqualWithoutCase(text, "true");
}

template <typename Integer>
Integer ToInteger(const std::string& text) {
  const double value = LeadingNumber(text);
  return static_cast<Integer>(std::clamp(value, static_cast<double>(std::numeric_limits<Integer>::min()),
                                         static_cast<double>(std::numeric_limits<Integer>::max())));
}

std::string Get(const SettingsStore& store, const std::string& section, const std::string& key,
                const std::string& fallback) {
  return store.Get(section, key).value_or(fallback);
}

} // namespace

clsRegistry::clsRegistry(SettingsStore& store, Instances& instances) : store_(store) {
  if (!instances.OthersRunning()) {
    for (int board = 0; board < 4; ++board) store_.Set("GPIB" + std::to_string(board), "Busy", BoolText(false));
    store_.Set(kSystem, "WinHandle", "0");
    store_.Set(kSystem, "WinCount", "0");
  }
  const auto countUp = [](const std::optional<std::string>& old) {
    return std::to_string(ToInteger<std::int32_t>(old.value_or("0")) + 1);
  };
  store_.Update(kSystem, "WinHandle", [&](const std::optional<std::string>& old) {
    std::string text = countUp(old);
    winH_ = ToInteger<std::int16_t>(text);
    return text;
  });
  store_.Update(kSystem, "WinCount", countUp);
  instances.StartupFinished();
  debugMode_ = IsTrue(Get(store_, kSystem, "DebugMode", "False"));
  loopTest_ = IsTrue(Get(store_, kSystem, "LoopTest", "False"));
  LoadPositions();
}

void clsRegistry::Release() {
  if (released_) return;
  released_ = true;
  std::int32_t count = 0;
  store_.Update(kSystem, "WinCount", [&](const std::optional<std::string>& old) {
    count = ToInteger<std::int32_t>(old.value_or("0")) - 1;
    return std::to_string(count);
  });
  if (gpibHost_) {
    if (goToLocal_) goToLocal_();
    SetGpibBusy(false);
  }
  if (count < 1) SavePositions();
}

std::string clsRegistry::BusSection() const {
  return "GPIB" + std::to_string(gpibId_);
}

bool clsRegistry::GetGpibBusy() const {
  return IsTrue(Get(store_, BusSection(), "Busy", "False"));
}

void clsRegistry::SetGpibBusy(bool busy) {
  store_.Set(BusSection(), "Busy", BoolText(busy));
  gpibHost_ = busy;
}

void clsRegistry::SetScreen(std::int32_t widthTwips, std::int32_t heightTwips) {
  screenWidth_ = widthTwips;
  screenHeight_ = heightTwips;
}

std::int32_t clsRegistry::GetFormTop(const std::string& form) {
  FormSlot& slot = Slot(form);
  if (static_cast<std::int64_t>(slot.top) + kVisibleTwips > screenHeight_) slot.top = 0;
  return slot.top;
}

void clsRegistry::SetFormTop(const std::string& form, std::int32_t top) {
  Slot(form).top = top;
}

std::int32_t clsRegistry::GetFormLeft(const std::string& form) {
  FormSlot& slot = Slot(form);
  if (static_cast<std::int64_t>(slot.left) + kVisibleTwips > screenWidth_) slot.left = 0;
  return slot.left;
}

void clsRegistry::SetFormLeft(const std::string& form, std::int32_t left) {
  Slot(form).left = left;
}

std::int32_t clsRegistry::GetWinCount() const {
  return ToInteger<std::int32_t>(Get(store_, kSystem, "WinCount", "0"));
}

std::int16_t clsRegistry::GetGpibAddress() const {
  return ToInteger<std::int16_t>(Get(store_, BusSection(), "Address", "-1"));
}

void clsRegistry::SetGpibAddress(std::int16_t address) {
  store_.Set(BusSection(), "Address", std::to_string(address));
}

std::string clsRegistry::GetSetting(const std::string& section, const std::string& key) const {
  return Get(store_, section, key, "False");
}

void clsRegistry::SetSetting(const std::string& section, const std::string& key, const std::string& value) {
  store_.Set(section, key, value);
}

std::int16_t clsRegistry::GetGpibBoard() const {
  return ToInteger<std::int16_t>(Get(store_, kSystem, "GpibBoard", "3"));
}

void clsRegistry::SetGpibBoard(std::int16_t kind) {
  store_.Set(kSystem, "GpibBoard", std::to_string(kind));
}

std::string clsRegistry::GetSerialNum() const {
  return Get(store_, kSystem, "SerialNum", "");
}

void clsRegistry::SetSerialNum(const std::string& text) {
  store_.Set(kSystem, "SerialNum", text);
}

void clsRegistry::LoadPositions() {
  std::size_t next = 0;
  for (const auto& [name, value] : store_.All(kForms)) {
    if (next == forms_.size()) break;
    std::array<std::int32_t, 4> numbers{}; // top, left, b, a
    std::size_t from = 0;
    for (std::int32_t& number : numbers) {
      number = ToInteger<std::int32_t>(value.substr(from, value.find(',', from) - from));
      from = value.find(',', from);
      if (from == std::string::npos) break;
      ++from;
    }
    forms_[next++] = {name, numbers[0], numbers[1], numbers[3], numbers[2]};
  }
}

void clsRegistry::SavePositions() {
  for (std::size_t i = 0; i + 1 < forms_.size() && !forms_[i].name.empty(); ++i) {
    const FormSlot& slot = forms_[i];
    store_.Set(kForms, slot.name,
               std::to_string(slot.top) + ',' + std::to_string(slot.left) + ',' + std::to_string(slot.b) + ',' +
                   std::to_string(slot.a));
  }
}

clsRegistry::FormSlot& clsRegistry::Slot(const std::string& form) {
  for (FormSlot& slot : forms_) {
    if (slot.name == form) return slot;
    if (slot.name.empty() || &slot == &forms_.back()) {
      slot = {form, 0, 0, 0, 0};
      return slot;
    }
  }
  return forms_.back();
}

} // namespace calder

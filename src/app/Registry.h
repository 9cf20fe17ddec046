// Session state: what outlives a run or is shared between running copies of the program.
//
// One object a process, made first and released last. Making it counts this copy in (the first copy clears what a crash
// left behind), releasing it counts the copy out; the last copy writes the window positions.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

namespace calder {

class Instances;
class SettingsStore;

class clsRegistry {
public:
  static constexpr int kFormSlots = 11; // 0 to 10; the last one is never written

  clsRegistry(SettingsStore& store, Instances& instances);
  ~clsRegistry() { Release(); }
  clsRegistry(const clsRegistry&) = delete;
  clsRegistry& operator=(const clsRegistry&) = delete;

  // Some copy of the program is transferring over the bus right now.
  [[nodiscard]] bool GetGpibBusy() const;
  void SetGpibBusy(bool busy);
  // This copy is the one.
  [[nodiscard]] bool GetGpibHost() const { return gpibHost_; }
  [[nodiscard]] std::int16_t GetGpibId() const { return gpibId_; }
  void SetGpibId(std::int16_t id) { gpibId_ = id; }

  // Positions in twips (15 to a logical pixel). A position that would leave less than 1000 twips of the window on the
  // screen becomes 0. The screen is as large as SetScreen last said.
  void SetScreen(std::int32_t widthTwips, std::int32_t heightTwips);
  [[nodiscard]] std::int32_t GetFormTop(const std::string& form);
  void SetFormTop(const std::string& form, std::int32_t top);
  [[nodiscard]] std::int32_t GetFormLeft(const std::string& form);
  void SetFormLeft(const std::string& form, std::int32_t left);

  [[nodiscard]] std::int16_t GetWinH() const { return winH_; }
  void SetWinH(std::int16_t number) { winH_ = number; }
  [[nodiscard]] std::int32_t GetWinCount() const;

  // The controller's own bus address, recorded when a transfer starts; -1: none yet.
  [[nodiscard]] std::int16_t GetGpibAddress() const;
  void SetGpibAddress(std::int16_t address);

  // "False" when the key is missing.
  [[nodiscard]] std::string GetSetting(const std::string& section, const std::string& key) const;
  void SetSetting(const std::string& section, const std::string& key, const std::string& value);

  // Test switches: diagnostic boxes, and the loop test instead of transfers.
  [[nodiscard]] bool GetDebugMode() const { return debugMode_; }
  void SetDebugMode(bool on) { debugMode_ = on; }
  [[nodiscard]] bool GetLoopTest() const { return loopTest_; }
  void SetLoopTest(bool on) { loopTest_ = on; }

  [[nodiscard]] std::int16_t GetGpibBoard() const;
  void SetGpibBoard(std::int16_t kind);
  [[nodiscard]] std::string GetSerialNum() const;
  void SetSerialNum(const std::string& text);

  // Counts this copy out, ends a transfer of its own that is under way, and as the last copy writes the positions. The
  // destructor does it; earlier, whoever holds what SetLocalControl needs. A second call does nothing.
  void Release();
  // Puts the instrument back to local control when this copy ends in the middle of a transfer.
  void SetLocalControl(std::function<void()> goToLocal) { goToLocal_ = std::move(goToLocal); }

private:
  struct FormSlot {
    std::string name; // empty: the first free slot
    std::int32_t top = 0;
    std::int32_t left = 0;
    std::int32_t a = 0;
    std::int32_t b = 0;
  };

  [[nodiscard]] std::string BusSection() const;
  void LoadPositions();
  void SavePositions();
  FormSlot& Slot(const std::string& form);

  SettingsStore& store_;
  std::int16_t gpibId_ = 0;
  bool gpibHost_ = false;
  bool released_ = false;
  std::int16_t winH_ = 0;
  bool debugMode_ = false;
  bool loopTest_ = false;
  std::int32_t screenWidth_ = 1920 * 15;
  std::int32_t screenHeight_ = 1080 * 15;
  std::array<FormSlot, kFormSlots> forms_;
  std::function<void()> goToLocal_;
};

} // namespace calder

// The back end for a KI GPIB board: every bus action is a line of words for the board's library.
#pragma once

#include "comm/BackEnd.h"
#include "libs/bus/KiGpib.h"

namespace calder {

class KI_GPIB_MDL final : public BackEnd {
public:
  explicit KI_GPIB_MDL(BackEndHost& host) : host_(host) {}

  [[nodiscard]] const char* Name() const override { return "KI_GPIB"; }
  int GP_Init(const std::string& configuration) override;
  int GP_End() override { return GoToLocal(); }
  int GP_Send_Str(int address, const std::string& text) override;
  int GP_Receive_Str(int address, std::string& text) override;
  int GP_LLO() override { return Transmit("LLO"); }
  int GP_REN(bool on) override;
  int GP_IFC() override { return Transmit("IFC"); }
  int GP_SDC(int address) override;
  int GP_Time_Out(int code) override;
  int GP_MTerm(int mode) override;
  int GP_EOI(bool on) override;
  int GP_Send_Binary_Data(std::span<const std::byte> data, int address, int count, int width, bool swap) override;

private:
  [[nodiscard]] bool Ready();
  int Transmit(const std::string& words);
  int GoToLocal();
  int AddressListener(int address);

  BackEndHost& host_;
  std::unique_ptr<KiGpib> api_;
  int address_ = 0; // of the instrument that was addressed last
  int terminator_ = kTermNone;
  bool endMark_ = true;
};

} // namespace calder

// The back end for the USB488 library. The device is opened by its first use, with what was set until then.
#pragma once

#include "comm/BackEnd.h"
#include "libs/bus/Usb488.h"

namespace calder {

class USB488_MDL final : public BackEnd {
public:
  explicit USB488_MDL(BackEndHost& host) : host_(host) {}

  [[nodiscard]] const char* Name() const override { return "USB488"; }
  [[nodiscard]] ErrorLabels Labels() const override;
  int GP_Init(const std::string& configuration) override;
  int GP_End() override;
  int GP_Send_Str(int address, const std::string& text) override;
  int GP_Receive_Str(int address, std::string& text) override;
  int GP_LLO() override;
  int GP_REN(bool on) override;
  int GP_IFC() override;
  int GP_SDC(int address) override;
  int GP_Time_Out(int code) override;
  int GP_MTerm(int mode) override;
  int GP_EOI(bool on) override;
  int GP_Send_Binary_Data(std::span<const std::byte> data, int address, int count, int width, bool swap) override;

private:
  int Open();

  BackEndHost& host_;
  std::unique_ptr<Usb488> api_;
  int device_ = 0;
  bool open_ = false;
  bool openFailed_ = false; // by the last operation that needed the device
  int timeLimit_ = 0;
  int terminator_ = kTermNone;
  bool endMark_ = true;
};

} // namespace calder

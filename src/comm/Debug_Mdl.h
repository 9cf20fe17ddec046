// The simulated instrument of interface kind 4: queries are answered from an INI file or by the user.
//
// The file is the one that the configuration's INI_FILE names, else "simulated.ini", in the program's folder: section
// "ADRS" followed by the instrument's address, key the query, value the answer (at most 99 characters).
#pragma once

#include "comm/BackEnd.h"

#include <vector>

namespace calder {

class Debug_Mdl final : public BackEnd {
public:
  explicit Debug_Mdl(BackEndHost& host) : host_(host) {}

  [[nodiscard]] const char* Name() const override { return "SIMULATED"; }
  [[nodiscard]] ErrorLabels Labels() const override {
    return {"Error", "Time Out", "Board is Northing", "Buffer Over"};
  }
  [[nodiscard]] bool Blocks() const override { return false; }
  int GP_Init(const std::string& configuration) override;
  int GP_End() override { return kBusOk; }
  int GP_Send_Str(int address, const std::string& text) override;
  int GP_Receive_Str(int address, std::string& text) override;
  int GP_LLO() override { return kBusOk; }
  int GP_REN(bool /*on*/) override { return kBusOk; }
  int GP_IFC() override { return kBusOk; }
  int GP_SDC(int /*address*/) override { return kBusOk; }
  int GP_Time_Out(int /*code*/) override { return kBusOk; }
  int GP_MTerm(int mode) override { return mode < kTermNone || mode > kTermCrLf ? kBusFailed : kBusOk; }
  int GP_EOI(bool /*on*/) override { return kBusOk; }
  int GP_Send_Binary_Data(std::span<const std::byte>, int, int, int, bool) override { return kBusOk; }

private:
  BackEndHost& host_;
  std::string file_;
  bool responseDialog_ = false;
  std::string queries_; // of the last text, joined with ","
  std::string answers_;
};

} // namespace calder

// The back end for an NI-488.2 board, as bus controller at board level: it addresses the instrument with command bytes
// and reads and writes on the board.
#pragma once

#include "comm/BackEnd.h"
#include "libs/bus/Ni4882.h"

namespace calder {

class NI_GPIB_Mdl final : public BackEnd {
public:
  explicit NI_GPIB_Mdl(BackEndHost& host) : host_(host) {}

  [[nodiscard]] const char* Name() const override { return "NI_GPIB"; }
  [[nodiscard]] ErrorLabels Labels() const override {
    return {"Error", "Time Out", "Board is Northing", "Buffer Over"};
  }
  int GP_Init(const std::string& configuration) override;
  int GP_End() override { return GP_REN(false); }
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

  // The board's own primary address: -1 and 0 ask, a positive value sets it; the answer on success. The error code.
  [[nodiscard]] int BoardAdr(int address, int& answer);

private:
  template <typename Call>
  int Do(Call call);
  // Does a call that moves bytes to the bus; fewer than asked for is a failure.
  template <typename Call>
  int DoMoving(std::size_t bytes, Call call);
  int Commands(std::string_view bytes);
  int AddressListener(int address);
  int AddressTalker(int address);
  int Write(std::string_view bytes);

  BackEndHost& host_;
  std::unique_ptr<Ni4882> api_;
  int board_ = 0; // before ibfind: the first board, which every library knows by its number
  int ownAddress_ = 0;
  int terminator_ = kTermNone;
  long count_ = 0; // bytes of the last call
};

} // namespace calder

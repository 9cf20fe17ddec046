// The back end for USBTMC instruments, through VISA. A device is opened by its first use.
//
// Its address is the number of a resource, 0 to 20; the transfers use resource 0.
#pragma once

#include "comm/BackEnd.h"
#include "libs/bus/Visa.h"

#include <array>
#include <vector>

namespace calder {

class USBTMC_MDL final : public BackEnd {
public:
  static constexpr int kResources = 21;

  explicit USBTMC_MDL(BackEndHost& host) : host_(host) {}

  [[nodiscard]] const char* Name() const override { return "USBTMC"; }
  int GP_Init(const std::string& configuration) override;
  int GP_End() override;
  int GP_Send_Str(int address, const std::string& text) override;
  int GP_Receive_Str(int address, std::string& text) override;
  int GP_LLO() override;
  int GP_REN(bool on) override;
  int GP_IFC() override { return kBusOk; }
  int GP_SDC(int address) override;
  int GP_Time_Out(int code) override;
  int GP_MTerm(int mode) override;
  int GP_EOI(bool on) override;
  int GP_Send_Binary_Data(std::span<const std::byte> data, int address, int count, int width, bool swap) override;
  int GP_Send_AsciiBinary_Data(int address, const std::string& header, std::span<const std::byte> data) override;
  int GP_Receive_Binary_Data(int address, const std::string& file, int limit) override;

  // The name that a resource has from the next opening on.
  void SetResource(int number, const std::string& name);
  // The serial numbers of the connected devices whose resource names begin so, at most kResources.
  [[nodiscard]] std::vector<std::string> SerialNumbers(const std::string& prefix);

private:
  struct Resource {
    std::string name;
    ViSession session = 0; // 0: not open
  };

  [[nodiscard]] bool Ready();
  int OpenManager();
  Resource& At(int address);
  int Open(Resource& resource);
  int SetTimeLimit(const Resource& resource);
  int SetEndMark(const Resource& resource, bool on);
  int SetOnAll(std::uint32_t attribute, std::uint64_t value);
  int Write(const Resource& resource, std::string_view bytes);
  int WriteFile(const Resource& resource, std::string_view payload);

  BackEndHost& host_;
  std::unique_ptr<Visa> visa_;
  ViSession manager_ = 0;
  std::array<Resource, kResources> resources_;
  int last_ = 0; // the resource that was addressed last
  int timeLimit_ = 0;
  int terminator_ = kTermLf;
};

} // namespace calder

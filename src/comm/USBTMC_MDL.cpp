#include "comm/USBTMC_MDL.h"

#include "app/EngValB.h"

#include <cstdio>

namespace calder {
namespace {

constexpr std::uint32_t kReceiveLength = 1024;
constexpr const char* kSendFile = "/Binary.dat";

int ResultOf(ViStatus status) {
  if (status >= VI_SUCCESS) return kBusOk;
  if (status == VI_ERROR_TMO) return kBusTimeout;
  return status == VI_ERROR_RSRC_NFOUND ? kBusNoBoard : kBusFailed;
}

// Fewer bytes than asked for are a failure, though VISA calls it a success.
int MovedResultOf(ViStatus status, std::uint32_t moved, std::size_t asked) {
  return status >= VI_SUCCESS && moved != asked ? kBusFailed : ResultOf(status);
}

// An instrument without remote control has nothing to be asked for.
int RemoteResultOf(ViStatus status) {
  return status == VI_ERROR_NSUP_OPER ? kBusOk : ResultOf(status);
}

bool WritePayload(const std::string& path, std::string_view payload) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "wb"), &std::fclose);
  return file && std::fwrite(payload.data(), 1, payload.size(), file.get()) == payload.size() &&
         std::fflush(file.get()) == 0;
}

// The text between the third and the fourth "::" of a resource name.
std::string SerialNumberOf(std::string_view name) {
  for (int i = 0; i < 3; ++i) {
    const std::size_t at = name.find("::");
    if (at == std::string_view::npos) return {};
    name.remove_prefix(at + 2);
  }
  return std::string(name.substr(0, name.find("::")));
}

} // namespace

bool USBTMC_MDL::Ready() {
  return Loaded(visa_, [this](std::string* lacking) {
    std::unique_ptr<Visa> visa = LoadVisa(host_.libraries, lacking);
    // A VISA library that is not complete is to be mended, not to be passed over in silence.
    if (!visa && lacking->empty() && host_.kernelVisa) visa = host_.kernelVisa();
    return visa;
  });
}

int USBTMC_MDL::OpenManager() {
  if (!Ready()) return kBusNoBoard;
  if (manager_ != 0) return kBusOk;
  return ResultOf(visa_->viOpenDefaultRM(manager_));
}

int USBTMC_MDL::GP_Init(const std::string& configuration) {
  if (const int result = OpenManager(); result != kBusOk) return result;
  timeLimit_ = kTimeLimit300ms;
  terminator_ = kTermLf;
  std::string names = ConfigurationValue(configuration, "USBTMC_NAME");
  if (names.empty()) return kBusOk;
  const std::string countText = ConfigurationValue(configuration, "USBTMC_DEVNO");
  const double count = countText.empty() ? kResources : LeadingNumber(countText);
  for (int i = 0; i < kResources && i < count && !names.empty(); ++i) {
    const std::size_t slash = names.find('/');
    SetResource(i, names.substr(0, slash));
    names.erase(0, slash == std::string::npos ? slash : slash + 1);
  }
  const int result = Open(resources_[0]);
  if (result != kBusOk) GP_End();
  return result;
}

int USBTMC_MDL::GP_End() {
  if (!visa_) return kBusNoBoard;
  int result = GP_REN(false);
  for (Resource& resource : resources_) {
    if (resource.session != 0) result |= ResultOf(visa_->viClose(resource.session));
    resource.session = 0;
  }
  if (manager_ != 0) result |= ResultOf(visa_->viClose(manager_));
  manager_ = 0;
  return result;
}

int USBTMC_MDL::GP_Send_Str(int address, const std::string& text) {
  Resource& resource = At(address);
  if (const int result = Open(resource); result != kBusOk) return result;
  return Write(resource, text + std::string(TerminatorText(terminator_)));
}

int USBTMC_MDL::GP_Receive_Str(int address, std::string& text) {
  text.clear();
  Resource& resource = At(address);
  if (const int result = Open(resource); result != kBusOk) return result;
  text.resize(kReceiveLength);
  std::uint32_t received = 0;
  const int result = ResultOf(visa_->viRead(resource.session, text.data(), kReceiveLength, received));
  CutReply(text, received);
  return result;
}

int USBTMC_MDL::GP_LLO() {
  Resource& resource = At(kNoAddress);
  if (const int result = Open(resource); result != kBusOk) return result;
  return RemoteResultOf(visa_->viGpibControlREN(resource.session, VI_GPIB_REN_ASSERT_ADDRESS_LLO));
}

int USBTMC_MDL::GP_REN(bool on) {
  Resource& resource = At(kNoAddress);
  if (!on && resource.session == 0) return visa_ ? kBusOk : kBusNoBoard;
  if (const int result = Open(resource); result != kBusOk) return result;
  return RemoteResultOf(visa_->viGpibControlREN(resource.session, on ? VI_GPIB_REN_ASSERT : VI_GPIB_REN_DEASSERT_GTL));
}

int USBTMC_MDL::GP_SDC(int address) {
  Resource& resource = At(address);
  if (const int result = Open(resource); result != kBusOk) return result;
  return ResultOf(visa_->viClear(resource.session));
}

int USBTMC_MDL::GP_Time_Out(int code) {
  timeLimit_ = code;
  return SetOnAll(VI_ATTR_TMO_VALUE, TimeLimitMilliseconds(code));
}

int USBTMC_MDL::GP_MTerm(int mode) {
  if (mode < kTermNone || mode > kTermCrLf) return kBusFailed;
  terminator_ = mode;
  int result = kBusOk;
  if (mode != kTermNone) result |= SetOnAll(VI_ATTR_TERMCHAR, mode == kTermCr ? '\r' : '\n');
  return result | SetOnAll(VI_ATTR_TERMCHAR_EN, mode != kTermNone ? 1 : 0);
}

int USBTMC_MDL::GP_EOI(bool on) {
  return SetOnAll(VI_ATTR_SEND_END_EN, on ? 1 : 0);
}

int USBTMC_MDL::GP_Send_Binary_Data(std::span<const std::byte> data, int address, int count, int width, bool swap) {
  Resource& resource = At(address);
  if (const int result = Open(resource); result != kBusOk) return result;
  return WriteFile(resource, BinaryPayload(data, count, width, swap));
}

int USBTMC_MDL::GP_Send_AsciiBinary_Data(int address, const std::string& header, std::span<const std::byte> data) {
  Resource& resource = At(address);
  if (const int result = Open(resource); result != kBusOk) return result;
  // Header and block are one message: an end between them would cut the block.
  int result = SetEndMark(resource, false);
  if (result == kBusOk) result = Write(resource, header);
  result |= SetEndMark(resource, true);
  if (result != kBusOk) return result;
  return WriteFile(resource, {reinterpret_cast<const char*>(data.data()), data.size()});
}

int USBTMC_MDL::GP_Receive_Binary_Data(int address, const std::string& file, int limit) {
  Resource& resource = At(address);
  if (const int result = Open(resource); result != kBusOk) return result;
  // A block may hold any byte: no character ends it.
  int result = ResultOf(visa_->viSetAttribute(resource.session, VI_ATTR_TERMCHAR_EN, 0));
  std::uint32_t received = 0;
  if (result == kBusOk)
    result =
        ResultOf(visa_->viReadToFile(resource.session, file, static_cast<std::uint32_t>(std::max(limit, 0)), received));
  return result | ResultOf(visa_->viSetAttribute(resource.session, VI_ATTR_TERMCHAR_EN, 1));
}

void USBTMC_MDL::SetResource(int number, const std::string& name) {
  if (number < 0 || number >= kResources) return;
  Resource& resource = resources_[static_cast<std::size_t>(number)];
  if (resource.session != 0 && visa_) visa_->viClose(resource.session);
  resource = {name, 0};
}

std::vector<std::string> USBTMC_MDL::SerialNumbers(const std::string& prefix) {
  std::vector<std::string> serials;
  const bool wasOpen = manager_ != 0;
  if (OpenManager() != kBusOk) return serials;
  ViSession list = 0;
  std::uint32_t count = 0;
  std::string name;
  ViStatus status = visa_->viFindRsrc(manager_, prefix + "?*INSTR", list, count, name);
  const bool found = status >= VI_SUCCESS;
  for (std::uint32_t i = 0; found && status >= VI_SUCCESS && i < count && i < kResources; ++i) {
    serials.push_back(SerialNumberOf(name));
    if (i + 1 < count) status = visa_->viFindNext(list, name);
  }
  if (found && list != 0) visa_->viClose(list);
  if (!wasOpen) {
    visa_->viClose(manager_);
    manager_ = 0;
  }
  return serials;
}

USBTMC_MDL::Resource& USBTMC_MDL::At(int address) {
  if (address >= 0 && address < kResources) last_ = address;
  return resources_[static_cast<std::size_t>(last_)];
}

int USBTMC_MDL::Open(Resource& resource) {
  hint_ = {};
  if (resource.session != 0) return kBusOk;
  if (const int result = OpenManager(); result != kBusOk) return result;
  const ViStatus status = visa_->viOpen(manager_, resource.name, resource.session);
  if (status < VI_SUCCESS) {
    resource.session = 0;
    if (status == VI_ERROR_NPERMISSION) hint_ = {FailureHint::Kind::NotPermitted};
    return ResultOf(status);
  }
  return SetTimeLimit(resource);
}

int USBTMC_MDL::SetTimeLimit(const Resource& resource) {
  return ResultOf(visa_->viSetAttribute(resource.session, VI_ATTR_TMO_VALUE, TimeLimitMilliseconds(timeLimit_)));
}

int USBTMC_MDL::SetEndMark(const Resource& resource, bool on) {
  return ResultOf(visa_->viSetAttribute(resource.session, VI_ATTR_SEND_END_EN, on ? 1 : 0));
}

// On every open device; a device that is opened later begins with VISA's own values.
int USBTMC_MDL::SetOnAll(std::uint32_t attribute, std::uint64_t value) {
  if (!visa_) return kBusNoBoard;
  int result = kBusOk;
  for (const Resource& resource : resources_) {
    if (resource.session != 0) result |= ResultOf(visa_->viSetAttribute(resource.session, attribute, value));
  }
  return result;
}

int USBTMC_MDL::Write(const Resource& resource, std::string_view bytes) {
  std::uint32_t written = 0;
  const ViStatus status =
      visa_->viWrite(resource.session, bytes.data(), static_cast<std::uint32_t>(bytes.size()), written);
  return MovedResultOf(status, written, bytes.size());
}

int USBTMC_MDL::WriteFile(const Resource& resource, std::string_view payload) {
  const std::string path = host_.folder + kSendFile;
  if (!WritePayload(path, payload)) return kBusFailed;
  std::uint32_t written = 0;
  const ViStatus status =
      visa_->viWriteFromFile(resource.session, path, static_cast<std::uint32_t>(payload.size()), written);
  return MovedResultOf(status, written, payload.size());
}

} // namespace calder

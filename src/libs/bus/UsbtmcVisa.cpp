#include "libs/bus/UsbtmcVisa.h"

#include "libs/bus/VisaNames.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <limits>

namespace calder {
namespace {

using Ending = UsbtmcPort::Ending;

constexpr std::size_t kTransferBytes = std::size_t{2} << 20;
constexpr std::uint64_t kInfinite = 0xFFFFFFFF;
constexpr std::uint64_t kShortestLimit = 100; // milliseconds, the driver's
constexpr std::uint64_t kLongestLimit = std::numeric_limits<std::int32_t>::max();

// Modes of viGpibControlREN beside those of Visa.h.
constexpr std::uint16_t kDeassert = 0;
constexpr std::uint16_t kAssertAddress = 3;
constexpr std::uint16_t kAssertLockout = 4;
constexpr std::uint16_t kAddressGoToLocal = 6;

ViStatus StatusOf(int error) {
  switch (error) {
  case 0: return VI_SUCCESS;
  case ETIMEDOUT: return VI_ERROR_TMO;
  case ENODEV:
  case ENXIO:
  case ESHUTDOWN: return VI_ERROR_CONN_LOST;
  case EACCES: return VI_ERROR_NPERMISSION;
  case EBUSY: return VI_ERROR_RSRC_BUSY;
  default: return VI_ERROR_IO; // EPIPE, EPROTO and the like: a transfer that went wrong
  }
}

ViStatus OpenStatusOf(int error) {
  switch (error) {
  case EPERM: return VI_ERROR_NPERMISSION;
  case ENOENT:
  case ENODEV:
  case ENXIO: return VI_ERROR_RSRC_NFOUND; // pulled out since it was listed
  default: return StatusOf(error);
  }
}

UsbName NameOf(const UsbtmcDevice& device) {
  return {0, device.vendor, device.product, device.serial, device.interface};
}

} // namespace

UsbtmcVisa::~UsbtmcVisa() {
  for (const auto& [session, device] : devices_) port_->Close(device.handle);
}

UsbtmcVisa::Device* UsbtmcVisa::Find(ViSession session) {
  const auto found = devices_.find(session);
  return found == devices_.end() ? nullptr : &found->second;
}

ViStatus UsbtmcVisa::viOpenDefaultRM(ViSession& manager) {
  manager = next_++;
  managers_.insert(manager);
  return VI_SUCCESS;
}

ViStatus UsbtmcVisa::viFindRsrc(ViSession manager, const std::string& expression, ViSession& list, std::uint32_t& count,
                                std::string& name) {
  count = 0;
  name.clear();
  if (!managers_.contains(manager)) return VI_ERROR_INV_OBJECT;
  if (!IsVisaExpression(expression)) return VI_ERROR_INV_EXPR;
  List found;
  found.manager = manager;
  for (const UsbtmcDevice& device : port_->Devices()) {
    if (device.serial.empty()) continue; // it could not be distinguished from its twins
    std::string one = FormatUsbName(NameOf(device));
    if (MatchesVisaExpression(expression, one)) found.names.push_back(std::move(one));
  }
  if (found.names.empty()) return VI_ERROR_RSRC_NFOUND;
  count = static_cast<std::uint32_t>(found.names.size());
  list = next_++;
  List& kept = lists_[list] = std::move(found);
  name = kept.names[kept.next++];
  return VI_SUCCESS;
}

ViStatus UsbtmcVisa::viFindNext(ViSession list, std::string& name) {
  name.clear();
  const auto found = lists_.find(list);
  if (found == lists_.end()) return VI_ERROR_INV_OBJECT;
  if (found->second.next == found->second.names.size()) return VI_ERROR_RSRC_NFOUND;
  name = found->second.names[found->second.next++];
  return VI_SUCCESS;
}

ViStatus UsbtmcVisa::viOpen(ViSession manager, const std::string& name, ViSession& device) {
  if (!managers_.contains(manager)) return VI_ERROR_INV_OBJECT;
  const auto wanted = ParseUsbName(name);
  if (!wanted) return VI_ERROR_INV_RSRC_NAME;
  const std::vector<UsbtmcDevice> all = port_->Devices();
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const UsbtmcDevice& one) { return SameInstrument(NameOf(one), *wanted); });
  if (found == all.end()) return VI_ERROR_RSRC_NFOUND;
  Device opened;
  opened.manager = manager;
  const ViStatus status = OpenStatusOf(port_->Open(found->node, opened.handle));
  if (status != VI_SUCCESS) return status;
  device = next_++;
  devices_[device] = opened;
  return VI_SUCCESS;
}

void UsbtmcVisa::CloseOwned(ViSession manager) {
  std::erase_if(devices_, [&](const auto& entry) {
    const bool owned = entry.second.manager == manager;
    if (owned) port_->Close(entry.second.handle);
    return owned;
  });
  std::erase_if(lists_, [&](const auto& entry) { return entry.second.manager == manager; });
}

ViStatus UsbtmcVisa::viClose(ViSession object) {
  if (managers_.erase(object) != 0) {
    CloseOwned(object);
    return VI_SUCCESS;
  }
  if (lists_.erase(object) != 0) return VI_SUCCESS;
  const auto found = devices_.find(object);
  if (found == devices_.end()) return VI_ERROR_INV_OBJECT;
  port_->Close(found->second.handle);
  devices_.erase(found);
  return VI_SUCCESS;
}

ViStatus UsbtmcVisa::SetTerminator(Device& device) {
  const int error = port_->SetTerminator(device.handle, device.terminator, device.terminatorOn);
  return error == EINVAL ? VI_SUCCESS : StatusOf(error);
}

ViStatus UsbtmcVisa::viSetAttribute(ViSession session, std::uint32_t attribute, std::uint64_t value) {
  Device* device = Find(session);
  if (device == nullptr) return VI_ERROR_INV_OBJECT;
  switch (attribute) {
  case VI_ATTR_TMO_VALUE: {
    const std::uint64_t limit = value == kInfinite ? kLongestLimit : std::clamp(value, kShortestLimit, kLongestLimit);
    return StatusOf(port_->SetTimeout(device->handle, static_cast<std::uint32_t>(limit)));
  }
  case VI_ATTR_TERMCHAR: device->terminator = static_cast<char>(value); return SetTerminator(*device);
  case VI_ATTR_TERMCHAR_EN: device->terminatorOn = value != 0; return SetTerminator(*device);
  case VI_ATTR_SEND_END_EN:
    device->endMark = value != 0;
    return StatusOf(port_->SetEndMark(device->handle, device->endMark));
  default: return VI_ERROR_NSUP_ATTR;
  }
}

ViStatus UsbtmcVisa::WriteAll(const Device& device, const char* data, std::size_t count, std::uint32_t& written) {
  std::size_t sent = 0;
  const int error = port_->Write(device.handle, data, count, sent);
  written += static_cast<std::uint32_t>(sent);
  if (error != 0) return StatusOf(error);
  // The rest would begin a transfer of its own after an end mark: the message is broken.
  return sent == count ? VI_SUCCESS : VI_ERROR_IO;
}

ViStatus UsbtmcVisa::viWrite(ViSession session, const void* data, std::uint32_t count, std::uint32_t& written) {
  written = 0;
  const Device* device = Find(session);
  if (device == nullptr) return VI_ERROR_INV_OBJECT;
  return count == 0 ? VI_SUCCESS : WriteAll(*device, static_cast<const char*>(data), count, written);
}

ViStatus UsbtmcVisa::ReadTransfer(const Device& device, char* data, std::size_t capacity, std::uint32_t& received,
                                  Ending& ending) {
  std::size_t count = 0;
  const int error = port_->Read(device.handle, data, capacity, count, ending);
  received += static_cast<std::uint32_t>(count);
  if (error != 0) return StatusOf(error);
  // Neither bytes nor an end: asking on could go on for ever.
  return count == 0 && ending == Ending::None ? VI_ERROR_IO : VI_SUCCESS;
}

ViStatus UsbtmcVisa::viRead(ViSession session, void* data, std::uint32_t capacity, std::uint32_t& received) {
  received = 0;
  const Device* device = Find(session);
  if (device == nullptr) return VI_ERROR_INV_OBJECT;
  Ending ending = Ending::None;
  while (received < capacity && ending == Ending::None) {
    const ViStatus status =
        ReadTransfer(*device, static_cast<char*>(data) + received, capacity - received, received, ending);
    if (status != VI_SUCCESS) return status;
  }
  if (ending == Ending::Terminator) return VI_SUCCESS_TERM_CHAR;
  return ending == Ending::End ? VI_SUCCESS : VI_SUCCESS_MAX_CNT;
}

ViStatus UsbtmcVisa::viClear(ViSession session) {
  const Device* device = Find(session);
  return device == nullptr ? VI_ERROR_INV_OBJECT : StatusOf(port_->Clear(device->handle));
}

ViStatus UsbtmcVisa::viGpibControlREN(ViSession session, std::uint16_t mode) {
  const Device* device = Find(session);
  if (device == nullptr) return VI_ERROR_INV_OBJECT;
  const int handle = device->handle;
  int error = 0;
  switch (mode) {
  case kDeassert: error = port_->SetRemote(handle, false); break;
  case VI_GPIB_REN_ASSERT:
  case kAssertAddress: error = port_->SetRemote(handle, true); break;
  case VI_GPIB_REN_DEASSERT_GTL:
    error = port_->GoToLocal(handle);
    if (error == 0) error = port_->SetRemote(handle, false);
    break;
  case kAssertLockout:
  case VI_GPIB_REN_ASSERT_ADDRESS_LLO:
    error = port_->SetRemote(handle, true);
    if (error == 0) error = port_->LockOut(handle);
    break;
  case kAddressGoToLocal: error = port_->GoToLocal(handle); break;
  default: return VI_ERROR_NSUP_OPER;
  }
  return error == EINVAL ? VI_ERROR_NSUP_OPER : StatusOf(error);
}

ViStatus UsbtmcVisa::viWriteFromFile(ViSession session, const std::string& file, std::uint32_t count,
                                     std::uint32_t& written) {
  written = 0;
  const Device* device = Find(session);
  if (device == nullptr) return VI_ERROR_INV_OBJECT;
  std::ifstream stream(file, std::ios::binary);
  std::error_code failure;
  const auto size = std::filesystem::file_size(file, failure);
  if (!stream || failure) return VI_ERROR_FILE_ACCESS;
  if (size < count) return VI_ERROR_FILE_IO;
  buffer_.resize(std::max(buffer_.size(), std::min<std::size_t>(count, kTransferBytes)));
  while (written < count) {
    const std::size_t bytes = std::min<std::size_t>(count - written, kTransferBytes);
    if (!stream.read(buffer_.data(), static_cast<std::streamsize>(bytes))) return VI_ERROR_FILE_IO;
    // Only the last transfer of a message carries its end mark.
    const bool goesOn = device->endMark && written + bytes < count;
    int error = goesOn ? port_->SetEndMark(device->handle, false) : 0;
    ViStatus status = StatusOf(error);
    if (status == VI_SUCCESS) status = WriteAll(*device, buffer_.data(), bytes, written);
    if (goesOn) error = port_->SetEndMark(device->handle, true);
    if (status != VI_SUCCESS) return status;
    if (error != 0) return StatusOf(error);
  }
  return VI_SUCCESS;
}

ViStatus UsbtmcVisa::viReadToFile(ViSession session, const std::string& file, std::uint32_t count,
                                  std::uint32_t& received) {
  received = 0;
  const Device* device = Find(session);
  if (device == nullptr) return VI_ERROR_INV_OBJECT;
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  if (!stream) return VI_ERROR_FILE_ACCESS;
  buffer_.resize(std::max(buffer_.size(), std::min<std::size_t>(count, kTransferBytes)));
  Ending ending = Ending::None;
  while (received < count && ending == Ending::None) {
    const std::uint32_t before = received;
    const std::size_t capacity = std::min<std::size_t>(count - received, kTransferBytes);
    const ViStatus status = ReadTransfer(*device, buffer_.data(), capacity, received, ending);
    if (!stream.write(buffer_.data(), static_cast<std::streamsize>(received - before))) return VI_ERROR_FILE_IO;
    if (status != VI_SUCCESS) return status;
  }
  stream.close();
  if (!stream) return VI_ERROR_FILE_IO;
  if (ending == Ending::Terminator) return VI_SUCCESS_TERM_CHAR;
  return ending == Ending::End ? VI_SUCCESS : VI_SUCCESS_MAX_CNT;
}

} // namespace calder

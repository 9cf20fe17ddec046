// libvisa.so.0: the calls of VISA (VPP-4.3) that the program makes, on the simulated bench. The resources are the
// USBTMC interfaces of the instruments that have one.
#include "sim/Bench.h"

#include "libs/bus/Visa.h"
#include "libs/bus/VisaNames.h"

#include <algorithm>
#include <cstring>
#include <string>

#define CALDER_SIM_ENTRY extern "C" __attribute__((visibility("default")))

namespace {

using namespace calder; // the constants of VISA and its names
using calder::sim::Bench;
using calder::sim::Call;
using calder::sim::Fault;
using calder::sim::Hex;
using calder::sim::Instrument;
using calder::sim::Quoted;

constexpr std::size_t kNameLength = 256;
constexpr std::uint64_t kInfinite = 0xFFFFFFFF;

struct Device {
  int address = 0;
  std::uint64_t limit = 2000; // milliseconds, VISA's own default
  char terminator = '\n';
  bool terminatorOn = false;
  bool sendEnd = true;
};

struct Manager {
  int resets = 0; // of the bench, when it began
  ViSession next = 1;
  std::vector<ViSession> managers;
  std::map<ViSession, Device> devices;
  std::map<ViSession, std::vector<std::string>> lists; // what viFindNext still gives
};

Manager& TheManager() {
  static Manager manager;
  return manager;
}

bool IsManager(ViSession session) {
  const auto& managers = TheManager().managers;
  return std::find(managers.begin(), managers.end(), session) != managers.end();
}

Device* Find(ViSession session) {
  const auto found = TheManager().devices.find(session);
  return found == TheManager().devices.end() ? nullptr : &found->second;
}

double Limit(ViSession session) {
  const Device* device = Find(session);
  return device == nullptr || device->limit == kInfinite ? 0 : static_cast<double>(device->limit) / 1000;
}

UsbName NameOf(const Instrument& instrument) {
  const sim::Model& model = instrument.Kind();
  return {0,
          static_cast<std::uint16_t>(model.usbVendor),
          static_cast<std::uint16_t>(model.usbProduct),
          instrument.Get("serial"),
          {}};
}

// The addresses of the instruments that are there.
std::vector<int> Connected(Bench& bench) {
  std::vector<int> addresses;
  for (int address = 1; address <= static_cast<int>(bench.Instruments().size()); ++address) {
    const Instrument* instrument = bench.At(address);
    if (instrument != nullptr && instrument->Kind().usbProduct != 0) addresses.push_back(address);
  }
  return addresses;
}

ViStatus StatusOf(Fault fault) {
  switch (fault) {
  case Fault::None: return VI_SUCCESS;
  case Fault::Timeout: return VI_ERROR_TMO;
  case Fault::Unplug: return VI_ERROR_CONN_LOST;
  default: return VI_ERROR_IO;
  }
}

ViStatus Finish(Call& call, const std::string& arguments, ViStatus status, const std::string& data = "") {
  call.Done(arguments, Hex(static_cast<std::uint32_t>(status)) + (data.empty() ? "" : ", " + data));
  return status;
}

void CopyName(const std::string& name, char* to) {
  const std::size_t length = std::min(name.size(), kNameLength - 1);
  std::memcpy(to, name.data(), length);
  to[length] = '\0';
}

// The open device and its instrument; the status of what is wrong otherwise.
struct Opened {
  Device* device = nullptr;
  Instrument* instrument = nullptr;
  ViStatus status = VI_SUCCESS;
};

Opened Open(Call& call, ViSession session) {
  Opened opened;
  opened.status = StatusOf(call.Injected());
  if (opened.status != VI_SUCCESS) return opened;
  opened.device = Find(session);
  if (opened.device == nullptr) {
    opened.status = VI_ERROR_INV_OBJECT;
    return opened;
  }
  opened.instrument = call.On().At(opened.device->address);
  if (opened.instrument == nullptr) opened.status = VI_ERROR_CONN_LOST;
  return opened;
}

// Sends to the instrument what passes; the number of bytes.
std::uint32_t Send(Call& call, const Opened& opened, std::string_view data) {
  const std::size_t passing = call.Passing(data.size());
  opened.instrument->Receive(data.substr(0, passing), opened.device->sendEnd && passing == data.size());
  return static_cast<std::uint32_t>(passing);
}

// The instrument's answer; VI_ERROR_TMO when it has none.
ViStatus Receive(Call& call, const Opened& opened, std::size_t capacity, std::string& data) {
  if (!opened.instrument->HasAnswer()) {
    opened.instrument->NothingToSay();
    return VI_ERROR_TMO;
  }
  bool ended = false;
  const int terminator = opened.device->terminatorOn ? static_cast<unsigned char>(opened.device->terminator) : -1;
  data = opened.instrument->Send(call.Passing(capacity), terminator, ended);
  if (ended) return VI_SUCCESS;
  const bool terminated = terminator >= 0 && !data.empty() && data.back() == opened.device->terminator;
  if (terminated) return VI_SUCCESS_TERM_CHAR;
  return data.size() == capacity ? VI_SUCCESS_MAX_CNT : VI_SUCCESS;
}

std::string Arguments(ViSession session, std::uint64_t value) {
  return std::to_string(session) + ", " + std::to_string(value);
}

} // namespace

CALDER_SIM_ENTRY ViStatus viOpenDefaultRM(ViSession* manager) {
  Call call("viOpenDefaultRM");
  const ViStatus status = StatusOf(call.Injected());
  if (status != VI_SUCCESS) return Finish(call, "", status);
  // Sessions are numbered anew on a bench that was reset, so that its traffic is the same each time.
  if (TheManager().resets != call.On().resets) TheManager() = Manager();
  TheManager().resets = call.On().resets;
  *manager = TheManager().next++;
  TheManager().managers.push_back(*manager);
  return Finish(call, "", status, std::to_string(*manager));
}

CALDER_SIM_ENTRY ViStatus viFindRsrc(ViSession manager, const char* expression, ViSession* list, std::uint32_t* count,
                                     char* name) {
  Call call("viFindRsrc");
  const std::string arguments = std::to_string(manager) + ", " + Quoted(expression);
  name[0] = '\0';
  *count = 0;
  if (call.Injected() != Fault::None) {
    const bool gone = call.Injected() == Fault::Unplug;
    return Finish(call, arguments, gone ? VI_ERROR_RSRC_NFOUND : StatusOf(call.Injected()));
  }
  if (!IsManager(manager)) return Finish(call, arguments, VI_ERROR_INV_OBJECT);
  if (!IsVisaExpression(expression)) return Finish(call, arguments, VI_ERROR_INV_EXPR);
  std::vector<std::string> names;
  for (const int address : Connected(call.On())) {
    std::string one = FormatUsbName(NameOf(*call.On().At(address)));
    if (MatchesVisaExpression(expression, one)) names.push_back(std::move(one));
  }
  if (names.empty()) return Finish(call, arguments, VI_ERROR_RSRC_NFOUND);
  *count = static_cast<std::uint32_t>(names.size());
  const std::string first = names.front();
  CopyName(first, name);
  names.erase(names.begin());
  *list = TheManager().next++;
  TheManager().lists[*list] = std::move(names);
  return Finish(call, arguments, VI_SUCCESS,
                std::to_string(*list) + ", " + std::to_string(*count) + ", " + Quoted(first));
}

CALDER_SIM_ENTRY ViStatus viFindNext(ViSession list, char* name) {
  Call call("viFindNext");
  const std::string arguments = std::to_string(list);
  name[0] = '\0';
  if (call.Injected() != Fault::None) return Finish(call, arguments, StatusOf(call.Injected()));
  const auto found = TheManager().lists.find(list);
  if (found == TheManager().lists.end()) return Finish(call, arguments, VI_ERROR_INV_OBJECT);
  if (found->second.empty()) return Finish(call, arguments, VI_ERROR_RSRC_NFOUND);
  const std::string next = found->second.front();
  found->second.erase(found->second.begin());
  CopyName(next, name);
  return Finish(call, arguments, VI_SUCCESS, Quoted(next));
}

CALDER_SIM_ENTRY ViStatus viOpen(ViSession manager, const char* name, std::uint32_t mode, std::uint32_t limit,
                                 ViSession* session) {
  Call call("viOpen", static_cast<double>(limit) / 1000);
  const std::string arguments = std::to_string(manager) + ", " + Quoted(name) + ", " + Arguments(mode, limit);
  if (call.Injected() != Fault::None) {
    const bool gone = call.Injected() == Fault::Unplug;
    return Finish(call, arguments, gone ? VI_ERROR_RSRC_NFOUND : StatusOf(call.Injected()));
  }
  if (!IsManager(manager)) return Finish(call, arguments, VI_ERROR_INV_OBJECT);
  const auto wanted = ParseUsbName(name);
  if (!wanted) return Finish(call, arguments, VI_ERROR_INV_RSRC_NAME);
  for (const int address : Connected(call.On())) {
    if (!SameInstrument(NameOf(*call.On().At(address)), *wanted)) continue;
    *session = TheManager().next++;
    TheManager().devices[*session].address = address;
    return Finish(call, arguments, VI_SUCCESS, std::to_string(*session));
  }
  return Finish(call, arguments, VI_ERROR_RSRC_NFOUND);
}

CALDER_SIM_ENTRY ViStatus viClose(ViSession object) {
  Call call("viClose");
  Manager& manager = TheManager();
  ViStatus status = StatusOf(call.Injected());
  if (status == VI_SUCCESS) {
    const std::size_t closed = manager.devices.erase(object) + manager.lists.erase(object) +
                               static_cast<std::size_t>(std::erase(manager.managers, object));
    if (closed == 0) status = VI_ERROR_INV_OBJECT;
    if (manager.managers.empty()) manager.devices.clear(); // the last manager closes what it opened
  }
  return Finish(call, std::to_string(object), status);
}

CALDER_SIM_ENTRY ViStatus viSetAttribute(ViSession session, std::uint32_t attribute, std::uint64_t value) {
  Call call("viSetAttribute");
  const std::string arguments = std::to_string(session) + ", " + Hex(attribute) + ", " + std::to_string(value);
  const Opened opened = Open(call, session);
  if (opened.status != VI_SUCCESS) return Finish(call, arguments, opened.status);
  switch (attribute) {
  case VI_ATTR_TMO_VALUE: opened.device->limit = value; break;
  case VI_ATTR_TERMCHAR: opened.device->terminator = static_cast<char>(value); break;
  case VI_ATTR_TERMCHAR_EN: opened.device->terminatorOn = value != 0; break;
  case VI_ATTR_SEND_END_EN: opened.device->sendEnd = value != 0; break;
  default: return Finish(call, arguments, VI_ERROR_NSUP_ATTR);
  }
  return Finish(call, arguments, VI_SUCCESS);
}

CALDER_SIM_ENTRY ViStatus viWrite(ViSession session, const void* data, std::uint32_t count, std::uint32_t* written) {
  Call call("viWrite", Limit(session));
  const std::string_view bytes(static_cast<const char*>(data), count);
  const Opened opened = Open(call, session);
  *written = opened.status == VI_SUCCESS ? Send(call, opened, bytes) : 0;
  return Finish(call, std::to_string(session) + ", " + Quoted(bytes), opened.status, std::to_string(*written));
}

CALDER_SIM_ENTRY ViStatus viRead(ViSession session, void* data, std::uint32_t capacity, std::uint32_t* received) {
  Call call("viRead", Limit(session));
  const Opened opened = Open(call, session);
  ViStatus status = opened.status;
  std::string text;
  if (status == VI_SUCCESS) status = Receive(call, opened, capacity, text);
  std::copy(text.begin(), text.end(), static_cast<char*>(data));
  *received = static_cast<std::uint32_t>(text.size());
  return Finish(call, Arguments(session, capacity), status, status < 0 ? "" : Quoted(text));
}

CALDER_SIM_ENTRY ViStatus viClear(ViSession session) {
  Call call("viClear", Limit(session));
  const Opened opened = Open(call, session);
  if (opened.instrument != nullptr) opened.instrument->Clear();
  return Finish(call, std::to_string(session), opened.status);
}

CALDER_SIM_ENTRY ViStatus viGpibControlREN(ViSession session, std::uint16_t mode) {
  Call call("viGpibControlREN", Limit(session));
  const Opened opened = Open(call, session);
  ViStatus status = opened.status;
  if (status == VI_SUCCESS && mode > 6) status = VI_ERROR_NSUP_OPER;
  if (status == VI_SUCCESS) {
    const bool local = mode == 0 || mode == VI_GPIB_REN_DEASSERT_GTL || mode == 6;
    opened.instrument->Put("remote", local ? "0" : "1");
    if (local) opened.instrument->Put("lockout", "0");
    if (mode == 4 || mode == VI_GPIB_REN_ASSERT_ADDRESS_LLO) opened.instrument->Put("lockout", "1");
  }
  return Finish(call, Arguments(session, mode), status);
}

CALDER_SIM_ENTRY ViStatus viWriteFromFile(ViSession session, const char* file, std::uint32_t count,
                                          std::uint32_t* written) {
  Call call("viWriteFromFile", Limit(session));
  *written = 0;
  std::ifstream stream(file, std::ios::binary);
  std::string data(count, '\0');
  stream.read(data.data(), static_cast<std::streamsize>(count));
  data.resize(static_cast<std::size_t>(std::max<std::streamsize>(stream.gcount(), 0)));
  const bool readable = stream.is_open() && !stream.bad();
  const Opened opened = Open(call, session);
  ViStatus status = opened.status;
  if (status == VI_SUCCESS && !readable) status = VI_ERROR_FILE_ACCESS;
  if (status == VI_SUCCESS) *written = Send(call, opened, data);
  // The file's name is the program's business and differs from machine to machine; its bytes are what goes over.
  return Finish(call, std::to_string(session) + ", " + Quoted(data), status, std::to_string(*written));
}

CALDER_SIM_ENTRY ViStatus viReadToFile(ViSession session, const char* file, std::uint32_t count,
                                       std::uint32_t* received) {
  Call call("viReadToFile", Limit(session));
  *received = 0;
  const Opened opened = Open(call, session);
  if (opened.status != VI_SUCCESS) return Finish(call, Arguments(session, count), opened.status);
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  if (!stream) return Finish(call, Arguments(session, count), VI_ERROR_FILE_ACCESS);
  std::string data;
  ViStatus status = Receive(call, opened, count, data);
  stream << data << std::flush;
  if (!stream && status >= 0) status = VI_ERROR_FILE_IO;
  *received = static_cast<std::uint32_t>(data.size());
  return Finish(call, Arguments(session, count), status, status < 0 ? "" : Quoted(data));
}

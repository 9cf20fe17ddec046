#include "pluginhost/Serve.h"

#include "pluginhost/LoadedPlugin.h"

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>

namespace calder {
namespace {

using Kind = PluginFault::Kind;

// The sanitizers keep a shadow of the whole address space.
#ifndef CALDER_SANITIZED
constexpr rlim_t kMostMemory = rlim_t{2} << 30;
#endif

void LimitProcess() {
  const rlimit none{0, 0};
  ::setrlimit(RLIMIT_CORE, &none);
#ifndef CALDER_SANITIZED
  const rlimit memory{kMostMemory, kMostMemory};
  ::setrlimit(RLIMIT_AS, &memory);
#endif
  ::prctl(PR_SET_PDEATHSIG, SIGKILL); // a plug-in that hangs does not outlive the editor
}

class Server {
public:
  explicit Server(PluginArea& area)
      : area_(area), plugin_([&area](double fraction) {
          area.progress = static_cast<std::uint32_t>(std::clamp(fraction, 0.0, 1.0) * kWholeProgress);
          ++area.alive;
        }) {}

  // The plug-in is loaded by the first call, within the editor's time limit; a fault of that is the answer to every
  // call.
  [[nodiscard]] PluginPacket Answer(const std::string& plugin, const PluginPacket& call) {
    if (!loaded_) {
      loaded_ = true;
      loading_ = plugin_.Load(plugin);
    }
    const std::string text(area_.text.data(), std::min<std::size_t>(call.length, area_.text.size()));
    PluginPacket answer;
    PluginFault fault = loading_.kind == Kind::None ? Do(call, text, answer) : loading_;
    if (fault.kind == Kind::None) return answer;
    answer = {static_cast<std::uint32_t>(fault.kind), fault.number, fault.expected};
    PutText(fault.text, answer);
    return answer;
  }

private:
  void PutText(std::string_view text, PluginPacket& answer) {
    const std::string_view cut = CutText(text, kMostReportBytes);
    std::ranges::copy(cut, area_.text.begin());
    answer.length = static_cast<std::uint32_t>(cut.size());
  }

  [[nodiscard]] PluginFault Form(PluginPacket& answer) {
    PluginWriter writer(area_.text);
    PluginFault fault = plugin_.Options(writer);
    answer.length = writer.Length();
    return fault;
  }

  [[nodiscard]] PluginFault Do(const PluginPacket& call, const std::string& text, PluginPacket& answer) {
    PluginReader reader(text);
    switch (static_cast<PluginCall>(call.what)) {
    case PluginCall::Identify: {
      PluginWriter writer(area_.text);
      WriteIdentity(plugin_.Table(), writer);
      answer.length = writer.Length();
      return writer.Ok() ? PluginFault() : PluginFault{Kind::Garbled};
    }
    case PluginCall::Open: {
      const std::string language = reader.Text();
      const std::string path = reader.Text();
      return plugin_.Open(path, language);
    }
    case PluginCall::Options: return Form(answer);
    case PluginCall::Set: {
      const std::string key = reader.Text();
      PluginFault fault = plugin_.Set(key, reader.Number());
      return fault.kind == Kind::None ? Form(answer) : fault;
    }
    case PluginCall::Start: return plugin_.Start(answer.number, answer.other);
    case PluginCall::Seek: return plugin_.Seek(call.number);
    case PluginCall::Read: return plugin_.Read(area_.codes, answer.number);
    case PluginCall::Report: {
      const char* report = plugin_.Report();
      PutText(report == nullptr ? std::string_view()
                                : std::string_view(report, ::strnlen(report, kMostReportBytes + 1)),
              answer);
      return {};
    }
    case PluginCall::Close: plugin_.Close(); return {};
    }
    return {Kind::Garbled};
  }

  PluginArea& area_;
  LoadedPlugin plugin_;
  bool loaded_ = false;
  PluginFault loading_;
};

} // namespace

int ServePlugin(const std::string& plugin) {
  LimitProcess();
  void* mapped = ::mmap(nullptr, sizeof(PluginArea), PROT_READ | PROT_WRITE, MAP_SHARED, kHelperMemory, 0);
  if (mapped == MAP_FAILED) return 1; // NOLINT: the system's macro
  // The editor has made the object in these pages.
  Server server(*static_cast<PluginArea*>(mapped));
  while (true) {
    PluginPacket call;
    const ssize_t got = ::recv(kHelperSocket, &call, sizeof call, 0);
    if (got < 0 && errno == EINTR) continue;
    if (got != sizeof call) return got == 0 ? 0 : 1;
    const PluginPacket answer = server.Answer(plugin, call);
    if (::send(kHelperSocket, &answer, sizeof answer, MSG_NOSIGNAL) != sizeof answer) return 1;
  }
}

} // namespace calder

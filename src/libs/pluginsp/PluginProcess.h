// The helper process that runs one plug-in, as the editor sees it.
//
// It dies with the editor, and with this object.
#pragma once

#include "libs/pluginsp/PluginWire.h"
#include "platform/posix/Descriptor.h"

#include <sys/types.h>

#include <atomic>
#include <chrono>
#include <string>

namespace calder {

class PluginProcess {
public:
  // helper: the helper's program, plugin: the shared object. Started() says whether it runs.
  PluginProcess(const std::string& helper, const std::string& plugin);
  ~PluginProcess();
  PluginProcess(const PluginProcess&) = delete;
  PluginProcess& operator=(const PluginProcess&) = delete;

  [[nodiscard]] bool Started() const { return process_ > 0; }
  // Readable when an answer is there or the helper has gone.
  [[nodiscard]] int Socket() const { return socket_.Get(); }

  // The room for what a packet carries.
  [[nodiscard]] std::span<char> Text() { return area_->text; }
  // REQUIRES: nothing is waited for.
  [[nodiscard]] bool Send(const PluginPacket& packet);
  // Takes the answer that Socket() has. A fault that the helper named or that its end is comes back with its text.
  [[nodiscard]] PluginFault Receive(PluginPacket& answer);
  // Sends and waits for the answer, on any thread. limit: how long the helper may show no sign of life. After a hang or
  // a cancel it was ended.
  [[nodiscard]] PluginFault Exchange(const PluginPacket& packet, PluginPacket& answer, std::chrono::milliseconds limit,
                                     const std::atomic<bool>& cancelled);

  // A copy of what an answer carries.
  [[nodiscard]] std::string TextOf(const PluginPacket& answer) const;
  [[nodiscard]] std::span<const std::int16_t> Codes() const { return area_->codes; }
  // Of the call that is waited for, 0 to 1.
  [[nodiscard]] double Progress() const;

private:
  [[nodiscard]] PluginFault End();
  [[nodiscard]] bool Reap(int& status);

  Descriptor socket_;
  PluginArea* area_ = nullptr;
  pid_t process_ = -1;
};

} // namespace calder

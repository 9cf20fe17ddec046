#include "comm/LoopTest.h"

#include "app/Registry.h"
#include "comm/TransferProgress.h"
#include "comm/WaveTransfer.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/MessageBoxes.h"

#include <limits>

namespace calder {
namespace {

constexpr double kLook = 0.1; // seconds between two looks at the busy flag

} // namespace

void LoopTest::Press() {
  if (running_) {
    stop_ = true;
    desktop_.messageBoxes.Show("LoopTest", "次の転送完了後テストを終了します", BoxButtons::Ok, BoxIcon::None);
    return;
  }
  running_ = true;
  stop_ = false;
  count_ = 0;
  while (!stop_) {
    while (registry_.GetGpibBusy() && !stop_) desktop_.clock.Wait(kLook, true);
    if (stop_) break;
    // A transfer that fails has shown why; the next one would show it again, and so on.
    if (!transfer_.Run()) break;
    count_ = count_ == std::numeric_limits<std::int32_t>::max() ? 0 : count_ + 1;
    progress_.Caption(std::to_string(count_));
    desktop_.clock.Wait(0, true); // a press is seen here
  }
  progress_.Unload();
  progress_.Caption({});
  running_ = false;
}

} // namespace calder

// Message numbers of the transfers. Append only: they are those of the message table.
#pragma once

namespace calder {

enum BusMessageNo : int {
  kMsgNoWaveInMemory = 37,
  kMsgInterfaceSystemError = 200,
  kMsgNoListeners = 202,
  kMsgInterfaceTimeout = 206,
  kMsgNoInterfaceBoard = 207,
  kMsgInterfaceBusy = 223,
  kMsgInterfaceAddress = 224,
  kMsgInterfaceOther = 225,
  kMsgControllerAddress = 228,
  kMsgTransferStopped = 229,
  kMsgCheckModel = 230,
};

} // namespace calder

#include "libs/bus/Usb488.h"

namespace calder {

std::unique_ptr<Usb488> Usb488::Load(BusLibraries& libraries) {
  auto api = std::make_unique<Usb488>();
  api->library = libraries.Open(kNames);
  if (!api->library) return nullptr;
  const BusLibrary& library = *api->library;
  const bool complete =
      Bind(library, "UsbInitialize", api->UsbInitialize) && Bind(library, "UsbFinalize", api->UsbFinalize) &&
      Bind(library, "UsbOpenDevice", api->UsbOpenDevice) && Bind(library, "UsbCloseDevice", api->UsbCloseDevice) &&
      Bind(library, "UsbCLS", api->UsbCLS) && Bind(library, "UsbDevClear", api->UsbDevClear) &&
      Bind(library, "UsbSetIFC", api->UsbSetIFC) && Bind(library, "UsbEnableRemote", api->UsbEnableRemote) &&
      Bind(library, "UsbEnableLocal", api->UsbEnableLocal) && Bind(library, "UsbSendLLO", api->UsbSendLLO) &&
      Bind(library, "UsbSetTimeout", api->UsbSetTimeout) && Bind(library, "UsbSendTextData", api->UsbSendTextData) &&
      Bind(library, "UsbReceiveTextData", api->UsbReceiveTextData) &&
      Bind(library, "UsbSendBinary", api->UsbSendBinary);
  if (!complete) return nullptr;
  return api;
}

} // namespace calder

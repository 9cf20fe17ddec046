#include "libs/bus/Usb488.h"

namespace calder {
namespace {

bool BindUsb488(const BusLibrary& library, Usb488& api) {
  return Bind(library, "UsbInitialize", api.UsbInitialize) && Bind(library, "UsbFinalize", api.UsbFinalize) &&
         Bind(library, "UsbOpenDevice", api.UsbOpenDevice) && Bind(library, "UsbCloseDevice", api.UsbCloseDevice) &&
         Bind(library, "UsbCLS", api.UsbCLS) && Bind(library, "UsbDevClear", api.UsbDevClear) &&
         Bind(library, "UsbSetIFC", api.UsbSetIFC) && Bind(library, "UsbEnableRemote", api.UsbEnableRemote) &&
         Bind(library, "UsbEnableLocal", api.UsbEnableLocal) && Bind(library, "UsbSendLLO", api.UsbSendLLO) &&
         Bind(library, "UsbSetTimeout", api.UsbSetTimeout) && Bind(library, "UsbSendTextData", api.UsbSendTextData) &&
         Bind(library, "UsbReceiveTextData", api.UsbReceiveTextData) &&
         Bind(library, "UsbSendBinary", api.UsbSendBinary);
}

} // namespace

std::unique_ptr<Usb488> Usb488::Load(BusLibraries& libraries, std::string* lacking) {
  return LoadComplete<Usb488>(libraries, kNames, BindUsb488, lacking);
}

} // namespace calder

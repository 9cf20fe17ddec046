// What goes over each bus for one thing that a transfer does, as calls of the bus library.
//
// In a line %t stands for the text or the bytes, %e for the terminator after it (%k in the words of a KI board), %a
// for the instrument's address, %l and %r for its listen and its talk address, %h for the header of a block.
#pragma once

#include "Testing.h"
#include "app/Program.h"
#include "sim/Bench.h"

namespace calder {

using Lines = std::vector<std::string>;

// As the traffic shows bytes, without the quotes.
inline std::string Shown(const std::string& bytes) {
  const std::string quoted = sim::Quoted(bytes);
  return quoted.substr(1, quoted.size() - 2);
}

struct Wire {
  Lines open;
  Lines put;
  Lines get;
  Lines longLimit; // 30 s
  Lines beforeBlock;
  Lines chunk; // 512 bytes of a block; empty: it goes out whole
  Lines last;  // the last 2 bytes, or all of it
  Lines close;
};

inline const Wire& WireOf(int kind) {
  static const Wire wires[] = {
      {{"ibask(0, 1)", "ibfind(\"GPIB0\")", "ibconfig(0, 7, 0)", "ibsic(0)", "ibsre(0, 1)", "ibeos(0, 5130)",
        "ibeot(0, 1)", "ibtmo(0, 10)", "ibtmo(0, 11)", "ibtmo(0, 11)", "ibsic(0)", "ibsre(0, 1)", "ibcmd(0, \"\\x11\")",
        "ibcmd(0, \"?%l\\x04\")", "ibeot(0, 1)", "ibeos(0, 5130)"},
       {"ibcmd(0, \"_?@%l\")", "ibwrt(0, \"%t%e\")"},
       {"ibcmd(0, \"_?%r \")", "ibrd(0, 256)"},
       {"ibtmo(0, 14)"},
       {"ibeot(0, 0)", "ibeos(0, 0)", "ibcmd(0, \"_?@%l\")"},
       {"ibwrt(0, \"%t\")"},
       {"ibeot(0, 1)", "ibwrt(0, \"%t\")", "ibeos(0, 5130)"},
       {"ibeot(0, 1)", "ibeos(0, 5130)", "ibsre(0, 0)", "ibsre(0, 0)"}},
      {{"_ieee_board_present()", "_ieee_initialize(0, 0)", "_ieee_transmit(\"IFC\")", "_ieee_transmit(\"REN\")",
        "_ieee_setinputEOS(10)", "_ieee_settimeout(330)", "_ieee_settimeout(1045)", "_ieee_settimeout(1045)",
        "_ieee_transmit(\"IFC\")", "_ieee_transmit(\"REN\")", "_ieee_transmit(\"LLO\")",
        "_ieee_transmit(\"UNL LISTEN %a SDC\")", "_ieee_setinputEOS(10)"},
       {"_ieee_transmit(\"UNT UNL TALK MTA LISTEN %a\")", "_ieee_transmit(\"DATA '%t' EOI %k\")"},
       {"_ieee_transmit(\"UNT UNL LISTEN MLA TALK %a\")", "_ieee_receive(1024)"},
       {"_ieee_settimeout(30030)"},
       {"_ieee_setinputEOS(0)", "_ieee_transmit(\"UNT UNL TALK MTA LISTEN %a\")"},
       {"_ieee_tarray(\"%t\", 0)"},
       {"_ieee_tarray(\"%t\", 1)", "_ieee_setinputEOS(10)"},
       {"_ieee_setinputEOS(10)", "_ieee_transmit(\"REN\")", "_ieee_transmit(\"UNL LISTEN %a GTL\")",
        "_ieee_transmit(\"UNL LISTEN %a GTL\")"}},
      {{"ibask(0, 1)", "UsbInitialize()", "UsbOpenDevice(%a)", "UsbSetIFC(%a)", "UsbEnableRemote(%a)",
        "UsbSetTimeout(%a, 1000)", "UsbSetIFC(%a)", "UsbEnableRemote(%a)", "UsbSendLLO(%a)", "UsbDevClear(%a)"},
       {"UsbSendTextData(%a, \"%t%e\", 1)"},
       {"UsbReceiveTextData(%a, 1024)"},
       {"UsbSetTimeout(%a, 30000)"},
       {},
       {},
       {"UsbSendBinary(%a, \"%t\", 1)"},
       {"UsbEnableLocal(%a)", "UsbEnableLocal(%a)", "UsbCloseDevice(%a)", "UsbFinalize()"}},
      {{"viOpenDefaultRM()", "viOpen(1, \"%t\", 0, 0)", "viSetAttribute(2, 0x3fff001a, 1000)", "viGpibControlREN(2, 1)",
        "viGpibControlREN(2, 5)", "viClear(2)", "viSetAttribute(2, 0x3fff0016, 1)", "viSetAttribute(2, 0x3fff0018, 10)",
        "viSetAttribute(2, 0x3fff0038, 1)"},
       {"viWrite(2, \"%t%e\")"},
       {"viRead(2, 1024)"},
       {"viSetAttribute(2, 0x3fff001a, 30000)"},
       {"viSetAttribute(2, 0x3fff001a, 30000)", "viSetAttribute(2, 0x3fff0016, 0)", "viWrite(2, \"%h\")",
        "viSetAttribute(2, 0x3fff0016, 1)"},
       {},
       // The status shows that the instrument has taken the block.
       {"viWriteFromFile(2, \"%t\")", "viWrite(2, \"*ESR?\\n\")", "viRead(2, 1024)",
        "viSetAttribute(2, 0x3fff001a, 1000)", "viSetAttribute(2, 0x3fff0018, 10)", "viSetAttribute(2, 0x3fff0038, 1)"},
       {"viSetAttribute(2, 0x3fff0016, 1)", "viSetAttribute(2, 0x3fff0018, 10)", "viSetAttribute(2, 0x3fff0038, 1)",
        "viGpibControlREN(2, 2)", "viGpibControlREN(2, 2)", "viClose(2)", "viClose(1)"}}};
  return wires[kind];
}

} // namespace calder

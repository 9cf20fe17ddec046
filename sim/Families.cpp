// Which commands each family knows.
#include "sim/Commands.h"

#include <array>
#include <initializer_list>

namespace calder::sim {
namespace {

using Rows = std::vector<Row>;

constexpr const char* kShapes = "SINusoid|SQUare|TRIangle|RAMP|PULSe|DC|USER";
constexpr const char* kModes = "AC-INT|AC-ADD|ACDC-INT|ACDC-ADD|ACDC-EXT";
constexpr const char* kOnOff = "ON|OFF";

Rows Join(std::initializer_list<Rows> parts) {
  Rows all;
  for (const Rows& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

// XG, XJ, QN: function generators with the channel's number in the header.
Rows Generator() {
  return {
      {"SYSTem:HEADer", SetChoice, "header", kOnOff},   {"INSTrument:SELect", SelectChannel, "channel"},
      {"SOURce#:FREQuency", SetFrequency, "frequency"}, {"SOURce#:VOLTage", SetAmplitude, "amplitude"},
      {"SOURce#:VOLTage:OFFSet", SetOffset, "offset"},  {"SOURce#:FUNCtion:SHAPe", SetChoice, "shape", kShapes},
      {"SOURce#:FUNCtion:USER", ChooseMemory, "user"},  {"OUTPut#", SetOutput, "output"},
  };
}

Rows Ranges() {
  return {
      {"SOURce#:VOLTage:RANGe", SetRange, "range"},
      {"OUTPut#:POLarity", SetShapeChoice, "polarity", "NORMal|INVerted"},
      {"OUTPut#:SCALe", SetShapeChoice, "scale", "FS|PFS|MFS"},
  };
}

Rows TraceGenerator() {
  return {{"FORMat:BORDer", SetChoice, "order", "NORMal|SWAPped"}};
}

Rows Xg() {
  return {
      {"OUTPut#:LOAD", SetLoad, "load"},
      {"SOURce#:SEQuence:STATe", SetSequence, "sequence"},
      {"STATus:OPERation:CH#:CONDition", AskChannelCondition, "running"},
      {"TRIGger#:SELected:EXECute", StopSequence, "running", "ISTOP"},
      {"TRACe:DATA", TraceData},
      {"TRACe:INFormation", AskTraceInfo},
  };
}

Rows Xj() {
  return {{"TRACe:POINts", SetSize, "size"}, {"TRACe:DATA", TakeNamedArray}};
}

Rows Qn10() {
  return {
      {"SOURce#:VOLTage:OFFSet:STATe", SetSwitch, "offseton"},
      {"MEMory:MODE", SetChoice, "mode", "BIN"},
      {"MEMory:SIZE", SetSize, "size"},
      {"MEMory:DATA", TakeArray},
  };
}

Rows Qn40() {
  return {
      {"ARB:SIZE", SetSize, "size"},     {"ARB:BANK", SetNumber, "bank", "", 0},
      {"ARB:STARt", SetNumber, "start"}, {"ARB:NAME", SetName, "name"},
      {"ARB:DATA", TakeArray},
  };
}

// PJ and VJ: supplies whose settings go to the output that was chosen.
Rows Supply() {
  return {
      {"SYSTem:HEADer", SetChoice, "header", kOnOff},
      {"INSTrument:NSELect", SelectChannel, "channel"},
      {"FREQuency", SetFrequency, "frequency"},
      {"VOLTage", SetAmplitude, "amplitude"},
      {"VOLTage:OFFSet", SetOffset, "offset"},
      {"OUTPut", SetOutput, "output"},
      {"FUNCtion", ChooseArb, "user"},
  };
}

Rows Pj() {
  return {
      {"MODE", SetMode, "mode", kModes},
      {"VOLTage:RANGe", SetRangeVolts, "range"},
      {"STATus:OPERation:CONDition", AskCondition, "settling"},
      {"TRACe:DATA", TakeArbArray},
  };
}

Rows Vj() {
  return {{"ARB:POINts", SetSize, "size"}, {"ARB:NAME", SetName, "name"}, {"ARB:DATA", TakeArray}};
}

Rows Kz() {
  return {
      {"FREQ", SetFrequency, "frequency"},   {"VPP", SetAmplitude, "amplitude"}, {"VDC", SetOffset, "offset"},
      {"OUT", SetSwitch, "output"},          {"WMEM", SetNumber, "memory"},      {"WLEN", SetSize, "size"},
      {"WDAT", TakeSelectedArray, "memory"},
  };
}

Rows Ub9() {
  return {
      {"FRQ", SetFrequency, "frequency"},
      {"AMP", SetAmplitude, "amplitude"},
      {"OFS", SetOffset, "offset"},
      {"OUT", SetSwitch, "output"},
      {"BANK", SetNumber, "bank", "", 1},
      {"SIZE", SetSize, "size"},
      {"DATA", TakeArray},
  };
}

Rows Ub93() {
  return {
      {"CHAN", SelectChannel, "channel"},
      {"FREQ", SetFrequency, "frequency"},
      {"AMPL", SetAmplitude, "amplitude"},
      {"OFFS", SetOffset, "offset"},
      {"OUTP", SetSwitch, "output"},
      {"SIZE", SetSize, "size"},
      {"DATA", TakeArray},
      {"WAVE", ChooseMemory, "user", "", 1},
  };
}

} // namespace

std::span<const Row> RowsOf(const Model& model) {
  if (model.rows) return *model.rows;
  // In the order of Family.
  static const std::array<Rows, 10> rows = {
      Join({Generator(), Ranges(), TraceGenerator(), Xg()}),
      Join({Generator(), Ranges(), TraceGenerator(), Xj()}),
      Join({Generator(), Qn10()}),
      Join({Generator(), Ranges(), Qn40()}),
      Join({Supply(), Pj()}),
      Join({Supply(), Vj()}),
      Kz(),
      Join({Ub9(), {{"FUNC", ChooseMemory, "user", "", 2}}}),
      Join({Ub9(), {{"FNC", ChooseMemory, "user", "", 5}}}),
      Ub93(),
  };
  return rows[static_cast<std::size_t>(model.family)];
}

} // namespace calder::sim
